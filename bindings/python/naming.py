"""Converts names of GLLib.idl to names of the package. Used by generate.py while the package is built."""

import keyword
import re


def snake_case(name):
    """Returns the name of an operation: SetTestID is set_test_id."""
    name = re.sub(r"(get|put)_[bl](?=[A-Z]{2})", r"\1_", name)  # get_bFSAA is get_fsaa
    name = re.sub(r"([A-Z]CS)to([A-Z]CS)", r"_\1_to_\2", name)
    name = re.sub(r"(?<=[a-z])2D(?=[A-Z]|$)", r"_2d_", name)
    name = re.sub(r"(.)([A-Z][a-z]+)", r"\1_\2", name)
    name = re.sub(r"([a-z0-9])([A-Z])", r"\1_\2", name)
    return re.sub(r"_+", "_", name).strip("_").lower()


def argument_name(name, interface=None):
    """Returns the name of an argument: dwMaxWait is max_wait. A name without meaning is replaced by the class name."""
    bare = re.sub(r"^(?:pby|new|dw|ar|pn|pd|pb|pl|pp|p|a|b|d|e|f|l|n)(?=[A-Z])", "", name)
    if interface and bare in ("I", "IU", "CS"):
        bare = class_name(interface) if interface != "IUnknown" else "member"
    result = snake_case(bare)
    return result + "_" if keyword.iskeyword(result) else result


def class_name(name):
    """Returns the class of an interface, structure or enumeration: IGLFog is Fog, GLDATA_POINT is Point."""
    bare = re.sub(r"^(?:IGL|GLDATA_|eGL|GL)", "", name)
    return "".join(part.capitalize() for part in bare.split("_")) if bare.isupper() else bare


def field_name(name):
    """Returns the name of a structure's member: m_dAngleX is angle_x."""
    return snake_case(re.sub(r"^m_[a-z](?=[A-Z])", "", name))


def enumerator_name(name):
    """Returns the name of a value within its enumeration: GLDM_SHOW_BACK is SHOW_BACK, GLDT_2_BYTES is BYTES_2."""
    bare = name.split("_", 1)[1]
    return re.sub(r"^(\d)_(\w+)$", r"\2_\1", bare)

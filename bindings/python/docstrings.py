"""Makes docstrings from the comments of the public headers. Used by generate.py while the package is built."""

import re
import textwrap

import naming

WIDTH = 100


class Docstrings:
    """Converts comments to docstrings, with the package's names of operations and values."""

    def __init__(self, library, comments):
        self._comments = comments
        self._values = {
            value: f"{naming.class_name(name)}.{naming.enumerator_name(value)}"
            for name, values in library.enumerations.items()
            for value, _ in values
        }
        self._values.update({name: f"FontStyle.{naming.enumerator_name(name)}" for name in comments.constants})
        self._owners = {face: owner for owner, (_, faces) in library.classes.items() for face in faces}
        # Only names of several words: "Draw" and "Scale" also occur as words of a sentence.
        self._operations = {
            operation.name
            for interface in library.interfaces.values()
            for operation in interface.operations
            if naming.snake_case(operation.name).count("_") > 0
        }

    def of_type(self, name, indent):
        return self._finish(self._paragraphs(self._comments.types.get(name, []), {}), indent)

    def of_class(self, interfaces, indent):
        paragraphs = []
        for name in interfaces:
            paragraphs += self._paragraphs(self._comments.types.get(name, []), {})
        return self._finish(paragraphs, indent)

    def of_operation(self, interface, operation, names, indent):
        """names: the package's name for each argument."""
        block = self._comments.operations.get((interface, operation), [])
        return self._finish(self._paragraphs(block, names), indent)

    def of_value(self, name):
        return self._renamed(self._comments.values.get(name, ""), {})

    def _renamed(self, text, names):
        def operation(found):
            owner = self._owners.get(found[1], found[1])
            return f"{naming.class_name(owner)}.{naming.snake_case(found[2])}"

        text = re.sub(r"\b(IGL\w+)::(\w+)", operation, text)
        text = re.sub(r"\bIGL\w+", lambda found: naming.class_name(self._owners.get(found[0], found[0])), text)
        text = re.sub(r"\bGL[A-Z]{2,4}_\w+", lambda found: self._values.get(found[0], found[0]), text)
        text = re.sub(
            r"\b[A-Z]\w+",
            lambda found: naming.snake_case(found[0]) if found[0] in self._operations else found[0],
            text,
        )
        return re.sub(r"\b[a-z]+[A-Z]\w*", lambda found: names.get(found[0], found[0]), text)

    def _paragraphs(self, block, names):
        """Returns the paragraphs of a comment: text to wrap, or lists of lines to keep."""
        paragraphs, fresh = [], True
        for line in block:
            if not line.strip():
                fresh = True
                continue
            if found := re.match(r"@param (\w+(?:, \w+)*)\s+(.*)", line):
                arguments = ", ".join(names.get(name, name) for name in re.split(r",\s*", found[1]))
                paragraphs.append(f"{arguments}: {found[2]}")
            elif line.startswith("@return"):
                paragraphs.append("Result: " + line.removeprefix("@return").strip())
            elif line.startswith("    ") and (fresh or isinstance(paragraphs[-1], list)):
                if fresh:
                    paragraphs.append([])
                paragraphs[-1].append(line)
            elif fresh or isinstance(paragraphs[-1], list) or re.match(r"(Threads?|Results|Precision): ", line):
                paragraphs.append(line.strip())
            else:
                paragraphs[-1] += " " + line.strip()
            fresh = False
        return [p if isinstance(p, list) else self._renamed(p, names) for p in paragraphs]

    def _finish(self, paragraphs, indent):
        width = WIDTH - len(indent)
        pieces = ["\n".join(p) if isinstance(p, list) else textwrap.fill(p, width) for p in paragraphs]
        text = "\n\n".join(pieces).replace("\\", "\\\\").replace('"""', "'''")
        return "\n".join((indent + line).rstrip() for line in text.splitlines()).strip()

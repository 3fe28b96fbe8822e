// Fonts. Print belongs to the draw thread, and is asked of hosts' threads all the same.

#include "host/Turn.h"

namespace {

constexpr Operation kOperations[] = {
    CALL(IGLFont, IsTrueType),        CALL(IGLFont, GetFace),        CALL(IGLFont, GetStyle),
    CALL(IGLFont, GetWeight),         CALL(IGLFont, GetOrientation), CALL(IGLFont, GetWidth),
    CALL(IGLFont, SetWidth),          CALL(IGLFont, GetHeight),      CALL(IGLFont, SetHeight),
    CALL(IGLFont, GetExtrusionZ),     CALL(IGLFont, SetExtrusionZ),  CALL(IGLFont, GetEscapement_DEG),
    CALL(IGLFont, SetEscapement_DEG), CALL(IGLFont, GetStringWidth), CALL(IGLFont, Print),
};

}  // namespace

std::span<const Operation> FontOperations() noexcept { return kOperations; }

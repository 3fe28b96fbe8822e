// Objects that belong to no context: draw attributes, materials, collections.

#include "host/Turn.h"

namespace {

/// A whole walk, in which others add and remove. Bounded: what is added behind the walk may be met as well.
void Walk(Turn& aTurn) {
  const auto collection = aTurn.Pick<IGLCollection>();
  if (!collection) return;
  const bool up = aTurn.m_Bytes.OneIn(2);
  GLPOSITION position{};
  GLPtr<IUnknown> member;
  HRESULT result =
      up ? collection->GetFirst(&position, member.Put()) : collection->GetLast(&position, member.Put());
  for (int i = 0; i < 1000 && result == S_OK; ++i) {
    if (!member) std::abort();
    result = up ? collection->GetNext(&position, member.Put()) : collection->GetPrev(&position, member.Put());
  }
}

constexpr Operation kOperations[] = {
    CALL(IGLDrawAttr, GetColor),
    CALL(IGLDrawAttr, SetColor),
    CALL(IGLDrawAttr, GetComplementColor),
    CALL(IGLDrawAttr, GetContrastColor),
    CALL(IGLDrawAttr, GetRed),
    CALL(IGLDrawAttr, SetRed),
    CALL(IGLDrawAttr, GetGreen),
    CALL(IGLDrawAttr, SetGreen),
    CALL(IGLDrawAttr, GetBlue),
    CALL(IGLDrawAttr, SetBlue),
    CALL(IGLDrawAttr, GetAlpha),
    CALL(IGLDrawAttr, SetAlpha),
    CALL(IGLDrawAttr, GetPointSize),
    CALL(IGLDrawAttr, SetPointSize),
    CALL(IGLDrawAttr, GetPointSizeLimits),
    CALL(IGLDrawAttr, GetPointSizeStep),
    CALL(IGLDrawAttr, GetLineWidth),
    CALL(IGLDrawAttr, SetLineWidth),
    CALL(IGLDrawAttr, GetLineWidthLimits),
    CALL(IGLDrawAttr, GetLineWidthStep),
    CALL(IGLDrawAttr, GetLineStipplePattern),
    CALL(IGLDrawAttr, SetLineStipplePattern),
    CALL(IGLDrawAttr, GetLineStippleFactor),
    CALL(IGLDrawAttr, SetLineStippleFactor),
    CALL(IGLDrawAttr, EnableDrawMode),
    CALL(IGLDrawAttr, IsDrawModeEnabled),
    CALL(IGLDrawAttr, GetDrawMode),
    CALL(IGLMaterial, GetAmbientReflectance),
    CALL(IGLMaterial, SetAmbientReflectance),
    CALL(IGLMaterial, GetDiffuseReflectance),
    CALL(IGLMaterial, SetDiffuseReflectance),
    CALL(IGLMaterial, GetSpecularReflectance),
    CALL(IGLMaterial, SetSpecularReflectance),
    CALL(IGLMaterial, GetEmissionLight),
    CALL(IGLMaterial, SetEmissionLight),
    CALL(IGLMaterial, GetShininess),
    CALL(IGLMaterial, SetShininess),
    CALL(IGLMaterial, EnableDrawMode),
    CALL(IGLMaterial, IsDrawModeEnabled),
    CALL(IGLMaterial, GetDrawMode),
    CALL(IGLCollection, Add),
    CALL(IGLCollection, Remove),
    CALL(IGLCollection, Empty),
    CALL(IGLCollection, Has),
    CALL(IGLCollection, GetSize),
    CALL(IGLCollection, GetFirst),
    CALL(IGLCollection, GetLast),
    CALL(IGLCollection, GetNext),
    CALL(IGLCollection, GetPrev),
    CALL(IGLCollection, CopyTo),
    CALL(IGLCollection, AppendTo),
    {"a walk over a collection", Walk},
};

}  // namespace

std::span<const Operation> ValueOperations() noexcept { return kOperations; }

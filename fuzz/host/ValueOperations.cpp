// Operations of viewers, lights, fog, coordinate systems, attributes, collections and fonts. Any thread.

#include "host/Turn.h"

namespace {

/// Walks through a collection while other threads change it. The bound is needed, since the walk also meets
/// members that are added ahead of it.
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

constexpr auto kScene = Table<
    Operation::kAny, &IGLViewer::Show, &IGLViewer::IsVisible, &IGLViewer::SetOrtho, &IGLViewer::IsOrtho,
    &IGLViewer::ShowGauges, &IGLViewer::AreGaugesVisible, &IGLViewer::Clip, &IGLViewer::IsClipped,
    &IGLViewer::ScaleClip, &IGLViewer::IsClipScaled, &IGLViewer::ShowClipFrame,
    &IGLViewer::IsClipFrameVisible, &IGLViewer::GetEyeFovy_DEG, &IGLViewer::SetEyeFovy_DEG,
    &IGLViewer::GetEyeZNear, &IGLViewer::GetEyeZFar, &IGLViewer::SetEyeZNearAndFar, &IGLViewer::GetEyeAspect,
    &IGLViewer::SetEyeAspect, &IGLViewer::GetOrthoExtents, &IGLViewer::SetOrthoExtents, &IGLViewer::GetClipX,
    &IGLViewer::GetClipY, &IGLViewer::GetClipWidth, &IGLViewer::GetClipHeight, &IGLViewer::SetClipRectangle,
    &IGLViewer::GetFrameColor, &IGLViewer::SetFrameColor, &IGLViewer::GetFrameThickness,
    &IGLViewer::SetFrameThickness, &IGLViewer::GetFrameOffset, &IGLViewer::SetFrameOffset,
    &IGLViewer::AddGauge, &IGLViewer::RemoveGauge, &IGLViewer::RemoveAllGauges, &IGLViewer::EnumGauges,
    &IGLViewer::GetCoord, &IGLViewer::PointWCStoSCS, &IGLViewer::PointSCStoWCS, &IGLViewer2::GetShowAxes,
    &IGLViewer2::SetShowAxes, &IGLViewerGauge::Show, &IGLLight::Enable, &IGLLight::IsEnabled,
    &IGLLight::SetAsSpotlight, &IGLLight::IsSpotlight, &IGLLight::GetAmbientLight, &IGLLight::SetAmbientLight,
    &IGLLight::GetDiffuseLight, &IGLLight::SetDiffuseLight, &IGLLight::GetSpecularLight,
    &IGLLight::SetSpecularLight, &IGLLight::GetSpotPosition, &IGLLight::SetSpotPosition,
    &IGLLight::GetCutOffAngle_DEG, &IGLLight::SetCutOffAngle_DEG, &IGLLight::GetSpotExponent,
    &IGLLight::SetSpotExponent, &IGLLight::GetConstantAttenuation, &IGLLight::SetConstantAttenuation,
    &IGLLight::GetLinearAttenuation, &IGLLight::SetLinearAttenuation, &IGLLight::GetQuadraticAttenuation,
    &IGLLight::SetQuadraticAttenuation, &IGLLight::GetCoord, &IGLLight::AttachCoord, &IGLLight::GetDirection,
    &IGLLight::SetDirection, &IGLFog::Enable, &IGLFog::IsEnabled, &IGLFog::GetCalcMode, &IGLFog::SetCalcMode,
    &IGLFog::GetFogDensity, &IGLFog::SetFogDensity, &IGLFog::GetFogStart, &IGLFog::GetFogEnd,
    &IGLFog::SetFogStartAndEnd, &IGLFog::GetFogColor, &IGLFog::SetFogColor, &IGLCoord::GetOrigin,
    &IGLCoord::SetOrigin, &IGLCoord::SetOrigin3d, &IGLCoord::MoveOrigin, &IGLCoord::MoveOrigin3d,
    &IGLCoord::MoveRight, &IGLCoord::MoveUp, &IGLCoord::MoveForward, &IGLCoord::RotateAboutX_RAD,
    &IGLCoord::RotateAboutY_RAD, &IGLCoord::RotateAboutZ_RAD, &IGLCoord::Rotate_RAD, &IGLCoord::ResetRotation,
    &IGLCoord::VectorPCStoLCS, &IGLCoord::VectorLCStoPCS, &IGLCoord::PointPCStoLCS, &IGLCoord::PointLCStoPCS,
    &IGLCoord::GetMatrix6d, &IGLCoord::SetMatrix6d, &IGLCoord::GetMatrix16d, &IGLCoord::SetMatrix16d>();

constexpr auto kValues =
    Table<Operation::kAny, &IGLDrawAttr::GetColor, &IGLDrawAttr::SetColor, &IGLDrawAttr::GetComplementColor,
          &IGLDrawAttr::GetContrastColor, &IGLDrawAttr::GetRed, &IGLDrawAttr::SetRed, &IGLDrawAttr::GetGreen,
          &IGLDrawAttr::SetGreen, &IGLDrawAttr::GetBlue, &IGLDrawAttr::SetBlue, &IGLDrawAttr::GetAlpha,
          &IGLDrawAttr::SetAlpha, &IGLDrawAttr::GetPointSize, &IGLDrawAttr::SetPointSize,
          &IGLDrawAttr::GetPointSizeLimits, &IGLDrawAttr::GetPointSizeStep, &IGLDrawAttr::GetLineWidth,
          &IGLDrawAttr::SetLineWidth, &IGLDrawAttr::GetLineWidthLimits, &IGLDrawAttr::GetLineWidthStep,
          &IGLDrawAttr::GetLineStipplePattern, &IGLDrawAttr::SetLineStipplePattern,
          &IGLDrawAttr::GetLineStippleFactor, &IGLDrawAttr::SetLineStippleFactor,
          &IGLDrawAttr::EnableDrawMode, &IGLDrawAttr::IsDrawModeEnabled, &IGLDrawAttr::GetDrawMode,
          &IGLMaterial::GetAmbientReflectance, &IGLMaterial::SetAmbientReflectance,
          &IGLMaterial::GetDiffuseReflectance, &IGLMaterial::SetDiffuseReflectance,
          &IGLMaterial::GetSpecularReflectance, &IGLMaterial::SetSpecularReflectance,
          &IGLMaterial::GetEmissionLight, &IGLMaterial::SetEmissionLight, &IGLMaterial::GetShininess,
          &IGLMaterial::SetShininess, &IGLMaterial::EnableDrawMode, &IGLMaterial::IsDrawModeEnabled,
          &IGLMaterial::GetDrawMode, &IGLCollection::Add, &IGLCollection::Remove, &IGLCollection::Empty,
          &IGLCollection::Has, &IGLCollection::GetSize, &IGLCollection::GetFirst, &IGLCollection::GetLast,
          &IGLCollection::GetNext, &IGLCollection::GetPrev, &IGLCollection::CopyTo, &IGLCollection::AppendTo,
          Walk>();

// Print belongs to the draw thread. Host threads call it too, to test that it fails there safely.
constexpr auto kFonts =
    Table<Operation::kAny, &IGLFont::IsTrueType, &IGLFont::GetFace, &IGLFont::GetStyle, &IGLFont::GetWeight,
          &IGLFont::GetOrientation, &IGLFont::GetWidth, &IGLFont::SetWidth, &IGLFont::GetHeight,
          &IGLFont::SetHeight, &IGLFont::GetExtrusionZ, &IGLFont::SetExtrusionZ, &IGLFont::GetEscapement_DEG,
          &IGLFont::SetEscapement_DEG, &IGLFont::GetStringWidth, &IGLFont::Print>();

}  // namespace

std::span<const Operation> SceneOperations() noexcept { return kScene; }
std::span<const Operation> ValueOperations() noexcept { return kValues; }
std::span<const Operation> FontOperations() noexcept { return kFonts; }

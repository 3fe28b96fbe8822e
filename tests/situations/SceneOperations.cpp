// The rows of the objects that a scene is made of, one row per interface where no operation needs GL or a
// lock of the context.

#include <gllib/IGLBitmap.h>
#include <gllib/IGLCoord.h>
#include <gllib/IGLDrawAttr.h>
#include <gllib/IGLFont.h>
#include <gllib/IGLLight.h>
#include <gllib/IGLMaterial.h>

#include "situations/Operations.h"

namespace {

GLDATA_RGBA g_sColor{0.2f, 0.6f, 0.9f, 1};

GLPtr<IGLCoord> EyeOf(Stage& s) {
  GLPtr<IGLCoord> eye;
  s.viewer->GetCoord(eye.Put());
  return eye;
}

constexpr Operation kOperations[] = {
    {"IGLViewer, projection",
     [](Stage& s) {
       GLDATA_POINT low{-12, -8, 1}, high{12, 8, 90};
       double value = 0;
       LONG flag = 0;
       return All({s.viewer->SetOrthoExtents(&low, &high), s.viewer->GetOrthoExtents(&low, &high),
                   s.viewer->SetOrtho(1), s.viewer->IsOrtho(&flag), s.viewer->SetEyeFovy_DEG(30),
                   s.viewer->GetEyeFovy_DEG(&value), s.viewer->SetEyeZNearAndFar(1, 900),
                   s.viewer->GetEyeZNear(&value), s.viewer->GetEyeZFar(&value), s.viewer->SetEyeAspect(1),
                   s.viewer->GetEyeAspect(&value)});
     }},
    {"IGLViewer, conversions",
     [](Stage& s) {
       GLDATA_POINT point{1, 1, 1};
       return All({s.viewer->PointWCStoSCS(&point), s.viewer->PointSCStoWCS(&point)});
     }},
    {"IGLViewer, a hidden one",
     [](Stage& s) {
       IGLViewer& v = *s.spare;
       const auto members = GLCreate<IGLCollection>(CLSID_GLCollection);
       LONG flag = 0;
       int number = 0;
       float share = 0;
       GLDATA_RGBA color{};
       return All({v.Show(0),
                   v.IsVisible(&flag),
                   v.Clip(1),
                   v.IsClipped(&flag),
                   v.ScaleClip(1),
                   v.IsClipScaled(&flag),
                   v.ShowClipFrame(1),
                   v.IsClipFrameVisible(&flag),
                   v.ShowGauges(1),
                   v.AreGaugesVisible(&flag),
                   v.SetClipRectangle(1, 2, 3, 4),
                   v.GetClipX(&number),
                   v.GetClipY(&number),
                   v.GetClipWidth(&number),
                   v.GetClipHeight(&number),
                   v.SetFrameColor(&g_sColor),
                   v.GetFrameColor(&color),
                   v.SetFrameThickness(2),
                   v.GetFrameThickness(&share),
                   v.SetFrameOffset(0.5f),
                   v.GetFrameOffset(&share),
                   v.EnumGauges(members.Get()),
                   v.RemoveAllGauges(),
                   s.spare.As<IGLViewer2>()->SetShowAxes(1),
                   s.spare.As<IGLViewer2>()->GetShowAxes(&flag)});
     }},
    {"IGLViewer::AddGauge, RemoveGauge",
     [](Stage& s) {
       struct Nothing final : GLViewerGaugeBase {
         HRESULT Draw(IGLCanvas*, IGLContext*) noexcept override { return S_OK; }
       };
       const auto gauge = GLMake<Nothing>();
       return All({s.viewer->AddGauge(gauge.Get()), s.viewer->RemoveGauge(gauge.Get())});
     }},
    {"IGLCoord, the eye's",
     [](Stage& s) {
       const auto eye = EyeOf(s);
       GLDATA_POINT point{0.5, 0, 50}, axis{0, 0, 1};
       GLDATA_MATRIX6D six{};
       GLDATA_MATRIX16D sixteen{};
       return All(
           {eye->SetOrigin(&point),      eye->SetOrigin3d(1, 0, 50), eye->MoveOrigin(&axis),
            eye->MoveOrigin3d(0, 0, -1), eye->MoveRight(0.5),        eye->MoveUp(1),
            eye->MoveForward(1),         eye->RotateAboutX_RAD(0.1), eye->RotateAboutY_RAD(0.1),
            eye->RotateAboutZ_RAD(0.1),  eye->GetOrigin(&point),     eye->Rotate_RAD(0.1, &axis, &axis),
            eye->GetMatrix6d(&six),      eye->SetMatrix6d(&six),     eye->GetMatrix16d(&sixteen),
            eye->SetMatrix16d(&sixteen), eye->VectorPCStoLCS(&axis), eye->VectorLCStoPCS(&axis),
            eye->PointPCStoLCS(&axis),   eye->PointLCStoPCS(&axis)});
     }},
    {"IGLLight",
     [](Stage& s) {
       IGLLight& l = *s.light;
       LONG flag = 0;
       float value = 0;
       GLDATA_POINT point{};
       GLPtr<IGLCoord> place;
       return All({l.Enable(1),
                   l.IsEnabled(&flag),
                   l.SetAsSpotlight(1),
                   l.IsSpotlight(&flag),
                   l.SetDiffuseLight(&g_sColor),
                   l.GetDiffuseLight(&g_sColor),
                   l.GetSpotPosition(&point),
                   l.SetSpotPosition(&point),
                   l.GetCutOffAngle_DEG(&value),
                   l.SetCutOffAngle_DEG(value),
                   l.GetSpotExponent(&value),
                   l.SetSpotExponent(value),
                   l.SetConstantAttenuation(1.5f),
                   l.GetLinearAttenuation(&value),
                   l.SetLinearAttenuation(value),
                   l.GetQuadraticAttenuation(&value),
                   l.SetQuadraticAttenuation(value),
                   l.GetDirection(&point),
                   l.SetDirection(&point),
                   l.GetCoord(place.Put()),
                   l.AttachCoord(place.Get())});
     }},
    {"IGLFog",
     [](Stage& s) {
       GLDATA_RGBA color{};
       float value = 0;
       LONG flag = 0;
       eGLFogCalcMode mode{};
       return All({s.fog->Enable(1), s.fog->IsEnabled(&flag), s.fog->GetCalcMode(&mode),
                   s.fog->SetCalcMode(mode), s.fog->SetFogDensity(0.02f), s.fog->GetFogDensity(&value),
                   s.fog->SetFogStartAndEnd(0, 1000), s.fog->GetFogStart(&value), s.fog->GetFogEnd(&value),
                   s.fog->GetFogColor(&color), s.fog->SetFogColor(&color)});
     }},
    {"IGLFont, measuring",
     [](Stage& s) {
       float value = 0;
       int number = 0;
       LONG flag = 0;
       GLString face;
       return All({s.font->GetStringWidth(GLString("text"), &value), s.font->IsTrueType(&flag),
                   s.font->GetFace(face.Put()), s.font->GetStyle(&number), s.font->GetWeight(&number),
                   s.font->GetOrientation(&value), s.font->GetWidth(&value), s.font->GetHeight(&value),
                   s.font->GetExtrusionZ(&value), s.font->GetEscapement_DEG(&value),
                   s.font->SetEscapement_DEG(value), s.font->SetWidth(1) == E_GL_BADSTATE ? S_OK : E_FAIL});
     }},
    {"IGLCollection",
     [](Stage& s) {
       const auto from = GLCreate<IGLCollection>(CLSID_GLCollection),
                  to = GLCreate<IGLCollection>(CLSID_GLCollection);
       LONG has = 0;
       int size = 0;
       GLPOSITION at{};
       GLPtr<IUnknown> member;
       return All({from->Add(s.viewer.Get()), from->Has(s.viewer.Get(), &has), from->GetSize(&size),
                   from->GetFirst(&at, member.Put()), from->GetLast(&at, member.Put()),
                   from->CopyTo(to.Get()), from->AppendTo(to.Get()), from->Remove(s.viewer.Get()),
                   to->Empty()});
     }},
    {"IGLDrawAttr, IGLMaterial",
     [](Stage&) {
       const auto attributes = GLCreate<IGLDrawAttr>(CLSID_GLDrawAttr);
       const auto material = GLCreate<IGLMaterial>(CLSID_GLMaterial);
       float low = 0, high = 0;
       return All({attributes->SetColor(&g_sColor), attributes->GetPointSizeLimits(&low, &high),
                   attributes->GetLineWidthLimits(&low, &high), attributes->SetLineWidth(2),
                   attributes->EnableDrawMode(GLDM_LINE_FRONT, 1),
                   material->SetDiffuseReflectance(1, &g_sColor), material->SetShininess(1, 0.5f)});
     }},
    {"IGLPixmap, IGLBitmap",
     [](Stage&) {
       const auto image = GLCreate<IGLPixmap>(CLSID_GLPixmap);
       const auto stencil = GLCreate<IGLBitmap>(CLSID_GLBitmap);
       GLDATA_RGBA4B pixel{};
       LONG opaque = 0;
       return All({image->Initialize(4, 4, {1, 2, 3, 4}), image->SetPixel(1, 1, {5, 6, 7, 8}),
                   image->GetPixel(1, 1, &pixel), image->ScaleColor(&g_sColor), image->MakeNegative(0),
                   image->SetZoom(2, 2), image->SetClip(0, 0, 2, 2), stencil->Initialize(8, 8, 1),
                   stencil->SetPixel(1, 1, 0), stencil->GetPixel(1, 1, &opaque),
                   stencil->SetColor(&g_sColor)});
     }},
};

}  // namespace

std::span<const Operation> SceneOperations() { return kOperations; }

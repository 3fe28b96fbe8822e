// The rows of the context's own operations.

#include <gllib/IGLFont.h>

#include "situations/Operations.h"

namespace {

GLDATA_POINT g_sCorner{2, 0, 0};

template <class Get>
HRESULT Flag(Get aGet) {
  LONG value = -1;
  const HRESULT result = aGet(&value);
  return result == S_OK && value == -1 ? E_FAIL : result;
}

GLPtr<IGLContext2> Control(Stage& s) { return s.context.As<IGLContext2>(); }

HRESULT Select(Stage& s) {
  GLDATA_POINT first{-0.9, -0.9, 0}, second{0.9, 0.9, 0};
  int size = 16;
  ULONG ids[16] = {};
  const HRESULT result = s.context->Select(s.viewer.Get(), &first, &second, 0, 0, &size, ids);
  return result == S_OK && size == 0 ? E_FAIL : result;
}

/// Makes a font by a creator, and destroys it.
template <bool kCounted, class Create>
HRESULT MakeFont(Stage& s, Create aCreate) {
  IGLFont* font = nullptr;
  const HRESULT created = aCreate(&font);
  if (created != S_OK) return created;
  const auto held = kCounted ? GLPtr<IGLFont>::FromCounted(font) : GLPtr<IGLFont>::FromBorrowed(font);
  GLPtr<IGLFont> found;
  return All({s.context->SetDefaultFont(font), s.context->GetDefaultFont(found.Put()),
              found == held ? S_OK : E_FAIL, s.context->DestroyFont(font)});
}

constexpr Operation kOperations[] = {
    {"Initialize", [](Stage& s) { return s.context->Initialize(0); }, kOnOwnThread},
    {"GetWindow",
     [](Stage& s) {
       ULONG_PTR window = 0;
       return s.context->GetWindow(&window);
     }},
    {"EnableDepth", [](Stage& s) { return s.context->EnableDepth(0); }},
    {"IsDepthEnabled", [](Stage& s) { return Flag([&](LONG* v) { return s.context->IsDepthEnabled(v); }); }},
    {"GetBackgroundColor",
     [](Stage& s) {
       GLDATA_RGBA color{};
       return s.context->GetBackgroundColor(&color);
     }},
    {"SetBackgroundColor",
     [](Stage& s) {
       GLDATA_RGBA color{0.5f, 0.2f, 0.4f, 1};
       return s.context->SetBackgroundColor(&color);
     }},
    {"GetDrawThreadPars",
     [](Stage& s) {
       int priority = 0;
       ULONG preferred = 0, mustSleep = 0;
       return s.context->GetDrawThreadPars(&priority, &preferred, &mustSleep);
     }},
    {"SetDrawThreadPars", [](Stage& s) { return s.context->SetDrawThreadPars(1, 30, 20); }},
    {"AttachPainter",
     [](Stage& s) { return s.context->AttachPainter(GLMake<TestPainter>([](Scene&) {}).Get()); }},
    {"DetachPainter", [](Stage& s) { return s.context->DetachPainter(); }},
    {"AttachCapture", [](Stage& s) { return s.context->AttachCapture(GLMake<TestCapture>().Get()); }},
    {"DetachCapture", [](Stage& s) { return s.context->DetachCapture(); }},
    {"GetViewportWidth, GetViewportHeight",
     [](Stage& s) {
       int size = 0;
       return All({s.context->GetViewportWidth(&size), s.context->GetViewportHeight(&size)});
     }},
    {"SetViewport", [](Stage& s) { return s.context->SetViewport(0, 0, 40, 30); }},
    {"DeviceToSCS, SCSToDevice",
     [](Stage& s) {
       double x = 0, y = 0;
       int pixelX = 0, pixelY = 0;
       return All({s.context->DeviceToSCS(3, 4, &x, &y), s.context->SCSToDevice(x, y, &pixelX, &pixelY)});
     }},
    {"CreateViewer",
     [](Stage& s) {
       IGLViewer* viewer = nullptr;
       return s.context->CreateViewer(0, 1, &viewer);
     }},
    {"DestroyViewer",
     [](Stage& s) {
       IGLViewer* viewer = nullptr;
       return All({s.context->CreateViewer(0, 1, &viewer), s.context->DestroyViewer(viewer)});
     }},
    {"ClipPlane",
     [](Stage& s) {
       GLDATA_POINT up{0, 2, 0}, forward{0, 0, 5}, origin{-4, -4, 0};
       return s.context->ClipPlane(&origin, &up, &forward);
     }},
    {"ClipPlane through a line, ResetClipPlanes",
     [](Stage& s) {
       GLDATA_POINT origin{};
       const HRESULT refused = s.context->ClipPlane(&origin, &g_sCorner, &origin);
       return refused == E_GL_BADVALUE || refused == E_GL_BADSTATE ? s.context->ResetClipPlanes() : E_FAIL;
     }},
    {"EnableLighting", [](Stage& s) { return s.context->EnableLighting(0); }},
    {"IsLightingEnabled",
     [](Stage& s) { return Flag([&](LONG* v) { return s.context->IsLightingEnabled(v); }); }},
    {"EnableAmbientLight", [](Stage& s) { return s.context->EnableAmbientLight(0); }},
    {"IsAmbientLightEnabled",
     [](Stage& s) { return Flag([&](LONG* v) { return s.context->IsAmbientLightEnabled(v); }); }},
    {"GetAmbientLight, SetAmbientLight",
     [](Stage& s) {
       GLDATA_RGBA color{};
       const HRESULT got = s.context->GetAmbientLight(&color);
       color.m_fRed = 0.9f;
       return All({got, s.context->SetAmbientLight(&color)});
     }},
    {"CreateLight",
     [](Stage& s) {
       IGLLight* light = nullptr;
       return s.context->CreateLight(&light);
     }},
    {"DestroyLight", [](Stage& s) { return s.context->DestroyLight(s.light.Get()); }},
    {"EnumViewers, EnumLights, EnumFonts",
     [](Stage& s) {
       const auto all = GLCreate<IGLCollection>(CLSID_GLCollection);
       return All({s.context->EnumViewers(all.Get()), s.context->EnumLights(all.Get()),
                   s.context->EnumFonts(all.Get())});
     }},
    {"GetFog",
     [](Stage& s) {
       GLPtr<IGLFog> fog;
       return s.context->GetFog(fog.Put());
     }},
    {"CreateSystemFont",
     [](Stage& s) { return MakeFont<true>(s, [&](IGLFont** f) { return s.context->CreateSystemFont(f); }); }},
    {"CreateInternalFont",
     [](Stage& s) {
       return MakeFont<true>(
           s, [&](IGLFont** f) { return Control(s)->CreateInternalFont(GLString("HAND"), f); });
     }},
    {"CreateRasterFont",
     [](Stage& s) {
       return MakeFont<false>(s, [&](IGLFont** f) {
         return s.context->CreateRasterFont(GLString("DejaVu Sans"), 0, 400, 0, 8, 0, f);
       });
     }},
    {"CreateTrueTypeFont",
     [](Stage& s) {
       return MakeFont<false>(s, [&](IGLFont** f) {
         return s.context->CreateTrueTypeFont(GLString("DejaVu Sans"), 0, 400, 0, 0, f);
       });
     }},
    {"SetDefaultFont, GetDefaultFont",
     [](Stage& s) {
       GLPtr<IGLFont> font;
       return All({s.context->SetDefaultFont(s.font.Get()), s.context->GetDefaultFont(font.Put())});
     }},
    {"Select", Select, kOnOwnThread},
    {"SetControlledDrawThread", [](Stage& s) { return Control(s)->SetControlledDrawThread(0, 0); }},
    {"TriggerDrawThread", [](Stage& s) { return Control(s)->TriggerDrawThread(); }},
    {"SuspendDrawThread", [](Stage& s) { return s.context.As<IGLContext12>()->SuspendDrawThread(); }},
    {"ResumeDrawThread", [](Stage& s) { return s.context.As<IGLContext12>()->ResumeDrawThread(); }},
    {"GetCanvas",
     [](Stage& s) {
       GLPtr<IGLCanvas> canvas;
       return s.context.As<IGLContext14_2>()->GetCanvas(canvas.Put());
     }},
    {"multisampling",
     [](Stage& s) {
       const auto samples = s.context.As<IGLContext14_3>();
       LONG value = 0;
       return All({samples->put_bFSAA(1), samples->get_bFSAA(&value), samples->put_lFSAAMaxSamples(2),
                   samples->get_lFSAAMaxSamples(&value)});
     }},
    {"AddRef, Release",
     [](Stage& s) {
       s.context->AddRef();
       return s.context->Release() != 0 ? S_OK : E_FAIL;
     }},
};

}  // namespace

std::span<const Operation> ContextOperations() { return kOperations; }

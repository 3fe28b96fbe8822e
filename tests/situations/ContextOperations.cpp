// Table rows: operations of the context.

#include "situations/Operations.h"

namespace {

using I = IGLContext;

GLPtr<IGLContext2> Control(Stage& s) { return s.context.As<IGLContext2>(); }
GLPtr<IGLContext14_3> Samples(Stage& s) { return s.context.As<IGLContext14_3>(); }

HRESULT Select(Stage& s) {
  int size = 16;
  ULONG ids[16] = {};
  const HRESULT result = s.context->Select(s.viewer.Get(), At(GLDATA_POINT{-0.9, -0.9, 0}),
                                           At(GLDATA_POINT{0.9, 0.9, 0}), 0, 0, &size, ids);
  return result == S_OK && size == 0 ? E_FAIL : result;
}

HRESULT RefuseALine(Stage& s) {
  GLDATA_POINT a{}, b{2, 0, 0};
  const HRESULT refused = s.context->ClipPlane(&a, &b, &a);
  return refused == E_GL_BADVALUE || refused == E_GL_BADSTATE ? s.context->ResetClipPlanes() : E_FAIL;
}

HRESULT ListMembers(Stage& s) {
  const auto all = GLCreate<IGLCollection>(CLSID_GLCollection);
  return All(
      {s.context->EnumViewers(all.Get()), s.context->EnumLights(all.Get()), s.context->EnumFonts(all.Get())});
}

enum class Returns { kCounted, kBorrowed };  // the kind of reference that a creator returns

/// Creates a font, and destroys it.
template <Returns kReturns, class Create>
HRESULT MakeFont(Stage& s, Create aCreate) {
  IGLFont* font = nullptr;
  const HRESULT created = aCreate(&font);
  if (created != S_OK) return created;
  const auto held =
      kReturns == Returns::kCounted ? GLPtr<IGLFont>::FromCounted(font) : GLPtr<IGLFont>::FromBorrowed(font);
  GLPtr<IGLFont> found;
  return All({s.context->SetDefaultFont(font), s.context->GetDefaultFont(found.Put()),
              found == held ? S_OK : E_FAIL, s.context->DestroyFont(font)});
}

HRESULT MakeViewer(Stage& s) {
  IGLViewer *stays = nullptr, *goes = nullptr;
  return All({s.context->CreateViewer(0, 1, &stays), s.context->CreateViewer(0, 1, &goes),
              s.context->DestroyViewer(goes)});
}

HRESULT SetAmbientLight(Stage& s) {
  GLDATA_RGBA color{};
  const HRESULT got = s.context->GetAmbientLight(&color);
  color.m_fRed = 0.9f;
  return All({got, s.context->SetAmbientLight(&color)});
}

constexpr Operation kOperations[] = {
    {"Initialize", [](Stage& s) { return s.context->Initialize(0); }, kOnOwnThread},
    {"GetWindow", [](Stage& s) { return Read(*s.context, &I::GetWindow); }},
    {"EnableDepth", [](Stage& s) { return s.context->EnableDepth(0); }},
    {"switches read",
     [](Stage& s) {
       return Read(*s.context, &I::IsDepthEnabled, &I::IsLightingEnabled, &I::IsAmbientLightEnabled);
     }},
    {"GetBackgroundColor", [](Stage& s) { return Read(*s.context, &I::GetBackgroundColor); }},
    {"SetBackgroundColor",
     [](Stage& s) {
       return s.context->SetBackgroundColor(At(GLDATA_RGBA{0.5f, 0.2f, 0.4f, 1}));
     }},
    {"GetDrawThreadPars", [](Stage& s) { return Read(*s.context, &I::GetDrawThreadPars); }},
    {"SetDrawThreadPars", [](Stage& s) { return s.context->SetDrawThreadPars(1, 30, 20); }},
    {"AttachPainter",
     [](Stage& s) { return s.context->AttachPainter(GLMake<TestPainter>([](Scene&) {}).Get()); }},
    {"DetachPainter", [](Stage& s) { return s.context->DetachPainter(); }},
    {"AttachCapture", [](Stage& s) { return s.context->AttachCapture(GLMake<TestCapture>().Get()); }},
    {"DetachCapture", [](Stage& s) { return s.context->DetachCapture(); }},
    {"viewport read", [](Stage& s) { return Read(*s.context, &I::GetViewportWidth, &I::GetViewportHeight); }},
    {"SetViewport", [](Stage& s) { return s.context->SetViewport(0, 0, 40, 30); }},
    {"DeviceToSCS, SCSToDevice",
     [](Stage& s) {
       return All(
           {s.context->DeviceToSCS(3, 4, At(0.0), At(0.0)), s.context->SCSToDevice(0.1, 0.2, At(0), At(0))});
     }},
    {"CreateViewer, DestroyViewer", MakeViewer},
    {"ClipPlane",
     [](Stage& s) {
       return s.context->ClipPlane(At(GLDATA_POINT{-4, -4, 0}), At(GLDATA_POINT{0, 2, 0}),
                                   At(GLDATA_POINT{0, 0, 5}));
     }},
    {"ClipPlane through a line, ResetClipPlanes", RefuseALine},
    {"EnableLighting", [](Stage& s) { return s.context->EnableLighting(0); }},
    {"EnableAmbientLight", [](Stage& s) { return s.context->EnableAmbientLight(0); }},
    {"GetAmbientLight, SetAmbientLight", SetAmbientLight},
    {"CreateLight", [](Stage& s) { return s.context->CreateLight(At<IGLLight*>(nullptr)); }},
    {"DestroyLight", [](Stage& s) { return s.context->DestroyLight(s.light.Get()); }},
    {"EnumViewers, EnumLights, EnumFonts", ListMembers},
    {"GetFog", [](Stage& s) { return s.context->GetFog(GLPtr<IGLFog>().Put()); }},
    {"CreateSystemFont",
     [](Stage& s) {
       return MakeFont<Returns::kCounted>(s, [&](IGLFont** f) { return s.context->CreateSystemFont(f); });
     }},
    {"CreateInternalFont",
     [](Stage& s) {
       return MakeFont<Returns::kCounted>(
           s, [&](IGLFont** f) { return Control(s)->CreateInternalFont(GLString("HAND"), f); });
     }},
    {"CreateRasterFont",
     [](Stage& s) {
       return MakeFont<Returns::kBorrowed>(s, [&](IGLFont** f) {
         return s.context->CreateRasterFont(GLString("DejaVu Sans"), 0, 400, 0, 8, 0, f);
       });
     }},
    {"CreateTrueTypeFont",
     [](Stage& s) {
       return MakeFont<Returns::kBorrowed>(s, [&](IGLFont** f) {
         return s.context->CreateTrueTypeFont(GLString("DejaVu Sans"), 0, 400, 0, 0, f);
       });
     }},
    {"SetDefaultFont", [](Stage& s) { return s.context->SetDefaultFont(s.font.Get()); }},
    {"Select", Select, kOnOwnThread},
    {"SetControlledDrawThread", [](Stage& s) { return Control(s)->SetControlledDrawThread(0, 0); }},
    {"TriggerDrawThread", [](Stage& s) { return Control(s)->TriggerDrawThread(); }},
    {"SuspendDrawThread", [](Stage& s) { return s.context.As<IGLContext12>()->SuspendDrawThread(); }},
    {"ResumeDrawThread", [](Stage& s) { return s.context.As<IGLContext12>()->ResumeDrawThread(); }},
    {"GetCanvas",
     [](Stage& s) { return s.context.As<IGLContext14_2>()->GetCanvas(GLPtr<IGLCanvas>().Put()); }},
    {"multisampling",
     [](Stage& s) {
       return All({Samples(s)->put_bFSAA(1), Samples(s)->put_lFSAAMaxSamples(2),
                   Read(*Samples(s), &IGLContext14_3::get_bFSAA, &IGLContext14_3::get_lFSAAMaxSamples)});
     }},
    {"AddRef, Release",
     [](Stage& s) {
       s.context->AddRef();
       return s.context->Release() != 0 ? S_OK : E_FAIL;
     }},
};

}  // namespace

std::span<const Operation> ContextOperations() { return kOperations; }

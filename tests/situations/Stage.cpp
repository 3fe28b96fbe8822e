// Stage: the scene, its callbacks, and the values of its getters.

#include "situations/Stage.h"

#include <stdexcept>

#include "context/GLContext.h"
#include "support/TestDisplay.h"

namespace {

constexpr ULONG kForever = 0xFFFFFFFF;

void Square(IGLCanvas& aCanvas, double aX, double aY, double aSide, double aZ) {
  aCanvas.SetVertexNormal3d(0, 0, 1);
  DrawRectangle(aCanvas, aX, aY, aX + aSide, aY + aSide, aZ);
}

template <class Function>
void ForEach(IGLCollection& aMembers, Function aFunction) {
  GLPOSITION at{};
  GLPtr<IUnknown> member;
  for (aMembers.GetFirst(&at, member.Put()); member; aMembers.GetNext(&at, member.Put()))
    aFunction(member.Get());
}

class CallingTask final : public PEvent {
 public:
  CallingTask(const void* aOwner, std::function<void()> aCall)
      : PEvent(aOwner, Lifetime::kOneRun), m_Call(std::move(aCall)) {}
  void Run() override { m_Call(); }

 private:
  std::function<void()> m_Call;
};

}  // namespace

/// Drawn after the painter, at the end of the viewer pass.
class Stage::Gauge final : public GLViewerGaugeBase {
 public:
  explicit Gauge(Stage& aStage) : m_Stage(aStage) {}
  HRESULT Draw(IGLCanvas* aCanvas, IGLContext*) noexcept override {
    if (!m_Stage.m_bCapturing) m_Stage.CallAt(Place::kGauge);
    GLDATA_RGBA color{1, 1, 0, 1};
    aCanvas->SetVertexColor(&color);
    Square(*aCanvas, 0.5, -0.9, 0.3, 0);
    m_Stage.m_uError |= glGetError();
    if (m_Stage.m_bCapturing || !m_Stage.m_bWanted || m_Stage.m_Armed != Place::kNowhere) return S_OK;
    m_Stage.m_Picture = Picture::Read(kWidth, kHeight);
    m_Stage.m_bWanted = false;
    return S_OK;
  }

 private:
  Stage& m_Stage;
};

/// Sets m_bCapturing of the stage while a capture draws.
class Stage::Picturing final : public TestCapture {
 public:
  explicit Picturing(Stage& aStage) : m_Stage(aStage) {}
  HRESULT IsEnabled(LONG* aEnabled) noexcept override {
    const HRESULT result = TestCapture::IsEnabled(aEnabled);
    m_Stage.m_bCapturing = *aEnabled != 0;
    return result;
  }
  HRESULT OnData(LONG aSuccess) noexcept override {
    m_Stage.m_bCapturing = false;
    m_Stage.CallAt(Place::kOnData);
    return TestCapture::OnData(aSuccess);
  }

 private:
  Stage& m_Stage;
};

Stage::Stage() {
  PrepareDisplay();
  if (!context || FAILED(context->Initialize(0))) throw std::runtime_error("no context");
  context.As<IGLContext14_2>()->GetCanvas(canvas.Put());
  context->GetFog(fog.Put());
  IGLViewer* made = nullptr;
  context->CreateViewer(0, 1, &made);
  spare = GLPtr<IGLViewer>::FromBorrowed(made);
  context->CreateViewer(0, 1, &made);
  viewer = GLPtr<IGLViewer>::FromBorrowed(made);
  m_Gauge = GLMake<Gauge>(*this).As<IGLViewerGauge>();
  viewer->AddGauge(m_Gauge.Get());
  viewer->ShowGauges(1);
  context.As<IGLContext2>()->CreateInternalFont(GLString("HAND"), font.Put());
  context->CreateSystemFont(system.Put());
  painter = GLMake<TestPainter>([this](Scene& scene) { Draw(scene); }).As<IGLPainter>();
  capture = GLPtr<TestCapture>::FromBorrowed(GLMake<Picturing>(*this).Get());
  capture->request = {.m_fZoom = 2, .m_sBackground = {0.1f, 0.3f, 0.1f, 1}};
  Reset();
  Frame();  // some drivers apply a window's size only at the end of a frame
}

Stage::~Stage() { context.Reset(); }

void Stage::Control() {
  const auto control = context.As<IGLContext2>();
  control->SetControlledDrawThread(1, kForever);
  context.As<IGLContext12>()->ResumeDrawThread();
  context->AttachCapture(capture.Get());
}

void Stage::Reset() {
  Arm(Place::kNowhere, {});
  Control();
  GLDATA_RGBA background{0.1f, 0.1f, 0.3f, 1}, ambient{0.4f, 0.4f, 0.4f, 1}, grey{0.5f, 0.5f, 0.5f, 1};
  context->AttachPainter(painter.Get());
  context->SetViewport(0, 0, kWidth, kHeight);
  context->SetBackgroundColor(&background);
  context->EnableDepth(1);
  context->EnableLighting(1);
  context->EnableAmbientLight(1);
  context->SetAmbientLight(&ambient);
  context->ResetClipPlanes();
  context->SetDrawThreadPars(2, 40, 10);
  context.As<IGLContext14_3>()->put_bFSAA(0);
  context.As<IGLContext14_3>()->put_lFSAAMaxSamples(4);
  ForgetMembers();
  light->Enable(1);
  light->SetDiffuseLight(&grey);
  light->SetConstantAttenuation(1);
  fog->Enable(0);
  fog->SetFogDensity(0.01f);
  GLDATA_POINT low{-10, -10, 0}, high{10, 10, 100};
  viewer->SetOrthoExtents(&low, &high);
  viewer->SetOrtho(1);
  viewer->Show(1);
  const auto eye = EyeOf(*viewer);
  eye->ResetRotation();
  eye->SetOrigin3d(0, 0, 50);
  canvas.As<IGLCanvas13_1>()->SetSelectionMode(0);
  canvas.As<IGLCanvas13_1>()->ClearTransparentTriangles();
}

// Only the stage's own viewers and lights remain.
void Stage::ForgetMembers() {
  const auto members = GLCreate<IGLCollection>(CLSID_GLCollection);
  context->EnumViewers(members.Get());
  ForEach(*members, [&](IUnknown* member) {
    auto* const other = static_cast<IGLViewer*>(member);
    if (viewer.Get() != other && spare.Get() != other) context->DestroyViewer(other);
  });
  LONG has = 0;
  context->EnumLights(members.Get());
  ForEach(*members, [&](IUnknown* member) {
    if (light.Get() != member) context->DestroyLight(static_cast<IGLLight*>(member));
  });
  members->Has(light.Get(), &has);
  if (has != 0) return;
  IGLLight* made = nullptr;
  context->CreateLight(&made);
  light = GLPtr<IGLLight>::FromBorrowed(made);
}

void Stage::Arm(Place aPlace, std::function<void()> aCall) {
  m_Armed = Place::kNowhere;
  m_Call = std::move(aCall);
  m_Armed = aPlace;
}

void Stage::CallAt(Place aPlace) {
  if (m_Armed != aPlace) return;
  m_Call();
  m_Armed = Place::kNowhere;
}

void Stage::Task(std::function<void()> aCall) {
  std::atomic<bool> done{false};
  static_cast<GLContext&>(*context).PostTask(new CallingTask(this, [&] { aCall(), done = true; }));
  EXPECT_TRUE(Eventually([&] { return done.load(); })) << "the task did not run";
}

Outcome Stage::Frame() {
  m_uError = 0;
  m_bWanted = true;
  context.As<IGLContext2>()->TriggerDrawThread();
  EXPECT_TRUE(Eventually([&] { return !m_bWanted; })) << "no frame was drawn";
  return {std::exchange(m_Picture, Picture()), {}, m_uError};
}

Outcome Stage::Capture() {
  m_uError = 0;
  capture->answer = -1;
  capture->Request(capture->target.Get(), capture->request);
  context.As<IGLContext2>()->TriggerDrawThread();
  EXPECT_TRUE(Eventually([&] { return capture->answer != -1; })) << "no capture was taken";
  EXPECT_EQ(capture->answer, 1) << "the capture failed";
  return {PictureOf(*capture->target), {}, m_uError};
}

Outcome Stage::Pick() {
  m_uError = 0;
  const Selection got =
      ::Pick(*context, *viewer, {-0.95, -0.95, 0}, {0.95, 0.95, 0}, {.enclosed = true, .capacity = 16});
  EXPECT_EQ(got.result, S_OK);
  return {Picture(), got.ids, m_uError};
}

// Draws the list, makes the call, and draws the rest. Effects of the call on the pass are therefore visible.
void Stage::Draw(Scene& aScene) {
  IGLCanvas& drawn = aScene.Canvas();
  GLint mode = GL_RENDER;
  glGetIntegerv(GL_RENDER_MODE, &mode);
  const Place place = mode == GL_SELECT ? Place::kPick : m_bCapturing ? Place::kCapture : Place::kFrame;
  const bool listed = place == Place::kFrame && m_Armed == Place::kOpenList;
  LONG valid = 0;
  drawn.IsCompiledList(list, &valid);
  if (valid == 0) {
    drawn.BeginCompileList(&list);
    DrawFirst(drawn);
    drawn.EndCompileList();
  }
  GLDATA_POINT outside{1e4, 0, 0};
  for (const auto& text : {font, system}) text->Print(m_Text, &outside);  // built while no list is open
  int open = 0;
  if (listed) drawn.BeginCompileList(&open);
  drawn.SetTestID(1);
  drawn.DrawCompiledList(list);
  CallAt(listed ? Place::kOpenList : place);
  DrawSecond(drawn);
  if (listed) {
    drawn.EndCompileList();
    drawn.DrawCompiledList(open);
    drawn.DeleteCompiledList(open);
  }
  if (place == Place::kPick) m_uError |= glGetError();
}

void Stage::DrawFirst(IGLCanvas& aCanvas) {
  GLDATA_RGBA red{1, 0.2f, 0.2f, 1};
  aCanvas.SetVertexColor(&red);
  Square(aCanvas, -9, -9, 6, 0);
}

void Stage::DrawSecond(IGLCanvas& aCanvas) {
  GLDATA_RGBA green{0.2f, 1, 0.2f, 1}, white{1, 1, 1, 1};
  aCanvas.SetTestID(2);
  aCanvas.SetVertexColor(&green);
  Square(aCanvas, -6, -6, 6, -5);
  aCanvas.SetTestID(3);
  aCanvas.SetVertexColor(&white);
  GLDATA_POINT low{-9, -9, 1}, high{0, 1, 1};
  system->Print(m_Text, &low);
  aCanvas.PushModelviewMatrix(0);
  GLDATA_POINT half{0.4, 0.4, 1};
  aCanvas.Scale(&half);
  font->Print(m_Text, &high);
  aCanvas.PopModelviewMatrix();
}

Settings Stage::Read() {
  Settings settings;
  const auto read = [&]<class I, class... T>(const char* aName, I& aObject,
                                             HRESULT (I::*... aGetters)(T*) noexcept) {
    (
        [&](T aValue) {
          (aObject.*aGetters)(&aValue);
          settings.emplace_back(aName, aValue);
        }(T()),
        ...);
  };
  const auto color = [&](const char* aName, auto& aObject, auto aGetter) {
    GLDATA_RGBA c{-1, -1, -1, -1};
    (aObject.*aGetter)(&c);
    for (const float part : {c.m_fRed, c.m_fGreen, c.m_fBlue, c.m_fAlpha}) settings.emplace_back(aName, part);
  };
  const auto members = [&](const char* aName, auto aEnum) {
    const auto all = GLCreate<IGLCollection>(CLSID_GLCollection);
    (context.Get()->*aEnum)(all.Get());
    read(aName, *all, &IGLCollection::GetSize);
  };
  read("switch", *context, &IGLContext::IsDepthEnabled, &IGLContext::IsLightingEnabled,
       &IGLContext::IsAmbientLightEnabled);
  read("multisampling", *context.As<IGLContext14_3>(), &IGLContext14_3::get_bFSAA,
       &IGLContext14_3::get_lFSAAMaxSamples);
  read("light", *light, &IGLLight::IsEnabled);
  read("fog", *fog, &IGLFog::IsEnabled, &IGLFog::GetFogDensity);
  read("viewer", *viewer, &IGLViewer::IsVisible, &IGLViewer::IsOrtho);
  read("canvas", *canvas.As<IGLCanvas13_1>(), &IGLCanvas13_1::GetSelectionMode,
       &IGLCanvas13_1::GetNumTransparentTriangles);
  read("viewport", *context, &IGLContext::GetViewportWidth, &IGLContext::GetViewportHeight);
  color("background", *context, &IGLContext::GetBackgroundColor);
  color("ambient light", *context, &IGLContext::GetAmbientLight);
  color("diffuse light", *light, &IGLLight::GetDiffuseLight);
  members("viewers", &IGLContext::EnumViewers);
  members("lights", &IGLContext::EnumLights);
  members("fonts", &IGLContext::EnumFonts);
  int priority = 99;
  ULONG preferred = 0, mustSleep = 0;
  context->GetDrawThreadPars(&priority, &preferred, &mustSleep);
  for (const int value : {priority, static_cast<int>(preferred), static_cast<int>(mustSleep)})
    settings.emplace_back("pace", value);
  GLDATA_POINT low{}, high{};
  viewer->GetOrthoExtents(&low, &high);
  for (const double value : {low.x, low.y, low.z, high.x, high.y, high.z})
    settings.emplace_back("extents", value);
  GLDATA_MATRIX6D at{};
  EyeOf(*viewer)->GetMatrix6d(&at);
  for (const double value : {at.x, at.y, at.z, at.m_dAngleX, at.m_dAngleY, at.m_dAngleZ})
    settings.emplace_back("eye", value);
  return settings;
}

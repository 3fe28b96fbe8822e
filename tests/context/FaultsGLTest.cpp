// The life of a context, repeated with faults: each time a different platform operation, or a different
// allocation, fails. The context must continue as far as possible, report the failure, and release all
// objects. Headless display.

#include "component/Module.h"
#include "context/window/WGLExtensions.h"
#include "support/Counting.h"
#include "support/LogLines.h"
#include "support/Scene.h"
#include "support/ScriptedDisplay.h"

namespace {

constexpr ULONG kForever = 0xFFFFFFFF, kIdentifier = 7;

/// Draws a square with text and a list, without any allocation.
class LifePainter final : public GLPainterBase {
 public:
  HRESULT Draw(IGLCanvas* aCanvas, IGLContext*, IGLViewer*) noexcept override {
    int list = 0;
    if (SUCCEEDED(aCanvas->BeginCompileList(&list))) aCanvas->EndCompileList();
    aCanvas->DeleteCompiledList(list);
    aCanvas->SetTestID(kIdentifier);
    DrawRectangle(*aCanvas, -50, -50, 50, 50);
    GLDATA_POINT start{};
    for (const auto& font : m_Fonts) {
      if (font) font->Print(m_Text, &start);
    }
    ++m_iPasses;
    return S_OK;
  }

  const GLString m_Text{"text"};
  std::array<GLPtr<IGLFont>, 2> m_Fonts;
  std::atomic<int> m_iPasses{0};
};

enum class Faults { kNone, kOne };

class Life {
 public:
  /// @param aFaults  how many operations may fail; a second life without faults detects remains of the first
  /// @param aSamples the highest number of samples of the formats; with 1 the probe finds no format
  explicit Life(Faults aFaults, LONG aSamples = 1)
      : m_bFaulty(aFaults == Faults::kOne), m_iSamples(aSamples) {}

  void Live() {
    const LONG before = g_iModuleLocks;
    {
      GLPtr<IGLContext> context;
      Take("create", {E_OUTOFMEMORY},
           [&] { return GLCreateObject(CLSID_GLContext, IGLContext::Identifier, context.PutVoid()); });
      if (context) Live(*context);
    }
    m_Painter->m_Fonts = {};
    EXPECT_TRUE(Eventually([&] { return g_iModuleLocks <= before; })) << "a context or object remains";
  }

 private:
  void Live(IGLContext& aContext) {
    const auto held = GLPtr<IGLContext>::FromBorrowed(&aContext);
    held.As<IGLContext14_3>()->put_bFSAA(1);
    held.As<IGLContext14_3>()->put_lFSAAMaxSamples(m_iSamples);
    IGLViewer* viewer = nullptr;
    const HRESULT made =
        Take("CreateViewer", {E_FAIL, E_GL_BADSTATE}, [&] { return aContext.CreateViewer(1, 1, &viewer); });
    if (made == E_GL_BADSTATE) return;  // the context was created without its parts
    if (!Initialize(aContext)) return;
    aContext.SetViewport(0, 0, 64, 48);
    GLDATA_POINT a{-60, 0, 0}, b{0, 0, 1}, c{60, 0, 0};
    Take("ClipPlane", {E_OUTOFMEMORY}, [&] { return aContext.ClipPlane(&a, &b, &c); });
    Take("ResetClipPlanes", {}, [&] { return aContext.ResetClipPlanes(); });
    IGLLight* light = nullptr;
    Take("CreateLight", {E_FAIL}, [&] { return aContext.CreateLight(&light); });
    Take("CreateSystemFont", {E_FAIL},
         [&] { return aContext.CreateSystemFont(m_Painter->m_Fonts[0].Put()); });
    Take("CreateInternalFont", {E_FAIL, E_OUTOFMEMORY},
         [&] { return held.As<IGLContext2>()->CreateInternalFont(m_Face, m_Painter->m_Fonts[1].Put()); });
    aContext.AttachPainter(m_Painter.Get());
    aContext.AttachCapture(m_Capture.Get());
    Frame(aContext);
    Select(aContext, *viewer);
    m_Capture->Request(m_Capture->target.Get(), {.m_iWidth = 16, .m_iHeight = 16});
    EXPECT_TRUE(Eventually([&] {
      Frame(aContext);  // without memory the request waits for a later frame
      return m_Capture->answer >= 0;
    })) << "OnData was not called";
    if (m_Capture->answer == 0) Excuse("the capture");
    if (!Initialize(aContext)) return;
    aContext.SetViewport(0, 0, 32, 32);
    Frame(aContext);
  }

  /// Takes a step, and repeats it once if it fails. @return the last result
  template <class Step>
  HRESULT Take(const char* aName, std::initializer_list<HRESULT> aFailures, Step aStep) {
    HRESULT result = aStep();
    if (result == S_OK) return result;
    EXPECT_EQ(std::count(aFailures.begin(), aFailures.end(), result), 1)
        << aName << " returns " << std::hex << result;
    Excuse(aName);
    result = aStep();
    EXPECT_TRUE(result == S_OK || result == E_GL_BADSTATE)
        << aName << " does not recover: " << std::hex << result;
    return result;
  }

  bool Initialize(IGLContext& aContext) {
    const HRESULT result = Take("Initialize", {E_FAIL, E_GL_BADSTATE}, [&] {
      const HRESULT first = aContext.Initialize(0);
      ULONG_PTR window = 1;
      aContext.GetWindow(&window);
      EXPECT_EQ(window != 0, first == S_OK) << "a failed Initialize leaves a window";
      return first;
    });
    GLPtr<IGLContext>::FromBorrowed(&aContext).As<IGLContext2>()->SetControlledDrawThread(1, kForever);
    EXPECT_TRUE(result != S_OK || g_afPointSizeRange[1] > 0) << "GL's limits are not read";
    return result == S_OK;
  }

  void Frame(IGLContext& aContext) {
    const int before = m_Painter->m_iPasses;
    const auto control = GLPtr<IGLContext>::FromBorrowed(&aContext).As<IGLContext2>();
    EXPECT_TRUE(Eventually([&] {
      control->TriggerDrawThread();  // a frame without a rendering context calls no painter
      return m_Painter->m_iPasses > before;
    })) << "no frame";
  }

  void Select(IGLContext& aContext, IGLViewer& aViewer) {
    int size = 0;
    ULONG ids[4] = {};
    Take("Select", {E_OUTOFMEMORY, E_GL_BADSTATE}, [&] {
      GLDATA_POINT low{-0.5, -0.5, 0}, high{0.5, 0.5, 0};
      size = 4;
      const HRESULT result = aContext.Select(&aViewer, &low, &high, 0, 0, &size, ids);
      EXPECT_EQ(size > 0, result == S_OK);
      return result;
    });
    EXPECT_EQ(ids[0], kIdentifier);
  }

  /// Allows one failure, and only if a fault is injected.
  void Excuse(const char* aName) {
    EXPECT_TRUE(m_bFaulty) << aName << " fails without a fault";
    m_bFaulty = false;
  }

  bool m_bFaulty;
  const LONG m_iSamples;
  const GLString m_Face{"SANSSERIF"};
  GLPtr<LifePainter> m_Painter = GLMake<LifePainter>();
  GLPtr<TestCapture> m_Capture = GLMake<TestCapture>();
};

}  // namespace

TEST(Faults, OfThePlatformAreSurvived) {
  const DisplayGuard guard;
  bool failed = true;
  int fault = 0;
  for (; failed && !::testing::Test::HasFailure(); ++fault) {
    SCOPED_TRACE(fault);
    Zentig::WGLExtensions::DeleteInstance();  // the probe for formats is part of a life
    const auto display = ScriptedDisplay::Set();
    display->m_szExtensions = "WGL_ARB_extensions_string WGL_ARB_pixel_format WGL_ARB_multisample ";
    display->m_iFault = fault;
    g_afPointSizeRange[1] = 0;
    Life(Faults::kOne, 4).Live();
    failed = display->HasFailed();
  }
  EXPECT_GT(fault, 40) << "too few platform operations";
  Zentig::WGLExtensions::DeleteInstance();
  SetDisplay(nullptr);
  Life(Faults::kNone).Live();
}

TEST(Faults, OfAllocationsAreSurvived) {
  AllocationFault::ForgetWays();
  Life(Faults::kNone).Live();
  bool failed = true;
  int fault = 0;
  for (; failed && !::testing::Test::HasFailure(); ++fault) {
    SCOPED_TRACE(fault);
    Life life(Faults::kOne);
    const AllocationFault one;
    life.Live();
    failed = one.HasFailed();
  }
  EXPECT_GT(fault, 40) << "too few places of allocation";
}

TEST(Faults, OfTheFirstRenderingContextsDelayASuspension) {
  const DisplayGuard guard;
  const auto display = ScriptedDisplay::Set();
  display->m_iRefusedContexts = 4;  // the draw thread tries again in each cycle
  const auto context = GLCreate<IGLContext>(CLSID_GLContext);
  const auto suspension = context.As<IGLContext12>();
  std::thread host([&] {
    // The probe for multisample formats may take the first refusal, before the draw thread exists.
    EXPECT_TRUE(Eventually([&] { return display->m_iRefusedContexts < 3; }));
    EXPECT_EQ(suspension->SuspendDrawThread(), S_OK);
    EXPECT_EQ(display->m_iRefusedContexts, 0) << "parked before the rendering context existed";
  });
  EXPECT_EQ(context->Initialize(0), S_OK);
  host.join();
  suspension->ResumeDrawThread();
}

TEST(Faults, OfTheWindowsRenderingContextStopDrawingOnly) {
  const LogLines log(LogLevel::kWarning);
  const DisplayGuard guard;
  const auto display = ScriptedDisplay::Set();
  std::atomic<int> blind{0};
  const FreeContext drawn([&](Scene& scene) {
    if (glGetString(GL_VERSION) == nullptr) ++blind;
    scene.Canvas().SetTestID(kIdentifier);
    DrawRectangle(scene.Canvas(), -50, -50, 50, 50);
  });
  const auto capture = GLMake<TestCapture>();
  drawn.context->AttachCapture(capture.Get());
  drawn.Await(1);
  const auto pick = [&] { return Pick(*drawn.context, *drawn.viewer, {}, {}); };
  display->m_bRefusesCurrent = true;
  drawn.context->SetViewport(0, 0, 64, 64);  // a larger window needs another surface
  for (int i = 0; i < 3; ++i) EXPECT_EQ(pick().result, E_GL_BADSTATE);
  EXPECT_EQ(log.Count("the rendering context cannot be made current: nothing is drawn", "warning"), 1);
  EXPECT_EQ(capture->Take(), 0);
  EXPECT_EQ(blind, 0) << "the painter is not called without a rendering context";
  display->m_bRefusesCurrent = false;
  drawn.Await(1);
  EXPECT_EQ(pick().ids, std::vector<ULONG>{kIdentifier});
  EXPECT_EQ(capture->Take(), 1);
}

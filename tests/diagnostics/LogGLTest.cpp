// Log messages, each with its cause, and the absence of messages in a run without faults. Headless display.

#include "platform/Window.h"
#include "support/BitmapFiles.h"
#include "support/LogLines.h"
#include "support/Scene.h"
#include "support/TestDisplay.h"

namespace {

/// Returns a painter that calls a function only in its first frame.
DrawFunction Once(DrawFunction aDraw) {
  return [draw = std::move(aDraw), done = false](Scene& scene) mutable {
    if (!std::exchange(done, true)) draw(scene);
  };
}

/// Draws several frames, so that a message that is repeated in each frame is seen.
void Draw(DrawFunction aDraw) {
  const FreeContext painted(std::move(aDraw));
  painted.Await(4);
}

/// Compiles a list if none is valid.
DrawFunction Compiling() {
  return [list = 0](Scene& scene) mutable {
    LONG valid = 0;
    scene.Canvas().IsCompiledList(list, &valid);
    if (valid == 0 && SUCCEEDED(scene.Canvas().BeginCompileList(&list))) scene.Canvas().EndCompileList();
  };
}

/// Captures a context that has a list.
void Capture(const GLCaptureRequest& aRequest, bool aHasPixmap = true) {
  const FreeContext painted(Compiling());
  const auto capture = GLMake<TestCapture>();
  if (!aHasPixmap) capture->target = nullptr;
  capture->request = aRequest;
  painted.Await(2);
  painted.context->AttachCapture(capture.Get());
  capture->Take();
}

struct Gauge final : GLViewerGaugeBase {
  HRESULT Draw(IGLCanvas*, IGLContext*) noexcept override {
    glPushAttrib(GL_FOG_BIT);
    return S_OK;
  }
};

struct FailingPainter final : GLPainterBase {
  HRESULT Draw(IGLCanvas*, IGLContext*, IGLViewer*) noexcept override { return ++m_iFrames, E_FAIL; }
  std::atomic<int> m_iFrames{0};
};

void Select(const FreeContext& aPainted) {
  Pick(*aPainted.context, *aPainted.viewer, {-1, -1, 0}, {1, 1, 0}, {.capacity = 1});
}

void LoadImageFile(const Bytes& aFile) {
  const TestFolder folder;
  LoadFrom(*GLCreate<IGLPixmap>(CLSID_GLPixmap), folder.Put("image.bmp", aFile).u16string());
}

/// Returns a name that was not requested before: each name is reported once.
std::string NewFace() {
  static int number = 0;
  return "No Such Face " + std::to_string(++number);
}

const LogCase kCases[] = {
    {"debug", "context ", [] { GLCreate<IGLContext>(CLSID_GLContext); }},
    {"error", "Initialize failed: it is called on the context's own draw thread",
     [] { Draw(Once([](Scene& scene) { scene.Context().Initialize(0); })); }},
    {"info", "pixel format ", [] { Draw({}); }},
    {"info", "GL: ", [] { Draw({}); }},

    {"info",
     "1 display lists are discarded, glyphs included: a capture draws in a separate rendering context",
     [] { Capture({}); }},
    {"info", "1 display lists are discarded, glyphs included: the capture that compiled them has ended",
     [] { Capture({}); }},
    {"info", "1 display lists are discarded, glyphs included: their rendering context is replaced",
     [] {
       const FreeContext painted(Compiling());
       painted.Await(2);
       painted.context->Initialize(0);
     }},
    {"info", "1 display lists are discarded, glyphs included: a context replaces its window",
     [] {
       const FreeContext painted(Compiling()), other;
       painted.Await(2);
       other.context->Initialize(0);
       painted.Await(2);
     }},
    {"info", "1 display lists are discarded, glyphs included: a change of the system's colours",
     [] {
       const FreeContext painted(Compiling()), other;
       painted.Await(2);
       ULONG_PTR before = 0, now = 0;
       other.context->GetWindow(&before);
       PostMessageA(reinterpret_cast<HWND>(before), WM_SYSCOLORCHANGE, 0, 0);
       EXPECT_TRUE(Eventually([&] {
         PumpMessages();
         other.context->GetWindow(&now);
         return now != 0 && now != before;
       }));
       painted.Await(2);
     }},
    {"warning", "GL has no range of 1 free display list names",
     [] {
       Draw([taken = false](Scene& scene) mutable {
         if (!std::exchange(taken, true)) glGenLists(0xFFFF);
         int list = 0;
         scene.Canvas().BeginCompileList(&list);
       });
     }},

    {"warning", "a capture failed: GetPixmap returned no pixmap", [] { Capture({}, false); }},
    {"warning", "a capture failed: its rectangle lies outside the viewport", [] { Capture({.m_iX = 99}); }},
    {"warning", "a capture reads nothing: its zoom is below 1", [] { Capture({.m_fZoom = 0.5f}); }},
    {"warning", "a capture failed: a scene of 3200000 x 3200000 pixels exceeds GL's limit",
     [] { Capture({.m_iWidth = 1, .m_iHeight = 1, .m_fZoom = 100000}); }},

    {"warning", "IGLPainter::Draw changed the depth of the model-view matrix stack by +1",
     [] { Draw([](Scene& scene) { scene.Canvas().PushModelviewMatrix(0); }); }},
    {"warning", "IGLPainter::Draw changed the depth of the attribute stack by -2",
     [] {
       Draw([push = true](Scene&) mutable {
         for (int i = 0; i < 2; ++i) push ? glPushAttrib(GL_FOG_BIT) : glPopAttrib();
         push = !push;
       });
     }},
    {"warning", "IGLPainter::Draw left a display list open",
     [] { Draw(Once([](Scene&) { glNewList(glGenLists(1), GL_COMPILE); })); }},
    {"warning", "IGLViewerGauge::Draw changed the depth of the attribute stack by +1",
     [] {
       const FreeContext painted;
       const auto gauge = GLMake<Gauge>();
       painted.viewer->AddGauge(gauge.Get());
       painted.viewer->ShowGauges(1);
       painted.Await(4);
     }},
    {"warning", "IGLPainter::Draw in a selection changed the depth of the name stack by +1",
     [] {
       const FreeContext painted([](Scene&) { glPushName(1); });
       Select(painted);
     }},
    {"debug", "IGLPainter::Draw returned 0x80004005",
     [] {
       const FreeContext painted;
       const auto painter = GLMake<FailingPainter>();
       painted.context->AttachPainter(painter.Get());
       EXPECT_TRUE(Eventually([&] { return painter->m_iFrames > 3; }));
     }},

    {"debug", "GL error 0x0500 (GL_INVALID_ENUM) before IGLCanvas::SetCWWinding",
     [] {
       Draw([](Scene& scene) {
         glEnable(0xFFFF);
         scene.CanvasAs<IGLCanvas14_2>()->SetCWWinding(0);
       });
     }},
    {"debug", "GL error 0x0504 (GL_STACK_UNDERFLOW) after IGLCanvas::PopAttrib",
     [] { Draw([](Scene& scene) { scene.CanvasAs<IGLCanvas2>()->PopAttrib(); }); }},
    {"debug", "GL error 0x0501 (GL_INVALID_VALUE) after IGLPainter::Draw",
     [] { Draw([](Scene&) { glLineWidth(-1); }); }},
    {"debug", "GL error 0x0502 (GL_INVALID_OPERATION) after IGLCanvas::EndDrawVertices",
     [] { Draw([](Scene& scene) { scene.Canvas().EndDrawVertices(); }); }},

    {"warning", "GL has 8 clip planes: another one replaces an earlier one",
     [] {
       const FreeContext painted;
       GLDATA_POINT a{0, 0, 0}, b{1, 0, 0}, c{0, 1, 0};
       for (int i = 0; i < 9; ++i) painted.context->ClipPlane(&a, &b, &c);
     }},
    {"warning", "a light is off: the process uses GL's 8 lights already",
     [] {
       const FreeContext painted;
       IGLLight* light = nullptr;
       for (int i = 0; i < 9; ++i) painted.context->CreateLight(&light);
       painted.Await(4);
     }},

    {"warning", "there is no font face \"No Such Face ",
     [] {
       const FreeContext painted;
       IGLFont* font = nullptr;
       painted.context->CreateTrueTypeFont(GLString(NewFace().c_str()), 0, 400, 0, 0, &font);
       painted.Await(2);
       painted.context->Initialize(0);  // the font is built again
     }},
    {"warning", "a font with the face \"NOSHEET\" cannot be built",
     [] {
       GLPtr<IGLFont> font;
       std::atomic<bool> ready{false};
       const FreeContext painted([&](Scene&) {
         GLDATA_POINT start{};
         if (ready) font->Print(GLString("text"), &start);
       });
       painted.context.As<IGLContext2>()->CreateInternalFont(GLString("NOSHEET"), font.Put());
       ready = true;
       painted.Await(4);
     }},
    {"debug", "IGLFont::Print is refused: it is called outside a pass",
     [] {
       const FreeContext painted;
       GLPtr<IGLFont> font;
       GLDATA_POINT start{};
       painted.context->CreateSystemFont(font.Put());
       font->Print(GLString("text"), &start);
     }},

    {"warning", "an image file is not loaded: it cannot be opened",
     [] { LoadFrom(*GLCreate<IGLPixmap>(CLSID_GLPixmap), u"no-such-folder/no-such-file.bmp"); }},
    {"warning", "an image file is not loaded: its bitmap header is missing or does not match the file",
     [] {
       LoadImageFile({1, 2, 3});
     }},
    {"warning", "an image file is not loaded: a pixel indexes past the colour table",
     [] {
       LoadImageFile(BitmapBytes{.m_uBitCount = 8, .m_Table = {}, .m_Pixels = {7, 0, 0, 0}}.File());
     }},
};

/// Uses the component without a fault.
void DoEverything() {
  Fonts fonts;
  std::atomic<bool> ready{false};
  const FreeContext painted([&, compile = Compiling()](Scene& scene) mutable {
    compile(scene);
    scene.Canvas().SetTestID(1);
    DrawRectangle(scene.Canvas(), -50, -50, 50, 50);
    GLDATA_POINT start{};
    for (std::size_t i = 0; ready && i < 2; ++i) fonts[i]->Print(GLString("text"), &start);
  });
  fonts = MakeQuickFonts(*painted.context);
  ready = true;
  IGLLight* light = nullptr;
  painted.context->CreateLight(&light);
  painted.viewer->Clip(1);
  const auto capture = GLMake<TestCapture>();
  painted.context->AttachCapture(capture.Get());
  EXPECT_EQ(capture->Take(), 1);
  Select(painted);
  painted.context.As<IGLContext12>()->SuspendDrawThread();
  painted.context.As<IGLContext12>()->ResumeDrawThread();
  EXPECT_EQ(painted.context->Initialize(0), S_OK);
  painted.Await(2);
}

}  // namespace

TEST(Log, ReportsEachEventOnce) {
  PrepareDisplay();
  for (const LogCase& c : kCases) ExpectOnce(c);
}

TEST(Log, HasNoWarningWithoutAFault) {
  PrepareDisplay();
  const LogLines log(LogLevel::kDebug);
  DoEverything();
  EXPECT_EQ(log.Count("warning: ") + log.Count("error"), 0) << log.Joined();
  EXPECT_EQ(log.Count("GL: "), 2) << log.Joined();
}

TEST(Log, NamesTheContext) {
  PrepareDisplay();
  const LogLines log(LogLevel::kInfo);
  const FreeContext one, other;
  std::set<std::string> contexts;
  std::smatch found;
  for (const std::string& line : log.All()) {
    if (std::regex_search(line, found, std::regex("context ([0-9]+), .*: (GL: |pixel format)")))
      contexts.insert(found[1]);
  }
  EXPECT_EQ(contexts.size(), 2u) << log.Joined();
}

TEST(Log, IsOffByDefault) {
  PrepareDisplay();
  if (std::getenv("GLLIB_LOG") != nullptr) GTEST_SKIP() << "GLLIB_LOG is set";
  const LogLines log(LogLevel::kUnread);
  DoEverything();
  LoadFrom(*GLCreate<IGLPixmap>(CLSID_GLPixmap), u"no-such-file.bmp");
  EXPECT_EQ(log.Joined(), "");
}

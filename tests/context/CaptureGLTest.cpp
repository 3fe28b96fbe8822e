// Captures: what arrives in the pixmap, both ways, and what is left as it was.

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <future>

#include "component/Module.h"
#include "context/GLContext.h"
#include "support/Eventually.h"
#include "support/Scene.h"
#include "support/ScriptedDisplay.h"

namespace {

constexpr int kWidth = 64, kHeight = 48;

/// Takes one picture when asked, and keeps what it was told.
class TestCapture : public GLCaptureBase {
 public:
  GLPtr<IGLPixmap> target = GLCreate<IGLPixmap>(CLSID_GLPixmap);
  float zoom = 1.0f;
  int x = 0, y = 0, width = kWidth, height = kHeight;
  GLDATA_RGBA background{0.0f, 0.0f, 0.0f, 1.0f};
  std::function<void()> inside = [] {};

  HRESULT IsEnabled(LONG* aEnabled) noexcept override {
    *aEnabled = m_Wanted.exchange(false) ? 1 : 0;
    return S_OK;
  }
  HRESULT GetPixmap(IGLPixmap** aPixmap) noexcept override {
    *aPixmap = GLPtr(target).Detach();
    return S_OK;
  }
  HRESULT GetPixelZoom(float* aZoom) noexcept override {
    *aZoom = zoom;
    return S_OK;
  }
  HRESULT GetRectangle(int* aX, int* aY, int* aWidth, int* aHeight) noexcept override {
    *aX = x;
    *aY = y;
    *aWidth = width;
    *aHeight = height;
    inside();
    return S_OK;
  }
  HRESULT GetBackgroundColor(GLDATA_RGBA* aColor) noexcept override {
    *aColor = background;
    return S_OK;
  }
  HRESULT OnData(LONG aSuccess) noexcept override {
    m_Answer = static_cast<int>(aSuccess);
    return S_OK;
  }

  /// Asks for a picture of the next frame. @return what OnData was told; -1 without an answer
  int Take() {
    m_Answer = -1;
    m_Wanted = true;
    return Eventually([&] { return m_Answer != -1; }) ? m_Answer.load() : -1;
  }

  Picture Result() const {
    int count = 0, w = 0, h = 0;
    GLDATA_RGBA4B* pixels = nullptr;
    target->GetWidth(&w);
    target->GetHeight(&h);
    target->AccessPixmapData(&count, &pixels);
    Picture picture(w, h);
    for (int row = 0; row < h; ++row) {
      for (int column = 0; column < w; ++column) {
        GLDATA_RGBA4B p{};
        target->GetPixel(column, row, &p);
        picture.Set(
            column, row,
            std::uint32_t{p.m_bRed} << 24 | p.m_bGreen << 16 | p.m_bBlue << 8 | std::uint32_t{p.m_bAlpha});
      }
    }
    return picture;
  }

 private:
  std::atomic<bool> m_Wanted{false};
  std::atomic<int> m_Answer{-1};
};

/// A context that draws a triangle from a compiled list, free-running.
struct Captured {
  GLPtr<IGLContext> context = GLCreate<IGLContext>(CLSID_GLContext);
  IGLViewer* viewer = nullptr;
  GLPtr<TestCapture> capture = GLMake<TestCapture>();
  std::atomic<int> compiled{0};
  std::promise<Picture> window;
  std::atomic<bool> readWindow{false};

  Captured() {
    EXPECT_EQ(context->Initialize(0), S_OK);
    context->SetViewport(0, 0, kWidth, kHeight);
    context->EnableLighting(0);
    context->CreateViewer(1, 1, &viewer);
    const auto painter =
        GLMake<TestPainter>([this, list = 0](Scene& scene) mutable { Draw(scene.Canvas(), list); });
    context->AttachPainter(painter.Get());
    context->AttachCapture(capture.Get());
  }
  ~Captured() { context.Reset(); }

  Picture WindowPicture() {
    readWindow = true;
    return window.get_future().get();
  }

 private:
  void Draw(IGLCanvas& canvas, int& list) {
    LONG valid = 0;
    canvas.IsCompiledList(list, &valid);
    if (valid == 0) {
      ++compiled;
      canvas.BeginCompileList(&list);
      canvas.BeginDrawTriangles();
      GLDATA_RGBA colors[] = {{1, 0, 0, 1}, {0, 1, 0, 1}, {0, 0, 1, 1}};
      for (int i = 0; i < 3; ++i) {
        canvas.SetVertexColor(&colors[i]);
        canvas.Vertex3d(i == 0 ? -60 : 60, i == 2 ? 45 : -45, -10);
      }
      canvas.EndDrawVertices();
      canvas.EndCompileList();
    }
    canvas.DrawCompiledList(list);
    if (readWindow.exchange(false)) window.set_value(Picture::Read(kWidth, kHeight));
  }
};

}  // namespace

TEST(Capture, EqualsTheWindowsPictureBothWays) {
  for (const DWORD platform : {2u, 1u}) {
    SCOPED_TRACE(platform);
    const DisplayGuard guard;
    ScriptedDisplay::Set()->m_dwPlatformId = platform;
    g_sVersion = {};  // asked anew
    Captured captured;
    captured.capture->zoom = platform == 1 ? 2.0f : 1.0f;  // nobody asks for it on the way of reading back
    const Picture window = captured.WindowPicture();
    EXPECT_GT(window.CountOther(0x000000FF), kWidth * kHeight / 4);
    EXPECT_EQ(captured.capture->Take(), 1);
    EXPECT_EQ(Difference(captured.capture->Result(), window), 0);
  }
  g_sVersion = {};
}

TEST(Capture, ZoomsTheResolutionAndTakesItsBackground) {
  Captured captured;
  captured.capture->zoom = 3.0f;
  captured.capture->background = {0.0f, 1.0f, 2.0f, 0.0f};
  ASSERT_EQ(captured.capture->Take(), 1);
  const Picture large = captured.capture->Result();
  EXPECT_EQ(large.Width(), 3 * kWidth);
  EXPECT_EQ(large.Height(), 3 * kHeight);
  EXPECT_EQ(large.At(0, 0), 0x00FFFFFFu) << "the background, cut to what a colour can be";
  GLDATA_RGBA own{};
  captured.context->GetBackgroundColor(&own);
  EXPECT_EQ(own.m_fGreen, 0.0f);
  const int compiled = captured.compiled;
  EXPECT_TRUE(Eventually([&] { return captured.compiled > compiled || compiled >= 3; }))
      << "once in the window, once in the capture, once again in the window";
  int width = 0;
  captured.context->GetViewportWidth(&width);
  EXPECT_EQ(width, kWidth);
}

TEST(Capture, AnswersEveryRequest) {
  Captured captured;
  TestCapture& capture = *captured.capture;
  struct {
    const char* name;
    int x, y, width, height;
    float zoom;
    int answer, gotWidth, gotHeight;
  } const cases[] = {
      {"beyond right and bottom: cut", 10, 8, 500, 500, 1, 1, kWidth - 10, kHeight - 8},
      {"zoom 1.5: the top left part of the enlarged picture", 0, 0, kWidth, kHeight, 1.5f, 1, kWidth,
       kHeight},
      {"a negative edge", -1, 0, 10, 10, 1, 0, 7, 7},
      {"an origin outside", kWidth, 0, 10, 10, 1, 0, 7, 7},
      {"an empty rectangle", 0, 0, 0, 10, 1, 0, 7, 7},
      {"zoom below 1: nothing to read, no failure", 0, 0, 10, 10, 0.5f, 1, 7, 7},
      {"zoom 0: no bitmap", 0, 0, 10, 10, 0.0f, 0, 7, 7},
      {"too large to draw: white", 0, 0, 10, 10, 300.0f, 0, 3000, 3000},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    capture.target->Initialize(7, 7, {1, 2, 3, 4});
    capture.x = c.x;
    capture.y = c.y;
    capture.width = c.width;
    capture.height = c.height;
    capture.zoom = c.zoom;
    EXPECT_EQ(capture.Take(), c.answer);
    int width = 0, height = 0;
    capture.target->GetWidth(&width);
    capture.target->GetHeight(&height);
    EXPECT_EQ(width, c.gotWidth);
    EXPECT_EQ(height, c.gotHeight);
  }
  capture.target.Reset();
  EXPECT_EQ(capture.Take(), 0) << "no pixmap";
}

TEST(Capture, MayBeDetachedAndReplacedWhileItIsAsked) {
  Captured captured;
  IGLContext& context = *captured.context;
  const auto next = GLMake<TestCapture>();
  captured.capture->inside = [&] {
    context.DetachCapture();
    context.AttachCapture(next.Get());
  };
  EXPECT_EQ(captured.capture->Take(), 1);
  EXPECT_EQ(next->Take(), 1);
}

TEST(Capture, LeavesTheWindowAsItWasManyTimes) {
  Captured captured;
  const ULONG generation = g_uListGeneration;
  for (int i = 0; i < 50; ++i) ASSERT_EQ(captured.capture->Take(), 1);
  EXPECT_EQ(g_uListGeneration, generation + 100);
  const Picture after = captured.WindowPicture();
  EXPECT_EQ(Difference(captured.capture->Result(), after), 0);
}

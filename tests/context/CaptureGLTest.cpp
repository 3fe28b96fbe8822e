// Captures: what arrives in the pixmap, both ways, and what is left as it was.

#include <gtest/gtest.h>

#include <atomic>
#include <fstream>
#include <functional>
#include <future>
#include <utility>

#include "component/Module.h"
#include "context/GLContext.h"
#include "platform/GL.h"
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

/// Text of all four kinds, both kinds of texture, and triangles from a compiled list.
class RichScene {
 public:
  /// @param aWhole false leaves out what takes long to build: the fonts of the system, and the textures
  explicit RichScene(bool aWhole) : m_bWhole(aWhole) {}

  void Draw(IGLCanvas& aCanvas, IGLContext& aContext) {
    if (!m_apFonts[0]) MakeFonts(aContext);
    m_Attributes->EnableDrawMode(static_cast<eGLDrawMode>(GLDM_SHOW_FRONT | GLDM_SHOW_BACK), 1);
    aCanvas.SetDrawAttributes(m_Attributes.Get());
    DrawList(aCanvas);
    if (m_bWhole) DrawTextures(aContext);
    GLDATA_RGBA white{1, 1, 1, 1};
    aCanvas.SetVertexColor(&white);
    for (std::size_t i = 0; i < (m_bWhole ? 4u : 2u); ++i) {
      GLDATA_POINT start{-45, 30 - 15 * static_cast<double>(i), -1};
      EXPECT_EQ(m_apFonts[i]->Print(GLString("Text &8"), &start), S_OK);
    }
  }

  std::atomic<int> compiled{0};

 private:
  void MakeFonts(IGLContext& aContext) {
    const GLString face("DejaVu Sans");
    aContext.CreateSystemFont(m_apFonts[0].Put());
    GLPtr<IGLContext>::FromBorrowed(&aContext).As<IGLContext2>()->CreateInternalFont(GLString("HAND"),
                                                                                     m_apFonts[1].Put());
    if (!m_bWhole) return;
    IGLFont* borrowed = nullptr;
    aContext.CreateRasterFont(face, 0, 400, 0, -16, 0, &borrowed);
    m_apFonts[2] = GLPtr<IGLFont>::FromBorrowed(borrowed);
    aContext.CreateTrueTypeFont(face, 0, 400, 0, 0, &borrowed);
    borrowed->SetWidth(15);
    borrowed->SetHeight(15);
    m_apFonts[3] = GLPtr<IGLFont>::FromBorrowed(borrowed);
    m_Image->Initialize(8, 8, {255, 160, 40, 255});
    for (int i = 0; i < 8; ++i) m_Image->SetPixel(i, i, {40, 80, 255, 255});
    m_Square->Initialize(m_Image.Get());
    m_Strip->Initialize(m_Image.Get());
  }
  void DrawList(IGLCanvas& aCanvas) {
    LONG valid = 0;
    aCanvas.IsCompiledList(m_iList, &valid);
    if (valid == 0) {
      ++compiled;
      aCanvas.BeginCompileList(&m_iList);
      aCanvas.BeginDrawTriangles();
      GLDATA_RGBA colors[] = {{1, 0, 0, 1}, {0, 1, 0, 1}, {0, 0, 1, 1}};
      for (int i = 0; i < 3; ++i) {
        aCanvas.SetVertexColor(&colors[i]);
        aCanvas.Vertex3d(i == 0 ? -60 : 60, i == 2 ? 45 : -45, -10);
      }
      aCanvas.EndDrawVertices();
      aCanvas.EndCompileList();
    }
    aCanvas.DrawCompiledList(m_iList);
  }
  void DrawTextures(IGLContext& aContext) {
    GLDATA_POINT normal{0, 0, 1};
    GLDATA_POINT corners[] = {{5, -40, -5}, {40, -35, -5}, {35, -5, -5}, {0, -10, -5}};
    m_Square->BeginDraw(&aContext, GLTM_DECAL, 0, 0, 0, &normal, nullptr);
    for (int i = 0; i < 4; ++i) m_Square->Draw(i == 1 || i == 2, i > 1, &corners[i]);
    m_Square->EndDraw();
    m_Strip->BeginDraw(&aContext, GLTM_DECAL, 1, 1, 0, &normal, nullptr);
    for (auto& corner : corners) corner.y += 40;
    m_Strip->Draw(&corners[0], 0, &corners[3], 0);
    m_Strip->Draw(&corners[1], 1, &corners[2], 1);
    m_Strip->EndDraw();
  }

  const bool m_bWhole;
  GLPtr<IGLDrawAttr> m_Attributes = GLCreate<IGLDrawAttr>(CLSID_GLDrawAttr);
  GLPtr<IGLPixmap> m_Image = GLCreate<IGLPixmap>(CLSID_GLPixmap);
  GLPtr<IGLTexture2D> m_Square = GLCreate<IGLTexture2D>(CLSID_GLTexture2D);
  GLPtr<IGLTexture1D> m_Strip = GLCreate<IGLTexture1D>(CLSID_GLTexture1D);
  GLPtr<IGLFont> m_apFonts[4];
  int m_iList = 0;
};

/// A context with such a scene, free-running.
struct Captured {
  RichScene scene;
  GLPtr<IGLContext> context = GLCreate<IGLContext>(CLSID_GLContext);
  IGLViewer* viewer = nullptr;
  GLPtr<TestCapture> capture = GLMake<TestCapture>();
  std::atomic<int> textures{0}, lists{0};  // names in the window's rendering context when it was last read

  explicit Captured(int aWidth = kWidth, int aHeight = kHeight, bool aWhole = true)
      : scene(aWhole), m_iWidth(aWidth), m_iHeight(aHeight) {
    EXPECT_EQ(context->Initialize(0), S_OK);
    context->SetViewport(0, 0, aWidth, aHeight);
    context->EnableLighting(0);
    context->CreateViewer(1, 1, &viewer);
    capture->width = aWidth;
    capture->height = aHeight;
    const auto painter = GLMake<TestPainter>([this](Scene& aScene) {
      scene.Draw(aScene.Canvas(), aScene.Context());
      int width = 0;
      aScene.Context().GetViewportWidth(&width);
      if (width == m_iWidth && m_bRead.exchange(false)) ReadWindow();
    });
    context->AttachPainter(painter.Get());
    context->AttachCapture(capture.Get());
  }
  ~Captured() {
    context->DetachPainter();
    context.Reset();
  }

  Picture WindowPicture() {
    m_Window = {};
    m_bRead = true;
    return m_Window.get_future().get();
  }

 private:
  void ReadWindow() {
    textures = lists = 0;
    for (GLuint name = 1; name <= 0xFFFF; ++name) {
      textures += glIsTexture(name);
      lists += glIsList(name);
    }
    m_Window.set_value(Picture::Read(m_iWidth, m_iHeight));
  }

  int m_iWidth, m_iHeight;
  std::promise<Picture> m_Window;
  std::atomic<bool> m_bRead{false};
};

/// A picture at a third of its size, each pixel the mean of nine.
Picture Third(const Picture& aPicture) {
  Picture third(aPicture.Width() / 3, aPicture.Height() / 3);
  for (int y = 0; y < third.Height(); ++y) {
    for (int x = 0; x < third.Width(); ++x) {
      std::uint32_t mean = 0;
      for (int shift = 24; shift >= 0; shift -= 8) {
        std::uint32_t sum = 0;
        for (int i = 0; i < 9; ++i) sum += aPicture.At(3 * x + i % 3, 3 * y + i / 3) >> shift & 0xFF;
        mean |= (sum + 4) / 9 << shift;
      }
      third.Set(x, y, mean);
    }
  }
  return third;
}

long ResidentKiB() {
  std::ifstream in("/proc/self/statm");
  long size = 0, resident = 0;
  in >> size >> resident;
  return resident * 4;
}

}  // namespace

TEST(Capture, TakesThePartThatIsAskedForFromTheTop) {
  for (const DWORD platform : {2u, 1u}) {
    SCOPED_TRACE(platform);
    const DisplayGuard guard;
    ScriptedDisplay::Set()->m_dwPlatformId = platform;
    g_sVersion = {};
    const Captured scene;
    ASSERT_EQ(scene.capture->Take(), 1);
    const Picture whole = scene.capture->Result();
    scene.capture->x = 5, scene.capture->y = 7, scene.capture->width = 40, scene.capture->height = 30;
    ASSERT_EQ(scene.capture->Take(), 1);
    const Picture part = scene.capture->Result();
    int others = 0;
    for (int x = 0; x < 40; ++x) {
      for (int y = 0; y < 30; ++y) others += part.At(x, y) != whole.At(x + 5, y + 7) ? 1 : 0;
    }
    EXPECT_EQ(others, 0);
  }
  g_sVersion = {};
}

TEST(Capture, EqualsTheWindowsPictureBothWays) {
  for (const DWORD platform : {2u, 1u}) {
    SCOPED_TRACE(platform);
    const DisplayGuard guard;
    ScriptedDisplay::Set()->m_dwPlatformId = platform;
    g_sVersion = {};  // asked anew
    Captured captured(200, 150);
    captured.capture->zoom = platform == 1 ? 2.0f : 1.0f;  // nobody asks for it on the way of reading back
    const Picture window = captured.WindowPicture();
    EXPECT_GT(window.CountOther(0x000000FF), 200 * 150 / 4);
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
  const int compiled = captured.scene.compiled;
  EXPECT_TRUE(Eventually([&] { return captured.scene.compiled > compiled || compiled >= 3; }))
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

TEST(Capture, AtThreeTimesTheWindowIsTheSamePictureButSharper) {
  Captured captured(800, 600);
  ASSERT_EQ(captured.capture->Take(), 1);
  const Picture plain = captured.capture->Result();
  captured.capture->zoom = 3.0f;
  ASSERT_EQ(captured.capture->Take(), 1);
  const Picture large = captured.capture->Result();
  ASSERT_EQ(large.Width(), 2400);
  ASSERT_EQ(large.Height(), 1800);
  const double difference = MeanDifference(Third(large), plain);
  EXPECT_GT(difference, 0.0) << "not merely each pixel nine times";
  EXPECT_LT(difference, 2.0);
}

TEST(Capture, LeavesTheWindowAsItWasAThousandTimes) {
  constexpr bool kSanitized = GLLIB_SANITIZED != 0;  // takes its time, and keeps memory
  constexpr int kManyTimes = kSanitized ? 50 : 1000;
  Captured captured(kWidth, kHeight, false);
  ASSERT_EQ(captured.capture->Take(), 1);
  const Picture before = captured.WindowPicture();
  const int textures = captured.textures, lists = captured.lists;
  EXPECT_EQ(textures, 1) << "the atlas";
  EXPECT_EQ(lists, 2 * 256 + 1);
  const ULONG generation = g_uListGeneration;
  const int compiled = captured.scene.compiled;
  long memory = 0;
  for (int i = 0; i < kManyTimes; ++i) {
    if (i == kManyTimes / 5) memory = ResidentKiB();
    ASSERT_EQ(captured.capture->Take(), 1);
  }
  const long grown = ResidentKiB() - memory;
  EXPECT_TRUE(kSanitized || grown < 8 * 1024) << grown << " KiB over 800 captures";
  EXPECT_EQ(g_uListGeneration, generation + 2 * kManyTimes);
  const Picture after = captured.WindowPicture();
  EXPECT_EQ(captured.scene.compiled, compiled + 2 * kManyTimes)
      << "once in each capture, once in the window after it";
  EXPECT_EQ(Difference(after, before), 0);
  EXPECT_EQ(Difference(captured.capture->Result(), before), 0);
  EXPECT_EQ(captured.textures, textures);
  EXPECT_EQ(captured.lists, lists);
}

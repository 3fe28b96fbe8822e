// Captures, off-screen and from the window: the picture, and what the capture must not change. Headless
// display.

#include "component/Module.h"
#include "context/GLContext.h"
#include "support/Counting.h"
#include "support/RichScene.h"

namespace {

constexpr int kWidth = 64, kHeight = 48;

/// A context with a rich scene. Its draw thread cycles without a pause.
struct Captured {
  RichScene scene;
  GLPtr<TestCapture> capture = GLMake<TestCapture>();
  GLDATA_RGBA behind{};                    // result of GetBackgroundColor for the painter in a zoomed picture
  std::atomic<int> textures{0}, lists{0};  // names in the window's rendering context, at the last count
  FreeContext drawn;

  explicit Captured(int aWidth = kWidth, int aHeight = kHeight,
                    RichScene::Parts aParts = RichScene::Parts::kAll)
      : scene(aParts),
        drawn([this](Scene& aScene) { Draw(aScene); }, aWidth, aHeight),
        m_iWidth(aWidth),
        m_iHeight(aHeight) {
    drawn.context->EnableLighting(0);
    drawn.context->AttachCapture(capture.Get());
    // Some drivers apply a window's size only at the end of a frame.
    EXPECT_TRUE(Eventually([&] { return *drawn.frames > 1; }));
  }
  ~Captured() { drawn.context->DetachPainter(); }

  Picture Take() {
    EXPECT_EQ(capture->Take(), 1);
    return PictureOf(*capture->target);
  }
  Picture WindowPicture() {
    m_Window = {};
    m_bRead = true;
    return m_Window.get_future().get();
  }

 private:
  void Draw(Scene& aScene) {
    scene.Draw(aScene);
    int width = 0;
    aScene.Context().GetViewportWidth(&width);
    if (width != m_iWidth) aScene.Context().GetBackgroundColor(&behind);
    if (width != m_iWidth || !m_bRead.exchange(false)) return;
    textures = lists = 0;
    for (GLuint name = 1; name <= 0xFFFF; ++name) {
      textures += glIsTexture(name);
      lists += glIsList(name);
    }
    m_Window.set_value(Picture::Read(m_iWidth, m_iHeight));
  }

  const int m_iWidth, m_iHeight;
  std::promise<Picture> m_Window;
  std::atomic<bool> m_bRead{false};
};

/// Sets the platform version, which decides how a capture is taken: 2 draws off-screen, 1 reads the window.
class PlatformVersion {
 public:
  explicit PlatformVersion(DWORD aPlatform) noexcept {
    g_sVersion.dwOSVersionInfoSize = sizeof(g_sVersion);
    g_sVersion.dwPlatformId = aPlatform;
  }
  ~PlatformVersion() { g_sVersion = {}; }  // queried again
  PlatformVersion(PlatformVersion&&) = delete;
};

}  // namespace

TEST(Capture, EqualsTheWindowsPicture) {
  for (const DWORD platform : {2u, 1u}) {
    SCOPED_TRACE(platform);
    const PlatformVersion version(platform);
    Captured captured(200, 150);
    captured.capture->request.m_fZoom = platform == 1 ? 2 : 1;  // a capture from the window ignores it
    const Picture window = captured.WindowPicture();
    EXPECT_GT(window.CountOther(0x000000FF), 200 * 150 / 4);
    EXPECT_EQ(Difference(captured.Take(), window), 0);
    captured.capture->request = {.m_iX = 5, .m_iY = 7, .m_iWidth = 40, .m_iHeight = 30};
    const Picture part = captured.Take();
    int others = 0;
    for (int x = 0; x < 40; ++x) {
      for (int y = 0; y < 30; ++y) others += part.At(x, y) != window.At(x + 5, y + 7) ? 1 : 0;
    }
    EXPECT_EQ(others, 0) << "the rectangle is measured from the top left";
  }
}

// One object that does not change: the frames after the first send only its colour.
TEST(Capture, AppliesAttributesAgainInItsRenderingContext) {
  const auto attributes = GLCreate<IGLDrawAttr>(CLSID_GLDrawAttr);
  attributes->EnableDrawMode(GLDM_LINE_FRONT, 1);
  FreeContext drawn(
      [&](Scene& aScene) {
        IGLCanvas& canvas = aScene.Canvas();
        canvas.SetDrawAttributes(attributes.Get());
        canvas.BeginDrawTriangles();
        for (const auto& [x, y] : {std::pair{-35.0, -35.0}, {35.0, -35.0}, {0.0, 35.0}})
          canvas.Vertex3d(x, y, -10);
        canvas.EndDrawVertices();
      },
      kWidth, kHeight);
  drawn.context->EnableLighting(0);
  attributes->SetLineWidth(7);  // the first rendering context reports the limits of line widths
  drawn.Await(3);
  const auto capture = GLMake<TestCapture>();
  drawn.context->AttachCapture(capture.Get());
  for (const bool again : {false, true}) {
    ASSERT_EQ(capture->Take(), 1);
    const Picture picture = PictureOf(*capture->target);
    const std::uint32_t middle = picture.At(kWidth / 2, kHeight * 5 / 8);
    EXPECT_EQ(middle & 0xFFFFFF00u, 0u) << "the face is filled, repetition " << again;
    EXPECT_GT(picture.CountOther(middle), 350) << "the lines are narrow, repetition " << again;
  }
}

TEST(Capture, ZoomsAndUsesItsBackground) {
  Captured captured;
  captured.capture->request = {.m_fZoom = 3, .m_sBackground = {0, 1, 2, 0}};
  const Picture large = captured.Take();
  EXPECT_EQ(std::pair(large.Width(), large.Height()), std::pair(3 * kWidth, 3 * kHeight));
  EXPECT_EQ(large.At(0, 0), 0x00FFFFFFu) << "the background, limited to valid colour components";
  EXPECT_EQ(captured.behind.m_fGreen, 1.0f);
  GLDATA_RGBA own{};
  captured.drawn.context->GetBackgroundColor(&own);
  EXPECT_EQ(own.m_fGreen, 0.0f);
  int width = 0;
  captured.drawn.context->GetViewportWidth(&width);
  EXPECT_EQ(width, kWidth);
}

TEST(Capture, ReportsEachResult) {
  Captured captured;
  TestCapture& capture = *captured.capture;
  struct {
    const char* name;
    GLCaptureRequest request;
    LONG answer;
    int width, height, red;  // red: of the first pixel; negative if it is drawn
  } const cases[] = {
      {"beyond right and bottom: cut", {10, 8, 500, 500}, 1, kWidth - 10, kHeight - 8, -1},
      {"zoom 1.5: the top left part", {0, 0, kWidth, kHeight, 1.5f}, 1, kWidth, kHeight, -1},
      {"a negative edge", {-1, 0, 10, 10}, 0, 7, 7, 1},
      {"an origin outside", {kWidth, 0, 10, 10}, 0, 7, 7, 1},
      {"an empty rectangle", {0, 0, 0, 10}, 0, 7, 7, 1},
      {"zoom below 1: nothing to read, no failure", {0, 0, 10, 10, 0.5f}, 1, 7, 7, 1},
      {"zoom 0: no bitmap", {0, 0, 10, 10, 0}, 0, 7, 7, 1},
      {"too large to draw: white", {0, 0, 10, 10, 300}, 0, 3000, 3000, 255},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    capture.target->Initialize(7, 7, {1, 2, 3, 4});
    capture.request = c.request;
    EXPECT_EQ(capture.Take(), c.answer);
    int width = 0, height = 0;
    capture.target->GetWidth(&width);
    capture.target->GetHeight(&height);
    EXPECT_EQ(std::pair(width, height), std::pair(c.width, c.height));
    GLDATA_RGBA4B first{};
    capture.target->GetPixel(0, 0, &first);
    EXPECT_TRUE(c.red < 0 || first.m_bRed == c.red) << int{first.m_bRed};
  }
  capture.target.Reset();
  EXPECT_EQ(capture.Take(), 0) << "no pixmap";
}

TEST(Capture, KeepsTheSizeThatTheWindowHadAtItsStart) {
  class Shrinking final : public TestCapture {
   public:
    HRESULT GetPixelZoom(float* aZoom) noexcept override {
      context->SetViewport(0, 0, kWidth / 2, kHeight / 2);  // as another thread may do at this moment
      return TestCapture::GetPixelZoom(aZoom);
    }
    IGLContext* context = nullptr;
  };
  Captured captured(kWidth, kHeight, RichScene::Parts::kQuick);
  const Picture before = captured.Take();
  const auto shrinking = GLMake<Shrinking>();
  shrinking->context = captured.drawn.context.Get();
  captured.drawn.context->AttachCapture(shrinking.Get());
  ASSERT_EQ(shrinking->Take(), 1);
  EXPECT_EQ(Difference(PictureOf(*shrinking->target), before), 0);
}

TEST(Capture, LeavesTheWindowUnchanged) {
  constexpr bool kSanitized = GLLIB_SANITIZED != 0;  // a sanitizer run is slower, and keeps memory
  constexpr int kRepetitions = kSanitized ? 50 : 1000;
  Captured captured(kWidth, kHeight, RichScene::Parts::kQuick);
  captured.Take();
  const Picture before = captured.WindowPicture();
  const int textures = captured.textures, lists = captured.lists;
  EXPECT_EQ(textures, 1) << "the texture of the glyph sheet";
  EXPECT_EQ(lists, 2 * 256 + 1);
  const ULONG generation = g_uListGeneration;
  const int compiled = captured.scene.compiled;
  long memory = 0;
  for (int i = 0; i < kRepetitions; ++i) {
    if (i == kRepetitions / 5) memory = ResidentKiB();
    ASSERT_EQ(captured.capture->Take(), 1);
  }
  const long grown = ResidentKiB() - memory;
  EXPECT_TRUE(kSanitized || grown < 8 * 1024) << grown << " KiB more after 800 captures";
  EXPECT_EQ(g_uListGeneration, generation + 2 * kRepetitions);
  const Picture after = captured.WindowPicture();
  EXPECT_EQ(captured.scene.compiled, compiled + 2 * kRepetitions) << "in each capture and after it";
  EXPECT_EQ(Difference(after, before), 0);
  EXPECT_EQ(Difference(PictureOf(*captured.capture->target), before), 0);
  EXPECT_EQ(captured.textures, textures);
  EXPECT_EQ(captured.lists, lists);
}

TEST(Capture, ShowsTheBackgroundWhereNoViewerDraws) {
  Captured captured;
  IGLViewer& first = *captured.drawn.viewer;
  captured.capture->request = {.m_fZoom = 3, .m_sBackground = {1, 1, 0, 1}};
  captured.Take();  // leaves a picture in memory that differs from the background
  first.Clip(1);
  first.ShowClipFrame(0);
  first.SetClipRectangle(0, 0, 20, 20);
  IGLViewer* second = nullptr;
  captured.drawn.context->CreateViewer(1, 1, &second);
  second->Clip(1);
  second->ShowClipFrame(0);
  second->SetClipRectangle(40, 0, 20, 20);
  captured.capture->request.m_sBackground = {0, 0, 1, 1};
  for (int round = 0; round < 5; ++round) {
    const Picture picture = captured.Take();
    int others = 0;
    for (int y = 0; y < 3 * kHeight - 20; ++y) {
      for (int x = 0; x < 3 * kWidth; ++x) others += picture.At(x, y) != 0x0000FFFF ? 1 : 0;
    }
    EXPECT_EQ(others, 0) << "above the viewers";
  }
}

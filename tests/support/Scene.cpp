// The context under test: its painter calls one function at a time. A capture object, which the context calls
// at the end of each frame, reports that the frame is complete.

#include "support/Scene.h"

#include <condition_variable>
#include <stdexcept>

#include "support/TestDisplay.h"

HRESULT TestPainter::Draw(IGLCanvas* aCanvas, IGLContext* aContext, IGLViewer* aViewer) noexcept {
  Scene scene(*aCanvas, *aContext, *aViewer);
  m_Draw(scene);
  return S_OK;
}

/// State shared by the test's thread and the draw thread.
struct ContextFixture::Shared {
  std::mutex m_Lock;
  std::condition_variable m_Changed;
  const DrawFunction* m_pWanted = nullptr;  // for the next frame that begins
  const DrawFunction* m_pServed = nullptr;  // for the current frame
  bool m_bInFrame = false;
  bool m_bReads = false;
  Picture m_Picture;
  int m_iWidth = 0, m_iHeight = 0;

  /// Returns the function of the current frame, the same one for all of its viewers.
  const DrawFunction* ForThisFrame() {
    const std::scoped_lock lock(m_Lock);
    if (!m_bInFrame) m_pServed = m_pWanted;
    m_bInFrame = true;
    return m_pServed;
  }
  void EndFrame() {
    const std::scoped_lock lock(m_Lock);
    m_bInFrame = false;
    if (m_pServed != nullptr) {
      if (m_bReads) m_Picture = Picture::Read(m_iWidth, m_iHeight);
      EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR}) << "left by the frame";
      m_pWanted = m_pServed = nullptr;
    }
    m_Changed.notify_all();
  }
};

/// Called at the end of each frame. It never requests a picture.
class ContextFixture::FrameEnd : public GLCaptureBase {
 public:
  explicit FrameEnd(std::shared_ptr<Shared> aShared) : m_Shared(std::move(aShared)) {}
  HRESULT IsEnabled(LONG* aEnabled) noexcept override {
    *aEnabled = 0;
    m_Shared->EndFrame();
    return S_OK;
  }
  HRESULT OnData(LONG) noexcept override { return S_OK; }

 private:
  std::shared_ptr<Shared> m_Shared;
};

ContextFixture::ContextFixture(int aWidth, int aHeight)
    : m_iWidth(aWidth), m_iHeight(aHeight), m_Shared(std::make_shared<Shared>()) {
  PrepareDisplay();
  m_Shared->m_iWidth = aWidth;
  m_Shared->m_iHeight = aHeight;
  m_Context = GLCreate<IGLContext>(CLSID_GLContext);
  if (!m_Context || FAILED(m_Context->Initialize(0)))
    throw std::runtime_error("no context on the headless display");
  ContextAs<IGLContext2>()->SetControlledDrawThread(1, 0xFFFFFFFF);
  m_Context->SetViewport(0, 0, aWidth, aHeight);
  IGLViewer* viewer = nullptr;
  if (FAILED(m_Context->CreateViewer(1, 1, &viewer))) throw std::runtime_error("no viewer");
  m_Viewer = GLPtr<IGLViewer>::FromBorrowed(viewer);
  const auto draw = [shared = m_Shared](Scene& scene) {
    if (const DrawFunction* function = shared->ForThisFrame()) (*function)(scene);
  };
  m_Context->AttachPainter(GLMake<TestPainter>(draw).Get());
  m_Context->AttachCapture(GLMake<FrameEnd>(m_Shared).Get());
  Frame();  // some drivers apply a window's size only at the end of a frame
}

ContextFixture::~ContextFixture() {
  m_Context->DetachCapture();
  m_Context->DetachPainter();
}

void ContextFixture::Frame(const DrawFunction& aDraw) { Run(aDraw, Reading::kNothing); }

Picture ContextFixture::FramePicture(const DrawFunction& aDraw) { return Run(aDraw, Reading::kPicture); }

Picture ContextFixture::Run(const DrawFunction& aDraw, Reading aReading) {
  std::unique_lock lock(m_Shared->m_Lock);
  m_Shared->m_bReads = aReading == Reading::kPicture;
  m_Shared->m_pWanted = &aDraw;
  lock.unlock();
  ContextAs<IGLContext2>()->TriggerDrawThread();
  lock.lock();
  if (!m_Shared->m_Changed.wait_for(lock, std::chrono::seconds(20),
                                    [&] { return m_Shared->m_pWanted == nullptr; })) {
    m_Shared->m_pWanted = nullptr;
    throw std::runtime_error("no frame within 20 s");
  }
  return std::exchange(m_Shared->m_Picture, Picture());
}

FreeContext::FreeContext(DrawFunction aDraw, int aWidth, int aHeight, ULONG_PTR aParent) {
  EXPECT_EQ(context->Initialize(aParent), S_OK);
  context->SetViewport(0, 0, aWidth, aHeight);
  context->CreateViewer(1, 1, &viewer);
  const auto draw = [count = frames, aDraw](Scene& scene) {
    ++*count;
    if (aDraw) aDraw(scene);
  };
  context->AttachPainter(GLMake<TestPainter>(draw).Get());
}

void FreeContext::Await(int aFrames) const {
  EXPECT_TRUE(Eventually([&, end = *frames + aFrames] { return *frames >= end; })) << "no frames";
}

LONG TestCapture::Take() {
  answer = -1;
  Request(target.Get(), request);
  return Eventually([&] { return answer != -1; }) ? answer.load() : -1;
}

GLPtr<IGLCoord> EyeOf(IGLViewer& aViewer) {
  GLPtr<IGLCoord> eye;
  aViewer.GetCoord(eye.Put());
  return eye;
}

void DrawRectangle(IGLCanvas& aCanvas, double aX1, double aY1, double aX2, double aY2, double aZ) {
  aCanvas.BeginDrawQuads();
  aCanvas.Vertex3d(aX1, aY1, aZ), aCanvas.Vertex3d(aX2, aY1, aZ);
  aCanvas.Vertex3d(aX2, aY2, aZ), aCanvas.Vertex3d(aX1, aY2, aZ);
  aCanvas.EndDrawVertices();
}

Selection Pick(IGLContext& aContext, IGLViewer& aViewer, GLDATA_POINT aFirst, GLDATA_POINT aSecond,
               PickOptions aOptions) {
  std::vector<ULONG> ids(static_cast<std::size_t>(std::max(aOptions.capacity, 1)), 77);
  int size = aOptions.capacity;
  const HRESULT result = aContext.Select(&aViewer, &aFirst, &aSecond, aOptions.closest ? 1 : 0,
                                         aOptions.enclosed ? 1 : 0, &size, ids.data());
  if (result == S_OK && !aOptions.enclosed && aOptions.capacity > 0) {
    EXPECT_TRUE(std::all_of(ids.begin() + size, ids.end(), [](ULONG id) { return id == 0; }));
  }
  ids.resize(static_cast<std::size_t>(std::max(size, 0)));
  return {result, ids};
}

Fonts MakeQuickFonts(IGLContext& aContext) {
  Fonts fonts;
  aContext.CreateSystemFont(fonts[0].Put());
  GLPtr<IGLContext>::FromBorrowed(&aContext).As<IGLContext2>()->CreateInternalFont(GLString("HAND"),
                                                                                   fonts[1].Put());
  return fonts;
}

Fonts MakeFonts(IGLContext& aContext) {
  Fonts fonts = MakeQuickFonts(aContext);
  const GLString face("DejaVu Sans");
  IGLFont *raster = nullptr, *outline = nullptr;
  aContext.CreateRasterFont(face, 0, 400, 0, -20, 0, &raster);
  aContext.CreateTrueTypeFont(face, 0, 400, 0, 1, &outline);
  fonts[2] = GLPtr<IGLFont>::FromBorrowed(raster);
  fonts[3] = GLPtr<IGLFont>::FromBorrowed(outline);
  return fonts;
}

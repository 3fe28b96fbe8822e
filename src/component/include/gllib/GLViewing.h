/// @file
/// What hosts need around the viewers of a context, header only: the viewer under the mouse, the point of the
/// model under a pixel, the kind of pass that a painter is in, a frame listener, and pictures of several
/// viewers that are larger than the window. GLViewMath.h and GLOverlay.h come with it. The host links GL
/// (-lGL, opengl32).

#pragma once

#include <gllib/GLLibHost.h>
#include <gllib/GLOverlay.h>
#include <gllib/GLViewPicture.h>
#include <gllib/GLViewerStack.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

/// Why a painter or gauge is called.
enum class GLPassKind {
  Frame,      ///< for the window
  Selection,  ///< for IGLContext::Select: identifiers count, colours don't
  Capture     ///< for a picture
};

/// One frame of the window.
struct GLFrameInfo {
  std::uint64_t m_uNumber;                          ///< 1 for the first frame after the attachment
  std::chrono::steady_clock::time_point m_Shown;    ///< when it had been handed to the screen
  std::chrono::steady_clock::duration m_SinceLast;  ///< since the frame before; 0 for the first one
};

/// Stands between a context and the host's painter and capture, and so knows what the context draws. One for
/// each context:
///
///     const auto viewing = GLMake<GLViewing>(*context);
///     viewing->AttachPainter(painter);   // in place of context->AttachPainter
///     viewing->AttachCapture(capture);   // in place of context->AttachCapture, where there is one
///
/// Threads: any, unless an operation says otherwise. Operations that take the context need it alive; the
/// object may outlive it.
class GLViewing final : public GLClient<IGLCapture> {
 public:
  /// Called after the swap of each frame, on the draw thread. It may call what a
  /// capture may call, and must not throw.
  using FrameListener = std::function<void(const GLFrameInfo&)>;

  /// @param aContext borrowed
  explicit GLViewing(IGLContext& aContext) noexcept : m_Context(aContext) {}

  /// Attaches a painter to the context, and this object as its capture. Waits for the frame.
  void AttachPainter(IGLPainter* aPainter) {
    m_Context.AttachCapture(this);
    m_Context.AttachPainter(GLMake<Painter>(*this, aPainter).Get());
  }
  /// Passes all questions of the context on to a capture, from the next frame on; null for none. It is asked
  /// for each frame in which no picture of TakePicture is taken.
  void AttachCapture(IGLCapture* aCapture) noexcept {
    auto capture = GLPtr<IGLCapture>::FromBorrowed(aCapture);  // the one replaced goes after the lock
    const std::scoped_lock lock(m_Lock);
    std::swap(m_pCapture, capture);
  }
  /// Sets the listener, in place of the one before; null for none. A call that runs meanwhile is finished.
  void SetFrameListener(FrameListener aListener) {
    auto listener = aListener ? std::make_shared<const FrameListener>(std::move(aListener)) : nullptr;
    const std::scoped_lock lock(m_Lock);
    std::swap(m_pListener, listener);
  }

  /// Asks for a picture of the window at a whole factor: as IGLCapture describes it, but with all that is
  /// counted in pixels enlarged too. Clip rectangles and their frames are larger by the factor, and lines and
  /// points that the painter sets by its canvas or by draw attributes. Text and lines of other kinds ask
  /// Scale. No setting of a viewer changes meanwhile. Triggers a frame.
  ///
  /// With a clipped viewer the surface has (factor + 1) times the window's size, which must fit GL's limits.
  /// The axes figure and gauges' own lines keep their size in pixels.
  /// @param aTarget takes the picture; held until it is there
  /// @param aRequest a zoom below 1 makes the picture fail, what follows its point is cut off
  /// @return whether the pixmap holds the picture; broken when the context ends before
  std::future<bool> TakePicture(IGLPixmap* aTarget, const GLCaptureRequest& aRequest = {}) {
    GLViewPicture picture(aTarget, aRequest);
    auto taken = picture.Taken();
    {
      const std::scoped_lock lock(m_Lock);
      m_Waiting.push_back(std::move(picture));
    }
    Trigger();
    return taken;
  }
  /// Asks what the next frame draws at a pixel: the point of the world, from the depth buffer at the end of
  /// the painter. Triggers a frame.
  /// @param aViewer one of the context's, such as GLViewerAt gives
  /// @param aPixel in the window
  /// @return the point; nothing where nothing is drawn or the viewer isn't visible; broken when the context
  /// ends
  ///         before. Wait for it with a bound: a parked draw thread draws no frame
  std::future<std::optional<GLDATA_POINT>> PointUnder(IGLViewer& aViewer, const GLPixelPlace& aPixel) {
    Probe probe;
    probe.viewer = GLPtr<IGLViewer>::FromBorrowed(&aViewer);
    probe.pixel = aPixel;
    auto point = probe.point.get_future();
    {
      const std::scoped_lock lock(m_Lock);
      probe.lastFrame = m_uFrames + 2;  // one that runs already doesn't count
      m_Probes.push_back(std::move(probe));
    }
    Trigger();
    return point;
  }

  // For painters and gauges, on the draw thread.

  /// The kind of pass that runs. Exact for captures that go through this object.
  GLPassKind Pass() const noexcept {
    GLint mode = GL_RENDER;
    glGetIntegerv(GL_RENDER_MODE, &mode);
    if (mode == GL_SELECT) return GLPassKind::Selection;
    return m_bCapturing ? GLPassKind::Capture : GLPassKind::Frame;
  }
  /// How much larger than in the window things that are counted in pixels are: the factor of TakePicture,
  /// else 1.
  int Scale() const noexcept { return m_bCapturing && m_bOwn ? m_Serving.Factor() : 1; }

  // IGLCapture, for the context.

  HRESULT IsEnabled(LONG* aEnabled) noexcept override {
    if (aEnabled == nullptr) return E_INVALIDARG;
    EndFrame();
    *aEnabled = 0;
    GLPtr<IGLCapture> capture;
    {
      const std::scoped_lock lock(m_Lock);
      capture = m_pCapture;
      m_bOwn = !m_Waiting.empty();
      if (m_bOwn) {
        m_Serving = std::move(m_Waiting.front());
        m_Waiting.erase(m_Waiting.begin());
      }
    }
    if (m_bOwn) {
      *aEnabled = m_Serving.Plan(m_Context) ? 1 : 0;
      if (*aEnabled == 0) std::exchange(m_Serving, GLViewPicture()).Complete(false);
    } else if (capture) {
      capture->IsEnabled(aEnabled);
      m_pAsked = *aEnabled != 0 ? capture : nullptr;
    }
    m_bCapturing = *aEnabled != 0;
    return S_OK;
  }
  HRESULT GetPixmap(IGLPixmap** aPixmap) noexcept override {
    if (!m_bOwn) return m_pAsked->GetPixmap(aPixmap);
    *aPixmap = GLPtr<IGLPixmap>::FromBorrowed(m_Serving.Pixmap()).Detach();
    return S_OK;
  }
  HRESULT GetPixelZoom(float* aZoom) noexcept override {
    if (!m_bOwn) return m_pAsked->GetPixelZoom(aZoom);
    *aZoom = m_Serving.Zoom();
    return S_OK;
  }
  HRESULT GetRectangle(int* aX, int* aY, int* aWidth, int* aHeight) noexcept override {
    if (!m_bOwn) return m_pAsked->GetRectangle(aX, aY, aWidth, aHeight);
    const GLCaptureRequest wanted = m_Serving.Rectangle();
    *aX = wanted.m_iX;
    *aY = wanted.m_iY;
    *aWidth = wanted.m_iWidth;
    *aHeight = wanted.m_iHeight;
    return S_OK;
  }
  HRESULT GetBackgroundColor(GLDATA_RGBA* aColor) noexcept override {
    if (!m_bOwn) return m_pAsked->GetBackgroundColor(aColor);
    *aColor = m_Serving.Background();
    return S_OK;
  }
  HRESULT OnData(LONG aSuccess) noexcept override {
    m_bCapturing = false;
    if (m_bOwn) {
      Finish(aSuccess != 0);
    } else if (const auto asked = std::move(m_pAsked)) {
      asked->OnData(aSuccess);
    }
    return S_OK;
  }

 private:
  /// A point that is asked for.
  struct Probe {
    GLPtr<IGLViewer> viewer;
    GLPixelPlace pixel{};
    std::promise<std::optional<GLDATA_POINT>> point;
    std::uint64_t lastFrame = 0;  // in which it can be answered
  };

  /// The host's painter, with what has to happen before and after it.
  class Painter final : public GLPainterBase {
   public:
    Painter(GLViewing& aViewing, IGLPainter* aInner)
        : m_pViewing(GLPtr<GLViewing>::FromBorrowed(&aViewing)),
          m_pInner(GLPtr<IGLPainter>::FromBorrowed(aInner)) {}
    HRESULT Draw(IGLCanvas* aCanvas, IGLContext* aContext, IGLViewer* aViewer) noexcept override {
      if (!m_pInner) return S_OK;
      const GLPassKind kind = m_pViewing->Pass();
      if (kind == GLPassKind::Capture && m_pViewing->m_bOwn) {
        return m_pViewing->m_Serving.Draw(*m_pInner.Get(), *aCanvas, *aContext, *aViewer);
      }
      const HRESULT result = m_pInner->Draw(aCanvas, aContext, aViewer);
      if (kind == GLPassKind::Frame) m_pViewing->AnswerProbes(*aCanvas, *aContext, *aViewer);
      return result;
    }

   private:
    GLPtr<GLViewing> m_pViewing;
    GLPtr<IGLPainter> m_pInner;
  };

  void Trigger() noexcept {
    if (const auto control = GLPtr<IGLContext>::FromBorrowed(&m_Context).As<IGLContext2>()) {
      control->TriggerDrawThread();
    }
  }

  /// Takes probes out, to be answered and released without the lock.
  template <class Condition>
  std::vector<Probe> TakeProbes(Condition aWanted) {
    std::vector<Probe> taken, left;
    const std::scoped_lock lock(m_Lock);
    for (Probe& probe : m_Probes) (aWanted(probe) ? taken : left).push_back(std::move(probe));
    std::swap(m_Probes, left);
    return taken;
  }

  void AnswerProbes(IGLCanvas& aCanvas, IGLContext& aContext, IGLViewer& aViewer) {
    for (Probe& probe : TakeProbes([&](const Probe& aProbe) { return aProbe.viewer.Get() == &aViewer; })) {
      probe.point.set_value(GLReadPoint(aCanvas, aContext, probe.pixel));
    }
  }

  void EndFrame() {
    std::shared_ptr<const FrameListener> listener;
    {
      const std::scoped_lock lock(m_Lock);
      ++m_uFrames;
      listener = m_pListener;
    }
    // What is still asked for belongs to viewers that weren't drawn.
    for (Probe& probe : TakeProbes([&](const Probe& aProbe) { return m_uFrames >= aProbe.lastFrame; })) {
      probe.point.set_value(std::nullopt);
    }
    if (HasProbes()) Trigger();
    const auto now = std::chrono::steady_clock::now();
    const auto last = std::exchange(m_LastShown, now);
    if (listener) (*listener)({m_uFrames, now, now - (m_uFrames == 1 ? now : last)});
  }

  bool HasProbes() noexcept {
    const std::scoped_lock lock(m_Lock);
    return !m_Probes.empty();
  }

  void Finish(bool aSuccess) {
    GLViewPicture picture = std::exchange(m_Serving, GLViewPicture());
    m_bOwn = false;
    if (!aSuccess || !picture.HasToRepeat()) return picture.Complete(aSuccess && picture.CutOut());
    {
      const std::scoped_lock lock(m_Lock);
      m_Waiting.insert(m_Waiting.begin(), std::move(picture));
    }
    Trigger();
  }

  IGLContext& m_Context;
  std::mutex m_Lock;  // guards what follows
  GLPtr<IGLCapture> m_pCapture;
  std::shared_ptr<const FrameListener> m_pListener;
  std::vector<GLViewPicture> m_Waiting;
  std::vector<Probe> m_Probes;
  std::uint64_t m_uFrames = 0;  // written by the draw thread alone
  // What follows is the draw thread's.
  std::chrono::steady_clock::time_point m_LastShown;
  GLPtr<IGLCapture> m_pAsked;  // serves the picture that is being taken
  GLViewPicture m_Serving;     // the same for one of TakePicture
  bool m_bOwn = false;         // whether m_Serving is it
  bool m_bCapturing = false;
};

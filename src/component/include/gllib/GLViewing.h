/// @file
/// Helpers for the viewers of a context, header only: the viewer under the mouse, the model point under a
/// pixel, the kind of the running pass, a frame listener, and pictures of several viewers larger than the
/// window. Includes GLViewMath.h and GLOverlay.h. The host links GL (-lGL, opengl32).

#pragma once

#include <gllib/GLLibHost.h>
#include <gllib/GLOverlay.h>
#include <gllib/GLViewPicture.h>
#include <gllib/GLViewerStack.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

/// The purpose of a call of a painter or gauge.
enum class GLPassKind {
  Frame,      ///< for the window
  Selection,  ///< for IGLContext::Select: only identifiers matter
  Capture     ///< for a picture
};

/// One frame of the window.
struct GLFrameInfo {
  std::uint64_t m_uNumber;                          ///< 1 for the first frame that calls the painter
  std::chrono::steady_clock::time_point m_Shown;    ///< time after the swap
  std::chrono::steady_clock::duration m_SinceLast;  ///< since the previous frame; 0 for the first one
};

/// Attaches to a context in place of the host's painter and capture, and calls them. One per context:
///
///     const auto viewing = GLMake<GLViewing>(*context);
///     viewing->AttachPainter(painter);   // in place of context->AttachPainter
///     viewing->AttachCapture(capture);   // in place of context->AttachCapture, if the host has a capture
///
/// Threads: any, unless an operation says otherwise. The context must exist during operations that use it;
/// this object may outlive it.
class GLViewing final : public GLClient<IGLCapture> {
 public:
  /// Called after the swap of each frame, on the draw thread, from the first frame on that calls the painter.
  /// It may make the same calls as a capture, and must not throw.
  using FrameListener = std::function<void(const GLFrameInfo&)>;

  /// @param aContext borrowed
  explicit GLViewing(IGLContext& aContext) noexcept : m_Context(aContext) {}

  /// Attaches a painter to the context, and this object as its capture. Waits for the frame. If the context
  /// ends, or the host detaches the painter from it, the futures of pending requests are broken.
  void AttachPainter(IGLPainter* aPainter) {
    m_Context.AttachCapture(this);
    m_Context.AttachPainter(GLMake<Painter>(*this, aPainter).Get());
  }
  /// Sets the capture to which this object forwards the calls of the context, from the next frame on; null
  /// for none. A frame in which TakePicture takes a picture does not call it; another frame follows.
  void AttachCapture(IGLCapture* aCapture) noexcept {
    auto capture = GLPtr<IGLCapture>::FromBorrowed(aCapture);  // releases the previous one after the lock
    const std::scoped_lock lock(m_Lock);
    std::swap(m_pCapture, capture);
  }
  /// Replaces the listener; null for none. A running call completes.
  void SetFrameListener(FrameListener aListener) {
    auto listener = aListener ? std::make_shared<const FrameListener>(std::move(aListener)) : nullptr;
    const std::scoped_lock lock(m_Lock);
    std::swap(m_pListener, listener);
  }

  /// Requests a picture of the window at an integer factor. Unlike with a plain IGLCapture, sizes in pixels
  /// are enlarged too: clip rectangles, their frames, and lines and points that the painter sets by its
  /// canvas or by draw attributes. Painters scale text and other lines by Scale. No setting of a viewer
  /// changes. Triggers a frame.
  ///
  /// With a clipped viewer the surface has (factor + 1) times the window's size, or more if a clip rectangle
  /// extends beyond the window. It must fit GL's limits. The lines of gauges keep their size in pixels. The
  /// axes figure has at most its size in pixels, and less if a viewer is clipped.
  /// @param aTarget receives the picture; held until the picture is complete
  /// @param aRequest a zoom below 1 makes the picture fail; a fractional part is ignored
  /// @return a future: whether the pixmap holds the picture; broken as described at AttachPainter
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
  /// Requests the world point that the next frame draws at a pixel, read from the depth buffer at the end of
  /// the painter. Triggers a frame.
  /// @param aViewer one of the context's viewers, for example from GLViewerAt
  /// @param aPixel position in the window
  /// @return a future: the point; nothing if nothing is drawn there or the viewer is not visible; broken as
  ///         described at AttachPainter. Wait with a time limit: a suspended draw thread draws no frame
  std::future<std::optional<GLDATA_POINT>> PointUnder(IGLViewer& aViewer, const GLPixelPlace& aPixel) {
    Probe probe;
    probe.viewer = GLPtr<IGLViewer>::FromBorrowed(&aViewer);
    probe.pixel = aPixel;
    auto point = probe.point.get_future();
    {
      const std::scoped_lock lock(m_Lock);
      probe.lastFrame = m_uFrames + 2;  // a running frame does not count
      m_Probes.push_back(std::move(probe));
    }
    Trigger();
    return point;
  }

  // For painters and gauges, on the draw thread.

  /// Returns the kind of the running pass. Detects only captures that are attached to this object.
  GLPassKind Pass() const noexcept {
    GLint mode = GL_RENDER;
    glGetIntegerv(GL_RENDER_MODE, &mode);
    if (mode == GL_SELECT) return GLPassKind::Selection;
    return m_bCapturing ? GLPassKind::Capture : GLPassKind::Frame;
  }
  /// Returns the factor by which the running pass enlarges sizes in pixels: the factor of TakePicture, else
  /// 1.
  int Scale() const noexcept { return m_bCapturing && m_bOwn ? m_Serving.Factor() : 1; }

  // IGLCapture, for the context.

  HRESULT IsEnabled(LONG* aEnabled) noexcept override {
    if (aEnabled == nullptr) return E_INVALIDARG;
    EndFrame();
    *aEnabled = 0;
    GLPtr<IGLCapture> capture;
    bool more = false;  // whether another frame must follow: one frame takes one picture
    {
      const std::scoped_lock lock(m_Lock);
      capture = m_pCapture;
      m_bOwn = !m_Waiting.empty();
      if (m_bOwn) {
        m_Serving = std::move(m_Waiting.front());
        m_Waiting.erase(m_Waiting.begin());
        more = capture || !m_Waiting.empty();
      }
    }
    if (more) Trigger();
    if (m_bOwn) {
      *aEnabled = m_Serving.Plan(m_Context) ? 1 : 0;
      if (*aEnabled == 0) std::exchange(m_Serving, GLViewPicture()).Refuse();
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
  /// A pending request of PointUnder.
  struct Probe {
    GLPtr<IGLViewer> viewer;
    GLPixelPlace pixel{};
    std::promise<std::optional<GLDATA_POINT>> point;
    std::uint64_t lastFrame = 0;  // last frame that can complete it
  };

  /// Calls the host's painter, with the work before and after it.
  class Painter final : public GLPainterBase {
   public:
    Painter(GLViewing& aViewing, IGLPainter* aInner)
        : m_pViewing(GLPtr<GLViewing>::FromBorrowed(&aViewing)),
          m_pInner(GLPtr<IGLPainter>::FromBorrowed(aInner)) {
      ++m_pViewing->m_iPainters;
    }
    ~Painter() override {
      if (--m_pViewing->m_iPainters == 0) m_pViewing->BreakPromises();
    }
    HRESULT Draw(IGLCanvas* aCanvas, IGLContext* aContext, IGLViewer* aViewer) noexcept override {
      const GLPassKind kind = m_pViewing->Pass();
      if (kind == GLPassKind::Frame) m_pViewing->m_bDrawn = true;
      if (!m_pInner) return S_OK;
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

  /// Removes probes, so that the caller completes and releases them without the lock.
  template <class Condition>
  std::vector<Probe> TakeProbes(Condition aWanted) {
    std::vector<Probe> taken, left;
    const std::scoped_lock lock(m_Lock);
    for (Probe& probe : m_Probes) (aWanted(probe) ? taken : left).push_back(std::move(probe));
    std::swap(m_Probes, left);
    return taken;
  }

  /// Drops the pending requests. Their futures are broken.
  void BreakPromises() noexcept {
    std::vector<GLViewPicture> pictures;  // released after the lock
    std::vector<Probe> probes;
    const std::scoped_lock lock(m_Lock);
    std::swap(m_Waiting, pictures);
    std::swap(m_Probes, probes);
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
    // A frame that began before the attachment may end after it.
    if (!m_bDrawn) m_uFramesBefore = m_uFrames;
    // The remaining probes belong to viewers that were not drawn.
    for (Probe& probe : TakeProbes([&](const Probe& aProbe) { return m_uFrames >= aProbe.lastFrame; })) {
      probe.point.set_value(std::nullopt);
    }
    if (HasProbes()) Trigger();
    const auto now = std::chrono::steady_clock::now();
    const auto last = std::exchange(m_LastShown, now);
    const std::uint64_t number = m_uFrames - m_uFramesBefore;
    if (listener && number != 0) (*listener)({number, now, now - (number == 1 ? now : last)});
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
  std::mutex m_Lock;  // guards the following members
  GLPtr<IGLCapture> m_pCapture;
  std::shared_ptr<const FrameListener> m_pListener;
  std::vector<GLViewPicture> m_Waiting;
  std::vector<Probe> m_Probes;
  std::uint64_t m_uFrames = 0;      // written by the draw thread only
  std::atomic<int> m_iPainters{0};  // number of Painter objects; needs no lock
  // The following members belong to the draw thread.
  std::chrono::steady_clock::time_point m_LastShown;
  std::uint64_t m_uFramesBefore = 0;  // number of frames before the first one that called the painter
  bool m_bDrawn = false;              // a frame has called the painter
  GLPtr<IGLCapture> m_pAsked;         // capture of the running picture
  GLViewPicture m_Serving;            // running picture of TakePicture
  bool m_bOwn = false;                // whether the running picture is m_Serving
  bool m_bCapturing = false;
};

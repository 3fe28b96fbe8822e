/// @file
/// Base classes of the objects that a host implements: painters, gauges and captures. They implement
/// IUnknown; the host implements the drawing. Reference counts may change on any thread.

#pragma once

#include <gllib/GLPtr.h>
#include <gllib/GLTypes.h>
#include <gllib/IGLCapture.h>
#include <gllib/IGLPainter.h>
#include <gllib/IGLPixmap.h>
#include <gllib/IGLViewerGauge.h>

#include <atomic>
#include <climits>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

/// Base of a host object with one interface. The object is on the heap and exists from GLMake to its last
/// Release.
template <class Interface>
class GLClient : public Interface {
 public:
  GLClient(const GLClient&) = delete;
  GLClient& operator=(const GLClient&) = delete;

  /// Supports IUnknown and Interface.
  HRESULT QueryInterface(REFIID riid, void** ppv) noexcept final {
    if (ppv == nullptr) return E_POINTER;
    *ppv = nullptr;
    if (riid != IID_IUnknown && riid != GLIdentifierOf<Interface>()) return E_NOINTERFACE;
    *ppv = static_cast<Interface*>(this);
    AddRef();
    return S_OK;
  }
  /// Takes a reference.
  ULONG AddRef() noexcept final { return ++m_uReferences; }
  /// Releases a reference. The last Release deletes the object.
  ULONG Release() noexcept final {
    const ULONG left = --m_uReferences;
    if (left == 0) delete this;
    return left;
  }

 protected:
  GLClient() noexcept = default;
  virtual ~GLClient() = default;

 private:
  std::atomic<ULONG> m_uReferences{1};
};

/// Creates a client object. The pointer holds its first reference.
template <class Client, class... Arguments>
GLPtr<Client> GLMake(Arguments&&... aArguments) {
  return GLPtr<Client>::FromCounted(new Client(std::forward<Arguments>(aArguments)...));
}

/// Base of painters. The host implements Draw(aCanvas, aCntxt, aViewer).
using GLPainterBase = GLClient<IGLPainter>;

/// Base of gauges. A new gauge is visible. The host implements Draw(aCanvas, aContext).
class GLViewerGaugeBase : public GLClient<IGLViewerGauge> {
 public:
  HRESULT Show(LONG aShow) noexcept override {
    m_bVisible = aShow != 0;
    return S_OK;
  }
  HRESULT IsVisible(LONG* aVisible) noexcept override {
    if (aVisible == nullptr) return E_INVALIDARG;
    *aVisible = m_bVisible ? 1 : 0;
    return S_OK;
  }

 private:
  std::atomic<bool> m_bVisible{true};
};

/// The requested picture of a capture.
struct GLCaptureRequest {
  int m_iX = 0;                              ///< left edge in the window, pixels
  int m_iY = 0;                              ///< top edge, pixels from the window's top
  int m_iWidth = INT_MAX;                    ///< clipped at the window's right edge
  int m_iHeight = INT_MAX;                   ///< clipped at the window's bottom edge
  float m_fZoom = 1.0f;                      ///< resolution factor
  GLDATA_RGBA m_sBackground = {0, 0, 0, 1};  ///< clear colour of the picture
};

/// Base of captures that take one picture for each Request. The host implements OnData(aSuccess); if aSuccess
/// is 1, the pixmap of the request holds the picture. The object holds a reference to that pixmap until the
/// same draw thread serves the next request. One object may be attached to several contexts: the first
/// context that ends a frame serves a request.
class GLCaptureBase : public GLClient<IGLCapture> {
 public:
  /// Requests a picture of the next frame, and replaces a request that is not served yet. Any thread.
  void Request(IGLPixmap* aTarget, const GLCaptureRequest& aRequest = {}) noexcept {
    auto target = GLPtr<IGLPixmap>::FromBorrowed(aTarget);  // releases the previous pixmap without the lock
    const std::scoped_lock lock(m_Lock);
    std::swap(m_Waiting.m_pTarget, target);
    m_Waiting.m_Request = aRequest;
    m_bWanted = true;
  }

  /// If memory is short, the request waits for a later frame.
  HRESULT IsEnabled(LONG* aEnabled) noexcept override {
    if (aEnabled == nullptr) return E_INVALIDARG;
    *aEnabled = 0;
    Job done;  // released without the lock
    const std::scoped_lock lock(m_Lock);
    if (!m_bWanted) return S_OK;
    Job* serving = ServedHere();
    if (serving == nullptr) {
      try {
        serving = &m_Serving.emplace_back(std::this_thread::get_id(), Job()).second;
      } catch (...) {
        return E_OUTOFMEMORY;
      }
    }
    done = std::exchange(*serving, std::exchange(m_Waiting, Job()));
    m_bWanted = false;
    *aEnabled = 1;
    return S_OK;
  }
  HRESULT GetPixmap(IGLPixmap** aPixmap) noexcept override {
    if (aPixmap == nullptr) return E_INVALIDARG;
    *aPixmap = Served().m_pTarget.Detach();
    return S_OK;
  }
  HRESULT GetPixelZoom(float* aZoom) noexcept override {
    if (aZoom == nullptr) return E_INVALIDARG;
    *aZoom = Served().m_Request.m_fZoom;
    return S_OK;
  }
  HRESULT GetRectangle(int* aX, int* aY, int* aWidth, int* aHeight) noexcept override {
    if (aX == nullptr || aY == nullptr || aWidth == nullptr || aHeight == nullptr) return E_INVALIDARG;
    const GLCaptureRequest request = Served().m_Request;
    *aX = request.m_iX;
    *aY = request.m_iY;
    *aWidth = request.m_iWidth;
    *aHeight = request.m_iHeight;
    return S_OK;
  }
  HRESULT GetBackgroundColor(GLDATA_RGBA* aColor) noexcept override {
    if (aColor == nullptr) return E_INVALIDARG;
    *aColor = Served().m_Request.m_sBackground;
    return S_OK;
  }

 private:
  struct Job {
    GLPtr<IGLPixmap> m_pTarget;
    GLCaptureRequest m_Request;
  };

  /// Returns the request that the calling draw thread serves; null if it has served none yet. The caller
  /// holds the lock.
  Job* ServedHere() noexcept {
    for (auto& [thread, job] : m_Serving) {
      if (thread == std::this_thread::get_id()) return &job;
    }
    return nullptr;
  }
  /// Returns a copy of that request, with a reference to the pixmap.
  Job Served() noexcept {
    const std::scoped_lock lock(m_Lock);
    const Job* job = ServedHere();
    return job != nullptr ? *job : Job();
  }

  std::mutex m_Lock;  // guards the following members
  Job m_Waiting;
  bool m_bWanted = false;
  std::vector<std::pair<std::thread::id, Job>> m_Serving;  // one per draw thread that has served a request
};

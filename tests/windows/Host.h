// What the hosts in these tests have in common: an apartment, windows, messages and pictures. One thread.

#pragma once

#include <gllib/GLLibHost.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/GL.h"

/// COM on a thread for the length of a scope.
class Apartment {
 public:
  explicit Apartment(DWORD aModel = COINIT_APARTMENTTHREADED) { CoInitializeEx(nullptr, aModel); }
  ~Apartment() { CoUninitialize(); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
};

/// Delivers what waits for the thread's windows. @return the messages that were queued
inline std::vector<MSG> Pump() {
  std::vector<MSG> delivered;
  for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE;) {
    delivered.push_back(message);
    DispatchMessageA(&message);
  }
  return delivered;
}

/// Pumps until a condition holds. @return false after ten seconds without it
template <class Condition>
bool PumpUntil(Condition aHolds) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (!aHolds()) {
    if (std::chrono::steady_clock::now() > end) return false;
    Pump();
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

/// A top-level window of the host's own. It may end before its scope does.
class HostWindow {
 public:
  static constexpr int kWidth = 200, kHeight = 160;

  HostWindow() {
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = DefWindowProcA;
    windowClass.lpszClassName = "HostWindow";
    RegisterClassA(&windowClass);  // refused from the second time on
    m_hWnd = CreateWindowExA(0, "HostWindow", "", WS_POPUP | WS_VISIBLE, 0, 0, kWidth, kHeight, nullptr,
                             nullptr, nullptr, nullptr);
  }
  ~HostWindow() { Destroy(); }
  HostWindow(const HostWindow&) = delete;
  HostWindow& operator=(const HostWindow&) = delete;

  void Destroy() {
    DestroyWindow(m_hWnd);
    Pump();
  }
  HWND Handle() const { return m_hWnd; }

  /// A context by its ProgID, with a child that fills this window; null when there is none to be had.
  GLPtr<IGLContext> MakeContext() const {
    auto context = GLCreate<IGLContext>("Gl.GLContext.1");
    if (!context || FAILED(context->Initialize(reinterpret_cast<ULONG_PTR>(m_hWnd)))) return {};
    context->SetViewport(0, 0, kWidth, kHeight);
    return context;
  }

 private:
  HWND m_hWnd;
};

inline HWND WindowOf(IGLContext& aContext) {
  ULONG_PTR handle = 0;
  aContext.GetWindow(&handle);
  return reinterpret_cast<HWND>(handle);
}

/// Adds a viewer that looks along -z, from -1 to 1 in the shorter direction.
inline IGLViewer* AddViewer(IGLContext& aContext) {
  IGLViewer* viewer = nullptr;
  if (FAILED(aContext.CreateViewer(1, 1, &viewer))) return nullptr;
  GLDATA_POINT low = {-1, -1, -10}, high = {1, 1, 10};
  viewer->SetOrthoExtents(&low, &high);
  GLPtr<IGLCoord> eye;
  viewer->GetCoord(eye.Put());
  eye->SetOrigin3d(0, 0, 0);
  return viewer;
}

/// Reads the picture at the end of a viewer's pass.
class Reading final : public GLViewerGaugeBase {
 public:
  using Pixel = std::array<unsigned char, 3>;

  HRESULT Draw(IGLCanvas*, IGLContext*) noexcept override {
    const std::scoped_lock hold(m_Lock);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, HostWindow::kWidth, HostWindow::kHeight, GL_RGB, GL_UNSIGNED_BYTE, m_aPixels.data());
    ++m_iFrames;
    return S_OK;
  }
  int Frames() const {
    const std::scoped_lock hold(m_Lock);
    return m_iFrames;
  }
  /// A pixel of the last frame, by its place from -1 to 1 in either direction.
  Pixel At(double aX, double aY) const {
    const auto place = [](double aValue, int aSize) {
      return static_cast<std::size_t>((aValue + 1) / 2 * (aSize - 1));
    };
    const std::scoped_lock hold(m_Lock);
    return m_aPixels[place(aY, HostWindow::kHeight) * HostWindow::kWidth + place(aX, HostWindow::kWidth)];
  }
  /// How many pixels of the last frame aren't as the one in the lower left corner; of all rows or of some.
  int Covered(int aFirst = 0, int aLast = HostWindow::kHeight) const {
    const std::scoped_lock hold(m_Lock);
    return static_cast<int>(std::count_if(m_aPixels.begin() + aFirst * HostWindow::kWidth,
                                          m_aPixels.begin() + aLast * HostWindow::kWidth,
                                          [&](const Pixel& pixel) { return pixel != m_aPixels.front(); }));
  }

 private:
  mutable std::mutex m_Lock;
  int m_iFrames = 0;
  std::vector<Pixel> m_aPixels = std::vector<Pixel>(std::size_t{HostWindow::kWidth} * HostWindow::kHeight);
};

/// Attaches a reading to a viewer.
inline GLPtr<Reading> Read(IGLViewer& aViewer) {
  auto reading = GLMake<Reading>();
  aViewer.AddGauge(reading.Get());
  aViewer.ShowGauges(1);
  return reading;
}

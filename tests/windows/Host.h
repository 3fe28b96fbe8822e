// Common parts of the host tests: apartment, windows, messages and pictures. Wine; one thread of the test,
// and the draw threads.

#pragma once

#include "platform/GL.h"
#include "support/Test.h"

/// Initialises COM on the calling thread until the object is destroyed.
class Apartment {
 public:
  explicit Apartment(DWORD aModel = COINIT_APARTMENTTHREADED) { CoInitializeEx(nullptr, aModel); }
  ~Apartment() { CoUninitialize(); }
  Apartment(Apartment&&) = delete;
};

/// Delivers pending messages of the thread's windows. @return the messages
inline std::vector<MSG> Pump() {
  std::vector<MSG> delivered;
  for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE;) {
    delivered.push_back(message);
    DispatchMessageA(&message);
  }
  return delivered;
}

/// Delivers messages until a condition is true. @return false if it is not true within a minute
template <class Condition>
bool PumpUntil(Condition aHolds) {
  return Eventually([&] {
    Pump();
    return aHolds();
  });
}

/// A top-level window of the host. It may be destroyed before the object.
class HostWindow {
 public:
  static constexpr int kWidth = 200, kHeight = 160;

  HostWindow() {
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = DefWindowProcA;
    windowClass.lpszClassName = "HostWindow";
    RegisterClassA(&windowClass);  // fails if the class is registered already
    m_hWnd = CreateWindowExA(0, "HostWindow", "", WS_POPUP | WS_VISIBLE, 0, 0, kWidth, kHeight, nullptr,
                             nullptr, nullptr, nullptr);
  }
  ~HostWindow() { Destroy(); }
  HostWindow(HostWindow&&) = delete;

  void Destroy() {
    DestroyWindow(m_hWnd);
    Pump();
  }
  HWND Handle() const { return m_hWnd; }

  /// Creates a context by its ProgID, with a child that fills this window; null on failure.
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

/// Reads the picture at the end of a viewer's pass, on the draw thread.
class Reading final : public GLViewerGaugeBase {
 public:
  HRESULT Draw(IGLCanvas*, IGLContext*) noexcept override {
    std::vector<std::uint32_t> pixels(std::size_t{HostWindow::kWidth} * HostWindow::kHeight);
    glReadPixels(0, 0, HostWindow::kWidth, HostWindow::kHeight, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
    m_iCovered = static_cast<int>(
        std::ranges::count_if(pixels, [&](std::uint32_t pixel) { return pixel != pixels.front(); }));
    ++m_iFrames;
    return S_OK;
  }
  int Frames() const { return m_iFrames; }
  /// Returns how many pixels of the last frame differ from the one in the lower left corner.
  int Covered() const { return m_iCovered; }

 private:
  std::atomic<int> m_iFrames{0}, m_iCovered{0};
};

/// A triangle over the middle of the view, with identifier 7.
class Triangle final : public GLPainterBase {
 public:
  static constexpr int kPixels = HostWindow::kHeight * HostWindow::kHeight / 8;

  HRESULT Draw(IGLCanvas* aCanvas, IGLContext*, IGLViewer*) noexcept override {
    GLDATA_RGBA color = {1, 0, 0, 1};
    aCanvas->SetTestID(7);
    aCanvas->SetVertexColor(&color);
    aCanvas->BeginDrawTriangles();
    aCanvas->Vertex2d(-0.5, -0.5);
    aCanvas->Vertex2d(0.5, -0.5);
    aCanvas->Vertex2d(0, 0.5);
    aCanvas->EndDrawVertices();
    return S_OK;
  }
};

/// Attaches a reading to a viewer.
inline GLPtr<Reading> Read(IGLViewer& aViewer) {
  auto reading = GLMake<Reading>();
  aViewer.AddGauge(reading.Get());
  aViewer.ShowGauges(1);
  return reading;
}

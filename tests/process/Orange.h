// The picture of the hosts of these tests, and its check: an orange triangle over the middle. Any thread.

#pragma once

#include <gllib/GLLibHost.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <future>

/// Draws the triangle, and then calls a function of the test.
struct OrangePainter final : GLPainterBase {
  HRESULT Draw(IGLCanvas* aCanvas, IGLContext* aContext, IGLViewer*) noexcept override {
    GLDATA_RGBA orange = {1.0f, 0.4f, 0.0f, 1.0f};
    aCanvas->SetVertexColor(&orange);
    aCanvas->BeginDrawTriangles();
    for (const auto& [x, y] : {std::pair{-90.0, -90.0}, {90.0, -90.0}, {0.0, 90.0}})
      aCanvas->Vertex3d(x, y, 0);
    const HRESULT drawn = aCanvas->EndDrawVertices();
    ++m_iFrames;
    if (m_Extra) m_Extra(*aContext);
    return drawn;
  }
  std::atomic<int> m_iFrames{0};
  std::function<void(IGLContext&)> m_Extra;  // set before the painter is attached
};

/// Reports the result of one picture.
struct Snapshot final : GLCaptureBase {
  HRESULT OnData(LONG aSuccess) noexcept override { return m_Taken.set_value(aSuccess != 0), S_OK; }
  std::promise<bool> m_Taken;
};

/// Returns whether a context shows the triangle. @param aPicture is overwritten
inline bool ShowsOrange(IGLContext& aContext, IGLPixmap& aPicture) {
  const auto snapshot = GLMake<Snapshot>();
  snapshot->Request(&aPicture);
  aContext.AttachCapture(snapshot.Get());
  auto taken = snapshot->m_Taken.get_future();
  if (taken.wait_for(std::chrono::seconds(40)) != std::future_status::ready || !taken.get()) return false;
  int width = 0, height = 0;
  GLDATA_RGBA4B middle = {};
  aPicture.GetWidth(&width);
  aPicture.GetHeight(&height);
  aPicture.GetPixel(width / 2, height / 2, &middle);
  return middle.m_bRed == 255 && middle.m_bGreen == 102 && middle.m_bBlue == 0;
}

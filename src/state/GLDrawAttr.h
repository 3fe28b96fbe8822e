// GLDrawAttr: colour, point and line settings, and drawing mode. Written by host threads, read by the draw
// thread. Each member is atomic; a group of members is not.

#pragma once

#include <gllib/IGLDrawAttr.h>

#include <atomic>

#include "component/GLObject.h"
#include "thread/Relaxed.h"

class GLDrawAttr final : public GLObject<GLDrawAttr, IGLDrawAttr> {
 public:
  HRESULT GetColor(GLDATA_RGBA* aColor) noexcept override;
  HRESULT SetColor(GLDATA_RGBA* aColor) noexcept override;
  HRESULT GetComplementColor(GLDATA_RGBA* aColor) noexcept override;
  HRESULT GetContrastColor(GLDATA_RGBA* aColor) noexcept override;
  HRESULT GetRed(float* aValue) noexcept override;
  HRESULT SetRed(float aValue) noexcept override;
  HRESULT GetGreen(float* aValue) noexcept override;
  HRESULT SetGreen(float aValue) noexcept override;
  HRESULT GetBlue(float* aValue) noexcept override;
  HRESULT SetBlue(float aValue) noexcept override;
  HRESULT GetAlpha(float* aValue) noexcept override;
  HRESULT SetAlpha(float aValue) noexcept override;
  HRESULT GetPointSize(float* aValue) noexcept override;
  HRESULT SetPointSize(float aValue) noexcept override;
  HRESULT GetPointSizeLimits(float* aMin, float* aMax) noexcept override;
  HRESULT GetPointSizeStep(float* aValue) noexcept override;
  HRESULT GetLineWidth(float* aValue) noexcept override;
  HRESULT SetLineWidth(float aValue) noexcept override;
  HRESULT GetLineWidthLimits(float* aMin, float* aMax) noexcept override;
  HRESULT GetLineWidthStep(float* aValue) noexcept override;
  HRESULT GetLineStipplePattern(std::uint16_t* aPattern) noexcept override;
  HRESULT SetLineStipplePattern(std::uint16_t aPattern) noexcept override;
  HRESULT GetLineStippleFactor(int* aFactor) noexcept override;
  HRESULT SetLineStippleFactor(int aFactor) noexcept override;
  HRESULT EnableDrawMode(eGLDrawMode aMode, LONG aEnable) noexcept override;
  HRESULT IsDrawModeEnabled(eGLDrawMode aMode, LONG* aEnabled) noexcept override;
  HRESULT GetDrawMode(int* aMode) noexcept override;

  // For canvases: the current values, and a version that changes with every setter and is never 0.
  std::uint32_t Version() const noexcept { return m_uVersion.load(std::memory_order_acquire); }
  GLDATA_RGBA Color() const noexcept { return m_sColor; }
  float PointSize() const noexcept { return m_fPointSize; }
  float LineWidth() const noexcept { return m_fLineWidth; }
  std::uint16_t LineStipplePattern() const noexcept { return m_usLineStipplePattern; }
  int LineStippleFactor() const noexcept { return m_iLineStippleFactor; }
  int DrawMode() const noexcept { return m_iDrawMode.load(std::memory_order_relaxed); }

 private:
  HRESULT SetComponent(Relaxed<float>& aComponent, float aValue) noexcept;
  HRESULT Modified() noexcept;

  RelaxedColor m_sColor{1.0f, 1.0f, 1.0f, 1.0f};
  Relaxed<float> m_fPointSize{1.0f};
  Relaxed<float> m_fLineWidth{1.0f};
  Relaxed<std::uint16_t> m_usLineStipplePattern{0xFFFF};  // all bits set: a solid line
  Relaxed<int> m_iLineStippleFactor{1};
  std::atomic<int> m_iDrawMode{GLDM_SHOW_FRONT | GLDM_SMOOTH_LIGHTING};
  std::atomic<std::uint32_t> m_uVersion{1};
};

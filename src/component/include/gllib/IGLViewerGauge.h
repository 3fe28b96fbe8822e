// What a host implements to draw over a viewer.

#pragma once

#include <gllib/GLPlatform.h>

struct IGLCanvas;
struct IGLContext;

/// Drawn over the scene of a viewer. Called on the draw thread.
struct IGLViewerGauge : IUnknown {
  static constexpr IID Identifier = {
      0x882DD083, 0x033E, 0x11D4, {0xA3, 0x19, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  virtual HRESULT Draw(IGLCanvas* aCanvas, IGLContext* aContext) noexcept = 0;
  virtual HRESULT Show(LONG aShow) noexcept = 0;
  virtual HRESULT IsVisible(LONG* aVisible) noexcept = 0;

 protected:
  ~IGLViewerGauge() = default;
};

// What a host implements to draw its model.

#pragma once

#include <gllib/GLPlatform.h>

struct IGLCanvas;
struct IGLContext;
struct IGLViewer;

/// Draws the model of the host. Called on the draw thread.
struct IGLPainter : IUnknown {
  static constexpr IID Identifier = {
      0x510D9C87, 0xFF64, 0x11D3, {0xA3, 0x17, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  virtual HRESULT Draw(IGLCanvas* aCanvas, IGLContext* aCntxt, IGLViewer* aViewer) noexcept = 0;

 protected:
  ~IGLPainter() = default;
};

// IGLPainter.

#pragma once

#include <gllib/GLTypes.h>

struct IGLCanvas;
struct IGLContext;
struct IGLViewer;

/// The client's painter: draws the model of a viewer. Called on the draw thread.
struct IGLPainter : IUnknown {
  static constexpr IID Identifier = {
      0x510D9C87, 0xFF64, 0x11D3, {0xA3, 0x17, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  virtual HRESULT Draw(IGLCanvas* aCanvas, IGLContext* aCntxt, IGLViewer* aViewer) noexcept = 0;

 protected:
  ~IGLPainter() = default;
};

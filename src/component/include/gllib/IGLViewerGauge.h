/// @file
/// The interface that a host implements to draw over a viewer's scene: scales, legends, cross-hairs.
/// GLViewerGaugeBase (gllib/GLClient.h) implements IUnknown and the visibility.

#pragma once

#include <gllib/GLPlatform.h>

struct IGLCanvas;
struct IGLContext;

/// Draws over the scene. IGLViewer::AddGauge adds it to a viewer and takes one reference. A gauge may be in
/// several viewers.
struct IGLViewerGauge : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x882DD083, 0x033E, 0x11D4, {0xA3, 0x19, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  /// Draws the gauge. Called after the painter if the viewer shows its gauges and IsVisible has returned
  /// non-zero.
  ///
  /// On entry both matrices are the identity, so x and y run from -1 to 1 over the picture: over the clip
  /// rectangle if the picture is scaled into it, else over the window. Lighting and clip planes are off; the
  /// depth test is as the painter left it. Afterwards the component restores matrices and lighting; other
  /// changes of GL state remain. IGLCanvas::PushProjectionMatrix with a non-zero argument sets square units.
  ///
  /// Thread: the draw thread, as at IGLPainter::Draw.
  /// @param aCanvas  the canvas to draw on; borrowed
  /// @param aContext the context of the viewer; borrowed
  /// @return ignored
  virtual HRESULT Draw(IGLCanvas* aCanvas, IGLContext* aContext) noexcept = 0;
  /// Shows (non-zero) or hides the gauge. The component does not call this; it is for the host.
  virtual HRESULT Show(LONG aShow) noexcept = 0;
  /// Returns whether the gauge is drawn. The draw thread calls this before each Draw.
  /// @param aVisible the gauge sets this: non-zero if it is drawn
  /// @return ignored
  virtual HRESULT IsVisible(LONG* aVisible) noexcept = 0;

 protected:
  ~IGLViewerGauge() = default;
};

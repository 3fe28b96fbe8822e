/// @file
/// What a host implements to draw over a viewer's scene: scales, legends, cross-hairs. GLViewerGaugeBase
/// (gllib/GLClient.h) brings IUnknown and the visibility with it.

#pragma once

#include <gllib/GLPlatform.h>

struct IGLCanvas;
struct IGLContext;

/// Drawn over the scene; added by IGLViewer::AddGauge, which holds one reference. The same gauge may stand in
/// several viewers.
struct IGLViewerGauge : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x882DD083, 0x033E, 0x11D4, {0xA3, 0x19, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  /// Draws the gauge, after the painter, if the viewer shows its gauges and IsVisible answered non-zero.
  ///
  /// On entry both matrices are the identity, so that x and y run from -1 to 1 over the viewer; lighting is
  /// off and clip planes are off; the depth test stands as the painter left it. Matrices and lighting come
  /// back afterwards, other GL state that is changed stays. PushProjectionMatrix(1, ...) of the canvas gives
  /// square units.
  ///
  /// Thread: the draw thread, as with IGLPainter::Draw.
  /// @param aCanvas  where to draw; borrowed
  /// @param aContext the context of the viewer; borrowed
  /// @return ignored
  virtual HRESULT Draw(IGLCanvas* aCanvas, IGLContext* aContext) noexcept = 0;
  /// Shows (non-zero) or hides the gauge. For the host's own use: the component doesn't call it.
  virtual HRESULT Show(LONG aShow) noexcept = 0;
  /// Tells whether the gauge is to be drawn; asked on the draw thread before each Draw.
  /// @param aVisible to be set by the gauge: non-zero for yes
  /// @return ignored
  virtual HRESULT IsVisible(LONG* aVisible) noexcept = 0;

 protected:
  ~IGLViewerGauge() = default;
};

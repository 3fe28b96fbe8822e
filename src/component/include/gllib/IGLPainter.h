/// @file
/// The interface that a host implements to draw its model. GLPainterBase (gllib/GLClient.h) implements
/// IUnknown.

#pragma once

#include <gllib/GLPlatform.h>

struct IGLCanvas;
struct IGLContext;
struct IGLViewer;

/// Draws the model of the host. IGLContext::AttachPainter attaches it and takes one reference.
struct IGLPainter : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x510D9C87, 0xFF64, 0x11D3, {0xA3, 0x17, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  /// Draws the model into one viewer. Called once per frame for each visible viewer, once for each pass of a
  /// selection, and once for each viewer of an off-screen capture.
  ///
  /// On entry the rendering context is current, the model-view matrix is selected and converts world to eye
  /// coordinates, and the projection is the viewer's. Colour and depth are cleared within the viewer; clip
  /// planes, fog and lights are set. In a selection the model-view matrix also contains the projection, the
  /// projection matrix is the identity, and colour, fog and lights remain as they are. On return both matrix
  /// stacks and the attribute stack must have the same depth as on entry, and no primitive or list may be
  /// open. Changes of GL state remain for the next viewer.
  ///
  /// Thread: the draw thread. During a frame it holds the context's lock, so the painter is not replaced
  /// meanwhile. All operations of the component may be called, but Initialize and Select of this context
  /// return E_GL_BADSTATE. The host must lock data that its other threads change.
  ///
  /// @param aCanvas the canvas to draw on; borrowed
  /// @param aCntxt  the context to which the painter is attached; borrowed
  /// @param aViewer the viewer to draw; borrowed
  /// @return ignored
  virtual HRESULT Draw(IGLCanvas* aCanvas, IGLContext* aCntxt, IGLViewer* aViewer) noexcept = 0;

 protected:
  ~IGLPainter() = default;
};

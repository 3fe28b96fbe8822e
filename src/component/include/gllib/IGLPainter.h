/// @file
/// What a host implements to draw its model. GLPainterBase (gllib/GLClient.h) brings IUnknown with it.

#pragma once

#include <gllib/GLPlatform.h>

struct IGLCanvas;
struct IGLContext;
struct IGLViewer;

/// Draws the model of the host; attached by IGLContext::AttachPainter, which holds one reference.
struct IGLPainter : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x510D9C87, 0xFF64, 0x11D3, {0xA3, 0x17, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  /// Draws the model into one viewer: once a frame for each visible viewer, for each pass of a selection, and
  /// once more for each viewer of an off-screen capture.
  ///
  /// On entry GL is current, the model-view matrix is selected and takes world to eye coordinates, the
  /// projection is the viewer's, colour and depth are cleared within the viewer, and clip planes, fog and
  /// lights are in force. On return both matrix stacks and the attribute stack must be as deep as on entry,
  /// with no primitive and no list left open. GL state that is changed stays for the next viewer.
  ///
  /// Thread: the draw thread, with the context's lock held during a frame, so that the painter isn't
  /// exchanged meanwhile. All operations of the component may be called, with these exceptions: Initialize
  /// and Select answer E_GL_BADSTATE, and SuspendDrawThread takes its 3 seconds. Whatever host threads change
  /// too needs the host's own lock.
  ///
  /// @param aCanvas where to draw; borrowed
  /// @param aCntxt  the context that the painter is attached to; borrowed
  /// @param aViewer the viewer that is drawn; borrowed
  /// @return ignored
  virtual HRESULT Draw(IGLCanvas* aCanvas, IGLContext* aCntxt, IGLViewer* aViewer) noexcept = 0;

 protected:
  ~IGLPainter() = default;
};

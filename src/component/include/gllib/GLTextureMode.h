// eGLTextureMode: what both kinds of texture share.

#pragma once

/// How a texture meets the colour of its face; any other value acts as GLTM_DECAL.
enum eGLTextureMode : int {
  GLTM_MODULATE = 1,
  GLTM_DECAL = 2,
  GLTM_BLEND = 3,
};

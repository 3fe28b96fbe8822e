// RichScene: a scene with text, textures and a list. Draw thread of its context.

#pragma once

#include "support/Scene.h"

/// Text of all four kinds, both kinds of texture, and triangles from a compiled list.
class RichScene {
 public:
  enum class Parts { kAll, kQuick };  // quick: without textures and without fonts that take long to create
  explicit RichScene(Parts aParts = Parts::kAll) : m_Parts(aParts) {}

  void Draw(const Scene& aScene);
  /// Deletes the list; the next frame compiles it again.
  void DropList(const Scene& aScene);

  std::atomic<int> compiled{0};  ///< number of compilations of the list

 private:
  void Make(IGLContext& aContext);
  void DrawList(IGLCanvas& aCanvas);
  void DrawTextures(IGLContext& aContext);

  const Parts m_Parts;
  GLPtr<IGLDrawAttr> m_Attributes = GLCreate<IGLDrawAttr>(CLSID_GLDrawAttr);
  GLPtr<IGLMaterial> m_Material = GLCreate<IGLMaterial>(CLSID_GLMaterial);
  GLPtr<IGLPixmap> m_Image = GLCreate<IGLPixmap>(CLSID_GLPixmap);
  GLPtr<IGLTexture2D> m_Square = GLCreate<IGLTexture2D>(CLSID_GLTexture2D);
  GLPtr<IGLTexture1D> m_Strip = GLCreate<IGLTexture1D>(CLSID_GLTexture1D);
  Fonts m_Fonts;
  GLString m_Text{"Text &8"};
  int m_iList = 0;
};

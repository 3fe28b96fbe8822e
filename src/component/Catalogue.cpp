// Catalogue: the table of the 14 classes. Constant; any thread.

#include "component/Catalogue.h"

#include <gllib/GLClasses.h>

namespace {

constexpr CatalogueEntry kCatalogue[] = {
    {&CLSID_GLContext, "GLContext", CreateGLContext},
    {&CLSID_GLDrawAttr, "GLDrawAttr", CreateGLDrawAttr},
    {&CLSID_GLFog, "GLFog", CreateGLFog},
    {&CLSID_GLFont, "GLFont", CreateGLFont},
    {&CLSID_GLLight, "GLLight", CreateGLLight},
    {&CLSID_GLMaterial, "GLMaterial", CreateGLMaterial},
    {&CLSID_GLViewer, "GLViewer", CreateGLViewer},
    {&CLSID_GLCoord, "GLCoord", CreateGLCoord},
    {&CLSID_GLBitmap, "GLBitmap", CreateGLBitmap},
    {&CLSID_GLPixmap, "GLPixmap", CreateGLPixmap},
    {&CLSID_GLTexture1D, "GLTexture1D", CreateGLTexture1D},
    {&CLSID_GLTexture2D, "GLTexture2D", CreateGLTexture2D},
    {&CLSID_GLCollection, "GLCollection", CreateGLCollection},
    {&CLSID_GLCanvas, "GLCanvas", CreateGLCanvas},
};

}  // namespace

std::span<const CatalogueEntry> Catalogue() noexcept { return kCatalogue; }

const CatalogueEntry* FindInCatalogue(REFCLSID aClassId) noexcept {
  for (const CatalogueEntry& entry : kCatalogue) {
    if (*entry.m_pClassId == aClassId) return &entry;
  }
  return nullptr;
}

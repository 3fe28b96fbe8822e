// Catalogue: identifier, name and creation function of each of the 14 classes.
// Constant; any thread.

#pragma once

#include <gllib/GLPlatform.h>

#include <span>

/// One class of the module.
struct CatalogueEntry {
  const CLSID* m_pClassId;
  const char* m_szName;  ///< "GLContext"; the ProgID is "Gl." + name + ".1"
  HRESULT (*m_pfnCreate)(IUnknown* aOuter, REFIID riid, void** ppv) noexcept;
};

/// Returns all classes, in the order of registration.
std::span<const CatalogueEntry> Catalogue() noexcept;

/// Returns the entry of a class; null for a class that is not in the module.
const CatalogueEntry* FindInCatalogue(REFCLSID aClassId) noexcept;

// The creation functions, each defined in the file of its class.
HRESULT CreateGLContext(IUnknown* aOuter, REFIID riid, void** ppv) noexcept;
HRESULT CreateGLDrawAttr(IUnknown* aOuter, REFIID riid, void** ppv) noexcept;
HRESULT CreateGLFog(IUnknown* aOuter, REFIID riid, void** ppv) noexcept;
HRESULT CreateGLFont(IUnknown* aOuter, REFIID riid, void** ppv) noexcept;
HRESULT CreateGLLight(IUnknown* aOuter, REFIID riid, void** ppv) noexcept;
HRESULT CreateGLMaterial(IUnknown* aOuter, REFIID riid, void** ppv) noexcept;
HRESULT CreateGLViewer(IUnknown* aOuter, REFIID riid, void** ppv) noexcept;
HRESULT CreateGLCoord(IUnknown* aOuter, REFIID riid, void** ppv) noexcept;
HRESULT CreateGLBitmap(IUnknown* aOuter, REFIID riid, void** ppv) noexcept;
HRESULT CreateGLPixmap(IUnknown* aOuter, REFIID riid, void** ppv) noexcept;
HRESULT CreateGLTexture1D(IUnknown* aOuter, REFIID riid, void** ppv) noexcept;
HRESULT CreateGLTexture2D(IUnknown* aOuter, REFIID riid, void** ppv) noexcept;
HRESULT CreateGLCollection(IUnknown* aOuter, REFIID riid, void** ppv) noexcept;
HRESULT CreateGLCanvas(IUnknown* aOuter, REFIID riid, void** ppv) noexcept;

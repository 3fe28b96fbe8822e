// GLFont: a block of 256 display lists, one per character code, and the widths of the characters. Created on
// a host thread; built and printed on the draw thread. Any thread may read settings and widths.

#pragma once

#include <gllib/IGLFont.h>

#include <array>
#include <atomic>
#include <vector>

#include "component/GLObject.h"
#include "component/GLSiteLink.h"
#include "platform/Fonts.h"
#include "platform/GL.h"
#include "thread/Relaxed.h"

/// A font of one of four kinds: system and raster (bitmaps at the raster position), TrueType (outlines) and
/// internal (textured quads). The model-view matrix places the latter two.
class GLFont final : public GLObject<GLFont, IGLFont> {
 public:
  static constexpr int kCodes = 256;
  static constexpr std::size_t kFaceRoom = 64;

  GLFont() noexcept = default;
  ~GLFont();

  // Initialisers: exactly one runs, before the font is returned to the host. A face name is cut to 63 UTF-16
  // units.
  void InitSystemFont(GLSiteLinkPtr aSite) noexcept;
  void InitRasterFont(GLSiteLinkPtr aSite, const GLWCHAR* aFace, int aStyle, int aWeight, float aOrientation,
                      int aHeight, int aWidth) noexcept;
  void InitTrueTypeFont(GLSiteLinkPtr aSite, const GLWCHAR* aFace, int aStyle, int aWeight,
                        float aOrientation, bool aExtruded) noexcept;
  /// @return S_OK; E_INVALIDARG if the name has 64 units or more
  HRESULT InitInternalFont(GLSiteLinkPtr aSite, const GLWCHAR* aFace) noexcept;

  /// Builds the lists and the widths in the current rendering context. Draw thread.
  /// @return whether the font can print
  bool CreateFontLists() noexcept;
  /// Builds the lists unless they are valid in the current pass. Draw thread, with no list open.
  /// @return whether the font can print
  bool EnsureLists(GLContextSite& aSite) noexcept;

  HRESULT IsTrueType(LONG* aTrueType) noexcept override;
  HRESULT GetFace(BSTR* aFace) noexcept override;
  HRESULT GetStyle(int* aStyle) noexcept override;
  HRESULT GetWeight(int* aWeight) noexcept override;
  HRESULT GetOrientation(float* aOrientation) noexcept override;
  HRESULT GetWidth(float* aValue) noexcept override;
  HRESULT SetWidth(float aValue) noexcept override;
  HRESULT GetHeight(float* aValue) noexcept override;
  HRESULT SetHeight(float aValue) noexcept override;
  HRESULT GetExtrusionZ(float* aValue) noexcept override;
  HRESULT SetExtrusionZ(float aValue) noexcept override;
  HRESULT GetEscapement_DEG(float* aValue) noexcept override;
  HRESULT SetEscapement_DEG(float aValue) noexcept override;
  HRESULT GetStringWidth(BSTR aString, float* aWidth) noexcept override;
  HRESULT Print(BSTR aString, GLDATA_POINT* aStart) noexcept override;

 private:
  using GlyphMetrics = std::array<GLYPHMETRICSFLOAT, kCodes>;

  /// 8-bit text of one Print call, stored on the stack or in m_vText.
  struct Text {
    const char* m_pBytes;
    std::size_t m_iLength;
  };

  void Describe(GLSiteLinkPtr aSite, const GLWCHAR* aFace) noexcept;
  bool IsSystem() const noexcept;
  bool IsPlacedByMatrix() const noexcept { return m_bTrueType || m_bInternal; }

  // GLFontLists.cpp
  bool CreateFontLists(GLContextSite& aSite) noexcept;
  bool CreateKindLists(GLContextSite& aSite, GLuint aBase) noexcept;
  bool CreateSystemLists(GLuint aBase) noexcept;
  bool CreateDeviceLists(HDC aDC, GLuint aBase) noexcept;
  bool CreateRasterLists(HDC aDC, GLuint aBase) noexcept;
  bool CreateOutlineLists(HDC aDC, GLuint aBase) noexcept;
  bool SetMetricsFromWidths(HDC aDC) noexcept;
  void SetMetrics(const GlyphMetrics& aMetrics) noexcept;

  // GLFontAtlas.cpp
  bool CreateInternalLists(GLContextSite& aSite, GLuint aBase) noexcept;

  // GLFontPrint.cpp
  Text Convert(const GLWCHAR* aString, char* aStack, int aRoom) noexcept;
  void Position(const GLDATA_POINT& aStart) const noexcept;
  bool CallLists(GLuint aBase, const Text& aText) noexcept;

  GLSiteLinkPtr m_pContext;          // set by the initialiser, then constant
  GLWCHAR m_szFace[kFaceRoom] = {};  // zero-terminated
  bool m_bTrueType = false;
  bool m_bInternal = false;
  bool m_bAverageWidth = false;  // a raster font without a width takes the device's average width

  Relaxed<int> m_iStyle{0};
  Relaxed<int> m_iWeight{0};
  float m_fOrientation = 0;  // degrees
  Relaxed<float> m_fWidth{1};
  Relaxed<float> m_fHeight{1};
  Relaxed<float> m_fExtrusionZ{0};
  Relaxed<float> m_fEscapement{0};  // degrees

  GlyphMetrics m_arGlyphMetrics{};      // written on the draw thread; any thread reads gmfCellIncX
  bool m_bRefused = false;              // the last build failed; draw thread
  std::atomic<bool> m_bCreated{false};  // the last build succeeded: the metrics are complete
  ULONG m_uListKey = 0;

  GLuint m_uTexture = 0;        // atlas texture in the rendering context of the last build
  GLuint m_uWindowTexture = 0;  // atlas texture in the window's rendering context
  ULONG m_uWindowContext = 0;   // number of that rendering context

  bool m_bListArray = false;
  bool m_bVendorChecked = false;
  // these two never shrink, so that repeated Print calls allocate no memory
  std::vector<GLuint> m_vListNames;
  std::vector<char> m_vText;
};

// GLFont: a block of 256 display lists, one a character code, and the widths that go with them.
// Described on a host thread, built and printed on the draw thread; settings and widths may be read by any
// thread.

#pragma once

#include <gllib/IGLFont.h>

#include <array>
#include <atomic>
#include <vector>

#include "component/Object.h"
#include "component/SiteLink.h"
#include "platform/Fonts.h"
#include "platform/GL.h"
#include "thread/Relaxed.h"

/// A font of one of four kinds: system and raster (bitmaps at the raster position), TrueType (outlines) and
/// internal (textured quads), the latter two placed by the modelview matrix.
class GLFont final : public GLObject<GLFont, IGLFont> {
 public:
  static constexpr int kCodes = 256;
  static constexpr std::size_t kFaceRoom = 64;

  GLFont() noexcept = default;
  ~GLFont();

  // The initialisers: one of them runs before the font is handed out. A longer face is cut to 63 UTF-16
  // units.
  void InitSystemFont(GLSiteLinkPtr aSite) noexcept;
  void InitRasterFont(GLSiteLinkPtr aSite, const GLWCHAR* aFace, int aStyle, int aWeight, float aOrientation,
                      int aHeight, int aWidth) noexcept;
  void InitTrueTypeFont(GLSiteLinkPtr aSite, const GLWCHAR* aFace, int aStyle, int aWeight,
                        float aOrientation, bool aExtruded) noexcept;
  /// @return S_OK; E_INVALIDARG for a name of 64 units or more
  HRESULT InitInternalFont(GLSiteLinkPtr aSite, const GLWCHAR* aFace) noexcept;

  /// Whether the font belongs to a context that still stands. Any thread.
  bool HasSite() const noexcept;
  /// Builds the lists and the widths in the rendering context that is current. Draw thread.
  /// @return whether the font can print
  bool CreateFontLists() noexcept;
  /// Builds the lists unless they are valid in the pass in progress. Draw thread, with no list open.
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

  /// 8-bit text of one Print, on the stack or in m_vText.
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
  bool m_bAverageWidth = false;  // a raster font without a width of its own takes the device's

  Relaxed<int> m_iStyle{0};
  Relaxed<int> m_iWeight{0};
  float m_fOrientation = 0;  // degrees
  Relaxed<float> m_fWidth{1};
  Relaxed<float> m_fHeight{1};
  Relaxed<float> m_fExtrusionZ{0};
  Relaxed<float> m_fEscapement{0};  // degrees

  GlyphMetrics m_arGlyphMetrics{};      // written on the draw thread; gmfCellIncX is read anywhere
  bool m_bRefused = false;              // the last build failed; draw thread
  std::atomic<bool> m_bCreated{false};  // raised when the metrics are complete
  ULONG m_uListKey = 0;

  GLuint m_uTexture = 0;        // the atlas in the rendering context that built last
  GLuint m_uWindowTexture = 0;  // the atlas in the window's rendering context, and
  ULONG m_uWindowContext = 0;   // that rendering context's number

  bool m_bListArray = false;
  bool m_bVendorChecked = false;
  std::vector<GLuint> m_vListNames;  // these two only grow, so that a warm Print allocates nothing
  std::vector<char> m_vText;
};

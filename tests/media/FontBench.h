// FontBench: the surroundings of a font in a test, and common operations on fonts. Thread with a current
// rendering context.

#pragma once

#include "media/GLFont.h"
#include "support/PlainGL.h"
#include "support/TestSite.h"

enum class FontKind { kSystem, kRaster, kTrueType, kInternal };
inline constexpr FontKind kFontKinds[] = {FontKind::kSystem, FontKind::kRaster, FontKind::kTrueType,
                                          FontKind::kInternal};

/// Properties of a font; each kind uses some of them.
struct FontOrder {
  FontKind m_Kind = FontKind::kRaster;
  const char16_t* m_szFace = u"DejaVu Sans";
  int m_iStyle = 0;
  int m_iWeight = 400;
  float m_fOrientation = 0;
  int m_iHeight = -20;
  int m_iWidth = 0;
  bool m_bExtruded = false;
};

/// A text in the form that operations expect, borrowed.
inline BSTR TextOf(const char16_t* aText) {
  return const_cast<BSTR>(reinterpret_cast<const OLECHAR*>(aText));
}
inline BSTR TextOf(const std::u16string& aText) { return TextOf(aText.c_str()); }

/// A site and its fonts. Requires a current rendering context.
struct FontBench {
  TestSite m_Site;
  GLSiteLinkPtr m_pLink = std::make_shared<GLSiteLink>(&m_Site);

  ~FontBench() { m_pLink->Clear(); }

  GLPtr<GLFont> Make(const FontOrder& o) const {
    auto font = GLPtr<GLFont>::FromBorrowed(new GLFont);
    switch (o.m_Kind) {
      case FontKind::kSystem:
        font->InitSystemFont(m_pLink);
        break;
      case FontKind::kRaster:
        font->InitRasterFont(m_pLink, TextOf(o.m_szFace), o.m_iStyle, o.m_iWeight, o.m_fOrientation,
                             o.m_iHeight, o.m_iWidth);
        break;
      case FontKind::kTrueType:
        font->InitTrueTypeFont(m_pLink, TextOf(o.m_szFace), o.m_iStyle, o.m_iWeight, o.m_fOrientation,
                               o.m_bExtruded);
        break;
      case FontKind::kInternal:
        font->InitInternalFont(m_pLink, TextOf(u"HAND"));
        break;
    }
    return font;
  }
  GLPtr<GLFont> Make(FontKind aKind) const { return Make({.m_Kind = aKind}); }
};

inline HRESULT Print(GLFont& aFont, const std::u16string& aText, GLDATA_POINT aStart = {0, 0, 0}) {
  return aFont.Print(TextOf(aText), &aStart);
}

inline float WidthOf(GLFont& aFont, const std::u16string& aText) {
  float width = 0;
  aFont.GetStringWidth(TextOf(aText), &width);
  return width;
}

/// Sets model units to pixels from the lower left.
inline void ModelInPixels(int aWidth, int aHeight) {
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glOrtho(0, aWidth, 0, aHeight, -1000, 1000);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
}

/// Returns whether a pixel is lit. Rows count from the bottom.
inline bool IsLit(const Picture& aPicture, int aX, int aY) {
  return (aPicture.At(aX, aPicture.Height() - 1 - aY) >> 24) > 127;
}

/// Draws with a new font, in model units of one pixel.
inline Picture DrawText(int aWidth, int aHeight, const FontOrder& aOrder, const std::u16string& aText,
                        GLDATA_POINT aStart, float aSize = 1, float aGrey = 1) {
  return DrawPlainGL(aWidth, aHeight, [&] {
    ModelInPixels(aWidth, aHeight);
    glColor3f(aGrey, aGrey, aGrey);
    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ONE);  // pixels that are drawn twice are brighter
    FontBench bench;
    const auto font = bench.Make(aOrder);
    font->SetWidth(aSize);
    font->SetHeight(aSize);
    EXPECT_EQ(Print(*font, aText, aStart), S_OK);
  });
}

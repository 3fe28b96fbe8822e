// A font's surroundings in a test: a site over the plain rendering context that is current on the thread.
// The test says which rendering context of the window it stands for, and runs the tasks that were posted.

#pragma once

#include <memory>
#include <string>
#include <vector>

#include "component/ContextSite.h"
#include "component/Module.h"
#include "media/GLFont.h"
#include "thread/PEvent.h"

class FakeSite final : public GLContextSite {
 public:
  ~FakeSite() { ReleaseDC(nullptr, m_hDC); }

  int ViewportWidth() const noexcept override { return 1; }
  int ViewportHeight() const noexcept override { return 1; }
  bool HasClipPlanes() const noexcept override { return false; }
  HDC DeviceContext() const noexcept override { return m_hDC; }
  bool IsCurrentHere() const noexcept override { return m_bCurrent; }
  ULONG WindowContextNumber() const noexcept override { return m_uWindowContext; }
  void LockGL() noexcept override {}
  void UnlockGL() noexcept override {}
  ULONG GenListKey(int aCount) noexcept override { return g_uListGeneration << 16 | glGenLists(aCount); }
  ULONG BeginListKey() noexcept override { return 0; }
  void EndListKey() noexcept override {}
  void CallListKey(ULONG) noexcept override {}
  ULONG GetListBase(ULONG aKey) const noexcept override { return aKey & 0xFFFF; }
  void DeleteListKey(ULONG aKey, int aCount) noexcept override {
    if (IsOfThisGeneration(aKey)) glDeleteLists(aKey & 0xFFFF, aCount);
  }
  bool IsListKeyValid(ULONG aKey) const noexcept override {
    return aKey != 0 && IsOfThisGeneration(aKey) && glIsList(aKey & 0xFFFF) == GL_TRUE;
  }
  bool PostTask(PEvent* aTask) noexcept override {
    m_vTasks.emplace_back(aTask);
    return true;
  }

  void RunTasks() {
    for (const auto& task : std::exchange(m_vTasks, {})) task->Run();
  }

  bool m_bCurrent = true;
  ULONG m_uWindowContext = 1;
  std::vector<std::unique_ptr<PEvent>> m_vTasks;

 private:
  static bool IsOfThisGeneration(ULONG aKey) noexcept { return aKey >> 16 == (g_uListGeneration & 0xFFFF); }

  HDC m_hDC = GetDC(nullptr);
};

enum class FontKind { kSystem, kRaster, kTrueType, kInternal };
inline constexpr FontKind kFontKinds[] = {FontKind::kSystem, FontKind::kRaster, FontKind::kTrueType,
                                          FontKind::kInternal};

/// What a font is made of; the kinds take of it what they have.
struct FontOrder {
  FontKind m_Kind = FontKind::kRaster;
  const char* m_szFace = "DejaVu Sans";
  int m_iStyle = 0;
  int m_iWeight = 400;
  float m_fOrientation = 0;
  int m_iHeight = -20;
  int m_iWidth = 0;
  bool m_bExtruded = false;
};

/// A site and the fonts on it. Where a rendering context is current.
struct FontBench {
  FakeSite m_Site;
  GLSiteLinkPtr m_pLink = std::make_shared<GLSiteLink>(&m_Site);

  ~FontBench() { m_pLink->Clear(); }

  GLPtr<GLFont> Make(const FontOrder& o) const {
    auto font = GLPtr<GLFont>::FromBorrowed(new GLFont);
    switch (o.m_Kind) {
      case FontKind::kSystem:
        font->InitSystemFont(m_pLink);
        break;
      case FontKind::kRaster:
        font->InitRasterFont(m_pLink, o.m_szFace, o.m_iStyle, o.m_iWeight, o.m_fOrientation, o.m_iHeight,
                             o.m_iWidth);
        break;
      case FontKind::kTrueType:
        font->InitTrueTypeFont(m_pLink, o.m_szFace, o.m_iStyle, o.m_iWeight, o.m_fOrientation, o.m_bExtruded);
        break;
      case FontKind::kInternal:
        font->InitInternalFont(m_pLink, "HAND");
        break;
    }
    return font;
  }
  GLPtr<GLFont> Make(FontKind aKind) const { return Make({.m_Kind = aKind}); }
};

/// A text as operations take it, borrowed.
inline BSTR TextOf(const std::u16string& aText) {
  return const_cast<BSTR>(reinterpret_cast<const OLECHAR*>(aText.c_str()));
}

inline HRESULT Print(GLFont& aFont, const std::u16string& aText, GLDATA_POINT aStart = {0, 0, 0}) {
  return aFont.Print(TextOf(aText), &aStart);
}

inline float WidthOf(GLFont& aFont, const std::u16string& aText) {
  float width = 0;
  aFont.GetStringWidth(TextOf(aText), &width);
  return width;
}

/// Lets model units be pixels from the lower left.
inline void ModelInPixels(int aWidth, int aHeight) {
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glOrtho(0, aWidth, 0, aHeight, -1000, 1000);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
}

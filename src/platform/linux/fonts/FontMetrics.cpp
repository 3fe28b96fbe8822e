// Creation, selection and measurement of fonts: the GDI operations for FontObject. Any thread.

#include <string>

#include "platform/Text.h"
#include "platform/linux/fonts/DeviceFont.h"

namespace {

/// Returns the name in UTF-8, the encoding of fontconfig.
std::string Utf8Name(const GLWCHAR* aFace) {
  if (aFace == nullptr) return {};
  const int bytes = WideCharToMultiByte(CP_UTF8, 0, aFace, -1, nullptr, 0, nullptr, nullptr);
  std::string name(static_cast<std::size_t>(bytes), '\0');
  WideCharToMultiByte(CP_UTF8, 0, aFace, -1, name.data(), bytes, nullptr, nullptr);
  return name;
}

}  // namespace

HFONT CreateFontW(int cHeight, int cWidth, int, int cOrientation, int cWeight, DWORD bItalic,
                  DWORD bUnderline, DWORD bStrikeOut, DWORD, DWORD, DWORD, DWORD, DWORD iPitchAndFamily,
                  const GLWCHAR* szFace) noexcept {
  try {
    const std::string face = Utf8Name(szFace);
    const FontDescription description{face.c_str(),    cHeight,      cWidth,          cOrientation,   cWeight,
                                      iPitchAndFamily, bItalic != 0, bUnderline != 0, bStrikeOut != 0};
    return static_cast<GdiObject*>(DeviceFont::Create(description).release());
  } catch (...) {
    return nullptr;
  }
}

HGDIOBJ GetStockObject(int i) noexcept {
  return i == SYSTEM_FONT ? static_cast<GdiObject*>(&StockFont()) : nullptr;
}

BOOL GetTextMetricsA(HDC hDC, TEXTMETRICA* pMetrics) noexcept {
  const FontObject* font = SelectedFont(hDC);
  if (font == nullptr || pMetrics == nullptr) return FALSE;
  *pMetrics = font->Metrics();
  return TRUE;
}

BOOL GetCharWidthFloatA(HDC hDC, UINT iFirst, UINT iLast, FLOAT* pWidths) noexcept {
  const FontObject* font = SelectedFont(hDC);
  if (font == nullptr || pWidths == nullptr || iFirst > iLast || iLast > 255) return FALSE;
  for (UINT code = iFirst; code <= iLast; ++code) {
    pWidths[code - iFirst] = static_cast<FLOAT>(font->Advance(static_cast<unsigned char>(code)));
  }
  return TRUE;
}

BOOL GetAdvances(HDC hDC, UINT iFirst, UINT iLast, FLOAT* pWidths) noexcept {
  return GetCharWidthFloatA(hDC, iFirst, iLast, pWidths);
}

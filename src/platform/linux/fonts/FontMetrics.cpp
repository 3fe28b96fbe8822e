// Making, selecting and measuring fonts: the GDI operations over FontObject. Any thread.

#include "platform/linux/fonts/DeviceFont.h"

HFONT CreateFontA(int cHeight, int cWidth, int, int cOrientation, int cWeight, DWORD bItalic,
                  DWORD bUnderline, DWORD bStrikeOut, DWORD, DWORD, DWORD, DWORD, DWORD iPitchAndFamily,
                  const char* szFace) noexcept {
  try {
    const FontDescription description{szFace != nullptr ? szFace : "",
                                      cHeight,
                                      cWidth,
                                      cOrientation,
                                      cWeight,
                                      iPitchAndFamily,
                                      bItalic != 0,
                                      bUnderline != 0,
                                      bStrikeOut != 0};
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

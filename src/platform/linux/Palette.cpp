// Logical palettes: stored and selected. The display maps their colours. Any thread.

#include "platform/Palette.h"

#include <memory>
#include <utility>
#include <vector>

#include "platform/linux/DeviceContextRecord.h"

namespace {

struct PaletteObject : GdiObject {
  std::vector<PALETTEENTRY> m_vEntries;
};

}  // namespace

HPALETTE CreatePalette(const LOGPALETTE* pPalette) noexcept {
  if (pPalette == nullptr || pPalette->palNumEntries == 0) return nullptr;
  try {
    auto palette = std::make_unique<PaletteObject>();
    palette->m_vEntries.assign(pPalette->palPalEntry, pPalette->palPalEntry + pPalette->palNumEntries);
    return static_cast<GdiObject*>(palette.release());
  } catch (...) {
    return nullptr;
  }
}

HPALETTE SelectPalette(HDC hDC, HPALETTE hPalette, BOOL) noexcept {
  if (hDC == nullptr) return nullptr;
  // A device context starts without a palette, so the first call has no previous one to return.
  GdiObject* const old = std::exchange(hDC->m_pPalette, static_cast<GdiObject*>(hPalette));
  return old != static_cast<GdiObject*>(hPalette) ? old : nullptr;
}

UINT RealizePalette(HDC hDC) noexcept {
  if (hDC == nullptr || hDC->m_pPalette == nullptr || !hDC->m_pDisplay->RealizePalette()) return GDI_ERROR;
  return static_cast<UINT>(static_cast<const PaletteObject*>(hDC->m_pPalette)->m_vEntries.size());
}

BOOL UpdateColors(HDC hDC) noexcept { return hDC != nullptr && hDC->m_pPalette != nullptr ? TRUE : FALSE; }

// Device contexts of windows and in memory, and selection of objects. Any thread; one thread per device
// context.

#include "platform/DeviceContext.h"

#include <new>

#include "platform/Fonts.h"
#include "platform/linux/DeviceContextRecord.h"
#include "platform/linux/WindowTable.h"
#include "platform/linux/fonts/FontObject.h"

DrawSurface* HDC__::Surface() noexcept {
  if (m_pSurface != nullptr) return m_pSurface.get();
  const DisplayFormat* format = FindFormat(m_iFormat);
  if (format == nullptr) return nullptr;
  if (!m_bMemory) {
    m_pSurface = m_pDisplay->MakeWindowSurface(m_hWnd, *format);
  } else if (m_pBitmap != nullptr) {
    m_pSurface = m_pDisplay->MakeMemorySurface(m_pBitmap->m_iWidth, m_pBitmap->m_iHeight, *format);
  }
  return m_pSurface.get();
}

HDC GetDC(HWND hWnd) noexcept {
  auto* record = new (std::nothrow) HDC__;
  if (record == nullptr) return nullptr;
  record->m_pDisplay = WindowTable::Get().DisplayOf(hWnd);
  record->m_hWnd = hWnd;
  return record;
}

int ReleaseDC(HWND, HDC hDC) noexcept {
  delete hDC;
  return hDC != nullptr ? 1 : 0;
}

HDC CreateCompatibleDC(HDC) noexcept {
  const HDC record = GetDC(nullptr);
  if (record != nullptr) record->m_bMemory = true;
  return record;
}

BOOL DeleteDC(HDC hDC) noexcept { return ReleaseDC(nullptr, hDC) != 0 ? TRUE : FALSE; }

HBITMAP CreateDIBSection(HDC hDC, const BITMAPINFO* pbmi, UINT, void** ppvBits, HANDLE, DWORD) noexcept {
  if (hDC == nullptr || hDC->m_pDisplay == nullptr || pbmi == nullptr) return nullptr;
  const int width = pbmi->bmiHeader.biWidth, height = pbmi->bmiHeader.biHeight;
  const int largest = hDC->m_pDisplay->LargestSurface();
  if (width < 1 || height < 1 || width > largest || height > largest) return nullptr;
  auto* bitmap = new (std::nothrow) BitmapObject(width, height);
  // any non-null pointer: the driver holds the pixels
  if (bitmap != nullptr && ppvBits != nullptr) *ppvBits = bitmap;
  return static_cast<GdiObject*>(bitmap);
}

HGDIOBJ SelectObject(HDC hDC, HGDIOBJ h) noexcept {
  auto* object = static_cast<GdiObject*>(h);
  if (hDC == nullptr || object == nullptr) return nullptr;
  if (auto* bitmap = dynamic_cast<BitmapObject*>(object)) {
    hDC->m_pBitmap = bitmap;
    return object;  // the first selection has no previous bitmap
  }
  if (dynamic_cast<FontObject*>(object) == nullptr) return nullptr;
  GdiObject* const old = hDC->m_pFont;
  hDC->m_pFont = object;
  return old != nullptr ? static_cast<HGDIOBJ>(old) : GetStockObject(SYSTEM_FONT);
}

BOOL DeleteObject(HGDIOBJ h) noexcept {
  if (h == nullptr) return FALSE;
  if (h != GetStockObject(SYSTEM_FONT)) delete static_cast<GdiObject*>(h);
  return TRUE;
}

const FontObject* SelectedFont(HDC aDC) noexcept {
  if (aDC == nullptr) return nullptr;
  return aDC->m_pFont != nullptr ? static_cast<const FontObject*>(aDC->m_pFont) : &StockFont();
}

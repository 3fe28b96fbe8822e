// Records of device contexts and rendering contexts: a drawable, its format and the selected objects. The
// owner of a device context ensures that one thread at a time uses it.

#pragma once

#include <memory>

#include "platform/DeviceContext.h"
#include "platform/linux/GdiObject.h"
#include "platform/linux/display/DisplayServer.h"

/// A bitmap to draw into. Holds only the size, since the drawable holds the pixels.
struct BitmapObject : GdiObject {
  BitmapObject(int aWidth, int aHeight) noexcept : m_iWidth(aWidth), m_iHeight(aHeight) {}
  int m_iWidth, m_iHeight;
};

struct HDC__ {
  SurfaceKind Kind() const noexcept { return m_bMemory ? SurfaceKind::kMemory : SurfaceKind::kWindow; }
  /// Returns a format by its number.
  /// @return null for an invalid number
  const DisplayFormat* FindFormat(int aNumber) const noexcept {
    if (m_pDisplay == nullptr || aNumber < 1) return nullptr;
    const auto& formats = m_pDisplay->Formats(Kind());
    const auto index = static_cast<std::size_t>(aNumber - 1);
    return index < formats.size() ? &formats[index] : nullptr;
  }
  /// Returns the drawable. Creates it at the first use after the format is set.
  /// @return null if it cannot be created
  DrawSurface* Surface() noexcept;

  std::shared_ptr<DisplayServer> m_pDisplay;
  HWND m_hWnd = nullptr;
  bool m_bMemory = false;
  int m_iFormat = 0;  // 0 until it is set
  std::unique_ptr<DrawSurface> m_pSurface;
  GdiObject* m_pFont = nullptr;  // null: the stock font
  BitmapObject* m_pBitmap = nullptr;
  GdiObject* m_pPalette = nullptr;
};

struct HGLRC__ {
  std::shared_ptr<DisplayServer> m_pDisplay;
  std::unique_ptr<DrawContext> m_pContext;
};

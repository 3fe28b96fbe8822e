// The records behind device contexts and rendering contexts: a drawable, its format, what is selected.
// A device context is used by one thread at a time, as its owner takes care of.

#pragma once

#include <memory>

#include "platform/DeviceContext.h"
#include "platform/linux/GdiObject.h"
#include "platform/linux/display/DisplayServer.h"

/// A bitmap to draw into: its size alone, since the drawable holds the pixels.
struct BitmapObject : GdiObject {
  BitmapObject(int aWidth, int aHeight) noexcept : m_iWidth(aWidth), m_iHeight(aHeight) {}
  int m_iWidth, m_iHeight;
};

struct HDC__ {
  SurfaceKind Kind() const noexcept { return m_bMemory ? SurfaceKind::kMemory : SurfaceKind::kWindow; }
  /// A format by its number. @return null for a number that there isn't
  const DisplayFormat* FindFormat(int aNumber) const noexcept {
    if (m_pDisplay == nullptr || aNumber < 1) return nullptr;
    const auto& formats = m_pDisplay->Formats(Kind());
    const auto index = static_cast<std::size_t>(aNumber - 1);
    return index < formats.size() ? &formats[index] : nullptr;
  }
  /// Makes the drawable, at the first use after the format is set. @return null when it can't be made
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

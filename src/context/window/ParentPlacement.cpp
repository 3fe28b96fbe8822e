// ParentPlacement: decides whether the parent lies off the work area, and moves its top-level window. Runs on
// the thread that creates the window.

#include "context/window/ParentPlacement.h"

namespace {

/// Returns the work area of the monitor that shows a window, or of the only screen.
RECT WorkAreaAround(HWND aWindow) noexcept {
  MONITORINFO info{};
  info.cbSize = sizeof(info);
  const HMONITOR monitor = MonitorFromWindow(aWindow, MONITOR_DEFAULTTOPRIMARY);
  if (monitor != nullptr && GetMonitorInfoA(monitor, &info)) return info.rcWork;
  RECT area{};
  if (SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0)) return area;
  GetWindowRect(GetDesktopWindow(), &area);
  return area;
}

/// Returns whether the parent extends beyond the left or the bottom edge, or beyond both the right and the
/// top edge.
bool LiesOff(const RECT& aParent, const RECT& aArea) noexcept {
  return aParent.left < aArea.left || (aParent.right > aArea.right && aParent.top < aArea.top) ||
         aParent.bottom > aArea.bottom;
}

}  // namespace

ParentPlacement::ParentPlacement(HWND aParent) noexcept {
  RECT parent{};
  if (aParent == nullptr || !GetWindowRect(aParent, &parent)) return;
  if (!LiesOff(parent, WorkAreaAround(aParent))) return;
  HWND topLevel = aParent;
  while (const HWND next = GetParent(topLevel)) topLevel = next;
  if (!GetWindowRect(topLevel, &m_sPlace)) return;
  m_hTopLevel = topLevel;
  POINT corner = {parent.left, parent.top};
  ScreenToClient(topLevel, &corner);
  LockWindowUpdate(topLevel);
  MoveWindow(topLevel, -corner.x, -corner.y, m_sPlace.right - m_sPlace.left, m_sPlace.bottom - m_sPlace.top,
             FALSE);
}

ParentPlacement::~ParentPlacement() {
  if (m_hTopLevel == nullptr) return;
  MoveWindow(m_hTopLevel, m_sPlace.left, m_sPlace.top, m_sPlace.right - m_sPlace.left,
             m_sPlace.bottom - m_sPlace.top, TRUE);
  LockWindowUpdate(nullptr);
}

// ParentPlacement: moves a parent that lies off the work area to the screen's origin, and back after a window
// was created in it. Runs on the thread that creates the window.

#pragma once

#include "platform/Window.h"

class ParentPlacement {
 public:
  /// Moves the parent's top-level window if the parent lies off the work area. Does nothing for null.
  explicit ParentPlacement(HWND aParent) noexcept;
  ~ParentPlacement();
  ParentPlacement(const ParentPlacement&) = delete;
  ParentPlacement& operator=(const ParentPlacement&) = delete;

 private:
  HWND m_hTopLevel = nullptr;  // null unless the window was moved
  RECT m_sPlace{};             // original rectangle
};

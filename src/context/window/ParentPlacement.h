// ParentPlacement: brings a parent that lies off the work area to the screen's origin while a window is made
// in it, and puts it back. Runs on the thread that initialises.

#pragma once

#include "platform/Window.h"

class ParentPlacement {
 public:
  /// Moves the parent's top-level window where the parent lies off the work area; null moves nothing.
  explicit ParentPlacement(HWND aParent) noexcept;
  ~ParentPlacement();
  ParentPlacement(const ParentPlacement&) = delete;
  ParentPlacement& operator=(const ParentPlacement&) = delete;

 private:
  HWND m_hTopLevel = nullptr;  // set while it is moved
  RECT m_sPlace{};             // where it stood
};

// ScriptedDisplay: results set by the test, or those of the headless display. Any thread.

#include "support/ScriptedDisplay.h"

std::shared_ptr<ScriptedDisplay> ScriptedDisplay::Set() {
  auto display = std::make_shared<ScriptedDisplay>();
  display->m_szExtensions = display->m_pReal->ExtensionString();
  SetDisplay(display);
  return display;
}

HWND ScriptedDisplay::MakeWindow(HWND aParent, const RECT& aPlace) noexcept {
  if (Fails() || !m_bMakesWindows || (aParent != nullptr && !m_Parents.contains(aParent))) return nullptr;
  const HWND window = m_pReal->MakeWindow(nullptr, aPlace);
  m_ParentOf[window] = aParent;
  m_hMade = window;
  ++m_iMade;
  return window;
}

bool ScriptedDisplay::Place(HWND aWindow, int x, int y, int aWidth, int aHeight) noexcept {
  if (Fails()) return false;
  const auto parent = m_Parents.find(aWindow);
  if (parent == m_Parents.end()) return m_pReal->Place(aWindow, x, y, aWidth, aHeight);
  m_vMoves.push_back({aWindow, x, y, aWidth, aHeight});
  const LONG right = x - parent->second.left, down = y - parent->second.top;
  for (auto& [window, rect] : m_Parents)
    rect = {rect.left + right, rect.top + down, rect.right + right, rect.bottom + down};
  return true;
}

bool ScriptedDisplay::ScreenRectangle(HWND aWindow, RECT* aRect) noexcept {
  if (Fails()) return false;
  const auto parent = m_Parents.find(aWindow);
  if (parent == m_Parents.end()) return m_pReal->ScreenRectangle(aWindow, aRect);
  *aRect = parent->second;
  return true;
}

HWND ScriptedDisplay::ParentOf(HWND aWindow) noexcept {
  const auto found = m_ParentOf.find(aWindow);
  return found != m_ParentOf.end() ? found->second : nullptr;
}

bool ScriptedDisplay::WorkArea(HWND, RECT* aRect) noexcept {
  *aRect = {0, 0, 1000, 800};
  return !Fails();
}

const std::vector<DisplayFormat>& ScriptedDisplay::Formats(SurfaceKind aKind) noexcept {
  static const std::vector<DisplayFormat> none;
  if (Fails()) return none;
  return aKind == SurfaceKind::kWindow && !m_vWindowFormats.empty() ? m_vWindowFormats
                                                                    : m_pReal->Formats(aKind);
}

int ScriptedDisplay::ChooseFormat(SurfaceKind aKind, const PIXELFORMATDESCRIPTOR& aRequest) noexcept {
  if (Fails()) return 0;
  return m_iChosen >= 0 && aKind == SurfaceKind::kWindow ? m_iChosen : m_pReal->ChooseFormat(aKind, aRequest);
}

int ScriptedDisplay::ChooseMultisampleFormat(SurfaceKind, const PIXELFORMATDESCRIPTOR&,
                                             int aSamples) noexcept {
  if (Fails()) return 0;
  m_vSamplesAsked.push_back(aSamples);
  const auto found = m_FormatOfSamples.find(aSamples);
  return found != m_FormatOfSamples.end() ? found->second : 0;
}

PROC ScriptedDisplay::EntryPoint(const char* aName) noexcept {
  if (Fails()) return nullptr;
  return std::count(m_vMissing.begin(), m_vMissing.end(), aName) != 0 ? nullptr : m_pReal->EntryPoint(aName);
}

std::unique_ptr<DrawSurface> ScriptedDisplay::MakeWindowSurface(HWND aWindow,
                                                                const DisplayFormat& aFormat) noexcept {
  return Fails() ? nullptr : m_pReal->MakeWindowSurface(aWindow, aFormat);
}

std::unique_ptr<DrawSurface> ScriptedDisplay::MakeMemorySurface(int aWidth, int aHeight,
                                                                const DisplayFormat& aFormat) noexcept {
  return Fails() ? nullptr : m_pReal->MakeMemorySurface(aWidth, aHeight, aFormat);
}

std::unique_ptr<DrawContext> ScriptedDisplay::MakeContext(const DisplayFormat& aFormat) noexcept {
  if (m_iRefusedContexts > 0) {
    --m_iRefusedContexts;
    return nullptr;
  }
  return Fails() ? nullptr : m_pReal->MakeContext(aFormat);
}

bool ScriptedDisplay::MakeCurrent(DrawSurface* aSurface, DrawContext* aContext) noexcept {
  // Releasing the current context cannot fail: the component could not react to it.
  const bool refused = aContext != nullptr && (m_bRefusesCurrent || Fails());
  return !refused && m_pReal->MakeCurrent(aSurface, aContext);
}

bool ScriptedDisplay::Swap(HWND aWindow, DrawSurface& aSurface) noexcept {
  return !Fails() && m_pReal->Swap(aWindow, aSurface);
}

// FaultDisplay: each operation counts, and one of them fails as the display would.

#include "support/FaultDisplay.h"

std::shared_ptr<FaultDisplay> FaultDisplay::Set(int aFault) {
  auto display = std::make_shared<FaultDisplay>();
  display->m_szExtensions = "WGL_ARB_extensions_string WGL_ARB_pixel_format WGL_ARB_multisample ";
  display->m_iFault = aFault;
  SetDisplay(display);
  return display;
}

HWND FaultDisplay::MakeWindow(HWND aParent, const RECT& aPlace) noexcept {
  return Fails() ? nullptr : ScriptedDisplay::MakeWindow(aParent, aPlace);
}

bool FaultDisplay::Show(HWND aWindow) noexcept { return !Fails() && ScriptedDisplay::Show(aWindow); }

bool FaultDisplay::Place(HWND aWindow, int x, int y, int aWidth, int aHeight) noexcept {
  return !Fails() && ScriptedDisplay::Place(aWindow, x, y, aWidth, aHeight);
}

bool FaultDisplay::ScreenRectangle(HWND aWindow, RECT* aRect) noexcept {
  return !Fails() && ScriptedDisplay::ScreenRectangle(aWindow, aRect);
}

bool FaultDisplay::WorkArea(HWND aWindow, RECT* aRect) noexcept {
  return !Fails() && ScriptedDisplay::WorkArea(aWindow, aRect);
}

const std::vector<DisplayFormat>& FaultDisplay::Formats(SurfaceKind aKind) noexcept {
  static const std::vector<DisplayFormat> none;
  return Fails() ? none : ScriptedDisplay::Formats(aKind);
}

int FaultDisplay::ChooseFormat(SurfaceKind aKind, const PIXELFORMATDESCRIPTOR& aRequest) noexcept {
  return Fails() ? 0 : ScriptedDisplay::ChooseFormat(aKind, aRequest);
}

int FaultDisplay::ChooseMultisampleFormat(SurfaceKind aKind, const PIXELFORMATDESCRIPTOR& aRequest,
                                          int aSamples) noexcept {
  return Fails() ? 0 : ScriptedDisplay::ChooseMultisampleFormat(aKind, aRequest, aSamples);
}

const char* FaultDisplay::ExtensionString() noexcept {
  return Fails() ? nullptr : ScriptedDisplay::ExtensionString();
}

PROC FaultDisplay::EntryPoint(const char* aName) noexcept {
  return Fails() ? nullptr : ScriptedDisplay::EntryPoint(aName);
}

std::unique_ptr<DrawSurface> FaultDisplay::MakeWindowSurface(HWND aWindow,
                                                             const DisplayFormat& aFormat) noexcept {
  return Fails() ? nullptr : ScriptedDisplay::MakeWindowSurface(aWindow, aFormat);
}

std::unique_ptr<DrawSurface> FaultDisplay::MakeMemorySurface(int aWidth, int aHeight,
                                                             const DisplayFormat& aFormat) noexcept {
  return Fails() ? nullptr : ScriptedDisplay::MakeMemorySurface(aWidth, aHeight, aFormat);
}

std::unique_ptr<DrawContext> FaultDisplay::MakeContext(const DisplayFormat& aFormat) noexcept {
  return Fails() ? nullptr : ScriptedDisplay::MakeContext(aFormat);
}

// Letting go can't fail: nothing could be done about it.
bool FaultDisplay::MakeCurrent(DrawSurface* aSurface, DrawContext* aContext) noexcept {
  return (aContext == nullptr || !Fails()) && ScriptedDisplay::MakeCurrent(aSurface, aContext);
}

bool FaultDisplay::Swap(HWND aWindow, DrawSurface& aSurface) noexcept {
  return !Fails() && ScriptedDisplay::Swap(aWindow, aSurface);
}

int FaultDisplay::LargestSurface() noexcept { return Fails() ? 0 : ScriptedDisplay::LargestSurface(); }

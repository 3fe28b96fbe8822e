// GLContext: pixel format and palette of the window. Runs under m_Lock on the thread that creates the window.

#include <cstddef>
#include <cstring>
#include <vector>

#include "context/GLContext.h"
#include "context/window/ContextList.h"
#include "context/window/PixelFormatSelection.h"
#include "context/window/WGLExtensions.h"
#include "platform/Log.h"
#include "platform/Palette.h"

namespace {

constexpr char kUserKey[] = R"(SOFTWARE\Talvane\Korvex\GL)";
constexpr WORD kPaletteVersion = 0x300;

}  // namespace

// Sets the pixel format of m_Window.m_Target.m_hDC. aFormatSet receives whether it was set, also if a later
// step fails.
bool GLContext::SetupPixelFormat(bool* aFormatSet) noexcept {
  const PLock lock(m_Lock);
  *aFormatSet = false;
  ReadMachineSwitches();
  ReadUserSwitches();
  m_Window.m_PixelFormat = PixelFormatRequest();
  const int format = ChooseFormat();
  if (format == 0 || !SetPixelFormat(m_Window.m_Target.m_hDC, format, &m_Window.m_PixelFormat)) return false;
  *aFormatSet = true;
  if (DescribePixelFormat(m_Window.m_Target.m_hDC, format, sizeof(m_Window.m_PixelFormat),
                          &m_Window.m_PixelFormat) == 0)
    return false;
  const PIXELFORMATDESCRIPTOR& chosen = m_Window.m_PixelFormat;
  LogInfo("pixel format %d, score %d of 14: %d colour, %d alpha, %d depth and %d stencil bits", format,
          PixelFormatScore(chosen, PixelFormatRequest()), chosen.cColorBits, chosen.cAlphaBits,
          chosen.cDepthBits, chosen.cStencilBits);
  if ((chosen.dwFlags & PFD_NEED_PALETTE) == 0 || SetupPalette()) return true;
  LogWarning("the palette of the window cannot be set: colours are wrong");
  return false;
}

void GLContext::ReadUserSwitches() noexcept {
  HKEY key = nullptr;
  if (RegOpenKeyExA(HKEY_CURRENT_USER, kUserKey, 0, KEY_READ | KEY_WOW64_64KEY, &key) != ERROR_SUCCESS)
    return;
  DWORD value = 0;
  if (ReadSwitch(key, "FSAA", &value) && value != 0) {
    m_Window.m_bFSAA = 1;
    if (ReadSwitch(key, "FSAALevel", &value)) m_Window.m_lFSAAMaxSamples = static_cast<LONG>(value);
  }
  RegCloseKey(key);
}

// MultiAccelOff applies if there is more than one context. The number of monitors does not matter.
int GLContext::ChooseFormat() noexcept {
  if (!g_bAccel || (!g_bMultiAccel && CountContexts() > 1)) {
    LogInfo("the registry switches acceleration off (AccelOff, MultiAccelOff)");
    return FindPixelFormat(m_Window.m_Target.m_hDC, m_Window.m_PixelFormat);
  }
  Zentig::WGLExtensions* extensions = Zentig::WGLExtensions::GetInstance(ModuleInstance());
  if (extensions != nullptr && m_Window.m_bFSAA != 0) {
    const int format = extensions->ChooseMultisampleFormat(m_Window.m_Target.m_hDC, m_Window.m_PixelFormat,
                                                           m_Window.m_lFSAAMaxSamples);
    if (format != 0) return format;
    LogWarning("no pixel format has multisampling, which the host or the registry requests");
  }
  return ChoosePixelFormat(m_Window.m_Target.m_hDC, &m_Window.m_PixelFormat);
}

bool GLContext::SetupPalette() noexcept {
  const PLock lock(m_Lock);
  const std::vector<PALETTEENTRY> entries = PaletteEntries(m_Window.m_PixelFormat);
  if (entries.empty()) return false;
  std::vector<std::byte> block;
  try {
    block.resize(sizeof(LOGPALETTE) + entries.size() * sizeof(PALETTEENTRY));
  } catch (...) {
    return false;
  }
  const WORD head[2] = {kPaletteVersion, static_cast<WORD>(entries.size())};
  std::memcpy(block.data(), head, sizeof(head));
  std::memcpy(block.data() + offsetof(LOGPALETTE, palPalEntry), entries.data(),
              entries.size() * sizeof(PALETTEENTRY));
  if (m_Window.m_hPalette != nullptr) DeleteObject(m_Window.m_hPalette);
  m_Window.m_hPalette = CreatePalette(reinterpret_cast<const LOGPALETTE*>(block.data()));
  if (m_Window.m_hPalette == nullptr) return false;
  const HPALETTE previous =
      SelectPalette(m_Window.m_Target.m_hDC, static_cast<HPALETTE>(m_Window.m_hPalette), FALSE);
  const bool realized = RealizePalette(m_Window.m_Target.m_hDC) != GDI_ERROR;
  if (previous != nullptr) DeleteObject(previous);
  return realized;
}

// DisplayServer: selects the display of the process, and implements the functions common to all displays. Any
// thread.

#include "platform/linux/display/DisplayServer.h"

#include <cstdlib>
#include <mutex>
#include <string_view>
#include <utility>

#include "platform/Log.h"
#include "platform/ProcessWide.h"
#include "platform/linux/display/PixelFormatArb.h"
#include "platform/linux/display/headless/HeadlessDisplay.h"
#include "platform/linux/display/x11/X11Display.h"

namespace {

struct Choice {
  std::mutex m_Lock;
  std::shared_ptr<DisplayServer> m_pSet, m_pFound;
  bool m_bMakeshift = false;  // m_pFound replaces an X server that does not respond
};

Choice& TheChoice() noexcept {
  static constinit ProcessWide<Choice> choice;
  return choice.Get();
}

// Keeps the previous display if no other is available.
void Find(Choice& aChoice) noexcept {
  const char* name = std::getenv("GLLIB_DISPLAY");
  const std::string_view wanted = name != nullptr ? name : "";
  if (!wanted.empty() && wanted != "x11" && wanted != "headless")
    LogWarning("GLLIB_DISPLAY is \"%s\", which is neither x11 nor headless: it is ignored", name);
  const bool broken = aChoice.m_pFound == nullptr || aChoice.m_pFound->IsBroken();
  if (wanted != "headless") {
    if (auto display = X11Display::Open()) {
      aChoice.m_pFound = std::move(display);
      aChoice.m_bMakeshift = false;
      LogInfo("display: X11, server %s: %s", X11Display::ServerName(),
              wanted == "x11" ? "GLLIB_DISPLAY requires it" : "it can be reached");
      return;
    }
    if (wanted == "x11") {
      if (broken) LogError("there is no display: GLLIB_DISPLAY requires X11");
      return;
    }
  }
  if (!broken) return;
  if (auto display = HeadlessDisplay::Open()) {
    aChoice.m_pFound = std::move(display);
    aChoice.m_bMakeshift = wanted != "headless";
    LogInfo("display: headless: %s",
            wanted == "headless" ? "GLLIB_DISPLAY requires it" : "no X server can be used");
  } else {
    LogError("there is no display: EGL cannot draw without an X server either");
  }
}

int Distance(int a, int b) noexcept { return a > b ? a - b : b - a; }

/// Returns how much a format differs from a request; negative if it is unsuitable.
int Misfit(const DisplayFormat& aFormat, const PIXELFORMATDESCRIPTOR& aRequest) noexcept {
  constexpr DWORD kTested = PFD_DOUBLEBUFFER | PFD_DRAW_TO_WINDOW | PFD_DRAW_TO_BITMAP | PFD_SUPPORT_OPENGL;
  const PIXELFORMATDESCRIPTOR& format = aFormat.m_Description;
  const DWORD wanted = aRequest.dwFlags & kTested;
  if ((format.dwFlags & wanted) != wanted || format.iPixelType != aRequest.iPixelType) return -1;
  if (aRequest.cDepthBits != 0 && format.cDepthBits == 0) return -1;
  // Unrequested alpha adds to the difference: it would appear in every picture that is read back.
  return 4 * Distance(format.cColorBits - format.cAlphaBits, aRequest.cColorBits - aRequest.cAlphaBits) +
         8 * Distance(format.cAlphaBits, aRequest.cAlphaBits) +
         2 * Distance(format.cDepthBits, aRequest.cDepthBits) +
         Distance(format.cStencilBits, aRequest.cStencilBits) +
         Distance(format.cAccumBits, aRequest.cAccumBits);
}

}  // namespace

std::shared_ptr<DisplayServer> TheDisplay() noexcept {
  Choice& choice = TheChoice();
  // destroyed after the lock is released, since it waits for its event thread
  std::shared_ptr<DisplayServer> broken;
  const std::scoped_lock lock(choice.m_Lock);
  if (choice.m_pSet != nullptr) return choice.m_pSet;
  if (choice.m_pFound == nullptr || choice.m_pFound->IsBroken()) {
    broken = choice.m_pFound;
    Find(choice);
  }
  return choice.m_pFound;
}

void DecideDisplay() noexcept {
  Choice& choice = TheChoice();
  std::shared_ptr<DisplayServer> old;  // destroyed after the lock is released
  const std::scoped_lock lock(choice.m_Lock);
  if (choice.m_pSet != nullptr || choice.m_pFound == nullptr) return;
  old = choice.m_pFound;
  if (choice.m_bMakeshift || old->IsBroken()) Find(choice);
}

void EndDisplay() noexcept {
  Choice& choice = TheChoice();
  std::shared_ptr<DisplayServer> last;
  const std::scoped_lock lock(choice.m_Lock);
  last.swap(choice.m_pFound);
}

void SetDisplay(std::shared_ptr<DisplayServer> aDisplay) noexcept {
  Choice& choice = TheChoice();
  const std::scoped_lock lock(choice.m_Lock);
  choice.m_pSet = std::move(aDisplay);
}

bool DisplayServer::WorkArea(HWND, RECT* aRect) noexcept {
  constexpr LONG kFar = 0x3FFFFFFF;
  *aRect = {-kFar, -kFar, kFar, kFar};
  return true;
}

int DisplayServer::ChooseFormat(SurfaceKind aKind, const PIXELFORMATDESCRIPTOR& aRequest) noexcept {
  const std::vector<DisplayFormat>& formats = Formats(aKind);
  int best = 0, least = 0;
  for (std::size_t i = 0; i < formats.size(); ++i) {
    const int misfit = Misfit(formats[i], aRequest);
    if (misfit < 0 || formats[i].m_iSamples != 0 || (best != 0 && misfit >= least)) continue;
    best = static_cast<int>(i) + 1;
    least = misfit;
  }
  return best;
}

int DisplayServer::ChooseMultisampleFormat(SurfaceKind aKind, const PIXELFORMATDESCRIPTOR& aRequest,
                                           int aSamples) noexcept {
  const std::vector<DisplayFormat>& formats = Formats(aKind);
  int best = 0, least = 0;
  for (std::size_t i = 0; i < formats.size(); ++i) {
    const int misfit = Misfit(formats[i], aRequest), samples = formats[i].m_iSamples;
    if (misfit < 0 || samples < aSamples || formats[i].m_Description.cDepthBits < aRequest.cDepthBits)
      continue;
    const int rank = samples * 1000 + misfit;
    if (best != 0 && rank >= least) continue;
    best = static_cast<int>(i) + 1;
    least = rank;
  }
  return best;
}

const char* DisplayServer::ExtensionString() noexcept {
  return "WGL_ARB_extensions_string WGL_ARB_pixel_format WGL_ARB_multisample ";
}

PROC DisplayServer::EntryPoint(const char* aName) noexcept { return PixelFormatArbEntryPoint(aName); }

// Version of the platform: the display decides how captures are made. Any thread.

#include "platform/SystemInfo.h"

#include "platform/linux/display/DisplayServer.h"

BOOL GetVersionExA(OSVERSIONINFOA* pInfo) noexcept {
  const auto display = TheDisplay();
  *pInfo = OSVERSIONINFOA{sizeof(*pInfo), 0, 0, 0, display != nullptr ? display->PlatformId() : 2, {}};
  return TRUE;
}

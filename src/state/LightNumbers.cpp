// LightNumbers: the table of taken numbers and its lock. Any thread.

#include "state/LightNumbers.h"

#include <algorithm>
#include <iterator>
#include <mutex>

namespace {

std::mutex g_LightSlotsLock;
bool g_abLightSlots[8];  // true: taken

}  // namespace

int LightNumbers::Take(int& aNumber) noexcept {
  const std::lock_guard lock(g_LightSlotsLock);
  if (aNumber != kNone) return aNumber;
  bool* const free = std::find(std::begin(g_abLightSlots), std::end(g_abLightSlots), false);
  if (free == std::end(g_abLightSlots)) return kNone;
  *free = true;
  aNumber = static_cast<int>(free - g_abLightSlots);
  return aNumber;
}

void LightNumbers::Free(int& aNumber) noexcept {
  const std::lock_guard lock(g_LightSlotsLock);
  if (aNumber != kNone) g_abLightSlots[aNumber] = false;
  aNumber = kNone;
}

// The data blocks that the build has put into the module. Constant; any thread.

#pragma once

#include <span>

#include "platform/Types.h"

/// One block, by the name that FindResourceA knows it by.
struct ResourceBlock {
  const char* m_szName;
  const unsigned char* m_pBytes;
  DWORD m_dwBytes;
};

/// All blocks; the definition is written by the build. A test may put others in their place.
extern std::span<const ResourceBlock> g_ResourceBlocks;

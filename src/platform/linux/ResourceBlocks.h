// Data blocks that the build adds to the module. Constant; any thread.

#pragma once

#include <span>

#include "platform/Types.h"

/// One block, with its name for FindResourceA.
struct ResourceBlock {
  const char* m_szName;
  const unsigned char* m_pBytes;
  DWORD m_dwBytes;
};

/// All blocks. The build generates the definition. Tests may replace the value.
extern std::span<const ResourceBlock> g_ResourceBlocks;

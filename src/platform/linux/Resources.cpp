// The module's data blocks: the glyph atlases, which the build generates from their sheets. Constant; any
// thread.

#include "platform/Resources.h"

#include <gllib/GLNames.h>

#include "platform/linux/ResourceBlocks.h"

namespace {

const ResourceBlock& BlockOf(HRSRC aResource) noexcept {
  return *reinterpret_cast<const ResourceBlock*>(aResource);
}

}  // namespace

HRSRC FindResourceA(HMODULE, const char* szName, const char* szType) noexcept {
  if (szName == nullptr || szType != RT_RCDATA) return nullptr;
  for (const ResourceBlock& block : g_ResourceBlocks) {
    if (!GLNames::Equal(block.m_szName, szName)) continue;
    return reinterpret_cast<HRSRC>(const_cast<ResourceBlock*>(&block));
  }
  return nullptr;
}

HGLOBAL LoadResource(HMODULE, HRSRC hResource) noexcept {
  return hResource != nullptr ? const_cast<unsigned char*>(BlockOf(hResource).m_pBytes) : nullptr;
}

void* LockResource(HGLOBAL hData) noexcept { return hData; }

DWORD SizeofResource(HMODULE, HRSRC hResource) noexcept {
  return hResource != nullptr ? BlockOf(hResource).m_dwBytes : 0;
}

// Loads image files by name through the interface.

#pragma once

#include "support/BitmapBytes.h"
#include "support/TestFolder.h"

/// Loads the file with a name.
inline HRESULT LoadFrom(IGLPixmap& aPixmap, const std::u16string& aName) {
  const BSTR text =
      SysAllocStringLen(reinterpret_cast<const OLECHAR*>(aName.data()), static_cast<unsigned>(aName.size()));
  const HRESULT result = aPixmap.LoadImageFile(text);
  SysFreeString(text);
  return result;
}

// GdiObject: base class of the objects behind an HGDIOBJ: fonts, bitmaps, palettes. One thread at a time.

#pragma once

struct GdiObject {
  virtual ~GdiObject() = default;
};

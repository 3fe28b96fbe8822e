// GdiObject: the base of what an HGDIOBJ stands for: fonts, bitmaps, palettes.

#pragma once

struct GdiObject {
  virtual ~GdiObject() = default;
};

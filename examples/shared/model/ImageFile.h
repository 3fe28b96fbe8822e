// ImageFile: reads the image files of models into pixmaps of the component. Any thread.

#pragma once

#include <gllib/GLLib.h>
#include <gllib/GLLibHost.h>

#include <string>

#include "shared/Picture.h"

/// Copies a picture to a new pixmap. @return null if memory is short
GLPtr<IGLPixmap> PixmapOf(const Picture& aPicture);

/// Reads a PNG or bitmap file. @return null if the file cannot be read
GLPtr<IGLPixmap> ReadImage(const std::string& aPath);

/// Returns the path with forward slashes, which all systems accept. Models may contain backslashes.
std::string ForwardSlashes(std::string aPath);

/// Reports on standard error that an image cannot be read.
void ReportLostImage(const std::string& aName);

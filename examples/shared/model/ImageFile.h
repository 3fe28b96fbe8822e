// ImageFile: the images that models name, as pixmaps of the component. Any thread.

#pragma once

#include <gllib/GLLib.h>
#include <gllib/GLLibHost.h>

#include <string>

#include "shared/Picture.h"

GLPtr<IGLPixmap> PixmapOf(const Picture& aPicture);

/// Reads a PNG or bitmap file. @return null when it can't be read
GLPtr<IGLPixmap> ReadImage(const std::string& aPath);

/// A path as a model may write it, in the way that all systems take.
std::string ForwardSlashes(std::string aPath);

/// Tells on standard error that an image couldn't be read.
void ReportLostImage(const std::string& aName);

// A lit scene that every system draws and captures: a ball and a box on a floor, in fog, by a distant light
// and a spot. It knows the component by its public headers alone; any thread but the draw thread.

#pragma once

#include <gllib/GLLib.h>

#include <string>

/// Sets the scene up in a context, captures it in 160 by 120 pixels and writes the picture as a bitmap file.
/// @param aTaken receives the picture
/// @return whether it was taken and written
bool SaveLitScene(IGLContext& aContext, IGLPixmap& aTaken, const std::string& aFile);

/// The mean difference of the colours of two pictures, in grey levels; 255 when their sizes differ.
double MeanGreyDifference(IGLPixmap& a, IGLPixmap& b);

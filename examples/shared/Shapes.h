// Shapes: a few solids with their normals, drawn through a canvas in the colour that is set.
// For painters; draw thread only.

#pragma once

#include <gllib/GLLib.h>

/// A box about a centre, with its faces along the axes.
void DrawBox(IGLCanvas& aCanvas, const GLDATA_POINT& aCentre, const GLDATA_POINT& aHalf);

/// A sphere, fine enough for highlights at each vertex.
void DrawSphere(IGLCanvas& aCanvas, const GLDATA_POINT& aCentre, double aRadius);

/// A level square about the origin at a height, as a grid of cells, so that light has vertices to fall on.
void DrawFloor(IGLCanvas& aCanvas, double aHeight, double aHalf, int aCells);

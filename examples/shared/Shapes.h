// Shapes: solids with normals, drawn through a canvas in its current colour. Called by painters; draw thread
// only.

#pragma once

#include <gllib/GLLib.h>

/// Draws a box around a centre. Its faces are perpendicular to the axes.
void DrawBox(IGLCanvas& aCanvas, const GLDATA_POINT& aCentre, const GLDATA_POINT& aHalf);

/// Draws a sphere. It has enough vertices for highlights, which GL computes per vertex.
void DrawSphere(IGLCanvas& aCanvas, const GLDATA_POINT& aCentre, double aRadius);

/// Draws a horizontal square around the vertical axis, as a grid of cells. GL computes light per vertex, so a
/// floor needs many.
void DrawFloor(IGLCanvas& aCanvas, double aHeight, double aHalf, int aCells);

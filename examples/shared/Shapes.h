// Shapes: solids with normals, drawn through a canvas in its current colour. Called by painters; draw thread
// only.

#pragma once

#include <gllib/GLLib.h>

/// Draws a box around a centre. Its faces are perpendicular to the axes.
/// @param aHalf half of its size along each axis
void DrawBox(IGLCanvas& aCanvas, const GLDATA_POINT& aCentre, const GLDATA_POINT& aHalf);

/// Draws a sphere. It has enough vertices for highlights, which GL computes per vertex.
void DrawSphere(IGLCanvas& aCanvas, const GLDATA_POINT& aCentre, double aRadius);

/// Draws a horizontal square around the y axis, as a grid of cells. GL computes light per vertex, so a lit
/// floor needs many cells.
/// @param aHeight y of the floor
/// @param aHalf   half of its side
/// @param aCells  cells along each side
void DrawFloor(IGLCanvas& aCanvas, double aHeight, double aHalf, int aCells);

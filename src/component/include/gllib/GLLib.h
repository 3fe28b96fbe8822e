/// @file
/// All interfaces, classes, structures and identifiers of the component. Hosts include this file.

#pragma once

#include <gllib/GLClasses.h>
#include <gllib/GLEntryPoints.h>
#include <gllib/GLIdentifiers.h>
#include <gllib/GLTypes.h>
#include <gllib/IGLBitmap.h>
#include <gllib/IGLCanvas.h>
#include <gllib/IGLCapture.h>
#include <gllib/IGLCollection.h>
#include <gllib/IGLContext.h>
#include <gllib/IGLCoord.h>
#include <gllib/IGLDrawAttr.h>
#include <gllib/IGLFog.h>
#include <gllib/IGLFont.h>
#include <gllib/IGLLight.h>
#include <gllib/IGLMaterial.h>
#include <gllib/IGLPainter.h>
#include <gllib/IGLPixmap.h>
#include <gllib/IGLTexture1D.h>
#include <gllib/IGLTexture2D.h>
#include <gllib/IGLViewer.h>
#include <gllib/IGLViewerGauge.h>

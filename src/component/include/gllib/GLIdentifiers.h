/// @file
/// The interface identifiers by the names that existing hosts use. Each is also the member Identifier of its
/// interface.

#pragma once

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

/// Identifier of the interface with this name.
/// @{
inline constexpr IID IID_IGLContext = IGLContext::Identifier;
inline constexpr IID IID_IGLContext2 = IGLContext2::Identifier;
inline constexpr IID IID_IGLContext12 = IGLContext12::Identifier;
inline constexpr IID IID_IGLContext14_2 = IGLContext14_2::Identifier;
inline constexpr IID IID_IGLContext14_3 = IGLContext14_3::Identifier;
inline constexpr IID IID_IGLCanvas = IGLCanvas::Identifier;
inline constexpr IID IID_IGLCanvas2 = IGLCanvas2::Identifier;
inline constexpr IID IID_IGLCanvas3 = IGLCanvas3::Identifier;
inline constexpr IID IID_IGLCanvas13_1 = IGLCanvas13_1::Identifier;
inline constexpr IID IID_IGLCanvas14_2 = IGLCanvas14_2::Identifier;
inline constexpr IID IID_IGLCanvas14_4 = IGLCanvas14_4::Identifier;
inline constexpr IID IID_IGLViewer = IGLViewer::Identifier;
inline constexpr IID IID_IGLViewer2 = IGLViewer2::Identifier;
inline constexpr IID IID_IGLDrawAttr = IGLDrawAttr::Identifier;
inline constexpr IID IID_IGLMaterial = IGLMaterial::Identifier;
inline constexpr IID IID_IGLLight = IGLLight::Identifier;
inline constexpr IID IID_IGLFog = IGLFog::Identifier;
inline constexpr IID IID_IGLCollection = IGLCollection::Identifier;
inline constexpr IID IID_IGLFont = IGLFont::Identifier;
inline constexpr IID IID_IGLBitmap = IGLBitmap::Identifier;
inline constexpr IID IID_IGLPixmap = IGLPixmap::Identifier;
inline constexpr IID IID_IGLTexture1D = IGLTexture1D::Identifier;
inline constexpr IID IID_IGLTexture2D = IGLTexture2D::Identifier;
inline constexpr IID IID_IGLCoord = IGLCoord::Identifier;
inline constexpr IID IID_IGLPainter = IGLPainter::Identifier;
inline constexpr IID IID_IGLViewerGauge = IGLViewerGauge::Identifier;
inline constexpr IID IID_IGLCapture = IGLCapture::Identifier;
/// @}

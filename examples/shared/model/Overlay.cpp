// Overlay: draws the rubber band, the label, the progress bar and the slider.

#include "shared/model/Overlay.h"

#include <utility>

namespace {

constexpr int kTextHeight = -13;  // below 0: the character height in pixels, see CreateRasterFont
constexpr std::uint16_t kDashes = 0x0F0F;
constexpr GLDATA_RGBA kFillColor{1.0f, 0.55f, 0.1f, 0.15f};
constexpr GLDATA_RGBA kEdgeColor{1.0f, 0.55f, 0.1f, 1.0f};
constexpr GLDATA_RGBA kLabelColor{0.9f, 0.9f, 0.85f, 1.0f};
constexpr GLDATA_POINT kLabelPlace{-0.97, 0.9, 0.0};
constexpr Band kBar{{-0.5, -0.9, 0}, {0.5, -0.87, 0}};
constexpr GLDATA_POINT kBarLabelPlace{-0.5, -0.84, 0};

GLPtr<IGLDrawAttr> MakeAttributes(GLDATA_RGBA aColor) {
  auto attributes = GLCreate<IGLDrawAttr>(CLSID_GLDrawAttr);
  attributes->SetColor(&aColor);
  // Both sides are shown, because the user may span a band from any corner.
  attributes->EnableDrawMode(static_cast<eGLDrawMode>(GLDM_SHOW_FRONT | GLDM_SHOW_BACK), 1);
  return attributes;
}

void EmitCorners(IGLCanvas& aCanvas, const Band& aBand) {
  aCanvas.Vertex2d(aBand.from.x, aBand.from.y);
  aCanvas.Vertex2d(aBand.to.x, aBand.from.y);
  aCanvas.Vertex2d(aBand.to.x, aBand.to.y);
  aCanvas.Vertex2d(aBand.from.x, aBand.to.y);
}

}  // namespace

Overlay::Overlay(GLPtr<GLViewing> aViewing, FrameClock* aClock, const Progress* aProgress)
    : m_viewing(std::move(aViewing)),
      m_clock(aClock),
      m_progress(aProgress),
      m_fill(MakeAttributes(kFillColor)),
      m_edge(MakeAttributes(kEdgeColor)),
      m_bar(MakeAttributes(kEdgeColor)),
      m_text(GLString("DejaVu Sans"), kTextHeight) {
  m_edge->SetLineStipplePattern(kDashes);
}

void Overlay::SetBand(std::optional<Band> aBand) {
  const std::lock_guard lock(m_lock);
  m_band = aBand;
}

void Overlay::SetLabel(const std::string& aText) {
  const std::lock_guard lock(m_lock);
  m_label = GLString(aText);
}

void Overlay::SetSection(const Section& aSection) {
  const std::lock_guard lock(m_lock);
  m_section = aSection;
}

HRESULT Overlay::Draw(IGLCanvas* aCanvas, IGLContext* aContext) noexcept {
  std::optional<Band> band;
  GLString label;
  Section section;
  {
    const std::lock_guard lock(m_lock);
    band = m_band;
    label = m_label;
    section = m_section;
  }
  if (band) DrawBand(*aCanvas, *band);
  if (SysStringLen(label) > 0) DrawLabel(*aContext, label, kLabelPlace);
  if (section.IsOn()) DrawSlider(section);
  if (m_progress != nullptr) DrawProgress(*aCanvas, *aContext);
  if (m_clock != nullptr) {
    glFinish();  // waits for GL, so that the time includes the drawing
    m_clock->Stop();
  }
  return S_OK;
}

void Overlay::DrawBand(IGLCanvas& aCanvas, const Band& aBand) {
  const GLOverlay overlay;
  aCanvas.SetDrawAttributes(m_fill.Get());
  aCanvas.BeginDrawQuads();
  EmitCorners(aCanvas, aBand);
  aCanvas.EndDrawVertices();
  GLScaledCanvas(aCanvas, m_viewing->Scale()).SetDrawAttributes(m_edge.Get());
  aCanvas.BeginDrawLineLoop();
  EmitCorners(aCanvas, aBand);
  aCanvas.EndDrawVertices();
}

void Overlay::DrawSlider(const Section& aSection) {
  const GLOverlay overlay(GLOverlayUnits::Pixels, m_viewing->Scale());
  const SectionSlider slider = SectionSlider::In(overlay.Width(), overlay.Height());
  const auto bar = [](double aLeft, double aTop, double aRight, double aBottom, const GLDATA_RGBA& aColor) {
    glColor4f(aColor.m_fRed, aColor.m_fGreen, aColor.m_fBlue, aColor.m_fAlpha);
    glRectd(aLeft, aBottom, aRight, aTop);
  };
  const double at = slider.HeightOf(aSection.share);
  const auto channel = [&](int aAxis) { return aAxis == aSection.axis ? 1.0f : 0.4f; };
  GLDATA_RGBA faint = kLabelColor;
  faint.m_fAlpha = 0.3f;
  const GLDATA_RGBA axis{channel(0), channel(1), channel(2), 1.0f};  // same hue as in the axes figure
  bar(slider.left, slider.top, slider.right, slider.bottom, faint);
  bar(slider.left, at, slider.right, slider.bottom, axis);
  bar(slider.left - 5, at - 3, slider.right + 5, at + 3, kLabelColor);
}

void Overlay::DrawProgress(IGLCanvas& aCanvas, IGLContext& aContext) {
  const float reading = m_progress->reading;
  const float share = reading >= 0 ? reading : m_progress->preparing.load();
  if (share < 0) return;
  const double reached = kBar.from.x + share * (kBar.to.x - kBar.from.x);
  DrawLabel(aContext, reading >= 0 ? "Reading" : "Preparing", kBarLabelPlace);
  const GLOverlay overlay;
  GLScaledCanvas(aCanvas, m_viewing->Scale()).SetDrawAttributes(m_bar.Get());
  aCanvas.BeginDrawQuads();
  EmitCorners(aCanvas, {kBar.from, {reached, kBar.to.y, 0}});
  aCanvas.EndDrawVertices();
  aCanvas.BeginDrawLineLoop();
  EmitCorners(aCanvas, kBar);
  aCanvas.EndDrawVertices();
}

void Overlay::DrawLabel(IGLContext& aContext, const GLString& aLabel, const GLDATA_POINT& aPlace) {
  const GLOverlay overlay;
  glColor4f(kLabelColor.m_fRed, kLabelColor.m_fGreen, kLabelColor.m_fBlue, kLabelColor.m_fAlpha);
  m_text.Print(aContext, aLabel, aPlace, m_viewing->Scale());
}

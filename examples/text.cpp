// text: shows all four kinds of font in one picture: TrueType letters, solid with lighting and flat around a
// circle; raster fonts in their styles; the system font; and both glyph atlases. Shows how to create and
// place each kind, and which fonts the host has to release.

#include <cmath>
#include <numbers>

#include "shared/Stage.h"

namespace {

constexpr int kWidth = 960;
constexpr int kHeight = 600;
constexpr double kPi = std::numbers::pi;
constexpr const char* kNoFont = "cannot create a font";
constexpr GLDATA_RGBA kInk{0.12f, 0.14f, 0.2f, 1}, kBlue{0.15f, 0.35f, 0.75f, 1}, kRed{0.8f, 0.2f, 0.15f, 1},
    kGold{0.9f, 0.65f, 0.15f, 1};

/// The fonts of the picture. The context owns all of them. The creators of TrueType and raster fonts return a
/// borrowed pointer; those of the other kinds return a reference, which GLPtr releases.
struct Fonts {
  explicit Fonts(IGLContext& aContext) {
    GLString sans("DejaVu Sans"), serif("DejaVu Serif"), hand("HAND"), atlas("SANSSERIF");
    const auto context2 = GLPtr<IGLContext>::FromBorrowed(&aContext).As<IGLContext2>();
    Require(aContext.CreateTrueTypeFont(serif, GLFS_ROMAN, 700, 0, 1, &m_solid), kNoFont);
    Require(aContext.CreateTrueTypeFont(sans, 0, 400, 0, 0, &m_flat), kNoFont);
    Require(aContext.CreateRasterFont(sans, 0, 400, 0, -22, 0, &m_plain), kNoFont);
    Require(aContext.CreateRasterFont(serif, GLFS_ROMAN | GLFS_ITALIC, 700, 0, -26, 0, &m_bold), kNoFont);
    Require(aContext.CreateRasterFont(sans, GLFS_UNDERLINE | GLFS_STRIKEOUT, 400, 0, -22, 0, &m_barred),
            kNoFont);
    Require(aContext.CreateRasterFont(sans, 0, 400, 25, -22, 0, &m_turned), kNoFont);
    Require(aContext.CreateSystemFont(m_system.Put()), kNoFont);
    Require(context2->CreateInternalFont(hand, m_hand.Put()), kNoFont);
    Require(context2->CreateInternalFont(atlas, m_atlas.Put()), kNoFont);
    m_solid->SetWidth(150);
    m_solid->SetHeight(150);
    m_solid->SetExtrusionZ(45);
    m_flat->SetWidth(26);
    m_flat->SetHeight(26);
    m_hand->SetEscapement_DEG(-8);
  }

  IGLFont *m_solid = nullptr, *m_flat = nullptr;
  IGLFont *m_plain = nullptr, *m_bold = nullptr, *m_barred = nullptr, *m_turned = nullptr;
  GLPtr<IGLFont> m_system, m_hand, m_atlas;
};

/// Draws the texts. One model unit is one pixel of the picture, and the origin is its lower left corner.
class TextPainter final : public GLPainterBase {
 public:
  explicit TextPainter(IGLContext& aContext) : m_fonts(aContext) {}

  HRESULT Draw(IGLCanvas* aCanvas, IGLContext*, IGLViewer*) noexcept override {
    SetColor(*aCanvas, kGold);
    DrawSolid(*aCanvas);
    aCanvas->PushLightAttribute();  // the rest is unlit
    DrawCircle(*aCanvas, 790, 170);
    Write(*aCanvas, *m_fonts.m_plain, kInk, "Raster: the quick brown fox, 12 \u20AC", 40, 300);
    Write(*aCanvas, *m_fonts.m_bold, kRed, "bold italic with serifs", 40, 262);
    Write(*aCanvas, *m_fonts.m_barred, kInk, "underlined and struck out", 40, 226);
    Write(*aCanvas, *m_fonts.m_turned, kBlue, "each letter turned", 40, 190);
    Write(*aCanvas, *m_fonts.m_system, kInk,
          "System: \u00A7 7, \u00E4\u00F6\u00FC\u00DF, 20 \u00B1 0.5 \u00B0C", 40, 150);
    WriteScaled(*aCanvas, *m_fonts.m_atlas, kBlue, "SANSSERIF", 40, 84, 2.5);
    WriteScaled(*aCanvas, *m_fonts.m_hand, kRed, "HAND, as if written", 300, 34, 2);
    aCanvas->PopLightAttribute();
    return S_OK;
  }

 private:
  void SetColor(IGLCanvas& aCanvas, GLDATA_RGBA aColor) const {
    m_attributes->SetColor(&aColor);
    aCanvas.SetDrawAttributes(m_attributes.Get());
  }

  void Write(IGLCanvas& aCanvas, IGLFont& aFont, const GLDATA_RGBA& aColor, const char* aText, double aX,
             double aY) const {
    SetColor(aCanvas, aColor);
    GLString text(aText);
    GLDATA_POINT start{aX, aY, 0};
    aFont.Print(text, &start);
  }

  /// Prints scaled text. Atlas fonts have a fixed size: one texel is one model unit.
  void WriteScaled(IGLCanvas& aCanvas, IGLFont& aFont, const GLDATA_RGBA& aColor, const char* aText,
                   double aX, double aY, double aScale) const {
    GLDATA_POINT place{aX, aY, 0}, scale{aScale, aScale, 1};
    aCanvas.PushModelviewMatrix(0);
    aCanvas.Translate(&place);
    aCanvas.Scale(&scale);
    Write(aCanvas, aFont, aColor, aText, 0, 0);
    aCanvas.PopModelviewMatrix();
  }

  void DrawSolid(IGLCanvas& aCanvas) const {
    GLDATA_POINT place{70, 420, -100}, up{0, 1, 0}, right{1, 0, 0};
    aCanvas.PushModelviewMatrix(0);
    aCanvas.Translate(&place);
    aCanvas.Rotate_RAD(0.35, &right);
    aCanvas.Rotate_RAD(-0.25, &up);
    Write(aCanvas, *m_fonts.m_solid, kGold, "Solid & lit", 0, 0);
    aCanvas.PopModelviewMatrix();
  }

  void DrawCircle(IGLCanvas& aCanvas, double aX, double aY) const {
    constexpr int kSpokes = 12;
    for (int i = 0; i < kSpokes; ++i) {
      const double turn = 2 * kPi * i / kSpokes;
      // The escapement counts clockwise, the angle on the circle counter-clockwise.
      m_fonts.m_flat->SetEscapement_DEG(static_cast<float>(-360.0 * i / kSpokes));
      Write(aCanvas, *m_fonts.m_flat, i % 2 == 0 ? kBlue : kInk, "outline", aX + 50 * std::cos(turn),
            aY + 50 * std::sin(turn));
    }
  }

  Fonts m_fonts;
  GLPtr<IGLDrawAttr> m_attributes = GLCreate<IGLDrawAttr>(CLSID_GLDrawAttr);
};

Picture DrawText() {
  const Stage stage(kWidth, kHeight);
  IGLContext& context = stage.Context();
  GLDATA_RGBA paper{0.96f, 0.95f, 0.92f, 1}, dusk{0.35f, 0.35f, 0.35f, 1};
  context.SetBackgroundColor(&paper);
  context.SetAmbientLight(&dusk);
  stage.AddDistantLight({0.7, -0.6, -0.7});
  // At this distance one model unit in the plane of the text is one pixel.
  constexpr double kFovy = 30;
  const double distance = kHeight / 2.0 / std::tan(kFovy / 2 * kPi / 180);
  IGLViewer& viewer = stage.AddViewer({kWidth / 2.0, kHeight / 2.0, distance}, 0);
  viewer.SetEyeFovy_DEG(kFovy);
  viewer.SetEyeZNearAndFar(100, 3000);
  context.AttachPainter(GLMake<TextPainter>(context).Get());
  return stage.Read();
}

}  // namespace

int main(int argc, char** argv) { return RunExample(argc, argv, DrawText); }

// atlases: prints the 256 cells of both glyph atlases, HAND on the left and SANSSERIF on the right, sixteen
// codes per line with code 0 at the top left. Shows how to create the built-in fonts, to select each of their
// cells, and to scale text so that its texels cover whole pixels.

#include <cmath>
#include <numbers>

#include "shared/Stage.h"

namespace {

constexpr int kZoom = 3;                // pixels per texel
constexpr int kSheet = 16 * 9 * kZoom;  // a glyph is 8 texels wide and moves the pen by 9
constexpr int kLine = 18 * kZoom;
constexpr int kMargin = 24;
constexpr int kWidth = 2 * kSheet + 3 * kMargin;
constexpr int kHeight = 16 * kLine + 2 * kMargin;

/// Characters that select the cells 0x80 to 0x9F. For all other cells the character equals the code.
constexpr char16_t kUpperControls[33] =
    u"\u20AC\u0081\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\u008D\u017D\u008F"
    u"\u0090\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\u009D\u017E\u0178";

char16_t CharacterOf(int aCode) {
  if (aCode == 0) return u' ';  // code 0 would end the text; a space is as empty as its cell
  return aCode >= 0x80 && aCode < 0xA0 ? kUpperControls[aCode - 0x80] : static_cast<char16_t>(aCode);
}

class AtlasPainter final : public GLPainterBase {
 public:
  explicit AtlasPainter(IGLContext& aContext) {
    const auto context2 = GLPtr<IGLContext>::FromBorrowed(&aContext).As<IGLContext2>();
    Require(context2->CreateInternalFont(GLString("HAND"), m_fonts[0].Put()), "cannot create a font");
    Require(context2->CreateInternalFont(GLString("SANSSERIF"), m_fonts[1].Put()), "cannot create a font");
    GLDATA_RGBA ink{0.1f, 0.12f, 0.2f, 1};
    m_attributes->SetColor(&ink);
  }

  HRESULT Draw(IGLCanvas* aCanvas, IGLContext*, IGLViewer*) noexcept override {
    aCanvas->PushLightAttribute();
    aCanvas->SetDrawAttributes(m_attributes.Get());
    for (int sheet = 0; sheet < 2; ++sheet) {
      // A glyph starts half a texel to the right of the pen and above it. The offset compensates for that.
      constexpr double kHalf = 0.5 * kZoom;
      GLDATA_POINT place{kMargin + sheet * (kSheet + kMargin) - kHalf, kHeight - kMargin - kHalf, 0};
      GLDATA_POINT zoom{kZoom, kZoom, 1};
      aCanvas->PushModelviewMatrix(0);
      aCanvas->Translate(&place);
      aCanvas->Scale(&zoom);
      for (int line = 0; line < 16; ++line) PrintLine(*m_fonts[sheet].Get(), line);
      aCanvas->PopModelviewMatrix();
    }
    aCanvas->PopLightAttribute();
    return S_OK;
  }

 private:
  static void PrintLine(IGLFont& aFont, int aLine) {
    char16_t text[17] = {};
    for (int i = 0; i < 16; ++i) text[i] = CharacterOf(16 * aLine + i);
    GLDATA_POINT start{0, -18.0 * (aLine + 1), 0};
    aFont.Print(text, &start);
  }

  GLPtr<IGLFont> m_fonts[2];
  GLPtr<IGLDrawAttr> m_attributes = GLCreate<IGLDrawAttr>(CLSID_GLDrawAttr);
};

Picture DrawAtlases() {
  const Stage stage(kWidth, kHeight);
  GLDATA_RGBA paper{0.96f, 0.95f, 0.92f, 1};
  stage.Context().SetBackgroundColor(&paper);
  // At this distance one model unit in the plane of the text is one pixel.
  const double distance = kHeight / 2.0 / std::tan(std::numbers::pi / 12);
  IGLViewer& viewer = stage.AddViewer({kWidth / 2.0, kHeight / 2.0, distance}, 0);
  viewer.SetEyeFovy_DEG(30);
  viewer.SetEyeZNearAndFar(100, 3000);
  stage.Context().AttachPainter(GLMake<AtlasPainter>(stage.Context()).Get());
  return stage.Read();
}

}  // namespace

int main(int argc, char** argv) { return RunExample(argc, argv, DrawAtlases); }

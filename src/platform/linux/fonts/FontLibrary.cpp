// FontLibrary: finds and opens faces. Any thread, under the library's lock.

#include "platform/linux/fonts/FontLibrary.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "platform/Log.h"
#include "platform/ProcessWide.h"

namespace {

const FcChar8* Utf8(const char* aText) noexcept { return reinterpret_cast<const FcChar8*>(aText); }

constinit ProcessWide<FontLibrary> g_FontLibrary;

/// Returns whether a name requests any face of a generic family, or any face at all.
bool IsGeneric(const char* aFace) noexcept {
  constexpr const char* kNames[] = {"", "serif", "sans-serif", "sans", "monospace", "cursive", "fantasy"};
  return std::any_of(std::begin(kNames), std::end(kNames),
                     [&](const char* aName) { return FcStrCmpIgnoreCase(Utf8(aFace), Utf8(aName)) == 0; });
}

/// Returns whether a font has this family name in any language, or this full name.
bool HasFamily(FcPattern& aFont, const char* aFace) noexcept {
  for (const char* property : {FC_FAMILY, FC_FULLNAME}) {
    FcChar8* name = nullptr;
    for (int i = 0; FcPatternGetString(&aFont, property, i, &name) == FcResultMatch; ++i) {
      if (FcStrCmpIgnoreCase(name, Utf8(aFace)) == 0) return true;
    }
  }
  return false;
}

using PatternPtr = std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)>;

PatternPtr PatternOf(const FaceRequest& aRequest) {
  PatternPtr pattern(FcPatternCreate(), &FcPatternDestroy);
  if (pattern == nullptr) return pattern;
  if (*aRequest.m_szFace != '\0') FcPatternAddString(pattern.get(), FC_FAMILY, Utf8(aRequest.m_szFace));
  FcPatternAddString(pattern.get(), FC_FAMILY, Utf8(aRequest.m_szGeneric));
  FcPatternAddDouble(pattern.get(), FC_WEIGHT, FcWeightFromOpenTypeDouble(aRequest.m_iWeight));
  FcPatternAddInteger(pattern.get(), FC_SLANT, aRequest.m_bItalic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
  if (aRequest.m_bFixedPitch) FcPatternAddInteger(pattern.get(), FC_SPACING, FC_MONO);
  FcPatternAddBool(pattern.get(), FC_OUTLINE, FcTrue);
  FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
  FcPatternAddBool(pattern.get(), FC_VARIABLE, FcFalse);
  return pattern;
}

// If a family lacks a style, fontconfig still reports the style, and requests its emulation by a flag and a
// matrix. This function reads the actual style of the file.
void ReadStyle(FcPattern& aFont, FaceMatch& aMatch) {
  double weight = FC_WEIGHT_REGULAR;
  FcBool emboldened = FcFalse;
  FcPatternGetDouble(&aFont, FC_WEIGHT, 0, &weight);
  FcPatternGetBool(&aFont, FC_EMBOLDEN, 0, &emboldened);
  if (emboldened == FcFalse) aMatch.m_iWeight = static_cast<int>(FcWeightToOpenTypeDouble(weight));
  int slant = FC_SLANT_ROMAN;
  FcMatrix* slanted = nullptr;
  FcPatternGetInteger(&aFont, FC_SLANT, 0, &slant);
  FcPatternGetMatrix(&aFont, FC_MATRIX, 0, &slanted);
  aMatch.m_bItalic = slant != FC_SLANT_ROMAN && (slanted == nullptr || slanted->xy == 0);
}

}  // namespace

FontLibrary& FontLibrary::Instance() noexcept { return g_FontLibrary.Get(); }

std::optional<FaceMatch> FontLibrary::Match(const FaceRequest& aRequest) {
  // Uses a separate configuration, since the host may change the shared one.
  if (m_pConfig == nullptr) m_pConfig = FcInitLoadConfigAndFonts();
  const PatternPtr pattern = PatternOf(aRequest);
  if (pattern == nullptr || m_pConfig == nullptr) return std::nullopt;
  if (!FcConfigSubstitute(m_pConfig, pattern.get(), FcMatchPattern)) return std::nullopt;
  FcDefaultSubstitute(pattern.get());
  FcResult result = FcResultNoMatch;
  const PatternPtr font(FcFontMatch(m_pConfig, pattern.get(), &result), &FcPatternDestroy);
  FcChar8* file = nullptr;
  if (font == nullptr || FcPatternGetString(font.get(), FC_FILE, 0, &file) != FcResultMatch)
    return std::nullopt;

  FaceMatch match;
  match.m_sFile = reinterpret_cast<const char*>(file);
  FcPatternGetInteger(font.get(), FC_INDEX, 0, &match.m_iIndex);
  ReadStyle(*font, match);
  NoteSubstitute(aRequest.m_szFace, *font, match.m_sFile);
  return match;
}

FacePtr FontLibrary::Open(const FaceMatch& aMatch) {
  if (m_pFreeType == nullptr && FT_Init_FreeType(&m_pFreeType) != 0) m_pFreeType = nullptr;
  FT_Face opened = nullptr;
  if (m_pFreeType == nullptr ||
      FT_New_Face(m_pFreeType, aMatch.m_sFile.c_str(), aMatch.m_iIndex, &opened) != 0)
    return nullptr;
  ++m_iOpenFaces;
  FacePtr face(opened);
  if (!FT_IS_SCALABLE(face) || face->units_per_EM <= 0) face.reset();
  return face;
}

void FaceCloser::operator()(FT_Face aFace) const noexcept {
  FontLibrary& library = FontLibrary::Instance();
  const auto lock = library.Lock();
  FT_Done_Face(aFace);
  --library.m_iOpenFaces;
}

// Keeps process-wide data of fontconfig, such as the default languages, since the host may use them.
void FontLibrary::End() noexcept {
  const auto lock = Lock();
  if (m_iOpenFaces > 0) return;
  if (m_pFreeType != nullptr) FT_Done_FreeType(std::exchange(m_pFreeType, nullptr));
  if (m_pConfig != nullptr) FcConfigDestroy(std::exchange(m_pConfig, nullptr));
  m_Substituted.clear();
}

// Reports each name once, since fonts are built repeatedly.
void FontLibrary::NoteSubstitute(const char* aFace, FcPattern& aFont, const std::string& aFile) {
  if (!IsLogged(LogLevel::kWarning) || IsGeneric(aFace) || HasFamily(aFont, aFace)) return;
  if (m_Substituted.insert(aFace).second)
    LogWarning("there is no font face \"%s\": %s is used", aFace, aFile.c_str());
}

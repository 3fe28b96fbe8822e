// FontLibrary: the process's one FreeType library and font configuration, and the lock that guards both. They
// are loaded at their first use, and again at the first use after an end.

#pragma once

#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H

#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>

/// What is asked of the font mapper.
struct FaceRequest {
  const char* m_szFace;     ///< UTF-8; empty for none
  const char* m_szGeneric;  ///< the family to take where the face isn't there
  int m_iWeight;            ///< 1 to 1000
  bool m_bItalic;
  bool m_bFixedPitch;
};

/// What the font mapper answers with.
struct FaceMatch {
  std::string m_sFile;
  int m_iIndex = 0;
  int m_iWeight = 400;
  bool m_bItalic = false;
};

/// Closes a face. Takes the lock itself.
struct FaceCloser {
  void operator()(FT_Face aFace) const noexcept;
};
using FacePtr = std::unique_ptr<FT_FaceRec, FaceCloser>;

/// Every use of FreeType and fontconfig happens between Lock and the end of what it gives.
class FontLibrary {
 public:
  static FontLibrary& Instance() noexcept;

  [[nodiscard]] std::unique_lock<std::recursive_mutex> Lock() { return std::unique_lock(m_Lock); }
  /// The face that the mapper makes of a request; none when there is no scalable font on the system.
  std::optional<FaceMatch> Match(const FaceRequest& aRequest);
  /// @return null when the file can't be read or its face has no outlines
  FacePtr Open(const FaceMatch& aMatch);
  /// Frees the library and the configuration unless a face is open. Takes the lock itself.
  void End() noexcept;

 private:
  void NoteSubstitute(const char* aFace, FcPattern& aFont, const std::string& aFile);

  friend FaceCloser;

  std::recursive_mutex m_Lock;
  FT_Library m_pFreeType = nullptr;
  FcConfig* m_pConfig = nullptr;
  int m_iOpenFaces = 0;
  std::set<std::string> m_Substituted;  // names of faces
};

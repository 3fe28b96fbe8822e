// FontLibrary: the FreeType library and font configuration of the process, and the lock that guards both.
// They are loaded at the first use, and again at the first use after End.

#pragma once

#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H

#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>

/// A request to the font mapper.
struct FaceRequest {
  const char* m_szFace = "";     ///< UTF-8; empty for none
  const char* m_szGeneric = "";  ///< family to use if the face is not available
  int m_iWeight = 400;           ///< 1 to 1000
  bool m_bItalic = false;
  bool m_bFixedPitch = false;
};

/// The result of the font mapper.
struct FaceMatch {
  std::string m_sFile;
  int m_iIndex = 0;
  int m_iWeight = 400;
  bool m_bItalic = false;
};

/// Closes a face. Takes the lock.
struct FaceCloser {
  void operator()(FT_Face aFace) const noexcept;
};
using FacePtr = std::unique_ptr<FT_FaceRec, FaceCloser>;

/// FreeType and fontconfig are used only while the result of Lock exists.
class FontLibrary {
 public:
  static FontLibrary& Instance() noexcept;

  [[nodiscard]] std::unique_lock<std::recursive_mutex> Lock() { return std::unique_lock(m_Lock); }
  /// Finds the best face for a request; none if the system has no scalable font.
  std::optional<FaceMatch> Match(const FaceRequest& aRequest);
  /// Opens a face.
  /// @return null if the file cannot be read or the face has no outlines
  FacePtr Open(const FaceMatch& aMatch);
  /// Frees the library and the configuration, unless a face is open. Takes the lock.
  void End() noexcept;

 private:
  void NoteSubstitute(const char* aFace, FcPattern& aFont, const std::string& aFile);

  friend FaceCloser;

  std::recursive_mutex m_Lock;
  FT_Library m_pFreeType = nullptr;
  FcConfig* m_pConfig = nullptr;
  int m_iOpenFaces = 0;
  std::set<std::string> m_Substituted;  // face names already reported
};

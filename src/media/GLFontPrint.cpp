// GLFont: measures and prints text. Print runs on the draw thread, in a painter or gauge callback;
// GetStringWidth on any thread.

#include <gllib/GLUtf8.h>

#include <algorithm>
#include <cstring>

#include "diagnostics/GLErrorCheck.h"
#include "media/GLFont.h"
#include "platform/Text.h"

namespace {

constexpr int kStackText = 1024;
constexpr std::size_t kLongestText = 0x3FFFFFFE;

std::size_t LengthOf(const GLWCHAR* aString) noexcept {
  std::size_t length = 0;
  if (aString != nullptr) {
    while (aString[length] != 0) ++length;
  }
  return length;
}

HRESULT Refuse(const char* aReason) noexcept {
  LogDebug("IGLFont::Print is refused: %s", aReason);
  return E_GL_BADSTATE;
}

int ToBytes(const GLWCHAR* aString, std::size_t aLength, char* aBytes, int aRoom) noexcept {
  return WideCharToMultiByte(CP_THREAD_ACP, 0, aString, static_cast<int>(aLength), aBytes, aRoom, nullptr,
                             nullptr);
}

}  // namespace

// Converts the text in pieces on the stack: a buffer in the font would be shared with the draw thread.
HRESULT GLFont::GetStringWidth(BSTR aString, float* aWidth) noexcept {
  if (aWidth == nullptr) return E_INVALIDARG;
  *aWidth = -1.0f;
  if (!m_bCreated.load(std::memory_order_acquire)) return E_FAIL;
  constexpr std::size_t kPiece = kStackText / 4;  // no code page needs more than four bytes per UTF-16 unit
  const float scale = m_fWidth;
  float sum = 0.0f;
  std::size_t left = LengthOf(aString);
  if (left > kLongestText) left = 0;
  for (const GLWCHAR* piece = aString; left > 0;) {
    std::size_t units = std::min(left, kPiece);
    if (units < left && GLUtf8::IsHighSurrogate(piece[units - 1])) --units;
    char bytes[kStackText];
    const int count = ToBytes(piece, units, bytes, kStackText);
    for (int i = 0; i < count; ++i) {
      const auto code = static_cast<unsigned char>(bytes[i]);
      if (code >= 0x80) continue;
      sum += std::atomic_ref(m_arGlyphMetrics[code].gmfCellIncX).load(std::memory_order_relaxed) * scale;
    }
    piece += units;
    left -= units;
  }
  *aWidth = sum;
  return S_OK;
}

HRESULT GLFont::Print(BSTR aString, GLDATA_POINT* aStart) noexcept {
  if (aStart == nullptr) return E_INVALIDARG;
  const GLSiteLink::Use site(m_pContext.get());
  if (!site || !site->IsCurrentHere()) return Refuse("it is called outside a pass");
  const GLErrorCheck check("IGLFont::Print");
  if (!site->IsListKeyValid(m_uListKey)) {
    if (site->IsListOpen()) return Refuse("the font cannot be built while a display list is open");
    if (!EnsureLists(*site)) return E_FAIL;
  }
  char stack[kStackText];
  const Text text = Convert(aString, stack, kStackText);
  if (text.m_iLength == 0) return S_OK;
  site->MarkListUnbounded();

  Position(*aStart);
  if (!m_bVendorChecked) {
    const auto* vendor = reinterpret_cast<const char*>(glGetString(GL_VENDOR));
    m_bListArray = vendor != nullptr && std::strstr(vendor, "Microsoft") != nullptr;
    m_bVendorChecked = true;
  }
  const bool drawn = CallLists(site->GetListBase(m_uListKey), text);
  if (IsPlacedByMatrix()) glPopMatrix();
  if (m_bInternal) glPopAttrib();
  return drawn ? S_OK : E_OUTOFMEMORY;
}

// Text that cannot be converted, because of its length or for lack of memory, is treated as empty.
GLFont::Text GLFont::Convert(const GLWCHAR* aString, char* aStack, int aRoom) noexcept {
  const std::size_t units = LengthOf(aString);
  if (units == 0 || units > kLongestText) return {aStack, 0};
  if (units <= static_cast<std::size_t>(aRoom)) {
    if (const int count = ToBytes(aString, units, aStack, aRoom); count > 0) {
      return {aStack, static_cast<std::size_t>(count)};
    }
  }
  const int count = ToBytes(aString, units, nullptr, 0);
  if (count <= 0) return {aStack, 0};
  try {
    if (m_vText.size() < static_cast<std::size_t>(count)) m_vText.resize(static_cast<std::size_t>(count));
  } catch (...) {
    return {aStack, 0};
  }
  ToBytes(aString, units, m_vText.data(), count);
  return {m_vText.data(), static_cast<std::size_t>(count)};
}

void GLFont::Position(const GLDATA_POINT& aStart) const noexcept {
  if (!IsPlacedByMatrix()) {
    glRasterPos3d(aStart.x, aStart.y, aStart.z);
    return;
  }
  glMatrixMode(GL_MODELVIEW);
  glPushMatrix();
  glTranslated(aStart.x, aStart.y, aStart.z);
  glRotatef(-m_fEscapement, 0.0f, 0.0f, 1.0f);
  if (m_bTrueType) {
    glScalef(m_fWidth, m_fHeight, m_fExtrusionZ);
    return;
  }
  glPushAttrib(GL_POLYGON_BIT | GL_ENABLE_BIT | GL_TEXTURE_BIT);
  glEnable(GL_TEXTURE_2D);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);  // remains set after Print; the enable does not
  glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
  glBindTexture(GL_TEXTURE_2D, m_uTexture);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
  glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
}

// One vendor's generic driver needs the list names as an array. Other drivers take the bytes and a list base.
bool GLFont::CallLists(GLuint aBase, const Text& aText) noexcept {
  const auto count = static_cast<GLsizei>(aText.m_iLength);
  if (!m_bListArray) {
    glPushAttrib(GL_LIST_BIT);
    glListBase(aBase);
    glCallLists(count, GL_UNSIGNED_BYTE, aText.m_pBytes);
    glPopAttrib();
    return true;
  }
  try {
    if (m_vListNames.size() < aText.m_iLength) m_vListNames.resize(aText.m_iLength);
  } catch (...) {
    return false;
  }
  for (std::size_t i = 0; i < aText.m_iLength; ++i) {
    m_vListNames[i] = aBase + static_cast<unsigned char>(aText.m_pBytes[i]);
  }
  glCallLists(count, GL_UNSIGNED_INT, m_vListNames.data());
  return true;
}

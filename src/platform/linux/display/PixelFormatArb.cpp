// WGL_ARB_extensions_string and WGL_ARB_pixel_format for all displays. Formats are chosen by colour, depth
// and samples. The attribute numbers are from WGL_ARB_pixel_format and WGL_ARB_multisample. Any thread.

#include "platform/linux/display/PixelFormatArb.h"

#include <string_view>

#include "platform/linux/DeviceContextRecord.h"
#include "platform/linux/display/DisplayServer.h"

namespace {

constexpr int kDrawToWindow = 0x2001, kDoubleBuffer = 0x2011, kSupportOpenGL = 0x2010, kColorBits = 0x2014,
              kDepthBits = 0x2022, kSampleBuffers = 0x2041, kSamples = 0x2042;

const char* GetExtensionsString(HDC) noexcept {
  const auto display = TheDisplay();
  return display != nullptr ? display->ExtensionString() : nullptr;
}

BOOL ChooseFormat(HDC hDC, const int* pAttributes, const FLOAT*, UINT nMax, int* pFormat,
                  UINT* pFound) noexcept {
  const auto display = TheDisplay();
  if (display == nullptr || hDC == nullptr || pFound == nullptr) return FALSE;
  PIXELFORMATDESCRIPTOR request{};
  int samples = 0;
  for (const int* pair = pAttributes; pair != nullptr && pair[0] != 0; pair += 2) {
    switch (pair[0]) {
      case kDrawToWindow:
        request.dwFlags |= PFD_DRAW_TO_WINDOW;
        break;
      case kDoubleBuffer:
        request.dwFlags |= PFD_DOUBLEBUFFER;
        break;
      case kSupportOpenGL:
        request.dwFlags |= PFD_SUPPORT_OPENGL;
        break;
      case kColorBits:
        request.cColorBits = static_cast<BYTE>(pair[1]);
        break;
      case kDepthBits:
        request.cDepthBits = static_cast<BYTE>(pair[1]);
        break;
      case kSamples:
        samples = pair[1];
        break;
      default:
        break;
    }
  }
  const int format = samples > 0 ? display->ChooseMultisampleFormat(hDC->Kind(), request, samples)
                                 : display->ChooseFormat(hDC->Kind(), request);
  *pFound = format != 0 ? 1 : 0;
  if (format != 0 && nMax > 0) *pFormat = format;
  return TRUE;
}

BOOL GetAttribiv(HDC hDC, int iFormat, int, UINT nAttributes, const int* pAttributes, int* pValues) noexcept {
  const DisplayFormat* format = hDC != nullptr ? hDC->FindFormat(iFormat) : nullptr;
  if (format == nullptr) return FALSE;
  for (UINT i = 0; i < nAttributes; ++i) {
    switch (pAttributes[i]) {
      case kColorBits:
        pValues[i] = format->m_Description.cColorBits;
        break;
      case kDepthBits:
        pValues[i] = format->m_Description.cDepthBits;
        break;
      case kSampleBuffers:
        pValues[i] = format->m_iSamples > 0 ? 1 : 0;
        break;
      case kSamples:
        pValues[i] = format->m_iSamples;
        break;
      default:
        return FALSE;
    }
  }
  return TRUE;
}

BOOL GetAttribfv(HDC hDC, int iFormat, int aLayer, UINT nAttributes, const int* pAttributes,
                 FLOAT* pValues) noexcept {
  for (UINT i = 0; i < nAttributes; ++i) {
    int value = 0;
    if (!GetAttribiv(hDC, iFormat, aLayer, 1, pAttributes + i, &value)) return FALSE;
    pValues[i] = static_cast<FLOAT>(value);
  }
  return TRUE;
}

template <class Function>
PROC AsProc(Function aFunction) noexcept {
  return reinterpret_cast<PROC>(aFunction);
}

}  // namespace

PROC PixelFormatArbEntryPoint(const char* aName) noexcept {
  const std::string_view name = aName;
  if (name == "wglGetExtensionsStringARB") return AsProc(&GetExtensionsString);
  if (name == "wglChoosePixelFormatARB") return AsProc(&ChooseFormat);
  if (name == "wglGetPixelFormatAttribivARB") return AsProc(&GetAttribiv);
  if (name == "wglGetPixelFormatAttribfvARB") return AsProc(&GetAttribfv);
  return nullptr;
}

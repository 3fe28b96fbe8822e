// Pixel formats of a device context, from the numbered formats of its display. Any thread.

#include "platform/PixelFormat.h"

#include "platform/linux/DeviceContextRecord.h"

int ChoosePixelFormat(HDC hDC, const PIXELFORMATDESCRIPTOR* pRequest) noexcept {
  if (hDC == nullptr || hDC->m_pDisplay == nullptr || pRequest == nullptr) return 0;
  return hDC->m_pDisplay->ChooseFormat(hDC->Kind(), *pRequest);
}

BOOL SetPixelFormat(HDC hDC, int iFormat, const PIXELFORMATDESCRIPTOR*) noexcept {
  if (hDC == nullptr || hDC->FindFormat(iFormat) == nullptr) return FALSE;
  if (hDC->m_iFormat != 0 && hDC->m_iFormat != iFormat) return FALSE;  // can be set only once
  hDC->m_iFormat = iFormat;
  return TRUE;
}

int DescribePixelFormat(HDC hDC, int iFormat, UINT nBytes, PIXELFORMATDESCRIPTOR* pFormat) noexcept {
  if (hDC == nullptr || hDC->m_pDisplay == nullptr) return 0;
  const int count = static_cast<int>(hDC->m_pDisplay->Formats(hDC->Kind()).size());
  if (pFormat == nullptr) return count;
  const DisplayFormat* format = hDC->FindFormat(iFormat);
  if (format == nullptr || nBytes < sizeof(*pFormat)) return 0;
  *pFormat = format->m_Description;
  return count;
}

BOOL SwapBuffers(HDC hDC) noexcept {
  if (hDC == nullptr || hDC->m_pSurface == nullptr) return FALSE;
  return hDC->m_pDisplay->Swap(hDC->m_hWnd, *hDC->m_pSurface) ? TRUE : FALSE;
}

// WGLExtensions: the probe for multisample formats, with a hidden window and a dummy rendering context of its
// own. One a process, made at the first accelerated selection; GetInstance and ChooseMultisampleFormat may be
// called from any thread.

#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <string>

#include "platform/DeviceContext.h"
#include "platform/PixelFormat.h"
#include "platform/RenderingContext.h"
#include "platform/Window.h"

namespace Zentig {

class WGLExtensions {
 public:
  /// The one instance; the first call makes it. @return null when there is no memory
  static WGLExtensions* GetInstance(HINSTANCE hInstance) noexcept;
  /// Ends the instance, as the module's end does.
  static void DeleteInstance() noexcept;

  explicit WGLExtensions(HINSTANCE hInstance);
  ~WGLExtensions();
  /// Whether the calling thread can end the probe: on Windows only the thread that made it.
  bool CanEndHere() const noexcept;
  WGLExtensions(const WGLExtensions&) = delete;
  WGLExtensions& operator=(const WGLExtensions&) = delete;

  /// A format with a multisample buffer for the request, by the counts 32, 16, 8, 6, 4, 2 in this order.
  /// @param hDC         the window's; null asks by the probe's own
  /// @param iMaxSamples counts above it are left out; 0 for no limit
  /// @return the format's number; 0 for none
  int ChooseMultisampleFormat(HDC hDC, const PIXELFORMATDESCRIPTOR& aRequest, LONG iMaxSamples) noexcept;

 private:
  using GetExtensionsString = const char* (*)(HDC);
  using GetPixelFormatAttribiv = BOOL (*)(HDC, int, int, UINT, const int*, int*);
  using GetPixelFormatAttribfv = BOOL (*)(HDC, int, int, UINT, const int*, FLOAT*);
  using ChooseFormat = BOOL (*)(HDC, const int*, const FLOAT*, UINT, int*, UINT*);

  static LRESULT ProbeWindowProc(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam) noexcept;
  void OnCreate(HWND hWnd) noexcept;
  void OnDestroy() noexcept;
  void ReadExtensions();
  bool MakeDummyContext();
  void SplitExtensions();
  void FetchEntryPoints();

  HINSTANCE m_hInstance;
  HWND m_hWnd = nullptr;    // from WM_CREATE to WM_DESTROY
  HWND m_hProbe = nullptr;  // the same, for the destructor
  HDC m_hDC = nullptr;
  HGLRC m_hRC = nullptr;
  std::string m_strExtensions;
  std::set<std::string, std::less<>> m_setExtensions;
  std::map<DWORD, int> m_mapFlagAttributes;
  GetPixelFormatAttribiv m_pfnGetPixelFormatAttribiv = nullptr;
  GetPixelFormatAttribfv m_pfnGetPixelFormatAttribfv = nullptr;
  ChooseFormat m_pfnChoosePixelFormat = nullptr;
  std::mutex m_Lock;  // one question at a time
};

}  // namespace Zentig

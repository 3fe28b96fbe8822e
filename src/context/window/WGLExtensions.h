// WGLExtensions: the probe for multisample formats, with a hidden window and a dummy rendering context. One
// per process, created at the first accelerated selection of a format. Any thread may call GetInstance and
// ChooseMultisampleFormat.

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
  /// Returns the only instance. The first call creates it.
  /// @return null if memory is insufficient
  static WGLExtensions* GetInstance(HINSTANCE hInstance) noexcept;
  /// Destroys the instance. Called at the module's end.
  static void DeleteInstance() noexcept;

  explicit WGLExtensions(HINSTANCE hInstance);
  ~WGLExtensions();
  /// Returns whether the calling thread can destroy the probe. On Windows only the thread that created it
  /// can.
  bool CanEndHere() const noexcept;
  WGLExtensions(const WGLExtensions&) = delete;
  WGLExtensions& operator=(const WGLExtensions&) = delete;

  /// Returns a format with a multisample buffer for the request. Tries 32, 16, 8, 6, 4 and 2 samples, in this
  /// order.
  /// @param aDC         device context of the window; null uses the probe's
  /// @param iMaxSamples largest number of samples; 0 for no limit
  /// @return the index of the format; 0 for none
  int ChooseMultisampleFormat(HDC aDC, const PIXELFORMATDESCRIPTOR& aRequest, LONG iMaxSamples) noexcept;

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
  HWND m_hWnd = nullptr;    // valid from WM_CREATE to WM_DESTROY
  HWND m_hProbe = nullptr;  // same window, for the destructor
  HDC m_hDC = nullptr;
  HGLRC m_hRC = nullptr;
  std::string m_strExtensions;
  std::set<std::string, std::less<>> m_setExtensions;
  std::map<DWORD, int> m_mapFlagAttributes;
  GetPixelFormatAttribiv m_pfnGetPixelFormatAttribiv = nullptr;
  GetPixelFormatAttribfv m_pfnGetPixelFormatAttribfv = nullptr;
  ChooseFormat m_pfnChoosePixelFormat = nullptr;
  std::mutex m_Lock;  // serialises ChooseMultisampleFormat
};

}  // namespace Zentig

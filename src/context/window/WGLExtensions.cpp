// WGLExtensions: the probe for multisample formats. Constants and meanings: WGL_ARB_pixel_format,
// WGL_ARB_multisample, WGL_ARB_extensions_string. Any thread; the probe's window procedure runs while its
// window is created.

#include "context/window/WGLExtensions.h"

#include <algorithm>
#include <memory>
#include <vector>

#include "component/ModuleEnd.h"
#include "platform/ProcessWide.h"

namespace Zentig {

namespace {

constexpr char kWindowClass[] = "Zentig::WGLExtensions::WindowClass";
constexpr char kPixelFormatExtension[] = "WGL_ARB_pixel_format";

constexpr int WGL_DRAW_TO_WINDOW_ARB = 0x2001, WGL_DRAW_TO_BITMAP_ARB = 0x2002, WGL_NEED_PALETTE_ARB = 0x2004,
              WGL_NEED_SYSTEM_PALETTE_ARB = 0x2005, WGL_SWAP_LAYER_BUFFERS_ARB = 0x2006,
              WGL_SUPPORT_GDI_ARB = 0x200F, WGL_SUPPORT_OPENGL_ARB = 0x2010, WGL_DOUBLE_BUFFER_ARB = 0x2011,
              WGL_STEREO_ARB = 0x2012, WGL_PIXEL_TYPE_ARB = 0x2013, WGL_COLOR_BITS_ARB = 0x2014,
              WGL_DEPTH_BITS_ARB = 0x2022, WGL_GENERIC_ACCELERATION_ARB = 0x2026,
              WGL_SWAP_EXCHANGE_ARB = 0x2028, WGL_SWAP_COPY_ARB = 0x2029, WGL_TYPE_RGBA_ARB = 0x202B,
              WGL_TYPE_COLORINDEX_ARB = 0x202C, WGL_SAMPLE_BUFFERS_ARB = 0x2041, WGL_SAMPLES_ARB = 0x2042;
constexpr int kSampleCounts[] = {32, 16, 8, 6, 4, 2};
constexpr BYTE kMostBits = 16;  // limit of the requested bits, which are minimum values in this search

struct Instance {
  std::mutex m_Lock;
  std::unique_ptr<WGLExtensions> m_pProbe;
};

constinit ProcessWide<Instance> g_Instance;

template <class Function>
Function EntryPoint(const char* aName) noexcept {
  return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(wglGetProcAddress(aName)));
}

}  // namespace

WGLExtensions* WGLExtensions::GetInstance(HINSTANCE hInstance) noexcept {
  Instance& instance = g_Instance.Get();
  const std::scoped_lock lock(instance.m_Lock);
  try {
    if (instance.m_pProbe == nullptr) {
      ModuleEnd::Register(DeleteInstance);
      instance.m_pProbe = std::make_unique<WGLExtensions>(hInstance);
    }
    return instance.m_pProbe.get();
  } catch (...) {
    return nullptr;
  }
}

void WGLExtensions::DeleteInstance() noexcept {
  Instance& instance = g_Instance.Get();
  const std::scoped_lock lock(instance.m_Lock);
  // If the calling thread cannot destroy the window, a later call does it: at the next end or detach of the
  // module.
  if (instance.m_pProbe != nullptr && instance.m_pProbe->CanEndHere()) instance.m_pProbe.reset();
}

WGLExtensions::WGLExtensions(HINSTANCE hInstance) : m_hInstance(hInstance) {
  WNDCLASSA windowClass{};
  windowClass.lpszClassName = kWindowClass;
  windowClass.style = CS_OWNDC;
  windowClass.lpfnWndProc = ProbeWindowProc;
  windowClass.hInstance = hInstance;
  RegisterClassA(&windowClass);
  m_hProbe = CreateWindowExA(0, kWindowClass, "WGLExtensions", 0, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                             CW_USEDEFAULT, nullptr, nullptr, hInstance, this);
  m_mapFlagAttributes = {{PFD_DOUBLEBUFFER, WGL_DOUBLE_BUFFER_ARB},
                         {PFD_STEREO, WGL_STEREO_ARB},
                         {PFD_DRAW_TO_WINDOW, WGL_DRAW_TO_WINDOW_ARB},
                         {PFD_DRAW_TO_BITMAP, WGL_DRAW_TO_BITMAP_ARB},
                         {PFD_SUPPORT_GDI, WGL_SUPPORT_GDI_ARB},
                         {PFD_SUPPORT_OPENGL, WGL_SUPPORT_OPENGL_ARB},
                         {PFD_NEED_PALETTE, WGL_NEED_PALETTE_ARB},
                         {PFD_NEED_SYSTEM_PALETTE, WGL_NEED_SYSTEM_PALETTE_ARB},
                         {PFD_SWAP_EXCHANGE, WGL_SWAP_EXCHANGE_ARB},
                         {PFD_SWAP_COPY, WGL_SWAP_COPY_ARB},
                         {PFD_SWAP_LAYER_BUFFERS, WGL_SWAP_LAYER_BUFFERS_ARB},
                         {PFD_GENERIC_ACCELERATED, WGL_GENERIC_ACCELERATION_ARB}};
}

bool WGLExtensions::CanEndHere() const noexcept { return m_hProbe == nullptr || CanDestroyHere(m_hProbe); }

WGLExtensions::~WGLExtensions() {
  if (m_hProbe != nullptr) {
    SetWindowLongPtrA(m_hProbe, GWLP_USERDATA,
                      0);  // waits for a running procedure, which the loss of the server may have started
    OnDestroy();
    DestroyWindow(m_hProbe);
  }
  UnregisterClassA(kWindowClass, m_hInstance);
}

LRESULT WGLExtensions::ProbeWindowProc(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam) noexcept {
  if (uMsg == WM_CREATE) {
    auto* made = static_cast<WGLExtensions*>(reinterpret_cast<const CREATESTRUCTA*>(lParam)->lpCreateParams);
    SetWindowLongPtrA(hWnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(made));
    if (made != nullptr) made->OnCreate(hWnd);
    return 0;
  }
  auto* probe = reinterpret_cast<WGLExtensions*>(GetWindowLongPtrA(hWnd, GWLP_USERDATA));
  if (probe == nullptr || uMsg != WM_DESTROY) return DefWindowProcA(hWnd, uMsg, wParam, lParam);
  probe->OnDestroy();
  return 0;
}

void WGLExtensions::OnCreate(HWND hWnd) noexcept {
  m_hWnd = hWnd;
  m_hDC = GetDC(hWnd);
  try {
    ReadExtensions();
  } catch (...) {
    m_setExtensions.clear();
  }
}

void WGLExtensions::OnDestroy() noexcept {
  if (m_hRC != nullptr) {
    wglMakeCurrent(nullptr, nullptr);
    wglDeleteContext(m_hRC);
    m_hRC = nullptr;
  }
  if (m_hDC != nullptr) ReleaseDC(m_hWnd, m_hDC);
  m_hDC = nullptr;
  m_hWnd = nullptr;
}

// A failure is not reported: the set then lacks the extension.
void WGLExtensions::ReadExtensions() {
  if (!MakeDummyContext()) return;
  auto getString = EntryPoint<GetExtensionsString>("wglGetExtensionsStringARB");
  if (getString == nullptr) getString = EntryPoint<GetExtensionsString>("wglGetExtensionsStringEXT");
  if (getString != nullptr) {
    const char* names = getString(m_hDC);
    m_strExtensions = names != nullptr ? names : "";
    SplitExtensions();
  }
  if (m_setExtensions.contains(kPixelFormatExtension)) FetchEntryPoints();
}

bool WGLExtensions::MakeDummyContext() {
  PIXELFORMATDESCRIPTOR request{};
  request.nSize = sizeof(request);
  request.nVersion = 1;
  request.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_GENERIC_ACCELERATED;
  request.iPixelType = PFD_TYPE_RGBA;
  const int format = ChoosePixelFormat(m_hDC, &request);
  if (format == 0) return false;
  PIXELFORMATDESCRIPTOR bare{};
  bare.nSize = sizeof(bare);
  bare.nVersion = 1;
  if (!SetPixelFormat(m_hDC, format, &bare)) return false;
  m_hRC = wglCreateContext(m_hDC);
  return m_hRC != nullptr && wglMakeCurrent(m_hDC, m_hRC) != FALSE;
}

// Accepts only names that are followed by a blank.
void WGLExtensions::SplitExtensions() {
  std::size_t start = 0;
  for (std::size_t blank = 0; (blank = m_strExtensions.find(' ', start)) != std::string::npos;
       start = blank + 1) {
    m_setExtensions.insert(m_strExtensions.substr(start, blank - start));
  }
}

void WGLExtensions::FetchEntryPoints() {
  m_pfnGetPixelFormatAttribiv = EntryPoint<GetPixelFormatAttribiv>("wglGetPixelFormatAttribivARB");
  m_pfnGetPixelFormatAttribfv = EntryPoint<GetPixelFormatAttribfv>("wglGetPixelFormatAttribfvARB");
  m_pfnChoosePixelFormat = EntryPoint<ChooseFormat>("wglChoosePixelFormatARB");
  if (m_pfnGetPixelFormatAttribiv == nullptr || m_pfnGetPixelFormatAttribfv == nullptr ||
      m_pfnChoosePixelFormat == nullptr) {
    m_setExtensions.erase(m_setExtensions.find(kPixelFormatExtension));
  }
}

int WGLExtensions::ChooseMultisampleFormat(HDC aDC, const PIXELFORMATDESCRIPTOR& aRequest,
                                           LONG iMaxSamples) noexcept {
  const std::scoped_lock lock(m_Lock);
  if (!m_setExtensions.contains(kPixelFormatExtension)) return 0;
  if (aRequest.iPixelType > PFD_TYPE_COLORINDEX) return 0;
  std::vector<int> attributes;
  try {
    for (const auto& [flag, attribute] : m_mapFlagAttributes) {
      if ((aRequest.dwFlags & flag) != 0) attributes.insert(attributes.end(), {attribute, 1});
    }
    const int type = aRequest.iPixelType == PFD_TYPE_RGBA ? WGL_TYPE_RGBA_ARB : WGL_TYPE_COLORINDEX_ARB;
    attributes.insert(attributes.end(),
                      {WGL_PIXEL_TYPE_ARB, type, WGL_COLOR_BITS_ARB, std::min(aRequest.cColorBits, kMostBits),
                       WGL_DEPTH_BITS_ARB, std::min(aRequest.cDepthBits, kMostBits), WGL_SAMPLE_BUFFERS_ARB,
                       1, WGL_SAMPLES_ARB, 0, 0, 0});
  } catch (...) {
    return 0;
  }
  // Prefers the window's device context: the display of the probe may be closed, or be another display.
  const HDC dc = aDC != nullptr ? aDC : m_hDC;
  int& samples = *(attributes.end() - 3);
  const FLOAT noFloats[2] = {0.0f, 0.0f};
  for (const int count : kSampleCounts) {
    if (iMaxSamples != 0 && count > iMaxSamples) continue;
    samples = count;
    int format = 0;
    UINT found = 0;
    if (m_pfnChoosePixelFormat(dc, attributes.data(), noFloats, 1, &format, &found) && found > 0)
      return format;
  }
  return 0;
}

}  // namespace Zentig

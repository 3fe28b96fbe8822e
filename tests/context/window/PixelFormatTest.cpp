// Selection of pixel formats, switches and palettes, the probe for multisample formats, and the placement of
// the parent. Scripted display, no GL.

#include "context/window/PixelFormatSelection.h"
#include "context/window/WGLExtensions.h"
#include "support/ScriptedDisplay.h"
#include "support/TestRegistry.h"

namespace {

constexpr DWORD kFlags = PFD_DOUBLEBUFFER | PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL;

DisplayFormat Format(DWORD aFlags, BYTE aType, BYTE aColor, BYTE aDepth, BYTE aLayer = PFD_MAIN_PLANE) {
  PIXELFORMATDESCRIPTOR description{};
  description.dwFlags = aFlags;
  description.iPixelType = aType;
  description.cColorBits = aColor;
  description.cDepthBits = aDepth;
  description.iLayerType = aLayer;
  return {description, 0, nullptr};
}

HWND Number(std::uintptr_t aNumber) { return reinterpret_cast<HWND>(aNumber); }

/// A separate registry. The switches are unread at its start and its end.
class Registry : public TestRegistry {
 public:
  Registry() { Forget(); }
  ~Registry() { Forget(); }
  void Write(const char* aFile, const std::string& aKey, const std::string& aValues) const {
    Put(aFile, "Windows Registry Editor Version 5.00\n\n[" + aKey + "]\n" + aValues);
  }

 private:
  static void Forget() {
    g_bAccelSwitchesRead = false;
    g_bAccel = g_bMultiAccel = true;
  }
};

}  // namespace

TEST(PixelFormatScan, TakesTheBestScoreFromTheHighestIndex) {
  const DisplayGuard guard;
  const auto display = ScriptedDisplay::Set();
  const auto good = Format(kFlags, PFD_TYPE_RGBA, 32, 32);
  struct {
    const char* name;
    std::vector<DisplayFormat> formats;
    int best;
  } const cases[] = {
      {"all equal: the highest index", {good, good, good}, 3},
      {"no format passes: 1", {Format(0, 0, 32, 32), Format(PFD_SUPPORT_OPENGL, 0, 32, 32)}, 1},
      {"colour counts more than depth", {Format(kFlags, 0, 32, 24), Format(kFlags, 0, 24, 32)}, 1},
      {"the type counts more than both", {Format(kFlags, 0, 16, 16), Format(kFlags, 1, 32, 32)}, 1},
      {"a format without depth is worse", {Format(kFlags, 1, 16, 16), Format(kFlags, 0, 32, 0)}, 1},
      {"another layer does not pass", {good, Format(kFlags, 0, 32, 32, 1)}, 1},
      {"further flags have no effect",
       {Format(kFlags, 0, 24, 32), Format(kFlags | PFD_STEREO, 0, 32, 32)},
       2},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    display->m_vWindowFormats = c.formats;
    const HDC hDC = GetDC(nullptr);
    EXPECT_EQ(FindPixelFormat(hDC, PixelFormatRequest()), c.best);
    ReleaseDC(nullptr, hDC);
  }
}

TEST(Palette, FollowsTheFormatsShiftsAndWidths) {
  PIXELFORMATDESCRIPTOR format{};
  format.cColorBits = 8;
  format.cRedBits = 3;
  format.cGreenBits = 3;
  format.cBlueBits = 2;
  format.cGreenShift = 3;
  format.cBlueShift = 6;
  const auto entries = PaletteEntries(format);
  ASSERT_EQ(entries.size(), 256u);
  EXPECT_EQ(entries[2].peRed, 72) << "72.86 is truncated";
  EXPECT_EQ(entries[255].peRed, 255);
  EXPECT_EQ(entries[255].peGreen, 255);
  EXPECT_EQ(entries[255].peBlue, 255);
  EXPECT_EQ(entries[0x40].peBlue, 85);
  format.cColorBits = 24;
  EXPECT_TRUE(PaletteEntries(format).empty());
}

TEST(Palette, IsRealisedAtInitializeAndAtMessages) {
  const DisplayGuard guard;
  const auto display = ScriptedDisplay::Set();
  display->m_vWindowFormats = HeadlessDisplay::Open()->Formats(SurfaceKind::kWindow);
  for (DisplayFormat& format : display->m_vWindowFormats) {
    format.m_Description.dwFlags |= PFD_NEED_PALETTE;
    format.m_Description.cColorBits = 8;
  }
  display->m_iChosen = 1;
  const auto context = GLCreate<IGLContext>(CLSID_GLContext);
  ASSERT_EQ(context->Initialize(0), S_OK);
  EXPECT_EQ(display->m_iRealized, 1);
  ULONG_PTR number = 0;
  context->GetWindow(&number);
  const HWND window = Number(number);
  PostMessageA(window, WM_PALETTECHANGED, number, 0);  // the window's own message: no effect
  PostMessageA(window, WM_PALETTECHANGED, number + 1, 0);
  EXPECT_TRUE(Eventually([&] { return display->m_iRealized == 2; }));
  PostMessageA(window, WM_QUERYNEWPALETTE, 0, 0);
  EXPECT_TRUE(Eventually([&] { return display->m_iRealized == 3; }));
}

TEST(Switches, ChooseScanAndSamples) {
  struct {
    const char* machine;
    const char* user;
    LONG hostFsaa;
    bool secondObject;
    bool scans;          // the format of the scan is used
    LONG fsaa, samples;  // the properties afterwards
  } const cases[] = {
      {"", "", 0, false, false, 0, 4},
      {"\"AccelOff\"=dword:00000001\n", "", 1, false, true, 1, 4},
      {"\"AccelOff\"=dword:00000000\n", "", 0, false, false, 0, 4},
      {"\"AccelOff\"=\"1\"\n", "", 0, false, false, 0, 4},
      {"\"MultiAccelOff\"=dword:00000001\n", "", 0, false, false, 0, 4},
      {"\"MultiAccelOff\"=dword:00000001\n", "", 0, true, true, 0, 4},
      {"", "\"FSAA\"=dword:00000002\n\"FSAALevel\"=dword:00000008\n", 0, false, false, 1, 8},
      {"", "\"FSAA\"=dword:00000001\n", 0, false, false, 1, 4},
      {"", "\"FSAA\"=dword:00000000\n\"FSAALevel\"=dword:00000008\n", 1, false, false, 1, 4},
      {"", "\"FSAA\"=\"1\"\n", 0, false, false, 0, 4},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.machine) + c.user);
    const Registry registry;
    registry.Write("machine.reg", "HKEY_LOCAL_MACHINE\\SOFTWARE\\Ostrel\\GL", c.machine);
    registry.Write("user.reg", "HKEY_CURRENT_USER\\SOFTWARE\\Talvane\\Korvex\\GL", c.user);
    const DisplayGuard guard;
    const auto display = ScriptedDisplay::Set();
    display->m_iChosen = 0;  // ChoosePixelFormat fails, so the result shows which way is taken
    const auto second = c.secondObject ? GLCreate<IGLContext>(CLSID_GLContext) : nullptr;
    const auto context = GLCreate<IGLContext>(CLSID_GLContext);
    const auto smoothing = context.As<IGLContext14_3>();
    smoothing->put_bFSAA(c.hostFsaa);
    EXPECT_EQ(context->Initialize(0), c.scans ? S_OK : E_FAIL);
    LONG fsaa = -1, samples = -1;
    smoothing->get_bFSAA(&fsaa);
    smoothing->get_lFSAAMaxSamples(&samples);
    EXPECT_EQ(fsaa, c.fsaa);
    EXPECT_EQ(samples, c.samples);
  }
}

TEST(MultisampleProbe, TriesSampleCountsDownwards) {
  struct {
    const char* extensions;
    std::vector<std::string> missing;
    LONG most;
    std::vector<int> asked;
    int format;
  } const cases[] = {
      {"WGL_ARB_pixel_format ", {}, 4, {4}, 40},
      {"WGL_ARB_pixel_format ", {}, 5, {4}, 40},
      {"WGL_ARB_pixel_format ", {}, 3, {2}, 0},
      {"WGL_ARB_pixel_format ", {}, 0, {32, 16, 8, 6, 4}, 40},
      {"WGL_ARB_pixel_format ", {}, 1, {}, 0},
      {"WGL_ARB_pixel_format ", {}, -4, {}, 0},
      {"WGL_A  WGL_ARB_pixel_format", {}, 4, {}, 0},
      {"WGL_ARB_pixel_format ", {"wglChoosePixelFormatARB"}, 4, {}, 0},
      {"WGL_ARB_pixel_format ", {"wglGetPixelFormatAttribfvARB"}, 4, {}, 0},
      {"WGL_ARB_pixel_format ", {"wglGetExtensionsStringARB"}, 4, {}, 0},
      {"", {}, 4, {}, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.extensions) + ", most " + std::to_string(c.most));
    const DisplayGuard guard;
    const auto display = ScriptedDisplay::Set();
    display->m_szExtensions = c.extensions;
    display->m_vMissing = c.missing;
    display->m_FormatOfSamples = {{4, 40}};
    Zentig::WGLExtensions probe(nullptr);
    EXPECT_EQ(probe.ChooseMultisampleFormat(nullptr, PixelFormatRequest(), c.most), c.format);
    EXPECT_EQ(display->m_vSamplesAsked, c.asked);
    PIXELFORMATDESCRIPTOR odd = PixelFormatRequest();
    odd.iPixelType = 2;
    EXPECT_EQ(probe.ChooseMultisampleFormat(nullptr, odd, c.most), 0);
  }
}

TEST(ParentOffTheWorkArea, IsMovedToTheOriginDuringInitialize) {
  const HWND top = Number(0x5000), parent = Number(0x5001);
  struct {
    const char* name;
    RECT parent;
    bool moves;
  } const cases[] = {
      {"inside", {10, 10, 200, 200}, false},   {"left", {-1, 10, 200, 200}, true},
      {"bottom", {10, 700, 200, 801}, true},   {"right only", {900, 10, 1100, 200}, false},
      {"top only", {10, -5, 200, 200}, false}, {"right and top", {900, -5, 1100, 200}, true},
  };
  for (const bool windowFails : {false, true}) {
    for (const auto& c : cases) {
      SCOPED_TRACE(c.name);
      const DisplayGuard guard;
      const auto display = ScriptedDisplay::Set();
      const RECT frame = {c.parent.left - 4, c.parent.top - 20, c.parent.right + 4, c.parent.bottom + 4};
      display->m_Parents = {{top, frame}, {parent, c.parent}};
      display->m_ParentOf = {{parent, top}};
      const auto context = GLCreate<IGLContext>(CLSID_GLContext);
      display->m_bMakesWindows = !windowFails;
      EXPECT_EQ(context->Initialize(reinterpret_cast<ULONG_PTR>(parent)), windowFails ? E_FAIL : S_OK);
      const int width = frame.right - frame.left, height = frame.bottom - frame.top;
      using Moves = std::vector<ScriptedDisplay::Move>;
      EXPECT_EQ(display->m_vMoves,
                c.moves ? (Moves{{top, -4, -20, width, height}, {top, frame.left, frame.top, width, height}})
                        : Moves());
    }
  }
}

TEST(MessageHook, ForwardsColourChangesFromTheFirstTopLevelWindow) {
  const DisplayGuard guard;
  const auto display = ScriptedDisplay::Set();
  const HWND top = Number(0x5000), other = Number(0x6000);
  display->m_Parents = {{top, {0, 0, 100, 100}}, {other, {0, 0, 100, 100}}};
  const auto first = GLCreate<IGLContext>(CLSID_GLContext), second = GLCreate<IGLContext>(CLSID_GLContext);
  ASSERT_EQ(first->Initialize(reinterpret_cast<ULONG_PTR>(top)), S_OK);
  ASSERT_EQ(second->Initialize(reinterpret_cast<ULONG_PTR>(other)), S_OK);
  ULONG_PTR before[2] = {};
  first->GetWindow(&before[0]);
  second->GetWindow(&before[1]);
  const auto replaced = [&](const GLPtr<IGLContext>& context, ULONG_PTR old) {
    ULONG_PTR now = 0;
    context->GetWindow(&now);
    return now != 0 && now != old;
  };
  const int made = display->m_iMade;
  PostMessageA(other, WM_SYSCOLORCHANGE, 0, 0);
  PostMessageA(top, WM_SYSCOLORCHANGE, 0, 0);
  EXPECT_TRUE(Eventually([&] { return replaced(first, before[0]) && replaced(second, before[1]); }))
      << "all contexts are served, in any top-level window";
  EXPECT_EQ(display->m_iMade, made + 2) << "the other top-level window has no hook";
}

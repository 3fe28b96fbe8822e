// Windows and their procedures: which thread runs one, who waits for it, what the hook sees.

#include "platform/Window.h"

#include <gtest/gtest.h>

#include <atomic>
#include <climits>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/SystemInfo.h"
#include "support/Eventually.h"
#include "support/ScriptedDisplay.h"

namespace {

using namespace std::chrono_literals;
using Procedure = std::function<LRESULT(HWND, UINT, LPARAM)>;

constexpr char kClass[] = "WindowTest";
Procedure g_Procedure;

/// Registers a class whose procedure a test writes down.
class Windows : public testing::Test {
 protected:
  Windows() {
    WNDCLASSA windowClass{};
    windowClass.lpszClassName = kClass;
    windowClass.lpfnWndProc = [](HWND window, UINT message, WPARAM, LPARAM parameter) {
      return g_Procedure ? g_Procedure(window, message, parameter) : 0;
    };
    RegisterClassA(&windowClass);
  }
  ~Windows() override {
    UnregisterClassA(kClass, nullptr);
    g_Procedure = nullptr;
    SetDisplay(nullptr);
  }
  static HWND Make(void* aParameter = nullptr) {
    return CreateWindowExA(0, kClass, "", WS_POPUP, 0, 0, 8, 8, nullptr, nullptr, nullptr, aParameter);
  }

  std::shared_ptr<ScriptedDisplay> m_pDisplay = ScriptedDisplay::Set();
};

/// A procedure that stays in WM_PAINT until it is let go.
struct Held {
  LRESULT operator()(UINT aMessage) {
    if (aMessage != WM_PAINT) return 0;
    m_bEntered = true;
    while (m_bHeld) std::this_thread::sleep_for(1ms);
    m_bLeft = true;
    return 0;
  }
  std::atomic<bool> m_bEntered{false}, m_bHeld{true}, m_bLeft{false};
};

}  // namespace

TEST_F(Windows, AreToldOfTheirCreationBeforeItReturnsOnAnotherThread) {
  int parameter = 0;
  std::thread::id creator;
  g_Procedure = [&](HWND, UINT message, LPARAM create) -> LRESULT {
    if (message != WM_CREATE) return 0;
    creator = std::this_thread::get_id();
    EXPECT_EQ(reinterpret_cast<const CREATESTRUCTA*>(create)->lpCreateParams, &parameter);
    return 0;
  };
  const HWND window = Make(&parameter);
  ASSERT_NE(window, nullptr);
  EXPECT_NE(creator, std::thread::id());
  EXPECT_NE(creator, std::this_thread::get_id());
  DestroyWindow(window);
  g_Procedure = [](HWND, UINT message, LPARAM) -> LRESULT { return message == WM_CREATE ? -1 : 0; };
  EXPECT_EQ(Make(), nullptr) << "the procedure may refuse";
  RECT rect{};
  EXPECT_FALSE(GetWindowRect(m_pDisplay->m_hMade, &rect)) << "and the window goes again";
}

TEST_F(Windows, KeepTheirSizeAtTheEndsOfTheCoordinates) {
  for (const int far : {INT_MAX, INT_MIN + 1}) {
    const HWND window =
        CreateWindowExA(0, kClass, "", WS_POPUP, far, far, 60, 40, nullptr, nullptr, nullptr, nullptr);
    RECT rect{};
    ASSERT_TRUE(GetWindowRect(window, &rect));
    EXPECT_EQ(std::int64_t{rect.right} - rect.left, 60) << far;
    EXPECT_EQ(std::int64_t{rect.bottom} - rect.top, 40) << far;
    EXPECT_EQ(rect.left > 0, far > 0);
    DestroyWindow(window);
  }
}

TEST_F(Windows, KeepTheirUserDataUntilAProcedureElsewhereHasEnded) {
  Held held;
  g_Procedure = [&](HWND window, UINT message, LPARAM) {
    if (message == WM_PAINT) SetWindowLongPtrA(window, GWLP_USERDATA, 5);  // its own thread doesn't wait
    return held(message);
  };
  const HWND window = Make();
  PostMessageA(window, WM_PAINT, 0, 0);
  ASSERT_TRUE(Eventually([&] { return held.m_bEntered.load(); }));
  EXPECT_EQ(GetWindowLongPtrA(window, GWLP_USERDATA), 5);
  std::atomic<bool> cleared{false};
  std::thread host([&] {
    SetWindowLongPtrA(window, GWLP_USERDATA, 0);
    EXPECT_TRUE(held.m_bLeft);
    cleared = true;
  });
  std::this_thread::sleep_for(20ms);
  EXPECT_FALSE(cleared);
  held.m_bHeld = false;
  host.join();
  DestroyWindow(window);
}

TEST_F(Windows, EndOnTheCallersThreadWhileAProcedureRuns) {
  Held held;
  std::thread::id ender;
  g_Procedure = [&](HWND, UINT message, LPARAM) {
    if (message == WM_DESTROY) ender = std::this_thread::get_id();
    return held(message);
  };
  const HWND window = Make();
  PostMessageA(window, WM_PAINT, 0, 0);
  ASSERT_TRUE(Eventually([&] { return held.m_bEntered.load(); }));
  EXPECT_TRUE(DestroyWindow(window));
  EXPECT_FALSE(held.m_bLeft);
  EXPECT_EQ(ender, std::this_thread::get_id());
  EXPECT_FALSE(DestroyWindow(window));
  held.m_bHeld = false;
  EXPECT_TRUE(Eventually([&] { return held.m_bLeft.load(); }));
}

namespace {

std::atomic<int> g_iSeen{0};
std::atomic<HWND> g_hSeen{nullptr};

}  // namespace

TEST_F(Windows, AndOthersAreSeenByTheHookAfterTheProcedure) {
  std::atomic<bool> done{false};
  g_Procedure = [&](HWND, UINT message, LPARAM) -> LRESULT {
    if (message == WM_PAINT) done = true;
    return 0;
  };
  static std::atomic<bool>* s_pDone = &done;
  s_pDone = &done;
  const HHOOK hook = SetWindowsHookExA(
      WH_CALLWNDPROCRET,
      [](int, WPARAM, LPARAM seen) -> LRESULT {
        EXPECT_TRUE(*s_pDone);
        g_hSeen = reinterpret_cast<const CWPRETSTRUCT*>(seen)->hwnd;
        ++g_iSeen;
        return 0;
      },
      nullptr, 0);
  const HWND window = Make(), foreign = reinterpret_cast<HWND>(std::uintptr_t{0x5000});
  PostMessageA(window, WM_PAINT, 0, 0);
  EXPECT_TRUE(Eventually([&] { return g_hSeen == window; }));
  PostMessageA(foreign, WM_SYSCOLORCHANGE, 0, 0);
  EXPECT_TRUE(Eventually([&] { return g_hSeen == foreign; }));
  UnhookWindowsHookEx(hook);
  const int before = g_iSeen;
  done = false;
  PostMessageA(window, WM_PAINT, 0, 0);
  EXPECT_TRUE(Eventually([&] { return done.load(); }));
  EXPECT_EQ(g_iSeen, before);
  DestroyWindow(window);
}

namespace {

/// Gives every window after the first the same number, as a server that was started anew does.
struct RepeatingDisplay final : ScriptedDisplay {
  HWND MakeWindow(HWND, const RECT&) noexcept override {
    return reinterpret_cast<HWND>(std::uintptr_t{m_iMade++ == 0 ? 0x100u : 0x101u});
  }
  int m_iMade = 0;
};

}  // namespace

TEST_F(Windows, DontGetTheMessagesOfAFormerOneWithTheirNumber) {
  SetDisplay(std::make_shared<RepeatingDisplay>());
  Held held;
  std::atomic<int> destroyed{0};
  g_Procedure = [&](HWND, UINT message, LPARAM) {
    if (message == WM_DESTROY) ++destroyed;
    return held(message);
  };
  const HWND first = Make(), former = Make();
  PostMessageA(first, WM_PAINT, 0, 0);
  ASSERT_TRUE(Eventually([&] { return held.m_bEntered.load(); }));
  PostMessageA(former, WM_DESTROY, 0, 0);  // waits behind the first one's
  DestroyWindow(former);
  const HWND later = Make();
  ASSERT_EQ(later, former);
  held.m_bHeld = held.m_bEntered = false;
  PostMessageA(later, WM_PAINT, 0, 0);
  ASSERT_TRUE(Eventually([&] { return held.m_bEntered.load(); }));
  EXPECT_EQ(destroyed, 1);
  DestroyWindow(later);
  DestroyWindow(first);
}

TEST(Version, IsWhatTheDisplaySays) {
  for (const DWORD platform : {DWORD{1}, DWORD{2}}) {
    ScriptedDisplay::Set()->m_dwPlatformId = platform;
    OSVERSIONINFOA version{};
    EXPECT_FALSE(GetVersionExA(&version)) << "no size given";
    version.dwOSVersionInfoSize = sizeof(version);
    EXPECT_TRUE(GetVersionExA(&version));
    EXPECT_EQ(version.dwPlatformId, platform);
  }
  SetDisplay(nullptr);
}

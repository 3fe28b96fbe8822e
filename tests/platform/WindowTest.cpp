// Windows and their procedures: threads, waiting callers and the message hook. Scripted display, no GL.

#include "platform/Window.h"

#include "support/ScriptedDisplay.h"

namespace {

using namespace std::chrono_literals;
using Procedure = std::function<LRESULT(HWND, UINT, LPARAM)>;

constexpr char kClass[] = "WindowTest";
Procedure g_Procedure;

/// Registers a class whose procedure the test provides.
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

/// A procedure that stays in WM_PAINT until the test releases it.
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

TEST_F(Windows, GetCreationMessagesOnTheMessageThread) {
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
  EXPECT_FALSE(GetWindowRect(m_pDisplay->m_hMade, &rect)) << "the refused window is destroyed";
}

TEST_F(Windows, KeepTheirSizeAtTheLimitsOfCoordinates) {
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

TEST_F(Windows, KeepTheirUserDataUntilTheProcedureReturns) {
  Held held;
  g_Procedure = [&](HWND window, UINT message, LPARAM) {
    if (message == WM_PAINT)
      SetWindowLongPtrA(window, GWLP_USERDATA, 5);  // the thread of the procedure does not wait
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

TEST_F(Windows, CanBeDestroyedWhileTheProcedureRuns) {
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

// The window procedure and the message hook with messages of Windows. Wine.

#include "windows/Host.h"

namespace {

constexpr DWORD kMaximumWait = 3'600'000;  // a test that waits this long has failed
constexpr auto kDeliveryTime = std::chrono::milliseconds(300);

/// Two contexts in two top-level windows.
class Messages : public testing::Test {
 protected:
  void SetUp() override {
    for (int i = 0; i < 2; ++i) {
      m_Contexts[i] = m_Windows[i].MakeContext();
      ASSERT_TRUE(m_Contexts[i]);
    }
  }
  /// Delivers messages for a while. @return the number of queued messages of a kind for a window
  static int CountQueued(HWND aWindow, UINT aMessage, WPARAM aParameter) {
    int count = 0;
    const auto end = std::chrono::steady_clock::now() + kDeliveryTime;
    while (std::chrono::steady_clock::now() < end) {
      for (const MSG& message : Pump())
        count += message.hwnd == aWindow && message.message == aMessage && message.wParam == aParameter;
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return count;
  }

  const Apartment m_Apartment;
  HostWindow m_Windows[2];
  GLPtr<IGLContext> m_Contexts[2];
};

}  // namespace

TEST_F(Messages, PaintDrawsOneFrameAndValidates) {
  IGLViewer* viewer = AddViewer(*m_Contexts[0]);
  ASSERT_NE(viewer, nullptr);
  const auto reading = Read(*viewer);
  // The first frames may be drawn before Wine gives the drawable the window's size.
  ASSERT_TRUE(PumpUntil([&] { return reading->Frames() > 0 && reading->Covered() == 0; }));
  m_Contexts[0].As<IGLContext2>()->SetControlledDrawThread(1, kMaximumWait);
  CountQueued(nullptr, WM_NULL, 0);
  int before = reading->Frames();
  const auto painter = GLMake<Triangle>();
  m_Contexts[0]->AttachPainter(painter.Get());
  CountQueued(nullptr, WM_NULL, 0);
  ASSERT_EQ(reading->Frames(), before) << "no frame is requested";
  ASSERT_EQ(reading->Covered(), 0);

  const HWND child = WindowOf(*m_Contexts[0]);
  const RECT part = {10, 10, 20, 20};
  InvalidateRect(child, &part, FALSE);
  EXPECT_EQ(CountQueued(child, WM_PAINT, 0), 1) << "the window is validated";
  EXPECT_FALSE(GetUpdateRect(child, nullptr, FALSE));
  EXPECT_TRUE(PumpUntil([&] { return reading->Frames() == before + 1; }));
  EXPECT_GT(reading->Covered(), 1000) << "the whole picture, by one frame";
  EXPECT_EQ(SendMessageA(child, WM_ERASEBKGND, 0, 0), 1) << "the background is not erased";
}

TEST_F(Messages, ColourChangesRebuildAllContexts) {
  const HWND before[] = {WindowOf(*m_Contexts[0]), WindowOf(*m_Contexts[1])};
  const auto rebuilt = [&](int i) {
    const HWND now = WindowOf(*m_Contexts[i]);
    return now != nullptr && now != before[i];
  };
  SendMessageA(m_Windows[1].Handle(), WM_SYSCOLORCHANGE, 0, 0);
  CountQueued(nullptr, WM_NULL, 0);
  EXPECT_FALSE(rebuilt(0) || rebuilt(1));
  SendMessageA(m_Windows[0].Handle(), WM_SYSCOLORCHANGE, 0, 0);
  EXPECT_TRUE(PumpUntil([&] { return rebuilt(0) && rebuilt(1); }));
}

TEST_F(Messages, DestroyedParentStopsOnlyItsContext) {
  GLPtr<Reading> readings[2];
  for (int i = 0; i < 2; ++i) {
    IGLViewer* viewer = AddViewer(*m_Contexts[i]);
    ASSERT_NE(viewer, nullptr);
    readings[i] = Read(*viewer);
  }
  const auto bothDraw = [&, first = readings[0]->Frames(), second = readings[1]->Frames()] {
    return readings[0]->Frames() > first + 2 && readings[1]->Frames() > second + 2;
  };
  ASSERT_TRUE(PumpUntil(bothDraw));
  const HWND child = WindowOf(*m_Contexts[0]);
  m_Windows[0].Destroy();
  EXPECT_FALSE(IsWindow(child));
  const int stopped = readings[0]->Frames(), other = readings[1]->Frames();
  EXPECT_TRUE(PumpUntil([&] { return readings[1]->Frames() > other + 2; }));
  m_Contexts[0].As<IGLContext2>()->TriggerDrawThread();
  CountQueued(nullptr, WM_NULL, 0);
  EXPECT_EQ(readings[0]->Frames(), stopped);
  m_Contexts[0].Reset();  // a context without a window ends normally
}

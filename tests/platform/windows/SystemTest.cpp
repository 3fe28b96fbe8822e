// Operations of Windows that the platform layer replaces on Linux: thread priorities and the version. Wine.

#include "platform/SystemInfo.h"
#include "platform/ThreadPriority.h"
#include "platform/Window.h"
#include "support/Test.h"

TEST(System, SetsTheNearestPriority) {
  std::thread([] {
    const int before = GetThreadPriority(GetCurrentThread());
    const struct {
      int m_iAsked, m_iNearest;
    } cases[] = {{0, 0},       {-1, -1}, {-2, -2}, {-8, -2}, {-9, -15},
                 {-1000, -15}, {1, 1},   {2, 2},   {8, 2},   {9, 15}};
    for (const auto& [asked, nearest] : cases) {
      EXPECT_TRUE(SetPriorityOfThread(ThisThreadNumber(), asked)) << asked;
      EXPECT_EQ(GetThreadPriority(GetCurrentThread()), nearest) << asked;
    }
    SetPriorityOfThread(ThisThreadNumber(), before);
  }).join();
  EXPECT_FALSE(SetPriorityOfThread(0x7FFFFFFF, -1)) << "no such thread";
}

TEST(System, SupportsOffscreenDrawing) {
  OSVERSIONINFOA info{};
  info.dwOSVersionInfoSize = sizeof(info);
  ASSERT_TRUE(GetVersionExA(&info));
  EXPECT_EQ(info.dwPlatformId, DWORD{VER_PLATFORM_WIN32_NT});
}

// The registered module in a host that knows only ProgIDs: class objects through COM, a picture in a child
// window, a pick, and unloading. Wine.

#include "windows/Host.h"

namespace {

/// A painter that holds the last reference to its context, and releases it on the draw thread.
class LastHolder final : public GLPainterBase {
 public:
  HRESULT Draw(IGLCanvas*, IGLContext*, IGLViewer*) noexcept override {
    if (m_bLetGo && m_Context) {
      m_Context.Reset();
      m_bDone = true;
    }
    return S_OK;
  }
  GLPtr<IGLContext> m_Context;
  std::atomic<bool> m_bLetGo{false}, m_bDone{false};
};

}  // namespace

TEST(RegisteredModule, DrawsAndPicks) {
  const Apartment apartment;
  const HostWindow window;
  const auto context = window.MakeContext();
  ASSERT_TRUE(context);
  EXPECT_EQ(GetParent(WindowOf(*context)), window.Handle());
  IGLViewer* viewer = AddViewer(*context);
  ASSERT_NE(viewer, nullptr);
  const auto reading = Read(*viewer);
  const auto painter = GLMake<Triangle>();
  context->AttachPainter(painter.Get());
  const int first = reading->Frames();
  ASSERT_TRUE(PumpUntil([&] { return reading->Frames() > first + 2; }));

  EXPECT_NEAR(reading->Covered(), Triangle::kPixels, 100) << "one whole triangle";
  const auto pick = [&](double aX, double aY) {
    GLDATA_POINT from = {aX - 0.02, aY - 0.02, 0}, to = {aX + 0.02, aY + 0.02, 0};
    ULONG names[8] = {};
    int count = 8;
    EXPECT_EQ(context->Select(viewer, &from, &to, 0, 0, &count, names), S_OK);
    return std::vector<ULONG>(names, names + count);
  };
  EXPECT_EQ(pick(0.1, 0.1), std::vector<ULONG>{7});
  EXPECT_EQ(pick(0.9, 0.9), std::vector<ULONG>{});
}

TEST(RegisteredModule, CreatesObjectsInBothKindsOfApartment) {
  for (const DWORD model : {DWORD{COINIT_APARTMENTTHREADED}, DWORD{COINIT_MULTITHREADED}}) {
    std::thread([model] {
      const Apartment apartment(model);
      const auto collection = GLCreate<IGLCollection>("Gl.GLCollection.1");
      ASSERT_TRUE(collection);
      int size = -1;
      EXPECT_EQ(collection->GetSize(&size), S_OK) << "called directly, without a proxy";
      EXPECT_EQ(size, 0);
    }).join();
  }
}

TEST(RegisteredModule, UnloadsAfterAContextEndedOnItsDrawThread) {
  const Apartment apartment;
  const HostWindow window;
  const auto holder = GLMake<LastHolder>();
  holder->m_Context = window.MakeContext();
  ASSERT_TRUE(holder->m_Context);
  // A smoothed picture needs a window that queries formats, which lives until the module is unloaded.
  holder->m_Context.As<IGLContext14_3>()->put_bFSAA(1);
  ASSERT_EQ(holder->m_Context->Initialize(reinterpret_cast<ULONG_PTR>(window.Handle())), S_OK);
  const HWND child = WindowOf(*holder->m_Context);
  AddViewer(*holder->m_Context);
  holder->m_Context->AttachPainter(holder.Get());
  EXPECT_NE(FindWindowA(nullptr, "WGLExtensions"), nullptr);
  EXPECT_NE(GetModuleHandleA("GLLib.dll"), nullptr);
  holder->m_bLetGo = true;
  // The module's thread destroys a window of this thread, which must deliver its messages.
  EXPECT_TRUE(PumpUntil([&] { return holder->m_bDone && !IsWindow(child); }));
  EXPECT_TRUE(PumpUntil([] {
    CoFreeUnusedLibrariesEx(0, 0);
    return GetModuleHandleA("GLLib.dll") == nullptr;
  })) << "the module is unloaded";
  EXPECT_EQ(FindWindowA(nullptr, "WGLExtensions"), nullptr) << "no window with an unloaded procedure remains";
  EXPECT_TRUE(window.MakeContext()) << "the module works after it is loaded again";
}

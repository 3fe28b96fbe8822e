// The registered module as a host meets it that knows only ProgIDs: regsvr32 has run before. Class objects
// through COM, a picture in a child window, aggregation, the type library, and the end of every entry.

#include <gllib/GLLibHost.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>

#include "platform/GL.h"

namespace {

void Pump() {
  for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE;) DispatchMessageA(&message);
}

template <class Condition>
bool PumpUntil(Condition aHolds) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (!aHolds()) {
    if (std::chrono::steady_clock::now() > end) return false;
    Pump();
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

/// A window of the host's own.
HWND MakeHostWindow() {
  WNDCLASSA windowClass{};
  windowClass.lpfnWndProc = DefWindowProcA;
  windowClass.lpszClassName = "HostWindow";
  RegisterClassA(&windowClass);  // refused from the second time on
  return CreateWindowExA(0, "HostWindow", "", WS_POPUP | WS_VISIBLE, 0, 0, 200, 160, nullptr, nullptr,
                         nullptr, nullptr);
}

/// Draws a triangle over the middle of the view, under the name 7.
class Triangle final : public GLPainterBase {
 public:
  HRESULT Draw(IGLCanvas* aCanvas, IGLContext*, IGLViewer*) noexcept override {
    aCanvas->SetTestID(7);
    glDisable(GL_LIGHTING);
    glColor3f(1, 0, 0);
    glBegin(GL_TRIANGLES);
    glVertex3f(-0.5f, -0.5f, 0);
    glVertex3f(0.5f, -0.5f, 0);
    glVertex3f(0, 0.5f, 0);
    glEnd();
    ++m_iDrawn;
    return S_OK;
  }
  std::atomic<int> m_iDrawn{0};
};

class Apartment {
 public:
  explicit Apartment(DWORD aModel) { CoInitializeEx(nullptr, aModel); }
  ~Apartment() { CoUninitialize(); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
};

/// An outer object, counted apart from what it holds.
struct Outer final : IUnknown {
  HRESULT QueryInterface(REFIID riid, void** ppv) noexcept override {
    if (riid != IID_IUnknown) return m_Inner->QueryInterface(riid, ppv);
    *ppv = this;
    AddRef();
    return S_OK;
  }
  ULONG AddRef() noexcept override { return ++m_uCount; }
  ULONG Release() noexcept override { return --m_uCount; }

  GLPtr<IUnknown> m_Inner;
  std::atomic<ULONG> m_uCount{1};
};

}  // namespace

TEST(RegisteredModule, DrawsAndPicksInAChildWindow) {
  const Apartment apartment(COINIT_APARTMENTTHREADED);
  const HWND parent = MakeHostWindow();
  auto context = GLCreate<IGLContext>("Gl.GLContext.1");
  ASSERT_TRUE(context);
  ASSERT_EQ(context->Initialize(reinterpret_cast<ULONG_PTR>(parent)), S_OK);
  context->SetViewport(0, 0, 200, 160);
  ULONG_PTR handle = 0;
  context->GetWindow(&handle);
  EXPECT_EQ(GetParent(reinterpret_cast<HWND>(handle)), parent);
  IGLViewer* viewer = nullptr;
  ASSERT_EQ(context->CreateViewer(1, 1, &viewer), S_OK);
  GLDATA_POINT low = {-1, -1, -10}, high = {1, 1, 10};
  viewer->SetOrthoExtents(&low, &high);
  GLPtr<IGLCoord> eye;
  viewer->GetCoord(eye.Put());
  eye->SetOrigin3d(0, 0, 0);
  const auto painter = GLMake<Triangle>();
  context->AttachPainter(painter.Get());
  EXPECT_TRUE(PumpUntil([&] { return painter->m_iDrawn > 2; }));

  GLDATA_POINT from = {-0.05, -0.05, 0}, to = {0.05, 0.05, 0};
  ULONG names[8] = {};
  int count = 8;
  EXPECT_EQ(context->Select(viewer, &from, &to, 0, 0, &count, names), S_OK);
  EXPECT_EQ(count, 1);
  EXPECT_EQ(names[0], 7u);

  // The host's window takes the child with it: the context stays, and ends in good order.
  DestroyWindow(parent);
  Pump();
  EXPECT_FALSE(IsWindow(reinterpret_cast<HWND>(handle)));
  context.Reset();
}

TEST(RegisteredModule, RebuildsOnSystemColoursThatReachTheTopLevelWindow) {
  const Apartment apartment(COINIT_APARTMENTTHREADED);
  const HWND parents[] = {MakeHostWindow(), MakeHostWindow()};
  GLPtr<IGLContext> contexts[2];
  ULONG_PTR before[2] = {}, after[2] = {};
  for (int i = 0; i < 2; ++i) {
    contexts[i] = GLCreate<IGLContext>("Gl.GLContext");
    ASSERT_TRUE(contexts[i]);
    ASSERT_EQ(contexts[i]->Initialize(reinterpret_cast<ULONG_PTR>(parents[i])), S_OK);
    contexts[i]->GetWindow(&before[i]);
  }
  const auto rebuilt = [&] {
    for (int i = 0; i < 2; ++i) contexts[i]->GetWindow(&after[i]);
    return after[0] != before[0] && after[1] != before[1] && after[0] != 0 && after[1] != 0;
  };
  SendMessageA(parents[1], WM_SYSCOLORCHANGE, 0, 0);
  Pump();
  EXPECT_FALSE(rebuilt()) << "only the first context's top-level window counts";
  SendMessageA(parents[0], WM_SYSCOLORCHANGE, 0, 0);
  EXPECT_TRUE(PumpUntil(rebuilt));
  SendMessageA(parents[0], WM_PALETTECHANGED, reinterpret_cast<WPARAM>(parents[0]), 0);
  Pump();
  for (int i = 0; i < 2; ++i) {
    contexts[i].Reset();
    DestroyWindow(parents[i]);
  }
}

TEST(RegisteredModule, MakesObjectsInBothKindsOfApartment) {
  for (const DWORD model : {DWORD{COINIT_APARTMENTTHREADED}, DWORD{COINIT_MULTITHREADED}}) {
    std::thread([model] {
      const Apartment apartment(model);
      const auto collection = GLCreate<IGLCollection>("Gl.GLCollection.1");
      ASSERT_TRUE(collection);
      int size = -1;
      EXPECT_EQ(collection->GetSize(&size), S_OK) << "called directly, with no proxy";
      EXPECT_EQ(size, 0);
    }).join();
  }
}

TEST(RegisteredModule, IsAggregatedByAnOuterObject) {
  const Apartment apartment(COINIT_MULTITHREADED);
  CLSID fog;
  ASSERT_EQ(CLSIDFromProgID(L"Gl.GLFog.1", &fog), S_OK);
  Outer outer;
  void* refused = &outer;
  EXPECT_EQ(CoCreateInstance(fog, &outer, CLSCTX_INPROC_SERVER, IGLFog::Identifier, &refused),
            CLASS_E_NOAGGREGATION);
  EXPECT_EQ(refused, nullptr);
  ASSERT_EQ(CoCreateInstance(fog, &outer, CLSCTX_INPROC_SERVER, IID_IUnknown, outer.m_Inner.PutVoid()), S_OK);
  GLPtr<IGLFog> part;
  ASSERT_EQ(outer.QueryInterface(IGLFog::Identifier, part.PutVoid()), S_OK);
  EXPECT_EQ(outer.m_uCount, 2u) << "the part counts on the outer object";
  EXPECT_EQ(part.As<IUnknown>().Get(), &outer);
  part.Reset();
  EXPECT_EQ(outer.m_uCount, 1u);
}

// The operations by name, in the order of the slots behind IUnknown's three.
TEST(RegisteredModule, TellsItsOperationsInSlotOrder) {
  GLPtr<ITypeLib> library;
  const GUID id = {0x17503780, 0xFDFD, 0x11D3, {0xA3, 0x17, 0, 0, 0, 0, 0, 0}};
  ASSERT_EQ(LoadRegTypeLib(id, 1, 0, 0x409, library.Put()), S_OK);
  const struct {
    IID m_Id;
    std::vector<std::wstring> m_vOperations;
  } interfaces[] = {
      {IGLPainter::Identifier, {L"Draw"}},
      {IGLContext2::Identifier, {L"SetControlledDrawThread", L"TriggerDrawThread", L"CreateInternalFont"}},
      {IGLContext12::Identifier, {L"SuspendDrawThread", L"ResumeDrawThread"}},
      {IGLContext14_3::Identifier, {L"bFSAA", L"bFSAA", L"lFSAAMaxSamples", L"lFSAAMaxSamples"}},
      {IGLCapture::Identifier,
       {L"IsEnabled", L"GetPixmap", L"GetPixelZoom", L"GetRectangle", L"GetBackgroundColor", L"OnData"}},
  };
  for (const auto& [iid, operations] : interfaces) {
    GLPtr<ITypeInfo> info;
    ASSERT_EQ(library->GetTypeInfoOfGuid(iid, info.Put()), S_OK);
    for (UINT i = 0; i < operations.size(); ++i) {
      FUNCDESC* function = nullptr;
      ASSERT_EQ(info->GetFuncDesc(i, &function), S_OK);
      BSTR name = nullptr;
      UINT count = 0;
      info->GetNames(function->memid, &name, 1, &count);
      EXPECT_EQ(std::wstring(name, SysStringLen(name)), operations[i]);
      EXPECT_EQ(function->oVft, static_cast<SHORT>((3 + i) * sizeof(void*)));
      SysFreeString(name);
      info->ReleaseFuncDesc(function);
    }
  }
  EXPECT_EQ(library->GetTypeInfoCount() > 27, true);
}

// The registered module as a host meets it that knows only ProgIDs: class objects through COM, a lit model in
// a child window, a pick on it, aggregation, and the module's way out.

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <string>

#include "shared/Shapes.h"
#include "windows/Host.h"

namespace {

constexpr double kRadius = 0.7;

/// A sphere in the middle of the view, under the name 7.
class Sphere final : public GLPainterBase {
 public:
  HRESULT Draw(IGLCanvas* aCanvas, IGLContext*, IGLViewer*) noexcept override {
    aCanvas->SetTestID(7);
    GLDATA_RGBA color = {0.8f, 0.3f, 0.2f, 1};
    aCanvas->SetVertexColor(&color);
    DrawSphere(*aCanvas, {0, 0, 0}, kRadius);
    return S_OK;
  }
};

constexpr int kFonts = 4, kInternal = 3;

/// Where a font's line stands, from -1 to 1.
constexpr double LineOf(int aFont) { return 0.6 - 0.5 * aFont; }

/// Prints a word in each kind of font, one below the other.
class Words final : public GLPainterBase {
 public:
  HRESULT Draw(IGLCanvas* aCanvas, IGLContext*, IGLViewer*) noexcept override {
    aCanvas->BeginDrawPoints();  // sends the state of the canvas, which text leaves alone
    aCanvas->EndDrawVertices();
    glDisable(GL_LIGHTING);
    GLDATA_RGBA color = {1, 1, 1, 1};
    aCanvas->SetVertexColor(&color);
    for (int i = 0; i < kFonts; ++i) {
      const double scale = i == kInternal ? 0.02 : 1;
      GLDATA_POINT start = {-0.9 / scale, LineOf(i) / scale, 0};
      glPushMatrix();
      glScaled(scale, scale, 1);
      m_iResults[i] = m_Fonts[i]->Print(m_Text, &start);
      glPopMatrix();
    }
    m_uError = glGetError();
    return S_OK;
  }
  const GLString m_Text = "Gl";
  GLPtr<IGLFont> m_Fonts[kFonts];
  std::atomic<HRESULT> m_iResults[kFonts] = {};
  std::atomic<GLenum> m_uError{0};
};

/// A painter that holds the last reference to its context and lets go of it on the draw thread.
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

TEST(RegisteredModule, DrawsALitModelAndPicksIt) {
  const Apartment apartment;
  const HostWindow window;
  const auto context = window.MakeContext();
  ASSERT_TRUE(context);
  EXPECT_EQ(GetParent(WindowOf(*context)), window.Handle());
  IGLViewer* viewer = AddViewer(*context);
  ASSERT_NE(viewer, nullptr);
  IGLLight* light = nullptr;
  ASSERT_EQ(context->CreateLight(&light), S_OK);
  GLDATA_POINT direction = {1, -1, -0.5};  // from the upper left
  light->SetAsSpotlight(0);
  light->SetDirection(&direction);
  light->Enable(1);
  const auto reading = Read(*viewer);
  const auto painter = GLMake<Sphere>();
  context->AttachPainter(painter.Get());
  const int first = reading->Frames();
  ASSERT_TRUE(PumpUntil([&] { return reading->Frames() > first + 2; }));

  const auto red = [&](double aX, double aY) { return reading->At(aX, aY)[0]; };
  EXPECT_GT(red(-0.3, 0.3), red(0, 0) + 20) << "light falls from the upper left";
  EXPECT_GT(red(0, 0), red(0.2, -0.3) + 20) << "and away from it it grows dark";
  const double sphere = 3.14159 * kRadius * kRadius / 4 * HostWindow::kHeight * HostWindow::kHeight;
  EXPECT_NEAR(reading->Covered(), sphere, 0.03 * sphere) << "a whole one, and nothing else";

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

TEST(RegisteredModule, PrintsInAllFourKindsOfFont) {
  const Apartment apartment;
  const HostWindow window;
  const auto context = window.MakeContext();
  ASSERT_TRUE(context);
  IGLViewer* viewer = AddViewer(*context);
  ASSERT_NE(viewer, nullptr);
  const auto words = GLMake<Words>();
  const GLString face = "Arial";
  IGLFont *raster = nullptr, *outlines = nullptr;
  EXPECT_EQ(context->CreateSystemFont(words->m_Fonts[0].Put()), S_OK);
  EXPECT_EQ(context->CreateRasterFont(face, 0, 400, 0, -24, 0, &raster), S_OK);
  EXPECT_EQ(context->CreateTrueTypeFont(face, 0, 400, 0, 0, &outlines), S_OK);
  EXPECT_EQ(context.As<IGLContext2>()->CreateInternalFont(GLString("HAND"), words->m_Fonts[kInternal].Put()),
            S_OK);
  ASSERT_TRUE(raster != nullptr && outlines != nullptr);
  words->m_Fonts[1] = GLPtr<IGLFont>::FromBorrowed(raster);
  words->m_Fonts[2] = GLPtr<IGLFont>::FromBorrowed(outlines);
  outlines->SetHeight(0.4f);
  outlines->SetWidth(0.4f);
  const auto reading = Read(*viewer);
  context->AttachPainter(words.Get());
  const int first = reading->Frames();
  ASSERT_TRUE(PumpUntil([&] { return reading->Frames() > first + 3; }));
  EXPECT_EQ(words->m_uError, GLenum{GL_NO_ERROR});
  for (int i = 0; i < kFonts; ++i) {
    EXPECT_EQ(words->m_iResults[i], S_OK) << i;
    const int row = static_cast<int>((LineOf(i) + 1) / 2 * HostWindow::kHeight);
    EXPECT_GT(reading->Covered(std::max(row - 4, 0), row + 30), 30) << i;
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

TEST(RegisteredModule, GoesAfterAContextThatEndedOnItsOwnDrawThread) {
  const Apartment apartment;
  const HostWindow window;
  const auto holder = GLMake<LastHolder>();
  holder->m_Context = window.MakeContext();
  ASSERT_TRUE(holder->m_Context);
  // A smoothed picture takes a window to ask for formats by, which lives to the module's end.
  holder->m_Context.As<IGLContext14_3>()->put_bFSAA(1);
  ASSERT_EQ(holder->m_Context->Initialize(reinterpret_cast<ULONG_PTR>(window.Handle())), S_OK);
  const HWND child = WindowOf(*holder->m_Context);
  AddViewer(*holder->m_Context);
  holder->m_Context->AttachPainter(holder.Get());
  EXPECT_NE(FindWindowA(nullptr, "WGLExtensions"), nullptr);
  EXPECT_NE(GetModuleHandleA("GLLib.dll"), nullptr);
  holder->m_bLetGo = true;
  // The thread that ends it destroys a window of this thread's, and so needs its messages.
  EXPECT_TRUE(PumpUntil([&] { return holder->m_bDone && !IsWindow(child); }));
  EXPECT_TRUE(PumpUntil([] {
    CoFreeUnusedLibrariesEx(0, 0);
    return GetModuleHandleA("GLLib.dll") == nullptr;
  })) << "the module says that it can go, and goes";
  EXPECT_EQ(FindWindowA(nullptr, "WGLExtensions"), nullptr) << "no window is left whose procedure went";
  EXPECT_TRUE(window.MakeContext()) << "loaded again it begins anew";
}

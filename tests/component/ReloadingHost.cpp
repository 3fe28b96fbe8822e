// A host that loads the module, draws with it, unloads it and loads it again. Nothing of it may stay behind,
// no thread, no descriptor, no mapping and no font data. GLLIB_PROCESS_REPEATS raises the number of cycles.

#include <dlfcn.h>
#include <gllib/GLClasses.h>
#include <gllib/GLClient.h>
#include <gllib/GLIdentifiers.h>
#include <gllib/GLString.h>
#include <gllib/IGLFont.h>
#include <gtest/gtest.h>
#include <malloc.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <future>
#include <iterator>
#include <string>

#include "support/Eventually.h"

namespace {

class Loaded {
 public:
  Loaded() : m_pModule(dlopen(GLLIB_MODULE_FILE, RTLD_NOW | RTLD_LOCAL)) {}
  ~Loaded() {
    if (m_pModule != nullptr) dlclose(m_pModule);
  }
  Loaded(const Loaded&) = delete;
  Loaded& operator=(const Loaded&) = delete;

  explicit operator bool() const { return m_pModule != nullptr; }
  HRESULT CanUnload() const { return reinterpret_cast<HRESULT (*)()>(dlsym(m_pModule, "DllCanUnloadNow"))(); }
  template <class Interface>
  GLPtr<Interface> Make(REFCLSID aClass) const {
    const auto get =
        reinterpret_cast<HRESULT (*)(REFCLSID, REFIID, void**)>(dlsym(m_pModule, "DllGetClassObject"));
    GLPtr<IClassFactory> factory;
    GLPtr<Interface> object;
    if (SUCCEEDED(get(aClass, IID_IClassFactory, factory.PutVoid())))
      factory->CreateInstance(nullptr, Interface::Identifier, object.PutVoid());
    return object;
  }

 private:
  void* m_pModule;
};

class Orange final : public GLPainterBase {
 public:
  HRESULT Draw(IGLCanvas* aCanvas, IGLContext*, IGLViewer*) noexcept override {
    GLDATA_RGBA orange = {1.0f, 0.4f, 0.0f, 1.0f};
    aCanvas->SetVertexColor(&orange);
    aCanvas->BeginDrawTriangles();
    aCanvas->Vertex3d(-90, -90, 0);
    aCanvas->Vertex3d(90, -90, 0);
    aCanvas->Vertex3d(0, 90, 0);
    return aCanvas->EndDrawVertices();
  }
};

class Snapshot final : public GLCaptureBase {
 public:
  HRESULT OnData(LONG aSuccess) noexcept override {
    m_Taken.set_value(aSuccess != 0);
    return S_OK;
  }
  std::promise<bool> m_Taken;
};

/// The red, green and blue that a new context shows in the middle of its picture. A font is built, too.
int DrawnColour(const Loaded& aModule, int aSize) {
  const auto context = aModule.Make<IGLContext>(CLSID_GLContext);
  EXPECT_EQ(context->Initialize(0), S_OK);
  context->SetViewport(0, 0, aSize, aSize);
  context->EnableLighting(0);
  IGLViewer* viewer = nullptr;
  context->CreateViewer(1, 1, &viewer);
  GLString face("DejaVu Sans"), text("text");
  IGLFont* font = nullptr;
  context->CreateTrueTypeFont(face, 0, 400, 0, 1, &font);
  context->AttachPainter(GLMake<Orange>().Get());
  const auto picture = aModule.Make<IGLPixmap>(CLSID_GLPixmap);
  const auto snapshot = GLMake<Snapshot>();
  snapshot->Request(picture.Get());
  context->AttachCapture(snapshot.Get());
  EXPECT_TRUE(snapshot->m_Taken.get_future().get());
  EXPECT_EQ(aModule.CanUnload(), S_FALSE);
  float width = 0;
  EXPECT_EQ(font->GetStringWidth(text, &width), S_OK);
  EXPECT_GT(width, 0.0f);
  GLDATA_RGBA4B middle = {};
  picture->GetPixel(aSize / 2, aSize / 2, &middle);
  return middle.m_bRed << 16 | middle.m_bGreen << 8 | middle.m_bBlue;
}

long EntriesOf(const char* aFolder) {
  const auto entries = std::filesystem::directory_iterator(aFolder);
  return std::distance(begin(entries), end(entries));
}

long Threads() { return EntriesOf("/proc/self/task"); }
long Descriptors() { return EntriesOf("/proc/self/fd"); }

int Cycles() {
  const char* text = std::getenv("GLLIB_PROCESS_REPEATS");
  return text != nullptr ? 2 * std::atoi(text) : 5;
}

bool IsMapped() {
  std::ifstream maps("/proc/self/maps");
  for (std::string line; std::getline(maps, line);) {
    if (line.find("libgllib") != std::string::npos) return true;
  }
  return false;
}

}  // namespace

TEST(Reload, LeavesNothingOfAModuleThatDrew) {
  const long threads = Threads();
  long descriptors = 0;
  std::size_t heap = 0;
  for (int turn = 0; turn < Cycles(); ++turn) {
    {
      const Loaded module;
      ASSERT_TRUE(module) << dlerror();
      EXPECT_EQ(module.CanUnload(), S_OK) << "a module just loaded";
      EXPECT_EQ(DrawnColour(module, 64), 0xFF6600);
      auto second = std::async(std::launch::async, [&] { return DrawnColour(module, 48); });
      EXPECT_EQ(DrawnColour(module, 32), 0xFF6600);
      EXPECT_EQ(second.get(), 0xFF6600);
      ASSERT_TRUE(Eventually([&] { return module.CanUnload() == S_OK; }));
    }
    EXPECT_FALSE(IsMapped()) << "turn " << turn;
    EXPECT_EQ(Threads(), threads) << "turn " << turn;
    if (turn == 0) {  // a driver may keep some of its own
      descriptors = Descriptors();
      heap = mallinfo2().uordblks;
    }
    EXPECT_EQ(Descriptors(), descriptors) << "turn " << turn;
  }
  // The driver's pools grow a little in the first turns. A font configuration takes 230 kB.
  constexpr std::size_t kKiB = 1024;
  EXPECT_LT(mallinfo2().uordblks, heap + static_cast<std::size_t>(Cycles()) * 48 * kKiB);
}

// A host that forgets an object, or the question: the code of the threads stays.
TEST(Reload, StaysWhileAContextIsLeft) {
  IGLContext* forgotten = nullptr;
  {
    const Loaded module;
    ASSERT_TRUE(module) << dlerror();
    auto context = module.Make<IGLContext>(CLSID_GLContext);
    ASSERT_EQ(context->Initialize(0), S_OK);
    EXPECT_EQ(module.CanUnload(), S_FALSE);
    forgotten = context.Detach();
  }
  EXPECT_TRUE(IsMapped());
  forgotten->Release();
  {
    const Loaded module;
    EXPECT_TRUE(Eventually([&] { return module.CanUnload() == S_OK; }));
  }
  EXPECT_FALSE(IsMapped());
}

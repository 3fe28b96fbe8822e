// A host that loads the module, draws, unloads the module and loads it again. No thread, descriptor, mapping
// or font data may remain. The number of cycles is twice GLLIB_PROCESS_REPEATS, by default 5.

#include <dlfcn.h>
#include <malloc.h>

#include "process/Orange.h"
#include "support/ProcessState.h"
#include "support/Test.h"

namespace {

class Loaded {
 public:
  Loaded() : m_pModule(dlopen(GLLIB_MODULE_FILE, RTLD_NOW | RTLD_LOCAL)) {}
  ~Loaded() {
    if (m_pModule != nullptr) dlclose(m_pModule);
  }
  Loaded(Loaded&&) = delete;

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

bool Draws(const Loaded& aModule, int aSize) {
  const auto context = aModule.Make<IGLContext>(CLSID_GLContext);
  EXPECT_EQ(context->Initialize(0), S_OK);
  context->SetViewport(0, 0, aSize, aSize);
  context->EnableLighting(0);
  IGLViewer* viewer = nullptr;
  context->CreateViewer(1, 1, &viewer);
  GLString face("DejaVu Sans"), text("text");
  IGLFont* font = nullptr;
  context->CreateTrueTypeFont(face, 0, 400, 0, 1, &font);
  context->AttachPainter(GLMake<OrangePainter>().Get());
  EXPECT_EQ(aModule.CanUnload(), S_FALSE);
  const bool shows = ShowsOrange(*context, *aModule.Make<IGLPixmap>(CLSID_GLPixmap));
  float width = 0;
  EXPECT_EQ(font->GetStringWidth(text, &width), S_OK);
  EXPECT_GT(width, 0.0f);
  return shows;
}

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

TEST(Reload, LeavesNothingAfterDrawing) {
  const long threads = ThreadsOfProcess();
  long descriptors = 0;
  std::size_t heap = 0;
  for (int turn = 0; turn < Cycles(); ++turn) {
    SCOPED_TRACE(turn);
    {
      const Loaded module;
      ASSERT_TRUE(module) << dlerror();
      EXPECT_EQ(module.CanUnload(), S_OK) << "the module is not used yet";
      EXPECT_TRUE(Draws(module, 64));
      auto second = std::async(std::launch::async, [&] { return Draws(module, 48); });
      EXPECT_TRUE(Draws(module, 32));
      EXPECT_TRUE(second.get());
      ASSERT_TRUE(Eventually([&] { return module.CanUnload() == S_OK; }));
    }
    EXPECT_FALSE(IsMapped());
    EXPECT_EQ(ThreadsOfProcess(), threads);
    if (turn == 0) {  // a driver may keep some of its first use
      descriptors = DescriptorsOfProcess();
      heap = mallinfo2().uordblks;
    }
    EXPECT_EQ(DescriptorsOfProcess(), descriptors);
  }
  // The driver's pools grow a little in the first cycles. A font configuration needs 230 kB.
  constexpr std::size_t kKiB = 1024;
  EXPECT_LT(mallinfo2().uordblks, heap + static_cast<std::size_t>(Cycles()) * 48 * kKiB);
}

// A host unloads the module while it keeps an object: the code of the threads must stay loaded.
TEST(Reload, KeepsTheModuleWhileAContextExists) {
  IGLContext* forgotten = nullptr;
  {
    const Loaded module;
    ASSERT_TRUE(module) << dlerror();
    auto context = module.Make<IGLContext>(CLSID_GLContext);
    ASSERT_EQ(context->Initialize(0), S_OK);
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

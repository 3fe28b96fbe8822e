// Fuzz target for the whole component: turns bytes into calls of a host. Up to three threads, and painters,
// gauges and captures, call operations of all classes, partly with invalid arguments. After each run all
// objects must have been destroyed.

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <thread>
#include <vector>

#include "host/Clients.h"
#include "host/Turn.h"

namespace {

constexpr int kMostOperations = 150;  // per thread
constexpr std::size_t kMostThreads = 3;
constexpr auto kLongestEnd = std::chrono::seconds(30);

std::vector<Operation> AllOperations() {
  std::vector<Operation> all;
  for (const auto table : {ObjectOperations, ContextOperations, SceneOperations, ValueOperations,
                           ImageOperations, FontOperations, CanvasOperations}) {
    const auto operations = table();
    all.insert(all.end(), operations.begin(), operations.end());
  }
  return all;
}

/// Creates a drawing context first, so that the operations run while frames are drawn.
void MakeFirstContext(World& aWorld, Bytes& aBytes) {
  const auto context = GLCreate<IGLContext>(CLSID_GLContext);
  if (!context || FAILED(context->Initialize(0))) std::abort();
  context->SetViewport(0, 0, 64 + aBytes.Byte() % 192, 64 + aBytes.Byte() % 192);
  context->SetDrawThreadPars(0, 5, 5);
  IGLViewer* viewer = nullptr;
  context->CreateViewer(1, aBytes.Byte() & 1, &viewer);
  aWorld.Of<IGLViewer>().Put(0, GLPtr<IGLViewer>::FromBorrowed(viewer));
  const auto script = aBytes.Take(aBytes.Byte());
  context->AttachPainter(MakePainter(aWorld, Script(script.begin(), script.end())).Get());
  aWorld.Of<IGLContext>().Put(0, context);
}

void RunHost(World& aWorld, std::span<const std::uint8_t> aInput) {
  Bytes bytes(aInput);
  const auto canvas = GLCreate<IGLCanvas>(CLSID_GLCanvas);
  Turn turn{aWorld, bytes, *canvas};
  for (int i = 0; i < kMostOperations && !bytes.IsEmpty(); ++i) RunOperation(turn);
}

bool EverythingEnds() {
  const auto end = std::chrono::steady_clock::now() + kLongestEnd;
  while (DllCanUnloadNow() != S_OK) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

}  // namespace

HRESULT Turn::Check(HRESULT aResult) const noexcept {
  constexpr HRESULT kResults[] = {S_OK,
                                  E_FAIL,
                                  E_INVALIDARG,
                                  E_GL_BADVALUE,
                                  E_GL_BADSTATE,
                                  E_NOINTERFACE,
                                  E_POINTER,
                                  E_OUTOFMEMORY,
                                  S_FALSE,
                                  CLASS_E_NOAGGREGATION,
                                  CLASS_E_CLASSNOTAVAILABLE};
  if (std::find(std::begin(kResults), std::end(kResults), aResult) == std::end(kResults)) {
    std::fprintf(stderr, "%s returns %08x\n", m_pOperation->m_szName, static_cast<unsigned>(aResult));
    std::abort();
  }
  return aResult;
}

/// Returns arbitrary UTF-16 units, including zeros and unpaired surrogates. Some texts exceed every stack
/// buffer.
GLString Turn::Text() {
  if (m_Bytes.OneIn(16)) return GLString();
  const std::size_t length = m_Bytes.Byte() % 64, copies = m_Bytes.OneIn(16) ? 32 : 1;
  std::vector<OLECHAR> units;
  for (std::size_t i = 0; i < length; ++i) {
    const std::uint8_t low = m_Bytes.Byte();
    units.push_back(static_cast<OLECHAR>(m_Bytes.OneIn(8) ? low << 8 | m_Bytes.Byte() : low));
  }
  std::vector<OLECHAR> text;
  for (std::size_t i = 0; i < copies; ++i) text.insert(text.end(), units.begin(), units.end());
  GLString result;
  *result.Put() = SysAllocStringLen(text.data(), static_cast<unsigned>(text.size()));
  return result;
}

void RunOperation(Turn& aTurn) noexcept {
  static const std::vector<Operation> operations = AllOperations();
  const std::size_t number = aTurn.m_Bytes.Byte() << 8 | aTurn.m_Bytes.Byte();
  const Operation& operation = operations[number % operations.size()];
  if (operation.m_uWhere == Operation::kHost && !aTurn.IsHost()) return;
  std::unique_lock lock(aTurn.m_World.m_ImageLock, std::defer_lock);
  if (operation.m_uWhere == Operation::kImage) lock.lock();
  aTurn.m_pOperation = &operation;
  operation.m_pfnRun(aTurn);
}

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  // Keeps the user's own registry out of the test.
  const auto nowhere = std::filesystem::temp_directory_path() / "gllib-fuzz-no-registry";
  setenv("GLLIB_REGISTRY_DIR", nowhere.c_str(), 1);
  setenv("GLLIB_DISPLAY", "headless", 1);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* aData, std::size_t aSize) {
  Bytes bytes({aData, aSize});
  World world;
  MakeFirstContext(world, bytes);
  std::vector<std::thread> threads;
  for (std::size_t left = 1 + bytes.Byte() % kMostThreads; left > 0; --left) {
    const auto share = bytes.Take(bytes.Left() / left);
    threads.emplace_back([&world, share] { RunHost(world, share); });
  }
  for (std::thread& thread : threads) thread.join();
  world.Close();
  if (!EverythingEnds()) {
    std::fputs("an object or thread of this run does not end\n", stderr);
    std::abort();
  }
  return 0;
}

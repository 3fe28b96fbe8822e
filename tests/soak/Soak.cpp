// The soak test: two hosts that stay and two threads with hosts that come and go. After a tenth of the time,
// and at the end, those hosts have ended, and the memory, threads and descriptors of the process are
// compared.
//   soak [seconds]      default: 120

#include <malloc.h>

#include "support/Counting.h"
#include "support/ProcessState.h"
#include "support/RichScene.h"

namespace {

using namespace std::chrono_literals;

constexpr int kSide = 128, kShortLife = 50;

std::atomic<int> g_iFailures{0};

/// A host that uses all parts of the component: one context with viewers, lights, fog, clip planes, fonts,
/// textures, lists and captures. It makes no selections: Mesa's software driver leaks some kilobytes per
/// selection, also with plain GL. One thread creates it and calls Round repeatedly.
class Host {
 public:
  Host() : m_Drawn([this](Scene& scene) { Draw(scene); }, kSide, kSide) {
    m_Drawn.context->SetDrawThreadPars(0, 10, 1);
    IGLViewer* second = nullptr;
    m_Drawn.context->CreateViewer(1, 1, &second);
    second->Clip(1);
    second->SetClipRectangle(kSide / 2, kSide / 2, kSide / 2, kSide / 2);
    m_Capture->request.m_fZoom = 2.0f;
    m_Drawn.context->AttachCapture(m_Capture.Get());
  }
  ~Host() {
    m_Drawn.context->DetachCapture();
    m_Drawn.context->DetachPainter();
  }
  Host(Host&&) = delete;

  /// Creates, changes and destroys parts while the draw thread draws.
  void Round(int aRound) {
    IGLContext& context = *m_Drawn.context;
    GLPtr<IGLFog> fog;
    context.GetFog(fog.Put());
    fog->Enable(aRound % 2);
    context.ResetClipPlanes();
    GLDATA_POINT a{0, 0, 0.5}, b{0, 1, 0.5}, c{1, 0, 0.5};
    context.ClipPlane(&a, &b, &c);
    context.SetViewport(0, 0, kSide + aRound % 2, kSide);
    IGLLight* light = nullptr;
    IGLViewer* viewer = nullptr;
    context.CreateLight(&light);
    context.CreateViewer(1, 0, &viewer);
    std::this_thread::sleep_for(10ms);
    context.DestroyViewer(viewer);
    context.DestroyLight(light);
    std::this_thread::sleep_for(20ms);
    if (aRound % 10 == 0 && m_Capture->Take() != 1) ++g_iFailures;
  }

 private:
  void Draw(const Scene& aScene) {
    m_Scene.Draw(aScene);
    if (*m_Drawn.frames % 200 == 199) m_Scene.DropList(aScene);
    GLDATA_POINT corners[] = {{-1, -1, 0.2}, {1, -1, 0.2}, {0, 1, 0.2}};
    GLDATA_RGBA color{0, 0, 1, 0.3f};
    const auto triangles = aScene.CanvasAs<IGLCanvas13_1>();
    triangles->ClearTransparentTriangles();
    triangles->AddTransparentTriangle(corners, &color);
  }

  GLPtr<TestCapture> m_Capture = GLMake<TestCapture>();
  RichScene m_Scene;
  FreeContext m_Drawn;
};

/// Starts two threads with hosts that come and go.
std::vector<std::jthread> StartHosts(int aRounds) {
  std::vector<std::jthread> threads;
  for (int i = 0; i < 2; ++i) {
    threads.emplace_back([aRounds](const std::stop_token& stop) {
      while (!stop.stop_requested()) {
        Host host;
        for (int round = 0; !stop.stop_requested() && round < aRounds; ++round) host.Round(round);
      }
    });
  }
  return threads;
}

/// Memory, threads and descriptors of the process, including the driver's.
struct Sample {
  double m_dMegabytes;
  long m_iThreads, m_iDescriptors;
};

/// Runs for a while beside other hosts. @return what the process holds after those have ended
Sample RunWithOthers(double aSeconds) {
  {
    const auto others = StartHosts(kShortLife);
    std::this_thread::sleep_for(std::chrono::duration<double>(aSeconds));
  }
  std::this_thread::sleep_for(1s);  // remaining work of ended hosts on other threads is done
  const auto heap = mallinfo2();
  const Sample sample{static_cast<double>(heap.uordblks + heap.hblkhd) / 1048576, ThreadsOfProcess(),
                      DescriptorsOfProcess()};
  std::printf("%7.0f s: %.1f MiB allocated, %ld resident, %ld threads, %ld descriptors\n", aSeconds,
              sample.m_dMegabytes, ResidentKiB() / 1024, sample.m_iThreads, sample.m_iDescriptors);
  std::fflush(stdout);
  return sample;
}

void Compare(const char* aWhat, double aBefore, double aAfter) {
  constexpr double kAllowed = 1.05;
  if (aAfter <= aBefore * kAllowed) return;
  std::printf("FAILED: the %s grew from %g to %g\n", aWhat, aBefore, aAfter);
  ++g_iFailures;
}

}  // namespace

int main(int argc, char** argv) {
  const double seconds = argc > 1 ? std::atof(argv[1]) : 120.0;
  if (!(seconds >= 10.0)) {
    std::puts("usage: soak [seconds, 10 or more]");
    return 2;
  }
  setenv("GLLIB_DISPLAY", "headless", 1);
  mallopt(M_ARENA_MAX, 2);  // an arena per thread would blur the measured memory
  const auto staying = StartHosts(INT_MAX);
  const Sample first = RunWithOthers(seconds * 0.1), last = RunWithOthers(seconds * 0.9);
  Compare("memory", first.m_dMegabytes, last.m_dMegabytes);
  Compare("number of threads", static_cast<double>(first.m_iThreads), static_cast<double>(last.m_iThreads));
  Compare("number of descriptors", static_cast<double>(first.m_iDescriptors),
          static_cast<double>(last.m_iDescriptors));
  std::printf("%d failures\n", g_iFailures.load());
  return g_iFailures == 0 ? 0 : 1;
}

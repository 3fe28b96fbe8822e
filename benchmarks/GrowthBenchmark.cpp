// GrowthBenchmark: measures how the cost grows with triangles, contexts, identifiers of a selection, text
// length and picture size of a capture. FrameBenchmark covers viewers, TransparentTrianglesBenchmark
// transparent triangles.

#include <gllib/IGLFont.h>

#include <algorithm>
#include <future>
#include <memory>
#include <string>
#include <vector>

#include "TimedStage.h"

namespace {

void GrowthOfTriangles(benchmark::State& aState) {
  const auto triangles = aState.range(0);
  TimedStage().Measure(aState, [triangles](IGLCanvas& aCanvas) {
    aCanvas.BeginDrawTriangles();
    aCanvas.SetVertexNormal3f(0, 0, 1);
    for (std::int64_t i = 0; i < triangles; ++i) {
      const float x = -1.0f + static_cast<float>(i % 1000) / 500.0f;
      const float y = -1.0f + static_cast<float>(i / 1000 % 1000) / 500.0f;
      aCanvas.Vertex3f(x, y, 0);
      aCanvas.Vertex3f(x + 0.002f, y, 0);
      aCanvas.Vertex3f(x, y + 0.002f, 0);
    }
    aCanvas.EndDrawVertices();
  });
}

void GrowthOfText(benchmark::State& aState) {
  TimedStage stage;
  GLPtr<IGLFont> font;
  stage.Context().CreateSystemFont(font.Put());
  GLString text(std::string(static_cast<std::size_t>(aState.range(0)), 'x'));
  stage.Measure(aState, [&](IGLCanvas&) {
    GLDATA_POINT start{-1, 0, -1};
    font->Print(text, &start);
  });
}

/// Measures the time until every context has drawn one frame. Their draw threads cycle without a pause.
void GrowthOfContexts(benchmark::State& aState) {
  std::vector<std::unique_ptr<TimedStage>> stages;
  for (int i = 0; i < aState.range(0); ++i) stages.push_back(std::make_unique<TimedStage>());
  for (auto _ : aState) {
    const auto start = std::chrono::steady_clock::now();
    std::vector<std::future<double>> frames;
    for (const auto& stage : stages) {
      frames.push_back(
          std::async(std::launch::async, [&stage] { return stage->Painter().Run([](IGLCanvas&) {}); }));
    }
    for (auto& frame : frames) frame.get();
    aState.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
  }
}

class BarPainter : public GLPainterBase {
 public:
  explicit BarPainter(int aIdentifiers) : m_iIdentifiers(aIdentifiers) {}
  HRESULT Draw(IGLCanvas* aCanvas, IGLContext*, IGLViewer*) noexcept override {
    for (int id = 1; id <= m_iIdentifiers; ++id) {
      aCanvas->SetTestID(static_cast<ULONG>(id));
      aCanvas->BeginDrawTriangles();
      aCanvas->Vertex3f(-0.5f, -0.5f, 0);
      aCanvas->Vertex3f(0.5f, -0.5f, 0);
      aCanvas->Vertex3f(0, 0.5f, 0);
      aCanvas->EndDrawVertices();
    }
    return S_OK;
  }

 private:
  const int m_iIdentifiers;
};

/// A context that draws only when triggered.
struct ControlledContext {
  ControlledContext(int aSide, IGLPainter* aPainter) {
    setenv("GLLIB_DISPLAY", "headless", 1);
    if (FAILED(m_Context->Initialize(0))) throw std::runtime_error("no context");
    m_Context->SetViewport(0, 0, aSide, aSide);
    m_Context->CreateViewer(1, 1, &m_pViewer);
    GLDATA_POINT low{-1, -1, -10}, high{1, 1, 10};
    m_pViewer->SetOrthoExtents(&low, &high);
    m_Context.As<IGLContext2>()->SetControlledDrawThread(1, 0xFFFFFFFF);
    if (aPainter != nullptr) m_Context->AttachPainter(aPainter);
  }

  GLPtr<IGLContext> m_Context = GLCreate<IGLContext>(CLSID_GLContext);
  IGLViewer* m_pViewer = nullptr;
};

void GrowthOfIdentifiers(benchmark::State& aState) {
  const auto count = static_cast<int>(aState.range(0));
  ControlledContext stage(128, GLMake<BarPainter>(count).Get());
  stage.m_pViewer->Show(0);  // hidden, so that the time contains no frame of the painter
  std::vector<ULONG> ids(static_cast<std::size_t>(count));
  for (auto _ : aState) {
    GLDATA_POINT first{-1, -1, 0}, second{1, 1, 0};
    int size = count;
    stage.m_Context->Select(stage.m_pViewer, &first, &second, 0, 0, &size, ids.data());
    if (size != count) aState.SkipWithError("not all identifiers were found");
  }
}

class WaitingCapture : public GLCaptureBase {
 public:
  HRESULT OnData(LONG aSuccess) noexcept override {
    m_Done.set_value(aSuccess != 0);
    return S_OK;
  }
  std::promise<bool> m_Done;
};

void GrowthOfCaptures(benchmark::State& aState) {
  ControlledContext stage(static_cast<int>(aState.range(0)), nullptr);
  const auto capture = GLMake<WaitingCapture>();
  const auto target = GLCreate<IGLPixmap>(CLSID_GLPixmap);
  stage.m_Context->AttachCapture(capture.Get());
  for (auto _ : aState) {
    capture->m_Done = {};
    capture->Request(target.Get());
    stage.m_Context.As<IGLContext2>()->TriggerDrawThread();
    if (!capture->m_Done.get_future().get()) aState.SkipWithError("no picture");
  }
  stage.m_Context->DetachCapture();
}

}  // namespace

BENCHMARK(GrowthOfTriangles)
    ->RangeMultiplier(10)
    ->Range(1000, 10'000'000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(GrowthOfContexts)->RangeMultiplier(2)->Range(1, 16)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(GrowthOfIdentifiers)
    ->RangeMultiplier(10)
    ->Range(10, 1'000'000)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(GrowthOfText)
    ->RangeMultiplier(10)
    ->Range(10, 100'000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(GrowthOfCaptures)
    ->RangeMultiplier(2)
    ->Range(128, 4096)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

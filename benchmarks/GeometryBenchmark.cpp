// GeometryBenchmark: inverts the same 4 by 4 matrices by the kernel's cofactors and by glm.

#include <benchmark/benchmark.h>

#include <array>
#include <glm/glm.hpp>
#include <random>

#include "geometry/GMatrix.h"

namespace {

constexpr int kMatrices = 256;

const std::array<glm::dmat4, kMatrices>& Matrices() {
  static const auto matrices = [] {
    std::mt19937 engine(4);
    std::uniform_real_distribution<double> number(-1, 1);
    std::array<glm::dmat4, kMatrices> result;
    for (glm::dmat4& m : result) {
      for (int k = 0; k < 16; ++k) m[k / 4][k % 4] = number(engine) + (k % 5 == 0 ? 4 : 0);
    }
    return result;
  }();
  return matrices;
}

void InverseByKernel(benchmark::State& aState) {
  for (auto _ : aState) {
    for (const glm::dmat4& m : Matrices()) {
      GMatrix matrix(4, 4, &m[0][0]);  // its one allocation is included in the time
      benchmark::DoNotOptimize(matrix.Invert());
      benchmark::DoNotOptimize(matrix.Data());
    }
  }
  aState.SetItemsProcessed(aState.iterations() * kMatrices);
}

void InverseByGlm(benchmark::State& aState) {
  for (auto _ : aState) {
    for (const glm::dmat4& m : Matrices()) {
      glm::dmat4 inverse = glm::inverse(m);
      benchmark::DoNotOptimize(inverse);
    }
  }
  aState.SetItemsProcessed(aState.iterations() * kMatrices);
}

BENCHMARK(InverseByKernel);
BENCHMARK(InverseByGlm);

}  // namespace

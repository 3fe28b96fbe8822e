// ImageBenchmark: loads bitmap files, compared with the readers of two libraries, and runs the colour
// operations, compared with plain loops. An image has 16 megapixels. The file is in the system's cache.

#include <SDL.h>
#include <benchmark/benchmark.h>
#include <gllib/GLClasses.h>
#include <gllib/IGLPixmap.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <vector>

#include "component/CreateObject.h"

#define STB_IMAGE_IMPLEMENTATION
#define STBI_ONLY_BMP
#define STB_IMAGE_STATIC
#include <stb/stb_image.h>

namespace {

constexpr int kSide = 4096;
constexpr std::int64_t kPixels = std::int64_t{kSide} * kSide;

/// A bitmap file of one depth; the destructor deletes it.
class ImageFile {
 public:
  explicit ImageFile(int aBits)
      : m_Path(std::filesystem::temp_directory_path() /
               ("gllib-benchmark-" + std::to_string(aBits) + ".bmp")) {
    const std::size_t offset = aBits == 8 ? 54 + 1024 : 54;
    std::vector<std::uint8_t> file(offset +
                                   static_cast<std::size_t>(kPixels) * static_cast<std::size_t>(aBits) / 8);
    const auto put = [&file](std::size_t aPlace, std::uint32_t aValue) {
      for (int i = 0; i < 4; ++i) file[aPlace++] = static_cast<std::uint8_t>(aValue >> 8 * i);
    };
    file[0] = 'B';
    file[1] = 'M';
    put(2, static_cast<std::uint32_t>(file.size()));
    put(10, static_cast<std::uint32_t>(offset));
    put(14, 40);
    put(18, kSide);
    put(22, kSide);
    put(26, 1 | static_cast<std::uint32_t>(aBits) << 16);
    for (std::uint32_t i = 54; i < offset; i += 4) put(i, i * 0x030201u & 0xFFFFFF);
    for (std::size_t i = offset; i < file.size(); ++i)
      file[i] = static_cast<std::uint8_t>(i * 2654435761u >> 24);
    std::ofstream(m_Path, std::ios::binary)
        .write(reinterpret_cast<const char*>(file.data()), static_cast<std::streamsize>(file.size()));
  }
  ~ImageFile() { std::filesystem::remove(m_Path); }
  ImageFile(const ImageFile&) = delete;
  ImageFile& operator=(const ImageFile&) = delete;

  std::string Name() const { return m_Path.string(); }
  std::u16string WideName() const { return m_Path.u16string(); }

 private:
  std::filesystem::path m_Path;
};

void CountPixels(benchmark::State& aState) { aState.SetItemsProcessed(aState.iterations() * kPixels); }

void LoadThroughPixmap(benchmark::State& aState) {
  const ImageFile file(static_cast<int>(aState.range(0)));
  const std::u16string name = file.WideName();
  const BSTR text = SysAllocStringLen(name.data(), static_cast<unsigned>(name.size()));
  for (auto _ : aState) {
    const auto pixmap = CreateObject<IGLPixmap>(CLSID_GLPixmap);
    if (pixmap->LoadImageFile(text) != S_OK) aState.SkipWithError("not loaded");
  }
  SysFreeString(text);
  CountPixels(aState);
}

void LoadThroughStb(benchmark::State& aState) {
  const ImageFile file(static_cast<int>(aState.range(0)));
  for (auto _ : aState) {
    int width, height, channels;
    stbi_uc* pixels = stbi_load(file.Name().c_str(), &width, &height, &channels, 4);
    if (pixels == nullptr) aState.SkipWithError("not loaded");
    stbi_image_free(pixels);
  }
  CountPixels(aState);
}

/// Keeps the file's pixel format: 8-bit pixels stay indices.
void LoadThroughSdl(benchmark::State& aState) {
  const ImageFile file(static_cast<int>(aState.range(0)));
  for (auto _ : aState) {
    SDL_Surface* surface = SDL_LoadBMP(file.Name().c_str());
    if (surface == nullptr) aState.SkipWithError("not loaded");
    SDL_FreeSurface(surface);
  }
  CountPixels(aState);
}

/// Converts to RGBA, the result of the other two readers.
void LoadThroughSdlToRGBA(benchmark::State& aState) {
  const ImageFile file(static_cast<int>(aState.range(0)));
  for (auto _ : aState) {
    SDL_Surface* surface = SDL_LoadBMP(file.Name().c_str());
    SDL_Surface* turned = SDL_ConvertSurfaceFormat(surface, SDL_PIXELFORMAT_RGBA32, 0);
    if (turned == nullptr) aState.SkipWithError("not loaded");
    SDL_FreeSurface(turned);
    SDL_FreeSurface(surface);
  }
  CountPixels(aState);
}

// Colour operations, and plain loops with the same arithmetic.

const GLDATA_RGBA kScale = {0.5f, 1.5f, 0.9f, 1.0f};
const std::vector<float> kFactors(256, 0.75f);
constexpr GLDATA_RGBA4B kTint = {200, 150, 100, 255};

void ScaleInLoop(std::vector<GLDATA_RGBA4B>& aPixels) {
  const auto scaled = [](std::uint8_t aValue, float aFactor) {
    return static_cast<std::uint8_t>(std::min(255.0f, static_cast<float>(aValue) * aFactor));
  };
  for (GLDATA_RGBA4B& p : aPixels) {
    p = {scaled(p.m_bRed, kScale.m_fRed), scaled(p.m_bGreen, kScale.m_fGreen),
         scaled(p.m_bBlue, kScale.m_fBlue), scaled(p.m_bAlpha, kScale.m_fAlpha)};
  }
}

void Scale256InLoop(std::vector<GLDATA_RGBA4B>& aPixels) {
  const auto scaled = [](std::uint8_t aValue) {
    return static_cast<std::uint8_t>(static_cast<int>(static_cast<float>(aValue) * kFactors[aValue]));
  };
  for (GLDATA_RGBA4B& p : aPixels) p = {scaled(p.m_bRed), scaled(p.m_bGreen), scaled(p.m_bBlue), p.m_bAlpha};
}

void NegativeInLoop(std::vector<GLDATA_RGBA4B>& aPixels) {
  for (GLDATA_RGBA4B& p : aPixels) {
    p.m_bRed = static_cast<std::uint8_t>(~p.m_bRed);
    p.m_bGreen = static_cast<std::uint8_t>(~p.m_bGreen);
    p.m_bBlue = static_cast<std::uint8_t>(~p.m_bBlue);
  }
}

void MonochromeInLoop(std::vector<GLDATA_RGBA4B>& aPixels) {
  const auto sum = static_cast<float>(kTint.m_bRed + kTint.m_bGreen + kTint.m_bBlue);
  const float red = kTint.m_bRed / sum, green = kTint.m_bGreen / sum, blue = kTint.m_bBlue / sum;
  for (GLDATA_RGBA4B& p : aPixels) {
    const float grey = static_cast<float>(p.m_bRed + p.m_bGreen + p.m_bBlue) / 3.0f;
    p.m_bRed = static_cast<std::uint8_t>(red * grey);
    p.m_bGreen = static_cast<std::uint8_t>(green * grey);
    p.m_bBlue = static_cast<std::uint8_t>(blue * grey);
  }
}

template <class Operation>
void ColorsOfPixmap(benchmark::State& aState, Operation aOperation) {
  const auto pixmap = CreateObject<IGLPixmap>(CLSID_GLPixmap);
  pixmap->Initialize(kSide, kSide, {200, 150, 100, 255});
  for (auto _ : aState) aOperation(*pixmap);
  CountPixels(aState);
}

void ColorsInLoop(benchmark::State& aState, void (*aOperation)(std::vector<GLDATA_RGBA4B>&)) {
  std::vector<GLDATA_RGBA4B> pixels(kPixels, {200, 150, 100, 255});
  for (auto _ : aState) {
    aOperation(pixels);
    benchmark::DoNotOptimize(pixels.data());
    benchmark::ClobberMemory();
  }
  CountPixels(aState);
}

void ScalePixmap(IGLPixmap& aPixmap) { aPixmap.ScaleColor(const_cast<GLDATA_RGBA*>(&kScale)); }
void Scale256Pixmap(IGLPixmap& aPixmap) { aPixmap.ScaleColor256(256, const_cast<float*>(kFactors.data())); }
void NegativePixmap(IGLPixmap& aPixmap) { aPixmap.MakeNegative(0); }
void MonochromePixmap(IGLPixmap& aPixmap) { aPixmap.MakeMonochrome(kTint); }

void EveryDepth(benchmark::internal::Benchmark* aBenchmark) {
  aBenchmark->Arg(8)->Arg(24)->Arg(32)->ArgName("bits")->Unit(benchmark::kMillisecond);
}

}  // namespace

BENCHMARK(LoadThroughPixmap)->Apply(EveryDepth);
BENCHMARK(LoadThroughStb)->Apply(EveryDepth);
BENCHMARK(LoadThroughSdl)->Apply(EveryDepth);
BENCHMARK(LoadThroughSdlToRGBA)->Apply(EveryDepth);

BENCHMARK_CAPTURE(ColorsOfPixmap, ScaleColor, ScalePixmap)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ColorsInLoop, ScaleColor, ScaleInLoop)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ColorsOfPixmap, ScaleColor256, Scale256Pixmap)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ColorsInLoop, ScaleColor256, Scale256InLoop)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ColorsOfPixmap, MakeNegative, NegativePixmap)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ColorsInLoop, MakeNegative, NegativeInLoop)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ColorsOfPixmap, MakeMonochrome, MonochromePixmap)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ColorsInLoop, MakeMonochrome, MonochromeInLoop)->Unit(benchmark::kMillisecond);

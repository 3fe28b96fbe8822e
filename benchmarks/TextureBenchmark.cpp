// TextureBenchmark: draws a textured face of 512 by 512 pixels, compared with the same GL calls without the
// component. Each face loads the image and all mipmap levels.

#include <benchmark/benchmark.h>
#include <gllib/GLClasses.h>
#include <gllib/GLLib.h>

#include <vector>

#include "PlainContext.h"
#include "component/CreateObject.h"

namespace {

constexpr int kSide = 512;
GLDATA_POINT g_Normal = {0, 0, 1};
GLDATA_POINT g_aCorners[4] = {{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}};
constexpr float kS[4] = {0, 1, 1, 0}, kT[4] = {0, 0, 1, 1};

GLPtr<IGLPixmap> NewPixmap() {
  auto pixmap = CreateObject<IGLPixmap>(CLSID_GLPixmap);
  pixmap->Initialize(kSide, kSide, {200, 100, 50, 255});
  return pixmap;
}

void FaceThroughTexture(benchmark::State& aState) {
  const PlainContext context(kSide, kSide);
  const auto pixmap = NewPixmap();
  const auto texture = CreateObject<IGLTexture2D>(CLSID_GLTexture2D);
  texture->Initialize(pixmap.Get());
  const auto draw = [&] {
    texture->BeginDraw(nullptr, GLTM_MODULATE, 1, 1, 0, &g_Normal, nullptr);
    for (int i = 0; i < 4; ++i) texture->Draw(kS[i], kT[i], &g_aCorners[i]);
    texture->EndDraw();
    glFinish();
  };
  draw();  // creates the mipmap levels; the plain version has them from the start
  for (auto _ : aState) draw();
}

void FaceThroughPlainGL(benchmark::State& aState) {
  const PlainContext context(kSide, kSide);
  const auto pixmap = NewPixmap();
  int count;
  GLDATA_RGBA4B* pixels;
  pixmap->AccessPixmapData(&count, &pixels);
  std::vector<std::vector<GLDATA_RGBA4B>> levels;
  for (int side = kSide; side > 0; side /= 2) {
    levels.emplace_back(static_cast<std::size_t>(side) * static_cast<std::size_t>(side));
    gluScaleImage(GL_RGBA, kSide, kSide, GL_UNSIGNED_BYTE, pixels, side, side, GL_UNSIGNED_BYTE,
                  levels.back().data());
  }
  for (auto _ : aState) {
    glDisable(GL_TEXTURE_1D);
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP);
    for (int level = 0; level < static_cast<int>(levels.size()); ++level) {
      glTexImage2D(GL_TEXTURE_2D, level, 4, kSide >> level, kSide >> level, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                   levels[static_cast<std::size_t>(level)].data());
    }
    glBegin(GL_POLYGON);
    glNormal3d(g_Normal.x, g_Normal.y, g_Normal.z);
    for (int i = 0; i < 4; ++i) {
      glTexCoord2f(kS[i], kT[i]);
      glVertex3d(g_aCorners[i].x, g_aCorners[i].y, g_aCorners[i].z);
    }
    glEnd();
    glDisable(GL_TEXTURE_2D);
    glFinish();
  }
}

}  // namespace

BENCHMARK(FaceThroughTexture)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(FaceThroughPlainGL)->Unit(benchmark::kMillisecond)->UseRealTime();

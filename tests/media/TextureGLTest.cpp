// Textures: GL calls, and faces compared with plain GL. Plain rendering context.

#include "support/GLRecorder.h"
#include "support/PlainGL.h"

namespace {

GLDATA_POINT g_Normal = {0, 0, 1};
GLDATA_POINT g_aCorners[4] = {{-1, -1, -2}, {1, -1, -2}, {1, 1, -9}, {-1, 1, -9}};
constexpr float kS[4] = {-0.5f, 2.5f, 2.5f, -0.5f}, kT[4] = {-0.5f, -0.5f, 3.5f, 3.5f};
GLDATA_RGBA g_Blend = {0.25f, 0.5f, 0.75f, 1};
constexpr GLenum kMaxLevel = 0x813D;  // GL_TEXTURE_MAX_LEVEL of GL 1.2, which not every gl.h declares

struct Look {
  int m_iMode;
  LONG m_iPixels, m_iMipmaps, m_iRepeat;
};

/// Returns an image whose neighbouring pixels differ; half of them are transparent.
GLPtr<IGLPixmap> NewPixmap(int aWidth, int aHeight) {
  auto pixmap = GLCreate<IGLPixmap>(CLSID_GLPixmap);
  pixmap->Initialize(aWidth, aHeight, {});
  int count;
  GLDATA_RGBA4B* pixels;
  pixmap->AccessPixmapData(&count, &pixels);
  auto* bytes = reinterpret_cast<std::uint8_t*>(pixels);
  for (int i = 0; i < 4 * count; ++i) bytes[i] = static_cast<std::uint8_t>(i % 8 == 3 ? 128 : i * 37);
  return pixmap;
}

template <class Texture>
void Begin(Texture& aTexture, const Look& aLook) {
  EXPECT_EQ(aTexture.BeginDraw(nullptr, eGLTextureMode(aLook.m_iMode), aLook.m_iPixels, aLook.m_iMipmaps,
                               aLook.m_iRepeat, &g_Normal, &g_Blend),
            S_OK);
}
void DrawFace(IGLTexture1D& aTexture, const Look& aLook) {
  Begin(aTexture, aLook);
  aTexture.Draw(&g_aCorners[0], kS[0], &g_aCorners[3], kS[3]);
  aTexture.Draw(&g_aCorners[1], kS[1], &g_aCorners[2], kS[2]);
  aTexture.EndDraw();
}
void DrawFace(IGLTexture2D& aTexture, const Look& aLook) {
  Begin(aTexture, aLook);
  for (int i = 0; i < 4; ++i) aTexture.Draw(kS[i], kT[i], &g_aCorners[i]);
  aTexture.EndDraw();
}
template <class Texture>
GLPtr<Texture> NewTexture(const GLPtr<IGLPixmap>& aPixmap) {
  constexpr bool kFlat = std::is_same_v<Texture, IGLTexture2D>;
  auto texture = GLCreate<Texture>(kFlat ? CLSID_GLTexture2D : CLSID_GLTexture1D);
  texture->Initialize(aPixmap.Get());
  return texture;
}

/// Draws the same face in plain GL, for images whose sides are powers of two. The levels end at a side of 1.
void DrawPlainFace(GLenum aTarget, IGLPixmap& aPixmap, const Look& aLook) {
  static constexpr GLint kModes[] = {GL_MODULATE, GL_DECAL, GL_BLEND};
  static constexpr GLint kFilters[] = {GL_NEAREST_MIPMAP_NEAREST, GL_LINEAR_MIPMAP_NEAREST,
                                       GL_NEAREST_MIPMAP_LINEAR, GL_LINEAR_MIPMAP_LINEAR};
  glEnable(aTarget);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, kModes[aLook.m_iMode > 3 ? 1 : aLook.m_iMode - 1]);
  glTexEnvfv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_COLOR, &g_Blend.m_fRed);
  glTexParameteri(aTarget, GL_TEXTURE_MAG_FILTER, aLook.m_iPixels != 0 ? GL_LINEAR : GL_NEAREST);
  glTexParameteri(aTarget, GL_TEXTURE_MIN_FILTER,
                  kFilters[(aLook.m_iPixels != 0) * 2 + (aLook.m_iMipmaps != 0)]);
  for (const GLenum wrap : {GL_TEXTURE_WRAP_S, GL_TEXTURE_WRAP_T})
    glTexParameteri(aTarget, wrap, aLook.m_iRepeat != 0 ? GL_REPEAT : GL_CLAMP);
  GLDATA_RGBA4B* pixels;
  int count, width, height;
  aPixmap.AccessPixmapData(&count, &pixels);
  aPixmap.GetWidth(&width);
  aPixmap.GetHeight(&height);
  if (aTarget == GL_TEXTURE_1D) width = count, height = 1;
  std::vector<GLDATA_RGBA4B> level(pixels, pixels + count);
  for (int i = 0, w = width, h = height; w > 0 && h > 0; ++i, w /= 2, h = height == 1 ? 1 : h / 2) {
    glTexParameteri(aTarget, kMaxLevel, i);
    if (i > 0)
      gluScaleImage(GL_RGBA, width, height, GL_UNSIGNED_BYTE, pixels, w, h, GL_UNSIGNED_BYTE, level.data());
    if (aTarget == GL_TEXTURE_1D) glTexImage1D(aTarget, i, 4, w, 0, GL_RGBA, GL_UNSIGNED_BYTE, level.data());
    if (aTarget == GL_TEXTURE_2D)
      glTexImage2D(aTarget, i, 4, w, h, 0, GL_RGBA, GL_UNSIGNED_BYTE, level.data());
  }
  glBegin(aTarget == GL_TEXTURE_1D ? GL_QUADS : GL_POLYGON);  // primitives of the component
  for (int i = 0; i < 4; ++i) {
    glTexCoord2f(kS[i], kT[i]);
    glVertex3dv(&g_aCorners[i].x);
  }
  glEnd();
  glDisable(aTarget);
}

/// Draws a face in each mode, side by side.
Picture DrawEveryLook(const std::function<void(const Look&)>& aDraw) {
  return DrawPlainGL(8 * 32, 4 * 32, [&] {
    glMatrixMode(GL_PROJECTION);
    glFrustum(-0.5, 0.5, -0.5, 0.1, 1, 10);
    glColor4f(0.9f, 0.6f, 0.4f, 0.8f);
    for (int i = 0; i < 32; ++i) {
      glViewport(i % 8 * 32, i / 8 * 32, 32, 32);
      aDraw({std::array{1, 2, 3, 7}[static_cast<std::size_t>(i / 8)], i & 1, -(i & 2), i & 4});
    }
  });
}

/// Returns the calls of some drawing, without queries.
std::vector<std::string> CallsOf(const std::function<void()>& aDraw, std::string_view aFamily = "gl") {
  std::vector<std::string> calls;
  DrawPlainGL(8, 8, [&] {
    const GLRecorder recorder;
    aDraw();
    calls = recorder.Calls();
  });
  std::erase_if(calls,
                [&](const std::string& a) { return a.starts_with("glGet") || !a.starts_with(aFamily); });
  return calls;
}

}  // namespace

TEST(TextureGL, FaceEqualsPlainGLInEachMode) {
  for (const auto& [width, height] : {std::pair{32, 32}, {64, 8}}) {
    const auto pixmap = NewPixmap(width, height);
    const auto flat = NewTexture<IGLTexture2D>(pixmap);
    const Picture flats = DrawEveryLook([&](const Look& a) { DrawFace(*flat, a); });
    EXPECT_GT(flats.CountOther(0x000000FF), 4000) << "the faces are visible";
    EXPECT_EQ(
        Difference(flats, DrawEveryLook([&](const Look& a) { DrawPlainFace(GL_TEXTURE_2D, *pixmap, a); })), 0)
        << width << " by " << height;
  }
  const auto row = NewPixmap(8, 4);
  const auto strip = NewTexture<IGLTexture1D>(row);
  EXPECT_EQ(Difference(DrawEveryLook([&](const Look& a) { DrawFace(*strip, a); }),
                       DrawEveryLook([&](const Look& a) { DrawPlainFace(GL_TEXTURE_1D, *row, a); })),
            0);
}

TEST(TextureGL, LevelsEndAtAShorterSideOfOne) {
  using Sizes = std::vector<std::pair<int, int>>;
  const std::vector<std::uint8_t> pixels(256 * 256 * 4);
  for (const Sizes& sizes :
       {Sizes{{256, 64}, {128, 32}, {64, 16}, {32, 8}, {16, 4}, {8, 2}, {4, 1}},
        Sizes{{100, 100}, {50, 50}, {25, 25}, {12, 12}, {6, 6}, {3, 3}, {1, 1}}, Sizes{{1, 8}}}) {
    const auto texture = NewTexture<IGLTexture2D>(NewPixmap(sizes[0].first, sizes[0].second));
    const auto load = [&] {
      for (int i = 0; i < std::ssize(sizes); ++i) {
        const auto [width, height] = sizes[static_cast<std::size_t>(i)];
        glTexImage2D(GL_TEXTURE_2D, i, 4, width, height, 0, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
      }
    };
    const auto draw = [&] {
      DrawFace(*texture, {});
      GLint most = 0;
      glGetTexParameteriv(GL_TEXTURE_2D, kMaxLevel, &most);
      EXPECT_EQ(most, 1000) << "GL's default, for the next image";
    };
    EXPECT_EQ(CallsOf(draw, "glTexImage"), CallsOf(load)) << sizes[0].first;
  }
}

TEST(TextureGL, LevelsAreCreatedOncePerImageAndSize) {
  const auto pixmap = NewPixmap(8, 8);
  const auto texture = NewTexture<IGLTexture2D>(pixmap);
  const auto made = [&] {
    return std::ssize(CallsOf([&] { DrawFace(*texture, {1, 1, 1, 1}); }, "gluScaleImage"));
  };
  EXPECT_EQ(made(), 3);
  EXPECT_EQ(made(), 0);
  texture->Initialize(pixmap.Get());
  EXPECT_EQ(made(), 3) << "the documented way to show changed pixels";
  for (const auto& [width, height, levels] : {std::array{64, 32, 5}, {16, 128, 4}, {1, 1, 0}, {16, 128, 4}}) {
    pixmap->Initialize(width, height, {});
    EXPECT_EQ(made(), levels) << width << " by " << height;
  }
}

TEST(TextureGL, ImageThatIsTooLargeCountsAsEmpty) {
  const auto draw = [&]<class Texture>(const GLPtr<Texture>& aFirst, const GLPtr<Texture>& aTexture) {
    return DrawPlainGL(64, 64, [&] {
      glFrustum(-1, 1, -1, 1, 1, 10);
      DrawFace(*aFirst, {2, 0, 0, 1});  // loads an image, which must not appear on the next face
      glClear(GL_COLOR_BUFFER_BIT);
      DrawFace(*aTexture, {2, 0, 0, 1});
      EXPECT_EQ(glGetError(), GL_NO_ERROR);
    });
  };
  const auto expect = [&]<class Texture>(const GLPtr<Texture>& aFirst, const GLPtr<IGLPixmap>& aTooLarge) {
    const auto empty = NewTexture<Texture>(GLCreate<IGLPixmap>(CLSID_GLPixmap));
    const Picture untextured = draw(aFirst, empty);
    EXPECT_GT(untextured.CountOther(0x000000FF), 0) << "the face is visible";
    EXPECT_EQ(Difference(draw(aFirst, NewTexture<Texture>(aTooLarge)), untextured), 0);
  };
  GLint most = 0;
  DrawPlainGL(8, 8, [&] { glGetIntegerv(GL_MAX_TEXTURE_SIZE, &most); });
  const auto image = NewPixmap(8, 8);
  expect(NewTexture<IGLTexture1D>(image), NewPixmap(most / 4 + 1, 4));
  expect(NewTexture<IGLTexture2D>(image), NewPixmap(most + 1, 2));
  expect(NewTexture<IGLTexture2D>(image), NewPixmap(2, most + 1));
}

TEST(TextureGL, HostReplacesTheImageDuringDrawing) {
  GLPtr<IGLPixmap> images[2];
  for (const int i : {0, 1}) {
    images[i] = GLCreate<IGLPixmap>(CLSID_GLPixmap);
    images[i]->Initialize(64 >> i, 64, {255, 255, 255, 255});
  }
  const auto texture = NewTexture<IGLTexture2D>(images[0]);
  const std::jthread host([&](const std::stop_token& stop) {
    for (std::size_t i = 0; !stop.stop_requested(); ++i) texture->Initialize(images[i % 2].Get());
  });
  int wrong = 0;
  DrawPlainGL(8, 8, [&] {
    glFrustum(-1, 1, -1, 1, 1, 10);
    glColor3f(0, 0, 0);
    for (int i = 0; i < 500; ++i) {
      glClear(GL_COLOR_BUFFER_BIT);
      DrawFace(*texture, {2, 1, 1, 1});
      std::uint32_t pixel = 0;
      glReadPixels(4, 3, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, &pixel);
      if (pixel != 0xFFFFFFFF) ++wrong;
    }
  });
  EXPECT_EQ(wrong, 0) << "faces without levels of one image";
}

TEST(TextureGL, PixelStorageOfTheHostHasNoEffect) {
  constexpr std::pair<GLenum, GLint> kStore[] = {{GL_UNPACK_ALIGNMENT, 8}, {GL_UNPACK_ROW_LENGTH, 99},
                                                 {GL_UNPACK_SKIP_ROWS, 7}, {GL_UNPACK_SKIP_PIXELS, 50000},
                                                 {GL_PACK_ALIGNMENT, 8},   {GL_PACK_ROW_LENGTH, 77},
                                                 {GL_PACK_SKIP_ROWS, 5},   {GL_PACK_SKIP_PIXELS, 50000}};
  const auto draw = [&](bool aStore) {
    return DrawPlainGL(64, 64, [&] {
      glFrustum(-1, 1, -1, 1, 1, 10);
      for (const auto& [name, value] : kStore) glPixelStorei(name, aStore ? value : value == 8 ? 4 : 0);
      DrawFace(*NewTexture<IGLTexture1D>(NewPixmap(9, 3)), {1, 1, 1, 1});
      for (const auto& [name, value] : kStore) {
        GLint now = -1;
        glGetIntegerv(name, &now);
        EXPECT_TRUE(now == value || !aStore) << name;
      }
      glTranslatef(0.5f, 0, 0);
      DrawFace(*NewTexture<IGLTexture2D>(NewPixmap(9, 9)), {1, 1, 1, 1});
      for (const auto& [name, value] : kStore)
        glPixelStorei(name, value == 8 ? 4 : 0);  // for reading the picture
    });
  };
  EXPECT_EQ(Difference(draw(true), draw(false)), 0);
}

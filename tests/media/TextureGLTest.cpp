// The textures in GL: what they send, and faces that equal their plain twin's.

#include <gllib/GLClasses.h>
#include <gllib/GLLib.h>
#include <gtest/gtest.h>

#include <array>
#include <memory>

#include "component/CreateObject.h"
#include "support/GLRecorder.h"
#include "support/PlainGL.h"

namespace {

GLDATA_POINT s_Normal = {0, 0, 1};
GLDATA_RGBA s_Blend = {0.25f, 0.5f, 0.75f, 1};

/// An image of no two like pixels, half of them see-through.
GLPtr<IGLPixmap> NewPixmap(int aWidth, int aHeight) {
  auto pixmap = CreateObject<IGLPixmap>(CLSID_GLPixmap);
  pixmap->Initialize(aWidth, aHeight, {});
  for (int y = 0; y < aHeight; ++y) {
    for (int x = 0; x < aWidth; ++x) {
      pixmap->SetPixel(
          x, y,
          {std::uint8_t(x * 37), std::uint8_t(y * 59), std::uint8_t(x * y), std::uint8_t(x % 2 * 127 + 128)});
    }
  }
  return pixmap;
}

template <class Texture>
GLPtr<Texture> NewTexture(const CLSID& aClass, const GLPtr<IGLPixmap>& aPixmap) {
  auto texture = CreateObject<Texture>(aClass);
  if (aPixmap) texture->Initialize(aPixmap.Get());
  return texture;
}
GLPtr<IGLTexture1D> NewTexture1D(const GLPtr<IGLPixmap>& aPixmap) {
  return NewTexture<IGLTexture1D>(CLSID_GLTexture1D, aPixmap);
}
GLPtr<IGLTexture2D> NewTexture2D(const GLPtr<IGLPixmap>& aPixmap) {
  return NewTexture<IGLTexture2D>(CLSID_GLTexture2D, aPixmap);
}

/// How a face looks, and the corners that it has in both dimensions' order.
struct Look {
  int m_iMode;
  LONG m_iPixels, m_iMipmaps, m_iRepeat;
};
GLDATA_POINT s_aCorners[4] = {{-1, -1, -2}, {1, -1, -2}, {1, 1, -9}, {-1, 1, -9}};
constexpr float kS[4] = {-0.5f, 2.5f, 2.5f, -0.5f}, kT[4] = {-0.5f, -0.5f, 3.5f, 3.5f};

template <class Texture>
HRESULT Begin(Texture& aTexture, const Look& aLook, GLDATA_RGBA* aBlend = &s_Blend) {
  return aTexture.BeginDraw(nullptr, eGLTextureMode(aLook.m_iMode), aLook.m_iPixels, aLook.m_iMipmaps,
                            aLook.m_iRepeat, &s_Normal, aBlend);
}
void DrawFace(IGLTexture1D& aTexture, const Look& aLook) {
  Begin(aTexture, aLook);
  aTexture.Draw(&s_aCorners[0], kS[0], &s_aCorners[3], kS[3]);
  aTexture.Draw(&s_aCorners[1], kS[1], &s_aCorners[2], kS[2]);
  aTexture.EndDraw();
}
void DrawFace(IGLTexture2D& aTexture, const Look& aLook) {
  Begin(aTexture, aLook);
  for (int i = 0; i < 4; ++i) aTexture.Draw(kS[i], kT[i], &s_aCorners[i]);
  aTexture.EndDraw();
}

/// The twin of a face, for images whose sides are powers of two.
void DrawPlainFace(GLenum aTarget, const void* aPixels, int aWidth, int aHeight, const Look& aLook) {
  const bool flat = aTarget == GL_TEXTURE_2D;
  glEnable(aTarget);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE,
            aLook.m_iMode == 1   ? GL_MODULATE
            : aLook.m_iMode == 3 ? GL_BLEND
                                 : GL_DECAL);
  glTexEnvfv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_COLOR, &s_Blend.m_fRed);
  glTexParameteri(aTarget, GL_TEXTURE_MAG_FILTER, aLook.m_iPixels != 0 ? GL_LINEAR : GL_NEAREST);
  glTexParameteri(aTarget, GL_TEXTURE_MIN_FILTER,
                  aLook.m_iPixels != 0
                      ? (aLook.m_iMipmaps != 0 ? GL_LINEAR_MIPMAP_LINEAR : GL_NEAREST_MIPMAP_LINEAR)
                      : (aLook.m_iMipmaps != 0 ? GL_LINEAR_MIPMAP_NEAREST : GL_NEAREST_MIPMAP_NEAREST));
  for (const GLenum wrap : {GL_TEXTURE_WRAP_S, GL_TEXTURE_WRAP_T}) {
    glTexParameteri(aTarget, wrap, aLook.m_iRepeat != 0 ? GL_REPEAT : GL_CLAMP);
  }
  std::vector<std::uint8_t> level(static_cast<std::size_t>(aWidth * aHeight * 4));
  for (int i = 0, w = aWidth, h = aHeight; w > 0 && h > 0; ++i, w /= 2, h = flat ? h / 2 : 1) {
    gluScaleImage(GL_RGBA, aWidth, aHeight, GL_UNSIGNED_BYTE, aPixels, w, h, GL_UNSIGNED_BYTE, level.data());
    const void* pixels = i == 0 ? aPixels : level.data();
    if (flat) glTexImage2D(aTarget, i, 4, w, h, 0, GL_RGBA, GL_UNSIGNED_BYTE, pixels);
    if (!flat) glTexImage1D(aTarget, i, 4, w, 0, GL_RGBA, GL_UNSIGNED_BYTE, pixels);
  }
  glBegin(GL_QUADS);
  for (int i = 0; i < 4; ++i) {
    glTexCoord2f(kS[i], kT[i]);
    glVertex3dv(&s_aCorners[i].x);
  }
  glEnd();
  glDisable(aTarget);
}

/// A face of every look, one beside the other.
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

/// The calls that send a face, without those that only ask.
std::vector<std::string> CallsOfFace(const std::function<void()>& aDraw) {
  std::vector<std::string> calls;
  DrawPlainGL(8, 8, [&] {
    const GLRecorder recorder;
    aDraw();
    calls = recorder.Calls();
  });
  std::erase_if(calls, [](const std::string& aCall) { return aCall.starts_with("glGet"); });
  return calls;
}

}  // namespace

TEST(TextureGL, FaceEqualsItsPlainTwinInEveryModeFilterAndWrap) {
  const auto pixmap = NewPixmap(32, 32);
  const auto texture1 = NewTexture1D(NewPixmap(8, 4));
  const auto texture2 = NewTexture2D(pixmap);
  int count;
  GLDATA_RGBA4B *pixels1, *pixels2;
  const auto row = NewPixmap(8, 4);
  row->AccessPixmapData(&count, &pixels1);
  pixmap->AccessPixmapData(&count, &pixels2);
  const Picture ours = DrawEveryLook([&](const Look& aLook) { DrawFace(*texture2, aLook); });
  EXPECT_EQ(Difference(ours, DrawEveryLook([&](const Look& aLook) {
                         DrawPlainFace(GL_TEXTURE_2D, pixels2, 32, 32, aLook);
                       })),
            0);
  EXPECT_LT(ours.CountOther(0x000000FF), 8 * 32 * 4 * 32);
  EXPECT_GT(ours.CountOther(0x000000FF), 4000) << "the faces are seen";
  EXPECT_EQ(Difference(DrawEveryLook([&](const Look& aLook) { DrawFace(*texture1, aLook); }),
                       DrawEveryLook(
                           [&](const Look& aLook) { DrawPlainFace(GL_TEXTURE_1D, pixels1, 32, 1, aLook); })),
            0);
}

TEST(TextureGL, LevelsHalveUntilTheShorterSideIsOne) {
  using Sizes = std::vector<std::pair<int, int>>;
  for (const auto& [width, height, levels] :
       {std::tuple(256, 64, Sizes{{128, 32}, {64, 16}, {32, 8}, {16, 4}, {8, 2}, {4, 1}}),
        {100, 100, Sizes{{50, 50}, {25, 25}, {12, 12}, {6, 6}, {3, 3}, {1, 1}}},
        {1, 1, Sizes{}},
        {1, 8, Sizes{}}}) {
    std::vector<std::string> expected;
    const auto add = [&](std::size_t aLevel, int aWidth, int aHeight) {
      expected.push_back("glTexImage2D(GL_TEXTURE_2D, " + std::to_string(aLevel) + ", 4, " +
                         std::to_string(aWidth) + ", " + std::to_string(aHeight) +
                         ", 0, GL_RGBA, GL_UNSIGNED_BYTE, data)");
    };
    add(0, width, height);
    for (std::size_t i = 0; i < levels.size(); ++i) add(i + 1, levels[i].first, levels[i].second);
    auto calls = CallsOfFace([&] { DrawFace(*NewTexture2D(NewPixmap(width, height)), {2, 0, 0, 0}); });
    std::erase_if(calls, [](const std::string& aCall) { return !aCall.starts_with("glTexImage"); });
    EXPECT_EQ(calls, expected) << width << " by " << height;
  }
}

TEST(TextureGL, SendsAFaceInItsOrder) {
  const std::vector<std::string> expected = {
      "glDisable(GL_TEXTURE_2D)",
      "glEnable(GL_TEXTURE_1D)",
      "glEnable(GL_BLEND)",
      "glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)",
      "glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_DECAL)",
      "glTexEnvfv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_COLOR, {0.25, 0.5, 0.75, 1})",
      "glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_MAG_FILTER, GL_NEAREST)",
      "glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_NEAREST)",
      "glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_WRAP_S, GL_CLAMP)",
      "glTexImage1D(GL_TEXTURE_1D, 0, 4, 2, 0, GL_RGBA, GL_UNSIGNED_BYTE, data)",
      "gluScaleImage(GL_RGBA, 2, 1, GL_UNSIGNED_BYTE, data, 1, 1, GL_UNSIGNED_BYTE, out)",
      "glTexImage1D(GL_TEXTURE_1D, 1, 4, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, data)",
      "glBegin(GL_QUAD_STRIP)",
      "glNormal3d(0, 0, 1)",
      "glTexCoord1f(-0.5)",
      "glVertex3d(-1, -1, -2)",
      "glTexCoord1f(-0.5)",
      "glVertex3d(-1, 1, -9)",
      "glTexCoord1f(2.5)",
      "glVertex3d(1, -1, -2)",
      "glTexCoord1f(2.5)",
      "glVertex3d(1, 1, -9)",
      "glEnd()",
      "glDisable(GL_TEXTURE_1D)"};
  EXPECT_EQ(CallsOfFace([] { DrawFace(*NewTexture1D(NewPixmap(1, 2)), {9, 0, 5, 0}); }), expected);
  const std::vector<std::string> without = {"glDisable(GL_TEXTURE_1D)",
                                            "glEnable(GL_TEXTURE_2D)",
                                            "glEnable(GL_BLEND)",
                                            "glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)",
                                            "glBegin(GL_POLYGON)",
                                            "glNormal3d(0, 0, 1)",
                                            "glEnd()",
                                            "glDisable(GL_TEXTURE_2D)"};
  EXPECT_EQ(CallsOfFace([] {
              const auto texture = NewTexture2D(nullptr);
              EXPECT_EQ(texture->Initialize(nullptr), E_INVALIDARG);
              EXPECT_EQ(texture->BeginDraw(nullptr, GLTM_DECAL, 0, 0, 0, nullptr, nullptr), E_INVALIDARG);
              Begin(*texture, {1, 0, 0, 0});
              texture->EndDraw();
            }),
            without);
}

TEST(TextureGL, LevelsAreMadeOnceForEveryImageAndSize) {
  const auto pixmap = NewPixmap(8, 8);
  const auto texture = NewTexture2D(pixmap);
  const auto made = [&](int aWidth, int aHeight, bool aInitialize) {
    int count = 0, width, height;
    pixmap->GetWidth(&width);
    pixmap->GetHeight(&height);
    if (width != aWidth || height != aHeight) pixmap->Initialize(aWidth, aHeight, {});
    if (aInitialize) texture->Initialize(pixmap.Get());
    for (const std::string& call : CallsOfFace([&] { DrawFace(*texture, {1, 1, 1, 1}); })) {
      count += call.starts_with("gluScaleImage") ? 1 : 0;
    }
    return count;
  };
  EXPECT_EQ(made(8, 8, false), 3);
  EXPECT_EQ(made(8, 8, false), 0);
  EXPECT_EQ(made(8, 8, true), 3) << "the way to show changed pixels";
  EXPECT_EQ(made(64, 32, false), 5);
  EXPECT_EQ(made(16, 128, false), 4);
  EXPECT_EQ(made(1, 1, false), 0);
}

TEST(TextureGL, PixelStoreOfTheHostNeitherShowsNorChanges) {
  constexpr std::array<std::pair<GLenum, GLint>, 8> kStore = {{{GL_UNPACK_ALIGNMENT, 8},
                                                               {GL_UNPACK_ROW_LENGTH, 99},
                                                               {GL_UNPACK_SKIP_ROWS, 7},
                                                               {GL_UNPACK_SKIP_PIXELS, 50000},
                                                               {GL_PACK_ALIGNMENT, 8},
                                                               {GL_PACK_ROW_LENGTH, 77},
                                                               {GL_PACK_SKIP_ROWS, 5},
                                                               {GL_PACK_SKIP_PIXELS, 50000}}};
  const auto draw = [&](bool aOneRow, bool aStore) {
    const auto pixmap = NewPixmap(9, 3);
    return DrawPlainGL(64, 64, [&] {
      glFrustum(-1, 1, -1, 1, 1, 10);
      for (const auto& [name, value] : kStore) {
        if (aStore) glPixelStorei(name, value);
      }
      if (!aOneRow) DrawFace(*NewTexture2D(pixmap), {1, 1, 1, 1});
      if (aOneRow) DrawFace(*NewTexture1D(pixmap), {1, 1, 1, 1});
      for (std::size_t i = aOneRow ? 0 : 4; i < kStore.size() && aStore; ++i) {
        GLint value = -1;
        glGetIntegerv(kStore[i].first, &value);
        EXPECT_EQ(value, kStore[i].second) << "parameter " << i;
      }
      for (const auto& [name, value] : kStore)
        glPixelStorei(name, value == 8 ? 4 : 0);  // for reading the picture
    });
  };
  for (const bool oneRow : {true, false}) EXPECT_EQ(Difference(draw(oneRow, true), draw(oneRow, false)), 0);
}

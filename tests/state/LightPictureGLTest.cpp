// Lights, fog and materials as they are seen: beside the same scene in plain GL, and the light numbers of two
// contexts that draw at the same time.

#include <bit>

#include "platform/GL.h"
#include "support/PlainGL.h"
#include "support/Scene.h"
#include "support/Test.h"

namespace {

constexpr int kSize = 96;

/// A sphere of radius 40, in plain GL for both sides.
void DrawSphere() {
  const auto vertex = [&](int aRing, int aSegment) {
    const double theta = std::numbers::pi * aRing / 24, phi = 2 * std::numbers::pi * aSegment / 32;
    const double x = std::sin(theta) * std::cos(phi), y = std::sin(theta) * std::sin(phi),
                 z = std::cos(theta);
    glNormal3d(x, y, z);
    glVertex3d(40 * x, 40 * y, 40 * z - 60);
  };
  for (int ring = 0; ring < 24; ++ring) {
    glBegin(GL_QUAD_STRIP);
    for (int segment = 0; segment <= 32; ++segment) {
      vertex(ring, segment);
      vertex(ring + 1, segment);
    }
    glEnd();
  }
}

/// What a context with its defaults sets up for a viewer in parallel projection, but for fog and lights.
void PlainPass() {
  constexpr float kAmbient[] = {0.2f, 0.2f, 0.2f, 1.0f};
  glEnable(GL_DEPTH_TEST);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glEnable(GL_LIGHTING);
  glEnable(GL_COLOR_MATERIAL);
  glColorMaterial(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE);
  glLightModelfv(GL_LIGHT_MODEL_AMBIENT, kAmbient);
  glMatrixMode(GL_PROJECTION);
  glOrtho(-50, 50, -50, 50, 0, 1000);
  glMatrixMode(GL_MODELVIEW);
  glTranslated(0, 0, -1);
}

/// A light as a new one shines, at a place (w = 1) or from a direction (w = 0).
void PlainLight(float aX, float aY, float aZ, float aW, GLenum aName = GL_LIGHT0) {
  const float place[] = {aX, aY, aZ, aW}, gray[] = {0.5f, 0.5f, 0.5f, 1.0f}, white[] = {1, 1, 1, 1};
  glEnable(aName);
  glLightfv(aName, GL_AMBIENT, gray);
  glLightfv(aName, GL_DIFFUSE, gray);
  glLightfv(aName, GL_SPECULAR, white);
  glLightfv(aName, GL_POSITION, place);
}

IGLLight& NewLight(const ContextFixture& aFixture) {
  IGLLight* light = nullptr;
  EXPECT_EQ(aFixture.Context().CreateLight(&light), S_OK);
  light->Enable(1);
  return *light;
}

Picture Sphere(ContextFixture& aFixture) {
  return aFixture.FramePicture([](Scene&) { DrawSphere(); });
}
Picture PlainSphere(const std::function<void()>& aLight) {
  return DrawPlainGL(kSize, kSize, [&] {
    PlainPass();
    aLight();
    DrawSphere();
  });
}

/// The GL lights that are lit when the painter is called, as bits.
unsigned LitIn(ContextFixture& aFixture) {
  unsigned lit = 0;
  aFixture.Frame([&](Scene&) {
    for (unsigned i = 0; i < 8; ++i) lit |= glIsEnabled(GL_LIGHT0 + i) ? 1u << i : 0u;
  });
  return lit;
}

}  // namespace

TEST(LightPicture, EqualsPlainGLForEachKindOfLight) {
  const auto shine = [](GLDATA_POINT direction) {
    return [direction](IGLLight& light) mutable {
      light.SetAsSpotlight(0);
      light.SetDirection(&direction);
    };
  };
  const struct {
    const char* m_szName;
    std::function<void(IGLLight&)> m_Ours;
    void (*m_pfnPlain)();
  } cases[] = {
      {"all round, with its own colours and falling off",
       [](IGLLight& light) {
         GLDATA_POINT place{30, 40, 50};
         GLDATA_RGBA red{0.9f, 0.2f, 0.1f, 1};
         light.SetSpotPosition(&place);
         light.SetDiffuseLight(&red);
         light.SetLinearAttenuation(0.01f);
         light.SetQuadraticAttenuation(0.0001f);
       },
       [] {
         constexpr float kRed[] = {0.9f, 0.2f, 0.1f, 1};
         PlainLight(30, 40, 50, 1);
         glLightfv(GL_LIGHT0, GL_DIFFUSE, kRed);
         glLightf(GL_LIGHT0, GL_LINEAR_ATTENUATION, 0.01f);
         glLightf(GL_LIGHT0, GL_QUADRATIC_ATTENUATION, 0.0001f);
       }},
      {"a spot",
       [](IGLLight& light) {
         GLDATA_POINT place{0, 0, 60}, direction{0.1, 0.1, -1};
         light.SetSpotPosition(&place);
         light.SetDirection(&direction);
         light.SetCutOffAngle_DEG(20);
         light.SetSpotExponent(40);
       },
       [] {
         constexpr float kDirection[] = {0.1f, 0.1f, -1};
         PlainLight(0, 0, 60, 1);
         glLightfv(GL_LIGHT0, GL_SPOT_DIRECTION, kDirection);
         glLightf(GL_LIGHT0, GL_SPOT_CUTOFF, 20);
         glLightf(GL_LIGHT0, GL_SPOT_EXPONENT, 40);
       }},
      {"distant", shine({1, -2, -1}), [] { PlainLight(-1, 2, 1, 0); }},
      {"distant, along +z", shine({0, 0, 3}), [] { PlainLight(0, 0, -1, 0); }},
      {"distant, almost along +z", shine({1e-9, 0, 1e-4}), [] { PlainLight(0, 0, -1, 0); }},
      {"off", [](IGLLight& light) { light.Enable(0); }, [] {}},
  };
  for (const auto& c : cases) {
    ContextFixture fixture(kSize, kSize);
    c.m_Ours(NewLight(fixture));
    // A rotation's last bit may differ.
    EXPECT_EQ(Difference(Sphere(fixture), PlainSphere(c.m_pfnPlain), 1), 0) << c.m_szName;
  }
}

TEST(LightPicture, LightsMoveWithTheCoordinateSystemTheyShare) {
  ContextFixture fixture(kSize, kSize);
  const auto coord = GLCreate<IGLCoord>(CLSID_GLCoord);
  IGLLight &spot = NewLight(fixture), &distant = NewLight(fixture);
  EXPECT_EQ(spot.AttachCoord(coord.Get()), S_OK);
  EXPECT_EQ(distant.AttachCoord(coord.Get()), S_OK);
  distant.SetAsSpotlight(0);
  for (const float x : {-60.0f, 60.0f}) {
    GLDATA_MATRIX6D placement{x, 20, 10, 0, std::numbers::pi / 2, 0};  // the system's +z is the world's +x
    coord->SetMatrix6d(&placement);
    const Picture plain = PlainSphere([&] {
      PlainLight(x + 1, 20, 10, 1);
      PlainLight(1, 0, 0, 0, GL_LIGHT1);
    });
    EXPECT_EQ(Difference(Sphere(fixture), plain, 1), 0) << x;
  }
}

TEST(LightPicture, IsBlackWithNoLightAtAll) {
  ContextFixture fixture(kSize, kSize);
  EXPECT_GT(Sphere(fixture).CountOther(0x000000FF), 0) << "the light that comes from everywhere";
  fixture.Context().EnableAmbientLight(0);
  EXPECT_EQ(Sphere(fixture).CountOther(0x000000FF), 0);
}

TEST(Fog, IsWhatGLHasInEveryFrame) {
  ContextFixture fixture(kSize, kSize);
  GLPtr<IGLFog> fog;
  fixture.Context().GetFog(fog.Put());
  GLDATA_RGBA blue{0.1f, 0.2f, 0.8f, 0};
  fog->SetFogColor(&blue);
  fog->SetFogStartAndEnd(25, 70);
  fog->SetFogDensity(0.02f);
  for (const auto& [enabled, mode, plain] : {std::tuple{1, GLFM_CALCULATE_LINEAR, GL_LINEAR},
                                             {1, GLFM_CALCULATE_EXPONENT, GL_EXP},
                                             {1, GLFM_CALCULATE_EXPONENT_SQUARE, GL_EXP2},
                                             {0, GLFM_CALCULATE_EXPONENT_SQUARE, GL_EXP2}}) {
    fog->SetCalcMode(mode);
    fog->Enable(enabled);
    fixture.Frame([on = enabled, wanted = plain](Scene&) {
      EXPECT_EQ(glIsEnabled(GL_FOG), on);
      if (on == 0) return;
      float values[8] = {};
      GLenum next = 0;
      for (const GLenum name : {GL_FOG_MODE, GL_FOG_START, GL_FOG_END, GL_FOG_DENSITY, GL_FOG_COLOR})
        glGetFloatv(name, &values[next++]);
      EXPECT_EQ(std::vector(values, values + 8),
                (std::vector<float>{static_cast<float>(wanted), 25, 70, 0.02f, 0.1f, 0.2f, 0.8f, 1}));
    });
  }
}

TEST(Material, IsWhatGLHasOnBothSides) {
  ContextFixture fixture(kSize, kSize);
  const auto material = GLCreate<IGLMaterial>(CLSID_GLMaterial);
  GLDATA_RGBA red{0.9f, 0.1f, 0.1f, 1}, green{0.1f, 0.9f, 0.1f, 1}, glow{0, 0, 0.3f, 1}, white{1, 1, 1, 1};
  material->EnableDrawMode(GLMM_ENABLE_BACK | GLMM_LIGHT_MODEL_TWO_SIDE, 1);
  material->SetDiffuseReflectance(1, &red);
  material->SetDiffuseReflectance(0, &green);
  material->SetSpecularReflectance(1, &white);
  material->SetShininess(1, 0.25f);
  material->SetEmissionLight(0, &glow);
  using Values = std::array<float, 4>;
  constexpr Values kAmbient = {0.2f, 0.2f, 0.2f, 1}, kNone = {0, 0, 0, 1};
  const std::tuple<GLenum, Values, Values> wanted[] = {
      {GL_AMBIENT, kAmbient, kAmbient},
      {GL_DIFFUSE, {0.9f, 0.1f, 0.1f, 1}, {0.1f, 0.9f, 0.1f, 1}},
      {GL_SPECULAR, {1, 1, 1, 1}, kNone},
      {GL_EMISSION, kNone, {0, 0, 0.3f, 1}},
      {GL_SHININESS, {32}, {0}}};
  fixture.Frame([&](Scene& scene) {
    scene.CanvasAs<IGLCanvas14_4>()->Disable(GLE_COLOR_MATERIAL);
    scene.Canvas().SetMaterial(material.Get());
    for (const auto& [name, front, back] : wanted) {
      Values found[2] = {};
      glGetMaterialfv(GL_FRONT, name, found[0].data()), glGetMaterialfv(GL_BACK, name, found[1].data());
      EXPECT_EQ(found[0], front) << name;
      EXPECT_EQ(found[1], back) << name;
    }
    GLint local = 0, sides = 0;
    glGetIntegerv(GL_LIGHT_MODEL_LOCAL_VIEWER, &local), glGetIntegerv(GL_LIGHT_MODEL_TWO_SIDE, &sides);
    EXPECT_EQ(std::pair(local, sides), std::pair(1, 1));
  });
}

TEST(LightPicture, TwoContextsThatDrawAtOnceShareTheEightNumbers) {
  ContextFixture first(8, 8), second(8, 8);
  for (int round = 0; round < 5; ++round) {
    std::vector<IGLLight*> ofFirst, ofSecond;
    for (int i = 0; i < 4; ++i) ofFirst.push_back(&NewLight(first));
    for (int i = 0; i < 5; ++i) ofSecond.push_back(&NewLight(second));
    unsigned litInFirst = 0;
    std::thread other([&] { litInFirst = LitIn(first); });
    unsigned litInSecond = LitIn(second);
    other.join();
    EXPECT_EQ(litInFirst ^ litInSecond, 0xFFu) << "each number lit in one of the two";
    EXPECT_GE(std::popcount(litInFirst), 3) << "the ninth light waits";
    first.Context().DestroyLight(ofFirst.back());
    ofFirst.pop_back();
    litInSecond = LitIn(second);
    litInFirst = LitIn(first);
    EXPECT_EQ(std::popcount(litInSecond), 5) << "and has the number of the one that went";
    EXPECT_EQ(litInFirst, ~litInSecond & 0xFFu) << "which shines no more";
    for (IGLLight* light : ofFirst) first.Context().DestroyLight(light);
    for (IGLLight* light : ofSecond) second.Context().DestroyLight(light);
  }
  EXPECT_EQ(LitIn(first) | LitIn(second), 0u);
}

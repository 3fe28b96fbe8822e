// Lights, fog and materials in GL's state during a painter, and the light numbers of two contexts that draw
// at the same time. Headless display.

#include <bit>

#include "state/GLFog.h"
#include "state/GLLight.h"
#include "support/PlainGL.h"
#include "support/Scene.h"
#include "view/GLViewer.h"

namespace {

using Values = std::array<float, 4>;

/// The state of a GL light. The position of a distant light is the direction that it comes from.
struct Shining {
  bool on = true;
  Values diffuse = {0.5f, 0.5f, 0.5f, 1}, place = {};
  Values direction = {0, 0, -1, 0};
  float cutoff = 180, exponent = 0, linear = 0, quadratic = 0;
};

void ExpectLight(GLenum aName, const Shining& aWanted, const std::string& aWhat) {
  EXPECT_EQ(glIsEnabled(aName) == GL_TRUE, aWanted.on) << aWhat;
  if (!aWanted.on) return;
  // Directions are compared as unit vectors.
  const auto expect = [&](GLenum aParameter, Values aValues, bool aDirection = false) {
    Values found{};
    glGetLightfv(aName, aParameter, found.data());
    for (Values* values : {&found, &aValues}) {
      const auto [x, y, z, w] = *values;
      const float length = aDirection ? std::hypot(x, y, z) : 1;
      *values = {x / length, y / length, z / length, w};
    }
    for (std::size_t i = 0; i < 4; ++i)
      EXPECT_NEAR(found[i], aValues[i], 1e-4f) << aWhat << ": " << aParameter;
  };
  expect(GL_AMBIENT, {0.5f, 0.5f, 0.5f, 1});
  expect(GL_DIFFUSE, aWanted.diffuse);
  expect(GL_SPECULAR, {1, 1, 1, 1});
  expect(GL_POSITION, aWanted.place, aWanted.place[3] == 0);
  expect(GL_SPOT_CUTOFF, {aWanted.cutoff});
  if (aWanted.cutoff < 180) expect(GL_SPOT_DIRECTION, aWanted.direction, true);
  expect(GL_SPOT_EXPONENT, {aWanted.exponent});
  expect(GL_LINEAR_ATTENUATION, {aWanted.linear});
  expect(GL_QUADRATIC_ATTENUATION, {aWanted.quadratic});
}

IGLLight& NewLight(const ContextFixture& aFixture) {
  IGLLight* light = nullptr;
  EXPECT_EQ(aFixture.Context().CreateLight(&light), S_OK);
  light->Enable(1);
  return *light;
}

/// Returns a bit per GL light that is enabled when the painter is called.
unsigned LitIn(ContextFixture& aFixture) {
  unsigned lit = 0;
  aFixture.Frame([&](Scene&) {
    for (unsigned i = 0; i < 8; ++i) lit |= glIsEnabled(GL_LIGHT0 + i) ? 1u << i : 0u;
  });
  return lit;
}

}  // namespace

TEST(Light, SetsGLStateOfEachKind) {
  const auto shine = [](GLDATA_POINT direction) {
    return [direction](IGLLight& light) mutable {
      light.SetAsSpotlight(0);
      light.SetDirection(&direction);
    };
  };
  // Positions are relative to the eye at (0, 0, 1).
  const std::tuple<const char*, std::function<void(IGLLight&)>, Shining> cases[] = {
      {"all directions, with its own colours and attenuation",
       [](IGLLight& light) {
         GLDATA_POINT place{30, 40, 50};
         GLDATA_RGBA red{0.9f, 0.2f, 0.1f, 1};
         light.SetSpotPosition(&place);
         light.SetDiffuseLight(&red);
         light.SetLinearAttenuation(0.01f);
         light.SetQuadraticAttenuation(0.0001f);
       },
       {.diffuse = {0.9f, 0.2f, 0.1f, 1}, .place = {30, 40, 49, 1}, .linear = 0.01f, .quadratic = 0.0001f}},
      {"a spot",
       [](IGLLight& light) {
         GLDATA_POINT place{0, 0, 60}, direction{0.1, 0.1, -1};
         light.SetSpotPosition(&place);
         light.SetDirection(&direction);
         light.SetCutOffAngle_DEG(20);
         light.SetSpotExponent(40);
       },
       {.place = {0, 0, 59, 1}, .direction = {0.1f, 0.1f, -1}, .cutoff = 20, .exponent = 40}},
      {"distant", shine({1, -2, -1}), {.place = {-1, 2, 1, 0}}},
      {"distant, along +z", shine({0, 0, 3}), {.place = {0, 0, -1, 0}}},
      {"distant, almost along +z", shine({1e-9, 0, 1e-4}), {.place = {0, 0, -1, 0}}},
      {"off", [](IGLLight& light) { light.Enable(0); }, {.on = false}},
  };
  for (const auto& [name, set, wanted] : cases) {
    ContextFixture fixture(8, 8);
    set(NewLight(fixture));
    fixture.Frame([&](Scene&) { ExpectLight(GL_LIGHT0, wanted, name); });
  }
}

TEST(Light, DistantLightHasNoCone) {
  ContextFixture fixture(8, 8);
  IGLLight& light = NewLight(fixture);
  const auto expect = [&](float cutoff, const char* name) {
    fixture.Frame([&](Scene&) {
      Values now{};
      glGetLightfv(GL_LIGHT0, GL_SPOT_CUTOFF, now.data());
      EXPECT_EQ(now[0], cutoff) << name;
    });
  };
  light.SetCutOffAngle_DEG(20);
  expect(20, "a spot");
  light.SetAsSpotlight(0);
  expect(180, "the same light, distant");
  light.SetAsSpotlight(1);
  expect(20, "a spot again");
  fixture.Context().DestroyLight(&light);
  NewLight(fixture).SetAsSpotlight(0);
  expect(180, "another light with the same number");
}

TEST(Light, MovesWithASharedCoordinateSystem) {
  ContextFixture fixture(8, 8);
  const auto coord = GLCreate<IGLCoord>(CLSID_GLCoord);
  IGLLight &spot = NewLight(fixture), &distant = NewLight(fixture);
  EXPECT_EQ(spot.AttachCoord(coord.Get()), S_OK);
  EXPECT_EQ(distant.AttachCoord(coord.Get()), S_OK);
  distant.SetAsSpotlight(0);
  for (const float x : {-60.0f, 60.0f}) {
    GLDATA_MATRIX6D placement{x, 20, 10, 0, std::numbers::pi / 2, 0};  // the system's +z is the world's +x
    coord->SetMatrix6d(&placement);
    fixture.Frame([&](Scene&) {
      ExpectLight(GL_LIGHT1, {.place = {x + 1, 20, 9, 1}}, "spot");
      ExpectLight(GL_LIGHT0, {.place = {1, 0, 0, 0}}, "distant");  // the last light has the first number
    });
  }
}

TEST(Light, UsesVertexColorsAndAmbientLight) {
  ContextFixture fixture(8, 8);
  for (const float wanted : {0.2f, 0.0f}) {
    fixture.Context().EnableAmbientLight(wanted > 0 ? 1 : 0);
    fixture.Frame([&](Scene&) {
      EXPECT_TRUE(glIsEnabled(GL_LIGHTING) && glIsEnabled(GL_COLOR_MATERIAL));
      GLint follows = 0;
      glGetIntegerv(GL_COLOR_MATERIAL_PARAMETER, &follows);
      EXPECT_EQ(follows, GL_AMBIENT_AND_DIFFUSE);
      Values ambient{};
      glGetFloatv(GL_LIGHT_MODEL_AMBIENT, ambient.data());
      EXPECT_EQ(ambient, (Values{wanted, wanted, wanted, 1}));
    });
  }
}

TEST(Fog, SetsGLStateInEachFrame) {
  ContextFixture fixture(8, 8);
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

TEST(Material, SetsGLStateOfBothSides) {
  ContextFixture fixture(8, 8);
  const auto material = GLCreate<IGLMaterial>(CLSID_GLMaterial);
  GLDATA_RGBA red{0.9f, 0.1f, 0.1f, 1}, green{0.1f, 0.9f, 0.1f, 1}, glow{0, 0, 0.3f, 1}, white{1, 1, 1, 1};
  material->EnableDrawMode(GLMM_ENABLE_BACK | GLMM_LIGHT_MODEL_TWO_SIDE, 1);
  material->SetDiffuseReflectance(1, &red);
  material->SetDiffuseReflectance(0, &green);
  material->SetSpecularReflectance(1, &white);
  material->SetShininess(1, 0.25f);
  material->SetEmissionLight(0, &glow);
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

TEST(Scene, PassSeesValuesOfOneCallTogether) {
  const auto fog = GLCreate<IGLFog>(CLSID_GLFog);
  const auto light = GLCreate<IGLLight>(CLSID_GLLight);
  const auto viewer = GLCreate<IGLViewer>(CLSID_GLViewer);
  const auto coord = GLCreate<IGLCoord>(CLSID_GLCoord);
  const auto canvas = GLCreate<IGLCanvas>(CLSID_GLCanvas);
  const auto set = [&](int a) {
    const double n = a;
    GLDATA_POINT direction{n, 1001 - n, 0}, low{n, 2 * n, 3 * n}, high{5 * n, 6 * n, 7 * n};
    GLDATA_MATRIX6D placement{n, n, n, n, n, n};
    fog->SetFogStartAndEnd(static_cast<float>(n), static_cast<float>(2 * n));
    light->SetDirection(&direction);
    viewer->SetEyeZNearAndFar(n, 2 * n);
    viewer->SetOrthoExtents(&low, &high);
    viewer->SetClipRectangle(a, 2 * a, 3 * a, 4 * a);
    coord->SetMatrix6d(&placement);
  };
  set(1);
  fog->Enable(1), light->Enable(1), light->SetAsSpotlight(0), viewer->Clip(1);
  const std::jthread host([&](const std::stop_token& stop) {
    for (int i = 0; !stop.stop_requested(); ++i) set(i % 2 == 0 ? 1000 : 1);
  });
  int planes = 0, clips = 0, extents = 0, placements = 0, fogs = 0, lights = 0;
  DrawPlainGL(8, 8, [&] {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(1);
    for (unsigned n = 0; std::chrono::steady_clock::now() < deadline; ++n) {
      const ViewSetup pass = static_cast<GLViewer&>(*viewer).Setup(8, 8);
      const auto& [x, y, width, height] = pass.m_Visible;
      const GLDATA_POINT &low = pass.m_sLow, &high = pass.m_sHigh;
      GLDATA_MATRIX6D c{};
      planes += pass.m_dFar != 2 * pass.m_dNear;
      clips += y != 2 * x || width != 3 * x || height != 4 * x;
      extents += low.y != 2 * low.x || low.z != 3 * low.x || high.x != 5 * low.x || high.z != 7 * low.x;
      for (int read = 0; read < 20; ++read) {
        coord->GetMatrix6d(&c);
        placements +=
            c.x != c.y || c.y != c.z || c.z != c.m_dAngleX || c.x != c.m_dAngleY || c.x != c.m_dAngleZ;
      }
      if (n % 10 != 0) continue;
      static_cast<GLFog&>(*fog).ApplyFog();
      // The direction is applied as an axis and an angle.
      const int name = static_cast<GLLight&>(*light).ApplyLight(canvas.Get());
      float start = 0, end = 0;
      Values from{};
      glGetFloatv(GL_FOG_START, &start);
      glGetFloatv(GL_FOG_END, &end);
      glGetLightfv(static_cast<GLenum>(name), GL_POSITION, from.data());
      fogs += end != 2 * start;
      lights += std::max(-from[0], -from[1]) < 0.99f;
    }
  });
  EXPECT_EQ((std::array{planes, clips, extents, placements, fogs, lights}), (std::array<int, 6>{}));
}

TEST(Light, NumbersAreSharedByTwoContexts) {
  ContextFixture first(8, 8), second(8, 8);
  for (int round = 0; round < 5; ++round) {
    std::vector<IGLLight*> ofFirst, ofSecond;
    for (int i = 0; i < 4; ++i) ofFirst.push_back(&NewLight(first));
    for (int i = 0; i < 5; ++i) ofSecond.push_back(&NewLight(second));
    unsigned litInFirst = 0;
    std::thread other([&] { litInFirst = LitIn(first); });
    unsigned litInSecond = LitIn(second);
    other.join();
    EXPECT_EQ(litInFirst ^ litInSecond, 0xFFu) << "each number is used by one of the two";
    EXPECT_GE(std::popcount(litInFirst), 3) << "the ninth light is off";
    first.Context().DestroyLight(ofFirst.back());
    ofFirst.pop_back();
    litInSecond = LitIn(second);
    litInFirst = LitIn(first);
    EXPECT_EQ(std::popcount(litInSecond), 5) << "the destroyed light's number is used again";
    EXPECT_EQ(litInFirst, ~litInSecond & 0xFFu) << "the destroyed light is off";
    for (IGLLight* light : ofFirst) first.Context().DestroyLight(light);
    for (IGLLight* light : ofSecond) second.Context().DestroyLight(light);
  }
  EXPECT_EQ(LitIn(first) | LitIn(second), 0u);
}

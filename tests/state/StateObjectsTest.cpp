// Draw attributes, materials, lights and fog as value objects. No display.

#include "state/GLDrawAttr.h"
#include "support/Test.h"

template <class T>
requires std::is_same_v<T, GLDATA_RGBA> || std::is_same_v<T, GLDATA_POINT>
static bool operator==(const T& a, const T& b) { return std::memcmp(&a, &b, sizeof(T)) == 0; }

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

/// A value, the setter's result for it, and the getter's value afterwards.
template <class T>
struct Trip {
  T m_In;
  HRESULT m_Result;
  T m_Out;
};

/// Checks the initial value of a property, each round trip, and the results for null.
template <class Interface, class T, class... In>
class Property {
 public:
  using Getter = HRESULT (Interface::*)(In..., T*) noexcept;

  Property(Interface& aObject, const char* aName, Getter aGet, T aStart, In... aIn)
      : m_Object(aObject), m_sName(aName), m_pfnGet(aGet), m_In(aIn...) {
    EXPECT_EQ(Get(), aStart) << m_sName << " of a new object";
    EXPECT_EQ(Call(m_pfnGet, static_cast<T*>(nullptr)), E_INVALIDARG) << m_sName;
  }
  template <class Setter>
  void Takes(Setter aSet, std::initializer_list<Trip<T>> aTrips) {
    for (Trip<T> trip : aTrips) {
      if constexpr (std::is_invocable_v<Setter, Interface&, In..., T*>) {
        EXPECT_EQ(Call(aSet, &trip.m_In), trip.m_Result) << m_sName;
        EXPECT_EQ(Call(aSet, static_cast<T*>(nullptr)), E_INVALIDARG) << m_sName;
      } else {
        EXPECT_EQ(Call(aSet, trip.m_In), trip.m_Result) << m_sName;
      }
      EXPECT_EQ(Get(), trip.m_Out) << m_sName << " after " << testing::PrintToString(trip.m_In);
    }
  }

 private:
  template <class Operation, class Value>
  HRESULT Call(Operation aOperation, Value aValue) {
    return std::apply([&](In... aIn) { return (m_Object.*aOperation)(aIn..., aValue); }, m_In);
  }
  T Get() {
    T value{};
    EXPECT_EQ(Call(m_pfnGet, &value), S_OK) << m_sName;
    return value;
  }

  Interface& m_Object;
  const std::string m_sName;
  const Getter m_pfnGet;
  const std::tuple<In...> m_In;
};

const std::initializer_list<Trip<float>> kColorTrips = {
    {0.25f, S_OK, 0.25f}, {1.5f, S_OK, 1.0f}, {-1.0f, S_OK, 0.0f}, {kInf, S_OK, 1.0f}, {kNaN, S_OK, 0.0f}};

void SetGLLimits(float aMin, float aMax) {
  g_afPointSizeRange[0] = g_afLineWidthRange[0] = aMin;
  g_afPointSizeRange[1] = g_afLineWidthRange[1] = aMax;
}

}  // namespace

TEST(DrawAttr, StoresValuesWithinItsLimits) {
  using I = IGLDrawAttr;
  const auto attr = GLCreate<I>(CLSID_GLDrawAttr);
  SetGLLimits(1.0f, 10.0f);
  Property(*attr, "color", &I::GetColor, GLDATA_RGBA{1, 1, 1, 1})
      .Takes(&I::SetColor, {{{0.1f, 2.0f, -1.0f, 0.5f}, S_OK, {0.1f, 1.0f, 0.0f, 0.5f}},
                            {{kNaN, kInf, -kInf, kNaN}, S_OK, {0, 1, 0, 0}},
                            {{0.2f, 0.5f, 0.9f, 0.3f}, S_OK, {0.2f, 0.5f, 0.9f, 0.3f}}});
  Property(*attr, "complement", &I::GetComplementColor, GLDATA_RGBA{0.8f, 0.5f, 1.0f - 0.9f, 0.3f});
  Property(*attr, "contrast", &I::GetContrastColor, GLDATA_RGBA{1, 0, 0, 0.3f});
  Property(*attr, "red", &I::GetRed, 0.2f).Takes(&I::SetRed, kColorTrips);
  Property(*attr, "green", &I::GetGreen, 0.5f).Takes(&I::SetGreen, kColorTrips);
  Property(*attr, "blue", &I::GetBlue, 0.9f).Takes(&I::SetBlue, kColorTrips);
  Property(*attr, "alpha", &I::GetAlpha, 0.3f).Takes(&I::SetAlpha, kColorTrips);
  const std::initializer_list<Trip<float>> sizes = {
      {3.5f, S_OK, 3.5f}, {0.5f, S_OK, 1.0f}, {20.0f, S_OK, 10.0f}, {kInf, S_OK, 10.0f}, {kNaN, S_OK, 1.0f}};
  Property(*attr, "point size", &I::GetPointSize, 1.0f).Takes(&I::SetPointSize, sizes);
  Property(*attr, "line width", &I::GetLineWidth, 1.0f).Takes(&I::SetLineWidth, sizes);
  Property(*attr, "pattern", &I::GetLineStipplePattern, std::uint16_t{0xFFFF})
      .Takes(&I::SetLineStipplePattern, {{0xA5A5, S_OK, 0xA5A5}});
  Property(*attr, "factor", &I::GetLineStippleFactor, 1)
      .Takes(&I::SetLineStippleFactor, {{7, S_OK, 7}, {0, S_OK, 1}, {100000, S_OK, 100000}});
  const auto both = GLDM_LINE_FRONT | GLDM_LINE_BACK;
  attr->EnableDrawMode(both, 2);
  attr->EnableDrawMode(GLDM_LINE_BACK, 0);
  Property(*attr, "mode", &I::GetDrawMode, 144 + 1);
  LONG enabled = -1;
  EXPECT_EQ(attr->IsDrawModeEnabled(both, &enabled), S_OK);
  EXPECT_EQ(enabled, 1) << "one of the two suffices";

  SetGLLimits(0.0f, 0.0f);  // as before the first rendering context
  attr->SetPointSize(3);
  Property(*attr, "point size without limits", &I::GetPointSize, 0.0f);
}

TEST(Material, StoresItsSidesSeparately) {
  using I = IGLMaterial;
  const auto material = GLCreate<I>(CLSID_GLMaterial);
  using Get = HRESULT (I::*)(LONG, GLDATA_RGBA*) noexcept;
  for (const auto& [get, set, start] : std::initializer_list<std::tuple<Get, Get, float>>{
           {&I::GetAmbientReflectance, &I::SetAmbientReflectance, 0.2f},
           {&I::GetDiffuseReflectance, &I::SetDiffuseReflectance, 0.8f},
           {&I::GetSpecularReflectance, &I::SetSpecularReflectance, 0.0f},
           {&I::GetEmissionLight, &I::SetEmissionLight, 0.0f}}) {
    Property<I, GLDATA_RGBA, LONG>(*material, "front", get, {start, start, start, 1}, -1)
        .Takes(set, {{{2, 0.5f, -1, 0.25f}, S_OK, {1, 0.5f, 0, 1}}});
    Property<I, GLDATA_RGBA, LONG>(*material, "back", get, {start, start, start, 1}, 0)
        .Takes(set, {{{0.5f, kNaN, kInf, 0}, S_OK, {0.5f, 0, 1, 1}}});
    Property<I, GLDATA_RGBA, LONG>(*material, "front again", get, {1, 0.5f, 0, 1}, 1);
  }
  for (const LONG side : {1, 0}) {
    Property<I, float, LONG>(*material, "shininess", &I::GetShininess, 0, side)
        .Takes(&I::SetShininess, {{1.5f, S_OK, 1}, {-1, S_OK, 0}, {0.5f, S_OK, 0.5f}, {kNaN, S_OK, 0}});
  }
  Property(*material, "mode", &I::GetDrawMode, 5);
  material->EnableDrawMode(GLMM_ENABLE_BACK | GLMM_LIGHT_MODEL_TWO_SIDE, 1);
  material->EnableDrawMode(GLMM_LIGHT_MODEL_LOCAL_VIEWER, 0);
  Property(*material, "mode set", &I::GetDrawMode, 11);
}

TEST(Fog, StoresValidValues) {
  using I = IGLFog;
  const auto fog = GLCreate<I>(CLSID_GLFog);
  Property(*fog, "enabled", &I::IsEnabled, LONG{0}).Takes(&I::Enable, {{-3, S_OK, 1}, {0, S_OK, 0}});
  const auto unknown = [](int aMode) { return static_cast<eGLFogCalcMode>(aMode); };
  Property(*fog, "mode", &I::GetCalcMode, GLFM_CALCULATE_EXPONENT)
      .Takes(&I::SetCalcMode, {{GLFM_CALCULATE_LINEAR, S_OK, GLFM_CALCULATE_LINEAR},
                               {unknown(3), S_OK, GLFM_CALCULATE_EXPONENT_SQUARE},
                               {GLFM_CALCULATE_EXPONENT, S_OK, GLFM_CALCULATE_EXPONENT},
                               {unknown(0), S_OK, GLFM_CALCULATE_EXPONENT_SQUARE}});
  Property(*fog, "density", &I::GetFogDensity, 0.01f)
      .Takes(&I::SetFogDensity, {{0, E_GL_BADVALUE, 0.01f},
                                 {2, S_OK, 2},
                                 {-1, E_GL_BADVALUE, 2},
                                 {kNaN, E_GL_BADVALUE, 2},
                                 {kInf, S_OK, kInf}});
  Property(*fog, "color", &I::GetFogColor, GLDATA_RGBA{1, 1, 1, 1})
      .Takes(&I::SetFogColor, {{{2, 0.5f, kNaN, 0}, S_OK, {1, 0.5f, 0, 1}}});
  Property(*fog, "start", &I::GetFogStart, 0.0f);
  Property(*fog, "end", &I::GetFogEnd, 1000.0f);
  using Range = std::pair<float, float>;
  EXPECT_EQ(fog->SetFogStartAndEnd(2, 3), S_OK);
  for (const auto& [start, end] : {Range{5, 5}, {6, 5}, {-1, 5}, {kNaN, 5}, {0, kNaN}, {kInf, kInf}})
    EXPECT_EQ(fog->SetFogStartAndEnd(start, end), E_GL_BADVALUE) << start << " to " << end;
  Property(*fog, "start kept", &I::GetFogStart, 2.0f);
  Property(*fog, "end kept", &I::GetFogEnd, 3.0f);
}

TEST(Light, RefusesLimitsOrMapsEachProperty) {
  using I = IGLLight;
  const auto light = GLCreate<I>(CLSID_GLLight);
  ASSERT_TRUE(light);
  Property(*light, "enabled", &I::IsEnabled, LONG{0}).Takes(&I::Enable, {{7, S_OK, 1}, {0, S_OK, 0}});
  Property(*light, "spotlight", &I::IsSpotlight, LONG{1})
      .Takes(&I::SetAsSpotlight, {{0, S_OK, 0}, {-1, S_OK, 1}});
  const std::initializer_list<Trip<GLDATA_RGBA>> colors = {
      {{0.1f, 0.2f, 0.3f, 0.25f}, S_OK, {0.1f, 0.2f, 0.3f, 1}}, {{-1, kNaN, 4, 0}, S_OK, {0, 0, 1, 1}}};
  Property(*light, "ambient", &I::GetAmbientLight, GLDATA_RGBA{0.5f, 0.5f, 0.5f, 1})
      .Takes(&I::SetAmbientLight, colors);
  Property(*light, "diffuse", &I::GetDiffuseLight, GLDATA_RGBA{0.5f, 0.5f, 0.5f, 1})
      .Takes(&I::SetDiffuseLight, colors);
  Property(*light, "specular", &I::GetSpecularLight, GLDATA_RGBA{1, 1, 1, 1})
      .Takes(&I::SetSpecularLight, colors);
  Property(*light, "cut-off", &I::GetCutOffAngle_DEG, 180.0f)
      .Takes(&I::SetCutOffAngle_DEG,
             {{-45, S_OK, 45}, {90, S_OK, 90}, {90.5f, S_OK, 180}, {0, S_OK, 0}, {kNaN, S_OK, 180}});
  Property(*light, "exponent", &I::GetSpotExponent, 0.0f)
      .Takes(&I::SetSpotExponent, {{200, S_OK, 128}, {-1, S_OK, 0}, {5, S_OK, 5}, {kNaN, S_OK, 0}});
  Property(*light, "constant", &I::GetConstantAttenuation, 1.0f)
      .Takes(&I::SetConstantAttenuation,
             {{0, E_GL_BADVALUE, 1}, {-1, E_GL_BADVALUE, 1}, {kNaN, E_GL_BADVALUE, 1}, {0.5f, S_OK, 0.5f}});
  const std::initializer_list<Trip<float>> falls = {
      {2, S_OK, 2}, {-1, S_OK, 0}, {0.5f, S_OK, 0.5f}, {kNaN, S_OK, 0}};
  Property(*light, "linear", &I::GetLinearAttenuation, 0.0f).Takes(&I::SetLinearAttenuation, falls);
  Property(*light, "quadratic", &I::GetQuadraticAttenuation, 0.0f).Takes(&I::SetQuadraticAttenuation, falls);
  const std::initializer_list<Trip<GLDATA_POINT>> vectors = {{{0, 0, 2}, S_OK, {0, 0, 2}},
                                                             {{0, -0.0, 0}, E_GL_BADVALUE, {0, 0, 2}},
                                                             {{kNaN, 1, 1}, E_GL_BADVALUE, {0, 0, 2}},
                                                             {{1, 1, kNaN}, E_GL_BADVALUE, {0, 0, 2}},
                                                             {{1e-200, 5, kInf}, S_OK, {1e-200, 5, kInf}}};
  Property(*light, "position", &I::GetSpotPosition, GLDATA_POINT{0, 0, 1})
      .Takes(&I::SetSpotPosition, vectors);
  Property(*light, "direction", &I::GetDirection, GLDATA_POINT{0, 0, -1})
      .Takes(&I::SetDirection, {{{0, 0, 2}, S_OK, {0, 0, 2}},
                                {{0, -0.0, 0}, E_GL_BADVALUE, {0, 0, 2}},
                                {{kNaN, 1, 1}, E_GL_BADVALUE, {0, 0, 2}},
                                {{1, 1, kNaN}, E_GL_BADVALUE, {0, 0, 2}},
                                {{kInf, 0, 0}, E_GL_BADVALUE, {0, 0, 2}},
                                {{0, -kInf, 1}, E_GL_BADVALUE, {0, 0, 2}},
                                {{1, 1, kInf}, E_GL_BADVALUE, {0, 0, 2}},
                                {{1e-200, 5, 1e200}, S_OK, {1e-200, 5, 1e200}}});
}

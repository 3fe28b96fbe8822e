// Values of a context without a window: properties, viewport and screen coordinates.

#include "support/Test.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN(), kHuge = 1e300;

std::array<float, 4> Components(const GLDATA_RGBA& c) {
  return {c.m_fRed, c.m_fGreen, c.m_fBlue, c.m_fAlpha};
}

GLPtr<IGLContext> NewContext(int aWidth, int aHeight) {
  auto context = GLCreate<IGLContext>(CLSID_GLContext);
  context->SetViewport(0, 0, aWidth, aHeight);
  return context;
}

}  // namespace

TEST(ContextProperties, StoreValuesWithinTheirRanges) {
  const auto context = GLCreate<IGLContext>(CLSID_GLContext);
  using I = IGLContext;
  for (const auto& [set, get] : {std::pair{&I::EnableDepth, &I::IsDepthEnabled},
                                 {&I::EnableLighting, &I::IsLightingEnabled},
                                 {&I::EnableAmbientLight, &I::IsAmbientLightEnabled}}) {
    LONG now = -1;
    (*context.*get)(&now);
    EXPECT_EQ(now, 1);
    for (const LONG value : {0, 7}) {
      (*context.*set)(value);
      (*context.*get)(&now);
      EXPECT_EQ(now, value != 0 ? 1 : 0);
    }
    EXPECT_EQ((*context.*get)(nullptr), E_INVALIDARG);
  }
  int width = 0;
  EXPECT_EQ(context->GetViewportWidth(&width), S_OK);
  EXPECT_EQ(width, 1);
  GLDATA_RGBA wide{-1, 2, 0.5f, 0.25f}, now{};
  EXPECT_EQ(context->SetBackgroundColor(&wide), S_OK);
  context->GetBackgroundColor(&now);
  EXPECT_EQ(Components(now), Components({0, 1, 0.5f, 0.25f}));
  context->GetAmbientLight(&now);
  EXPECT_EQ(Components(now), Components({0.2f, 0.2f, 0.2f, 1}));
  EXPECT_EQ(context->SetAmbientLight(&wide), S_OK);
  context->GetAmbientLight(&now);
  EXPECT_EQ(Components(now), Components({0, 1, 0.5f, 1})) << "the alpha is fixed";
  for (const auto refused : {context->SetBackgroundColor(nullptr), context->GetBackgroundColor(nullptr),
                             context->SetAmbientLight(nullptr), context->EnumLights(nullptr)}) {
    EXPECT_EQ(refused, E_INVALIDARG);
  }
}

TEST(ScreenCoordinates, SpanTheShorterSideFromMinusOneToOne) {
  struct {
    int width, height, x, y;
    double scsX, scsY;
  } const points[] = {
      {800, 600, 400, 300, 0, 0}, {800, 600, 0, 0, -4.0 / 3, 1}, {800, 600, 800, 600, 4.0 / 3, -1},
      {300, 600, 0, 0, -1, 2},    {300, 600, 300, 450, 1, -1},   {100, 100, 75, 100, 0.5, -1},
  };
  for (const auto& p : points) {
    SCOPED_TRACE(testing::Message() << p.x << ", " << p.y << " of " << p.width << " by " << p.height);
    const auto context = NewContext(p.width, p.height);
    double scsX = 9, scsY = 9;
    EXPECT_EQ(context->DeviceToSCS(p.x, p.y, &scsX, &scsY), S_OK);
    EXPECT_NEAR(scsX, p.scsX, 1e-12);
    EXPECT_NEAR(scsY, p.scsY, 1e-12);
    int x = -9, y = -9;
    // Slightly inside the pixel: the conversion truncates toward zero, and must not meet the edge.
    EXPECT_EQ(context->SCSToDevice(p.scsX + 1e-6, p.scsY - 1e-6, &x, &y), S_OK);
    EXPECT_EQ(x, p.x);
    EXPECT_EQ(y, p.y);
  }
  const auto context = NewContext(0, -5);
  int width = 0, height = 0, x = 9, y = 9;
  context->GetViewportWidth(&width);
  context->GetViewportHeight(&height);
  EXPECT_EQ(std::pair(width, height), std::pair(1, 1));
  EXPECT_EQ(context->SCSToDevice(kNaN, kNaN, &x, &y), S_OK);
  EXPECT_EQ(std::pair(x, y), std::pair(0, 0));
  context->SCSToDevice(kHuge, kHuge, &x, &y);
  EXPECT_EQ(std::pair(x, y), std::pair(INT_MAX, INT_MIN));
  EXPECT_EQ(context->SCSToDevice(0, 0, nullptr, &y), E_INVALIDARG);
  EXPECT_EQ(context->DeviceToSCS(0, 0, nullptr, nullptr), E_INVALIDARG);
}

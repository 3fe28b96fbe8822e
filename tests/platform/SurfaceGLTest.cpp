// EGL calls of a host beside the headless display. Headless display; host's thread.

#include "platform/DeviceContext.h"
#include "platform/RenderingContext.h"
#include "platform/linux/display/headless/HeadlessDisplay.h"
#include "support/Test.h"

TEST(HostThread, KeepsItsClientApiAndItsContext) {
  ASSERT_TRUE(eglBindAPI(EGL_OPENGL_ES_API));
  const auto display = HeadlessDisplay::Open();
  ASSERT_NE(display, nullptr);
  EXPECT_EQ(eglQueryAPI(), EGLenum{EGL_OPENGL_ES_API});
  const HDC dc = CreateCompatibleDC(nullptr);
  EXPECT_TRUE(wglMakeCurrent(nullptr, nullptr));
  EXPECT_EQ(eglQueryAPI(), EGLenum{EGL_OPENGL_ES_API});
  DeleteDC(dc);
}

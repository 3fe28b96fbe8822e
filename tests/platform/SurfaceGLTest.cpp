// The EGL state of a host's thread, beside the headless display. Plain rendering context.

#include "platform/DeviceContext.h"
#include "platform/RenderingContext.h"
#include "platform/linux/display/headless/HeadlessDisplay.h"
#include "support/PlainGL.h"

TEST(HostThread, KeepsItsClientApiAndItsContext) {
  DrawPlainGL(8, 8, [] {
    const EGLContext own = eglGetCurrentContext();
    ASSERT_NE(own, EGL_NO_CONTEXT);
    ASSERT_TRUE(eglBindAPI(EGL_OPENGL_ES_API));
    const auto display = HeadlessDisplay::Open();
    ASSERT_NE(display, nullptr);
    EXPECT_EQ(eglQueryAPI(), EGLenum{EGL_OPENGL_ES_API});
    const HDC dc = CreateCompatibleDC(nullptr);
    EXPECT_TRUE(wglMakeCurrent(nullptr, nullptr));
    EXPECT_EQ(eglQueryAPI(), EGLenum{EGL_OPENGL_ES_API});
    DeleteDC(dc);
    eglBindAPI(EGL_OPENGL_API);
    EXPECT_EQ(eglGetCurrentContext(), own);
  });
}

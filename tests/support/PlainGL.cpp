// Draws by plain GL on a separate thread, with a rendering context of the system.

#include "support/PlainGL.h"

#include "PlainContext.h"

Picture DrawPlainGL(int aWidth, int aHeight, const std::function<void()>& aDraw) {
  Picture picture;
  std::thread([&] {
    const PlainContext context(aWidth, aHeight);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    aDraw();
    glFinish();
    picture = Picture::Read(aWidth, aHeight);
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR}) << "by the plain drawing";
  }).join();
  return picture;
}

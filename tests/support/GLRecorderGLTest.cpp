// The recorder itself: what it sees, what it doesn't, and that the driver still gets every call.

#include "support/GLRecorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

#include "support/PlainGL.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

void DrawRedWindow() {
  glClearColor(1.0f, 0.0f, 0.0f, 1.0f);
  glClear(GL_COLOR_BUFFER_BIT);
}

}  // namespace

TEST(GLRecorder, NotesCallsInOrderAndPassesThemOn) {
  const GLRecorder recorder;
  const Picture picture = DrawPlainGL(8, 8, [] {
    DrawRedWindow();
    const float color[] = {0.25f, 0.5f, 0.75f, 1.0f};
    glLightfv(GL_LIGHT1, GL_DIFFUSE, color);
    glFogi(GL_FOG_MODE, GL_LINEAR);
    glBegin(GL_TRIANGLES);
    glVertex3d(0.1, -2, 1e10);
    glEnd();
    GLint viewport[4];
    glGetIntegerv(GL_VIEWPORT, viewport);
    glBlendFunc(GL_ONE, GL_ZERO);
  });
  EXPECT_EQ(picture.CountOther(0xFF0000FF), 0);
  EXPECT_THAT(
      recorder.CallsOf(
          {"glClearColor", "glLight*", "glFog*", "glBegin", "glVertex*", "glGetIntegerv", "glBlend*"}),
      ElementsAre("glClearColor(1, 0, 0, 1)", "glLightfv(GL_LIGHT1, GL_DIFFUSE, {0.25, 0.5, 0.75, 1})",
                  "glFogi(GL_FOG_MODE, GL_LINEAR)", "glBegin(GL_TRIANGLES)", "glVertex3d(0.1, -2, 1e+10)",
                  "glGetIntegerv(GL_VIEWPORT, out)", "glBlendFunc(GL_ONE, GL_ZERO)"));
  EXPECT_THAT(recorder.CallsOf({"glClear"}), ElementsAre("glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT)",
                                                         "glClear(GL_COLOR_BUFFER_BIT)"));
}

TEST(GLRecorder, LeavesOutWhatGluCallsInside) {
  const GLRecorder recorder;
  DrawPlainGL(8, 8, [&] {
    gluPerspective(45, 1, 1, 10);
    const std::array<GLubyte, 8 * 8 * 4> image{};
    gluBuild2DMipmaps(GL_TEXTURE_2D, GL_RGBA, 8, 8, GL_RGBA, GL_UNSIGNED_BYTE, image.data());
  });
  EXPECT_EQ(recorder.Count("gluPerspective"), 1);
  EXPECT_THAT(recorder.CallsOf({"glMultMatrixd", "glTexImage2D"}), IsEmpty());
}

TEST(GLRecorder, HearsOnlyTheThreadThatIsAskedForAndNothingWhilePaused) {
  GLRecorder recorder;
  recorder.OnlyFrom(std::this_thread::get_id());
  DrawPlainGL(8, 8, DrawRedWindow);
  EXPECT_THAT(recorder.Calls(), IsEmpty()) << "the drawing has a thread of its own";
  DrawPlainGL(8, 8, [&] {
    recorder.OnlyFrom(std::this_thread::get_id());
    recorder.Pause();
    DrawRedWindow();
    recorder.Resume();
    glFlush();
    recorder.Pause();
  });
  EXPECT_THAT(recorder.Calls(), ElementsAre("glFlush()"));
}

TEST(GLRecorder, ForcesResults) {
  DrawPlainGL(8, 8, [] {
    {
      GLRecorder recorder;
      recorder.Fail("glGenLists");
      recorder.SetString(GL_VENDOR, "Somebody");
      EXPECT_EQ(glGenLists(3), 0u);
      EXPECT_STREQ(reinterpret_cast<const char*>(glGetString(GL_VENDOR)), "Somebody");
      EXPECT_EQ(recorder.Count("glGenLists"), 1);
    }
    EXPECT_NE(glGenLists(3), 0u);
    EXPECT_STRNE(reinterpret_cast<const char*>(glGetString(GL_VENDOR)), "Somebody");
  });
}

// Compiled lists: their threads and their lifetime. Headless display.

#include "component/Module.h"
#include "support/PlainGL.h"
#include "support/Scene.h"

namespace {

TEST(Lists, BelongToTheirDrawThreadDuringAFrame) {
  ContextFixture context(32, 32);
  context.Context().EnableLighting(0);
  GLPtr<IGLCanvas> canvas;
  context.ContextAs<IGLContext14_2>()->GetCanvas(canvas.Put());
  int kept = 0, other = 0;
  LONG valid = 7;
  const auto compile = [&](IGLCanvas& aCanvas, int* aList) {
    ASSERT_EQ(aCanvas.BeginCompileList(aList), S_OK);
    aCanvas.BeginDrawTriangles();
    for (const auto& [x, y] : {std::pair(-50., -50.), {50., -50.}, {0., 50.}}) aCanvas.Vertex2d(x, y);
    aCanvas.EndDrawVertices();
    aCanvas.EndCompileList();
  };
  const Picture whole = context.FramePicture([&](Scene& scene) {
    compile(scene.Canvas(), &kept);
    scene.Canvas().DrawCompiledList(kept);
  });
  EXPECT_GT(whole.CountOther(0x000000FF), 32 * 32 / 4);
  // A host's thread with a separate rendering context.
  DrawPlainGL(8, 8, [&] {
    for (GLuint name = 1; name < 1000; ++name) glNewList(name, GL_COMPILE), glEndList();
    for (const HRESULT refused :
         {canvas->BeginCompileList(&other), canvas->EndCompileList(), canvas->DrawCompiledList(kept),
          canvas->IsCompiledList(kept, &valid), canvas->DeleteCompiledList(kept)})
      EXPECT_EQ(refused, E_GL_BADSTATE);
    for (GLuint name = 1; name < 1000; ++name) ASSERT_TRUE(glIsList(name)) << "a list of the host";
  });
  const Picture again = context.FramePicture([&](Scene& scene) {
    ++g_uListGeneration;  // another context captures
    int late = 0;
    compile(scene.Canvas(), &late);
    scene.Canvas().DrawCompiledList(kept);
  });
  EXPECT_EQ(Difference(again, whole), 0) << "lists are deleted only at the end of the frame";
}

}  // namespace

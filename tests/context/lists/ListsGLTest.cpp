// Compiled lists: their threads and their lifetime. Headless display.

#include "component/Module.h"
#include "support/LogLines.h"
#include "support/PlainGL.h"
#include "support/Scene.h"

namespace {

TEST(Lists, BelongToTheirDrawThreadDuringAFrame) {
  const LogLines log(LogLevel::kDebug);
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
    EXPECT_EQ(log.Count("IGLCanvas::DrawCompiledList is refused", "debug"), 1) << log.Joined();
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

TEST(Lists, DrawTextAfterALongPrimitive) {
  ContextFixture context(64, 64);
  context.Context().EnableLighting(0);
  IGLFont* font = nullptr;
  context.Context().CreateTrueTypeFont(GLString("DejaVu Sans"), 0, 400, 0, 0, &font);
  font->SetWidth(14), font->SetHeight(40);
  const auto print = [&] {
    GLDATA_POINT start = {-45, -20, 0};
    EXPECT_EQ(font->Print(GLString("ABCDEFGH"), &start), S_OK);
  };
  // The component divides the list inside the primitive, before a vertex without a colour.
  const auto content = [&](IGLCanvas& canvas) {
    canvas.BeginDrawTriangles();
    for (int i = 0; i < 6000; ++i) {
      GLDATA_RGBA colour = {1, static_cast<float>(i % 7) / 7, 0, 1};
      if (i % 5 == 0) canvas.SetVertexColor(&colour);
      canvas.Vertex2d(-45 + i % 3 / 2 * 20, 25 + i % 3 % 2 * 20);
    }
    canvas.EndDrawVertices();
    print();
  };
  const Picture direct = context.FramePicture([&](Scene& scene) { content(scene.Canvas()); });
  EXPECT_GT(direct.CountOther(0x000000FF), 200);
  int list = 0;
  for (int frame = 0; frame < 2; ++frame) {
    const Picture listed = context.FramePicture([&](Scene& scene) {
      if (list == 0) {
        EXPECT_EQ(scene.Canvas().BeginCompileList(&list), S_OK);
        content(scene.Canvas());
        EXPECT_EQ(scene.Canvas().EndCompileList(), S_OK);
      }
      scene.Canvas().DrawCompiledList(list);
    });
    EXPECT_EQ(Difference(listed, direct), 0) << frame;
  }
}

}  // namespace

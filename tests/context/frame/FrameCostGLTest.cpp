// Frames with text, textures, a list, lights, fog and a clip plane allocate no memory after the first ones.
// Headless display.

#include "support/Counting.h"
#include "support/RichScene.h"

TEST(Frame, AllocatesNothingAfterTheFirstFrames) {
  ContextFixture fixture(200, 100);
  IGLContext& context = fixture.Context();
  for (int i = 0; i < 2; ++i) {
    IGLLight* light = nullptr;
    context.CreateLight(&light);
  }
  GLPtr<IGLFog> fog;
  context.GetFog(fog.Put());
  fog->Enable(1);
  GLDATA_POINT a{0, 0, 0.5}, b{1, 0, 0.5}, c{0, 1, 0.5};
  context.ClipPlane(&a, &b, &c);
  IGLViewer* second = nullptr;
  context.CreateViewer(1, 0, &second);
  for (IGLViewer* viewer : {&fixture.Viewer(), second}) {
    viewer->Clip(1);
    viewer->SetClipRectangle(viewer == second ? 100 : 0, 0, 100, 100);
    GLPtr<IGLViewer>::FromBorrowed(viewer).As<IGLViewer2>()->SetShowAxes(1);
  }
  RichScene rich;
  std::size_t allocations = 0;
  // Number of allocations of the draw thread when the painter begins.
  const DrawFunction draw = [&](Scene& scene) {
    if (&scene.Viewer() == &fixture.Viewer()) allocations = AllocationsOfThisThread();
    rich.Draw(scene);
  };
  for (int i = 0; i < 20; ++i)
    fixture.Frame(draw);  // until the driver and the component have created their parts
  fixture.Frame(draw);
  const std::size_t warm = allocations;
  ASSERT_GT(warm, 0u) << "the allocations of the draw thread are counted";
  for (int i = 0; i < 10; ++i) {
    fixture.Frame(draw);
    EXPECT_EQ(allocations, warm);
  }
}

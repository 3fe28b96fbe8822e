// A capture of the registered module's in a bitmap file, beside the picture that Linux comes to.

#include <gtest/gtest.h>

#include "support/LitScene.h"
#include "support/TestFolder.h"
#include "windows/Host.h"

TEST(RegisteredModule, CapturesThePictureOfLinux) {
  const Apartment apartment;
  const HostWindow window;
  const auto context = window.MakeContext();
  ASSERT_TRUE(context);
  const TestFolder folder;
  const auto taken = GLCreate<IGLPixmap>("Gl.GLPixmap.1"), expected = GLCreate<IGLPixmap>("Gl.GLPixmap.1");
  ASSERT_TRUE(SaveLitScene(*context, *taken, folder / "lit-scene.bmp"));
  ASSERT_EQ(taken->LoadImageFile(GLString(folder / "lit-scene.bmp")), S_OK);
  ASSERT_EQ(expected->LoadImageFile(GLString(GLLIB_SOURCE_DIR "/tests/support/lit-scene.bmp")), S_OK);
  EXPECT_LT(MeanGreyDifference(*taken, *expected), 1.0);
}

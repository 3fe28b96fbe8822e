// A captured scene beside a picture that every system must come to, by way of a bitmap file.

#include "support/LitScene.h"

#include <gllib/GLLibHost.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "support/TestDisplay.h"
#include "support/TestFolder.h"

TEST(LitScene, IsTheSamePictureOnEverySystem) {
  PrepareDisplay();
  const TestFolder folder;
  const char* kept = std::getenv("GLLIB_TEST_PICTURES");  // for a look at it, or to make it the picture
  const std::string file = kept != nullptr ? std::string(kept) + "/lit-scene.bmp" : folder / "lit-scene.bmp";
  const auto context = GLCreate<IGLContext>(CLSID_GLContext);
  ASSERT_EQ(context->Initialize(0), S_OK);
  const auto taken = GLCreate<IGLPixmap>(CLSID_GLPixmap), expected = GLCreate<IGLPixmap>(CLSID_GLPixmap);
  ASSERT_TRUE(SaveLitScene(*context, *taken, file));
  ASSERT_EQ(taken->LoadImageFile(GLString(file)), S_OK);
  ASSERT_EQ(expected->LoadImageFile(GLString(GLLIB_SOURCE_DIR "/tests/support/lit-scene.bmp")), S_OK);
  // Two systems that are each this near to it are less than two grey levels apart.
  EXPECT_LT(MeanGreyDifference(*taken, *expected), 1.0);
}

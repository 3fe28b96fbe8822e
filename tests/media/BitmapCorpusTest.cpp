// The fuzzer's corpus of bitmap files through the interface: every file loads or is refused, as its name
// says.

#include <gllib/GLClasses.h>
#include <gtest/gtest.h>

#include "component/CreateObject.h"
#include "support/BitmapFiles.h"

TEST(BitmapCorpus, LoadsWhatItShouldAndRefusesTheRest) {
  const auto pixmap = CreateObject<IGLPixmap>(CLSID_GLPixmap);
  int files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(GLLIB_SOURCE_DIR "/fuzz/corpus/bitmapfile")) {
    const bool good = entry.path().filename().string().starts_with("ok-");
    EXPECT_EQ(LoadFrom(*pixmap, entry.path().u16string()), good ? S_OK : E_FAIL) << entry.path().filename();
    ++files;
  }
  EXPECT_GE(files, 60);
}

// Files by name on Linux: only plain files are opened, without waiting. No display.

#include <sys/stat.h>

#include "support/BitmapFiles.h"

TEST(File, RefusesAPipeWithoutAWriter) {
  const TestFolder folder;
  ASSERT_EQ(mkfifo((folder.Path() / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(LoadFrom(*GLCreate<IGLPixmap>(CLSID_GLPixmap), (folder.Path() / "pipe").u16string()), E_FAIL);
}

// Files by name on Linux: what isn't a plain file is refused, and nobody is waited for.

#include <gllib/GLClasses.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "component/CreateObject.h"
#include "support/BitmapFiles.h"

TEST(File, OfAPipeWithoutAWriterIsNoImage) {
  const TestFolder folder;
  ASSERT_EQ(mkfifo((folder.Path() / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(LoadFrom(*CreateObject<IGLPixmap>(CLSID_GLPixmap), (folder.Path() / "pipe").u16string()), E_FAIL);
}

// Files by name on Linux: what isn't a plain file is refused, and nobody is waited for.

#include <sys/stat.h>

#include "support/BitmapFiles.h"
#include "support/Test.h"

TEST(File, OfAPipeWithoutAWriterIsNoImage) {
  const TestFolder folder;
  ASSERT_EQ(mkfifo((folder.Path() / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(LoadFrom(*GLCreate<IGLPixmap>(CLSID_GLPixmap), (folder.Path() / "pipe").u16string()), E_FAIL);
}

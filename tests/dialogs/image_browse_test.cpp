// The Browse request of the change-password and clear dialogs.
#include "dialogs/image_browse.h"

#include <gtest/gtest.h>

#include "res/texts.h"

TEST(ImageBrowse, RequestFromTheCurrentPath)
{
  WindowRef const owner = reinterpret_cast<WindowRef>(0x42);
  const FileDialogRequest request = ImageBrowseRequest(owner, u"C:\\disks\\d.qvi");
  EXPECT_EQ(request.owner, owner);
  EXPECT_EQ(request.flags, 0x02001004u);
  EXPECT_EQ(request.filter, LoadText(40006));
  EXPECT_EQ(request.fileName, u"C:\\disks\\d.qvi");
  EXPECT_TRUE(request.initialFolder.empty());
  EXPECT_TRUE(request.defaultExtension.empty());
}

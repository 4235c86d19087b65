// The Browse request of the change-password and clear dialogs.
#include "dialogs/image_browse.h"

#include <gtest/gtest.h>

#include "res/texts.h"
#include "support/scripted_shell.h"

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

TEST(ImageBrowse, MountRequestStartsOnTheDesktop)
{
  CScriptedShell shell;
  shell.AnswerSpecialFolder(kStatusSuccess, u"C:\\Users\\ann\\Desktop");
  WindowRef const owner = reinterpret_cast<WindowRef>(0x42);
  const FileDialogRequest request = MountBrowseRequest(owner, u"C:\\disks\\d.qvi");
  EXPECT_EQ(request.owner, owner);
  EXPECT_EQ(request.flags, 0x0200100Cu);
  EXPECT_EQ(request.filter, LoadText(40006));
  EXPECT_EQ(request.fileName, u"C:\\disks\\d.qvi");
  EXPECT_EQ(request.initialFolder, u"C:\\Users\\ann\\Desktop");
  EXPECT_TRUE(request.defaultExtension.empty());
  ASSERT_EQ(shell.Calls().size(), 1u);
  EXPECT_EQ(shell.Calls()[0].kind, CScriptedShell::Kind::kSpecialFolder);
  EXPECT_EQ(shell.Calls()[0].csidl, 0);
}

TEST(ImageBrowse, MountRequestWithoutADesktopHasNoInitialFolder)
{
  CScriptedShell shell;
  shell.AnswerSpecialFolder(kSysGeneralFailure, u"C:\\ignored");
  const FileDialogRequest request = MountBrowseRequest(nullptr, u"");
  EXPECT_TRUE(request.initialFolder.empty());
  EXPECT_EQ(request.flags, 0x0200100Cu);
}

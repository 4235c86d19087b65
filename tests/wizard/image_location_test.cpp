// The location page: the Browse dialog's request and the extension it adds, the folder part
// of a path, and the checks of Next with the folder prepared through the shell.
#include "wizard/image_location.h"

#include <gtest/gtest.h>

#include "res/texts.h"
#include "support/scripted_shell.h"

namespace {

const Prompt kEnterPath{40034, u"Please enter virtual disk image file path.", 40036, 0x10};
const Prompt kFullPathNeeded{40038, u"Please specify full path to virtual disk image file.", 40036,
                             0x10};

Prompt CannotCreate(const std::u16string& path)
{
  return Prompt{40037,
                u"Cannot create " + path +
                    u".\nPlease check that the file path exists and you have neccessary rights "
                    u"to create the file.",
                40035, 0x10};
}

}  // namespace

TEST(ImageLocation, SaveDialogAsksBeforeOverwriting)
{
  WindowRef const owner = reinterpret_cast<WindowRef>(0x42);
  const FileDialogRequest request = NewImageSaveRequest(owner, u"C:\\Disks\\work.qvi");
  EXPECT_EQ(request.owner, owner);
  EXPECT_EQ(request.flags, 0x02000806u);
  EXPECT_EQ(request.filter, LoadText(40006));
  EXPECT_EQ(request.fileName, u"C:\\Disks\\work.qvi");
  EXPECT_TRUE(request.initialFolder.empty());
  EXPECT_TRUE(request.defaultExtension.empty());
}

TEST(ImageLocation, ImageFilterAddsTheExtensionExactlyOnce)
{
  EXPECT_EQ(ChosenImagePath({u"C:\\Disks\\work", 1}), u"C:\\Disks\\work.qvi");
  EXPECT_EQ(ChosenImagePath({u"C:\\Disks\\work.qvi", 1}), u"C:\\Disks\\work.qvi");
  // The comparison is case-sensitive: an upper-case extension gets a second one.
  EXPECT_EQ(ChosenImagePath({u"C:\\Disks\\work.QVI", 1}), u"C:\\Disks\\work.QVI.qvi");
  EXPECT_EQ(ChosenImagePath({u"qvi", 1}), u"qvi.qvi");
}

TEST(ImageLocation, AllFilesKeepsTheName)
{
  EXPECT_EQ(ChosenImagePath({u"C:\\Disks\\work", 2}), u"C:\\Disks\\work");
  EXPECT_EQ(ChosenImagePath({u"C:\\Disks\\work.img", 2}), u"C:\\Disks\\work.img");
}

TEST(ImageLocation, FolderPartEndsWithItsSeparator)
{
  EXPECT_EQ(LocationFolder(u"C:\\disk.qvi"), u"C:\\");
  EXPECT_EQ(LocationFolder(u"C:\\Disks\\New\\work.qvi"), u"C:\\Disks\\New\\");
  EXPECT_EQ(LocationFolder(u"\\\\server\\share\\work.qvi"), u"\\\\server\\share\\");
  EXPECT_EQ(LocationFolder(u"Disks/work.qvi"), u"Disks/");
  EXPECT_EQ(LocationFolder(u"C:disk.qvi"), u"C:");
  EXPECT_EQ(LocationFolder(u"C:\\Disks\\"), u"C:\\");
  EXPECT_EQ(LocationFolder(u"disk.qvi"), u"");
  EXPECT_EQ(LocationFolder(u""), u"");
}

TEST(ImageLocation, EmptyPathIsRefused)
{
  CScriptedShell shell;
  const LocationCheck check = CheckImageLocation(u"");
  EXPECT_FALSE(check.accept);
  EXPECT_EQ(check.prompt, kEnterPath);
  EXPECT_TRUE(check.focusPath);
  EXPECT_TRUE(shell.Calls().empty());
}

TEST(ImageLocation, BareFileNameIsRefused)
{
  CScriptedShell shell;
  const LocationCheck check = CheckImageLocation(u"disk.qvi");
  EXPECT_FALSE(check.accept);
  EXPECT_EQ(check.prompt, kFullPathNeeded);
  EXPECT_TRUE(check.focusPath);
  EXPECT_TRUE(shell.Calls().empty());
}

TEST(ImageLocation, DriveRootPathPassesAfterItsFolderIsPrepared)
{
  CScriptedShell shell;
  shell.AnswerPrepareForWrite(kStatusSuccess);
  const LocationCheck check = CheckImageLocation(u"C:\\disk.qvi");
  EXPECT_TRUE(check.accept);
  EXPECT_FALSE(check.prompt.has_value());
  ASSERT_EQ(shell.Calls().size(), 1u);
  EXPECT_EQ(shell.Calls()[0].kind, CScriptedShell::Kind::kPrepareForWrite);
  EXPECT_EQ(shell.Calls()[0].owner, nullptr);
  EXPECT_EQ(shell.Calls()[0].path, u"C:\\");
  EXPECT_EQ(shell.Calls()[0].flags, 1u);
}

TEST(ImageLocation, MissingFoldersAreCreatedThroughTheShell)
{
  CScriptedShell shell;
  shell.AnswerPrepareForWrite(kStatusSuccess);
  EXPECT_TRUE(CheckImageLocation(u"D:\\New\\Deeper\\work.qvi").accept);
  ASSERT_EQ(shell.Calls().size(), 1u);
  EXPECT_EQ(shell.Calls()[0].path, u"D:\\New\\Deeper\\");
  EXPECT_EQ(shell.Calls()[0].flags, kShppfwDirCreate);
}

TEST(ImageLocation, FolderThatCannotBePreparedIsReportedWithTheWholePath)
{
  CScriptedShell shell;
  shell.AnswerPrepareForWrite(0x40000005);
  const LocationCheck check = CheckImageLocation(u"Q:\\Locked\\work.qvi");
  EXPECT_FALSE(check.accept);
  EXPECT_EQ(check.prompt, CannotCreate(u"Q:\\Locked\\work.qvi"));
  EXPECT_FALSE(check.focusPath);
}

TEST(ImageLocation, PathMustFitTheFolderBuffer)
{
  // 259 characters and the terminating NUL fill the buffer of 260.
  const std::u16string longest = u"C:\\" + std::u16string(252, u'a') + u".qvi";
  ASSERT_EQ(longest.size(), 259u);
  {
    CScriptedShell shell;
    shell.AnswerPrepareForWrite(kStatusSuccess);
    EXPECT_TRUE(CheckImageLocation(longest).accept);
  }
  CScriptedShell shell;
  const std::u16string tooLong = longest + u"x";
  const LocationCheck check = CheckImageLocation(tooLong);
  EXPECT_FALSE(check.accept);
  EXPECT_EQ(check.prompt, CannotCreate(tooLong));
  EXPECT_FALSE(check.focusPath);
  EXPECT_TRUE(shell.Calls().empty());
  EXPECT_FALSE(CheckImageLocation(std::u16string(5000, u'\\')).accept);
}

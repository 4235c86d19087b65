// Without Windows the system's services refuse at once instead of waiting for a user.
#include <gtest/gtest.h>

#include "services/file_dialog.h"
#include "services/help.h"
#include "services/message_box.h"
#include "services/process.h"
#include "services/shell.h"

namespace {

TEST(UnavailableServices, EachRefusesWithoutWaiting)
{
  EXPECT_EQ(ShowMessageBox(nullptr, u"text", u"caption", kMbYesNo), kIdCancel);
  EXPECT_FALSE(ChooseFileToOpen(FileDialogRequest{}).has_value());
  EXPECT_FALSE(ChooseFileToSave(FileDialogRequest{}).has_value());
  EXPECT_EQ(ShellOpen(nullptr, u"/tmp"), kSysNotSupported);
  EXPECT_EQ(ShellLookAt(u"/tmp"), kSysNotSupported);
  EXPECT_EQ(ShellFormatDrive(nullptr, 15, kShFmtIdDefault, kShFmtOptFull), kShFmtError);
  EXPECT_EQ(ShellPrepareForWrite(nullptr, u"/tmp/x/", kShppfwDirCreate), kSysNotSupported);
  std::u16string folder;
  EXPECT_EQ(ShellSpecialFolder(kCsidlDesktop, &folder), kSysNotSupported);
  EXPECT_EQ(ShowHelpContents(nullptr), kSysNotSupported);
  EXPECT_EQ(ShowHelpTopic(nullptr, 114), kSysNotSupported);
  std::u16string text = u"stale";
  EXPECT_EQ(StartProcess(ProcessStartRequest{}, &text), kSysNotSupported);
  EXPECT_TRUE(text.empty());
}

}  // namespace

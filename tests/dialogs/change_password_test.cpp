// The change-password command on real images in a temporary directory.
#include "dialogs/change_password.h"

#include <gtest/gtest.h>

#include "password_image.h"
#include "support/scripted_message_boxes.h"

namespace {

WindowRef const kOwner = reinterpret_cast<WindowRef>(0x77);
const std::u16string kFallbackTail =
    u"\n\nPlease contact technical support if the problem persists.";

// The dialog: closes with OK and the given fields, or with Cancel.
class CAnsweredDialog final : public CNewPasswordInput {
 public:
  CAnsweredDialog(std::u16string path, std::u16string oldPassword, std::u16string newPassword)
      : path_(std::move(path)), old_(std::move(oldPassword)), new_(std::move(newPassword))
  {
  }
  static CAnsweredDialog Cancelled() { return CAnsweredDialog(); }

  bool Ask(WindowRef owner, NewPasswordAnswers& answers) override
  {
    ++asked;
    EXPECT_EQ(owner, kOwner);
    answers.path = path_;
    answers.oldPassword = old_;
    answers.newPassword = new_;
    return ok_;
  }

  int asked = 0;

 private:
  CAnsweredDialog() : ok_(false) {}
  std::u16string path_, old_, new_;
  bool ok_ = true;
};

class ChangePasswordFlow : public testing::Test {
 protected:
  void SetUp() override
  {
    ASSERT_FALSE(IsFailure(CreatePasswordImage(path_, u"old secret", 4 * kMegabyte)));
  }

  TempDir dir_;
  const std::u16string path_ = dir_.File(u"d.qvi");
};

}  // namespace

TEST_F(ChangePasswordFlow, ReKeysTheImage)
{
  CLiveBlocks blocks;
  EXPECT_EQ(ChangeImagePassword(path_, u"old secret", u"new secret"), kStatusSuccess);
  EXPECT_EQ(blocks.Live(), 0u);
  EXPECT_EQ(OpenWithPassword(path_, u"new secret"), kStatusSuccess);
  EXPECT_EQ(OpenWithPassword(path_, u"old secret"), kImgWrongPassword);
}

TEST_F(ChangePasswordFlow, SamePasswordKeepsTheKey)
{
  EXPECT_EQ(ChangeImagePassword(path_, u"old secret", u"old secret"), kStatusSuccess);
  EXPECT_EQ(OpenWithPassword(path_, u"old secret"), kStatusSuccess);
}

TEST_F(ChangePasswordFlow, WrongOldPasswordFailsAtTheOpen)
{
  CLiveBlocks blocks;
  EXPECT_EQ(ChangeImagePassword(path_, u"Old secret", u"new secret"), kImgWrongPassword);
  EXPECT_EQ(blocks.Live(), 0u);
  EXPECT_EQ(OpenWithPassword(path_, u"old secret"), kStatusSuccess);
}

TEST_F(ChangePasswordFlow, EveryFailedWriteLeavesTheImageClosed)
{
  SysFileFaults counting{};
  SysSetFileFaults(&counting);
  {
    TempDir other;
    const std::u16string path = other.File(u"e.qvi");
    ASSERT_FALSE(IsFailure(CreatePasswordImage(path, u"a", 4 * kMegabyte)));
    counting.writesSeen = 0;
    ASSERT_EQ(ChangeImagePassword(path, u"a", u"b"), kStatusSuccess);
  }
  SysSetFileFaults(nullptr);
  const uint64_t writes = counting.writesSeen;
  ASSERT_GT(writes, 0u);
  // Some writes (the open's note of the time) may fail without failing the command.
  uint64_t failures = 0;
  for (uint64_t failing = 1; failing <= writes; ++failing) {
    TempDir other;
    const std::u16string path = other.File(u"e.qvi");
    ASSERT_FALSE(IsFailure(CreatePasswordImage(path, u"a", 4 * kMegabyte)));
    SysFileFaults faults{};
    faults.failingWrite = failing;
    CLiveBlocks blocks;
    SysSetFileFaults(&faults);
    const StatusCode status = ChangeImagePassword(path, u"a", u"b");
    SysSetFileFaults(nullptr);
    if (IsFailure(status)) {
      ++failures;
      EXPECT_EQ(status, kSysWriteFault) << "write " << failing;
    }
    EXPECT_EQ(blocks.Live(), 0u) << "write " << failing;
  }
  EXPECT_GT(failures, 0u);
}

TEST_F(ChangePasswordFlow, EveryFailedAllocationLeavesNothingBehind)
{
  uint64_t allocations = 0;
  {
    TempDir other;
    const std::u16string path = other.File(u"e.qvi");
    ASSERT_FALSE(IsFailure(CreatePasswordImage(path, u"a", 4 * kMegabyte)));
    CLiveBlocks blocks;
    ASSERT_EQ(ChangeImagePassword(path, u"a", u"b"), kStatusSuccess);
    allocations = blocks.Seen();
  }
  ASSERT_GT(allocations, 0u);
  // Some allocations (caches) may be refused without failing the command.
  bool keyBufferRefused = false;
  for (uint64_t failing = 1; failing <= allocations; ++failing) {
    TempDir other;
    const std::u16string path = other.File(u"e.qvi");
    ASSERT_FALSE(IsFailure(CreatePasswordImage(path, u"a", 4 * kMegabyte)));
    CLiveBlocks blocks;
    blocks.FailAllocation(failing);
    const StatusCode status = ChangeImagePassword(path, u"a", u"b");
    EXPECT_EQ(blocks.Live(), 0u) << "allocation " << failing;
    if (IsFailure(status)) {
      EXPECT_TRUE(status == kSysOutOfMemory || status == kImgOutOfMemory ||
                  status == kCryptoOutOfMemory)
          << "allocation " << failing << ": " << std::hex << status;
    }
    keyBufferRefused = keyBufferRefused || status == 0x40000005;
  }
  EXPECT_TRUE(keyBufferRefused);
}

TEST_F(ChangePasswordFlow, CommandTellsTheSuccess)
{
  CScriptedMessageBoxes boxes;
  boxes.Answer(kIdOk);
  CAnsweredDialog dialog(path_, u"old secret", u"x");
  ChangePasswordCommand(kOwner, dialog);
  ASSERT_EQ(boxes.Prompts().size(), 1u);
  EXPECT_EQ(boxes.Prompts()[0].owner, kOwner);
  EXPECT_EQ(boxes.Prompts()[0].text, u"Virtual disk image password has been successfuly changed.");
  EXPECT_EQ(boxes.Prompts()[0].caption, u"Operation Complete");
  EXPECT_EQ(boxes.Prompts()[0].flags, 0x40u);
  EXPECT_EQ(OpenWithPassword(path_, u"x"), kStatusSuccess);
}

TEST_F(ChangePasswordFlow, CommandReportsAWrongOldPassword)
{
  CScriptedMessageBoxes boxes;
  boxes.Answer(kIdOk);
  CAnsweredDialog dialog(path_, u"wrong", u"x");
  ChangePasswordCommand(kOwner, dialog);
  ASSERT_EQ(boxes.Prompts().size(), 1u);
  EXPECT_EQ(boxes.Prompts()[0].text,
            u"Cannot open " + path_ +
                u".\nPassword is wrong or the virtual disk image file is not valid or is "
                u"corrupted.");
  EXPECT_EQ(boxes.Prompts()[0].caption, u"Cannot Change Password");
  EXPECT_EQ(boxes.Prompts()[0].flags, 0x10u);
  EXPECT_EQ(OpenWithPassword(path_, u"old secret"), kStatusSuccess);
}

TEST_F(ChangePasswordFlow, CommandNamesAMissingPath)
{
  CScriptedMessageBoxes boxes;
  boxes.Answer(kIdOk);
  const std::u16string missing = dir_.File(u"missing.qvi");
  CAnsweredDialog dialog(missing, u"a", u"b");
  ChangePasswordCommand(kOwner, dialog);
  ASSERT_EQ(boxes.Prompts().size(), 1u);
  EXPECT_EQ(boxes.Prompts()[0].text,
            u"Cannot change password for " + missing + u".\nError code: 4000000F" + kFallbackTail);
  EXPECT_EQ(boxes.Prompts()[0].caption, u"Cannot Change Password");
}

TEST_F(ChangePasswordFlow, RetryRepeatsTheMessageNotTheSteps)
{
  // A directory cannot be read as an image: access denied, which offers Retry.
  const std::u16string folder = dir_.Text();
  uint64_t allocationsOfOneTry = 0;
  {
    CScriptedMessageBoxes boxes;
    boxes.Answer(kIdCancel);
    CAnsweredDialog dialog(folder, u"a", u"b");
    CLiveBlocks blocks;
    ChangePasswordCommand(kOwner, dialog);
    allocationsOfOneTry = blocks.Seen();
  }
  CScriptedMessageBoxes boxes;
  for (const int answer : {kIdRetry, kIdRetry, kIdCancel}) boxes.Answer(answer);
  CAnsweredDialog dialog(folder, u"a", u"b");
  CLiveBlocks blocks;
  ChangePasswordCommand(kOwner, dialog);
  EXPECT_EQ(blocks.Seen(), allocationsOfOneTry);
  EXPECT_EQ(dialog.asked, 1);
  ASSERT_EQ(boxes.Prompts().size(), 3u);
  for (const auto& prompt : boxes.Prompts()) {
    EXPECT_EQ(prompt.text, u"Cannot open " + folder + u".\nAccess denied.");
    EXPECT_EQ(prompt.caption, u"Cannot Change Password");
    EXPECT_EQ(prompt.flags, 0x15u);
  }
}

TEST_F(ChangePasswordFlow, CancelDoesNothing)
{
  CScriptedMessageBoxes boxes;
  CAnsweredDialog dialog = CAnsweredDialog::Cancelled();
  ChangePasswordCommand(kOwner, dialog);
  EXPECT_EQ(dialog.asked, 1);
  EXPECT_TRUE(boxes.Prompts().empty());
  EXPECT_EQ(OpenWithPassword(path_, u"old secret"), kStatusSuccess);
}

TEST(PasswordChangedPrompt, IsAnInformation)
{
  EXPECT_EQ(PasswordChangedPrompt(),
            (Prompt{40097, u"Virtual disk image password has been successfuly changed.", 40096,
                    kMbOk | kMbIconInformation}));
}

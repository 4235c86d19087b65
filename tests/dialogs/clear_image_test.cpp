// The clear command on real images in a temporary directory.
#include "dialogs/clear_image.h"

#include <gtest/gtest.h>

#include <functional>

#include "password_image.h"
#include "support/scripted_message_boxes.h"

namespace {

WindowRef const kOwner = reinterpret_cast<WindowRef>(0x78);
const std::u16string kLongQuestion =
    u"Clearing virtual disk image may take long time to complete.\n\nDo you want to proceed?";

class CAnsweredDialog final : public CClearImageInput {
 public:
  CAnsweredDialog(std::u16string path, std::u16string password, bool ok = true)
      : path_(std::move(path)), password_(std::move(password)), ok_(ok)
  {
  }

  bool Ask(WindowRef owner, ClearImageAnswers& answers) override
  {
    EXPECT_EQ(owner, kOwner);
    answers.path = path_;
    answers.password = password_;
    return ok_;
  }

 private:
  std::u16string path_, password_;
  bool ok_;
};

// The progress dialog: runs `job` on the open image in place of the worker.
class CRecordedRun final : public CClearProgressRun {
 public:
  explicit CRecordedRun(std::function<StatusCode(ImageHandle*)> job) : job_(std::move(job)) {}

  StatusCode Run(WindowRef owner, ImageHandle* image) override
  {
    ++runs;
    EXPECT_EQ(owner, kOwner);
    EXPECT_NE(image, nullptr);
    return job_(image);
  }

  int runs = 0;

 private:
  std::function<StatusCode(ImageHandle*)> job_;
};

uint32_t GoOn(uint32_t, uint32_t, void*, uint64_t)
{
  return 1;
}
uint32_t Stop(uint32_t, uint32_t, void*, uint64_t)
{
  return 0;
}

StatusCode ClearFully(ImageHandle* image)
{
  return ImgClear(image, GoOn, nullptr);
}

class ClearCommand : public testing::Test {
 protected:
  void Create(uint64_t capacity, uint32_t flags = 0)
  {
    ASSERT_FALSE(IsFailure(CreatePasswordImage(path_, u"secret", capacity, flags)));
  }

  void Run(CRecordedRun& run, const std::u16string& password = u"secret")
  {
    CAnsweredDialog dialog(path_, password);
    ClearImageCommand(kOwner, dialog, run);
  }

  TempDir dir_;
  const std::u16string path_ = dir_.File(u"d.qvi");
};

}  // namespace

TEST_F(ClearCommand, SuccessIsToldAndTheImageClosed)
{
  Create(4 * kMegabyte, kCreateFixed);
  CScriptedMessageBoxes boxes;
  boxes.Answer(kIdOk);
  CRecordedRun run(ClearFully);
  CLiveBlocks blocks;
  Run(run);
  EXPECT_EQ(blocks.Live(), 0u);
  EXPECT_EQ(run.runs, 1);
  ASSERT_EQ(boxes.Prompts().size(), 1u);
  EXPECT_EQ(boxes.Prompts()[0].owner, kOwner);
  EXPECT_EQ(boxes.Prompts()[0].text, u"Virtual disk image has been cleared.");
  EXPECT_EQ(boxes.Prompts()[0].caption, u"Operation Complete");
  EXPECT_EQ(boxes.Prompts()[0].flags, 0x40u);
  EXPECT_EQ(OpenWithPassword(path_, u"secret"), kStatusSuccess);
}

TEST_F(ClearCommand, CancelInTheProgressIsSilent)
{
  Create(4 * kMegabyte);
  CScriptedMessageBoxes boxes;
  CRecordedRun run([](ImageHandle* image) { return ImgClear(image, Stop, nullptr); });
  CLiveBlocks blocks;
  Run(run);
  EXPECT_EQ(run.runs, 1);
  EXPECT_EQ(blocks.Live(), 0u);
  EXPECT_TRUE(boxes.Prompts().empty());
}

TEST_F(ClearCommand, WrongPasswordIsReportedWithoutClearing)
{
  Create(4 * kMegabyte);
  CScriptedMessageBoxes boxes;
  boxes.Answer(kIdOk);
  CRecordedRun run(ClearFully);
  Run(run, u"Secret");
  EXPECT_EQ(run.runs, 0);
  ASSERT_EQ(boxes.Prompts().size(), 1u);
  EXPECT_EQ(boxes.Prompts()[0].text,
            u"Cannot open " + path_ +
                u".\nPassword is wrong or the virtual disk image file is not valid or is "
                u"corrupted.");
  EXPECT_EQ(boxes.Prompts()[0].caption, u"Error");
  EXPECT_EQ(boxes.Prompts()[0].flags, 0x10u);
}

TEST_F(ClearCommand, AFailedClearGivesTheFallbackWithItsCode)
{
  Create(4 * kMegabyte);
  CScriptedMessageBoxes boxes;
  boxes.Answer(kIdOk);
  CRecordedRun run([](ImageHandle*) { return kSysGeneralFailure; });
  CLiveBlocks blocks;
  Run(run);
  EXPECT_EQ(blocks.Live(), 0u);
  ASSERT_EQ(boxes.Prompts().size(), 1u);
  EXPECT_EQ(boxes.Prompts()[0].text,
            u"Clearing of image failed.\nError code: 40000007\n\nPlease contact technical "
            u"support if the problem persists.");
  EXPECT_EQ(boxes.Prompts()[0].caption, u"Error");
}

TEST_F(ClearCommand, RetryRepeatsTheMessageNotTheSteps)
{
  Create(4 * kMegabyte);
  CScriptedMessageBoxes boxes;
  for (const int answer : {kIdRetry, kIdCancel}) boxes.Answer(answer);
  CRecordedRun run([](ImageHandle*) { return kSysAccessDenied; });
  Run(run);
  EXPECT_EQ(run.runs, 1);
  ASSERT_EQ(boxes.Prompts().size(), 2u);
  EXPECT_EQ(boxes.Prompts()[0].text, u"Cannot open " + path_ + u".\nAccess denied.");
  EXPECT_EQ(boxes.Prompts()[1].text, boxes.Prompts()[0].text);
  EXPECT_EQ(boxes.Prompts()[1].flags, 0x15u);
}

TEST_F(ClearCommand, DialogCancelDoesNothing)
{
  Create(4 * kMegabyte);
  CScriptedMessageBoxes boxes;
  CRecordedRun run(ClearFully);
  CAnsweredDialog dialog(path_, u"secret", false);
  ClearImageCommand(kOwner, dialog, run);
  EXPECT_EQ(run.runs, 0);
  EXPECT_TRUE(boxes.Prompts().empty());
}

TEST_F(ClearCommand, SmallFixedAndLargeSparseImagesAreNotQuestioned)
{
  for (const auto& [capacity, flags] : {std::pair<uint64_t, uint32_t>{255 * kMegabyte, 0},
                                        {256 * kMegabyte, 0},
                                        {8 * kMegabyte, kCreateFixed}}) {
    TempDir dir;
    const std::u16string path = dir.File(u"d.qvi");
    ASSERT_FALSE(IsFailure(CreatePasswordImage(path, u"secret", capacity, flags)));
    CScriptedMessageBoxes boxes;
    boxes.Answer(kIdOk);
    CRecordedRun run([](ImageHandle*) { return kStatusSuccess; });
    CAnsweredDialog dialog(path, u"secret");
    ClearImageCommand(kOwner, dialog, run);
    EXPECT_EQ(run.runs, 1);
    ASSERT_EQ(boxes.Prompts().size(), 1u);
    EXPECT_EQ(boxes.Prompts()[0].text, u"Virtual disk image has been cleared.");
  }
}

// A fixed image of exactly 256 MB: the question comes; "No" ends silently with the image
// untouched, "Yes" goes on to the progress.
TEST_F(ClearCommand, FixedImageOfExactly256MegabytesIsQuestioned)
{
  Create(268435456, kCreateFixed);
  {
    CScriptedMessageBoxes boxes;
    boxes.Answer(kIdNo);
    CRecordedRun run(ClearFully);
    CLiveBlocks blocks;
    Run(run);
    EXPECT_EQ(run.runs, 0);
    EXPECT_EQ(blocks.Live(), 0u);
    ASSERT_EQ(boxes.Prompts().size(), 1u);
    EXPECT_EQ(boxes.Prompts()[0].text, kLongQuestion);
    EXPECT_EQ(boxes.Prompts()[0].caption, u"Warning");
    EXPECT_EQ(boxes.Prompts()[0].flags, 0x34u);
  }
  CScriptedMessageBoxes boxes;
  boxes.Answer(kIdYes);
  boxes.Answer(kIdOk);
  CRecordedRun run([](ImageHandle*) { return kStatusSuccess; });
  Run(run);
  EXPECT_EQ(run.runs, 1);
  ASSERT_EQ(boxes.Prompts().size(), 2u);
  EXPECT_EQ(boxes.Prompts()[0].text, kLongQuestion);
  EXPECT_EQ(boxes.Prompts()[1].text, u"Virtual disk image has been cleared.");
}

TEST(ClearImagePrompts, LongClearAsksYesOrNo)
{
  EXPECT_EQ(LongClearPrompt(),
            (Prompt{40051, kLongQuestion, 40017, kMbYesNo | kMbIconExclamation}));
}

TEST(ClearImagePrompts, ClearedIsAnInformation)
{
  EXPECT_EQ(ImageClearedPrompt(), (Prompt{40095, u"Virtual disk image has been cleared.", 40096,
                                          kMbOk | kMbIconInformation}));
}

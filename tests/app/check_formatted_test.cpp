// The file-system check of a new drive: what the root directory's error says, the format
// question and the format dialog's results.
#include "app/check_formatted.h"

#include <gtest/gtest.h>

#include "flow_fixture.h"

namespace {

using CheckFormattedTest = FlowTest;

TEST_F(CheckFormattedTest, AccessDeniedOnTheRootIsAFormattedVolume)
{
  probe.Answer(kErrorAccessDenied);
  EXPECT_TRUE(CheckFormatted(Owner(), u'P'));
  EXPECT_EQ(probe.Paths(), std::vector<std::u16string>{u"P:\\"});
  EXPECT_TRUE(prompts.Prompts().empty());
  EXPECT_TRUE(shell.Calls().empty());
}

TEST_F(CheckFormattedTest, TheLetterIsUpperCasedFirst)
{
  probe.Answer(kErrorUnrecognizedVolume);
  prompts.Answer(kIdYes);
  shell.AnswerFormatDrive(0x0006);
  EXPECT_TRUE(CheckFormatted(Owner(), u'a'));
  EXPECT_EQ(probe.Paths(), std::vector<std::u16string>{u"A:\\"});
  ASSERT_EQ(prompts.Prompts().size(), 1u);
  EXPECT_EQ(prompts.Prompts()[0].text,
            u"Virtual disk A: is not formatted. You need to format it before using.\n\nWould you "
            u"like to format it now?");
  ASSERT_EQ(shell.Calls().size(), 1u);
  EXPECT_EQ(shell.Calls()[0].drive, 0u);
}

TEST_F(CheckFormattedTest, DriveZIsFormattedAsDriveNumber25)
{
  probe.Answer(kErrorUnrecognizedVolume);
  prompts.Answer(kIdYes);
  shell.AnswerFormatDrive(0);
  EXPECT_TRUE(CheckFormatted(nullptr, u'Z'));
  ASSERT_EQ(shell.Calls().size(), 1u);
  EXPECT_EQ(shell.Calls()[0].owner, nullptr);
  EXPECT_EQ(shell.Calls()[0].drive, 25u);
  EXPECT_EQ(shell.Calls()[0].formatId, 0xFFFFu);
  EXPECT_EQ(shell.Calls()[0].options, 1u);
}

TEST_F(CheckFormattedTest, AlreadyExistsAndOtherErrorsAreNotOpened)
{
  for (const uint32_t error : {kErrorAlreadyExists, 0u, 3u, 21u, kErrorNotSupported}) {
    probe.Answer(error);
    EXPECT_FALSE(CheckFormatted(Owner(), u'P')) << error;
  }
  EXPECT_TRUE(prompts.Prompts().empty());
  EXPECT_TRUE(shell.Calls().empty());
}

TEST_F(CheckFormattedTest, UnrecognisedVolumeOutsideAToZAsksNothing)
{
  for (const char16_t letter : {u'1', u'@', u'[', u'\u00E9'}) {
    probe.Answer(kErrorUnrecognizedVolume);
    EXPECT_FALSE(CheckFormatted(Owner(), letter));
  }
  EXPECT_TRUE(prompts.Prompts().empty());
  EXPECT_TRUE(shell.Calls().empty());
}

TEST(FormatDiskPrompt, NamesTheLetterAndAsksYesOrNo)
{
  EXPECT_EQ(FormatDiskPrompt(u'Q'),
            (Prompt{40049,
                    u"Virtual disk Q: is not formatted. You need to format it before using.\n\n"
                    u"Would you like to format it now?",
                    40048, kMbYesNo | kMbIconExclamation}));
}

}  // namespace

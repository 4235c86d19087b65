// Prompts chosen by the core, shown through the message-box service.
#include "app/prompt.h"

#include <gtest/gtest.h>

#include "app/operation_error.h"
#include "res/resource.h"
#include "support/scripted_message_boxes.h"

TEST(PromptTest, StylesAreTheSystemsMessageBoxFlags)
{
  EXPECT_EQ(kPromptError, 0x10u);
  EXPECT_EQ(kPromptRetryCancel, 0x15u);
  EXPECT_EQ(kPromptQuestion, 0x34u);
  EXPECT_EQ(kPromptInformation, 0x40u);
}

TEST(PromptTest, ShowsTheTextUnderItsLoadedCaptionWithItsStyle)
{
  CScriptedMessageBoxes prompts;
  prompts.Answer(kIdRetry);
  EXPECT_EQ(ShowPrompt(nullptr, MountFailure(0x40000008, u"C:\\d.qvi").prompt), kIdRetry);
  ASSERT_EQ(prompts.Prompts().size(), 1u);
  const CScriptedMessageBoxes::Prompt& shown = prompts.Prompts()[0];
  EXPECT_EQ(shown.owner, nullptr);
  EXPECT_EQ(shown.text, u"Cannot open C:\\d.qvi.\nAccess denied.");
  EXPECT_EQ(shown.caption, u"Cannot Mount Virtual Disk Image");
  EXPECT_EQ(shown.flags, kMbRetryCancel | kMbIconError);
}

TEST(PromptTest, BelongsToItsOwner)
{
  CScriptedMessageBoxes prompts;
  int ownerObject = 0;
  const WindowRef owner = &ownerObject;
  prompts.Answer(kIdOk);
  EXPECT_EQ(ShowPrompt(owner, DeviceHostStartFailure(0x40000013, IDS_ERROR_CAPTION)), kIdOk);
  ASSERT_EQ(prompts.Prompts().size(), 1u);
  EXPECT_EQ(prompts.Prompts()[0].owner, owner);
  EXPECT_EQ(prompts.Prompts()[0].text, u"Cannot start image mount driver.\nError code: 40000013");
  EXPECT_EQ(prompts.Prompts()[0].caption, u"Error");
  EXPECT_EQ(prompts.Prompts()[0].flags, kMbOk | kMbIconError);
}

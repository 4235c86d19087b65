// Prompts chosen by the core, shown through the message-box service.
#include "app/prompt_win.h"

#include "app/operation_error.h"
#include "res/resource.h"
#include "support/ui_harness.h"

using PromptWinTest = UiTest;

TEST_F(PromptWinTest, ShowsTheTextUnderItsLoadedCaptionWithItsStyle)
{
  prompts_.Answer(IDRETRY);
  EXPECT_EQ(ShowPrompt(nullptr, MountFailure(0x40000008, u"C:\\d.qvi").prompt), IDRETRY);
  ASSERT_EQ(prompts_.Prompts().size(), 1u);
  const CScriptedMessageBoxes::Prompt& shown = prompts_.Prompts()[0];
  EXPECT_EQ(shown.owner, nullptr);
  EXPECT_EQ(shown.text, L"Cannot open C:\\d.qvi.\nAccess denied.");
  EXPECT_EQ(shown.caption, L"Cannot Mount Virtual Disk Image");
  EXPECT_EQ(shown.flags, static_cast<UINT>(MB_RETRYCANCEL | MB_ICONERROR));
}

TEST_F(PromptWinTest, BelongsToItsOwner)
{
  HWND owner = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr,
                               nullptr);
  ASSERT_NE(owner, nullptr);
  prompts_.Answer(IDOK);
  EXPECT_EQ(ShowPrompt(owner, DeviceHostStartFailure(0x40000013, IDS_ERROR_CAPTION)), IDOK);
  ASSERT_EQ(prompts_.Prompts().size(), 1u);
  EXPECT_EQ(prompts_.Prompts()[0].owner, owner);
  EXPECT_EQ(prompts_.Prompts()[0].text, L"Cannot start image mount driver.\nError code: 40000013");
  EXPECT_EQ(prompts_.Prompts()[0].caption, L"Error");
  EXPECT_EQ(prompts_.Prompts()[0].flags, static_cast<UINT>(MB_OK | MB_ICONERROR));
  DestroyWindow(owner);
}

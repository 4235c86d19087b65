// The message-box service: one entry for every prompt, replaceable, texts from the table.
#include "ui/message_box.h"
#include "support/test_resources.h"
#include "support/ui_harness.h"

namespace {

class CFixedAnswer final : public CMessageBoxService {
 public:
  explicit CFixedAnswer(int answer) : answer_(answer) {}
  int calls = 0;
  std::wstring text;
  std::wstring caption;
  UINT flags = 0;
  int Show(HWND, const std::wstring& shownText, const std::wstring& shownCaption,
           UINT shownFlags) override
  {
    ++calls;
    text = shownText;
    caption = shownCaption;
    flags = shownFlags;
    return answer_;
  }

 private:
  int answer_;
};

using MessageBoxTest = UiTest;

TEST_F(MessageBoxTest, ReplacedServiceGetsTextCaptionFlagsAndGivesTheAnswer)
{
  CFixedAnswer fixed(IDRETRY);
  CMessageBoxService* const previous = ReplaceMessageBoxService(&fixed);
  EXPECT_EQ(previous, &prompts_);
  EXPECT_EQ(ShowMessageBox(nullptr, L"Cannot mount.", L"Error", MB_RETRYCANCEL | MB_ICONERROR),
            IDRETRY);
  EXPECT_EQ(fixed.text, L"Cannot mount.");
  EXPECT_EQ(fixed.caption, L"Error");
  EXPECT_EQ(fixed.flags, static_cast<UINT>(MB_RETRYCANCEL | MB_ICONERROR));
  EXPECT_EQ(ReplaceMessageBoxService(previous), &fixed);
  EXPECT_EQ(fixed.calls, 1);
}

TEST_F(MessageBoxTest, StringIdsAreLoadedFromTheTable)
{
  prompts_.Answer(IDNO);
  EXPECT_EQ(ShowMessageBox(nullptr, IDS_QUESTION, IDS_CAPTION, MB_YESNO | MB_ICONWARNING), IDNO);
  ASSERT_EQ(prompts_.Prompts().size(), 1u);
  EXPECT_EQ(prompts_.Prompts()[0].text, L"Do you want to proceed?");
  EXPECT_EQ(prompts_.Prompts()[0].caption, L"Harness caption");
}

TEST_F(MessageBoxTest, ScriptedAnswersAreGivenInOrder)
{
  prompts_.Answer(IDYES);
  prompts_.Answer(IDNO);
  EXPECT_EQ(ShowMessageBox(nullptr, L"first", L"c", MB_YESNO), IDYES);
  EXPECT_EQ(ShowMessageBox(nullptr, L"second", L"c", MB_YESNO), IDNO);
  ASSERT_EQ(prompts_.Prompts().size(), 2u);
  EXPECT_EQ(prompts_.Prompts()[1].text, L"second");
}

TEST_F(MessageBoxTest, NullRestoresTheSystemServiceAndReportsItAsNull)
{
  CMessageBoxService* const scripted = ReplaceMessageBoxService(nullptr);
  EXPECT_EQ(scripted, &prompts_);
  EXPECT_EQ(ReplaceMessageBoxService(scripted), nullptr);  // the system's was current
}

}  // namespace

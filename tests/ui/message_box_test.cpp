// Prompts by string id take their texts from the running program's string table.
#include "services/message_box.h"
#include "support/test_resources.h"
#include "support/ui_harness.h"

namespace {

using MessageBoxTest = UiTest;

TEST_F(MessageBoxTest, StringIdsAreLoadedFromTheTable)
{
  prompts_.Answer(IDNO);
  EXPECT_EQ(ShowMessageBox(nullptr, IDS_QUESTION, IDS_CAPTION, MB_YESNO | MB_ICONWARNING), IDNO);
  ASSERT_EQ(prompts_.Prompts().size(), 1u);
  EXPECT_EQ(prompts_.Prompts()[0].text, u"Do you want to proceed?");
  EXPECT_EQ(prompts_.Prompts()[0].caption, u"Harness caption");
}

}  // namespace

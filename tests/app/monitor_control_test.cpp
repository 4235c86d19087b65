// Starting the monitor program: only when enabled, by its bare name, and the message when it
// cannot be started.
#include "app/monitor_control.h"

#include <gtest/gtest.h>

#include "flow_fixture.h"
#include "settings/options.h"

namespace {

class MonitorControlTest : public FlowTest {
 protected:
  void EnableMonitor(uint32_t value)
  {
    MonitorOptions options;
    options.enableMonitor = value;
    ASSERT_EQ(WriteMonitorOptions(options), kStatusSuccess);
  }
};

TEST_F(MonitorControlTest, NothingStartsWhileTheMonitorIsNotEnabled)
{
  StartMonitor(Owner());
  EnableMonitor(0);
  StartMonitor(Owner());
  EXPECT_TRUE(processes.Requests().empty());
  EXPECT_TRUE(prompts.Prompts().empty());
}

TEST_F(MonitorControlTest, EnabledMonitorStartsByItsBareNameOnEveryCall)
{
  EnableMonitor(1);
  processes.AnswerStart(kStatusSuccess);
  processes.AnswerStart(kStatusSuccess);
  StartMonitor(Owner());
  StartMonitor(Owner());
  ASSERT_EQ(processes.Requests().size(), 2u);
  for (const ProcessStartRequest& request : processes.Requests()) {
    EXPECT_EQ(request.program, u"");
    EXPECT_EQ(request.commandLine, u"ctellmon.exe");
    EXPECT_EQ(request.desktop, std::optional<std::u16string>(u""));
    EXPECT_FALSE(request.position.has_value());
  }
  EXPECT_TRUE(prompts.Prompts().empty());
}

TEST_F(MonitorControlTest, FailureShowsTheSystemsTextForTheError)
{
  EnableMonitor(1);
  processes.AnswerStart(kSysNotFound, u"The system cannot find the file specified.\r\n");
  prompts.Answer(kIdOk);
  StartMonitor(Owner());
  ASSERT_EQ(prompts.Prompts().size(), 1u);
  EXPECT_EQ(prompts.Prompts()[0].owner, Owner());
  EXPECT_EQ(prompts.Prompts()[0].text,
            u"Unable to start Cryptelle Monitor.\nThe system cannot find the file specified.\r\n");
  EXPECT_EQ(prompts.Prompts()[0].caption, u"Error");
  EXPECT_EQ(prompts.Prompts()[0].flags, 0x10u);
}

TEST(MonitorStartFailure, FollowsTheTextWithTheSystemsText)
{
  EXPECT_EQ(MonitorStartFailure(u"Access is denied.\r\n"),
            (Prompt{40059, u"Unable to start Cryptelle Monitor.\nAccess is denied.\r\n", 40035,
                    kMbOk | kMbIconError}));
}

}  // namespace

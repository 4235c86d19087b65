// Every service has one current implementation: a replacement takes every call until it is
// replaced in turn, the previous one is handed back, and null brings the system's back.
#include <gtest/gtest.h>

#include "support/scripted_file_dialogs.h"
#include "support/scripted_help.h"
#include "support/scripted_message_boxes.h"
#include "support/scripted_processes.h"
#include "support/scripted_shell.h"

namespace {

TEST(ServiceSwitch, InnerScriptTakesTheCallsAndHandsBackTheOuterOne)
{
  CScriptedHelp outer;
  {
    CScriptedHelp inner;
    inner.Answer(kStatusSuccess);
    EXPECT_EQ(ShowHelpContents(nullptr), kStatusSuccess);
    EXPECT_EQ(inner.Calls().size(), 1u);
  }
  outer.Answer(kSysNotFound);
  EXPECT_EQ(ShowHelpTopic(nullptr, 109), kSysNotFound);
  EXPECT_EQ(outer.Calls().size(), 1u);
}

TEST(ServiceSwitch, ReplaceReturnsThePreviousAndNullRestoresTheSystemsReportedAsNull)
{
  CScriptedMessageBoxes prompts;
  CScriptedFileDialogs dialogs;
  CScriptedShell shell;
  CScriptedHelp help;
  CScriptedProcesses processes;

  EXPECT_EQ(ReplaceMessageBoxService(nullptr), &prompts);
  EXPECT_EQ(ReplaceMessageBoxService(&prompts), nullptr);
  EXPECT_EQ(ReplaceFileDialogService(nullptr), &dialogs);
  EXPECT_EQ(ReplaceFileDialogService(&dialogs), nullptr);
  EXPECT_EQ(ReplaceShellService(nullptr), &shell);
  EXPECT_EQ(ReplaceShellService(&shell), nullptr);
  EXPECT_EQ(ReplaceHelpService(nullptr), &help);
  EXPECT_EQ(ReplaceHelpService(&help), nullptr);
  EXPECT_EQ(ReplaceProcessService(nullptr), &processes);
  EXPECT_EQ(ReplaceProcessService(&processes), nullptr);
}

TEST(ServiceSwitch, ScriptsRestoreTheSystemsServicesWhenTheyEnd)
{
  {
    CScriptedMessageBoxes prompts;
    CScriptedFileDialogs dialogs;
    CScriptedShell shell;
    CScriptedHelp help;
    CScriptedProcesses processes;
  }
  EXPECT_EQ(ReplaceMessageBoxService(nullptr), nullptr);
  EXPECT_EQ(ReplaceFileDialogService(nullptr), nullptr);
  EXPECT_EQ(ReplaceShellService(nullptr), nullptr);
  EXPECT_EQ(ReplaceHelpService(nullptr), nullptr);
  EXPECT_EQ(ReplaceProcessService(nullptr), nullptr);
}

}  // namespace

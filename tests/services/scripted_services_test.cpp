// The scripted stand-ins: each records its calls, answers from its script in order, and
// fails the test on a call nobody scripted or an answer nobody used.
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include "support/scripted_file_dialogs.h"
#include "support/scripted_help.h"
#include "support/scripted_message_boxes.h"
#include "support/scripted_processes.h"
#include "support/scripted_shell.h"

namespace {

using namespace std::string_literals;

int ownerObject = 0;
WindowRef const kOwner = &ownerObject;

TEST(ScriptedMessageBoxes, RecordsPromptsAndAnswersInOrder)
{
  CScriptedMessageBoxes prompts;
  prompts.Answer(kIdYes);
  prompts.Answer(kIdNo);
  EXPECT_EQ(ShowMessageBox(kOwner, u"first", u"Caption", kMbYesNo | kMbIconExclamation), kIdYes);
  EXPECT_EQ(ShowMessageBox(nullptr, u"second", u"Caption", kMbYesNo), kIdNo);
  ASSERT_EQ(prompts.Prompts().size(), 2u);
  EXPECT_EQ(prompts.Prompts()[0].owner, kOwner);
  EXPECT_EQ(prompts.Prompts()[0].text, u"first");
  EXPECT_EQ(prompts.Prompts()[0].caption, u"Caption");
  EXPECT_EQ(prompts.Prompts()[0].flags, 0x34u);
  EXPECT_EQ(prompts.Prompts()[1].text, u"second");
}

TEST(ScriptedMessageBoxes, UnscriptedPromptFailsAndIsAnsweredCancel)
{
  CScriptedMessageBoxes prompts;
  int answer = 0;
  EXPECT_NONFATAL_FAILURE(answer = ShowMessageBox(nullptr, u"Surprise", u"Caption", kMbOk),
                          "unscripted message box: \"Caption\" \"Surprise\"");
  EXPECT_EQ(answer, kIdCancel);
  EXPECT_EQ(prompts.Prompts().size(), 1u);
}

TEST(ScriptedMessageBoxes, UnusedAnswerFails)
{
  EXPECT_NONFATAL_FAILURE(
      {
        CScriptedMessageBoxes prompts;
        prompts.Answer(kIdOk);
      },
      "1 scripted message-box answer(s) were not used");
}

TEST(ScriptedMessageBoxes, StringIdsAreLoadedFromTheProgramsTable)
{
  CScriptedMessageBoxes prompts;
  prompts.Answer(kIdOk);
  ShowMessageBox(nullptr, 40014u, 40007u, kMbIconError);  // driver missing; mount caption
  ASSERT_EQ(prompts.Prompts().size(), 1u);
  EXPECT_EQ(prompts.Prompts()[0].text,
            u"Cannot connect to driver. Please re-install the application if the problem "
            u"persists.");
  EXPECT_EQ(prompts.Prompts()[0].caption, u"Cannot Mount Virtual Disk Image");
}

TEST(ScriptedFileDialogs, RecordsRequestsAndGivesChoicesOrCancel)
{
  CScriptedFileDialogs dialogs;
  dialogs.Choose(u"C:\\images\\disk.qvi", 2);
  dialogs.Cancel();
  const FileDialogRequest request{kOwner, u"Images\0*.qvi\0"s, kOfnFileMustExist, u"C:\\Desktop",
                                  u"qvi", u"old.qvi"};
  const std::optional<FileDialogChoice> chosen = ChooseFileToOpen(request);
  ASSERT_TRUE(chosen.has_value());
  EXPECT_EQ(chosen->path, u"C:\\images\\disk.qvi");
  EXPECT_EQ(chosen->filterIndex, 2u);
  EXPECT_FALSE(ChooseFileToSave(request).has_value());

  ASSERT_EQ(dialogs.Calls().size(), 2u);
  EXPECT_EQ(dialogs.Calls()[0].kind, CScriptedFileDialogs::Kind::kOpen);
  EXPECT_EQ(dialogs.Calls()[1].kind, CScriptedFileDialogs::Kind::kSave);
  const FileDialogRequest& seen = dialogs.Calls()[0].request;
  EXPECT_EQ(seen.owner, kOwner);
  EXPECT_EQ(seen.filter, request.filter);
  EXPECT_EQ(seen.flags, kOfnFileMustExist);
  EXPECT_EQ(seen.initialFolder, u"C:\\Desktop");
  EXPECT_EQ(seen.defaultExtension, u"qvi");
  EXPECT_EQ(seen.fileName, u"old.qvi");
}

TEST(ScriptedFileDialogs, UnscriptedDialogFailsAndCountsAsCancelled)
{
  CScriptedFileDialogs dialogs;
  std::optional<FileDialogChoice> chosen{FileDialogChoice{}};
  FileDialogRequest request;
  request.fileName = u"disk.qvi";
  EXPECT_NONFATAL_FAILURE(chosen = ChooseFileToSave(request),
                          "unscripted save-file dialog starting at \"disk.qvi\"");
  EXPECT_FALSE(chosen.has_value());
}

TEST(ScriptedFileDialogs, UnusedAnswerFails)
{
  EXPECT_NONFATAL_FAILURE(
      {
        CScriptedFileDialogs dialogs;
        dialogs.Cancel();
      },
      "1 scripted file-dialog answer(s) were not used");
}

TEST(ScriptedShell, RecordsEveryCallInOrderAndAnswersEachKindFromItsScript)
{
  CScriptedShell shell;
  shell.AnswerSpecialFolder(kStatusSuccess, u"C:\\Users\\me\\Desktop");
  shell.AnswerFormatDrive(0xFFFF);
  shell.AnswerLookAt(kStatusSuccess);
  shell.AnswerOpen(kSysNotFound);
  shell.AnswerPrepareForWrite(kSysAccessDenied);

  std::u16string desktop;
  EXPECT_EQ(ShellSpecialFolder(kCsidlDesktop, &desktop), kStatusSuccess);
  EXPECT_EQ(desktop, u"C:\\Users\\me\\Desktop");
  EXPECT_EQ(ShellFormatDrive(kOwner, 15, kShFmtIdDefault, kShFmtOptFull), 0xFFFFu);
  EXPECT_EQ(ShellLookAt(u"P:\\"), kStatusSuccess);
  EXPECT_EQ(ShellOpen(kOwner, u"P:\\"), kSysNotFound);
  EXPECT_EQ(ShellPrepareForWrite(nullptr, u"C:\\new\\", kShppfwDirCreate), kSysAccessDenied);

  using Kind = CScriptedShell::Kind;
  const std::vector<CScriptedShell::Call>& calls = shell.Calls();
  ASSERT_EQ(calls.size(), 5u);
  EXPECT_EQ(calls[0].kind, Kind::kSpecialFolder);
  EXPECT_EQ(calls[0].csidl, kCsidlDesktop);
  EXPECT_EQ(calls[1].kind, Kind::kFormatDrive);
  EXPECT_EQ(calls[1].owner, kOwner);
  EXPECT_EQ(calls[1].drive, 15u);
  EXPECT_EQ(calls[1].formatId, kShFmtIdDefault);
  EXPECT_EQ(calls[1].options, kShFmtOptFull);
  EXPECT_EQ(calls[2].kind, Kind::kLookAt);
  EXPECT_EQ(calls[2].path, u"P:\\");
  EXPECT_EQ(calls[3].kind, Kind::kOpen);
  EXPECT_EQ(calls[3].owner, kOwner);
  EXPECT_EQ(calls[3].path, u"P:\\");
  EXPECT_EQ(calls[4].kind, Kind::kPrepareForWrite);
  EXPECT_EQ(calls[4].path, u"C:\\new\\");
  EXPECT_EQ(calls[4].flags, kShppfwDirCreate);
}

TEST(ScriptedShell, UnscriptedCallsFailAndGetFailures)
{
  CScriptedShell shell;
  shell.AnswerOpen(kStatusSuccess);  // an answer for another kind of call does not count
  StatusCode status = kStatusSuccess;
  EXPECT_NONFATAL_FAILURE(status = ShellLookAt(u"Q:\\"), "unscripted shell look at \"Q:\\\"");
  EXPECT_EQ(status, kSysGeneralFailure);
  uint32_t formatted = 0;
  EXPECT_NONFATAL_FAILURE(formatted = ShellFormatDrive(nullptr, 2, kShFmtIdDefault, 0),
                          "unscripted format of drive number 2");
  EXPECT_EQ(formatted, kShFmtError);
  std::u16string folder = u"untouched";
  EXPECT_NONFATAL_FAILURE(status = ShellSpecialFolder(kCsidlDesktop, &folder),
                          "unscripted special folder 0");
  EXPECT_TRUE(IsFailure(status));
  EXPECT_EQ(ShellOpen(nullptr, u"P:\\"), kStatusSuccess);
}

TEST(ScriptedShell, UnusedAnswersFail)
{
  EXPECT_NONFATAL_FAILURE(
      {
        CScriptedShell shell;
        shell.AnswerPrepareForWrite(kStatusSuccess);
      },
      "1 scripted prepare-for-write answer(s) were not used");
}

TEST(ScriptedHelp, RecordsContentsAndTopicsAndAnswersInOrder)
{
  CScriptedHelp help;
  help.Answer(kStatusSuccess);
  help.Answer(kSysNotFound);
  EXPECT_EQ(ShowHelpContents(kOwner), kStatusSuccess);
  EXPECT_EQ(ShowHelpTopic(nullptr, 114), kSysNotFound);
  ASSERT_EQ(help.Calls().size(), 2u);
  EXPECT_EQ(help.Calls()[0].owner, kOwner);
  EXPECT_TRUE(help.Calls()[0].contents);
  EXPECT_FALSE(help.Calls()[1].contents);
  EXPECT_EQ(help.Calls()[1].context, 114u);
}

TEST(ScriptedHelp, UnscriptedRequestFails)
{
  CScriptedHelp help;
  StatusCode status = kStatusSuccess;
  EXPECT_NONFATAL_FAILURE(status = ShowHelpTopic(nullptr, 156), "unscripted help topic 156");
  EXPECT_EQ(status, kSysGeneralFailure);
}

TEST(ScriptedProcesses, RecordsRequestsAndAnswersWithStatusAndText)
{
  CScriptedProcesses processes;
  processes.AnswerStart(kStatusSuccess);
  processes.AnswerStart(kSysNotFound, u"The system cannot find the file specified.");
  ProcessStartRequest keyboard;
  keyboard.program = u"%SystemRoot%\\system32\\osk.exe";
  keyboard.position = ScreenPosition{120, 340};
  ProcessStartRequest monitor;
  monitor.commandLine = u"ctellmon.exe";
  monitor.desktop = u"";

  std::u16string text = u"untouched";
  EXPECT_EQ(StartProcess(keyboard, &text), kStatusSuccess);
  EXPECT_EQ(StartProcess(monitor, &text), kSysNotFound);
  EXPECT_EQ(text, u"The system cannot find the file specified.");

  ASSERT_EQ(processes.Requests().size(), 2u);
  EXPECT_EQ(processes.Requests()[0].program, keyboard.program);
  ASSERT_TRUE(processes.Requests()[0].position.has_value());
  EXPECT_EQ(processes.Requests()[0].position->x, 120);
  EXPECT_EQ(processes.Requests()[0].position->y, 340);
  EXPECT_FALSE(processes.Requests()[0].desktop.has_value());
  EXPECT_EQ(processes.Requests()[1].commandLine, u"ctellmon.exe");
  EXPECT_EQ(processes.Requests()[1].desktop, std::optional<std::u16string>(u""));
}

TEST(ScriptedProcesses, UnscriptedStartFails)
{
  CScriptedProcesses processes;
  ProcessStartRequest monitor;
  monitor.commandLine = u"ctellmon.exe";
  StatusCode status = kStatusSuccess;
  EXPECT_NONFATAL_FAILURE(status = StartProcess(monitor, nullptr),
                          "unscripted start of \"\" \"ctellmon.exe\"");
  EXPECT_EQ(status, kSysGeneralFailure);
}

}  // namespace

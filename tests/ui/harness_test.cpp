// The harness's own guarantees: an unexpected modal box or a modal window nobody closes
// fails the test instead of hanging it, and unscripted or unused prompts are failures too, as
// are file dialogs, shell calls, help and program starts that nobody scripted.
#include <gtest/gtest-spi.h>

#include "support/test_dialogs.h"
#include "support/ui_harness.h"

namespace {

using HarnessTest = UiTest;

// Under the null driver this call would block for ever without the backstop.
TEST_F(HarnessTest, MessageBoxBypassingTheServiceFailsTheTestAndReturns)
{
  int answer = 0;
  EXPECT_NONFATAL_FAILURE(
      answer = MessageBoxW(nullptr, L"Nobody scripted this.", L"Stray box", MB_YESNO),
      "unexpected modal box \"Stray box\"");
  EXPECT_EQ(answer, IDCANCEL);
  EXPECT_EQ(backstop_.Caught(), 1);
}

TEST_F(HarnessTest, SystemServiceIsCaughtByTheBackstopToo)
{
  // With the system's message box behind the service, a prompt becomes a real box.
  CMessageBoxService* const scripted = ReplaceMessageBoxService(nullptr);
  EXPECT_NONFATAL_FAILURE(ShowMessageBox(nullptr, u"Real box text", u"Real box", kMbOk),
                          "Real box text");
  ReplaceMessageBoxService(scripted);
  EXPECT_EQ(backstop_.Caught(), 1);
}

TEST_F(HarnessTest, FrameworkDialogsAreNotTakenForStrayBoxes)
{
  CHarnessTestDlg dialog;
  dialog.Create(nullptr);
  ShowWindow(dialog.Handle(), SW_SHOW);
  SetActiveWindow(dialog.Handle());
  const INT_PTR result =
      RunModal([&] { return CHarnessTestDlg().DoModal(nullptr); },
               [](HWND window) { SendMessageW(window, WM_COMMAND, IDCANCEL, 0); });
  EXPECT_EQ(result, IDCANCEL);
  EXPECT_EQ(backstop_.Caught(), 0);
}

TEST_F(HarnessTest, ModalWindowNobodyClosesFailsAtTheTimeLimit)
{
  CModalWatchdog shortWatchdog(std::chrono::milliseconds(300));
  CHarnessTestDlg dialog;
  INT_PTR result = 0;
  EXPECT_NONFATAL_FAILURE(result = RunModal([&] { return dialog.DoModal(nullptr); }, [](HWND) {}),
                          "still pumping messages at its time limit");
  EXPECT_EQ(result, IDCANCEL);  // the watchdog's WM_CLOSE became Cancel
  EXPECT_GE(shortWatchdog.Fired(), 1);
}

TEST_F(HarnessTest, UnscriptedPromptFailsAndIsAnsweredCancel)
{
  int answer = 0;
  EXPECT_NONFATAL_FAILURE(answer = ShowMessageBox(nullptr, u"Surprise", u"Caption", kMbYesNo),
                          "unscripted message box: \"Caption\" \"Surprise\"");
  EXPECT_EQ(answer, IDCANCEL);
}

TEST_F(HarnessTest, EveryServiceIsScriptedSoNoRealDialogOrProgramAppears)
{
  FileDialogRequest request;
  request.fileName = u"disk.qvi";
  EXPECT_NONFATAL_FAILURE(ChooseFileToOpen(request),
                          "unscripted open-file dialog starting at \"disk.qvi\"");
  EXPECT_NONFATAL_FAILURE(ShellFormatDrive(nullptr, 15, kShFmtIdDefault, kShFmtOptFull),
                          "unscripted format of drive number 15");
  EXPECT_NONFATAL_FAILURE(ShowHelpTopic(nullptr, 114), "unscripted help topic 114");
  ProcessStartRequest monitor;
  monitor.commandLine = u"ctellmon.exe";
  EXPECT_NONFATAL_FAILURE(StartProcess(monitor, nullptr),
                          "unscripted start of \"\" \"ctellmon.exe\"");
  EXPECT_EQ(fileDialogs_.Calls().size(), 1u);
  EXPECT_EQ(shell_.Calls().size(), 1u);
  EXPECT_EQ(help_.Calls().size(), 1u);
  EXPECT_EQ(processes_.Requests().size(), 1u);
}

TEST_F(HarnessTest, UnusedScriptedAnswerFails)
{
  EXPECT_NONFATAL_FAILURE(
      {
        CScriptedMessageBoxes inner;
        inner.Answer(IDYES);
      },
      "1 scripted message-box answer(s) were not used");
}

TEST_F(HarnessTest, PumpUntilFailsWhenTheConditionNeverHolds)
{
  bool reached = true;
  EXPECT_NONFATAL_FAILURE(reached = PumpUntil([] { return false; }, std::chrono::milliseconds(50)),
                          "condition not reached within 50 ms");
  EXPECT_FALSE(reached);
}

}  // namespace

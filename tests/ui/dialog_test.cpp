// Dialogs from templates: message dispatch to the object, modal and modeless runs, driving
// controls by messages, prompts through the service, timers, and worker messages.
#include <windows.h>

#include <commctrl.h>

#include <thread>

#include "services/window_ref_win.h"
#include "support/test_dialogs.h"
#include "support/ui_harness.h"

namespace {

using DialogTest = UiTest;

TEST_F(DialogTest, ModelessDialogIsAttachedAndInitialisedOnce)
{
  CHarnessTestDlg dialog;
  dialog.name = L"work";
  const HWND window = dialog.Create(nullptr);
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(dialog.Handle(), window);
  EXPECT_EQ(CMessageHandler::FromHandle(window), &dialog);
  EXPECT_EQ(dialog.initCount, 1);
  EXPECT_FALSE(dialog.IsModal());
  EXPECT_EQ(ControlText(window, IDC_NAME), L"work");
  EXPECT_EQ(CWindow::WindowText(window), L"Harness Test Dialog");
}

TEST_F(DialogTest, ControlsAreDrivenAndReadBackByMessages)
{
  CHarnessTestDlg dialog;
  const HWND window = dialog.Create(nullptr);
  ASSERT_NE(window, nullptr);
  EXPECT_FALSE(IsControlEnabled(window, IDOK));  // no name yet
  SetControlText(window, IDC_NAME, L"backup");
  EXPECT_TRUE(IsControlEnabled(window, IDOK));  // EN_CHANGE reached the handler
  Click(window, IDC_REMEMBER);
  EXPECT_EQ(CheckState(window, IDC_REMEMBER), static_cast<UINT>(BST_CHECKED));

  const HWND list = GetDlgItem(window, IDC_LIST);
  ASSERT_EQ(ListRowCount(list), 3);
  EXPECT_EQ(ListColumnCount(list), 3);
  EXPECT_EQ(ListCellText(list, 1, 0), L"F:");
  EXPECT_EQ(ListCellText(list, 2, 2), L"D:\\Backup\\photos.qvi");
  SelectListRow(list, 0, true);
  SelectListRow(list, 2, true);
  EXPECT_EQ(ListSelectedCount(list), 2);
  EXPECT_EQ(dialog.selectionChanges, 2);  // WM_NOTIFY reached OnNotify

  Click(window, IDOK);
  EXPECT_EQ(dialog.name, L"backup");
  EXPECT_EQ(dialog.remember, static_cast<UINT>(BST_CHECKED));
  EXPECT_FALSE(IsWindow(window));  // a modeless dialog is destroyed when it ends
  EXPECT_EQ(dialog.Handle(), nullptr);
  EXPECT_EQ(dialog.finalCount, 1);
}

TEST_F(DialogTest, PromptGoesThroughTheServiceWithTextCaptionAndFlags)
{
  CHarnessTestDlg dialog;
  const HWND window = dialog.Create(nullptr);
  prompts_.Answer(IDYES);
  Click(window, IDC_ASK);
  ASSERT_EQ(prompts_.Prompts().size(), 1u);
  const auto& prompt = prompts_.Prompts()[0];
  EXPECT_EQ(prompt.owner, ToWindowRef(window));
  EXPECT_EQ(prompt.text, u"Do you want to proceed?");
  EXPECT_EQ(prompt.caption, u"Harness caption");
  EXPECT_EQ(prompt.flags, static_cast<uint32_t>(MB_YESNO | MB_ICONWARNING));
  EXPECT_EQ(ControlText(window, IDC_ANSWER), L"Yes");

  prompts_.Answer(IDNO);
  Click(window, IDC_ASK);
  EXPECT_EQ(dialog.lastAnswer, IDNO);
  EXPECT_EQ(ControlText(window, IDC_ANSWER), L"No");
}

TEST_F(DialogTest, ModalDialogRunsItsScriptAndReturnsTheEndValue)
{
  CHarnessTestDlg dialog;
  const INT_PTR result = RunModal([&] { return dialog.DoModal(nullptr); },
                                  [&](HWND window) {
                                    EXPECT_EQ(window, dialog.Handle());
                                    EXPECT_TRUE(dialog.IsModal());
                                    SetControlText(window, IDC_NAME, L"archive");
                                    Click(window, IDOK);
                                  });
  EXPECT_EQ(result, IDOK);
  EXPECT_EQ(dialog.name, L"archive");
  EXPECT_EQ(dialog.initCount, 1);
  EXPECT_EQ(dialog.finalCount, 1);
  EXPECT_EQ(dialog.Handle(), nullptr);
}

TEST_F(DialogTest, ModalValidationKeepsTheDialogOpenWithAnErrorPrompt)
{
  CHarnessTestDlg dialog;
  prompts_.Answer(IDOK);
  const INT_PTR result = RunModal([&] { return dialog.DoModal(nullptr); },
                                  [&](HWND window) {
                                    // OK is disabled while the name is empty; the command
                                    // still arrives from the keyboard's Enter.
                                    SendMessageW(window, WM_COMMAND, IDOK, 0);
                                    EXPECT_TRUE(IsWindow(window));
                                    EXPECT_EQ(GetFocus(), GetDlgItem(window, IDC_NAME));
                                    SendMessageW(window, WM_CLOSE, 0, 0);  // = Cancel
                                  });
  EXPECT_EQ(result, IDCANCEL);
  ASSERT_EQ(prompts_.Prompts().size(), 1u);
  EXPECT_EQ(prompts_.Prompts()[0].text, u"Please enter a name.");
  EXPECT_EQ(prompts_.Prompts()[0].flags, static_cast<uint32_t>(MB_OK | MB_ICONERROR));
  EXPECT_TRUE(dialog.name.empty());
}

TEST_F(DialogTest, TimerMessagesReachTheHandler)
{
  CHarnessTestDlg dialog;
  dialog.Create(nullptr);
  ASSERT_TRUE(dialog.SetTimer(CHarnessTestDlg::kTimerId, 20));
  EXPECT_TRUE(PumpUntil([&] { return dialog.timerTicks >= 2; }));
  dialog.KillTimer(CHarnessTestDlg::kTimerId);
}

// The worker protocol of the progress dialogs: progress sent synchronously from another
// thread (its answer carries the cancel decision back), completion posted.
TEST_F(DialogTest, WorkerProgressAndCompletionEndTheModalDialog)
{
  CHarnessTestDlg dialog;
  std::vector<LRESULT> answers;
  std::thread worker;
  const INT_PTR result = RunModal(
      [&] { return dialog.DoModal(nullptr); },
      [&](HWND window) {
        worker = std::thread([&answers, window] {
          for (WPARAM done = 1; done <= 4; ++done) {
            answers.push_back(SendMessageW(window, CHarnessTestDlg::kWorkerProgress, done, 4));
          }
          PostMessageW(window, CHarnessTestDlg::kWorkerDone, 0, 0);
        });
      });
  worker.join();
  EXPECT_EQ(result, 1);
  EXPECT_EQ(answers, std::vector<LRESULT>(4, 1));
  EXPECT_EQ(dialog.progressDone, 4u);
  EXPECT_EQ(dialog.progressTotal, 4u);
}

TEST_F(DialogTest, StopRequestIsAnsweredToTheWorkerAndFailureEndsWithThree)
{
  CHarnessTestDlg dialog;
  dialog.stopRequested = true;
  LRESULT answer = -1;
  std::thread worker;
  const INT_PTR result =
      RunModal([&] { return dialog.DoModal(nullptr); },
               [&](HWND window) {
                 worker = std::thread([&answer, window] {
                   answer = SendMessageW(window, CHarnessTestDlg::kWorkerProgress, 1, 10);
                   PostMessageW(window, CHarnessTestDlg::kWorkerDone, 0x40050008, 0);
                 });
               });
  worker.join();
  EXPECT_EQ(answer, 0);
  EXPECT_EQ(result, 3);
  EXPECT_EQ(dialog.workerStatus, 0x40050008u);
}

TEST_F(DialogTest, NotificationResultIsReturnedThroughTheDialogManager)
{
  // A handled WM_NOTIFY answers through DWLP_MSGRESULT: SendMessage sees the handler's value.
  class CAnsweringDlg : public CDialog {
   public:
    CAnsweringDlg() : CDialog(IDD_HARNESS) {}

   protected:
    bool OnNotify(NMHDR& header, LRESULT& result) override
    {
      if (header.code != 12345u) return false;
      result = 0x1234;
      return true;
    }
  } dialog;
  const HWND window = dialog.Create(nullptr);
  NMHDR header{window, 0, 12345u};
  EXPECT_EQ(SendMessageW(window, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&header)), 0x1234);
  header.code = 54321u;  // unhandled: the default answer
  EXPECT_EQ(SendMessageW(window, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&header)), 0);
}

TEST_F(DialogTest, ObjectDestroyedFirstTakesItsWindowAlong)
{
  HWND window = nullptr;
  {
    CHarnessTestDlg dialog;
    window = dialog.Create(nullptr);
    ASSERT_TRUE(IsWindow(window));
  }
  EXPECT_FALSE(IsWindow(window));
}

TEST_F(DialogTest, CenterWindowKeepsTheDialogInsideTheWorkArea)
{
  CHarnessTestDlg dialog;
  const HWND window = dialog.Create(nullptr);
  SetWindowPos(window, nullptr, -5000, -5000, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  dialog.CenterWindow();
  RECT rect{};
  GetWindowRect(window, &rect);
  RECT work{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  EXPECT_GE(rect.left, work.left);
  EXPECT_GE(rect.top, work.top);
  EXPECT_LE(rect.right, work.right);
  EXPECT_LE(rect.bottom, work.bottom);
  // Centred: equal margins (within a pixel of rounding).
  EXPECT_NEAR(rect.left - work.left, work.right - rect.right, 1);
}

}  // namespace

// The exception barrier: a handler that throws is reported (its text and the message number)
// and the message is answered as if unhandled; the window, dialog, page or sheet stays
// usable and its next messages are handled normally.
#include <windows.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/test_dialogs.h"
#include "support/ui_harness.h"
#include "ui/window.h"

namespace {

using ExceptionBarrierTest = UiTest;

constexpr UINT kThrow = WM_APP + 20;
constexpr UINT kQuestion = WM_APP + 21;

class CThrowingWindow : public CCustomWindow {
 public:
  bool throwAtFinalMessage = false;
  int finals = 0;

 protected:
  bool HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override
  {
    if (message == kThrow) {
      result = 99;  // a half-done answer must not leak out
      if (wParam == 0) throw std::runtime_error("the disk list could not be read");
      throw 42;
    }
    if (message == kQuestion) {
      result = static_cast<LRESULT>(wParam + static_cast<WPARAM>(lParam));
      return true;
    }
    return CCustomWindow::HandleMessage(message, wParam, lParam, result);
  }
  void OnFinalMessage() override
  {
    ++finals;
    if (throwAtFinalMessage) throw std::logic_error("final message failed");
  }
};

TEST_F(ExceptionBarrierTest, WindowHandlerThatThrowsIsReportedAndTheWindowStaysUsable)
{
  CThrowingWindow window;
  const HWND handle = window.Create(nullptr, RECT{0, 0, 100, 100}, L"", WS_OVERLAPPEDWINDOW);
  ASSERT_NE(handle, nullptr);
  EXPECT_EQ(window.Send(kThrow), 0);  // DefWindowProc's answer, not the handler's 99
  std::vector<CRecordedHandlerFailures::Failure> failures = handlerFailures_.Take();
  ASSERT_EQ(failures.size(), 1u);
  EXPECT_EQ(failures[0].window, handle);
  EXPECT_EQ(failures[0].message, kThrow);
  EXPECT_EQ(failures[0].what, "the disk list could not be read");

  EXPECT_EQ(window.Send(kQuestion, 40, 2), 42);
  EXPECT_EQ(window.Send(kThrow, 1), 0);  // an exception of any type
  failures = handlerFailures_.Take();
  ASSERT_EQ(failures.size(), 1u);
  EXPECT_EQ(failures[0].what, "an exception of unknown type");
  EXPECT_EQ(window.Send(kQuestion, 1, 2), 3);
}

TEST_F(ExceptionBarrierTest, FinalMessageThatThrowsStillDetachesTheObject)
{
  CThrowingWindow window;
  const HWND handle = window.Create(nullptr, RECT{0, 0, 100, 100}, L"", WS_OVERLAPPEDWINDOW);
  window.throwAtFinalMessage = true;
  EXPECT_TRUE(window.DestroyWindow());
  EXPECT_EQ(window.finals, 1);
  EXPECT_FALSE(IsWindow(handle));
  EXPECT_EQ(window.Handle(), nullptr);
  const std::vector<CRecordedHandlerFailures::Failure> failures = handlerFailures_.Take();
  ASSERT_EQ(failures.size(), 1u);
  EXPECT_EQ(failures[0].message, static_cast<UINT>(WM_NCDESTROY));
  EXPECT_EQ(failures[0].what, "final message failed");
}

// The test dialog with a button whose handler throws and an initialisation that may throw.
class CThrowingDlg : public CHarnessTestDlg {
 public:
  bool throwAtInit = false;

 protected:
  bool OnInitDialog(HWND defaultFocus) override
  {
    CHarnessTestDlg::OnInitDialog(defaultFocus);
    if (throwAtInit) throw std::runtime_error("no drive letters");
    return true;
  }
  bool OnCommand(UINT id, UINT code, HWND control) override
  {
    if (id == IDC_ASK) throw std::runtime_error("the question failed");
    return CHarnessTestDlg::OnCommand(id, code, control);
  }
};

TEST_F(ExceptionBarrierTest, DialogHandlerThatThrowsIsReportedAndTheDialogStaysUsable)
{
  CThrowingDlg dialog;
  const HWND window = dialog.Create(nullptr);
  ASSERT_NE(window, nullptr);
  Click(window, IDC_ASK);
  const std::vector<CRecordedHandlerFailures::Failure> failures = handlerFailures_.Take();
  ASSERT_EQ(failures.size(), 1u);
  EXPECT_EQ(failures[0].window, window);
  EXPECT_EQ(failures[0].message, static_cast<UINT>(WM_COMMAND));
  EXPECT_EQ(failures[0].what, "the question failed");

  SetControlText(window, IDC_NAME, L"after");  // EN_CHANGE is handled as before
  EXPECT_TRUE(IsControlEnabled(window, IDOK));
  Click(window, IDOK);
  EXPECT_EQ(dialog.name, L"after");
  EXPECT_FALSE(IsWindow(window));
}

TEST_F(ExceptionBarrierTest, ModalDialogWhoseInitialisationThrowsStillRuns)
{
  CThrowingDlg dialog;
  dialog.throwAtInit = true;
  const INT_PTR result = RunModal([&] { return dialog.DoModal(nullptr); },
                                  [&](HWND window) {
                                    SetControlText(window, IDC_NAME, L"modal");
                                    Click(window, IDOK);
                                  });
  EXPECT_EQ(result, IDOK);
  EXPECT_EQ(dialog.name, L"modal");
  const std::vector<CRecordedHandlerFailures::Failure> failures = handlerFailures_.Take();
  ASSERT_EQ(failures.size(), 1u);
  EXPECT_EQ(failures[0].message, static_cast<UINT>(WM_INITDIALOG));
  EXPECT_EQ(failures[0].what, "no drive letters");
}

// A page whose activation throws the first time.
class CThrowingPage : public CLoggingPage {
 public:
  using CLoggingPage::CLoggingPage;
  int throwsLeft = 1;

 protected:
  int OnSetActive() override
  {
    const int answer = CLoggingPage::OnSetActive();
    if (throwsLeft > 0) {
      --throwsLeft;
      throw std::runtime_error("page activation failed");
    }
    return answer;
  }
};

// A sheet whose initialisation and one registered message throw.
class CThrowingSheet : public CPropertySheet {
 public:
  CThrowingSheet() : CPropertySheet(IDS_SHEET, PSH_NOAPPLYNOW) {}
  const UINT failing = RegisterWindowMessageW(L"Cryptelle.Test.SheetFailing");
  const UINT question = RegisterWindowMessageW(L"Cryptelle.Test.SheetQuestion");

 protected:
  void OnInitialized() override { throw std::runtime_error("sheet set-up failed"); }
  bool HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override
  {
    if (message == failing) throw std::runtime_error("sheet handler failed");
    if (message == question) {
      result = 0x5EE7;
      return true;
    }
    return CPropertySheet::HandleMessage(message, wParam, lParam, result);
  }
};

bool WasReported(const std::vector<CRecordedHandlerFailures::Failure>& failures, UINT message,
                 const std::string& what)
{
  return std::any_of(failures.begin(), failures.end(), [&](const auto& failure) {
    return failure.message == message && failure.what == what;
  });
}

TEST_F(ExceptionBarrierTest, PageAndSheetHandlersThatThrowAreReportedAndTheSheetStaysUsable)
{
  std::vector<std::string> log;
  CLoggingPage first(IDD_PAGE_FIRST, log);
  CThrowingPage second(IDD_PAGE_SECOND, log);
  CThrowingSheet sheet;
  sheet.AddPage(first);
  sheet.AddPage(second);
  CMessageLoop loop;
  const HWND window = sheet.Create(nullptr);
  ASSERT_NE(window, nullptr);
  std::vector<CRecordedHandlerFailures::Failure> failures = handlerFailures_.Take();
  ASSERT_EQ(failures.size(), 1u);
  EXPECT_EQ(failures[0].window, window);
  EXPECT_EQ(failures[0].message, static_cast<UINT>(WM_INITDIALOG));
  EXPECT_EQ(failures[0].what, "sheet set-up failed");

  // The page's activation threw: answered as unhandled (accept), so the page is shown.
  ASSERT_TRUE(sheet.SetActivePage(1));
  EXPECT_EQ(sheet.ActivePageIndex(), 1);
  failures = handlerFailures_.Take();
  ASSERT_EQ(failures.size(), 1u);
  EXPECT_EQ(failures[0].window, second.Handle());
  EXPECT_EQ(failures[0].message, static_cast<UINT>(WM_NOTIFY));
  EXPECT_EQ(failures[0].what, "page activation failed");

  EXPECT_EQ(SendMessageW(window, sheet.failing, 0, 0), 0);
  failures = handlerFailures_.Take();
  EXPECT_TRUE(WasReported(failures, sheet.failing, "sheet handler failed"));
  EXPECT_EQ(SendMessageW(window, sheet.question, 0, 0), 0x5EE7);

  // The page is handled normally again: it is left and activated without a report.
  ASSERT_TRUE(sheet.SetActivePage(0));
  ASSERT_TRUE(sheet.SetActivePage(1));
  EXPECT_EQ(std::count(log.begin(), log.end(), "active 211"), 2);
  sheet.PressButton(PSBTN_OK);
  EXPECT_TRUE(PumpUntil([&] { return sheet.Handle() == nullptr; }));
  EXPECT_TRUE(handlerFailures_.Take().empty());
}

}  // namespace

// Property sheets: a plain tabbed sheet (apply, invalid answers, cancel) and a Wizard97
// wizard (buttons per page, Next with veto and jump, Back, Finish), modal and modeless.
#include <algorithm>
#include <string>
#include <vector>

#include "support/test_dialogs.h"
#include "support/ui_harness.h"
#include "tools/screenshot/capture.h"

namespace {

// The wizard buttons' control ids inside the sheet.
constexpr int kBackButton = 0x3023;
constexpr int kNextButton = 0x3024;
constexpr int kFinishButton = 0x3025;

class PropertySheetTest : public UiTest {
 protected:
  std::vector<std::string> log_;
  CLoggingPage first_{IDD_PAGE_FIRST, log_};
  CLoggingPage second_{IDD_PAGE_SECOND, log_};
  CLoggingPage third_{IDD_PAGE_THIRD, log_};

  void AddPages(CPropertySheet& sheet)
  {
    sheet.AddPage(first_);
    sheet.AddPage(second_);
    sheet.AddPage(third_);
  }

  void MakeWizard()
  {
    for (CLoggingPage* page : {&first_, &second_, &third_}) page->isWizard = true;
    first_.SetExterior();
    first_.wizardButtons = PSWIZB_NEXT;
    second_.SetHeader(IDS_HEADER_TITLE, IDS_HEADER_SUBTITLE);
    second_.SetHasHelp(true);
    third_.SetExterior();
    third_.wizardButtons = PSWIZB_FINISH;
  }

  bool Logged(const std::string& entry) const
  {
    return std::find(log_.begin(), log_.end(), entry) != log_.end();
  }
};

TEST_F(PropertySheetTest, PlainModelessSheetSwitchesPagesAndAppliesVisitedOnes)
{
  first_.SetTitle(IDS_PAGE_FIRST);
  second_.SetTitle(IDS_PAGE_SECOND);
  CPropertySheet sheet(IDS_SHEET, PSH_NOAPPLYNOW);
  AddPages(sheet);
  CMessageLoop loop;
  const HWND window = sheet.Create(nullptr);  // joins the loop by itself
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(CMessageHandler::FromHandle(window), &sheet);
  EXPECT_EQ(CWindow::WindowText(window).find(L"Test Sheet"), 0u);
  EXPECT_EQ(sheet.ActivePageIndex(), 0);
  EXPECT_EQ(first_.Handle(), sheet.ActivePageWindow());

  SetControlText(first_.Handle(), IDC_PAGE_EDIT, L"one");
  ASSERT_TRUE(sheet.SetActivePage(1));
  EXPECT_EQ(sheet.ActivePageIndex(), 1);
  SetControlText(second_.Handle(), IDC_PAGE_EDIT, L"two");

  sheet.PressButton(PSBTN_OK);
  // The loop's filter saw the sheet ended and destroyed it.
  EXPECT_TRUE(PumpUntil([&] { return sheet.Handle() == nullptr; }));
  EXPECT_EQ(first_.applied, L"one");
  EXPECT_EQ(second_.applied, L"two");
  EXPECT_FALSE(Logged("apply 212"));  // never created, never applied
  EXPECT_TRUE(Logged("active 210"));
  EXPECT_TRUE(Logged("leave 210"));
  EXPECT_TRUE(Logged("active 211"));
}

TEST_F(PropertySheetTest, InvalidApplyKeepsTheModalSheetOpenOnThatPage)
{
  CPropertySheet sheet(IDS_SHEET, PSH_NOAPPLYNOW);
  AddPages(sheet);
  second_.applyAnswer = PSNRET_INVALID;
  const INT_PTR result = RunModal([&] { return sheet.DoModal(nullptr); },
                                  [&](HWND window) {
                                    sheet.SetActivePage(1);
                                    sheet.SetActivePage(0);
                                    SendMessageW(window, PSM_PRESSBUTTON, PSBTN_OK, 0);
                                    EXPECT_TRUE(IsWindow(window));
                                    EXPECT_EQ(sheet.ActivePageIndex(), 1);
                                    second_.applyAnswer = PSNRET_NOERROR;
                                    SendMessageW(window, PSM_PRESSBUTTON, PSBTN_OK, 0);
                                  });
  EXPECT_GE(result, 1);  // changes saved
  EXPECT_EQ(std::count(log_.begin(), log_.end(), "apply 211"), 2);
}

TEST_F(PropertySheetTest, CancelAsksThePagesAndCanBeRefused)
{
  CPropertySheet sheet(IDS_SHEET, PSH_NOAPPLYNOW);
  AddPages(sheet);
  first_.allowCancel = false;
  const INT_PTR result = RunModal([&] { return sheet.DoModal(nullptr); },
                                  [&](HWND window) {
                                    SendMessageW(window, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
                                    EXPECT_TRUE(IsWindow(window));
                                    first_.allowCancel = true;
                                    SendMessageW(window, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
                                  });
  EXPECT_EQ(result, 0);  // nothing saved
  EXPECT_EQ(std::count(log_.begin(), log_.end(), "querycancel 210"), 2);
  EXPECT_TRUE(Logged("reset 210"));
  EXPECT_FALSE(Logged("apply 210"));
}

TEST_F(PropertySheetTest, Wizard97NavigatesWithButtonsPerPageAndFinishes)
{
  MakeWizard();
  CPropertySheet sheet(IDS_WIZARD, PSH_WIZARD97 | PSH_HASHELP | PSH_NOAPPLYNOW);
  AddPages(sheet);
  std::vector<std::string> seen;
  const auto buttons = [](HWND window) {
    std::string state;
    for (const int id : {kBackButton, kNextButton, kFinishButton}) {
      const HWND button = GetDlgItem(window, id);
      state += (IsWindowVisible(button) && IsWindowEnabled(button)) ? "1" : "0";
    }
    return state;
  };
  const INT_PTR result = RunModal([&] { return sheet.DoModal(nullptr); },
                                  [&](HWND window) {
                                    PumpMessages();  // the buttons are set by a posted message
                                    EXPECT_EQ(sheet.ActivePageIndex(), 0);
                                    seen.push_back(buttons(window));
                                    Click(window, kNextButton);
                                    PumpMessages();
                                    EXPECT_EQ(sheet.ActivePageIndex(), 1);
                                    seen.push_back(buttons(window));
                                    second_.nextAnswer = -1;  // veto: stay
                                    Click(window, kNextButton);
                                    PumpMessages();
                                    EXPECT_EQ(sheet.ActivePageIndex(), 1);
                                    Click(window, kBackButton);
                                    PumpMessages();
                                    EXPECT_EQ(sheet.ActivePageIndex(), 0);
                                    Click(window, kNextButton);
                                    second_.nextAnswer = 0;
                                    Click(window, kNextButton);
                                    PumpMessages();
                                    EXPECT_EQ(sheet.ActivePageIndex(), 2);
                                    seen.push_back(buttons(window));
                                    Click(window, kFinishButton);
                                  });
  EXPECT_EQ(result, 1);
  // Welcome: Next only; interior: Back and Next; last: Finish only.
  EXPECT_EQ(seen, (std::vector<std::string>{"010", "110", "001"}));
  EXPECT_TRUE(Logged("finish 212"));
  EXPECT_TRUE(Logged("back 211"));
  EXPECT_EQ(std::count(log_.begin(), log_.end(), "next 211"), 2);
}

TEST_F(PropertySheetTest, WizardNextCanJumpToAPageByTemplateAndFinishCanBeRefused)
{
  MakeWizard();
  first_.nextAnswer = IDD_PAGE_THIRD;
  third_.allowFinish = false;
  CPropertySheet sheet(IDS_WIZARD, PSH_WIZARD97 | PSH_NOAPPLYNOW);
  AddPages(sheet);
  const INT_PTR result = RunModal([&] { return sheet.DoModal(nullptr); },
                                  [&](HWND window) {
                                    sheet.PressButton(PSBTN_NEXT);
                                    PumpMessages();
                                    EXPECT_EQ(sheet.ActivePageIndex(), 2);
                                    EXPECT_FALSE(Logged("active 211"));
                                    sheet.PressButton(PSBTN_FINISH);
                                    PumpMessages();
                                    EXPECT_TRUE(IsWindow(window));
                                    sheet.PressButton(PSBTN_CANCEL);
                                  });
  EXPECT_EQ(result, 0);
  EXPECT_TRUE(Logged("finish 212"));
}

TEST_F(PropertySheetTest, StartPageAndHelpReachTheActivePage)
{
  MakeWizard();
  CPropertySheet sheet(IDS_WIZARD, PSH_WIZARD97 | PSH_HASHELP | PSH_NOAPPLYNOW);
  AddPages(sheet);
  sheet.SetStartPage(1);
  const INT_PTR result = RunModal([&] { return sheet.DoModal(nullptr); },
                                  [&](HWND window) {
                                    EXPECT_EQ(sheet.ActivePageIndex(), 1);
                                    SendMessageW(window, WM_COMMAND, IDHELP, 0);
                                    PumpMessages();
                                    SendMessageW(window, WM_CLOSE, 0, 0);
                                  });
  EXPECT_EQ(result, 0);
  EXPECT_TRUE(Logged("help 211"));
  EXPECT_FALSE(Logged("active 210"));
}

// A sheet that answers a registered message itself, as the wizard answers the Wizard97
// font messages, and counts its size messages.
class CAnsweringSheet : public CPropertySheet {
 public:
  CAnsweringSheet() : CPropertySheet(IDS_SHEET, PSH_NOAPPLYNOW) {}
  const UINT question = RegisterWindowMessageW(L"Cryptelle.Test.SheetQuestion");
  const UINT currentPage = RegisterWindowMessageW(L"Cryptelle.Test.SheetCurrentPage");
  int initialized = 0;
  int sizes = 0;
  int finals = 0;

 protected:
  void OnInitialized() override { ++initialized; }
  bool HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override
  {
    if (message == WM_SIZE) ++sizes;
    if (message == question) {
      result = 0x8CBAF11E;
      return true;
    }
    if (message == currentPage) {  // answered by the sheet's own processing
      result = DefaultProcessing(PSM_GETCURRENTPAGEHWND, 0, 0);
      return true;
    }
    return CPropertySheet::HandleMessage(message, wParam, lParam, result);
  }
  void OnFinalMessage() override { ++finals; }
};

TEST_F(PropertySheetTest, SheetWindowMessagesReachTheSheetObject)
{
  CAnsweringSheet sheet;
  AddPages(sheet);
  const INT_PTR result = RunModal([&] { return sheet.DoModal(nullptr); },
                                  [&](HWND window) {
                                    EXPECT_EQ(CMessageHandler::FromHandle(window), &sheet);
                                    EXPECT_EQ(SendMessageW(window, sheet.question, 0, 0),
                                              static_cast<LRESULT>(0x8CBAF11E));
                                    EXPECT_EQ(SendMessageW(window, sheet.currentPage, 0, 0),
                                              reinterpret_cast<LRESULT>(first_.Handle()));
                                    SendMessageW(window, WM_CLOSE, 0, 0);
                                  });
  EXPECT_EQ(result, 0);
  EXPECT_EQ(sheet.initialized, 1);
  EXPECT_GE(sheet.sizes, 1);  // the first layout, where the wizard centres itself
  EXPECT_EQ(sheet.finals, 1);
  EXPECT_EQ(sheet.Handle(), nullptr);
}

TEST_F(PropertySheetTest, ModifiedPageEnablesTheApplyButton)
{
  constexpr int kApplyButton = 0x3021;
  CPropertySheet sheet(IDS_SHEET, 0);
  AddPages(sheet);
  CMessageLoop loop;
  const HWND window = sheet.Create(nullptr);
  ASSERT_NE(window, nullptr);
  EXPECT_FALSE(IsControlEnabled(window, kApplyButton));
  first_.SetModified(true);
  EXPECT_TRUE(IsControlEnabled(window, kApplyButton));
  first_.SetModified(false);
  EXPECT_FALSE(IsControlEnabled(window, kApplyButton));
}

// How many pixels of the sheet's picture have the given colour.
size_t PixelsOfColour(HWND window, uint8_t red, uint8_t green, uint8_t blue)
{
  RgbImage image;
  if (!CaptureWindow(window, image)) return 0;
  size_t count = 0;
  for (size_t at = 0; at + 2 < image.pixels.size(); at += 3) {
    if (image.pixels[at] == red && image.pixels[at + 1] == green && image.pixels[at + 2] == blue) {
      ++count;
    }
  }
  return count;
}

TEST_F(PropertySheetTest, WizardShowsTheWatermarkOnExteriorAndTheHeaderOnInteriorPages)
{
  MakeWizard();
  for (const bool withBitmaps : {false, true}) {
    CPropertySheet sheet(IDS_WIZARD, PSH_WIZARD97 | PSH_NOAPPLYNOW);
    AddPages(sheet);
    if (withBitmaps) sheet.SetWizardBitmaps(IDB_WATERMARK, IDB_HEADER);
    CMessageLoop loop;
    const HWND window = sheet.Create(nullptr);
    ASSERT_NE(window, nullptr);
    ShowWindow(window, SW_SHOW);
    PumpMessages();
    // The bitmaps' own colours (test_resources.rc).
    EXPECT_EQ(PixelsOfColour(window, 0x20, 0xA0, 0x60) > 0, withBitmaps);
    EXPECT_EQ(PixelsOfColour(window, 0xA0, 0x20, 0x60), 0u);
    ASSERT_TRUE(sheet.SetActivePage(1));
    PumpMessages();
    EXPECT_EQ(PixelsOfColour(window, 0xA0, 0x20, 0x60) > 0, withBitmaps);
    EXPECT_EQ(PixelsOfColour(window, 0x20, 0xA0, 0x60), 0u);
    sheet.PressButton(PSBTN_CANCEL);
    EXPECT_TRUE(PumpUntil([&] { return sheet.Handle() == nullptr; }));
  }
}

// A sheet that counts the messages its keyboard filter sees, in a counter that outlives it.
class CCountingFilterSheet : public CPropertySheet {
 public:
  explicit CCountingFilterSheet(int& filtered)
      : CPropertySheet(IDS_SHEET, PSH_NOAPPLYNOW), filtered_(filtered)
  {
  }
  static constexpr UINT kProbe = WM_APP + 9;
  bool PreTranslateMessage(MSG& message) override
  {
    if (message.message == kProbe) ++filtered_;
    return CPropertySheet::PreTranslateMessage(message);
  }

 private:
  int& filtered_;
};

TEST_F(PropertySheetTest, ModelessSheetLeavesTheLoopWhenItEnds)
{
  const COwnedWindow probe(CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 10, 10, nullptr,
                                           nullptr, nullptr, nullptr));
  CMessageLoop loop;
  int filtered = 0;
  CCountingFilterSheet sheet(filtered);
  AddPages(sheet);
  ASSERT_NE(sheet.Create(nullptr), nullptr);
  PostMessageW(probe.Get(), CCountingFilterSheet::kProbe, 0, 0);
  PumpMessages();
  EXPECT_EQ(filtered, 1);

  sheet.PressButton(PSBTN_CANCEL);
  EXPECT_TRUE(PumpUntil([&] { return sheet.Handle() == nullptr; }));
  const int seenWhileOpen = filtered;
  PostMessageW(probe.Get(), CCountingFilterSheet::kProbe, 0, 0);
  PumpMessages();
  EXPECT_EQ(filtered, seenWhileOpen);
}

}  // namespace

// The new image wizard: a Wizard97 sheet of seven pages (Welcome, Capacity, Encryption,
// Password, Location, Progress, Completion) that collects a NewImageRequest, has the progress
// page create the image, shows a summary and tells its owner whether to mount the new image.
//
// Each page is a class nested here and defined in its own files (wizard/*_page_win.h); it
// holds the wizard and reaches the request and the sheet through it.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "dialogs/drive_facts_win.h"
#include "ui/handles.h"
#include "ui/property_sheet.h"
#include "wizard/new_image_request.h"

class CNewVirtualDiskImageWizard final : public CPropertySheet {
 public:
  class CWelcomePage;
  class CCapacityPage;
  class CEncryptionPage;
  class CPasswordPage;
  class CLocationPage;
  class CProgressPage;
  class CCompletionPage;
  // The base of the interior pages 1 to 4: header texts, Back and Next, help by template.
  class CInteriorPage;

  // The pages' places in the navigation order.
  static constexpr int kProgressPageIndex = 5;
  static constexpr int kSummaryPageIndex = 6;

  // Builds the pages and adds them in navigation order. Run it with DoModal(owner): the
  // result is 1 when the user pressed Finish. The creation's temporary mount takes its free
  // drive letters from `driveFacts`.
  explicit CNewVirtualDiskImageWizard(DriveFactsSource driveFacts = GatherDriveFacts);
  ~CNewVirtualDiskImageWizard() override;

  // After the run: the completion page's "Mount virtual disk image" choice, and the path of
  // the new image.
  bool MountRequested() const { return request_.mountAfter != 0; }
  const std::u16string& ImagePath() const { return request_.path; }

  // For the pages.
  NewImageRequest& Request() { return request_; }
  // Moves the sheet to the summary page; before the sheet window exists, makes it the
  // start page instead.
  void JumpToSummary();
  // Closes the sheet after a failed creation (which has already been reported).
  void CloseAfterFailure();

  // The fonts of the Wizard97 page framework: the exterior pages' bold title font and the
  // symbol font whose letter "i" draws a bullet mark. The sheet answers the framework's two
  // registered messages with them; pages ask the sheet through these helpers.
  static HFONT ExteriorTitleFontOf(HWND sheet);
  static HFONT BulletFontOf(HWND sheet);

 protected:
  void OnInitialized() override;
  bool HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;

 private:
  NewImageRequest request_;
  std::vector<std::unique_ptr<CPropertyPage>> pages_;
  // The sheet centres itself on its owner at each size message of its first layout, until it
  // is first shown (the last one sees its final size): once per run.
  bool shown_ = false;
  CFont titleFont_;
  CFont bulletFont_;
};

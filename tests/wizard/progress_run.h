// The new image wizard opened modeless on its progress page with a chosen request, for the
// progress page's tests: the page starts its real worker as the sheet comes up.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "app/drive_letters.h"
#include "app/size_units.h"
#include "crypto/cipher.h"
#include "dialogs/drive_facts_win.h"
#include "support/temp_dir.h"
#include "support/ui_harness.h"
#include "ui/message_loop.h"
#include "wizard/creation_worker.h"
#include "wizard/new_image_wizard_win.h"

class ProgressPageTest : public UiTest {
 protected:
  // An 8 MiB dynamic AES-256 image in the test's directory; the temporary mount's free
  // letters come from `driveFacts`.
  explicit ProgressPageTest(DriveFactsSource driveFacts = GatherDriveFacts) : wizard_(driveFacts)
  {
    NewImageRequest& request = wizard_.Request();
    request.capacity = 8 * kMegabyte;
    request.algorithm = kCipherAes;
    request.keyBits = 256;
    request.path = dir_.File(u"new.qvi");
    request.password = u"pass word";
  }

  // Opens the wizard on the progress page, which starts the worker; the page's window.
  HWND Open()
  {
    wizard_.SetStartPage(CNewVirtualDiskImageWizard::kProgressPageIndex);
    sheet_ = wizard_.Create(nullptr);
    EXPECT_NE(sheet_, nullptr);
    page_ = wizard_.ActivePageWindow();
    return page_;
  }

  // Waits until the wizard has closed itself.
  bool WaitUntilClosed(std::chrono::milliseconds limit = std::chrono::seconds(15))
  {
    return PumpUntil([&] { return wizard_.Handle() == nullptr; }, limit);
  }
  bool WaitForSummary(std::chrono::milliseconds limit = std::chrono::seconds(15))
  {
    return PumpUntil(
        [&] {
          return wizard_.Handle() != nullptr &&
                 wizard_.ActivePageIndex() == CNewVirtualDiskImageWizard::kSummaryPageIndex;
        },
        limit);
  }

  // The mount point the worker picks: the highest letter free now.
  static std::u16string ExpectedMountPoint()
  {
    return TemporaryMountPoint(FreeDriveLetters(GatherDriveFacts()));
  }

  const std::u16string& Path() { return wizard_.Request().path; }

  TempDir dir_;
  CMessageLoop loop_;
  CNewVirtualDiskImageWizard wizard_;
  HWND sheet_ = nullptr;
  HWND page_ = nullptr;
};

// The "Clear virtual disk image" command: the dialog asks for the image and its password;
// the image is opened, the user is warned when the job will be long, and the progress
// dialog clears the image on a worker thread.
#pragma once

#include <string>

#include "app/prompt.h"
#include "image/image.h"
#include "services/window_ref.h"
#include "system/status.h"

// What the dialog hands over when it closes with OK. The password is overwritten when the
// answers are destroyed.
struct ClearImageAnswers {
  std::u16string path;
  std::u16string password;

  ClearImageAnswers() = default;
  ~ClearImageAnswers();
  ClearImageAnswers(const ClearImageAnswers&) = delete;
  ClearImageAnswers& operator=(const ClearImageAnswers&) = delete;
};

// The clear dialog as the command sees it.
class CClearImageInput {
 public:
  // Shows the dialog owned by `owner`; true when it closed with OK, its fields then in
  // `answers`.
  virtual bool Ask(WindowRef owner, ClearImageAnswers& answers) = 0;

 protected:
  ~CClearImageInput() = default;
};

// The progress dialog as the command sees it.
class CClearProgressRun {
 public:
  // Clears the open `image` (ImgClear on a worker thread) while the progress shows, owned by
  // `owner`; returns the final status: the worker's, or why the worker could not start.
  virtual StatusCode Run(WindowRef owner, ImageHandle* image) = 0;

 protected:
  ~CClearProgressRun() = default;
};

// The command: asks `input`; after OK opens the image with the password's key, asks "may
// take long time" before clearing a fixed-size image of 256 MB or more ("No" cancels), has
// `progress` clear it, and closes it whenever it was opened. Then, owned by `owner`:
// "Virtual disk image has been cleared." on success, nothing when cancelled (at the question
// or in the progress dialog), otherwise the failure's message under "Error", shown again
// while the user chooses Retry (the steps are not repeated).
void ClearImageCommand(WindowRef owner, CClearImageInput& input, CClearProgressRun& progress);

// The question before a long clear: "Clearing virtual disk image may take long time to
// complete..." under "Warning", Yes and No.
Prompt LongClearPrompt();

// The completion: "Virtual disk image has been cleared." under "Operation Complete".
Prompt ImageClearedPrompt();

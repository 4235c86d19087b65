// The help opener: shows the help file "ctell.chm" that lies beside the program, at its
// table of contents or at a topic chosen by context number. Replaceable, so that tests
// open no help viewer.
#pragma once

#include <cstdint>
#include <string>

#include "services/window_ref.h"
#include "system/status.h"

class CHelpService {
 public:
  // Opens the help at its table of contents (the Help Topics command).
  virtual StatusCode ShowContents(WindowRef owner) = 0;
  // Opens the help at the topic with context number `context` (a page's help button).
  virtual StatusCode ShowTopic(WindowRef owner, uint32_t context) = 0;

 protected:
  virtual ~CHelpService() = default;
};

// Each calls the current service.
StatusCode ShowHelpContents(WindowRef owner);
StatusCode ShowHelpTopic(WindowRef owner, uint32_t context);

// Makes `service` current and returns the previous one; null restores the system's viewer.
CHelpService* ReplaceHelpService(CHelpService* service);

// The help file's path: the program's path up to and including its last path separator,
// followed by "ctell.chm".
StatusCode HelpFilePath(std::u16string* path);

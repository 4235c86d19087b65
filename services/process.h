// Starting another program (the on-screen keyboard, the monitor). Replaceable, so that tests
// start nothing.
#pragma once

#include <optional>
#include <string>

#include "system/status.h"

struct ScreenPosition {
  int x = 0;
  int y = 0;
};

struct ProcessStartRequest {
  // The program's path; environment references such as %SystemRoot% are expanded. Empty
  // when the command line's first word names the program, which the system's search order
  // then finds (the running program's own folder first).
  std::u16string program;
  // The whole command line the program receives; empty for none.
  std::u16string commandLine;
  // Where the program's first window is to appear, in screen coordinates.
  std::optional<ScreenPosition> position;
  // The desktop named in the start-up information; none means the caller's desktop.
  std::optional<std::u16string> desktop;
};

class CProcessService {
 public:
  // Starts the program without handing it any handles and does not wait for it. On
  // failure `failureText` (when not null) receives the system's description of the error.
  virtual StatusCode Start(const ProcessStartRequest& request, std::u16string* failureText) = 0;

 protected:
  virtual ~CProcessService() = default;
};

// Starts a program through the current service.
StatusCode StartProcess(const ProcessStartRequest& request, std::u16string* failureText);

// Makes `service` current and returns the previous one; null restores the system's.
CProcessService* ReplaceProcessService(CProcessService* service);

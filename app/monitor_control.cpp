#include "app/monitor_control.h"

#include <string>

#include "res/resource.h"
#include "services/process.h"
#include "settings/autostart.h"
#include "settings/options.h"

Prompt MonitorStartFailure(std::u16string_view systemText)
{
  return MakePrompt(IDS_CANNOT_START_MONITOR, IDS_ERROR_CAPTION, kPromptError, {systemText});
}

void StartMonitor(WindowRef owner)
{
  uint32_t enabled = 0;
  ReadEnableMonitor(&enabled);
  if (enabled == 0) return;

  ProcessStartRequest request;
  request.commandLine = kMonitorProgramName;
  request.desktop = u"";
  std::u16string failureText;
  if (IsFailure(StartProcess(request, &failureText))) {
    ShowPrompt(owner, MonitorStartFailure(failureText));
  }
}

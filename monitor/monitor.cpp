#include "monitor/monitor.h"

#include "app/dismount_flows.h"
#include "res/format_text.h"
#include "res/resource.h"
#include "res/texts.h"
#include "services/process.h"
#include "settings/hot_key.h"
#include "system/module_path.h"

std::u16string MonitorTipText(const std::vector<MountedDisk>& disks)
{
  if (disks.empty()) return LoadText(IDS_MONITOR_NO_DISKS);
  std::u16string mountPoints;
  for (const MountedDisk& disk : disks) {
    if (!mountPoints.empty()) mountPoints += u", ";
    mountPoints += disk.mountPoint;
  }
  return FormatText(LoadText(IDS_MONITOR_MOUNTED_DISKS), {mountPoints});
}

Prompt ProgramStartFailure(std::u16string_view systemText)
{
  return MakePrompt(IDS_CANNOT_START_PROGRAM, IDS_ERROR_CAPTION, kPromptError, {systemText});
}

void CMonitor::Start()
{
  MonitorOptions options;
  ReadMonitorOptions(&options);
  ApplySettings(options);
  if (!exited_) OnDiskCheck();
}

void CMonitor::OnHotKey()
{
  if (exited_) return;
  const StatusCode status = CurrentDeviceHost().DismountAll(1);
  system_.BroadcastRefresh();
  if (IsFailure(status) && status != kDevNotRunning) {
    system_.ShowTrayMessage(FormatText(LoadText(IDS_MONITOR_DISMOUNT_FAILED), {status}));
    return;
  }
  Exit();
}

void CMonitor::OnSettingsChanged()
{
  if (exited_) return;
  MonitorOptions options;
  ReadMonitorOptions(&options);
  ApplySettings(options);
}

void CMonitor::OnDiskCheck()
{
  if (exited_) return;
  std::vector<MountedDisk> disks;
  const StatusCode status = CurrentDeviceHost().EnumerateDisks(&disks);
  // A device host that is not running has nothing mounted; any other failure tells nothing.
  const bool known = !IsFailure(status) || status == kDevNotRunning;
  if (!known) return;

  std::u16string tip = MonitorTipText(disks);
  if (tip != tip_) {
    tip_ = std::move(tip);
    system_.SetTrayTip(tip_);
  }
  emptyChecks_ = disks.empty() ? emptyChecks_ + 1 : 0;
  if (unloadAutomatically_ && emptyChecks_ >= kEmptyChecksBeforeUnload) Exit();
}

void CMonitor::OnCommand(MonitorCommand command)
{
  if (exited_) return;
  switch (command) {
    case MonitorCommand::kOpenProgram: OpenProgram(); break;
    case MonitorCommand::kDismountAll:
      DismountAllFlow(system_.Owner(), 0);
      system_.BroadcastRefresh();
      OnDiskCheck();
      break;
    case MonitorCommand::kExit: Exit(); break;
  }
}

void CMonitor::ApplySettings(const MonitorOptions& options)
{
  if (options.enableMonitor == 0) {
    Exit();
    return;
  }
  unloadAutomatically_ = options.unloadAutomatically != 0;
  HoldHotKey(options.emergencyHotKey);
}

void CMonitor::HoldHotKey(uint32_t hotKey)
{
  if (hotKey != hotKey_) ReleaseHotKey();
  hotKey_ = hotKey;
  if (hotKeyHeld_ || hotKey == 0) return;
  hotKeyHeld_ = system_.RegisterHotKey(HotKeyModifiers(hotKey), HotKeyVirtualKey(hotKey));
  if (!hotKeyHeld_ && reportedTakenHotKey_ != hotKey) {
    reportedTakenHotKey_ = hotKey;
    system_.ShowTrayMessage(LoadText(IDS_MONITOR_HOT_KEY_TAKEN));
  }
}

void CMonitor::ReleaseHotKey()
{
  if (!hotKeyHeld_) return;
  system_.UnregisterHotKey();
  hotKeyHeld_ = false;
}

void CMonitor::OpenProgram()
{
  ProcessStartRequest request;
  std::u16string failureText;
  StatusCode status = SysGetPathBesideModule(kControlProgramName, &request.program);
  if (!IsFailure(status)) {
    request.commandLine = u"\"" + request.program + u"\"";
    status = StartProcess(request, &failureText);
  }
  if (IsFailure(status)) {
    ShowPrompt(system_.Owner(), ProgramStartFailure(failureText));
  }
}

void CMonitor::Exit()
{
  if (exited_) return;
  exited_ = true;
  ReleaseHotKey();
  system_.Exit();
}

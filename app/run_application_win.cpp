#include "app/run_application_win.h"

#include <windows.h>

#include <shellapi.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "app/command_line.h"
#include "app/dismount_flows.h"
#include "app/display_text.h"
#include "app/instance_names.h"
#include "app/main_frame_win.h"
#include "app/mount_flow.h"
#include "crypto/keys.h"
#include "dialogs/mount_dialog_win.h"
#include "settings/recent_images.h"
#include "system/wide_text_win.h"
#include "ui/handles.h"
#include "ui/message_loop.h"

namespace {

// The window handle value -1, which the system treats as every top-level window, like
// HWND_BROADCAST.
const HWND kAllTopLevelWindows = reinterpret_cast<HWND>(static_cast<intptr_t>(-1));

// SMTO_ABORTIFHUNG | SMTO_NOTIMEOUTIFNOTHUNG.
constexpr UINT kHandOverSendFlags = 10;
static_assert(kHandOverSendFlags == (SMTO_ABORTIFHUNG | SMTO_NOTIMEOUTIFNOTHUNG));

// Splits the command line as the system does; false when it cannot be split.
bool SplitCommandLine(const wchar_t* commandLine, std::vector<std::u16string>* arguments)
{
  int count = 0;
  wchar_t** list = CommandLineToArgvW(commandLine, &count);
  if (list == nullptr) return false;
  for (int i = 0; i < count; ++i) arguments->emplace_back(Utf16(list[i]));
  LocalFree(list);
  return true;
}

void TellEveryWindowToRefresh()
{
  const UINT refresh = RegisterWindowMessageW(Wide(kRefreshMessageName));
  PostMessageW(kAllTopLevelWindows, refresh, 0, 0);
}

// Asks the running copy to bring its main window to the front; its answer is not awaited
// longer than the hand-over time-out, and not looked at.
void ActivateRunningCopy()
{
  const UINT activate = RegisterWindowMessageW(Wide(kSingleInstanceName));
  DWORD_PTR reply = 0;
  SendMessageTimeoutW(kAllTopLevelWindows, activate, 0, 0, kHandOverSendFlags, kHandOverTimeoutMs,
                      &reply);
}

// Feeds the high-resolution counter's 8 bytes to the random generator.
void SeedRandomFromCounter()
{
  LARGE_INTEGER counter{};
  QueryPerformanceCounter(&counter);
  uint8_t seed[8];
  static_assert(sizeof seed == sizeof counter.QuadPart);
  std::memcpy(seed, &counter.QuadPart, sizeof seed);
  CryptoSeedRandom(seed, sizeof seed);
}

// The mount dialog alone, on `imagePath`, with the recent-images list as stored.
void RunMountMode(const std::u16string& imagePath)
{
  RecentImageList recentImages;
  ReadRecentList(&recentImages, kRecentListKeyPath);
  CMountDlg dialog;
  MountFlow(nullptr, imagePath, dialog, recentImages);
}

}  // namespace

int RunApplication(const wchar_t* commandLine, int showCommand)
{
  std::vector<std::u16string> arguments;
  if (!SplitCommandLine(commandLine, &arguments)) return kExitOneShot;
  const StartRequest request = ReadStartRequest(arguments);
  switch (request.action) {
    case StartAction::kNotify: TellEveryWindowToRefresh(); return kExitHandedOver;
    case StartAction::kDismountAll: DismountAllFlow(nullptr, request.forced); return kExitOneShot;
    case StartAction::kDismountMountPoint:
      DismountMountPointFlow(nullptr, request.argument, request.forced);
      return kExitOneShot;
    case StartAction::kReject: return kExitOneShot;
    case StartAction::kMount:
    case StartAction::kInteractive: break;
  }
  const bool mountMode = request.action == StartAction::kMount;

  // The single-instance mutex shares its name with the activate message. It is only a marker
  // of a running copy, never owned: a copy that dies leaves no stale lock.
  const CKernelHandle instanceMutex(CreateMutexW(nullptr, FALSE, Wide(kSingleInstanceName)));
  if (GetLastError() == ERROR_ALREADY_EXISTS && !mountMode) {
    ActivateRunningCopy();
    return kExitHandedOver;
  }

  SeedRandomFromCounter();
  // The thread's message loop object, current from here on: modeless windows of the mount
  // flow join it, and the main frame runs it.
  CMessageLoop loop;
  SetupProcessLocale();
  if (mountMode) {
    RunMountMode(request.argument);
    return kExitOneShot;
  }
  return RunMainFrame(loop, showCommand);
}

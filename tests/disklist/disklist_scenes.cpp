// The screenshot program of the mounted disk view: the list in a window, with every column
// shown, four sample disks from a scripted device host and one row selected.
#include <windows.h>

#include <array>
#include <map>
#include <string>

#include "disklist/mounted_disk_view_win.h"
#include "settings/memory_store.h"
#include "settings/settings_backend.h"
#include "support/fake_device_host.h"
#include "support/sample_disks.h"
#include "tools/screenshot/screenshot_tool.h"

namespace {

std::optional<uint64_t> SampleFreeBytes(const std::u16string& mountPoint)
{
  static const std::map<std::u16string, uint64_t> freeBytes = {
      {u"P:", 734003200}, {u"Q:", 19327352832}, {u"S:", 52428800}, {u"W:", 3758096384}};
  const auto found = freeBytes.find(mountPoint);
  if (found == freeBytes.end()) return std::nullopt;
  return found->second;
}

HWND DiskList()
{
  static MemorySettingsBackend settings;
  SetSettingsBackend(&settings);
  ListLayout layout;
  layout.visibleColumns = kAllColumnsMask;
  ColumnModel(layout).Save();

  static FakeDeviceHost host;
  AddSampleDisks(host);

  static CCustomWindow frame;
  const HWND window =
      frame.Create(nullptr, RECT{0, 0, 720, 220}, L"Cryptelle", WS_OVERLAPPEDWINDOW | WS_VISIBLE);
  if (window == nullptr) return nullptr;
  RECT client{};
  GetClientRect(window, &client);
  static CMountedDiskView view(SampleFreeBytes);
  if (view.Create(window, client) == nullptr) return nullptr;
  // The view builds its columns and rows from a message it posts itself at creation.
  MSG message{};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
  view.List().SetItemSelected(1, true);
  SetFocus(view.Handle());
  return window;
}

constexpr std::array<ScreenshotScene, 1> kScenes = {{
    {L"disk-list", DiskList},
}};

}  // namespace

int main()
{
  return RunScreenshotTool(kScenes);
}

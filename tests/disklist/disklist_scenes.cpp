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
#include "tools/screenshot/screenshot_tool.h"

namespace {

// 2026-03-14 09:30 UTC and later.
constexpr uint64_t kMarch2026 = 1773480600;
constexpr uint64_t kDay = 86400;

MountedDisk SampleDisk(const char16_t* mountPoint, const char16_t* imagePath, uint64_t capacity,
                       uint32_t algorithm, uint32_t keyLength, uint64_t created)
{
  MountedDisk disk;
  disk.mountPoint = mountPoint;
  disk.imagePath = imagePath;
  disk.info.capacity = capacity;
  disk.info.algorithm = algorithm;
  disk.info.keyLength = keyLength;
  disk.info.creationTime = created;
  disk.info.mountTime = kMarch2026 + 200 * kDay;
  return disk;
}

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
  host.AddDisk(
      SampleDisk(u"W:", u"C:\\Users\\Ada\\Documents\\Work.qvi", 8589934592, 0, 32, kMarch2026));
  host.AddDisk(
      SampleDisk(u"P:", u"C:\\Users\\Ada\\Private.qvi", 1073741824, 1, 16, kMarch2026 + 31 * kDay));
  host.AddDisk(SampleDisk(u"Q:", u"D:\\Backup\\Archive 2025.qvi", 21474836480, 0, 24,
                          kMarch2026 - 90 * kDay));
  host.AddDisk(SampleDisk(u"S:", u"E:\\Travel.qvi", 104857600, 2, 16, kMarch2026 + 150 * kDay));

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

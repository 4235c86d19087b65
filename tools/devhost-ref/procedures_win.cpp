// The reference device host's answers to the ten procedures of the interface.
#include "tools/devhost-ref/procedures_win.h"

#include <cstring>
#include <mutex>
#include <string>

#include "devhost_rpc.h"
#include "system/wide_text_win.h"
#include "tools/devhost-ref/drives_win.h"
#include "tools/devhost-ref/host_control_win.h"
#include "tools/devhost-ref/mount_table.h"
#include "tools/devhost-ref/rpc_server_win.h"

namespace {

std::mutex tableMutex;
WindowsDrives drives;
MountTable table(drives);

// Records the call, answers a scripted "driver not started", else runs `answer` with the
// table to itself.
template <typename Body>
LONG Answer(const wchar_t* name, Body&& answer)
{
  WriteControlText(kControlLastCall, std::to_wstring(CurrentWireProcedure()) + L" " + name);
  if (TakeNotStartedAnswer()) return static_cast<LONG>(kDevNotRunning);
  std::lock_guard<std::mutex> lock(tableMutex);
  return static_cast<LONG>(answer());
}

wchar_t* CopyText(const std::u16string& text)
{
  const size_t bytes = (text.size() + 1) * sizeof(char16_t);
  auto* copy = static_cast<wchar_t*>(MIDL_user_allocate(bytes));
  if (copy != nullptr) std::memcpy(copy, text.c_str(), bytes);
  return copy;
}

// The disk list as the RPC runtime sends it; the runtime frees it after sending.
StatusCode ListDisks(MountedDiskRecord** records, ULONG* count)
{
  const auto& disks = table.Disks();
  if (disks.empty()) return kStatusSuccess;
  auto* list =
      static_cast<MountedDiskRecord*>(MIDL_user_allocate(disks.size() * sizeof(MountedDiskRecord)));
  if (list == nullptr) return kSysOutOfMemory;
  bool complete = true;
  for (size_t i = 0; i < disks.size(); ++i) {
    MountedDiskRecord& record = list[i];
    record.MountPoint = CopyText(disks[i].mountPoint);
    record.ImagePath = CopyText(disks[i].imagePath);
    record.MountFlags = static_cast<LONG>(disks[i].mountFlags);
    record.InfoSize = sizeof(MountedDiskInfo);
    record.Info = static_cast<byte*>(MIDL_user_allocate(sizeof(MountedDiskInfo)));
    if (record.Info != nullptr) std::memcpy(record.Info, &disks[i].info, sizeof(MountedDiskInfo));
    complete = complete && record.MountPoint && record.ImagePath && record.Info;
  }
  if (!complete) {
    for (size_t i = 0; i < disks.size(); ++i) {
      MIDL_user_free(list[i].MountPoint);
      MIDL_user_free(list[i].ImagePath);
      MIDL_user_free(list[i].Info);
    }
    MIDL_user_free(list);
    return kSysOutOfMemory;
  }
  *records = list;
  *count = static_cast<ULONG>(disks.size());
  return kStatusSuccess;
}

}  // namespace

void DismountEverything()
{
  std::lock_guard<std::mutex> lock(tableMutex);
  table.DismountAll(true);
}

// A mount without a key: the reference host mounts encrypted images only.
LONG __cdecl s_Procedure0(handle_t, const wchar_t*, const wchar_t*, LONG)
{
  return Answer(L"Procedure0", [] { return kSysNotSupported; });
}

LONG __cdecl s_MountImage(handle_t, const wchar_t* imagePath, const wchar_t* mountPoint,
                          LONG mountFlags, const byte* key, ULONG keyLength)
{
  return Answer(L"MountImage", [&] {
    return table.Mount(Utf16(imagePath), Utf16(mountPoint), static_cast<uint32_t>(mountFlags), key,
                       keyLength);
  });
}

// A host-wide switch the reference host accepts and ignores.
LONG __cdecl s_Procedure2(handle_t, boolean)
{
  return Answer(L"Procedure2", [] { return kStatusSuccess; });
}

LONG __cdecl s_DismountAll(handle_t, boolean forced)
{
  return Answer(L"DismountAll", [&] { return table.DismountAll(forced != 0); });
}

LONG __cdecl s_DismountByMountPoint(handle_t, const wchar_t* mountPoint, boolean forced)
{
  return Answer(L"DismountByMountPoint",
                [&] { return table.DismountByMountPoint(Utf16(mountPoint), forced != 0); });
}

LONG __cdecl s_DismountById(handle_t, const GUID* diskId, boolean forced)
{
  return Answer(L"DismountById", [&] {
    Guid id;
    std::memcpy(&id, diskId, sizeof id);
    return table.DismountById(id, forced != 0);
  });
}

// A numbered setting the reference host accepts and ignores.
LONG __cdecl s_Procedure6(handle_t, LONG, boolean)
{
  return Answer(L"Procedure6", [] { return kStatusSuccess; });
}

LONG __cdecl s_Procedure7(handle_t, MountedDiskRecord** records, ULONG* count)
{
  *records = nullptr;
  *count = 0;
  return Answer(L"Procedure7", [&] { return ListDisks(records, count); });
}

LONG __cdecl s_EnumerateDisks(handle_t, MountedDiskRecord** records, ULONG* count)
{
  *records = nullptr;
  *count = 0;
  return Answer(L"EnumerateDisks", [&] { return ListDisks(records, count); });
}

LONG __cdecl s_FormatVolume(handle_t, const wchar_t* mountPoint, FileSystemSelector selector)
{
  return Answer(L"FormatVolume", [&] {
    const auto number = static_cast<uint32_t>(selector);
    const StatusCode status = table.Format(Utf16(mountPoint), number);
    if (!IsFailure(status)) {
      WriteControlText(kControlLastFormat,
                       std::wstring(mountPoint) + L" " + std::to_wstring(number));
    }
    return status;
  });
}

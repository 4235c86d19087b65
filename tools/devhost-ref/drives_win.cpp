#include "tools/devhost-ref/drives_win.h"

#include <windows.h>
#include <winioctl.h>

#include <cwctype>
#include <filesystem>
#include <vector>

#include "system/error_map.h"
#include "tools/devhost-ref/host_control_win.h"

namespace {

// Wine resolves drive letters through its mount manager, not through DOS device names;
// its extension request defines a drive letter on a Unix directory.
constexpr DWORD kDefineUnixDrive =
    CTL_CODE(static_cast<DWORD>('m'), 32, METHOD_BUFFERED, FILE_READ_ACCESS | FILE_WRITE_ACCESS);

struct UnixDriveRequest {
  ULONG size;
  ULONG type;
  ULONG fileSystem;
  DWORD serial;
  ULONGLONG unixDevice;
  WCHAR letter;
  USHORT mountPointOffset;  // of the zero-terminated Unix path after this record
  USHORT deviceOffset;
  USHORT labelOffset;
};

using UnixFileNameFunction = char*(CDECL*)(const wchar_t*);

// Wine's converter from Windows to Unix paths; null on Windows.
UnixFileNameFunction WineUnixFileName()
{
  HMODULE kernel = GetModuleHandleW(L"kernel32.dll");
  return reinterpret_cast<UnixFileNameFunction>(
      reinterpret_cast<void*>(GetProcAddress(kernel, "wine_get_unix_file_name")));
}

// Defines (`unixPath` given) or removes (null) a Wine drive letter.
DWORD DefineWineDrive(char16_t letter, const char* unixPath)
{
  std::vector<char> request(sizeof(UnixDriveRequest) + (unixPath ? strlen(unixPath) + 1 : 0));
  UnixDriveRequest header{};
  header.size = static_cast<ULONG>(request.size());
  header.type = unixPath != nullptr ? DRIVE_FIXED : DRIVE_NO_ROOT_DIR;
  header.letter = static_cast<WCHAR>(std::towlower(letter));
  if (unixPath != nullptr) {
    header.mountPointOffset = sizeof header;
    memcpy(request.data() + sizeof header, unixPath, strlen(unixPath) + 1);
  }
  memcpy(request.data(), &header, sizeof header);
  HANDLE manager =
      CreateFileW(L"\\\\.\\MountPointManager", GENERIC_READ | GENERIC_WRITE,
                  FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
  if (manager == INVALID_HANDLE_VALUE) return GetLastError();
  DWORD returned = 0;
  const BOOL done =
      DeviceIoControl(manager, kDefineUnixDrive, request.data(), static_cast<DWORD>(request.size()),
                      nullptr, 0, &returned, nullptr);
  const DWORD error = done ? ERROR_SUCCESS : GetLastError();
  CloseHandle(manager);
  return error;
}

DWORD MapDrive(char16_t letter, const std::wstring& folder)
{
  if (UnixFileNameFunction unixFileName = WineUnixFileName()) {
    char* unixPath = unixFileName(folder.c_str());
    if (unixPath == nullptr) return ERROR_PATH_NOT_FOUND;
    const DWORD error = DefineWineDrive(letter, unixPath);
    HeapFree(GetProcessHeap(), 0, unixPath);
    return error;
  }
  const wchar_t device[] = {static_cast<wchar_t>(letter), L':', 0};
  return DefineDosDeviceW(0, device, folder.c_str()) ? ERROR_SUCCESS : GetLastError();
}

void UnmapDrive(char16_t letter, const std::wstring& folder)
{
  if (WineUnixFileName() != nullptr) {
    DefineWineDrive(letter, nullptr);
    return;
  }
  const wchar_t device[] = {static_cast<wchar_t>(letter), L':', 0};
  DefineDosDeviceW(DDD_REMOVE_DEFINITION | DDD_EXACT_MATCH_ON_REMOVE, device, folder.c_str());
}

// A folder of its own for each disk, under the system's temporary folder.
std::wstring ScratchFolder(const Guid& id)
{
  wchar_t temp[MAX_PATH];
  GetTempPathW(MAX_PATH, temp);
  wchar_t name[40];
  swprintf(name, 40, L"%08lX-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X",
           static_cast<unsigned long>(id.data1), id.data2, id.data3, id.data4[0], id.data4[1],
           id.data4[2], id.data4[3], id.data4[4], id.data4[5], id.data4[6], id.data4[7]);
  return std::wstring(temp) + L"pdevhost\\" + name;
}

}  // namespace

bool WindowsDrives::IsTaken(char16_t letter)
{
  return (GetLogicalDrives() & (1u << (letter - u'A'))) != 0;
}

StatusCode WindowsDrives::Attach(char16_t letter, const Guid& diskId)
{
  const std::wstring folder = ScratchFolder(diskId);
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) return kSysCannotCreate;
  const DWORD mapped = MapDrive(letter, folder);
  if (mapped != ERROR_SUCCESS) {
    std::filesystem::remove_all(folder, error);
    return MapSystemError(mapped);
  }
  folders_[letter] = folder;
  return kStatusSuccess;
}

void WindowsDrives::Detach(char16_t letter)
{
  const auto found = folders_.find(letter);
  if (found == folders_.end()) return;
  UnmapDrive(letter, found->second);
  std::error_code error;
  std::filesystem::remove_all(found->second, error);
  folders_.erase(found);
}

bool WindowsDrives::InUse(char16_t letter)
{
  for (const wchar_t c : ReadControlText(kControlInUse)) {
    if (std::towupper(c) == letter) return true;
  }
  return false;
}

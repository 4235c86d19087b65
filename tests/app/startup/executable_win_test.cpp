// What ctell.exe carries as a file: a windowed program (no console), the program icon and
// the manifest that asks for the common controls 6 and per-monitor DPI awareness.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "app/startup/ctell_process_win.h"
#include "res/resource.h"

namespace {

// The resource types and the process manifest's id by number (the system's names for them
// are the narrow-text ones in this build).
const wchar_t* const kGroupIconType = MAKEINTRESOURCEW(14);  // RT_GROUP_ICON
const wchar_t* const kManifestType = MAKEINTRESOURCEW(24);   // RT_MANIFEST
const wchar_t* const kProcessManifestId = MAKEINTRESOURCEW(1);

// ctell.exe loaded as data: its headers and resources can be read, nothing of it runs.
class CtellExecutable : public testing::Test {
 protected:
  void SetUp() override
  {
    module_ = LoadLibraryExW(CtellPath().c_str(), nullptr,
                             LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE);
    ASSERT_NE(module_, nullptr) << GetLastError();
  }
  void TearDown() override { FreeLibrary(module_); }

  std::string ResourceText(const wchar_t* type, const wchar_t* name) const
  {
    const HRSRC found = FindResourceW(module_, name, type);
    if (found == nullptr) return {};
    const char* bytes = static_cast<const char*>(LockResource(LoadResource(module_, found)));
    return std::string(bytes, SizeofResource(module_, found));
  }

  HMODULE module_ = nullptr;
};

}  // namespace

TEST_F(CtellExecutable, IsAWindowedProgram)
{
  std::string file(4096, '\0');
  const HANDLE handle = CreateFileW(CtellPath().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(handle, INVALID_HANDLE_VALUE);
  DWORD read = 0;
  ReadFile(handle, file.data(), static_cast<DWORD>(file.size()), &read, nullptr);
  CloseHandle(handle);
  IMAGE_DOS_HEADER dos;
  memcpy(&dos, file.data(), sizeof dos);
  ASSERT_EQ(dos.e_magic, IMAGE_DOS_SIGNATURE);
  IMAGE_NT_HEADERS64 nt;
  memcpy(&nt, file.data() + dos.e_lfanew, sizeof nt);
  ASSERT_EQ(nt.Signature, static_cast<DWORD>(IMAGE_NT_SIGNATURE));
  EXPECT_EQ(nt.OptionalHeader.Subsystem, IMAGE_SUBSYSTEM_WINDOWS_GUI);
}

TEST_F(CtellExecutable, CarriesTheProgramIcon)
{
  EXPECT_NE(FindResourceW(module_, MAKEINTRESOURCEW(IDR_MAINFRAME), kGroupIconType), nullptr);
}

TEST_F(CtellExecutable, ManifestAsksForCommonControlsSixAndPerMonitorAwareness)
{
  const std::string manifest = ResourceText(kManifestType, kProcessManifestId);
  ASSERT_FALSE(manifest.empty());
  EXPECT_NE(manifest.find("name=\"Microsoft.Windows.Common-Controls\" version=\"6.0.0.0\""),
            std::string::npos);
  EXPECT_NE(manifest.find(">true/pm</dpiAware>"), std::string::npos);
  EXPECT_NE(manifest.find(">PerMonitorV2, PerMonitor</dpiAwareness>"), std::string::npos);
}

// The system's shell service where it runs without a window: opening a document through its
// file association, looking at a folder, preparing folders for writing, the desktop folder.
#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "probe_report_win.h"
#include "services/shell.h"
#include "support/temp_dir.h"
#include "system/wide_text_win.h"

namespace {

// Associates documents ending in ".ctellprobe" with the probe program, whose "open" command
// writes its report beside the document ("<document>.opened"). The classes root is written
// directly: the test prefix's shell reads associations from there.
class CProbeDocumentAssociation {
 public:
  CProbeDocumentAssociation()
  {
    const std::u16string command = u"\"" + ProbeProgramPath() + u"\" \"%1.opened\" \"%1\"";
    SetDefaultValue(LR"(.ctellprobe)", u"Cryptelle.ProbeDocument");
    SetDefaultValue(LR"(Cryptelle.ProbeDocument\shell\open\command)", command);
  }
  ~CProbeDocumentAssociation()
  {
    RegDeleteTreeW(HKEY_CLASSES_ROOT, LR"(.ctellprobe)");
    RegDeleteTreeW(HKEY_CLASSES_ROOT, LR"(Cryptelle.ProbeDocument)");
  }
  CProbeDocumentAssociation(const CProbeDocumentAssociation&) = delete;
  CProbeDocumentAssociation& operator=(const CProbeDocumentAssociation&) = delete;

 private:
  static void SetDefaultValue(const wchar_t* key, const std::u16string& value)
  {
    HKEY handle = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_CLASSES_ROOT, key, 0, nullptr, 0, KEY_WRITE, nullptr, &handle,
                              nullptr),
              ERROR_SUCCESS);
    RegSetValueExW(handle, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(Wide(value)),
                   static_cast<DWORD>((value.size() + 1) * sizeof(char16_t)));
    RegCloseKey(handle);
  }
};

TEST(SystemShellService, OpensADocumentWithTheProgramOfItsAssociation)
{
  CProbeDocumentAssociation association;
  TempDir folder;
  const std::u16string document = folder.File(u"notes.ctellprobe");
  std::ofstream(std::filesystem::path(document)) << "probe document";
  ASSERT_EQ(ShellOpen(nullptr, document), kStatusSuccess);
  const std::optional<std::u16string> report = WaitForProbeReport(document + u".opened");
  ASSERT_TRUE(report.has_value());
  EXPECT_NE(report->find(document), std::u16string::npos);
}

TEST(SystemShellService, OpeningAMissingDocumentFails)
{
  TempDir folder;
  EXPECT_EQ(ShellOpen(nullptr, folder.File(u"missing.ctellprobe")), kSysNotFound);
}

TEST(SystemShellService, LooksAtAnExistingFolder)
{
  TempDir folder;
  EXPECT_EQ(ShellLookAt(folder.Text()), kStatusSuccess);
}

TEST(SystemShellService, PreparingForWritingCreatesTheMissingFolders)
{
  TempDir folder;
  const std::u16string nested = folder.File(u"one\\two\\");
  EXPECT_EQ(ShellPrepareForWrite(nullptr, nested, kShppfwDirCreate), kStatusSuccess);
  EXPECT_TRUE(std::filesystem::is_directory(std::filesystem::path(nested)));
}

TEST(SystemShellService, PreparingAFolderBehindAFileFails)
{
  TempDir folder;
  const std::u16string file = folder.File(u"plain.txt");
  std::ofstream(std::filesystem::path(file)) << "in the way";
  EXPECT_TRUE(IsFailure(ShellPrepareForWrite(nullptr, file + u"\\inner\\", kShppfwDirCreate)));
}

TEST(SystemShellService, DesktopIsAnExistingFolder)
{
  std::u16string desktop;
  ASSERT_EQ(ShellSpecialFolder(kCsidlDesktop, &desktop), kStatusSuccess);
  EXPECT_TRUE(std::filesystem::is_directory(std::filesystem::path(desktop)));
  EXPECT_EQ(ShellSpecialFolder(kCsidlDesktop, nullptr), kSysInvalidParameter);
}

}  // namespace

// The system dialog's record built from a request, checked without showing the dialog.
#include <gtest/gtest.h>

#include <string>

#include "services/file_dialog_win.h"
#include "services/window_ref_win.h"
#include "system/wide_text_win.h"

namespace {

using namespace std::string_literals;

TEST(FileDialogRecord, CarriesTheRequest)
{
  const HWND owner = GetDesktopWindow();
  FileDialogRequest request;
  request.owner = ToWindowRef(owner);
  request.filter = u"Cryptelle Image File (.qvi)\0*.qvi\0All Files (*.*)\0*.*\0\0"s;
  request.flags = kOfnHideReadOnly | kOfnNoChangeDir | kOfnFileMustExist | kOfnDontAddToRecent;
  request.initialFolder = u"C:\\users\\me\\Desktop";
  request.defaultExtension = u"qvi";
  request.fileName = u"C:\\images\\disk.qvi";
  CFileDialogRecord dialog(request);
  const OPENFILENAMEW& record = dialog.Record();

  EXPECT_EQ(record.lStructSize, sizeof(OPENFILENAMEW));
  EXPECT_EQ(record.hwndOwner, owner);
  EXPECT_EQ(record.Flags, 0x0200100Cu);
  EXPECT_EQ(record.nFilterIndex, 1u);
  // The filter ends with two NULs: read it up to and including them.
  std::u16string filter;
  for (const wchar_t* at = record.lpstrFilter; at[0] != L'\0' || at[1] != L'\0'; ++at) {
    filter.push_back(static_cast<char16_t>(*at));
  }
  EXPECT_EQ(filter, u"Cryptelle Image File (.qvi)\0*.qvi\0All Files (*.*)\0*.*"s);
  EXPECT_EQ(std::u16string(Utf16(record.lpstrFile)), u"C:\\images\\disk.qvi");
  EXPECT_EQ(record.nMaxFile, static_cast<DWORD>(MAX_PATH));
  EXPECT_EQ(std::u16string(Utf16(record.lpstrInitialDir)), u"C:\\users\\me\\Desktop");
  EXPECT_EQ(std::u16string(Utf16(record.lpstrDefExt)), u"qvi");
}

TEST(FileDialogRecord, EmptyPartsAreLeftToTheSystem)
{
  CFileDialogRecord dialog(FileDialogRequest{});
  const OPENFILENAMEW& record = dialog.Record();
  EXPECT_EQ(record.hwndOwner, nullptr);
  EXPECT_EQ(record.lpstrFilter, nullptr);
  EXPECT_EQ(record.lpstrInitialDir, nullptr);
  EXPECT_EQ(record.lpstrDefExt, nullptr);
  EXPECT_EQ(record.lpstrFile[0], L'\0');
}

TEST(FileDialogRecord, InitialNameThatDoesNotFitIsLeftOut)
{
  FileDialogRequest request;
  request.fileName = std::u16string(MAX_PATH, u'a');
  CFileDialogRecord dialog(request);
  EXPECT_EQ(dialog.Record().lpstrFile[0], L'\0');
  request.fileName.pop_back();  // 259 characters and the terminator fit
  CFileDialogRecord fitting(request);
  EXPECT_EQ(std::u16string(Utf16(fitting.Record().lpstrFile)), request.fileName);
}

TEST(FileDialogRecord, ChoiceIsWhatTheDialogWroteBack)
{
  FileDialogRequest request;
  request.fileName = u"old name that is longer.qvi";
  CFileDialogRecord dialog(request);
  OPENFILENAMEW& record = dialog.Record();
  wcscpy(record.lpstrFile, L"D:\\new.qvi");
  record.nFilterIndex = 2;
  const FileDialogChoice choice = dialog.Choice();
  EXPECT_EQ(choice.path, u"D:\\new.qvi");
  EXPECT_EQ(choice.filterIndex, 2u);
}

}  // namespace

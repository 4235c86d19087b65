// Waits for a dialog of another process, shows what one of its fields holds and closes it:
//
//   window_probe CAPTION CONTROL_ID
//
// Waits up to 30 s for a visible top-level dialog with the caption CAPTION, prints the text of its
// control CONTROL_ID (UTF-8, one line) and answers the dialog with Cancel. Exit status 0 when
// the dialog was found, 1 when it did not appear, 2 for a wrong command line.
#include <windows.h>

#include <cstdio>
#include <cwchar>
#include <string>

int wmain(int argc, wchar_t** argv)
{
  if (argc != 3) {
    fwprintf(stderr, L"usage: window_probe CAPTION CONTROL_ID\n");
    return 2;
  }
  const int control = _wtoi(argv[2]);
  for (int attempt = 0; attempt < 300; ++attempt) {
    // A dialog is found as soon as it is created, but its fields are filled only before it
    // shows: the probe reads it once it is visible.
    const HWND dialog = FindWindowW(L"#32770", argv[1]);
    if (dialog != nullptr && IsWindowVisible(dialog)) {
      wchar_t text[1024] = {};
      GetDlgItemTextW(dialog, control, text, 1024);
      std::string utf8(4 * wcslen(text) + 1, '\0');
      const int length = WideCharToMultiByte(CP_UTF8, 0, text, -1, utf8.data(),
                                             static_cast<int>(utf8.size()), nullptr, nullptr);
      utf8.resize(length > 0 ? static_cast<size_t>(length - 1) : 0);
      printf("%s\n", utf8.c_str());
      PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
      return 0;
    }
    Sleep(100);
  }
  fwprintf(stderr, L"window_probe: no dialog \"%ls\" appeared\n", argv[1]);
  return 1;
}

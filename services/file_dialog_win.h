// The system's description of a file dialog (OPENFILENAMEW) built from a request, with the
// buffers it points into; kept apart from showing the dialog so that it can be checked
// without a modal window.
#pragma once

#include <windows.h>

#include <commdlg.h>

#include <optional>
#include <string>
#include <vector>

#include "services/file_dialog.h"

class CFileDialogRecord {
 public:
  // The file-name buffer holds MAX_PATH characters: the chosen path's limit, and the
  // initial name's (a longer initial name is left out and the dialog starts without one).
  static constexpr size_t kFileBufferLength = MAX_PATH;

  explicit CFileDialogRecord(const FileDialogRequest& request);
  CFileDialogRecord(const CFileDialogRecord&) = delete;
  CFileDialogRecord& operator=(const CFileDialogRecord&) = delete;

  OPENFILENAMEW& Record() { return record_; }
  // The choice the dialog wrote back into the record.
  FileDialogChoice Choice() const;

 private:
  std::u16string filter_;
  std::u16string initialFolder_;
  std::u16string defaultExtension_;
  std::vector<wchar_t> file_;
  OPENFILENAMEW record_{};
};

#include "services/file_dialog_win.h"

#include <algorithm>

#include "services/system_services.h"
#include "services/window_ref_win.h"
#include "system/wide_text_win.h"

static_assert(kOfnOverwritePrompt == OFN_OVERWRITEPROMPT && kOfnHideReadOnly == OFN_HIDEREADONLY &&
              kOfnNoChangeDir == OFN_NOCHANGEDIR && kOfnPathMustExist == OFN_PATHMUSTEXIST &&
              kOfnFileMustExist == OFN_FILEMUSTEXIST && kOfnDontAddToRecent == OFN_DONTADDTORECENT);

CFileDialogRecord::CFileDialogRecord(const FileDialogRequest& request)
    : filter_(TerminatedFilterList(request.filter)),
      initialFolder_(request.initialFolder),
      defaultExtension_(request.defaultExtension),
      file_(kFileBufferLength, L'\0')
{
  if (request.fileName.size() < kFileBufferLength) {
    std::copy(request.fileName.begin(), request.fileName.end(), file_.begin());
  }
  record_.lStructSize = sizeof record_;
  record_.hwndOwner = ToHwnd(request.owner);
  record_.lpstrFilter = request.filter.empty() ? nullptr : Wide(filter_);
  record_.nFilterIndex = 1;
  record_.lpstrFile = file_.data();
  record_.nMaxFile = static_cast<DWORD>(file_.size());
  record_.lpstrInitialDir = initialFolder_.empty() ? nullptr : Wide(initialFolder_);
  record_.lpstrDefExt = defaultExtension_.empty() ? nullptr : Wide(defaultExtension_);
  record_.Flags = request.flags;
}

FileDialogChoice CFileDialogRecord::Choice() const
{
  const auto end = std::find(file_.begin(), file_.end(), L'\0');
  return {std::u16string(Utf16(file_.data()), static_cast<size_t>(end - file_.begin())),
          record_.nFilterIndex};
}

namespace {

class CSystemFileDialogs final : public CFileDialogService {
 public:
  std::optional<FileDialogChoice> ChooseFileToOpen(const FileDialogRequest& request) override
  {
    CFileDialogRecord dialog(request);
    if (!GetOpenFileNameW(&dialog.Record())) return std::nullopt;
    return dialog.Choice();
  }

  std::optional<FileDialogChoice> ChooseFileToSave(const FileDialogRequest& request) override
  {
    CFileDialogRecord dialog(request);
    if (!GetSaveFileNameW(&dialog.Record())) return std::nullopt;
    return dialog.Choice();
  }
};

}  // namespace

CFileDialogService& SystemFileDialogService()
{
  static CSystemFileDialogs service;
  return service;
}

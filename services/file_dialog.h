// The open-file and save-file dialogs, replaceable like every service that shows a modal
// window: tests script the user's choice.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "services/window_ref.h"

// Options of a file dialog (the system's OFN_* values).
inline constexpr uint32_t kOfnOverwritePrompt = 0x00000002;
inline constexpr uint32_t kOfnHideReadOnly = 0x00000004;
inline constexpr uint32_t kOfnNoChangeDir = 0x00000008;
inline constexpr uint32_t kOfnPathMustExist = 0x00000800;
inline constexpr uint32_t kOfnFileMustExist = 0x00001000;
inline constexpr uint32_t kOfnDontAddToRecent = 0x02000000;

struct FileDialogRequest {
  WindowRef owner = nullptr;
  // The filter list as the string table holds it: a name and its pattern per entry, each
  // followed by a NUL character; the list ends at an empty name or at the end of the text.
  std::u16string filter;
  uint32_t flags = 0;               // kOfn* values
  std::u16string initialFolder;     // empty: the system's choice
  std::u16string defaultExtension;  // empty: none is added
  std::u16string fileName;          // the name the dialog starts with; may be empty
};

struct FileDialogChoice {
  std::u16string path;
  unsigned filterIndex = 0;  // the filter chosen, counted from 1
};

class CFileDialogService {
 public:
  // Each shows its dialog and returns the user's choice, or nothing when the user cancelled
  // (or the dialog could not be shown).
  virtual std::optional<FileDialogChoice> ChooseFileToOpen(const FileDialogRequest& request) = 0;
  virtual std::optional<FileDialogChoice> ChooseFileToSave(const FileDialogRequest& request) = 0;

 protected:
  virtual ~CFileDialogService() = default;
};

// Shows the dialog through the current service.
std::optional<FileDialogChoice> ChooseFileToOpen(const FileDialogRequest& request);
std::optional<FileDialogChoice> ChooseFileToSave(const FileDialogRequest& request);

// Makes `service` current and returns the previous one; null restores the system's dialogs.
CFileDialogService* ReplaceFileDialogService(CFileDialogService* service);

// The filter list in the form the system's dialogs read: the entries of `filter` (see
// FileDialogRequest) each ended by a NUL character, and one more NUL ending the list.
std::u16string TerminatedFilterList(std::u16string_view filter);

// The shell's services: opening a drive or document, looking at a file, formatting a drive,
// preparing a folder for writing and finding special folders. Replaceable, so that tests
// neither open windows nor format drives.
#pragma once

#include <cstdint>
#include <string>

#include "services/window_ref.h"
#include "system/status.h"

// Format request and results of the shell's format dialog (the system's SHFMT_* values).
inline constexpr unsigned kShFmtIdDefault = 0xFFFF;
inline constexpr unsigned kShFmtOptFull = 0x0001;
inline constexpr uint32_t kShFmtError = 0xFFFFFFFF;
inline constexpr uint32_t kShFmtCancel = 0xFFFFFFFE;
inline constexpr uint32_t kShFmtNoFormat = 0xFFFFFFFD;

// Preparing a path for writing: create the missing folders (the system's SHPPFW_DIRCREATE).
inline constexpr uint32_t kShppfwDirCreate = 0x0001;

// Special folders (the system's CSIDL_* values).
inline constexpr int kCsidlDesktop = 0x0000;

class CShellService {
 public:
  // Opens `target` (a drive such as "P:\", a folder or a document) with its "open" verb in
  // a normal window.
  virtual StatusCode Open(WindowRef owner, const std::u16string& target) = 0;
  // Asks for the file information of `path` without flags; the answer is not needed, the
  // call makes the shell look at a drive that has just appeared.
  virtual StatusCode LookAt(const std::u16string& path) = 0;
  // Shows the format dialog for drive number `drive` (0 is A:) and returns its result: the
  // format id of the new file system, or kShFmtError, kShFmtCancel, kShFmtNoFormat.
  virtual uint32_t FormatDrive(WindowRef owner, unsigned drive, unsigned formatId,
                               unsigned options) = 0;
  // Makes `path` ready for writing with the kShppfw* `flags` (creating missing folders).
  virtual StatusCode PrepareForWrite(WindowRef owner, const std::u16string& path,
                                     uint32_t flags) = 0;
  // The path of special folder `csidl` (a kCsidl* value).
  virtual StatusCode SpecialFolder(int csidl, std::u16string* path) = 0;

 protected:
  virtual ~CShellService() = default;
};

// Each calls the current service.
StatusCode ShellOpen(WindowRef owner, const std::u16string& target);
StatusCode ShellLookAt(const std::u16string& path);
uint32_t ShellFormatDrive(WindowRef owner, unsigned drive, unsigned formatId, unsigned options);
StatusCode ShellPrepareForWrite(WindowRef owner, const std::u16string& path, uint32_t flags);
StatusCode ShellSpecialFolder(int csidl, std::u16string* path);

// Makes `service` current and returns the previous one; null restores the system's shell.
CShellService* ReplaceShellService(CShellService* service);

// The POSIX store: the current user's keys and values in one text file (its form in
// settings/file_store_format.h), "settings" in the store's directory.
//
// Every operation reads the file anew; every change rewrites it whole under an exclusive
// lock ("settings.lock"): the new text goes to "settings.new", is flushed to the disk and
// then renamed over "settings", so a crash leaves either the old or the new store, never a
// half-written one. A missing file is an empty store; a damaged one reads as far as it
// parses (settings/file_store_format.h), and one larger than 1 MiB as empty; the next
// change replaces either with what was read plus the change. A change that would make the
// file larger than that fails with kSysFileTooLarge and leaves the store as it was.
#pragma once

#include <string>

#include "settings/settings_backend.h"

class FileSettingsBackend : public SettingsBackend {
 public:
  // A store in `directory` (UTF-8); without one, the user's configuration directory,
  // looked up at every use (DefaultSettingsDirectory).
  FileSettingsBackend() = default;
  explicit FileSettingsBackend(std::string directory) : directory_(std::move(directory)) {}

  StatusCode OpenUserRoot(SettingsKeyPtr* root) override;

 private:
  std::string directory_;
};

// "$XDG_CONFIG_HOME/cryptelle", or "$HOME/.config/cryptelle" when the variable is unset,
// empty or not an absolute path; kSysNotFound when no home directory is known.
StatusCode DefaultSettingsDirectory(std::string* directory);

// The largest store file that is read.
inline constexpr size_t kMaxSettingsFileSize = 1u << 20;

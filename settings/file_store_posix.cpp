#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <functional>
#include <new>
#include <vector>

#include "settings/file_store.h"
#include "settings/file_store_format.h"
#include "settings/settings_tree.h"
#include "system/error_map.h"
#include "system/file.h"
#include "system/utf.h"

namespace {

// Windows reports this for an operation on a key that was deleted while it was open.
constexpr uint32_t kErrorKeyDeleted = 1018;

StatusCode LastErrno()
{
  return MapErrno(errno);
}

// Creates `directory` and its missing parents, private to the user.
StatusCode MakeDirectories(const std::string& directory)
{
  for (size_t at = 1; at <= directory.size(); ++at) {
    if (at < directory.size() && directory[at] != '/') continue;
    const std::string part = directory.substr(0, at);
    if (mkdir(part.c_str(), 0700) != 0 && errno != EEXIST) return LastErrno();
  }
  struct stat info {};
  if (stat(directory.c_str(), &info) != 0) return LastErrno();
  return S_ISDIR(info.st_mode) ? kStatusSuccess : MapErrno(ENOTDIR);
}

// Reads the store file of `directory` into `root`.
StatusCode LoadStore(const std::string& directory, SettingsNode* root)
{
  *root = SettingsNode();
  const std::u16string path = Utf8ToUtf16(directory + "/settings");
  SysFile* file = nullptr;
  StatusCode status = SysOpenFile(path.c_str(), kFileShareRead, &file);
  if (status == kSysNotFound) return kStatusSuccess;
  if (IsFailure(status)) return status;
  uint64_t size = 0;
  status = SysGetFileSize(file, &size);
  std::string text;
  if (!IsFailure(status) && size <= kMaxSettingsFileSize) {
    text.resize(static_cast<size_t>(size));
    uint32_t done = 0;
    status = SysReadFile(file, 0, text.data(), static_cast<uint32_t>(size), &done);
    text.resize(done);
  }
  SysCloseFile(file);
  if (IsFailure(status)) return status;
  ParseSettingsText(text, root);
  return kStatusSuccess;
}

// Writes `root` as the new store file of `directory`: a temporary file flushed to the disk,
// then renamed over the store.
StatusCode SaveStore(const std::string& directory, const SettingsNode& root)
{
  const std::string text = FormatSettingsText(root);
  // A store too large to be read back would read as empty: it is never written.
  if (text.size() > kMaxSettingsFileSize) return kSysFileTooLarge;
  const std::string temporary = directory + "/settings.new";
  const std::u16string wide = Utf8ToUtf16(temporary);
  SysFile* file = nullptr;
  StatusCode status = SysOpenFile(wide.c_str(), kFileWritable | kFileCreate, &file);
  if (IsFailure(status)) return status;
  // The settings are the user's own: nobody else may read them.
  if (chmod(temporary.c_str(), 0600) != 0) status = LastErrno();
  uint32_t done = 0;
  if (!IsFailure(status)) {
    status = SysWriteFile(file, 0, text.data(), static_cast<uint32_t>(text.size()), &done);
  }
  if (!IsFailure(status)) status = SysFlushFile(file);
  const StatusCode closed = SysCloseFile(file);
  if (!IsFailure(status)) status = closed;
  if (!IsFailure(status) && rename(temporary.c_str(), (directory + "/settings").c_str()) != 0) {
    status = LastErrno();
  }
  if (IsFailure(status)) {
    unlink(temporary.c_str());
    return status;
  }
  // Make the rename itself durable; a directory that cannot be flushed keeps the new store
  // all the same.
  const int dir = open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (dir >= 0) {
    fsync(dir);
    close(dir);
  }
  return kStatusSuccess;
}

// Runs `change` on the store under the store's lock and saves the store when `change`
// succeeds and reports a change.
StatusCode ChangeStore(const std::string& directory,
                       const std::function<StatusCode(SettingsNode&, bool*)>& change)
{
  StatusCode status = MakeDirectories(directory);
  if (IsFailure(status)) return status;
  const int lock = open((directory + "/settings.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  if (lock < 0) return LastErrno();
  int locked;
  do {
    locked = flock(lock, LOCK_EX);
  } while (locked != 0 && errno == EINTR);
  if (locked != 0) {
    status = LastErrno();
    close(lock);
    return status;
  }
  SettingsNode root;
  bool changed = false;
  status = LoadStore(directory, &root);
  if (!IsFailure(status)) status = change(root, &changed);
  if (!IsFailure(status) && changed) status = SaveStore(directory, root);
  close(lock);  // releases the lock
  return status;
}

bool AllStorable(const std::vector<std::u16string>& names)
{
  for (const std::u16string& name : names) {
    if (!IsStorableName(name)) return false;
  }
  return true;
}

class FileKey : public SettingsKey {
 public:
  FileKey(std::string directory, std::vector<std::u16string> names)
      : directory_(std::move(directory)), names_(std::move(names))
  {
  }

  StatusCode OpenSubKey(const char16_t* path, SettingsKeyPtr* key) override
  {
    std::vector<std::u16string> names;
    StatusCode status = SubKeyNames(path, &names);
    if (IsFailure(status)) return status;
    SettingsNode root;
    status = LoadStore(directory_, &root);
    if (IsFailure(status)) return status;
    if (FindKey(root, names) == nullptr) return MapSystemError(kErrorFileNotFound);
    return Hand(std::move(names), key);
  }

  StatusCode CreateSubKey(const char16_t* path, SettingsKeyPtr* key) override
  {
    std::vector<std::u16string> names;
    StatusCode status = SubKeyNames(path, &names);
    if (IsFailure(status)) return status;
    if (!AllStorable(names)) return MapSystemError(kErrorInvalidParameter);
    // A key that exists needs no change, and so no lock.
    SettingsNode current;
    if (!IsFailure(LoadStore(directory_, &current)) && FindKey(current, names) != nullptr) {
      return Hand(std::move(names), key);
    }
    status = ChangeStore(directory_, [&names](SettingsNode& root, bool* changed) {
      CreateKey(root, names, changed);
      return kStatusSuccess;
    });
    if (IsFailure(status)) return status;
    return Hand(std::move(names), key);
  }

  StatusCode QueryValue(const char16_t* name, uint32_t* type, void* data, uint32_t* size) override
  {
    SettingsNode root;
    const StatusCode status = LoadStore(directory_, &root);
    if (IsFailure(status)) return status;
    const SettingsNode* node = FindKey(root, names_);
    if (node == nullptr) return MapSystemError(kErrorKeyDeleted);
    return QueryNodeValue(*node, name, type, data, size);
  }

  StatusCode SetValue(const char16_t* name, uint32_t type, const void* data, uint32_t size) override
  {
    if (name != nullptr && !IsStorableName(name)) return MapSystemError(kErrorInvalidParameter);
    return ChangeStore(directory_, [&](SettingsNode& root, bool* changed) {
      SettingsNode* node = FindKey(root, names_);
      if (node == nullptr) return MapSystemError(kErrorKeyDeleted);
      const StatusCode status = SetNodeValue(*node, name, type, data, size);
      *changed = !IsFailure(status);
      return status;
    });
  }

  StatusCode DeleteValue(const char16_t* name) override
  {
    return ChangeStore(directory_, [&](SettingsNode& root, bool* changed) {
      SettingsNode* node = FindKey(root, names_);
      if (node == nullptr) return MapSystemError(kErrorKeyDeleted);
      const StatusCode status = DeleteNodeValue(*node, name);
      *changed = !IsFailure(status);
      return status;
    });
  }

 private:
  // The full names of the key at `path` below this one.
  StatusCode SubKeyNames(const char16_t* path, std::vector<std::u16string>* names) const
  {
    StatusCode status = SplitKeyPath(path, names);
    if (IsFailure(status)) return status;
    names->insert(names->begin(), names_.begin(), names_.end());
    return kStatusSuccess;
  }

  StatusCode Hand(std::vector<std::u16string> names, SettingsKeyPtr* key) const
  {
    auto* opened = new (std::nothrow) FileKey(directory_, std::move(names));
    if (opened == nullptr) return kSysOutOfMemory;
    key->reset(opened);
    return kStatusSuccess;
  }

  std::string directory_;
  std::vector<std::u16string> names_;
};

}  // namespace

StatusCode DefaultSettingsDirectory(std::string* directory)
{
  const char* config = std::getenv("XDG_CONFIG_HOME");
  if (config != nullptr && config[0] == '/') {
    *directory = std::string(config) + "/cryptelle";
    return kStatusSuccess;
  }
  const char* home = std::getenv("HOME");
  if (home == nullptr || home[0] == 0) {
    const passwd* user = getpwuid(getuid());
    home = user != nullptr ? user->pw_dir : nullptr;
  }
  if (home == nullptr || home[0] == 0) return kSysNotFound;
  *directory = std::string(home) + "/.config/cryptelle";
  return kStatusSuccess;
}

StatusCode FileSettingsBackend::OpenUserRoot(SettingsKeyPtr* root)
{
  std::string directory = directory_;
  if (directory.empty()) {
    const StatusCode status = DefaultSettingsDirectory(&directory);
    if (IsFailure(status)) return status;
  }
  auto* opened = new (std::nothrow) FileKey(directory, {});
  if (opened == nullptr) return kSysOutOfMemory;
  root->reset(opened);
  return kStatusSuccess;
}

SettingsBackend& PlatformSettingsBackend()
{
  static FileSettingsBackend store;
  return store;
}

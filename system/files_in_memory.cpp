#include "system/files_in_memory.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <type_traits>

#include "system/file.h"
#include "system/file_backend.h"

namespace {

struct StoredFile {
  std::vector<uint8_t> bytes;
  int readers = 0;         // opens that share reading
  bool exclusive = false;  // an open that shares nothing
};

struct OpenFile {
  std::shared_ptr<StoredFile> stored;
  bool shared = false;
};

// Every file by path, and every open file by its handle (an index into `open`).
std::mutex g_mutex;
std::map<std::u16string, std::shared_ptr<StoredFile>> g_files;
std::vector<std::unique_ptr<OpenFile>> g_open;

// A handle is a file descriptor on POSIX and a HANDLE on Windows; here it only carries
// the index.
template <typename Handle>
size_t IndexOf(Handle file)
{
  if constexpr (std::is_pointer_v<Handle>) {
    return reinterpret_cast<uintptr_t>(file);
  } else {
    return static_cast<size_t>(file);
  }
}

template <typename Handle = NativeFile>
Handle HandleOf(size_t index)
{
  if constexpr (std::is_pointer_v<Handle>) {
    return reinterpret_cast<Handle>(index);
  } else {
    return static_cast<Handle>(index);
  }
}

OpenFile* Find(NativeFile file)
{
  const size_t index = IndexOf(file);
  return index < g_open.size() ? g_open[index].get() : nullptr;
}

}  // namespace

void PutFileInMemory(const std::u16string& path, const uint8_t* bytes, size_t size)
{
  std::lock_guard<std::mutex> lock(g_mutex);
  auto stored = std::make_shared<StoredFile>();
  stored->bytes.assign(bytes, bytes + size);
  g_files[path] = std::move(stored);
}

bool GetFileInMemory(const std::u16string& path, std::vector<uint8_t>* bytes)
{
  std::lock_guard<std::mutex> lock(g_mutex);
  const auto found = g_files.find(path);
  if (found == g_files.end()) return false;
  *bytes = found->second->bytes;
  return true;
}

void ClearFilesInMemory()
{
  std::lock_guard<std::mutex> lock(g_mutex);
  g_files.clear();
}

StatusCode BackendOpen(const char16_t* path, uint32_t flags, NativeFile* file)
{
  std::lock_guard<std::mutex> lock(g_mutex);
  const bool shared = (flags & kFileShareRead) != 0 && (flags & kFileWritable) == 0;
  auto& stored = g_files[path];
  if (stored == nullptr) {
    if ((flags & kFileCreate) == 0) {
      g_files.erase(path);
      return kSysNotFound;
    }
    stored = std::make_shared<StoredFile>();
  }
  // Only read-only opens that share reading coexist.
  if (stored->exclusive || (!shared && stored->readers > 0)) return kSysAccessDenied;
  if ((flags & kFileCreate) != 0) stored->bytes.clear();
  if (shared) {
    ++stored->readers;
  } else {
    stored->exclusive = true;
  }
  // Handles are reused once closed, so the table stays as small as the most files open.
  size_t index = 1;  // 0 is never a handle, like a null HANDLE
  while (index < g_open.size() && g_open[index] != nullptr) ++index;
  if (index >= g_open.size()) g_open.resize(index + 1);
  g_open[index] = std::make_unique<OpenFile>(OpenFile{stored, shared});
  *file = HandleOf(index);
  return kStatusSuccess;
}

StatusCode BackendRead(NativeFile file, uint64_t offset, void* buffer, uint32_t length,
                       uint32_t* done)
{
  std::lock_guard<std::mutex> lock(g_mutex);
  const OpenFile* open = Find(file);
  if (open == nullptr) return kSysInvalidParameter;
  const std::vector<uint8_t>& bytes = open->stored->bytes;
  if (offset >= bytes.size()) return kStatusSuccess;
  const auto count = static_cast<uint32_t>(std::min<uint64_t>(length, bytes.size() - offset));
  std::memcpy(buffer, bytes.data() + offset, count);
  *done = count;
  return kStatusSuccess;
}

StatusCode BackendWrite(NativeFile file, uint64_t offset, const void* buffer, uint32_t length,
                        WriteMode, uint32_t* done)
{
  std::lock_guard<std::mutex> lock(g_mutex);
  const OpenFile* open = Find(file);
  if (open == nullptr) return kSysInvalidParameter;
  std::vector<uint8_t>& bytes = open->stored->bytes;
  if (offset + length > bytes.size()) bytes.resize(offset + length);
  std::memcpy(bytes.data() + offset, buffer, length);
  *done = length;
  return kStatusSuccess;
}

StatusCode BackendGetSize(NativeFile file, uint64_t* size)
{
  std::lock_guard<std::mutex> lock(g_mutex);
  const OpenFile* open = Find(file);
  if (open == nullptr) return kSysInvalidParameter;
  *size = open->stored->bytes.size();
  return kStatusSuccess;
}

StatusCode BackendSetSize(NativeFile file, uint64_t size)
{
  std::lock_guard<std::mutex> lock(g_mutex);
  const OpenFile* open = Find(file);
  if (open == nullptr) return kSysInvalidParameter;
  open->stored->bytes.resize(size);
  return kStatusSuccess;
}

StatusCode BackendFlush(NativeFile file)
{
  std::lock_guard<std::mutex> lock(g_mutex);
  return Find(file) != nullptr ? kStatusSuccess : kSysInvalidParameter;
}

StatusCode BackendClose(NativeFile file)
{
  std::lock_guard<std::mutex> lock(g_mutex);
  OpenFile* open = Find(file);
  if (open == nullptr) return kSysInvalidParameter;
  if (open->shared) {
    --open->stored->readers;
  } else {
    open->stored->exclusive = false;
  }
  g_open[IndexOf(file)].reset();
  return kStatusSuccess;
}

StatusCode BackendDelete(const char16_t* path)
{
  std::lock_guard<std::mutex> lock(g_mutex);
  const auto found = g_files.find(path);
  if (found == g_files.end()) return kSysNotFound;
  if (found->second->exclusive || found->second->readers > 0) return kSysAccessDenied;
  g_files.erase(found);
  return kStatusSuccess;
}

StatusCode BackendFreeSpace(const char16_t*, uint64_t* bytes)
{
  *bytes = UINT64_MAX / 2;
  return kStatusSuccess;
}

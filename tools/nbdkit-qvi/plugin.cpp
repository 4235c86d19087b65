// nbdkit-qvi-plugin.so: serves the disk inside a .qvi image over NBD.
//
//   nbdkit qvi file=IMAGE.qvi password=-        (prompts without echo)
//   nbdkit qvi file=IMAGE.qvi password=+FILE    (the first line of FILE)
//   nbdkit qvi file=IMAGE.qvi password=-FD      (read from an open file descriptor)
//
// The image is opened read-only when the server gets ready, so that a wrong password, a
// damaged or foreign file, a missing volume file or an image in use ends the start-up with
// the image untouched. It is closed again before nbdkit forks (into the background, or to
// run a command with --run), since a forked process would hold the image's lock, and
// opened read-only once more after the fork; the first client that may write opens it
// again for writing. Requests are served in parallel: the container's disk access lets
// requests on different blocks run side by side and keeps those on the same blocks apart.
// Reopening for writing waits until no request runs.
#define NBDKIT_API_VERSION 2
#include <nbdkit-plugin.h>

#include <cerrno>
#include <cstdlib>
#include <shared_mutex>
#include <sstream>
#include <string>

#include "image/disk_access.h"
#include "system/wipe.h"
#include "tools/messages/messages.h"
#include "tools/nbdkit-qvi/served_image.h"

#define THREAD_MODEL NBDKIT_THREAD_MODEL_PARALLEL

namespace {

std::string g_imagePath;     // as the user gave it, for the messages
std::string g_resolvedPath;  // absolute: nbdkit may change directory when it forks
std::string g_password;      // only until the image is opened
bool g_passwordGiven = false;
ServedImage* g_image = nullptr;
// Requests hold it shared; opening the image again for writing holds it alone.
std::shared_mutex g_reopening;

// The program's text for a failure and its code, one log line each.
void LogFailure(StatusCode status)
{
  std::istringstream lines(FailureReport(Activity::kOpen, status, g_imagePath));
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty()) nbdkit_error("%s", line.c_str());
  }
}

// A request's failure: what was asked, then the program's text and code.
int FailRequest(const std::string& request, StatusCode status)
{
  nbdkit_error("%s failed:", request.c_str());
  LogFailure(status);
  nbdkit_set_error(status == kImgReadOnly ? EROFS : EIO);
  return -1;
}

std::string Transfer(const char* verb, uint32_t count, uint64_t offset)
{
  return std::string(verb) + " of " + std::to_string(count) + " bytes at offset " +
         std::to_string(offset);
}

int QviConfig(const char* key, const char* value)
{
  const std::string name = key;
  if (name == "file") {
    // Not resolved here: a missing image is the container's to report, in its words.
    char* resolved = nbdkit_absolute_path(value);
    if (resolved == nullptr) return -1;
    g_imagePath = value;
    g_resolvedPath = resolved;
    std::free(resolved);
    return 0;
  }
  if (name == "password") {
    char* password = nullptr;
    if (nbdkit_read_password(value, &password) == -1) return -1;
    WipeText(g_password);
    g_password = password != nullptr ? password : "";
    if (password != nullptr) {
      WipeBytes(password, g_password.size());
      std::free(password);
    }
    g_passwordGiven = true;
    return 0;
  }
  nbdkit_error("unknown parameter '%s'", key);
  return -1;
}

int QviConfigComplete()
{
  if (g_resolvedPath.empty()) {
    nbdkit_error("the image is missing: give file=IMAGE.qvi");
    return -1;
  }
  if (!g_passwordGiven) {
    nbdkit_error("the password is missing: give password=- to be asked for it");
    return -1;
  }
  return 0;
}

int QviGetReady()
{
  g_image = new ServedImage;
  StatusCode status = g_image->Open(g_resolvedPath, g_password);
  WipeText(g_password);
  if (!IsFailure(status)) status = g_image->Suspend();
  if (IsFailure(status)) {
    LogFailure(status);
    return -1;
  }
  return 0;
}

int QviAfterFork()
{
  const StatusCode status = g_image->Reopen();
  if (IsFailure(status)) {
    LogFailure(status);
    return -1;
  }
  return 0;
}

void QviUnload()
{
  WipeText(g_password);
  if (g_image == nullptr) return;
  const StatusCode status = g_image->Close();
  if (IsFailure(status)) LogFailure(status);
  delete g_image;
  g_image = nullptr;
}

void* QviOpen(int readonly)
{
  if (!readonly) {
    const std::lock_guard<std::shared_mutex> lock(g_reopening);
    const StatusCode status = g_image->MakeWritable();
    if (IsFailure(status)) {
      LogFailure(status);
      return nullptr;
    }
  }
  return g_image;
}

int64_t QviGetSize(void* handle)
{
  const std::shared_lock<std::shared_mutex> lock(g_reopening);
  return static_cast<int64_t>(static_cast<ServedImage*>(handle)->capacity());
}

int QviCanWrite(void* handle)
{
  const std::shared_lock<std::shared_mutex> lock(g_reopening);
  return static_cast<ServedImage*>(handle)->writable() ? 1 : 0;
}

int QviCanFlush(void*)
{
  return 1;
}

int QviCanFua(void*)
{
  return NBDKIT_FUA_EMULATE;
}

// One handle serves every connection, so a flush on any connection makes every
// connection's finished writes durable.
int QviCanMultiConn(void*)
{
  return 1;
}

int QviBlockSize(void*, uint32_t* minimum, uint32_t* preferred, uint32_t* maximum)
{
  *minimum = 1;
  *preferred = 4096;
  *maximum = 0xFFFFFFFF;
  return 0;
}

int QviPread(void* handle, void* buffer, uint32_t count, uint64_t offset, uint32_t)
{
  const std::shared_lock<std::shared_mutex> lock(g_reopening);
  const StatusCode status = ImgReadDisk(static_cast<ServedImage*>(handle)->handle(), offset,
                                        static_cast<uint8_t*>(buffer), count);
  return IsFailure(status) ? FailRequest(Transfer("read", count, offset), status) : 0;
}

int QviPwrite(void* handle, const void* buffer, uint32_t count, uint64_t offset, uint32_t)
{
  const std::shared_lock<std::shared_mutex> lock(g_reopening);
  const StatusCode status = ImgWriteDisk(static_cast<ServedImage*>(handle)->handle(), offset,
                                         static_cast<const uint8_t*>(buffer), count);
  return IsFailure(status) ? FailRequest(Transfer("write", count, offset), status) : 0;
}

int QviFlush(void* handle, uint32_t)
{
  const std::shared_lock<std::shared_mutex> lock(g_reopening);
  const StatusCode status = ImgFlushDisk(static_cast<ServedImage*>(handle)->handle());
  return IsFailure(status) ? FailRequest("flush", status) : 0;
}

nbdkit_plugin MakePlugin()
{
  nbdkit_plugin plugin{};
  plugin.name = "qvi";
  plugin.longname = "Cryptelle encrypted disk image (.qvi)";
  plugin.version = CRYPTELLE_VERSION;
  plugin.description = "Serves the disk inside an encrypted .qvi image";
  plugin.unload = QviUnload;
  plugin.config = QviConfig;
  plugin.config_complete = QviConfigComplete;
  plugin.config_help =
      "file=<IMAGE.qvi>     (required) The image: its first volume file.\n"
      "password=<PASSWORD>  (required) The image's password: - to be asked,\n"
      "                     +FILE to read it from a file, -FD from a descriptor.";
  plugin.magic_config_key = "file";
  plugin.get_ready = QviGetReady;
  plugin.after_fork = QviAfterFork;
  plugin.open = QviOpen;
  plugin.get_size = QviGetSize;
  plugin.can_write = QviCanWrite;
  plugin.can_flush = QviCanFlush;
  plugin.can_fua = QviCanFua;
  plugin.can_multi_conn = QviCanMultiConn;
  plugin.block_size = QviBlockSize;
  plugin.pread = QviPread;
  plugin.pwrite = QviPwrite;
  plugin.flush = QviFlush;
  plugin.errno_is_preserved = 0;
  return plugin;
}

nbdkit_plugin g_plugin = MakePlugin();

}  // namespace

NBDKIT_REGISTER_PLUGIN(g_plugin)

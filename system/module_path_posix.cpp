#include <limits.h>
#include <unistd.h>

#include <cerrno>

#include "system/error_map.h"
#include "system/module_path.h"
#include "system/utf.h"

StatusCode SysGetModulePath(std::u16string* path)
{
  if (path == nullptr) return kSysInvalidParameter;
  char buffer[PATH_MAX];
  const ssize_t length = readlink("/proc/self/exe", buffer, sizeof buffer);
  if (length < 0) return MapErrno(errno);
  // readlink does not say whether it cut the path off; a full buffer counts as cut.
  if (static_cast<size_t>(length) >= sizeof buffer) return kSysBufferTooSmall;
  *path = Utf8ToUtf16(std::string(buffer, static_cast<size_t>(length)));
  return kStatusSuccess;
}

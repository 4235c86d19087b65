#include "system/module_path.h"

std::u16string PathBeside(const std::u16string& executablePath, std::u16string_view fileName)
{
  const size_t separator = executablePath.rfind(kSysPathSeparator);
  if (separator == std::u16string::npos) return executablePath;
  return executablePath.substr(0, separator + 1) + std::u16string(fileName);
}

StatusCode SysGetPathBesideModule(std::u16string_view fileName, std::u16string* path)
{
  std::u16string executable;
  const StatusCode status = SysGetModulePath(&executable);
  if (IsFailure(status)) return status;
  *path = PathBeside(executable, fileName);
  return kStatusSuccess;
}

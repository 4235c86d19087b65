#include <windows.h>

#include "app/directory_probe.h"
#include "system/wide_text_win.h"

namespace {

class CSystemDirectoryProbe final : public CDirectoryProbe {
 public:
  uint32_t TryCreateDirectory(const std::u16string& path) override
  {
    if (CreateDirectoryW(Wide(path), nullptr)) return 0;
    return GetLastError();
  }
};

}  // namespace

CDirectoryProbe& SystemDirectoryProbe()
{
  static CSystemDirectoryProbe probe;
  return probe;
}

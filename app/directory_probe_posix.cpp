// Outside Windows there are no drive letters: the probe refuses every path, so a drive is
// never taken for formatted and nothing is created.
#include "app/directory_probe.h"

namespace {

class CUnavailableDirectoryProbe final : public CDirectoryProbe {
 public:
  uint32_t TryCreateDirectory(const std::u16string&) override { return kErrorNotSupported; }
};

}  // namespace

CDirectoryProbe& SystemDirectoryProbe()
{
  static CUnavailableDirectoryProbe probe;
  return probe;
}

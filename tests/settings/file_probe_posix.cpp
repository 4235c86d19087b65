// The file store under test, in a fresh directory; inspected by parsing its file.
#include <fstream>
#include <sstream>

#include "settings/file_store.h"
#include "settings/file_store_format.h"
#include "support/temp_dir.h"
#include "tree_probe.h"

namespace {

class FileProbe : public TreeProbe {
 public:
  FileProbe() : store_(dir_.path().string()) {}

  SettingsBackend* Backend() override { return &store_; }

 protected:
  SettingsNode& CurrentTree() override
  {
    std::ifstream file(dir_.path() / "settings", std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    ParseSettingsText(text.str(), &tree_);
    return tree_;
  }

 private:
  TempDir dir_;
  FileSettingsBackend store_;
  SettingsNode tree_;
};

}  // namespace

std::unique_ptr<StoreProbe> MakePlatformProbe()
{
  return std::make_unique<FileProbe>();
}

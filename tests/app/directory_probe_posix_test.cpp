// Outside Windows the system's directory probe refuses every path and creates nothing.
#include <gtest/gtest.h>

#include <filesystem>

#include "app/directory_probe.h"
#include "support/temp_dir.h"

namespace {

TEST(DirectoryProbe, RefusesEveryPathAsNotSupportedAndCreatesNothing)
{
  TempDir dir;
  const std::filesystem::path wanted = dir.path() / "probe";
  EXPECT_EQ(TryCreateDirectory(wanted.u16string()), kErrorNotSupported);
  EXPECT_EQ(TryCreateDirectory(u"P:\\"), kErrorNotSupported);
  EXPECT_FALSE(std::filesystem::exists(wanted));
  EXPECT_FALSE(std::filesystem::exists("P:\\"));
}

}  // namespace

// The system's directory probe on Windows: CreateDirectoryW's error numbers.
#include <gtest/gtest.h>

#include "app/directory_probe.h"
#include "support/temp_dir.h"

namespace {

TEST(DirectoryProbe, CreatesADirectoryThenReportsThatItExists)
{
  TempDir dir;
  const std::filesystem::path wanted = dir.path() / "probe";
  EXPECT_EQ(TryCreateDirectory(wanted.u16string()), 0u);
  EXPECT_TRUE(std::filesystem::is_directory(wanted));
  EXPECT_EQ(TryCreateDirectory(wanted.u16string()), kErrorAlreadyExists);
}

TEST(DirectoryProbe, AMissingParentIsPathNotFound)
{
  TempDir dir;
  EXPECT_EQ(TryCreateDirectory((dir.path() / "missing" / "probe").u16string()), 3u);
}

}  // namespace

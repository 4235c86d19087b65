#include "system/module_path.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

TEST(ModulePathTest, PathNamesThisTestProgram)
{
  std::u16string path;
  ASSERT_EQ(SysGetModulePath(&path), kStatusSuccess);
  const std::filesystem::path file(path);
  EXPECT_TRUE(file.is_absolute());
  EXPECT_TRUE(std::filesystem::is_regular_file(file));
  EXPECT_EQ(file.stem(), "system_tests");
  EXPECT_NE(path.rfind(kSysPathSeparator), std::u16string::npos);
}

TEST(ModulePathTest, MissingOutputIsAnInvalidParameter)
{
  EXPECT_EQ(SysGetModulePath(nullptr), kSysInvalidParameter);
}

}  // namespace

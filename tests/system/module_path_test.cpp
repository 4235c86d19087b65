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

TEST(ModulePathTest, PathBesideReplacesTheLastComponent)
{
  const std::u16string s(1, kSysPathSeparator);
  EXPECT_EQ(PathBeside(u"C:" + s + u"app" + s + u"ctellmon.exe", u"ctell.exe"),
            u"C:" + s + u"app" + s + u"ctell.exe");
  EXPECT_EQ(PathBeside(s + u"app" + s, u"ctell.exe"), s + u"app" + s + u"ctell.exe");
  EXPECT_EQ(PathBeside(u"ctellmon.exe", u"ctell.exe"), u"ctellmon.exe");
}

TEST(ModulePathTest, PathBesideModuleIsInThisTestProgramsFolder)
{
  std::u16string program;
  std::u16string beside;
  ASSERT_EQ(SysGetModulePath(&program), kStatusSuccess);
  ASSERT_EQ(SysGetPathBesideModule(u"other.exe", &beside), kStatusSuccess);
  EXPECT_EQ(std::filesystem::path(beside).parent_path(),
            std::filesystem::path(program).parent_path());
  EXPECT_EQ(std::filesystem::path(beside).filename(), "other.exe");
}

}  // namespace

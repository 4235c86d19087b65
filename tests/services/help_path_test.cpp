// The help file lies beside the program.
#include <gtest/gtest.h>

#include "services/help.h"
#include "system/module_path.h"

namespace {

TEST(HelpFilePath, IsTheProgramsFolderAndCtellChm)
{
  std::u16string program;
  ASSERT_EQ(SysGetModulePath(&program), kStatusSuccess);
  std::u16string help;
  ASSERT_EQ(HelpFilePath(&help), kStatusSuccess);
  const size_t folderLength = program.rfind(kSysPathSeparator) + 1;
  EXPECT_EQ(help, program.substr(0, folderLength) + u"ctell.chm");
}

TEST(HelpFilePath, MissingOutputIsAnInvalidParameter)
{
  EXPECT_EQ(HelpFilePath(nullptr), kSysInvalidParameter);
}

}  // namespace

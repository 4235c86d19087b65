// The system's help opener reports a missing help file instead of opening the viewer.
#include <gtest/gtest.h>

#include <filesystem>

#include "services/help.h"

namespace {

TEST(SystemHelpService, MissingHelpFileIsNotFound)
{
  std::u16string path;
  ASSERT_EQ(HelpFilePath(&path), kStatusSuccess);
  if (std::filesystem::exists(std::filesystem::path(path))) {
    GTEST_SKIP() << "a help file lies beside the test program";
  }
  EXPECT_EQ(ShowHelpContents(nullptr), kSysNotFound);
  EXPECT_EQ(ShowHelpTopic(nullptr, 114), kSysNotFound);
}

}  // namespace

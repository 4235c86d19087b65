// The system's help opener reports a missing help file instead of opening the viewer.
#include "services/help_win.h"

#include <gtest/gtest.h>

namespace {

TEST(SystemHelpService, MissingHelpFileIsNotFound)
{
  const std::u16string missing = u"C:\\no such folder\\ctell.chm";
  EXPECT_EQ(OpenHelpFile(missing, nullptr, kHelpDisplayContents, 0), kSysNotFound);
  EXPECT_EQ(OpenHelpFile(missing, nullptr, kHelpContext, 114), kSysNotFound);
}

}  // namespace

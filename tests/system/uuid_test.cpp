#include "system/uuid.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>

TEST(SysCreateUuid, MissingOutputIsRefused)
{
  EXPECT_EQ(SysCreateUuid(nullptr), kSysInvalidParameter);
}

TEST(SysCreateUuid, IdentifiersAreRandomVersion4AndDistinct)
{
  std::set<std::string> seen;
  for (int i = 0; i < 1000; ++i) {
    Guid id;
    ASSERT_EQ(SysCreateUuid(&id), kStatusSuccess);
    EXPECT_EQ(id.data3 >> 12, 4) << "version";
    EXPECT_EQ(id.data4[0] >> 6, 2) << "variant";
    seen.insert(std::string(reinterpret_cast<const char*>(&id), sizeof id));
  }
  EXPECT_EQ(seen.size(), 1000u);
}

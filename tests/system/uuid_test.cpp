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

TEST(SysSetUuidSequence, HandsOutCountedIdentifiersUntilReleased)
{
  const Guid first{0xFFFFFFFEu, 0x1234, 0x5678, {1, 2, 3, 4, 5, 6, 7, 8}};
  SysSetUuidSequence(&first);
  Guid a{}, b{}, c{};
  ASSERT_EQ(SysCreateUuid(&a), kStatusSuccess);
  ASSERT_EQ(SysCreateUuid(&b), kStatusSuccess);
  ASSERT_EQ(SysCreateUuid(&c), kStatusSuccess);
  EXPECT_EQ(SysCreateUuid(nullptr), kSysInvalidParameter);
  SysSetUuidSequence(nullptr);
  EXPECT_EQ(std::memcmp(&a, &first, sizeof a), 0);
  EXPECT_EQ(b.data1, 0xFFFFFFFFu);
  EXPECT_EQ(c.data1, 0u);  // wraps around
  EXPECT_EQ(std::memcmp(c.data4, first.data4, 8), 0);
  Guid real{};
  ASSERT_EQ(SysCreateUuid(&real), kStatusSuccess);
  EXPECT_EQ(real.data3 >> 12, 4) << "a real identifier again";
}

// Overwriting secrets before their memory goes back.
#include "system/wipe.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

TEST(Wipe, BytesBecomeZero)
{
  std::array<uint8_t, 5> key{1, 2, 3, 4, 5};
  WipeBytes(key.data(), 4);
  EXPECT_EQ(key, (std::array<uint8_t, 5>{0, 0, 0, 0, 5}));
}

TEST(Wipe, TextIsEmptiedAndItsWholeBufferOverwritten)
{
  std::u16string password = u"a password longer than any inline buffer";
  password.resize(5);  // the rest of the old text still sits behind the end
  const char16_t* buffer = password.data();
  const size_t capacity = password.capacity();
  WipeText(password);
  EXPECT_TRUE(password.empty());
  ASSERT_EQ(password.data(), buffer);  // emptying keeps the block, so it can be looked at
  EXPECT_TRUE(std::all_of(buffer, buffer + capacity, [](char16_t c) { return c == 0; }));
}

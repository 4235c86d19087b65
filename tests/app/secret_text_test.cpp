// A password's characters are overwritten where they lie before the text is emptied.
#include "app/secret_text.h"

#include <gtest/gtest.h>

namespace {

void ExpectWipedInPlace(std::u16string text)
{
  const size_t length = text.size();
  const char16_t* const buffer = text.data();
  WipeSecretText(text);
  EXPECT_TRUE(text.empty());
  EXPECT_EQ(text.data(), buffer);
  for (size_t i = 0; i < length; ++i) EXPECT_EQ(buffer[i], u'\0') << "character " << i;
}

TEST(SecretText, AShortPasswordIsOverwrittenWhereItLies)
{
  ExpectWipedInPlace(u"secret");
}

TEST(SecretText, ALongPasswordIsOverwrittenInItsAllocatedBuffer)
{
  ExpectWipedInPlace(std::u16string(100, u'x') + u"tail");
}

TEST(SecretText, AnEmptyTextStaysEmpty)
{
  std::u16string text;
  WipeSecretText(text);
  EXPECT_TRUE(text.empty());
}

}  // namespace

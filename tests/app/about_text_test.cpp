// The About box's texts.
#include "app/about_text.h"

#include <gtest/gtest.h>

TEST(AboutTextTest, VersionShowsTheFourPartsOfTheTwoWords)
{
  EXPECT_EQ(AboutVersionText(0x00010000, 0x00000000), u"Version 1.0.0.0");
  EXPECT_EQ(AboutVersionText(0x0002000C, 0x00220FA1), u"Version 2.12.34.4001");
}

TEST(AboutTextTest, CryptoLibraryLineNamesTheLibrarysVersion)
{
  EXPECT_EQ(AboutCryptoLibraryText("OpenSSL 3.0.17 1 Jul 2025"),
            u"Encryption by OpenSSL 3.0.17 1 Jul 2025");
}

// The crypto library's version text, as the About box shows it.
#include "crypto/library_version.h"

#include <gtest/gtest.h>

#include <openssl/opensslv.h>

TEST(LibraryVersionTest, NamesOpenSslWithTheVersionItWasBuiltWith)
{
  const std::string version = CryptoLibraryVersion();
  EXPECT_EQ(version.rfind("OpenSSL ", 0), 0u) << version;
  EXPECT_NE(version.find(OPENSSL_VERSION_STR), std::string::npos) << version;
}

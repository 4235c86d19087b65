#include "crypto/library_version.h"

#include <openssl/crypto.h>

std::string CryptoLibraryVersion()
{
  return OpenSSL_version(OPENSSL_VERSION);
}

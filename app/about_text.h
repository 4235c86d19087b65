// The texts of the About box: the program's version and the crypto library it uses.
#pragma once

#include <cstdint>
#include <string>

// "Version 1.0.0.0": the four parts of a version resource's product version, given as its
// two 32-bit words (major and minor in the first, build and revision in the second).
std::u16string AboutVersionText(uint32_t mostSignificant, uint32_t leastSignificant);

// "Encryption by OpenSSL 3.0.17 1 Jul 2025": the crypto library's own version text.
std::u16string AboutCryptoLibraryText(const std::string& libraryVersion);

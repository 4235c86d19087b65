// The crypto library the engine is built on, as it names itself.
#pragma once

#include <string>

// The library's version text, e.g. "OpenSSL 3.0.17 1 Jul 2025".
std::string CryptoLibraryVersion();

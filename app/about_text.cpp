#include "app/about_text.h"

#include "res/format_text.h"
#include "res/resource.h"
#include "res/texts.h"
#include "system/utf.h"

std::u16string AboutVersionText(uint32_t mostSignificant, uint32_t leastSignificant)
{
  const std::u16string number =
      FormatText(u"%u.%u.%u.%u", {mostSignificant >> 16, mostSignificant & 0xFFFF,
                                  leastSignificant >> 16, leastSignificant & 0xFFFF});
  return FormatText(LoadText(IDS_ABOUT_VERSION), {number});
}

std::u16string AboutCryptoLibraryText(const std::string& libraryVersion)
{
  return FormatText(LoadText(IDS_ABOUT_CRYPTO_LIBRARY), {Utf8ToUtf16(libraryVersion)});
}

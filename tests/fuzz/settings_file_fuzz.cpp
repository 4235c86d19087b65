// The settings file store's text from untrusted bytes: parsing never fails, and whatever
// it reads formats to a text that reads back as the same store.
#include <cstdint>
#include <string>

#include "settings/file_store_format.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
  const std::string text(reinterpret_cast<const char*>(data), size);
  SettingsNode root;
  ParseSettingsText(text, &root);
  const std::string formatted = FormatSettingsText(root);
  SettingsNode again;
  ParseSettingsText(formatted, &again);
  if (!SameTree(root, again) || FormatSettingsText(again) != formatted) __builtin_trap();
  return 0;
}

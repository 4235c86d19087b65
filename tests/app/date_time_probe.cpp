// Prints the date-time text of the epoch and of nine hours later, one per line, in the
// process's time zone; the two-zone test runs it under different zones.
#include <cstdio>

#include "app/display_text.h"
#include "system/utf.h"

int main()
{
  for (const uint64_t seconds : {uint64_t{0}, uint64_t{9 * 3600}}) {
    std::printf("%s\n", Utf16ToUtf8(FormatDateTimeText(seconds).c_str()).c_str());
  }
  return 0;
}

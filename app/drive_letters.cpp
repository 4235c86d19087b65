#include "app/drive_letters.h"

namespace {

constexpr int kLetterCount = 26;

// The bit in a drive mask of a drive letter, in either case; none for any other character.
uint32_t LetterBit(char16_t letter)
{
  if (letter >= u'a' && letter <= u'z') letter = static_cast<char16_t>(letter - u'a' + u'A');
  if (letter < u'A' || letter > u'Z') return 0;
  return 1u << (letter - u'A');
}

uint32_t NetworkLetters(const std::vector<std::u16string>& localNames)
{
  uint32_t letters = 0;
  for (const std::u16string& name : localNames) {
    if (name.size() >= 2 && name[1] == u':') letters |= LetterBit(name[0]);
  }
  return letters;
}

}  // namespace

std::u16string FreeDriveLetters(const DriveLetterFacts& facts)
{
  const uint32_t taken =
      facts.lettersInUse | facts.hiddenLetters | NetworkLetters(facts.networkLocalNames);
  std::u16string free;
  for (int index = 0; index < kLetterCount; ++index) {
    if ((taken & (1u << index)) == 0) free.push_back(static_cast<char16_t>(u'A' + index));
  }
  return free;
}

std::vector<std::u16string> DriveListEntries(std::u16string_view letters)
{
  std::vector<std::u16string> entries;
  for (const char16_t letter : letters) entries.push_back({letter, u':'});
  return entries;
}

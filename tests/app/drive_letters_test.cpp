// The free drive letters: the two masks, the connected network drives, the order.
#include "app/drive_letters.h"

#include <gtest/gtest.h>

namespace {

constexpr uint32_t Bit(char letter)
{
  return 1u << (letter - 'A');
}

TEST(DriveLetters, WithNothingTakenEveryLetterFromAToZIsFreeInOrder)
{
  EXPECT_EQ(FreeDriveLetters({}), u"ABCDEFGHIJKLMNOPQRSTUVWXYZ");
}

TEST(DriveLetters, LettersInUseAndHiddenByPolicyAreSkipped)
{
  DriveLetterFacts facts;
  facts.lettersInUse = Bit('A') | Bit('C') | Bit('D');
  facts.hiddenLetters = Bit('B') | Bit('Y') | Bit('D');
  EXPECT_EQ(FreeDriveLetters(facts), u"EFGHIJKLMNOPQRSTUVWXZ");
}

TEST(DriveLetters, MaskBitsAboveZMeanNothing)
{
  DriveLetterFacts facts;
  facts.lettersInUse = 0xFC000000;
  facts.hiddenLetters = 0xFC000000;
  EXPECT_EQ(FreeDriveLetters(facts), u"ABCDEFGHIJKLMNOPQRSTUVWXYZ");
}

TEST(DriveLetters, AConnectedNetworkDriveTakesItsLetter)
{
  DriveLetterFacts facts;
  facts.lettersInUse = ~Bit('M') & ~Bit('N') & ~Bit('Z') & 0x03FFFFFF;
  facts.networkLocalNames = {u"Z:"};
  EXPECT_EQ(FreeDriveLetters(facts), u"MN");
  facts.networkLocalNames = {u"n:", u"Z:"};
  EXPECT_EQ(FreeDriveLetters(facts), u"M");
}

TEST(DriveLetters, OnlyLocalNamesWithAColonSecondCountAndOnlyForDriveLetters)
{
  DriveLetterFacts facts;
  facts.lettersInUse = ~Bit('M') & ~Bit('N') & 0x03FFFFFF;
  facts.networkLocalNames = {u"", u"M", u"\\\\server\\share", u"MN:", u"1:", u"@:", u"[:"};
  EXPECT_EQ(FreeDriveLetters(facts), u"MN");
}

TEST(DriveLetters, WithEveryLetterTakenTheListIsEmpty)
{
  DriveLetterFacts facts;
  facts.lettersInUse = 0x03FFFFFF;
  EXPECT_EQ(FreeDriveLetters(facts), u"");
  EXPECT_TRUE(DriveListEntries(FreeDriveLetters(facts)).empty());
}

TEST(DriveLetters, TheDialogsEntriesAreLetterAndColonInTheSameOrder)
{
  EXPECT_EQ(DriveListEntries(u"ABZ"), (std::vector<std::u16string>{u"A:", u"B:", u"Z:"}));
}

}  // namespace

#include "system/utf.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// UTF-8 text spelled out byte by byte, so the test does not depend on how the compiler
// encodes its source.
std::string Bytes(std::initializer_list<unsigned char> bytes)
{
  std::string text;
  for (unsigned char byte : bytes) text += static_cast<char>(byte);
  return text;
}

const std::string kReplacementUtf8 = Bytes({0xEF, 0xBF, 0xBD});

}  // namespace

TEST(Utf16ToUtf8, NullAndEmptyGiveEmptyText)
{
  EXPECT_EQ(Utf16ToUtf8(nullptr), "");
  EXPECT_EQ(Utf16ToUtf8(u""), "");
}

TEST(Utf16ToUtf8, AsciiIsCopied)
{
  EXPECT_EQ(Utf16ToUtf8(u"C:/images/disk 1.qvi"), "C:/images/disk 1.qvi");
}

TEST(Utf16ToUtf8, EncodesTwoThreeAndFourByteSequences)
{
  const char16_t accent[] = {0x00E9, 0};
  EXPECT_EQ(Utf16ToUtf8(accent), Bytes({0xC3, 0xA9}));
  const char16_t japan[] = {0x65E5, 0x672C, 0};
  EXPECT_EQ(Utf16ToUtf8(japan), Bytes({0xE6, 0x97, 0xA5, 0xE6, 0x9C, 0xAC}));
  // U+1F600 as the surrogate pair D83D DE00.
  const char16_t emoji[] = {0xD83D, 0xDE00, 0};
  EXPECT_EQ(Utf16ToUtf8(emoji), Bytes({0xF0, 0x9F, 0x98, 0x80}));
  // The last code point of each sequence length.
  const char16_t limits[] = {0x007F, 0x07FF, 0xFFFF, 0xDBFF, 0xDFFF, 0};
  EXPECT_EQ(Utf16ToUtf8(limits),
            Bytes({0x7F, 0xDF, 0xBF, 0xEF, 0xBF, 0xBF, 0xF4, 0x8F, 0xBF, 0xBF}));
}

TEST(Utf16ToUtf8, LoneSurrogatesBecomeReplacementCharacters)
{
  const char16_t highAlone[] = {u'a', 0xD83D, u'b', 0};
  EXPECT_EQ(Utf16ToUtf8(highAlone), "a" + kReplacementUtf8 + "b");
  const char16_t highAtEnd[] = {u'a', 0xD83D, 0};
  EXPECT_EQ(Utf16ToUtf8(highAtEnd), "a" + kReplacementUtf8);
  const char16_t lowAlone[] = {0xDE00, u'b', 0};
  EXPECT_EQ(Utf16ToUtf8(lowAlone), kReplacementUtf8 + "b");
  const char16_t reversed[] = {0xDE00, 0xD83D, 0};
  EXPECT_EQ(Utf16ToUtf8(reversed), kReplacementUtf8 + kReplacementUtf8);
}

TEST(Utf8ToUtf16, DecodesTwoThreeAndFourByteSequences)
{
  EXPECT_EQ(Utf8ToUtf16(""), u"");
  EXPECT_EQ(Utf8ToUtf16("disk.qvi"), u"disk.qvi");
  EXPECT_EQ(Utf8ToUtf16(Bytes({0xC3, 0xA9})), std::u16string(1, char16_t{0x00E9}));
  EXPECT_EQ(Utf8ToUtf16(Bytes({0xE6, 0x97, 0xA5, 0xE6, 0x9C, 0xAC})),
            (std::u16string{char16_t{0x65E5}, char16_t{0x672C}}));
  EXPECT_EQ(Utf8ToUtf16(Bytes({0xF0, 0x9F, 0x98, 0x80})),
            (std::u16string{char16_t{0xD83D}, char16_t{0xDE00}}));
  EXPECT_EQ(Utf8ToUtf16(Bytes({0xF4, 0x8F, 0xBF, 0xBF})),
            (std::u16string{char16_t{0xDBFF}, char16_t{0xDFFF}}));
}

TEST(Utf8ToUtf16, MalformedSequencesBecomeReplacementCharacters)
{
  const std::u16string r(1, char16_t{0xFFFD});
  // A continuation byte without a lead byte.
  EXPECT_EQ(Utf8ToUtf16(Bytes({'a', 0x80, 'b'})), u"a" + r + u"b");
  // Overlong forms of '/' and of U+0000.
  EXPECT_EQ(Utf8ToUtf16(Bytes({0xC0, 0xAF})), r + r);
  EXPECT_EQ(Utf8ToUtf16(Bytes({0xE0, 0x80, 0x80})), r);
  // A sequence cut short, at the end and before an ASCII byte.
  EXPECT_EQ(Utf8ToUtf16(Bytes({'a', 0xE6, 0x97})), u"a" + r);
  EXPECT_EQ(Utf8ToUtf16(Bytes({0xE6, 0x97, 'b'})), r + u"b");
  // An encoded surrogate and a code point beyond U+10FFFF.
  EXPECT_EQ(Utf8ToUtf16(Bytes({0xED, 0xA0, 0x80})), r);
  EXPECT_EQ(Utf8ToUtf16(Bytes({0xF4, 0x90, 0x80, 0x80})), r);
  // Bytes that never start a sequence.
  EXPECT_EQ(Utf8ToUtf16(Bytes({0xF5, 'x', 0xFF})), r + u"x" + r);
}

TEST(Utf, TextSurvivesTheRoundTrip)
{
  const char16_t mixed[] = {u'C',   u':', u'/', 0x00E9, 0x65E5, 0x672C, 0xD83D,
                            0xDE00, u'.', u'q', u'v',   u'i',   0};
  const std::string utf8 = Utf16ToUtf8(mixed);
  EXPECT_EQ(utf8.size(), 3 + 2 + 6 + 4 + 4u);
  EXPECT_EQ(Utf8ToUtf16(utf8), std::u16string(mixed));
}

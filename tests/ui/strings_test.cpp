// String-table loading by id.
#include <iterator>

#include "support/test_resources.h"
#include "support/ui_harness.h"
#include "ui/strings.h"

namespace {

TEST(StringsTest, LoadsTheTextOfAnId)
{
  EXPECT_EQ(LoadResourceString(IDS_CAPTION), L"Harness caption");
  EXPECT_EQ(LoadResourceString(IDS_HEADER_SUBTITLE), L"Header subtitle of an interior page.");
}

TEST(StringsTest, MissingIdGivesTheEmptyText)
{
  EXPECT_EQ(LoadResourceString(299), L"");   // missing inside an existing block
  EXPECT_EQ(LoadResourceString(9999), L"");  // no block at all
}

TEST(StringsTest, EmbeddedNulCharactersAreKept)
{
  const std::wstring filter = LoadResourceString(IDS_FILTER);
  constexpr wchar_t kExpected[] = L"Images (.qvi)\0*.qvi\0All Files (*.*)\0*.*\0\0";
  const std::wstring expected(kExpected, std::size(kExpected) - 1);
  EXPECT_EQ(filter, expected);
}

}  // namespace

// The filter list handed to the system's file dialogs: entries ended by NUL, the list by one
// more NUL, whether or not the string table's text already carries the ending.
#include <gtest/gtest.h>

#include <string>

#include "res/resource.h"
#include "res/texts.h"
#include "services/file_dialog.h"

namespace {

using namespace std::string_literals;

const std::u16string kImageFilter =
    u"Cryptelle Image File (.qvi)\0*.qvi\0All Files (*.*)\0*.*\0\0"s;

TEST(TerminatedFilterList, TableTextWithItsEndingStaysAsItIs)
{
  EXPECT_EQ(TerminatedFilterList(LoadText(IDS_IMAGE_FILE_FILTER)), kImageFilter);
}

TEST(TerminatedFilterList, MissingEndingIsAdded)
{
  EXPECT_EQ(TerminatedFilterList(u"Cryptelle Image File (.qvi)\0*.qvi\0All Files (*.*)\0*.*"s),
            kImageFilter);
  EXPECT_EQ(TerminatedFilterList(u"Cryptelle Image File (.qvi)\0*.qvi\0All Files (*.*)\0*.*\0"s),
            kImageFilter);
}

TEST(TerminatedFilterList, ListEndsAtTheFirstEmptyEntry)
{
  EXPECT_EQ(TerminatedFilterList(u"Images\0*.qvi\0\0Ignored\0*.*\0\0"s), u"Images\0*.qvi\0\0"s);
}

TEST(TerminatedFilterList, EmptyTextGivesTheEmptyList)
{
  EXPECT_EQ(TerminatedFilterList(u""), u"\0"s);
}

}  // namespace

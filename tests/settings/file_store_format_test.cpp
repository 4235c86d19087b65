#include "settings/file_store_format.h"

#include <gtest/gtest.h>

#include "settings/settings_backend.h"

namespace {

void Add(SettingsNode& root, const std::u16string& path, const std::u16string& name, uint32_t type,
         const std::vector<uint8_t>& data)
{
  std::vector<std::u16string> names;
  ASSERT_EQ(SplitKeyPath(path.c_str(), &names), kStatusSuccess);
  bool created = false;
  SettingsNode* key = CreateKey(root, names, &created);
  ASSERT_EQ(SetNodeValue(*key, name.c_str(), type, data.data(), static_cast<uint32_t>(data.size())),
            kStatusSuccess);
}

const SettingsValue* Lookup(SettingsNode& root, const std::u16string& path,
                            const std::u16string& name)
{
  std::vector<std::u16string> names;
  SplitKeyPath(path.c_str(), &names);
  SettingsNode* key = FindKey(root, names);
  return key != nullptr ? key->FindValue(name) : nullptr;
}

TEST(FileStoreFormatTest, StoreIsWrittenAsKeyLinesAndHexadecimalValues)
{
  SettingsNode root;
  Add(root, u"Software\\Pellmora\\Cryptelle\\1.0", u"MountInvisible", 4, {1, 0, 0, 0});
  Add(root, u"Software\\Pellmora\\Cryptelle\\1.0\\MRU\\Recent Document List", u"Document1", 1,
      {u'C', 0, u':', 0, 0, 0});
  EXPECT_EQ(FormatSettingsText(root),
            "Cryptelle settings store 1\n"
            "[Software]\n"
            "[Software\\Pellmora]\n"
            "[Software\\Pellmora\\Cryptelle]\n"
            "[Software\\Pellmora\\Cryptelle\\1.0]\n"
            "MountInvisible=4:01000000\n"
            "[Software\\Pellmora\\Cryptelle\\1.0\\MRU]\n"
            "[Software\\Pellmora\\Cryptelle\\1.0\\MRU\\Recent Document List]\n"
            "Document1=1:43003a000000\n");
}

TEST(FileStoreFormatTest, EveryNameTypeAndByteSurvivesARoundTrip)
{
  SettingsNode root;
  Add(root, u"", u"root value", 0, {});
  Add(root, u"Odd [key] = 100%; \x0001 name\\Größe", u"=;[x]%\\\n\r\t", 0xFFFFFFFF,
      {0, 0xFF, 0x7F, 0x80});
  Add(root, u"Odd [key] = 100%; \x0001 name", u"", 11, {1, 2, 3, 4, 5, 6, 7, 8});
  Add(root, u"Empty\\Key\\Only", u"x", 1, {});
  Add(root, u"\xD83D\xDE00 Emoji", u"\x00e9t\x00e9", 3, std::vector<uint8_t>(300, 0xAB));
  SettingsNode empty;
  std::vector<std::u16string> names = {u"Lonely"};
  bool created = false;
  CreateKey(root, names, &created);
  SettingsNode parsed;
  ParseSettingsText(FormatSettingsText(root), &parsed);
  EXPECT_TRUE(SameTree(root, parsed));
  const std::string text = FormatSettingsText(root);
  EXPECT_NE(text.find("[Lonely]\n"), std::string::npos);
  EXPECT_EQ(text.find('\r'), std::string::npos);
  EXPECT_EQ(text.find('\t'), std::string::npos);
}

TEST(FileStoreFormatTest, TextWithoutTheFirstLineReadsAsEmpty)
{
  SettingsNode root;
  Add(root, u"Keep", u"V", 4, {1, 0, 0, 0});
  ParseSettingsText("[A]\nV=4:01000000\n", &root);
  EXPECT_TRUE(root.subkeys.empty());
  EXPECT_TRUE(root.values.empty());
  ParseSettingsText("", &root);
  EXPECT_TRUE(root.subkeys.empty());
  ParseSettingsText(std::string("\0\xff\xfe garbage", 11), &root);
  EXPECT_TRUE(root.subkeys.empty());
}

TEST(FileStoreFormatTest, BrokenLinesAreSkippedAndTheRestIsRead)
{
  SettingsNode root;
  ParseSettingsText(
      "Cryptelle settings store 1\r\n"
      "; a comment\r\n"
      "\r\n"
      "[Good]\r\n"
      "A=4:01000000\r\n"
      "NoEquals\r\n"
      "B=4\r\n"
      "C=x:00\r\n"
      "D=4:0\r\n"
      "E=4:zz\r\n"
      "F=99999999999:00\r\n"
      "G=-1:00\r\n"
      "Bad%ZZ=4:00\r\n"
      "Bad%C3=4:00\r\n"
      "H=3:\r\n"
      "[Broken\r\n"
      "I=4:01000000\r\n"
      "[Empty\\\\Part]\r\n"
      "J=4:01000000\r\n"
      "[Good]\r\n"
      "K=1:4100\r\n",
      &root);
  ASSERT_EQ(root.subkeys.size(), 1u);
  const SettingsNode& good = *root.subkeys[0];
  ASSERT_EQ(good.values.size(), 3u);
  EXPECT_EQ(good.values[0].name, u"A");
  EXPECT_EQ(good.values[1].name, u"H");
  EXPECT_TRUE(good.values[1].data.empty());
  EXPECT_EQ(good.values[2].name, u"K");
  EXPECT_TRUE(good.subkeys.empty());
}

TEST(FileStoreFormatTest, NameGivenTwiceKeepsItsFirstSpellingAndLastValue)
{
  SettingsNode root;
  ParseSettingsText(
      "Cryptelle settings store 1\n[Key]\nName=4:01000000\n[KEY]\nNAME=3:02\n[other]\n", &root);
  ASSERT_EQ(root.subkeys.size(), 2u);
  EXPECT_EQ(root.subkeys[0]->name, u"Key");
  const SettingsValue* value = Lookup(root, u"key", u"name");
  ASSERT_NE(value, nullptr);
  EXPECT_EQ(value->name, u"Name");
  EXPECT_EQ(value->type, 3u);
  EXPECT_EQ(value->data, std::vector<uint8_t>{2});
}

TEST(FileStoreFormatTest, ValuesBeforeTheFirstKeyLineBelongToTheRoot)
{
  SettingsNode root;
  ParseSettingsText("Cryptelle settings store 1\nTop=4:05000000\n[]\nAlso=3:\n", &root);
  EXPECT_NE(root.FindValue(u"Top"), nullptr);
  EXPECT_NE(root.FindValue(u"Also"), nullptr);
  EXPECT_TRUE(root.subkeys.empty());
}

TEST(FileStoreFormatTest, KeyNameLongerThan255CharactersIsRefused)
{
  SettingsNode root;
  ParseSettingsText("Cryptelle settings store 1\n[" + std::string(256, 'k') + "]\nV=4:\n[" +
                        std::string(255, 'k') + "]\n",
                    &root);
  ASSERT_EQ(root.subkeys.size(), 1u);
  EXPECT_EQ(root.subkeys[0]->name.size(), 255u);
  EXPECT_TRUE(root.subkeys[0]->values.empty());
}

TEST(SettingsTreeTest, KeyPathWithAnEmptyOrOverlongNameIsRefused)
{
  std::vector<std::u16string> names;
  EXPECT_EQ(SplitKeyPath(u"A\\\\B", &names), kSysInvalidParameter);
  EXPECT_EQ(SplitKeyPath(u"\\A", &names), kSysInvalidParameter);
  EXPECT_EQ(SplitKeyPath(u"A\\", &names), kSysInvalidParameter);
  EXPECT_EQ(SplitKeyPath((std::u16string(256, u'k')).c_str(), &names), kSysInvalidParameter);
  EXPECT_EQ(SplitKeyPath(u"A\\B\\C", &names), kStatusSuccess);
  EXPECT_EQ(names, (std::vector<std::u16string>{u"A", u"B", u"C"}));
  EXPECT_EQ(SplitKeyPath(u"", &names), kStatusSuccess);
  EXPECT_TRUE(names.empty());
}

TEST(FileStoreFormatTest, OnlyNamesWithoutLoneSurrogatesAreStorable)
{
  EXPECT_TRUE(IsStorableName(u"Document1"));
  EXPECT_TRUE(IsStorableName(u"\xD83D\xDE00"));
  EXPECT_FALSE(IsStorableName(std::u16string(1, static_cast<char16_t>(0xD800))));
  EXPECT_FALSE(IsStorableName(std::u16string(u"a\0b", 3)));
}

}  // namespace

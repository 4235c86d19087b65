// The same behaviour from every store: the registry's, which the portable stores copy.
#include <gtest/gtest.h>

#include <cstring>

#include "settings/settings_backend.h"
#include "settings_fixture.h"

namespace {

class BackendContractTest : public SettingsTest {
 protected:
  void SetUp() override
  {
    SettingsTest::SetUp();
    SettingsKeyPtr root;
    ASSERT_EQ(CurrentSettingsBackend().OpenUserRoot(&root), kStatusSuccess);
    ASSERT_EQ(root->CreateSubKey(u"Software\\Contract", &key_), kStatusSuccess);
  }

  void TearDown() override
  {
    key_.reset();
    SettingsTest::TearDown();
  }

  SettingsKey& Key() { return *key_; }

  StatusCode Set(const char16_t* name, uint32_t type, const std::vector<uint8_t>& data)
  {
    return key_->SetValue(name, type, data.data(), static_cast<uint32_t>(data.size()));
  }

 private:
  SettingsKeyPtr key_;
};
INSTANTIATE_FOR_EVERY_STORE(BackendContractTest);

TEST_P(BackendContractTest, MissingValueIsNotFound)
{
  uint32_t data = 0;
  uint32_t size = sizeof data;
  EXPECT_EQ(Key().QueryValue(u"Absent", nullptr, &data, &size), kSysNotFound);
  EXPECT_EQ(0x4000000Fu, kSysNotFound);
}

TEST_P(BackendContractTest, MissingKeyIsNotFoundAndNotCreatedByOpening)
{
  SettingsKeyPtr key;
  EXPECT_EQ(Key().OpenSubKey(u"Absent\\Deeper", &key), kSysNotFound);
  EXPECT_EQ(key, nullptr);
  EXPECT_FALSE(Store().KeyExists(u"Software\\Contract\\Absent"));
}

TEST_P(BackendContractTest, CreatingADeepKeyCreatesEveryKeyOnItsPath)
{
  SettingsKeyPtr key;
  ASSERT_EQ(Key().CreateSubKey(u"One\\Two\\Three", &key), kStatusSuccess);
  EXPECT_TRUE(Store().KeyExists(u"Software\\Contract\\One"));
  EXPECT_TRUE(Store().KeyExists(u"Software\\Contract\\One\\Two\\Three"));
  ASSERT_EQ(key->SetValue(u"V", 4, "\1\0\0\0", 4), kStatusSuccess);
  EXPECT_TRUE(Store().Get(u"Software\\Contract\\One\\Two\\Three", u"V").has_value());
  SettingsKeyPtr again;
  ASSERT_EQ(Key().OpenSubKey(u"One\\Two", &again), kStatusSuccess);
  SettingsKeyPtr below;
  EXPECT_EQ(again->OpenSubKey(u"Three", &below), kStatusSuccess);
}

TEST_P(BackendContractTest, ValueReadsBackWithItsTypeAndSize)
{
  ASSERT_EQ(Set(u"Bytes", 3, {1, 2, 3, 4, 5}), kStatusSuccess);
  uint8_t data[16] = {};
  uint32_t size = sizeof data;
  uint32_t type = 0;
  EXPECT_EQ(Key().QueryValue(u"Bytes", &type, data, &size), kStatusSuccess);
  EXPECT_EQ(type, 3u);
  EXPECT_EQ(size, 5u);
  EXPECT_EQ(std::memcmp(data, "\1\2\3\4\5", 5), 0);
  const std::optional<RawValue> raw = Store().Get(u"Software\\Contract", u"Bytes");
  ASSERT_TRUE(raw.has_value());
  EXPECT_EQ(raw->type, 3u);
  EXPECT_EQ(raw->data, (std::vector<uint8_t>{1, 2, 3, 4, 5}));
}

TEST_P(BackendContractTest, ValueLargerThanTheBufferFailsWithMoreDataReportingItsSize)
{
  ASSERT_EQ(Set(u"Long", 3, {1, 2, 3, 4, 5, 6}), kStatusSuccess);
  uint8_t data[4] = {};
  uint32_t size = sizeof data;
  uint32_t type = 0;
  // ERROR_MORE_DATA has no entry of its own: the general failure.
  EXPECT_EQ(Key().QueryValue(u"Long", &type, data, &size), kSysGeneralFailure);
  EXPECT_EQ(size, 6u);
  EXPECT_EQ(type, 3u);
}

TEST_P(BackendContractTest, QueryWithoutBufferGivesTypeAndSize)
{
  ASSERT_EQ(Set(u"Sized", 7, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0}), kStatusSuccess);
  uint32_t size = 0;
  uint32_t type = 0;
  EXPECT_EQ(Key().QueryValue(u"Sized", &type, nullptr, &size), kStatusSuccess);
  EXPECT_EQ(size, 10u);
  EXPECT_EQ(type, 7u);
}

TEST_P(BackendContractTest, EmptyValueIsStoredWithSizeZero)
{
  ASSERT_EQ(Key().SetValue(u"Empty", 1, nullptr, 0), kStatusSuccess);
  uint8_t data[4] = {9, 9, 9, 9};
  uint32_t size = sizeof data;
  EXPECT_EQ(Key().QueryValue(u"Empty", nullptr, data, &size), kStatusSuccess);
  EXPECT_EQ(size, 0u);
}

TEST_P(BackendContractTest, NamesIgnoreCaseAndKeepTheirFirstSpelling)
{
  ASSERT_EQ(Set(u"MixedCase", 4, {1, 0, 0, 0}), kStatusSuccess);
  ASSERT_EQ(Set(u"MIXEDCASE", 3, {2, 0}), kStatusSuccess);
  uint8_t data[4] = {};
  uint32_t size = sizeof data;
  uint32_t type = 0;
  EXPECT_EQ(Key().QueryValue(u"mixedcase", &type, data, &size), kStatusSuccess);
  EXPECT_EQ(type, 3u);
  EXPECT_EQ(size, 2u);
  EXPECT_EQ(data[0], 2);
  EXPECT_EQ(Store().ValueNames(u"Software\\Contract"), std::vector<std::u16string>{u"MixedCase"});
  SettingsKeyPtr root;
  SettingsKeyPtr key;
  ASSERT_EQ(CurrentSettingsBackend().OpenUserRoot(&root), kStatusSuccess);
  EXPECT_EQ(root->OpenSubKey(u"SOFTWARE\\contract", &key), kStatusSuccess);
}

TEST_P(BackendContractTest, DeletingRemovesOnlyThatValue)
{
  ASSERT_EQ(Set(u"Gone", 4, {1, 0, 0, 0}), kStatusSuccess);
  ASSERT_EQ(Set(u"Stays", 4, {1, 0, 0, 0}), kStatusSuccess);
  EXPECT_EQ(Key().DeleteValue(u"GONE"), kStatusSuccess);
  EXPECT_EQ(Store().ValueNames(u"Software\\Contract"), std::vector<std::u16string>{u"Stays"});
  EXPECT_EQ(Key().DeleteValue(u"Gone"), kSysNotFound);
}

TEST_P(BackendContractTest, ValuesWrittenThroughOneKeyAreSeenThroughAnother)
{
  SettingsKeyPtr root;
  SettingsKeyPtr other;
  ASSERT_EQ(CurrentSettingsBackend().OpenUserRoot(&root), kStatusSuccess);
  ASSERT_EQ(root->OpenSubKey(u"Software\\Contract", &other), kStatusSuccess);
  ASSERT_EQ(Set(u"Shared", 4, {7, 0, 0, 0}), kStatusSuccess);
  uint32_t value = 0;
  uint32_t size = sizeof value;
  EXPECT_EQ(other->QueryValue(u"Shared", nullptr, &value, &size), kStatusSuccess);
  EXPECT_EQ(value, 7u);
}

}  // namespace

// Runs a suite of settings tests once per store of the platform: the settings use the
// probe's store for the length of each test.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "settings/settings_backend.h"
#include "store_probe.h"

// The key paths, spelled out here rather than taken from the code, so that the tests prove them.
inline const std::u16string kAppKey = u"Software\\Pellmora\\Cryptelle\\1.0";
inline const std::u16string kMruKey = u"Software\\Pellmora\\Cryptelle\\1.0\\MRU";
inline const std::u16string kListKey =
    u"Software\\Pellmora\\Cryptelle\\1.0\\MRU\\Recent Document List";
inline const std::u16string kRunKey = u"Software\\Microsoft\\Windows\\CurrentVersion\\Run";

class SettingsTest : public ::testing::TestWithParam<std::string> {
 protected:
  void SetUp() override
  {
    probe_ = MakeProbe(GetParam());
    SetSettingsBackend(probe_->Backend());
  }

  void TearDown() override
  {
    SetSettingsBackend(nullptr);
    probe_.reset();
  }

  StoreProbe& Store() { return *probe_; }

  // Expects `name` under `keyPath` to be a REG_DWORD of 4 bytes holding `value`.
  void ExpectDword(const std::u16string& keyPath, const std::u16string& name, uint32_t value)
  {
    const std::optional<RawValue> stored = probe_->Get(keyPath, name);
    ASSERT_TRUE(stored.has_value()) << "missing value";
    EXPECT_EQ(stored->type, 4u);
    EXPECT_EQ(stored->data.size(), 4u);
    EXPECT_EQ(DwordOf(*stored), value);
  }

  // Expects `name` under `keyPath` to be a REG_SZ holding `text` and its terminator.
  void ExpectString(const std::u16string& keyPath, const std::u16string& name,
                    const std::u16string& text)
  {
    const std::optional<RawValue> stored = probe_->Get(keyPath, name);
    ASSERT_TRUE(stored.has_value()) << "missing value";
    EXPECT_EQ(stored->type, 1u);
    EXPECT_EQ(stored->data, StringBytes(text));
  }

 private:
  std::unique_ptr<StoreProbe> probe_;
};

// Names each instance of a suite after its store.
inline std::string StoreName(const ::testing::TestParamInfo<std::string>& store)
{
  return store.param;
}

// Instantiates a suite for every store of the platform.
#define INSTANTIATE_FOR_EVERY_STORE(Suite) \
  INSTANTIATE_TEST_SUITE_P(Stores, Suite, ::testing::ValuesIn(ProbeNames()), StoreName)

// The POSIX file store: where it lives, and that it survives crashes, damage and sharing.
#include "settings/file_store.h"

#include <sys/stat.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

#include "settings/options.h"
#include "settings/recent_images.h"
#include "support/temp_dir.h"
#include "system/file.h"

namespace {

namespace fs = std::filesystem;

std::string ReadText(const fs::path& path)
{
  std::ifstream file(path, std::ios::binary);
  std::stringstream text;
  text << file.rdbuf();
  return text.str();
}

void WriteText(const fs::path& path, const std::string& text)
{
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file << text;
}

// Sets an environment variable for one test and puts the old value back afterwards.
class ScopedEnvironment {
 public:
  ScopedEnvironment(const char* name, const char* value) : name_(name)
  {
    const char* old = std::getenv(name);
    had_ = old != nullptr;
    if (had_) old_ = old;
    if (value != nullptr) {
      setenv(name, value, 1);
    } else {
      unsetenv(name);
    }
  }
  ~ScopedEnvironment()
  {
    if (had_) {
      setenv(name_, old_.c_str(), 1);
    } else {
      unsetenv(name_);
    }
  }
  ScopedEnvironment(const ScopedEnvironment&) = delete;
  ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

 private:
  const char* name_;
  bool had_ = false;
  std::string old_;
};

class FileStoreTest : public ::testing::Test {
 protected:
  FileStoreTest() : store_(dir_.path().string()) {}
  void SetUp() override { SetSettingsBackend(&store_); }
  void TearDown() override
  {
    SetSettingsBackend(nullptr);
    SysSetFileFaults(nullptr);
  }

  fs::path StoreFile() const { return dir_.path() / "settings"; }

  TempDir dir_;
  FileSettingsBackend store_;
};

TEST_F(FileStoreTest, DefaultDirectoryIsUnderXdgConfigHome)
{
  ScopedEnvironment config("XDG_CONFIG_HOME", "/somewhere/config");
  std::string directory;
  ASSERT_EQ(DefaultSettingsDirectory(&directory), kStatusSuccess);
  EXPECT_EQ(directory, "/somewhere/config/cryptelle");
}

TEST_F(FileStoreTest, DefaultDirectoryFallsBackToDotConfigWhenXdgConfigHomeIsUnsetEmptyOrRelative)
{
  ScopedEnvironment home("HOME", "/home/tester");
  for (const char* value : {static_cast<const char*>(nullptr), "", "relative/config"}) {
    ScopedEnvironment config("XDG_CONFIG_HOME", value);
    std::string directory;
    ASSERT_EQ(DefaultSettingsDirectory(&directory), kStatusSuccess);
    EXPECT_EQ(directory, "/home/tester/.config/cryptelle");
  }
}

TEST_F(FileStoreTest, SystemStoreKeepsSettingsInAPrivateDirectoryUnderXdgConfigHome)
{
  ScopedEnvironment config("XDG_CONFIG_HOME", dir_.path().c_str());
  SetSettingsBackend(nullptr);
  EXPECT_EQ(WriteGeneralOptions({1, 0, 0, 0}), kStatusSuccess);
  const std::string text = ReadText(dir_.path() / "cryptelle" / "settings");
  EXPECT_NE(text.find("[Software\\Pellmora\\Cryptelle\\1.0]\nMountAsRemovable=4:01000000\n"),
            std::string::npos);
  struct stat info {};
  ASSERT_EQ(stat((dir_.path() / "cryptelle").c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 0077, 0u);
}

TEST_F(FileStoreTest, StoreFileIsPrivateToTheUser)
{
  WriteGeneralOptions({});
  struct stat info {};
  ASSERT_EQ(stat(StoreFile().c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 0077, 0u);
}

TEST_F(FileStoreTest, WritingLeavesNoTemporaryFileBehind)
{
  WriteGeneralOptions({});
  EXPECT_TRUE(fs::exists(StoreFile()));
  EXPECT_FALSE(fs::exists(dir_.path() / "settings.new"));
}

TEST_F(FileStoreTest, HalfWrittenTemporaryFileOfACrashIsIgnoredAndReplaced)
{
  WriteGeneralOptions({1, 1, 0, 0});
  WriteText(dir_.path() / "settings.new", "Cryptelle settings store 1\n[Software\\Pell");
  GeneralOptions read;
  EXPECT_EQ(ReadGeneralOptions(&read), kStatusSuccess);
  EXPECT_EQ(read.removable, 1u);
  EXPECT_EQ(WriteGeneralOptions({0, 0, 1, 0}), kStatusSuccess);
  EXPECT_FALSE(fs::exists(dir_.path() / "settings.new"));
  ReadGeneralOptions(&read);
  EXPECT_EQ(read.ignoreOpenFiles, 1u);
}

TEST_F(FileStoreTest, WriteThatFailsPartWayLeavesThePreviousStoreWhole)
{
  WriteGeneralOptions({1, 0, 2, 0});
  const std::string before = ReadText(StoreFile());
  SysFileFaults faults;
  faults.bytesUntilDiskFull = 20;
  SysSetFileFaults(&faults);
  EXPECT_EQ(WriteMonitorOptions({1, 1, 0x341}), kSysDiskFull);
  SysSetFileFaults(nullptr);
  EXPECT_EQ(ReadText(StoreFile()), before);
  EXPECT_FALSE(fs::exists(dir_.path() / "settings.new"));
  GeneralOptions general;
  ReadGeneralOptions(&general);
  EXPECT_EQ(general.ignoreOpenFiles, 2u);
  MonitorOptions monitor;
  ReadMonitorOptions(&monitor);
  EXPECT_EQ(monitor.emergencyHotKey, 0u);
}

TEST_F(FileStoreTest, CorruptFileReadsAsAbsentValuesAndIsReplacedByTheNextWrite)
{
  std::string garbage;
  for (int i = 0; i < 4096; ++i) garbage += static_cast<char>((i * 7919) & 0xFF);
  WriteText(StoreFile(), garbage);
  MountDefaults defaults;
  EXPECT_EQ(ReadMountDefaults(&defaults), kStatusSuccess);
  EXPECT_EQ(defaults.invisible, 1u);
  RecentImageList list;
  list.entries = {u"C:\\kept.qvi"};
  EXPECT_EQ(ReadRecentList(&list, kRecentListKeyPath), kSysNotFound);
  EXPECT_EQ(list.entries.size(), 1u);
  EXPECT_EQ(ReadText(StoreFile()).rfind("Cryptelle settings store 1\n", 0), 0u);
}

TEST_F(FileStoreTest, DamagedLinesAreDroppedWhileTheOthersAreKept)
{
  WriteText(StoreFile(),
            "Cryptelle settings store 1\n[Software\\Pellmora\\Cryptelle\\1.0]\n"
            "MountAsRemovable=4:01000000\nMountInvisible=4:0\x01\nPrivacyMode=4:02000000\n");
  MountDefaults defaults;
  ReadMountDefaults(&defaults);
  EXPECT_EQ(defaults.removable, 1u);
  EXPECT_EQ(defaults.invisible, 1u);
  EXPECT_EQ(defaults.privacy, 2u);
}

TEST_F(FileStoreTest, FileLargerThanOneMebibyteReadsAsEmpty)
{
  std::string text =
      "Cryptelle settings store 1\n[Software\\Pellmora\\Cryptelle\\1.0]\n"
      "MountAsRemovable=4:01000000\n";
  text += "; " + std::string(kMaxSettingsFileSize, 'x') + "\n";
  WriteText(StoreFile(), text);
  MountDefaults defaults;
  EXPECT_EQ(ReadMountDefaults(&defaults), kStatusSuccess);
  EXPECT_EQ(defaults.removable, 0u);
}

TEST_F(FileStoreTest, ChangeThatWouldOutgrowTheReadableSizeIsRefused)
{
  WriteGeneralOptions({1, 0, 0, 0});
  SettingsKeyPtr root;
  SettingsKeyPtr key;
  ASSERT_EQ(store_.OpenUserRoot(&root), kStatusSuccess);
  ASSERT_EQ(root->CreateSubKey(u"Software\\Big", &key), kStatusSuccess);
  const std::vector<uint8_t> half(kMaxSettingsFileSize / 2, 0x5A);  // two hex digits a byte
  EXPECT_EQ(key->SetValue(u"Blob", kValueBinary, half.data(), static_cast<uint32_t>(half.size())),
            kSysFileTooLarge);
  uint32_t size = 0;
  EXPECT_EQ(key->QueryValue(u"Blob", nullptr, nullptr, &size), kSysNotFound);
  GeneralOptions read;
  ReadGeneralOptions(&read);
  EXPECT_EQ(read.removable, 1u);
}

TEST_F(FileStoreTest, StoreThatCannotBeCreatedFailsWithTheMappedSystemErrorAndKeepsDefaults)
{
  WriteText(dir_.path() / "blocker", "a file where a directory should be");
  FileSettingsBackend blocked((dir_.path() / "blocker" / "store").string());
  SetSettingsBackend(&blocked);
  MountDefaults defaults{0, 1, 0};
  // ENOTDIR is the situation of ERROR_PATH_NOT_FOUND (3).
  EXPECT_EQ(ReadMountDefaults(&defaults), kSysNotFound);
  EXPECT_EQ(defaults.invisible, 1u);
  EXPECT_EQ(WriteGeneralOptions({1, 1, 1, 1}), kSysNotFound);
}

TEST_F(FileStoreTest, SecondStoreObjectSeesWhatTheFirstWrote)
{
  WriteMonitorOptions({1, 0, 0x0341});
  FileSettingsBackend other(dir_.path().string());
  SetSettingsBackend(&other);
  MonitorOptions read;
  ReadMonitorOptions(&read);
  EXPECT_EQ(read.emergencyHotKey, 0x0341u);
}

TEST_F(FileStoreTest, ConcurrentWritersLoseNoValue)
{
  SettingsKeyPtr root;
  SettingsKeyPtr key;
  ASSERT_EQ(store_.OpenUserRoot(&root), kStatusSuccess);
  ASSERT_EQ(root->CreateSubKey(u"Shared", &key), kStatusSuccess);
  constexpr int kWriters = 4;
  constexpr int kValuesEach = 25;
  std::vector<std::thread> writers;
  for (int writer = 0; writer < kWriters; ++writer) {
    writers.emplace_back([this, writer] {
      FileSettingsBackend own(dir_.path().string());
      SettingsKeyPtr ownRoot;
      SettingsKeyPtr ownKey;
      if (IsFailure(own.OpenUserRoot(&ownRoot))) return;
      if (IsFailure(ownRoot->CreateSubKey(u"Shared", &ownKey))) return;
      for (int n = 0; n < kValuesEach; ++n) {
        const std::u16string name = u"W" + std::u16string(1, static_cast<char16_t>(u'0' + writer)) +
                                    u"-" + std::u16string(1, static_cast<char16_t>(u'A' + n));
        const uint32_t value = static_cast<uint32_t>(writer * 100 + n);
        ownKey->SetValue(name.c_str(), kValueDword, &value, sizeof value);
      }
    });
  }
  for (std::thread& writer : writers) writer.join();
  for (int writer = 0; writer < kWriters; ++writer) {
    for (int n = 0; n < kValuesEach; ++n) {
      const std::u16string name = u"W" + std::u16string(1, static_cast<char16_t>(u'0' + writer)) +
                                  u"-" + std::u16string(1, static_cast<char16_t>(u'A' + n));
      uint32_t value = 0;
      uint32_t size = sizeof value;
      ASSERT_EQ(key->QueryValue(name.c_str(), nullptr, &value, &size), kStatusSuccess);
      EXPECT_EQ(value, static_cast<uint32_t>(writer * 100 + n));
    }
  }
}

}  // namespace

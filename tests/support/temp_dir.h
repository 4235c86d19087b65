// A fresh, empty directory for one test, removed with everything in it at the end.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <random>
#include <stdexcept>
#include <string>
#include <system_error>

class TempDir {
 public:
  // Creates a directory with a name no other test (nor another test process) uses, under
  // the system's temporary directory ($TMPDIR or /tmp on POSIX, GetTempPath on Windows).
  TempDir()
  {
    static std::atomic<uint32_t> counter{0};
    const std::filesystem::path base = std::filesystem::temp_directory_path();
    std::random_device device;
    const auto now =
        static_cast<uint64_t>(std::chrono::high_resolution_clock::now().time_since_epoch().count());
    for (int attempt = 0; attempt < 100; ++attempt) {
      const std::string name = "cryptelle-test-" + std::to_string(now) + "-" +
                               std::to_string(device()) + "-" + std::to_string(counter++);
      std::error_code error;
      if (std::filesystem::create_directory(base / name, error)) {
        path_ = base / name;
        return;
      }
    }
    throw std::runtime_error("no temporary directory could be created under " + base.string());
  }

  ~TempDir()
  {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
  }

  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::filesystem::path& path() const { return path_; }

  // The directory as UTF-16 text.
  std::u16string Text() const { return path_.u16string(); }

  // The UTF-16 path of `name` inside the directory.
  std::u16string File(const std::u16string& name) const { return (path_ / name).u16string(); }

 private:
  std::filesystem::path path_;
};

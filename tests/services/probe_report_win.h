// Reading what the service probe program reported, for the process and shell tests.
#pragma once

#include <windows.h>

#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <thread>

#include "system/module_path.h"

// The probe program's path: it is built beside the test program.
inline std::u16string ProbeProgramPath()
{
  std::u16string program;
  if (IsFailure(SysGetModulePath(&program))) return {};
  return program.substr(0, program.rfind(u'\\') + 1) + u"service_probe.exe";
}

// Waits up to ten seconds for the probe's report file and returns its text: the command
// line, a line break, and "position X Y" or "no position".
inline std::optional<std::u16string> WaitForProbeReport(const std::filesystem::path& file)
{
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (std::chrono::steady_clock::now() < deadline) {
    std::ifstream stream(file, std::ios::binary);
    if (stream) {
      const std::string bytes((std::istreambuf_iterator<char>(stream)),
                              std::istreambuf_iterator<char>());
      if (!bytes.empty() && bytes.size() % 2 == 0) {
        std::u16string text(bytes.size() / 2, u'\0');
        std::memcpy(text.data(), bytes.data(), bytes.size());
        return text;
      }
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  return std::nullopt;
}

// Trying to create a directory, for what the system's refusal tells: the mount flow learns
// from the error of creating a drive's root directory whether the drive holds a file system.
// Replaceable, so that tests script the volume's state.
#pragma once

#include <cstdint>
#include <string>

// Windows system error numbers that the probe's callers tell apart.
inline constexpr uint32_t kErrorAccessDenied = 5;           // ERROR_ACCESS_DENIED
inline constexpr uint32_t kErrorNotSupported = 50;          // ERROR_NOT_SUPPORTED
inline constexpr uint32_t kErrorAlreadyExists = 183;        // ERROR_ALREADY_EXISTS
inline constexpr uint32_t kErrorUnrecognizedVolume = 1005;  // ERROR_UNRECOGNIZED_VOLUME

class CDirectoryProbe {
 public:
  // Tries to create directory `path`: 0 when it was created, else the Windows system error
  // number of the failure.
  virtual uint32_t TryCreateDirectory(const std::u16string& path) = 0;

 protected:
  virtual ~CDirectoryProbe() = default;
};

// Tries through the current probe.
uint32_t TryCreateDirectory(const std::u16string& path);

// Makes `probe` current and returns the previous one; null restores the system's probe.
CDirectoryProbe* ReplaceDirectoryProbe(CDirectoryProbe* probe);

// The system's own probe: CreateDirectoryW on Windows. Elsewhere there are no drive roots
// to look at, and every path answers kErrorNotSupported without touching the file system.
CDirectoryProbe& SystemDirectoryProbe();

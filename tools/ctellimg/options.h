// The image tool's command line: commands, their options, and the cipher choice.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

enum class Command { kNone, kHelp, kCreate, kInfo, kShow, kCheck, kPasswd, kClear };

struct Options {
  Command command = Command::kNone;
  std::string image;  // UTF-8 path of volume file 0
  // create
  uint64_t capacity = 0;
  bool capacityAdjusted = false;  // the text was clamped or rounded to the allowed sizes
  bool fixed = false;
  uint64_t volumeSizeLimit = 0;  // 0 one file; all ones split at the file system's limit
  uint32_t algorithm = 0;        // cipher engine's algorithm number
  uint32_t keyBits = 256;
  // info, show, check
  bool json = false;
  // check
  bool data = false;
  // clear
  bool yes = false;
};

struct ParseResult {
  bool ok = false;
  std::string error;  // why the command line was refused (empty when ok)
  Options options;
};

// Parses the arguments after the program name.
ParseResult ParseArguments(const std::vector<std::string>& arguments);

// The usage text printed for --help and after a refused command line.
std::string UsageText();

// The cipher engine's number for "aes", "blowfish" or "cast" (any letter case); -1 if unknown.
int AlgorithmFromName(const std::string& name);

// Why `bits` cannot be used with `algorithm`, or an empty text when it can: AES 128, 192 or
// 256; Blowfish 32 to 448 and CAST 40 to 128, in whole bytes.
std::string KeyBitsError(uint32_t algorithm, uint32_t bits);

// The length used when none is given: 256 bits, lowered to the algorithm's maximum (so
// CAST gets 128), the same carry-over the wizard applies when the algorithm changes.
uint32_t DefaultKeyBits(uint32_t algorithm);

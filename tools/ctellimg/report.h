// What the image tool prints about an image: JSON objects for scripts and plain lines for
// people.
#pragma once

#include <cstdint>
#include <string>

#include "image/image.h"

// One JSON object built field by field, in the order the fields are added.
class JsonObject {
 public:
  void AddString(const std::string& name, const std::string& value);
  void AddNumber(const std::string& name, uint64_t value);
  void AddBool(const std::string& name, bool value);
  // The object as one line of text, without a line end.
  std::string Text() const;

 private:
  void AddRaw(const std::string& name, const std::string& value);
  std::string fields_;
};

// A JSON string literal: quotes, backslashes and control characters escaped; other bytes
// (UTF-8) kept as they are.
std::string JsonQuote(const std::string& text);

// Lower-case hexadecimal of bytes in memory order.
std::string HexText(const uint8_t* bytes, size_t length);

// "AES", "BLOWFISH", "CAST", "RC4", or the number for an unknown algorithm.
std::string AlgorithmName(uint32_t algorithm);

// Seconds since 1970-01-01 UTC as "YYYY-MM-DD hh:mm:ss UTC".
std::string UtcTimeText(uint64_t seconds);

// The volume size limit in words: "none", "file system limit", or a size in bytes.
std::string VolumeLimitText(uint64_t limit);

std::string KeyInfoJson(const std::string& image, const ImageKeyInfo& info);
std::string KeyInfoText(const std::string& image, const ImageKeyInfo& info);

std::string PropertiesJson(const std::string& image, const ImageProperties& properties);
std::string PropertiesText(const std::string& image, const ImageProperties& properties);

struct CheckSummary {
  uint32_t volumes = 0;
  uint32_t tableBlocks = 0;  // allocation table blocks loaded and checked
  bool dataRead = false;     // the whole image stream was read and deciphered
  uint64_t bytesRead = 0;
};

std::string CheckJson(const std::string& image, const CheckSummary& summary);
std::string CheckText(const std::string& image, const CheckSummary& summary);

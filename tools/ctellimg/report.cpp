#include "tools/ctellimg/report.h"

#include <cstdio>

#include "tools/ctellimg/capacity.h"

void JsonObject::AddRaw(const std::string& name, const std::string& value)
{
  if (!fields_.empty()) fields_ += ",";
  fields_ += JsonQuote(name) + ":" + value;
}

void JsonObject::AddString(const std::string& name, const std::string& value)
{
  AddRaw(name, JsonQuote(value));
}

void JsonObject::AddNumber(const std::string& name, uint64_t value)
{
  AddRaw(name, std::to_string(value));
}

void JsonObject::AddBool(const std::string& name, bool value)
{
  AddRaw(name, value ? "true" : "false");
}

std::string JsonObject::Text() const
{
  return "{" + fields_ + "}";
}

std::string JsonQuote(const std::string& text)
{
  std::string quoted = "\"";
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '"') {
      quoted += "\\\"";
    } else if (c == '\\') {
      quoted += "\\\\";
    } else if (c == '\n') {
      quoted += "\\n";
    } else if (c == '\r') {
      quoted += "\\r";
    } else if (c == '\t') {
      quoted += "\\t";
    } else if (byte < 0x20) {
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\u%04x", byte);
      quoted += escape;
    } else {
      quoted += c;
    }
  }
  return quoted + "\"";
}

std::string HexText(const uint8_t* bytes, size_t length)
{
  static const char kDigits[] = "0123456789abcdef";
  std::string text;
  for (size_t i = 0; i < length; ++i) {
    text += kDigits[bytes[i] >> 4];
    text += kDigits[bytes[i] & 15];
  }
  return text;
}

std::string AlgorithmName(uint32_t algorithm)
{
  switch (algorithm) {
    case 0: return "AES";
    case 1: return "BLOWFISH";
    case 2: return "CAST";
    case 3: return "RC4";
    default: return std::to_string(algorithm);
  }
}

std::string UtcTimeText(uint64_t seconds)
{
  // Days since 1970-01-01 to a civil date (proleptic Gregorian calendar), without the C
  // library's time functions, which differ between the systems.
  const uint64_t days = seconds / 86400;
  const uint64_t rest = seconds % 86400;
  const uint64_t z = days + 719468;
  const uint64_t era = z / 146097;
  const uint64_t dayOfEra = z - era * 146097;
  const uint64_t yearOfEra =
      (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  const uint64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const uint64_t monthIndex = (5 * dayOfYear + 2) / 153;
  const uint64_t day = dayOfYear - (153 * monthIndex + 2) / 5 + 1;
  const uint64_t month = monthIndex < 10 ? monthIndex + 3 : monthIndex - 9;
  const uint64_t year = yearOfEra + era * 400 + (month <= 2 ? 1 : 0);
  char text[64];
  std::snprintf(text, sizeof text, "%04llu-%02llu-%02llu %02llu:%02llu:%02llu UTC",
                static_cast<unsigned long long>(year), static_cast<unsigned long long>(month),
                static_cast<unsigned long long>(day), static_cast<unsigned long long>(rest / 3600),
                static_cast<unsigned long long>(rest / 60 % 60),
                static_cast<unsigned long long>(rest % 60));
  return text;
}

std::string VolumeLimitText(uint64_t limit)
{
  if (limit == 0) return "none (one volume file)";
  if (limit == UINT64_MAX) return "file system limit";
  return std::to_string(limit) + " bytes per volume file";
}

namespace {

std::string CipherText(uint32_t algorithm, uint32_t keyLength)
{
  return AlgorithmName(algorithm) + "-" + std::to_string(keyLength * 8ull);
}

std::string ModeName(uint32_t mode)
{
  return mode == 1 ? "CBC" : mode == 0 ? "stream" : std::to_string(mode);
}

std::string GuidText(const Guid& guid)
{
  return HexText(reinterpret_cast<const uint8_t*>(&guid), sizeof guid);
}

}  // namespace

std::string KeyInfoJson(const std::string& image, const ImageKeyInfo& info)
{
  JsonObject json;
  json.AddString("image", image);
  json.AddNumber("algorithm", info.algorithm);
  json.AddNumber("keyLength", info.keyLength);
  json.AddNumber("mode", info.mode);
  json.AddString("identityBlock", HexText(info.identityBlock, sizeof info.identityBlock));
  return json.Text();
}

std::string KeyInfoText(const std::string& image, const ImageKeyInfo& info)
{
  return "Image:          " + image + "\n" +
         "Encryption:     " + CipherText(info.algorithm, info.keyLength) + " (" +
         ModeName(info.mode) + ")\n" + "Key length:     " + std::to_string(info.keyLength) +
         " bytes\n" + "Identity block: " + HexText(info.identityBlock, sizeof info.identityBlock) +
         "\n";
}

std::string PropertiesJson(const std::string& image, const ImageProperties& properties)
{
  JsonObject json;
  json.AddString("image", image);
  json.AddNumber("flags", properties.flags);
  json.AddString("imageIdentifier", GuidText(properties.imageIdentifier));
  json.AddNumber("creationTime", properties.creationTime);
  json.AddNumber("lastOpenTime", properties.lastOpenTime);
  json.AddNumber("capacity", properties.capacity);
  json.AddNumber("volumeSizeLimit", properties.volumeSizeLimit);
  json.AddNumber("blockSize", properties.blockSize);
  json.AddNumber("algorithm", properties.algorithm);
  json.AddNumber("keyLength", properties.keyLength);
  json.AddNumber("mode", properties.mode);
  return json.Text();
}

std::string PropertiesText(const std::string& image, const ImageProperties& properties)
{
  const bool fixed = (properties.flags & 1) != 0;
  char flags[16];
  std::snprintf(flags, sizeof flags, "0x%X", properties.flags);
  return "Image:             " + image + "\n" +
         "Capacity:          " + CapacityText(properties.capacity) + " (" +
         std::to_string(properties.capacity) + " bytes)\n" +
         "Allocation:        " + (fixed ? "fixed size" : "dynamic") + "\n" +
         "Encryption:        " + CipherText(properties.algorithm, properties.keyLength) + " (" +
         ModeName(properties.mode) + ")\n" +
         "Block size:        " + std::to_string(properties.blockSize) + " bytes\n" +
         "Volume size limit: " + VolumeLimitText(properties.volumeSizeLimit) + "\n" +
         "Created:           " + UtcTimeText(properties.creationTime) + "\n" +
         "Last opened:       " + UtcTimeText(properties.lastOpenTime) + "\n" +
         "Image identifier:  " + GuidText(properties.imageIdentifier) + "\n" +
         "Flags:             " + flags + "\n";
}

std::string CheckJson(const std::string& image, const CheckSummary& summary)
{
  JsonObject json;
  json.AddString("image", image);
  json.AddBool("ok", true);
  json.AddNumber("volumes", summary.volumes);
  json.AddNumber("tableBlocks", summary.tableBlocks);
  json.AddBool("dataRead", summary.dataRead);
  json.AddNumber("bytesRead", summary.bytesRead);
  return json.Text();
}

std::string CheckText(const std::string& image, const CheckSummary& summary)
{
  std::string text = "Image " + image + " is sound.\n" +
                     "Volume files verified:          " + std::to_string(summary.volumes) + "\n" +
                     "Allocation table blocks checked: " + std::to_string(summary.tableBlocks) +
                     "\n";
  if (summary.dataRead)
    text += "Bytes read and deciphered:       " + std::to_string(summary.bytesRead) + " (" +
            std::to_string(summary.bytesRead / 4096) + " units)\n";
  return text;
}

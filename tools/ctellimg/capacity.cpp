#include "tools/ctellimg/capacity.h"

#include <cmath>
#include <cstdlib>

namespace {

bool IsSpace(char c)
{
  return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}

std::string Trim(const std::string& text)
{
  size_t begin = 0;
  size_t end = text.size();
  while (begin < end && IsSpace(text[begin])) ++begin;
  while (end > begin && IsSpace(text[end - 1])) --end;
  return text.substr(begin, end - begin);
}

std::string LastTwo(const std::string& text)
{
  return text.size() < 2 ? text : text.substr(text.size() - 2);
}

}  // namespace

uint64_t ParseCapacityText(const std::string& text)
{
  const std::string trimmed = Trim(text);
  const std::string unit = LastTwo(trimmed);
  uint64_t factor = 0;
  if (unit == "MB") factor = kMegabyte;
  if (unit == "GB") factor = kGigabyte;
  if (unit == "TB") factor = kTerabyte;
  if (factor == 0) return 0;

  // strtod of the C locale (the tool never changes it): the decimal separator is a dot.
  const double number = std::strtod(trimmed.c_str(), nullptr);
  const double product = number * static_cast<double>(factor);
  // Truncation like the wizard's, with the cases that a plain conversion would leave
  // undefined pinned down: NaN and negatives are 0, too large is the top value.
  if (std::isnan(product) || product <= 0) return 0;
  if (product >= 18446744073709551616.0) return UINT64_MAX;
  return static_cast<uint64_t>(product);
}

CapacityChoice ChooseCapacity(const std::string& text)
{
  std::string trimmed = Trim(text);
  const std::string unit = LastTwo(trimmed);
  if (unit != "MB" && unit != "GB" && unit != "TB" && !trimmed.empty()) {
    const char last = trimmed.back();
    if (last == 'M' || last == 'G' || last == 'T') trimmed += 'B';
  }
  CapacityChoice choice;
  const uint64_t parsed = ParseCapacityText(trimmed);
  if (parsed == 0) return choice;
  uint64_t bytes = parsed;
  if (bytes > kMaximumCapacity) {
    bytes = kMaximumCapacity;
  } else if (bytes < kMinimumCapacity) {
    bytes = kMinimumCapacity;
  } else {
    bytes = bytes / kMegabyte * kMegabyte;
  }
  choice.bytes = bytes;
  choice.adjusted = bytes != parsed;
  return choice;
}

std::string CapacityText(uint64_t bytes)
{
  if (bytes != 0 && bytes % kTerabyte == 0) return std::to_string(bytes / kTerabyte) + " TB";
  if (bytes != 0 && bytes % kGigabyte == 0) return std::to_string(bytes / kGigabyte) + " GB";
  if (bytes != 0 && bytes % kMegabyte == 0) return std::to_string(bytes / kMegabyte) + " MB";
  return std::to_string(bytes) + " bytes";
}

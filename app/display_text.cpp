#include "app/display_text.h"

#include "app/size_units.h"
#include "res/format_text.h"
#include "res/resource.h"
#include "res/texts.h"

namespace {

constexpr uint32_t kSecondsPerMinute = 60;
constexpr uint32_t kSecondsPerHour = 3600;
constexpr uint32_t kSecondsPerDay = 86400;

// The text for `count` units: the singular word for exactly one, else the plural pattern.
std::u16string UnitCount(uint32_t count, unsigned one, unsigned many)
{
  if (count == 1) return LoadText(one);
  return FormatText(LoadText(many), {count});
}

}  // namespace

std::u16string FormatSizeText(uint64_t bytes, bool precise)
{
  if (bytes >= kTerabyte) {
    return FormatText(precise ? u"%.2f TB" : u"%.0f TB",
                      {static_cast<double>(bytes) / static_cast<double>(kTerabyte)});
  }
  if (bytes >= kGigabyte) {
    return FormatText(precise ? u"%.1f GB" : u"%.0f GB",
                      {static_cast<double>(bytes) / static_cast<double>(kGigabyte)});
  }
  if (bytes >= kMegabyte) {
    return FormatText(precise ? u"%.1f MB" : u"%.0f MB", {static_cast<double>(bytes / kMegabyte)});
  }
  if (bytes >= kKilobyte) {
    return FormatText(precise ? u"%.1f KB" : u"%.0f KB", {static_cast<double>(bytes / kKilobyte)});
  }
  return FormatText(u"%u", {static_cast<uint32_t>(bytes)});
}

std::u16string FormatDurationText(uint32_t seconds)
{
  if (seconds / kSecondsPerDay != 0)
    return UnitCount(seconds / kSecondsPerDay, IDS_ONE_DAY, IDS_DAYS);
  if (seconds / kSecondsPerHour != 0) {
    return UnitCount(seconds / kSecondsPerHour, IDS_ONE_HOUR, IDS_HOURS);
  }
  if (seconds / kSecondsPerMinute != 0) {
    return UnitCount(seconds / kSecondsPerMinute, IDS_ONE_MINUTE, IDS_MINUTES);
  }
  return UnitCount(seconds, IDS_ONE_SECOND, IDS_SECONDS);
}

std::optional<std::u16string> AlgorithmName(uint32_t algorithm)
{
  switch (algorithm) {
    case 0: return LoadText(IDS_ALGORITHM_AES);
    case 1: return LoadText(IDS_ALGORITHM_BLOWFISH);
    case 2: return LoadText(IDS_ALGORITHM_CAST);
    default: return std::nullopt;
  }
}

std::u16string FormatAlgorithmText(uint32_t algorithm, uint32_t keyLengthBytes)
{
  const std::u16string name = AlgorithmName(algorithm).value_or(LoadText(IDS_ALGORITHM_UNKNOWN));
  const uint32_t bits = keyLengthBytes * 8u;
  return FormatText(u"%s-%u", {name, bits});
}

std::u16string ProcessLocaleName(const std::u16string& language, const std::u16string& country,
                                 const std::optional<std::u16string>& ansiCodePage,
                                 const std::optional<std::u16string>& oemCodePage)
{
  std::u16string name = language + u"_" + country;
  const std::optional<std::u16string>& codePage = ansiCodePage ? ansiCodePage : oemCodePage;
  if (codePage) name += u"." + *codePage;
  return name;
}

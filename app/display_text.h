// The display texts: every size, point in time, duration and cipher name the program shows
// is built here, in the user's locale and with the string table's words.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

// A byte count in the largest binary unit it reaches: "%.2f TB", "%.1f GB", "%.1f MB",
// "%.1f KB" when precise, "%.0f <unit>" when not, the bare number below 1024 bytes.
// Megabytes and kilobytes are truncated to whole units before printing.
std::u16string FormatSizeText(uint64_t bytes, bool precise);

// Seconds since 1970-01-01 00:00 UTC as the user's short date, a space and the user's time,
// in the local time zone. Empty when the value cannot be shown as a date.
std::u16string FormatDateTimeText(uint64_t seconds);

// The largest whole unit of a duration, truncated: "1 day", "23 hours", "0 seconds".
std::u16string FormatDurationText(uint32_t seconds);

// The cipher's bare name by id: "AES", "BLOWFISH", "CAST"; nothing for any other id.
std::optional<std::u16string> AlgorithmName(uint32_t algorithm);

// The cipher's name and the key length in bits: "AES-256"; "Unknown-64" for an id
// without a name.
std::u16string FormatAlgorithmText(uint32_t algorithm, uint32_t keyLengthBytes);

// Sets the process's locale to the user's, so that numbers and dates follow the user's
// settings: on Windows the thread locale and the C runtime's locale (named as
// ProcessLocaleName builds it); elsewhere the C library's locale from the environment.
// Returns the C runtime's name for the locale now in force, empty when none could be set.
std::u16string SetupProcessLocale();

// The C runtime's name for the user's locale: language, "_", country, then "." and the
// ANSI code page, or the OEM code page when the ANSI one could not be read; without either,
// the name ends after the country.
std::u16string ProcessLocaleName(const std::u16string& language, const std::u16string& country,
                                 const std::optional<std::u16string>& ansiCodePage,
                                 const std::optional<std::u16string>& oemCodePage);

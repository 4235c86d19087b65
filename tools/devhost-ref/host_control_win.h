// The reference device host's control values, in the registry key
// HKEY_LOCAL_MACHINE\Software\Pellmora\DeviceHost. Tests and demos set the fault values to
// script the host without touching the client; the host writes the record values.
#pragma once

#include <cstdint>
#include <string>

// Faults, read by the host at each call (or at service start for the delay):
// the next N calls answer "image mount driver not started" (0x4006000B).
inline constexpr wchar_t kControlNotStartedCalls[] = L"NotStartedCalls";
// Drive letters whose disks count as in use by applications, for example "PQ".
inline constexpr wchar_t kControlInUse[] = L"InUse";
// Milliseconds the service stays start-pending before it listens.
inline constexpr wchar_t kControlStartDelay[] = L"StartDelay";

// Records, written by the host:
// "<procedure number> <procedure name>" of the last call; the number is the one that came
// over the wire, the name that of the routine that answered.
inline constexpr wchar_t kControlLastCall[] = L"LastCall";
// "<mount point> <selector>" of the last format request accepted.
inline constexpr wchar_t kControlLastFormat[] = L"LastFormat";

// Missing values read as 0 and the empty string.
uint32_t ReadControlNumber(const wchar_t* name);
std::wstring ReadControlText(const wchar_t* name);
void WriteControlNumber(const wchar_t* name, uint32_t value);
void WriteControlText(const wchar_t* name, const std::wstring& text);

// Removes every fault and record.
void ClearControlValues();

// True when this call is to answer "driver not started"; counts the fault down.
bool TakeNotStartedAnswer();

// Installing, removing, starting and stopping the reference device host as the service
// "pdevhost". Each returns 0 or a Windows error number.
#pragma once

#include <windows.h>

#include <string>

inline constexpr wchar_t kHostServiceName[] = L"pdevhost";

// Installs the executable at `exePath` as a demand-start service; an installed service
// is pointed at `exePath` instead.
DWORD InstallHostService(const std::wstring& exePath);

// Stops the service if it runs and removes it; a service that does not exist is no error.
DWORD UninstallHostService();

// Starts the service unless it runs, then waits up to `timeoutMs` until it runs.
DWORD StartHostService(DWORD timeoutMs);

// Stops the service if it runs and waits up to `timeoutMs` until it has stopped.
DWORD StopHostService(DWORD timeoutMs);

// The executable named `name` in the directory of the running program.
std::wstring ExecutableBesideThisProgram(const wchar_t* name);

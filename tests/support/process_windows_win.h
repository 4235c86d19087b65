// The top-level windows another process shows, found by their exact title: for the tests
// and benchmarks that start the program as a process of its own.
#pragma once

#include <windows.h>

#include <vector>

std::vector<HWND> TopLevelWindows(DWORD processId, const wchar_t* title);

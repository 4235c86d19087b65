// Start-up time of ctell.exe against the smallest windowed program, both under the same
// system in one run: from process creation to the main window's first paint (the window is
// visible and its update region empty), over several starts each, alternating; the minimum
// and maximum show the spread of a shared machine, and the ratio of the minima is the one
// that other work on the machine disturbs least. Each program is closed again before the
// next start. ctell.exe shows its empty list.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "support/process_windows_win.h"

namespace {

constexpr int kRuns = 15;

struct Program {
  const wchar_t* file;
  const wchar_t* title;
};

std::wstring Beside(const wchar_t* name)
{
  std::wstring path(MAX_PATH, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), MAX_PATH));
  return path.substr(0, path.find_last_of(L'\\') + 1) + name;
}

// The window is on the screen and painted: visible, with nothing left to paint.
bool Painted(DWORD processId, const wchar_t* title, HWND* window)
{
  const std::vector<HWND> found = TopLevelWindows(processId, title);
  if (found.empty() || !IsWindowVisible(found.front())) return false;
  *window = found.front();
  return !GetUpdateRect(*window, nullptr, FALSE);
}

// Milliseconds from creating the process to its window's first paint; negative on failure.
double TimeToFirstPaint(const Program& program, double ticksPerMs)
{
  const std::wstring path = Beside(program.file);
  std::wstring commandLine = L"\"" + path + L"\"";
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION info{};
  LARGE_INTEGER start;
  LARGE_INTEGER end;
  QueryPerformanceCounter(&start);
  if (!CreateProcessW(path.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr,
                      nullptr, &startup, &info)) {
    return -1;
  }
  CloseHandle(info.hThread);
  HWND window = nullptr;
  const ULONGLONG deadline = GetTickCount64() + 30000;
  bool painted = false;
  while (!(painted = Painted(info.dwProcessId, program.title, &window)) &&
         GetTickCount64() < deadline) {
    Sleep(1);
  }
  QueryPerformanceCounter(&end);
  if (window != nullptr) PostMessageW(window, WM_CLOSE, 0, 0);
  if (WaitForSingleObject(info.hProcess, 10000) != WAIT_OBJECT_0)
    TerminateProcess(info.hProcess, 1);
  CloseHandle(info.hProcess);
  if (!painted) return -1;
  return static_cast<double>(end.QuadPart - start.QuadPart) / ticksPerMs;
}

struct Spread {
  double minimum;
  double median;
  double maximum;
};

Spread SpreadOf(std::vector<double> values)
{
  std::sort(values.begin(), values.end());
  return {values.front(), values[values.size() / 2], values.back()};
}

void PrintSpread(const char* name, const Spread& spread)
{
  std::printf("  %-24s %8.1f %8.1f %8.1f ms\n", name, spread.minimum, spread.median,
              spread.maximum);
}

}  // namespace

int main()
{
  LARGE_INTEGER frequency;
  QueryPerformanceFrequency(&frequency);
  const double ticksPerMs = static_cast<double>(frequency.QuadPart) / 1000.0;
  const Program programs[] = {{L"ctell.exe", L"Cryptelle"}, {L"one_window.exe", L"One Window"}};
  std::vector<double> times[2];
  for (int run = 0; run < kRuns; ++run) {
    for (int i = 0; i < 2; ++i) {
      const double ms = TimeToFirstPaint(programs[i], ticksPerMs);
      if (ms < 0) {
        std::fprintf(stderr, "%ls did not paint its window\n", programs[i].file);
        return 1;
      }
      times[i].push_back(ms);
    }
  }
  const Spread ours = SpreadOf(times[0]);
  const Spread minimal = SpreadOf(times[1]);
  std::printf("start to first paint, %d starts each      min   median      max\n", kRuns);
  PrintSpread("ctell.exe (empty list)", ours);
  PrintSpread("one window (minimal)", minimal);
  std::printf("  ratio of the medians     %8.2f (goal <= 1.50)\n", ours.median / minimal.median);
  std::printf("  ratio of the minima      %8.2f\n", ours.minimum / minimal.minimum);
  return 0;
}

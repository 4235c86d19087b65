#include "tools/ctellimg/console.h"

#include <csignal>
#include <cstdio>

#ifdef _WIN32
#include <windows.h>

#include "system/utf.h"
#else
#include <termios.h>
#include <unistd.h>
#endif

namespace {

volatile std::sig_atomic_t interrupted = 0;

#ifdef _WIN32
BOOL WINAPI OnConsoleControl(DWORD event)
{
  if (event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT) {
    interrupted = 1;
    return TRUE;
  }
  return FALSE;
}

bool IsConsole(DWORD which)
{
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(which), &mode) != 0;
}
#else
void OnInterrupt(int)
{
  interrupted = 1;
}
#endif

void ShowPrompt(const std::string& prompt)
{
  std::fputs(prompt.c_str(), stderr);
  std::fflush(stderr);
}

}  // namespace

bool StdinIsTerminal()
{
#ifdef _WIN32
  return IsConsole(STD_INPUT_HANDLE);
#else
  return isatty(STDIN_FILENO) != 0;
#endif
}

bool StderrIsTerminal()
{
#ifdef _WIN32
  return IsConsole(STD_ERROR_HANDLE);
#else
  return isatty(STDERR_FILENO) != 0;
#endif
}

bool ReadInputLine(std::string* line)
{
  line->clear();
  int c = 0;
  bool any = false;
  while ((c = std::fgetc(stdin)) != EOF) {
    any = true;
    if (c == '\n') break;
    line->push_back(static_cast<char>(c));
  }
  if (!line->empty() && line->back() == '\r') line->pop_back();
  return any;
}

bool ReadHiddenLine(const std::string& prompt, std::string* line)
{
  // Echo goes off before the prompt shows, so nothing typed after the prompt is shown or,
  // on POSIX, discarded by the switch.
  line->clear();
#ifdef _WIN32
  // The console hands over UTF-16 text, whatever its code page.
  HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
  DWORD mode = 0;
  GetConsoleMode(input, &mode);
  SetConsoleMode(input, (mode | ENABLE_LINE_INPUT) & ~static_cast<DWORD>(ENABLE_ECHO_INPUT));
  ShowPrompt(prompt);
  std::u16string text;
  bool ended = false;
  bool any = false;
  while (!ended) {
    wchar_t buffer[256];
    DWORD read = 0;
    if (ReadConsoleW(input, buffer, 256, &read, nullptr) == 0 || read == 0) break;
    any = true;
    for (DWORD i = 0; i < read && !ended; ++i) {
      if (buffer[i] == L'\n') {
        ended = true;
      } else if (buffer[i] != L'\r') {
        text.push_back(static_cast<char16_t>(buffer[i]));
      }
    }
    SecureZeroMemory(buffer, sizeof buffer);
  }
  SetConsoleMode(input, mode);
  *line = Utf16ToUtf8(text.c_str());
  for (char16_t& c : text) c = 0;
  std::fputs("\n", stderr);
  return any;
#else
  termios saved{};
  const bool terminal = tcgetattr(STDIN_FILENO, &saved) == 0;
  if (terminal) {
    termios quiet = saved;
    quiet.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    quiet.c_lflag |= ECHONL;
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &quiet);
  }
  ShowPrompt(prompt);
  const bool any = ReadInputLine(line);
  if (terminal) tcsetattr(STDIN_FILENO, TCSANOW, &saved);
  return any;
#endif
}

void CatchInterrupt()
{
#ifdef _WIN32
  SetConsoleCtrlHandler(OnConsoleControl, TRUE);
#else
  struct sigaction action {};
  action.sa_handler = OnInterrupt;
  sigemptyset(&action.sa_mask);
  sigaction(SIGINT, &action, nullptr);
#endif
}

bool InterruptRequested()
{
  return interrupted != 0;
}

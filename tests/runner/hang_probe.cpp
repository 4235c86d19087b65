// Blocks in a modal message box that nobody can answer under the null graphics driver:
// the Wine runner must kill it and report a failure.
#include <windows.h>

int main()
{
  return MessageBoxW(nullptr, L"Nobody answers this.", L"hang probe", MB_OK);
}

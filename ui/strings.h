// Texts of the program's string table, addressed by id.
#pragma once

#include <windows.h>

#include <string>

// LoadText's string with the given id, as the Windows calls take it: exactly as the table
// holds it (embedded NUL characters included, as in the file dialogs' filter lists);
// empty when the table lacks the id.
std::wstring LoadResourceString(UINT id);

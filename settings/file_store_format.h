// The text form of the file store: the current user's keys and values in one UTF-8 file.
//
//   Cryptelle settings store 1
//   [Software\Pellmora\Cryptelle\1.0]
//   MountInvisible=4:01000000
//   [Software\Pellmora\Cryptelle\1.0\MRU]
//
// The first line names the format. A line "[PATH]" starts a key (the full path from the
// root, key names joined by backslashes; "[]" is the root, whose values may also stand
// before the first key line); each line "NAME=TYPE:HEX" below it is one value: the name,
// the type number in decimal and the bytes as they are stored, two hexadecimal digits
// each. Names are UTF-8 in which '%', '=', '[', ']', '\', ';' and the control characters
// are written as %XX. Every key has its own line, so empty keys survive. Empty lines and lines
// starting with ';' are ignored; a trailing carriage return is dropped.
//
// Reading never fails: a text without the first line reads as an empty store, a line that
// does not parse is skipped (with the values of a key line that does not parse), a name
// given twice keeps its first spelling and the last value.
#pragma once

#include <string>

#include "settings/settings_tree.h"

// Makes `root` the store the text describes; `root` is emptied first.
void ParseSettingsText(const std::string& text, SettingsNode* root);

// The text of the store; ParseSettingsText gives the same tree back when every name is
// storable (IsStorableName).
std::string FormatSettingsText(const SettingsNode& root);

// True when a name survives the file's UTF-8 unchanged (no lone surrogate).
bool IsStorableName(const std::u16string& name);

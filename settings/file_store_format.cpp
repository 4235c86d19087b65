#include "settings/file_store_format.h"

#include <cstdint>
#include <string_view>
#include <vector>

#include "settings/settings_backend.h"
#include "system/utf.h"

namespace {

constexpr std::string_view kFirstLine = "Cryptelle settings store 1";
constexpr char kHexDigits[] = "0123456789abcdef";

bool NeedsEscape(unsigned char byte)
{
  return byte < 0x20 || byte == 0x7F || byte == '%' || byte == '=' || byte == '[' || byte == ']' ||
         byte == '\\' || byte == ';';
}

std::string EscapeName(const std::u16string& name)
{
  std::string out;
  for (const char c : Utf16ToUtf8(name.c_str())) {
    const auto byte = static_cast<unsigned char>(c);
    if (NeedsEscape(byte)) {
      out += '%';
      out += kHexDigits[byte >> 4];
      out += kHexDigits[byte & 0xF];
    } else {
      out += c;
    }
  }
  return out;
}

int HexValue(char c)
{
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// Two hexadecimal digits at `text[at]` as a byte, or -1.
int HexByte(std::string_view text, size_t at)
{
  if (at + 1 >= text.size()) return -1;
  const int high = HexValue(text[at]);
  const int low = HexValue(text[at + 1]);
  return high < 0 || low < 0 ? -1 : high * 16 + low;
}

// Decodes an escaped name; false when an escape is broken or the bytes are not UTF-8.
bool UnescapeName(std::string_view text, std::u16string* name)
{
  std::string bytes;
  for (size_t at = 0; at < text.size(); ++at) {
    if (text[at] != '%') {
      bytes += text[at];
      continue;
    }
    const int byte = HexByte(text, at + 1);
    if (byte < 0) return false;
    bytes += static_cast<char>(byte);
    at += 2;
  }
  *name = Utf8ToUtf16(bytes);
  // Undecodable bytes became U+FFFD: only text that converts back unchanged is a name.
  return Utf16ToUtf8(name->c_str()) == bytes && name->find(u'\0') == std::u16string::npos;
}

bool ParseKeyLine(std::string_view path, std::vector<std::u16string>* names)
{
  names->clear();
  if (path.empty()) return true;
  size_t start = 0;
  while (true) {
    const size_t end = path.find('\\', start);
    std::u16string name;
    const std::string_view part =
        path.substr(start, end == std::string_view::npos ? std::string_view::npos : end - start);
    if (!UnescapeName(part, &name) || name.empty() || name.size() > kMaxKeyNameLength) {
      return false;
    }
    names->push_back(name);
    if (end == std::string_view::npos) return true;
    start = end + 1;
  }
}

bool ParseType(std::string_view digits, uint32_t* type)
{
  if (digits.empty() || digits.size() > 10) return false;
  uint64_t value = 0;
  for (const char c : digits) {
    if (c < '0' || c > '9') return false;
    value = value * 10 + static_cast<uint64_t>(c - '0');
  }
  if (value > UINT32_MAX) return false;
  *type = static_cast<uint32_t>(value);
  return true;
}

bool ParseValueLine(std::string_view line, SettingsValue* value)
{
  const size_t equals = line.find('=');
  if (equals == std::string_view::npos) return false;
  const size_t colon = line.find(':', equals);
  if (colon == std::string_view::npos) return false;
  const std::string_view hex = line.substr(colon + 1);
  if (!UnescapeName(line.substr(0, equals), &value->name) ||
      value->name.size() > kMaxValueNameLength ||
      !ParseType(line.substr(equals + 1, colon - equals - 1), &value->type) ||
      hex.size() % 2 != 0) {
    return false;
  }
  value->data.clear();
  for (size_t at = 0; at < hex.size(); at += 2) {
    const int byte = HexByte(hex, at);
    if (byte < 0) return false;
    value->data.push_back(static_cast<uint8_t>(byte));
  }
  return true;
}

void FormatKey(const SettingsNode& node, const std::string& path, std::string* out)
{
  for (const SettingsValue& value : node.values) {
    *out += EscapeName(value.name);
    *out += '=';
    *out += std::to_string(value.type);
    *out += ':';
    for (const uint8_t byte : value.data) {
      *out += kHexDigits[byte >> 4];
      *out += kHexDigits[byte & 0xF];
    }
    *out += '\n';
  }
  for (const std::unique_ptr<SettingsNode>& subkey : node.subkeys) {
    const std::string subpath = path + (path.empty() ? "" : "\\") + EscapeName(subkey->name);
    *out += '[' + subpath + "]\n";
    FormatKey(*subkey, subpath, out);
  }
}

}  // namespace

void ParseSettingsText(const std::string& text, SettingsNode* root)
{
  *root = SettingsNode();
  std::string_view rest = text;
  bool first = true;
  SettingsNode* key = root;  // null while skipping the values of a broken key line
  while (!rest.empty()) {
    const size_t end = rest.find('\n');
    std::string_view line = rest.substr(0, end);
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (first) {
      if (line != kFirstLine) return;
      first = false;
      continue;
    }
    if (line.empty() || line.front() == ';') continue;
    if (line.front() == '[') {
      std::vector<std::u16string> names;
      bool created = false;
      key = line.size() >= 2 && line.back() == ']' &&
                    ParseKeyLine(line.substr(1, line.size() - 2), &names)
                ? CreateKey(*root, names, &created)
                : nullptr;
      continue;
    }
    SettingsValue value;
    if (key == nullptr || !ParseValueLine(line, &value)) continue;
    SetNodeValue(*key, value.name.c_str(), value.type, value.data.data(),
                 static_cast<uint32_t>(value.data.size()));
  }
}

std::string FormatSettingsText(const SettingsNode& root)
{
  std::string out(kFirstLine);
  out += '\n';
  FormatKey(root, std::string(), &out);
  return out;
}

bool IsStorableName(const std::u16string& name)
{
  return Utf8ToUtf16(Utf16ToUtf8(name.c_str())) == name && name.find(u'\0') == std::u16string::npos;
}

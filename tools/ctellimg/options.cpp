#include "tools/ctellimg/options.h"

#include <algorithm>
#include <cctype>
#include <cstddef>

#include "crypto/cipher.h"
#include "tools/ctellimg/capacity.h"

namespace {

struct KeyRange {
  uint32_t minimum;
  uint32_t step;
  uint32_t maximum;
};

// What the cipher engine accepts, in bits.
KeyRange RangeOf(uint32_t algorithm)
{
  switch (algorithm) {
    case kCipherAes: return {128, 64, 256};
    case kCipherBlowfish: return {32, 8, 448};
    default: return {40, 8, 128};
  }
}

std::string Lower(std::string text)
{
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

// A decimal number of at most 64 bits; false for anything else (signs, spaces, overflow).
bool ParseUnsigned(const std::string& text, uint64_t* value)
{
  if (text.empty() || text.size() > 20) return false;
  uint64_t result = 0;
  for (char c : text) {
    if (c < '0' || c > '9') return false;
    const auto digit = static_cast<uint64_t>(c - '0');
    if (result > (UINT64_MAX - digit) / 10) return false;
    result = result * 10 + digit;
  }
  *value = result;
  return true;
}

Command CommandFromName(const std::string& name)
{
  if (name == "create") return Command::kCreate;
  if (name == "info") return Command::kInfo;
  if (name == "show") return Command::kShow;
  if (name == "check") return Command::kCheck;
  if (name == "passwd") return Command::kPasswd;
  if (name == "clear") return Command::kClear;
  if (name == "help" || name == "--help" || name == "-h") return Command::kHelp;
  return Command::kNone;
}

ParseResult Refuse(const std::string& why)
{
  ParseResult result;
  result.error = why;
  return result;
}

}  // namespace

int AlgorithmFromName(const std::string& name)
{
  const std::string lower = Lower(name);
  if (lower == "aes") return static_cast<int>(kCipherAes);
  if (lower == "blowfish") return static_cast<int>(kCipherBlowfish);
  if (lower == "cast") return static_cast<int>(kCipherCast);
  return -1;
}

std::string KeyBitsError(uint32_t algorithm, uint32_t bits)
{
  const KeyRange range = RangeOf(algorithm);
  if (bits >= range.minimum && bits <= range.maximum && (bits - range.minimum) % range.step == 0)
    return std::string();
  switch (algorithm) {
    case kCipherAes: return "AES takes a key of 128, 192 or 256 bits";
    case kCipherBlowfish: return "Blowfish takes a key of 32 to 448 bits in steps of 8";
    default: return "CAST takes a key of 40 to 128 bits in steps of 8";
  }
}

uint32_t DefaultKeyBits(uint32_t algorithm)
{
  return std::min<uint32_t>(256, RangeOf(algorithm).maximum);
}

ParseResult ParseArguments(const std::vector<std::string>& arguments)
{
  if (arguments.empty()) return Refuse("no command given");
  ParseResult result;
  Options& options = result.options;
  options.command = CommandFromName(arguments[0]);
  if (options.command == Command::kNone) return Refuse("unknown command: " + arguments[0]);
  if (options.command == Command::kHelp) {
    result.ok = true;
    return result;
  }

  const Command command = options.command;
  bool haveCapacity = false;
  bool haveFat = false;
  bool haveSplit = false;
  bool haveKeyBits = false;
  std::vector<std::string> positional;
  for (size_t i = 1; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    // Options with a value take it from the next argument or after "=".
    std::string name = argument;
    std::string value;
    bool inlineValue = false;
    const size_t equals = argument.find('=');
    if (argument.rfind("--", 0) == 0 && equals != std::string::npos) {
      name = argument.substr(0, equals);
      value = argument.substr(equals + 1);
      inlineValue = true;
    }
    const auto takeValue = [&](std::string* out) {
      if (inlineValue) {
        *out = value;
        return true;
      }
      if (i + 1 >= arguments.size()) return false;
      *out = arguments[++i];
      return true;
    };
    const bool creating = command == Command::kCreate;
    const bool reporting =
        command == Command::kInfo || command == Command::kShow || command == Command::kCheck;

    if (name == "--help" || name == "-h") {
      options.command = Command::kHelp;
      result.ok = true;
      return result;
    } else if (creating && name == "--capacity") {
      std::string text;
      if (!takeValue(&text)) return Refuse("--capacity needs a size such as \"64 MB\"");
      const CapacityChoice choice = ChooseCapacity(text);
      if (choice.bytes == 0)
        return Refuse("cannot read the capacity \"" + text +
                      "\": give a number and MB, GB or TB, such as \"64 MB\" or \"1.5 TB\"");
      options.capacity = choice.bytes;
      options.capacityAdjusted = choice.adjusted;
      haveCapacity = true;
    } else if (creating && name == "--fixed" && !inlineValue) {
      options.fixed = true;
    } else if (creating && name == "--fat" && !inlineValue) {
      haveFat = true;
      options.volumeSizeLimit = UINT64_MAX;
    } else if (creating && name == "--split") {
      std::string text;
      uint64_t bytes = 0;
      if (!takeValue(&text) || !ParseUnsigned(text, &bytes))
        return Refuse("--split needs the largest volume file size in bytes");
      haveSplit = true;
      options.volumeSizeLimit = bytes;
    } else if (creating && name == "--algorithm") {
      std::string text;
      if (!takeValue(&text)) return Refuse("--algorithm needs aes, blowfish or cast");
      const int algorithm = AlgorithmFromName(text);
      if (algorithm < 0)
        return Refuse("unknown algorithm \"" + text + "\": use aes, blowfish or cast");
      options.algorithm = static_cast<uint32_t>(algorithm);
    } else if (creating && name == "--key-bits") {
      std::string text;
      uint64_t bits = 0;
      if (!takeValue(&text) || !ParseUnsigned(text, &bits) || bits > UINT32_MAX)
        return Refuse("--key-bits needs a number of bits");
      options.keyBits = static_cast<uint32_t>(bits);
      haveKeyBits = true;
    } else if (reporting && name == "--json" && !inlineValue) {
      options.json = true;
    } else if (command == Command::kCheck && name == "--data" && !inlineValue) {
      options.data = true;
    } else if (command == Command::kClear && name == "--yes" && !inlineValue) {
      options.yes = true;
    } else if (argument == "--") {
      positional.insert(positional.end(), arguments.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                        arguments.end());
      break;
    } else if (argument.size() > 1 && argument[0] == '-') {
      return Refuse("unknown option for " + arguments[0] + ": " + argument);
    } else {
      positional.push_back(argument);
    }
  }

  if (positional.empty()) return Refuse(arguments[0] + " needs an image path");
  if (positional.size() > 1) return Refuse("unexpected argument: " + positional[1]);
  options.image = positional[0];
  if (command == Command::kCreate) {
    if (!haveCapacity) return Refuse("create needs --capacity");
    if (haveFat && haveSplit) return Refuse("--fat and --split exclude each other");
    if (!haveKeyBits) options.keyBits = DefaultKeyBits(options.algorithm);
    const std::string keyError = KeyBitsError(options.algorithm, options.keyBits);
    if (!keyError.empty()) return Refuse(keyError);
  }
  result.ok = true;
  return result;
}

std::string UsageText()
{
  return "Usage:\n"
         "  ctellimg create IMAGE --capacity SIZE [--fixed] [--fat | --split BYTES]\n"
         "                 [--algorithm aes|blowfish|cast] [--key-bits N]\n"
         "  ctellimg info   IMAGE [--json]     key parameters, no password needed\n"
         "  ctellimg show   IMAGE [--json]     properties (needs the password)\n"
         "  ctellimg check  IMAGE [--data] [--json]\n"
         "                                     verify headers, records and table blocks;\n"
         "                                     with --data also read every unit\n"
         "  ctellimg passwd IMAGE              change the password (old, then new)\n"
         "  ctellimg clear  IMAGE [--yes]      wipe the contents, keep the password\n"
         "\n"
         "SIZE is a number with MB, GB or TB (binary units), such as \"64 MB\" or \"1.5 TB\";\n"
         "it is kept within 4 MB .. 2 TB and rounded down to whole megabytes.\n"
         "--fixed allocates the whole capacity now; --fat splits the image into volume files\n"
         "where the file system refuses a larger file; --split BYTES limits every volume\n"
         "file to BYTES. The default cipher is AES with a 256-bit key.\n"
         "\n"
         "Passwords are read from the terminal without echo, or else one per line of\n"
         "standard input (passwd reads the old one, then the new one).\n"
         "Exit status: 0 success, 1 failure, 2 wrong command line.\n";
}

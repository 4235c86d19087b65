#include "tools/ctellimg/commands.h"

#include <algorithm>
#include <cstdio>
#include <memory>

#include "app/clear_image.h"
#include "crypto/keys.h"
#include "image/image.h"
#include "image/image_handle.h"
#include "image/image_set.h"
#include "image/password_open.h"
#include "res/resource.h"
#include "system/file.h"
#include "system/memory.h"
#include "system/utf.h"
#include "system/wipe.h"
#include "tools/ctellimg/capacity.h"
#include "tools/ctellimg/console.h"
#include "tools/ctellimg/options.h"
#include "tools/ctellimg/report.h"
#include "tools/messages/messages.h"

namespace {

constexpr uint32_t kIdentityLength = 64;

void PrintLine(FILE* stream, const std::string& text)
{
  std::fputs(text.c_str(), stream);
  if (text.empty() || text.back() != '\n') std::fputc('\n', stream);
  std::fflush(stream);
}

int Fail(Activity activity, StatusCode status, const std::string& image)
{
  PrintLine(stderr, FailureReport(activity, status, image));
  return kExitFailure;
}

// Reads a password: from the terminal without echo (asking twice when `confirm`), or else
// one line of standard input. Prints why and returns false when there is none.
bool ReadPassword(const std::string& prompt, bool confirm, std::string* password)
{
  if (StdinIsTerminal()) {
    if (!ReadHiddenLine(prompt, password)) {
      PrintLine(stderr, "No password was entered.");
      return false;
    }
    if (!password->empty() && confirm) {
      std::string again;
      const bool read = ReadHiddenLine("Confirm password: ", &again);
      const bool same = read && again == *password;
      WipeText(again);
      if (!same) {
        WipeText(*password);
        PrintLine(stderr, ProgramText(IDS_PASSWORD_MISMATCH));
        return false;
      }
    }
  } else if (!ReadInputLine(password)) {
    PrintLine(stderr, "No password on standard input: give each password as one line.");
    return false;
  }
  if (password->empty()) {
    PrintLine(stderr, ProgramText(IDS_ENTER_PASSWORD));
    return false;
  }
  return true;
}

// Reads the image's key information, asks for its password, derives the header key and
// opens the image. On failure it has printed why.
int OpenWithPassword(const Options& options, const std::u16string& path, uint32_t openFlags,
                     Activity activity, ImageHandle** handle, ImageKeyInfo* keyInfo = nullptr)
{
  ImageKeyInfo info{sizeof(ImageKeyInfo)};
  StatusCode status = ImgGetKeyInfo(path.c_str(), &info);
  if (keyInfo != nullptr) *keyInfo = info;
  if (IsFailure(status)) return Fail(activity, status, options.image);
  std::string password;
  if (!ReadPassword("Password: ", false, &password)) return kExitFailure;
  status = OpenImageWithPassword(path, info, password, openFlags, handle);
  WipeText(password);
  if (IsFailure(status)) return Fail(activity, status, options.image);
  return kExitSuccess;
}

// Progress of creation and clearing: a bar on standard error when it is a terminal, and
// Ctrl+C turned into a cancel at the next report.
struct Progress {
  bool show = false;
  int shownPercent = -1;
};

uint32_t ReportProgress(uint32_t position, uint32_t range, void* context, uint64_t)
{
  auto* progress = static_cast<Progress*>(context);
  if (InterruptRequested()) return 0;
  if (progress->show && range != 0) {
    const auto percent = static_cast<int>(uint64_t{position} * 100 / range);
    if (percent != progress->shownPercent) {
      progress->shownPercent = percent;
      constexpr int kWidth = 40;
      const int filled = percent * kWidth / 100;
      std::fprintf(stderr, "\r[%s%s] %3d%%", std::string(static_cast<size_t>(filled), '#').c_str(),
                   std::string(static_cast<size_t>(kWidth - filled), ' ').c_str(), percent);
      std::fflush(stderr);
    }
  }
  return 1;
}

void EndProgress(const Progress& progress)
{
  if (progress.show && progress.shownPercent >= 0) std::fputc('\n', stderr);
}

bool FileExists(const std::u16string& path)
{
  SysFile* file = nullptr;
  const StatusCode status = SysOpenFile(path.c_str(), kFileShareRead, &file);
  if (IsFailure(status)) return status != kSysNotFound;
  SysCloseFile(file);
  return true;
}

int Create(const Options& options, const std::u16string& path)
{
  if (FileExists(path)) {
    PrintLine(stderr, "Cannot create " + options.image +
                          ".\nA file of that name exists already; delete it first to replace it.");
    return kExitFailure;
  }
  if (options.capacityAdjusted)
    PrintLine(stderr, "Capacity adjusted to " + CapacityText(options.capacity) +
                          " (4 MB to 2 TB, in whole megabytes).");
  if (options.keyBits < 64) PrintLine(stderr, kShortKeyText);

  std::string password;
  if (!ReadPassword("New password: ", true, &password)) return kExitFailure;

  const uint32_t keyLength = options.keyBits / 8;
  uint8_t identity[kIdentityLength] = {};
  KeyBuffer headerKey(keyLength);
  KeyBuffer dataKey(keyLength);
  StatusCode status = CryptoRandomBytes(identity, kIdentityLength);
  if (!IsFailure(status)) status = DeriveHeaderKey(password, identity, headerKey);
  WipeText(password);
  if (!IsFailure(status) && dataKey.data() == nullptr) status = kSysOutOfMemory;
  if (!IsFailure(status)) status = CryptoGenerateKey(dataKey.data(), keyLength);

  Progress progress;
  progress.show = StderrIsTerminal();
  if (!IsFailure(status)) {
    CatchInterrupt();
    const ImageCreateParams params{sizeof(ImageCreateParams),
                                   options.fixed ? kCreateFixed : 0u,
                                   options.capacity,
                                   options.volumeSizeLimit,
                                   ReportProgress,
                                   &progress};
    status = ImgCreate(path.c_str(), &params, options.algorithm, kCipherModeCbc, headerKey.data(),
                       dataKey.data(), keyLength, identity, kIdentityLength);
    EndProgress(progress);
  }
  if (status == kImgCancelled) {
    PrintLine(stderr, "Creation cancelled; nothing was left on disk.");
    return Fail(Activity::kCreate, status, options.image);
  }
  if (IsFailure(status)) return Fail(Activity::kCreate, status, options.image);
  std::printf("Created %s: %s, %s-%u, %s.\n", options.image.c_str(),
              CapacityText(options.capacity).c_str(), AlgorithmName(options.algorithm).c_str(),
              options.keyBits, options.fixed ? "fixed size" : "dynamic");
  return kExitSuccess;
}

int Info(const Options& options, const std::u16string& path)
{
  ImageKeyInfo info{sizeof(ImageKeyInfo)};
  const StatusCode status = ImgGetKeyInfo(path.c_str(), &info);
  if (IsFailure(status)) return Fail(Activity::kOpen, status, options.image);
  PrintLine(stdout,
            options.json ? KeyInfoJson(options.image, info) : KeyInfoText(options.image, info));
  return kExitSuccess;
}

int Show(const Options& options, const std::u16string& path)
{
  // Read-only, so that looking changes neither the last-open time nor the in-use mark.
  ImageHandle* handle = nullptr;
  const int opened = OpenWithPassword(options, path, kOpenReadOnly, Activity::kOpen, &handle);
  if (opened != kExitSuccess) return opened;
  ImageProperties properties{sizeof(ImageProperties)};
  StatusCode status = ImgGetProperties(handle, &properties);
  const StatusCode closed = ImgClose(handle, 0);
  if (!IsFailure(status)) status = closed;
  if (IsFailure(status)) return Fail(Activity::kOpen, status, options.image);
  PrintLine(stdout, options.json ? PropertiesJson(options.image, properties)
                                 : PropertiesText(options.image, properties));
  return kExitSuccess;
}

// Verifies what the open has not: every allocation table block (Adler-32) and, when asked,
// that the whole image stream reads and deciphers.
StatusCode CheckOpenImage(ImageHandle* handle, bool data, CheckSummary* summary)
{
  summary->volumes = static_cast<uint32_t>(handle->set.volumes.size());
  StatusCode status = kStatusSuccess;
  if (handle->tableCache) {
    const uint32_t blocks = handle->tableCache->TableBlocks();
    for (uint32_t block = 0; block < blocks && !IsFailure(status); ++block) {
      int slot = 0;
      status = handle->tableCache->Load(block, &slot);
      if (!IsFailure(status)) ++summary->tableBlocks;
    }
  }
  if (IsFailure(status) || !data) return status;

  uint8_t* buffer = static_cast<uint8_t*>(SysAllocate(kChunkSize, kAllocPageable));
  if (buffer == nullptr) return kSysOutOfMemory;
  const uint64_t end = handle->set.StreamEnd();
  for (uint64_t offset = 0; offset < end && !IsFailure(status);) {
    const uint64_t piece = std::min<uint64_t>(end - offset, kChunkSize);
    status = ReadStream(handle->set, offset, buffer, piece);
    if (!IsFailure(status)) summary->bytesRead += piece;
    offset += piece;
  }
  SysRelease(buffer);
  summary->dataRead = !IsFailure(status);
  return status;
}

int Check(const Options& options, const std::u16string& path)
{
  // The open itself verifies every volume header, the descriptor and the information record.
  ImageHandle* handle = nullptr;
  const int opened = OpenWithPassword(options, path, kOpenReadOnly, Activity::kOpen, &handle);
  if (opened != kExitSuccess) return opened;
  CheckSummary summary;
  StatusCode status = CheckOpenImage(handle, options.data, &summary);
  const StatusCode closed = ImgClose(handle, 0);
  if (!IsFailure(status)) status = closed;
  if (IsFailure(status)) return Fail(Activity::kOpen, status, options.image);
  PrintLine(stdout,
            options.json ? CheckJson(options.image, summary) : CheckText(options.image, summary));
  return kExitSuccess;
}

int ChangePassword(const Options& options, const std::u16string& path)
{
  // The key information is read before the open: an open image admits no other reader.
  ImageHandle* handle = nullptr;
  ImageKeyInfo info{sizeof(ImageKeyInfo)};
  const int opened = OpenWithPassword(options, path, 0, Activity::kChangePassword, &handle, &info);
  if (opened != kExitSuccess) return opened;

  StatusCode status = kStatusSuccess;
  std::string password;
  if (!IsFailure(status) && !ReadPassword("New password: ", true, &password)) {
    ImgClose(handle, 0);
    return kExitFailure;
  }
  KeyBuffer key(info.keyLength);
  if (!IsFailure(status)) status = DeriveHeaderKey(password, info.identityBlock, key);
  WipeText(password);
  if (!IsFailure(status)) status = ImgChangeKey(handle, key.data(), key.length());
  const StatusCode closed = ImgClose(handle, 0);
  if (!IsFailure(status)) status = closed;
  if (IsFailure(status)) return Fail(Activity::kChangePassword, status, options.image);
  PrintLine(stdout, ProgramText(IDS_PASSWORD_CHANGED));
  return kExitSuccess;
}

bool AskYes(const std::string& question)
{
  std::fputs(question.c_str(), stderr);
  std::fflush(stderr);
  std::string answer;
  if (!ReadInputLine(&answer)) return false;
  return answer == "y" || answer == "Y" || answer == "yes" || answer == "Yes" || answer == "YES";
}

int Clear(const Options& options, const std::u16string& path)
{
  if (!options.yes && !StdinIsTerminal()) {
    PrintLine(stderr,
              "clear wipes the image's contents: give --yes when standard input is not "
              "a terminal.");
    return kExitUsage;
  }
  ImageHandle* handle = nullptr;
  const int opened = OpenWithPassword(options, path, 0, Activity::kClear, &handle);
  if (opened != kExitSuccess) return opened;

  ImageProperties properties{sizeof(ImageProperties)};
  StatusCode status = ImgGetProperties(handle, &properties);
  if (!IsFailure(status) && !options.yes) {
    std::string question = "Every byte of data in " + options.image + " will be lost.\n";
    if (ClearTakesLong((properties.flags & kImageFixed) != 0, properties.capacity)) {
      const std::string longTime = ProgramText(IDS_CLEAR_TAKES_LONG);
      question += longTime.substr(0, longTime.find('\n')) + "\n";
    }
    if (!AskYes(question + "Clear it? [y/N] ")) {
      ImgClose(handle, 0);
      PrintLine(stderr, "Nothing was changed.");
      return kExitFailure;
    }
  }
  Progress progress;
  progress.show = StderrIsTerminal();
  if (!IsFailure(status)) {
    CatchInterrupt();
    status = ImgClear(handle, ReportProgress, &progress);
    EndProgress(progress);
  }
  const StatusCode closed = ImgClose(handle, 0);
  if (!IsFailure(status)) status = closed;
  if (status == kImgCancelled)
    PrintLine(stderr,
              "Clearing was cancelled: the virtual disk image is corrupted now. You will "
              "need to create new virtual disk image with the same file name.");
  if (IsFailure(status)) return Fail(Activity::kClear, status, options.image);
  PrintLine(stdout, ProgramText(IDS_IMAGE_CLEARED));
  return kExitSuccess;
}

}  // namespace

int RunTool(const std::vector<std::string>& arguments)
{
  const ParseResult parsed = ParseArguments(arguments);
  if (!parsed.ok) {
    PrintLine(stderr, "ctellimg: " + parsed.error + "\n");
    std::fputs(UsageText().c_str(), stderr);
    return kExitUsage;
  }
  const Options& options = parsed.options;
  const std::u16string path = Utf8ToUtf16(options.image);
  switch (options.command) {
    case Command::kCreate: return Create(options, path);
    case Command::kInfo: return Info(options, path);
    case Command::kShow: return Show(options, path);
    case Command::kCheck: return Check(options, path);
    case Command::kPasswd: return ChangePassword(options, path);
    case Command::kClear: return Clear(options, path);
    case Command::kHelp:
    case Command::kNone:
    default: std::fputs(UsageText().c_str(), stdout); return kExitSuccess;
  }
}

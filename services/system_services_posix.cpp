// Outside Windows the program has no windows, shell, help viewer or companion programs:
// each service refuses, so that a portable core run without a test's script never waits
// for an answer nobody can give.
#include "services/system_services.h"

namespace {

class CUnavailableMessageBox final : public CMessageBoxService {
 public:
  int Show(WindowRef, const std::u16string&, const std::u16string&, uint32_t) override
  {
    return kIdCancel;
  }
};

class CUnavailableFileDialogs final : public CFileDialogService {
 public:
  std::optional<FileDialogChoice> ChooseFileToOpen(const FileDialogRequest&) override
  {
    return std::nullopt;
  }
  std::optional<FileDialogChoice> ChooseFileToSave(const FileDialogRequest&) override
  {
    return std::nullopt;
  }
};

class CUnavailableShell final : public CShellService {
 public:
  StatusCode Open(WindowRef, const std::u16string&) override { return kSysNotSupported; }
  StatusCode LookAt(const std::u16string&) override { return kSysNotSupported; }
  uint32_t FormatDrive(WindowRef, unsigned, unsigned, unsigned) override { return kShFmtError; }
  StatusCode PrepareForWrite(WindowRef, const std::u16string&, uint32_t) override
  {
    return kSysNotSupported;
  }
  StatusCode SpecialFolder(int, std::u16string*) override { return kSysNotSupported; }
};

class CUnavailableHelp final : public CHelpService {
 public:
  StatusCode ShowContents(WindowRef) override { return kSysNotSupported; }
  StatusCode ShowTopic(WindowRef, uint32_t) override { return kSysNotSupported; }
};

class CUnavailableProcesses final : public CProcessService {
 public:
  StatusCode Start(const ProcessStartRequest&, std::u16string* failureText) override
  {
    if (failureText != nullptr) failureText->clear();
    return kSysNotSupported;
  }
};

}  // namespace

CMessageBoxService& SystemMessageBoxService()
{
  static CUnavailableMessageBox service;
  return service;
}

CFileDialogService& SystemFileDialogService()
{
  static CUnavailableFileDialogs service;
  return service;
}

CShellService& SystemShellService()
{
  static CUnavailableShell service;
  return service;
}

CHelpService& SystemHelpService()
{
  static CUnavailableHelp service;
  return service;
}

CProcessService& SystemProcessService()
{
  static CUnavailableProcesses service;
  return service;
}

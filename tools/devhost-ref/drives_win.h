// The drives of mounted disks on Windows and under Wine: each drive letter is mapped to
// a scratch folder of its own, so that free-space queries and opening the drive work.
#pragma once

#include <map>
#include <string>

#include "tools/devhost-ref/mount_table.h"

class WindowsDrives : public HostDrives {
 public:
  bool IsTaken(char16_t letter) override;
  StatusCode Attach(char16_t letter, const Guid& diskId) override;
  void Detach(char16_t letter) override;
  // A disk counts as in use while its letter is listed in the "InUse" control value.
  bool InUse(char16_t letter) override;

 private:
  std::map<char16_t, std::wstring> folders_;
};

// What the flows' tests stand on: every seam a flow reaches replaced by a script that
// records its calls (device host, message boxes, shell, process start, the directory probe,
// the mount dialog) and the settings in memory.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "app/directory_probe.h"
#include "app/mount_request.h"
#include "settings/memory_store.h"
#include "settings/settings_backend.h"
#include "support/answer_script.h"
#include "support/fake_device_host.h"
#include "support/scripted_message_boxes.h"
#include "support/scripted_processes.h"
#include "support/scripted_shell.h"
#include "system/utf.h"

// The directory probe: records each path and answers the scripted error numbers.
class CScriptedDirectoryProbe final : public CDirectoryProbe {
 public:
  CScriptedDirectoryProbe() : previous_(ReplaceDirectoryProbe(this)) {}
  ~CScriptedDirectoryProbe() override { ReplaceDirectoryProbe(previous_); }
  CScriptedDirectoryProbe(const CScriptedDirectoryProbe&) = delete;
  CScriptedDirectoryProbe& operator=(const CScriptedDirectoryProbe&) = delete;

  void Answer(uint32_t systemError) { answers_.Push(systemError); }
  const std::vector<std::u16string>& Paths() const { return paths_; }

  uint32_t TryCreateDirectory(const std::u16string& path) override
  {
    paths_.push_back(path);
    return answers_.Next("directory probe of \"" + Utf16ToUtf8(path.c_str()) + "\"");
  }

 private:
  CDirectoryProbe* previous_;
  CAnswerScript<uint32_t> answers_{"directory-probe", kErrorNotSupported};
  std::vector<std::u16string> paths_;
};

// The mount dialog: records the owner and initial path of each showing and answers the
// scripted request (none for Cancel).
class CScriptedMountDialog final : public CMountRequestSource {
 public:
  struct Showing {
    WindowRef owner;
    std::u16string initialPath;
  };

  void Answer(std::optional<MountRequest> request) { answers_.Push(std::move(request)); }
  const std::vector<Showing>& Showings() const { return showings_; }

  std::optional<MountRequest> Ask(WindowRef owner, const std::u16string& initialPath) override
  {
    showings_.push_back({owner, initialPath});
    return answers_.Next("mount dialog");
  }

 private:
  CAnswerScript<std::optional<MountRequest>> answers_{"mount-dialog", std::nullopt};
  std::vector<Showing> showings_;
};

// The settings in memory for the test's lifetime.
class CMemorySettings {
 public:
  CMemorySettings() : previous_(SetSettingsBackend(&store_)) {}
  ~CMemorySettings() { SetSettingsBackend(previous_); }
  CMemorySettings(const CMemorySettings&) = delete;
  CMemorySettings& operator=(const CMemorySettings&) = delete;

  MemorySettingsBackend& Store() { return store_; }

 private:
  MemorySettingsBackend store_;
  SettingsBackend* previous_;
};

class FlowTest : public testing::Test {
 protected:
  FlowTest() { host.SetStrict(true); }

  // The owner every flow gets; only its identity matters.
  WindowRef Owner() { return &ownerObject_; }

  CMemorySettings settings;
  FakeDeviceHost host;
  CScriptedMessageBoxes prompts;
  CScriptedShell shell;
  CScriptedProcesses processes;
  CScriptedDirectoryProbe probe;

 private:
  int ownerObject_ = 0;
};

// Screens against the reference device host over real local RPC: the user-interface harness
// (every service but the device host scripted), the settings in memory, and the host
// running with nothing mounted and no fault scripted, as each case starts and leaves it.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <utility>

#include "app/flow_fixture.h"
#include "host_fixture.h"
#include "support/ui_harness.h"

class HostScreenTest : public UiTest {
 protected:
  void SetUp() override { ASSERT_TRUE(PrepareReferenceHost()); }
  void TearDown() override { ReleaseReferenceHost(); }

  // An 8 MiB dynamic AES-256 image with the password "secret".
  std::u16string MakeImage(const std::u16string& name) { return MakeSecretImage(dir_, name); }

  CMemorySettings settings_;
  TempDir dir_;
};

// The message-box service over the harness's script: each prompt is passed on to the
// script, and `beforeAnswer` runs first with the prompt's number (from 0), so that a test
// can change the world while the user reads the box.
class CPromptsWithAction final : public CMessageBoxService {
 public:
  explicit CPromptsWithAction(std::function<void(int prompt)> beforeAnswer)
      : beforeAnswer_(std::move(beforeAnswer)), script_(ReplaceMessageBoxService(this))
  {
  }
  ~CPromptsWithAction() override { ReplaceMessageBoxService(script_); }
  CPromptsWithAction(const CPromptsWithAction&) = delete;
  CPromptsWithAction& operator=(const CPromptsWithAction&) = delete;

  int Show(WindowRef owner, const std::u16string& text, const std::u16string& caption,
           uint32_t flags) override
  {
    beforeAnswer_(shown_++);
    return script_->Show(owner, text, caption, flags);
  }

 private:
  std::function<void(int)> beforeAnswer_;
  CMessageBoxService* script_;
  int shown_ = 0;
};

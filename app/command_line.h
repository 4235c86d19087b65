// What a start of the program is asked to do, read from its arguments: tell running copies
// to refresh, dismount without a window, mount one image with only the mount dialog, start
// interactively, or do nothing.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

enum class StartAction {
  kInteractive,         // no argument: the single-instance check, then the main window
  kNotify,              // "/notify": tell every top-level window to refresh, exit 0
  kDismountAll,         // "/dismount" "all" ["/forced"]
  kDismountMountPoint,  // "/dismount" <mount point> ["/forced"]
  kMount,               // "/mount" <image path>: only the mount dialog
  kReject,              // anything else: nothing is done
};

struct StartRequest {
  StartAction action = StartAction::kInteractive;
  // The mount point of kDismountMountPoint or the image path of kMount, as typed.
  std::u16string argument;
  uint32_t forced = 0;  // 1 only for a dismount with "/forced" as its last of four arguments
};

// Exit codes: 0 after "/notify" or a hand-over to a running copy; -1 after any one-shot
// mount or dismount, whatever its outcome, and for arguments that ask for nothing known.
inline constexpr int kExitHandedOver = 0;
inline constexpr int kExitOneShot = -1;

// Reads the argument list as the system split it, the program itself first. The switches
// "/notify", "/dismount", "/mount", "all" and "/forced" are compared ignoring the case of
// ASCII letters only. "/forced" counts only as the fourth of exactly four entries.
StartRequest ReadStartRequest(const std::vector<std::u16string>& arguments);

// True when the two texts are equal after folding 'A'..'Z' to 'a'..'z'; no other character
// is folded.
bool EqualsIgnoringAsciiCase(const std::u16string& text, const std::u16string& word);

// The names that copies of the program, and the monitor program, share on one desktop: the
// single-instance mutex and the three registered window messages, with the answer a running
// main window gives to the activate message.
#pragma once

#include <cstdint>

// Names the single-instance mutex and the activate message alike: a second start hands its
// work over to the running copy, whose main window comes to the front.
inline constexpr char16_t kActivateMessageName[] = u"{8C3DB37F-EF45-4380-BC5D-4113D6DEE729}";
// Tells the main window to list the mounted disks anew ("/notify", the Refresh command).
inline constexpr char16_t kRefreshMessageName[] = u"{398BE961-66CC-41e7-8633-E93A5989ABD1}";
// Asks the main window to close.
inline constexpr char16_t kCloseMessageName[] = u"{3523D7FC-A619-4087-89A7-FB938078B54D}";

// The running main window's answer to the activate message (the sender does not look at it).
inline constexpr uint32_t kActivateReply = 0x8CBAF11E;

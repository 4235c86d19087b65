// The names that copies of the program share on one desktop: the mutex that marks a running
// interactive copy and the registered window messages between copies.
#pragma once

#include <cstdint>

// Names the single-instance mutex and, registered as a window message, asks the running
// copy to bring its main window to the front.
inline constexpr char16_t kSingleInstanceName[] = u"{8C3DB37F-EF45-4380-BC5D-4113D6DEE729}";
// Registered window message: refresh the list of mounted disks ("/notify").
inline constexpr char16_t kRefreshMessageName[] = u"{398BE961-66CC-41e7-8633-E93A5989ABD1}";
// Registered window message: close the main window.
inline constexpr char16_t kCloseMessageName[] = u"{3523D7FC-A619-4087-89A7-FB938078B54D}";

// The running main window's answer to the activate message; senders do not look at it.
inline constexpr uintptr_t kActivateReply = 0x8CBAF11E;

// How long a second start waits for the running copy to take the activate message.
inline constexpr uint32_t kHandOverTimeoutMs = 3000;

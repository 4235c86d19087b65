// The emergency hot key's encodings. Stored ("EmergencyHotKey", 32 bits, the low 16 used):
// bits 0-7 the virtual-key code, bits 8-15 the system hot-key modifiers (Alt 1, Ctrl 2,
// Shift 4, as RegisterHotKey takes them); 0 means no hot key. The hot-key edit control's
// 16-bit form keeps the key code in its low byte and its own flags in the high byte
// (Shift 1, Ctrl 2, Alt 4).
#pragma once

#include <cstdint>

inline constexpr uint32_t kHotKeyAlt = 1;      // MOD_ALT
inline constexpr uint32_t kHotKeyControl = 2;  // MOD_CONTROL
inline constexpr uint32_t kHotKeyShift = 4;    // MOD_SHIFT

inline constexpr uint32_t kHotKeyControlShift = 1;  // HOTKEYF_SHIFT
inline constexpr uint32_t kHotKeyControlCtrl = 2;   // HOTKEYF_CONTROL
inline constexpr uint32_t kHotKeyControlAlt = 4;    // HOTKEYF_ALT

constexpr uint32_t HotKeyVirtualKey(uint32_t stored)
{
  return stored & 0xFF;
}

constexpr uint32_t HotKeyModifiers(uint32_t stored)
{
  return (stored >> 8) & 0xFF;
}

// The stored value for a key code and system modifiers.
constexpr uint32_t MakeHotKey(uint32_t modifiers, uint32_t virtualKey)
{
  return modifiers * 256 + virtualKey;
}

// The control's form of a stored value (its Alt, Ctrl and Shift only).
constexpr uint16_t HotKeyToControl(uint32_t stored)
{
  const uint32_t modifiers = HotKeyModifiers(stored);
  const uint32_t flags = ((modifiers & kHotKeyAlt) != 0 ? kHotKeyControlAlt : 0) |
                         ((modifiers & kHotKeyShift) != 0 ? kHotKeyControlShift : 0) |
                         ((modifiers & kHotKeyControl) != 0 ? kHotKeyControlCtrl : 0);
  return static_cast<uint16_t>(flags << 8 | HotKeyVirtualKey(stored));
}

// The stored value of the control's form (its Alt, Ctrl and Shift only).
constexpr uint32_t HotKeyFromControl(uint16_t control)
{
  const uint32_t flags = static_cast<uint32_t>(control >> 8);
  const uint32_t modifiers = ((flags & kHotKeyControlAlt) != 0 ? kHotKeyAlt : 0) |
                             ((flags & kHotKeyControlCtrl) != 0 ? kHotKeyControl : 0) |
                             ((flags & kHotKeyControlShift) != 0 ? kHotKeyShift : 0);
  return MakeHotKey(modifiers, control & 0xFFu);
}

// The hot-key control wrapper on a real hot-key control: the combination set is the one the
// control reports, and the rules change what a typed key becomes.
#include <windows.h>

#include <commctrl.h>

#include "support/control_host.h"
#include "support/ui_harness.h"
#include "ui/controls/hot_key.h"

namespace {

class HotKeyTest : public UiTest {
 protected:
  CHotKeyCtrl CreateHotKey()
  {
    return CHotKeyCtrl(host_.Create(HOTKEY_CLASSW, 0, RECT{10, 10, 210, 30}));
  }

  // Presses and releases a key without modifiers in the control, as typing would.
  static void Type(const CHotKeyCtrl& control, WPARAM key)
  {
    SetFocus(control.Handle());
    control.Send(WM_KEYDOWN, key, 1);
    control.Send(WM_KEYUP, key, 0xC0000001);
  }

  CControlHost host_;
};

TEST_F(HotKeyTest, CombinationIsSetAndReadAsKeyAndModifiers)
{
  const CHotKeyCtrl control = CreateHotKey();
  EXPECT_EQ(control.HotKey().virtualKey, 0);

  control.SetHotKey({VK_F12, HOTKEYF_CONTROL | HOTKEYF_SHIFT});
  EXPECT_EQ(control.Send(HKM_GETHOTKEY), 0x037B);

  control.Send(HKM_SETHOTKEY, MAKEWORD('D', HOTKEYF_ALT));
  const HotKeyCombination combination = control.HotKey();
  EXPECT_EQ(combination.virtualKey, 'D');
  EXPECT_EQ(combination.modifiers, HOTKEYF_ALT);

  control.SetHotKey({});
  EXPECT_EQ(control.Send(HKM_GETHOTKEY), 0);
}

TEST_F(HotKeyTest, RulesGiveARefusedCombinationTheReplacementModifiers)
{
  const CHotKeyCtrl control = CreateHotKey();
  Type(control, 'A');
  ASSERT_EQ(control.HotKey().virtualKey, 'A');
  ASSERT_EQ(control.HotKey().modifiers, 0);

  control.SetRules(HKCOMB_NONE, HOTKEYF_CONTROL | HOTKEYF_ALT);
  Type(control, 'B');
  EXPECT_EQ(control.HotKey().virtualKey, 'B');
  EXPECT_EQ(control.HotKey().modifiers, HOTKEYF_CONTROL | HOTKEYF_ALT);
}

}  // namespace

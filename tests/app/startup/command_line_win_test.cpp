// The command-line forms of ctell.exe that need no device host, each in a process of its
// own: exit codes, "/notify", the hand-over to a running copy, and "/mount" beside one.
#include <gtest/gtest.h>

#include <string>

#include "app/startup/ctell_process_win.h"
#include "res/resource.h"

TEST(CtellCommandLine, UnknownArgumentsEndWithMinusOne)
{
  EXPECT_EQ(RunCtell(L"-notify"), kExitMinusOne);
  EXPECT_EQ(RunCtell(L"D:\\Images\\disk.qvi"), kExitMinusOne);
  EXPECT_EQ(RunCtell(L"/forced"), kExitMinusOne);
}

TEST(CtellCommandLine, DismountOrMountWithoutTheirArgumentEndWithMinusOne)
{
  EXPECT_EQ(RunCtell(L"/dismount"), kExitMinusOne);
  EXPECT_EQ(RunCtell(L"/MOUNT"), kExitMinusOne);
}

TEST(CtellCommandLine, NotifyInAnyCaseEndsWithZero)
{
  EXPECT_EQ(RunCtell(L"/notify"), 0u);
  EXPECT_EQ(RunCtell(L"/NoTiFy /dismount all"), 0u);
}

TEST(CtellCommandLine, NotifyTellsTheRunningCopyToRefreshWithoutActivatingIt)
{
  CStandInCopy running;
  ASSERT_TRUE(running.Ready());
  EXPECT_EQ(RunCtell(L"/notify"), 0u);
  EXPECT_TRUE(PumpMessagesUntil([&] { return running.Refreshes() == 1; }, 5000));
  PumpMessagesFor(200);
  EXPECT_EQ(running.Refreshes(), 1);
  EXPECT_EQ(running.Activations(), 0);
}

TEST(CtellCommandLine, SecondStartActivatesTheRunningCopyAndEndsWithZero)
{
  CStandInCopy running;
  ASSERT_TRUE(running.Ready());
  const ULONGLONG start = GetTickCount64();
  EXPECT_EQ(RunCtell(L""), 0u);
  // The copy answered at once, so the hand-over did not wait for its time-out.
  EXPECT_LT(GetTickCount64() - start, 3000u);
  EXPECT_EQ(running.Activations(), 1);
  EXPECT_EQ(running.Refreshes(), 0);
}

TEST(CtellCommandLine, SecondStartEndsWithZeroWhenTheRunningCopyDoesNotAnswer)
{
  CStandInCopy running;
  ASSERT_TRUE(running.Ready());
  CtellProcess second(L"");
  ASSERT_TRUE(second.Started());
  EXPECT_EQ(second.WaitForExitWithoutAnswering(20000), 0u);
  PumpMessagesFor(200);
}

TEST(CtellCommandLine, MountBesideARunningCopyOpensOnlyTheMountDialog)
{
  CStandInCopy running;
  ASSERT_TRUE(running.Ready());
  const std::wstring path = L"C:\\some folder\\my disk.qvi";
  CtellProcess mount(L"/mount \"" + path + L"\" ignored");
  ASSERT_TRUE(mount.Started());
  const HWND dialog = mount.WaitForWindow(kMountDialogCaption, 20000);
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(ControlText(dialog, IDC_IMAGE_PATH), path);
  EXPECT_EQ(GetWindow(dialog, GW_OWNER), nullptr);
  EXPECT_EQ(mount.CountWindows(kFrameTitle), 0);
  EXPECT_EQ(running.Activations(), 0);

  PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
  EXPECT_EQ(mount.WaitForExit(10000), kExitMinusOne);
  EXPECT_EQ(running.Activations(), 0);
}

TEST(CtellCommandLine, MountWithoutARunningCopyOpensTheMountDialog)
{
  CtellProcess mount(L"/Mount D:\\disk.qvi");
  ASSERT_TRUE(mount.Started());
  const HWND dialog = mount.WaitForWindow(kMountDialogCaption, 20000);
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(ControlText(dialog, IDC_IMAGE_PATH), L"D:\\disk.qvi");
  PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
  EXPECT_EQ(mount.WaitForExit(10000), kExitMinusOne);
}

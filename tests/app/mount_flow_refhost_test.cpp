// The mount flow through the real mount dialog against the reference device host: the
// dialog is filled and accepted as a user would, the mount goes over local RPC, and what the
// host then lists, the prompts and the recent images are checked.
#include "app/mount_flow.h"

#include <windows.h>

#include <dbt.h>

#include <algorithm>
#include <filesystem>

#include "devhost/host_screen_fixture.h"
#include "dialogs/mount_dialog_win.h"
#include "res/resource.h"
#include "settings/options.h"
#include "ui/controls/combo_box.h"

namespace {

const std::u16string kWrongPasswordText =
    u"Password is wrong or the virtual disk image file is not valid or is corrupted.";

// What a user does in the dialog: the path (unless it was given), the password, the drive
// letter from the list, then OK.
struct DialogInput {
  std::wstring path;  // empty: keep the path the flow filled in
  std::wstring password;
  std::wstring mountPoint;  // an entry of the drive list, e.g. "P:"
  bool readOnly = false;
  bool removable = false;
};

class MountFlowHostTest : public HostScreenTest {
 protected:
  void SetUp() override
  {
    HostScreenTest::SetUp();
    ASSERT_NE(
        owner_.Create(nullptr, RECT{0, 0, 400, 300}, L"owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE),
        nullptr);
  }

  WindowRef Owner() const { return owner_.Handle(); }

  // Runs the mount flow with the real dialog, which `input` fills and accepts. Returns
  // whether the dialog offered the input's drive letter. The dialog is shown exactly once:
  // a flow that ended without it fails RunModal, and a second showing would be a modal
  // window that nobody closes, which the harness's watchdog fails.
  bool MountThroughDialog(const DialogInput& input, const std::u16string& initialPath = {})
  {
    bool offered = false;
    CMountDlg dialog;
    RunModal(
        [&] {
          MountFlow(Owner(), initialPath, dialog, recent_);
          return 0;
        },
        [&](HWND window) {
          if (!input.path.empty()) SetControlText(window, IDC_IMAGE_PATH, input.path);
          SetControlText(window, IDC_PASSWORD, input.password);
          if (input.readOnly) Click(window, IDC_MOUNT_READ_ONLY);
          if (input.removable) Click(window, IDC_MOUNT_REMOVABLE);
          offered = CComboBox(GetDlgItem(window, IDC_MOUNT_POINT)).SelectString(input.mountPoint) !=
                    CB_ERR;
          Click(window, IDOK);
        });
    return offered;
  }

  RecentImageList recent_;

 private:
  CCustomWindow owner_;
};

std::vector<std::u16string> StoredRecentImages()
{
  RecentImageList stored;
  EXPECT_EQ(ReadRecentList(&stored, kRecentListKeyPath), kStatusSuccess);
  return stored.entries;
}

std::u16string CannotOpen(const std::u16string& image, const std::u16string& reason)
{
  return u"Cannot open " + image + u".\n" + reason;
}

std::u16string CannotMount(const std::u16string& image, const std::u16string& code)
{
  return u"Cannot mount " + image + u".\nError code: " + code +
         u"\n\nPlease contact technical support if the problem persists.";
}

void ExpectMountPrompt(const CScriptedMessageBoxes::Prompt& prompt, WindowRef owner,
                       const std::u16string& text, uint32_t flags)
{
  EXPECT_EQ(prompt.owner, owner);
  EXPECT_EQ(prompt.text, text);
  EXPECT_EQ(prompt.caption, u"Cannot Mount Virtual Disk Image");
  EXPECT_EQ(prompt.flags, flags);
}

// The system's own device host, except that a "driver not started" answer to a mount also
// stops the host's service: the state in which the flow has to start the service itself
// before the mount can be repeated. Every call goes to the reference host.
class CServiceStoppingHost final : public DeviceHost {
 public:
  CServiceStoppingHost() : previous_(ReplaceDeviceHost(this)) {}
  ~CServiceStoppingHost() override { ReplaceDeviceHost(previous_); }
  CServiceStoppingHost(const CServiceStoppingHost&) = delete;
  CServiceStoppingHost& operator=(const CServiceStoppingHost&) = delete;

  int starts = 0;

  StatusCode MountWithPassword(const std::u16string& imagePath, const std::u16string& mountPoint,
                               uint32_t mountFlags, const std::u16string& password) override
  {
    const StatusCode status = host_.MountWithPassword(imagePath, mountPoint, mountFlags, password);
    if (status == kDevNotRunning) {
      EXPECT_EQ(StopHostService(30000), 0u);
    }
    return status;
  }
  StatusCode DismountAll(uint32_t forced) override { return host_.DismountAll(forced); }
  StatusCode DismountMountPoint(const std::u16string& mountPoint, uint32_t forced) override
  {
    return host_.DismountMountPoint(mountPoint, forced);
  }
  StatusCode DismountById(const Guid& diskId, uint32_t forced) override
  {
    return host_.DismountById(diskId, forced);
  }
  StatusCode EnumerateDisks(std::vector<MountedDisk>* disks) override
  {
    return host_.EnumerateDisks(disks);
  }
  StatusCode FormatVolume(const std::u16string& mountPoint, uint32_t selector) override
  {
    return host_.FormatVolume(mountPoint, selector);
  }
  StatusCode StartDeviceHostService() override
  {
    ++starts;
    return host_.StartDeviceHostService();
  }

 private:
  DeviceHost& host_ = PlatformDeviceHost();
  DeviceHost* previous_;
};

// The drive of a disk of the reference host is a folder of its own: creating its root is
// refused as an existing directory, not as access denied, so the flow has the shell look at
// the drive but does not open it.
TEST_F(MountFlowHostTest, MountThroughTheDialogListsTheDiskAndRecordsTheImage)
{
  const std::u16string image = MakeImage(u"work.qvi");
  shell_.AnswerLookAt(kStatusSuccess);
  EXPECT_TRUE(MountThroughDialog({Wide(image), L"secret", L"P:"}));
  EXPECT_EQ(LastCall(), L"1 MountImage");

  const std::vector<ListedDisk> disks = ListDisks();
  ASSERT_EQ(disks.size(), 1u);
  EXPECT_EQ(disks[0].mountPoint, u"P:");
  EXPECT_EQ(disks[0].imagePath, image);
  EXPECT_EQ(disks[0].mountFlags, kMountInvisible);
  EXPECT_NE(GetLogicalDrives() & (1u << ('P' - 'A')), 0u);

  EXPECT_TRUE(prompts_.Prompts().empty());
  EXPECT_EQ(TryCreateDirectory(u"P:\\"), kErrorAlreadyExists);
  ASSERT_EQ(shell_.Calls().size(), 1u);
  EXPECT_EQ(shell_.Calls()[0].kind, CScriptedShell::Kind::kLookAt);
  EXPECT_EQ(shell_.Calls()[0].path, u"P:\\");
  EXPECT_EQ(recent_.entries, std::vector<std::u16string>{image});
  EXPECT_EQ(StoredRecentImages(), std::vector<std::u16string>{image});
}

TEST_F(MountFlowHostTest, TheDialogsOptionsReachTheHostAsMountFlags)
{
  const std::u16string image = MakeImage(u"work.qvi");
  shell_.AnswerLookAt(kStatusSuccess);
  DialogInput input{L"", L"secret", L"Q:"};
  input.readOnly = true;
  input.removable = true;
  // The path given to the flow is the dialog's path; the user types only the password.
  EXPECT_TRUE(MountThroughDialog(input, image));
  const std::vector<ListedDisk> disks = ListDisks();
  ASSERT_EQ(disks.size(), 1u);
  EXPECT_EQ(disks[0].mountPoint, u"Q:");
  EXPECT_EQ(disks[0].imagePath, image);
  EXPECT_EQ(disks[0].mountFlags, kMountReadOnly | kMountRemovable | kMountInvisible);
}

TEST_F(MountFlowHostTest, ADriveTheHostMountedIsNoLongerOffered)
{
  const std::u16string first = MakeImage(u"first.qvi");
  const std::u16string second = MakeImage(u"second.qvi");
  shell_.AnswerLookAt(kStatusSuccess);
  ASSERT_TRUE(MountThroughDialog({Wide(first), L"secret", L"P:"}));
  shell_.AnswerLookAt(kStatusSuccess);
  EXPECT_FALSE(MountThroughDialog({Wide(second), L"secret", L"P:"}));
  // Without P: the dialog mounts at the first free letter it offers.
  const std::vector<ListedDisk> disks = ListDisks();
  ASSERT_EQ(disks.size(), 2u);
  EXPECT_EQ(disks[1].imagePath, second);
  EXPECT_NE(disks[1].mountPoint, u"P:");
}

TEST_F(MountFlowHostTest, PrivacyModeMountsWithoutRecordingTheImage)
{
  GeneralOptions options;
  options.privacy = 1;
  ASSERT_EQ(WriteGeneralOptions(options), kStatusSuccess);
  const std::u16string image = MakeImage(u"private.qvi");
  shell_.AnswerLookAt(kStatusSuccess);
  EXPECT_TRUE(MountThroughDialog({Wide(image), L"secret", L"P:"}));
  EXPECT_EQ(ListDisks().size(), 1u);
  EXPECT_TRUE(recent_.entries.empty());
  RecentImageList stored;
  ReadRecentList(&stored, kRecentListKeyPath);
  EXPECT_TRUE(stored.entries.empty());
}

// Wrong password: one OK button and the flow ends; the user mounts again by running the
// command again, and the dialog starts over.
TEST_F(MountFlowHostTest, WrongPasswordShowsItsMessageAndTheNextAttemptMounts)
{
  const std::u16string image = MakeImage(u"work.qvi");
  prompts_.Answer(kIdOk);
  EXPECT_TRUE(MountThroughDialog({Wide(image), L"not the secret", L"P:"}));
  EXPECT_EQ(LastCall(), L"1 MountImage");
  ASSERT_EQ(prompts_.Prompts().size(), 1u);
  ExpectMountPrompt(prompts_.Prompts()[0], Owner(), CannotOpen(image, kWrongPasswordText), 0x10);
  EXPECT_TRUE(ListDisks().empty());
  EXPECT_TRUE(recent_.entries.empty());
  EXPECT_TRUE(shell_.Calls().empty());

  shell_.AnswerLookAt(kStatusSuccess);
  EXPECT_TRUE(MountThroughDialog({L"", L"secret", L"P:"}, image));
  EXPECT_EQ(prompts_.Prompts().size(), 1u);
  ASSERT_EQ(ListDisks().size(), 1u);
  EXPECT_EQ(recent_.entries, std::vector<std::u16string>{image});
}

TEST_F(MountFlowHostTest, EmptyPasswordIsAcceptedByTheDialogAndRefusedByTheKeyDerivation)
{
  const std::u16string image = MakeImage(u"work.qvi");
  ForgetLastCall();
  prompts_.Answer(kIdOk);
  EXPECT_TRUE(MountThroughDialog({Wide(image), L"", L"P:"}));
  EXPECT_EQ(LastCall(), L"none");
  ASSERT_EQ(prompts_.Prompts().size(), 1u);
  ExpectMountPrompt(prompts_.Prompts()[0], Owner(), CannotMount(image, u"40030002"), 0x10);
  EXPECT_TRUE(ListDisks().empty());
}

TEST_F(MountFlowHostTest, MissingVolumeFileShowsItsMessageOnceWithoutRetry)
{
  // A fixed image of 3 MiB in volume files of 1 MiB of data each, without its second file.
  const std::u16string image = dir_.File(u"split.qvi");
  ASSERT_EQ(CreatePasswordImage(image, u"secret",
                                CreateParams(3ull << 20, kCreateFixed, 4096 + (1 << 20))),
            kStatusSuccess);
  std::filesystem::remove(std::filesystem::path(VolumeFilePath(image, 1)));
  prompts_.Answer(kIdOk);
  EXPECT_TRUE(MountThroughDialog({Wide(image), L"secret", L"P:"}));
  EXPECT_EQ(LastCall(), L"1 MountImage");
  ASSERT_EQ(prompts_.Prompts().size(), 1u);
  ExpectMountPrompt(prompts_.Prompts()[0], Owner(),
                    CannotOpen(image, u"Virtual disk image volume file is missing."), 0x10);
  EXPECT_TRUE(ListDisks().empty());
}

// The host refuses a second mount of an image it holds open as access denied. Retry mounts
// again with the same request, without the dialog; once the image is free it mounts.
TEST_F(MountFlowHostTest, AccessDeniedRetryRepeatsTheSameRequestUntilItMounts)
{
  const std::u16string image = MakeImage(u"work.qvi");
  ASSERT_EQ(ImgMountWithPassword(image.c_str(), u"P:", 0, u"secret"), kStatusSuccess);
  CPromptsWithAction freeTheImage([](int prompt) {
    if (prompt == 1) {
      EXPECT_EQ(DevDismountMountPoint(u"P:", 0), kStatusSuccess);
    }
  });
  prompts_.Answer(kIdRetry);
  prompts_.Answer(kIdRetry);
  shell_.AnswerLookAt(kStatusSuccess);
  EXPECT_TRUE(MountThroughDialog({Wide(image), L"secret", L"Q:"}));
  ASSERT_EQ(prompts_.Prompts().size(), 2u);
  for (const CScriptedMessageBoxes::Prompt& prompt : prompts_.Prompts()) {
    ExpectMountPrompt(prompt, Owner(), CannotOpen(image, u"Access denied."), 0x15);
  }
  const std::vector<ListedDisk> disks = ListDisks();
  ASSERT_EQ(disks.size(), 1u);
  EXPECT_EQ(disks[0].mountPoint, u"Q:");
  EXPECT_EQ(disks[0].imagePath, image);
  EXPECT_EQ(recent_.entries, std::vector<std::u16string>{image});
}

TEST_F(MountFlowHostTest, AccessDeniedCancelEndsTheFlow)
{
  const std::u16string image = MakeImage(u"work.qvi");
  ASSERT_EQ(ImgMountWithPassword(image.c_str(), u"P:", 0, u"secret"), kStatusSuccess);
  prompts_.Answer(kIdCancel);
  EXPECT_TRUE(MountThroughDialog({Wide(image), L"secret", L"Q:"}));
  ASSERT_EQ(prompts_.Prompts().size(), 1u);
  ExpectMountPrompt(prompts_.Prompts()[0], Owner(), CannotOpen(image, u"Access denied."), 0x15);
  const std::vector<ListedDisk> disks = ListDisks();
  ASSERT_EQ(disks.size(), 1u);
  EXPECT_EQ(disks[0].mountPoint, u"P:");
  EXPECT_TRUE(recent_.entries.empty());
}

// The host answers "driver not started" and its service is stopped: the flow starts the
// service, waits while it is starting and mounts again, without any message.
TEST_F(MountFlowHostTest, StoppedDriverIsStartedSilentlyAndTheMountRepeated)
{
  const std::u16string image = MakeImage(u"work.qvi");
  constexpr DWORD kStartDelay = 1000;
  WriteControlNumber(kControlStartDelay, kStartDelay);
  WriteControlNumber(kControlNotStartedCalls, 1);
  CServiceStoppingHost host;
  shell_.AnswerLookAt(kStatusSuccess);
  const ULONGLONG start = GetTickCount64();
  EXPECT_TRUE(MountThroughDialog({Wide(image), L"secret", L"P:"}));
  EXPECT_GE(GetTickCount64() - start, kStartDelay);
  EXPECT_EQ(host.starts, 1);
  EXPECT_TRUE(prompts_.Prompts().empty());
  const std::vector<ListedDisk> disks = ListDisks();
  ASSERT_EQ(disks.size(), 1u);
  EXPECT_EQ(disks[0].mountPoint, u"P:");
  EXPECT_EQ(recent_.entries, std::vector<std::u16string>{image});
}

// "Driver not started" from a host whose service runs: starting the running service fails
// with the generic failure, which is shown instead, under the mount's caption.
TEST_F(MountFlowHostTest, DriverNotStartedWhileTheServiceRunsShowsTheStartFailure)
{
  const std::u16string image = MakeImage(u"work.qvi");
  WriteControlNumber(kControlNotStartedCalls, 1);
  prompts_.Answer(kIdOk);
  EXPECT_TRUE(MountThroughDialog({Wide(image), L"secret", L"P:"}));
  ASSERT_EQ(prompts_.Prompts().size(), 1u);
  ExpectMountPrompt(prompts_.Prompts()[0], Owner(),
                    u"Cannot start image mount driver.\nError code: 40000007", 0x10);
  EXPECT_TRUE(ListDisks().empty());
}

// With the service stopped nobody answers: the RPC failure is a plain mount failure, and the
// service is not started.
TEST_F(MountFlowHostTest, StoppedServiceThatNobodyAnswersForIsAMountFailure)
{
  const std::u16string image = MakeImage(u"work.qvi");
  ASSERT_EQ(StopHostService(30000), 0u);
  prompts_.Answer(kIdOk);
  EXPECT_TRUE(MountThroughDialog({Wide(image), L"secret", L"P:"}));
  ASSERT_EQ(prompts_.Prompts().size(), 1u);
  ExpectMountPrompt(prompts_.Prompts()[0], Owner(), CannotMount(image, u"40000007"), 0x10);
  EXPECT_EQ(DevDismountAll(0), 0x40000007u);  // still nobody answers
}

std::vector<std::wstring> DriveListEntries(HWND dialog)
{
  const CComboBox list(GetDlgItem(dialog, IDC_MOUNT_POINT));
  std::vector<std::wstring> entries;
  for (int index = 0; index < list.Count(); ++index) entries.push_back(list.ItemText(index));
  return entries;
}

bool Offers(HWND dialog, const wchar_t* entry)
{
  const std::vector<std::wstring> entries = DriveListEntries(dialog);
  return std::find(entries.begin(), entries.end(), entry) != entries.end();
}

// A disk the host mounts while the dialog is open is a volume arriving: its letter leaves
// the list, and the selection stays where it was. (Under Wine the volume broadcast of the
// host's service does not reach this desktop; the test sends the dialog the arrival that
// the system sends.)
TEST_F(MountFlowHostTest, ADiskMountedWhileTheDialogIsOpenLeavesTheList)
{
  const std::u16string image = MakeImage(u"work.qvi");
  CMountDlg dialog;
  const HWND window = dialog.Create(static_cast<HWND>(Owner()));
  ASSERT_NE(window, nullptr);
  ASSERT_TRUE(Offers(window, L"P:"));
  const CComboBox list(GetDlgItem(window, IDC_MOUNT_POINT));
  ASSERT_NE(list.SelectString(L"Q:"), CB_ERR);
  ASSERT_EQ(ImgMountWithPassword(image.c_str(), u"P:", 0, u"secret"), kStatusSuccess);
  DEV_BROADCAST_VOLUME volume{};
  volume.dbcv_size = sizeof volume;
  volume.dbcv_devicetype = DBT_DEVTYP_VOLUME;
  volume.dbcv_unitmask = 1u << ('P' - 'A');
  SendMessageW(window, WM_DEVICECHANGE, DBT_DEVICEARRIVAL, reinterpret_cast<LPARAM>(&volume));
  EXPECT_FALSE(Offers(window, L"P:"));
  EXPECT_EQ(list.ItemText(list.CurSel()), L"Q:");
}

}  // namespace

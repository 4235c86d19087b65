// The creation worker over in-memory files and the scripted device host: the image it
// writes, the temporary mount at the highest free letter, the format and the forced
// dismount, cancelling, a full disk and the mount's status replacing the creation's.
#include "wizard/creation_worker.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/size_units.h"
#include "crypto/cipher.h"
#include "devhost/mounted_disk.h"
#include "dialogs/password_image.h"
#include "image/layout.h"
#include "support/fake_device_host.h"
#include "system/file.h"
#include "system/files_in_memory.h"
#include "system/memory.h"

namespace {

using Op = DeviceHostOperation;

constexpr char16_t kPath[] = u"/images/new.qvi";

// A page as the worker sees it: it records the reports, answers "stop" from a chosen
// report on, and offers fixed free drive letters.
class RecordingReporter final : public CreationReporter {
 public:
  struct Report {
    uint32_t done;
    uint32_t total;
  };

  bool Progress(uint32_t done, uint32_t total) override
  {
    reports.push_back(Report{done, total});
    return stopAtReport == 0 || reports.size() < stopAtReport;
  }
  void FormattingStarts(StatusCode mountStatus) override { formatting.push_back(mountStatus); }
  std::u16string FreeDriveLetters() override
  {
    ++letterQueries;
    return freeLetters;
  }

  std::u16string freeLetters = u"EFGXY";
  size_t stopAtReport = 0;  // 0: never stop
  std::vector<Report> reports;
  std::vector<StatusCode> formatting;
  int letterQueries = 0;
};

class CreationWorkerTest : public testing::Test {
 protected:
  CreationWorkerTest()
  {
    job_.path = kPath;
    job_.password = u"pass word";
    job_.capacity = 8 * kMegabyte;
    job_.algorithm = kCipherAes;
    job_.keyBits = 256;
    host_.SetStrict(true);
  }
  ~CreationWorkerTest() override
  {
    SysSetFileFaults(nullptr);
    SysSetAllocationFaults(nullptr);
    ClearFilesInMemory();
  }

  // Scripts a successful mount, format and dismount.
  void ExpectReadying()
  {
    host_.Answer(Op::kMountWithPassword, {kStatusSuccess});
    host_.Answer(Op::kFormatVolume, {kStatusSuccess});
    host_.Answer(Op::kDismountMountPoint, {kStatusSuccess});
  }

  std::vector<std::string> ReadyingCalls(const std::string& mountPoint, int selector) const
  {
    return {"MountWithPassword(/images/new.qvi, " + mountPoint + ", flags 0x8, password pass word)",
            "FormatVolume(" + mountPoint + ", selector " + std::to_string(selector) + ")",
            "DismountMountPoint(" + mountPoint + ", forced 1)"};
  }

  static bool FileExists()
  {
    std::vector<uint8_t> bytes;
    return GetFileInMemory(kPath, &bytes);
  }

  // The new image's properties, opened with the job's password.
  ImageProperties OpenedProperties()
  {
    ImageProperties properties{};
    properties.recordSize = sizeof(properties);
    ImageHandle* image = nullptr;
    EXPECT_EQ(OpenImageWithPassword(kPath, job_.password, &image), kStatusSuccess);
    if (image == nullptr) return properties;
    EXPECT_EQ(ImgGetProperties(image, &properties), kStatusSuccess);
    EXPECT_EQ(ImgClose(image, 0), kStatusSuccess);
    return properties;
  }

  CreationJob job_;
  RecordingReporter reporter_;
  FakeDeviceHost host_;
};

}  // namespace

TEST_F(CreationWorkerTest, CreatesTheImageThenMountsFormatsAndDismountsAtTheHighestFreeLetter)
{
  ExpectReadying();
  EXPECT_EQ(RunCreationWorker(job_, reporter_), kStatusSuccess);

  EXPECT_EQ(host_.CallTexts(), ReadyingCalls("Y:", 0));
  EXPECT_EQ(reporter_.formatting, std::vector<StatusCode>{kStatusSuccess});
  EXPECT_EQ(reporter_.letterQueries, 1);
  const ImageProperties properties = OpenedProperties();
  EXPECT_EQ(properties.algorithm, kCipherAes);
  EXPECT_EQ(properties.keyLength, 32u);
  EXPECT_EQ(properties.mode, kCipherModeCbc);
  EXPECT_EQ(properties.capacity, 8 * kMegabyte);
  EXPECT_EQ(properties.volumeSizeLimit, kNoVolumeLimit);
}

TEST_F(CreationWorkerTest, ReportsTheCreationsProgressUpToItsTotal)
{
  ExpectReadying();
  job_.capacity = 200 * kMegabyte;
  job_.fixedSize = true;
  EXPECT_EQ(RunCreationWorker(job_, reporter_), kStatusSuccess);

  ASSERT_GE(reporter_.reports.size(), 2u);
  EXPECT_EQ(reporter_.reports.back().done, 200u);
  for (size_t i = 0; i < reporter_.reports.size(); ++i) {
    EXPECT_EQ(reporter_.reports[i].total, 200u);
    if (i > 0) {
      EXPECT_GT(reporter_.reports[i].done, reporter_.reports[i - 1].done);
    }
  }
}

TEST_F(CreationWorkerTest, TheChosenCipherAndKeyLengthAndTheFixedAndFatChoicesReachTheImage)
{
  ExpectReadying();
  job_.algorithm = kCipherBlowfish;
  job_.keyBits = 448;
  job_.fixedSize = true;
  job_.fatCompatible = true;
  EXPECT_EQ(RunCreationWorker(job_, reporter_), kStatusSuccess);

  const ImageProperties properties = OpenedProperties();
  EXPECT_EQ(properties.algorithm, kCipherBlowfish);
  EXPECT_EQ(properties.keyLength, 56u);
  EXPECT_EQ(properties.flags & kCreateFixed, kCreateFixed);
  EXPECT_EQ(properties.volumeSizeLimit, kFileSystemLimit);
}

TEST_F(CreationWorkerTest, TheCreationRecordCarriesTheChoicesAndReportsThroughTheReporter)
{
  job_.capacity = 5 * kGigabyte;
  job_.fixedSize = true;
  job_.fatCompatible = true;
  const ImageCreateParams params = CreationParams(job_, &reporter_);
  EXPECT_EQ(params.recordSize, 40u);
  EXPECT_EQ(params.flags, 1u);
  EXPECT_EQ(params.capacity, 5 * kGigabyte);
  EXPECT_EQ(params.volumeSizeLimit, 0xFFFFFFFFFFFFFFFFull);
  EXPECT_EQ(params.progressContext, &reporter_);
  ASSERT_NE(params.progress, nullptr);
  reporter_.stopAtReport = 2;
  EXPECT_EQ(params.progress(3, 7, params.progressContext, 12345), 1u);
  EXPECT_EQ(params.progress(4, 7, params.progressContext, 23456), 0u);
  ASSERT_EQ(reporter_.reports.size(), 2u);
  EXPECT_EQ(reporter_.reports[0].done, 3u);
  EXPECT_EQ(reporter_.reports[0].total, 7u);

  job_.fixedSize = false;
  job_.fatCompatible = false;
  const ImageCreateParams plain = CreationParams(job_, &reporter_);
  EXPECT_EQ(plain.flags, 0u);
  EXPECT_EQ(plain.volumeSizeLimit, 0u);
}

TEST_F(CreationWorkerTest, ExactlyFourGigabytesIsFormattedWithTheLargeSelector)
{
  ExpectReadying();
  job_.capacity = 4 * kGigabyte;
  EXPECT_EQ(RunCreationWorker(job_, reporter_), kStatusSuccess);
  EXPECT_EQ(host_.CallTexts(), ReadyingCalls("Y:", 1));
}

TEST_F(CreationWorkerTest, FourGigabytesLessOneMegabyteIsFormattedWithTheSmallSelector)
{
  ExpectReadying();
  job_.capacity = 4 * kGigabyte - kMegabyte;
  EXPECT_EQ(RunCreationWorker(job_, reporter_), kStatusSuccess);
  EXPECT_EQ(host_.CallTexts(), ReadyingCalls("Y:", 0));
}

TEST_F(CreationWorkerTest, TheSelectorAndTheMountPointFollowTheirRules)
{
  EXPECT_EQ(FormatSelectorFor(4 * kGigabyte), kFormatSelectorLarge);
  EXPECT_EQ(FormatSelectorFor(4 * kGigabyte - 1), kFormatSelectorSmall);
  EXPECT_EQ(FormatSelectorFor(64 * kGigabyte), kFormatSelectorLarge);
  EXPECT_EQ(TemporaryMountPoint(u"ABZ"), u"Z:");
  EXPECT_EQ(TemporaryMountPoint(u"D"), u"D:");
  EXPECT_EQ(TemporaryMountPoint(u""), u"");
}

TEST_F(CreationWorkerTest, WithNoFreeLetterTheDiskStaysUnformattedAndTheCreationSucceeds)
{
  reporter_.freeLetters.clear();
  EXPECT_EQ(RunCreationWorker(job_, reporter_), kStatusSuccess);
  EXPECT_TRUE(host_.Calls().empty());
  EXPECT_TRUE(reporter_.formatting.empty());
  EXPECT_EQ(OpenedProperties().capacity, 8 * kMegabyte);
}

TEST_F(CreationWorkerTest, ACancelWithNoFreeLetterEndsCancelledAndLeavesNoFile)
{
  reporter_.freeLetters.clear();
  reporter_.stopAtReport = 1;
  EXPECT_EQ(RunCreationWorker(job_, reporter_), kImgCancelled);
  EXPECT_FALSE(FileExists());
  EXPECT_TRUE(host_.Calls().empty());
}

TEST_F(CreationWorkerTest, ACancelHalfWayStillTriesTheMountWhoseFailureIsReported)
{
  job_.capacity = 64 * kMegabyte;
  job_.fixedSize = true;
  reporter_.stopAtReport = 10;
  host_.Answer(Op::kMountWithPassword, {kSysNotFound});
  EXPECT_EQ(RunCreationWorker(job_, reporter_), kSysNotFound);
  EXPECT_EQ(reporter_.reports.size(), 10u);
  EXPECT_FALSE(FileExists());
  EXPECT_EQ(host_.CallTexts(),
            std::vector<std::string>{
                "MountWithPassword(/images/new.qvi, Y:, flags 0x8, password pass word)"});
  EXPECT_TRUE(reporter_.formatting.empty());
}

TEST_F(CreationWorkerTest, AFullDiskWithNoFreeLetterReportsTheDiskFullAndLeavesNoFile)
{
  reporter_.freeLetters.clear();
  job_.fixedSize = true;
  SysFileFaults faults;
  faults.bytesUntilDiskFull = 2 * kMegabyte;
  SysSetFileFaults(&faults);
  EXPECT_EQ(RunCreationWorker(job_, reporter_), kSysDiskFull);
  SysSetFileFaults(nullptr);
  EXPECT_FALSE(FileExists());
}

TEST_F(CreationWorkerTest, AFullDiskWithAFreeLetterReportsTheMountsCodeInstead)
{
  job_.fixedSize = true;
  SysFileFaults faults;
  faults.bytesUntilDiskFull = 2 * kMegabyte;
  SysSetFileFaults(&faults);
  host_.Answer(Op::kMountWithPassword, {kDevImageNotEncrypted});
  EXPECT_EQ(RunCreationWorker(job_, reporter_), kDevImageNotEncrypted);
  SysSetFileFaults(nullptr);
  EXPECT_FALSE(FileExists());
  EXPECT_EQ(host_.Calls().size(), 1u);
}

TEST_F(CreationWorkerTest, AMountThatSucceedsAfterAFailedCreationReplacesItsFailure)
{
  job_.fixedSize = true;
  SysFileFaults faults;
  faults.failingWrite = 3;
  SysSetFileFaults(&faults);
  ExpectReadying();
  EXPECT_EQ(RunCreationWorker(job_, reporter_), kStatusSuccess);
  SysSetFileFaults(nullptr);
  EXPECT_FALSE(FileExists());
  EXPECT_EQ(host_.CallTexts(), ReadyingCalls("Y:", 0));
}

TEST_F(CreationWorkerTest, AFailedFormatIsReportedAfterTheForcedDismount)
{
  host_.Answer(Op::kMountWithPassword, {kStatusSuccess});
  host_.Answer(Op::kFormatVolume, {kSysGeneralFailure});
  host_.Answer(Op::kDismountMountPoint, {kDevVolumeInUse});
  EXPECT_EQ(RunCreationWorker(job_, reporter_), kSysGeneralFailure);
  EXPECT_EQ(host_.CallTexts(), ReadyingCalls("Y:", 0));
  EXPECT_EQ(reporter_.formatting.size(), 1u);
}

TEST_F(CreationWorkerTest, AnInformationalMountIsPassedToTheFormattingNotice)
{
  host_.Answer(Op::kMountWithPassword, {kStatusInformation});
  host_.Answer(Op::kFormatVolume, {kStatusSuccess});
  host_.Answer(Op::kDismountMountPoint, {kStatusSuccess});
  EXPECT_EQ(RunCreationWorker(job_, reporter_), kStatusSuccess);
  EXPECT_EQ(reporter_.formatting, std::vector<StatusCode>{kStatusInformation});
}

TEST_F(CreationWorkerTest, AFailedMountSkipsTheFormatAndTheDismount)
{
  host_.Answer(Op::kMountWithPassword, {kDevNotRunning});
  EXPECT_EQ(RunCreationWorker(job_, reporter_), kDevNotRunning);
  EXPECT_EQ(host_.Calls().size(), 1u);
  EXPECT_TRUE(reporter_.formatting.empty());
  // The image itself was made.
  EXPECT_EQ(OpenedProperties().capacity, 8 * kMegabyte);
}

TEST_F(CreationWorkerTest, EitherKeyBufferRefusedEndsOutOfMemoryWithNothingLeftBehind)
{
  reporter_.freeLetters.clear();
  for (uint64_t refused = 1; refused <= 2; ++refused) {
    SysAllocationFaults faults;
    faults.failingAllocation = refused;
    SysSetAllocationFaults(&faults);
    EXPECT_EQ(RunCreationWorker(job_, reporter_), kSysOutOfMemory) << "allocation " << refused;
    SysSetAllocationFaults(nullptr);
    EXPECT_EQ(faults.blocksLive, 0u) << "allocation " << refused;
    EXPECT_FALSE(FileExists());
  }
  EXPECT_TRUE(reporter_.reports.empty());
}

TEST_F(CreationWorkerTest, AllocationFailureIsReplacedByTheMountsStatusWhenALetterIsFree)
{
  SysAllocationFaults faults;
  faults.failingAllocation = 1;
  SysSetAllocationFaults(&faults);
  host_.Answer(Op::kMountWithPassword, {kSysNotFound});
  EXPECT_EQ(RunCreationWorker(job_, reporter_), kSysNotFound);
  SysSetAllocationFaults(nullptr);
}

TEST_F(CreationWorkerTest, EveryBlockTheWorkerTakesGoesBack)
{
  reporter_.freeLetters.clear();
  SysAllocationFaults faults;
  SysSetAllocationFaults(&faults);
  EXPECT_EQ(RunCreationWorker(job_, reporter_), kStatusSuccess);
  SysSetAllocationFaults(nullptr);
  EXPECT_GE(faults.allocationsSeen, 2u);
  EXPECT_EQ(faults.blocksLive, 0u);
}

// The creation worker of the new image wizard: it turns the wizard's choices into an image
// file and readies the new disk for use.
//
// Step by step: a random 64-byte identity block; the header key derived from the password
// with the identity block as salt; a fresh data key; ImgCreate with the creation record
// (fixed-size flag, capacity, the volume size limit of a FAT-compatible image, the progress
// callback); then, whatever the creation's status, a temporary mount at the highest free
// drive letter, whose status replaces the creation's (a kept quirk: after a failed or
// cancelled creation the mount's code is the one reported). A successful mount is followed
// by the device host's format and a forced dismount. With no free letter the disk stays
// without a file system.
//
// The worker runs on its own thread and shares nothing with the page: it owns a copy of the
// choices and talks to the page only through its reporter.
#pragma once

#include <cstdint>
#include <string>

#include "app/size_units.h"
#include "image/image.h"
#include "system/status.h"

// Disks of at least this capacity are formatted with the large file-system selector.
inline constexpr uint64_t kLargeFormatCapacity = 4 * kGigabyte;

// The worker's own copy of the wizard's choices. The password is overwritten when the copy
// dies.
struct CreationJob {
  CreationJob() = default;
  CreationJob(const CreationJob&) = default;
  CreationJob& operator=(const CreationJob&) = delete;
  ~CreationJob();

  std::u16string path;
  std::u16string password;
  uint64_t capacity = 0;
  bool fixedSize = false;
  bool fatCompatible = false;
  uint32_t algorithm = 0;
  uint32_t keyBits = 0;
};

// The worker's link to its page; called on the worker's thread.
class CreationReporter {
 public:
  virtual ~CreationReporter() = default;
  // A progress report of the image's creation (done of total); false asks it to stop.
  virtual bool Progress(uint32_t done, uint32_t total) = 0;
  // The temporary mount succeeded with `mountStatus`; the file system is being written.
  virtual void FormattingStarts(StatusCode mountStatus) = 0;
  // The drive letters free for the temporary mount now, ascending ("DEFXYZ").
  virtual std::u16string FreeDriveLetters() = 0;
};

// The creation record as the worker fills it.
ImageCreateParams CreationParams(const CreationJob& job, CreationReporter* reporter);

// The file-system selector for a disk of `capacity` bytes.
uint32_t FormatSelectorFor(uint64_t capacity);

// The mount point of the temporary mount for the free letters `freeLetters` ("X:" for the
// highest one); empty when no letter is free.
std::u16string TemporaryMountPoint(const std::u16string& freeLetters);

// Runs every step through the current device host; the final status of the worker.
StatusCode RunCreationWorker(const CreationJob& job, CreationReporter& reporter);

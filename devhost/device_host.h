// The device host client: mount, dismount, list and format virtual disks through the
// device host service over local RPC, and start that service.
//
// Every call makes and frees its own binding, so calls may come from any thread. A call
// the RPC runtime fails (no server listening, for one) returns the runtime's error number
// through the system-error map; a binding that cannot even be made is kDevUnreachable.
#pragma once

#include <cstdint>

#include "devhost/mounted_disk.h"
#include "system/status.h"
#include "system/uuid.h"

// Derives the header key of the image at `imagePath` from `password` (zero-terminated)
// and asks the device host to mount the image at `mountPoint`. Only the key leaves the
// process. A plain image is kDevImageNotEncrypted.
StatusCode ImgMountWithPassword(const char16_t* imagePath, const char16_t* mountPoint,
                                uint32_t mountFlags, const char16_t* password);

// `forced` is 0 or 1: forced dismounts go on although applications use the disk.
StatusCode DevDismountAll(uint32_t forced);
StatusCode DevDismountMountPoint(const char16_t* mountPoint, uint32_t forced);
StatusCode DevDismountById(const Guid* diskId, uint32_t forced);

// Has the device host lay a file system on the disk at `mountPoint`; `selector` is a
// kFormatSelector value.
StatusCode DevFormatVolume(const char16_t* mountPoint, uint32_t selector);

// Passes every mounted disk to `callback`, in the device host's order, until a callback
// fails; returns the last callback's result (0 for no disks).
StatusCode DevEnumerateDisks(MountedDiskCallback callback, void* context);

// Starts the device host service "pdevhost" and waits while it is starting.
StatusCode DevStartService();

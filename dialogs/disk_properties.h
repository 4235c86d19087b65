// The properties dialog's texts: what each value field shows for one mounted disk.
#pragma once

#include <string>
#include <vector>

#include "devhost/device_host_api.h"

struct DiskPropertyField {
  int controlId;
  std::u16string text;
};

// Every value field of the dialog with its text, in the order the dialog fills them: image
// path, mount point, capacity, created, mounted, fixed size, FAT-compatible, read only,
// removable, algorithm (the bare name; empty for an id without one), key length in bits.
std::vector<DiskPropertyField> DiskPropertyFields(const MountedDisk& disk);

// The order of the mounted disk list's rows.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "devhost/device_host_api.h"

// The free bytes of the volume at a mount point, none when they cannot be read.
using FreeSpaceQuery = std::function<std::optional<uint64_t>(const std::u16string& mountPoint)>;

// Compares two rows under `sortColumn` (a column's mask bit, negated for descending): negative
// when `first` comes first in ascending order, positive when `second` does, zero for equal
// keys; descending negates the result. The keys: Mount Point and Image Path both compare the
// mount points (UTF-16 code units, case-sensitive, a proper prefix first); Capacity and
// Created the unsigned numbers; Encryption Algorithm the algorithm as a signed number, then
// the key length; Mounted the first row's mount time against the second row's creation time
// (a mixed key, kept as the list has always sorted); Free Space both volumes' free bytes,
// asked of `freeSpace` anew for each comparison, unknown counting as 0. A value that names
// no column compares every pair equal.
int CompareDiskRows(const MountedDisk& first, const MountedDisk& second, int32_t sortColumn,
                    const FreeSpaceQuery& freeSpace);

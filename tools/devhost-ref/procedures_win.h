// The mounted disks of the running host.
#pragma once

// Dismounts every disk, forced: the host is going away.
void DismountEverything();

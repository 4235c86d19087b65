// The main frame's command states: which commands its menu and toolbar enable and check for
// the rows selected in the mounted disk list and the columns it shows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

struct FrameCommandState {
  uint32_t command;
  bool enabled;
  bool checked;

  bool operator==(const FrameCommandState&) const = default;
};

// The states the frame's update sets, with `selectedRows` rows selected and the columns of
// `visibleColumns` shown: Dismount and Browse need at least one selected row, Properties
// exactly one; each column's toggle command is checked while its column shows, and the
// toggle of the only column left is disabled (the list keeps one column). Every other
// command stays enabled and is not listed.
std::vector<FrameCommandState> FrameCommandStates(size_t selectedRows, uint32_t visibleColumns);

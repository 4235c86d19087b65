// The main frame's command states for the list's selection and columns.
#include "app/frame_commands.h"

#include <gtest/gtest.h>

#include <optional>

#include "res/resource.h"

namespace {

std::optional<FrameCommandState> StateOf(const std::vector<FrameCommandState>& states,
                                         uint32_t command)
{
  for (const FrameCommandState& state : states) {
    if (state.command == command) return state;
  }
  return std::nullopt;
}

bool Enabled(size_t selectedRows, uint32_t command)
{
  const auto state = StateOf(FrameCommandStates(selectedRows, 11), command);
  EXPECT_TRUE(state.has_value()) << command;
  return state && state->enabled;
}

// The columns' toggle commands in bit order.
constexpr uint32_t kToggles[] = {ID_VIEW_COLUMN_MOUNT_POINT, ID_VIEW_COLUMN_CAPACITY,
                                 ID_VIEW_COLUMN_FREE_SPACE,  ID_VIEW_COLUMN_IMAGE_PATH,
                                 ID_VIEW_COLUMN_ALGORITHM,   ID_VIEW_COLUMN_CREATED,
                                 ID_VIEW_COLUMN_MOUNTED};

}  // namespace

TEST(FrameCommandsTest, NothingSelectedDisablesDismountBrowseAndProperties)
{
  EXPECT_FALSE(Enabled(0, ID_FILE_DISMOUNT));
  EXPECT_FALSE(Enabled(0, ID_DISK_BROWSE));
  EXPECT_FALSE(Enabled(0, ID_EDIT_PROPERTIES));
}

TEST(FrameCommandsTest, OneSelectedRowEnablesAllThree)
{
  EXPECT_TRUE(Enabled(1, ID_FILE_DISMOUNT));
  EXPECT_TRUE(Enabled(1, ID_DISK_BROWSE));
  EXPECT_TRUE(Enabled(1, ID_EDIT_PROPERTIES));
}

TEST(FrameCommandsTest, ThreeSelectedRowsDisableOnlyProperties)
{
  EXPECT_TRUE(Enabled(3, ID_FILE_DISMOUNT));
  EXPECT_TRUE(Enabled(3, ID_DISK_BROWSE));
  EXPECT_FALSE(Enabled(3, ID_EDIT_PROPERTIES));
}

TEST(FrameCommandsTest, ColumnTogglesAreCheckedByTheirVisibleBits)
{
  // Mount Point, Free Space and Created: bits 0, 2 and 5.
  const std::vector<FrameCommandState> states = FrameCommandStates(0, 0x25);
  for (uint32_t bit = 0; bit < 7; ++bit) {
    const auto state = StateOf(states, kToggles[bit]);
    ASSERT_TRUE(state.has_value()) << bit;
    EXPECT_EQ(state->checked, bit == 0 || bit == 2 || bit == 5) << bit;
    EXPECT_TRUE(state->enabled) << bit;
  }
}

TEST(FrameCommandsTest, TheOnlyVisibleColumnCannotBeHidden)
{
  const std::vector<FrameCommandState> states = FrameCommandStates(0, 0x08);
  for (uint32_t bit = 0; bit < 7; ++bit) {
    const auto state = StateOf(states, kToggles[bit]);
    ASSERT_TRUE(state.has_value()) << bit;
    EXPECT_EQ(state->enabled, bit != 3) << bit;
    EXPECT_EQ(state->checked, bit == 3) << bit;
  }
}

TEST(FrameCommandsTest, BitsAboveTheSevenColumnsAreIgnored)
{
  EXPECT_EQ(FrameCommandStates(2, 0xFFFFFF01), FrameCommandStates(2, 0x01));
}

TEST(FrameCommandsTest, OtherCommandsAreLeftAlwaysEnabled)
{
  const std::vector<FrameCommandState> states = FrameCommandStates(0, 11);
  EXPECT_EQ(states.size(), 10u);
  for (const uint32_t command : {40000u, 40001u, 40003u, 40106u, 59395u, 40009u}) {
    EXPECT_FALSE(StateOf(states, command).has_value()) << command;
  }
}

#include "settings/window_placement.h"

#include <gtest/gtest.h>

#include <cstring>

#include "settings_fixture.h"

namespace {

using WindowPlacementTest = SettingsTest;
INSTANTIATE_FOR_EVERY_STORE(WindowPlacementTest);

WindowPlacement Placement(uint32_t showCommand, PlacementRect normal)
{
  WindowPlacement placement;
  placement.flags = 2;
  placement.showCommand = showCommand;
  placement.minPosition = {-1, -1};
  placement.maxPosition = {-8, -31};
  placement.normalPosition = normal;
  return placement;
}

std::vector<uint8_t> BytesOf(const WindowPlacement& placement)
{
  std::vector<uint8_t> bytes(sizeof placement);
  std::memcpy(bytes.data(), &placement, sizeof placement);
  return bytes;
}

TEST_P(WindowPlacementTest, PlacementIsStoredAsBinaryOf44BytesInTheSystemLayout)
{
  const WindowPlacement placement = Placement(3, {100, 50, 900, 650});
  EXPECT_EQ(WriteWindowPos(placement), kStatusSuccess);
  const std::optional<RawValue> stored = Store().Get(kAppKey, u"WindowPos");
  ASSERT_TRUE(stored.has_value());
  EXPECT_EQ(stored->type, 3u);
  const std::vector<uint8_t> expected = {
      44,   0,    0,    0,    2,    0,    0,    0,    3,    0, 0, 0,  // length, flags, show
      0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,                 // minimized x, y
      0xF8, 0xFF, 0xFF, 0xFF, 0xE1, 0xFF, 0xFF, 0xFF,                 // maximized x, y
      100,  0,    0,    0,    50,   0,    0,    0,    0x84, 3, 0, 0,
      0x8A, 2,    0,    0};  // normal rectangle
  EXPECT_EQ(stored->data, expected);
}

TEST_P(WindowPlacementTest, MaximizedWindowComesBackInItsNormalState)
{
  WriteWindowPos(Placement(3, {100, 50, 900, 650}));  // closed maximized
  WindowPlacement read;
  bool found = false;
  EXPECT_EQ(ReadWindowPos(&read, &found), kStatusSuccess);
  ASSERT_TRUE(found);
  EXPECT_EQ(read.showCommand, 3u);
  WindowPlacement restored;
  ASSERT_TRUE(PlacementToRestore(read, 1024, 768, &restored));
  EXPECT_EQ(restored.showCommand, 1u);
  EXPECT_EQ(restored.normalPosition.left, 100);
  EXPECT_EQ(restored.normalPosition.bottom, 650);
  EXPECT_EQ(restored.maxPosition.y, -31);
  EXPECT_EQ(restored.length, 44u);
}

TEST_P(WindowPlacementTest, MinimizedWindowComesBackInItsNormalState)
{
  WriteWindowPos(Placement(2, {0, 0, 300, 200}));
  WindowPlacement read;
  bool found = false;
  ReadWindowPos(&read, &found);
  WindowPlacement restored;
  ASSERT_TRUE(found);
  ASSERT_TRUE(PlacementToRestore(read, 1024, 768, &restored));
  EXPECT_EQ(restored.showCommand, 1u);
}

TEST_P(WindowPlacementTest, NormalRectangleWhollyOffThePrimaryScreenIsIgnored)
{
  WriteWindowPos(Placement(1, {1024, 0, 1600, 400}));  // starts at the right edge
  WindowPlacement read;
  bool found = false;
  ReadWindowPos(&read, &found);
  ASSERT_TRUE(found);
  WindowPlacement restored = Placement(7, {1, 2, 3, 4});
  EXPECT_FALSE(PlacementToRestore(read, 1024, 768, &restored));
  EXPECT_EQ(restored.showCommand, 7u);
  EXPECT_FALSE(PlacementToRestore(Placement(1, {-500, 100, 0, 300}), 1024, 768, &restored));
  EXPECT_FALSE(PlacementToRestore(Placement(1, {10, 768, 300, 900}), 1024, 768, &restored));
  EXPECT_FALSE(PlacementToRestore(Placement(1, {10, -300, 300, -1}), 1024, 768, &restored));
}

TEST_P(WindowPlacementTest, NormalRectanglePartlyOnTheScreenIsRestored)
{
  WindowPlacement restored;
  EXPECT_TRUE(PlacementToRestore(Placement(1, {1000, 700, 1600, 1000}), 1024, 768, &restored));
  EXPECT_TRUE(PlacementToRestore(Placement(1, {-500, -500, 1, 1}), 1024, 768, &restored));
}

TEST_P(WindowPlacementTest, EmptyNormalRectangleIsIgnored)
{
  WindowPlacement restored;
  EXPECT_FALSE(PlacementToRestore(Placement(1, {100, 100, 100, 400}), 1024, 768, &restored));
  EXPECT_FALSE(PlacementToRestore(Placement(1, {100, 400, 300, 100}), 1024, 768, &restored));
}

TEST_P(WindowPlacementTest, StoredRecordOfWrongSizeOrTypeIsNotFound)
{
  std::vector<uint8_t> bytes = BytesOf(Placement(1, {0, 0, 500, 500}));
  const struct {
    uint32_t type;
    size_t size;
  } cases[] = {{3, 43}, {3, 45}, {4, 44}, {0, 44}, {1, 44}};
  for (const auto& c : cases) {
    std::vector<uint8_t> stored = bytes;
    stored.resize(c.size);
    Store().Put(kAppKey, u"WindowPos", c.type, stored);
    WindowPlacement read = Placement(9, {1, 2, 3, 4});
    bool found = true;
    EXPECT_EQ(ReadWindowPos(&read, &found), kStatusSuccess);
    EXPECT_FALSE(found) << "type " << c.type << " size " << c.size;
    EXPECT_EQ(read.showCommand, 9u);
  }
}

TEST_P(WindowPlacementTest, MissingPlacementIsNotFoundAndCreatesTheKey)
{
  WindowPlacement read;
  bool found = true;
  EXPECT_EQ(ReadWindowPos(&read, &found), kStatusSuccess);
  EXPECT_FALSE(found);
  EXPECT_TRUE(Store().KeyExists(kAppKey));
}

}  // namespace

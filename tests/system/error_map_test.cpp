#include "system/error_map.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <map>

namespace {

// The whole table: every listed Windows error number and the status it must become.
const std::map<uint32_t, StatusCode> kExpected = {
    {0, 0},
    {2, 0x4000000F},
    {3, 0x4000000F},
    {5, 0x40000008},
    {32, 0x40000008},
    {33, 0x40000008},
    {8, 0x40000005},
    {19, 0x4000000C},
    {29, 0x4000000A},
    {30, 0x40000009},
    {38, 0x4000000E},
    {39, 0x4000000D},
    {112, 0x4000000D},
    {50, 0x40000003},
    {82, 0x40000010},
    {87, 0x40000002},
    {111, 0x40000006},
    {122, 0x40000006},
    {223, 0x40000011},
    {1060, 0x40000013},
    {6009, 0x40000012},
};

}  // namespace

TEST(MapSystemError, EveryListedNumberMapsToItsCode)
{
  for (const auto& [systemError, status] : kExpected) {
    EXPECT_EQ(MapSystemError(systemError), status) << "system error " << systemError;
  }
}

TEST(MapSystemError, EveryOtherNumberIsAGeneralFailureNeverSuccess)
{
  // Every number up to 7000 that the table does not list, and a few far beyond.
  for (uint32_t systemError = 1; systemError <= 7000; ++systemError) {
    if (kExpected.count(systemError) != 0) continue;
    ASSERT_EQ(MapSystemError(systemError), 0x40000007u) << "system error " << systemError;
  }
  EXPECT_EQ(MapSystemError(1722), 0x40000007u);  // RPC server unavailable
  EXPECT_EQ(MapSystemError(0x80070005u), 0x40000007u);
  EXPECT_EQ(MapSystemError(0xFFFFFFFFu), 0x40000007u);
}

TEST(MapErrno, PosixErrorsMapLikeTheirWindowsCounterparts)
{
  EXPECT_EQ(MapErrno(0), 0u);
  EXPECT_EQ(MapErrno(ENOENT), 0x4000000Fu);
  EXPECT_EQ(MapErrno(ENOTDIR), 0x4000000Fu);
  EXPECT_EQ(MapErrno(EACCES), 0x40000008u);
  EXPECT_EQ(MapErrno(EPERM), 0x40000008u);
  EXPECT_EQ(MapErrno(EBUSY), 0x40000008u);
  EXPECT_EQ(MapErrno(EAGAIN), 0x40000008u);
  EXPECT_EQ(MapErrno(ENOMEM), 0x40000005u);
  EXPECT_EQ(MapErrno(EROFS), 0x4000000Cu);
  EXPECT_EQ(MapErrno(ENOSPC), 0x4000000Du);
  EXPECT_EQ(MapErrno(ENOTSUP), 0x40000003u);
  EXPECT_EQ(MapErrno(EINVAL), 0x40000002u);
  EXPECT_EQ(MapErrno(ENAMETOOLONG), 0x40000006u);
  EXPECT_EQ(MapErrno(EFBIG), 0x40000011u);
}

TEST(MapErrno, UnknownErrnoIsAGeneralFailureNeverSuccess)
{
  EXPECT_EQ(MapErrno(EIO), 0x40000007u);
  EXPECT_EQ(MapErrno(EEXIST), 0x40000007u);
  EXPECT_EQ(MapErrno(-1), 0x40000007u);
  EXPECT_EQ(MapErrno(100000), 0x40000007u);
}

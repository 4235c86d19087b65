#include "system/clock.h"

#include <gtest/gtest.h>

#include <ctime>

TEST(SysUnixTime, AgreesWithTheCRuntimeClock)
{
  const auto before = static_cast<uint64_t>(std::time(nullptr));
  const uint64_t now = SysUnixTime();
  const auto after = static_cast<uint64_t>(std::time(nullptr));
  EXPECT_GE(now, before);
  EXPECT_LE(now, after);
}

TEST(SysFileTime, CountsHundredNanosecondsSince1601)
{
  const uint64_t unixSeconds = SysUnixTime();
  const uint64_t fileTime = SysFileTime();
  const uint64_t fileSeconds = fileTime / kFileTimeTicksPerSecond - kFileTimeEpochOffsetSeconds;
  EXPECT_GE(fileSeconds + 1, unixSeconds);
  EXPECT_LE(fileSeconds, unixSeconds + 1);
}

TEST(SysPerformanceCounter, NeverRunsBackwards)
{
  uint64_t previous = SysPerformanceCounter();
  for (int i = 0; i < 1000; ++i) {
    const uint64_t now = SysPerformanceCounter();
    ASSERT_GE(now, previous);
    previous = now;
  }
  EXPECT_NE(previous, 0u);
}

TEST(SysFreezeClock, FixesBothClocksUntilReleased)
{
  SysFreezeClock(1700000000);
  EXPECT_EQ(SysUnixTime(), 1700000000u);
  EXPECT_EQ(SysFileTime(), (1700000000ull + 11644473600ull) * 10000000ull);
  SysFreezeClock(0);
  const auto now = static_cast<uint64_t>(std::time(nullptr));
  EXPECT_GE(SysUnixTime() + 1, now);
  EXPECT_LE(SysUnixTime(), now + 1);
}

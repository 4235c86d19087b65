// The remaining-time estimate of the long jobs' progress windows, over scripted clock
// readings and progress reports.
#include "app/remaining_time.h"

#include <gtest/gtest.h>

namespace {

constexpr uint64_t kStart = 133000000000000000;  // some moment on the file-time clock
constexpr uint64_t kSecond = 10000000;           // 100-ns units

std::optional<RemainingTime> ReportAndEstimate(CRemainingTimeEstimate& estimate, uint32_t done,
                                               uint32_t total, uint64_t now)
{
  estimate.Report(done, total, now);
  return estimate.Estimate(now);
}

}  // namespace

TEST(RemainingTime, TimersAndBar)
{
  EXPECT_EQ(kProgressBarPeriodMs, 200u);
  EXPECT_EQ(kFirstEstimateDelayMs, 3000u);
  EXPECT_EQ(kProgressBarFinished, 100u);
  EXPECT_EQ(ProgressBarRange(100), 100u);
  EXPECT_EQ(ProgressBarRange(65535), 65535u);
  EXPECT_EQ(ProgressBarRange(65536), 0u);
  EXPECT_EQ(ProgressBarRange(65537), 1u);
}

TEST(RemainingTime, PeriodByEstimate)
{
  for (const uint64_t seconds : {0u, 1u, 10u}) EXPECT_EQ(EstimatePeriodMs(seconds), 1000u);
  for (const uint64_t seconds : {11u, 30u}) EXPECT_EQ(EstimatePeriodMs(seconds), 3000u);
  for (const uint64_t seconds : {31u, 60u}) EXPECT_EQ(EstimatePeriodMs(seconds), 5000u);
  EXPECT_EQ(EstimatePeriodMs(61), 10000u);
  EXPECT_EQ(EstimatePeriodMs(UINT64_MAX), 10000u);
}

TEST(RemainingTime, OnlyTheFirstReportStartsTheClock)
{
  CRemainingTimeEstimate estimate(ProgressDifferences::k32Bit);
  EXPECT_TRUE(estimate.Report(0, 500, kStart));
  EXPECT_FALSE(estimate.Report(10, 500, kStart + kSecond));
  EXPECT_EQ(estimate.Done(), 10u);
  EXPECT_EQ(estimate.Total(), 500u);
  // The rate runs from the first report: 10 done in 3 s, 490 to go.
  const auto shown = estimate.Estimate(kStart + 3 * kSecond);
  ASSERT_TRUE(shown.has_value());
  EXPECT_EQ(shown->seconds, 147u);
}

TEST(RemainingTime, NothingBeforeAReportOrBeforeProgress)
{
  CRemainingTimeEstimate estimate(ProgressDifferences::k32Bit);
  EXPECT_FALSE(estimate.Estimate(kStart).has_value());
  estimate.Report(0, 100, kStart);
  EXPECT_FALSE(estimate.Estimate(kStart + 3 * kSecond).has_value());
}

TEST(RemainingTime, FirstEstimateThreeSecondsAfterTheFirstReport)
{
  CRemainingTimeEstimate estimate(ProgressDifferences::k32Bit);
  estimate.Report(10, 100, kStart);
  // 30,000,000 / 10 * 90 / 10,000,000 = 27 seconds.
  const auto shown = estimate.Estimate(kStart + kFirstEstimateDelayMs * uint64_t{10000});
  ASSERT_TRUE(shown.has_value());
  EXPECT_EQ(shown->seconds, 27u);
  EXPECT_EQ(shown->nextPeriodMs, 3000u);
  EXPECT_EQ(shown->text, u"27 seconds");
}

TEST(RemainingTime, SeventyFiveSecondsRefreshAfterTenSeconds)
{
  CRemainingTimeEstimate estimate(ProgressDifferences::k64Bit);
  estimate.Report(4, 104, kStart);
  const auto shown = estimate.Estimate(kStart + 3 * kSecond);  // 3 s per 4, 100 to go
  ASSERT_TRUE(shown.has_value());
  EXPECT_EQ(shown->seconds, 75u);
  EXPECT_EQ(shown->nextPeriodMs, 10000u);
  EXPECT_EQ(shown->text, u"1 minute");
}

TEST(RemainingTime, DividesBeforeItMultiplies)
{
  // 30,000,000 / 7 truncates to 4,285,714; times 7,000 and over 10,000,000 gives 2,999 s.
  // Multiplying first would give 3,000 s ("50 minutes").
  CRemainingTimeEstimate estimate(ProgressDifferences::k32Bit);
  estimate.Report(7, 7007, kStart);
  const auto shown = estimate.Estimate(kStart + 3 * kSecond);
  ASSERT_TRUE(shown.has_value());
  EXPECT_EQ(shown->seconds, 2999u);
  EXPECT_EQ(shown->text, u"49 minutes");
}

TEST(RemainingTime, RateSinceThePreviousEstimateOnly)
{
  CRemainingTimeEstimate estimate(ProgressDifferences::k32Bit);
  estimate.Report(10, 1000, kStart);
  ASSERT_TRUE(estimate.Estimate(kStart + 3 * kSecond).has_value());
  // 40 more in the next 2 s: 2 s / 40 * 950 = 47.5 s, truncated.
  const auto shown = ReportAndEstimate(estimate, 50, 1000, kStart + 5 * kSecond);
  ASSERT_TRUE(shown.has_value());
  EXPECT_EQ(shown->seconds, 47u);
  EXPECT_EQ(shown->nextPeriodMs, 5000u);
}

TEST(RemainingTime, NoNewReportNoNewEstimate)
{
  CRemainingTimeEstimate estimate(ProgressDifferences::k32Bit);
  estimate.Report(10, 100, kStart);
  ASSERT_TRUE(estimate.Estimate(kStart + 3 * kSecond).has_value());
  EXPECT_FALSE(estimate.Estimate(kStart + 4 * kSecond).has_value());
}

TEST(RemainingTime, RepeatedProgressGivesNoEstimateAndKeepsTheTimeOfTheLast)
{
  CRemainingTimeEstimate estimate(ProgressDifferences::k32Bit);
  estimate.Report(10, 100, kStart);
  ASSERT_TRUE(estimate.Estimate(kStart + 3 * kSecond).has_value());
  EXPECT_FALSE(ReportAndEstimate(estimate, 10, 100, kStart + 4 * kSecond).has_value());
  // The next estimate measures from the last one (3 s ago), across the stall:
  // 30,000,000 / 10 * 80 = 24 s (from the stalled tick it would be 16 s).
  const auto shown = ReportAndEstimate(estimate, 20, 100, kStart + 6 * kSecond);
  ASSERT_TRUE(shown.has_value());
  EXPECT_EQ(shown->seconds, 24u);
}

TEST(RemainingTime, RepeatedProgressGuardsBothWidths)
{
  for (const auto differences : {ProgressDifferences::k32Bit, ProgressDifferences::k64Bit}) {
    CRemainingTimeEstimate estimate(differences);
    estimate.Report(10, 100, kStart);
    ASSERT_TRUE(estimate.Estimate(kStart + 3 * kSecond).has_value());
    EXPECT_FALSE(ReportAndEstimate(estimate, 10, 100, kStart + 9 * kSecond).has_value());
  }
}

TEST(RemainingTime, NoTimePassedGivesNoEstimateAndKeepsTheReport)
{
  CRemainingTimeEstimate estimate(ProgressDifferences::k32Bit);
  estimate.Report(10, 100, kStart);
  EXPECT_FALSE(estimate.Estimate(kStart).has_value());
  const auto shown = estimate.Estimate(kStart + kSecond);
  ASSERT_TRUE(shown.has_value());
  EXPECT_EQ(shown->seconds, 9u);
  EXPECT_EQ(shown->nextPeriodMs, 1000u);
}

TEST(RemainingTime, ZeroSecondsMovesOnlyTheTimeOfTheLastEstimate)
{
  CRemainingTimeEstimate estimate(ProgressDifferences::k32Bit);
  estimate.Report(1, 5, kStart);
  // 0.2 s / 1 * 4 = 0.8 s: no estimate, but the measuring starts again from here.
  EXPECT_FALSE(estimate.Estimate(kStart + 2000000).has_value());
  // 0.3 s more / 1 done since the last estimate (still 0) * 4 = 1.2 s; measured from the
  // start it would be 2 s.
  const auto shown = estimate.Estimate(kStart + 5000000);
  ASSERT_TRUE(shown.has_value());
  EXPECT_EQ(shown->seconds, 1u);
  EXPECT_EQ(shown->text, u"1 second");
}

TEST(RemainingTime, ProgressGoingBackDiffersByWidth)
{
  // 100 done at the last estimate, then 50: taken in 32 bits the progress made is
  // 4,294,967,246; in 64 bits it is beyond any time passed, and the estimate is 0.
  const uint64_t stall = uint64_t{4294967246} * 100000;
  for (const auto differences : {ProgressDifferences::k32Bit, ProgressDifferences::k64Bit}) {
    CRemainingTimeEstimate estimate(differences);
    estimate.Report(100, 1000, kStart);
    ASSERT_TRUE(estimate.Estimate(kStart + 3 * kSecond).has_value());
    const auto shown = ReportAndEstimate(estimate, 50, 1000, kStart + 3 * kSecond + stall);
    if (differences == ProgressDifferences::k32Bit) {
      ASSERT_TRUE(shown.has_value());
      EXPECT_EQ(shown->seconds, 9u);  // 100,000 * 950 / 10,000,000
    } else {
      EXPECT_FALSE(shown.has_value());
    }
  }
}

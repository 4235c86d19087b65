// The completion page's summary texts and the request they are read from.
#include "wizard/completion_summary.h"

#include <gtest/gtest.h>

TEST(CompletionSummary, RequestStartsEmpty)
{
  const NewImageRequest request;
  EXPECT_EQ(request.capacity, 0u);
  EXPECT_EQ(request.fatCompatible, 0u);
  EXPECT_EQ(request.fixedSize, 0u);
  EXPECT_EQ(request.algorithm, 0u);
  EXPECT_EQ(request.keyBits, 0u);
  EXPECT_TRUE(request.path.empty());
  EXPECT_TRUE(request.password.empty());
  EXPECT_EQ(request.mountAfter, 0u);
}

TEST(CompletionSummary, AlgorithmIsNameAndBits)
{
  EXPECT_EQ(SummaryAlgorithmText(0, 256), u"AES-256");
  EXPECT_EQ(SummaryAlgorithmText(1, 448), u"BLOWFISH-448");
  EXPECT_EQ(SummaryAlgorithmText(2, 128), u"CAST-128");
}

TEST(CompletionSummary, AlgorithmOutsideTheListHasNoName)
{
  EXPECT_EQ(SummaryAlgorithmText(3, 128), u"-128");
  EXPECT_EQ(SummaryAlgorithmText(0xFFFFFFFF, 64), u"-64");
}

TEST(CompletionSummary, FieldsOfARequest)
{
  NewImageRequest request;
  request.capacity = 1649267441664;
  request.fixedSize = 1;
  request.fatCompatible = 0;
  request.algorithm = 1;
  request.keyBits = 448;
  request.path = u"C:\\Disks\\work.qvi";
  const CompletionSummary summary = SummarizeRequest(request);
  EXPECT_EQ(summary.path, u"C:\\Disks\\work.qvi");
  EXPECT_EQ(summary.capacity, u"1.50 TB");
  EXPECT_EQ(summary.algorithm, u"BLOWFISH-448");
  EXPECT_EQ(summary.fixedSize, u"Yes");
  EXPECT_EQ(summary.fatCompatible, u"No");

  request.fixedSize = 0;
  request.fatCompatible = 7;
  request.capacity = 5 * 1048576;
  const CompletionSummary other = SummarizeRequest(request);
  EXPECT_EQ(other.capacity, u"5.0 MB");
  EXPECT_EQ(other.fixedSize, u"No");
  EXPECT_EQ(other.fatCompatible, u"Yes");
}

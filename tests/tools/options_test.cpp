// The image tool's command line.
#include <gtest/gtest.h>

#include "crypto/cipher.h"
#include "tools/ctellimg/options.h"

namespace {

ParseResult Parse(std::vector<std::string> arguments)
{
  return ParseArguments(arguments);
}

}  // namespace

TEST(ctellimgArguments, CreateDefaults)
{
  const ParseResult result = Parse({"create", "disk.qvi", "--capacity", "64 MB"});
  ASSERT_TRUE(result.ok) << result.error;
  EXPECT_EQ(result.options.command, Command::kCreate);
  EXPECT_EQ(result.options.image, "disk.qvi");
  EXPECT_EQ(result.options.capacity, 64ull << 20);
  EXPECT_FALSE(result.options.fixed);
  EXPECT_EQ(result.options.volumeSizeLimit, 0u);
  EXPECT_EQ(result.options.algorithm, kCipherAes);
  EXPECT_EQ(result.options.keyBits, 256u);
}

TEST(ctellimgArguments, CreateWithEveryOption)
{
  const ParseResult result =
      Parse({"create", "--fixed", "--algorithm", "Blowfish", "--key-bits=448", "--split", "1048576",
             "--capacity=1.5 TB", "d.qvi"});
  ASSERT_TRUE(result.ok) << result.error;
  EXPECT_TRUE(result.options.fixed);
  EXPECT_EQ(result.options.algorithm, kCipherBlowfish);
  EXPECT_EQ(result.options.keyBits, 448u);
  EXPECT_EQ(result.options.volumeSizeLimit, 1048576u);
  EXPECT_EQ(result.options.capacity, 1649267441664u);
  EXPECT_EQ(result.options.image, "d.qvi");
}

TEST(ctellimgArguments, FatMeansAllOnes)
{
  const ParseResult result = Parse({"create", "d.qvi", "--capacity", "8 MB", "--fat"});
  ASSERT_TRUE(result.ok) << result.error;
  EXPECT_EQ(result.options.volumeSizeLimit, UINT64_MAX);
  EXPECT_FALSE(Parse({"create", "d.qvi", "--capacity", "8 MB", "--fat", "--split", "9000"}).ok);
}

TEST(ctellimgArguments, CapacityIsAdjustedOrRefused)
{
  const ParseResult big = Parse({"create", "d.qvi", "--capacity", "3 TB"});
  ASSERT_TRUE(big.ok);
  EXPECT_EQ(big.options.capacity, 2ull << 40);
  EXPECT_TRUE(big.options.capacityAdjusted);
  EXPECT_FALSE(Parse({"create", "d.qvi", "--capacity", "64"}).ok);
  EXPECT_FALSE(Parse({"create", "d.qvi", "--capacity"}).ok);
  EXPECT_FALSE(Parse({"create", "d.qvi"}).ok);
}

TEST(ctellimgArguments, DefaultKeyLengthFollowsTheAlgorithm)
{
  const ParseResult cast = Parse({"create", "d.qvi", "--capacity", "8 MB", "--algorithm", "cast"});
  ASSERT_TRUE(cast.ok) << cast.error;
  EXPECT_EQ(cast.options.keyBits, 128u);
  const ParseResult blowfish =
      Parse({"create", "d.qvi", "--capacity", "8 MB", "--algorithm", "blowfish"});
  ASSERT_TRUE(blowfish.ok) << blowfish.error;
  EXPECT_EQ(blowfish.options.keyBits, 256u);
}

TEST(ctellimgArguments, KeyLengthsPerAlgorithm)
{
  EXPECT_EQ(KeyBitsError(kCipherAes, 128), "");
  EXPECT_EQ(KeyBitsError(kCipherAes, 192), "");
  EXPECT_EQ(KeyBitsError(kCipherAes, 256), "");
  EXPECT_NE(KeyBitsError(kCipherAes, 160), "");
  EXPECT_NE(KeyBitsError(kCipherAes, 64), "");
  EXPECT_NE(KeyBitsError(kCipherAes, 512), "");
  EXPECT_EQ(KeyBitsError(kCipherBlowfish, 32), "");
  EXPECT_EQ(KeyBitsError(kCipherBlowfish, 448), "");
  EXPECT_EQ(KeyBitsError(kCipherBlowfish, 200), "");
  EXPECT_NE(KeyBitsError(kCipherBlowfish, 24), "");
  EXPECT_NE(KeyBitsError(kCipherBlowfish, 456), "");
  EXPECT_NE(KeyBitsError(kCipherBlowfish, 129), "");
  EXPECT_EQ(KeyBitsError(kCipherCast, 40), "");
  EXPECT_EQ(KeyBitsError(kCipherCast, 128), "");
  EXPECT_NE(KeyBitsError(kCipherCast, 32), "");
  EXPECT_NE(KeyBitsError(kCipherCast, 136), "");
  EXPECT_NE(KeyBitsError(kCipherCast, 0), "");
  EXPECT_FALSE(
      Parse({"create", "d.qvi", "--capacity", "8 MB", "--algorithm", "cast", "--key-bits", "256"})
          .ok);
  EXPECT_FALSE(Parse({"create", "d.qvi", "--capacity", "8 MB", "--key-bits", "-1"}).ok);
  EXPECT_FALSE(Parse({"create", "d.qvi", "--capacity", "8 MB", "--key-bits", "4294967424"}).ok);
}

TEST(ctellimgArguments, AlgorithmNames)
{
  EXPECT_EQ(AlgorithmFromName("aes"), 0);
  EXPECT_EQ(AlgorithmFromName("AES"), 0);
  EXPECT_EQ(AlgorithmFromName("blowfish"), 1);
  EXPECT_EQ(AlgorithmFromName("cast"), 2);
  EXPECT_EQ(AlgorithmFromName("rc4"), -1);
  EXPECT_FALSE(Parse({"create", "d.qvi", "--capacity", "8 MB", "--algorithm", "rc4"}).ok);
}

TEST(ctellimgArguments, SplitNeedsADecimalByteCount)
{
  EXPECT_FALSE(Parse({"create", "d.qvi", "--capacity", "8 MB", "--split", "2 MB"}).ok);
  EXPECT_FALSE(Parse({"create", "d.qvi", "--capacity", "8 MB", "--split", "-5"}).ok);
  EXPECT_FALSE(
      Parse({"create", "d.qvi", "--capacity", "8 MB", "--split", "18446744073709551616"}).ok);
  const ParseResult top =
      Parse({"create", "d.qvi", "--capacity", "8 MB", "--split", "18446744073709551615"});
  ASSERT_TRUE(top.ok);
  EXPECT_EQ(top.options.volumeSizeLimit, UINT64_MAX);
}

TEST(ctellimgArguments, OptionsBelongToTheirCommands)
{
  EXPECT_TRUE(Parse({"check", "d.qvi", "--data", "--json"}).ok);
  EXPECT_TRUE(Parse({"info", "d.qvi", "--json"}).ok);
  EXPECT_TRUE(Parse({"show", "d.qvi", "--json"}).ok);
  EXPECT_TRUE(Parse({"clear", "d.qvi", "--yes"}).ok);
  EXPECT_FALSE(Parse({"info", "d.qvi", "--data"}).ok);
  EXPECT_FALSE(Parse({"passwd", "d.qvi", "--json"}).ok);
  EXPECT_FALSE(Parse({"show", "d.qvi", "--yes"}).ok);
  EXPECT_FALSE(Parse({"info", "d.qvi", "--capacity", "8 MB"}).ok);
  EXPECT_FALSE(Parse({"check", "d.qvi", "--json=1"}).ok);
  const ParseResult check = Parse({"check", "--data", "d.qvi"});
  ASSERT_TRUE(check.ok);
  EXPECT_TRUE(check.options.data);
  EXPECT_FALSE(check.options.json);
}

TEST(ctellimgArguments, PathsAndCommands)
{
  EXPECT_FALSE(Parse({}).ok);
  EXPECT_FALSE(Parse({"mount", "d.qvi"}).ok);
  EXPECT_FALSE(Parse({"info"}).ok);
  EXPECT_FALSE(Parse({"info", "a.qvi", "b.qvi"}).ok);
  const ParseResult dashed = Parse({"info", "--", "-odd name.qvi"});
  ASSERT_TRUE(dashed.ok) << dashed.error;
  EXPECT_EQ(dashed.options.image, "-odd name.qvi");
  EXPECT_EQ(Parse({"--help"}).options.command, Command::kHelp);
  EXPECT_EQ(Parse({"info", "-h"}).options.command, Command::kHelp);
  EXPECT_NE(Parse({"mount", "d.qvi"}).error.find("mount"), std::string::npos);
}

TEST(ctellimgArguments, UsageNamesEveryCommand)
{
  const std::string usage = UsageText();
  for (const char* command : {"create", "info", "show", "check", "passwd", "clear"})
    EXPECT_NE(usage.find(std::string("ctellimg ") + command), std::string::npos) << command;
}

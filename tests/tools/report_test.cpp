// Reports of the image tool: JSON and plain text.
#include <gtest/gtest.h>

#include <cstring>

#include "tools/ctellimg/report.h"

TEST(ctellimgJson, QuotesAndEscapes)
{
  EXPECT_EQ(JsonQuote("plain"), "\"plain\"");
  EXPECT_EQ(JsonQuote("a\"b\\c"), "\"a\\\"b\\\\c\"");
  EXPECT_EQ(JsonQuote("C:\\x\n\t"), "\"C:\\\\x\\n\\t\"");
  EXPECT_EQ(JsonQuote(std::string("\x01", 1)), "\"\\u0001\"");
  EXPECT_EQ(JsonQuote("caf\xc3\xa9"), "\"caf\xc3\xa9\"");
}

TEST(ctellimgJson, ObjectKeepsFieldOrder)
{
  JsonObject json;
  EXPECT_EQ(json.Text(), "{}");
  json.AddString("a", "x");
  json.AddNumber("b", UINT64_MAX);
  json.AddBool("c", false);
  EXPECT_EQ(json.Text(), "{\"a\":\"x\",\"b\":18446744073709551615,\"c\":false}");
}

TEST(ctellimgJson, KeyInfo)
{
  ImageKeyInfo info{sizeof info, 2, 16, 1, {}};
  for (int i = 0; i < 64; ++i) info.identityBlock[i] = static_cast<uint8_t>(i);
  std::string identity;
  for (int i = 0; i < 64; ++i) {
    identity += "0123456789abcdef"[i >> 4];
    identity += "0123456789abcdef"[i & 15];
  }
  EXPECT_EQ(KeyInfoJson("d.qvi", info),
            "{\"image\":\"d.qvi\",\"algorithm\":2,\"keyLength\":16,\"mode\":1,"
            "\"identityBlock\":\"" +
                identity + "\"}");
  EXPECT_EQ(identity.substr(0, 8), "00010203");
  EXPECT_EQ(identity.substr(120), "3c3d3e3f");
}

TEST(ctellimgJson, Properties)
{
  ImageProperties p{};
  p.recordSize = sizeof p;
  p.flags = 0x11;
  std::memset(&p.imageIdentifier, 0xAB, sizeof p.imageIdentifier);
  p.creationTime = 1700000000;
  p.lastOpenTime = 1700000001;
  p.capacity = 8ull << 20;
  p.volumeSizeLimit = UINT64_MAX;
  p.blockSize = 65536;
  p.algorithm = 0;
  p.keyLength = 32;
  p.mode = 1;
  EXPECT_EQ(PropertiesJson("d.qvi", p),
            "{\"image\":\"d.qvi\",\"flags\":17,\"imageIdentifier\":\""
            "abababababababababababababababab\",\"creationTime\":1700000000,"
            "\"lastOpenTime\":1700000001,\"capacity\":8388608,"
            "\"volumeSizeLimit\":18446744073709551615,\"blockSize\":65536,\"algorithm\":0,"
            "\"keyLength\":32,\"mode\":1}");
  const std::string text = PropertiesText("d.qvi", p);
  EXPECT_NE(text.find("8 MB (8388608 bytes)"), std::string::npos);
  EXPECT_NE(text.find("AES-256 (CBC)"), std::string::npos);
  EXPECT_NE(text.find("fixed size"), std::string::npos);
  EXPECT_NE(text.find("file system limit"), std::string::npos);
  EXPECT_NE(text.find("2023-11-14 22:13:20 UTC"), std::string::npos);
  EXPECT_NE(text.find("0x11"), std::string::npos);
}

TEST(ctellimgJson, CheckSummary)
{
  CheckSummary summary{3, 2, true, 12288};
  EXPECT_EQ(CheckJson("d.qvi", summary),
            "{\"image\":\"d.qvi\",\"ok\":true,\"volumes\":3,\"tableBlocks\":2,\"dataRead\":true,"
            "\"bytesRead\":12288}");
  const std::string text = CheckText("d.qvi", summary);
  EXPECT_NE(text.find("Volume files verified:          3"), std::string::npos);
  EXPECT_NE(text.find("12288 (3 units)"), std::string::npos);
  EXPECT_EQ(CheckText("d.qvi", CheckSummary{1, 0, false, 0}).find("Bytes read"), std::string::npos);
}

TEST(ctellimgReport, Texts)
{
  EXPECT_EQ(AlgorithmName(0), "AES");
  EXPECT_EQ(AlgorithmName(1), "BLOWFISH");
  EXPECT_EQ(AlgorithmName(2), "CAST");
  EXPECT_EQ(AlgorithmName(3), "RC4");
  EXPECT_EQ(AlgorithmName(9), "9");
  EXPECT_EQ(UtcTimeText(0), "1970-01-01 00:00:00 UTC");
  EXPECT_EQ(UtcTimeText(951782400), "2000-02-29 00:00:00 UTC");
  EXPECT_EQ(UtcTimeText(4102444799), "2099-12-31 23:59:59 UTC");
  EXPECT_EQ(VolumeLimitText(0), "none (one volume file)");
  EXPECT_EQ(VolumeLimitText(UINT64_MAX), "file system limit");
  EXPECT_EQ(VolumeLimitText(1048576), "1048576 bytes per volume file");
  const uint8_t bytes[] = {0x00, 0x7f, 0xff};
  EXPECT_EQ(HexText(bytes, 3), "007fff");
  ImageKeyInfo info{sizeof info, 1, 56, 1, {}};
  EXPECT_NE(KeyInfoText("d.qvi", info).find("BLOWFISH-448 (CBC)"), std::string::npos);
}

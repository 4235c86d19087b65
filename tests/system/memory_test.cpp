#include "system/memory.h"

#include <gtest/gtest.h>

#include <cstring>

TEST(SysAllocate, ZeroSizeGivesNothing)
{
  EXPECT_EQ(SysAllocate(0, kAllocZeroed), nullptr);
}

TEST(SysAllocate, BlocksArePageAlignedZeroFilledAndWritable)
{
  for (uint32_t flags : {kAllocZeroed, kAllocZeroed | kAllocPageable, kAllocPageable, 0u}) {
    for (size_t size : {size_t{1}, size_t{4095}, size_t{4096}, size_t{4097}, size_t{1} << 20}) {
      auto* block = static_cast<uint8_t*>(SysAllocate(size, flags));
      ASSERT_NE(block, nullptr) << size;
      EXPECT_EQ(reinterpret_cast<uintptr_t>(block) % SysPageSize(), 0u);
      for (size_t i = 0; i < size; ++i) ASSERT_EQ(block[i], 0) << "byte " << i;
      std::memset(block, 0xA5, size);
      EXPECT_EQ(block[size - 1], 0xA5);
      SysRelease(block);
    }
  }
}

TEST(SysAllocate, ImpossibleSizeFailsCleanly)
{
  EXPECT_EQ(SysAllocate(SIZE_MAX, kAllocPageable), nullptr);
  EXPECT_EQ(SysAllocate(SIZE_MAX - 100, 0), nullptr);
}

TEST(SysRelease, NullIsIgnored)
{
  SysRelease(nullptr);
}

TEST(SysPageSize, IsAPowerOfTwoOfAtLeast4096)
{
  const size_t page = SysPageSize();
  EXPECT_GE(page, 4096u);
  EXPECT_EQ(page & (page - 1), 0u);
}

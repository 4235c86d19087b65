#include "system/memory.h"

#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <string>

#ifdef __linux__
#include <sys/resource.h>
#endif

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

#ifdef __linux__
namespace {

// Kilobytes of this process's memory locked in RAM, as the kernel reports it.
long LockedKilobytes()
{
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.rfind("VmLck:", 0) == 0) return std::stol(line.substr(6));
  }
  return -1;
}

}  // namespace

TEST(SysAllocate, KeyMaterialIsLockedBulkDataIsNot)
{
  constexpr size_t kSize = 64 * 1024;
  rlimit limit{};
  ASSERT_EQ(getrlimit(RLIMIT_MEMLOCK, &limit), 0);
  const long before = LockedKilobytes();
  ASSERT_GE(before, 0);
  if (limit.rlim_cur != RLIM_INFINITY &&
      limit.rlim_cur < static_cast<rlim_t>(before) * 1024 + kSize) {
    GTEST_SKIP() << "the memory-lock limit leaves no room for " << kSize << " bytes";
  }
  void* pageable = SysAllocate(kSize, kAllocZeroed | kAllocPageable);
  EXPECT_EQ(LockedKilobytes(), before);
  void* key = SysAllocate(kSize, kAllocZeroed);
  EXPECT_EQ(LockedKilobytes(), before + static_cast<long>(kSize / 1024));
  SysRelease(key);
  SysRelease(pageable);
  EXPECT_EQ(LockedKilobytes(), before);
}
#endif

TEST(SysAllocationFaults, TheChosenAllocationFailsAndTheOthersGoOn)
{
  SysAllocationFaults faults;
  faults.failingAllocation = 2;
  SysSetAllocationFaults(&faults);
  void* first = SysAllocate(100, kAllocZeroed);
  void* second = SysAllocate(100, kAllocZeroed);
  void* third = SysAllocate(100, kAllocPageable);
  EXPECT_NE(first, nullptr);
  EXPECT_EQ(second, nullptr);
  EXPECT_NE(third, nullptr);
  EXPECT_EQ(faults.allocationsSeen, 3u);
  EXPECT_EQ(faults.blocksLive, 2u);
  SysRelease(first);
  EXPECT_EQ(faults.blocksLive, 1u);
  SysRelease(third);
  EXPECT_EQ(faults.blocksLive, 0u);
  SysSetAllocationFaults(nullptr);
}

TEST(SysAllocationFaults, BlocksFromBeforeThePlanAreNotCounted)
{
  void* before = SysAllocate(100, kAllocZeroed);
  ASSERT_NE(before, nullptr);
  SysAllocationFaults faults;
  SysSetAllocationFaults(&faults);
  void* during = SysAllocate(100, kAllocZeroed);
  ASSERT_NE(during, nullptr);
  SysRelease(before);
  EXPECT_EQ(faults.blocksLive, 1u);
  SysRelease(during);
  EXPECT_EQ(faults.blocksLive, 0u);
  EXPECT_EQ(faults.allocationsSeen, 1u);
  SysSetAllocationFaults(nullptr);
}

TEST(SysAllocationFaults, WithoutAPlanNothingFails)
{
  SysAllocationFaults faults;
  faults.failingAllocation = 1;
  SysSetAllocationFaults(&faults);
  SysSetAllocationFaults(nullptr);
  void* block = SysAllocate(100, kAllocZeroed);
  EXPECT_NE(block, nullptr);
  SysRelease(block);
  EXPECT_EQ(faults.allocationsSeen, 0u);
}

// The enumeration's callback contract and its release of what the RPC runtime allocated.
// The test executable is linked with the allocator pair wrapped, so every block the
// runtime or the client allocates or frees through it is counted here.
#include <cstddef>

#include "host_fixture.h"

namespace {

int allocations = 0;
int releases = 0;

}  // namespace

extern "C" {
void* __real_MIDL_user_allocate(size_t size);
void __real_MIDL_user_free(void* block);

void* __wrap_MIDL_user_allocate(size_t size)
{
  ++allocations;
  return __real_MIDL_user_allocate(size);
}

void __wrap_MIDL_user_free(void* block)
{
  if (block != nullptr) ++releases;
  __real_MIDL_user_free(block);
}
}

namespace {

struct Seen {
  std::vector<std::u16string> mountPoints;
  int failAt = 0;
};

constexpr StatusCode kCallbackFailure = 0x40000002;

StatusCode FailAtRecord(const char16_t*, const char16_t* mountPoint, uint32_t,
                        const MountedDiskInfo*, void* context)
{
  auto* seen = static_cast<Seen*>(context);
  seen->mountPoints.push_back(mountPoint);
  return static_cast<int>(seen->mountPoints.size()) == seen->failAt ? kCallbackFailure
                                                                    : kStatusSuccess;
}

}  // namespace

TEST_F(DeviceHostTest, CallbackFailureOnTheThirdRecordStopsAndFreesTheArray)
{
  const std::u16string letters = u"PQRST";
  for (const char16_t letter : letters) {
    const std::u16string image = MakeImage(std::u16string(1, letter) + u".qvi");
    const char16_t mountPoint[] = {letter, u':', 0};
    ASSERT_EQ(ImgMountWithPassword(image.c_str(), mountPoint, 0, u"secret"), 0u);
  }
  allocations = releases = 0;
  Seen seen;
  seen.failAt = 3;
  EXPECT_EQ(DevEnumerateDisks(FailAtRecord, &seen), kCallbackFailure);
  EXPECT_EQ(seen.mountPoints, (std::vector<std::u16string>{u"P:", u"Q:", u"R:"}));
  // The array, and the two strings and the information block of each of the five
  // records, were all allocated through the pair and all went back.
  EXPECT_EQ(allocations, 1 + 5 * 3);
  EXPECT_EQ(releases, allocations);
}

TEST_F(DeviceHostTest, EnumerationPassesEveryRecordInMountOrder)
{
  for (const char16_t letter : std::u16string(u"SPR")) {
    const std::u16string image = MakeImage(std::u16string(1, letter) + u".qvi");
    const char16_t mountPoint[] = {letter, u':', 0};
    ASSERT_EQ(ImgMountWithPassword(image.c_str(), mountPoint, 0, u"secret"), 0u);
  }
  allocations = releases = 0;
  Seen seen;
  EXPECT_EQ(DevEnumerateDisks(FailAtRecord, &seen), kStatusSuccess);
  EXPECT_EQ(seen.mountPoints, (std::vector<std::u16string>{u"S:", u"P:", u"R:"}));
  EXPECT_EQ(allocations, 1 + 3 * 3);
  EXPECT_EQ(releases, allocations);
}

// The procedure numbers of the interface. Each procedure is called through its generated
// client stub, and the reference host records the number that arrived with the request
// and the routine that answered it; the expected pairs are the interface's own table.
#include <functional>

#include "devhost/binding_win.h"
#include "devhost_rpc.h"
#include "host_fixture.h"

namespace {

struct NumberedProcedure {
  const wchar_t* expected;  // "<number> <name>" as the interface defines them
  StatusCode answer;        // what the reference host answers to the call below
  std::function<long(RPC_BINDING_HANDLE)> call;
};

long ListAndRelease(RPC_BINDING_HANDLE binding,
                    long (*procedure)(RPC_BINDING_HANDLE, MountedDiskRecord**, ULONG*))
{
  MountedDiskRecord* records = nullptr;
  ULONG count = 0;
  const long status = procedure(binding, &records, &count);
  MIDL_user_free(records);
  return status;
}

}  // namespace

TEST_F(DeviceHostTest, EveryProcedureArrivesUnderItsNumber)
{
  const GUID id{};
  const uint8_t key[32] = {};
  const std::vector<NumberedProcedure> procedures = {
      {L"0 Procedure0", 0x40000003,
       [](RPC_BINDING_HANDLE b) { return Procedure0(b, L"x.qvi", L"P:", 0); }},
      {L"1 MountImage", 0x4000000F,
       [&](RPC_BINDING_HANDLE b) { return MountImage(b, L"x.qvi", L"P:", 0, key, sizeof key); }},
      {L"2 Procedure2", 0, [](RPC_BINDING_HANDLE b) { return Procedure2(b, 1); }},
      {L"3 DismountAll", 0, [](RPC_BINDING_HANDLE b) { return DismountAll(b, 0); }},
      {L"4 DismountByMountPoint", 0x4000000F,
       [](RPC_BINDING_HANDLE b) { return DismountByMountPoint(b, L"P:", 0); }},
      {L"5 DismountById", 0x4000000F,
       [&](RPC_BINDING_HANDLE b) { return DismountById(b, &id, 0); }},
      {L"6 Procedure6", 0, [](RPC_BINDING_HANDLE b) { return Procedure6(b, 1, 0); }},
      {L"7 Procedure7", 0, [](RPC_BINDING_HANDLE b) { return ListAndRelease(b, Procedure7); }},
      {L"8 EnumerateDisks", 0,
       [](RPC_BINDING_HANDLE b) { return ListAndRelease(b, EnumerateDisks); }},
      {L"9 FormatVolume", 0x4000000F,
       [](RPC_BINDING_HANDLE b) { return FormatVolume(b, L"P:", FileSystemSelector1); }},
  };
  for (const NumberedProcedure& procedure : procedures) {
    ForgetLastCall();
    auto call = procedure.call;
    const StatusCode status = CallDeviceHost(call);
    EXPECT_EQ(status, procedure.answer) << procedure.expected;
    EXPECT_EQ(LastCall(), procedure.expected);
  }
}

TEST_F(DeviceHostTest, UnusedProceduresAnswer)
{
  // Procedure 7 lists like procedure 8.
  const std::u16string image = MakeImage();
  ASSERT_EQ(ImgMountWithPassword(image.c_str(), u"P:", 0, u"secret"), 0u);
  MountedDiskRecord* records = nullptr;
  ULONG count = 0;
  const StatusCode status = CallDeviceHost(
      [&](RPC_BINDING_HANDLE binding) { return Procedure7(binding, &records, &count); });
  EXPECT_EQ(status, 0u);
  ASSERT_EQ(count, 1u);
  EXPECT_EQ(std::wstring(records[0].MountPoint), L"P:");
  EXPECT_GE(records[0].InfoSize, 72u);
  MIDL_user_free(records[0].MountPoint);
  MIDL_user_free(records[0].ImagePath);
  MIDL_user_free(records[0].Info);
  MIDL_user_free(records);

  EXPECT_EQ(CallDeviceHost([](RPC_BINDING_HANDLE b) { return Procedure2(b, 0); }), 0u);
  EXPECT_EQ(CallDeviceHost([](RPC_BINDING_HANDLE b) { return Procedure6(b, 5, 1); }), 0u);
  EXPECT_EQ(CallDeviceHost([](RPC_BINDING_HANDLE b) { return Procedure0(b, L"x", L"P:", 0); }),
            0x40000003u);
}

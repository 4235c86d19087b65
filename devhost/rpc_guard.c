#include "devhost/rpc_guard.h"

#include <excpt.h>
#include <rpc.h>
#include <rpcasync.h>
#include <windows.h>

// The exception code seen by the filter, for the guard running on this thread.
static _Thread_local unsigned long caughtException;

// The scope filter of the guard: takes the exceptions the RPC runtime raises, leaves
// process faults to the next handler. Referenced from the guard's unwind data only.
__attribute__((used)) long DevGuardFilter(EXCEPTION_POINTERS* pointers, void* frame);
long DevGuardFilter(EXCEPTION_POINTERS* pointers, void* frame)
{
  (void)frame;
  const unsigned long code = pointers->ExceptionRecord->ExceptionCode;
  if (I_RpcExceptionFilter(code) != EXCEPTION_EXECUTE_HANDLER) return EXCEPTION_CONTINUE_SEARCH;
  caughtException = code;
  return EXCEPTION_EXECUTE_HANDLER;
}

// The guarded range is delimited by assembler labels that exist once per file, so this
// is the only guard of the file. The barriers keep the compiler from moving memory
// accesses across the range's ends.
__attribute__((noinline)) unsigned long DevRunGuarded(DevGuardedCall call, void* context,
                                                      long* result)
{
  caughtException = 0;
  *result = 0;
  __asm__ __volatile__("" ::: "memory");
  __try1(DevGuardFilter)* result = call(context);
  __except1 __asm__ __volatile__("" ::: "memory");
  return caughtException;
}

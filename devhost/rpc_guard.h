// Runs a call that the RPC runtime may end with a structured exception. C++ handlers do
// not catch those, so the guard is written in C on the compiler's unwind primitives.
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

typedef long (*DevGuardedCall)(void* context);

// Runs call(context) and stores its result in *result. Returns 0, or the code of the
// exception that ended the call (then *result is 0). Exceptions that signal a fault in
// this process, such as an access violation, are not caught.
unsigned long DevRunGuarded(DevGuardedCall call, void* context, long* result);

#ifdef __cplusplus
}
#endif

// The allocator pair through which the RPC runtime allocates and frees what it
// unmarshals (and, in a server, what the manager routines hand back): plain heap memory.
#include <rpc.h>

#include <cstdlib>

void* __RPC_USER MIDL_user_allocate(size_t size)
{
  return std::malloc(size);
}

void __RPC_USER MIDL_user_free(void* block)
{
  std::free(block);
}

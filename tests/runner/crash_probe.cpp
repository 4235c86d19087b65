// Dies of an unhandled exception: the Wine runner must report that as a failure at once.
int main()
{
  __builtin_trap();
}

// The end of a server library that a process unloads: its own C++ runtime, linked into it, keeps memory in reserve for
// exceptions thrown without memory (72 KiB), and leaves it behind unless it is told to free it.

namespace __gnu_cxx
{
void __freeres();
} // namespace __gnu_cxx

namespace
{

struct RuntimeEnd
{
    ~RuntimeEnd() { __gnu_cxx::__freeres(); }
};
// The first priority that a library may use, so the last object that is destroyed.
__attribute__((init_priority(101))) const RuntimeEnd g_runtimeEnd;

} // namespace

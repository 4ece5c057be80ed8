// A library without the export that implementors have.
#include <windows.h>

extern "C" __declspec(dllexport) LONG SomethingElse()
{
    return 0;
}

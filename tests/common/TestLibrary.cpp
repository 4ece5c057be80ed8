// A library for the loader's tests, which copy it to the names and places that they need.

#include <windows.h>

extern "C" __declspec(dllexport) int TestLibraryAnswer()
{
    return 42;
}

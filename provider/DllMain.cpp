// The library's own entry: there is no work at attach, at detach or per thread.

#include <windows.h>

BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID)
{
    return TRUE;
}

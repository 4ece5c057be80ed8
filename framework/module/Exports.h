// The exports of the COM server; the system's headers declare only the first two.
#pragma once

#include <windows.h>
#include <objbase.h>

extern "C" __declspec(dllexport) HRESULT STDMETHODCALLTYPE DllRegisterServer();
extern "C" __declspec(dllexport) HRESULT STDMETHODCALLTYPE DllUnregisterServer();

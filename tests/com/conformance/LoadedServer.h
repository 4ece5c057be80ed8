// LoadedServer: a COM server library of the product, loaded from the build's folder, and the classes that it serves.
#pragma once

#include "com/OrlCom.h"

#include <ostream>
#include <string>
#include <vector>

namespace orl::test
{

// {8D6C0A51-3C5B-4E0F-9B1A-57C1F0A4E2D3}
inline constexpr CLSID ProviderClass = {0x8D6C0A51, 0x3C5B, 0x4E0F, {0x9B, 0x1A, 0x57, 0xC1, 0xF0, 0xA4, 0xE2, 0xD3}};
// Of no server.
inline constexpr CLSID UnknownClass = {0x5B0C71EE, 0x93A6, 0x4C1D, {0x8F, 0x02, 0x6A, 0x1D, 0x3E, 0x97, 0x54, 0xB8}};

// Holds the library as a process does between LoadLibrary and FreeLibrary.
class LoadedServer
{
public:
    explicit LoadedServer(const wchar_t* name);
    ~LoadedServer();
    LoadedServer(const LoadedServer&) = delete;
    LoadedServer& operator=(const LoadedServer&) = delete;

    bool IsLoaded() const noexcept { return m_module != nullptr; }
    HRESULT GetClassObject(REFCLSID clsid, REFIID iid, void** object) const;
    HRESULT CanUnloadNow() const;
    // The factory of a class; fails the test when there is none.
    CComPtr<IClassFactory> Factory(REFCLSID clsid) const;

    template <typename Interface>
    CComPtr<Interface> Make(REFCLSID clsid) const
    {
        CComPtr<Interface> made;
        if (const CComPtr<IClassFactory> factory = Factory(clsid))
            factory->CreateInstance(nullptr, IidOf<Interface>(), reinterpret_cast<void**>(&made.p));
        return made;
    }

private:
    HMODULE m_module;
};

// Where the build has put a library, without its prefix and suffix.
std::wstring BuiltLibrary(const wchar_t* name);

struct ServedInterface
{
    const char* name;
    const IID* iid;
};

// A class of a server and all the interfaces that its objects have.
struct ServedClass
{
    const char* name;
    const wchar_t* library;
    const CLSID* clsid;
    std::vector<ServedInterface> interfaces;
    const IID* foreign; // an interface that they have not got
};

const std::vector<ServedClass>& ServedClasses();
std::ostream& operator<<(std::ostream& stream, const ServedClass& served);

// The references that are out, the caller's own included.
ULONG References(IUnknown* object);

} // namespace orl::test

// ClassCache: one lookup for a class and a connection.
#include "framework/com/ClassCache.h"
#include "tests/framework/Fixture.h"

namespace orl::test
{
namespace
{

using ::testing::ElementsAre;

class ClassCacheTest : public ::testing::Test
{
protected:
    HRESULT Load(const std::wstring& name)
    {
        definition.Release();
        return cache.LoadClass(CComBSTR(name.c_str()), nullptr, definition);
    }

    CComPtr<FakeWbemServices> services = MakeObject<FakeWbemServices>();
    ClassCache cache{services};
    CComPtr<IWbemClassObject> definition;
};

TEST_F(ClassCacheTest, AsksTheServiceOnceForAClass)
{
    services->Add(MakeFakeClass(L"Zarn_Thing"));
    EXPECT_EQ(Load(L"Zarn_Thing"), WBEM_S_NO_ERROR);
    const CComPtr<IWbemClassObject> first = definition;
    EXPECT_EQ(Load(L"Zarn_Thing"), WBEM_S_NO_ERROR);
    EXPECT_EQ(Load(L"ZARN_thing"), WBEM_S_NO_ERROR);
    EXPECT_EQ(definition.p, first.p);
    EXPECT_THAT(services->Lookups(), ElementsAre(L"Zarn_Thing"));
}

TEST_F(ClassCacheTest, AsksAgainAfterAFailure)
{
    EXPECT_EQ(Hex{Load(L"Zarn_Thing")}, Hex{WBEM_E_NOT_FOUND});
    EXPECT_EQ(definition.p, nullptr);
    services->Add(MakeFakeClass(L"Zarn_Thing"));
    EXPECT_EQ(Load(L"Zarn_Thing"), WBEM_S_NO_ERROR);
    EXPECT_NE(definition.p, nullptr);
}

TEST_F(ClassCacheTest, HoldsABoundedNumberOfClasses)
{
    for (std::size_t i = 0; i <= ClassCache::Capacity; ++i)
        services->Add(MakeFakeClass(L"Zarn_" + std::to_wstring(i)));
    const ULONG before = ModuleReferences();
    for (std::size_t i = 0; i <= ClassCache::Capacity; ++i)
        EXPECT_EQ(Load(L"Zarn_" + std::to_wstring(i)), WBEM_S_NO_ERROR);
    definition.Release();
    EXPECT_LE(ModuleReferences() - before, ClassCache::Capacity);
    EXPECT_EQ(Load(L"Zarn_0"), WBEM_S_NO_ERROR);
}

TEST_F(ClassCacheTest, RefusesAClassWithoutAName)
{
    EXPECT_EQ(Hex{cache.LoadClass(CComBSTR(), nullptr, definition)}, Hex{WBEM_E_INVALID_PARAMETER});
}

TEST_F(ClassCacheTest, CallsASuccessWithoutADefinitionAFailure)
{
    class EmptyServices final : public RefusingServices<>
    {
    public:
        HRESULT STDMETHODCALLTYPE GetObject(const BSTR, LONG, IWbemContext*, IWbemClassObject**,
                                            IWbemCallResult**) override
        {
            return WBEM_S_NO_ERROR;
        }
    };
    const CComPtr<EmptyServices> empty = MakeObject<EmptyServices>();
    ClassCache other(empty);
    EXPECT_EQ(Hex{other.LoadClass(CComBSTR(L"A"), nullptr, definition)}, Hex{WBEM_E_FAILED});
}

} // namespace
} // namespace orl::test

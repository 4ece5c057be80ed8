// CWomClassManagerRoot: the defaults, and the order of the operations.
#include "tests/framework/Fixture.h"

#include <array>
#include <cstring>

namespace orl::test
{
namespace
{

// Writes only what every manager must have.
class BareManager final : public CWomClassManagerRoot
{
public:
    int enumerations = 0;
    IWbemObjectSink* seen = nullptr;

    const wchar_t* GetCimClassName() override { return L"Zarn_Bare"; }
    HRESULT GetObjectAsync(COrlWmiAutoParsedObjectPath&, CWomContext&, CComPtr<IWbemObjectSink>) override
    {
        return WBEM_S_NO_ERROR;
    }
    HRESULT CreateInstanceEnumAsync(CWomContext&, CComPtr<IWbemObjectSink> sink) override
    {
        ++enumerations;
        seen = sink;
        return WBEM_S_FALSE;
    }
};

TEST(CWomClassManagerRoot, IsNotCapableOfWhatAManagerLeavesOut)
{
    BareManager manager;
    CWomContext context(nullptr);
    CWomClassObject object(context);
    COrlWmiAutoParsedObjectPath path;
    CComBSTR text;
    const CComPtr<RecordingSink> sink = MakeObject<RecordingSink>();
    EXPECT_EQ(Hex{manager.CreateInstanceAsync(object, context, text, sink.p)}, Hex{WBEM_E_PROVIDER_NOT_CAPABLE});
    EXPECT_EQ(Hex{manager.UpdateInstanceAsync(object, context, 0, sink.p)}, Hex{WBEM_E_PROVIDER_NOT_CAPABLE});
    EXPECT_EQ(Hex{manager.DeleteInstanceAsync(path, context, sink.p)}, Hex{WBEM_E_PROVIDER_NOT_CAPABLE});
    EXPECT_EQ(Hex{manager.ExecMethodAsync(path, L"M", context, object, object, sink.p)},
              Hex{WBEM_E_PROVIDER_NOT_CAPABLE});
    EXPECT_EQ(sink->References(), 1u);
    EXPECT_EQ(sink->IndicateCalls(), 0u);
    EXPECT_TRUE(sink->Statuses().empty());
}

TEST(CWomClassManagerRoot, AnswersAQueryThroughTheManagersOwnEnumeration)
{
    BareManager manager;
    CWomContext context(nullptr);
    CWomWQLParser query;
    const CComPtr<RecordingSink> sink = MakeObject<RecordingSink>();
    EXPECT_EQ(Hex{manager.ExecQueryAsync(query, context, sink.p)}, Hex{WBEM_S_FALSE});
    EXPECT_EQ(manager.enumerations, 1);
    EXPECT_EQ(manager.seen, sink.p);
    EXPECT_EQ(sink->References(), 1u);
}

// The place of a virtual operation in the table, as the compilers of both platforms write it into a member pointer.
template <typename Operation>
std::ptrdiff_t SlotOf(Operation operation)
{
    std::ptrdiff_t words[2]{};
    static_assert(sizeof operation == sizeof words);
    std::memcpy(words, &operation, sizeof words);
    return (words[0] - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

TEST(CWomClassManagerRoot, KeepsItsOperationsInTheirOrderBehindTheDestructor)
{
    using Root = CWomClassManagerRoot;
    // The destructor takes two places: one destroys, one deletes too.
    const std::array<std::ptrdiff_t, 8> slots = {
        SlotOf(&Root::GetCimClassName),     SlotOf(&Root::GetObjectAsync),      SlotOf(&Root::CreateInstanceEnumAsync),
        SlotOf(&Root::CreateInstanceAsync), SlotOf(&Root::UpdateInstanceAsync), SlotOf(&Root::DeleteInstanceAsync),
        SlotOf(&Root::ExecMethodAsync),     SlotOf(&Root::ExecQueryAsync)};
    EXPECT_THAT(slots, ::testing::ElementsAre(2, 3, 4, 5, 6, 7, 8, 9));
    EXPECT_EQ(SlotOf(&ImplementorRegistry::AddClassManager), 0);
}

} // namespace
} // namespace orl::test

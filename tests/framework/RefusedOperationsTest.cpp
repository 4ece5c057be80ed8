// What a provider of instances does not do: each operation says so and leaves its places alone.
#include "tests/framework/Fixture.h"

namespace orl::test
{
namespace
{

class RefusedOperations : public ProviderTest
{
};

TEST_F(RefusedOperations, AnswerThatTheProviderIsNotCapable)
{
    const CComBSTR text(L"Zarn_Thing");
    const CComPtr<RecordingSink> told = MakeObject<RecordingSink>();
    IWbemServices& p = *provider;
    const HRESULT answers[] = {
        p.OpenNamespace(text, 0, nullptr, nullptr, nullptr),
        p.QueryObjectSink(0, nullptr),
        p.GetObject(text, 0, nullptr, nullptr, nullptr),
        p.PutClass(nullptr, 0, nullptr, nullptr),
        p.PutClassAsync(nullptr, 0, nullptr, told),
        p.DeleteClass(text, 0, nullptr, nullptr),
        p.DeleteClassAsync(text, 0, nullptr, told),
        p.CreateClassEnum(text, 0, nullptr, nullptr),
        p.CreateClassEnumAsync(text, 0, nullptr, told),
        p.PutInstance(nullptr, 0, nullptr, nullptr),
        p.DeleteInstance(text, 0, nullptr, nullptr),
        p.CreateInstanceEnum(text, 0, nullptr, nullptr),
        p.ExecQuery(text, text, 0, nullptr, nullptr),
        p.ExecNotificationQuery(text, text, 0, nullptr, nullptr),
        p.ExecNotificationQueryAsync(text, text, 0, nullptr, told),
        p.ExecMethod(text, text, 0, nullptr, nullptr, nullptr, nullptr),
    };
    for (std::size_t i = 0; i < std::size(answers); ++i)
        EXPECT_EQ(Hex{answers[i]}, Hex{WBEM_E_PROVIDER_NOT_CAPABLE}) << i;
    EXPECT_TRUE(told->Statuses().empty()) << "what is refused at once owes no status";
    EXPECT_EQ(told->Taken(), 0u);
}

} // namespace
} // namespace orl::test

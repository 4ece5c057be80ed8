// The common resource library: every number that the product refers to has its text, as a program that loads it sees.

#include <windows.h>

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace
{

class CommonRes : public testing::Test
{
protected:
    CommonRes() : m_module(LoadLibraryW(L"CommonRes")) {}
    ~CommonRes() override
    {
        if (m_module != nullptr)
            FreeLibrary(m_module);
    }
    CommonRes(const CommonRes&) = delete;
    CommonRes& operator=(const CommonRes&) = delete;

    void SetUp() override { ASSERT_NE(m_module, nullptr); }

    std::wstring Text(unsigned number) const
    {
        wchar_t text[1024];
        const int length = LoadStringW(m_module, number, text, 1024);
        return {text, static_cast<std::size_t>(length)};
    }

    HMODULE m_module;
};

// 1195 to 2040 are those of the value description maps.
TEST_F(CommonRes, EveryNumberHasItsText)
{
    const std::map<unsigned, std::wstring> texts{
        {1195, L"Online"},
        {1196, L"Offline"},
        {1197, L"Bypassed"},
        {1198, L"Diagnostics"},
        {1199, L"Link down"},
        {1200, L"Error"},
        {1201, L"Loopback"},
        {1202, L"Unknown type"},
        {1203, L"Other"},
        {1204, L"Not present"},
        {1205, L"VN_Port"},
        {1206, L"N_Port"},
        {1207, L"NL_Port"},
        {1208, L"FL_Port"},
        {1209, L"F_Port"},
        {1210, L"E_Port"},
        {1211, L"G_Port"},
        {1212, L"VF_Port"},
        {1213, L"VE_Port"},
        {1214, L"B_Port"},
        {1215, L"GL_Port"},
        {1216, L"Fabric"},
        {1217, L"VN2VN"},
        {1218, L"Point-to-point"},
        {1219, L"1 Gbit/s"},
        {1220, L"2 Gbit/s"},
        {1221, L"10 Gbit/s"},
        {1222, L"4 Gbit/s"},
        {1223, L"8 Gbit/s"},
        {1228, L"Down"},
        {1229, L"Disabled"},
        {1230, L"Discovering"},
        {1244, L"Blocked"},
        {1245, L"Not present"},
        {2020, L"Up"},
        {2021, L"Unknown"},
        {2023, L"Online"},
        {2040, L"Not reported"},
        {3001, L"The MTU of %s is set to %s bytes; a full FCoE frame needs 2158."},
        {3002, L"%s cannot be set to %s: the value must lie between %s and %s."},
        {3003, L"%s cannot be set to %s: the value must be %s plus a multiple of %s."},
        {3004, L"%s cannot be set to \"%s\": its values are %s."},
        {3005, L"There is no setting \"%s\" on %s."},
        {3006, L"%s of %s cannot be changed while its controller is enabled."},
        {3007, L"The kernel refused to set %s of %s: %s."},
        {3008, L"%s of %s takes effect when its controller is enabled again."},
        {3009, L"%s of %s is read-only."},
        {3010, L"%s cannot be set to \"%s\": expected a whole number, in decimal or behind 0x."},
        {3011, L"%s of %s was set to %s, but the kernel shows \"%s\"."},
    };
    for (const auto& [number, text] : texts)
        EXPECT_EQ(Text(number), text) << number;
}

TEST_F(CommonRes, OtherNumbersHaveNone)
{
    for (const unsigned number : {0u, 1u, 1194u, 1224u, 1231u, 2022u, 3000u, 3012u, 65535u})
        EXPECT_EQ(Text(number), L"") << number;
}

} // namespace

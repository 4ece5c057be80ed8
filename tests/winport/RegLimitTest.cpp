// The limits of a registry file, each at the limit and one past it.
#include "winport/src/RegFile.h"

#include <functional>
#include <gtest/gtest.h>

namespace
{

const std::string Header = "Windows Registry Editor Version 5.00\n";
const std::string Key = "[HKEY_LOCAL_MACHINE\\SOFTWARE\\T]\n";

struct Limit
{
    const char* name;
    size_t limit;
    std::function<std::string(size_t size)> text;
};

const Limit Limits[] = {
    {"File", winport::MaxFileSize,
     [](size_t size) { return Header + Key + ";" + std::string(size - Header.size() - Key.size() - 1, 'c'); }},
    {"KeyName", winport::MaxKeyName,
     [](size_t size) { return Header + "[HKEY_LOCAL_MACHINE\\" + std::string(size, 'k') + "]\n"; }},
    {"KeyDepth", winport::MaxKeyDepth,
     [](size_t size)
     {
         std::string path = "HKEY_LOCAL_MACHINE";
         for (; size != 0; --size)
             path += "\\k";
         return Header + "[" + path + "]\n";
     }},
    {"ValueName", winport::MaxValueName,
     [](size_t size) { return Header + Key + "\"" + std::string(size, 'v') + "\"=\"x\"\n"; }},
    {"ValueData", winport::MaxValueData,
     [](size_t size)
     {
         std::string bytes = "00";
         for (size_t i = 1; i < size; ++i)
             bytes += ",00";
         return Header + Key + "\"A\"=hex:" + bytes + "\n";
     }},
};

class RegLimit : public ::testing::TestWithParam<Limit>
{
};

TEST_P(RegLimit, IsTakenAndWhatIsBeyondIsNamedAndLeftOut)
{
    const winport::RegFile at = winport::ParseRegFile(GetParam().text(GetParam().limit));
    EXPECT_TRUE(at.damage.empty()) << at.damage.front().reason;
    EXPECT_FALSE(at.root.keys.empty());
    EXPECT_EQ(winport::ParseRegFile(GetParam().text(GetParam().limit + 1)).damage.size(), 1u);
}

INSTANTIATE_TEST_SUITE_P(All, RegLimit, ::testing::ValuesIn(Limits),
                         [](const auto& instance) { return instance.param.name; });

} // namespace

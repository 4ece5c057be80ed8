// Large inventories: what is looked for twice is not looked for in everything before it.
#include "Inventories.h"

#include "agentlibs/inventory/JsonText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <string>

namespace orl::test
{
namespace
{

std::string InventoryOf(std::size_t hbas)
{
    std::string text = "{\"hbas\": [\n";
    for (std::size_t i = 0; i < hbas; ++i)
        text += (i == 0 ? "" : ",\n") + (R"({"deviceId": "eth)" + std::to_string(i)) +
                R"(", "settings": [{"kind": "integer", "name": "MTU", "min": 1, "max": 9, "default": 2}]})";
    return text + "\n]}";
}

template <typename Work>
double SecondsFor(const Work& work)
{
    const std::clock_t start = std::clock();
    work();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

TEST(InventorySize, IsReadInTimeInProportionToIt)
{
    // To understand the text takes longer than to parse it, but by a factor that does not grow with it: counting the
    // lines before each adapter took 160 times as long at this size.
    constexpr std::size_t hbas = 8000;
    const std::string text = InventoryOf(hbas);
    const std::wstring name = L"san.json";
    const double parsing = SecondsFor([&] { JsonText(name, text).Parse(); });
    const double reading = SecondsFor([&] { EXPECT_EQ(RecordsOf<ORL_FCOE_HBA>(*ReadInventory(text)).size(), hbas); });
    EXPECT_LT(reading, 40 * std::max(parsing, 0.005));
}

} // namespace
} // namespace orl::test

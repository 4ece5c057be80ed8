// Large inventories: what is looked for twice is not looked for in everything before it.
#include "Inventories.h"

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

double SecondsFor(std::size_t hbas)
{
    const std::string text = InventoryOf(hbas);
    const std::clock_t start = std::clock();
    EXPECT_EQ(RecordsOf<ORL_FCOE_HBA>(*ReadInventory(text)).size(), hbas);
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

TEST(InventorySize, IsReadInTimeInProportionToIt)
{
    // Sixteen times as many may take sixteen times as long, and some more for a machine that is busy; counting the
    // lines before each adapter would take 256 times as long.
    const auto best = [](std::size_t hbas) { return std::min({SecondsFor(hbas), SecondsFor(hbas), SecondsFor(hbas)}); };
    EXPECT_LT(best(16000), 60 * std::max(best(1000), 0.001));
}

} // namespace
} // namespace orl::test

// The value description maps, whole.

#include "agent/ValueStringIdMaps.h"

#include <gtest/gtest.h>

namespace
{

using Texts = std::map<ULONG, ULONG>;

TEST(ValueStringIdMaps, HoldTheirValuesAndNoOthers)
{
    EXPECT_EQ(ValueStringIdMap1,
              (Texts{{0, 2021}, {1, 1195}, {2, 1196}, {3, 1197}, {4, 1198}, {5, 1199}, {6, 1200}, {7, 1201}}));
    EXPECT_EQ(ValueStringIdMap2, (Texts{{0, 2040}, {1, 2023}, {2, 1244}, {3, 1245}}));
    EXPECT_EQ(ValueStringIdMap3, (Texts{{0, 2021},
                                        {1, 1202},
                                        {2, 1203},
                                        {3, 1204},
                                        {4, 1205},
                                        {5, 1206},
                                        {6, 1207},
                                        {7, 1208},
                                        {8, 1209},
                                        {9, 1210},
                                        {10, 1211},
                                        {11, 1212},
                                        {12, 1213},
                                        {13, 1214},
                                        {14, 1215}}));
    EXPECT_EQ(ValueStringIdMap4, (Texts{{0, 2021}, {1, 1216}, {2, 1217}, {3, 1218}}));
    EXPECT_EQ(ValueStringIdMap5, (Texts{{0, 2021}, {1, 1219}, {2, 1220}, {4, 1221}, {8, 1222}, {16, 1223}}));
    EXPECT_EQ(ValueStringIdMap6, (Texts{{0, 2040}}));
    EXPECT_EQ(ValueStringIdMap7, (Texts{{0, 2040}, {1, 2020}, {2, 1228}, {3, 1229}, {4, 1230}}));
}

TEST(ValueStringIdMaps, SeveralBitsAtOnceHaveNoText)
{
    EXPECT_FALSE(ValueStringIdMap5.contains(3));
    EXPECT_FALSE(ValueStringIdMap5.contains(31));
}

} // namespace

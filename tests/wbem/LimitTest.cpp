// The limits of the three languages, each at the limit and one past it.
#include "Shown.h"
#include "wbem/Like.h"
#include "wbem/Mof.h"
#include "wbem/MofReader.h"
#include "wbem/Number.h"
#include "wbem/ObjectPath.h"
#include "wbem/Text.h"
#include "wbem/Wql.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>

namespace wbem
{
namespace
{

namespace fs = std::filesystem;

std::wstring Repeat(std::wstring_view text, std::size_t count)
{
    std::wstring repeated;
    for (; count != 0; --count)
        repeated += text;
    return repeated;
}

// `text(size)` is `size` long or deep; `error` is empty where it is taken.
struct Limit
{
    const char* name;
    std::size_t limit;
    std::function<std::string(std::size_t size)> error;
};

template <typename Result>
std::string ErrorOf(const Result& result)
{
    return result ? std::string() : Utf8(result.Error().Text());
}

const Limit kLimits[] = {
    {"PathLength", kMaxPathLength,
     [](std::size_t size) { return ErrorOf(ObjectPath::Parse(L"C.k=\"" + std::wstring(size - 6, L'x') + L"\"")); }},
    {"PathKeys", kMaxPathKeys,
     [](std::size_t size)
     {
         std::wstring path = L"C.";
         for (std::size_t i = 0; i < size; ++i)
             path += (i == 0 ? L"k" : L",k") + std::to_wstring(i) + L"=1";
         return ErrorOf(ObjectPath::Parse(path));
     }},
    {"QueryLength", kMaxQueryLength,
     [](std::size_t size)
     {
         const std::wstring start = L"SELECT * FROM C WHERE a = '";
         return ErrorOf(WqlQuery::Parse(start + std::wstring(size - start.size() - 1, L'x') + L"'"));
     }},
    {"QueryNesting", kMaxQueryNesting,
     [](std::size_t size) {
         return ErrorOf(
             WqlQuery::Parse(L"SELECT * FROM C WHERE " + Repeat(L"(", size) + L"a = 1" + Repeat(L")", size)));
     }},
    {"LikePattern", kMaxLikePattern,
     [](std::size_t size)
     { return ErrorOf(WqlQuery::Parse(L"SELECT * FROM C WHERE a LIKE '" + std::wstring(size, L'%') + L"'")); }},
    {"Number", kMaxNumberLength,
     [](std::size_t size)
     {
         NumberFault fault{};
         return std::string(ParseReal(L"1." + std::wstring(size - 2, L'0'), fault) ? "" : "refused");
     }},
    {"MofNesting", kMaxMofNesting,
     [](std::size_t size)
     {
         return ErrorOf(ReadMofText(L"instance of C { a = " + Repeat(L"instance of C { a = ", size) + L"1" +
                                        Repeat(L"; }", size) + L"; };",
                                    L"t.mof"));
     }},
};

class LanguageLimit : public testing::TestWithParam<Limit>
{
};

TEST_P(LanguageLimit, IsTakenAndWhatIsBeyondIsRefused)
{
    const Limit& limit = GetParam();
    EXPECT_EQ(limit.error(limit.limit), "");
    EXPECT_NE(limit.error(limit.limit + 1), "");
}

INSTANTIATE_TEST_SUITE_P(All, LanguageLimit, testing::ValuesIn(kLimits),
                         [](const auto& instance) { return instance.param.name; });

class MofFileLimit : public testing::Test
{
protected:
    ~MofFileLimit() override { fs::remove_all(m_folder); }

    std::string ErrorOfFile(const std::string& name) const { return ErrorOf(ReadMofFile(m_folder / name)); }
    void Write(const std::string& name, const std::string& text) const
    {
        fs::create_directories(m_folder);
        std::ofstream(m_folder / name, std::ios::binary) << text;
    }

    // The tests of this group run at the same time, each in a process of its own.
    const fs::path m_folder = fs::path(ORL_TEST_TMP) /
                              (std::string("limit-") + testing::UnitTest::GetInstance()->current_test_info()->name());
};

TEST_F(MofFileLimit, OfTheFileIsTakenAndWhatIsBeyondIsRefused)
{
    const std::string comment = "// " + std::string(kMaxMofFileSize - 4, 'c') + "\n";
    Write("at.mof", comment);
    EXPECT_EQ(ErrorOfFile("at.mof"), "");
    Write("past.mof", comment + "\n");
    EXPECT_NE(ErrorOfFile("past.mof").find("the file is larger than 67108864 bytes"), std::string::npos);
}

TEST_F(MofFileLimit, OfIncludesIsTakenAndWhatIsBeyondIsRefused)
{
    for (std::size_t i = 0; i <= kMaxMofIncludeDepth; ++i)
        Write(std::to_string(i), "#pragma include(\"" + std::to_string(i + 1) + "\")\n");
    Write(std::to_string(kMaxMofIncludeDepth + 1), "class C {};");
    EXPECT_EQ(ErrorOfFile("1"), "");
    EXPECT_NE(ErrorOfFile("0").find("is included deeper than 32 levels"), std::string::npos);
}

TEST_F(MofFileLimit, OfTheNumberOfFilesIsTakenAndWhatIsBeyondIsRefused)
{
    Write("one.mof", "");
    std::string includes;
    for (std::size_t i = 1; i < kMaxMofFiles; ++i)
        includes += "#pragma include(\"one.mof\")\n";
    Write("at.mof", includes);
    EXPECT_EQ(ErrorOfFile("at.mof"), "");
    Write("past.mof", includes + "#pragma include(\"one.mof\")\n");
    EXPECT_NE(ErrorOfFile("past.mof").find("more than 5000 files"), std::string::npos);
}

} // namespace
} // namespace wbem

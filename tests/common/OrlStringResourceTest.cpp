// COrlString: texts of resource libraries.

#include "Common/Src/OrlString.h"
#include "tests/common/FailingNew.h"
#include "tests/common/TestLibraries.h"
#include "tests/common/TraceTest.h"

#include "winport/portable/Utf8.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace orl::test
{

namespace
{

// Texts of OrlTestTexts.
constexpr unsigned ShortText = 5; // "Port %s on %s"
constexpr unsigned WideText = 6;  // beyond ASCII
constexpr unsigned MissingText = 4;
// The text of each of these numbers has that many characters.
constexpr unsigned LengthNumbers[] = {1022, 1023, 1024, 2046, 2047, 2048, 5000};

class OrlStringResource : public TraceTest
{
protected:
    OrlStringResource() : m_texts(LoadLibraryW(PathText(BuiltLibrary("OrlTestTexts")).c_str()))
    {
        m_registry.SetText(ProductKey, L"ResourcePath", m_folder.Text());
    }
    ~OrlStringResource() override { FreeLibrary(m_texts); }

    void SetUp() override { ASSERT_NE(nullptr, m_texts); }

    // Makes the texts the resource library of a language.
    void Install(const std::string& language) const
    {
        CopyLibrary("OrlTestTexts", m_folder.Path(), "CommonRes" + language);
    }

    HMODULE m_texts;
};

} // namespace

TEST_F(OrlStringResource, LoadsATextOfAModule)
{
    COrlString text(L"before");
    EXPECT_EQ(13, text.LoadStringW(m_texts, ShortText));
    EXPECT_EQ(L"Port %s on %s", text);
    EXPECT_EQ(3, text.LoadStringW(m_texts, WideText));
    EXPECT_EQ(L"\u00E4\u20AC\u65E5", text);
}

TEST_F(OrlStringResource, LoadsLongTextsWhole)
{
    for (const unsigned length : LengthNumbers)
    {
        COrlString text;
        EXPECT_EQ(static_cast<int>(length), text.LoadStringW(m_texts, length));
        EXPECT_EQ(std::wstring(length, L'x'), text) << length;
    }
}

TEST_F(OrlStringResource, IsEmptiedByAMissingText)
{
    COrlString text(L"before");
    EXPECT_EQ(0, text.LoadStringW(m_texts, MissingText));
    EXPECT_EQ(L"", text);
    text = L"before";
    EXPECT_EQ(0, text.LoadStringW(m_texts, 0));
    EXPECT_EQ(L"", text);
}

TEST_F(OrlStringResource, IsLeftAloneWithoutAModule)
{
    COrlString text(L"before");
    EXPECT_EQ(0, text.LoadStringW(nullptr, ShortText));
    EXPECT_EQ(L"before", text);
}

TEST_F(OrlStringResource, NeverThrowsWithoutMemory)
{
    for (unsigned nth = 1; nth < 8; ++nth)
    {
        COrlString text(L"before");
        int length = 99;
        {
            const AllocationFailure failure(nth);
            EXPECT_NO_THROW(length = text.LoadStringW(m_texts, 2048)) << nth;
        }
        EXPECT_TRUE(text == L"before" || text == std::wstring(2048, L'x')) << nth;
        // What it had: nothing, the first or the second cut, or the whole.
        EXPECT_TRUE(length == 0 || length == 1023 || length == 2047 || length == 2048) << nth << ": " << length;
    }
}

TEST_F(OrlStringResource, LoadsTheTextsOfTheInstalledLanguage)
{
    m_registry.SetText(PackageKey, L"LocalLanguage", L"de-DE");
    Install("de-DE");
    COrlString text(L"before");
    EXPECT_EQ(13, text.LoadCommonResString(ShortText));
    EXPECT_EQ(L"Port %s on %s", text);
}

TEST_F(OrlStringResource, LoadsTheTextsWithoutALanguageWhenNoneIsInstalled)
{
    Install("");
    COrlString text;
    EXPECT_EQ(13, text.LoadCommonResString(ShortText));
    m_registry.CreateKey(PackageKey);
    EXPECT_EQ(3, text.LoadCommonResString(WideText));
    m_registry.SetText(PackageKey, L"LocalLanguage", L"");
    EXPECT_EQ(13, text.LoadCommonResString(ShortText));
}

TEST_F(OrlStringResource, DoesNotTakeAnotherLanguageThanTheInstalledOne)
{
    m_registry.SetText(PackageKey, L"LocalLanguage", L"FRA");
    Install("");
    Install("DEU");
    COrlString text(L"before");
    EXPECT_EQ(-1, text.LoadCommonResString(ShortText));
    EXPECT_EQ(L"before", text);
}

TEST_F(OrlStringResource, SaysThatTheLibraryOrTheTextIsMissing)
{
    m_registry.SetText(PackageKey, L"LocalLanguage", L"DEU");
    COrlString text(L"before");
    EXPECT_EQ(-1, text.LoadCommonResString(ShortText));
    EXPECT_EQ(L"before", text);
    Install("DEU");
    EXPECT_EQ(0, text.LoadCommonResString(MissingText));
    EXPECT_EQ(L"", text);
}

TEST_F(OrlStringResource, ReleasesTheLibraryAfterEachText)
{
    m_registry.SetText(PackageKey, L"LocalLanguage", L"DEU");
    Install("DEU");
    COrlString text;
    EXPECT_EQ(13, text.LoadCommonResString(ShortText));
    EXPECT_EQ(nullptr, GetModuleHandleW(L"CommonResDEU"));
    EXPECT_EQ(0, text.LoadCommonResString(MissingText));
    EXPECT_EQ(nullptr, GetModuleHandleW(L"CommonResDEU"));
}

TEST_F(OrlStringResource, WarningsDropTheHighByteOfTheirNumber)
{
    Install("");
    for (const unsigned flags : {0u, 0x01000000u, 0xFF000000u})
    {
        COrlString text;
        EXPECT_EQ(13, text.LoadWarningMessage(flags | ShortText));
        EXPECT_EQ(L"Port %s on %s", text);
    }
    // The rest of the number is the system's: it knows 16 bits.
    COrlString text(L"before");
    EXPECT_EQ(13, text.LoadWarningMessage(0x02010000 | ShortText));
    EXPECT_EQ(13, text.LoadCommonResString(0x00010000 | ShortText));
    EXPECT_EQ(0, text.LoadWarningMessage(0x01000000 | MissingText));
    EXPECT_EQ(L"", text);
}

TEST_F(OrlStringResource, WarningsTraceThemselves)
{
    Install("");
    StartLog();
    COrlString text;
    text.LoadWarningMessage(ShortText);
    EXPECT_THAT(TiersAndMessages(),
                ElementsAre("1 ENTRY:  COrlString::LoadWarningMessage", "2 ENTRY:  CHelper::QvLoadLibrary",
                            "3 ENTRY:  CHelper::StripLibraryName", "3 EXIT:  CHelper::StripLibraryName, bReturn=true",
                            "3 ENTRY:  CHelper::GetPathFromRegistry",
                            "3 EXIT:  CHelper::GetPathFromRegistry, bReturn=true", "2 EXIT:  CHelper::QvLoadLibrary",
                            "1 EXIT:  COrlString::LoadWarningMessage"));
}

TEST_F(OrlStringResource, WarningsTakeTheirArgumentsAndAnswerTheLengthLoaded)
{
    Install("");
    COrlString text;
    EXPECT_EQ(13, text.LoadWarningMessage(0x01000000 | ShortText, {L"1", L"2", L"3"}));
    EXPECT_EQ(L"Port 1 on 2\n3", text);
    EXPECT_EQ(13, text.LoadWarningMessage(ShortText, {}));
    EXPECT_EQ(L"Port %s on %s", text);
}

TEST_F(OrlStringResource, WarningsThatCannotBeLoadedTakeTheirArgumentsStill)
{
    COrlString text(L"before");
    EXPECT_EQ(-1, text.LoadWarningMessage(ShortText, {L"1"}));
    EXPECT_EQ(L"before\n1", text);
}

} // namespace orl::test

// Locks, clocks, identifiers, the environment and the debugger's output.
#include "tests/support/DebugOutput.h"
#include "tests/support/TestFolder.h"

#include <windows.h>

#include <atomic>
#include <cwchar>
#include <gtest/gtest.h>
#include <set>
#include <thread>

namespace
{

using orl::test::EnvironmentSetting;

TEST(CriticalSection, ItsHolderMayEnterAgain)
{
    CRITICAL_SECTION section;
    InitializeCriticalSection(&section);
    EnterCriticalSection(&section);
    EXPECT_TRUE(TryEnterCriticalSection(&section));
    std::thread([&] { EXPECT_FALSE(TryEnterCriticalSection(&section)); }).join();
    LeaveCriticalSection(&section);
    std::thread([&] { EXPECT_FALSE(TryEnterCriticalSection(&section)); }).join();
    LeaveCriticalSection(&section);
    std::thread(
        [&]
        {
            EXPECT_TRUE(TryEnterCriticalSection(&section));
            LeaveCriticalSection(&section);
        })
        .join();
    DeleteCriticalSection(&section);
}

TEST(CriticalSection, ItKeepsThreadsApart)
{
    CRITICAL_SECTION section;
    InitializeCriticalSection(&section);
    int count = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back(
            [&]
            {
                for (int i = 0; i < 1000; ++i)
                {
                    EnterCriticalSection(&section);
                    ++count;
                    LeaveCriticalSection(&section);
                }
            });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(count, 4000);
    DeleteCriticalSection(&section);
}

TEST(Clock, TheLocalTimeIsATime)
{
    SYSTEMTIME now;
    GetLocalTime(&now);
    EXPECT_GE(now.wYear, 2020);
    EXPECT_TRUE(now.wMonth >= 1 && now.wMonth <= 12);
    EXPECT_TRUE(now.wDay >= 1 && now.wDay <= 31);
    EXPECT_LE(now.wDayOfWeek, 6);
    EXPECT_LE(now.wHour, 23);
    EXPECT_LE(now.wMinute, 59);
    EXPECT_LE(now.wSecond, 60);
    EXPECT_LE(now.wMilliseconds, 999);
}

TEST(Clock, UniversalAndLocalTimeDifferByQuartersOfAnHour)
{
    SYSTEMTIME local;
    SYSTEMTIME universal;
    GetSystemTime(&universal);
    GetLocalTime(&local);
    const int minutes = (local.wHour * 60 + local.wMinute) - (universal.wHour * 60 + universal.wMinute);
    // A minute may begin between the two questions.
    EXPECT_TRUE((minutes + 1440) % 15 <= 1) << minutes;
}

TEST(Clock, TheCounterGoesOnAtItsFrequency)
{
    LARGE_INTEGER frequency;
    LARGE_INTEGER before;
    LARGE_INTEGER after;
    EXPECT_TRUE(QueryPerformanceFrequency(&frequency));
    EXPECT_GE(frequency.QuadPart, 1'000'000);
    const ULONGLONG ticks = GetTickCount64();
    QueryPerformanceCounter(&before);
    Sleep(30);
    QueryPerformanceCounter(&after);
    const LONGLONG milliseconds = (after.QuadPart - before.QuadPart) * 1000 / frequency.QuadPart;
    EXPECT_GE(milliseconds, 28);
    EXPECT_LE(milliseconds, 5000);
    EXPECT_GE(GetTickCount64() - ticks, 15u);
}

TEST(Identifiers, EachThreadHasItsOwn)
{
    std::set<DWORD> ids{GetCurrentThreadId()};
    DWORD process = 0;
    std::thread(
        [&]
        {
            ids.insert(GetCurrentThreadId());
            process = GetCurrentProcessId();
        })
        .join();
    EXPECT_EQ(ids.size(), 2u);
    EXPECT_EQ(process, GetCurrentProcessId());
    EXPECT_NE(process, 0u);
}

TEST(LastError, EachThreadHasItsOwn)
{
    // No call of the system may come between setting and asking: the threads wait for each other without one.
    std::atomic<bool> first{false};
    std::atomic<bool> second{false};
    DWORD seen = 0;
    std::thread one(
        [&]
        {
            SetLastError(ERROR_MORE_DATA);
            first = true;
            while (!second)
            {
            }
            seen = GetLastError();
        });
    std::thread two(
        [&]
        {
            while (!first)
            {
            }
            SetLastError(ERROR_ACCESS_DENIED);
            second = true;
        });
    one.join();
    two.join();
    EXPECT_EQ(seen, static_cast<DWORD>(ERROR_MORE_DATA));
}

TEST(Environment, AVariableIsFoundWithoutCase)
{
    const EnvironmentSetting setting(L"OrlTestVariable", L"C:\\some\\\u00e4");
    wchar_t value[64];
    EXPECT_EQ(GetEnvironmentVariableW(L"ORLTESTVARIABLE", value, 64), 9u);
    EXPECT_STREQ(value, L"C:\\some\\\u00e4");
}

TEST(Environment, SettingChangesTheVariableThatIsThereWithoutCase)
{
    const EnvironmentSetting setting(L"OrlTestVariable", L"one");
    EXPECT_TRUE(SetEnvironmentVariableW(L"orltestvariable", L"two"));
    wchar_t value[64];
    EXPECT_EQ(GetEnvironmentVariableW(L"OrlTestVariable", value, 64), 3u);
    EXPECT_STREQ(value, L"two");
}

TEST(Environment, TooLittleRoomGivesTheRoomThatIsNeeded)
{
    const EnvironmentSetting setting(L"OrlTestVariable", L"abc");
    wchar_t value[4] = L"?";
    EXPECT_EQ(GetEnvironmentVariableW(L"OrlTestVariable", value, 3), 4u);
    EXPECT_EQ(GetEnvironmentVariableW(L"OrlTestVariable", nullptr, 0), 4u);
    EXPECT_EQ(GetEnvironmentVariableW(L"OrlTestVariable", value, 4), 3u);
    EXPECT_STREQ(value, L"abc");
}

TEST(Environment, AVariableThatIsNotThereIsAnError)
{
    wchar_t value[4];
    SetLastError(0);
    EXPECT_EQ(GetEnvironmentVariableW(L"OrlNoSuchVariable", value, 4), 0u);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ENVVAR_NOT_FOUND));
}

TEST(Environment, ARemovedVariableIsGone)
{
    EXPECT_TRUE(SetEnvironmentVariableW(L"OrlTestVariable", L"x"));
    EXPECT_TRUE(SetEnvironmentVariableW(L"OrlTestVariable", nullptr));
    wchar_t value[4];
    EXPECT_EQ(GetEnvironmentVariableW(L"OrlTestVariable", value, 4), 0u);
}

TEST(Environment, ThereIsAlwaysATemporaryFolder)
{
    wchar_t value[260];
    EXPECT_GT(GetEnvironmentVariableW(L"Temp", value, 260), 0u);
    const EnvironmentSetting setting(L"Temp", L"/elsewhere");
    EXPECT_EQ(GetEnvironmentVariableW(L"Temp", value, 260), 10u);
    EXPECT_STREQ(value, L"/elsewhere");
}

TEST(Names, TheComputerHasOne)
{
    wchar_t name[256];
    DWORD size = 256;
    ASSERT_TRUE(GetComputerNameW(name, &size));
    EXPECT_EQ(size, std::wcslen(name));
    EXPECT_GT(size, 0u);
    DWORD small = 1;
    EXPECT_FALSE(GetComputerNameW(name, &small));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_BUFFER_OVERFLOW));
    EXPECT_EQ(small, size + 1);
}

TEST(Names, TheHostHasOneWithoutItsDomain)
{
    wchar_t name[256];
    DWORD size = 256;
    ASSERT_TRUE(GetComputerNameExW(ComputerNameDnsHostname, name, &size));
    EXPECT_EQ(size, std::wcslen(name));
    EXPECT_EQ(std::wstring(name).find(L'.'), std::wstring::npos);
    DWORD small = 1;
    EXPECT_FALSE(GetComputerNameExW(ComputerNameDnsHostname, name, &small));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_MORE_DATA));
    EXPECT_EQ(small, size + 1);
}

TEST(Names, TheSystemFolderIsThere)
{
    wchar_t path[260];
    const UINT length = GetSystemDirectoryW(path, 260);
    ASSERT_GT(length, 0u);
    EXPECT_EQ(length, std::wcslen(path));
    EXPECT_TRUE(std::filesystem::is_directory(path));
    EXPECT_EQ(GetSystemDirectoryW(path, 2), length + 1);
}

TEST(DebuggerOutput, TextsReachTheDebugger)
{
    const orl::test::DebugOutput output;
    OutputDebugStringW(L"first\n");
    OutputDebugStringW(L"second");
    EXPECT_EQ(output.Texts(), (std::vector<std::string>{"first\n", "second"}));
}

TEST(DebuggerOutput, WithoutADebuggerTextsGoNowhere)
{
    OutputDebugStringW(L"unseen");
    const orl::test::DebugOutput output;
    EXPECT_TRUE(output.Texts().empty());
}

} // namespace

// What one process was told that asked for every class again and again.
#pragma once

#include <windows.h>

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

namespace orl::test
{

class Report
{
public:
    // How many instances of a class a round found, at least and at most.
    struct Range
    {
        std::size_t least = SIZE_MAX;
        std::size_t most = 0;
    };

    void RoundBegins();
    void RoundEnds() { ++m_rounds; }
    // A call that failed, and what it was about.
    void Failed(const std::string& call, std::string_view about, HRESULT status);
    // A record that is not whole, and why.
    void Torn(std::string_view record, const std::string& why);
    // The enumeration of a class begins, and has come to its end.
    void Enumerating(const std::string& className);
    void Counted(const std::string& className, std::size_t instances);
    // An instance of this round as the service writes it.
    void Saw(std::string_view text);
    // The files that the process has open: first when it has connected, last when it is about to let go.
    void Open(std::size_t files);

    // The round that has ended, for those who wait for it.
    void PrintRound() const;
    // Lines "NAME: VALUES", failures and torn records each with how often it came, and after the line "view" the
    // instances of the last round below the class of each enumeration.
    void Print() const;
    bool IsClean() const { return m_failures.empty() && m_torn.empty(); }

private:
    std::size_t m_rounds = 0;
    std::map<std::string, std::size_t> m_failures; // how often each came
    std::map<std::string, std::size_t> m_torn;
    std::map<std::string, Range> m_classes;
    std::size_t m_filesFirst = 0;
    std::size_t m_filesMost = 0;
    std::size_t m_filesLast = 0;
    std::size_t m_seen = 0; // in this round
    std::string m_view;
};

} // namespace orl::test

// A program for tests of running programs: what it does stands in the environment variable ORL_TEST_FILTER.
//
//   sort    writes the lines of its standard input in order, with a line that names its arguments before them
//   fail    ends with exit code 3
//   hang    does not end

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

int main(int argc, char** argv)
{
    const char* const wanted = std::getenv("ORL_TEST_FILTER"); // NOLINT(concurrency-mt-unsafe): no other thread
    const std::string what = wanted != nullptr ? wanted : "";
    if (what == "fail")
        return 3;
    if (what == "hang")
        std::this_thread::sleep_for(std::chrono::minutes(10));
    if (what != "sort")
        return 4;
    std::vector<std::string> lines;
    for (std::string line; std::getline(std::cin, line);)
        lines.push_back(line);
    std::sort(lines.begin(), lines.end());
    std::cout << "arguments:";
    for (int i = 1; i < argc; ++i)
        std::cout << " [" << argv[i] << "]";
    std::cout << "\n";
    for (const auto& line : lines)
        std::cout << line << "\n";
    return 0;
}

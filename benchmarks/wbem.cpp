// The languages: what a path, a query and a pattern cost, and how reading a schema grows with its size.
#include "wbem/Like.h"
#include "wbem/MofReader.h"
#include "wbem/ObjectPath.h"
#include "wbem/Text.h"
#include "wbem/Wql.h"

#include <benchmark/benchmark.h>

#include <string>

namespace
{

// A class with a dozen described properties, a method and half of its bytes in descriptions: about 3 KiB.
std::string ClassText(std::size_t number)
{
    std::string text =
        "[dynamic, provider(\"Orl2InstUtility\"), Description(\"A thing of a kind.\")]\nclass Zarn_Thing" +
        std::to_string(number) + "\n{\n";
    for (int i = 0; i < 12; ++i)
    {
        text += "    [" + std::string(i == 0 ? "key, " : "") +
                "read,\n     Description(\"What the property says of the thing, in a sentence of the usual length \"\n"
                "                 \"and a second line.\")]\n    " +
                (i % 3 == 0 ? "uint32" : "string") + " Property" + std::to_string(i) + ";\n\n";
    }
    return text + "    [Implemented, Description(\"Does it.\")]\n    uint32 Do([in] string What, [out] Zarn_Thing0 ref "
                  "Made, [out] Zarn_Message Messages[]);\n};\n\n";
}

void ReadSchema(benchmark::State& state)
{
    const auto size = static_cast<std::size_t>(state.range(0)) * 1024;
    std::string text;
    for (std::size_t i = 0; text.size() < size; ++i)
        text += ClassText(i);
    for (auto _ : state)
    {
        const auto result = wbem::ReadMofBytes(text);
        if (!result)
            state.SkipWithError("the text does not parse");
        benchmark::DoNotOptimize(result);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(ReadSchema)->RangeMultiplier(2)->Range(16, 1024)->Unit(benchmark::kMicrosecond);

void ParsePath(benchmark::State& state)
{
    const std::wstring text =
        LR"(Zarn_FCoEPort.DeviceID="PCI\VEN_1AF4&DEV_1041",WorldWidePortName="20:00:00:00:00:00:00:01")";
    for (auto _ : state)
        benchmark::DoNotOptimize(wbem::ObjectPath::Parse(text));
}
BENCHMARK(ParsePath);

void ParseQuery(benchmark::State& state)
{
    const std::wstring text =
        LR"(SELECT DeviceID, Name FROM Zarn_FCOEHBA WHERE DeviceID = "eth0" AND (Name LIKE "e%" OR Speed > 10))";
    for (auto _ : state)
        benchmark::DoNotOptimize(wbem::WqlQuery::Parse(text));
}
BENCHMARK(ParseQuery);

class Source : public wbem::WqlSource
{
public:
    wbem::CimValue Value(const wbem::WqlProperty&) const override { return m_value; }
    wbem::Truth IsA(const wbem::WqlProperty&, std::wstring_view) const override { return wbem::Truth::Unknown; }

private:
    wbem::CimValue m_value = wbem::CimValue::String(L"eth0.1002");
};

void EvaluateQuery(benchmark::State& state)
{
    const auto query =
        wbem::WqlQuery::Parse(LR"(SELECT * FROM C WHERE a = "ETH0.1002" AND NOT b LIKE "fc%" AND c > 10)");
    const Source source;
    for (auto _ : state)
        benchmark::DoNotOptimize(query->Admits(source));
}
BENCHMARK(EvaluateQuery);

void MatchEvilPattern(benchmark::State& state)
{
    std::wstring pattern;
    for (int i = 0; i < 100; ++i)
        pattern += L"a%";
    const wbem::LikePattern like(pattern + L"b");
    const std::wstring text(static_cast<std::size_t>(state.range(0)), L'a');
    for (auto _ : state)
        benchmark::DoNotOptimize(like.Matches(text));
}
BENCHMARK(MatchEvilPattern)->RangeMultiplier(2)->Range(1024, 65536)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();

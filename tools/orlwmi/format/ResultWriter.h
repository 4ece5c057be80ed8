// ResultWriter: records on their way to the output, one class a format.
#pragma once

#include "tools/orlwmi/Output.h"
#include "tools/orlwmi/Record.h"

#include <memory>
#include <string>
#include <vector>

namespace orl::client
{

enum class Format
{
    Table,
    List,
    Json,
    Csv,
    Mof
};

// Whether a command yields any number of records, or just one. Only JSON shows the difference: an array, or an object.
enum class Shape
{
    Many,
    One
};

class ResultWriter
{
public:
    ResultWriter() = default;
    ResultWriter(const ResultWriter&) = delete;
    ResultWriter& operator=(const ResultWriter&) = delete;
    virtual ~ResultWriter() = default;

    virtual void Write(const Record& record) = 0;

    // Called once, after the last record, also when the result was cut short: what was written becomes a whole
    // document.
    virtual void End() {}
};

// Columns align by their width on a terminal, numbers to the right. Widths are those of the first SampleRows records;
// later records stream, and a longer value pushes its line to the right. Records with other properties than those
// before begin a table of their own.
[[nodiscard]] std::unique_ptr<ResultWriter> MakeTableWriter(Output& output);

// One property a line, an empty line between records.
[[nodiscard]] std::unique_ptr<ResultWriter> MakeListWriter(Output& output);

// Typed: numbers of every size are numbers, nulls null, arrays and embedded objects themselves.
[[nodiscard]] std::unique_ptr<ResultWriter> MakeJsonWriter(Output& output, Shape shape);

// RFC 4180 with a header line. A null is an empty field, an empty text a quoted one; arrays and objects are their JSON.
// Records with other properties than those before begin with an empty line and a header of their own.
[[nodiscard]] std::unique_ptr<ResultWriter> MakeCsvWriter(Output& output);

// The objects' own texts.
[[nodiscard]] std::unique_ptr<ResultWriter> MakeMofWriter(Output& output);

[[nodiscard]] std::unique_ptr<ResultWriter> MakeResultWriter(Format format, Shape shape, Output& output);

// Records of several classes. Table and list hold them back and print them class by class, in the order in which the
// classes came, each class under a line with its name and the number of its records. JSON and CSV begin each record
// with its __CLASS, unless it holds that already.
[[nodiscard]] std::unique_ptr<ResultWriter> MakeByClassWriter(Format format, Output& output);

// The value as table and list show it: one line, nothing in it that could steer a terminal, "-" for null.
[[nodiscard]] std::string DisplayText(const Value& value);

// The value as JSON. Nested arrays and objects are indented by two blanks a level; a level of OneLine puts all on one.
inline constexpr int OneLine = -1;
void AppendJson(std::string& json, const Value& value, int level);
void AppendJson(std::string& json, const Record& record, int level);

// Whether two records have the same properties in the same order.
[[nodiscard]] bool SameColumns(const std::vector<std::string>& columns, const Record& record);

} // namespace orl::client

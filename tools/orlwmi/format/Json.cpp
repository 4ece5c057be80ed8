// The JSON format (RFC 8259).
#include "tools/orlwmi/format/ResultWriter.h"

#include "tools/orlwmi/Text.h"

namespace orl::client
{
namespace
{

// Escapes what JSON must, and what a terminal would obey.
void AppendText(std::string& json, std::string_view text)
{
    json += '"';
    while (!text.empty())
    {
        const char32_t c = TakeCodePoint(text);
        if (c == U'"' || c == U'\\')
        {
            json += '\\';
            json += static_cast<char>(c);
        }
        else if (c == U'\n' || c == U'\r' || c == U'\t')
        {
            json += c == U'\n' ? "\\n" : c == U'\r' ? "\\r" : "\\t";
        }
        else if (SteersTerminal(c))
        {
            json += "\\u" + Hex(c, 4);
        }
        else
        {
            AppendUtf8(json, c);
        }
    }
    json += '"';
}

int Below(int level)
{
    return level == OneLine ? OneLine : level + 1;
}

void AppendBreak(std::string& json, int level)
{
    if (level != OneLine)
    {
        json += '\n';
        json.append(static_cast<size_t>(level) * 2, ' ');
    }
}

void AppendArray(std::string& json, const Array& items, int level)
{
    json += '[';
    bool first = true;
    for (const auto& item : items)
    {
        json += first ? "" : (level == OneLine ? ", " : ",");
        first = false;
        AppendBreak(json, Below(level));
        AppendJson(json, item, Below(level));
    }
    if (!first)
    {
        AppendBreak(json, level);
    }
    json += ']';
}

struct JsonAppender
{
    std::string& json;
    int level;

    void operator()(std::monostate) const { json += "null"; }
    void operator()(bool value) const { json += value ? "true" : "false"; }
    void operator()(const Number& number) const { json += number.literal; }
    void operator()(const std::string& text) const { AppendText(json, text); }
    void operator()(const Array& items) const { AppendArray(json, items, level); }
    void operator()(const std::shared_ptr<const Record>& record) const { AppendJson(json, *record, level); }
};

class JsonWriter : public ResultWriter
{
public:
    JsonWriter(Output& output, Shape shape) : m_output(output), m_shape(shape) {}

    void Write(const Record& record) override
    {
        std::string json;
        if (m_shape == Shape::Many)
        {
            json = m_first ? "[\n  " : ",\n  ";
        }
        AppendJson(json, record, m_shape == Shape::Many ? 1 : 0);
        m_first = false;
        m_output.Write(json);
    }

    void End() override
    {
        if (m_shape == Shape::Many)
        {
            m_output.Write(m_first ? "[]\n" : "\n]\n");
        }
        else if (!m_first)
        {
            m_output.Write("\n");
        }
    }

private:
    Output& m_output;
    Shape m_shape;
    bool m_first = true;
};

} // namespace

void AppendJson(std::string& json, const Value& value, int level)
{
    std::visit(JsonAppender{json, level}, static_cast<const Value::variant&>(value));
}

void AppendJson(std::string& json, const Record& record, int level)
{
    json += '{';
    bool first = true;
    for (const auto& [name, value] : record.properties)
    {
        json += first ? "" : (level == OneLine ? ", " : ",");
        first = false;
        AppendBreak(json, Below(level));
        AppendText(json, name);
        json += ": ";
        AppendJson(json, value, Below(level));
    }
    if (!first)
    {
        AppendBreak(json, level);
    }
    json += '}';
}

std::unique_ptr<ResultWriter> MakeJsonWriter(Output& output, Shape shape)
{
    return std::make_unique<JsonWriter>(output, shape);
}

} // namespace orl::client

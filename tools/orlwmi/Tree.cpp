// Drawing with the line characters of Unicode.
#include "tools/orlwmi/Tree.h"

#include "tools/orlwmi/Text.h"

#include <algorithm>

namespace orl::client
{
namespace
{

void DrawFacts(Output& output, const TreeNode& node, const std::string& margin)
{
    size_t width = 0;
    for (const auto& [name, text] : node.facts)
    {
        width = text.empty() ? width : std::max(width, DisplayWidth(name));
    }
    for (const auto& [name, text] : node.facts)
    {
        if (!text.empty())
        {
            const std::string blanks(width - DisplayWidth(name), ' ');
            output.Write(margin);
            output.Write(name + blanks + "  ");
            output.Write(Printable(text) + "\n");
        }
    }
}

void DrawBelow(Output& output, const TreeNode& node, const std::string& margin)
{
    DrawFacts(output, node, margin + (node.children.empty() ? "    " : "│   "));
    for (const auto& child : node.children)
    {
        const bool last = &child == &node.children.back();
        output.Write(margin + (last ? "└── " : "├── ") + Printable(child.title) + "\n");
        DrawBelow(output, child, margin + (last ? "    " : "│   "));
    }
}

} // namespace

void DrawTree(Output& output, const TreeNode& root)
{
    output.Write(Printable(root.title) + "\n");
    DrawBelow(output, root, "");
}

} // namespace orl::client

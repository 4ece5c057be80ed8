// A tree of things with facts about each, and its drawing.
#pragma once

#include "tools/orlwmi/Output.h"

#include <string>
#include <utility>
#include <vector>

namespace orl::client
{

struct TreeNode
{
    std::string title;
    std::vector<std::pair<std::string, std::string>> facts; // name and text; without text it is not shown
    std::vector<TreeNode> children;
};

// Draws one tree: its title, its facts below it with their texts in one column, then its children. Nothing in the texts
// can steer a terminal.
void DrawTree(Output& output, const TreeNode& root);

} // namespace orl::client

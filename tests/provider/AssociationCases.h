// The seven associations as their tests know them: what each asks the agent and what it makes of a record.
#pragma once

#include "tests/provider/DeviceCases.h"

#include <memory>
#include <string>
#include <vector>

namespace orl::test
{

struct AssociationCase
{
    std::string name;
    std::wstring cimClass; // of its instances
    std::string manager;
    std::wstring operation;
    std::unique_ptr<CWomClassManagerRoot> (*make)(COrlFcoeAgentIntf* agent);
    void (*add)(ScriptedAgent& agent, const wchar_t* deviceId);
    // The paths of the record of adapter X, and their builders.
    std::wstring antecedent;
    std::wstring dependent;
    std::string antecedentBuilder;
    std::string dependentBuilder;
    // What else a get reads from the two paths.
    std::string extraReader;
    std::wstring agentText;
    std::wstring sourceName;
    int pathLine;
    int agentLine;
};

const std::vector<AssociationCase>& AssociationCases();
// By name, as "HBAToLUN".
const AssociationCase& AssociationOf(const std::string& name);

// As the value of a key stands in a path.
std::wstring InPath(const std::wstring& text);
std::wstring PathOfLink(const AssociationCase& c, const std::wstring& antecedent, const std::wstring& dependent);

// The namespace knows the classes of all of them.
class AssociationManager : public ManagerTest
{
protected:
    AssociationManager();
};

} // namespace orl::test

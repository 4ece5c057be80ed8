// Which of the product's libraries lies where.
#pragma once

#include <array>
#include <cstddef>

namespace orl
{

enum class LibraryGroup
{
    AgentLibraries,    // each in the directory of its agent
    AgentNames,        // the folder "Agent" of the installation directory
    Services,          // the folder "QUIL" of the driver package
    ResourceLibraries, // the directory of resource libraries; known by the sub-name
    OtherLibraries,    // the system directory
    NoDirectory        // known, but found by the system's search order only
};

struct LibraryRow
{
    const wchar_t* name;
    LibraryGroup group;
};

// In the order in which a name is compared; the first match decides.
extern const std::array<LibraryRow, 31> LibraryTable;

// The group of a library by its base name, or by its sub-name among the resource libraries, without regard to case;
// NoDirectory when the table does not know it.
LibraryGroup FindLibraryGroup(const wchar_t* baseName, const wchar_t* subName);

} // namespace orl

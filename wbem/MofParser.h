// MOF: from words to declarations.
#pragma once

#include "wbem/Mof.h"
#include "wbem/MofLexer.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace wbem
{

// What a reading gathers over all its files.
struct MofReading
{
    struct AliasUse
    {
        std::wstring alias;
        MofPosition position;
    };

    MofDocument document;
    std::vector<AliasUse> aliasUses; // may come before the declaration
};

// Thrown by what follows an include pragma when there is nothing to include; the parser knows the place.
struct MofIncludeFault
{
    std::wstring reason;
};

// Called for an include pragma, with the name that it gives and the namespace in force. It throws MofIncludeFault, or
// what is to pass through the parser: a failure inside the included file.
using MofInclude = std::function<void(const std::wstring& name, const std::wstring& nameSpace)>;

// Parses the text of the document's file with that index; throws MofFault.
void ParseMof(std::wstring_view text, std::uint32_t file, const std::wstring& nameSpace, MofReading& reading,
              const MofInclude& include);

} // namespace wbem

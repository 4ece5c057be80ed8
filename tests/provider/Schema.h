// The schema's classes, as tests hold them against what the managers send.
#pragma once

#include "com/OrlCom.h"
#include "wbem/MofReader.h"

#include <string>
#include <vector>

namespace orl::test
{

// The class that schema/NAME.mof declares; without one the test fails.
wbem::MofClass Schema(const std::wstring& name);

// The names of the class's keys, in the order declared.
std::vector<std::wstring> Keys(const wbem::MofClass& schema);

// How a value of the type travels.
VARTYPE Travels(const wbem::MofType& type);

} // namespace orl::test

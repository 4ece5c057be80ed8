// The long texts of --help: examples for each command, exit codes.
#pragma once

namespace orl::client
{

inline constexpr const char* ProgramHelp = R"(Examples:
  orlwmi tree
  orlwmi enum Zarn_FCOEHBA --select DeviceID,LinkStatus
  orlwmi get Zarn_FCOEHBA --key DeviceID=eth0.1002 --format json
  orlwmi doctor

Each command tells more: orlwmi enum --help

Exit codes:
  0    done; also when the receiver of the output closes it
  1    the service refused the request or failed at it
  2    the command line is wrong
  3    no such object, class or property
  4    --timeout passed
  5    no service, or no such namespace
  6    doctor found something wrong
  7    the output could not be written
  130  interrupted with Ctrl-C

Results go to standard output in UTF-8, errors to standard error with the name
and number of their status and what the service told about them.
)";

inline constexpr const char* TreeHelp = R"(Examples:
  orlwmi tree
  orlwmi tree --server storage7
)";

inline constexpr const char* EnumHelp = R"(Formats:
  table  one line an instance, numbers to the right, - for null
  list   one line a property
  json   an array of objects; numbers are numbers, nulls null
  csv    RFC 4180 with a header line
  mof    the instances as the service writes them

Examples:
  orlwmi enum Zarn_FCOEHBA
  orlwmi enum Zarn_FCOEHBA --select DeviceID,WorldWidePortName --format csv
  orlwmi enum Zarn_FCOEHBA --where "LinkStatus <> 'Online'" --count
)";

inline constexpr const char* GetHelp = R"(Examples:
  orlwmi get 'Zarn_FCOEHBA.DeviceID="eth0.1002"'
  orlwmi get Zarn_FCOEHBA --key DeviceID=eth0.1002
  orlwmi get Zarn_FCOEHBA --key DeviceID=eth0.1002 --select FCID --format json
)";

inline constexpr const char* QueryHelp = R"(Examples:
  orlwmi query "SELECT DeviceID, FCID FROM Zarn_FCOEHBA WHERE FCID <> '0x0'"
  orlwmi query "SELECT * FROM Zarn_FCOEHBA WHERE Name LIKE 'fcoe%'" --format json
)";

inline constexpr const char* ClassHelp = R"(The formats other than mof print the members of the class: properties and
methods with their types and descriptions.

Examples:
  orlwmi class Zarn_FCOEHBA
  orlwmi class Zarn_FCOEHBA --format table
)";

inline constexpr const char* ClassesHelp = R"(Examples:
  orlwmi classes
  orlwmi classes --all --namespace root
)";

inline constexpr const char* DoctorHelp =
    R"(Checks the registry, the libraries and their exports, the agents, the schema,
the service and the trace log. Every line says whether it is right; one that
is wrong is followed by what to do. Exit code 6 when anything is wrong.

Examples:
  orlwmi doctor
  orlwmi doctor --format json
)";

} // namespace orl::client

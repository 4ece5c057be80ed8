// The long texts of --help: examples for each command, exit codes.
#pragma once

namespace orl::client
{

inline constexpr const char* ProgramHelp = R"(Examples:
  orlwmi tree
  orlwmi stats eth0.1002 --watch 2
  orlwmi enum Zarn_FCOEHBA --select DeviceID,LinkStatus
  orlwmi get Zarn_FCOEHBA --key DeviceID=eth0.1002 --format json
  orlwmi doctor

Each command tells more: orlwmi enum --help

Exit codes:
  0    done; also when the receiver of the output closes it
  1    the service refused the request or failed at it
  2    the command line is wrong
  3    no such object, class, property, method or parameter
  4    --timeout passed
  5    no service, or no such namespace
  6    doctor found something wrong
  7    the output could not be written
  8    a method or an adapter answered, and did not do what it was asked
  130  interrupted with Ctrl-C

Results go to standard output in UTF-8, errors to standard error with the name
and number of their status and what the service told about them.
)";

inline constexpr const char* TreeHelp = R"(Examples:
  orlwmi tree
  orlwmi tree eth0.1002
  orlwmi tree 'eth*' --format json
  orlwmi tree --server storage7
)";

inline constexpr const char* StatsHelp = R"(The first sample shows values, each later one also the rate per second since
the one before it. A counter that was reset has no rate that once. Ctrl-C ends
a watch.

Formats:
  table  one table a sample, without the counters that stand at 0
  json   one object a line
  csv    RFC 4180 with a header line

Examples:
  orlwmi stats
  orlwmi stats eth0.1002 --all
  orlwmi stats 'eth*' --watch 5 --count 12 --format csv
)";

inline constexpr const char* GraphHelp =
    R"(Adapters, VLANs, fabrics, ports, targets and LUNs. Lines follow the
associations; targets hang at their ports and LUNs at their targets. A port that
is logged in to no fabric hangs at its adapter by a dashed line.

Formats:
  dot  the language of Graphviz
  svg  drawn by Graphviz, whose program dot must be in a folder of PATH

Examples:
  orlwmi graph > fcoe.dot
  orlwmi graph eth0.1002 --format svg > fcoe.svg
)";

inline constexpr const char* SettingsHelp =
    R"(A value stands as its text where it has one. The name for display says the unit.
List adds help and the path of each setting; json and csv have the raw values.

Examples:
  orlwmi settings
  orlwmi settings eth0.1002
  orlwmi settings 'eth*' --format list
)";

inline constexpr const char* SetHelp = R"(With --hba and --setting, offers VALUE to the adapter. VALUE is the text of a
choice, which counts first and without case, or a number. What the adapter tells
is printed on standard error as "error: ..." and "warning: ..."; exit code 8
when it refuses. The value that the adapter has then is printed.

With PATH, writes the instance back with new values of its properties, which
are written as orlwmi call takes them. Of a setting these are CurrentValue,
RegistryValue and DisplayValue.

--dry-run asks the method ValidateAndSetSetting of the setting, without setting
anything. Only settings can be asked; other instances are refused.

Examples:
  orlwmi set --hba eth0.1002 --setting DevLossTimeout 30
  orlwmi set --hba 'eth*' --setting "Controller mode" vn2vn --dry-run
  orlwmi set 'Zarn_FCOESettingInt.Caption="Mtu",ParentId="eth0.1002",ParentType="NIC"' \
         CurrentValue=2500
)";

inline constexpr const char* ResetHelp =
    R"(Prints the value that the adapter has then. Exit code 8 when the adapter fails;
its trace log says why.

Examples:
  orlwmi reset --hba eth0.1002 --setting DevLossTimeout
  orlwmi reset 'Zarn_FCOESettingInt.Caption="Mtu",ParentId="eth0.1002",ParentType="NIC"'
)";

inline constexpr const char* CallHelp = R"(Prints the out-parameters. Names of methods and parameters are looked up in
the class, values are converted to the types that it declares:
  numbers   7, -7, 0x1F
  booleans  TRUE or FALSE
  texts     as they are; '"NULL"' is the text of four letters
  arrays    NAME=[a,b], or NAME=a NAME=b
  NULL      no value, for every type

What the method tells beside its result (WarningMessages) is printed on
standard error as "error: ..." and "warning: ..." by table and list; in json,
csv and mof it stays among the out-parameters. Exit code 8 when there is an
error among them or ReturnValue is not 0.

Examples:
  orlwmi call 'Zarn_FCOEHBA.DeviceID="eth0.1002"' GenerateVirtualPortWWPN
  orlwmi call 'Zarn_FCOEHBA.DeviceID="eth0.1002"' CreateVirtualPort \
         WorldWidePortName=2101525400fc0001
  orlwmi call Zarn_FCOEHBA Uninstall
)";

inline constexpr const char* DeleteHelp =
    R"(Goes on with the next path when one cannot be deleted; the exit code is that
of the first failure.

Examples:
  orlwmi delete 'Zarn_FCoEPort.DeviceID="eth0.1002",WorldWidePortName="2101525400fc0001"'
)";

inline constexpr const char* EnumHelp = R"(Formats:
  table  one line an instance, numbers to the right, - for null
  list   one line a property
  json   an array of objects; numbers are numbers, nulls null
  csv    RFC 4180 with a header line
  mof    the instances as the service writes them

Table and list tell what a number stands for where its class does: 5 (N_Port).
With --raw they print the number alone, as the other formats always do.

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

inline constexpr const char* AssocHelp =
    R"(Table and list print the objects by class, each class under its name with the
number of its objects. In json and csv each object begins with its __CLASS.

Examples:
  orlwmi assoc 'Zarn_FCOEHBA.DeviceID="eth0.1002"'
  orlwmi assoc 'Zarn_FCOEHBA.DeviceID="eth0.1002"' --result-class Zarn_FCoeVLAN
  orlwmi assoc Zarn_FCOEHBA --key DeviceID=eth0.1002 --keys-only --format json
  orlwmi assoc 'Zarn_FCOEHBA.DeviceID="eth0.1002"' \
         --assoc-class Zarn_FCoE_HBA_LUN_Assoc --select __PATH
)";

inline constexpr const char* RefsHelp =
    R"(The associations themselves, with the paths of both ends. Classes stand as they
do in orlwmi assoc.

Examples:
  orlwmi refs 'Zarn_FCOEHBA.DeviceID="eth0.1002"'
  orlwmi refs Zarn_FCOEHBA --key DeviceID=eth0.1002 \
         --result-class Zarn_FCoE_HBA_VLAN_Assoc --role Antecedent
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

// Topology: what an FCoE administrator sees of a machine, apart from where it was read and how it is shown.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace orl::client
{

// Texts are as the source gives them; world wide names are without colons and empty where there is none.

struct Lun
{
    std::string id;
    std::string name;
    std::string device;    // the operating system's name; empty while there is no disk
    std::string capacity;  // bytes in decimal, unless the agent words it otherwise
    std::string blockSize; // as above
};

enum class TargetState
{
    Unknown,
    Online,
    Blocked,   // lost a moment ago, may come back
    NotPresent // its time to come back is over
};

struct Target
{
    std::string name;
    std::string nodeName;
    std::string portName;
    std::string fcid;
    std::string vendor;
    TargetState state = TargetState::Unknown;
    bool isListed = true; // false when only LUNs tell of it
    std::vector<Lun> luns;
};

struct Port
{
    std::string name;
    std::string nodeName;
    std::string portName;
    std::string fcid;
    std::string type;
    bool isVirtual = false;
    std::string fabric;     // the fabric's name; empty when it is not logged in to one
    std::string switchName; // node name of the forwarder that it refers to; empty for none
    bool isListed = true;   // false when only targets and LUNs tell of it
    std::vector<Target> targets;
};

// One forwarder (FCF) of a fabric.
struct Forwarder
{
    std::string name;
    std::string nodeName;
    std::string fcMap;
    std::string type;
    std::string priority;
    std::string vlanId;
    size_t logins = 0; // the ports that are logged in through it
};

struct Fabric
{
    std::string name;
    std::vector<Forwarder> forwarders;
};

struct Vlan
{
    std::string id; // "0" when the frames carry no tag
    std::string name;
    std::string interfaceName;
    std::string status;
    bool isDisabled = false; // FCoE is switched off on it
};

struct Adapter
{
    std::string deviceId;
    std::string name;
    std::string hostName; // as the operating system's Fibre Channel layer calls it
    std::string fcid;
    std::string bus;
    std::string speed;
    std::string status;
    std::string model;
    std::string portName;
    std::string nodeName;
    std::vector<Vlan> vlans;
    std::vector<Fabric> fabrics;
    std::vector<Port> ports;
};

using Topology = std::vector<Adapter>;

} // namespace orl::client

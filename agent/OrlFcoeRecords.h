// The records in which the FCoE agent describes what it found: adapters, ports, fabrics, targets, LUNs, VLANs,
// counters.
//
// Plain records of owned texts and numbers, filled by the agent and only read by the provider. The order of the fields
// is shared with agents that are built apart from the provider: append, never reorder.
//
// World wide names are texts as the agent writes them; the provider compares them without regard to case and passes
// them on unread. FCIDs are 24-bit Fibre Channel addresses (FC-FS), but all 32 bits are carried as the agent gave them.
#pragma once

#include "Common/Src/OrlString.h"

#include <windows.h>

struct ORL_FCOE_HBA
{
    COrlString hbaName;
    COrlString deviceId; // the adapter's key, and what ties every other record to it
    COrlString name;
    COrlString worldWidePortName;
    COrlString worldWideNodeName;
    ULONG fcid = 0;
    COrlString busInformation;
    COrlString linkSpeed;
    COrlString linkStatus;
    COrlString instancePath; // parts divided by backslashes; the last one is the HBA id
    COrlString model;
};

struct ORL_FCOE_PORT
{
    COrlString nodeWWN;
    COrlString portWWN; // the port's key within its HBA
    ULONG portTypeId = 0;
    COrlString portType;
    ULONG fcid = 0;
    COrlString deviceId;
    COrlString name;
    COrlString fabricNodeWWN; // node name of the fabric that the port is logged in to, empty when it is in none
    COrlString fabricName;
};

struct ORL_FCOE_FABRIC
{
    COrlString fabricName;
    COrlString nodeWWN; // the fabric's key within its HBA
    COrlString portWWN;
    COrlString reservedText; // carried, not published
    ULONG fcMap = 0;         // the upper 24 bits of the fabric's MAC addresses (FC-BB)
    COrlString deviceId;
    COrlString name;
    COrlString fabricType;
    ULONG fabricTypeId = 0;
    ULONG priority = 0; // of the forwarder; the lower wins
    ULONG vlanId = 0;
};

struct ORL_FCOE_TARGET
{
    COrlString nodeWWN; // the key that a get by path matches
    COrlString portWWN;
    ULONG scsiBus = 0;
    ULONG scsiTarget = 0;
    ULONG fcid = 0;
    COrlString vendor;
    COrlString serialNumber;
    COrlString localPortWWN; // the HBA port through which the target is seen
    COrlString reservedText; // carried, not published
    COrlString fabricName;
    COrlString deviceId;
    COrlString name;
    ULONGLONG reservedNumber = 0; // carried, not published
    ULONG targetType = 0;
};

struct ORL_FCOE_LUN
{
    ULONG lunId = 0; // the LUN's key within its HBA
    ULONG busNumber = 0;
    ULONG targetNumber = 0;
    ULONG fcid = 0;
    COrlString osDeviceName;
    COrlString capacity;  // as the agent formats it
    COrlString blockSize; // as the agent formats it
    COrlString targetPortWWN;
    COrlString reservedText; // carried, not published
    COrlString localPortWWN;
    COrlString fabricName;
    COrlString deviceId;
    COrlString name;
};

struct ORL_FCOE_VLAN
{
    COrlString vlanName;
    ULONG vlanId = 0; // the VLAN's key within its HBA
    ULONG statusId = 0;
    COrlString status;
    COrlString deviceId;
    COrlString name;
};

struct ORL_FCOE_STATISTIC
{
    COrlString deviceId;
    COrlString name;
    COrlString statistic; // the counter's name, its key within its HBA
    ULONGLONG value = 0;
};

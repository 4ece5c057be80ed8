// fcfsim: the switch's ports and logins, and the frames that it speaks. See Main.cpp for what it is.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace fcfsim
{

using Byte = std::uint8_t;
using Mac = std::array<Byte, 6>;

constexpr unsigned EtherFcoe = 0x8906;
constexpr unsigned EtherFip = 0x8914;
constexpr unsigned EtherControl = 0x88B5; // local experimental: the remote control of "fcfsim -C"

constexpr std::size_t EtherHeader = 14;
constexpr std::size_t MinFrame = 60;
constexpr std::size_t MaxFrame = 9216;
constexpr Mac AllEnodes{0x01, 0x10, 0x18, 0x01, 0x00, 0x01};

// Everything on the wire is big endian.
inline void Put8(Byte* p, unsigned value)
{
    *p = static_cast<Byte>(value);
}
inline void Put16(Byte* p, unsigned value)
{
    Put8(p, value >> 8);
    Put8(p + 1, value);
}
inline void Put24(Byte* p, unsigned value)
{
    Put8(p, value >> 16);
    Put16(p + 1, value & 0xFFFF);
}
inline void Put32(Byte* p, std::uint32_t value)
{
    Put16(p, value >> 16);
    Put16(p + 2, value & 0xFFFF);
}
inline void Put64(Byte* p, std::uint64_t value)
{
    Put32(p, static_cast<std::uint32_t>(value >> 32));
    Put32(p + 4, static_cast<std::uint32_t>(value));
}
inline void Put(Byte* p, const Mac& mac)
{
    for (const Byte b : mac)
        *p++ = b;
}
inline unsigned Get16(const Byte* p)
{
    return static_cast<unsigned>(p[0]) << 8 | p[1];
}
inline unsigned Get24(const Byte* p)
{
    return static_cast<unsigned>(p[0]) << 16 | Get16(p + 1);
}
inline std::uint32_t Get32(const Byte* p)
{
    return Get16(p) << 16 | Get16(p + 2);
}
inline std::uint64_t Get64(const Byte* p)
{
    return static_cast<std::uint64_t>(Get32(p)) << 32 | Get32(p + 4);
}
inline Mac GetMac(const Byte* p)
{
    return {p[0], p[1], p[2], p[3], p[4], p[5]};
}

// What the command line says.
struct Options
{
    std::uint64_t fabricName = 0x1000FEEDFACE0001;
    std::uint64_t switchName = 0x2001FEEDFACE0001;
    unsigned priority = 128;
    unsigned fabricId = 0;
    unsigned fcMap = 0x0EFC00;
    unsigned keepAliveMs = 8000;
    unsigned domain = 1;
    bool noKeepAlive = false;
    bool advertiseOnly = false;
    bool noNpiv = false;
    bool verbose = false;
};

// A switch port is a network interface.
struct Port
{
    std::string name;
    int index = 0; // of the interface
    int fd = -1;
    bool up = true;
    unsigned vlanAnswer = 0; // not 0: does FIP VLAN discovery only, and answers this VLAN
    Mac mac{};
    unsigned area = 0; // an N_Port id is domain, area and a number
    unsigned nextNumber = 0;
};

// An N_Port that has logged in (FLOGI or FDISC). Its id stays its own when it comes back.
struct Login
{
    bool used = false;
    bool online = false;
    Port* port = nullptr;
    std::uint32_t id = 0;
    std::uint64_t portName = 0;
    std::uint64_t nodeName = 0;
    Mac enode{};
    bool fcp = false;           // registered for FCP
    bool changesWanted = false; // asked to be told of state changes
    std::string symbolicName;
};

extern Options options;
extern std::vector<Port> ports;
extern std::array<Login, 64> logins;

[[gnu::format(printf, 1, 2)]] void Log(const char* format, ...);
void Send(const Port& port, const Byte* frame, std::size_t size);

// Fip.cpp: discovery and logins.

// A solicited advertisement is padded to the frame size that the ENode asked about, which proves that the path carries
// such frames.
void Advertise(const Port& port, const Mac& to, bool solicited, unsigned fcoeSize);
void ReceiveFip(Port& port, const Byte* frame, std::size_t size);
// Tells every port that is logged in that its link is gone.
void ClearLinks();

// Fabric.cpp: what is logged in, the frames between the ports, and the fabric's services.

constexpr std::size_t FcHeader = 24;
constexpr std::size_t LoginPayload = 116;

Login* FindById(std::uint32_t id);
// The login of this port name, a new one when it has none; nullptr when all are in use.
Login* LoginFor(Port& port, std::uint64_t portName);
void LogOut(Login& login, const char* why);
// The MAC address that the fabric gives a port: FC-MAP and N_Port id.
Mac FabricMac(std::uint32_t id);
void PutFcHeader(Byte* header, unsigned control, std::uint32_t to, std::uint32_t from, unsigned type, unsigned flags,
                 unsigned originator, unsigned responder);
// The answer to a login: from the fabric to FLOGI and FDISC, from one of its services to PLOGI.
void PutLoginAccept(Byte* payload, bool fabric, std::uint64_t portName, std::uint64_t nodeName);
void ReceiveFcoe(Port& port, Byte* frame, std::size_t size);

} // namespace fcfsim

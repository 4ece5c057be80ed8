// fcfsim: the FCoE initialization protocol (FC-BB-5, FC-BB-6): discovery of forwarders and VLANs, logins, clearing of
// links.
#include "Switch.h"

#include <algorithm>

namespace fcfsim
{
namespace
{

constexpr std::size_t FipHeader = 24; // with the Ethernet header
constexpr unsigned FipVersion1 = 0x10;

enum Operation : unsigned
{
    Discovery = 1,
    LinkService = 2,
    Control = 3,
    VlanDiscovery = 4
};

// Of each operation, the request is subcode 1 and what the forwarder says is 2.
constexpr unsigned Request = 1;
constexpr unsigned FromForwarder = 2;

enum Descriptor : unsigned
{
    Priority = 1,
    MacAddress = 2,
    NameIdentifier = 4,
    Fabric = 5,
    MaxFcoeSize = 6,
    FabricLogin = 7,
    NpivLogin = 8,
    FabricLogout = 9,
    VirtualPortId = 11,
    KeepAlivePeriod = 12,
    Vlan = 14
};

enum Flags : unsigned
{
    ForwarderAddressed = 0x8000, // FPMA: the fabric gives the MAC addresses
    Available = 0x0004,
    Solicited = 0x0002,
    Forwarder = 0x0001
};

// R_CTL values and F_CTL of answers.
constexpr unsigned ElsReply = 0x23;
constexpr unsigned ElsType = 1;
constexpr unsigned LastOfExchange = 0x980000;
constexpr std::uint32_t FabricPort = 0xFFFFFE;
constexpr unsigned OurExchange = 0x1000;

// A FIP frame that grows by descriptors.
class FipFrame
{
public:
    FipFrame(const Mac& to, const Mac& from, Operation operation, unsigned flags)
    {
        Put(&m_bytes[0], to);
        Put(&m_bytes[6], from);
        Put16(&m_bytes[12], EtherFip);
        Put8(&m_bytes[14], FipVersion1);
        Put16(&m_bytes[16], operation);
        Put8(&m_bytes[19], FromForwarder);
        Put16(&m_bytes[22], flags);
    }

    // A descriptor of this many words of four bytes, which are 0 behind its type and length. Returns its first byte.
    Byte* Add(Descriptor type, unsigned words)
    {
        Byte* descriptor = &m_bytes[m_size];
        Put8(descriptor, type);
        Put8(descriptor + 1, words);
        m_size += words * 4;
        return descriptor;
    }
    void AddMac(const Mac& mac) { Put(Add(MacAddress, 2) + 2, mac); }
    void AddName(std::uint64_t name) { Put64(Add(NameIdentifier, 3) + 4, name); }

    void SendTo(const Port& port, std::size_t size = MinFrame)
    {
        Put16(&m_bytes[20], static_cast<unsigned>(m_size - FipHeader) / 4);
        Send(port, m_bytes.data(), std::min(std::max({m_size, size, MinFrame}), m_bytes.size()));
    }

private:
    std::array<Byte, MaxFrame> m_bytes{};
    std::size_t m_size = FipHeader;
};

void AnswerLogout(const Port& port, const Mac& enode, const Byte* fcHeader)
{
    const std::uint32_t id = Get24(fcHeader + 5);
    if (Login* login = FindById(id))
        LogOut(*login, "FIP LOGO");
    FipFrame frame(enode, port.mac, LinkService, ForwarderAddressed);
    Byte* accept = frame.Add(FabricLogout, (4 + FcHeader + 4) / 4) + 4;
    PutFcHeader(accept, ElsReply, id, FabricPort, ElsType, LastOfExchange, Get16(fcHeader + 16), OurExchange);
    constexpr unsigned lsAcc = 0x02;
    Put8(accept + FcHeader, lsAcc);
    frame.AddMac(FabricMac(id));
    frame.SendTo(port);
}

void AnswerLogin(Port& port, const Mac& enode, Descriptor type, const Byte* fcHeader)
{
    const Byte* request = fcHeader + FcHeader;
    const std::uint64_t portName = Get64(request + 20);
    // A new FLOGI ends everything that this ENode had.
    if (type == FabricLogin)
        for (Login& other : logins)
            if (other.used && other.port == &port && other.enode == enode)
                LogOut(other, "new FLOGI");
    Login* login = LoginFor(port, portName);
    if (login == nullptr)
        return;
    login->nodeName = Get64(request + 28);
    login->online = true;
    login->fcp = login->changesWanted = false;
    login->enode = enode;
    Log("%s from %016llx on %s -> %06x", type == FabricLogin ? "FLOGI" : "FDISC",
        static_cast<unsigned long long>(portName), port.name.c_str(), login->id);

    FipFrame frame(enode, port.mac, LinkService, ForwarderAddressed);
    Byte* accept = frame.Add(type, (4 + FcHeader + LoginPayload) / 4) + 4;
    PutFcHeader(accept, ElsReply, login->id, FabricPort, ElsType, LastOfExchange, Get16(fcHeader + 16), OurExchange);
    // The name of the switch's port is the switch's own, with the port's number in the bits left free by NAA 2.
    constexpr std::uint64_t freeBits = 0x0FFF000000000000;
    PutLoginAccept(accept + FcHeader, true,
                   (options.switchName & ~freeBits) | static_cast<std::uint64_t>(port.area) << 48, options.fabricName);
    frame.AddMac(FabricMac(login->id));
    frame.SendTo(port);
}

void AnswerLinkService(Port& port, const Mac& enode, const Byte* descriptor, std::size_t size)
{
    const unsigned type = descriptor[0];
    const Byte* fcHeader = descriptor + 4;
    if (options.advertiseOnly)
        return;
    if (type == FabricLogout && size >= 4 + FcHeader + 4)
        AnswerLogout(port, enode, fcHeader);
    else if ((type == FabricLogin || type == NpivLogin) && size >= 4 + FcHeader + LoginPayload)
        AnswerLogin(port, enode, static_cast<Descriptor>(type), fcHeader);
}

void AnswerVlanRequest(const Port& port, const Mac& enode)
{
    Log("VLAN request on %s -> %u", port.name.c_str(), port.vlanAnswer);
    FipFrame frame(enode, port.mac, VlanDiscovery, ForwarderAddressed);
    frame.AddMac(port.mac);
    Put16(frame.Add(Vlan, 1) + 2, port.vlanAnswer);
    frame.SendTo(port);
}

void AnswerSolicitation(const Port& port, const Mac& enode, const Byte* descriptors, std::size_t size)
{
    unsigned fcoeSize = 0;
    while (size >= 4 && descriptors[1] != 0 && descriptors[1] * 4u <= size)
    {
        if (descriptors[0] == MaxFcoeSize)
            fcoeSize = Get16(descriptors + 2);
        const std::size_t length = descriptors[1] * 4u;
        descriptors += length;
        size -= length;
    }
    Log("solicitation on %s, FCoE size %u", port.name.c_str(), fcoeSize);
    Advertise(port, enode, true, fcoeSize);
}

} // namespace

void Advertise(const Port& port, const Mac& to, bool solicited, unsigned fcoeSize)
{
    FipFrame frame(to, port.mac, Discovery, ForwarderAddressed | Available | Forwarder | (solicited ? Solicited : 0u));
    Put8(frame.Add(Priority, 1) + 3, options.priority);
    frame.AddMac(port.mac);
    frame.AddName(options.switchName);
    Byte* fabric = frame.Add(Fabric, 4);
    Put16(fabric + 2, options.fabricId);
    Put24(fabric + 5, options.fcMap);
    Put64(fabric + 8, options.fabricName);
    Byte* keepAlive = frame.Add(KeepAlivePeriod, 2);
    Put8(keepAlive + 3, options.noKeepAlive ? 1 : 0);
    Put32(keepAlive + 4, options.keepAliveMs);
    frame.SendTo(port, solicited ? fcoeSize + EtherHeader : MinFrame);
}

void ReceiveFip(Port& port, const Byte* frame, std::size_t size)
{
    if (size < FipHeader || frame[14] != FipVersion1)
        return;
    const bool multicast = (frame[0] & 1) != 0;
    if (!multicast && GetMac(frame) != port.mac)
        return; // the port is promiscuous: this is for another forwarder
    const Mac enode = GetMac(frame + 6);
    const unsigned operation = Get16(frame + 16);
    const std::size_t length = Get16(frame + 20) * 4;
    const Byte* descriptors = frame + FipHeader;
    if (frame[19] != Request || FipHeader + length > size)
        return;
    if (port.vlanAnswer != 0)
    {
        if (operation == VlanDiscovery)
            AnswerVlanRequest(port, enode);
    }
    else if (operation == Discovery)
        AnswerSolicitation(port, enode, descriptors, length);
    else if (operation == LinkService && length >= 4 && descriptors[1] * 4u <= length)
        AnswerLinkService(port, enode, descriptors, descriptors[1] * 4u);
}

void ClearLinks()
{
    for (Login& login : logins)
    {
        if (!login.used || !login.online)
            continue;
        FipFrame frame(login.enode, login.port->mac, Control, 0);
        frame.AddMac(login.port->mac);
        frame.AddName(options.switchName);
        Byte* id = frame.Add(VirtualPortId, 5);
        Put(id + 2, FabricMac(login.id));
        Put24(id + 9, login.id);
        Put64(id + 12, login.portName);
        Log("CVL to %06x", login.id);
        frame.SendTo(*login.port);
        LogOut(login, "CVL");
    }
}

} // namespace fcfsim

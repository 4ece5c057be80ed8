// fcfsim: what is logged in, the frames between the ports, and the fabric's services (FC-LS, FC-GS).
#include "Switch.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace fcfsim
{

std::array<Login, 64> logins;

namespace
{

constexpr std::size_t FcoeHeader = 28;  // with the Ethernet header
constexpr std::size_t FcoeTrailer = 8;  // CRC and end of frame
constexpr unsigned StartOfFrame = 0x2E; // SOFi3
constexpr unsigned EndOfFrame = 0x42;   // EOFt

// R_CTL values.
constexpr unsigned ElsRequest = 0x22;
constexpr unsigned ElsReply = 0x23;
constexpr unsigned CtRequest = 0x02;
constexpr unsigned CtReply = 0x03;

constexpr unsigned ElsType = 0x01;
constexpr unsigned FcpType = 0x08;
constexpr unsigned CtType = 0x20;

// F_CTL of requests and of answers.
constexpr unsigned FirstOfExchange = 0x290000;
constexpr unsigned LastOfExchange = 0x980000;

// Well-known addresses begin here.
constexpr std::uint32_t FirstService = 0xFFFC00;
constexpr std::uint32_t FabricController = 0xFFFFFD;

constexpr unsigned FrameBytes = 2048;
constexpr unsigned ResourceTimeoutMs = 10000; // R_A_TOV
constexpr unsigned ErrorTimeoutMs = 2000;     // E_D_TOV

constexpr Byte LsReject = 0x01;
constexpr Byte LsAccept = 0x02;

std::uint32_t Crc32(const Byte* p, std::size_t size)
{
    std::uint32_t crc = ~0u;
    while (size-- > 0)
    {
        crc ^= *p++;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1) != 0 ? crc >> 1 ^ 0xEDB88320u : crc >> 1;
    }
    return ~crc;
}

// Sends header and payload to the port as one FCoE frame.
void SendFc(const Login& to, const Byte* header, const Byte* payload, std::size_t size)
{
    std::array<Byte, MaxFrame> frame{};
    const std::size_t fill = (4 - size % 4) % 4;
    Put(&frame[0], FabricMac(to.id));
    Put(&frame[6], to.port->mac);
    Put16(&frame[12], EtherFcoe);
    Put8(&frame[27], StartOfFrame);
    Byte* fc = &frame[FcoeHeader];
    std::memcpy(fc, header, FcHeader);
    Put8(fc + 11, fc[11] | static_cast<unsigned>(fill)); // in F_CTL
    std::memcpy(fc + FcHeader, payload, size);
    const std::size_t covered = FcHeader + size + fill;
    const std::uint32_t crc = Crc32(fc, covered);
    for (unsigned i = 0; i < 4; ++i) // the only little-endian field
        Put8(fc + covered + i, crc >> (8 * i));
    Put8(fc + covered + 4, EndOfFrame);
    Send(*to.port, frame.data(), FcoeHeader + covered + FcoeTrailer);
}

// Answers the request with this header.
void Reply(const Login& to, const Byte* request, unsigned control, const Byte* payload, std::size_t size)
{
    std::array<Byte, FcHeader> header;
    constexpr unsigned ourExchange = 0x1000;
    PutFcHeader(header.data(), control, Get24(request + 5), Get24(request + 1), request[8], LastOfExchange,
                Get16(request + 16), ourExchange);
    header[12] = request[12];
    SendFc(to, header.data(), payload, size);
}

// Tells those who asked for it that something about a port has changed.
void TellChange(std::uint32_t about)
{
    static unsigned exchange = 0x2000;
    for (const Login& login : logins)
    {
        if (!login.used || !login.online || !login.changesWanted || login.id == about)
            continue;
        constexpr Byte rscn = 0x61;
        std::array<Byte, 8> payload{rscn, 4, 0, 8};
        Put24(&payload[5], about);
        std::array<Byte, FcHeader> header;
        exchange = (exchange + 1) & 0x7FFF;
        PutFcHeader(header.data(), ElsRequest, login.id, FabricController, ElsType, FirstOfExchange, exchange, 0xFFFF);
        Log("RSCN about %06x to %06x", about, login.id);
        SendFc(login, header.data(), payload.data(), payload.size());
    }
}

// Why the name server refuses.
struct Refusal
{
    Byte reason = 0; // 0: it does not
    Byte explanation = 0;
};
constexpr Refusal NoSuchPort{9, 1};
constexpr Refusal NoSuchName{9, 2};
constexpr Refusal NobodyRegistered{9, 7};
constexpr Refusal NotSupported{11, 0};

// A request to the name server and the answer to it, both with their CT header of 16 bytes.
struct NameQuery
{
    const Byte* request;
    std::size_t requestSize;
    std::array<Byte, 2048> answer{};
    std::size_t answerSize = 16;
};

Refusal ListFcpPorts(NameQuery& query, std::size_t itemSize)
{
    std::size_t last = 0;
    for (const Login& login : logins)
    {
        if (!login.used || !login.online || !login.fcp || query.request[3] != FcpType)
            continue;
        Byte* item = &query.answer[query.answerSize];
        Put24(item + 1, login.id);
        if (itemSize > 4)
            Put64(item + 8, login.portName);
        last = query.answerSize;
        query.answerSize += itemSize;
    }
    if (last == 0)
        return NobodyRegistered;
    query.answer[last] = 0x80; // no more
    return {};
}

void Register(Login& login, bool fcp)
{
    login.fcp = fcp;
    TellChange(login.id);
}

Refusal AnswerNameQuery(unsigned command, NameQuery& query)
{
    const Byte* request = query.request;
    Byte* answer = &query.answer[16];
    Login* about = FindById(Get24(request + 1));
    switch (command)
    {
    case 0x0212: // RPN_ID, RNN_ID, RSNN_NN: names are known from the login
    case 0x0213:
    case 0x0239:
        return {};
    case 0x021F: // RFF_ID: features of a protocol
        if (about != nullptr && request[7] == FcpType)
            TellChange(about->id);
        return {};
    case 0x0218: // RSPN_ID
        if (about != nullptr && query.requestSize > 5)
            about->symbolicName.assign(reinterpret_cast<const char*>(request + 5),
                                       std::min<std::size_t>(request[4], query.requestSize - 5));
        return {};
    case 0x0217: // RFT_ID: bit 8 of the first word is FCP
        if (about != nullptr)
            Register(*about, (Get32(request + 4) & 1u << FcpType) != 0);
        return {};
    case 0x0112: // GPN_ID, GNN_ID
    case 0x0113:
        if (about == nullptr)
            return NoSuchPort;
        Put64(answer, command == 0x0112 ? about->portName : about->nodeName);
        query.answerSize += 8;
        return {};
    case 0x0118: // GSPN_ID
        if (about == nullptr)
            return NoSuchPort;
        Put8(answer, static_cast<unsigned>(about->symbolicName.size()));
        std::memcpy(answer + 1, about->symbolicName.data(), about->symbolicName.size());
        query.answerSize += 1 + about->symbolicName.size();
        return {};
    case 0x0121: // GID_PN
        about = std::find_if(logins.begin(), logins.end(),
                             [&](const Login& login)
                             { return login.used && login.online && login.portName == Get64(request); });
        if (about == logins.end())
            return NoSuchName;
        Put24(answer + 1, about->id);
        query.answerSize += 4;
        return {};
    case 0x0171: // GID_FT
        return ListFcpPorts(query, 4);
    case 0x0172: // GPN_FT
        return ListFcpPorts(query, 16);
    default:
        return NotSupported;
    }
}

// A request to the name server or the management server.
void ReceiveCt(const Login& from, const Byte* fcHeader, const Byte* ct, std::size_t size)
{
    constexpr std::size_t ctHeader = 16;
    constexpr unsigned accept = 0x8002;
    constexpr unsigned reject = 0x8001;
    constexpr Byte managementServer = 0xFA;
    const unsigned command = Get16(ct + 8);
    // Padded, so that a request cut short reads as zeros.
    std::array<Byte, MaxFrame + 64> request{};
    std::memcpy(request.data(), ct + ctHeader, size - ctHeader);
    NameQuery query{request.data(), size - ctHeader};
    std::memcpy(query.answer.data(), ct, ctHeader);
    // Adapters register themselves at the management server; whatever they say is welcome.
    const Refusal refusal = ct[4] == managementServer ? Refusal() : AnswerNameQuery(command, query);
    Log("CT %04x from %06x -> %s", command, from.id, refusal.reason != 0 ? "reject" : "accept");
    Put16(&query.answer[8], refusal.reason != 0 ? reject : accept);
    if (refusal.reason != 0)
    {
        query.answer[13] = refusal.reason;
        query.answer[14] = refusal.explanation;
        query.answerSize = ctHeader;
    }
    Reply(from, fcHeader, CtReply, query.answer.data(), query.answerSize);
}

// An extended link service addressed to one of the fabric's services.
void ReceiveEls(Login& from, const Byte* fcHeader, const Byte* els)
{
    constexpr Byte plogi = 0x03;
    constexpr Byte logo = 0x05;
    constexpr Byte rrq = 0x12;
    constexpr Byte scr = 0x62;
    const std::uint32_t to = Get24(fcHeader + 1);
    std::array<Byte, LoginPayload> answer{LsAccept};
    switch (els[0])
    {
    case plogi:
        Log("PLOGI %06x -> %06x", from.id, to);
        PutLoginAccept(answer.data(), false, options.switchName | static_cast<std::uint64_t>(to & 0xFF) << 48,
                       options.switchName);
        Reply(from, fcHeader, ElsReply, answer.data(), answer.size());
        break;
    case scr:
    case logo:
    case rrq:
        from.changesWanted = from.changesWanted || els[0] == scr;
        Reply(from, fcHeader, ElsReply, answer.data(), 4);
        break;
    default:
        Log("ELS %02x to %06x rejected", els[0], to);
        answer = {LsReject, 0, 0, 0, 0, 0x0B, 0x2C}; // request not supported
        Reply(from, fcHeader, ElsReply, answer.data(), 8);
    }
}

} // namespace

Login* FindById(std::uint32_t id)
{
    const auto found = std::find_if(logins.begin(), logins.end(),
                                    [&](const Login& login) { return login.used && login.online && login.id == id; });
    return found == logins.end() ? nullptr : &*found;
}

Login* LoginFor(Port& port, std::uint64_t portName)
{
    Login* free = nullptr;
    for (Login& login : logins)
    {
        if (login.used && login.portName == portName && login.port != &port)
        {
            LogOut(login, "moved to another port");
            login = {};
        }
        if (login.used && login.portName == portName)
            return &login;
        if (!login.used && free == nullptr)
            free = &login;
    }
    if (free == nullptr)
        return nullptr;
    *free = {};
    free->used = true;
    free->port = &port;
    free->portName = portName;
    free->id = options.domain << 16 | port.area << 8 | port.nextNumber++;
    return free;
}

void LogOut(Login& login, const char* why)
{
    if (!login.online)
        return;
    Log("%06x (%016llx) logged out: %s", login.id, static_cast<unsigned long long>(login.portName), why);
    login.online = login.fcp = login.changesWanted = false;
    TellChange(login.id);
}

Mac FabricMac(std::uint32_t id)
{
    Mac mac;
    Put24(&mac[0], options.fcMap);
    Put24(&mac[3], id);
    return mac;
}

void PutFcHeader(Byte* header, unsigned control, std::uint32_t to, std::uint32_t from, unsigned type, unsigned flags,
                 unsigned originator, unsigned responder)
{
    static unsigned sequence = 0;
    std::memset(header, 0, FcHeader);
    Put8(header, control);
    Put24(header + 1, to);
    Put24(header + 5, from);
    Put8(header + 8, type);
    Put24(header + 9, flags);
    Put8(header + 12, ++sequence);
    Put16(header + 16, originator);
    Put16(header + 18, responder);
}

void PutLoginAccept(Byte* payload, bool fabric, std::uint64_t portName, std::uint64_t nodeName)
{
    constexpr unsigned version = 0x2020;
    constexpr unsigned bufferCredit = 10;
    std::memset(payload, 0, LoginPayload);
    Put8(payload, LsAccept);
    Put16(payload + 4, version);
    Put16(payload + 6, bufferCredit);
    Put16(payload + 10, FrameBytes);
    if (fabric)
    {
        constexpr unsigned fabricPort = 0x1000;
        constexpr unsigned npiv = 0x2000;
        Put16(payload + 8, fabricPort | (options.noNpiv ? 0 : npiv));
        Put32(payload + 12, ResourceTimeoutMs);
    }
    else
    {
        constexpr unsigned continuouslyIncreasing = 0x8000;
        Put16(payload + 8, continuouslyIncreasing);
        Put16(payload + 12, 255);  // concurrent sequences
        Put16(payload + 14, 0x1F); // relative offset for every kind of information
    }
    Put32(payload + 16, ErrorTimeoutMs);
    Put64(payload + 20, portName);
    Put64(payload + 28, nodeName);
    Byte* class3 = payload + 36 + 2 * 16;
    Put16(class3, 0x8800); // valid, sequential delivery
    Put16(class3 + 6, FrameBytes);
    Put16(class3 + 8, 255);
    Put8(class3 + 13, 1);
}

void ReceiveFcoe(Port& port, Byte* frame, std::size_t size)
{
    if (size < FcoeHeader + FcHeader + FcoeTrailer || port.vlanAnswer != 0 || GetMac(frame) != port.mac)
        return;
    const Byte* fc = frame + FcoeHeader;
    const std::size_t payload = size - FcoeHeader - FcHeader - FcoeTrailer;
    const std::uint32_t to = Get24(fc + 1);
    Login* from = FindById(Get24(fc + 5));
    if (from == nullptr || from->port != &port)
        return;
    if (to < FirstService)
    {
        const Login* receiver = FindById(to);
        if (receiver == nullptr)
        {
            Log("no port %06x (from %06x)", to, from->id);
            return;
        }
        Put(frame, FabricMac(to));
        Put(frame + 6, receiver->port->mac);
        Send(*receiver->port, frame, size);
    }
    else if (fc[0] == ElsRequest && payload >= 4)
        ReceiveEls(*from, fc, fc + FcHeader);
    else if (fc[0] == CtRequest && fc[8] == CtType && payload >= 16)
        ReceiveCt(*from, fc, fc + FcHeader, payload);
}

} // namespace fcfsim

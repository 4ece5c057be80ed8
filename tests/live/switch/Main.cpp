// fcfsim: a very small FCoE forwarder (FCF) for a test guest.
//
// It speaks just enough of FIP (FC-BB-5), FC-LS and FC-GS for the Linux software FCoE stack to
//   - discover a forwarder            -> /sys/bus/fcoe/devices/fcf_N
//   - log in to a fabric (FLOGI)      -> fc_host Online, port_id, fabric_name
//   - create NPIV ports (FDISC)       -> /sys/class/fc_vports
//   - query a name server (GPN_FT..)  -> /sys/class/fc_remote_ports
//   - exchange FC frames with the other ports logged in to the same forwarder, so that a tcm_fc target port becomes
//     visible as disks.
// One thread, no security.
//
// usage: fcfsim [options] PORT_IF...
//   -f WWN    fabric name      (16 hex digits, default 1000feedface0001)
//   -w WWN    switch name      (16 hex digits, default 2001feedface0001)
//   -p N      priority 0..255  (default 128; the lowest value is preferred)
//   -i N      virtual fabric id (default 0)
//   -m HEX    FC-MAP           (default 0efc00)
//   -k MS     keep-alive period in ms (default 8000)
//   -D        say that no keep-alive is needed
//   -d N      domain id used in N_Port ids (default 1)
//   -V IF:VID answer FIP VLAN discovery on untagged interface IF with VID
//   -a        advertise only: never answer a login
//   -N        do not offer NPIV
//   -v        log to stdout
//
// usage: fcfsim -C IF COMMAND    send COMMAND to every fcfsim behind IF:
//          cvl      clear the virtual link of every port that is logged in
//          hang     stop answering and advertising
//          resume   answer again
#include "Switch.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <arpa/inet.h>
#include <net/if.h>
#include <netpacket/packet.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace fcfsim
{

Options options;
std::vector<Port> ports;

namespace
{

constexpr unsigned AnyProtocol = 3;       // ETH_P_ALL
constexpr std::size_t MaxPorts = 16;      // logins point at them: the vector never moves
constexpr std::size_t CommandLength = 16; // of the remote control

bool hung = false;

bool OpenPort(const char* name, unsigned vlanAnswer)
{
    if (ports.size() == MaxPorts)
        return false;
    Port port;
    port.name = name;
    port.fd = socket(AF_PACKET, SOCK_RAW, htons(AnyProtocol));
    ifreq request = {};
    std::strncpy(request.ifr_name, name, sizeof request.ifr_name - 1);
    if (port.fd < 0 || ioctl(port.fd, SIOCGIFINDEX, &request) < 0)
    {
        std::perror(name);
        return false;
    }
    port.index = request.ifr_ifindex;
    sockaddr_ll address = {};
    address.sll_family = AF_PACKET;
    address.sll_protocol = htons(AnyProtocol);
    address.sll_ifindex = port.index;
    packet_mreq promiscuous = {};
    promiscuous.mr_ifindex = port.index;
    promiscuous.mr_type = PACKET_MR_PROMISC;
    if (ioctl(port.fd, SIOCGIFHWADDR, &request) < 0 ||
        bind(port.fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) < 0 ||
        setsockopt(port.fd, SOL_PACKET, PACKET_ADD_MEMBERSHIP, &promiscuous, sizeof promiscuous) < 0)
    {
        std::perror(name);
        return false;
    }
    port.mac = GetMac(reinterpret_cast<const Byte*>(request.ifr_hwaddr.sa_data));
    // FCoE expects a lossless link: never drop a frame for want of socket memory.
    const int socketBytes = 64 << 20;
    setsockopt(port.fd, SOL_SOCKET, SO_RCVBUFFORCE, &socketBytes, sizeof socketBytes);
    setsockopt(port.fd, SOL_SOCKET, SO_SNDBUFFORCE, &socketBytes, sizeof socketBytes);
    port.vlanAnswer = vlanAnswer;
    ports.push_back(std::move(port));
    ports.back().area = static_cast<unsigned>(ports.size());
    return true;
}

// A cable that is out, or a port set down, ends the logins behind it.
void CheckLinks()
{
    for (Port& port : ports)
    {
        ifreq request = {};
        std::strncpy(request.ifr_name, port.name.c_str(), sizeof request.ifr_name - 1);
        if (ioctl(port.fd, SIOCGIFFLAGS, &request) < 0)
            continue;
        const bool up = (request.ifr_flags & IFF_UP) != 0 && (request.ifr_flags & IFF_RUNNING) != 0;
        if (up == port.up)
            continue;
        port.up = up;
        Log("%s is %s", port.name.c_str(), up ? "up" : "down");
        if (up && port.vlanAnswer == 0)
            Advertise(port, AllEnodes, false, 0);
        for (Login& login : logins)
            if (!up && login.used && login.port == &port)
                LogOut(login, "link down");
    }
}

void Obey(const Port& port, const char* command)
{
    Log("control on %s: %s", port.name.c_str(), command);
    const std::string text = command;
    if (text == "cvl")
        ClearLinks();
    else if (text == "hang" || text == "resume")
        hung = text == "hang";
}

int SendCommand(const char* interfaceName, const char* command)
{
    if (!OpenPort(interfaceName, 0))
        return 1;
    std::array<Byte, MinFrame> frame;
    frame.fill(0);
    std::fill_n(frame.begin(), 6, Byte{0xFF});
    Put(&frame[6], ports[0].mac);
    Put16(&frame[12], EtherControl);
    std::strncpy(reinterpret_cast<char*>(&frame[EtherHeader]), command, CommandLength - 1);
    options.verbose = true;
    Send(ports[0], frame.data(), frame.size());
    return 0;
}

bool ReadOptions(int argc, char** argv)
{
    const auto number = [](int base) { return static_cast<unsigned>(std::strtoul(optarg, nullptr, base)); };
    for (int option = 0; (option = getopt(argc, argv, "f:w:p:i:m:k:Dd:V:aNv")) != -1;)
        switch (option)
        {
        case 'f':
            options.fabricName = std::strtoull(optarg, nullptr, 16);
            break;
        case 'w':
            options.switchName = std::strtoull(optarg, nullptr, 16);
            break;
        case 'p':
            options.priority = number(10);
            break;
        case 'i':
            options.fabricId = number(10);
            break;
        case 'm':
            options.fcMap = number(16);
            break;
        case 'k':
            options.keepAliveMs = number(10);
            break;
        case 'D':
            options.noKeepAlive = true;
            break;
        case 'd':
            options.domain = number(10);
            break;
        case 'a':
            options.advertiseOnly = true;
            break;
        case 'N':
            options.noNpiv = true;
            break;
        case 'v':
            options.verbose = true;
            break;
        case 'V':
        {
            const std::string text = optarg;
            const std::size_t colon = text.rfind(':');
            if (colon == std::string::npos ||
                !OpenPort(text.substr(0, colon).c_str(),
                          static_cast<unsigned>(std::strtoul(text.c_str() + colon + 1, nullptr, 10))))
                return false;
            break;
        }
        default:
            return false;
        }
    return std::all_of(argv + optind, argv + argc, [](const char* name) { return OpenPort(name, 0); });
}

void Receive(Port& port)
{
    static std::array<Byte, MaxFrame> frame;
    sockaddr_ll from = {};
    socklen_t fromSize = sizeof from;
    const ssize_t got =
        recvfrom(port.fd, frame.data(), frame.size() - 1, 0, reinterpret_cast<sockaddr*>(&from), &fromSize);
    if (got < static_cast<ssize_t>(EtherHeader) || from.sll_pkttype == PACKET_OUTGOING)
        return;
    const auto size = static_cast<std::size_t>(got);
    const unsigned protocol = Get16(&frame[12]);
    if (protocol == EtherControl)
    {
        frame[std::min(size, EtherHeader + CommandLength)] = 0;
        Obey(port, reinterpret_cast<const char*>(&frame[EtherHeader]));
    }
    if (hung)
        return;
    if (protocol == EtherFip)
        ReceiveFip(port, frame.data(), size);
    else if (protocol == EtherFcoe)
        ReceiveFcoe(port, frame.data(), size);
}

[[noreturn]] void Serve()
{
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds tick(200);
    Clock::time_point nextLinks;
    Clock::time_point nextAdvertisement;
    std::vector<pollfd> waits;
    for (const Port& port : ports)
        waits.push_back({port.fd, POLLIN, 0});
    for (;;)
    {
        const Clock::time_point now = Clock::now();
        if (now >= nextLinks)
        {
            CheckLinks();
            nextLinks = now + tick;
        }
        if (now >= nextAdvertisement)
        {
            for (const Port& port : ports)
                if (!hung && port.vlanAnswer == 0 && port.up)
                    Advertise(port, AllEnodes, false, 0);
            nextAdvertisement = now + std::chrono::milliseconds(options.keepAliveMs);
        }
        if (poll(waits.data(), waits.size(), static_cast<int>(tick.count())) <= 0)
            continue;
        for (std::size_t i = 0; i < waits.size(); ++i)
            if ((waits[i].revents & (POLLIN | POLLERR)) != 0)
                Receive(ports[i]);
    }
}

} // namespace

void Log(const char* format, ...)
{
    if (!options.verbose)
        return;
    va_list arguments;
    va_start(arguments, format);
    std::fputs("fcfsim: ", stdout);
    std::vprintf(format, arguments);
    std::puts("");
    std::fflush(stdout);
    va_end(arguments);
}

void Send(const Port& port, const Byte* frame, std::size_t size)
{
    sockaddr_ll to = {};
    to.sll_family = AF_PACKET;
    to.sll_ifindex = port.index;
    to.sll_halen = 6;
    std::copy_n(frame, to.sll_halen, to.sll_addr);
    if (sendto(port.fd, frame, size, 0, reinterpret_cast<const sockaddr*>(&to), sizeof to) < 0)
        Log("send on %s: %s", port.name.c_str(), std::strerror(errno));
}

} // namespace fcfsim

int main(int argc, char** argv)
{
    using namespace fcfsim;
    ports.reserve(MaxPorts);
    if (argc == 4 && std::string(argv[1]) == "-C")
        return SendCommand(argv[2], argv[3]);
    if (!ReadOptions(argc, argv) || ports.empty())
    {
        std::fputs("usage: fcfsim [-f WWN] [-w WWN] [-p N] [-i N] [-m HEX] [-k MS] [-D] [-d N] [-V IF:VID] [-a] [-N] "
                   "[-v] PORT_IF...\n       fcfsim -C IF cvl|hang|resume\n",
                   stderr);
        return 2;
    }
    Serve();
}

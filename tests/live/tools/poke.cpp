// poke: writes a value to an attribute with one write, as the kernel wants it, and says what the kernel answered.
//
// usage: poke FILE VALUE
// prints 'poke FILE <- "VALUE": ok (N bytes)' or '...: open|write ERRNO (number)'

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

#include <fcntl.h>
#include <unistd.h>

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    const auto refused = [](const char* call)
    {
        const char* name = strerrorname_np(errno);
        std::printf("%s %s (%d)\n", call, name != nullptr ? name : "?", errno);
        return 1;
    };
    std::printf("poke %s <- \"%s\": ", argv[1], argv[2]);
    const int file = open(argv[1], O_WRONLY);
    if (file < 0)
        return refused("open");
    const std::string text = std::string(argv[2]) + "\n";
    const ssize_t written = write(file, text.data(), text.size());
    if (written < 0)
        return refused("write");
    std::printf("ok (%zd bytes)\n", written);
    return 0;
}

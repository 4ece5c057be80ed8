// ChildProcess: lines.

#include "tests/support/ChildProcess.h"

namespace orl::test
{

bool ChildProcess::ReadLine(std::string& line)
{
    for (;;)
    {
        const std::size_t end = m_read.find('\n');
        if (end != std::string::npos)
        {
            line = m_read.substr(0, end);
            m_read.erase(0, end + 1);
            if (line.ends_with('\r'))
                line.pop_back();
            return true;
        }
        char block[4096];
        const std::size_t length = Read(block, sizeof block);
        if (length == 0)
            return false;
        m_read.append(block, length);
    }
}

} // namespace orl::test

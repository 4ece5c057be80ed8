// The service: the namespace, the provider's registration, the classes, and whether they answer.
#include "tools/orlwmi/doctor/Checks.h"

#include "tools/orlwmi/Connection.h"
#include "tools/orlwmi/Failure.h"
#include "tools/orlwmi/Results.h"

namespace orl::client
{
namespace
{

constexpr const char* Classes[] = {"Zarn_FCOEHBA", "Zarn_PhysicalEthernetAdapter", "Zarn_WarningMessage"};
constexpr const char* Registration = R"(__Win32Provider.Name="Orl2InstUtility")";

// Discards what the requests would flush.
class NoOutput : public Output
{
protected:
    void Send(std::string_view) override {}
};

bool EndsTheWait(const Failure& failure)
{
    return failure.Code() == ExitCode::TimedOut || failure.Code() == ExitCode::Interrupted;
}

// The failure as one text: message and extended status, without the program's name.
std::string Why(const Failure& failure)
{
    std::string lines = failure.Lines();
    lines.erase(0, std::string("orlwmi: ").size());
    lines.erase(lines.find_last_not_of('\n') + 1);
    return lines;
}

// Runs one request and reports on it. True when it succeeded.
template <typename Request>
bool Examine(Findings& findings, const char* area, const std::string& subject, const char* advice, Request request)
{
    try
    {
        findings.push_back({area, subject, Health::Right, request(), ""});
        return true;
    }
    catch (const Failure& failure)
    {
        findings.push_back({area, subject, Health::Wrong, Why(failure), advice});
        if (EndsTheWait(failure))
        {
            throw;
        }
        return false;
    }
}

std::string CountInstances(IWbemServices* services, const std::string& className, const Deadline& deadline)
{
    NoOutput none;
    unsigned long long count = 0;
    for (Results results = Results::Instances(services, className); results.Next(deadline, none);)
    {
        ++count;
    }
    return std::to_string(count) + (count == 1 ? " instance" : " instances");
}

} // namespace

void CheckService(const Options& options, const Deadline& deadline, Findings& findings)
{
    const std::string path = NamespacePath(options.server, options.nameSpace);
    CComPtr<IWbemServices> services;
    const bool connected =
        Examine(findings, "Service", path, "Check that a WMI service is registered and that its schema can be read.",
                [&]
                {
                    services = Connect(path, deadline);
                    return std::string("the namespace answers");
                });
    if (!connected)
    {
        return;
    }
    constexpr const char* Compile = "Compile the MOF files of the schema folder into the namespace.";
    Examine(findings, "Schema", Registration, Compile,
            [&]
            {
                static_cast<void>(GetObjectAt(services, Registration, deadline));
                return std::string("the provider is registered");
            });
    for (const char* className : Classes)
    {
        Examine(findings, "Schema", className, Compile,
                [&, className]
                {
                    static_cast<void>(GetObjectAt(services, className, deadline));
                    return std::string("the class is there");
                });
    }
    Examine(findings, "Service", "Zarn_FCOEHBA", "Correct what is found wrong above; the trace log tells more.",
            [&] { return CountInstances(services, "Zarn_FCOEHBA", deadline); });
}

} // namespace orl::client

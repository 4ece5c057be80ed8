// Output: where results go. Bytes are UTF-8 and reach the receiver unchanged on every platform.
#pragma once

#include <exception>
#include <string>
#include <string_view>

namespace orl::client
{

// The receiver of a pipe has closed it: there is nobody to print for, and nothing to complain about.
class ReceiverGone : public std::exception
{
public:
    [[nodiscard]] const char* what() const noexcept override { return "the receiver of the output has closed it"; }
};

class Output
{
public:
    Output() = default;
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    virtual ~Output() = default;

    // Holds back up to BufferSize bytes. Throws ReceiverGone, or Failure (ExitCode::NoOutput) when the bytes cannot be
    // written.
    void Write(std::string_view bytes);

    // Hands on what is held back. Called before waiting for more results, so that what is there can be seen.
    void Flush();

    static constexpr size_t BufferSize = 65536;

protected:
    virtual void Send(std::string_view bytes) = 0;

private:
    std::string m_held;
};

// Standard output.
class StandardOutput : public Output
{
public:
    // A write has failed, so the results that were still to come were given up.
    [[nodiscard]] bool IsBroken() const { return m_broken; }

protected:
    void Send(std::string_view bytes) override;

private:
    bool m_broken = false;
};

} // namespace orl::client

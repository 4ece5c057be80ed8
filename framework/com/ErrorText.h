// ErrorText: words for the caller of a synchronous COM call that failed.
#pragma once

namespace orl
{

// Leaves the text in the thread's error object, from where the caller reads it. Best effort: without memory the caller
// has the status alone.
void SetErrorText(const wchar_t* source, const wchar_t* description) noexcept;

} // namespace orl

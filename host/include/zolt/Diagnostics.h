// The host's assertion handler.
//
// Misuse that the library survives (an index out of range, a missing referenced
// record, a duplicate key) is reported here, and the call then goes on with a fallback
// value. The default handler writes one line to stderr; tests and applications install
// their own.
#pragma once

#include <functional>

namespace Zolt::Diagnostics {

using AssertHandler = std::function<void(const char* file, int line, const char* function, const char* message)>;

// Installs `handler` and returns the previous one. An empty handler restores the default.
AssertHandler SetAssertHandler(AssertHandler handler);

namespace Details {
// Reports to the current handler and returns.
void InvokeCurrentAssertHandler(const char* file, int line, const char* function, const char* message);
}  // namespace Details

}  // namespace Zolt::Diagnostics

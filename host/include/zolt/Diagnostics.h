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

// The debug trace channel. Debugging aids (TraceDump) send their lines here in debug
// builds of the library; release builds send nothing. No handler is installed by
// default, so nothing is printed unless an application asks for it.
using TraceHandler = std::function<void(const char* line)>;
TraceHandler SetTraceHandler(TraceHandler handler);
void Trace(const char* line);

namespace Details {
// Reports to the current handler and returns.
void InvokeCurrentAssertHandler(const char* file, int line, const char* function, const char* message);
}  // namespace Details

}  // namespace Zolt::Diagnostics

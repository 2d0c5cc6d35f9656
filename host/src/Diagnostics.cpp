#include <afx/Afx.h>
#include <zolt/Diagnostics.h>

#include <cstdio>
#include <mutex>
#include <utility>

namespace {

// A replaceable handler, read under a lock and called outside it.
template <class Handler>
class HandlerSlot {
 public:
  Handler Exchange(Handler handler) {
    std::lock_guard<std::mutex> lock(m_mutex);
    return std::exchange(m_handler, std::move(handler));
  }
  Handler Get() {
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_handler;
  }

 private:
  std::mutex m_mutex;
  Handler m_handler;
};

HandlerSlot<Zolt::Diagnostics::AssertHandler>& AssertSlot() {
  static HandlerSlot<Zolt::Diagnostics::AssertHandler> slot;
  return slot;
}
HandlerSlot<AfxMessageBoxHandler>& MessageBoxSlot() {
  static HandlerSlot<AfxMessageBoxHandler> slot;
  return slot;
}

HandlerSlot<Zolt::Diagnostics::TraceHandler>& TraceSlot() {
  static HandlerSlot<Zolt::Diagnostics::TraceHandler> slot;
  return slot;
}

}  // namespace

namespace Zolt::Diagnostics {

AssertHandler SetAssertHandler(AssertHandler handler) { return AssertSlot().Exchange(std::move(handler)); }

TraceHandler SetTraceHandler(TraceHandler handler) { return TraceSlot().Exchange(std::move(handler)); }

void Trace(const char* line) {
  if (const TraceHandler handler = TraceSlot().Get()) handler(line ? line : "");
}

namespace Details {
void InvokeCurrentAssertHandler(const char* file, int line, const char* function, const char* message) {
  if (const AssertHandler handler = AssertSlot().Get()) {
    handler(file, line, function, message);
    return;
  }
  std::fprintf(stderr, "assertion: %s(%d): %s%s%s\n", file ? file : "?", line, function ? function : "?",
               message && *message ? ": " : "", message ? message : "");
}
}  // namespace Details

}  // namespace Zolt::Diagnostics

// --- message box and user exception ------------------------------------------------

AfxMessageBoxHandler AfxSetMessageBoxHandler(AfxMessageBoxHandler handler) {
  return MessageBoxSlot().Exchange(std::move(handler));
}

AfxMessageBoxHandler AfxSetMessageBoxHandler(std::function<void(const CString& text)> handler) {
  if (!handler) return AfxSetMessageBoxHandler(AfxMessageBoxHandler());
  return AfxSetMessageBoxHandler([handler = std::move(handler)](const CString& text, unsigned) { handler(text); });
}

int AfxMessageBox(const CString& text, unsigned type, unsigned /*helpId*/) {
  if (const AfxMessageBoxHandler handler = MessageBoxSlot().Get()) {
    handler(text, type);
  } else {
    std::fprintf(stderr, "%s%s\n", (type & MB_ICONERROR) ? "error: " : "", text.ToUtf8().c_str());
  }
  return IDOK;
}

void AfxThrowUserException() { throw CUserException(); }

// The platform's message box and user exception.
//
// AfxMessageBox hands its text to a replaceable sink (the default writes it to stderr);
// AfxThrowUserException throws CUserException, which ends the current operation and
// which callers catch.
#pragma once

#include <afx/CString.h>

#include <exception>
#include <functional>

// Message box styles and results used by the library.
inline constexpr unsigned MB_OK = 0x0;
inline constexpr unsigned MB_ICONERROR = 0x10;
inline constexpr int IDOK = 1;

// A sink receives the text and the style (MB_ICONERROR, ...) the box was shown with.
using AfxMessageBoxHandler = std::function<void(const CString& text, unsigned type)>;

// Replaces the message-box sink and returns the previous one; an empty handler restores
// the default.
AfxMessageBoxHandler AfxSetMessageBoxHandler(AfxMessageBoxHandler handler);
// Kept for sinks written before the style was passed on: they receive the text only.
AfxMessageBoxHandler AfxSetMessageBoxHandler(std::function<void(const CString& text)> handler);

// Shows `text` through the current sink and returns IDOK.
int AfxMessageBox(const CString& text, unsigned type = MB_OK, unsigned helpId = 0);

class CUserException : public std::exception {
 public:
  const char* what() const noexcept override { return "user exception"; }
};

[[noreturn]] void AfxThrowUserException();

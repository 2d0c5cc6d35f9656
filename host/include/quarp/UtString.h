// UtString: the framework's wide string (UTF-16 code units), used for type names and
// class names. It has every operation of CString.
#pragma once

#include <afx/CString.h>

namespace Quarp {

class UtString : public CString {
 public:
  using CString::CString;
  UtString() noexcept = default;
  UtString(const CString& s) : CString(s) {}                 // NOLINT: implicit
  UtString(CString&& s) noexcept : CString(std::move(s)) {}  // NOLINT: implicit
  // Narrow text is taken as UTF-8.
  explicit UtString(const char* narrow) : CString(FromUtf8(narrow ? narrow : "")) {}

  UtString& operator=(const wchar_t* text) {
    CString::operator=(text);
    return *this;
  }
  UtString& operator=(const char* narrow) {
    CString::operator=(FromUtf8(narrow ? narrow : ""));
    return *this;
  }
  UtString& operator=(const CString& s) {
    CString::operator=(s);
    return *this;
  }
};

}  // namespace Quarp

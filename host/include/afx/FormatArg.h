// Type-safe arguments for the printf-style formatting of CString::Format.
//
// Every argument is captured with its type, so a conversion never reads the wrong
// number of bytes. The conversions keep the semantics of the platform the library was
// written for, where `long` is 32 bits wide:
//   %d %i %u %x %X %o (and their h and l forms) use the low 32 bits of the argument,
//   so "%ld" of a 64-bit value prints the signed decimal of its low 32 bits;
//   %lld %I64d (and the unsigned forms) use all 64 bits;
//   %f %e %g %a (with or without l) print a double; an integer argument is converted;
//   %s %S %ls %hs take the system's strings (CString, wide and UTF-8 text);
//   %c takes a character code; %p a pointer; %% is a percent sign.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

class CString;
namespace Quarp {
class DbId;
}

namespace Afx {

struct FormatArg {
  enum class Kind : std::uint8_t { Signed, Unsigned, Double, Utf16, Wide, Utf8, Pointer };

  Kind kind = Kind::Signed;
  union {
    std::int64_t i;
    std::uint64_t u;
    double d;
    const void* p;
  };
  std::size_t length = 0;  // for the three string kinds: code units in p

  FormatArg() : i(0) {}
};

FormatArg MakeFormatArg(const CString& s) noexcept;
FormatArg MakeFormatArg(const Quarp::DbId& id) noexcept;

inline FormatArg StringArg(FormatArg::Kind kind, const void* text, std::size_t length) noexcept {
  FormatArg a;
  a.kind = kind;
  a.p = text;
  a.length = length;
  return a;
}

inline FormatArg MakeFormatArg(const wchar_t* s) noexcept {
  return StringArg(FormatArg::Kind::Wide, s, s ? std::char_traits<wchar_t>::length(s) : 0);
}
inline FormatArg MakeFormatArg(wchar_t* s) noexcept { return MakeFormatArg(static_cast<const wchar_t*>(s)); }
inline FormatArg MakeFormatArg(const char* s) noexcept {
  return StringArg(FormatArg::Kind::Utf8, s, s ? std::char_traits<char>::length(s) : 0);
}
inline FormatArg MakeFormatArg(char* s) noexcept { return MakeFormatArg(static_cast<const char*>(s)); }
inline FormatArg MakeFormatArg(const char16_t* s) noexcept {
  return StringArg(FormatArg::Kind::Utf16, s, s ? std::char_traits<char16_t>::length(s) : 0);
}
inline FormatArg MakeFormatArg(std::string_view s) noexcept {
  return StringArg(FormatArg::Kind::Utf8, s.empty() ? "" : s.data(), s.size());
}
inline FormatArg MakeFormatArg(const std::string& s) noexcept { return MakeFormatArg(std::string_view(s)); }
inline FormatArg MakeFormatArg(std::u16string_view s) noexcept {
  return StringArg(FormatArg::Kind::Utf16, s.empty() ? u"" : s.data(), s.size());
}

// Numbers, characters, enumerations and pointers.
template <class T>
requires(std::is_arithmetic_v<T> || std::is_enum_v<T> || std::is_pointer_v<T>) FormatArg MakeFormatArg(T v)
noexcept {
  FormatArg a;
  if constexpr (std::is_enum_v<T>) {
    return MakeFormatArg(static_cast<std::underlying_type_t<T>>(v));
  } else if constexpr (std::is_pointer_v<T>) {
    a.kind = FormatArg::Kind::Pointer;
    a.p = static_cast<const void*>(v);
  } else if constexpr (std::is_floating_point_v<T>) {
    a.kind = FormatArg::Kind::Double;
    a.d = static_cast<double>(v);
  } else if constexpr (std::is_same_v<T, bool>) {
    a.kind = FormatArg::Kind::Signed;
    a.i = v ? 1 : 0;
  } else if constexpr (std::is_same_v<T, char16_t> || std::is_same_v<T, char32_t> || std::is_same_v<T, wchar_t>) {
    a.kind = FormatArg::Kind::Unsigned;
    a.u = static_cast<std::uint64_t>(v);
  } else if constexpr (std::is_signed_v<T>) {
    a.kind = FormatArg::Kind::Signed;
    a.i = static_cast<std::int64_t>(v);
  } else {
    a.kind = FormatArg::Kind::Unsigned;
    a.u = static_cast<std::uint64_t>(v);
  }
  return a;
}

// Formats into UTF-16 code units, appending to `out`.
void FormatInto(std::u16string& out, std::u16string_view format, const FormatArg* args, std::size_t count);

}  // namespace Afx

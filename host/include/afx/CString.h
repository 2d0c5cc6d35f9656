// CString: the platform's wide string, held as UTF-16 code units.
//
// Text round-trips byte-exactly through archives: whatever code units were stored are
// read back, valid UTF-16 or not. Conversions to and from UTF-8 are provided for the
// terminal and for files; unpaired surrogates and invalid UTF-8 become U+FFFD there.
//
// An empty string allocates nothing (the object is one pointer), so records that carry
// a name or a comment cost nothing for it until one is set.
#pragma once

#include <afx/FormatArg.h>

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

class CString {
 public:
  CString() noexcept = default;
  CString(const wchar_t* text);   // NOLINT: implicit, as on the reference platform
  CString(const char16_t* text);  // NOLINT
  CString(const char16_t* text, int length);
  explicit CString(std::u16string_view text);
  CString(const CString& other);
  CString(CString&& other) noexcept : m_rep(other.m_rep) { other.m_rep = nullptr; }
  ~CString();

  CString& operator=(const CString& other);
  CString& operator=(CString&& other) noexcept;
  CString& operator=(const wchar_t* text);
  CString& operator=(const char16_t* text);

  // UTF-8 in and out.
  static CString FromUtf8(std::string_view utf8);
  std::string ToUtf8() const;

  int GetLength() const noexcept { return m_rep ? m_rep->length : 0; }
  bool IsEmpty() const noexcept { return GetLength() == 0; }
  void Empty() noexcept;

  // The code units, NUL-terminated; never null.
  const char16_t* GetString() const noexcept { return m_rep ? m_rep->data : u""; }
  std::u16string_view View() const noexcept {
    return m_rep ? std::u16string_view(m_rep->data, static_cast<std::size_t>(m_rep->length)) : std::u16string_view();
  }

  // Out-of-range indices read as 0 and write nothing.
  char16_t GetAt(int index) const noexcept;
  char16_t operator[](int index) const noexcept { return GetAt(index); }
  void SetAt(int index, char16_t ch) noexcept;

  // Ordinal (code unit) comparison: negative, zero or positive.
  int Compare(const CString& other) const noexcept;

  CString& operator+=(const CString& other);
  CString& operator+=(const wchar_t* text);
  CString& operator+=(char16_t ch);
  void Append(std::u16string_view text);

  // Searching; -1 when not found.
  int Find(char16_t ch, int start = 0) const noexcept;
  int Find(const CString& sub, int start = 0) const noexcept;
  int ReverseFind(char16_t ch) const noexcept;

  // Substrings; out-of-range arguments are clamped.
  CString Mid(int first) const;
  CString Mid(int first, int count) const;
  CString Left(int count) const;
  CString Right(int count) const;

  // Removes up to `count` code units from `index`; returns the new length.
  int Delete(int index, int count = 1);

  // printf-style formatting with the reference platform's semantics (see FormatArg.h).
  template <class... Args>
  void Format(const wchar_t* format, const Args&... args) {
    const Afx::FormatArg packed[] = {Afx::MakeFormatArg(args)..., Afx::FormatArg()};
    FormatPacked(false, WideToUtf16(format), packed, sizeof...(Args));
  }
  template <class... Args>
  void Format(const char16_t* format, const Args&... args) {
    const Afx::FormatArg packed[] = {Afx::MakeFormatArg(args)..., Afx::FormatArg()};
    FormatPacked(false, std::u16string(format), packed, sizeof...(Args));
  }
  template <class... Args>
  void AppendFormat(const wchar_t* format, const Args&... args) {
    const Afx::FormatArg packed[] = {Afx::MakeFormatArg(args)..., Afx::FormatArg()};
    FormatPacked(true, WideToUtf16(format), packed, sizeof...(Args));
  }
  // A new formatted string.
  template <class... Args>
  static CString Formatted(const wchar_t* format, const Args&... args) {
    CString s;
    s.Format(format, args...);
    return s;
  }

  friend bool operator==(const CString& a, const CString& b) noexcept { return a.View() == b.View(); }
  friend bool operator==(const CString& a, const wchar_t* b) noexcept { return a.EqualsWide(b); }
  friend bool operator==(const CString& a, const char16_t* b) noexcept {
    return a.View() == std::u16string_view(b ? b : u"");
  }
  friend std::strong_ordering operator<=>(const CString& a, const CString& b) noexcept { return a.View() <=> b.View(); }
  friend CString operator+(const CString& a, const CString& b);
  friend CString operator+(const CString& a, const wchar_t* b);
  friend CString operator+(const wchar_t* a, const CString& b);

  // Converts wide text (UTF-32 on this platform) to UTF-16 code units.
  static std::u16string WideToUtf16(const wchar_t* text);

 private:
  struct Rep {
    std::int32_t length;
    std::int32_t capacity;
    char16_t data[1];
  };
  static Rep* Allocate(int capacity);
  void Assign(std::u16string_view text);
  void Reserve(int capacity);
  bool EqualsWide(const wchar_t* text) const noexcept;
  void FormatPacked(bool append, const std::u16string& format, const Afx::FormatArg* args, std::size_t count);

  Rep* m_rep = nullptr;
};

// Writes the text as UTF-8 (for logs and test output).
std::ostream& operator<<(std::ostream& os, const CString& s);

template <>
struct std::hash<CString> {
  std::size_t operator()(const CString& s) const noexcept { return std::hash<std::u16string_view>()(s.View()); }
};

namespace Afx {
// UTF-8 <-> UTF-16 conversions used by CString; exposed for tools and tests.
std::u16string Utf8ToUtf16(std::string_view utf8);
std::string Utf16ToUtf8(std::u16string_view utf16);
}  // namespace Afx

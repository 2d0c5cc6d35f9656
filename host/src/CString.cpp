#include <afx/CString.h>
#include <quarp/DbId.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <new>
#include <ostream>

namespace {

constexpr char16_t kReplacement = 0xFFFD;

void AppendCodePoint(std::u16string& out, char32_t cp) {
  if (cp >= 0xD800 && cp <= 0xDFFF) {
    // A surrogate value standing alone in wide text: keep the code unit as it is, so
    // text that came from UTF-16 round-trips.
    out.push_back(static_cast<char16_t>(cp));
  } else if (cp < 0x10000) {
    out.push_back(static_cast<char16_t>(cp));
  } else if (cp <= 0x10FFFF) {
    cp -= 0x10000;
    out.push_back(static_cast<char16_t>(0xD800 + (cp >> 10)));
    out.push_back(static_cast<char16_t>(0xDC00 + (cp & 0x3FF)));
  } else {
    out.push_back(kReplacement);
  }
}

}  // namespace

namespace Afx {

std::u16string Utf8ToUtf16(std::string_view s) {
  std::u16string out;
  out.reserve(s.size());
  std::size_t i = 0;
  const std::size_t n = s.size();
  while (i < n) {
    const auto c = static_cast<unsigned char>(s[i]);
    if (c < 0x80) {
      out.push_back(c);
      ++i;
      continue;
    }
    int extra = 0;
    char32_t cp = 0;
    char32_t min = 0;
    if ((c & 0xE0) == 0xC0) {
      extra = 1;
      cp = c & 0x1F;
      min = 0x80;
    } else if ((c & 0xF0) == 0xE0) {
      extra = 2;
      cp = c & 0x0F;
      min = 0x800;
    } else if ((c & 0xF8) == 0xF0) {
      extra = 3;
      cp = c & 0x07;
      min = 0x10000;
    } else {
      out.push_back(kReplacement);
      ++i;
      continue;
    }
    std::size_t j = i + 1;
    bool ok = true;
    for (int k = 0; k < extra; ++k, ++j) {
      if (j >= n || (static_cast<unsigned char>(s[j]) & 0xC0) != 0x80) {
        ok = false;
        break;
      }
      cp = (cp << 6) | (static_cast<unsigned char>(s[j]) & 0x3F);
    }
    if (!ok || cp < min || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) {
      out.push_back(kReplacement);
      i = ok ? j : std::max(j, i + 1);
      continue;
    }
    AppendCodePoint(out, cp);
    i = j;
  }
  return out;
}

std::string Utf16ToUtf8(std::u16string_view s) {
  std::string out;
  out.reserve(s.size());
  for (std::size_t i = 0; i < s.size(); ++i) {
    char32_t cp = s[i];
    if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < s.size() && s[i + 1] >= 0xDC00 && s[i + 1] <= 0xDFFF) {
      cp = 0x10000 + ((cp - 0xD800) << 10) + (s[i + 1] - 0xDC00);
      ++i;
    } else if (cp >= 0xD800 && cp <= 0xDFFF) {
      cp = kReplacement;
    }
    if (cp < 0x80) {
      out.push_back(static_cast<char>(cp));
    } else if (cp < 0x800) {
      out.push_back(static_cast<char>(0xC0 | (cp >> 6)));
      out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    } else if (cp < 0x10000) {
      out.push_back(static_cast<char>(0xE0 | (cp >> 12)));
      out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
      out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    } else {
      out.push_back(static_cast<char>(0xF0 | (cp >> 18)));
      out.push_back(static_cast<char>(0x80 | ((cp >> 12) & 0x3F)));
      out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
      out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    }
  }
  return out;
}

FormatArg MakeFormatArg(const Quarp::DbId& id) noexcept {
  FormatArg a;
  a.kind = FormatArg::Kind::Unsigned;
  a.u = static_cast<std::uint64_t>(id);
  return a;
}

FormatArg MakeFormatArg(const CString& s) noexcept {
  return StringArg(FormatArg::Kind::Utf16, s.GetString(), static_cast<std::size_t>(s.GetLength()));
}

namespace {

struct Spec {
  bool left = false;
  bool plus = false;
  bool space = false;
  bool alt = false;
  bool zero = false;
  int width = -1;
  int precision = -1;
  enum class Length { None, Short, Char, Long, LongLong, Int64, Big } length = Length::None;
};

std::int64_t AsSigned(const FormatArg& a) {
  switch (a.kind) {
    case FormatArg::Kind::Signed:
      return a.i;
    case FormatArg::Kind::Unsigned:
      return static_cast<std::int64_t>(a.u);
    case FormatArg::Kind::Double:
      if (!(a.d == a.d)) return 0;
      if (a.d >= 9.2e18) return INT64_MAX;
      if (a.d <= -9.2e18) return INT64_MIN;
      return static_cast<std::int64_t>(a.d);
    case FormatArg::Kind::Pointer:
      return static_cast<std::int64_t>(reinterpret_cast<std::uintptr_t>(a.p));
    default:
      return 0;
  }
}

double AsDouble(const FormatArg& a) {
  switch (a.kind) {
    case FormatArg::Kind::Signed:
      return static_cast<double>(a.i);
    case FormatArg::Kind::Unsigned:
      return static_cast<double>(a.u);
    case FormatArg::Kind::Double:
      return a.d;
    default:
      return 0.0;
  }
}

void AppendAscii(std::u16string& out, const char* s, std::size_t n) {
  for (std::size_t i = 0; i < n; ++i) out.push_back(static_cast<unsigned char>(s[i]));
}

// Formats one numeric conversion through the C library, which defines the exact digits.
template <class T>
void AppendNumber(std::u16string& out, const Spec& spec, const char* lengthMod, char conv, T value) {
  char fmt[32];
  char* f = fmt;
  *f++ = '%';
  if (spec.left) *f++ = '-';
  if (spec.plus) *f++ = '+';
  if (spec.space) *f++ = ' ';
  if (spec.alt) *f++ = '#';
  if (spec.zero) *f++ = '0';
  if (spec.width >= 0) *f++ = '*';
  if (spec.precision >= 0) {
    *f++ = '.';
    *f++ = '*';
  }
  for (const char* l = lengthMod; *l;) *f++ = *l++;
  *f++ = conv;
  *f = '\0';

  char buf[128];
  const int width = spec.width;
  const int prec = spec.precision;
  auto print = [&](char* dst, std::size_t size) {
    if (width >= 0 && prec >= 0) return std::snprintf(dst, size, fmt, width, prec, value);
    if (width >= 0) return std::snprintf(dst, size, fmt, width, value);
    if (prec >= 0) return std::snprintf(dst, size, fmt, prec, value);
    return std::snprintf(dst, size, fmt, value);
  };
  const int n = print(buf, sizeof buf);
  if (n < 0) return;
  if (static_cast<std::size_t>(n) < sizeof buf) {
    AppendAscii(out, buf, static_cast<std::size_t>(n));
    return;
  }
  std::string big(static_cast<std::size_t>(n) + 1, '\0');
  print(big.data(), big.size());
  AppendAscii(out, big.data(), static_cast<std::size_t>(n));
}

void AppendPadded(std::u16string& out, const Spec& spec, std::u16string_view text) {
  if (spec.precision >= 0 && static_cast<std::size_t>(spec.precision) < text.size()) {
    text = text.substr(0, static_cast<std::size_t>(spec.precision));
  }
  const std::size_t pad =
      spec.width > 0 && static_cast<std::size_t>(spec.width) > text.size() ? spec.width - text.size() : 0;
  if (!spec.left) out.append(pad, u' ');
  out.append(text);
  if (spec.left) out.append(pad, u' ');
}

std::u16string StringOf(const FormatArg& a) {
  switch (a.kind) {
    case FormatArg::Kind::Utf16:
      if (!a.p) return u"(null)";
      return std::u16string(static_cast<const char16_t*>(a.p), a.length);
    case FormatArg::Kind::Wide: {
      if (!a.p) return u"(null)";
      std::u16string out;
      const auto* w = static_cast<const wchar_t*>(a.p);
      for (std::size_t i = 0; i < a.length; ++i) AppendCodePoint(out, static_cast<char32_t>(w[i]));
      return out;
    }
    case FormatArg::Kind::Utf8:
      if (!a.p) return u"(null)";
      return Utf8ToUtf16(std::string_view(static_cast<const char*>(a.p), a.length));
    case FormatArg::Kind::Double: {
      char buf[64];
      const int n = std::snprintf(buf, sizeof buf, "%g", a.d);
      std::u16string out;
      AppendAscii(out, buf, static_cast<std::size_t>(n));
      return out;
    }
    case FormatArg::Kind::Pointer:
      return a.p ? u"(pointer)" : u"(null)";
    case FormatArg::Kind::Signed:
    case FormatArg::Kind::Unsigned: {
      char buf[32];
      const int n = a.kind == FormatArg::Kind::Signed
                        ? std::snprintf(buf, sizeof buf, "%lld", static_cast<long long>(a.i))
                        : std::snprintf(buf, sizeof buf, "%llu", static_cast<unsigned long long>(a.u));
      std::u16string out;
      AppendAscii(out, buf, static_cast<std::size_t>(n));
      return out;
    }
  }
  return {};
}

}  // namespace

void FormatInto(std::u16string& out, std::u16string_view fmt, const FormatArg* args, std::size_t count) {
  std::size_t next = 0;
  auto take = [&]() -> const FormatArg* { return next < count ? &args[next++] : nullptr; };

  const std::size_t n = fmt.size();
  std::size_t i = 0;
  while (i < n) {
    const char16_t c = fmt[i];
    if (c != u'%') {
      const std::size_t start = i;
      while (i < n && fmt[i] != u'%') ++i;
      out.append(fmt.substr(start, i - start));
      continue;
    }
    ++i;
    if (i >= n) break;
    if (fmt[i] == u'%') {
      out.push_back(u'%');
      ++i;
      continue;
    }
    Spec spec;
    for (; i < n; ++i) {
      const char16_t f = fmt[i];
      if (f == u'-')
        spec.left = true;
      else if (f == u'+')
        spec.plus = true;
      else if (f == u' ')
        spec.space = true;
      else if (f == u'#')
        spec.alt = true;
      else if (f == u'0')
        spec.zero = true;
      else
        break;
    }
    if (i < n && fmt[i] == u'*') {
      const FormatArg* a = take();
      spec.width = a ? static_cast<int>(AsSigned(*a)) : 0;
      if (spec.width < 0) {
        spec.left = true;
        spec.width = -spec.width;
      }
      ++i;
    } else {
      while (i < n && fmt[i] >= u'0' && fmt[i] <= u'9') {
        spec.width = (spec.width < 0 ? 0 : spec.width) * 10 + (fmt[i] - u'0');
        if (spec.width > 100000) spec.width = 100000;
        ++i;
      }
    }
    if (i < n && fmt[i] == u'.') {
      ++i;
      spec.precision = 0;
      if (i < n && fmt[i] == u'*') {
        const FormatArg* a = take();
        spec.precision = a ? static_cast<int>(AsSigned(*a)) : 0;
        if (spec.precision < 0) spec.precision = -1;
        ++i;
      } else {
        while (i < n && fmt[i] >= u'0' && fmt[i] <= u'9') {
          spec.precision = spec.precision * 10 + (fmt[i] - u'0');
          if (spec.precision > 100000) spec.precision = 100000;
          ++i;
        }
      }
    }
    // Length modifiers.
    if (i < n) {
      if (fmt[i] == u'h') {
        ++i;
        spec.length = Spec::Length::Short;
        if (i < n && fmt[i] == u'h') {
          spec.length = Spec::Length::Char;
          ++i;
        }
      } else if (fmt[i] == u'l') {
        ++i;
        spec.length = Spec::Length::Long;
        if (i < n && fmt[i] == u'l') {
          spec.length = Spec::Length::LongLong;
          ++i;
        }
      } else if (fmt[i] == u'L' || fmt[i] == u'q' || fmt[i] == u'j') {
        spec.length = Spec::Length::LongLong;
        ++i;
      } else if (fmt[i] == u'z' || fmt[i] == u't') {
        spec.length = Spec::Length::LongLong;
        ++i;
      } else if (fmt[i] == u'I') {
        if (i + 2 < n && fmt[i + 1] == u'6' && fmt[i + 2] == u'4') {
          spec.length = Spec::Length::Int64;
          i += 3;
        } else if (i + 2 < n && fmt[i + 1] == u'3' && fmt[i + 2] == u'2') {
          spec.length = Spec::Length::None;
          i += 3;
        } else {
          spec.length = Spec::Length::LongLong;
          ++i;
        }
      } else if (fmt[i] == u'w') {
        ++i;
      }
    }
    if (i >= n) break;
    const char16_t conv = fmt[i++];
    const bool wide64 = spec.length == Spec::Length::LongLong || spec.length == Spec::Length::Int64;
    switch (conv) {
      case u'd':
      case u'i': {
        const FormatArg* a = take();
        const std::int64_t v = a ? AsSigned(*a) : 0;
        if (wide64) {
          AppendNumber(out, spec, "ll", 'd', static_cast<long long>(v));
        } else if (spec.length == Spec::Length::Short) {
          AppendNumber(out, spec, "", 'd', static_cast<int>(static_cast<std::int16_t>(v)));
        } else if (spec.length == Spec::Length::Char) {
          AppendNumber(out, spec, "", 'd', static_cast<int>(static_cast<std::int8_t>(v)));
        } else {
          // 32 bits wide, as `int` and `long` are on the reference platform.
          AppendNumber(out, spec, "", 'd', static_cast<int>(static_cast<std::int32_t>(static_cast<std::uint32_t>(v))));
        }
        break;
      }
      case u'u':
      case u'x':
      case u'X':
      case u'o': {
        const FormatArg* a = take();
        const auto v = static_cast<std::uint64_t>(a ? AsSigned(*a) : 0);
        const char cc = static_cast<char>(conv);
        if (wide64) {
          AppendNumber(out, spec, "ll", cc, static_cast<unsigned long long>(v));
        } else if (spec.length == Spec::Length::Short) {
          AppendNumber(out, spec, "", cc, static_cast<unsigned>(static_cast<std::uint16_t>(v)));
        } else if (spec.length == Spec::Length::Char) {
          AppendNumber(out, spec, "", cc, static_cast<unsigned>(static_cast<std::uint8_t>(v)));
        } else {
          AppendNumber(out, spec, "", cc, static_cast<unsigned>(static_cast<std::uint32_t>(v)));
        }
        break;
      }
      case u'f':
      case u'F':
      case u'e':
      case u'E':
      case u'g':
      case u'G':
      case u'a':
      case u'A': {
        const FormatArg* a = take();
        AppendNumber(out, spec, "", static_cast<char>(conv), a ? AsDouble(*a) : 0.0);
        break;
      }
      case u'c':
      case u'C': {
        const FormatArg* a = take();
        const auto v = a ? static_cast<std::uint64_t>(AsSigned(*a)) : 0;
        std::u16string ch;
        AppendCodePoint(ch, static_cast<char32_t>(v & 0x1FFFFF));
        AppendPadded(out, Spec{spec.left, false, false, false, false, spec.width, -1, Spec::Length::None}, ch);
        break;
      }
      case u's':
      case u'S': {
        const FormatArg* a = take();
        AppendPadded(out, spec, a ? StringOf(*a) : std::u16string());
        break;
      }
      case u'p': {
        const FormatArg* a = take();
        const void* p = a && a->kind == FormatArg::Kind::Pointer ? a->p : nullptr;
        AppendNumber(out, spec, "", 'p', p);
        break;
      }
      case u'n':
        take();  // never writes through an argument
        break;
      default:
        // Unknown conversion: shown as written.
        out.push_back(u'%');
        out.push_back(conv);
        break;
    }
  }
}

}  // namespace Afx

// ---------------------------------------------------------------------------------
// CString

CString::Rep* CString::Allocate(int capacity) {
  const std::size_t bytes = offsetof(Rep, data) + (static_cast<std::size_t>(capacity) + 1) * sizeof(char16_t);
  auto* rep = static_cast<Rep*>(::operator new(bytes));
  rep->length = 0;
  rep->capacity = capacity;
  rep->data[0] = 0;
  return rep;
}

void CString::Reserve(int capacity) {
  if (m_rep && m_rep->capacity >= capacity) return;
  int newCap = m_rep ? std::max(capacity, m_rep->capacity + m_rep->capacity / 2) : capacity;
  Rep* rep = Allocate(newCap);
  if (m_rep) {
    std::memcpy(rep->data, m_rep->data, (static_cast<std::size_t>(m_rep->length) + 1) * sizeof(char16_t));
    rep->length = m_rep->length;
    ::operator delete(m_rep);
  }
  m_rep = rep;
}

void CString::Assign(std::u16string_view text) {
  if (text.empty()) {
    Empty();
    return;
  }
  const int len = static_cast<int>(text.size());
  if (!m_rep || m_rep->capacity < len) {
    Empty();
    m_rep = Allocate(len);
  }
  std::memmove(m_rep->data, text.data(), text.size() * sizeof(char16_t));
  m_rep->length = len;
  m_rep->data[len] = 0;
}

std::u16string CString::WideToUtf16(const wchar_t* text) {
  std::u16string out;
  if (!text) return out;
  for (; *text; ++text) AppendCodePoint(out, static_cast<char32_t>(*text));
  return out;
}

CString::CString(const wchar_t* text) {
  if (text && *text) Assign(WideToUtf16(text));
}
CString::CString(const char16_t* text) {
  if (text) Assign(std::u16string_view(text));
}
CString::CString(const char16_t* text, int length) {
  if (text && length > 0) Assign(std::u16string_view(text, static_cast<std::size_t>(length)));
}
CString::CString(std::u16string_view text) { Assign(text); }
CString::CString(const CString& other) { Assign(other.View()); }
CString::~CString() { ::operator delete(m_rep); }

CString& CString::operator=(const CString& other) {
  if (this != &other) Assign(other.View());
  return *this;
}
CString& CString::operator=(CString&& other) noexcept {
  if (this != &other) {
    ::operator delete(m_rep);
    m_rep = other.m_rep;
    other.m_rep = nullptr;
  }
  return *this;
}
CString& CString::operator=(const wchar_t* text) {
  Assign(WideToUtf16(text));
  return *this;
}
CString& CString::operator=(const char16_t* text) {
  Assign(text ? std::u16string_view(text) : std::u16string_view());
  return *this;
}

CString CString::FromUtf8(std::string_view utf8) { return CString(std::u16string_view(Afx::Utf8ToUtf16(utf8))); }
std::string CString::ToUtf8() const { return Afx::Utf16ToUtf8(View()); }

void CString::Empty() noexcept {
  ::operator delete(m_rep);
  m_rep = nullptr;
}

char16_t CString::GetAt(int index) const noexcept {
  return index >= 0 && index < GetLength() ? m_rep->data[index] : char16_t(0);
}
void CString::SetAt(int index, char16_t ch) noexcept {
  if (index >= 0 && index < GetLength()) m_rep->data[index] = ch;
}

int CString::Compare(const CString& other) const noexcept { return View().compare(other.View()); }

void CString::Append(std::u16string_view text) {
  if (text.empty()) return;
  const int len = GetLength();
  const int add = static_cast<int>(text.size());
  if (m_rep && text.data() >= m_rep->data && text.data() <= m_rep->data + len) {
    Append(std::u16string(text));  // appending a part of itself
    return;
  }
  Reserve(len + add);
  std::memcpy(m_rep->data + len, text.data(), text.size() * sizeof(char16_t));
  m_rep->length = len + add;
  m_rep->data[m_rep->length] = 0;
}

CString& CString::operator+=(const CString& other) {
  if (&other == this) {
    const std::u16string copy(View());
    Append(copy);
  } else {
    Append(other.View());
  }
  return *this;
}
CString& CString::operator+=(const wchar_t* text) {
  Append(WideToUtf16(text));
  return *this;
}
CString& CString::operator+=(char16_t ch) {
  Append(std::u16string_view(&ch, 1));
  return *this;
}

CString operator+(const CString& a, const CString& b) {
  CString r(a);
  r += b;
  return r;
}
CString operator+(const CString& a, const wchar_t* b) {
  CString r(a);
  r += b;
  return r;
}
CString operator+(const wchar_t* a, const CString& b) {
  CString r(a);
  r += b;
  return r;
}

bool CString::EqualsWide(const wchar_t* text) const noexcept {
  if (!text) return IsEmpty();
  // Compare without allocating: encode each wide character as UTF-16 on the fly.
  const std::u16string_view v = View();
  std::size_t i = 0;
  for (; *text; ++text) {
    const auto cp = static_cast<char32_t>(*text);
    if (cp >= 0x10000 && cp <= 0x10FFFF) {
      const char32_t c = cp - 0x10000;
      if (i + 1 >= v.size() || v[i] != static_cast<char16_t>(0xD800 + (c >> 10)) ||
          v[i + 1] != static_cast<char16_t>(0xDC00 + (c & 0x3FF))) {
        return false;
      }
      i += 2;
    } else {
      const char16_t u = cp > 0x10FFFF ? kReplacement : static_cast<char16_t>(cp);
      if (i >= v.size() || v[i] != u) return false;
      ++i;
    }
  }
  return i == v.size();
}

int CString::Find(char16_t ch, int start) const noexcept {
  if (start < 0) start = 0;
  const auto pos = View().find(ch, static_cast<std::size_t>(start));
  return pos == std::u16string_view::npos ? -1 : static_cast<int>(pos);
}
int CString::Find(const CString& sub, int start) const noexcept {
  if (start < 0) start = 0;
  if (start > GetLength()) return -1;
  const auto pos = View().find(sub.View(), static_cast<std::size_t>(start));
  return pos == std::u16string_view::npos ? -1 : static_cast<int>(pos);
}
int CString::ReverseFind(char16_t ch) const noexcept {
  const auto pos = View().rfind(ch);
  return pos == std::u16string_view::npos ? -1 : static_cast<int>(pos);
}

CString CString::Mid(int first) const { return Mid(first, GetLength()); }
CString CString::Mid(int first, int count) const {
  const int len = GetLength();
  first = std::clamp(first, 0, len);
  count = std::clamp(count, 0, len - first);
  return CString(View().substr(static_cast<std::size_t>(first), static_cast<std::size_t>(count)));
}
CString CString::Left(int count) const { return Mid(0, count); }
CString CString::Right(int count) const {
  const int len = GetLength();
  count = std::clamp(count, 0, len);
  return Mid(len - count, count);
}

int CString::Delete(int index, int count) {
  const int len = GetLength();
  if (index < 0) index = 0;
  if (count <= 0 || index >= len) return len;
  count = std::min(count, len - index);
  std::memmove(m_rep->data + index, m_rep->data + index + count,
               (static_cast<std::size_t>(len - index - count) + 1) * sizeof(char16_t));
  m_rep->length = len - count;
  if (m_rep->length == 0) Empty();
  return GetLength();
}

void CString::FormatPacked(bool append, const std::u16string& format, const Afx::FormatArg* args, std::size_t count) {
  std::u16string out;
  if (append) out.assign(View());
  Afx::FormatInto(out, format, args, count);
  Assign(out);
}

std::ostream& operator<<(std::ostream& os, const CString& s) { return os << s.ToUtf8(); }

// One table per record class pins its archive: the class's own fields in archive order,
// each with a stored value, its default, the version that added it and the line a fresh
// record reports against that value. ExpectLayout derives from it the stored defaults,
// every old layout, the version error, the round trips, the dump, the field list and the
// comparison order with its lines.
#pragma once

#include "RecordingVisitor.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace TestSupport {

// The little-endian bytes of a value, written independently of the library's archive.
template <class T>
std::string Le(T v) {
  Bytes b(sizeof v);
  std::memcpy(b.data(), &v, sizeof v);
  return ToHex(b) + " ";
}
inline const std::string I0 = Le(0), D0 = Le(0.0), kFalse = "00 ", kTrue = "01 ", kP0 = "00" + D0 + D0 + D0;
// A point or a vector: its version, x, y, z.
inline std::string Pt(double x, double y, double z) { return "00 " + Le(x) + Le(y) + Le(z); }
// A string: its length, then its UTF-16 units.
inline std::string Str(std::u16string_view s) {
  std::string hex = Le(static_cast<std::int32_t>(s.size()));
  for (const char16_t c : s) hex += Le(c);
  return hex;
}
inline std::string Str(const std::string& s) { return Str(std::u16string(s.begin(), s.end())); }

// One own field in archive order: a stored value, its default, the difference line a
// fresh record reports against that value (empty: never compared), the version that
// added it and the first version without it, the visitor's lines of the stored value
// (empty: not checked) and whether Copy carries it.
struct Row {
  std::string set, unset;
  std::wstring line;
  unsigned since = 0, until = ~0u;
  std::string field = {};
  bool copied = true;
  bool In(unsigned version) const { return since <= version && version < until; }
};
inline Row R(const std::string& set, const std::string& unset, const wchar_t* line, unsigned since = 0) {
  return {set, unset, line ? line : L"", since};
}
// Bytes that the layouts before `until` hold and no later one reads.
inline Row Gone(const std::string& hex, unsigned until) { return {hex, hex, L"", 0, until}; }
inline Row D(double set, const wchar_t* line) { return R(Le(set), D0, line); }  // a double, default 0
inline Row I(int set, const wchar_t* line) { return R(Le(set), I0, line); }     // an int, default 0
inline Row Flag(const wchar_t* line) { return R(kTrue, kFalse, line); }         // a flag, default false

// How Compare prints a value the visitor wrote: a matrix as 4x4, an id without its '#',
// a string without its quotes, a point with a blank after each comma.
inline std::string Printed(std::string v) {
  if (v == "identity" || v[0] == '[') return "4x4";
  if (v[0] == '#') return v.substr(1);
  if (v[0] == '"') return v.substr(1, v.size() - 2);
  for (std::size_t at = v.find(','); v[0] == '(' && at != std::string::npos; at = v.find(',', at + 2)) {
    v.insert(at + 1, " ");
  }
  return v;
}

// A field named `name` whose stored value and default the visitor writes as `shown` and
// `fallback`: its visitor line and its difference line follow from them.
enum : unsigned { kNotCompared = 1, kNotCopied = 2 };
inline Row Named(const std::string& name, const std::string& set, const std::string& unset, const std::string& shown,
                 const std::string& fallback, unsigned since = 0, unsigned flags = 0) {
  const std::string line = name + " - " + Printed(fallback) + " vs " + Printed(shown);
  return {set,
          unset,
          flags & kNotCompared ? L"" : std::wstring(line.begin(), line.end()),
          since,
          ~0u,
          name + "=" + shown,
          !(flags & kNotCopied)};
}
// Named fields of the common types: a 32-bit int, a 16-bit one, a double, an id, a flag
// (stored as `set`, the default the other way) and a string.
inline Row Int(const std::string& n, std::int32_t v, std::int32_t def = 0, unsigned since = 0, unsigned flags = 0) {
  return Named(n, Le(v), Le(def), std::to_string(v), std::to_string(def), since, flags);
}
inline Row Short(const std::string& n, std::int16_t v, unsigned flags = 0) {
  return Named(n, Le(v), Le<std::int16_t>(0), std::to_string(v), "0", 0, flags);
}
inline Row Real(const std::string& n, double v, double def = 0, unsigned since = 0, unsigned flags = 0) {
  return Named(n, Le(v), Le(def), Num(v), Num(def), since, flags);
}
inline Row Id(const std::string& n, std::uint64_t v, unsigned flags = 0) {
  return Named(n, Le(v), Le(0ull), "#" + std::to_string(v), "#0", 0, flags);
}
inline Row Bool(const std::string& n, bool set = true, unsigned since = 0) {
  const char* text[] = {"false", "true"};
  return Named(n, set ? kTrue : kFalse, set ? kFalse : kTrue, text[set], text[!set], since);
}
inline Row Text(const std::string& n, const std::string& v, unsigned since = 0) {
  return Named(n, Str(v), Str(u""), "\"" + v + "\"", "\"\"", since);
}
// A point, default the origin.
inline Row Point(const std::string& n, double x, double y, double z, unsigned since = 0) {
  return Named(n, Pt(x, y, z), kP0, "(" + Num(x) + "," + Num(y) + "," + Num(z) + ")", "(0,0,0)", since);
}
// A matrix (its version, 4 by 4, row by row): the identity with element (0, 3) = x,
// default the identity.
inline Row Matrix(const std::string& n, double x) {
  std::string set = "00 04 00 00 00 04 00 00 00", unset = set;
  for (int i = 0; i < 16; ++i) {
    set += Le(i == 3 ? x : i % 5 == 0 ? 1.0 : 0.0);
    unset += Le(i % 5 == 0 ? 1.0 : 0.0);
  }
  return Named(n, set, unset, "[1 0 0 " + Num(x) + " 0 1 0 0 0 0 1 0 0 0 0 1]", "identity");
}

// `head`: the record's bytes up to its own fields, its own version first (one byte).
// `dump`: the text of the record whose rows all hold their stored values.
// `rows`: the own fields; `order`: the comparison order as row indices, when it is not
// the archive order (the rows it leaves out follow in archive order).
// `fields`: the visitor's lines of those fields in that record, blank-separated, for rows
// that do not name their own.
struct Layout {
  std::string head;
  const wchar_t* dump;
  std::vector<Row> rows;
  std::vector<std::size_t> order = {};
  std::string fields = {};
};

// The archive of layout `version` whose rows `isSet` says hold their stored value.
inline Bytes Image(const Layout& l, unsigned version, const std::function<bool(std::size_t)>& isSet) {
  std::string hex = Le(static_cast<std::uint8_t>(version)) + l.head.substr(2);
  for (std::size_t i = 0; i < l.rows.size(); ++i) {
    if (l.rows[i].In(version)) hex += isSet(i) ? l.rows[i].set : l.rows[i].unset;
  }
  return Hex(hex);
}

// Which rows hold their stored value: all, none.
inline bool All(std::size_t) { return true; }
inline bool None(std::size_t) { return false; }

// Rows given in parts: a braced list of twenty rows or more is laid out one row a line.
inline std::vector<Row> Join(std::initializer_list<std::vector<Row>> parts) {
  std::vector<Row> rows;
  for (const auto& part : parts) rows.insert(rows.end(), part.begin(), part.end());
  return rows;
}

// A fresh record; a class whose Create takes a number is made with 0.
template <class R>
Quarp::DbPtr<R> Fresh() {
  if constexpr (requires { R::Create(); }) {
    return R::Create();
  } else {
    return R::Create(0);
  }
}

template <class R>
Quarp::DbPtr<R> Loaded(const Bytes& bytes) {
  auto r = Fresh<R>();
  EXPECT_TRUE(LoadAll(*r, bytes));
  return r;
}

template <class R>
void ExpectLayout(const Layout& l) {
  SCOPED_TRACE(R::kClassName);
  auto fresh = Fresh<R>();
  EXPECT_EQ(ToHex(Store(*fresh)), ToHex(Image(l, R::kVersion, None)));
  ExpectNewerVersionRefused(*fresh, 0, Hex(l.head).size());  // the base part read, no own field
  // Each layout loads its fields; the later ones keep their defaults.
  for (unsigned v = 0; v <= R::kVersion; ++v) {
    auto r = Loaded<R>(Image(l, v, All));
    EXPECT_EQ(ToHex(Store(*r)), ToHex(Image(l, R::kVersion, [&](std::size_t i) { return l.rows[i].In(v); })));
  }
  auto full = Loaded<R>(Image(l, R::kVersion, All));
  // The round trips of the record without the fields Copy leaves, which a clone lacks.
  auto source = Loaded<R>(Image(l, R::kVersion, [&](std::size_t i) { return l.rows[i].copied; }));
  ExpectRoundTrips(*source);
  EXPECT_TRUE(!l.dump || full->ToIOFString() == l.dump) << full->ToIOFString().ToUtf8();
  // The visitor's lines of the own fields: the last ones.
  std::istringstream in(l.fields);
  std::vector<std::string> expected;
  for (std::string f; in >> f;) expected.push_back(f);
  for (const Row& row : l.rows) {
    std::istringstream lines(row.In(R::kVersion) ? row.field : "");
    for (std::string f; std::getline(lines, f);) expected.push_back(f);
  }
  const std::vector<std::string> fields = Fields(*full);
  ASSERT_GE(fields.size(), expected.size());
  EXPECT_EQ(std::vector<std::string>(fields.end() - static_cast<std::ptrdiff_t>(expected.size()), fields.end()),
            expected);
  // Copy carries every field but those it deliberately leaves in the target.
  auto target = Loaded<R>(Image(l, R::kVersion, [&](std::size_t i) { return !l.rows[i].copied; }));
  target->Copy(*source, Quarp::DbCloneMode::Normal, nullptr);
  EXPECT_EQ(ToHex(Store(*target)), ToHex(Image(l, R::kVersion, All)));
  // The fields from position k of the comparison order on differ: the first of them that
  // is compared is the one reported.
  std::vector<std::size_t> order = l.order;
  for (std::size_t i = 0; i < l.rows.size(); ++i) {
    if (std::ranges::find(order, i) == order.end()) order.push_back(i);
  }
  for (std::size_t k = 0; k <= order.size(); ++k) {
    auto other = Loaded<R>(Image(
        l, R::kVersion, [&](std::size_t i) { return std::find(order.begin() + k, order.end(), i) != order.end(); }));
    std::wstring line;
    for (std::size_t j = k; j < order.size() && line.empty(); ++j) line = l.rows[order[j]].line;
    CString report;
    EXPECT_EQ(fresh->Compare(other, report), line.empty()) << k;
    EXPECT_EQ(report, line.empty() ? CString() : CString((L"Difference Detected: " + line + L"\n").c_str())) << k;
  }
}

}  // namespace TestSupport

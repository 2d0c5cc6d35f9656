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

// One own field in archive order: a stored value, its default, the difference line a
// fresh record reports against that value (null: never compared), the version that
// added it and the first version without it.
struct Row {
  std::string set, unset;
  const wchar_t* line;
  unsigned since = 0, until = ~0u;
  bool In(unsigned version) const { return since <= version && version < until; }
};
inline Row R(const std::string& set, const std::string& unset, const wchar_t* line, unsigned since = 0) {
  return {set, unset, line, since};
}
// Bytes that the layouts before `until` hold and no later one reads.
inline Row Gone(const std::string& hex, unsigned until) { return {hex, hex, nullptr, 0, until}; }
inline Row D(double set, const wchar_t* line) { return R(Le(set), D0, line); }  // a double, default 0
inline Row I(int set, const wchar_t* line) { return R(Le(set), I0, line); }     // an int, default 0
inline Row Flag(const wchar_t* line) { return R(kTrue, kFalse, line); }         // a flag, default false

// `head`: the record's bytes up to its own fields, its own version first (one byte).
// `dump`: the text of the record whose rows all hold their stored values.
// `rows`: the own fields; `order`: the comparison order as row indices, when it is not
// the archive order.
// `fields`: the visitor's lines of those fields in that record, blank-separated (empty:
// not checked).
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
  const auto all = [](std::size_t) { return true; };
  auto fresh = Fresh<R>();
  EXPECT_EQ(ToHex(Store(*fresh)), ToHex(Image(l, R::kVersion, [](std::size_t) { return false; })));
  ExpectNewerVersionRefused(*fresh, 0, Hex(l.head).size());  // the base part read, no own field
  // Each layout loads its fields; the later ones keep their defaults.
  for (unsigned v = 0; v <= R::kVersion; ++v) {
    auto r = Loaded<R>(Image(l, v, all));
    EXPECT_EQ(ToHex(Store(*r)), ToHex(Image(l, R::kVersion, [&](std::size_t i) { return l.rows[i].In(v); })));
  }
  auto full = Loaded<R>(Image(l, R::kVersion, all));
  ExpectRoundTrips(*full);
  EXPECT_TRUE(!l.dump || full->ToIOFString() == l.dump) << full->ToIOFString().ToUtf8();
  if (!l.fields.empty()) {
    std::istringstream in(l.fields);
    std::vector<std::string> expected;
    for (std::string f; in >> f;) expected.push_back(f);
    const std::vector<std::string> all = Fields(*full);
    ASSERT_GE(all.size(), expected.size());
    EXPECT_EQ(std::vector<std::string>(all.end() - static_cast<std::ptrdiff_t>(expected.size()), all.end()), expected);
  }
  // The fields from position k of the comparison order on differ: the first of them that
  // is compared is the one reported.
  std::vector<std::size_t> order = l.order;
  for (std::size_t i = order.size(); i < l.rows.size(); ++i) order.push_back(i);
  for (std::size_t k = 0; k <= order.size(); ++k) {
    auto other = Loaded<R>(Image(
        l, R::kVersion, [&](std::size_t i) { return std::find(order.begin() + k, order.end(), i) != order.end(); }));
    const wchar_t* line = nullptr;
    for (std::size_t j = k; j < order.size() && !line; ++j) line = l.rows[order[j]].line;
    CString report;
    EXPECT_EQ(fresh->Compare(other, report), line == nullptr) << k;
    EXPECT_EQ(report, line ? CString(L"Difference Detected: ") + CString(line) + CString(L"\n") : CString()) << k;
  }
}

}  // namespace TestSupport

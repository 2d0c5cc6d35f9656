// Pins the order in which a record's Compare reports its properties.
//
//   ExpectReportOrder<DbIOFNciArc>({
//       {[](DbIOFNciArc& r, bool on) { r.SetRadius(on ? 2.5 : 0); }, L"Difference Detected: m_Radius - 0 vs 2.5\n"},
//       ...});
//
// Every listed property is made to differ on the second of two fresh records; then the
// differences must be reported one per comparison, in the listed order, each removed
// after it was reported, until the two compare equal. An entry without a line is a
// difference that must never be reported: it stays in place to the end; so does what
// an entry's `set(b, false)` leaves (a difference within the tolerance, say). Every line
// is appended to what the report already holds.
#pragma once

#include <afx/CString.h>
#include <quarp/DbPtr.h>

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace TestSupport {

template <class R>
struct Difference {
  std::function<void(R&, bool)> set;  // make the property differ (true) or agree (false)
  const wchar_t* line;                // the line reported for it; null: never reported
};

// `make` makes the two records; by default R::Create().
template <class R>
void ExpectReportOrder(const std::vector<Difference<R>>& order, std::function<Quarp::DbPtr<R>()> make = {}) {
  if (!make) {
    if constexpr (requires { R::Create(); }) make = [] { return R::Create(); };
  }
  auto a = make();
  auto b = make();
  for (const auto& d : order) d.set(*b, true);
  for (const auto& d : order) {
    if (!d.line) continue;
    CString report(L"earlier\n");
    EXPECT_FALSE(a->Compare(b, report));
    EXPECT_EQ(report, CString(L"earlier\n") + CString(d.line));
    d.set(*b, false);
  }
  CString report;
  EXPECT_TRUE(a->Compare(b, report)) << report.ToUtf8();
  EXPECT_TRUE(report.IsEmpty());
}

}  // namespace TestSupport

#include <iof/DbIOFDrill.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFDrill)

// The custom parameters come first, right after the list part.
template <class F, class... R>
void DbIOFDrill::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_CustomParams", r.m_CustomParams...);
  f(Field::V(0), "m_CycleType", r.m_CycleType...);
  f(Field::V(0), "m_Peck1", r.m_Peck1...);
  f(Field::V(0), "m_Peck2", r.m_Peck2...);
  f(Field::V(0), "m_ChipClear", r.m_ChipClear...);
  f(Field::V(0), "m_ChipRetract", r.m_ChipRetract...);
  f(Field::V(0), "m_BoreShift", r.m_BoreShift...);
  f(Field::V(0), "m_ThreadPitch", r.m_ThreadPitch...);
}

DbIOFDrill::DbIOFDrill() : DbIOFList(kDrillListType) { m_CustomParams.SetSize(kDefaultCustomParams); }

bool DbIOFDrill::SetCustomParams(const Quarp::UtArrayEx<double>& params) {
  if (params.GetSize() != m_CustomParams.GetSize()) return false;
  for (std::int64_t i = 0; i < params.GetSize(); ++i) m_CustomParams[i] = params[i];
  return true;
}

CString DbIOFDrill::ToIOFString() const { return CString(L"IOF Drill Object"); }

bool DbIOFDrill::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFDrill>(other, report);
  if (!o || !DbIOFList::Compare(other, report)) return false;
  const long long count = m_CustomParams.GetSize();
  const long long otherCount = o->m_CustomParams.GetSize();
  bool same = CompareProperty(m_CycleType, o->m_CycleType, L"m_CycleType", report) &&
              CompareProperty(m_Peck1, o->m_Peck1, L"m_Peck1", report, 1e-6) &&
              CompareProperty(m_Peck2, o->m_Peck2, L"m_Peck2", report, 1e-6) &&
              CompareProperty(m_ChipClear, o->m_ChipClear, L"m_ChipClear", report, 1e-6) &&
              CompareProperty(m_ChipRetract, o->m_ChipRetract, L"m_ChipRetract", report, 1e-6) &&
              CompareProperty(m_BoreShift, o->m_BoreShift, L"m_BoreShift", report, 1e-6) &&
              CompareProperty(m_ThreadPitch, o->m_ThreadPitch, L"m_ThreadPitch", report, 1e-6) &&
              CompareProperty(count, otherCount, L"TotalCustomParams", report);
  // Intended: whatever was found above, equal non-zero counts have every entry compared
  // exactly, and each entry that differs adds its own line.
  if (count != otherCount || count == 0) return same;
  for (long long i = 0; i < count; ++i) {
    if (m_CustomParams[i] != o->m_CustomParams[i]) {
      report += L"Difference Detected: CustomParams\n";
      same = false;
    }
  }
  return same;
}

}  // namespace IOF

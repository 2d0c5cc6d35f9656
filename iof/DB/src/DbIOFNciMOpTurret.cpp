#include <iof/DbIOFNciMOpTurret.h>
#include <iof/DbIOFReferencePoint.h>

#include "RecordImpl.h"
#include "TextTable.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFNciMOpTurret)

// Intended: the archive order differs from the member order.
template <class F, class... R>
void DbIOFNciMOpTurret::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_AxisMotion", r.m_AxisMotion...);
  f(Field::V(0), "m_OutputToolCall", r.m_OutputToolCall...);
  f(Field::V(0), "m_Station", r.m_Station...);
  f(Field::V(0), "m_RefPosId", r.m_RefPosId...);
  f(Field::V(0), "m_MoveBreakStrategy", r.m_MoveBreakStrategy...);
}

const wchar_t* DbIOFNciMOpTurret::MoveBreakStrategyText(int strategy) noexcept {
  static constexpr const wchar_t* kTexts[] = {L"XFIRST", L"YFIRST", L"ZFIRST", L"DIRECT", L"REFRETURN"};
  return Detail::TextOf(strategy, kTexts, L"");
}

CString DbIOFNciMOpTurret::ToIOFString() const {
  CString refPos(L"NoRefPos");
  CString guid;
  Quarp::DbCPtr<DbIOFReferencePoint> point(nullptr);
  const Quarp::DbMgr* mgr = GetDbMgr();
  if (mgr && !m_RefPosId.IsNull() && mgr->Get(point, m_RefPosId, 0)) {
    refPos = CString::Formatted(L"Name:%s, StreamId:%d", point->GetIOFName(), point->GetStreamID());
    guid = point->GetGuid();
  }
  return CString::Formatted(
      L"Turret MOp DoTC:%s, Station:%d, Motion: %s, MovStrategy: %s, RefPos: %s, Ref Point Guid: %s",
      LowerBoolText(m_OutputToolCall), m_Station, m_AxisMotion.ToString(), MoveBreakStrategyText(m_MoveBreakStrategy),
      refPos, guid);
}

bool DbIOFNciMOpTurret::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciMOpTurret>(other, report);
  return o && DbIOFNciMiscOp::Compare(other, report) &&
         CompareProperty(m_MoveBreakStrategy, o->m_MoveBreakStrategy, L"m_MoveBreakStrategy", report) &&
         CompareProperty(m_Station, o->m_Station, L"m_Station", report) &&
         CompareProperty(m_AxisMotion, o->m_AxisMotion, L"m_AxisMotion", report) &&
         CompareProperty(m_RefPosId, o->m_RefPosId, L"m_RefPosId", report) &&
         CompareProperty(m_OutputToolCall, o->m_OutputToolCall, L"m_OutputToolCall", report);
}

}  // namespace IOF

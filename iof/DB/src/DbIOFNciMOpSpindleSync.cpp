#include <iof/DbIOFNciMOpSpindleSync.h>

#include "RecordImpl.h"
#include "TextTable.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFNciMOpSpindleSync)

template <class F, class... R>
void DbIOFNciMOpSpindleSync::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_SyncType", r.m_SyncType...);
  f(Field::V(0), "m_IsRapidMove", r.m_IsRapidMove...);
  f(Field::V(0), "m_LeftAngle", r.m_LeftAngle...);
  f(Field::V(0), "m_RightAngle", r.m_RightAngle...);
  f(Field::V(0), "m_RotaryFeedRate", r.m_RotaryFeedRate...);
  f(Field::V(0), "m_SpindleSpeedRpm", r.m_SpindleSpeedRpm...);
  f(Field::V(0), "m_IsRotaryCCW", r.m_IsRotaryCCW...);
  f(Field::V(0), "m_MasterSpindle", r.m_MasterSpindle...);
  f(Field::V(0), "m_UseRotaryPostOpt", r.m_UseRotaryPostOpt...);
  f(Field::V(0), "m_UseSpindleStartOpt", r.m_UseSpindleStartOpt...);
}

const wchar_t* DbIOFNciMOpSpindleSync::SyncTypeText(int type) noexcept {
  static constexpr const wchar_t* kTexts[] = {L"Align", L"sync", L"Cancel"};
  return Detail::TextOf(type, kTexts, L"Oops");
}

const wchar_t* DbIOFNciMOpSpindleSync::MasterSpindleText(int master) noexcept {
  static constexpr const wchar_t* kTexts[] = {L"Left", L"Right", L"Invalid"};
  return Detail::TextOf(master, kTexts, L"Oops");
}

CString DbIOFNciMOpSpindleSync::ToIOFString() const {
  return CString::Formatted(
      L"SyncType:%s, IsRapidMove:%s, LeftAngle:%g, RightAngle:%g, RotaryFeedRate:%g, SpindleSpeedRpm:%g, "
      L"IsRotaryCCW:%s, Master:%s, UseRotOpt:%d, UseSpindleStartOpt:%d",
      SyncTypeText(m_SyncType), LowerBoolText(m_IsRapidMove), m_LeftAngle, m_RightAngle, m_RotaryFeedRate,
      m_SpindleSpeedRpm, LowerBoolText(m_IsRotaryCCW), MasterSpindleText(m_MasterSpindle), m_UseRotaryPostOpt ? 1 : 0,
      m_UseSpindleStartOpt ? 1 : 0);
}

bool DbIOFNciMOpSpindleSync::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciMOpSpindleSync>(other, report);
  constexpr double tol = 1e-6;
  return o && DbIOFNciMiscOp::Compare(other, report) &&
         CompareProperty(m_SyncType, o->m_SyncType, L"m_SyncType", report) &&
         CompareProperty(m_MasterSpindle, o->m_MasterSpindle, L"m_MasterSpindle", report) &&
         CompareProperty(m_IsRapidMove, o->m_IsRapidMove, L"m_IsRapidMove", report) &&
         CompareProperty(m_LeftAngle, o->m_LeftAngle, L"m_LeftAngle", report, tol) &&
         CompareProperty(m_RightAngle, o->m_RightAngle, L"m_RightAngle", report, tol) &&
         CompareProperty(m_RotaryFeedRate, o->m_RotaryFeedRate, L"m_RotaryFeedRate", report, tol) &&
         CompareProperty(m_SpindleSpeedRpm, o->m_SpindleSpeedRpm, L"m_SpindleSpeedRpm", report, tol) &&
         CompareProperty(m_IsRotaryCCW, o->m_IsRotaryCCW, L"m_IsRotaryCCW", report) &&
         CompareProperty(m_UseRotaryPostOpt, o->m_UseRotaryPostOpt, L"m_UseRotaryPostOpt", report) &&
         CompareProperty(m_UseSpindleStartOpt, o->m_UseSpindleStartOpt, L"m_UseSpindleStartOpt", report);
}

}  // namespace IOF

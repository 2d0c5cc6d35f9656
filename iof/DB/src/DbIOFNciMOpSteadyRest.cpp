#include <iof/DbIOFNciMOpSteadyRest.h>

#include "RecordImpl.h"
#include "TextTable.h"

#include <algorithm>

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFNciMOpSteadyRest)

// One list reads every layout from version 0 to 5 (DeSerializeV0 .. DeSerializeV5):
// each field names the version that added it.
template <class F, class... R>
void DbIOFNciMOpSteadyRest::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_MotionType", r.m_MotionType...);
  f(Field::V(0), "m_HomeXPosition", r.m_HomeXPosition...);
  f(Field::V(0), "m_HomeZPosition", r.m_HomeZPosition...);
  f(Field::V(0), "m_FinalXPosition", r.m_FinalXPosition...);
  f(Field::V(0), "m_FinalZPosition", r.m_FinalZPosition...);
  f(Field::V(0), "m_MoveDistanceX", r.m_MoveDistanceX...);
  f(Field::V(0), "m_MoveDistanceZ", r.m_MoveDistanceZ...);
  f(Field::V(0), "m_OriginShift", r.m_OriginShift...);
  f(Field::V(0), "m_IsRapidMove", r.m_IsRapidMove...);
  f(Field::V(0), "m_FeedRate", r.m_FeedRate...);
  f(Field::V(1), "m_DwellTime", r.m_DwellTime...);
  f(Field::V(2), "m_ComponentEntityID", r.m_ComponentEntityID...);
  f(Field::V(3), "m_SequenceNum", r.m_SequenceNum...);
  f(Field::V(4), "m_LinkedSteadyRests", r.m_Linked...);
  f(Field::V(5), "m_WorkOffsetNumber", r.m_WorkOffsetNumber...);
}

// Intended: one count for both lists; the second is cut or padded with 0 to the first's
// length when stored.
void DbIOFNciMOpSteadyRest::LinkedLists::Serialize(Quarp::UtArchive& ar) {
  auto& ids = m_LinkedSteadyRestComponentEntityIDList;
  auto& numbers = m_LinkedSteadyRestSequenceNumberList;
  if (ar.IsStoring()) {
    ar << static_cast<std::int32_t>(ids.size());
    for (const std::int32_t id : ids) ar << id;
    for (std::size_t i = 0; i < ids.size(); ++i) ar << (i < numbers.size() ? numbers[i] : std::int32_t{0});
    return;
  }
  const std::size_t count = Detail::LoadCount(ar, 2 * sizeof(std::int32_t));
  ids.assign(count, 0);
  numbers.assign(count, 0);
  for (std::int32_t& id : ids) ar >> id;
  for (std::int32_t& number : numbers) ar >> number;
}

void DbIOFNciMOpSteadyRest::LinkedLists::VisitFields(FieldVisitor& visitor) const {
  Detail::VisitValue(visitor, "m_LinkedSteadyRestComponentEntityIDList", m_LinkedSteadyRestComponentEntityIDList);
  Detail::VisitValue(visitor, "m_LinkedSteadyRestSequenceNumberList", m_LinkedSteadyRestSequenceNumberList);
}

const wchar_t* DbIOFNciMOpSteadyRest::MotionTypeText(int motion) noexcept {
  static constexpr const wchar_t* kTexts[] = {L"Clamp", L"Unclamp", L"Linear", L"Retract"};
  return Detail::TextOf(motion, kTexts, L"");
}

CString DbIOFNciMOpSteadyRest::ToIOFString() const {
  const auto& ids = m_Linked.m_LinkedSteadyRestComponentEntityIDList;
  const auto& numbers = m_Linked.m_LinkedSteadyRestSequenceNumberList;
  const auto entry = [](const std::vector<std::int32_t>& list, std::size_t i) {
    return i < list.size() ? CString::Formatted(L"%d", list[i]) : CString(L"?");
  };
  CString linked(L"[");
  for (std::size_t i = 0; i < std::max(ids.size(), numbers.size()); ++i) {
    linked.AppendFormat(L"%s%s/%s", i ? L", " : L"", entry(ids, i), entry(numbers, i));
  }
  linked += L"]";
  return CString::Formatted(
      L"SteadyRestOp Motion:%s, WorkOfs:%d, IsRapid:%s, FeedRate:%g, HomeXPos:%g, HomeZPos:%g, FinalXPos:%g, "
      L"FinalZPos:%g, MoveDistX:%g, MoveDistZ:%g, OriginShift:%g, Dwell:%g, ComponentID:%ld, SequenceNumber:%d, "
      L"Linked:%s",
      MotionTypeText(m_MotionType), m_WorkOffsetNumber, LowerBoolText(m_IsRapidMove), m_FeedRate, m_HomeXPosition,
      m_HomeZPosition, m_FinalXPosition, m_FinalZPosition, m_MoveDistanceX, m_MoveDistanceZ, m_OriginShift, m_DwellTime,
      m_ComponentEntityID, m_SequenceNum, linked);
}

namespace {
// Equal when of the same length and contents; otherwise "Difference Detected: <name>\n".
bool CompareList(const std::vector<std::int32_t>& a, const std::vector<std::int32_t>& b, const wchar_t* name,
                 CString& report) {
  if (a == b) return true;
  report.AppendFormat(L"Difference Detected: %s\n", name);
  return false;
}
}  // namespace

bool DbIOFNciMOpSteadyRest::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciMOpSteadyRest>(other, report);
  constexpr double tol = 1e-6;
  return o && DbIOFNciMiscOp::Compare(other, report) &&
         CompareProperty(m_MotionType, o->m_MotionType, L"m_MotionType", report) &&
         CompareProperty(m_HomeXPosition, o->m_HomeXPosition, L"m_HomeXPosition", report, tol) &&
         CompareProperty(m_HomeZPosition, o->m_HomeZPosition, L"m_HomeZPosition", report, tol) &&
         CompareProperty(m_FinalXPosition, o->m_FinalXPosition, L"m_FinalXPosition", report, tol) &&
         CompareProperty(m_FinalZPosition, o->m_FinalZPosition, L"m_FinalZPosition", report, tol) &&
         CompareProperty(m_MoveDistanceX, o->m_MoveDistanceX, L"m_MoveDistanceX", report, tol) &&
         CompareProperty(m_MoveDistanceZ, o->m_MoveDistanceZ, L"m_MoveDistanceZ", report, tol) &&
         CompareProperty(m_OriginShift, o->m_OriginShift, L"m_OriginShift", report, tol) &&
         CompareProperty(m_IsRapidMove, o->m_IsRapidMove, L"m_IsRapidMove", report) &&
         CompareProperty(m_FeedRate, o->m_FeedRate, L"m_FeedRate", report, tol) &&
         CompareProperty(m_DwellTime, o->m_DwellTime, L"m_DwellTime", report, tol) &&
         CompareProperty(m_ComponentEntityID, o->m_ComponentEntityID, L"m_ComponentEntityID", report) &&
         CompareProperty(m_SequenceNum, o->m_SequenceNum, L"m_SequenceNum", report) &&
         CompareProperty(m_WorkOffsetNumber, o->m_WorkOffsetNumber, L"m_WorkOffsetNumber", report) &&
         CompareList(m_Linked.m_LinkedSteadyRestComponentEntityIDList,
                     o->m_Linked.m_LinkedSteadyRestComponentEntityIDList, L"m_LinkedSteadyRestComponentEntityIDList",
                     report) &&
         CompareList(m_Linked.m_LinkedSteadyRestSequenceNumberList, o->m_Linked.m_LinkedSteadyRestSequenceNumberList,
                     L"m_LinkedSteadyRestSequenceNumberList", report);
}

}  // namespace IOF

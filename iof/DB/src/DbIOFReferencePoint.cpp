#include <iof/DbIOFReferencePoint.h>

#include "RecordImpl.h"
#include "TextTable.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFReferencePoint)

// Intended: the coordinates come first, ahead of the fields declared before them.
template <class F, class... R>
void DbIOFReferencePoint::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_Coordinates", r.m_Coordinates...);
  f(Field::V(0), "m_ActiveTurret", r.m_ActiveTurret...);
  f(Field::V(0), "m_ActiveSpindle", r.m_ActiveSpindle...);
  f(Field::V(0), "m_StreamID", r.m_StreamID...);
  f(Field::V(0), "m_Guid", r.m_Guid...);
  f(Field::V(0), "m_Comment", r.m_Comment...);
  f(Field::V(0), "m_Source", r.m_Source...);
  f(Field::V(0), "m_PosType", r.m_PosType...);
  f(Field::V(0), "m_NCOutput", r.m_NCOutput...);
}

const wchar_t* DbIOFReferencePoint::SourceTypeText(int source) noexcept {
  static constexpr const wchar_t* kTexts[] = {L"Machine", L"JobSetup", L"AxisComboOn", L"AxisComboOff"};
  return Detail::TextOf(source, kTexts, L"None");
}

const wchar_t* DbIOFReferencePoint::PositionTypeText(int position) noexcept {
  static constexpr const wchar_t* kTexts[] = {L"HOME",       L"TOOLCHANGE",      L"PARK_LEFT",
                                              L"PARK_RIGHT", L"PARK_MISC",       L"REFERENCE",
                                              nullptr,       L"AXISCOMBO_REFPT", L"AXISCOMBO_HOMEPOS"};
  return Detail::TextOf(position, kTexts, L"None");
}

CString DbIOFReferencePoint::ToIOFString() const {
  return CString::Formatted(
      L"RefPoint: Name: %s, Comment %s, GUID: %s, StreamId:%d, Source:%s, PosType:%s, Motion:%s, NC Output: %s",
      GetIOFName(), m_Comment, m_Guid, m_StreamID, SourceTypeText(m_Source), PositionTypeText(m_PosType),
      m_Coordinates.ToString(), m_NCOutput);
}

bool DbIOFReferencePoint::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFReferencePoint>(other, report);
  return o && DbIOFBase::Compare(other, report) &&
         CompareProperty(m_ActiveTurret, o->m_ActiveTurret, L"m_ActiveTurret", report) &&
         CompareProperty(m_ActiveSpindle, o->m_ActiveSpindle, L"m_ActiveSpindle", report) &&
         CompareProperty(m_StreamID, o->m_StreamID, L"m_StreamID", report) &&
         CompareProperty(m_Guid, o->m_Guid, L"m_Guid", report) &&
         CompareProperty(m_Comment, o->m_Comment, L"m_Comment", report) &&
         CompareProperty(m_Coordinates, o->m_Coordinates, L"m_Coordinates", report) &&
         CompareProperty(m_Source, o->m_Source, L"m_Source", report) &&
         CompareProperty(m_PosType, o->m_PosType, L"m_PosType", report) &&
         CompareProperty(m_NCOutput, o->m_NCOutput, L"m_NCOutput", report);
}

}  // namespace IOF

#include <iof/DbIOFNciSubOp.h>

#include "ListItems.h"
#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFNciSubOp)

template <class F, class... R>
void DbIOFNciSubOp::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_OpId", r.m_OpId...);
  f(Field::V(0), "m_ToolChangeId", r.m_ToolChangeId...);
  f(Field::V(0), "m_ToolPlaneId", r.m_ToolPlaneId...);
  f(Field::V(0), "m_ApproachRpm", r.m_ApproachRpm...);
  f(Field::V(0), "m_CSSEnabled", r.m_CSSEnabled...);
  f(Field::V(0), "m_ToolOrientationType", r.m_ToolOrientationType...);
  f(Field::V(0), "m_NCPlane", r.m_NCPlane...);
  f(Field::V(0), "m_NCPlaneCoordConv", r.m_NCPlaneCoordConv...);
  f(Field::V(0), "m_Compensation", r.m_Compensation...);
  f(Field::V(0), "m_SpindleSpeed", r.m_SpindleSpeed...);
  f(Field::V(0), "m_FeedRate", r.m_FeedRate...);
  f(Field::V(0), "m_FeedUnits", r.m_FeedUnits...);
  f(Field::V(0), "m_DiameterOffsetNum", r.m_DiameterOffsetNum...);
  f(Field::V(0), "m_LengthOffsetNum", r.m_LengthOffsetNum...);
}

const wchar_t* DbIOFNciSubOp::ToolOrientText(int orientation) noexcept {
  switch (orientation) {
    case 0:
      return L"NOTSET";
    case 1:
      return L"CROSS";
    case 2:
      return L"FACE";
    case 3:
      return L"NONORTHO";
    default:
      return L"";
  }
}

const wchar_t* DbIOFNciSubOp::NCPlaneText(int plane) noexcept {
  return plane == static_cast<int>(IofArcPlaneType::NoPlane) ? L"NOTSET" : ArcPlaneText(plane, L"NOTSET");
}

Quarp::DbPtr<DbIOFApproach> DbIOFNciSubOp::GetApproach() const {
  return Detail::FirstItemOfType<DbIOFApproach>(*this, [](const DbIOFApproach&) { return true; });
}

Quarp::DbPtr<DbIOFList> DbIOFNciSubOp::MotionList(int kind) const {
  return Detail::FirstItemOfType<DbIOFList>(*this,
                                            [kind](const DbIOFList& list) { return list.GetListType() == kind; });
}

Quarp::DbPtr<DbIOFList> DbIOFNciSubOp::GetMotionList() const { return MotionList(kMotionBlock); }
Quarp::DbPtr<DbIOFList> DbIOFNciSubOp::GetCutterCompMotionList() const { return MotionList(kCutterCompMotionSubList); }

CString DbIOFNciSubOp::ToIOFString() const {
  // Intended: the framework's name (the class name), not the IOF name.
  return CString::Formatted(L"IOF SubOp Object: Name: %s; Orient: %s, NCPlane: %s, NCPlaneCoordConv: %s, TC=%ld",
                            GetName(), ToolOrientText(static_cast<int>(m_ToolOrientationType)),
                            NCPlaneText(static_cast<int>(m_NCPlane)), NCPlaneText(static_cast<int>(m_NCPlaneCoordConv)),
                            m_ToolChangeId);
}

bool DbIOFNciSubOp::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciSubOp>(other, report);
  constexpr double tol = 1e-6;
  const auto asInt = [](auto e) { return static_cast<int>(e); };
  return o && DbIOFList::Compare(other, report) && CompareProperty(m_OpId, o->m_OpId, L"m_OpId", report) &&
         CompareProperty(m_ToolChangeId, o->m_ToolChangeId, L"m_ToolChangeId", report) &&
         CompareProperty(m_ToolPlaneId, o->m_ToolPlaneId, L"m_ToolPlaneId", report) &&
         CompareProperty(m_ApproachRpm, o->m_ApproachRpm, L"m_ApproachRpm", report, tol) &&
         CompareProperty(m_CSSEnabled, o->m_CSSEnabled, L"m_CSSEnabled", report) &&
         CompareProperty(asInt(m_ToolOrientationType), asInt(o->m_ToolOrientationType), L"m_ToolOrientationType",
                         report) &&
         CompareProperty(asInt(m_NCPlane), asInt(o->m_NCPlane), L"m_NCPlane", report) &&
         CompareProperty(asInt(m_Compensation), asInt(o->m_Compensation), L"m_Compensation", report) &&
         CompareProperty(m_SpindleSpeed, o->m_SpindleSpeed, L"m_SpindleSpeed", report, tol) &&
         CompareProperty(asInt(m_FeedUnits), asInt(o->m_FeedUnits), L"m_FeedUnits", report) &&
         CompareProperty(m_FeedRate, o->m_FeedRate, L"m_FeedRate", report, tol) &&
         CompareProperty(asInt(m_NCPlaneCoordConv), asInt(o->m_NCPlaneCoordConv), L"m_NCPlaneCoordConv", report) &&
         CompareProperty(m_DiameterOffsetNum, o->m_DiameterOffsetNum, L"m_DiameterOffsetNum", report) &&
         CompareProperty(m_LengthOffsetNum, o->m_LengthOffsetNum, L"m_LengthOffsetNum", report);
}

}  // namespace IOF

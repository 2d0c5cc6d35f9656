#include <iof/DbIOFNciArc.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFNciArc)

template <class F, class... R>
void DbIOFNciArc::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_ArcPlane", r.m_ArcPlane...);
  f(Field::V(0), "m_StartPoint", r.m_StartPoint...);
  f(Field::V(0), "m_EndPoint", r.m_EndPoint...);
  f(Field::V(0), "m_CenterPoint", r.m_CenterPoint...);
  f(Field::V(0), "m_FullCircle", r.m_FullCircle...);
  f(Field::V(0), "m_Clockwise", r.m_Clockwise...);
  f(Field::V(0), "m_SweepAngle", r.m_SweepAngle...);
  f(Field::V(0), "m_IsHelix", r.m_IsHelix...);
  f(Field::V(0), "m_Radius", r.m_Radius...);
  f(Field::V(0), "m_StartAngle", r.m_StartAngle...);
  f(Field::V(0), "m_EndAngle", r.m_EndAngle...);
}

CString DbIOFNciArc::ToIOFString() const {
  const int plane = static_cast<int>(m_ArcPlane);
  // Any value but G17, G18 and G19 prints "NoPlane".
  const wchar_t* planeText = ArcPlaneText(plane, L"NoPlane");
  return CString::Formatted(
      L"G%d %d %d S(%lf %lf %lf) E(%lf %lf %lf) C(%lf %lf %lf) F%lf %d %d plane=%s sweep =%g deg Dir:%s %s t=%gs "
      L"INC = %d",
      GetGCode(), plane, GetCutterComp(), m_StartPoint.x, m_StartPoint.y, m_StartPoint.z, m_EndPoint.x, m_EndPoint.y,
      m_EndPoint.z, m_CenterPoint.x, m_CenterPoint.y, m_CenterPoint.z, GetFeedRate(), GetPositionCode(),
      m_FullCircle ? 1 : 0, planeText, m_SweepAngle, m_Clockwise ? L"CLW" : L"CCLW", GetContourPositionString(),
      GetTime(), GetNcIncremental() ? 1 : 0);
}

bool DbIOFNciArc::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciArc>(other, report);
  // The sweep is compared before the direction flag, not in archive order: intended, the
  // first difference found is the one reported.
  return o && DbIOFNciBaseMove::Compare(other, report) &&
         CompareProperty(static_cast<int>(m_ArcPlane), static_cast<int>(o->m_ArcPlane), L"m_ArcPlane", report) &&
         CompareProperty(m_StartPoint, o->m_StartPoint, L"m_StartPoint", report, 1e-6) &&
         CompareProperty(m_EndPoint, o->m_EndPoint, L"m_EndPoint", report, 1e-6) &&
         CompareProperty(m_CenterPoint, o->m_CenterPoint, L"m_CenterPoint", report, 1e-6) &&
         CompareProperty(m_FullCircle, o->m_FullCircle, L"m_FullCircle", report) &&
         CompareProperty(m_SweepAngle, o->m_SweepAngle, L"m_SweepAngle", report, 1e-6) &&
         CompareProperty(m_Clockwise, o->m_Clockwise, L"m_Clockwise", report) &&
         CompareProperty(m_IsHelix, o->m_IsHelix, L"m_IsHelix", report) &&
         CompareProperty(m_Radius, o->m_Radius, L"m_Radius", report, 1e-6) &&
         CompareProperty(m_StartAngle, o->m_StartAngle, L"m_StartAngle", report, 1e-6) &&
         CompareProperty(m_EndAngle, o->m_EndAngle, L"m_EndAngle", report, 1e-6);
}

}  // namespace IOF

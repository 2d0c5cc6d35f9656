#include <iof/DbIOFNciArc3D.h>

#include <iof/GmVector3D.h>
#include <iof/GmXformMat3D.h>

#include <cmath>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFNciArc3D)

template <class F, class... R>
void DbIOFNciArc3D::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_ArcCSDbId", r.m_ArcCSDbId...);
  f(Field::V(0), "m_CenterPoint", r.m_CenterPoint...);
  f(Field::V(0), "m_Radius", r.m_Radius...);
  f(Field::V(0), "m_StartAngle", r.m_StartAngle...);
  f(Field::V(0), "m_SweepAngle", r.m_SweepAngle...);
  f(Field::V(0), "m_HelicalPitch", r.m_HelicalPitch...);
  f(Field::V(0), "m_SpiralPitch", r.m_SpiralPitch...);
}

namespace {

// The point at `radius` on the arc system's X axis turned about Z by `angle`.
GmPoint3D Turned(double angle, double radius) {
  const GmVector3D v = GmXformMat3D::RotZ(angle) * GmVector3D(radius, 0.0, 0.0);
  return GmPoint3D(v[0], v[1], v[2]);
}

}  // namespace

bool DbIOFNciArc3D::IsFullCircle() const noexcept {
  // Compared with +-360 although the sweep is in radians: intended.
  return (m_SweepAngle == 360.0 || m_SweepAngle == -360.0) && m_HelicalPitch == 0.0 && m_SpiralPitch == 0.0;
}

GmPoint3D DbIOFNciArc3D::GetStartPoint() const { return m_CenterPoint + Turned(m_StartAngle, m_Radius); }

GmPoint3D DbIOFNciArc3D::GetEndPoint() const {
  const double turns = std::fabs(m_SweepAngle / 6.283185307179586);
  const double radius = turns * m_SpiralPitch + m_Radius;
  const GmPoint3D rise(0.0, 0.0, turns * m_HelicalPitch);
  return m_CenterPoint + Turned(m_SweepAngle + m_StartAngle, radius) + rise;
}

CString DbIOFNciArc3D::ToIOFString() const {
  return CString();  // intended: dumps show nothing for 3-D arcs
}

bool DbIOFNciArc3D::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciArc3D>(other, report);
  // m_ArcCSDbId is not compared: intended.
  return o && DbIOFNciBaseMove::Compare(other, report) &&
         CompareProperty(m_SpiralPitch, o->m_SpiralPitch, L"m_SpiralPitch", report, 1e-6) &&
         CompareProperty(m_HelicalPitch, o->m_HelicalPitch, L"m_HelicalPitch", report, 1e-6) &&
         CompareProperty(m_Radius, o->m_Radius, L"m_Radius", report, 1e-6) &&
         CompareProperty(m_StartAngle, o->m_StartAngle, L"m_StartAngle", report, 1e-6) &&
         CompareProperty(m_SweepAngle, o->m_SweepAngle, L"m_SweepAngle", report, 1e-6) &&
         CompareProperty(m_CenterPoint, o->m_CenterPoint, L"m_CenterPoint", report, 1e-6);
}

}  // namespace IOF

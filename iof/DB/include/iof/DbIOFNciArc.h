// DbIOFNciArc: a planar arc as the NC output sees it. Start, end and centre are stored
// explicitly together with the working plane, the direction, full-circle and helix
// flags, and the angles and radius as the writer gave them. Nothing is derived: every
// accessor is a plain get or set. Type IOFNCIARC (0x5105).
//
//   auto arc = IOF::DbIOFNciArc::Create();
//   arc->SetArcPlane(IOF::IofArcPlaneType::XY);
//   arc->SetStartPoint(IOF::GmPoint3D(10, 0, 0));
//   arc->SetEndPoint(IOF::GmPoint3D(0, 10, 0));
//   arc->SetSweepAngle(90.0);
//
// Archive (version 0), after DbIOFNciBaseMove: m_ArcPlane (4), m_StartPoint,
// m_EndPoint, m_CenterPoint (points), m_FullCircle (1), m_Clockwise (1), m_SweepAngle
// (8), m_IsHelix (1), m_Radius, m_StartAngle, m_EndAngle (8 each).
#pragma once

#include <iof/DbIOFNciBaseMove.h>
#include <iof/GmPoint3D.h>
#include <iof/IofEnums.h>

namespace IOF {

class DbIOFNciArc : public DbIOFNciBaseMove {
  IOF_RECORD(DbIOFNciArc, DbIOFNciBaseMove)

 public:
  static constexpr unsigned kVersion = 0;

  IofArcPlaneType GetArcPlane() const noexcept { return m_ArcPlane; }
  void SetArcPlane(IofArcPlaneType plane) noexcept { m_ArcPlane = plane; }
  const GmPoint3D& GetStartPoint() const noexcept { return m_StartPoint; }
  void SetStartPoint(const GmPoint3D& p) noexcept { m_StartPoint = p; }
  const GmPoint3D& GetEndPoint() const noexcept { return m_EndPoint; }
  void SetEndPoint(const GmPoint3D& p) noexcept { m_EndPoint = p; }
  const GmPoint3D& GetCenterPoint() const noexcept { return m_CenterPoint; }
  void SetCenterPoint(const GmPoint3D& p) noexcept { m_CenterPoint = p; }
  bool IsFullCircle() const noexcept { return m_FullCircle; }
  void SetFullCircle(bool full) noexcept { m_FullCircle = full; }
  bool IsClockwise() const noexcept { return m_Clockwise; }
  void SetClockwise(bool clockwise) noexcept { m_Clockwise = clockwise; }
  double GetSweepAngle() const noexcept { return m_SweepAngle; }
  void SetSweepAngle(double degrees) noexcept { m_SweepAngle = degrees; }
  bool IsHelical() const noexcept { return m_IsHelix; }
  void SetHelical(bool helix) noexcept { m_IsHelix = helix; }
  double GetRadius() const noexcept { return m_Radius; }
  void SetRadius(double radius) noexcept { m_Radius = radius; }
  double GetStartAngle() const noexcept { return m_StartAngle; }
  void SetStartAngle(double angle) noexcept { m_StartAngle = angle; }
  double GetEndAngle() const noexcept { return m_EndAngle; }
  void SetEndAngle(double angle) noexcept { m_EndAngle = angle; }

  // "G%d %d %d S(%lf %lf %lf) E(%lf %lf %lf) C(%lf %lf %lf) F%lf %d %d plane=%s sweep =%g
  // deg Dir:%s %s t=%gs INC = %d": G-code, plane number, cutter compensation, start, end,
  // centre, feed rate, position code, full circle (0/1), plane text ("NoPlane" for any
  // value but 0, 1, 2), sweep, "CLW"/"CCLW", contour position text, time, incremental flag.
  CString ToIOFString() const override;
  // DbIOFNciBaseMove, then m_ArcPlane, m_StartPoint, m_EndPoint, m_CenterPoint,
  // m_FullCircle, m_SweepAngle, m_Clockwise, m_IsHelix, m_Radius, m_StartAngle,
  // m_EndAngle. The sweep comes before the direction flag, unlike the archive: intended.
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciArc() = default;

 private:
  IofArcPlaneType m_ArcPlane = IofArcPlaneType::XY;  // stored as given, not checked
  GmPoint3D m_StartPoint;
  GmPoint3D m_EndPoint;
  GmPoint3D m_CenterPoint;
  bool m_FullCircle = false;
  bool m_Clockwise = false;
  double m_SweepAngle = 0.0;  // degrees
  bool m_IsHelix = false;
  double m_Radius = 0.0;
  double m_StartAngle = 0.0;
  double m_EndAngle = 0.0;
};

}  // namespace IOF

// DbIOFNciArc3D: a general arc described in its own coordinate system: centre, radius,
// start angle and signed sweep about the system's Z axis, with a helical pitch (rise
// along Z per full turn) and a spiral pitch (growth of the radius per full turn). Its
// start and end points are computed, in the arc's own coordinate system; the record
// named by m_ArcCSDbId is not consulted for that. Type IOFNCIARC3D (0x5106).
//
//   auto arc = IOF::DbIOFNciArc3D::Create();
//   arc->SetCenterPoint(IOF::GmPoint3D(0, 0, 0));
//   arc->SetRadius(10);
//   arc->SetSweepAngle(-2 * std::numbers::pi);  // one full clockwise turn
//   arc->SetHelicalPitch(5);                    // ... rising 5 along Z
//
// Archive (version 0), after DbIOFNciBaseMove: m_ArcCSDbId (8 raw bytes),
// m_CenterPoint (point), m_Radius, m_StartAngle, m_SweepAngle, m_HelicalPitch,
// m_SpiralPitch (8 each).
#pragma once

#include <iof/DbIOFNciBaseMove.h>
#include <iof/GmPoint3D.h>
#include <quarp/DbId.h>

namespace IOF {

class DbIOFNciArc3D : public DbIOFNciBaseMove {
  IOF_RECORD(DbIOFNciArc3D, DbIOFNciBaseMove)

 public:
  static constexpr unsigned kVersion = 0;

  Quarp::DbId GetArcCSDbId() const noexcept { return m_ArcCSDbId; }
  void SetArcCSDbId(Quarp::DbId id) noexcept { m_ArcCSDbId = id; }
  const GmPoint3D& GetCenterPoint() const noexcept { return m_CenterPoint; }
  void SetCenterPoint(const GmPoint3D& p) noexcept { m_CenterPoint = p; }
  double GetRadius() const noexcept { return m_Radius; }
  void SetRadius(double radius) noexcept { m_Radius = radius; }
  double GetStartAngle() const noexcept { return m_StartAngle; }
  void SetStartAngle(double radians) noexcept { m_StartAngle = radians; }
  double GetSweepAngle() const noexcept { return m_SweepAngle; }
  void SetSweepAngle(double radians) noexcept { m_SweepAngle = radians; }
  double GetHelicalPitch() const noexcept { return m_HelicalPitch; }
  void SetHelicalPitch(double pitch) noexcept { m_HelicalPitch = pitch; }
  double GetSpiralPitch() const noexcept { return m_SpiralPitch; }
  void SetSpiralPitch(double pitch) noexcept { m_SpiralPitch = pitch; }

  // m_StartAngle + m_SweepAngle.
  double GetEndAngle() const noexcept { return m_SweepAngle + m_StartAngle; }
  // A negative sweep.
  bool IsClockwise() const noexcept { return m_SweepAngle < 0.0; }
  bool IsHelical() const noexcept { return m_HelicalPitch != 0.0; }
  bool IsSpiral() const noexcept { return m_SpiralPitch != 0.0; }
  // A sweep of exactly 360.0 or -360.0 with both pitches 0. The sweep is otherwise in
  // radians, so a turn of 2 pi is not a full circle: intended, kept as it always was.
  bool IsFullCircle() const noexcept;

  // Centre + RotZ(start angle) * (radius, 0, 0).
  GmPoint3D GetStartPoint() const;
  // With turns = |sweep / 2 pi|: centre + RotZ(start + sweep) * (radius + turns * spiral
  // pitch, 0, 0) + (0, 0, turns * helical pitch).
  GmPoint3D GetEndPoint() const;

  // Empty: 3-D arcs show nothing in dumps (intended).
  CString ToIOFString() const override;
  // DbIOFNciBaseMove, then m_SpiralPitch, m_HelicalPitch, m_Radius, m_StartAngle,
  // m_SweepAngle, m_CenterPoint. m_ArcCSDbId is deliberately not compared.
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciArc3D() = default;

 private:
  Quarp::DbId m_ArcCSDbId;      // the arc's coordinate system record; fixed by the writer
  GmPoint3D m_CenterPoint;      // in the arc's coordinate system
  double m_Radius = 0.0;        // radius at the start
  double m_StartAngle = 0.0;    // radians, about the arc system's Z axis from its X axis
  double m_SweepAngle = 0.0;    // radians, signed: negative is clockwise
  double m_HelicalPitch = 0.0;  // rise along Z per full turn
  double m_SpiralPitch = 0.0;   // growth of the radius per full turn
};

}  // namespace IOF

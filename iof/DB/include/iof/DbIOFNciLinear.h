// DbIOFNciLinear: a straight move to an end point. Type IOFNCILINEAR (0x5104).
//
//   auto line = IOF::DbIOFNciLinear::Create();
//   line->SetEndPoint(IOF::GmPoint3D(10, 0, -2));
//   line->SetFeedRate(500);
//   operation->PushBack(mgr.Add(line));
//
// Archive (version 0), after DbIOFNciBaseMove: m_EndPoint (x, y, z).
#pragma once

#include <iof/DbIOFNciBaseMove.h>
#include <iof/GmPoint3D.h>

namespace IOF {

class DbIOFNciLinear : public DbIOFNciBaseMove {
  IOF_RECORD(DbIOFNciLinear, DbIOFNciBaseMove)

 public:
  static constexpr unsigned kVersion = 0;

  const GmPoint3D& GetEndPoint() const noexcept { return m_EndPoint; }
  void SetEndPoint(const GmPoint3D& p) noexcept { m_EndPoint = p; }

  // "G%d %d %lf %lf %lf %lf %d %s t=%gs INC = %d": G-code, cutter compensation, end
  // point, feed rate, position code, contour position text, time, incremental flag.
  CString ToIOFString() const override;
  // DbIOFNciBaseMove, then m_EndPoint.
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciLinear() = default;

 private:
  GmPoint3D m_EndPoint;
};

}  // namespace IOF

// DbIOFDrillMotionBlock: the motion block of a drill cycle, with two end points: the
// inherited m_EndPt (GetEndPoint1) and m_EndPt2 (GetEndPoint2). Type IOFDRILLMOTIONBLOCK
// (0x5142).
//
// Archive (version 0), after DbIOFMotionBlock: m_EndPt2 (UtIofMovePoint::Serialize).
#pragma once

#include <iof/DbIOFMotionBlock.h>

namespace IOF {

class DbIOFDrillMotionBlock : public DbIOFMotionBlock {
  IOF_RECORD(DbIOFDrillMotionBlock, DbIOFMotionBlock)

 public:
  static constexpr unsigned kVersion = 0;

  // The inherited end point, m_EndPt (a copy).
  UtIofMovePoint GetEndPoint1() const { return GetEndPt(); }
  void SetEndPoint1(const UtIofMovePoint& p) { SetEndPt(p); }
  // m_EndPt2 (a copy).
  UtIofMovePoint GetEndPoint2() const { return m_EndPt2; }
  void SetEndPoint2(const UtIofMovePoint& p) { m_EndPt2 = p; }

  // "DbIOFDrillMotionBlock End1:%s; End2:%s" with the texts of m_EndPt and m_EndPt2.
  CString ToIOFString() const override;
  // DbIOFMotionBlock, then m_EndPt2.
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFDrillMotionBlock() = default;

 private:
  UtIofMovePoint m_EndPt2;  // the cycle's second end point
};

}  // namespace IOF

// DbIOFMotionBlock: a tool motion as the NC output block carries it, the end values in
// machine axes (X, Y, Z, A, B, C), each with a flag saying whether the axis is present
// in the block. Motion blocks derive directly from the record base, not from the NCI
// base. Type IOFMOTIONBLOCK (0x5140); the arc, drill and multi-axis blocks derive from it.
//
// Archive (version 0), after DbIOFBase: m_EndPt (UtIofMovePoint::Serialize).
#pragma once

#include <iof/DbIOFBase.h>
#include <iof/UtIofMovePoint.h>

namespace IOF {

class DbIOFMotionBlock : public DbIOFBase {
  IOF_RECORD(DbIOFMotionBlock, DbIOFBase)

 public:
  static constexpr unsigned kVersion = 0;

  // A copy of the end point.
  UtIofMovePoint GetEndPt() const { return m_EndPt; }
  void SetEndPt(const UtIofMovePoint& p) { m_EndPt = p; }

  // "DbIOFMotionBlock End: %s" with the end point's text.
  CString ToIOFString() const override;
  // The record base, then m_EndPt with the move point's own equality (which looks at the
  // C axis only: intended).
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFMotionBlock() = default;

 private:
  UtIofMovePoint m_EndPt;  // end of the block in machine axes
};

}  // namespace IOF

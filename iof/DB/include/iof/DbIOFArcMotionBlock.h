// DbIOFArcMotionBlock: the motion block of an arc: besides the end point, the start and
// centre points in machine axes, the NC plane and whether the post is to output the arc
// reversed. Type IOFARCMOTIONBLOCK (0x5141).
//
// Archive (version 0), after DbIOFMotionBlock: m_StartPt, m_CenterPt (each
// UtIofMovePoint::Serialize; the start comes first), m_ReverseForPost (1), m_NCPlane (4).
#pragma once

#include <iof/DbIOFMotionBlock.h>
#include <iof/IofEnums.h>

namespace IOF {

class DbIOFArcMotionBlock : public DbIOFMotionBlock {
  IOF_RECORD(DbIOFArcMotionBlock, DbIOFMotionBlock)

 public:
  static constexpr unsigned kVersion = 0;

  // Copies of the points.
  UtIofMovePoint GetStartPt() const { return m_StartPt; }
  void SetStartPt(const UtIofMovePoint& p) { m_StartPt = p; }
  UtIofMovePoint GetCenterPt() const { return m_CenterPt; }
  void SetCenterPt(const UtIofMovePoint& p) { m_CenterPt = p; }
  bool GetReverseForPost() const noexcept { return m_ReverseForPost; }
  void SetReverseForPost(bool reverse) noexcept { m_ReverseForPost = reverse; }
  IofArcPlaneType GetNCPlane() const noexcept { return m_NCPlane; }
  void SetNCPlane(IofArcPlaneType plane) noexcept { m_NCPlane = plane; }

  // "DbIOFArcMotionBlock Pl:%s; St:%s; Ctr:%s; End: %s, reverse=%d": plane text ("G17",
  // "G18", "G19", "NoPlane"; empty for any other value), start, centre and end point
  // texts, m_ReverseForPost as 0 or 1.
  CString ToIOFString() const override;
  // DbIOFMotionBlock, then m_CenterPt, m_StartPt, m_ReverseForPost, m_NCPlane.
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFArcMotionBlock() = default;

 private:
  UtIofMovePoint m_StartPt;
  UtIofMovePoint m_CenterPt;
  bool m_ReverseForPost = false;                    // the post outputs the arc reversed
  IofArcPlaneType m_NCPlane = IofArcPlaneType::XY;  // stored as given, not checked
};

}  // namespace IOF

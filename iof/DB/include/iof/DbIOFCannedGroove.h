// DbIOFCannedGroove: the parameters of a lathe canned groove cycle: the shape's
// direction, the rough step, stock and dwell, the depth and peck increments, the finish
// back-off, step and stock, and the groove's start and end points. Type
// IOFCANNEDGROOVE (0x5160).
//
// Archive (version 0), after the record base: m_ShapeDirection (4), m_RoughStep,
// m_RoughStockX, m_RoughStockZ, m_RoughDwell, m_DepthInc, m_PeckInc (8 each), m_PeckDo
// (1), m_PeckLast, m_PeckRetractInc (8 each), m_FinishBackOffsetNum (4), m_FinishStep,
// m_FinishStockX, m_FinishStockZ (8 each). m_StartPt and m_EndPt are held, copied and
// compared but intentionally never archived: after a load they keep their defaults.
// Comparison: the record base, then the archived fields in order, then m_StartPt and
// m_EndPt (the move point's own equality).
#pragma once

#include <iof/DbIOFBase.h>
#include <iof/UtIofMovePoint.h>

namespace IOF {

class DbIOFCannedGroove : public DbIOFBase {
  IOF_RECORD(DbIOFCannedGroove, DbIOFBase)

 public:
  static constexpr unsigned kVersion = 0;

  int GetShapeDirection() const noexcept { return m_ShapeDirection; }
  void SetShapeDirection(int v) noexcept { m_ShapeDirection = v; }
  double GetRoughStep() const noexcept { return m_RoughStep; }
  void SetRoughStep(double v) noexcept { m_RoughStep = v; }
  double GetRoughStockX() const noexcept { return m_RoughStockX; }
  void SetRoughStockX(double v) noexcept { m_RoughStockX = v; }
  double GetRoughStockZ() const noexcept { return m_RoughStockZ; }
  void SetRoughStockZ(double v) noexcept { m_RoughStockZ = v; }
  double GetRoughDwell() const noexcept { return m_RoughDwell; }
  void SetRoughDwell(double v) noexcept { m_RoughDwell = v; }
  double GetDepthInc() const noexcept { return m_DepthInc; }
  void SetDepthInc(double v) noexcept { m_DepthInc = v; }
  double GetPeckInc() const noexcept { return m_PeckInc; }
  void SetPeckInc(double v) noexcept { m_PeckInc = v; }
  bool GetPeckDo() const noexcept { return m_PeckDo; }
  void SetPeckDo(bool v) noexcept { m_PeckDo = v; }
  double GetPeckLast() const noexcept { return m_PeckLast; }
  void SetPeckLast(double v) noexcept { m_PeckLast = v; }
  double GetPeckRetractInc() const noexcept { return m_PeckRetractInc; }
  void SetPeckRetractInc(double v) noexcept { m_PeckRetractInc = v; }
  int GetFinishBackOffsetNum() const noexcept { return m_FinishBackOffsetNum; }
  void SetFinishBackOffsetNum(int v) noexcept { m_FinishBackOffsetNum = v; }
  double GetFinishStep() const noexcept { return m_FinishStep; }
  void SetFinishStep(double v) noexcept { m_FinishStep = v; }
  double GetFinishStockX() const noexcept { return m_FinishStockX; }
  void SetFinishStockX(double v) noexcept { m_FinishStockX = v; }
  double GetFinishStockZ() const noexcept { return m_FinishStockZ; }
  void SetFinishStockZ(double v) noexcept { m_FinishStockZ = v; }
  const UtIofMovePoint& GetStartPt() const noexcept { return m_StartPt; }
  void SetStartPt(const UtIofMovePoint& p) { m_StartPt = p; }
  const UtIofMovePoint& GetEndPt() const noexcept { return m_EndPt; }
  void SetEndPt(const UtIofMovePoint& p) { m_EndPt = p; }

  // "IOF Canned Groove Object"
  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFCannedGroove() = default;

 private:
  int m_ShapeDirection = 0;
  double m_RoughStep = 0.0;
  double m_RoughStockX = 0.0;
  double m_RoughStockZ = 0.0;
  double m_RoughDwell = 0.0;
  double m_DepthInc = 0.0;
  double m_PeckInc = 0.0;
  bool m_PeckDo = false;  // peck the rough passes
  double m_PeckLast = 0.0;
  double m_PeckRetractInc = 0.0;
  int m_FinishBackOffsetNum = 0;
  double m_FinishStep = 0.0;
  double m_FinishStockX = 0.0;
  double m_FinishStockZ = 0.0;
  UtIofMovePoint m_StartPt;  // never archived: intended
  UtIofMovePoint m_EndPt;    // never archived: intended
};

}  // namespace IOF

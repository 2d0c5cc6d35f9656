// DbIOFNciMultiAx: a tool motion given by the tool-tip position and the tool axis
// direction, for machines with rotary axes. It also carries a compensation vector and
// offset value, and a flag for moves that the post-processing logic inserted rather
// than the toolpath. Vectors are stored as given (not normalised). Type IOFNCIMULTIAX
// (0x5107).
//
// Archive (version 0), after DbIOFNciBaseMove: m_ToolTipPt (point), m_ToolOrientVect,
// m_CompVector (vectors), m_CompOffsetValue (8), m_AddedByPostLogic (1).
#pragma once

#include <iof/DbIOFNciBaseMove.h>
#include <iof/GmPoint3D.h>
#include <iof/GmVector3D.h>

namespace IOF {

class DbIOFNciMultiAx : public DbIOFNciBaseMove {
  IOF_RECORD(DbIOFNciMultiAx, DbIOFNciBaseMove)

 public:
  static constexpr unsigned kVersion = 0;

  const GmPoint3D& GetToolTipPt() const noexcept { return m_ToolTipPt; }
  void SetToolTipPt(const GmPoint3D& p) noexcept { m_ToolTipPt = p; }
  const GmVector3D& GetToolOrientVect() const noexcept { return m_ToolOrientVect; }
  void SetToolOrientVect(const GmVector3D& v) { m_ToolOrientVect = v; }
  const GmVector3D& GetCompVector() const noexcept { return m_CompVector; }
  void SetCompVector(const GmVector3D& v) { m_CompVector = v; }
  double GetCompOffsetValue() const noexcept { return m_CompOffsetValue; }
  void SetCompOffsetValue(double value) noexcept { m_CompOffsetValue = value; }
  bool GetAddedByPostLogic() const noexcept { return m_AddedByPostLogic; }
  void SetAddedByPostLogic(bool added) noexcept { m_AddedByPostLogic = added; }

  // "G%d %lf %lf %lf %lf %lf %lf %lf %d %s %lf %lf %lf %s INC = %d": G-code, tool tip,
  // tool orientation, feed rate, position code, contour position text, compensation
  // vector, "T"/"F" for m_AddedByPostLogic, incremental flag. Neither the cutter
  // compensation nor the time nor the offset value is shown: intended.
  CString ToIOFString() const override;
  // DbIOFNciBaseMove, then m_ToolTipPt, m_ToolOrientVect, m_CompVector,
  // m_CompOffsetValue, m_AddedByPostLogic.
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciMultiAx() = default;

 private:
  GmPoint3D m_ToolTipPt;            // tool tip at the end of the move
  GmVector3D m_ToolOrientVect;      // tool axis direction
  GmVector3D m_CompVector;          // direction of the compensation offset
  double m_CompOffsetValue = 0.0;   // size of the compensation offset; the writer always sets it
  bool m_AddedByPostLogic = false;  // inserted by the post logic, not by the toolpath
};

}  // namespace IOF

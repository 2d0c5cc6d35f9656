// DbIOFNciCPSubProgRef: the sub-program call of a canned pattern-repeat rough cycle:
// the number of cuts, the rough step in X, the offset angle and the stock left in X and
// Z. Type IOFNCICPSUBPROGREF (0x5152).
//
// Archive (version 0), after DbIOFNciSubProgRef: m_nCuts (4), m_StepX, m_OffsetAngle,
// m_StockX, m_StockZ (8 each).
// Comparison: DbIOFNciSubProgRef, then m_nCuts, m_StepX, m_OffsetAngle, m_StockX,
// m_StockZ.
#pragma once

#include <iof/DbIOFNciSubProgRef.h>

namespace IOF {

class DbIOFNciCPSubProgRef : public DbIOFNciSubProgRef {
  IOF_RECORD(DbIOFNciCPSubProgRef, DbIOFNciSubProgRef)

 public:
  static constexpr unsigned kVersion = 0;

  int GetNumberOfCuts() const noexcept { return m_nCuts; }
  void SetNumberOfCuts(int cuts) noexcept { m_nCuts = cuts; }
  double GetRoughStepX() const noexcept { return m_StepX; }
  void SetRoughStepX(double step) noexcept { m_StepX = step; }
  double GetOffsetAngle() const noexcept { return m_OffsetAngle; }
  void SetOffsetAngle(double degrees) noexcept { m_OffsetAngle = degrees; }
  double GetStockX() const noexcept { return m_StockX; }
  void SetStockX(double stock) noexcept { m_StockX = stock; }
  double GetStockZ() const noexcept { return m_StockZ; }
  void SetStockZ(double stock) noexcept { m_StockZ = stock; }

  // "SubProgNum = %d, MatchSubRefId = %d, nCuts:%d, StepX:%g, OffsetAngle:%g, StockX:%g,
  // StockY:%g, INC = %d". Intended: the "StockY" label carries m_StockZ.
  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciCPSubProgRef() = default;

 private:
  int m_nCuts = 2;
  double m_StepX = 0.1;
  double m_OffsetAngle = 45.0;  // degrees
  double m_StockX = 0.01;
  double m_StockZ = 0.01;
};

}  // namespace IOF

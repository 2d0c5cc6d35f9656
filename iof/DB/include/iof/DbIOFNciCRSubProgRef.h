// DbIOFNciCRSubProgRef: the sub-program call of a canned rough cycle: the cutting
// direction, the overlap, the rough step and the stock left in X and Z. Type
// IOFNCICRSUBPROGREF (0x5153).
//
// Archive (version 0), after DbIOFNciSubProgRef: m_Direction (2), m_Overlap,
// m_RoughStep, m_StockX, m_StockZ (8 each).
// Comparison: DbIOFNciSubProgRef, then m_Direction, m_Overlap, m_RoughStep, m_StockX,
// m_StockZ.
#pragma once

#include <iof/DbIOFNciSubProgRef.h>

#include <cstdint>

namespace IOF {

class DbIOFNciCRSubProgRef : public DbIOFNciSubProgRef {
  IOF_RECORD(DbIOFNciCRSubProgRef, DbIOFNciSubProgRef)

 public:
  static constexpr unsigned kVersion = 0;

  std::int16_t GetDirection() const noexcept { return m_Direction; }
  void SetDirection(std::int16_t direction) noexcept { m_Direction = direction; }
  double GetOverlap() const noexcept { return m_Overlap; }
  void SetOverlap(double overlap) noexcept { m_Overlap = overlap; }
  double GetRoughStep() const noexcept { return m_RoughStep; }
  void SetRoughStep(double step) noexcept { m_RoughStep = step; }
  double GetStockX() const noexcept { return m_StockX; }
  void SetStockX(double stock) noexcept { m_StockX = stock; }
  double GetStockZ() const noexcept { return m_StockZ; }
  void SetStockZ(double stock) noexcept { m_StockZ = stock; }

  // "SubProgNum = %d, MatchSubRefId = %d, Direction:%d, Overlap:%g, RoughStep:%g,
  // StockX:%g, StockY:%g, INC = %d" (the direction sign-extended). Intended: the "StockY"
  // label carries m_StockZ.
  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciCRSubProgRef() = default;

 private:
  std::int16_t m_Direction = 0;  // cutting direction, stored as given
  double m_Overlap = 0.0;
  double m_RoughStep = 0.1;
  double m_StockX = 0.01;
  double m_StockZ = 0.01;
};

}  // namespace IOF

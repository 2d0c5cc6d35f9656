// DbIOFDrillPoint: one position at which a drill cycle is repeated: the two end points
// of the hole, the dwell, the heights of the cycle (initial, reference, top of stock,
// selected geometry, bottom) and a reverse flag. Type IOFDRILLPOINT (0x5163), a move.
//
// Archive (version 0), after DbIOFNciBaseMove: m_EndPoint1, m_EndPoint2 (points),
// m_Dwell, m_InitHeight, m_RefHeight, m_TopOfStock, m_SelGeoHeight, m_Bottom (8 each),
// m_ReverseFlag (4).
// Comparison: DbIOFNciBaseMove, then the fields in archive order.
#pragma once

#include <iof/DbIOFNciBaseMove.h>
#include <iof/GmPoint3D.h>

namespace IOF {

class DbIOFDrillPoint : public DbIOFNciBaseMove {
  IOF_RECORD(DbIOFDrillPoint, DbIOFNciBaseMove)

 public:
  static constexpr unsigned kVersion = 0;

  const GmPoint3D& GetEndPoint1() const noexcept { return m_EndPoint1; }
  void SetEndPoint1(const GmPoint3D& p) noexcept { m_EndPoint1 = p; }
  const GmPoint3D& GetEndPoint2() const noexcept { return m_EndPoint2; }
  void SetEndPoint2(const GmPoint3D& p) noexcept { m_EndPoint2 = p; }
  double GetDwell() const noexcept { return m_Dwell; }
  void SetDwell(double v) noexcept { m_Dwell = v; }
  double GetInitHeight() const noexcept { return m_InitHeight; }
  void SetInitHeight(double v) noexcept { m_InitHeight = v; }
  double GetRefHeight() const noexcept { return m_RefHeight; }
  void SetRefHeight(double v) noexcept { m_RefHeight = v; }
  double GetTopOfStock() const noexcept { return m_TopOfStock; }
  void SetTopOfStock(double v) noexcept { m_TopOfStock = v; }
  double GetSelGeoHeight() const noexcept { return m_SelGeoHeight; }
  void SetSelGeoHeight(double v) noexcept { m_SelGeoHeight = v; }
  double GetBottom() const noexcept { return m_Bottom; }
  void SetBottom(double v) noexcept { m_Bottom = v; }
  int GetReverseFlag() const noexcept { return m_ReverseFlag; }
  void SetReverseFlag(int v) noexcept { m_ReverseFlag = v; }

  // "IOF Cycle Repeat Object, INC = %d" with the move's incremental flag.
  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFDrillPoint() = default;

 private:
  GmPoint3D m_EndPoint1;
  GmPoint3D m_EndPoint2;
  double m_Dwell = 0.0;
  double m_InitHeight = 0.0;
  double m_RefHeight = 0.0;
  double m_TopOfStock = 0.0;
  double m_SelGeoHeight = 0.0;  // height of the selected geometry
  double m_Bottom = 0.0;
  int m_ReverseFlag = 0;
};

}  // namespace IOF

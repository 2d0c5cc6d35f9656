// DbIOFRotary: the rotary-axis settings of an operation: the rotary type and axis, the
// axis substitution (diameter, direction, axis, zero), unrolling and its tolerance,
// whether the substitution works on the inside, and the rotary axis vector. Type
// IOFROTARY (0x5164).
//
// Archive (version 1), after the record base: m_RotaryType, m_RotaryAxis (4 each),
// m_SubDia (8), m_SubDir, m_SubAxis (4 each), m_SubZero (8), m_UnrollOn (1), m_UnrollTol
// (8), m_AxisSubInterior (1), then, since version 1, m_RotaryVector (point). A version-0
// record keeps m_RotaryVector at the origin. The field list reads both layouts; it
// stands for the readers DeserializeV0 and DeserializeV1.
//
// Comparison: the record base, then every field in archive order.
#pragma once

#include <iof/DbIOFBase.h>
#include <iof/GmPoint3D.h>

namespace IOF {

class DbIOFRotary : public DbIOFBase {
  IOF_RECORD(DbIOFRotary, DbIOFBase)

 public:
  static constexpr unsigned kVersion = 1;

  int GetRotaryType() const noexcept { return m_RotaryType; }
  void SetRotaryType(int v) noexcept { m_RotaryType = v; }
  int GetRotaryAxis() const noexcept { return m_RotaryAxis; }
  void SetRotaryAxis(int v) noexcept { m_RotaryAxis = v; }
  double GetSubDia() const noexcept { return m_SubDia; }
  void SetSubDia(double v) noexcept { m_SubDia = v; }
  int GetSubDir() const noexcept { return m_SubDir; }
  void SetSubDir(int v) noexcept { m_SubDir = v; }
  int GetSubAxis() const noexcept { return m_SubAxis; }
  void SetSubAxis(int v) noexcept { m_SubAxis = v; }
  double GetSubZero() const noexcept { return m_SubZero; }
  void SetSubZero(double v) noexcept { m_SubZero = v; }
  // Intended: a setter without a getter.
  void SetUnrollOn(bool v) noexcept { m_UnrollOn = v; }
  double GetUnrollTol() const noexcept { return m_UnrollTol; }
  void SetUnrollTol(double v) noexcept { m_UnrollTol = v; }
  bool GetAxisSubInterior() const noexcept { return m_AxisSubInterior; }
  void SetAxisSubInterior(bool v) noexcept { m_AxisSubInterior = v; }
  const GmPoint3D& GetRotaryVector() const noexcept { return m_RotaryVector; }
  void SetRotaryVector(const GmPoint3D& v) noexcept { m_RotaryVector = v; }

  // "IOF Rotary Object"
  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFRotary() = default;

 private:
  int m_RotaryType = 0;
  int m_RotaryAxis = 0;
  double m_SubDia = 0.0;  // diameter of the axis substitution
  int m_SubDir = 0;
  int m_SubAxis = 0;
  double m_SubZero = 0.0;
  bool m_UnrollOn = false;  // no getter: intended
  double m_UnrollTol = 0.0;
  bool m_AxisSubInterior = false;
  GmPoint3D m_RotaryVector;  // since version 1
};

}  // namespace IOF

// DbIOFNciBase: the common base of every NCI record a stream holds in machining order
// (moves, planes, tool changes, generic codes, manual entries, machine operations):
// the record's G-code, the owning operation and the machining time. Type IOFNCIBASE
// (0x5101), an abstract level.
//
// Archive (version 0), after the record base: m_GCode, m_OwnerOpId (4 bytes each),
// m_Time (8 bytes).
#pragma once

#include <iof/DbIOFBase.h>

namespace IOF {

class DbIOFNciBase : public DbIOFBase {
  IOF_ABSTRACT_RECORD(DbIOFNciBase, DbIOFBase)

 public:
  static constexpr unsigned kVersion = 0;

  int GetGCode() const noexcept { return m_GCode; }
  void SetGCode(int gcode) noexcept { m_GCode = gcode; }
  int GetOperationId() const noexcept { return m_OwnerOpId; }
  void SetOperationId(int id) noexcept { m_OwnerOpId = id; }
  double GetTime() const noexcept { return m_Time; }
  // Stores t, except that a t below 0.001 (every negative value too), NaN or +infinity
  // is stored as 0.0. Loading applies the same rule.
  void SetTime(double t) noexcept { m_Time = FilterTime(t); }
  static double FilterTime(double t) noexcept;

  // "IOF NCI Base Object"
  CString ToIOFString() const override;
  // The record base, then m_GCode, m_OwnerOpId, m_Time.
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciBase() = default;

 private:
  void OnLoaded(unsigned version);  // applies the SetTime rule to the loaded time

  int m_GCode = 0;       // the NC code, printed as "G%d"; subclasses may set their own default
  int m_OwnerOpId = -1;  // the owning operation; -1 for none
  double m_Time = 0.0;   // machining time in seconds
};

}  // namespace IOF

// DbIOFStockDef: the stock definition of a part spindle (type IOFSTOCKDEF, 0x5173): the
// offset of the stock from the spindle. DbIOFPartSpindle::Initialize creates one.
//
// Archive (version 0), after the record base: m_OffsetVector (its own serialisation).
// Loading does not check the stored version: a newer one is read as version 0 (kept for
// compatibility with files written by older versions, which never checked it).
//
// Comparison: the record base, then m_OffsetVector (within 1e-6).
// Dump: "Offset vector (%f,%f,%f)".
#pragma once

#include <iof/DbIOFBase.h>
#include <iof/GmVector3D.h>

namespace IOF {

class DbIOFStockDef : public DbIOFBase {
  IOF_RECORD(DbIOFStockDef, DbIOFBase)

 public:
  static constexpr unsigned kVersion = 0;
  static constexpr bool kChecksVersion = false;  // intended: see the top of this file

  const GmVector3D& GetOffsetVector() const noexcept { return m_OffsetVector; }
  void SetOffsetVector(const GmVector3D& v) { m_OffsetVector = v; }

  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFStockDef() = default;

 private:
  GmVector3D m_OffsetVector;
};

}  // namespace IOF

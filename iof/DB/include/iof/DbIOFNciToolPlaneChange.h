// DbIOFNciToolPlaneChange: marks the point in a stream where the tool plane changes to
// a given plane record. Type IOFNCITOOLPLANECHANGE (0x5126).
//
// Archive (version 0), after DbIOFNciBase: m_PlaneDbId (8 raw bytes).
//
// Comparison: the DbIOFNciBase comparison; then, when this record's plane can be found
// in this record's manager and the other record's plane in the other's, the two planes'
// matrices as "ToolPlaneMatrix" (tolerance 2e-7). When either plane cannot be found the
// base comparison alone decides.
#pragma once

#include <iof/DbIOFNciBase.h>

namespace IOF {

class DbIOFNciToolPlaneChange : public DbIOFNciBase {
  IOF_RECORD(DbIOFNciToolPlaneChange, DbIOFNciBase)

 public:
  static constexpr unsigned kVersion = 0;
  // The tolerance of the "ToolPlaneMatrix" comparison (that of the plane matrices).
  static constexpr double kMatrixTolerance = 2e-7;

  Quarp::DbId GetPlaneDbId() const noexcept { return m_PlaneDbId; }
  void SetPlaneDbId(Quarp::DbId id) noexcept { m_PlaneDbId = id; }

  // "IOF Tool Plane Change Object - ref Plane %d" (the low 32 bits of the plane's id)
  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciToolPlaneChange() = default;

 private:
  Quarp::DbId m_PlaneDbId;  // the plane record that becomes the tool plane
};

}  // namespace IOF

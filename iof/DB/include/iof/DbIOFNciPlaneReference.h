// DbIOFNciPlaneReference: stands for an existing plane record (a DbIOFNciPlane in the
// same manager) and forwards every plane query to it, keeping only its own modal origin
// coordinates. Type code 0x5115; the type is deliberately not registered by name with
// the type registry (the class name is registered for archives).
//
//   auto ref = IOF::DbIOFNciPlaneReference::Create();
//   ref->SetReferencedPlaneId(planeId);
//   mgr.Add(ref);
//   int offset = ref->GetWorkOffsetNum();  // the plane's
//
// The plane is looked up in the manager that holds the reference. When it cannot be
// found (the reference is in no manager, the id names no plane, the plane was removed)
// every getter reports once through the assertion handler and returns a fallback, and
// every setter does nothing and reports nothing. The asymmetry is intended.
//
// Archive (version 0), after DbIOFNciPlaneBase: m_ReferencedPlaneId (8 raw bytes),
// m_ModeOriginMoveCoords.
//
// Comparison: the plane-base comparison (the type test only, so the reference's own NCI
// base fields are never compared: intended), then m_ReferencedPlaneId and
// m_ModeOriginMoveCoords. The referenced planes themselves are not compared.
#pragma once

#include <iof/DbIOFNciPlane.h>
#include <iof/DbIOFNciPlaneBase.h>

namespace IOF {

class DbIOFNciPlaneReference : public DbIOFNciPlaneBase {
  IOF_RECORD(DbIOFNciPlaneReference, DbIOFNciPlaneBase)

 public:
  static constexpr unsigned kVersion = 0;
  // The source named in the assertion reports of a missing plane.
  static constexpr const char* kAssertSource = "DB/src/DbIOFNciPlaneReference";

  Quarp::DbId GetReferencedPlaneId() const noexcept { return m_ReferencedPlaneId; }
  void SetReferencedPlaneId(Quarp::DbId id) noexcept { m_ReferencedPlaneId = id; }

  // Forwarded to the referenced plane. Fallbacks when it is missing: an empty comment,
  // `out` left unchanged, a move point with no axis set, false, the identity, -1.
  CString GetComment() const override;
  void SetComment(const CString& comment) override;
  void GetMatrix(GmXformMat3D& out) const override;
  void SetMatrix(const GmXformMat3D& matrix) override;
  UtIofMovePoint GetOriginMoveCoords() const override;
  void SetOriginMoveCoords(UtIofMovePoint coords) override;
  bool GetG68Compatible() const override;
  void SetG68Compatible(bool compatible) override;
  GmXformMat3D GetG68MapMatrix() const override;
  void SetG68MapMatrix(const GmXformMat3D& matrix) override;
  int GetWorkOffsetNum() const override;
  void SetWorkOffsetNum(int workOffset) override;

  // The reference's own modal origin coordinates (not forwarded).
  UtIofMovePoint GetModeOriginMoveCoords() const override { return m_ModeOriginMoveCoords; }
  void SetModeOriginMoveCoords(UtIofMovePoint coords) override { m_ModeOriginMoveCoords = std::move(coords); }

  // "IOF NCI Plane reference Object - RefPlaneId = %d" (the low 32 bits of the id)
  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciPlaneReference() = default;

  // The referenced plane, looked up in the manager that holds this record; false when
  // the record is in no manager or the lookup fails.
  bool GetReferencedPlane(Quarp::DbCPtr<DbIOFNciPlane>& plane) const;
  bool GetReferencedPlane(Quarp::DbPtr<DbIOFNciPlane>& plane);

 private:
  Quarp::DbId m_ReferencedPlaneId{~std::uint64_t{0}};  // the referenced plane; all bits set for none
  UtIofMovePoint m_ModeOriginMoveCoords;               // no axis set
};

}  // namespace IOF

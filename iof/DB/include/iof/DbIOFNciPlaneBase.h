// DbIOFNciPlaneBase: the common interface of the plane records (DbIOFNciPlane holds a
// plane's values, DbIOFNciPlaneReference stands for an existing plane). Type code
// 0x5113, an abstract level; the type is deliberately not registered by name with the
// type registry.
//
// Archive (version 0), after DbIOFNciBase: nothing of its own. The stored version is
// deliberately not checked on load.
//
// Comparison: the type test only; the NCI base part is deliberately not compared at
// this level.
#pragma once

#include <iof/DbIOFNciBase.h>
#include <iof/GmXformMat3D.h>
#include <iof/UtIofMovePoint.h>
#include <quarp/DbMgr.h>

namespace IOF {

class DbIOFNciPlaneBase : public DbIOFNciBase {
  IOF_ABSTRACT_RECORD(DbIOFNciPlaneBase, DbIOFNciBase)

 public:
  static constexpr unsigned kVersion = 0;

  // The plane interface.
  virtual CString GetComment() const = 0;
  virtual void SetComment(const CString& comment) = 0;
  // The plane's transform into `out`.
  virtual void GetMatrix(GmXformMat3D& out) const = 0;
  virtual void SetMatrix(const GmXformMat3D& matrix) = 0;
  virtual UtIofMovePoint GetOriginMoveCoords() const = 0;
  virtual void SetOriginMoveCoords(UtIofMovePoint coords) = 0;
  virtual UtIofMovePoint GetModeOriginMoveCoords() const = 0;
  virtual void SetModeOriginMoveCoords(UtIofMovePoint coords) = 0;
  virtual bool GetG68Compatible() const = 0;
  virtual void SetG68Compatible(bool compatible) = 0;
  virtual GmXformMat3D GetG68MapMatrix() const = 0;
  virtual void SetG68MapMatrix(const GmXformMat3D& matrix) = 0;
  virtual int GetWorkOffsetNum() const = 0;
  virtual void SetWorkOffsetNum(int workOffset) = 0;

  // Attaches `plane` (a read-only or writable typed pointer) to the record `id` of the
  // manager that holds `holder`. False when `holder` is in no manager or that manager
  // has no such record of the pointer's class.
  template <class Ptr>
  static bool FindPlane(const Quarp::DbBase& holder, Quarp::DbId id, Ptr& plane) {
    Quarp::DbMgr* mgr = holder.GetDbMgr();
    return mgr != nullptr && mgr->Get(plane, id, 0);
  }

  // "IOF NCI Plane Base Object"
  CString ToIOFString() const override;
  // The type test only, then true: the DbIOFNciBase comparison is deliberately skipped.
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciPlaneBase() = default;
};

}  // namespace IOF

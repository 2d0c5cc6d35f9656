#include <iof/DbIOFNciToolPlaneChange.h>

#include <iof/DbIOFNciPlaneBase.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFNciToolPlaneChange)

template <class F, class... R>
void DbIOFNciToolPlaneChange::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_PlaneDbId", r.m_PlaneDbId...);
}

CString DbIOFNciToolPlaneChange::ToIOFString() const {
  return CString::Formatted(L"IOF Tool Plane Change Object - ref Plane %d", m_PlaneDbId);
}

bool DbIOFNciToolPlaneChange::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciToolPlaneChange>(other, report);
  if (!o || !DbIOFNciBase::Compare(other, report)) return false;
  Quarp::DbCPtr<DbIOFNciPlaneBase> mine;
  Quarp::DbCPtr<DbIOFNciPlaneBase> theirs;
  if (!DbIOFNciPlaneBase::FindPlane(*this, m_PlaneDbId, mine) ||
      !DbIOFNciPlaneBase::FindPlane(*o, o->m_PlaneDbId, theirs)) {
    return true;  // a plane that cannot be found is not compared
  }
  GmXformMat3D myMatrix;
  GmXformMat3D otherMatrix;
  mine->GetMatrix(myMatrix);
  theirs->GetMatrix(otherMatrix);
  return CompareProperty(myMatrix, otherMatrix, L"ToolPlaneMatrix", report, kMatrixTolerance);
}

}  // namespace IOF

#include <iof/DbIOFNciPlane.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFNciPlane)

template <class F, class... R>
void DbIOFNciPlane::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_WorkOffsetNum", r.m_WorkOffsetNum...);
  f(Field::V(0), "m_PlaneId", r.m_PlaneId...);
  f(Field::V(0), "m_Comment", r.m_Comment...);
  f(Field::V(0), "m_IsG68Compatible", r.m_IsG68Compatible...);
  f(Field::V(0), "m_Matrix", r.m_Matrix...);
  f(Field::V(0), "m_OriginMoveCoords", r.m_OriginMoveCoords...);
  f(Field::V(0), "m_ModeOriginMoveCoords", r.m_ModeOriginMoveCoords...);
  f(Field::V(0), "m_G68MapMatrix", r.m_G68MapMatrix...);
  // Kept for compatibility with files written by older versions: version 0 carried one
  // more transform here.
  f(Field::Dropped(0, 0), "m_ObsoleteMatrix", Field::Discard<GmXformMat3D>{});
}

CString DbIOFNciPlane::ToIOFString() const {
  return CString::Formatted(L"IOF NCI Plane Object - WorkOffsetNum = %d", m_WorkOffsetNum);
}

bool DbIOFNciPlane::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciPlane>(other, report);
  // The plane-base level is skipped on purpose (it only tests the type), and m_Comment
  // is intentionally not compared.
  return o && DbIOFNciBase::Compare(other, report) && CompareProperty(m_PlaneId, o->m_PlaneId, L"m_PlaneId", report) &&
         CompareProperty(m_WorkOffsetNum, o->m_WorkOffsetNum, L"m_WorkOffsetNum", report) &&
         CompareProperty(m_Matrix, o->m_Matrix, L"m_Matrix", report, kMatrixTolerance) &&
         CompareProperty(m_OriginMoveCoords, o->m_OriginMoveCoords, L"m_OriginMoveCoords", report) &&
         CompareProperty(m_ModeOriginMoveCoords, o->m_ModeOriginMoveCoords, L"m_ModeOriginMoveCoords", report) &&
         CompareProperty(m_IsG68Compatible, o->m_IsG68Compatible, L"m_IsG68Compatible", report) &&
         CompareProperty(m_G68MapMatrix, o->m_G68MapMatrix, L"m_G68MapMatrix", report, kMatrixTolerance);
}

}  // namespace IOF

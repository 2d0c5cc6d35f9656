#include <iof/DbIOFNciPlaneReference.h>

#include "RecordImpl.h"

#include <zolt/Diagnostics.h>

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFNciPlaneReference)

template <class F, class... R>
void DbIOFNciPlaneReference::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_ReferencedPlaneId", r.m_ReferencedPlaneId...);
  f(Field::V(0), "m_ModeOriginMoveCoords", r.m_ModeOriginMoveCoords...);
}

namespace {

// A getter found no plane: reported with the getter's full name as both the function
// and the message, at the line the reports of this source have always carried.
void ReportMissingPlane(int line, const char* function) {
  Zolt::Diagnostics::Details::InvokeCurrentAssertHandler(DbIOFNciPlaneReference::kAssertSource, line, function,
                                                         function);
}

}  // namespace

bool DbIOFNciPlaneReference::GetReferencedPlane(Quarp::DbCPtr<DbIOFNciPlane>& plane) const {
  return FindPlane(*this, m_ReferencedPlaneId, plane);
}

bool DbIOFNciPlaneReference::GetReferencedPlane(Quarp::DbPtr<DbIOFNciPlane>& plane) {
  return FindPlane(*this, m_ReferencedPlaneId, plane);
}

CString DbIOFNciPlaneReference::GetComment() const {
  Quarp::DbCPtr<DbIOFNciPlane> plane;
  if (GetReferencedPlane(plane)) return plane->GetComment();
  ReportMissingPlane(38, "IOF::DbIOFNciPlaneReference::GetComment");
  return CString();
}

void DbIOFNciPlaneReference::SetComment(const CString& comment) {
  Quarp::DbPtr<DbIOFNciPlane> plane;
  if (GetReferencedPlane(plane)) plane->SetComment(comment);  // silently nothing without a plane: intended
}

void DbIOFNciPlaneReference::GetMatrix(GmXformMat3D& out) const {
  Quarp::DbCPtr<DbIOFNciPlane> plane;
  if (GetReferencedPlane(plane)) {
    plane->GetMatrix(out);
    return;
  }
  ReportMissingPlane(62, "IOF::DbIOFNciPlaneReference::GetMatrix");  // `out` stays as it was
}

void DbIOFNciPlaneReference::SetMatrix(const GmXformMat3D& matrix) {
  Quarp::DbPtr<DbIOFNciPlane> plane;
  if (GetReferencedPlane(plane)) plane->SetMatrix(matrix);
}

UtIofMovePoint DbIOFNciPlaneReference::GetOriginMoveCoords() const {
  Quarp::DbCPtr<DbIOFNciPlane> plane;
  if (GetReferencedPlane(plane)) return plane->GetOriginMoveCoords();
  ReportMissingPlane(94, "IOF::DbIOFNciPlaneReference::GetOriginMoveCoords");
  return UtIofMovePoint();
}

void DbIOFNciPlaneReference::SetOriginMoveCoords(UtIofMovePoint coords) {
  Quarp::DbPtr<DbIOFNciPlane> plane;
  if (GetReferencedPlane(plane)) plane->SetOriginMoveCoords(std::move(coords));
}

bool DbIOFNciPlaneReference::GetG68Compatible() const {
  Quarp::DbCPtr<DbIOFNciPlane> plane;
  if (GetReferencedPlane(plane)) return plane->GetG68Compatible();
  ReportMissingPlane(118, "IOF::DbIOFNciPlaneReference::GetG68Compatible");
  return false;
}

void DbIOFNciPlaneReference::SetG68Compatible(bool compatible) {
  Quarp::DbPtr<DbIOFNciPlane> plane;
  if (GetReferencedPlane(plane)) plane->SetG68Compatible(compatible);
}

GmXformMat3D DbIOFNciPlaneReference::GetG68MapMatrix() const {
  Quarp::DbCPtr<DbIOFNciPlane> plane;
  if (GetReferencedPlane(plane)) return plane->GetG68MapMatrix();
  ReportMissingPlane(132, "IOF::DbIOFNciPlaneReference::GetG68MapMatrix");
  return GmXformMat3D();
}

void DbIOFNciPlaneReference::SetG68MapMatrix(const GmXformMat3D& matrix) {
  Quarp::DbPtr<DbIOFNciPlane> plane;
  if (GetReferencedPlane(plane)) plane->SetG68MapMatrix(matrix);
}

int DbIOFNciPlaneReference::GetWorkOffsetNum() const {
  Quarp::DbCPtr<DbIOFNciPlane> plane;
  if (GetReferencedPlane(plane)) return plane->GetWorkOffsetNum();
  ReportMissingPlane(166, "IOF::DbIOFNciPlaneReference::GetWorkOffsetNum");
  return -1;
}

void DbIOFNciPlaneReference::SetWorkOffsetNum(int workOffset) {
  Quarp::DbPtr<DbIOFNciPlane> plane;
  if (GetReferencedPlane(plane)) plane->SetWorkOffsetNum(workOffset);
}

CString DbIOFNciPlaneReference::ToIOFString() const {
  return CString::Formatted(L"IOF NCI Plane reference Object - RefPlaneId = %d", m_ReferencedPlaneId);
}

bool DbIOFNciPlaneReference::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciPlaneReference>(other, report);
  // The plane-base comparison tests the type only: the NCI base fields of a reference
  // are never compared (intended).
  return o && DbIOFNciPlaneBase::Compare(other, report) &&
         CompareProperty(m_ReferencedPlaneId, o->m_ReferencedPlaneId, L"m_ReferencedPlaneId", report) &&
         CompareProperty(m_ModeOriginMoveCoords, o->m_ModeOriginMoveCoords, L"m_ModeOriginMoveCoords", report);
}

}  // namespace IOF

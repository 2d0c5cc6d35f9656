#include <iof/DbIOFNciPlaneBase.h>

#include "RecordImpl.h"

namespace IOF {

// The type answers come from the pattern; the archive is written by hand because this
// level's version is exchanged but deliberately not checked.
IOF_IMPLEMENT_RECORD_TYPE(DbIOFNciPlaneBase)

void DbIOFNciPlaneBase::Serialize(Quarp::UtArchive& ar) {
  // Intended: a stored version is accepted whatever it is, and nothing of this level
  // follows it.
  Quarp::UtSerializeVersion(ar, kVersion);
  DbIOFNciBase::Serialize(ar);
}

void DbIOFNciPlaneBase::Copy(const Quarp::DbBase& source, Quarp::DbCloneMode mode, Quarp::UtIdXRef* xref) {
  DbIOFNciBase::Copy(source, mode, xref);
}

void DbIOFNciPlaneBase::VisitFields(FieldVisitor& visitor) const { DbIOFNciBase::VisitFields(visitor); }

CString DbIOFNciPlaneBase::ToIOFString() const { return CString(L"IOF NCI Plane Base Object"); }

bool DbIOFNciPlaneBase::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  // Intended: the type test only; the NCI base fields are not compared at this level.
  return CompareTarget<DbIOFNciPlaneBase>(other, report) != nullptr;
}

}  // namespace IOF

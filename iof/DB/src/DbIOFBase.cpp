#include <iof/DbIOFBase.h>
#include <iof/DbIOFList.h>

#include "RecordImpl.h"

#include <cmath>

namespace IOF {

std::atomic<int> DbIOFBase::s_TypeIdx{-1};

DbIOFBase::DbIOFBase() = default;
DbIOFBase::~DbIOFBase() = default;

DbIOFBase::DbIOFBase(const DbIOFBase& other)
    : Quarp::DbBase(other),
      m_Name(other.m_Name),
      m_Attributes(other.m_Attributes ? std::make_unique<UtIOFAttribMap>(*other.m_Attributes) : nullptr),
      m_SubLists(other.m_SubLists) {}

DbIOFBase& DbIOFBase::operator=(const DbIOFBase& other) {
  if (this == &other) return *this;
  Quarp::DbBase::operator=(other);
  m_Name = other.m_Name;
  // A fresh copy replaces (and destroys) the map held so far.
  m_Attributes = other.m_Attributes ? std::make_unique<UtIOFAttribMap>(*other.m_Attributes) : nullptr;
  m_SubLists = other.m_SubLists;
  return *this;
}

const Quarp::UtString& DbIOFBase::GetClass() const {
  return Detail::RecordOps<DbIOFBase>::GetClass("IOF::DbIOFBase::GetClass");
}
std::uint64_t DbIOFBase::GetType() const { return kTypeCode; }
int DbIOFBase::GetTypeIdx() const { return CachedTypeIdx(s_TypeIdx, kTypeCode); }
bool DbIOFBase::ContainsType(const Quarp::UtMask& mask, bool withBases) const {
  return Detail::RecordOps<DbIOFBase>::ContainsType(*this, mask, withBases);
}
bool DbIOFBase::ContainsType(std::uint64_t code) const {
  return Detail::RecordOps<DbIOFBase>::ContainsType(*this, code);
}
int DbIOFBase::GetSubclassLevel(int n) const { return n + 2; }

UtIOFAttribMap& DbIOFBase::GetAttributes() {
  if (!m_Attributes) m_Attributes = std::make_unique<UtIOFAttribMap>();
  return *m_Attributes;
}

const UtIOFAttribMap& DbIOFBase::GetAttributes() const {
  static const UtIOFAttribMap empty;
  return m_Attributes ? *m_Attributes : empty;
}

bool DbIOFBase::AddSubList(Quarp::DbId id) {
  Quarp::DbMgr* mgr = GetDbMgr();
  if (!mgr) return false;
  Quarp::DbBaseCPtr target(nullptr);
  if (!mgr->Get(target, id, 0)) return false;
  m_SubLists.Add(id);
  return true;
}

Quarp::DbId DbIOFBase::GetSubList(int kinds) const {
  Quarp::DbMgr* mgr = GetDbMgr();
  if (!mgr) return Quarp::DbId();
  Quarp::DbCPtr<DbIOFList> list(nullptr);
  for (const Quarp::DbId id : m_SubLists) {
    if (mgr->Get(list, id, 0) && (list->GetListType() & kinds) != 0) return id;
  }
  return Quarp::DbId();
}

CString DbIOFBase::ToIOFString() const { return CString(L"DbIOFBase Base"); }

bool DbIOFBase::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  return CompareProperty(m_Name, other->m_Name, CString(L"m_Name"), report);
}

void DbIOFBase::Serialize(Quarp::UtArchive& ar) {
  const unsigned version = Quarp::UtSerializeVersion(ar, kVersion);
  Quarp::DbBase::Serialize(ar);
  if (ar.IsStoring()) {
    ar << m_Name;
    if (m_Attributes) {
      m_Attributes->Serialize(ar);
    } else {
      UtIOFAttribMap::StoreEmpty(ar);
    }
    m_SubLists.Serialize(ar);
    return;
  }
  Quarp::UtCheckVersion(version, kVersion, kClassName);
  ar >> m_Name;
  if (m_Attributes) {
    m_Attributes->Serialize(ar);
  } else {
    // Most records carry no attributes: a map is made only when the archive holds one.
    const std::int32_t count = UtIOFAttribMap::LoadHeader(ar);
    if (count != 0) {
      auto loaded = std::make_unique<UtIOFAttribMap>();
      loaded->LoadEntries(ar, count);
      if (!loaded->IsEmpty()) m_Attributes = std::move(loaded);
    }
  }
  m_SubLists.Serialize(ar);
}

void DbIOFBase::Copy(const Quarp::DbBase& source, Quarp::DbCloneMode mode, Quarp::UtIdXRef* xref) {
  Quarp::DbBase::Copy(source, mode, xref);
  const auto* src = dynamic_cast<const DbIOFBase*>(&source);
  if (!src || src == this) return;
  m_Name = src->m_Name;
  m_SubLists = src->m_SubLists;
  // The attribute map is deliberately not copied.
}

void DbIOFBase::VisitFields(FieldVisitor& visitor) const {
  visitor.OnString("m_Name", m_Name);
  visitor.OnAttributes("m_Attributes", GetAttributes());
  Detail::VisitValue(visitor, "m_SubLists", m_SubLists);
}

// --- property comparisons ----------------------------------------------------------------

namespace {
bool Differs(CString& report, const CString& line) {
  report += line;
  return false;
}
}  // namespace

bool DbIOFBase::CompareProperty(int a, int b, PropertyName name, CString& report) {
  return a == b || Differs(report, CString::Formatted(L"Difference Detected: %s - %d vs %d\n", name.Text(), a, b));
}
bool DbIOFBase::CompareProperty(long a, long b, PropertyName name, CString& report) {
  return a == b || Differs(report, CString::Formatted(L"Difference Detected: %s - %ld vs %ld\n", name.Text(), a, b));
}
bool DbIOFBase::CompareProperty(long long a, long long b, PropertyName name, CString& report) {
  return a == b || Differs(report, CString::Formatted(L"Difference Detected: %s - %ld vs %ld\n", name.Text(), a, b));
}
bool DbIOFBase::CompareProperty(Quarp::DbId a, Quarp::DbId b, PropertyName name, CString& report) {
  return a == b || Differs(report, CString::Formatted(L"Difference Detected: %s - %ld vs %ld\n", name.Text(), a, b));
}
bool DbIOFBase::CompareProperty(bool a, bool b, PropertyName name, CString& report) {
  return a == b || Differs(report, CString::Formatted(L"Difference Detected: %s - %s vs %s\n", name.Text(),
                                                      a ? L"true" : L"false", b ? L"true" : L"false"));
}
bool DbIOFBase::CompareProperty(const CString& a, const CString& b, PropertyName name, CString& report) {
  return a == b || Differs(report, CString::Formatted(L"Difference Detected: %s - %s vs %s\n", name.Text(), a, b));
}
bool DbIOFBase::CompareProperty(double a, double b, PropertyName name, CString& report, double tolerance) {
  return tolerance > std::fabs(a - b) ||
         Differs(report, CString::Formatted(L"Difference Detected: %s - %.12g vs %.12g\n", name.Text(), a, b));
}

namespace {
bool ComparePoints(double ax, double ay, double az, double bx, double by, double bz, DbIOFBase::PropertyName name,
                   CString& report, double tolerance) {
  const double distance = std::sqrt((ax - bx) * (ax - bx) + (ay - by) * (ay - by) + (az - bz) * (az - bz));
  return tolerance > distance ||
         Differs(report, CString::Formatted(L"Difference Detected: %s - (%.7g, %.7g, %.7g) vs (%.7g, %.7g, %.7g)\n",
                                            name.Text(), ax, ay, az, bx, by, bz));
}
}  // namespace

bool DbIOFBase::CompareProperty(const GmPoint3D& a, const GmPoint3D& b, PropertyName name, CString& report,
                                double tolerance) {
  return ComparePoints(a.x, a.y, a.z, b.x, b.y, b.z, name, report, tolerance);
}
bool DbIOFBase::CompareProperty(const GmVector3D& a, const GmVector3D& b, PropertyName name, CString& report,
                                double tolerance) {
  return ComparePoints(a[0], a[1], a[2], b[0], b[1], b[2], name, report, tolerance);
}
bool DbIOFBase::CompareProperty(const GmXformMat3D& a, const GmXformMat3D& b, PropertyName name, CString& report,
                                double tolerance) {
  return a.IsSame(b, 1e-7, tolerance) ||
         Differs(report, CString::Formatted(L"Difference Detected: %s - 4x4 vs 4x4\n", name.Text()));
}
bool DbIOFBase::CompareProperty(const UtAxisMotionMap& a, const UtAxisMotionMap& b, PropertyName name, CString& report,
                                double /*tolerance*/) {
  return a == b || Differs(report, CString::Formatted(L"Difference Detected: %s - %s vs %s\n", name.Text(),
                                                      a.ToString(), b.ToString()));
}
bool DbIOFBase::CompareProperty(const UtIofMovePoint& a, const UtIofMovePoint& b, PropertyName name, CString& report,
                                double /*tolerance*/) {
  return a == b || Differs(report, CString::Formatted(L"Difference Detected: %s - %s vs %s\n", name.Text(),
                                                      a.ToString(), b.ToString()));
}

}  // namespace IOF

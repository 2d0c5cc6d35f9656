// The record pattern, written once.
//
// Every IOF record class declares itself with one macro in its class body and
// implements itself with one macro in its source; its files then hold only its fields
// and its own logic.
//
//   // DbIOFNciLinear.h
//   class DbIOFNciLinear : public DbIOFNciBaseMove {
//     IOF_RECORD(DbIOFNciLinear, DbIOFNciBaseMove)
//    public:
//     static constexpr unsigned kVersion = 0;          // current archive version
//     ... accessors, ToIOFString, Compare ...
//    protected:
//     DbIOFNciLinear() = default;                      // sets every default
//    private:
//     GmPoint3D m_EndPoint;                            // fields in archive order
//   };
//
//   // DbIOFNciLinear.cpp
//   IOF_IMPLEMENT_RECORD(DbIOFNciLinear)
//   template <class F, class... R>
//   void DbIOFNciLinear::Fields(F&& f, R&... r) {      // the field list
//     f(Field::V(0), "m_EndPoint", r.m_EndPoint...);
//   }
//
// The declaration macros:
//   IOF_RECORD(Class, Base)              a concrete record with Create(DbMgr* = nullptr)
//   IOF_RECORD_CUSTOM_CREATE(Class, Base) a concrete record whose Create takes other
//                                        arguments; the class declares its own Create
//                                        and builds it on MakeNew(mgr)
//   IOF_ABSTRACT_RECORD(Class, Base)     an abstract level (no Create, no registration)
// They provide, the same for every class:
//   - GetClass(): the bare class name, filled once on first call (thread-safe) by
//     trimming the qualified name "IOF::Class::GetClass";
//   - GetType() (the class's type code), GetTypeIdx() (the host's index, cached in
//     s_TypeIdx), ContainsType(mask, withBases), ContainsType(code) and
//     GetSubclassLevel(n), each deferring to the base class as the chain requires;
//   - for concrete classes: registration of the class name with SerializeCreate at
//     load, GetObjectClassId()/GetObjectClassName(), the private Construct (error 12
//     when construction fails), MakeNew, Create, and Clone into a manager (error 16
//     when the clone cannot be attached);
//   - Serialize, Copy and VisitFields, generated from the class's field list.
//
// The field list is one function per class, `Fields`, that names each of the class's
// own fields in archive order: f(info, "m_Name", r.m_Name...). The generated code
// uses it four ways: to store the current layout, to load any older layout (a field
// is read only when the stored version has it), to copy, and to list the fields to a
// FieldVisitor. `info` says which versions hold a field and what the field takes part
// in (see namespace Field below). A class whose archive needs more than a field list
// can express (the record base, the list) writes those functions by hand. A class that
// declares `static constexpr bool kChecksVersion = false;` reads a newer stored version
// as its own instead of refusing it.
#pragma once

#include <iof/FieldVisitor.h>
#include <iof/IofSerial.h>
#include <iof/IofTypes.h>
#include <quarp/DbBase.h>
#include <quarp/DbMgr.h>
#include <quarp/DbPtr.h>
#include <quarp/UtString.h>

#include <atomic>
#include <cstdint>

namespace IOF {

namespace Detail {
template <class C>
struct RecordOps;  // the generated code; see RecordImpl.h in the library's sources
}

// What a field list entry says about a field.
namespace Field {

inline constexpr unsigned kLatest = ~0u;
enum : unsigned {
  kArchived = 1,  // stored and loaded
  kCopied = 2,    // copied by Copy
  kVisited = 4,   // listed to a FieldVisitor
  kAll = kArchived | kCopied | kVisited,
};

struct Info {
  unsigned since;  // first archive version that holds the field
  unsigned until;  // last archive version that holds it (kLatest: still held)
  unsigned flags;
};

// A field held since archive version `since`.
constexpr Info V(unsigned since) { return {since, kLatest, kAll}; }
// A field held, copied and listed but never archived.
inline constexpr Info NotArchived{0, kLatest, kCopied | kVisited};
// A field archived and listed but not copied by Copy.
constexpr Info NotCopied(unsigned since) { return {since, kLatest, kArchived | kVisited}; }
// A value that old layouts carried (versions since..until): read and thrown away.
constexpr Info Dropped(unsigned since, unsigned until) { return {since, until, kArchived}; }

// Stands for the value of a Dropped entry: f(Field::Dropped(0, 0), "extra", Discard<GmXformMat3D>{}).
template <class T>
struct Discard {};

}  // namespace Field

// Trims "IOF::DbIOFBase::GetClass" to "DbIOFBase": the last ':' (with the ':' before
// it) and everything after it go, then everything up to and including the last ':'
// that remains.
Quarp::UtString TrimClassName(const char* qualifiedFunction);

// The host's index of `code`, cached in `cache` once known.
int CachedTypeIdx(std::atomic<int>& cache, std::uint64_t code);

}  // namespace IOF

// --- declaration macros --------------------------------------------------------------

#define IOF_RECORD_TYPE_MEMBERS(Class, Base)                                                       \
 public:                                                                                           \
  using BaseClass = Base;                                                                          \
  static constexpr std::uint64_t kTypeCode = Quarp::DbTypeCode<Class>::value;                      \
  static constexpr const char* kClassName = #Class;                                                \
  const Quarp::UtString& GetClass() const override;                                                \
  std::uint64_t GetType() const override;                                                          \
  int GetTypeIdx() const override;                                                                 \
  bool ContainsType(const Quarp::UtMask& mask, bool withBases) const override;                     \
  bool ContainsType(std::uint64_t code) const override;                                            \
  int GetSubclassLevel(int n) const override;                                                      \
  void Serialize(Quarp::UtArchive& ar) override;                                                   \
  void Copy(const Quarp::DbBase& source, Quarp::DbCloneMode mode, Quarp::UtIdXRef* xref) override; \
  void VisitFields(::IOF::FieldVisitor& visitor) const override;                                   \
                                                                                                   \
 private:                                                                                          \
  friend struct ::IOF::Detail::RecordOps<Class>;                                                   \
  template <class F, class... R>                                                                   \
  static void Fields(F&& f, R&... r);                                                              \
  static std::atomic<int> s_TypeIdx;

#define IOF_ABSTRACT_RECORD(Class, Base) \
  IOF_RECORD_TYPE_MEMBERS(Class, Base)   \
                                         \
 public:

#define IOF_RECORD_CUSTOM_CREATE(Class, Base)                                                                \
  IOF_RECORD_TYPE_MEMBERS(Class, Base)                                                                       \
  IOF_DECLARE_SERIAL(Class)                                                                                  \
                                                                                                             \
 public:                                                                                                     \
  Quarp::DbBase* Clone(Quarp::DbCloneMode mode, Quarp::DbMgr* mgr, Quarp::UtIdXRef* xref, Quarp::DbErr& err) \
      const override;                                                                                        \
                                                                                                             \
 protected:                                                                                                  \
  /* A pointer with no record and error 12 when the record cannot be constructed. */                         \
  static Quarp::DbPtr<Class> MakeNew(Quarp::DbMgr* mgr);                                                     \
                                                                                                             \
 private:                                                                                                    \
  static bool Construct(Quarp::DbPtr<Class>& ptr, Quarp::DbMgr* mgr);                                        \
                                                                                                             \
 public:

#define IOF_RECORD(Class, Base)                                                              \
  IOF_RECORD_CUSTOM_CREATE(Class, Base)                                                      \
  /* A new record in no manager; add it with DbMgr::Add. Error 12 when it cannot be made. */ \
  static Quarp::DbPtr<Class> Create(Quarp::DbMgr* mgr = nullptr) { return MakeNew(mgr); }

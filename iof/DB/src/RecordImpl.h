// The generated half of the record pattern (see iof/IofRecord.h): what the
// IOF_IMPLEMENT_* macros expand to. Included by record sources only.
#pragma once

#include <iof/FieldVisitor.h>
#include <iof/GmPoint3D.h>
#include <iof/GmVector3D.h>
#include <iof/GmXformMat3D.h>
#include <iof/IofRecord.h>
#include <iof/UtAttribute.h>
#include <iof/UtAxisMotionMap.h>
#include <iof/UtIofMovePoint.h>
#include <quarp/DbMgr.h>
#include <quarp/UtArchive.h>
#include <quarp/UtArrayEx.h>
#include <quarp/UtSArrayEx.h>
#include <quarp/UtSerialize.h>

#include <map>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

namespace IOF::Detail {

// --- one field, four ways -------------------------------------------------------------

// Containers of the field lists: a sequence (std::vector) or an ordered map (std::map,
// or a class derived from one) is a 32-bit count, then each element (a map entry: its
// key, then its value). A count below 1 loads as empty; a count larger than the bytes
// that remain could hold is refused before anything is allocated; a map key stored twice
// keeps the later value. Structures inside them store and load through their own
// Serialize (without a version) and list themselves through VisitFields. A type with a
// Serialize of its own (a container included) is archived by it.
template <class T>
struct IsSequence : std::false_type {};
template <class T, class A>
struct IsSequence<std::vector<T, A>> : std::true_type {};
template <class T>
concept DerivedFromMap = requires {
  typename T::key_type;
  typename T::mapped_type;
  typename T::key_compare;
  typename T::allocator_type;
}
&&std::is_base_of_v<
    std::map<typename T::key_type, typename T::mapped_type, typename T::key_compare, typename T::allocator_type>, T>;
template <class T>
struct IsMap : std::bool_constant<DerivedFromMap<T>> {};
template <class T>
concept HasOwnSerialize = requires(T& t, Quarp::UtArchive& ar) {
  t.Serialize(ar);
};

// The fewest bytes one stored element can take, for the count check.
template <class T>
constexpr std::size_t MinStoredBytes() {
  if constexpr (std::is_arithmetic_v<T> || std::is_enum_v<T>) {
    return std::is_same_v<T, bool> ? 1 : (std::is_enum_v<T> ? 4 : sizeof(T));
  } else if constexpr (std::is_same_v<T, CString>) {
    return 4;
  } else {
    return 1;
  }
}

template <class T>
void StoreValue(Quarp::UtArchive& ar, const T& v);
template <class T>
void LoadValue(Quarp::UtArchive& ar, T& v);

// Reads a container's count: a value below 1 is an empty container.
inline std::size_t LoadCount(Quarp::UtArchive& ar, std::size_t minBytesEach) {
  std::int32_t count = 0;
  ar >> count;
  if (count < 1) return 0;
  ar.CheckCount(static_cast<std::uint64_t>(count), minBytesEach);
  return static_cast<std::size_t>(count);
}

template <class T>
void StoreValue(Quarp::UtArchive& ar, const T& v) {
  if constexpr (HasOwnSerialize<T>) {
    const_cast<T&>(v).Serialize(ar);  // storing does not change the value
  } else if constexpr (IsSequence<T>::value || IsMap<T>::value) {
    ar << static_cast<std::int32_t>(v.size());
    for (const auto& e : v) {
      if constexpr (IsMap<T>::value) {
        StoreValue(ar, e.first);
        StoreValue(ar, e.second);
      } else {
        StoreValue(ar, e);
      }
    }
  } else {
    ar << v;
  }
}

template <class T>
void LoadValue(Quarp::UtArchive& ar, T& v) {
  if constexpr (HasOwnSerialize<T>) {
    v.Serialize(ar);
  } else if constexpr (IsSequence<T>::value) {
    using E = typename T::value_type;
    const std::size_t count = LoadCount(ar, MinStoredBytes<E>());
    v.clear();
    v.reserve(count);
    for (std::size_t i = 0; i < count; ++i) LoadValue(ar, v.emplace_back());
  } else if constexpr (IsMap<T>::value) {
    using K = typename T::key_type;
    using V = typename T::mapped_type;
    const std::size_t count = LoadCount(ar, MinStoredBytes<K>() + MinStoredBytes<V>());
    v.clear();
    for (std::size_t i = 0; i < count; ++i) {
      K key{};
      V value{};
      LoadValue(ar, key);
      LoadValue(ar, value);
      // A key stored twice keeps the later value, also for values (attribute maps) whose
      // load adds to what they hold.
      v.erase(key);
      v.emplace(std::move(key), std::move(value));
    }
  } else {
    ar >> v;
  }
}

inline void VisitValue(FieldVisitor& fv, const char* n, bool v) { fv.OnBool(n, v); }
inline void VisitValue(FieldVisitor& fv, const char* n, double v) { fv.OnDouble(n, v); }
inline void VisitValue(FieldVisitor& fv, const char* n, Quarp::DbId v) { fv.OnId(n, v); }
inline void VisitValue(FieldVisitor& fv, const char* n, const CString& v) { fv.OnString(n, v); }
inline void VisitValue(FieldVisitor& fv, const char* n, const GmPoint3D& v) { fv.OnPoint(n, v); }
inline void VisitValue(FieldVisitor& fv, const char* n, const GmVector3D& v) { fv.OnVector(n, v); }
inline void VisitValue(FieldVisitor& fv, const char* n, const GmXformMat3D& v) { fv.OnMatrix(n, v); }
inline void VisitValue(FieldVisitor& fv, const char* n, const UtIofMovePoint& v) { fv.OnMovePoint(n, v); }
inline void VisitValue(FieldVisitor& fv, const char* n, const UtAxisMotionMap& v) { fv.OnAxisMotionMap(n, v); }
inline void VisitValue(FieldVisitor& fv, const char* n, const UtIOFAttribMap& v) { fv.OnAttributes(n, v); }
inline void VisitValue(FieldVisitor& fv, const char* n, const Quarp::UtSArrayEx<Quarp::DbId>& v) {
  fv.OnIds(n, std::span<const Quarp::DbId>(v.GetData(), static_cast<std::size_t>(v.GetSize())));
}
inline void VisitValue(FieldVisitor& fv, const char* n, const Quarp::UtArrayEx<unsigned char>& v) {
  fv.OnBytes(n, std::span<const std::uint8_t>(v.GetData(), static_cast<std::size_t>(v.GetSize())));
}
inline void VisitValue(FieldVisitor& fv, const char* n, const Quarp::UtArrayEx<double>& v) {
  fv.OnBeginGroup(n, static_cast<std::size_t>(v.GetSize()));
  for (const double d : v) {
    fv.OnBeginEntry();
    fv.OnDouble("value", d);
    fv.OnEndEntry();
  }
  fv.OnEndGroup();
}
template <class T>
requires(std::is_integral_v<T> || std::is_enum_v<T>) &&
    (!std::is_same_v<T, bool>)void VisitValue(FieldVisitor& fv, const char* n, T v) {
  if constexpr (std::is_enum_v<T>) {
    fv.OnInt(n, static_cast<std::int64_t>(v));
  } else if constexpr (std::is_signed_v<T>) {
    fv.OnInt(n, v);
  } else {
    fv.OnUInt(n, v);
  }
}

// An entry of a container: a structure lists its members in place, anything else is
// one field.
template <class T>
void VisitEntry(FieldVisitor& fv, const char* n, const T& v);

// A structure lists its own members.
template <class T>
requires requires(const T& t, FieldVisitor& fv) { t.VisitFields(fv); }
void VisitValue(FieldVisitor& fv, const char* n, const T& v) {
  fv.OnBeginGroup(n, 1);
  fv.OnBeginEntry();
  v.VisitFields(fv);
  fv.OnEndEntry();
  fv.OnEndGroup();
}
template <class T>
requires IsSequence<T>::value || IsMap<T>::value void VisitValue(FieldVisitor& fv, const char* n, const T& v) {
  fv.OnBeginGroup(n, v.size());
  for (const auto& e : v) {
    fv.OnBeginEntry();
    if constexpr (IsMap<T>::value) {
      VisitEntry(fv, "key", e.first);
      VisitEntry(fv, "value", e.second);
    } else {
      VisitEntry(fv, "value", e);
    }
    fv.OnEndEntry();
  }
  fv.OnEndGroup();
}

template <class T>
void VisitEntry(FieldVisitor& fv, const char* n, const T& v) {
  if constexpr (requires { v.VisitFields(fv); }) {
    v.VisitFields(fv);
  } else {
    VisitValue(fv, n, v);
  }
}

inline bool Holds(const Field::Info& info, unsigned version) { return info.since <= version && version <= info.until; }

struct StoreField {
  Quarp::UtArchive& ar;
  template <class T>
  void operator()(const Field::Info& info, const char*, const T& v) const {
    if ((info.flags & Field::kArchived) && info.until == Field::kLatest) StoreValue(ar, v);
  }
  template <class T>
  void operator()(const Field::Info&, const char*, Field::Discard<T>) const {}
};

struct LoadField {
  Quarp::UtArchive& ar;
  unsigned version;
  template <class T>
  void operator()(const Field::Info& info, const char*, T& v) const {
    if ((info.flags & Field::kArchived) && Holds(info, version)) LoadValue(ar, v);
  }
  template <class T>
  void operator()(const Field::Info& info, const char*, Field::Discard<T>) const {
    if (Holds(info, version)) {
      T dropped{};
      LoadValue(ar, dropped);
    }
  }
};

struct CopyField {
  template <class T>
  void operator()(const Field::Info& info, const char*, T& to, const T& from) const {
    if (info.flags & Field::kCopied) to = from;
  }
  template <class T>
  void operator()(const Field::Info&, const char*, Field::Discard<T>) const {}
};

struct VisitField {
  FieldVisitor& fv;
  template <class T>
  void operator()(const Field::Info& info, const char* name, const T& v) const {
    if (info.flags & Field::kVisited) VisitValue(fv, name, v);
  }
  template <class T>
  void operator()(const Field::Info&, const char*, Field::Discard<T>) const {}
};

// A class that declares `static constexpr bool kChecksVersion = false;` loads a newer
// stored version as if it were its own instead of refusing it.
template <class C>
constexpr bool ChecksVersion() {
  if constexpr (requires { C::kChecksVersion; }) {
    return C::kChecksVersion;
  } else {
    return true;
  }
}

// Serialisable objects that are not records (table entries, for instance) with a field
// list of their own, a public static `Fields`: the version exchange (a newer stored
// version is refused), then the fields, as a record's own part.
template <class C>
void SerializeObject(C& self, Quarp::UtArchive& ar, unsigned current, const char* className) {
  const unsigned version = Quarp::UtSerializeVersion(ar, current);
  if (ar.IsStoring()) return C::Fields(StoreField{ar}, self);
  Quarp::UtCheckVersion(version, current, className);
  C::Fields(LoadField{ar, version}, self);
}
template <class C>
void VisitObject(const C& self, FieldVisitor& fv) {
  C::Fields(VisitField{fv}, self);
}

// --- the generated members ------------------------------------------------------------

template <class C>
struct RecordOps {
  using Base = typename C::BaseClass;

  static const Quarp::UtString& GetClass(const char* qualified) {
    static const Quarp::UtString name = TrimClassName(qualified);
    return name;
  }
  static bool ContainsType(const C& self, const Quarp::UtMask& mask, bool withBases) {
    if (mask.IsSet(self.C::GetTypeIdx())) return true;  // this level's index, not the most derived
    return withBases && self.Base::ContainsType(mask, true);
  }
  static bool ContainsType(const C& self, std::uint64_t code) {
    return code == C::kTypeCode || self.Base::ContainsType(code);
  }

  // The version exchange, the base class, then the class's own fields. A stored version
  // newer than the class's throws the version error after the base part was read.
  static void Serialize(C& self, Quarp::UtArchive& ar) {
    const unsigned version = Quarp::UtSerializeVersion(ar, C::kVersion);
    self.Base::Serialize(ar);
    if (ar.IsStoring()) {
      C::Fields(StoreField{ar}, self);
      return;
    }
    if constexpr (ChecksVersion<C>()) Quarp::UtCheckVersion(version, C::kVersion, C::kClassName);
    C::Fields(LoadField{ar, version}, self);
    // A class may finish a load in an OnLoaded(version) of its own; an inherited one
    // (whose member pointer names the base class) ran at its own level already.
    if constexpr (requires { &C::OnLoaded; }) {
      if constexpr (std::is_same_v<decltype(&C::OnLoaded), void (C::*)(unsigned)>) self.OnLoaded(version);
    }
  }
  static void Copy(C& self, const Quarp::DbBase& source, Quarp::DbCloneMode mode, Quarp::UtIdXRef* xref) {
    self.Base::Copy(source, mode, xref);
    if (&source == &self || !source.ContainsType(C::kTypeCode)) return;
    C::Fields(CopyField{}, self, static_cast<const C&>(source));
  }
  static void Visit(const C& self, FieldVisitor& fv) {
    self.Base::VisitFields(fv);
    C::Fields(VisitField{fv}, self);
  }

  static bool Construct(Quarp::DbPtr<C>& ptr, Quarp::DbMgr* /*mgr*/) {
    C* made = new (std::nothrow) C();
    if (!made) return false;
    ptr.AttachEnt(made);
    return true;
  }
  static Quarp::DbPtr<C> MakeNew(Quarp::DbMgr* mgr) {
    Quarp::DbPtr<C> ptr(mgr);
    if (!C::Construct(ptr, mgr)) ptr.SetErr(Quarp::DbErr::ConstructFailed);
    return ptr;
  }
  // A new default record attached to a pointer of `mgr` and added there, then a copy of
  // `self` through the virtual Copy. Error 16 when the record cannot be attached.
  static Quarp::DbBase* Clone(const C& self, Quarp::DbCloneMode mode, Quarp::DbMgr* mgr, Quarp::UtIdXRef* xref,
                              Quarp::DbErr& err) {
    Quarp::DbPtr<C> ptr(mgr);
    C::Construct(ptr, mgr);
    if (ptr.IsNull() || !mgr || mgr->Add(ptr).IsNull()) {
      ptr.SetErr(Quarp::DbErr::AttachFailed);
      err = Quarp::DbErr::AttachFailed;
      return nullptr;
    }
    C* made = ptr.Get();
    made->Copy(self, mode, xref);
    if (xref) xref->Add(self.GetId(), made->GetId());
    err = Quarp::DbErr::Ok;
    return made;
  }
};

}  // namespace IOF::Detail

// --- implementation macros -------------------------------------------------------------

// The type answers of IOF_ABSTRACT_RECORD and IOF_RECORD.
#define IOF_IMPLEMENT_RECORD_TYPE(Class)                                               \
  std::atomic<int> Class::s_TypeIdx{-1};                                               \
  const Quarp::UtString& Class::GetClass() const {                                     \
    return ::IOF::Detail::RecordOps<Class>::GetClass("IOF::" #Class "::GetClass");     \
  }                                                                                    \
  std::uint64_t Class::GetType() const { return kTypeCode; }                           \
  int Class::GetTypeIdx() const { return ::IOF::CachedTypeIdx(s_TypeIdx, kTypeCode); } \
  bool Class::ContainsType(const Quarp::UtMask& mask, bool withBases) const {          \
    return ::IOF::Detail::RecordOps<Class>::ContainsType(*this, mask, withBases);      \
  }                                                                                    \
  bool Class::ContainsType(std::uint64_t code) const {                                 \
    return ::IOF::Detail::RecordOps<Class>::ContainsType(*this, code);                 \
  }                                                                                    \
  int Class::GetSubclassLevel(int n) const { return BaseClass::GetSubclassLevel(n + 1); }

// Serialize, Copy and VisitFields from the class's field list.
#define IOF_IMPLEMENT_FIELD_OPS(Class)                                                                   \
  void Class::Serialize(Quarp::UtArchive& ar) { ::IOF::Detail::RecordOps<Class>::Serialize(*this, ar); } \
  void Class::Copy(const Quarp::DbBase& source, Quarp::DbCloneMode mode, Quarp::UtIdXRef* xref) {        \
    ::IOF::Detail::RecordOps<Class>::Copy(*this, source, mode, xref);                                    \
  }                                                                                                      \
  void Class::VisitFields(::IOF::FieldVisitor& visitor) const {                                          \
    ::IOF::Detail::RecordOps<Class>::Visit(*this, visitor);                                              \
  }

// Registration, Construct, MakeNew and Clone of a concrete record.
#define IOF_IMPLEMENT_RECORD_CREATION(Class)                                                                        \
  IOF_IMPLEMENT_SERIAL(Class)                                                                                       \
  bool Class::Construct(Quarp::DbPtr<Class>& ptr, Quarp::DbMgr* mgr) {                                              \
    return ::IOF::Detail::RecordOps<Class>::Construct(ptr, mgr);                                                    \
  }                                                                                                                 \
  Quarp::DbPtr<Class> Class::MakeNew(Quarp::DbMgr* mgr) { return ::IOF::Detail::RecordOps<Class>::MakeNew(mgr); }   \
  Quarp::DbBase* Class::Clone(Quarp::DbCloneMode mode, Quarp::DbMgr* mgr, Quarp::UtIdXRef* xref, Quarp::DbErr& err) \
      const {                                                                                                       \
    return ::IOF::Detail::RecordOps<Class>::Clone(*this, mode, mgr, xref, err);                                     \
  }

// Serialize (with the class's kVersion) and VisitFields of a serialisable object that is
// not a record, from its field list.
#define IOF_IMPLEMENT_OBJECT_FIELDS(Class)                                                                     \
  void Class::Serialize(Quarp::UtArchive& ar) { ::IOF::Detail::SerializeObject(*this, ar, kVersion, #Class); } \
  void Class::VisitFields(::IOF::FieldVisitor& visitor) const { ::IOF::Detail::VisitObject(*this, visitor); }

// Everything of an abstract level / a concrete record whose archive is its field list.
#define IOF_IMPLEMENT_ABSTRACT_RECORD(Class) \
  IOF_IMPLEMENT_RECORD_TYPE(Class)           \
  IOF_IMPLEMENT_FIELD_OPS(Class)
#define IOF_IMPLEMENT_RECORD(Class)    \
  IOF_IMPLEMENT_RECORD_TYPE(Class)     \
  IOF_IMPLEMENT_RECORD_CREATION(Class) \
  IOF_IMPLEMENT_FIELD_OPS(Class)

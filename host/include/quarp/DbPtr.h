// Record pointers.
//
// DbRootPtr is the base of every record pointer: it refers to at most one record,
// shares ownership of records that are in no manager, carries a manager (the context
// it was made for, null allowed) and a DbErr that creation code may set.
//
//   DbBasePtr / DbBaseCPtr      writable / read-only pointer to any record
//   DbPtr<T> / DbCPtr<T>        writable / read-only pointer to a T (or a class derived
//                               from it); attaching any other record fails
//
// The typed templates carry the record class's type code (DbTypeCode<T>), so that
// DbCPtr<DbIOFBase> and DbCPtr<DbIOFBase, DbBaseCPtr, 0x5100> are one and the same
// type. A read-only typed pointer converts implicitly from any typed pointer of a
// derived class, a writable one from a writable pointer of a derived class.
//
// Dereferencing a null pointer calls NullAccess(), which reports the fault through the
// assertion handler and throws DbNullAccess.
#pragma once

#include <quarp/DbBase.h>
#include <quarp/DbErr.h>

#include <cstdint>
#include <stdexcept>
#include <type_traits>

namespace Quarp {

class DbMgr;

// The type code that a typed pointer to T requires. Record libraries specialise it for
// their classes (so that the code is known where T is only declared); otherwise it is
// T::kTypeCode.
template <class T>
struct DbTypeCode {
  static constexpr std::uint64_t value = T::kTypeCode;
};
template <>
struct DbTypeCode<DbBase> {
  static constexpr std::uint64_t value = 0;
};

// Thrown by NullAccess() after it has reported a null dereference.
class DbNullAccess : public std::logic_error {
 public:
  DbNullAccess() : std::logic_error("null record pointer dereferenced") {}
};

class DbRootPtr {
 public:
  DbRootPtr(const DbRootPtr& other) noexcept;
  DbRootPtr(DbRootPtr&& other) noexcept;
  DbRootPtr& operator=(const DbRootPtr& other) noexcept;
  DbRootPtr& operator=(DbRootPtr&& other) noexcept;
  ~DbRootPtr() { Release(); }

  // Refers to `ent` from now on (sharing ownership when it is in no manager). Fails,
  // leaving the pointer null with DbErr::NotFound, when `ent` is not of the pointer's
  // class. A null `ent` detaches.
  bool AttachEnt(DbBase* ent, int mode = 0);
  // Shares the record of `other`, with the same class check.
  bool AttachSp(const DbRootPtr& other);
  // Stops referring to the record (deleting it if it is in no manager and this was the
  // last pointer to it).
  void Detach() noexcept { Release(); }
  // Removes the record from its manager and detaches; the record is deleted as soon as
  // no pointer refers to it.
  void Destroy();

  bool IsConst() const noexcept { return m_const; }
  bool IsNull() const noexcept { return m_ent == nullptr; }
  explicit operator bool() const noexcept { return m_ent != nullptr; }

  // The manager the pointer was made for; the record's own manager once attached to a
  // record that is held by one.
  DbMgr* GetDbMgr() const noexcept;
  void SetDbMgr(DbMgr* mgr) noexcept { m_mgr = mgr; }

  DbErr GetErr() const noexcept { return m_err; }
  void SetErr(DbErr err) noexcept { m_err = err; }

  // The record's id, or the null id.
  DbId GetId() const noexcept { return m_ent ? m_ent->GetId() : DbId(); }
  // The type code a record must contain to be attached (0: any record).
  std::uint64_t GetRequiredType() const noexcept { return m_typeCode; }
  bool Accepts(const DbBase* ent) const { return m_typeCode == 0 || ent->ContainsType(m_typeCode); }

  // Reports a null dereference and throws DbNullAccess.
  [[noreturn]] void NullAccess() const;

  // The record, or null, without a check.
  DbBase* GetEnt() const noexcept { return m_ent; }

 protected:
  DbRootPtr(DbMgr* mgr, bool isConst, std::uint64_t typeCode) noexcept
      : m_mgr(mgr), m_typeCode(typeCode), m_const(isConst) {}
  DbBase* Checked() const {
    if (!m_ent) NullAccess();
    return m_ent;
  }

 private:
  void Share(DbBase* ent) noexcept;
  void Release() noexcept;

  DbBase* m_ent = nullptr;
  DbMgr* m_mgr = nullptr;
  std::uint64_t m_typeCode = 0;
  DbErr m_err = DbErr::Ok;
  bool m_const = false;
};

class DbBasePtr : public DbRootPtr {
 public:
  explicit DbBasePtr(DbMgr* mgr = nullptr) noexcept : DbRootPtr(mgr, false, 0) {}
  DbBase* operator->() const { return Checked(); }
  DbBase& operator*() const { return *Checked(); }
  DbBase* Get() const noexcept { return GetEnt(); }

 protected:
  DbBasePtr(DbMgr* mgr, std::uint64_t typeCode) noexcept : DbRootPtr(mgr, false, typeCode) {}
};

class DbBaseCPtr : public DbRootPtr {
 public:
  explicit DbBaseCPtr(DbMgr* mgr = nullptr) noexcept : DbRootPtr(mgr, true, 0) {}
  // A read-only view of any pointer's record.
  DbBaseCPtr(const DbRootPtr& other) noexcept : DbRootPtr(other.GetDbMgr(), true, 0) {  // NOLINT
    AttachSp(other);
    SetErr(other.GetErr());
  }
  const DbBase* operator->() const { return Checked(); }
  const DbBase& operator*() const { return *Checked(); }
  const DbBase* Get() const noexcept { return GetEnt(); }

 protected:
  DbBaseCPtr(DbMgr* mgr, std::uint64_t typeCode) noexcept : DbRootPtr(mgr, true, typeCode) {}
};

template <class T, class Base = DbBaseCPtr, std::uint64_t TypeCode = DbTypeCode<T>::value>
class DbCPtr;

template <class T, class Base = DbBasePtr, class CPtr = DbCPtr<T>, std::uint64_t TypeCode = DbTypeCode<T>::value>
class DbPtr : public Base {
 public:
  using element_type = T;
  using ConstPtr = CPtr;

  explicit DbPtr(DbMgr* mgr = nullptr) noexcept : Base(mgr, TypeCode) {}
  DbPtr(const DbPtr&) noexcept = default;
  DbPtr(DbPtr&&) noexcept = default;
  DbPtr& operator=(const DbPtr&) noexcept = default;
  DbPtr& operator=(DbPtr&&) noexcept = default;

  // From a writable pointer to a derived class.
  template <class U, class B2, class C2, std::uint64_t K>
  requires(std::is_base_of_v<T, U> && !std::is_same_v<T, U>) DbPtr(const DbPtr<U, B2, C2, K>& other)
  noexcept : Base(other.GetDbMgr(), TypeCode) {  // NOLINT
    this->AttachSp(other);
    this->SetErr(other.GetErr());
  }

  T* operator->() const { return static_cast<T*>(this->Checked()); }
  T& operator*() const { return *static_cast<T*>(this->Checked()); }
  T* Get() const noexcept { return static_cast<T*>(this->GetEnt()); }
};

template <class T, class Base, std::uint64_t TypeCode>
class DbCPtr : public Base {
 public:
  using element_type = T;

  explicit DbCPtr(DbMgr* mgr = nullptr) noexcept : Base(mgr, TypeCode) {}
  DbCPtr(const DbCPtr&) noexcept = default;
  DbCPtr(DbCPtr&&) noexcept = default;
  DbCPtr& operator=(const DbCPtr&) noexcept = default;
  DbCPtr& operator=(DbCPtr&&) noexcept = default;

  // From a read-only pointer to a derived class.
  template <class U, class B2, std::uint64_t K>
  requires(std::is_base_of_v<T, U> && !std::is_same_v<T, U>) DbCPtr(const DbCPtr<U, B2, K>& other)
  noexcept : Base(other.GetDbMgr(), TypeCode) {  // NOLINT
    this->AttachSp(other);
    this->SetErr(other.GetErr());
  }
  // From a writable pointer to this class or a derived class.
  template <class U, class B2, class C2, std::uint64_t K>
  requires std::is_base_of_v<T, U> DbCPtr(const DbPtr<U, B2, C2, K>& other)
  noexcept : Base(other.GetDbMgr(), TypeCode) {  // NOLINT
    this->AttachSp(other);
    this->SetErr(other.GetErr());
  }

  const T* operator->() const { return static_cast<const T*>(this->Checked()); }
  const T& operator*() const { return *static_cast<const T*>(this->Checked()); }
  const T* Get() const noexcept { return static_cast<const T*>(this->GetEnt()); }
};

}  // namespace Quarp

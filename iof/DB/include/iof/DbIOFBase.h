// DbIOFBase: the root of every IOF record (type IOFBASE, 0x5100).
//
// It adds to the framework's record a name, an attribute map and the ids of the
// sub-lists hung under the record, and it fixes for the whole library how two records
// are compared: property by property, each difference reported as one "Difference
// Detected" line, stopping at the first.
//
// Archive (version 0): the framework part (empty), the name, the attribute map, the
// sub-list ids.
#pragma once

#include <afx/CString.h>
#include <iof/FieldVisitor.h>
#include <iof/IofRecord.h>
#include <iof/IofTypes.h>
#include <quarp/DbBase.h>
#include <quarp/DbPtr.h>
#include <quarp/UtSArrayEx.h>

#include <memory>

namespace IOF {

class GmPoint3D;
class GmVector3D;
class GmXformMat3D;
class UtAxisMotionMap;
class UtIofMovePoint;
class UtIOFAttribMap;

class DbIOFBase : public Quarp::DbBase {
 public:
  using BaseClass = Quarp::DbBase;
  static constexpr std::uint64_t kTypeCode = 0x5100;
  static constexpr const char* kClassName = "DbIOFBase";
  static constexpr unsigned kVersion = 0;

  ~DbIOFBase() override;

  // Type answers (see IofRecord.h).
  const Quarp::UtString& GetClass() const override;
  std::uint64_t GetType() const override;
  int GetTypeIdx() const override;
  bool ContainsType(const Quarp::UtMask& mask, bool withBases) const override;
  bool ContainsType(std::uint64_t code) const override;
  // n + 2: the depth below the framework root.
  int GetSubclassLevel(int n) const override;

  CString GetIOFName() const { return m_Name; }
  void SetIOFName(const CString& name) { m_Name = name; }

  // The record's attributes, created empty on first use.
  UtIOFAttribMap& GetAttributes();
  const UtIOFAttribMap& GetAttributes() const;

  // Appends `id` when the record is held by a manager that resolves `id`.
  bool AddSubList(Quarp::DbId id);
  // The first sub-list, in stored order, whose list kind shares a bit with `kinds`; the
  // null id when none does or the record is in no manager. Unresolvable ids are skipped.
  Quarp::DbId GetSubList(int kinds) const;
  bool HasSubLists() const noexcept { return m_SubLists.GetSize() > 0; }
  const Quarp::UtSArrayEx<Quarp::DbId>& GetSubLists() const noexcept { return m_SubLists; }

  // "DbIOFBase Base"; every record class gives its own one-line text.
  virtual CString ToIOFString() const;

  // Compares this record with `other`; true when no difference was found. The base
  // compares the name ("m_Name") only, not the attributes or the sub-lists. Each class
  // checks the other record's type ("Incompatible types.\n"), compares its base part,
  // then its own properties, appending one line for the first difference.
  virtual bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const;

  // Lists the fields, base class first, in archive order.
  virtual void VisitFields(FieldVisitor& visitor) const;

  void Serialize(Quarp::UtArchive& ar) override;
  // Copies the name and (when source and target differ) the sub-list ids. The attribute
  // map is deliberately not copied, unlike the copy constructor and operator=.
  void Copy(const Quarp::DbBase& source, Quarp::DbCloneMode mode, Quarp::UtIdXRef* xref) override;

 protected:
  DbIOFBase();
  // Copy the name, the attribute map and the sub-list ids. Copying an attribute map
  // that holds a 64-bit attribute throws a CString (see UtIOFAttribMap).
  DbIOFBase(const DbIOFBase& other);
  DbIOFBase& operator=(const DbIOFBase& other);

  // The other record as a C, or null after appending "Incompatible types.\n" when it
  // is not one. Dereferencing an empty pointer reaches NullAccess().
  template <class C>
  static const C* CompareTarget(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) {
    const DbIOFBase* o = other.operator->();
    if (!o->ContainsType(C::kTypeCode)) {
      report += L"Incompatible types.\n";
      return nullptr;
    }
    return static_cast<const C*>(o);
  }

  // Public: comparison helpers of the library outside the class take it too.
 public:
  // The name of a compared property, wide text or a CString, made into text only for a
  // difference line: comparing equal values costs nothing for the name.
  class PropertyName {
   public:
    PropertyName(const wchar_t* text) noexcept : m_Wide(text) {}   // NOLINT: implicit
    PropertyName(const CString& text) noexcept : m_Text(&text) {}  // NOLINT: implicit
    CString Text() const { return m_Text ? *m_Text : CString(m_Wide); }

   private:
    const wchar_t* m_Wide = nullptr;
    const CString* m_Text = nullptr;
  };

 protected:
  // Property comparisons: true when equal; otherwise one line is appended to `report`,
  // this record's value first. Reals, points and vectors are equal when the tolerance
  // is strictly greater than their difference (so a tolerance of 0 reports even
  // identical values). The long, 64-bit and id forms print "%ld": the low 32 bits.
  static bool CompareProperty(int a, int b, PropertyName name, CString& report);
  static bool CompareProperty(long a, long b, PropertyName name, CString& report);
  static bool CompareProperty(long long a, long long b, PropertyName name, CString& report);
  static bool CompareProperty(Quarp::DbId a, Quarp::DbId b, PropertyName name, CString& report);
  static bool CompareProperty(bool a, bool b, PropertyName name, CString& report);
  static bool CompareProperty(const CString& a, const CString& b, PropertyName name, CString& report);
  static bool CompareProperty(double a, double b, PropertyName name, CString& report, double tolerance);
  static bool CompareProperty(const GmPoint3D& a, const GmPoint3D& b, PropertyName name, CString& report,
                              double tolerance);
  static bool CompareProperty(const GmVector3D& a, const GmVector3D& b, PropertyName name, CString& report,
                              double tolerance);
  // Equal when a.IsSame(b, 1e-7, tolerance).
  static bool CompareProperty(const GmXformMat3D& a, const GmXformMat3D& b, PropertyName name, CString& report,
                              double tolerance);
  // The map's and the point's own equality; the tolerance is not used.
  static bool CompareProperty(const UtAxisMotionMap& a, const UtAxisMotionMap& b, PropertyName name, CString& report,
                              double tolerance = 0.0);
  static bool CompareProperty(const UtIofMovePoint& a, const UtIofMovePoint& b, PropertyName name, CString& report,
                              double tolerance = 0.0);

 private:
  static std::atomic<int> s_TypeIdx;

  CString m_Name;                                 // the IOF name
  std::unique_ptr<UtIOFAttribMap> m_Attributes;   // created on first use
  Quarp::UtSArrayEx<Quarp::DbId> m_SubLists{10};  // ids of DbIOFList records
};

}  // namespace IOF

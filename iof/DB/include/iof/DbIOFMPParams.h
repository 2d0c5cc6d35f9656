// DbIOFMPParams: one component of a machine with its parameters: its name, the number of
// its component type (DbIOFMPCompTypeInfo::GetTypeId) and the parameter values, held in
// an attribute map (named, typed values; see UtIOFAttribMap). A plain serialisable object
// (no type code), registered under its class name; the machine information keeps the
// table of components (DbIOFMachineInfo::GetComponents).
//
//   IOF::DbIOFMPParams chuck(L"Main chuck", 10);
//   chuck.GetParams().AddAttribute(CString(L"ClampForce"), 45.0);
//   chuck.GetParams().AddAttribute(CString(L"Jaws"), 3);
//
// Copies carry every parameter, 64-bit ones included (the attribute map's own copy
// refuses those; the component copies them through their archive form).
//
// Archive (version 0): the version, m_ComponentName, m_TypeId (4 bytes), m_Params (the
// attribute map's own form). A newer stored version is refused
// (Quarp::UtArchiveException, cause 2).
#pragma once

#include <afx/CString.h>
#include <iof/FieldVisitor.h>
#include <iof/IofRecord.h>
#include <iof/IofSerial.h>
#include <iof/UtIOFAttribMap.h>
#include <quarp/UtObject.h>

#include <utility>

namespace IOF {

class DbIOFMPParams : public Quarp::UtObject {
  IOF_DECLARE_SERIAL(DbIOFMPParams)

 public:
  static constexpr unsigned kVersion = 0;

  DbIOFMPParams() = default;
  DbIOFMPParams(CString componentName, int typeId) : m_ComponentName(std::move(componentName)), m_TypeId(typeId) {}
  DbIOFMPParams(const DbIOFMPParams& other);
  DbIOFMPParams(DbIOFMPParams&& other) noexcept = default;
  DbIOFMPParams& operator=(const DbIOFMPParams& other);
  ~DbIOFMPParams() override = default;

  const CString& GetComponentName() const noexcept { return m_ComponentName; }
  void SetComponentName(const CString& v) { m_ComponentName = v; }
  int GetTypeId() const noexcept { return m_TypeId; }
  void SetTypeId(int v) noexcept { m_TypeId = v; }
  // The parameter values; add, change and remove them through the map.
  UtIOFAttribMap& GetParams() noexcept { return m_Params; }
  const UtIOFAttribMap& GetParams() const noexcept { return m_Params; }
  // Replaces every parameter by a copy of those of `params`.
  void SetParams(const UtIOFAttribMap& params);

  void Serialize(Quarp::UtArchive& ar) override;
  void VisitFields(FieldVisitor& visitor) const;

  // The field list (see iof/IofRecord.h).
  template <class F, class... R>
  static void Fields(F&& f, R&... r) {
    f(Field::V(0), "m_ComponentName", r.m_ComponentName...);
    f(Field::V(0), "m_TypeId", r.m_TypeId...);
    f(Field::V(0), "m_Params", r.m_Params...);
  }

 private:
  CString m_ComponentName;
  int m_TypeId = 0;
  UtIOFAttribMap m_Params;
};

}  // namespace IOF

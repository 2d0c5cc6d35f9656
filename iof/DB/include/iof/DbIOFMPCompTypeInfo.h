// DbIOFMPCompTypeInfo: a kind of machine component (a chuck, a tail stock, a tool
// changer, a bar feeder...): its number, which the components of that kind name
// (DbIOFMPParams::GetTypeId), its name, and the parameters its components carry. A plain
// serialisable object (no type code), registered under its class name; the machine
// information keeps the table of component types (DbIOFMachineInfo::GetComponentTypes).
//
//   IOF::DbIOFMPCompTypeInfo chuck(10, L"Chuck", {{L"ClampForce", IOF::IOFAttrbType::Double, L"kN"},
//                                                 {L"Jaws", IOF::IOFAttrbType::Int}});
//
// Archive (version 0): the version, m_TypeId (4 bytes), m_TypeName, then m_ParamInfos:
// a 32-bit count followed by each DbIOFMPCompParamInfo. A newer stored version is
// refused (Quarp::UtArchiveException, cause 2).
#pragma once

#include <afx/CString.h>
#include <iof/DbIOFMPCompParamInfo.h>
#include <iof/FieldVisitor.h>
#include <iof/IofRecord.h>
#include <iof/IofSerial.h>
#include <quarp/UtObject.h>

#include <utility>
#include <vector>

namespace IOF {

class DbIOFMPCompTypeInfo : public Quarp::UtObject {
  IOF_DECLARE_SERIAL(DbIOFMPCompTypeInfo)

 public:
  static constexpr unsigned kVersion = 0;
  using ParamInfos = std::vector<DbIOFMPCompParamInfo>;

  DbIOFMPCompTypeInfo() = default;
  DbIOFMPCompTypeInfo(int typeId, CString typeName, ParamInfos params = {})
      : m_TypeId(typeId), m_TypeName(std::move(typeName)), m_ParamInfos(std::move(params)) {}
  DbIOFMPCompTypeInfo(const DbIOFMPCompTypeInfo&) = default;
  DbIOFMPCompTypeInfo& operator=(const DbIOFMPCompTypeInfo&) = default;
  ~DbIOFMPCompTypeInfo() override = default;

  int GetTypeId() const noexcept { return m_TypeId; }
  void SetTypeId(int v) noexcept { m_TypeId = v; }
  const CString& GetTypeName() const noexcept { return m_TypeName; }
  void SetTypeName(const CString& v) { m_TypeName = v; }
  const ParamInfos& GetParamInfos() const noexcept { return m_ParamInfos; }
  void SetParamInfos(ParamInfos v) { m_ParamInfos = std::move(v); }
  // The description of the parameter `key`; null when the type has none.
  const DbIOFMPCompParamInfo* FindParamInfo(const CString& key) const;

  void Serialize(Quarp::UtArchive& ar) override;
  void VisitFields(FieldVisitor& visitor) const;

  // The field list (see iof/IofRecord.h).
  template <class F, class... R>
  static void Fields(F&& f, R&... r) {
    f(Field::V(0), "m_TypeId", r.m_TypeId...);
    f(Field::V(0), "m_TypeName", r.m_TypeName...);
    f(Field::V(0), "m_ParamInfos", r.m_ParamInfos...);
  }

 private:
  int m_TypeId = 0;
  CString m_TypeName;
  ParamInfos m_ParamInfos;
};

}  // namespace IOF

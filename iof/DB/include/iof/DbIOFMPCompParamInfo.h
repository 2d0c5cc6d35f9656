// DbIOFMPCompParamInfo: the description of one parameter that components of a machine
// component type carry: its key in the component's parameter map (DbIOFMPParams), the
// type of its value (an attribute type) and a free text (meaning, unit). A plain
// serialisable object (no type code), registered under its class name; a
// DbIOFMPCompTypeInfo holds the parameters of its type.
//
//   IOF::DbIOFMPCompParamInfo speed(L"MaxSpeed", IOF::IOFAttrbType::Double, L"rpm");
//
// Archive (version 0): the version, m_Key, m_DataType (4 bytes), m_Description. A newer
// stored version is refused (Quarp::UtArchiveException, cause 2).
#pragma once

#include <afx/CString.h>
#include <iof/FieldVisitor.h>
#include <iof/IofRecord.h>
#include <iof/IofSerial.h>
#include <iof/UtIOFAttribItem.h>
#include <quarp/UtObject.h>

#include <utility>

namespace IOF {

class DbIOFMPCompParamInfo : public Quarp::UtObject {
  IOF_DECLARE_SERIAL(DbIOFMPCompParamInfo)

 public:
  static constexpr unsigned kVersion = 0;

  DbIOFMPCompParamInfo() = default;
  DbIOFMPCompParamInfo(CString key, IOFAttrbType type, CString description = {})
      : m_Key(std::move(key)), m_DataType(type), m_Description(std::move(description)) {}
  DbIOFMPCompParamInfo(const DbIOFMPCompParamInfo&) = default;
  DbIOFMPCompParamInfo& operator=(const DbIOFMPCompParamInfo&) = default;
  ~DbIOFMPCompParamInfo() override = default;

  const CString& GetKey() const noexcept { return m_Key; }
  void SetKey(const CString& v) { m_Key = v; }
  IOFAttrbType GetDataType() const noexcept { return m_DataType; }
  void SetDataType(IOFAttrbType v) noexcept { m_DataType = v; }
  const CString& GetDescription() const noexcept { return m_Description; }
  void SetDescription(const CString& v) { m_Description = v; }

  void Serialize(Quarp::UtArchive& ar) override;
  void VisitFields(FieldVisitor& visitor) const;

  // The field list (see iof/IofRecord.h).
  template <class F, class... R>
  static void Fields(F&& f, R&... r) {
    f(Field::V(0), "m_Key", r.m_Key...);
    f(Field::V(0), "m_DataType", r.m_DataType...);
    f(Field::V(0), "m_Description", r.m_Description...);
  }

 private:
  CString m_Key;
  IOFAttrbType m_DataType = IOFAttrbType::None;
  CString m_Description;
};

}  // namespace IOF

// UtIOFAttribItem: one named attribute of a record (see UtIOFAttribMap), its data
// type codes, and the declaration pattern of the five typed items (UtIOFAttribItemBool,
// UtIOFAttribItemInt, UtIOFAttribItemUInt64, UtIOFAttribItemDbl, UtIOFAttribItemCString).
#pragma once

#include <afx/CString.h>
#include <iof/IofSerial.h>
#include <quarp/UtArchive.h>
#include <quarp/UtObject.h>
#include <cstdint>

namespace IOF {

// The data type of an attribute item (GetDataType).
enum class IOFAttrbType : int {
  None = 0,  // the untyped base item
  Bool = 1,
  Int = 2,
  UInt64 = 5,
  Double = 6,
  String = 7,
};

// An attribute: key and flags; the typed subclasses add the value.
class UtIOFAttribItem : public Quarp::UtObject {
  IOF_DECLARE_SERIAL(UtIOFAttribItem)

 public:
  UtIOFAttribItem() = default;
  explicit UtIOFAttribItem(const CString& key) : m_Key(key) {}
  ~UtIOFAttribItem() override = default;

  const CString& GetAttrKey() const noexcept { return m_Key; }

  // Bit 0 of the flags: the attribute is a synchronisation-manager token. The other bits
  // are kept and archived as they are.
  bool IsSyncMgrTokenAttrib() const noexcept { return (m_Flags & 1u) != 0; }
  void SetIsSyncMgrTokenAttrib(bool on) noexcept { m_Flags = on ? (m_Flags | 1u) : (m_Flags & ~1u); }
  std::uint32_t GetFlags() const noexcept { return m_Flags; }
  void SetFlags(std::uint32_t flags) noexcept { m_Flags = flags; }

  // Version (0), key, flags (4 bytes).
  void Serialize(Quarp::UtArchive& ar) override;
  // "key" for the base item; "key = value" for the typed items.
  virtual CString ToString() const;
  virtual IOFAttrbType GetDataType() const { return IOFAttrbType::None; }
  // The trace output of the item: prefix + ToString().
  CString TraceLine(const CString& prefix) const { return prefix + ToString(); }

 protected:
  UtIOFAttribItem(const UtIOFAttribItem&) = default;
  UtIOFAttribItem& operator=(const UtIOFAttribItem&) = default;

 private:
  CString m_Key;
  std::uint32_t m_Flags = 0;
};

// One typed attribute class per value type. Each has a virtual const GetDataType and a
// non-virtual non-const one; they agree except for UtIOFAttribItemUInt64 (see its header).
#define IOF_DECLARE_ATTRIB_ITEM(Class, ValueType, Code)                                        \
  class Class : public UtIOFAttribItem {                                                       \
    IOF_DECLARE_SERIAL(Class)                                                                  \
                                                                                               \
   public:                                                                                     \
    Class() = default;                                                                         \
    Class(const CString& key, const ValueType& value) : UtIOFAttribItem(key), m_Data(value) {} \
    const ValueType& GetData() const noexcept { return m_Data; }                               \
    void SetData(const ValueType& value) { m_Data = value; }                                   \
    void Serialize(Quarp::UtArchive& ar) override;                                             \
    CString ToString() const override;                                                         \
    IOFAttrbType GetDataType() const override { return Code; }                                 \
    IOFAttrbType GetDataType();                                                                \
                                                                                               \
   private:                                                                                    \
    ValueType m_Data{};                                                                        \
  };

}  // namespace IOF

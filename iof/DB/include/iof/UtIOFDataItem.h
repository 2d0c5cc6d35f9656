// UtIOFDataItem: a bare typed value held by a synchronisation-manager token
// (UtSyncMgrTokenBase), and the declaration pattern of its four typed classes
// (UtIOFDataItemBool, UtIOFDataItemInt, UtIOFDataItemDbl, UtIOFDataItemString).
#pragma once

#include <afx/CString.h>
#include <iof/UtIOFAttribItem.h>

namespace IOF {

// A bare typed value.
class UtIOFDataItem {
 public:
  virtual ~UtIOFDataItem() = default;
  virtual UtIOFDataItem* Clone() const = 0;
  virtual CString ToString() const = 0;
  // The value's type, in the codes of IOFAttrbType.
  virtual IOFAttrbType GetDataType() const = 0;
};

#define IOF_DECLARE_DATA_ITEM(Class, ValueType, Code)                    \
  class Class : public UtIOFDataItem {                                   \
   public:                                                               \
    explicit Class(const ValueType& value) : m_Value(value) {}           \
    const ValueType& GetValue() const noexcept { return m_Value; }       \
    void SetValue(const ValueType& value) { m_Value = value; }           \
    UtIOFDataItem* Clone() const override { return new Class(m_Value); } \
    CString ToString() const override;                                   \
    IOFAttrbType GetDataType() const override { return Code; }           \
                                                                         \
   private:                                                              \
    ValueType m_Value;                                                   \
  };

}  // namespace IOF

// Attributes: named, typed values that every record carries (UtIOFAttribMap), and the
// bare typed values of the synchronisation-manager tokens (UtIOFDataItem,
// UtSyncMgrTokenBase).
//
//   UtIOFAttribMap& attrs = record->GetAttributes();
//   attrs.AddAttribute(CString(L"Coolant"), true);
//   double depth = 0;
//   if (attrs.GetDblAttribVal(CString(L"Depth"), depth) == AttribGetStatus::Done) ...
//
// The map owns its items: its destructor and RemoveAttribute destroy them. Clear()
// empties the map without destroying the items; whoever holds them takes them over
// (for instance to add them to another map).
#pragma once

#include <afx/CString.h>
#include <iof/IofSerial.h>
#include <quarp/UtArchive.h>
#include <quarp/UtObject.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

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

// Result of the typed getters and setters of UtIOFAttribMap.
enum class AttribGetStatus : int {
  NotFound = 0,   // no attribute with that key
  WrongType = 1,  // the attribute exists but holds another type
  Done = 2,
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
// non-virtual non-const one; they agree except for UtIOFAttribItemUInt64 (below).
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

IOF_DECLARE_ATTRIB_ITEM(UtIOFAttribItemBool, bool, IOFAttrbType::Bool)
IOF_DECLARE_ATTRIB_ITEM(UtIOFAttribItemInt, std::int32_t, IOFAttrbType::Int)
// Its non-const GetDataType answers IOFAttrbType::Double while the virtual one answers
// UInt64: this asymmetry is intended and kept. "%ld" prints the low 32 bits of the value.
IOF_DECLARE_ATTRIB_ITEM(UtIOFAttribItemUInt64, std::uint64_t, IOFAttrbType::UInt64)
IOF_DECLARE_ATTRIB_ITEM(UtIOFAttribItemDbl, double, IOFAttrbType::Double)
IOF_DECLARE_ATTRIB_ITEM(UtIOFAttribItemCString, CString, IOFAttrbType::String)

class UtIOFAttribMap : public Quarp::UtObject {
  IOF_DECLARE_SERIAL(UtIOFAttribMap)

 public:
  using Map = std::map<CString, UtIOFAttribItem*>;

  UtIOFAttribMap() = default;
  // Copies as operator= does (and so throws for a map holding a 64-bit attribute).
  UtIOFAttribMap(const UtIOFAttribMap& other);
  UtIOFAttribMap(UtIOFAttribMap&& other) noexcept : m_Map(std::move(other.m_Map)) { other.m_Map.clear(); }
  ~UtIOFAttribMap() override;

  // Empties this map as Clear() does, then copies every item of `other` in key order.
  // Only bool, int, double and string items can be copied: any other item (a 64-bit
  // one included) stops the copy with a thrown CString
  // "UtIOFAttribMap::operator= Failed to copy attribute \"key\"". Maps that hold a
  // 64-bit attribute therefore cannot be copied; this limit is intended and kept.
  UtIOFAttribMap& operator=(const UtIOFAttribMap& other);

  // Takes `item` over; false (the caller keeps it) for null or a key already present.
  bool AddAttribute(UtIOFAttribItem* item);
  // Sets or creates a typed attribute; false when the key holds another type.
  bool AddAttribute(const CString& key, const CString& value);
  bool AddAttribute(const CString& key, const wchar_t* value);
  bool AddAttribute(const CString& key, int value);
  bool AddAttribute(const CString& key, double value);
  bool AddAttribute(const CString& key, std::uint64_t value);
  bool AddAttribute(const CString& key, bool value);

  // False with type None when absent; otherwise true with the item's data type.
  bool DoesExist(const CString& key, IOFAttrbType& type) const;
  // The item, or null; the map keeps it.
  UtIOFAttribItem* FindAttrib(const CString& key) const;

  AttribGetStatus GetBoolAttribVal(const CString& key, bool& value) const;
  AttribGetStatus GetIntAttribVal(const CString& key, int& value) const;
  AttribGetStatus GetDblAttribVal(const CString& key, double& value) const;
  AttribGetStatus GetUInt64AttribVal(const CString& key, std::uint64_t& value) const;
  AttribGetStatus GetCStringAttribVal(const CString& key, CString& value) const;
  // Set an existing attribute's value; never create one.
  AttribGetStatus SetBoolAttribVal(const CString& key, bool value);
  AttribGetStatus SetIntAttribVal(const CString& key, int value);
  AttribGetStatus SetDblAttribVal(const CString& key, double value);
  AttribGetStatus SetUInt64AttribVal(const CString& key, std::uint64_t value);
  AttribGetStatus SetCStringAttribVal(const CString& key, const CString& value);

  // Destroys the item; NotFound or Done.
  AttribGetStatus RemoveAttribute(const CString& key);
  // Removes every entry without destroying the items (see the top of this file).
  void Clear() noexcept { m_Map.clear(); }

  std::size_t GetCount() const noexcept { return m_Map.size(); }
  bool IsEmpty() const noexcept { return m_Map.empty(); }
  Map::const_iterator begin() const noexcept { return m_Map.begin(); }
  Map::const_iterator end() const noexcept { return m_Map.end(); }

  // Version (0), the entry count (4 bytes), then each item in key order through
  // UtArchive::WriteObject. Loading adds the items to what the map holds; an item whose
  // key is already present is reported through the assertion handler and dropped.
  void Serialize(Quarp::UtArchive& ar) override;
  // The same form in two halves, for holders that keep no map while there are no
  // attributes: the version and count (stored as an empty map / read and checked), then
  // the count's items.
  static void StoreEmpty(Quarp::UtArchive& ar);
  static std::int32_t LoadHeader(Quarp::UtArchive& ar);
  void LoadEntries(Quarp::UtArchive& ar, std::int32_t count);

  // Sends, in debug builds, each item's trace line (header + tab + item) to the trace
  // channel; TraceLines builds them.
  void TraceDump(const wchar_t* header) const;
  std::vector<CString> TraceLines(const wchar_t* header) const;

 private:
  template <class Item, class Value>
  bool AddTyped(const CString& key, const Value& value);
  template <class Item, class Value>
  AttribGetStatus GetTyped(const CString& key, Value& value) const;
  template <class Item, class Value>
  AttribGetStatus SetTyped(const CString& key, const Value& value);

  Map m_Map;
};

// --- synchronisation-manager tokens -------------------------------------------------

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

IOF_DECLARE_DATA_ITEM(UtIOFDataItemBool, bool, IOFAttrbType::Bool)         // "BOOL: true"
IOF_DECLARE_DATA_ITEM(UtIOFDataItemInt, int, IOFAttrbType::Int)            // "INT: 5"
IOF_DECLARE_DATA_ITEM(UtIOFDataItemDbl, double, IOFAttrbType::Double)      // "DBL: 0.5"
IOF_DECLARE_DATA_ITEM(UtIOFDataItemString, CString, IOFAttrbType::String)  // "STRING: text"

// A named token with an owned data item and four selection masks.
class UtSyncMgrTokenBase {
 public:
  // Takes `data` over (null allowed); the masks start at zero.
  UtSyncMgrTokenBase(const CString& name, UtIOFDataItem* data);
  UtSyncMgrTokenBase(const UtSyncMgrTokenBase& other);  // clones the data item
  UtSyncMgrTokenBase& operator=(const UtSyncMgrTokenBase& other);
  virtual ~UtSyncMgrTokenBase();

  const CString& GetName() const noexcept { return m_Name; }
  UtIOFDataItem* GetData() noexcept { return m_Data; }
  const UtIOFDataItem* GetConstData() const noexcept { return m_Data; }
  // The data item's type (None without data).
  IOFAttrbType GetType() const noexcept { return m_Data ? m_Data->GetDataType() : IOFAttrbType::None; }
  int GetSubFunction() const noexcept { return m_SubFunction; }
  void SetSubFunction(int subFunction) noexcept { m_SubFunction = subFunction; }

  std::uint32_t GetConfigMask() const noexcept { return m_ConfigMask; }
  void SetConfigMask(std::uint32_t mask) noexcept { m_ConfigMask = mask; }
  std::uint32_t GetOpTypeMask() const noexcept { return m_OpTypeMask; }
  void SetOpTypeMask(std::uint32_t mask) noexcept { m_OpTypeMask = mask; }
  std::uint32_t GetMachineTypeMask() const noexcept { return m_MachineTypeMask; }
  void SetMachineTypeMask(std::uint32_t mask) noexcept { m_MachineTypeMask = mask; }
  std::uint32_t GetMillTypeMask() const noexcept { return m_MillTypeMask; }
  void SetMillTypeMask(std::uint32_t mask) noexcept { m_MillTypeMask = mask; }

  // "Token (name) Data: data;  Config 1f; OpTypes 3" (two blanks before Config).
  virtual CString ToString() const;
  // Sends ToString() to the trace channel in debug builds.
  virtual void TraceDump() const;

 private:
  CString m_Name;
  UtIOFDataItem* m_Data = nullptr;
  std::uint32_t m_ConfigMask = 0;
  std::uint32_t m_OpTypeMask = 0;
  std::uint32_t m_MachineTypeMask = 0;
  std::uint32_t m_MillTypeMask = 0;
  int m_SubFunction = 0;
};

}  // namespace IOF

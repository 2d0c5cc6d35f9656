// UtIOFAttribMap: the named, typed attributes that every record carries.
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
#include <iof/UtIOFAttribItem.h>
#include <iof/UtIOFAttribItemBool.h>
#include <iof/UtIOFAttribItemCString.h>
#include <iof/UtIOFAttribItemDbl.h>
#include <iof/UtIOFAttribItemInt.h>
#include <iof/UtIOFAttribItemUInt64.h>
#include <quarp/UtArchive.h>
#include <quarp/UtObject.h>
#include <cstdint>
#include <map>
#include <vector>

namespace IOF {

// Result of the typed getters and setters of UtIOFAttribMap.
enum class AttribGetStatus : int {
  NotFound = 0,   // no attribute with that key
  WrongType = 1,  // the attribute exists but holds another type
  Done = 2,
};

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

}  // namespace IOF

#include <iof/UtAttribute.h>

#include <quarp/UtSerialize.h>
#include <zolt/Diagnostics.h>

#include <memory>
#include <string>

namespace IOF {

// --- items -------------------------------------------------------------------------

IOF_IMPLEMENT_SERIAL(UtIOFAttribItem)
IOF_IMPLEMENT_SERIAL(UtIOFAttribItemBool)
IOF_IMPLEMENT_SERIAL(UtIOFAttribItemInt)
IOF_IMPLEMENT_SERIAL(UtIOFAttribItemUInt64)
IOF_IMPLEMENT_SERIAL(UtIOFAttribItemDbl)
IOF_IMPLEMENT_SERIAL(UtIOFAttribItemCString)
IOF_IMPLEMENT_SERIAL(UtIOFAttribMap)

void UtIOFAttribItem::Serialize(Quarp::UtArchive& ar) {
  const unsigned version = Quarp::UtSerializeVersion(ar, 0);
  if (ar.IsStoring()) {
    ar << m_Key << m_Flags;
    return;
  }
  Quarp::UtCheckVersion(version, 0, "UtIOFAttribItem");
  ar >> m_Key >> m_Flags;
}

CString UtIOFAttribItem::ToString() const { return m_Key; }

#define IOF_IMPLEMENT_ATTRIB_ITEM(Class, NonConstType)         \
  void Class::Serialize(Quarp::UtArchive& ar) {                \
    const unsigned version = Quarp::UtSerializeVersion(ar, 0); \
    UtIOFAttribItem::Serialize(ar);                            \
    if (ar.IsStoring()) {                                      \
      ar << m_Data;                                            \
      return;                                                  \
    }                                                          \
    Quarp::UtCheckVersion(version, 0, #Class);                 \
    ar >> m_Data;                                              \
  }                                                            \
  IOFAttrbType Class::GetDataType() { return NonConstType; }

IOF_IMPLEMENT_ATTRIB_ITEM(UtIOFAttribItemBool, IOFAttrbType::Bool)
IOF_IMPLEMENT_ATTRIB_ITEM(UtIOFAttribItemInt, IOFAttrbType::Int)
// The non-const overload answers the double code: intended, see the header.
IOF_IMPLEMENT_ATTRIB_ITEM(UtIOFAttribItemUInt64, IOFAttrbType::Double)
IOF_IMPLEMENT_ATTRIB_ITEM(UtIOFAttribItemDbl, IOFAttrbType::Double)
IOF_IMPLEMENT_ATTRIB_ITEM(UtIOFAttribItemCString, IOFAttrbType::String)
#undef IOF_IMPLEMENT_ATTRIB_ITEM

CString UtIOFAttribItemBool::ToString() const {
  return CString::Formatted(L"%s = %s", GetAttrKey(), m_Data ? L"true" : L"false");
}
CString UtIOFAttribItemInt::ToString() const { return CString::Formatted(L"%s = %d", GetAttrKey(), m_Data); }
CString UtIOFAttribItemUInt64::ToString() const { return CString::Formatted(L"%s = %ld", GetAttrKey(), m_Data); }
CString UtIOFAttribItemDbl::ToString() const { return CString::Formatted(L"%s = %g", GetAttrKey(), m_Data); }
CString UtIOFAttribItemCString::ToString() const { return CString::Formatted(L"%s = %s", GetAttrKey(), m_Data); }

// --- map ---------------------------------------------------------------------------

UtIOFAttribMap::UtIOFAttribMap(const UtIOFAttribMap& other) : UtObject() { *this = other; }

UtIOFAttribMap::~UtIOFAttribMap() {
  for (auto& entry : m_Map) delete entry.second;
}

UtIOFAttribMap& UtIOFAttribMap::operator=(const UtIOFAttribMap& other) {
  if (this == &other) return *this;
  Clear();
  for (const auto& [key, item] : other.m_Map) {
    std::unique_ptr<UtIOFAttribItem> copy;
    switch (item->GetDataType()) {
      case IOFAttrbType::Bool:
        copy = std::make_unique<UtIOFAttribItemBool>(key, static_cast<UtIOFAttribItemBool*>(item)->GetData());
        break;
      case IOFAttrbType::Int:
        copy = std::make_unique<UtIOFAttribItemInt>(key, static_cast<UtIOFAttribItemInt*>(item)->GetData());
        break;
      case IOFAttrbType::Double:
        copy = std::make_unique<UtIOFAttribItemDbl>(key, static_cast<UtIOFAttribItemDbl*>(item)->GetData());
        break;
      case IOFAttrbType::String:
        copy = std::make_unique<UtIOFAttribItemCString>(key, static_cast<UtIOFAttribItemCString*>(item)->GetData());
        break;
      default:
        break;  // 64-bit and untyped items cannot be copied: intended
    }
    if (copy) copy->SetFlags(item->GetFlags());
    if (!copy || !AddAttribute(copy.get())) {
      throw CString::Formatted(L"UtIOFAttribMap::operator= Failed to copy attribute \"%s\"", key);
    }
    copy.release();
  }
  return *this;
}

bool UtIOFAttribMap::AddAttribute(UtIOFAttribItem* item) {
  if (!item) return false;
  return m_Map.emplace(item->GetAttrKey(), item).second;
}

template <class Item, class Value>
bool UtIOFAttribMap::AddTyped(const CString& key, const Value& value) {
  const auto it = m_Map.find(key);
  if (it != m_Map.end()) {
    auto* typed = dynamic_cast<Item*>(it->second);
    if (!typed) return false;
    typed->SetData(value);
    return true;
  }
  m_Map.emplace(key, new Item(key, value));
  return true;
}

bool UtIOFAttribMap::AddAttribute(const CString& key, const CString& value) {
  return AddTyped<UtIOFAttribItemCString>(key, value);
}
bool UtIOFAttribMap::AddAttribute(const CString& key, const wchar_t* value) {
  return AddTyped<UtIOFAttribItemCString>(key, CString(value));
}
bool UtIOFAttribMap::AddAttribute(const CString& key, int value) {
  return AddTyped<UtIOFAttribItemInt>(key, std::int32_t{value});
}
bool UtIOFAttribMap::AddAttribute(const CString& key, double value) { return AddTyped<UtIOFAttribItemDbl>(key, value); }
bool UtIOFAttribMap::AddAttribute(const CString& key, std::uint64_t value) {
  return AddTyped<UtIOFAttribItemUInt64>(key, value);
}
bool UtIOFAttribMap::AddAttribute(const CString& key, bool value) { return AddTyped<UtIOFAttribItemBool>(key, value); }

bool UtIOFAttribMap::DoesExist(const CString& key, IOFAttrbType& type) const {
  const auto it = m_Map.find(key);
  if (it == m_Map.end()) {
    type = IOFAttrbType::None;
    return false;
  }
  type = static_cast<const UtIOFAttribItem*>(it->second)->GetDataType();
  return true;
}

UtIOFAttribItem* UtIOFAttribMap::FindAttrib(const CString& key) const {
  const auto it = m_Map.find(key);
  return it == m_Map.end() ? nullptr : it->second;
}

template <class Item, class Value>
AttribGetStatus UtIOFAttribMap::GetTyped(const CString& key, Value& value) const {
  const auto it = m_Map.find(key);
  if (it == m_Map.end()) return AttribGetStatus::NotFound;
  const auto* typed = dynamic_cast<const Item*>(it->second);
  if (!typed) return AttribGetStatus::WrongType;
  value = typed->GetData();
  return AttribGetStatus::Done;
}

template <class Item, class Value>
AttribGetStatus UtIOFAttribMap::SetTyped(const CString& key, const Value& value) {
  const auto it = m_Map.find(key);
  if (it == m_Map.end()) return AttribGetStatus::NotFound;
  auto* typed = dynamic_cast<Item*>(it->second);
  if (!typed) return AttribGetStatus::WrongType;
  typed->SetData(value);
  return AttribGetStatus::Done;
}

AttribGetStatus UtIOFAttribMap::GetBoolAttribVal(const CString& key, bool& value) const {
  return GetTyped<UtIOFAttribItemBool>(key, value);
}
AttribGetStatus UtIOFAttribMap::GetIntAttribVal(const CString& key, int& value) const {
  return GetTyped<UtIOFAttribItemInt>(key, value);
}
AttribGetStatus UtIOFAttribMap::GetDblAttribVal(const CString& key, double& value) const {
  return GetTyped<UtIOFAttribItemDbl>(key, value);
}
AttribGetStatus UtIOFAttribMap::GetUInt64AttribVal(const CString& key, std::uint64_t& value) const {
  return GetTyped<UtIOFAttribItemUInt64>(key, value);
}
AttribGetStatus UtIOFAttribMap::GetCStringAttribVal(const CString& key, CString& value) const {
  return GetTyped<UtIOFAttribItemCString>(key, value);
}
AttribGetStatus UtIOFAttribMap::SetBoolAttribVal(const CString& key, bool value) {
  return SetTyped<UtIOFAttribItemBool>(key, value);
}
AttribGetStatus UtIOFAttribMap::SetIntAttribVal(const CString& key, int value) {
  return SetTyped<UtIOFAttribItemInt>(key, std::int32_t{value});
}
AttribGetStatus UtIOFAttribMap::SetDblAttribVal(const CString& key, double value) {
  return SetTyped<UtIOFAttribItemDbl>(key, value);
}
AttribGetStatus UtIOFAttribMap::SetUInt64AttribVal(const CString& key, std::uint64_t value) {
  return SetTyped<UtIOFAttribItemUInt64>(key, value);
}
AttribGetStatus UtIOFAttribMap::SetCStringAttribVal(const CString& key, const CString& value) {
  return SetTyped<UtIOFAttribItemCString>(key, value);
}

AttribGetStatus UtIOFAttribMap::RemoveAttribute(const CString& key) {
  const auto it = m_Map.find(key);
  if (it == m_Map.end()) return AttribGetStatus::NotFound;
  delete it->second;
  m_Map.erase(it);
  return AttribGetStatus::Done;
}

void UtIOFAttribMap::Serialize(Quarp::UtArchive& ar) {
  if (ar.IsStoring()) {
    Quarp::UtSerializeVersion(ar, 0);
    ar << static_cast<std::int32_t>(m_Map.size());
    for (const auto& entry : m_Map) ar.WriteObject(entry.second);
    return;
  }
  LoadEntries(ar, LoadHeader(ar));
}

void UtIOFAttribMap::StoreEmpty(Quarp::UtArchive& ar) {
  Quarp::UtSerializeVersion(ar, 0);
  ar << std::int32_t{0};
}

std::int32_t UtIOFAttribMap::LoadHeader(Quarp::UtArchive& ar) {
  Quarp::UtCheckVersion(Quarp::UtSerializeVersion(ar, 0), 0, "UtIOFAttribMap");
  std::int32_t count = 0;
  ar >> count;
  return count;
}

void UtIOFAttribMap::LoadEntries(Quarp::UtArchive& ar, std::int32_t count) {
  if (count > 0) ar.CheckCount(static_cast<std::uint64_t>(count), 1);
  for (std::int32_t i = 0; i < count; ++i) {
    Quarp::UtObject* object = nullptr;
    ar.ReadObject(object);
    if (!object) continue;
    std::unique_ptr<Quarp::UtObject> owned(object);
    auto* item = dynamic_cast<UtIOFAttribItem*>(object);
    if (!item) {
      throw Quarp::UtArchiveException(
          Quarp::UtArchiveException::badClass,
          std::string("an attribute map holds a ") + object->GetObjectClassName() + ", which is not an attribute");
    }
    if (!AddAttribute(item)) {
      Zolt::Diagnostics::Details::InvokeCurrentAssertHandler("DB/src/UtAttribute", 406,
                                                             "IOF::UtIOFAttribMap::Serialize",
                                                             "IOF::UtIOFAttribMap::Serialize");
      continue;  // the duplicate is dropped (and destroyed)
    }
    owned.release();
  }
}

std::vector<CString> UtIOFAttribMap::TraceLines(const wchar_t* header) const {
  CString prefix(header);
  prefix += L"\t";
  std::vector<CString> lines;
  for (const auto& entry : m_Map) lines.push_back(entry.second->TraceLine(prefix));
  return lines;
}

void UtIOFAttribMap::TraceDump(const wchar_t* header) const {
#ifndef NDEBUG
  for (const CString& line : TraceLines(header)) Zolt::Diagnostics::Trace(line.ToUtf8().c_str());
#else
  (void)header;
#endif
}

// --- data items and tokens -----------------------------------------------------------

CString UtIOFDataItemBool::ToString() const { return CString::Formatted(L"BOOL: %s", m_Value ? L"true" : L"false"); }
CString UtIOFDataItemInt::ToString() const { return CString::Formatted(L"INT: %d", m_Value); }
CString UtIOFDataItemDbl::ToString() const { return CString::Formatted(L"DBL: %g", m_Value); }
CString UtIOFDataItemString::ToString() const { return CString::Formatted(L"STRING: %s", m_Value); }

UtSyncMgrTokenBase::UtSyncMgrTokenBase(const CString& name, UtIOFDataItem* data) : m_Name(name), m_Data(data) {}

UtSyncMgrTokenBase::UtSyncMgrTokenBase(const UtSyncMgrTokenBase& other)
    : m_Name(other.m_Name),
      m_Data(other.m_Data ? other.m_Data->Clone() : nullptr),
      m_ConfigMask(other.m_ConfigMask),
      m_OpTypeMask(other.m_OpTypeMask),
      m_MachineTypeMask(other.m_MachineTypeMask),
      m_MillTypeMask(other.m_MillTypeMask),
      m_SubFunction(other.m_SubFunction) {}

UtSyncMgrTokenBase& UtSyncMgrTokenBase::operator=(const UtSyncMgrTokenBase& other) {
  if (this != &other) {
    UtSyncMgrTokenBase copy(other);
    std::swap(m_Name, copy.m_Name);
    std::swap(m_Data, copy.m_Data);
    m_ConfigMask = other.m_ConfigMask;
    m_OpTypeMask = other.m_OpTypeMask;
    m_MachineTypeMask = other.m_MachineTypeMask;
    m_MillTypeMask = other.m_MillTypeMask;
    m_SubFunction = other.m_SubFunction;
  }
  return *this;
}

UtSyncMgrTokenBase::~UtSyncMgrTokenBase() { delete m_Data; }

CString UtSyncMgrTokenBase::ToString() const {
  return CString::Formatted(L"Token (%s) Data: %s;  Config %x; OpTypes %x", m_Name,
                            m_Data ? m_Data->ToString() : CString(), m_ConfigMask, m_OpTypeMask);
}

void UtSyncMgrTokenBase::TraceDump() const {
#ifndef NDEBUG
  Zolt::Diagnostics::Trace(ToString().ToUtf8().c_str());
#endif
}

}  // namespace IOF

#include <iof/DbIOFMachineInfo.h>

#include "RecordImpl.h"

#include <type_traits>

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFMachineInfo)

template <class F, class... R>
void DbIOFMachineInfo::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_MachineName", r.m_MachineName...);
  f(Field::V(0), "m_MachineType", r.m_MachineType...);
  f(Field::V(0), "m_Axes", r.m_Axes...);
  f(Field::V(0), "m_Spindles", r.m_Spindles...);
  f(Field::V(0), "m_Turrets", r.m_Turrets...);
  f(Field::V(0), "m_AxisCombinations", r.m_AxisCombinations...);
  f(Field::V(0), "m_ComponentTypes", r.m_ComponentTypes...);
  f(Field::V(0), "m_Components", r.m_Components...);
}

template <class F, class... R>
void DbIOFMachineInfo::Axis::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_Name", r.m_Name...);
  f(Field::V(0), "m_AxisType", r.m_AxisType...);
  f(Field::V(0), "m_MinLimit", r.m_MinLimit...);
  f(Field::V(0), "m_MaxLimit", r.m_MaxLimit...);
}

template <class F, class... R>
void DbIOFMachineInfo::Spindle::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_SpindleId", r.m_SpindleId...);
  f(Field::V(0), "m_Name", r.m_Name...);
  f(Field::V(0), "m_MaxSpeed", r.m_MaxSpeed...);
}

template <class F, class... R>
void DbIOFMachineInfo::Turret::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_TurretId", r.m_TurretId...);
  f(Field::V(0), "m_Name", r.m_Name...);
  f(Field::V(0), "m_NumStations", r.m_NumStations...);
}

IOF_IMPLEMENT_OBJECT_FIELDS(DbIOFMachineInfo::Axis)
IOF_IMPLEMENT_OBJECT_FIELDS(DbIOFMachineInfo::Spindle)
IOF_IMPLEMENT_OBJECT_FIELDS(DbIOFMachineInfo::Turret)

const wchar_t* DbIOFMachineInfo::MachineTypeText(int type) noexcept {
  switch (type) {
    case kMill:
      return L"Mill";
    case kLathe:
      return L"Lathe";
    case kMillTurn:
      return L"Mill-Turn";
    default:
      return L"";
  }
}

namespace {
template <class T, class Key>
const typename T::value_type* FindIn(const T& table, Key key) {
  for (const auto& entry : table) {
    if (key(entry)) return &entry;
  }
  return nullptr;
}
}  // namespace

const DbIOFMachineInfo::Axis* DbIOFMachineInfo::FindAxis(const CString& name) const {
  return FindIn(m_Axes, [&](const Axis& a) { return a.m_Name == name; });
}

const DbIOFMPCompTypeInfo* DbIOFMachineInfo::FindComponentType(int typeId) const {
  return FindIn(m_ComponentTypes, [&](const DbIOFMPCompTypeInfo& t) { return t.GetTypeId() == typeId; });
}

const DbIOFMPParams* DbIOFMachineInfo::FindComponent(const CString& name) const {
  return FindIn(m_Components, [&](const DbIOFMPParams& c) { return c.GetComponentName() == name; });
}

CString DbIOFMachineInfo::ToIOFString() const {
  const auto count = [](const auto& table) { return static_cast<int>(table.size()); };
  return CString::Formatted(
      L"IOF Machine Info Object: Name: %s, Type: %s, Axes: %d, Spindles: %d, Turrets: %d, Axis combinations: %d, "
      L"Component types: %d, Components: %d",
      m_MachineName, MachineTypeText(m_MachineType), count(m_Axes), count(m_Spindles), count(m_Turrets),
      count(m_AxisCombinations), count(m_ComponentTypes), count(m_Components));
}

// Compares two field lists value by value, naming each property by its path through the
// tables ("m_Axes[1].m_MaxLimit"), and stops at the first difference.
class DbIOFMachineInfo::TableComparer {
 public:
  TableComparer(CString& report, CString prefix) : m_Report(report), m_Prefix(std::move(prefix)) {}
  bool Same() const noexcept { return m_Same; }

  template <class T>
  void operator()(const Field::Info&, const char* name, const T& a, const T& b) {
    if (m_Same) m_Same = Values(CString::FromUtf8(name), a, b);
  }

 private:
  template <class T>
  bool Values(const CString& name, const T& a, const T& b) {
    const CString path = m_Prefix + name;
    if constexpr (std::is_same_v<T, double>) {
      return CompareProperty(a, b, path, m_Report, 1e-6);
    } else if constexpr (std::is_enum_v<T> || std::is_same_v<T, std::int16_t>) {
      return CompareProperty(static_cast<int>(a), static_cast<int>(b), path, m_Report);
    } else if constexpr (Detail::IsSequence<T>::value || Detail::IsMap<T>::value) {
      if (!Count(name, a.size(), b.size())) return false;
      auto ia = a.begin();
      auto ib = b.begin();
      for (int i = 0; ia != a.end(); ++ia, ++ib, ++i) {
        TableComparer entry(m_Report, Indexed(path, i));
        if constexpr (Detail::IsMap<T>::value) {
          entry(Field::V(0), "key", ia->first, ib->first);
          if (entry.m_Same) std::remove_cvref_t<decltype(ia->second)>::Fields(entry, ia->second, ib->second);
        } else {
          T::value_type::Fields(entry, *ia, *ib);
        }
        if (!entry.m_Same) return false;
      }
      return true;
    } else if constexpr (std::is_same_v<T, UtIOFAttribMap>) {
      return Params(name, path, a, b);
    } else {
      return CompareProperty(a, b, path, m_Report);  // int, bool, string
    }
  }

  // The sizes of two tables, as "Num" + the table's name without "m_".
  bool Count(const CString& name, std::size_t a, std::size_t b) {
    const CString bare = name.Find(CString(L"m_")) == 0 ? name.Mid(2) : name;
    return CompareProperty(static_cast<int>(a), static_cast<int>(b), m_Prefix + L"Num" + bare, m_Report);
  }
  static CString Indexed(const CString& path, int i) { return path + CString::Formatted(L"[%d].", i); }

  // Two attribute maps: the count, then in key order each key, data type and value.
  bool Params(const CString& name, const CString& path, const UtIOFAttribMap& a, const UtIOFAttribMap& b) {
    if (!Count(name, a.GetCount(), b.GetCount())) return false;
    auto ib = b.begin();
    int i = 0;
    for (auto ia = a.begin(); ia != a.end(); ++ia, ++ib, ++i) {
      const CString at = Indexed(path, i);
      const UtIOFAttribItem& x = *ia->second;
      const UtIOFAttribItem& y = *ib->second;
      if (!CompareProperty(x.GetAttrKey(), y.GetAttrKey(), at + L"key", m_Report) ||
          !CompareProperty(static_cast<int>(x.GetDataType()), static_cast<int>(y.GetDataType()), at + L"type",
                           m_Report) ||
          !Value(x, y, at + L"value")) {
        return false;
      }
    }
    return true;
  }
  // Two items of one data type.
  template <class Item>
  static const auto& Data(const UtIOFAttribItem& item) {
    return static_cast<const Item&>(item).GetData();
  }
  bool Value(const UtIOFAttribItem& x, const UtIOFAttribItem& y, const CString& path) {
    switch (x.GetDataType()) {
      case IOFAttrbType::Bool:
        return CompareProperty(Data<UtIOFAttribItemBool>(x), Data<UtIOFAttribItemBool>(y), path, m_Report);
      case IOFAttrbType::Int:
        return CompareProperty(Data<UtIOFAttribItemInt>(x), Data<UtIOFAttribItemInt>(y), path, m_Report);
      case IOFAttrbType::UInt64:
        return CompareProperty(static_cast<long long>(Data<UtIOFAttribItemUInt64>(x)),
                               static_cast<long long>(Data<UtIOFAttribItemUInt64>(y)), path, m_Report);
      case IOFAttrbType::Double:
        return CompareProperty(Data<UtIOFAttribItemDbl>(x), Data<UtIOFAttribItemDbl>(y), path, m_Report, 1e-6);
      case IOFAttrbType::String:
        return CompareProperty(Data<UtIOFAttribItemCString>(x), Data<UtIOFAttribItemCString>(y), path, m_Report);
      default:
        return true;  // the untyped item has no value
    }
  }

  CString& m_Report;
  CString m_Prefix;
  bool m_Same = true;
};

bool DbIOFMachineInfo::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFMachineInfo>(other, report);
  if (!o || !DbIOFBase::Compare(other, report)) return false;
  TableComparer compare(report, CString());
  Fields(compare, *this, *o);
  return compare.Same();
}

}  // namespace IOF

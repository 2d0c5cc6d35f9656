#include <iof/UtAxisMotionMap.h>

#include <quarp/UtSerialize.h>

#include <iterator>

namespace IOF {

IOF_IMPLEMENT_SERIAL(UtAxisMotionMap)

namespace {

const wchar_t* AxisText(int axis) {
  static const wchar_t* const kTexts[] = {L"X", L"Y", L"Z", L"A", L"B", L"C"};
  return axis >= 0 && axis < 6 ? kTexts[axis] : nullptr;
}

const wchar_t* MotionText(int type) {
  switch (type) {
    case Disabled:
      return L"Disabled";
    case Coordinate:
      return L"Coordinate";
    case OffsetFromHomePosition:
      return L"OffsetFromHomePosition";
    case OffsetFromSpindleOrigin:
      return L"OffsetFromSpindleOrigin";
    case OffsetFromMinLimit:
      return L"OffsetFromMinLimit";
    case OffsetFromMaxLimit:
      return L"OffsetFromMaxLimit";
    case AxisNotDefined:
      return L"AxisNotDefined";
    default:
      return nullptr;  // 6 and 7 have no text
  }
}

}  // namespace

void UtAxisMotionMap::AddMotion(AxisType axis, AxisMotionType type, double value) {
  m_Map[axis] = UtAxisMotionMapItem(type, value);
}

bool UtAxisMotionMap::GetMotion(AxisType axis, AxisMotionType& type, double& value) const {
  const auto it = m_Map.find(axis);
  if (it == m_Map.end()) return false;
  type = it->second.GetMotionType();
  value = it->second.GetValue();
  return true;
}

bool UtAxisMotionMap::GetMotion(int index, AxisType& axis, AxisMotionType& type, double& value) const {
  if (index < 0 || index >= GetSize()) return false;
  const auto it = std::next(m_Map.begin(), index);
  axis = it->first;
  type = it->second.GetMotionType();
  value = it->second.GetValue();
  return true;
}

CString UtAxisMotionMap::ToString() const {
  CString text = CString::Formatted(L"UtAxisMotionMap(%d): ", GetSize());
  // Carried from one entry to the next when an entry has no text of its own: intended.
  CString axisText;
  CString motionText;
  for (const auto& [axis, item] : m_Map) {
    if (const wchar_t* a = AxisText(axis)) axisText = a;
    if (const wchar_t* m = MotionText(item.GetMotionType())) motionText = m;
    text.AppendFormat(L"[%s] (%s, %g), ", axisText, motionText, item.GetValue());
  }
  return text;
}

void UtAxisMotionMap::Serialize(Quarp::UtArchive& ar) {
  const unsigned version = Quarp::UtSerializeVersion(ar, 0);
  if (ar.IsStoring()) {
    ar << static_cast<std::int32_t>(m_Map.size());
    for (const auto& [axis, item] : m_Map) ar << axis << item.GetMotionType() << item.GetValue();
    return;
  }
  Quarp::UtCheckVersion(version, 0, "UtAxisMotionMap");
  std::int32_t count = 0;
  ar >> count;
  if (count < 1) return;
  ar.CheckCount(static_cast<std::uint64_t>(count), 16);
  for (std::int32_t i = 0; i < count; ++i) {
    AxisType axis{};
    AxisMotionType type{};
    double value = 0.0;
    ar >> axis >> type >> value;
    AddMotion(axis, type, value);
  }
}

}  // namespace IOF

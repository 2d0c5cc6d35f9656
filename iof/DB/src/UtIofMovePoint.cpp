#include <iof/UtIofMovePoint.h>

#include <quarp/UtSerialize.h>
#include <zolt/Diagnostics.h>

#include <cmath>

namespace IOF {

IOF_IMPLEMENT_SERIAL(UtIofMovePoint)

UtIofMovePoint::UtIofMovePoint() : m_Values(6, 0.0), m_IsSet(6, false) {}

bool UtIofMovePoint::SetValByIndex(int i, double v) {
  if (i < 0 || static_cast<std::size_t>(i) >= m_Values.size()) {
    Zolt::Diagnostics::Details::InvokeCurrentAssertHandler("DB/src/UtIofMovePoint", 52,
                                                           "IOF::UtIofMovePoint::SetValByIndex",
                                                           "IOF::UtIofMovePoint::SetValByIndex");
    return false;
  }
  m_Values[static_cast<std::size_t>(i)] = v;
  if (m_IsSet.size() <= static_cast<std::size_t>(i)) m_IsSet.resize(static_cast<std::size_t>(i) + 1, false);
  m_IsSet[static_cast<std::size_t>(i)] = true;
  return true;
}

bool UtIofMovePoint::GetValByIndex(int i, double& v, bool& isSet) const {
  if (i < 0 || static_cast<std::size_t>(i) >= m_Values.size()) {
    Zolt::Diagnostics::Details::InvokeCurrentAssertHandler("DB/src/UtIofMovePoint", 65,
                                                           "IOF::UtIofMovePoint::GetValByIndex",
                                                           "IOF::UtIofMovePoint::GetValByIndex");
    return false;
  }
  v = m_Values[static_cast<std::size_t>(i)];
  isSet = static_cast<std::size_t>(i) < m_IsSet.size() && m_IsSet[static_cast<std::size_t>(i)];
  return true;
}

void UtIofMovePoint::SetXYZ(const GmPoint3D& p) {
  SetValByIndex(0, p.x);
  SetValByIndex(1, p.y);
  SetValByIndex(2, p.z);
}

void UtIofMovePoint::SetABC(const GmPoint3D& p) {
  SetValByIndex(3, p.x);
  SetValByIndex(4, p.y);
  SetValByIndex(5, p.z);
}

namespace {
double ValueAt(const std::vector<double>& values, std::size_t i) { return i < values.size() ? values[i] : 0.0; }
bool FlagAt(const std::vector<bool>& flags, std::size_t i) { return i < flags.size() && flags[i]; }
}  // namespace

bool UtIofMovePoint::GetXYZ(GmPoint3D& p) const {
  p = GmPoint3D(ValueAt(m_Values, 0), ValueAt(m_Values, 1), ValueAt(m_Values, 2));
  return FlagAt(m_IsSet, 0) && FlagAt(m_IsSet, 1) && FlagAt(m_IsSet, 2);
}

bool UtIofMovePoint::GetABC(GmPoint3D& p) const {
  p = GmPoint3D(ValueAt(m_Values, 3), ValueAt(m_Values, 4), ValueAt(m_Values, 5));
  // Tests the X, Y, Z flags: intended.
  return FlagAt(m_IsSet, 0) && FlagAt(m_IsSet, 1) && FlagAt(m_IsSet, 2);
}

void UtIofMovePoint::GetAllVals(std::vector<double>& values, std::vector<bool>& isSet) const {
  values = m_Values;
  isSet = m_IsSet;
}

void UtIofMovePoint::Reset() {
  m_Values.resize(6, 0.0);
  m_IsSet.assign(6, false);
}

bool UtIofMovePoint::operator==(const UtIofMovePoint& o) const {
  return std::fabs(ValueAt(m_Values, 5) - ValueAt(o.m_Values, 5)) < 1e-7 && FlagAt(m_IsSet, 5) == FlagAt(o.m_IsSet, 5);
}

CString UtIofMovePoint::ToString() const {
  static const wchar_t* const kLetters[] = {L"X", L"Y", L"Z", L"A", L"B", L"C"};
  CString text(L"(");
  for (std::size_t i = 0; i < 6; ++i) {
    if (FlagAt(m_IsSet, i)) text.AppendFormat(L" %s%14.14f,", kLetters[i], ValueAt(m_Values, i));
  }
  text += L")";
  return text;
}

void UtIofMovePoint::Serialize(Quarp::UtArchive& ar) {
  const unsigned version = Quarp::UtSerializeVersion(ar, 0);
  if (ar.IsStoring()) {
    ar << static_cast<std::int32_t>(m_Values.size());
    for (const double v : m_Values) ar << v;
    ar << static_cast<std::int32_t>(m_IsSet.size());
    for (const bool f : m_IsSet) ar << f;
    return;
  }
  Quarp::UtCheckVersion(version, 0, "UtIofMovePoint");
  std::int32_t count = 0;
  ar >> count;
  if (count < 0) count = 0;
  ar.CheckCount(static_cast<std::uint64_t>(count), 8);
  m_Values.assign(static_cast<std::size_t>(count), 0.0);
  for (double& v : m_Values) ar >> v;
  ar >> count;
  if (count < 0) count = 0;
  ar.CheckCount(static_cast<std::uint64_t>(count), 1);
  m_IsSet.assign(static_cast<std::size_t>(count), false);
  for (std::size_t i = 0; i < m_IsSet.size(); ++i) {
    bool f = false;
    ar >> f;
    m_IsSet[i] = f;
  }
}

}  // namespace IOF

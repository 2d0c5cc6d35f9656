#include <iof/DbIOFMoveStrategyBase.h>
#include <iof/UtIOFAttribMap.h>

namespace IOF {

CString DbIOFMoveStrategyBase::StrategyAttribValue(const wchar_t* key) const {
  CString value;
  if (GetAttributes().GetCStringAttribVal(CString(key), value) != AttribGetStatus::Done) value.Empty();
  return value;
}

bool DbIOFMoveStrategyBase::CompareShared(const DbIOFMoveStrategyBase& other, const wchar_t* typeName,
                                          CString& report) const {
  return CompareProperty(m_EndPoint, other.m_EndPoint, L"m_EndPoint", report, 1e-6) &&
         CompareProperty(m_ReferencePointId, other.m_ReferencePointId, L"m_ReferencePointId", report) &&
         CompareProperty(m_Type, other.m_Type, typeName, report) &&
         CompareProperty(m_NcIncremental, other.m_NcIncremental, L"m_NcIncremental", report);
}

}  // namespace IOF

#include <iof/DbIOFMultiAxMotionBlock.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFMultiAxMotionBlock)

template <class F, class... R>
void DbIOFMultiAxMotionBlock::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_NoCompEndPt", r.m_NoCompEndPt...);
  f(Field::V(0), "m_G434EndPt", r.m_G434EndPt...);
  f(Field::V(0), "m_G43EndPt", r.m_G43EndPt...);
  f(Field::V(0), "m_InputPt", r.m_InputPt...);
  f(Field::V(0), "m_ToolOrientVec", r.m_ToolOrientVec...);
}

CString DbIOFMultiAxMotionBlock::ToIOFString() const {
  CString text = CString::Formatted(L"DbIOFMultiAxMotionBlock End: %s", GetEndPt().ToString());
  text.AppendFormat(
      L", No Comp End: (%f,%f,%f), G43.4 End: (%f,%f,%f), G43 End: (%f,%f,%f), Input XYZ IJK: (%f,%f,%f %f,%f,%f)",
      m_NoCompEndPt.x, m_NoCompEndPt.y, m_NoCompEndPt.z, m_G434EndPt.x, m_G434EndPt.y, m_G434EndPt.z, m_G43EndPt.x,
      m_G43EndPt.y, m_G43EndPt.z, m_InputPt.x, m_InputPt.y, m_InputPt.z, m_ToolOrientVec[0], m_ToolOrientVec[1],
      m_ToolOrientVec[2]);
  return text;
}

bool DbIOFMultiAxMotionBlock::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFMultiAxMotionBlock>(other, report);
  // DbIOFMotionBlock is skipped on purpose: the end point of a multi-axis block is never compared.
  return o && DbIOFBase::Compare(other, report) &&
         CompareProperty(m_NoCompEndPt, o->m_NoCompEndPt, L"m_NoCompEndPt", report, 1e-6) &&
         CompareProperty(m_G434EndPt, o->m_G434EndPt, L"m_G434EndPt", report, 1e-6) &&
         CompareProperty(m_G43EndPt, o->m_G43EndPt, L"m_G43EndPt", report, 1e-6) &&
         CompareProperty(m_InputPt, o->m_InputPt, L"m_InputPt", report, 1e-6) &&
         CompareProperty(m_ToolOrientVec, o->m_ToolOrientVec, L"m_ToolOrientVec", report, 1e-6);
}

}  // namespace IOF

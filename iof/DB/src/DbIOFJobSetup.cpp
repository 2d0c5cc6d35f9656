#include <iof/DbIOFJobSetup.h>

#include "RecordImpl.h"

#include <type_traits>

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFJobSetup)

// Version 1 added m_MachineFileName; the rest is the version-0 layout.
template <class F, class... R>
void DbIOFJobSetup::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_FileDescriptor", r.m_FileDescriptor...);
  f(Field::V(0), "m_ChordDevTol", r.m_ChordDevTol...);
  f(Field::V(0), "m_PartLength", r.m_PartLength...);
  f(Field::V(0), "m_MachineGroupName", r.m_MachineGroupName...);
  f(Field::V(0), "m_MachineGroupComment", r.m_MachineGroupComment...);
  f(Field::V(0), "m_MachineGroupToolProgramNumber", r.m_MachineGroupToolProgramNumber...);
  f(Field::V(0), "m_WCSName", r.m_WCSName...);
  f(Field::V(0), "m_WCSComment", r.m_WCSComment...);
  f(Field::V(0), "m_MaterialName", r.m_MaterialName...);
  f(Field::V(0), "m_MaterialComment", r.m_MaterialComment...);
  f(Field::V(0), "m_InitialSpindleID", r.m_InitialSpindleID...);
  f(Field::V(0), "m_DoStockTransfer", r.m_DoStockTransfer...);
  f(Field::V(0), "m_JobSetupType", r.m_JobSetupType...);
  f(Field::V(0), "m_DoPullStock", r.m_DoPullStock...);
  f(Field::V(0), "m_IsDstStockManuallyDefined", r.m_IsDstStockManuallyDefined...);
  f(Field::V(0), "m_IsDstSpindleEnabled", r.m_IsDstSpindleEnabled...);
  f(Field::V(0), "m_NumParts", r.m_NumParts...);
  f(Field::V(0), "m_StockOD", r.m_StockOD...);
  f(Field::V(0), "m_ExtraStockOD", r.m_ExtraStockOD...);
  f(Field::V(0), "m_IsStockIDDefined", r.m_IsStockIDDefined...);
  f(Field::V(0), "m_StockID", r.m_StockID...);
  f(Field::V(0), "m_ExtraStockID", r.m_ExtraStockID...);
  f(Field::V(0), "m_ExtraStockFace", r.m_ExtraStockFace...);
  f(Field::V(0), "m_ExtraStockBack", r.m_ExtraStockBack...);
  f(Field::V(0), "m_PickOffZPosition", r.m_PickOffZPosition...);
  f(Field::V(0), "m_CutoffWidth", r.m_CutoffWidth...);
  f(Field::V(0), "m_WcsZOffset", r.m_WcsZOffset...);
  f(Field::V(0), "m_LeftG28Angle", r.m_LeftG28Angle...);
  f(Field::V(0), "m_IsLeftGripperChuckJaws", r.m_IsLeftGripperChuckJaws...);
  f(Field::V(0), "m_IsLeftChuckJawClampingTypeOD", r.m_IsLeftChuckJawClampingTypeOD...);
  f(Field::V(0), "m_LeftGripperReferencePointX", r.m_LeftGripperReferencePointX...);
  f(Field::V(0), "m_LeftGripperReferencePointY", r.m_LeftGripperReferencePointY...);
  f(Field::V(0), "m_LeftChuckJawLength", r.m_LeftChuckJawLength...);
  f(Field::V(0), "m_LeftChuckJawHeight", r.m_LeftChuckJawHeight...);
  f(Field::V(0), "m_LeftChuckJawThickness", r.m_LeftChuckJawThickness...);
  f(Field::V(0), "m_LeftChuckJawXPosition", r.m_LeftChuckJawXPosition...);
  f(Field::V(0), "m_LeftColletID", r.m_LeftColletID...);
  f(Field::V(0), "m_LeftColletOD", r.m_LeftColletOD...);
  f(Field::V(0), "m_LeftChuckThickness", r.m_LeftChuckThickness...);
  f(Field::V(0), "m_LeftChuckChannelDepth", r.m_LeftChuckChannelDepth...);
  f(Field::V(0), "m_PartStickOutFromLeftChuckFace", r.m_PartStickOutFromLeftChuckFace...);
  f(Field::V(0), "m_PartStickOutFromLeftJawFace", r.m_PartStickOutFromLeftJawFace...);
  f(Field::V(0), "m_LeftToolPlaneOriginZ", r.m_LeftToolPlaneOriginZ...);
  f(Field::V(0), "m_LeftWorkOffsetNo", r.m_LeftWorkOffsetNo...);
  f(Field::V(0), "m_RightG28Angle", r.m_RightG28Angle...);
  f(Field::V(0), "m_IsRightGripperChuckJaws", r.m_IsRightGripperChuckJaws...);
  f(Field::V(0), "m_IsRightChuckJawClampingTypeOD", r.m_IsRightChuckJawClampingTypeOD...);
  f(Field::V(0), "m_RightGripperReferencePointX", r.m_RightGripperReferencePointX...);
  f(Field::V(0), "m_RightGripperReferencePointY", r.m_RightGripperReferencePointY...);
  f(Field::V(0), "m_RightChuckJawLength", r.m_RightChuckJawLength...);
  f(Field::V(0), "m_RightChuckJawHeight", r.m_RightChuckJawHeight...);
  f(Field::V(0), "m_RightChuckJawThickness", r.m_RightChuckJawThickness...);
  f(Field::V(0), "m_RightChuckJawXPosition", r.m_RightChuckJawXPosition...);
  f(Field::V(0), "m_RightColletID", r.m_RightColletID...);
  f(Field::V(0), "m_RightColletOD", r.m_RightColletOD...);
  f(Field::V(0), "m_RightChuckThickness", r.m_RightChuckThickness...);
  f(Field::V(0), "m_RightChuckChannelDepth", r.m_RightChuckChannelDepth...);
  f(Field::V(0), "m_PartStickOutFromRightChuckFace", r.m_PartStickOutFromRightChuckFace...);
  f(Field::V(0), "m_PartStickOutFromRightJawFace", r.m_PartStickOutFromRightJawFace...);
  f(Field::V(0), "m_RightToolPlaneOriginZ", r.m_RightToolPlaneOriginZ...);
  f(Field::V(0), "m_RightWorkOffsetNo", r.m_RightWorkOffsetNo...);
  f(Field::V(0), "m_PartStickOutDistance", r.m_PartStickOutDistance...);
  f(Field::V(0), "m_ViewMatrix", r.m_ViewMatrix...);
  f(Field::V(0), "m_ViewRectLL", r.m_ViewRectLL...);
  f(Field::V(0), "m_ViewRectUR", r.m_ViewRectUR...);
  f(Field::V(0), "m_LeftChuckMCOArray", r.m_LeftChuckMCOArray...);
  f(Field::V(0), "m_LeftJawsMCOArray", r.m_LeftJawsMCOArray...);
  f(Field::V(0), "m_LeftStockMCOArray", r.m_LeftStockMCOArray...);
  f(Field::V(0), "m_RightChuckMCOArray", r.m_RightChuckMCOArray...);
  f(Field::V(0), "m_RightJawsMCOArray", r.m_RightJawsMCOArray...);
  f(Field::V(0), "m_RightStockMCOArray", r.m_RightStockMCOArray...);
  f(Field::V(0), "m_WCSMatrix", r.m_WCSMatrix...);
  f(Field::V(0), "m_LeftWorkpieceMCOFname", r.m_LeftWorkpieceMCOFname...);
  f(Field::V(0), "m_RightWorkpieceMCOFname", r.m_RightWorkpieceMCOFname...);
  f(Field::V(0), "m_MCOFilePath", r.m_MCOFilePath...);
  f(Field::V(0), "m_PartStickOutReference", r.m_PartStickOutReference...);
  f(Field::V(1), "m_MachineFileName", r.m_MachineFileName...);
}

CString DbIOFJobSetup::ToIOFString() const {
  return CString::Formatted(L"IOF Job Setup Object: Name: %s Chordal deviation tol=%g PickoffZ=%lf", GetIOFName(),
                            m_ChordDevTol, m_PickOffZPosition);
}

bool DbIOFJobSetup::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFJobSetup>(other, report);
  if (!o || !DbIOFList::Compare(other, report)) return false;
  // One property: reals and points within 1e-6, matrices within 2e-7.
  const auto same = [&](auto DbIOFJobSetup::*member, const wchar_t* name) {
    const auto& a = this->*member;
    const auto& b = o->*member;
    using T = std::remove_cvref_t<decltype(a)>;
    if constexpr (std::is_same_v<T, GmXformMat3D>) {
      return CompareProperty(a, b, name, report, 2e-7);
    } else if constexpr (std::is_same_v<T, double> || std::is_same_v<T, GmPoint3D>) {
      return CompareProperty(a, b, name, report, 1e-6);
    } else if constexpr (std::is_enum_v<T>) {
      return CompareProperty(static_cast<int>(a), static_cast<int>(b), name, report);
    } else {
      return CompareProperty(a, b, name, report);
    }
  };
#define IOF_SAME(member) same(&DbIOFJobSetup::member, L"" #member)
  // Intended: the stick-out reference is compared before the stick-out distance, and the
  // six model-file name arrays are not compared.
  return IOF_SAME(m_ChordDevTol) && IOF_SAME(m_FileDescriptor) && IOF_SAME(m_PartLength) &&
         IOF_SAME(m_MachineGroupToolProgramNumber) && IOF_SAME(m_MachineGroupName) && IOF_SAME(m_MachineGroupComment) &&
         IOF_SAME(m_WCSName) && IOF_SAME(m_WCSComment) && IOF_SAME(m_MaterialName) && IOF_SAME(m_MaterialComment) &&
         IOF_SAME(m_InitialSpindleID) && IOF_SAME(m_DoStockTransfer) && IOF_SAME(m_JobSetupType) &&
         IOF_SAME(m_DoPullStock) && IOF_SAME(m_IsDstStockManuallyDefined) && IOF_SAME(m_IsDstSpindleEnabled) &&
         IOF_SAME(m_NumParts) && IOF_SAME(m_StockOD) && IOF_SAME(m_ExtraStockOD) && IOF_SAME(m_IsStockIDDefined) &&
         IOF_SAME(m_StockID) && IOF_SAME(m_ExtraStockID) && IOF_SAME(m_ExtraStockFace) && IOF_SAME(m_ExtraStockBack) &&
         IOF_SAME(m_PickOffZPosition) && IOF_SAME(m_CutoffWidth) && IOF_SAME(m_WcsZOffset) &&
         IOF_SAME(m_LeftG28Angle) && IOF_SAME(m_IsLeftGripperChuckJaws) && IOF_SAME(m_IsLeftChuckJawClampingTypeOD) &&
         IOF_SAME(m_LeftGripperReferencePointX) && IOF_SAME(m_LeftGripperReferencePointY) &&
         IOF_SAME(m_LeftChuckJawLength) && IOF_SAME(m_LeftChuckJawHeight) && IOF_SAME(m_LeftChuckJawThickness) &&
         IOF_SAME(m_LeftChuckJawXPosition) && IOF_SAME(m_LeftColletID) && IOF_SAME(m_LeftColletOD) &&
         IOF_SAME(m_LeftChuckThickness) && IOF_SAME(m_LeftChuckChannelDepth) &&
         IOF_SAME(m_PartStickOutFromLeftChuckFace) && IOF_SAME(m_PartStickOutFromLeftJawFace) &&
         IOF_SAME(m_LeftToolPlaneOriginZ) && IOF_SAME(m_LeftWorkOffsetNo) && IOF_SAME(m_RightG28Angle) &&
         IOF_SAME(m_IsRightGripperChuckJaws) && IOF_SAME(m_IsRightChuckJawClampingTypeOD) &&
         IOF_SAME(m_RightGripperReferencePointX) && IOF_SAME(m_RightGripperReferencePointY) &&
         IOF_SAME(m_RightChuckJawLength) && IOF_SAME(m_RightChuckJawHeight) && IOF_SAME(m_RightChuckJawThickness) &&
         IOF_SAME(m_RightChuckJawXPosition) && IOF_SAME(m_RightColletID) && IOF_SAME(m_RightColletOD) &&
         IOF_SAME(m_RightChuckThickness) && IOF_SAME(m_RightChuckChannelDepth) &&
         IOF_SAME(m_PartStickOutFromRightChuckFace) && IOF_SAME(m_PartStickOutFromRightJawFace) &&
         IOF_SAME(m_RightToolPlaneOriginZ) && IOF_SAME(m_RightWorkOffsetNo) && IOF_SAME(m_PartStickOutReference) &&
         IOF_SAME(m_PartStickOutDistance) && IOF_SAME(m_ViewMatrix) && IOF_SAME(m_ViewRectLL) &&
         IOF_SAME(m_ViewRectUR) && IOF_SAME(m_WCSMatrix) && IOF_SAME(m_LeftWorkpieceMCOFname) &&
         IOF_SAME(m_RightWorkpieceMCOFname) && IOF_SAME(m_MCOFilePath) && IOF_SAME(m_MachineFileName);
#undef IOF_SAME
}

}  // namespace IOF

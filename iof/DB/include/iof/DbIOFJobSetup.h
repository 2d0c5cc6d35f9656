// DbIOFJobSetup: the job-wide set-up of a document (type IOFJOBSETUP, 0x5170): file
// description and chordal tolerance, machine group, work coordinate system and material
// names, the stock (outer and inner diameters, extra stock, transfer and pull options),
// the left and right chuck, collet and gripper geometry of a two-spindle lathe, the part
// stick-out, the view and WCS matrices, and the names of the chuck, jaw and stock model
// files. The document keeps its id (DbIOFDocument::GetJobSetupID).
//
//   auto setup = IOF::DbIOFJobSetup::Create();
//   setup->SetChordDevTol(0.001);
//   setup->SetStockOD(80.0);
//   setup->SetLeftChuckMCOArray({L"chuck3jaw.mco"});
//   doc->SetJobSetupID(mgr.Add(setup));
//
// A record list of kind 0 (DbIOFList) with the fields below.
//
// Archive (version 1), after the list part: the 77 fields in the order of the members
// below; each name array is a 32-bit count followed by each string. Version 0 is the
// same without m_MachineFileName, which stays empty. The field list reads both layouts
// (it stands for the readers DeserializeV0 and DeserializeV1).
//
// Comparison: the list part, then m_ChordDevTol, m_FileDescriptor, m_PartLength,
// m_MachineGroupToolProgramNumber, m_MachineGroupName, m_MachineGroupComment, m_WCSName,
// m_WCSComment, m_MaterialName, m_MaterialComment, then m_InitialSpindleID to
// m_RightWorkOffsetNo in archive order, then m_PartStickOutReference before
// m_PartStickOutDistance, m_ViewMatrix, m_ViewRectLL, m_ViewRectUR, m_WCSMatrix,
// m_LeftWorkpieceMCOFname, m_RightWorkpieceMCOFname, m_MCOFilePath, m_MachineFileName.
// Reals and points within 1e-6 are equal, the matrices within 2e-7. The six model-file
// name arrays are archived and copied but not compared: intended.
//
// Dump: "IOF Job Setup Object: Name: %s Chordal deviation tol=%g PickoffZ=%lf" with the
// IOF name, m_ChordDevTol and m_PickOffZPosition.
#pragma once

#include <iof/DbIOFList.h>
#include <iof/GmPoint3D.h>
#include <iof/GmXformMat3D.h>

#include <utility>
#include <vector>

namespace IOF {

class DbIOFJobSetup : public DbIOFList {
  IOF_RECORD(DbIOFJobSetup, DbIOFList)

 public:
  static constexpr unsigned kVersion = 1;

  // Where the part stick-out is measured from (m_PartStickOutReference).
  enum ChuckJawStockStickoutTypes : int {
    kStickOutFromChuckFace = 0,
    kStickOutFromJawFace = 1,
  };

  using Names = std::vector<CString>;

  CString GetFileDescriptor() const { return m_FileDescriptor; }
  void SetFileDescriptor(const CString& v) { m_FileDescriptor = v; }
  double GetChordDevTol() const noexcept { return m_ChordDevTol; }
  void SetChordDevTol(double v) noexcept { m_ChordDevTol = v; }
  double GetPartLength() const noexcept { return m_PartLength; }
  void SetPartLength(double v) noexcept { m_PartLength = v; }
  CString GetMachineGroupName() const { return m_MachineGroupName; }
  void SetMachineGroupName(const CString& v) { m_MachineGroupName = v; }
  CString GetMachineGroupComment() const { return m_MachineGroupComment; }
  void SetMachineGroupComment(const CString& v) { m_MachineGroupComment = v; }
  int GetMachineGroupToolProgramNumber() const noexcept { return m_MachineGroupToolProgramNumber; }
  void SetMachineGroupToolProgramNumber(int v) noexcept { m_MachineGroupToolProgramNumber = v; }
  CString GetWCSName() const { return m_WCSName; }
  void SetWCSName(const CString& v) { m_WCSName = v; }
  CString GetWCSComment() const { return m_WCSComment; }
  void SetWCSComment(const CString& v) { m_WCSComment = v; }
  CString GetMaterialName() const { return m_MaterialName; }
  void SetMaterialName(const CString& v) { m_MaterialName = v; }
  CString GetMaterialComment() const { return m_MaterialComment; }
  void SetMaterialComment(const CString& v) { m_MaterialComment = v; }
  int GetInitialSpindleID() const noexcept { return m_InitialSpindleID; }
  void SetInitialSpindleID(int v) noexcept { m_InitialSpindleID = v; }
  bool GetDoStockTransfer() const noexcept { return m_DoStockTransfer; }
  void SetDoStockTransfer(bool v) noexcept { m_DoStockTransfer = v; }
  int GetJobSetupType() const noexcept { return m_JobSetupType; }
  void SetJobSetupType(int v) noexcept { m_JobSetupType = v; }
  bool GetDoPullStock() const noexcept { return m_DoPullStock; }
  void SetDoPullStock(bool v) noexcept { m_DoPullStock = v; }
  bool GetIsDstStockManuallyDefined() const noexcept { return m_IsDstStockManuallyDefined; }
  void SetIsDstStockManuallyDefined(bool v) noexcept { m_IsDstStockManuallyDefined = v; }
  bool GetIsDstSpindleEnabled() const noexcept { return m_IsDstSpindleEnabled; }
  void SetIsDstSpindleEnabled(bool v) noexcept { m_IsDstSpindleEnabled = v; }
  int GetNumParts() const noexcept { return m_NumParts; }
  void SetNumParts(int v) noexcept { m_NumParts = v; }
  double GetStockOD() const noexcept { return m_StockOD; }
  void SetStockOD(double v) noexcept { m_StockOD = v; }
  double GetExtraStockOD() const noexcept { return m_ExtraStockOD; }
  void SetExtraStockOD(double v) noexcept { m_ExtraStockOD = v; }
  bool GetIsStockIDDefined() const noexcept { return m_IsStockIDDefined; }
  void SetIsStockIDDefined(bool v) noexcept { m_IsStockIDDefined = v; }
  double GetStockID() const noexcept { return m_StockID; }
  void SetStockID(double v) noexcept { m_StockID = v; }
  double GetExtraStockID() const noexcept { return m_ExtraStockID; }
  void SetExtraStockID(double v) noexcept { m_ExtraStockID = v; }
  double GetExtraStockFace() const noexcept { return m_ExtraStockFace; }
  void SetExtraStockFace(double v) noexcept { m_ExtraStockFace = v; }
  double GetExtraStockBack() const noexcept { return m_ExtraStockBack; }
  void SetExtraStockBack(double v) noexcept { m_ExtraStockBack = v; }
  double GetPickOffZPosition() const noexcept { return m_PickOffZPosition; }
  void SetPickOffZPosition(double v) noexcept { m_PickOffZPosition = v; }
  double GetCutoffWidth() const noexcept { return m_CutoffWidth; }
  void SetCutoffWidth(double v) noexcept { m_CutoffWidth = v; }
  double GetWcsZOffset() const noexcept { return m_WcsZOffset; }
  void SetWcsZOffset(double v) noexcept { m_WcsZOffset = v; }

  double GetLeftG28Angle() const noexcept { return m_LeftG28Angle; }
  void SetLeftG28Angle(double v) noexcept { m_LeftG28Angle = v; }
  bool GetIsLeftGripperChuckJaws() const noexcept { return m_IsLeftGripperChuckJaws; }
  void SetIsLeftGripperChuckJaws(bool v) noexcept { m_IsLeftGripperChuckJaws = v; }
  bool GetIsLeftChuckJawClampingTypeOD() const noexcept { return m_IsLeftChuckJawClampingTypeOD; }
  void SetIsLeftChuckJawClampingTypeOD(bool v) noexcept { m_IsLeftChuckJawClampingTypeOD = v; }
  double GetLeftGripperReferencePointX() const noexcept { return m_LeftGripperReferencePointX; }
  void SetLeftGripperReferencePointX(double v) noexcept { m_LeftGripperReferencePointX = v; }
  double GetLeftGripperReferencePointY() const noexcept { return m_LeftGripperReferencePointY; }
  void SetLeftGripperReferencePointY(double v) noexcept { m_LeftGripperReferencePointY = v; }
  double GetLeftChuckJawLength() const noexcept { return m_LeftChuckJawLength; }
  void SetLeftChuckJawLength(double v) noexcept { m_LeftChuckJawLength = v; }
  double GetLeftChuckJawHeight() const noexcept { return m_LeftChuckJawHeight; }
  void SetLeftChuckJawHeight(double v) noexcept { m_LeftChuckJawHeight = v; }
  double GetLeftChuckJawThickness() const noexcept { return m_LeftChuckJawThickness; }
  void SetLeftChuckJawThickness(double v) noexcept { m_LeftChuckJawThickness = v; }
  double GetLeftChuckJawXPosition() const noexcept { return m_LeftChuckJawXPosition; }
  void SetLeftChuckJawXPosition(double v) noexcept { m_LeftChuckJawXPosition = v; }
  double GetLeftColletID() const noexcept { return m_LeftColletID; }
  void SetLeftColletID(double v) noexcept { m_LeftColletID = v; }
  double GetLeftColletOD() const noexcept { return m_LeftColletOD; }
  void SetLeftColletOD(double v) noexcept { m_LeftColletOD = v; }
  double GetLeftChuckThickness() const noexcept { return m_LeftChuckThickness; }
  void SetLeftChuckThickness(double v) noexcept { m_LeftChuckThickness = v; }
  double GetLeftChuckChannelDepth() const noexcept { return m_LeftChuckChannelDepth; }
  void SetLeftChuckChannelDepth(double v) noexcept { m_LeftChuckChannelDepth = v; }
  double GetPartStickOutFromLeftChuckFace() const noexcept { return m_PartStickOutFromLeftChuckFace; }
  void SetPartStickOutFromLeftChuckFace(double v) noexcept { m_PartStickOutFromLeftChuckFace = v; }
  double GetPartStickOutFromLeftJawFace() const noexcept { return m_PartStickOutFromLeftJawFace; }
  void SetPartStickOutFromLeftJawFace(double v) noexcept { m_PartStickOutFromLeftJawFace = v; }
  double GetLeftToolPlaneOriginZ() const noexcept { return m_LeftToolPlaneOriginZ; }
  void SetLeftToolPlaneOriginZ(double v) noexcept { m_LeftToolPlaneOriginZ = v; }
  int GetLeftWorkOffsetNo() const noexcept { return m_LeftWorkOffsetNo; }
  void SetLeftWorkOffsetNo(int v) noexcept { m_LeftWorkOffsetNo = v; }

  double GetRightG28Angle() const noexcept { return m_RightG28Angle; }
  void SetRightG28Angle(double v) noexcept { m_RightG28Angle = v; }
  bool GetIsRightGripperChuckJaws() const noexcept { return m_IsRightGripperChuckJaws; }
  void SetIsRightGripperChuckJaws(bool v) noexcept { m_IsRightGripperChuckJaws = v; }
  bool GetIsRightChuckJawClampingTypeOD() const noexcept { return m_IsRightChuckJawClampingTypeOD; }
  void SetIsRightChuckJawClampingTypeOD(bool v) noexcept { m_IsRightChuckJawClampingTypeOD = v; }
  double GetRightGripperReferencePointX() const noexcept { return m_RightGripperReferencePointX; }
  void SetRightGripperReferencePointX(double v) noexcept { m_RightGripperReferencePointX = v; }
  double GetRightGripperReferencePointY() const noexcept { return m_RightGripperReferencePointY; }
  void SetRightGripperReferencePointY(double v) noexcept { m_RightGripperReferencePointY = v; }
  double GetRightChuckJawLength() const noexcept { return m_RightChuckJawLength; }
  void SetRightChuckJawLength(double v) noexcept { m_RightChuckJawLength = v; }
  double GetRightChuckJawHeight() const noexcept { return m_RightChuckJawHeight; }
  void SetRightChuckJawHeight(double v) noexcept { m_RightChuckJawHeight = v; }
  double GetRightChuckJawThickness() const noexcept { return m_RightChuckJawThickness; }
  void SetRightChuckJawThickness(double v) noexcept { m_RightChuckJawThickness = v; }
  double GetRightChuckJawXPosition() const noexcept { return m_RightChuckJawXPosition; }
  void SetRightChuckJawXPosition(double v) noexcept { m_RightChuckJawXPosition = v; }
  double GetRightColletID() const noexcept { return m_RightColletID; }
  void SetRightColletID(double v) noexcept { m_RightColletID = v; }
  double GetRightColletOD() const noexcept { return m_RightColletOD; }
  void SetRightColletOD(double v) noexcept { m_RightColletOD = v; }
  double GetRightChuckThickness() const noexcept { return m_RightChuckThickness; }
  void SetRightChuckThickness(double v) noexcept { m_RightChuckThickness = v; }
  double GetRightChuckChannelDepth() const noexcept { return m_RightChuckChannelDepth; }
  void SetRightChuckChannelDepth(double v) noexcept { m_RightChuckChannelDepth = v; }
  double GetPartStickOutFromRightChuckFace() const noexcept { return m_PartStickOutFromRightChuckFace; }
  void SetPartStickOutFromRightChuckFace(double v) noexcept { m_PartStickOutFromRightChuckFace = v; }
  double GetPartStickOutFromRightJawFace() const noexcept { return m_PartStickOutFromRightJawFace; }
  void SetPartStickOutFromRightJawFace(double v) noexcept { m_PartStickOutFromRightJawFace = v; }
  double GetRightToolPlaneOriginZ() const noexcept { return m_RightToolPlaneOriginZ; }
  void SetRightToolPlaneOriginZ(double v) noexcept { m_RightToolPlaneOriginZ = v; }
  int GetRightWorkOffsetNo() const noexcept { return m_RightWorkOffsetNo; }
  void SetRightWorkOffsetNo(int v) noexcept { m_RightWorkOffsetNo = v; }

  double GetPartStickOutDistance() const noexcept { return m_PartStickOutDistance; }
  void SetPartStickOutDistance(double v) noexcept { m_PartStickOutDistance = v; }
  const GmXformMat3D& GetViewMatrix() const noexcept { return m_ViewMatrix; }
  void SetViewMatrix(const GmXformMat3D& v) { m_ViewMatrix = v; }
  const GmPoint3D& GetViewRectLL() const noexcept { return m_ViewRectLL; }
  void SetViewRectLL(const GmPoint3D& v) noexcept { m_ViewRectLL = v; }
  const GmPoint3D& GetViewRectUR() const noexcept { return m_ViewRectUR; }
  void SetViewRectUR(const GmPoint3D& v) noexcept { m_ViewRectUR = v; }
  // The model-file name arrays, returned by value.
  Names GetLeftChuckMCOArray() const { return m_LeftChuckMCOArray; }
  void SetLeftChuckMCOArray(Names v) { m_LeftChuckMCOArray = std::move(v); }
  Names GetLeftJawsMCOArray() const { return m_LeftJawsMCOArray; }
  void SetLeftJawsMCOArray(Names v) { m_LeftJawsMCOArray = std::move(v); }
  Names GetLeftStockMCOArray() const { return m_LeftStockMCOArray; }
  void SetLeftStockMCOArray(Names v) { m_LeftStockMCOArray = std::move(v); }
  Names GetRightChuckMCOArray() const { return m_RightChuckMCOArray; }
  void SetRightChuckMCOArray(Names v) { m_RightChuckMCOArray = std::move(v); }
  Names GetRightJawsMCOArray() const { return m_RightJawsMCOArray; }
  void SetRightJawsMCOArray(Names v) { m_RightJawsMCOArray = std::move(v); }
  Names GetRightStockMCOArray() const { return m_RightStockMCOArray; }
  void SetRightStockMCOArray(Names v) { m_RightStockMCOArray = std::move(v); }
  const GmXformMat3D& GetWCSMatrix() const noexcept { return m_WCSMatrix; }
  void SetWCSMatrix(const GmXformMat3D& v) { m_WCSMatrix = v; }
  CString GetLeftWorkpieceMCOFname() const { return m_LeftWorkpieceMCOFname; }
  void SetLeftWorkpieceMCOFname(const CString& v) { m_LeftWorkpieceMCOFname = v; }
  CString GetRightWorkpieceMCOFname() const { return m_RightWorkpieceMCOFname; }
  void SetRightWorkpieceMCOFname(const CString& v) { m_RightWorkpieceMCOFname = v; }
  CString GetMCOFilePath() const { return m_MCOFilePath; }
  void SetMCOFilePath(const CString& v) { m_MCOFilePath = v; }
  ChuckJawStockStickoutTypes GetPartStickOutReference() const noexcept { return m_PartStickOutReference; }
  void SetPartStickOutReference(ChuckJawStockStickoutTypes v) noexcept { m_PartStickOutReference = v; }
  CString GetMachineFileName() const { return m_MachineFileName; }
  void SetMachineFileName(const CString& v) { m_MachineFileName = v; }

  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFJobSetup() = default;  // a list of kind 0

 private:
  CString m_FileDescriptor;
  double m_ChordDevTol = 0.0;
  double m_PartLength = 0.0;
  CString m_MachineGroupName;
  CString m_MachineGroupComment;
  int m_MachineGroupToolProgramNumber = 0;
  CString m_WCSName;
  CString m_WCSComment;
  CString m_MaterialName;
  CString m_MaterialComment;
  int m_InitialSpindleID = 0;
  bool m_DoStockTransfer = false;
  int m_JobSetupType = -1;  // defined by the producer; -1: none
  bool m_DoPullStock = false;
  bool m_IsDstStockManuallyDefined = false;  // the destination spindle's stock
  bool m_IsDstSpindleEnabled = false;
  int m_NumParts = 0;
  double m_StockOD = 0.0;
  double m_ExtraStockOD = 0.0;
  bool m_IsStockIDDefined = false;
  double m_StockID = 0.0;  // the stock's inner diameter
  double m_ExtraStockID = 0.0;
  double m_ExtraStockFace = 0.0;
  double m_ExtraStockBack = 0.0;
  double m_PickOffZPosition = 0.0;
  double m_CutoffWidth = 0.0;
  double m_WcsZOffset = 0.0;
  double m_LeftG28Angle = 0.0;
  bool m_IsLeftGripperChuckJaws = true;
  bool m_IsLeftChuckJawClampingTypeOD = true;
  double m_LeftGripperReferencePointX = 0.0;
  double m_LeftGripperReferencePointY = 0.0;
  double m_LeftChuckJawLength = 0.0;
  double m_LeftChuckJawHeight = 0.0;
  double m_LeftChuckJawThickness = 0.0;
  double m_LeftChuckJawXPosition = 0.0;
  double m_LeftColletID = 0.0;
  double m_LeftColletOD = 0.0;
  double m_LeftChuckThickness = 0.0;
  double m_LeftChuckChannelDepth = 0.0;
  double m_PartStickOutFromLeftChuckFace = 0.0;
  double m_PartStickOutFromLeftJawFace = 0.0;
  double m_LeftToolPlaneOriginZ = 0.0;
  int m_LeftWorkOffsetNo = 0;
  double m_RightG28Angle = 0.0;
  bool m_IsRightGripperChuckJaws = true;
  bool m_IsRightChuckJawClampingTypeOD = true;
  double m_RightGripperReferencePointX = 0.0;
  double m_RightGripperReferencePointY = 0.0;
  double m_RightChuckJawLength = 0.0;
  double m_RightChuckJawHeight = 0.0;
  double m_RightChuckJawThickness = 0.0;
  double m_RightChuckJawXPosition = 0.0;
  double m_RightColletID = 0.0;
  double m_RightColletOD = 0.0;
  double m_RightChuckThickness = 0.0;
  double m_RightChuckChannelDepth = 0.0;
  double m_PartStickOutFromRightChuckFace = 0.0;
  double m_PartStickOutFromRightJawFace = 0.0;
  double m_RightToolPlaneOriginZ = 0.0;
  int m_RightWorkOffsetNo = 0;
  // Archived here, before the matrices, although m_PartStickOutReference belongs with
  // it: the archive order is kept.
  double m_PartStickOutDistance = 0.0;
  GmXformMat3D m_ViewMatrix;
  GmPoint3D m_ViewRectLL;  // lower left of the view rectangle
  GmPoint3D m_ViewRectUR;  // upper right
  Names m_LeftChuckMCOArray;
  Names m_LeftJawsMCOArray;
  Names m_LeftStockMCOArray;
  Names m_RightChuckMCOArray;
  Names m_RightJawsMCOArray;
  Names m_RightStockMCOArray;
  GmXformMat3D m_WCSMatrix;
  CString m_LeftWorkpieceMCOFname;
  CString m_RightWorkpieceMCOFname;
  CString m_MCOFilePath;  // the folder of the model files
  ChuckJawStockStickoutTypes m_PartStickOutReference = kStickOutFromChuckFace;
  CString m_MachineFileName;  // since version 1
};

}  // namespace IOF

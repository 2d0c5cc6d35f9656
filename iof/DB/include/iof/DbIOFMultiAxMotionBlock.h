// DbIOFMultiAxMotionBlock: the motion block of a multi-axis move. Besides the end point
// in machine axes it keeps the end without tool length compensation, the end for
// tool-tip control (G43.4), the end with plain tool length compensation (G43), and the
// input tip position with the tool axis. Type IOFMULTIAXMOTIONBLOCK (0x5143).
//
// Archive (version 0), after DbIOFMotionBlock: m_NoCompEndPt, m_G434EndPt, m_G43EndPt,
// m_InputPt (points), m_ToolOrientVec (vector).
//
// Comparison deliberately skips DbIOFMotionBlock: the inherited m_EndPt is never compared.
#pragma once

#include <iof/DbIOFMotionBlock.h>
#include <iof/GmPoint3D.h>
#include <iof/GmVector3D.h>

namespace IOF {

class DbIOFMultiAxMotionBlock : public DbIOFMotionBlock {
  IOF_RECORD(DbIOFMultiAxMotionBlock, DbIOFMotionBlock)

 public:
  static constexpr unsigned kVersion = 0;

  // Each point and the vector can be changed in place through its getter.
  GmPoint3D& GetNoCompEndPt() noexcept { return m_NoCompEndPt; }
  const GmPoint3D& GetNoCompEndPt() const noexcept { return m_NoCompEndPt; }
  void SetNoCompEndPt(const GmPoint3D& p) noexcept { m_NoCompEndPt = p; }
  GmPoint3D& GetG434EndPt() noexcept { return m_G434EndPt; }
  const GmPoint3D& GetG434EndPt() const noexcept { return m_G434EndPt; }
  void SetG434EndPt(const GmPoint3D& p) noexcept { m_G434EndPt = p; }
  GmPoint3D& GetG43EndPt() noexcept { return m_G43EndPt; }
  const GmPoint3D& GetG43EndPt() const noexcept { return m_G43EndPt; }
  void SetG43EndPt(const GmPoint3D& p) noexcept { m_G43EndPt = p; }
  GmPoint3D& GetInputPt() noexcept { return m_InputPt; }
  const GmPoint3D& GetInputPt() const noexcept { return m_InputPt; }
  void SetInputPt(const GmPoint3D& p) noexcept { m_InputPt = p; }
  GmVector3D& GetToolOrientVec() noexcept { return m_ToolOrientVec; }
  const GmVector3D& GetToolOrientVec() const noexcept { return m_ToolOrientVec; }
  void SetToolOrientVec(const GmVector3D& v) { m_ToolOrientVec = v; }

  // "DbIOFMultiAxMotionBlock End: %s" with the end point's text, then ", No Comp End:
  // (%f,%f,%f), G43.4 End: (%f,%f,%f), G43 End: (%f,%f,%f), Input XYZ IJK: (%f,%f,%f
  // %f,%f,%f)" with m_NoCompEndPt, m_G434EndPt, m_G43EndPt, m_InputPt, m_ToolOrientVec.
  CString ToIOFString() const override;
  // The record base (DbIOFMotionBlock skipped, so m_EndPt is never compared: intended),
  // then m_NoCompEndPt, m_G434EndPt, m_G43EndPt, m_InputPt, m_ToolOrientVec.
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFMultiAxMotionBlock() = default;

 private:
  GmPoint3D m_NoCompEndPt;     // end without tool length compensation
  GmPoint3D m_G434EndPt;       // end for tool-tip control (G43.4)
  GmPoint3D m_G43EndPt;        // end with plain tool length compensation (G43)
  GmPoint3D m_InputPt;         // input tool-tip position
  GmVector3D m_ToolOrientVec;  // input tool axis
};

}  // namespace IOF

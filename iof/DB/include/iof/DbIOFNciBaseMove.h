// DbIOFNciBaseMove: what every tool motion has (feed rate, feed or rapid, cutter
// compensation, position code, position within the contour, incremental output). Type
// IOFNCIBASEMOVE (0x5103), an abstract level.
//
// Archive (version 1), after DbIOFNciBase: m_FeedRate (8), m_bIsFeedMove (1),
// m_CutterComp, m_PositionCode, m_ContourPosition (4 each), then, since version 1,
// m_NcIncremental (1).
//
// Comparison deliberately skips DbIOFNciBase: for every move record m_GCode, m_OwnerOpId
// and m_Time are never compared.
#pragma once

#include <iof/DbIOFNciBase.h>
#include <iof/IofEnums.h>

namespace IOF {

class DbIOFNciBaseMove : public DbIOFNciBase {
  IOF_ABSTRACT_RECORD(DbIOFNciBaseMove, DbIOFNciBase)

 public:
  static constexpr unsigned kVersion = 1;

  double GetFeedRate() const noexcept { return m_FeedRate; }
  void SetFeedRate(double feed) noexcept { m_FeedRate = feed; }
  bool GetIsFeedMove() const noexcept { return m_bIsFeedMove; }
  void SetIsFeedMove(bool feed) noexcept { m_bIsFeedMove = feed; }
  int GetCutterComp() const noexcept { return m_CutterComp; }
  void SetCutterComp(int comp) noexcept { m_CutterComp = comp; }
  int GetPositionCode() const noexcept { return m_PositionCode; }
  void SetPositionCode(int code) noexcept { m_PositionCode = code; }
  ContourPositionState GetContourPosition() const noexcept { return m_ContourPosition; }
  void SetContourPosition(ContourPositionState state) noexcept { m_ContourPosition = state; }
  bool GetNcIncremental() const noexcept { return m_NcIncremental; }
  void SetNcIncremental(bool incremental) noexcept { m_NcIncremental = incremental; }
  // "ContourPosition.Before" and so on; empty for a value outside the enumeration.
  CString GetContourPositionString() const;

  // "IOF NCI Base Motion Object"
  CString ToIOFString() const override;
  // The record base (DbIOFNciBase skipped: intended), then m_FeedRate, m_bIsFeedMove,
  // m_CutterComp, m_PositionCode, m_ContourPosition, m_NcIncremental.
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciBaseMove() = default;

 private:
  // Declared for compact records (files hold millions of moves); the archive order is
  // the one in the field list.
  double m_FeedRate = 0.0;
  int m_CutterComp = 0;    // cutter compensation code, stored as given
  int m_PositionCode = 0;  // position code, stored as given
  ContourPositionState m_ContourPosition = ContourPositionState::Before;
  bool m_bIsFeedMove = true;     // feed (true) or rapid (false)
  bool m_NcIncremental = false;  // output incrementally; since version 1
};

}  // namespace IOF

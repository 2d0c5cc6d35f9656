// DbIOFReferencePoint: a named machine position (home, tool change, park, reference
// return) with its axis coordinates. Type IOFREFERENCEPOINT (0x5175). Turret operations
// (DbIOFNciMOpTurret), retracts and streams refer to reference points by id.
//
//   auto home = IOF::DbIOFReferencePoint::Create();
//   home->SetIOFName(L"Home");
//   home->SetPositionType(IOF::DbIOFReferencePoint::kHome);
//   IOF::UtAxisMotionMap at;
//   at.AddMotion(IOF::X, IOF::Coordinate, 200.0);
//   home->SetCoordinates(at);
//
// Archive (version 0), after the record base, deliberately not in declaration order:
// m_Coordinates (the map's own serialisation), m_ActiveTurret, m_ActiveSpindle,
// m_StreamID (4 each), m_Guid, m_Comment, m_Source, m_PosType (4 each), m_NCOutput.
// A stored version above 0 is refused (the version error, cause 2).
//
// Comparison: the record base (the name), then m_ActiveTurret, m_ActiveSpindle,
// m_StreamID, m_Guid, m_Comment, m_Coordinates, m_Source, m_PosType, m_NCOutput.
//
// Dump: "RefPoint: Name: %s, Comment %s, GUID: %s, StreamId:%d, Source:%s, PosType:%s,
// Motion:%s, NC Output: %s" with the name, comment, GUID, stream id, the source and
// position texts, the coordinates' text and the NC output.
#pragma once

#include <iof/DbIOFBase.h>
#include <iof/UtAxisMotionMap.h>

#include <utility>

namespace IOF {

class DbIOFReferencePoint : public DbIOFBase {
  IOF_RECORD(DbIOFReferencePoint, DbIOFBase)

 public:
  static constexpr unsigned kVersion = 0;

  // Where the point comes from (m_Source).
  enum SourceType : int { kMachine = 0, kJobSetup = 1, kAxisComboOn = 2, kAxisComboOff = 3 };
  // What the point is (m_PosType); 6 is unused.
  enum PositionType : int {
    kHome = 0,
    kToolChange = 1,
    kParkLeft = 2,
    kParkRight = 3,
    kParkMisc = 4,
    kReference = 5,
    kAxisComboRefPt = 7,
    kAxisComboHomePos = 8,
  };
  // "Machine", "JobSetup", "AxisComboOn", "AxisComboOff"; "None" for any other value.
  static const wchar_t* SourceTypeText(int source) noexcept;
  // "HOME", "TOOLCHANGE", "PARK_LEFT", "PARK_RIGHT", "PARK_MISC", "REFERENCE",
  // "AXISCOMBO_REFPT" (7), "AXISCOMBO_HOMEPOS" (8); "None" for 6 and any other value.
  static const wchar_t* PositionTypeText(int position) noexcept;

  int GetActiveTurret() const noexcept { return m_ActiveTurret; }
  void SetActiveTurret(int turret) noexcept { m_ActiveTurret = turret; }
  int GetActiveSpindle() const noexcept { return m_ActiveSpindle; }
  void SetActiveSpindle(int spindle) noexcept { m_ActiveSpindle = spindle; }
  int GetStreamID() const noexcept { return m_StreamID; }
  void SetStreamID(int stream) noexcept { m_StreamID = stream; }
  CString GetGuid() const { return m_Guid; }
  void SetGuid(CString guid) { m_Guid = std::move(guid); }
  CString GetComment() const { return m_Comment; }
  void SetComment(CString comment) { m_Comment = std::move(comment); }
  int GetSourceType() const noexcept { return m_Source; }
  void SetSourceType(int source) noexcept { m_Source = source; }
  int GetPositionType() const noexcept { return m_PosType; }
  void SetPositionType(int position) noexcept { m_PosType = position; }
  const UtAxisMotionMap& GetCoordinates() const noexcept { return m_Coordinates; }
  void SetCoordinates(const UtAxisMotionMap& coordinates) { m_Coordinates = coordinates; }
  CString GetNCOutput() const { return m_NCOutput; }
  void SetNCOutput(CString output) { m_NCOutput = std::move(output); }

  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFReferencePoint() = default;

 private:
  // Declaration order; the archive order is given above.
  int m_ActiveTurret = -1;
  int m_ActiveSpindle = -1;
  int m_StreamID = -1;
  CString m_Guid;
  CString m_Comment;
  int m_Source = kMachine;  // SourceType
  int m_PosType = kHome;    // PositionType
  UtAxisMotionMap m_Coordinates;
  CString m_NCOutput;  // text the post-processor outputs at the point
};

}  // namespace IOF

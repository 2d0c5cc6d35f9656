// DbIOFNciMOpSteadyRest: a steady rest clamping, unclamping, moving or retracting, with
// its home and final positions and the steady-rest components linked to it (each by its
// component entity id and sequence number). Type IOFNCIMOPSTEADYREST (0x5209).
//
//   auto rest = IOF::DbIOFNciMOpSteadyRest::Create();
//   rest->SetMotionType(IOF::DbIOFNciMOpSteadyRest::kClamp);
//   rest->SetLinkedSteadyRestComponentEntityIDList({12, 14});
//   rest->SetLinkedSteadyRestSequenceNumberList({3, 4});  // one per component id
//
// Archive (version 5), after DbIOFNciMiscOp:
//   1     m_MotionType (4)
//   2-8   m_HomeXPosition, m_HomeZPosition, m_FinalXPosition, m_FinalZPosition,
//         m_MoveDistanceX, m_MoveDistanceZ, m_OriginShift (8 each)
//   9     m_IsRapidMove (1)
//   10    m_FeedRate (8)
//   11    m_DwellTime (8)                                          since version 1
//   12    m_ComponentEntityID (4)                                  since version 2
//   13    m_SequenceNum (4)                                        since version 3
//   14    the count N of the first linked list (4)                 since version 4
//   15    the N entries of the component id list (4 each)          since version 4
//   16    N sequence numbers (4 each), with no count of their own  since version 4
//   17    m_WorkOffsetNumber (4)                                   since version 5
// Each older version lacks the fields added after it: version 0 holds fields 1 to 10.
// One field list reads all six layouts and stands for the readers DeSerializeV0 to
// DeSerializeV5; fields a version lacks keep their defaults.
// Intended: the second linked list is written without a count of its own, so both
// lists must have the same length. Storing lists of different lengths writes the
// sequence numbers cut to the first list's length, or padded with 0, so the archive
// stays readable; loading gives two lists of length N.
//
// Comparison: the DbIOFNciMiscOp comparison, then m_MotionType, the seven positions in
// archive order, m_IsRapidMove, m_FeedRate, m_DwellTime, m_ComponentEntityID,
// m_SequenceNum, m_WorkOffsetNumber, then the component id list and the sequence number
// list, each equal when of the same length and contents; a difference in a list
// appends "Difference Detected: <list name>\n".
//
// Dump: "SteadyRestOp Motion:%s, WorkOfs:%d, IsRapid:%s, FeedRate:%g, HomeXPos:%g,
// HomeZPos:%g, FinalXPos:%g, FinalZPos:%g, MoveDistX:%g, MoveDistZ:%g, OriginShift:%g,
// Dwell:%g, ComponentID:%ld, SequenceNumber:%d, Linked:%s" (IsRapid "true"/"false").
// "Linked" shows the linked components as "[id/sequence, ...]", for example
// "[12/3, 14/4]", and "[]" when there are none; a list longer than the other shows "?"
// for the missing partner.
#pragma once

#include <iof/DbIOFNciMiscOp.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace IOF {

class DbIOFNciMOpSteadyRest : public DbIOFNciMiscOp {
  IOF_RECORD(DbIOFNciMOpSteadyRest, DbIOFNciMiscOp)

 public:
  static constexpr unsigned kVersion = 5;

  // m_MotionType.
  enum SteadyRestMotion : int { kClamp = 0, kUnclamp = 1, kLinear = 2, kRetract = 3 };
  // "Clamp", "Unclamp", "Linear", "Retract"; empty for any other value.
  static const wchar_t* MotionTypeText(int motion) noexcept;

  int GetMotionType() const noexcept { return m_MotionType; }
  void SetMotionType(int motion) noexcept { m_MotionType = motion; }
  double GetHomeXPosition() const noexcept { return m_HomeXPosition; }
  void SetHomeXPosition(double x) noexcept { m_HomeXPosition = x; }
  double GetHomeZPosition() const noexcept { return m_HomeZPosition; }
  void SetHomeZPosition(double z) noexcept { m_HomeZPosition = z; }
  double GetFinalXPosition() const noexcept { return m_FinalXPosition; }
  void SetFinalXPosition(double x) noexcept { m_FinalXPosition = x; }
  double GetFinalZPosition() const noexcept { return m_FinalZPosition; }
  void SetFinalZPosition(double z) noexcept { m_FinalZPosition = z; }
  double GetMoveDistanceX() const noexcept { return m_MoveDistanceX; }
  void SetMoveDistanceX(double distance) noexcept { m_MoveDistanceX = distance; }
  double GetMoveDistanceZ() const noexcept { return m_MoveDistanceZ; }
  void SetMoveDistanceZ(double distance) noexcept { m_MoveDistanceZ = distance; }
  double GetOriginShift() const noexcept { return m_OriginShift; }
  void SetOriginShift(double shift) noexcept { m_OriginShift = shift; }
  bool GetIsRapidMove() const noexcept { return m_IsRapidMove; }
  void SetIsRapidMove(bool rapid) noexcept { m_IsRapidMove = rapid; }
  double GetFeedRate() const noexcept { return m_FeedRate; }
  void SetFeedRate(double rate) noexcept { m_FeedRate = rate; }
  double GetDwellTime() const noexcept { return m_DwellTime; }
  void SetDwellTime(double seconds) noexcept { m_DwellTime = seconds; }
  int GetComponentEntityID() const noexcept { return m_ComponentEntityID; }
  void SetComponentEntityID(int id) noexcept { m_ComponentEntityID = id; }
  int GetSequenceNum() const noexcept { return m_SequenceNum; }
  void SetSequenceNum(int number) noexcept { m_SequenceNum = number; }
  const std::vector<std::int32_t>& GetLinkedSteadyRestComponentEntityIDList() const noexcept {
    return m_Linked.m_LinkedSteadyRestComponentEntityIDList;
  }
  void SetLinkedSteadyRestComponentEntityIDList(std::vector<std::int32_t> ids) {
    m_Linked.m_LinkedSteadyRestComponentEntityIDList = std::move(ids);
  }
  const std::vector<std::int32_t>& GetLinkedSteadyRestSequenceNumberList() const noexcept {
    return m_Linked.m_LinkedSteadyRestSequenceNumberList;
  }
  void SetLinkedSteadyRestSequenceNumberList(std::vector<std::int32_t> numbers) {
    m_Linked.m_LinkedSteadyRestSequenceNumberList = std::move(numbers);
  }
  int GetWorkOffsetNumber() const noexcept { return m_WorkOffsetNumber; }
  void SetWorkOffsetNumber(int number) noexcept { m_WorkOffsetNumber = number; }

  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciMOpSteadyRest() = default;

 private:
  // The two linked lists, archived as one unit: the count of the first, its entries,
  // then as many entries of the second.
  struct LinkedLists {
    std::vector<std::int32_t> m_LinkedSteadyRestComponentEntityIDList;
    std::vector<std::int32_t> m_LinkedSteadyRestSequenceNumberList;
    void Serialize(Quarp::UtArchive& ar);
    void VisitFields(FieldVisitor& visitor) const;
  };

  int m_MotionType = kLinear;  // SteadyRestMotion
  double m_HomeXPosition = 0.0;
  double m_HomeZPosition = 0.0;
  double m_FinalXPosition = 0.0;
  double m_FinalZPosition = 0.0;
  double m_MoveDistanceX = 0.0;
  double m_MoveDistanceZ = 0.0;
  double m_OriginShift = 0.0;
  bool m_IsRapidMove = false;
  double m_FeedRate = 0.0;
  double m_DwellTime = 0.0;     // seconds; since version 1
  int m_ComponentEntityID = 0;  // the steady-rest component; since version 2
  int m_SequenceNum = 0;        // since version 3
  LinkedLists m_Linked;         // since version 4
  int m_WorkOffsetNumber = 0;   // since version 5
};

}  // namespace IOF

// The reference point and the machine operations: one layout table per class pins its
// archive, the version errors, the round trips, the dump and the comparison order (the
// bar feed's feed rate never compared, the steady rest's six layouts); then the fresh
// dumps, the texts of every enumeration with their fallbacks, the steady rest's shared
// list count, and the turret's dump resolving its reference point in a manager.
#include "CompareOrderSupport.h"
#include "LayoutTable.h"

#include <iof/DbIOFNciMOpBarFeed.h>
#include <iof/DbIOFNciMOpBarFeeder.h>
#include <iof/DbIOFNciMOpBarPuller.h>
#include <iof/DbIOFNciMOpSpindleGrip.h>
#include <iof/DbIOFNciMOpSpindleMove.h>
#include <iof/DbIOFNciMOpSpindleSync.h>
#include <iof/DbIOFNciMOpSteadyRest.h>
#include <iof/DbIOFNciMOpTailStock.h>
#include <iof/DbIOFNciMOpTurret.h>
#include <iof/DbIOFReferencePoint.h>

#include <gtest/gtest.h>

using namespace IOF;
using namespace TestSupport;

namespace {

using RefPoint = DbIOFReferencePoint;
using BarFeed = DbIOFNciMOpBarFeed;
using Feeder = DbIOFNciMOpBarFeeder;
using Puller = DbIOFNciMOpBarPuller;
using Grip = DbIOFNciMOpSpindleGrip;
using Move = DbIOFNciMOpSpindleMove;
using Sync = DbIOFNciMOpSpindleSync;
using Tail = DbIOFNciMOpTailStock;
using Turret = DbIOFNciMOpTurret;
using Rest = DbIOFNciMOpSteadyRest;

std::string I32(std::int32_t v) { return Le(v); }

// A machine operation's versions (its own, DbIOFNciMiscOp's, DbIOFNciBase's), its fresh
// bases and m_StreamId.
std::string Head(unsigned version, int streamId = 0) {
  return Le<std::uint8_t>(version) + "00 00" + kRecordBase + kFreshNciBase + I32(streamId);
}
constexpr std::size_t kBasesSize = 3 + kRecordBaseSize + kNciBaseSize;

// ExpectLayout; besides, a newer DbIOFNciMiscOp version is refused before m_StreamId.
template <class R>
void ExpectMiscOp(const wchar_t* dump, const std::vector<Row>& rows, const std::vector<std::size_t>& order = {}) {
  ExpectLayout<R>({Head(0), dump, rows, order});
  ExpectNewerVersionRefused(*R::Create(), 1, kBasesSize);
}

TEST(MiscOps, Layouts) {
  ExpectMiscOp<BarFeed>(
      L"MiscOp Bar Feed Spindle:Oops, MotionType:Oops, FinalZPos:-5.000000, ZOffset:1.500000, "
      L"ToolXPos:2.000000, FeedRate:9.000000, IsRapidMove:False",
      {Int("m_Spindle", 7, 2), Int("m_MotionType", 4), Real("m_FinalZPos", -5), Real("m_ZOffset", 1.5),
       Real("m_ToolXPos", 2), Real("m_FeedRate", 9, 0, 0, kNotCompared), Bool("m_IsRapidMove", false)});
  ExpectMiscOp<Feeder>(L"MiscOp Bar Feeder IsOn:True", {Bool("m_IsOn")});
  ExpectMiscOp<Puller>(L"MiscOp Bar Puller IsOn:True", {Bool("m_IsOn")});
  // Intended: the grip's dump carries the tail stock's label.
  ExpectMiscOp<Grip>(
      L"TailStock MOp Type:LH_HEAD, IsClamping:true, IsEjecting:true, Dwell:0.5, IsTransferStock:1, Offset:-2",
      {Int("m_Spindle", 0, 2), Bool("m_IsClamping"), Bool("m_IsEjecting"), Real("m_Dwell", 0.5),
       Bool("m_IsTransferStock"), Real("m_Offset", -2)});
  ExpectMiscOp<Move>(
      L"SpindleMove MOp Spindle:RH_HEAD, Motion:Rotary, RotDir:Shortest, IsRapidMove:true, FeedRate:1, "
      L"\t\t\t\t\tLinearZPos:2, RotaryFinalAngle:3, StockClearance:4, GripLength:5, MoveDistance:6",
      {Int("m_Spindle", 1, 2), Int("m_SpindleMotionType", 1), Int("m_SpindleRotaryDirType", 2), Bool("m_IsRapidMove"),
       Real("m_FeedRate", 1), Real("m_LinearZPos", 2), Real("m_RotaryFinalAngle", 3), Real("m_StockClearance", 4),
       Real("m_GripLength", 5), Real("m_MoveDistance", 6)});
  ExpectMiscOp<Sync>(
      L"SyncType:sync, IsRapidMove:false, LeftAngle:1, RightAngle:2, RotaryFeedRate:3, SpindleSpeedRpm:4, "
      L"IsRotaryCCW:false, Master:Left, UseRotOpt:1, UseSpindleStartOpt:1",
      {Int("m_SyncType", 1, 2), Bool("m_IsRapidMove", false), Real("m_LeftAngle", 1), Real("m_RightAngle", 2),
       Real("m_RotaryFeedRate", 3), Real("m_SpindleSpeedRpm", 4), Bool("m_IsRotaryCCW", false),
       Int("m_MasterSpindle", 0, 2), Bool("m_UseRotaryPostOpt"), Bool("m_UseSpindleStartOpt")},
      {0, 7});
  ExpectMiscOp<Tail>(L"TailStock Action Type:Linear Position, Position:-30, Dist:12.5, Rapid:false, FRate:100, t=0s",
                     {Int("m_ActionType", 7, 2), Real("m_Position", -30), Bool("m_IsRapid", false),
                      Real("m_FeedRate", 100), Real("m_MoveDistance", 12.5)});
  // The turret: the axis motions first (version, count, then axis, type, value).
  ExpectMiscOp<Turret>(
      L"Turret MOp DoTC:true, Station:4, Motion: UtAxisMotionMap(1): [Z] (OffsetFromHomePosition, "
      L"-2.5), , MovStrategy: XFIRST, RefPos: NoRefPos, Ref Point Guid: ",
      {Named("m_AxisMotion", "00" + I32(1) + I32(Z) + I32(OffsetFromHomePosition) + Le(-2.5), "00" + I32(0),
             "UtAxisMotionMap(1): [Z] (OffsetFromHomePosition, -2.5), ", "UtAxisMotionMap(0): "),
       Bool("m_OutputToolCall"), Int("m_Station", 4, 1), Id("m_RefPosId", 7), Int("m_MoveBreakStrategy", 0, 3)},
      {4, 2, 0, 3, 1});
  // The steady rest: one field added in each version, version 4 the two linked lists with
  // their one count (2: two component ids, then two sequence numbers).
  ExpectMiscOp<Rest>(
      L"SteadyRestOp Motion:Clamp, WorkOfs:54, IsRapid:true, FeedRate:8, HomeXPos:1, HomeZPos:2, FinalXPos:3, "
      L"FinalZPos:4, MoveDistX:5, MoveDistZ:6, OriginShift:7, Dwell:9, ComponentID:-10, SequenceNumber:11, "
      L"Linked:[12/3, 14/4]",
      {Int("m_MotionType", 0, 2),
       Real("m_HomeXPosition", 1),
       Real("m_HomeZPosition", 2),
       Real("m_FinalXPosition", 3),
       Real("m_FinalZPosition", 4),
       Real("m_MoveDistanceX", 5),
       Real("m_MoveDistanceZ", 6),
       Real("m_OriginShift", 7),
       Bool("m_IsRapidMove"),
       Real("m_FeedRate", 8),
       Real("m_DwellTime", 9, 0, 1),
       Int("m_ComponentEntityID", -10, 0, 2),
       Int("m_SequenceNum", 11, 0, 3),
       {I32(2) + I32(12) + I32(14) + I32(3) + I32(4), I32(0), L"m_LinkedSteadyRestComponentEntityIDList", 4, ~0u,
        "m_LinkedSteadyRests=[{m_LinkedSteadyRestComponentEntityIDList=[{value=12},{value=14}],"
        "m_LinkedSteadyRestSequenceNumberList=[{value=3},{value=4}]}]"},
       Int("m_WorkOffsetNumber", 54, 0, 5)},
      {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 14});
  // The reference point: the coordinates first in the archive, the turret, spindle and
  // stream -1 by default.
  ExpectLayout<RefPoint>(
      {"00" + kRecordBase,
       L"RefPoint: Name: , Comment C, GUID: G, StreamId:3, Source:JobSetup, PosType:REFERENCE, "
       L"Motion:UtAxisMotionMap(1): [X] (Coordinate, 1), , NC Output: N",
       {Named("m_Coordinates", "00" + I32(1) + I32(X) + I32(Coordinate) + kOne, "00" + I32(0),
              "UtAxisMotionMap(1): [X] (Coordinate, 1), ", "UtAxisMotionMap(0): "),
        Int("m_ActiveTurret", 1, -1), Int("m_ActiveSpindle", 2, -1), Int("m_StreamID", 3, -1), Text("m_Guid", "G"),
        Text("m_Comment", "C"), Int("m_Source", 1), Int("m_PosType", 5), Text("m_NCOutput", "N")},
       {1, 2, 3, 4, 5, 0}});
}

TEST(MiscOps, BasesComparedFirstAndFreshDumps) {
  // The NCI base, m_StreamId, then the class's own fields; reals within 1e-6 are equal.
  using B = BarFeed;
  ExpectReportOrder<B>(
      {{[](B& r, bool on) { r.SetGCode(on ? 3 : 0); }, L"Difference Detected: m_GCode - 0 vs 3\n"},
       {[](B& r, bool on) { r.SetStreamId(on ? 2 : 0); }, L"Difference Detected: m_StreamId - 0 vs 2\n"},
       {[](B& r, bool on) { r.SetSpindle(on ? 0 : 2); }, L"Difference Detected: m_Spindle - 2 vs 0\n"},
       {[](B& r, bool on) { r.SetFinalZPos(on ? -5 : 5e-7); }, L"Difference Detected: m_FinalZPos - 0 vs -5\n"}});
  auto feed = B::Create();
  ASSERT_TRUE(LoadAll(*feed, Hex(Head(0, 2) + I32(2) + I32(0) + kZero + kZero + kZero + kZero + "01")));
  EXPECT_EQ(feed->GetStreamId(), 2);
  // A new bar feed holds spindle 2 and prints INVALID.
  EXPECT_EQ(feed->ToIOFString(),
            L"MiscOp Bar Feed Spindle:INVALID, MotionType:PushNoTool, FinalZPos:0.000000, "
            L"ZOffset:0.000000, ToolXPos:0.000000, FeedRate:0.000000, IsRapidMove:True");
  EXPECT_EQ(Feeder::Create()->ToIOFString(), L"MiscOp Bar Feeder IsOn:False");
  EXPECT_EQ(Rest::Create()->ToIOFString(),
            L"SteadyRestOp Motion:Linear, WorkOfs:0, IsRapid:false, FeedRate:0, HomeXPos:0, HomeZPos:0, "
            L"FinalXPos:0, FinalZPos:0, MoveDistX:0, MoveDistZ:0, OriginShift:0, Dwell:0, ComponentID:0, "
            L"SequenceNumber:0, Linked:[]");
  auto tail = Tail::Create();
  tail->SetTime(2.5);
  EXPECT_TRUE(tail->ToIOFString().ToUtf8().ends_with(", t=2.5s"));
  EXPECT_EQ(Feeder::Create()->DbIOFNciMiscOp::ToIOFString(), L"IOF NCI Base Misc Operation Object");
}

TEST(MiscOps, EnumerationTexts) {
  // Each text function from -1 on: the fallback, the table, the fallback again.
  const std::vector<std::pair<const wchar_t* (*)(int), std::vector<const wchar_t*>>> tables = {
      {DbIOFNciMiscOp::SpindleText, {L"Oops", L"LH_HEAD", L"RH_HEAD", L"INVALID", L"Oops"}},
      {BarFeed::PushMotionText, {L"Oops", L"PushNoTool", L"PushTool", L"PushToolStop", L"PushWithTool", L"Oops"}},
      {Move::SpindleMotionText, {L"Oops", L"Linear", L"Rotary", L"Home", L"ClearStock", L"GripLen", L"Oops"}},
      {Move::RotaryDirectionText, {L"Oops", L"CW", L"CCW", L"Shortest", L"Oops"}},
      {Sync::SyncTypeText, {L"Oops", L"Align", L"sync", L"Cancel", L"Oops"}},
      {Sync::MasterSpindleText, {L"Oops", L"Left", L"Right", L"Invalid", L"Oops"}},
      {Tail::ActionTypeText,
       {L"Oops", L"Load Center", L"Unload Center", L"Tailstock Retract", L"Tailstock Advance", L"Quill Retract",
        L"Quill Advance", L"Stock clearance", L"Linear Position", L"Oops"}},
      {Turret::MoveBreakStrategyText, {L"", L"XFIRST", L"YFIRST", L"ZFIRST", L"DIRECT", L"REFRETURN", L""}},
      {Rest::MotionTypeText, {L"", L"Clamp", L"Unclamp", L"Linear", L"Retract", L""}},
      {RefPoint::SourceTypeText, {L"None", L"Machine", L"JobSetup", L"AxisComboOn", L"AxisComboOff", L"None"}},
      // 6 has no text of its own.
      {RefPoint::PositionTypeText,
       {L"None", L"HOME", L"TOOLCHANGE", L"PARK_LEFT", L"PARK_RIGHT", L"PARK_MISC", L"REFERENCE", L"None",
        L"AXISCOMBO_REFPT", L"AXISCOMBO_HOMEPOS", L"None"}},
  };
  for (const auto& [text, expected] : tables) {
    for (int i = -1; i + 1 < static_cast<int>(expected.size()); ++i) EXPECT_STREQ(text(i), expected[i + 1]) << i;
  }
}

TEST(DbIOFNciMOpSteadyRest, ListsOfDifferentLengthsShareTheFirstCount) {
  // The sequence numbers are stored padded with 0 or cut to the component ids' count.
  const std::string z = kZero;
  const std::string before = Head(5) + I32(2) + z + z + z + z + z + z + z + "00" + z + z + I32(0) + I32(0);
  auto rest = Rest::Create();
  rest->SetLinkedSteadyRestComponentEntityIDList({1, 2, 3});
  rest->SetLinkedSteadyRestSequenceNumberList({9});
  EXPECT_TRUE(rest->ToIOFString().ToUtf8().ends_with("Linked:[1/9, 2/?, 3/?]"));
  ExpectStores(*rest, before + I32(3) + I32(1) + I32(2) + I32(3) + I32(9) + I32(0) + I32(0) + I32(0));
  rest->SetLinkedSteadyRestComponentEntityIDList({1});
  rest->SetLinkedSteadyRestSequenceNumberList({7, 8});
  EXPECT_TRUE(rest->ToIOFString().ToUtf8().ends_with("Linked:[1/7, ?/8]"));
  ExpectStores(*rest, before + I32(1) + I32(1) + I32(7) + I32(0));
  // A difference in the sequence numbers alone has its own line.
  auto other = Rest::Create();
  other->SetLinkedSteadyRestComponentEntityIDList({1});
  CString report;
  EXPECT_FALSE(other->Compare(rest, report));
  EXPECT_EQ(report, L"Difference Detected: m_LinkedSteadyRestSequenceNumberList\n");
  // A count below 1 loads two empty lists; a count whose two lists the bytes cannot hold
  // is refused.
  ASSERT_TRUE(LoadAll(*rest, Hex(before + I32(-1) + I32(0))));
  EXPECT_TRUE(rest->GetLinkedSteadyRestComponentEntityIDList().empty());
  EXPECT_TRUE(rest->GetLinkedSteadyRestSequenceNumberList().empty());
  EXPECT_EQ(LoadCause(*rest, Hex(before + I32(2) + I32(5) + I32(0))), Quarp::UtArchiveException::tooLarge);
}

TEST(DbIOFNciMOpTurret, DumpResolvesTheReferencePointInItsManager) {
  Quarp::DbMgr mgr;
  auto point = RefPoint::Create();
  point->SetIOFName(L"Home");
  point->SetStreamID(2);
  point->SetGuid(L"{G-1}");
  const Quarp::DbId pointId = mgr.Add(point);
  auto feeder = Feeder::Create();
  const Quarp::DbId feederId = mgr.Add(feeder);
  auto turret = Turret::Create();
  turret->SetRefPosId(pointId);
  const CString none =
      L"Turret MOp DoTC:false, Station:1, Motion: UtAxisMotionMap(0): , MovStrategy: DIRECT, "
      L"RefPos: NoRefPos, Ref Point Guid: ";
  EXPECT_EQ(turret->ToIOFString(), none);  // a turret in no manager resolves nothing
  mgr.Add(turret);
  EXPECT_EQ(turret->ToIOFString(),
            L"Turret MOp DoTC:false, Station:1, Motion: UtAxisMotionMap(0): , MovStrategy: "
            L"DIRECT, RefPos: Name:Home, StreamId:2, Ref Point Guid: {G-1}");
  for (const Quarp::DbId other : {feederId, Quarp::DbId(99), Quarp::DbId()}) {  // no reference point there
    turret->SetRefPosId(other);
    EXPECT_EQ(turret->ToIOFString(), none);
  }
}

}  // namespace

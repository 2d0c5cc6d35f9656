// The reference point and the machine operations: one table of archives and dumps for
// every class (fresh and loaded), the texts of every enumeration with their fallbacks,
// the comparison orders (the bar feed's feed rate never compared), the steady rest's six
// layouts and its shared list count, and the turret's dump resolving its reference
// point in a manager.
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
std::string F64(double v) { return Le(v); }

// A machine operation's versions (its own, DbIOFNciMiscOp's, DbIOFNciBase's) and fresh bases.
std::string Head(unsigned version) { return Le<std::uint8_t>(version) + "00 00" + kRecordBase + kFreshNciBase; }
constexpr std::size_t kHeadSize = 3 + kRecordBaseSize + kNciBaseSize;

// One coordinate: X = 1.
const UtAxisMotionMap kXAt1 = [] {
  UtAxisMotionMap map;
  map.AddMotion(X, Coordinate, 1.0);
  return map;
}();

// A fresh R stores `own` after its head; or (loaded) a fresh R loads exactly those
// bytes and stores them again. Either way it dumps `dump` (when given), it
// round-trips, and a newer class version is refused once the bases (m_StreamId
// included) are read, a newer DbIOFNciMiscOp version before m_StreamId.
enum Source { kFresh, kLoaded };
template <class R>
void Check(Source source, int streamId, const std::string& own, const wchar_t* dump = nullptr) {
  SCOPED_TRACE(std::string(R::kClassName) + (source == kFresh ? " fresh" : " loaded"));
  const std::string hex = Head(R::kVersion) + I32(streamId) + own;
  auto r = R::Create();
  ASSERT_TRUE(source == kFresh || LoadAll(*r, Hex(hex)));
  EXPECT_EQ(r->GetStreamId(), streamId);
  EXPECT_TRUE(!dump || r->ToIOFString() == dump) << r->ToIOFString().ToUtf8();
  ExpectArchive(*r, hex);
  ExpectNewerVersionRefused(*r, 0, kHeadSize + 4);
  ExpectNewerVersionRefused(*r, 1, kHeadSize);
}

TEST(MiscOps, ArchivesAndDumps) {
  const std::string z = kZero;
  // A new bar feed archives its spindle as 2 and prints INVALID.
  Check<BarFeed>(kFresh, 0, I32(2) + I32(0) + z + z + z + z + "01",
                 L"MiscOp Bar Feed Spindle:INVALID, MotionType:PushNoTool, FinalZPos:0.000000, ZOffset:0.000000, "
                 L"ToolXPos:0.000000, FeedRate:0.000000, IsRapidMove:True");
  Check<BarFeed>(kLoaded, 2, I32(7) + I32(4) + F64(-5) + F64(1.5) + F64(2) + F64(9) + "00",
                 L"MiscOp Bar Feed Spindle:Oops, MotionType:Oops, FinalZPos:-5.000000, ZOffset:1.500000, "
                 L"ToolXPos:2.000000, FeedRate:9.000000, IsRapidMove:False");
  Check<Feeder>(kFresh, 0, "00", L"MiscOp Bar Feeder IsOn:False");
  Check<Puller>(kLoaded, 1, "01", L"MiscOp Bar Puller IsOn:True");
  // Intended: the grip's dump carries the tail stock's label.
  Check<Grip>(kFresh, 0, I32(2) + "00 00" + z + "00" + z);
  Check<Grip>(
      kLoaded, 3, I32(0) + "01 00" + F64(0.5) + "01" + F64(-2),
      L"TailStock MOp Type:LH_HEAD, IsClamping:true, IsEjecting:false, Dwell:0.5, IsTransferStock:1, Offset:-2");
  Check<Move>(kFresh, 0, I32(2) + I32(0) + I32(0) + "00" + z + z + z + z + z + z);
  Check<Move>(kLoaded, 0, I32(1) + I32(1) + I32(2) + "01" + F64(1) + F64(2) + F64(3) + F64(4) + F64(5) + F64(6),
              L"SpindleMove MOp Spindle:RH_HEAD, Motion:Rotary, RotDir:Shortest, IsRapidMove:true, FeedRate:1, "
              L"\t\t\t\t\tLinearZPos:2, RotaryFinalAngle:3, StockClearance:4, GripLength:5, MoveDistance:6");
  Check<Sync>(kFresh, 0, I32(2) + "01" + z + z + z + z + "01" + I32(2) + "00 00");
  Check<Sync>(kLoaded, 0, I32(1) + "00" + F64(1) + F64(2) + F64(3) + F64(4) + "00" + I32(0) + "00 01",
              L"SyncType:sync, IsRapidMove:false, LeftAngle:1, RightAngle:2, RotaryFeedRate:3, SpindleSpeedRpm:4, "
              L"IsRotaryCCW:false, Master:Left, UseRotOpt:0, UseSpindleStartOpt:1");
  Check<Tail>(kFresh, 0, I32(2) + z + "01" + z + z);
  Check<Tail>(kLoaded, 0, I32(7) + F64(-30) + "00" + F64(100) + F64(12.5),
              L"TailStock Action Type:Linear Position, Position:-30, Dist:12.5, Rapid:false, FRate:100, t=0s");
  // The turret: the axis motions first (version, count, then axis, type, value), the
  // tool call, the station, the reference point id, the strategy last.
  Check<Turret>(kFresh, 0, "00" + I32(0) + "00" + I32(1) + Le<std::int64_t>(0) + I32(3),
                L"Turret MOp DoTC:false, Station:1, Motion: UtAxisMotionMap(0): , MovStrategy: DIRECT, "
                L"RefPos: NoRefPos, Ref Point Guid: ");
  Check<Turret>(kLoaded, 0, "00" + I32(1) + I32(2) + I32(2) + F64(-2.5) + "01" + I32(4) + Le<std::int64_t>(7) + I32(0),
                L"Turret MOp DoTC:true, Station:4, Motion: UtAxisMotionMap(1): [Z] (OffsetFromHomePosition, -2.5), , "
                L"MovStrategy: XFIRST, RefPos: NoRefPos, Ref Point Guid: ");
  Check<Rest>(kFresh, 0, I32(2) + z + z + z + z + z + z + z + "00" + z + z + I32(0) + I32(0) + I32(0) + I32(0),
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

// Makes a property agree (`same`) or differ (`other`) through the setter `set`.
template <class S, class V>
auto Set(S set, V same, V other) {
  return [=](auto& r, bool differ) { (r.*set)(differ ? other : same); };
}

// ExpectReportOrder, each line given without "Difference Detected: " and "\n"; an empty
// line stands for a difference that is never reported.
template <class R>
void ExpectOrder(const std::vector<std::pair<std::function<void(R&, bool)>, std::wstring>>& steps) {
  SCOPED_TRACE(R::kClassName);
  std::vector<std::wstring> lines(steps.size());
  std::vector<Difference<R>> order;
  for (std::size_t i = 0; i < steps.size(); ++i) {
    lines[i] = L"Difference Detected: " + steps[i].second + L"\n";
    order.push_back({steps[i].first, steps[i].second.empty() ? nullptr : lines[i].c_str()});
  }
  ExpectReportOrder<R>(order);
}

TEST(MiscOps, ComparisonOrders) {
  ExpectOrder<RefPoint>({{Set(&RefPoint::SetIOFName, L"", L"R"), L"m_Name -  vs R"},
                         {Set(&RefPoint::SetActiveTurret, -1, 1), L"m_ActiveTurret - -1 vs 1"},
                         {Set(&RefPoint::SetActiveSpindle, -1, 2), L"m_ActiveSpindle - -1 vs 2"},
                         {Set(&RefPoint::SetStreamID, -1, 3), L"m_StreamID - -1 vs 3"},
                         {Set(&RefPoint::SetGuid, L"", L"G"), L"m_Guid -  vs G"},
                         {Set(&RefPoint::SetComment, L"", L"C"), L"m_Comment -  vs C"},
                         {Set(&RefPoint::SetCoordinates, UtAxisMotionMap(), kXAt1),
                          L"m_Coordinates - UtAxisMotionMap(0):  vs UtAxisMotionMap(1): [X] (Coordinate, 1), "},
                         {Set(&RefPoint::SetSourceType, 0, 3), L"m_Source - 0 vs 3"},
                         {Set(&RefPoint::SetPositionType, 0, 8), L"m_PosType - 0 vs 8"},
                         {Set(&RefPoint::SetNCOutput, L"", L"N"), L"m_NCOutput -  vs N"}});
  // The NCI base, m_StreamId, then the class's own fields. Intended: the bar feed's feed
  // rate is never compared. Reals within 1e-6 are equal.
  ExpectOrder<BarFeed>({{Set(&BarFeed::SetFeedRate, 0.0, 9.0), L""},
                        {Set(&BarFeed::SetGCode, 0, 3), L"m_GCode - 0 vs 3"},
                        {Set(&BarFeed::SetStreamId, 0, 2), L"m_StreamId - 0 vs 2"},
                        {Set(&BarFeed::SetSpindle, 2, 0), L"m_Spindle - 2 vs 0"},
                        {Set(&BarFeed::SetMotionType, 0, 3), L"m_MotionType - 0 vs 3"},
                        {Set(&BarFeed::SetFinalZPos, 5e-7, -5.0), L"m_FinalZPos - 0 vs -5"},
                        {Set(&BarFeed::SetZOffset, 0.0, 1.5), L"m_ZOffset - 0 vs 1.5"},
                        {Set(&BarFeed::SetToolXPos, 0.0, 2.0), L"m_ToolXPos - 0 vs 2"},
                        {Set(&BarFeed::SetIsRapidMove, true, false), L"m_IsRapidMove - true vs false"}});
  ExpectOrder<Feeder>({{Set(&Feeder::SetIsOn, false, true), L"m_IsOn - false vs true"}});
  ExpectOrder<Puller>({{Set(&Puller::SetIsOpen, false, true), L"m_IsOn - false vs true"}});
  ExpectOrder<Grip>({{Set(&Grip::SetSpindle, 2, 1), L"m_Spindle - 2 vs 1"},
                     {Set(&Grip::SetIsClamping, false, true), L"m_IsClamping - false vs true"},
                     {Set(&Grip::SetIsEjecting, false, true), L"m_IsEjecting - false vs true"},
                     {Set(&Grip::SetDwell, 0.0, 0.5), L"m_Dwell - 0 vs 0.5"},
                     {Set(&Grip::SetIsTransferStock, false, true), L"m_IsTransferStock - false vs true"},
                     {Set(&Grip::SetOffset, 0.0, 2.0), L"m_Offset - 0 vs 2"}});
  ExpectOrder<Move>({{Set(&Move::SetSpindle, 2, 1), L"m_Spindle - 2 vs 1"},
                     {Set(&Move::SetMotionType, 0, 4), L"m_SpindleMotionType - 0 vs 4"},
                     {Set(&Move::SetSpindleRotaryDirType, 0, 2), L"m_SpindleRotaryDirType - 0 vs 2"},
                     {Set(&Move::SetIsRapidMove, false, true), L"m_IsRapidMove - false vs true"},
                     {Set(&Move::SetFeedRate, 0.0, 1.0), L"m_FeedRate - 0 vs 1"},
                     {Set(&Move::SetLinearZPos, 0.0, 2.0), L"m_LinearZPos - 0 vs 2"},
                     {Set(&Move::SetRotaryFinalAngle, 0.0, 3.0), L"m_RotaryFinalAngle - 0 vs 3"},
                     {Set(&Move::SetStockClearance, 0.0, 4.0), L"m_StockClearance - 0 vs 4"},
                     {Set(&Move::SetGripLength, 0.0, 5.0), L"m_GripLength - 0 vs 5"},
                     {Set(&Move::SetMoveDistance, 0.0, 6.0), L"m_MoveDistance - 0 vs 6"}});
  ExpectOrder<Sync>({{Set(&Sync::SetSpindleSyncType, 2, 0), L"m_SyncType - 2 vs 0"},
                     {Set(&Sync::SetMasterSpindle, 2, 1), L"m_MasterSpindle - 2 vs 1"},
                     {Set(&Sync::SetIsRapidMove, true, false), L"m_IsRapidMove - true vs false"},
                     {Set(&Sync::SetLeftAngle, 0.0, 1.0), L"m_LeftAngle - 0 vs 1"},
                     {Set(&Sync::SetRightAngle, 0.0, 2.0), L"m_RightAngle - 0 vs 2"},
                     {Set(&Sync::SetRotaryFeedRate, 0.0, 3.0), L"m_RotaryFeedRate - 0 vs 3"},
                     {Set(&Sync::SetSpindleSpeedRpm, 0.0, 4.0), L"m_SpindleSpeedRpm - 0 vs 4"},
                     {Set(&Sync::SetIsRotaryCCW, true, false), L"m_IsRotaryCCW - true vs false"},
                     {Set(&Sync::SetUseRotaryPostOpt, false, true), L"m_UseRotaryPostOpt - false vs true"},
                     {Set(&Sync::SetUseSpindleStartOpt, false, true), L"m_UseSpindleStartOpt - false vs true"}});
  ExpectOrder<Tail>({{Set(&Tail::SetActionType, 2, 0), L"m_ActionType - 2 vs 0"},
                     {Set(&Tail::SetPosition, 0.0, 1.0), L"m_Position - 0 vs 1"},
                     {Set(&Tail::SetIsRapid, true, false), L"m_IsRapid - true vs false"},
                     {Set(&Tail::SetFeedRate, 0.0, 2.0), L"m_FeedRate - 0 vs 2"},
                     {Set(&Tail::SetMoveDistance, 0.0, 3.0), L"m_MoveDistance - 0 vs 3"}});
  ExpectOrder<Turret>({{Set(&Turret::SetMoveBreakStrategy, 3, 0), L"m_MoveBreakStrategy - 3 vs 0"},
                       {Set(&Turret::SetStation, 1, 4), L"m_Station - 1 vs 4"},
                       {Set(&Turret::SetAxisMotionMap, UtAxisMotionMap(), kXAt1),
                        L"m_AxisMotion - UtAxisMotionMap(0):  vs UtAxisMotionMap(1): [X] (Coordinate, 1), "},
                       {Set(&Turret::SetRefPosId, Quarp::DbId(), Quarp::DbId(7)), L"m_RefPosId - 0 vs 7"},
                       {Set(&Turret::SetOutputToolCall, false, true), L"m_OutputToolCall - false vs true"}});
  ExpectOrder<Rest>({{Set(&Rest::SetMotionType, 2, 1), L"m_MotionType - 2 vs 1"},
                     {Set(&Rest::SetHomeXPosition, 0.0, 1.0), L"m_HomeXPosition - 0 vs 1"},
                     {Set(&Rest::SetHomeZPosition, 0.0, 2.0), L"m_HomeZPosition - 0 vs 2"},
                     {Set(&Rest::SetFinalXPosition, 0.0, 3.0), L"m_FinalXPosition - 0 vs 3"},
                     {Set(&Rest::SetFinalZPosition, 0.0, 4.0), L"m_FinalZPosition - 0 vs 4"},
                     {Set(&Rest::SetMoveDistanceX, 0.0, 5.0), L"m_MoveDistanceX - 0 vs 5"},
                     {Set(&Rest::SetMoveDistanceZ, 0.0, 6.0), L"m_MoveDistanceZ - 0 vs 6"},
                     {Set(&Rest::SetOriginShift, 0.0, 7.0), L"m_OriginShift - 0 vs 7"},
                     {Set(&Rest::SetIsRapidMove, false, true), L"m_IsRapidMove - false vs true"},
                     {Set(&Rest::SetFeedRate, 0.0, 8.0), L"m_FeedRate - 0 vs 8"},
                     {Set(&Rest::SetDwellTime, 0.0, 9.0), L"m_DwellTime - 0 vs 9"},
                     {Set(&Rest::SetComponentEntityID, 0, 10), L"m_ComponentEntityID - 0 vs 10"},
                     {Set(&Rest::SetSequenceNum, 0, 11), L"m_SequenceNum - 0 vs 11"},
                     {Set(&Rest::SetWorkOffsetNumber, 0, 54), L"m_WorkOffsetNumber - 0 vs 54"},
                     {Set(&Rest::SetLinkedSteadyRestComponentEntityIDList, std::vector<int>{}, std::vector{12}),
                      L"m_LinkedSteadyRestComponentEntityIDList"},
                     {Set(&Rest::SetLinkedSteadyRestSequenceNumberList, std::vector<int>{}, std::vector{3}),
                      L"m_LinkedSteadyRestSequenceNumberList"}});
}

TEST(DbIOFReferencePoint, ArchiveStartsWithTheCoordinates) {
  auto point = RefPoint::Create();
  // The coordinates (version, count 0); turret, spindle and stream -1; GUID and comment
  // empty; source and position 0; NC output empty.
  ExpectStores(*point, "00" + kRecordBase + "00" + I32(0) + I32(-1) + I32(-1) + I32(-1) + I32(0) + I32(0) + I32(0) +
                           I32(0) + I32(0));
  // "G", "C", source 1, position 5, "N".
  const std::string own = "00" + I32(1) + I32(X) + I32(Coordinate) + kOne + I32(1) + I32(2) + I32(3) +
                          "01 00 00 00 47 00  01 00 00 00 43 00" + I32(1) + I32(5) + "01 00 00 00 4E 00";
  ASSERT_TRUE(LoadAll(*point, Hex("00" + kRecordBase + own)));
  EXPECT_EQ(point->ToIOFString(),
            L"RefPoint: Name: , Comment C, GUID: G, StreamId:3, Source:JobSetup, "
            L"PosType:REFERENCE, Motion:UtAxisMotionMap(1): [X] (Coordinate, 1), , NC Output: N");
  EXPECT_TRUE(point->GetActiveTurret() == 1 && point->GetActiveSpindle() == 2);  // not in the dump
  ExpectArchive(*point, "00" + kRecordBase + own);
  ExpectNewerVersionRefused(*point, 0, 1 + kRecordBaseSize);
}

TEST(DbIOFNciMOpSteadyRest, EveryLayoutReadsExactly) {
  // What each version added, in archive order: version 0 fields 1 to 10, then one field
  // each, version 4 the two linked lists with their one count (2: two component ids,
  // then two sequence numbers).
  const std::string v0 = I32(0) + F64(1) + F64(2) + F64(3) + F64(4) + F64(5) + F64(6) + F64(7) + "01" + F64(8);
  const std::string added[] = {v0, F64(9), I32(-10), I32(11), I32(2) + I32(12) + I32(14) + I32(3) + I32(4), I32(54)};
  std::string all;
  for (const std::string& part : added) all += part;
  Check<Rest>(kLoaded, 6, all,
              L"SteadyRestOp Motion:Clamp, WorkOfs:54, IsRapid:true, FeedRate:8, HomeXPos:1, HomeZPos:2, FinalXPos:3, "
              L"FinalZPos:4, MoveDistX:5, MoveDistZ:6, OriginShift:7, Dwell:9, ComponentID:-10, SequenceNumber:11, "
              L"Linked:[12/3, 14/4]");
  // An older layout loads the fields it holds as the current one does, and leaves the
  // later ones at their defaults. The visitor's lines: the bases, m_StreamId, the own
  // fields (the two lists as one).
  const unsigned since[] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 2, 3, 4, 5};
  std::vector<std::string> full;
  const std::vector<std::string> fresh = Fields(*Rest::Create());
  ASSERT_EQ(fresh.size(), std::size(since));
  for (int version = 5; version >= 0; --version) {
    SCOPED_TRACE("version " + std::to_string(version));
    std::string hex = Head(version) + I32(6);
    for (int v = 0; v <= version; ++v) hex += added[v];
    auto rest = Rest::Create();
    ASSERT_TRUE(LoadAll(*rest, Hex(hex)));  // every byte read, no more
    const std::vector<std::string> fields = Fields(*rest);
    if (full.empty()) full = fields;
    for (std::size_t i = 0; i < fields.size(); ++i) {
      EXPECT_EQ(fields[i], static_cast<int>(since[i]) <= version ? full[i] : fresh[i]);
    }
  }
}

TEST(DbIOFNciMOpSteadyRest, ListsOfDifferentLengthsShareTheFirstCount) {
  // The sequence numbers are stored padded with 0 or cut to the component ids' count.
  const std::string z = kZero;
  const std::string before = Head(5) + I32(0) + I32(2) + z + z + z + z + z + z + z + "00" + z + z + I32(0) + I32(0);
  auto rest = Rest::Create();
  rest->SetLinkedSteadyRestComponentEntityIDList({1, 2, 3});
  rest->SetLinkedSteadyRestSequenceNumberList({9});
  EXPECT_TRUE(rest->ToIOFString().ToUtf8().ends_with("Linked:[1/9, 2/?, 3/?]"));
  ExpectStores(*rest, before + I32(3) + I32(1) + I32(2) + I32(3) + I32(9) + I32(0) + I32(0) + I32(0));
  rest->SetLinkedSteadyRestComponentEntityIDList({1});
  rest->SetLinkedSteadyRestSequenceNumberList({7, 8});
  EXPECT_TRUE(rest->ToIOFString().ToUtf8().ends_with("Linked:[1/7, ?/8]"));
  ExpectStores(*rest, before + I32(1) + I32(1) + I32(7) + I32(0));
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
  const CString none = Turret::Create()->ToIOFString();  // "RefPos: NoRefPos, Ref Point Guid: "
  EXPECT_EQ(turret->ToIOFString(), none);                // a turret in no manager resolves nothing
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

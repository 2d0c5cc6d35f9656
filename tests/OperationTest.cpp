// Operations, transformed sub-program operations, sub-operations, approaches and
// retracts. One layout table per class pins every archive layout with its reader, the
// stored defaults, the round trips, the visitor's lines, what Copy leaves alone and the
// comparison order with its lines. Then the dumps with their table fallbacks and
// transform cases, the RotaryInfo note, the synchronisation-manager map's version error,
// the item lookups and the deliberate oddities.
#include "LayoutTable.h"

#include <iof/DbIOFApproach.h>
#include <iof/DbIOFNciOperation.h>
#include <iof/DbIOFNciSubOp.h>
#include <iof/DbIOFNciTransSubProgOp.h>
#include <iof/DbIOFRetract.h>
#include <iof/DbIOFStream.h>

#include <gtest/gtest.h>

#include <cmath>

using namespace IOF;
using namespace TestSupport;
using Op = DbIOFNciOperation;

namespace {

// The list part: its version, the record base, kind 2, no items. The parameter maps are
// not compared, nor the rotary id (see RotaryInfo). The synchronisation-manager map holds
// its own version (0), the count, then each 4-byte key and attribute map.
const Layout& OpLayout() {
  const std::string empty = "00 00 00 00";
  const Row numeric =
      Named("m_NumericParams", "01 00 00 00  07 00 00 00" + Le(2.0), empty, "[{key=7,value=2}]", "[]", 0, kNotCompared);
  const Row text = Named("m_StringParams", "01 00 00 00  03 00 00 00" + Str(u"A"), empty, "[{key=3,value=\"A\"}]", "[]",
                         0, kNotCompared);
  const Row points = Named(
      "m_StrategySyncPoints", "01 00 00 00  01 00 00 00 02 00 00 00  01" + Str(u"S") + "00" + empty, empty,
      "[{FirstKey=1,SecondKey=2,Flag=true,Text=\"S\",Attributes=0 attributes}]", "[]", 0, kNotCompared | kNotCopied);
  const Row sync = Named("m_SyncMgrDataMap", "00  01 00 00 00  02 00 00 00  00" + empty, "00" + empty,
                         "[{key=2u,value=0 attributes}]", "[]", 0, kNotCompared);
  static const Layout l = {
      "00 00" + kRecordBase + "02 00 00 00  00 00 00 00", nullptr,
      Join({{numeric, text, points, Int("m_ActiveSpindle", 2), Int("m_ActiveTurret", 3), Id("m_CannedProgId", 11),
             Int("m_MCOpId", 12), Short("m_MCOpCode", -2), Short("m_OldMCOpCode", 5, kNotCompared),
             Int("m_MCOpNumber", 13), Text("m_Comment", "C"), Real("m_MaxSpindleSpeed", 2), Bool("m_SpindleModeMill"),
             Bool("m_SpindleCCW", false), Id("m_NextToolChg", 14), Id("m_PrevToolChg", 15), Int("m_StreamId", 2),
             Bool("m_ForceToolChange"), Text("m_ToolpathTypeTitle", "T")},
            {Int("m_ToolPathType", 17), Id("m_RotaryId", 16, kNotCompared), Bool("m_UsesAltTurretIndex"),
             Real("m_MultiAxisCCOffset", 1), Real("m_CCOffsetDist", 2), Int("m_CCMethod", 1), Int("m_OpType", 2),
             Int("m_MillOpSubType", 3), Real("m_ToolChangeTime", 2, 0, 0, kNotCompared), Int("m_ContextType", 9),
             Matrix("m_MachineCoordSys", 1), Text("m_ToolPathGroupName", "G"), Real("m_LatheToolAngle", 1),
             Real("m_LatheToolOrientationAngle", 2), Short("m_LatheToolInsertOrientation", 7),
             Int("m_PartSpindleDirection", 3), Int("m_ToolSpindleDirection", 1),
             Id("m_ReferencePositionId", 17, kNotCompared | kNotCopied), Int("m_AxisComboNumberOfRotaryAxis", 2)},
            {sync, Int("m_AxisComboId", 4, 0, 1), Bool("m_UseToolCenterCompensation", true, 1),
             Real("m_ToolCenterCompensationOffset", 1, 0, 1), Int("m_TransformSubprogramNestReturn", 6, 0, 2),
             Text("m_OperationTypeString", "O", 3), Bool("m_IsReferencePositionSetToNoneByUser", true, 4),
             Int("m_TransformOpId", 8, 0, 5)}})};
  return l;
}

const Layout& TransLayout() {
  static const Layout l = {
      "00 " + ToHex(Image(OpLayout(), Op::kVersion, None)),
      L"SubProgNum = 5, INC = 1",
      {Int("m_SubProgNum", 5, -1), Bool("m_NcIncremental"), Int("m_OpId", 6), Int("m_SectionNum", 7),
       Int("m_SectionTotal", 8), Int("m_Chain", 9), Int("m_TransformStatus", 10), Bool("m_IsSource"),
       Int("m_TransformType", 11), Int("m_TransformMethod", 12), Matrix("m_TransformMatrix", 1),
       Point("m_TransformOrigin", 1, 0, 2), Int("m_NextTool", 13), Bool("m_HasToolchange"), Bool("m_NoNest", false),
       Bool("m_AllSubNests"), Bool("m_AllIncNests"), Int("m_NestLevel", 2, -1),
       Point("m_TransformMatrixEulerAngles", 0, 2, 0, 1)}};
  return l;
}

// The layout the approach and the retract share; the retract adds one flag. Both compare
// the end point and the reference point first.
Layout MoveLayout(const std::string& typeName, bool retract) {
  Layout l = {
      "00 " + kRecordBase,
      nullptr,
      {Point("m_EndPoint", 1, 0, 2), Int(typeName, 4), Id("m_ReferencePointId", 9), Bool("m_NcIncremental", true, 1)},
      {0, 2}};
  if (retract) l.rows.push_back(Bool("m_IsNoneSetByUser", true, 2));
  return l;
}

TEST(Operation, LayoutsRoundTripsCopyAndComparisonOrders) {
  ExpectLayout<Op>(OpLayout());
  ExpectLayout<DbIOFNciTransSubProgOp>(TransLayout());
  // The sub-operation's kind is 0x2000; it compares its feed units before its feed rate.
  ExpectLayout<DbIOFNciSubOp>(
      {"00 00" + kRecordBase + "00 20 00 00  00 00 00 00",
       nullptr,
       {Id("m_OpId", 5), Id("m_ToolChangeId", 6), Id("m_ToolPlaneId", 7), Real("m_ApproachRpm", 1),
        Bool("m_CSSEnabled"), Int("m_ToolOrientationType", 2), Int("m_NCPlane", 1), Int("m_NCPlaneCoordConv", 2),
        Int("m_Compensation", 3, 1), Real("m_SpindleSpeed", 2), Real("m_FeedRate", 1), Int("m_FeedUnits", 1),
        Int("m_DiameterOffsetNum", 4), Int("m_LengthOffsetNum", -1)},
       {0, 1, 2, 3, 4, 5, 6, 8, 9, 11, 10}});
  ExpectLayout<DbIOFApproach>(MoveLayout("m_ApproachType", false));
  ExpectLayout<DbIOFRetract>(MoveLayout("m_RetractType", true));
  // A transformed operation compares its operation part first.
  auto b = Loaded<DbIOFNciTransSubProgOp>(Image(TransLayout(), 1, All));
  b->SetMcOpNumber(2);
  CString report;
  EXPECT_FALSE(DbIOFNciTransSubProgOp::Create()->Compare(b, report));
  EXPECT_EQ(report, L"Difference Detected: m_MCOpNumber - 0 vs 2\n");
}

// A record that answers to the rotary type code.
class RotaryStandIn : public TestRecord {
 public:
  bool ContainsType(std::uint64_t code) const override { return code == 0x5164 || TestRecord::ContainsType(code); }
};

TEST(Operation, RotaryInfoIsNotedWhateverTheResult) {
  Quarp::DbMgr mgr;
  Quarp::DbPtr<TestRecord> rotary;
  rotary.AttachEnt(new RotaryStandIn);
  auto a = Op::Create();
  auto b = Op::Create();
  b->SetRotaryId(mgr.Add(rotary));
  CString report;
  EXPECT_TRUE(a->Compare(b, report));  // a is in no manager: neither id resolves through it
  a->SetRotaryId(mgr.Add(b));          // names an operation, not a rotary record
  mgr.Add(a);
  b->SetMcOpNumber(7);
  EXPECT_FALSE(a->Compare(b, report));
  b->SetMcOpNumber(0);
  EXPECT_TRUE(b->Compare(a, report));
  EXPECT_EQ(report,
            L"Difference Detected: m_MCOpNumber - 0 vs 7\nDifference Detected: RotaryInfoDifference Detected: "
            L"RotaryInfo");
}

TEST(Operation, SyncManagerMapVersionAndRepeatedKeys) {
  // The map's own version, after the 38 fields before it: anything but 0 is refused
  // right after it was read.
  const Layout before = {OpLayout().head, nullptr, {OpLayout().rows.begin(), OpLayout().rows.begin() + 38}};
  const std::size_t at = Image(before, 5, All).size();
  Bytes bytes = Image(OpLayout(), 5, All);
  bytes.at(at) = 1;
  std::size_t stopped = 0;
  EXPECT_EQ(LoadCause(*Op::Create(), bytes, &stopped), 2);
  EXPECT_EQ(stopped, at + 1);
  // A key stored twice keeps the later attribute map. Only the adder inserts a map.
  auto op = Op::Create();
  EXPECT_EQ(op->GetSyncManagerAttributes(SyncMgrDataConfigTypes::Mill), nullptr);
  UtIOFAttribMap* mill = op->AddSyncManagerAttributes(SyncMgrDataConfigTypes::Mill);  // key 2
  EXPECT_EQ(op->AddSyncManagerAttributes(SyncMgrDataConfigTypes::Mill), mill);
  mill->AddAttribute(CString(L"earlier"), 1);
  op->AddSyncManagerAttributes(SyncMgrDataConfigTypes::Lathe)->AddAttribute(CString(L"later"), 2.0);  // key 4
  bytes = Store(*op);
  bytes.at(Image(before, 5, None).size() + 5) = 4;  // the first key, 2, becomes 4
  ASSERT_TRUE(LoadAll(*op, bytes));
  EXPECT_TRUE(op->GetSyncMgrDataMap().size() == 1 &&
              op->GetSyncManagerAttributes(SyncMgrDataConfigTypes::Lathe)->begin()->first == L"later");
}

TEST(Operation, DumpsWithTheirFallbacksAndTransformCases) {
  auto op = Loaded<Op>(Image(OpLayout(), 5, All));
  // Tool-path type, context (the value less one) and mill sub-type texts of one value.
  const std::tuple<int, const wchar_t*, const wchar_t*, const wchar_t*> cases[] = {
      {-1, L"", L"Error", L"MILL_NONE"},
      {0, L"TP_NONE", L"Error", L"MILL_NONE"},
      {1, L"TP_CONTR_FACEPLANAR", L"Manual", L"MILL_FACE_ROTARY"},
      {6, L"TP_CONTR_AXISSUB", L"RT2LFTPO", L"MULTI_AXIS_DRILL"},
      {7, L"TP_CONTOUR_5AXIS", L"RT2LFTPOBPCO", L"MILL_NONE"},
      {11, L"TP_DRILL_FACEPOLAR", L"UNRECOGNIZED", L"MILL_NONE"},
      {26, L"", L"Error", L"MILL_NONE"},
      {27, L"TP_MISCOP_TURRETPARK", L"Error", L"MILL_NONE"},
      {33, L"TP_MISCOP_BARFEED_NOTOOL", L"Error", L"MILL_NONE"},
      {34, L"", L"Error", L"MILL_NONE"}};
  for (const auto& [value, toolPath, context, millSubType] : cases) {
    op->SetToolPathType(static_cast<IofToolPathTypes>(value));
    op->SetContextType(static_cast<OpContextTypes>(value - 1));
    op->SetMillOpSubType(static_cast<IofMillOpSubTypes>(value));
    // Intended: "Type" shows the tool-path title and "OpType" the machine-operation code.
    EXPECT_EQ(op->ToIOFString(), CString::Formatted(L"OpNumber: 13, Type: T; OpId: 12, OpType: -2, OpComment: C, "
                                                    L"TP_Type: %s; Context: %s, TCTime: 2sec; MillSubTyp: %s, "
                                                    L"Spindle:2, Turret:3, XformReturn:6",
                                                    toolPath, context, millSubType));
    EXPECT_EQ(op->GetIsMiscOp(), value >= 27 && value <= 33) << value;
  }
  op->SetMcOpCode(Op::kTransformOpCode);
  for (const auto& [name, text] : std::initializer_list<std::pair<const wchar_t*, const wchar_t*>>{
           {L"Pocket 2", L"TRANSFORM OP"},
           {L"Transformed Operation, instance 3", L"TRANSFORM OP, Transformed Operation, instance 3"},
           {L"Transform Instance, Transformed Operation, instance 4", nullptr}}) {
    op->SetIOFName(name);
    EXPECT_EQ(op->ToIOFString(), text ? text : name);
  }
  // A transformed operation's own dump replaces the operation's, transform or not.
  auto t = Loaded<DbIOFNciTransSubProgOp>(Image(TransLayout(), 1, All));
  t->SetMcOpCode(Op::kTransformOpCode);
  EXPECT_EQ(t->ToIOFString(), L"SubProgNum = 5, INC = 1");
}

TEST(SubOperation, DumpsAndTheirTables) {
  auto sub = DbIOFNciSubOp::Create();
  sub->SetIOFName(L"ignored");  // intended: the dump shows the framework's name, the class name
  EXPECT_EQ(sub->ToIOFString().Left(39), L"IOF SubOp Object: Name: DbIOFNciSubOp; ");
  std::string texts;
  for (int v : {0, 1, 2, 3, 4}) {
    sub->SetToolOrientationType(static_cast<DbIOFNciSubOp::ToolOrientType>(v));
    sub->SetNCPlane(static_cast<IofArcPlaneType>(v));
    sub->SetNCPlaneCoordConv(static_cast<IofArcPlaneType>(2 - v));
    texts += sub->ToIOFString().ToUtf8().substr(39) + "\n";
    sub->SetToolChangeId(Quarp::DbId(0x1FFFFFFFFull));  // "%ld": the signed low 32 bits
  }
  EXPECT_EQ(texts,
            "Orient: NOTSET, NCPlane: G17, NCPlaneCoordConv: G19, TC=0\n"
            "Orient: CROSS, NCPlane: G18, NCPlaneCoordConv: G18, TC=-1\n"
            "Orient: FACE, NCPlane: G19, NCPlaneCoordConv: G17, TC=-1\n"
            "Orient: NONORTHO, NCPlane: NOTSET, NCPlaneCoordConv: NOTSET, TC=-1\n"
            "Orient: , NCPlane: NOTSET, NCPlaneCoordConv: NOTSET, TC=-1\n");

  // The approach and retract type texts from -1 to 6, and one dump of each.
  std::wstring types;
  for (int type = -1; type <= 6; ++type) {
    types += DbIOFApproach::ApproachTypeText(type) + std::wstring(L"|") + DbIOFRetract::RetractTypeText(type) + L";";
  }
  EXPECT_EQ(types,
            L"|;Not Set|Not Set;Preceded by Physical TC|Followed by Physical TC;Preceded by Null TC|Followed by "
            L"Null TC;Reposition|Reposition;Link: Preceded by Null TC|EOF;Link: Reposition|;|;");
  auto approach = DbIOFApproach::Create();
  approach->SetEndPoint(GmPoint3D(1, -0.5, 2));
  approach->SetApproachType(4);
  approach->SetNcIncremental(true);
  EXPECT_EQ(approach->ToIOFString(),
            L"IOF Approach Object: Name: , Pos (1, -0.5, 2), Type \"Link: Preceded by Null TC\", INC = 1");
  // The reference point prints by its IOF name once the retract's manager finds it.
  Quarp::DbMgr mgr;
  auto home = DbIOFList::Create(0);
  home->SetIOFName(L"Home");
  auto retract = DbIOFRetract::Create();
  retract->SetRetractType(4);
  retract->SetReferencePointId(mgr.Add(home));
  EXPECT_EQ(retract->ToIOFString(), L"IOF Retract Object: Name: , Type \"EOF\", RefPos: None, INC = 0");
  mgr.Add(retract);
  EXPECT_EQ(retract->ToIOFString(), L"IOF Retract Object: Name: , Type \"EOF\", RefPos: Home, INC = 0");
}

// An approach of a class derived from DbIOFApproach: lookups must not take it.
class DerivedApproach : public DbIOFApproach {
 public:
  std::uint64_t GetType() const override { return 0x7F20; }
};

TEST(Operation, LookupsTakeTheFirstItemOfExactlyTheClass) {
  Quarp::DbMgr mgr;
  const auto add = [&](DbIOFList& into, std::initializer_list<Quarp::DbPtr<DbIOFBase>> records) {
    for (Quarp::DbPtr<DbIOFBase> record : records) into.PushBack(mgr.Add(record));
  };
  auto op = Op::Create();
  auto first = DbIOFNciSubOp::Create();
  auto second = DbIOFNciSubOp::Create();
  Quarp::DbPtr<DbIOFApproach> derived;
  derived.AttachEnt(new DerivedApproach);
  auto stream = DbIOFStream::Create(1);
  stream->SetListType(DbIOFList::kMotionBlock);  // a list of kind 4, but not a plain list
  add(*op, {DbIOFList::Create(0), DbIOFNciTransSubProgOp::Create(), first, second});
  add(*second, {DbIOFApproach::Create()});
  add(*first, {derived, stream, DbIOFList::Create(DbIOFList::kMotionSubList), DbIOFRetract::Create()});
  Quarp::UtArrayEx<Quarp::DbId> subOps;
  subOps.Add(Quarp::DbId(99));
  EXPECT_FALSE(op->GetSubOps(subOps));  // in no manager
  EXPECT_TRUE(subOps.IsEmpty() && op->GetApproach().IsNull() && op->GetRetract().IsNull());
  mgr.Add(op);
  ASSERT_TRUE(op->GetSubOps(subOps));
  EXPECT_EQ(std::vector<Quarp::DbId>(subOps.begin(), subOps.end()),
            (std::vector<Quarp::DbId>{first.GetId(), second.GetId()}));
  // Intended: only the first sub-operation's approach counts, and a retract inside it
  // does not.
  EXPECT_TRUE(op->GetApproach().IsNull() && op->GetRetract().IsNull());
  EXPECT_TRUE(first->GetMotionList().IsNull() && first->GetCutterCompMotionList().IsNull());
  auto approach = DbIOFApproach::Create();
  auto motion = DbIOFList::Create(DbIOFList::kMotionBlock);
  auto comp = DbIOFList::Create(DbIOFList::kCutterCompMotionSubList);
  auto retract = DbIOFRetract::Create();
  add(*first, {approach, motion, comp, DbIOFApproach::Create(), DbIOFList::Create(DbIOFList::kMotionBlock)});
  add(*op, {retract});
  EXPECT_EQ(op->GetApproach().GetId(), approach.GetId());
  EXPECT_EQ(first->GetMotionList().GetId(), motion.GetId());
  EXPECT_EQ(first->GetCutterCompMotionList().GetId(), comp.GetId());
  EXPECT_EQ(op->GetRetract().GetId(), retract.GetId());
}

TEST(Operation, FilteredSetterParametersAndInMemoryFields) {
  auto op = Op::Create();
  for (const auto& [given, stored] :
       {std::pair{0.0005, 0.0}, {0.001, 0.001}, {7.5, 7.5}, {-2, 0}, {INFINITY, 0}, {NAN, 0}}) {
    op->SetToolChangeTime(given);
    EXPECT_EQ(op->GetToolChangeTime(), stored) << given;
  }
  op->GetNumericParams()[7] = 2.5;
  op->GetStringParams()[7] = L"seven";
  double number = 9;
  CString text(L"old");
  EXPECT_TRUE(op->GetMPParameter(7, number) && op->GetMPParameter(7, text) && number == 2.5 && text == L"seven");
  EXPECT_FALSE(op->GetMPParameter(8, number) || op->GetMPParameter(8, text));
  EXPECT_TRUE(number == 0.0 && text.IsEmpty());
  // In memory only: the dead-section flag of a sub-operation, which the copy constructor
  // alone carries.
  auto sub = DbIOFNciSubOp::Create();
  sub->SetDeadSection(true);
  auto copied = DbIOFNciSubOp::Create();
  copied->Copy(*sub, Quarp::DbCloneMode::Normal, nullptr);
  EXPECT_FALSE(copied->GetDeadSection() || Loaded<DbIOFNciSubOp>(Store(*sub))->GetDeadSection());
  EXPECT_TRUE(DbIOFNciSubOp(*sub).GetDeadSection());
}

TEST(ApproachRetract, StrategyAttributes) {
  auto approach = DbIOFApproach::Create();
  auto retract = DbIOFRetract::Create();
  approach->GetAttributes().AddAttribute(CString(L"T_APPROACH_STRATEGY"), L"Arc");
  retract->GetAttributes().AddAttribute(CString(L"T_APPROACH_STRATEGY"), L"Arc");  // not the retract's key
  EXPECT_EQ(approach->GetMoveStrategyAttribValue() + L"|" + retract->GetMoveStrategyAttribValue(), L"Arc|");
  retract->GetAttributes().AddAttribute(CString(L"T_RETRACT_STRATEGY"), L"Line");
  EXPECT_EQ(retract->GetMoveStrategyAttribValue(), L"Line");
}

}  // namespace

// Operations, transformed sub-program operations, sub-operations, approaches and
// retracts. One table per class lists its archived fields (the version that added each,
// a stored value and the default, as bytes and as the visitor's text); from it come
// every archive layout with its reader, the stored defaults, the round trips, what Copy
// leaves alone and the comparison order with its lines. Then the dumps with their table
// fallbacks and transform cases, the RotaryInfo note, the synchronisation-manager map's
// version error, the item lookups and the deliberate oddities.
#include "RecordingVisitor.h"
#include "TestSupport.h"

#include <iof/DbIOFApproach.h>
#include <iof/DbIOFNciOperation.h>
#include <iof/DbIOFNciSubOp.h>
#include <iof/DbIOFNciTransSubProgOp.h>
#include <iof/DbIOFRetract.h>
#include <iof/DbIOFStream.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>

using namespace IOF;
using namespace TestSupport;
using Op = DbIOFNciOperation;

namespace {

enum : unsigned { kNotCompared = 1, kNotCopied = 2 };

// One archived field: the version that added it, a stored value and the visitor's text
// of it, the visitor's text of the default and the default's bytes (empty: as many zero
// bytes as the stored value has).
struct Row {
  std::string name;
  unsigned since;
  std::string set, loaded, fallback, unset = "";
  unsigned flags = 0;
};
// A class's archive: what follows its version (its base parts), then its rows.
struct Table {
  std::string head;
  std::vector<Row> rows;
};

bool All(const Row&) { return true; }
bool None(const Row&) { return false; }

// The archive of layout `version`, each row stored with its value when `set` says so.
template <class Set>
std::string Layout(const Table& t, unsigned version, Set set) {
  std::string hex = ToHex({static_cast<std::uint8_t>(version)}) + t.head;
  for (const Row& r : t.rows) {
    if (r.since > version) continue;
    hex += set(r) ? r.set : !r.unset.empty() ? r.unset : std::string(2 * Hex(r.set).size(), '0');
  }
  return hex;
}

template <class R>
Quarp::DbPtr<R> Loaded(const std::string& hex) {
  auto r = R::Create();
  EXPECT_TRUE(LoadAll(*r, Hex(hex)));
  return r;
}

// The visitor's lines of the class's own fields: the last ones.
std::vector<std::string> Own(const DbIOFBase& record, const Table& t) {
  const std::vector<std::string> all = Fields(record);
  return {all.end() - static_cast<std::ptrdiff_t>(t.rows.size()), all.end()};
}
std::vector<std::string> Expected(const Table& t, unsigned version) {
  std::vector<std::string> lines;
  for (const Row& r : t.rows) lines.push_back(r.name + "=" + (r.since <= version ? r.loaded : r.fallback));
  return lines;
}

// Every layout loads exactly; the defaults and the full record store the current
// layout; a newer version is refused after the base parts; the record round-trips; Copy
// carries every field but those it deliberately leaves.
template <class R>
void ExpectLayouts(const Table& t) {
  SCOPED_TRACE(R::kClassName);
  for (unsigned v = 0; v <= R::kVersion; ++v) EXPECT_EQ(Own(*Loaded<R>(Layout(t, v, All)), t), Expected(t, v)) << v;
  ExpectStores(*R::Create(), Layout(t, R::kVersion, None));
  auto full = Loaded<R>(Layout(t, R::kVersion, All));
  ExpectStores(*full, Layout(t, R::kVersion, All));
  ExpectNewerVersionRefused(*full, 0, 1 + Hex(t.head).size());
  auto source = Loaded<R>(Layout(t, R::kVersion, [](const Row& r) { return !(r.flags & kNotCopied); }));
  ExpectRoundTrips(*source);
  auto target = Loaded<R>(Layout(t, R::kVersion, [](const Row& r) { return (r.flags & kNotCopied) != 0; }));
  target->Copy(*source, Quarp::DbCloneMode::Normal, nullptr);
  EXPECT_EQ(Own(*target, t), Expected(t, R::kVersion));
}

// How Compare prints a value the visitor wrote.
std::string Printed(std::string v) {
  if (v == "identity" || v[0] == '[') return "4x4";
  if (v[0] == '#') return v.substr(1);
  if (v[0] == '"') return v.substr(1, v.size() - 2);
  for (std::size_t at = v.find(','); v[0] == '(' && at != std::string::npos; at = v.find(',', at + 2)) {
    v.insert(at + 1, " ");
  }
  return v;
}

// A default record compared with records that differ in every field not yet reported:
// each comparison reports the first of them in `order` (by default the compared rows in
// archive order), appended to what the report held; without them the records are equal.
template <class R>
void ExpectCompareOrder(const Table& t, std::vector<std::string> order = {}) {
  SCOPED_TRACE(R::kClassName);
  for (const Row& r : t.rows) {
    if (!(r.flags & kNotCompared) && std::ranges::find(order, r.name) == order.end()) order.push_back(r.name);
  }
  std::vector<std::string> reported;
  const auto differs = [&](const Row& r) { return std::ranges::find(reported, r.name) == reported.end(); };
  const auto a = Loaded<R>(Layout(t, R::kVersion, None));
  for (const std::string& name : order) {
    const Row& r = *std::ranges::find(t.rows, name, &Row::name);
    CString report(L"earlier\n");
    EXPECT_FALSE(a->Compare(Loaded<R>(Layout(t, R::kVersion, differs)), report));
    EXPECT_EQ(report.ToUtf8(), "earlier\nDifference Detected: " + name + " - " + Printed(r.fallback) + " vs " +
                                   Printed(r.loaded) + "\n");
    reported.push_back(name);
  }
  CString report;
  EXPECT_TRUE(a->Compare(Loaded<R>(Layout(t, R::kVersion, differs)), report) && report.IsEmpty()) << report.ToUtf8();
}

// Rows of the common field types: a value's little-endian bytes, written independently
// of the library's archive, and its text.
template <class T>
std::string Le(T v) {
  Bytes b(sizeof v);
  std::memcpy(b.data(), &v, sizeof v);
  return ToHex(b) + " ";
}
Row Num(std::string n, std::int32_t v, unsigned since = 0, std::int32_t def = 0) {
  return {n, since, Le(v), std::to_string(v), std::to_string(def), Le(def)};
}
Row Short(std::string n, std::int16_t v, unsigned f = 0) { return {n, 0, Le(v), std::to_string(v), "0", "", f}; }
Row Id(std::string n, std::uint64_t v, unsigned f = 0) { return {n, 0, Le(v), "#" + std::to_string(v), "#0", "", f}; }
Row Real(std::string n, int v, unsigned since = 0, unsigned flags = 0) {
  return {n, since, Le(double(v)), std::to_string(v), "0", "", flags};
}
Row Bool(std::string n, unsigned since = 0, bool def = false) {
  return {n, since, def ? "00" : "01", def ? "false" : "true", def ? "true" : "false", def ? "01" : "00"};
}
Row Text(std::string n, char c, unsigned since = 0) {
  return {n, since, "01 00 00 00" + Le(c) + "00", std::string("\"") + c + "\"", "\"\"", "00 00 00 00"};
}
// Any other value: its bytes and texts as given, the default's bytes, what it is left out of.
Row Raw(std::string n, unsigned since, std::string set, std::string loaded, std::string fallback,
        std::string unset = "", unsigned flags = 0) {
  return {n, since, set, loaded, fallback, unset, flags};
}
std::vector<Row> Join(std::initializer_list<std::vector<Row>> parts) {
  std::vector<Row> rows;
  for (const auto& part : parts) rows.insert(rows.end(), part.begin(), part.end());
  return rows;
}

// The identity matrix archived (version, 4 by 4, row by row), or moved 1 along Z.
std::string Matrix(bool shifted) {
  std::string hex = "00 04 00 00 00 04 00 00 00";
  for (int i = 0; i < 16; ++i) hex += (i % 5 == 0 || (shifted && i == 11)) ? kOne : kZero;
  return hex;
}
const std::string kTwo = Le(2.0);
const std::string kMoved = "[1 0 0 0 0 1 0 0 0 0 1 1 0 0 0 1]";

// The list part: its version, the record base, kind 2, no items. The rotary id is not
// compared (see RotaryInfo). The synchronisation-manager map holds its own version (0),
// the count, then each 4-byte key and attribute map.
const Table& OpTable() {
  const std::string empty = "00 00 00 00";
  const Row numeric =
      Raw("m_NumericParams", 0, "01 00 00 00  07 00 00 00" + kTwo, "[{key=7,value=2}]", "[]", empty, kNotCompared);
  const Row text = Raw("m_StringParams", 0, "01 00 00 00  03 00 00 00  01 00 00 00 41 00", "[{key=3,value=\"A\"}]",
                       "[]", empty, kNotCompared);
  const Row points =
      Raw("m_StrategySyncPoints", 0, "01 00 00 00  01 00 00 00 02 00 00 00  01  01 00 00 00 53 00  00" + empty,
          "[{FirstKey=1,SecondKey=2,Flag=true,Text=\"S\",Attributes=0 attributes}]", "[]", empty,
          kNotCompared | kNotCopied);
  const Row sync = Raw("m_SyncMgrDataMap", 0, "00  01 00 00 00  02 00 00 00  00" + empty,
                       "[{key=2u,value=0 attributes}]", "[]", "00" + empty, kNotCompared);
  static const Table t = {
      "00" + kRecordBase + "02 00 00 00  00 00 00 00",
      Join({{numeric, text, points, Num("m_ActiveSpindle", 2), Num("m_ActiveTurret", 3), Id("m_CannedProgId", 11),
             Num("m_MCOpId", 12), Short("m_MCOpCode", -2), Short("m_OldMCOpCode", 5, kNotCompared),
             Num("m_MCOpNumber", 13)},
            {Text("m_Comment", 'C'), Real("m_MaxSpindleSpeed", 2), Bool("m_SpindleModeMill"),
             Bool("m_SpindleCCW", 0, true), Id("m_NextToolChg", 14), Id("m_PrevToolChg", 15), Num("m_StreamId", 2),
             Bool("m_ForceToolChange"), Text("m_ToolpathTypeTitle", 'T'), Num("m_ToolPathType", 17)},
            {Id("m_RotaryId", 16, kNotCompared), Bool("m_UsesAltTurretIndex"), Real("m_MultiAxisCCOffset", 1),
             Real("m_CCOffsetDist", 2), Num("m_CCMethod", 1), Num("m_OpType", 2), Num("m_MillOpSubType", 3),
             Real("m_ToolChangeTime", 2, 0, kNotCompared), Num("m_ContextType", 9),
             Raw("m_MachineCoordSys", 0, Matrix(true), kMoved, "identity", Matrix(false))},
            {Text("m_ToolPathGroupName", 'G'), Real("m_LatheToolAngle", 1), Real("m_LatheToolOrientationAngle", 2),
             Short("m_LatheToolInsertOrientation", 7), Num("m_PartSpindleDirection", 3),
             Num("m_ToolSpindleDirection", 1), Id("m_ReferencePositionId", 17, kNotCompared | kNotCopied),
             Num("m_AxisComboNumberOfRotaryAxis", 2), sync},
            {Num("m_AxisComboId", 4, 1), Bool("m_UseToolCenterCompensation", 1),
             Real("m_ToolCenterCompensationOffset", 1, 1), Num("m_TransformSubprogramNestReturn", 6, 2),
             Text("m_OperationTypeString", 'O', 3), Bool("m_IsReferencePositionSetToNoneByUser", 4),
             Num("m_TransformOpId", 8, 5)}})};
  return t;
}

const Table& TransTable() {
  static const Table t = {
      Layout(OpTable(), Op::kVersion, None),
      {Num("m_SubProgNum", 5, 0, -1), Bool("m_NcIncremental"), Num("m_OpId", 6), Num("m_SectionNum", 7),
       Num("m_SectionTotal", 8), Num("m_Chain", 9), Num("m_TransformStatus", 10), Bool("m_IsSource"),
       Num("m_TransformType", 11), Num("m_TransformMethod", 12),
       Raw("m_TransformMatrix", 0, Matrix(true), kMoved, "identity", Matrix(false)),
       Raw("m_TransformOrigin", 0, "00" + kOne + kZero + kTwo, "(1,0,2)", "(0,0,0)"), Num("m_NextTool", 13),
       Bool("m_HasToolchange"), Bool("m_NoNest", 0, true), Bool("m_AllSubNests"), Bool("m_AllIncNests"),
       Num("m_NestLevel", 2, 0, -1),
       Raw("m_TransformMatrixEulerAngles", 1, "00" + kZero + kTwo + kZero, "(0,2,0)", "(0,0,0)")}};
  return t;
}

const Table& SubOpTable() {
  static const Table t = {
      "00" + kRecordBase + "00 20 00 00  00 00 00 00",  // kind 0x2000, no items
      {Id("m_OpId", 5), Id("m_ToolChangeId", 6), Id("m_ToolPlaneId", 7), Real("m_ApproachRpm", 1), Bool("m_CSSEnabled"),
       Num("m_ToolOrientationType", 2), Num("m_NCPlane", 1), Num("m_NCPlaneCoordConv", 2),
       Num("m_Compensation", 3, 0, 1), Real("m_SpindleSpeed", 2), Real("m_FeedRate", 1), Num("m_FeedUnits", 1),
       Num("m_DiameterOffsetNum", 4), Num("m_LengthOffsetNum", -1)}};
  return t;
}

// The layout the approach and the retract share; the retract adds one flag.
Table MoveTable(const std::string& typeName, bool retract) {
  Table t = {kRecordBase,
             {Raw("m_EndPoint", 0, "00" + kOne + kZero + kTwo, "(1,0,2)", "(0,0,0)"), Num(typeName, 4),
              Id("m_ReferencePointId", 9), Bool("m_NcIncremental", 1)}};
  if (retract) t.rows.push_back(Bool("m_IsNoneSetByUser", 2));
  return t;
}

TEST(Operation, LayoutsRoundTripsCopyAndComparisonOrders) {
  ExpectLayouts<Op>(OpTable());
  ExpectLayouts<DbIOFNciTransSubProgOp>(TransTable());
  ExpectLayouts<DbIOFNciSubOp>(SubOpTable());
  ExpectLayouts<DbIOFApproach>(MoveTable("m_ApproachType", false));
  ExpectLayouts<DbIOFRetract>(MoveTable("m_RetractType", true));
  ExpectCompareOrder<Op>(OpTable());
  ExpectCompareOrder<DbIOFNciTransSubProgOp>(TransTable());
  ExpectCompareOrder<DbIOFNciSubOp>(SubOpTable(), {"m_OpId", "m_ToolChangeId", "m_ToolPlaneId", "m_ApproachRpm",
                                                   "m_CSSEnabled", "m_ToolOrientationType", "m_NCPlane",
                                                   "m_Compensation", "m_SpindleSpeed", "m_FeedUnits", "m_FeedRate"});
  ExpectCompareOrder<DbIOFApproach>(MoveTable("m_ApproachType", false), {"m_EndPoint", "m_ReferencePointId"});
  ExpectCompareOrder<DbIOFRetract>(MoveTable("m_RetractType", true), {"m_EndPoint", "m_ReferencePointId"});
  // A transformed operation compares its operation part first.
  auto b = Loaded<DbIOFNciTransSubProgOp>(Layout(TransTable(), 1, All));
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
  const Table before = {OpTable().head, {OpTable().rows.begin(), OpTable().rows.begin() + 38}};
  const std::size_t at = Hex(Layout(before, 5, All)).size();
  Bytes bytes = Hex(Layout(OpTable(), 5, All));
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
  bytes.at(Hex(Layout(before, 5, None)).size() + 5) = 4;  // the first key, 2, becomes 4
  ASSERT_TRUE(LoadAll(*op, bytes));
  EXPECT_TRUE(op->GetSyncMgrDataMap().size() == 1 &&
              op->GetSyncManagerAttributes(SyncMgrDataConfigTypes::Lathe)->begin()->first == L"later");
}

TEST(Operation, DumpsWithTheirFallbacksAndTransformCases) {
  auto op = Loaded<Op>(Layout(OpTable(), 5, All));
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
  auto t = Loaded<DbIOFNciTransSubProgOp>(Layout(TransTable(), 1, All));
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
  EXPECT_FALSE(copied->GetDeadSection() || Loaded<DbIOFNciSubOp>(ToHex(Store(*sub)))->GetDeadSection());
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

// iof validate: the structural integrity of a job. For every record of the file:
//   - every id it names (found through its field list: FieldVisitor::OnId and OnIds)
//     resolves, and to a record of the kind the field requires (kIdFields below; a
//     field not in the table need only resolve); the null id names nothing;
//   - a list holds no item twice;
//   - no record contains itself through its items and sub-lists (a cycle);
//   - a stream is named by the document (the file's first);
//   - a stream's first and last tool change are in its tool-change list.
// Each problem is one line "#id Class: text", in id order; a file without a document
// gives the line "#0 -: the file holds no document". Every check is linear in the size
// of the file and none recurses: a hostile file cannot make it loop or overflow the
// stack.
#include "Commands.h"

#include <iof/DbIOFBase.h>
#include <iof/DbIOFDocument.h>
#include <iof/DbIOFList.h>
#include <iof/DbIOFStream.h>
#include <iof/FieldVisitor.h>
#include <quarp/DbMgr.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <iostream>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

namespace IofTool {

namespace {

// The record kinds each id field must name, for every record class with id fields. A
// field inside a group is named by the group and the member ("m_Map.value").
struct IdField {
  std::string_view field;
  std::initializer_list<std::uint64_t> codes;  // the record must contain one of these types
  const char* kind;                            // for the message
};
constexpr std::uint64_t kAnyIof = 0x5100, kList = 0x5110, kStream = 0x5111, kPlane = 0x5114, kToolChange = 0x5116,
                        kOperation = 0x5121, kSubProgRef = 0x5150, kCannedGroove = 0x5160, kThread = 0x5161,
                        kDrill = 0x5162, kRotary = 0x5164, kJobSetup = 0x5170, kPartSpindle = 0x5172,
                        kStockDef = 0x5173, kChuckDef = 0x5174, kReferencePoint = 0x5175, kMachineInfo = 0x5176;
const IdField kIdFields[] = {
    {"m_SubLists", {kList}, "a list"},        // every record
    {"m_Items", {kAnyIof}, "an IOF record"},  // every list
    {"m_Streams", {kStream}, "a stream"},     // the document
    {"m_JobSetupId", {kJobSetup}, "a job setup"},
    {"m_MachineInfoId", {kMachineInfo}, "a machine information"},
    {"m_ToolChangeList", {kToolChange}, "a tool change"},  // the stream
    {"m_FirstToolChgId", {kToolChange}, "a tool change"},
    {"m_LastToolChgId", {kToolChange}, "a tool change"},
    {"m_ToolPlaneList", {kPlane}, "a plane"},
    {"m_DefaultReferenceReturnPositionId", {kReferencePoint}, "a reference point"},
    {"m_CannedProgId", {kDrill, kThread, kCannedGroove}, "a canned cycle"},  // the operation
    {"m_NextToolChg", {kToolChange}, "a tool change"},
    {"m_PrevToolChg", {kToolChange}, "a tool change"},
    {"m_RotaryId", {kRotary}, "a rotary"},
    {"m_ReferencePositionId", {kReferencePoint}, "a reference point"},
    {"m_OpId", {kOperation}, "an operation"},  // the sub-operation
    {"m_ToolChangeId", {kToolChange}, "a tool change"},
    {"m_ToolPlaneId", {kPlane}, "a plane"},
    {"m_ReferencePointId", {kReferencePoint}, "a reference point"},  // approach and retract
    {"m_PlaneDbId", {kPlane}, "a plane"},                            // the tool-plane change
    {"m_ReferencedPlaneId", {kPlane}, "a plane"},                    // the plane reference
    {"m_matchedSubRefId", {kSubProgRef}, "a sub-program reference"},
    {"m_RefPosId", {kReferencePoint}, "a reference point"},  // the turret
    {"m_StockDefId", {kStockDef}, "a stock definition"},     // the part spindle
    {"m_ChuckDefId", {kChuckDef}, "a chuck definition"},
    {"m_Map.value", {kPartSpindle}, "a part spindle"},  // the part spindle map
    // Resolve only: m_ArcCSDbId (its kind is the writer's) and m_LatheCannedTurnIdList.
};
// The plane reference's "none" is the id with all bits set.
constexpr Quarp::DbId kAllBits{~std::uint64_t{0}};

std::string Id(Quarp::DbId id) { return "#" + std::to_string(id.Value()); }
std::string ClassOf(const Quarp::DbBase& record) { return record.GetClass().ToUtf8(); }

// Lists each id field to `check` with its name (prefixed by its group's).
class IdFields : public IOF::FieldVisitor {
 public:
  using Check = std::function<void(const std::string& field, std::span<const Quarp::DbId> ids)>;
  explicit IdFields(Check check) : m_Check(std::move(check)) {}

  void OnId(const char* n, Quarp::DbId v) override { m_Check(Name(n), std::span<const Quarp::DbId>(&v, 1)); }
  void OnIds(const char* n, std::span<const Quarp::DbId> ids) override { m_Check(Name(n), ids); }
  void OnBeginGroup(const char* n, std::size_t) override { m_Groups.emplace_back(n); }
  void OnEndGroup() override { m_Groups.pop_back(); }
  void OnBeginEntry() override {}
  void OnEndEntry() override {}
  void OnBool(const char*, bool) override {}
  void OnInt(const char*, std::int64_t) override {}
  void OnUInt(const char*, std::uint64_t) override {}
  void OnDouble(const char*, double) override {}
  void OnString(const char*, const CString&) override {}
  void OnPoint(const char*, const IOF::GmPoint3D&) override {}
  void OnVector(const char*, const IOF::GmVector3D&) override {}
  void OnMatrix(const char*, const IOF::GmXformMat3D&) override {}
  void OnMovePoint(const char*, const IOF::UtIofMovePoint&) override {}
  void OnAxisMotionMap(const char*, const IOF::UtAxisMotionMap&) override {}
  void OnBytes(const char*, std::span<const std::uint8_t>) override {}
  void OnAttributes(const char*, const IOF::UtIOFAttribMap&) override {}

 private:
  std::string Name(const char* n) const { return m_Groups.empty() ? n : m_Groups.back() + "." + n; }
  Check m_Check;
  std::vector<std::string> m_Groups;
};

class Validator {
 public:
  explicit Validator(const Quarp::DbMgr& mgr)
      : m_Mgr(mgr), m_End(mgr.GetNextId().Value()), m_InCycle(m_End), m_Seen(m_End), m_Twice(m_End) {}

  std::vector<std::string> Run() {
    FindCycles();
    const IOF::DbIOFDocument* doc = nullptr;
    for (std::uint64_t v = 1; v < m_End && !doc; ++v) doc = dynamic_cast<const IOF::DbIOFDocument*>(Iof(v));
    if (!doc) m_Problems.push_back("#0 -: the file holds no document");
    for (std::uint64_t v = 1; v < m_End; ++v) {
      if (const IOF::DbIOFBase* record = Iof(v)) Check(*record, doc);
    }
    return std::move(m_Problems);
  }

 private:
  const IOF::DbIOFBase* Iof(std::uint64_t v) const {
    return dynamic_cast<const IOF::DbIOFBase*>(m_Mgr.Lookup(Quarp::DbId(v)));
  }
  const IOF::DbIOFList* List(std::uint64_t v) const { return dynamic_cast<const IOF::DbIOFList*>(Iof(v)); }
  void Problem(const IOF::DbIOFBase& record, const std::string& text) {
    m_Problems.push_back(Id(record.GetId()) + " " + ClassOf(record) + ": " + text);
  }

  void Check(const IOF::DbIOFBase& record, const IOF::DbIOFDocument* doc) {
    IdFields fields([&](const std::string& field, std::span<const Quarp::DbId> ids) {
      const auto entry =
          std::find_if(std::begin(kIdFields), std::end(kIdFields), [&](const IdField& f) { return f.field == field; });
      for (const Quarp::DbId id : ids) {
        if (id.IsNull() || (field == "m_ReferencedPlaneId" && id == kAllBits)) continue;
        const Quarp::DbBase* named = m_Mgr.Lookup(id);
        if (!named) {
          Problem(record, field + " names " + Id(id) + ", which does not exist");
        } else if (entry != std::end(kIdFields) &&
                   std::none_of(entry->codes.begin(), entry->codes.end(),
                                [&](std::uint64_t code) { return named->ContainsType(code); })) {
          Problem(record, field + " names " + Id(id) + ", a " + ClassOf(*named) + ", not " + entry->kind);
        }
      }
    });
    record.VisitFields(fields);
    if (const auto* list = dynamic_cast<const IOF::DbIOFList*>(&record)) Duplicates(*list);
    if (m_InCycle[record.GetId().Value()]) Problem(record, "contains itself through its items and sub-lists");
    const auto* stream = dynamic_cast<const IOF::DbIOFStream*>(&record);
    if (!stream) return;
    const auto& named = doc ? doc->GetStreams() : Quarp::UtSArrayEx<Quarp::DbId>();
    if (std::find(named.begin(), named.end(), stream->GetId()) == named.end()) {
      Problem(record, "is a stream the document does not name");
    }
    const auto& tools = stream->GetToolChangeList();
    for (const auto& [field, id] : {std::pair{"m_FirstToolChgId", stream->GetFirstToolChgId()},
                                    std::pair{"m_LastToolChgId", stream->GetLastToolChgId()}}) {
      if (!id.IsNull() && std::find(tools.begin(), tools.end(), id) == tools.end()) {
        Problem(record, std::string(field) + " names " + Id(id) + ", which is not in its tool-change list");
      }
    }
  }

  // Each id the list holds more than once, once.
  void Duplicates(const IOF::DbIOFList& list) {
    const auto stamp = static_cast<std::uint32_t>(list.GetId().Value());
    std::unordered_set<std::uint64_t> seenBeyond, twiceBeyond;  // ids no record has
    for (const auto* item = list.GetHead(); item; item = item->GetNext()) {
      const std::uint64_t v = item->GetId().Value();
      const bool again = v < m_End ? std::exchange(m_Seen[v], stamp) == stamp : !seenBeyond.insert(v).second;
      if (!again) continue;
      const bool first = v < m_End ? std::exchange(m_Twice[v], stamp) != stamp : twiceBeyond.insert(v).second;
      if (first) Problem(list, "holds " + Id(item->GetId()) + " twice");
    }
  }

  // The records that lie on a cycle of "contains" (a list its items, any record its
  // sub-lists): Tarjan's strongly connected components, with a stack of its own.
  void FindCycles() {
    std::vector<std::uint32_t> index(m_End, 0), low(m_End, 0);
    std::vector<bool> onStack(m_End, false);
    std::vector<std::uint64_t> components;
    struct Frame {
      std::uint64_t v;
      int sub;                           // next sub-list
      const IOF::DbIOFList::Item* item;  // next item
    };
    std::vector<Frame> frames;
    std::uint32_t next = 1;
    const auto enter = [&](std::uint64_t v) {
      index[v] = low[v] = next++;
      components.push_back(v);
      onStack[v] = true;
      const IOF::DbIOFList* list = List(v);
      frames.push_back({v, 0, list ? list->GetHead() : nullptr});
    };
    for (std::uint64_t root = 1; root < m_End; ++root) {
      if (index[root] != 0 || !Iof(root)) continue;
      enter(root);
      while (!frames.empty()) {
        Frame& f = frames.back();
        const IOF::DbIOFBase& record = *Iof(f.v);
        std::uint64_t w = 0;
        if (f.sub < record.GetSubLists().GetSize()) {
          w = record.GetSubLists()[f.sub++].Value();
        } else if (f.item) {
          w = f.item->GetId().Value();
          f.item = f.item->GetNext();
        } else {
          const std::uint64_t v = f.v;
          frames.pop_back();
          if (!frames.empty()) low[frames.back().v] = std::min(low[frames.back().v], low[v]);
          if (low[v] == index[v]) {  // v roots a component: a cycle when it has more than v
            const auto first = std::find(components.rbegin(), components.rend(), v).base() - 1;
            const bool cycle = components.end() - first > 1;
            for (auto it = first; it != components.end(); ++it) {
              onStack[*it] = false;
              m_InCycle[*it] = m_InCycle[*it] || cycle;
            }
            components.erase(first, components.end());
          }
          continue;
        }
        if (w == f.v) m_InCycle[w] = true;  // contains itself directly
        if (w == 0 || w >= m_End || !Iof(w)) continue;
        if (index[w] == 0) {
          enter(w);  // `f` is not used after this
        } else if (onStack[w]) {
          low[f.v] = std::min(low[f.v], index[w]);
        }
      }
    }
  }

  const Quarp::DbMgr& m_Mgr;
  std::uint64_t m_End;  // ids are below this
  std::vector<bool> m_InCycle;
  std::vector<std::uint32_t> m_Seen, m_Twice;  // the list that last saw an id (twice)
  std::vector<std::string> m_Problems;
};

}  // namespace

int RunValidate(const std::string& file, std::ostream& out) {
  Quarp::DbMgr mgr;
  if (!LoadFile(file, mgr)) return kTrouble;
  const std::vector<std::string> problems = Validator(mgr).Run();
  for (const std::string& p : problems) out << p << "\n";
  return problems.empty() ? kOk : kFound;
}

}  // namespace IofTool

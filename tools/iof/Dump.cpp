// iof dump: one line per record in program order, as text or as JSON Lines.
#include "Commands.h"
#include "Walk.h"

#include <iof/FieldVisitor.h>
#include <iof/GmPoint3D.h>
#include <iof/GmVector3D.h>
#include <iof/GmXformMat3D.h>
#include <iof/UtAttribute.h>
#include <iof/UtAxisMotionMap.h>
#include <iof/UtIofMovePoint.h>
#include <quarp/DbMgr.h>
#include <quarp/UtArchive.h>

#include <nlohmann/json.hpp>

#include <iostream>
#include <string>
#include <vector>

namespace IofTool {

namespace {

// Turns a record's fields into a JSON object: points and vectors as [x, y, z], matrices
// as four rows, move points as their values and presence flags, byte blocks as hex.
class JsonFields : public IOF::FieldVisitor {
 public:
  nlohmann::ordered_json fields = nlohmann::ordered_json::object();

  // Groups become arrays of objects, one per entry.
  void OnBeginGroup(const char* n, std::size_t) override {
    m_Groups.push_back({n, nlohmann::ordered_json::array(), std::move(fields)});
  }
  void OnBeginEntry() override { fields = nlohmann::ordered_json::object(); }
  void OnEndEntry() override { m_Groups.back().entries.push_back(std::move(fields)); }
  void OnEndGroup() override {
    Group g = std::move(m_Groups.back());
    m_Groups.pop_back();
    fields = std::move(g.outer);
    fields[g.name] = std::move(g.entries);
  }

  void OnBool(const char* n, bool v) override { fields[n] = v; }
  void OnInt(const char* n, std::int64_t v) override { fields[n] = v; }
  void OnUInt(const char* n, std::uint64_t v) override { fields[n] = v; }
  void OnDouble(const char* n, double v) override { fields[n] = v; }
  void OnId(const char* n, Quarp::DbId v) override { fields[n] = v.Value(); }
  void OnString(const char* n, const CString& v) override { fields[n] = v.ToUtf8(); }
  void OnPoint(const char* n, const IOF::GmPoint3D& v) override { fields[n] = {v.x, v.y, v.z}; }
  void OnVector(const char* n, const IOF::GmVector3D& v) override { fields[n] = {v[0], v[1], v[2]}; }
  void OnMatrix(const char* n, const IOF::GmXformMat3D& v) override {
    nlohmann::ordered_json rows = nlohmann::ordered_json::array();
    for (int i = 0; i < v.GetNumRows(); ++i) {
      nlohmann::ordered_json row = nlohmann::ordered_json::array();
      for (int j = 0; j < v.GetNumCols(); ++j) row.push_back(v(i, j));
      rows.push_back(row);
    }
    fields[n] = rows;
  }
  void OnMovePoint(const char* n, const IOF::UtIofMovePoint& v) override {
    std::vector<double> values;
    std::vector<bool> set;
    v.GetAllVals(values, set);
    fields[n] = {{"values", values}, {"set", set}};
  }
  void OnAxisMotionMap(const char* n, const IOF::UtAxisMotionMap& v) override {
    nlohmann::ordered_json entries = nlohmann::ordered_json::array();
    IOF::AxisType axis{};
    IOF::AxisMotionType type{};
    double value = 0;
    for (int i = 0; v.GetMotion(i, axis, type, value); ++i) {
      entries.push_back({{"axis", static_cast<int>(axis)}, {"type", static_cast<int>(type)}, {"value", value}});
    }
    fields[n] = entries;
  }
  void OnIds(const char* n, std::span<const Quarp::DbId> ids) override {
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const Quarp::DbId id : ids) list.push_back(id.Value());
    fields[n] = list;
  }
  void OnBytes(const char* n, std::span<const std::uint8_t> bytes) override {
    static const char kDigits[] = "0123456789abcdef";
    std::string hex;
    for (const std::uint8_t b : bytes) {
      hex += kDigits[b >> 4];
      hex += kDigits[b & 15];
    }
    fields[n] = hex;
  }
  void OnAttributes(const char* n, const IOF::UtIOFAttribMap& v) override {
    nlohmann::ordered_json attrs = nlohmann::ordered_json::object();
    for (const auto& [key, item] : v) {
      const std::string k = key.ToUtf8();
      if (const auto* b = dynamic_cast<const IOF::UtIOFAttribItemBool*>(item)) {
        attrs[k] = b->GetData();
      } else if (const auto* i = dynamic_cast<const IOF::UtIOFAttribItemInt*>(item)) {
        attrs[k] = i->GetData();
      } else if (const auto* u = dynamic_cast<const IOF::UtIOFAttribItemUInt64*>(item)) {
        attrs[k] = u->GetData();
      } else if (const auto* d = dynamic_cast<const IOF::UtIOFAttribItemDbl*>(item)) {
        attrs[k] = d->GetData();
      } else if (const auto* s = dynamic_cast<const IOF::UtIOFAttribItemCString*>(item)) {
        attrs[k] = s->GetData().ToUtf8();
      } else {
        attrs[k] = nullptr;
      }
    }
    fields[n] = attrs;
  }

 private:
  struct Group {
    std::string name;
    nlohmann::ordered_json entries;
    nlohmann::ordered_json outer;  // the object the group belongs to
  };
  std::vector<Group> m_Groups;
};

std::string ClassOf(const Visit& v) { return v.record ? v.record->GetClass().ToUtf8() : std::string("(missing)"); }

// A record's text without the trailing line breaks some texts carry.
std::string Text(const IOF::DbIOFBase& record) {
  std::string text = record.ToIOFString().ToUtf8();
  while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.pop_back();
  return text;
}

}  // namespace

int RunDump(const DumpOptions& options, std::ostream& out) {
  Quarp::DbMgr mgr;
  if (!LoadFile(options.file, mgr)) return kDataError;
  Walker walker(mgr);
  const bool found = walker.Walk(options.stream, [&](const Visit& v) {
    if (options.json) {
      nlohmann::ordered_json line;
      line["id"] = v.id.Value();
      line["class"] = ClassOf(v);
      line["depth"] = v.depth;
      if (v.record) {
        JsonFields fields;
        v.record->VisitFields(fields);
        line["fields"] = std::move(fields.fields);
      } else {
        line["fields"] = nullptr;
      }
      out << line.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << "\n";
      return;
    }
    out << std::string(static_cast<std::size_t>(v.depth) * 2, ' ') << "#" << v.id.Value() << " " << ClassOf(v);
    if (v.record) out << ": " << Text(*v.record);
    out << "\n";
  });
  if (!found) {
    std::cerr << "iof: '" << options.file << "' has no stream " << *options.stream << "\n";
    return kDataError;
  }
  walker.ReportProblems();
  return kOk;
}

}  // namespace IofTool

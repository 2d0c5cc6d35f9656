// iof diff: the differences between two IOF files, as the library's comparison manager
// finds them.
//
// Each line names the two records concerned ("#12 DbIOFList", "-" for none, "(missing)"
// for an id that names no record) and the text, in the order of the manager's walk:
//   - the manager's structural differences, its list as it is (some texts are recorded
//     twice: that is the manager's way, kept);
//   - unless --structural, for each pair of records the walk compared and found to
//     differ, the record's own report ("Difference Detected: m_FeedRate - 100 vs 120").
// Texts are shown without their trailing line breaks. --json writes one object per
// line: kind ("structure" or "field"), id1, class1, id2, class2, text.
//
// One change to the manager's walk: a job setup or machine information that neither
// document names is not compared (the manager would record a failure and compare no
// streams, so that two files without a job setup could never be equal).
#include "Commands.h"

#include <iof/DbIOFBase.h>
#include <iof/DbIOFDocument.h>
#include <iof/UtIofCompareMgr.h>
#include <quarp/DbMgr.h>
#include <zolt/Diagnostics.h>

#include <nlohmann/json.hpp>

#include <iostream>
#include <string>
#include <vector>

namespace IofTool {

namespace {

class ToolCompare : public IOF::UtIofCompareMgr {
 public:
  bool CompareJobSetup() override {
    if (m_Doc1->GetJobSetupID().IsNull() && m_Doc2->GetJobSetupID().IsNull()) return true;
    return UtIofCompareMgr::CompareJobSetup();
  }

 protected:
  bool CompareMachineInfo() override {
    if (m_Doc1->GetMachineInfoID().IsNull() && m_Doc2->GetMachineInfoID().IsNull()) return true;
    return UtIofCompareMgr::CompareMachineInfo();
  }
};

struct Line {
  const char* kind;
  Quarp::DbId id1, id2;
  std::string text;
};

// The text of a line, without the trailing line breaks some texts carry.
std::string Trimmed(const CString& text) {
  std::string s = text.ToUtf8();
  while (!s.empty() && s.back() == '\n') s.pop_back();
  return s;
}

std::string ClassOf(const Quarp::DbMgr& mgr, Quarp::DbId id) {
  if (id.IsNull()) return "-";
  const Quarp::DbBase* record = mgr.Lookup(id);
  return record ? record->GetClass().ToUtf8() : std::string("(missing)");
}

Quarp::DbPtr<IOF::DbIOFDocument> FirstDocument(Quarp::DbMgr& mgr, const std::string& file) {
  Quarp::DbPtr<IOF::DbIOFDocument> doc;
  Quarp::DbId at;
  if (!mgr.GetNext(doc, at, 0)) std::cerr << "iof: '" << file << "' holds no IOF document\n";
  return doc;
}

}  // namespace

int RunDiff(const DiffOptions& options, std::ostream& out) {
  Quarp::DbMgr left, right;
  if (!LoadFile(options.left, left) || !LoadFile(options.right, right)) return kTrouble;
  const auto doc1 = FirstDocument(left, options.left);
  const auto doc2 = FirstDocument(right, options.right);
  if (doc1.IsNull() || doc2.IsNull()) return kTrouble;

  ToolCompare cmp;
  std::vector<std::pair<std::size_t, Line>> reports;  // each after the items found before it
  if (!options.structural) {
    cmp.SetPairObserver([&](const IOF::DbIOFBase& a, const IOF::DbIOFBase& b, bool equal, const CString& report) {
      if (equal) return;
      std::string text = report.ToUtf8();
      for (std::size_t at = 0; at < text.size();) {  // a report holds one line; split if more
        const std::size_t end = std::min(text.find('\n', at), text.size());
        reports.push_back({cmp.GetDifferences().size(), {"field", a.GetId(), b.GetId(), text.substr(at, end - at)}});
        at = end + 1;
      }
    });
  }
  // A stream id that does not resolve reaches the host's null-pointer handler, which
  // reports to the assertion handler and throws: one line here instead of two.
  struct Quiet {
    Zolt::Diagnostics::AssertHandler previous =
        Zolt::Diagnostics::SetAssertHandler([](const char*, int, const char*, const char*) {});
    ~Quiet() { Zolt::Diagnostics::SetAssertHandler(std::move(previous)); }
  };
  try {
    const Quiet quiet;
    cmp.Compare(doc1, doc2);
  } catch (const Quarp::DbNullAccess&) {
    std::cerr << "iof: a stream that a document names does not exist; the comparison stopped (see iof validate)\n";
    return kTrouble;
  }

  std::vector<Line> lines;
  auto report = reports.begin();
  const auto& items = cmp.GetDifferences();
  for (std::size_t i = 0; i <= items.size(); ++i) {
    for (; report != reports.end() && report->first == i; ++report) lines.push_back(report->second);
    if (i < items.size())
      lines.push_back({"structure", items[i].GetId1(), items[i].GetId2(), Trimmed(items[i].GetText())});
  }
  for (const Line& l : lines) {
    const std::string class1 = ClassOf(left, l.id1), class2 = ClassOf(right, l.id2);
    if (options.json) {
      nlohmann::ordered_json j{{"kind", l.kind},       {"id1", l.id1.Value()}, {"class1", class1},
                               {"id2", l.id2.Value()}, {"class2", class2},     {"text", l.text}};
      out << j.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << "\n";
    } else {
      const auto side = [](Quarp::DbId id, const std::string& cls) {
        return id.IsNull() ? cls : "#" + std::to_string(id.Value()) + " " + cls;
      };
      out << side(l.id1, class1) << " vs " << side(l.id2, class2) << ": " << l.text << "\n";
    }
  }
  return lines.empty() ? kOk : kFound;
}

}  // namespace IofTool

// The program-order walk the tool's commands share: the document, then each stream and
// its items; a list item that is itself a list is followed by its own items, and a
// record's sub-lists by theirs, one level deeper each time.
#pragma once

#include <iof/DbIOFBase.h>
#include <quarp/DbMgr.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace IofTool {

struct Visit {
  const IOF::DbIOFBase* record;  // null when the id does not resolve
  Quarp::DbId id;
  int depth;
  int stream;  // the stream number of the stream being walked, or -1 above the streams
};

class Walker {
 public:
  explicit Walker(const Quarp::DbMgr& mgr) : m_Mgr(mgr) {}

  // Walks the first document (and only the stream numbered `stream` when given). A file
  // without a document is walked record by record in id order. Returns false when the
  // requested stream does not exist.
  bool Walk(std::optional<int> stream, const std::function<void(const Visit&)>& visit);

  // Ids that did not resolve or that would have closed a cycle, as sentences.
  const std::vector<std::string>& Problems() const noexcept { return m_Problems; }
  // Writes each problem as a warning line to stderr.
  void ReportProblems() const;

 private:
  void Record(Quarp::DbId id, int depth, int stream, const std::function<void(const Visit&)>& visit);
  void Items(const IOF::DbIOFBase& list, int depth, int stream, const std::function<void(const Visit&)>& visit);

  const Quarp::DbMgr& m_Mgr;
  std::vector<Quarp::DbId> m_Path;  // records being walked, to stop at cycles
  std::vector<std::string> m_Problems;
};

}  // namespace IofTool

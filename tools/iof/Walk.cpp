#include "Walk.h"

#include "Commands.h"

#include <iof/DbIOFDocument.h>
#include <iof/DbIOFList.h>
#include <iof/DbIOFStream.h>

#include <quarp/UtArchive.h>

#include <algorithm>
#include <iostream>

namespace IofTool {

namespace {
constexpr int kMaxDepth = 64;
}

bool LoadFile(const std::string& file, Quarp::DbMgr& mgr) {
  try {
    if (mgr.Read(Quarp::UtString(file.c_str()), true) == Quarp::DbErr::Ok) return true;
    std::cerr << "iof: " << mgr.GetLastErrorText() << "\n";
  } catch (const Quarp::UtArchiveException& e) {
    std::cerr << "iof: cannot read '" << file << "': " << e.what() << "\n";
  }
  return false;
}

void Walker::ReportProblems() const {
  for (const std::string& problem : m_Problems) std::cerr << "iof: warning: " << problem << "\n";
}

bool Walker::Walk(std::optional<int> stream, const std::function<void(const Visit&)>& visit) {
  Quarp::DbId at;
  Quarp::DbCPtr<IOF::DbIOFDocument> doc(nullptr);
  if (!m_Mgr.GetNext(doc, at, 0)) {
    Quarp::DbBaseCPtr any(nullptr);
    Quarp::DbId id;
    while (m_Mgr.GetNext(any, id, 0)) {
      visit({dynamic_cast<const IOF::DbIOFBase*>(any.Get()), id, 0, -1});
    }
    return !stream.has_value();
  }
  visit({doc.Get(), doc.GetId(), 0, -1});
  if (stream) {
    const Quarp::DbId id = doc->GetStreamById(*stream);
    if (id.IsNull()) return false;
    Record(id, 1, *stream, visit);
    return true;
  }
  Quarp::DbCPtr<IOF::DbIOFStream> s(nullptr);
  for (const Quarp::DbId id : doc->GetStreams()) {
    Record(id, 1, m_Mgr.Get(s, id, 0) ? s->GetStreamId() : -1, visit);
  }
  return true;
}

void Walker::Record(Quarp::DbId id, int depth, int stream, const std::function<void(const Visit&)>& visit) {
  Quarp::DbBaseCPtr p(nullptr);
  const IOF::DbIOFBase* record = m_Mgr.Get(p, id, 0) ? dynamic_cast<const IOF::DbIOFBase*>(p.Get()) : nullptr;
  if (!record) {
    m_Problems.push_back("record " + std::to_string(id.Value()) + " is referred to but does not exist");
    visit({nullptr, id, depth, stream});
    return;
  }
  if (std::find(m_Path.begin(), m_Path.end(), id) != m_Path.end() || depth > kMaxDepth) {
    m_Problems.push_back("record " + std::to_string(id.Value()) + " contains itself; not followed again");
    return;
  }
  visit({record, id, depth, stream});
  m_Path.push_back(id);
  for (const Quarp::DbId sub : record->GetSubLists()) Record(sub, depth + 1, stream, visit);
  Items(*record, depth + 1, stream, visit);
  m_Path.pop_back();
}

void Walker::Items(const IOF::DbIOFBase& record, int depth, int stream,
                   const std::function<void(const Visit&)>& visit) {
  const auto* list = dynamic_cast<const IOF::DbIOFList*>(&record);
  if (!list) return;
  for (const auto* item = list->GetHead(); item; item = item->GetNext()) Record(item->GetId(), depth, stream, visit);
}

}  // namespace IofTool

#include "Walk.h"

#include "Commands.h"

#include <afx/Afx.h>
#include <iof/DbIOFDocument.h>
#include <iof/DbIOFStream.h>
#include <iof/DbIOFTypeMgr.h>
#include <iof/StreamIteratorBase.h>

#include <quarp/UtArchive.h>

#include <algorithm>
#include <span>
#include <iostream>
#include <utility>

namespace IofTool {

namespace {

constexpr int kMaxDepth = 64;  // sub-lists walked by iterators of their own, nested

// A stack entry the walk has shown, with its record and the depth of its line.
struct Shown {
  const IOF::DbIOFList::Item* item;
  const IOF::DbIOFBase* record;
  int depth;
};

std::string Named(Quarp::DbId id) { return "record " + std::to_string(id.Value()); }

}  // namespace

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

bool Walker::Walk(std::optional<int> stream, const Visitor& visit) {
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
  if (!stream) {
    // The job setup (with the records it holds) and the machine, as a comparison sees
    // them: before the streams.
    for (const Quarp::DbId id : {doc->GetJobSetupID(), doc->GetMachineInfoID()}) {
      if (id.IsNull()) continue;
      const IOF::DbIOFBase* record = Find(id);
      Record(record, id, 1, -1, nullptr, visit);
      if (const auto* list = dynamic_cast<const IOF::DbIOFList*>(record)) Items(*list, 1, -1, visit);
    }
  }
  if (stream) {
    const Quarp::DbId id = doc->GetStreamById(*stream);
    if (id.IsNull()) return false;
    Stream(id, *stream, visit);
    return true;
  }
  Quarp::DbCPtr<IOF::DbIOFStream> s(nullptr);
  for (const Quarp::DbId id : doc->GetStreams()) Stream(id, m_Mgr.Get(s, id, 0) ? s->GetStreamId() : -1, visit);
  return true;
}

const IOF::DbIOFBase* Walker::Find(Quarp::DbId id) const {
  return dynamic_cast<const IOF::DbIOFBase*>(m_Mgr.Lookup(id));
}

void Walker::Missing(Quarp::DbId id, int depth, int stream, const Visitor& visit) {
  m_Problems.push_back(Named(id) + " is referred to but does not exist");
  visit({nullptr, id, depth, stream});
}

void Walker::Stream(Quarp::DbId id, int number, const Visitor& visit) {
  const IOF::DbIOFBase* record = Find(id);
  if (!record) return Missing(id, 1, number, visit);
  const auto* list = dynamic_cast<const IOF::DbIOFList*>(record);
  Record(record, id, 1, number, nullptr, visit);
  if (list) Items(*list, 1, number, visit);
}

void Walker::Record(const IOF::DbIOFBase* record, Quarp::DbId id, int depth, int stream, const IOF::DbIOFList* entered,
                    const Visitor& visit) {
  if (!record) return Missing(id, depth, stream, visit);
  visit({record, id, depth, stream});
  for (const Quarp::DbId subId : record->GetSubLists()) {
    const IOF::DbIOFBase* sub = Find(subId);
    const auto* list = dynamic_cast<const IOF::DbIOFList*>(sub);
    if (!sub) {
      Missing(subId, depth + 1, stream, visit);
    } else if (list == entered) {
      continue;  // the iterator walks it
    } else if (!list) {
      visit({sub, subId, depth + 1, stream});
    } else if (std::find(m_Open.begin(), m_Open.end(), list) != m_Open.end() || depth > kMaxDepth) {
      m_Problems.push_back(Named(subId) + " contains itself; not followed again");
    } else {
      visit({sub, subId, depth + 1, stream});
      Items(*list, depth + 1, stream, visit);
    }
  }
}

void Walker::Items(const IOF::DbIOFList& list, int depth, int stream, const Visitor& visit) {
  Quarp::DbCPtr<IOF::DbIOFList> pointer(nullptr);
  if (!m_Mgr.Get(pointer, list.GetId(), 0)) return;
  ToolIterator it(pointer);
  const std::size_t open = m_Open.size();
  std::vector<Shown> shown;
  bool tooDeep = false;
  // Shows what the iterator stands on: every stack entry not shown yet, from the top,
  // each sub-list the walk entered with its own line.
  const auto show = [&] {
    const auto& whole = it.GetSubListStack();
    if (whole.size() > kMaxNesting && !tooDeep) {
      tooDeep = true;
      m_Problems.push_back(Named(list.GetId()) + " nests lists more than " + std::to_string(kMaxNesting) +
                           " deep; the deeper records are not shown");
    }
    const std::span<IOF::DbIOFList::Item* const> stack(whole.data(), std::min(whole.size(), kMaxNesting));
    std::size_t k = 0;
    while (k < shown.size() && k < stack.size() && shown[k].item == stack[k]) ++k;
    shown.resize(k);
    m_Open.resize(open);
    for (std::size_t j = 0; j < k; ++j) m_Open.push_back(stack[j]->GetList());
    for (; k < stack.size(); ++k) {
      const IOF::DbIOFList::Item* item = stack[k];
      const IOF::DbIOFList* owner = item->GetList();
      m_Open.push_back(owner);
      int at = k == 0 ? depth + 1 : shown[k - 1].depth + 1;
      if (k > 0 && owner != shown[k - 1].record) {  // a sub-list of the record above
        visit({owner, owner->GetId(), at, stream});
        ++at;
      }
      const IOF::DbIOFBase* record = Find(item->GetId());
      const bool last = k + 1 == stack.size();
      const IOF::DbIOFList* entered = last ? nullptr : stack[k + 1]->GetList();
      const auto* asList = dynamic_cast<const IOF::DbIOFList*>(record);
      // A list the iterator stands in already is yielded and not entered again.
      const auto mine = m_Open.begin() + static_cast<std::ptrdiff_t>(open);
      if (last && asList && asList->GetHead() && std::find(mine, m_Open.end(), asList) != m_Open.end()) {
        m_Problems.push_back(Named(item->GetId()) + " contains itself; not followed again");
      }
      Record(record, item->GetId(), at, stream, entered, visit);
      shown.push_back({item, record, at});
    }
  };
  ToolIterator::Step step = ToolIterator::Step::First;
  for (;;) {
    ToolIterator::Error error;
    const Quarp::DbId id = it.Move(step, error);
    step = ToolIterator::After(error);
    if (error == ToolIterator::Error::TwoSubListsOfOneKind) {
      m_Problems.push_back(Named(it) + " has two sub-lists of one kind; each is shown");
    }
    if (error == ToolIterator::Error::None && id.IsNull()) break;
    show();  // an id that does not resolve shows as missing
  }
  m_Open.resize(open);
}

}  // namespace IofTool

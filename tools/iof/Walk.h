// The program-order walk the tool's commands share: the document, its job setup (with
// the records it holds) and machine, then each stream walked with the library's stream
// iterator (every type, every sub-list kind), one level deeper for each list entered.
//
// The iterator yields a record that carries a sub-list only when it does not enter one;
// otherwise it goes straight to the sub-list's records. The walk shows such a record
// anyway, the way a reader expects: its line, then its sub-list's line, then the
// sub-list's records, one and two levels deeper (the records come from the iterator's
// stack). A record's other sub-lists, which the iterator leaves alone (it enters one per
// record), are walked with an iterator of their own right after the record's line, as
// are the sub-lists of list records (an operation's), which the iterator never enters.
#pragma once

#include <afx/Afx.h>
#include <iof/DbIOFBase.h>
#include <iof/DbIOFList.h>
#include <iof/DbIOFTypeMgr.h>
#include <iof/StreamIteratorBase.h>
#include <quarp/DbMgr.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace IofTool {

// How deeply nested lists the tool's walks follow. Deeper records (only a hostile or broken
// file nests lists this deep) are left out with a warning, so that a walk stays linear in
// the file's size instead of comparing every level of the stack at every step.
constexpr std::size_t kMaxNesting = 1000;

// The library's iterator over every type (and by default every sub-list kind). Its errors end the
// move as the library's do, without the message box: the walk reports them as warnings
// and goes on.
class ToolIterator : public IOF::StreamIteratorBase {
 public:
  enum class Error { None, NotFound, TwoSubListsOfOneKind };

  explicit ToolIterator(Quarp::DbCPtr<IOF::DbIOFList> list, int subListMask = -1)
      : StreamIteratorBase(std::move(list), IOF::DbIOFTypeMgr::GetIOFBASEMask(), subListMask) {}

  void ErrorDatabaseEntityNotFoundByIterator() override {
    m_Error = Error::NotFound;
    AfxThrowUserException();
  }
  void ErrorMultiSubListSpecified() override {
    m_Error = Error::TwoSubListsOfOneKind;
    AfxThrowUserException();
  }

  // Past the item whose id does not resolve.
  Quarp::DbId Skip() {
    SkipCurrentItem(false);
    return *this;
  }
  Error TakeError() noexcept { return std::exchange(m_Error, Error::None); }

  enum class Step { First, Next, Skip };
  // One move of a walk: to the first record, to the next, or past the item whose id did
  // not resolve. An error ends the move with the null id and says which in `error`;
  // After(error) is the step that goes on from there.
  Quarp::DbId Move(Step step, Error& error) {
    error = Error::None;
    try {
      return step == Step::First ? GetFirst() : step == Step::Next ? GetNext() : Skip();
    } catch (const CUserException&) {
      error = TakeError();
      return Quarp::DbId();
    }
  }
  static Step After(Error error) noexcept { return error == Error::NotFound ? Step::Skip : Step::Next; }
  using StreamIteratorBase::GetSubListStack;

 private:
  Error m_Error = Error::None;
};

struct Visit {
  const IOF::DbIOFBase* record;  // null when the id does not resolve
  Quarp::DbId id;
  int depth;
  int stream;  // the stream number of the stream being walked, or -1 above the streams
};

class Walker {
 public:
  using Visitor = std::function<void(const Visit&)>;

  explicit Walker(const Quarp::DbMgr& mgr) : m_Mgr(mgr) {}

  // Walks the first document (and only the stream numbered `stream` when given, without
  // the job setup and machine). A file
  // without a document is walked record by record in id order. Returns false when the
  // requested stream does not exist.
  bool Walk(std::optional<int> stream, const Visitor& visit);

  // Ids that did not resolve, records with two sub-lists of one kind, and lists that
  // would have closed a cycle, as sentences.
  const std::vector<std::string>& Problems() const noexcept { return m_Problems; }
  // Writes each problem as a warning line to stderr.
  void ReportProblems() const;

 private:
  void Stream(Quarp::DbId id, int number, const Visitor& visit);
  // The records of `list`, whose own line stands at `depth`.
  void Items(const IOF::DbIOFList& list, int depth, int stream, const Visitor& visit);
  // A record's line, then those of its sub-lists but `entered` (the one the iterator
  // walks).
  void Record(const IOF::DbIOFBase* record, Quarp::DbId id, int depth, int stream, const IOF::DbIOFList* entered,
              const Visitor& visit);
  const IOF::DbIOFBase* Find(Quarp::DbId id) const;
  void Missing(Quarp::DbId id, int depth, int stream, const Visitor& visit);

  const Quarp::DbMgr& m_Mgr;
  std::vector<const IOF::DbIOFList*> m_Open;  // lists the walk stands in, to stop at cycles
  std::vector<std::string> m_Problems;
};

}  // namespace IofTool

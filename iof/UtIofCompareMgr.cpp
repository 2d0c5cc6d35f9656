#include <iof/UtIofCompareMgr.h>

#include <iof/DbIOFJobSetup.h>
#include <iof/DbIOFList.h>
#include <iof/DbIOFMachineInfo.h>
#include <iof/DbIOFStream.h>
#include <iof/DbIOFTypeMgr.h>
#include <iof/StreamIteratorBase.h>
#include <quarp/UtString.h>
#include <zolt/Diagnostics.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <unordered_set>
#include <utility>

namespace IOF {

namespace {

constexpr const char* kAssertSource = "UtIofCompareMgr";

void AssertSetDocs(int line) {
  Zolt::Diagnostics::Details::InvokeCurrentAssertHandler(kAssertSource, line, "IOF::UtIofCompareMgr::SetDocs",
                                                         "IOF::UtIofCompareMgr::SetDocs");
}

// Fetches `id1` from `mgr1` into `p1` and `id2` from `mgr2` into `p2`; true when both
// resolve.
template <class T>
bool FetchBoth(Quarp::DbMgr* mgr1, Quarp::DbId id1, Quarp::DbPtr<T>& p1, Quarp::DbMgr* mgr2, Quarp::DbId id2,
               Quarp::DbPtr<T>& p2) {
  const bool found1 = mgr1 && mgr1->Get(p1, id1, 0);
  const bool found2 = mgr2 && mgr2->Get(p2, id2, 0);
  return found1 && found2;
}

using Pair = std::pair<const DbIOFBase*, const DbIOFBase*>;
struct PairHash {
  std::size_t operator()(const Pair& p) const noexcept {
    const auto a = reinterpret_cast<std::uintptr_t>(p.first);
    const auto b = reinterpret_cast<std::uintptr_t>(p.second);
    return std::hash<std::uintptr_t>()(a * 0x9E3779B97F4A7C15ull ^ b);
  }
};

}  // namespace

// One walk: the parts of pairs still to compare, as an explicit stack (a part is the
// sub-lists or the items of one pair), the records being walked on each side, and the
// pairs walked so far.
struct UtIofCompareMgr::Walk {
  struct Frame {
    enum class Kind : std::uint8_t { SubLists, Items };
    Kind kind;
    bool started = false;
    bool checkLimit = true;  // the limit test before the part starts (a part of a pair's walk)
    bool leaves1 = false;    // the part takes a (b) off the path when it ends
    bool leaves2 = false;
    const DbIOFBase* a = nullptr;
    const DbIOFBase* b = nullptr;
    int index = 0;  // the next sub-list
    const DbIOFList::Item* ia = nullptr;
    const DbIOFList::Item* ib = nullptr;
  };

  std::vector<Frame> frames;
  std::unordered_set<const DbIOFBase*> path1, path2;
  std::unordered_set<Pair, PairHash> walked;
  Quarp::UtMask listMask = DbIOFTypeMgr::GetIOFLISTMask();
  Detail::ClassAnswers answers;  // for listMask

  const Detail::ClassAnswers::Answer& Answer(const Quarp::DbBase& record) const {
    return answers.Get(record, listMask);
  }
  // The IOF record `id` names in `mgr`, or null.
  const DbIOFBase* Resolve(const Quarp::DbMgr* mgr, Quarp::DbId id) const {
    const Quarp::DbBase* record = mgr ? mgr->Lookup(id) : nullptr;
    return record && Answer(*record).isIof ? static_cast<const DbIOFBase*>(record) : nullptr;
  }
  // Schedules a part of the walk of (a, b), putting a and b on the path when asked.
  void Push(Frame::Kind kind, const DbIOFBase& a, const DbIOFBase& b, bool checkLimit, bool entersPath) {
    Frame f;
    f.kind = kind;
    f.checkLimit = checkLimit;
    f.a = &a;
    f.b = &b;
    if (entersPath) {
      f.leaves1 = path1.insert(&a).second;
      f.leaves2 = path2.insert(&b).second;
    }
    frames.push_back(f);
  }
};

// Gives the manager a walk for the duration of a call, or lets it go on with the walk
// of the call it runs in (the steps of Compare() share one).
class UtIofCompareMgr::WalkScope {
 public:
  explicit WalkScope(UtIofCompareMgr& mgr) : m_Mgr(mgr) {
    if (!mgr.m_Walk.walk) {
      m_Own = std::make_unique<Walk>();
      mgr.m_Walk.walk = m_Own.get();
    }
  }
  ~WalkScope() {
    if (m_Own) m_Mgr.m_Walk.walk = nullptr;
  }
  WalkScope(const WalkScope&) = delete;
  WalkScope& operator=(const WalkScope&) = delete;
  Walk& Get() const { return *m_Mgr.m_Walk.walk; }

 private:
  UtIofCompareMgr& m_Mgr;
  std::unique_ptr<Walk> m_Own;
};

UtIofCompareMgr::UtIofCompareMgr() = default;
UtIofCompareMgr::UtIofCompareMgr(const UtIofCompareMgr& other) = default;
UtIofCompareMgr& UtIofCompareMgr::operator=(const UtIofCompareMgr& other) = default;
UtIofCompareMgr::~UtIofCompareMgr() { PurgeDbMgrPtrs(); }

// --- documents ------------------------------------------------------------------------

bool UtIofCompareMgr::SetDocs(const CString& path1, const CString& path2) {
  PurgeDbMgrPtrs();
  m_OwnsDbMgrs = true;
  m_OwnedMgr1 = std::make_shared<Quarp::DbMgr>(false, nullptr, false);
  m_DbMgr1 = m_OwnedMgr1.get();
  if (m_DbMgr1->Read(Quarp::UtString(path1), true) != Quarp::DbErr::Ok) {
    AssertSetDocs(73);
    return false;
  }
  m_OwnedMgr2 = std::make_shared<Quarp::DbMgr>(false, nullptr, false);
  m_DbMgr2 = m_OwnedMgr2.get();
  if (m_DbMgr2->Read(Quarp::UtString(path2), true) != Quarp::DbErr::Ok) {
    AssertSetDocs(82);
    return false;
  }
  Quarp::DbId at1;
  Quarp::DbId at2;
  const bool found1 = m_DbMgr1->GetNext(m_Doc1, at1, 0);
  const bool found2 = m_DbMgr2->GetNext(m_Doc2, at2, 0);
  if (!found1 || !found2) {
    AssertSetDocs(93);
    return false;
  }
  return true;
}

bool UtIofCompareMgr::SetDocs(Quarp::DbPtr<DbIOFDocument> doc1, Quarp::DbPtr<DbIOFDocument> doc2) {
  PurgeDbMgrPtrs();
  m_OwnsDbMgrs = false;
  if (doc1.IsNull()) {
    AssertSetDocs(109);
    return false;
  }
  if (doc2.IsNull()) {
    AssertSetDocs(113);
    return false;
  }
  if (!doc1->ContainsType(DbIOFDocument::kTypeCode) || !doc2->ContainsType(DbIOFDocument::kTypeCode)) return false;
  m_DbMgr1 = doc1->GetDbMgr();
  m_DbMgr2 = doc2->GetDbMgr();
  m_Doc1 = std::move(doc1);
  m_Doc2 = std::move(doc2);
  return true;
}

void UtIofCompareMgr::PurgeDbMgrPtrs() {
  if (!m_OwnsDbMgrs) return;
  m_Doc1.Detach();
  m_Doc2.Detach();
  m_OwnedMgr1.reset();
  m_OwnedMgr2.reset();
  m_DbMgr1 = nullptr;
  m_DbMgr2 = nullptr;
  m_OwnsDbMgrs = false;
}

// --- the steps ----------------------------------------------------------------------

int UtIofCompareMgr::Compare(Quarp::DbPtr<DbIOFDocument> doc1, Quarp::DbPtr<DbIOFDocument> doc2) {
  m_Differences.clear();
  if (!SetDocs(std::move(doc1), std::move(doc2))) {
    m_Differences.emplace_back(Quarp::DbId(), Quarp::DbId(), CString(L"Failed to set documents up."));
    return 0;
  }
  return Compare();
}

int UtIofCompareMgr::Compare() {
  m_Differences.clear();
  const WalkScope scope(*this);  // one walk for all steps: a pair is walked once
  if (CompareObjects(m_Doc1, m_Doc2) && CompareJobSetup() && CompareMachineInfo()) CompareStreams();
  return 0;
}

bool UtIofCompareMgr::CompareDocObjs() { return CompareObjects(m_Doc1, m_Doc2); }

bool UtIofCompareMgr::CompareJobSetup() {
  Quarp::DbPtr<DbIOFJobSetup> setup1;
  Quarp::DbPtr<DbIOFJobSetup> setup2;
  if (FetchBoth(m_DbMgr1, m_Doc1->GetJobSetupID(), setup1, m_DbMgr2, m_Doc2->GetJobSetupID(), setup2)) {
    return CompareObjects(setup1, setup2);
  }
  m_Differences.emplace_back(setup1.GetId(), setup2.GetId(),
                             CString(L"Failed to get job setup object from DbIOFDocument.\n"));
  return false;
}

bool UtIofCompareMgr::CompareMachineInfo() {
  Quarp::DbPtr<DbIOFMachineInfo> info1;
  Quarp::DbPtr<DbIOFMachineInfo> info2;
  if (FetchBoth(m_DbMgr1, m_Doc1->GetMachineInfoID(), info1, m_DbMgr2, m_Doc2->GetMachineInfoID(), info2)) {
    return CompareObjects(info1, info2);
  }
  // Unlike the job setup's, this item names the two documents: intended.
  LogDifference(m_Doc1, m_Doc2, CString(L"Failed to get machine information object from DbIOFDocument.\n"));
  return false;
}

bool UtIofCompareMgr::CompareStreams() {
  const auto& streams1 = m_Doc1->GetStreams();
  const auto& streams2 = m_Doc2->GetStreams();
  if (streams1.GetSize() != streams2.GetSize()) {
    LogDifference(m_Doc1, m_Doc2, CString(L"Stream lists not same size."));
    if (!ContinueCompare()) return false;
  }
  if (streams1.GetSize() == 0) return true;
  bool result = true;
  const int count = std::min(streams1.GetSize(), streams2.GetSize());
  for (int i = 0; i < count; ++i) {
    if (!ContinueCompare() || !result) return result;
    Quarp::DbPtr<DbIOFStream> stream1;
    Quarp::DbPtr<DbIOFStream> stream2;
    if (!FetchBoth(m_DbMgr1, streams1[i], stream1, m_DbMgr2, streams2[i], stream2)) {
      m_Differences.emplace_back(stream1.GetId(), stream2.GetId(),
                                 CString(L"Failed to get stream object from IOFList.\n"));
    }
    // A stream that did not resolve goes on to the host's null-pointer handler: intended.
    result = CompareObjects(stream1, stream2);
  }
  return result;
}

bool UtIofCompareMgr::CompareDocsDeeper() {
  const auto& streams1 = m_Doc1->GetStreams();
  const auto& streams2 = m_Doc2->GetStreams();
  if (streams1.GetSize() != streams2.GetSize()) {
    m_Differences.emplace_back(m_Doc1.GetId(), m_Doc2.GetId(), CString(L"Stream lists not same size."));
    return false;
  }
  const WalkScope scope(*this);
  bool result = true;
  for (int i = 0; i < streams1.GetSize() && result; ++i) {
    Quarp::DbPtr<DbIOFStream> stream1;
    Quarp::DbPtr<DbIOFStream> stream2;
    if (!FetchBoth(m_DbMgr1, streams1[i], stream1, m_DbMgr2, streams2[i], stream2)) {
      m_Differences.emplace_back(streams1[i], streams2[i], CString(L"Failed to get object from IOFList."));
    }
    result = CompareObjects(stream1, stream2);
  }
  return result;
}

// --- the walk -------------------------------------------------------------------------

bool UtIofCompareMgr::CompareObjects(Quarp::DbPtr<DbIOFBase> a, Quarp::DbPtr<DbIOFBase> b) {
  const WalkScope scope(*this);
  Walk& walk = scope.Get();
  const DbIOFBase& left = *a;  // an empty pointer reaches NullAccess
  const DbIOFBase& right = *b;
  const std::size_t base = walk.frames.size();
  if (!Visit(walk, left, right)) return false;
  Run(walk, base);
  return true;  // whatever the sub-lists and items gave
}

bool UtIofCompareMgr::CompareObjSubLists(Quarp::DbPtr<DbIOFBase> a, Quarp::DbPtr<DbIOFBase> b) {
  return WalkPart(false, *a, *b);
}

bool UtIofCompareMgr::CompareIOFLists(Quarp::DbPtr<DbIOFBase> a, Quarp::DbPtr<DbIOFBase> b) {
  return WalkPart(true, *a, *b);
}

bool UtIofCompareMgr::WalkPart(bool items, const DbIOFBase& a, const DbIOFBase& b) {
  const WalkScope scope(*this);
  Walk& walk = scope.Get();
  const std::size_t base = walk.frames.size();
  walk.Push(items ? Walk::Frame::Kind::Items : Walk::Frame::Kind::SubLists, a, b, false, true);
  return Run(walk, base);
}

bool UtIofCompareMgr::Visit(Walk& walk, const DbIOFBase& a, const DbIOFBase& b) {
  if (a.GetType() != b.GetType()) {
    LogTwice(a.GetId(), b.GetId(), L"Objects are of different types.");
    return false;
  }
  CString report;  // the record's verdict is computed and deliberately not kept
  Quarp::DbCPtr<DbIOFBase> other;
  other.AttachEnt(const_cast<DbIOFBase*>(&b));
  const bool equal = a.Compare(other, report);
  if (m_Observer) m_Observer(a, b, equal, report);
  // Only pairs with something to walk are scheduled: sub-lists on either side, or two
  // lists. The walk of any other pair would find nothing.
  const bool lists = walk.Answer(a).isList && walk.Answer(b).inMask && walk.Answer(b).isList;
  if (!lists && !a.HasSubLists() && !b.HasSubLists()) return true;
  // A record already being walked on the current path (a list that contains itself) and
  // a pair walked before (a list shared by several lists) are compared, not walked again.
  if (walk.path1.count(&a) != 0 || walk.path2.count(&b) != 0) return true;
  if (!walk.walked.emplace(&a, &b).second) return true;
  // The items are walked after the sub-lists, each part after a test of the limit.
  walk.Push(Walk::Frame::Kind::Items, a, b, true, true);
  walk.Push(Walk::Frame::Kind::SubLists, a, b, true, false);
  return true;
}

bool UtIofCompareMgr::Run(Walk& walk, std::size_t base) {
  using Kind = Walk::Frame::Kind;
  bool result = true;
  // Ends the top part with `value`.
  const auto end = [&](bool value) {
    const Walk::Frame f = walk.frames.back();
    walk.frames.pop_back();
    if (f.leaves1) walk.path1.erase(f.a);
    if (f.leaves2) walk.path2.erase(f.b);
    if (walk.frames.size() == base) result = value;
  };
  while (walk.frames.size() > base) {
    Walk::Frame& f = walk.frames.back();
    const DbIOFBase& a = *f.a;
    const DbIOFBase& b = *f.b;
    if (!f.started) {
      f.started = true;
      if (f.checkLimit && !ContinueCompare()) {
        end(true);
        continue;
      }
      if (f.kind == Kind::SubLists) {
        if (a.HasSubLists() != b.HasSubLists()) {
          LogDifference(a.GetId(), b.GetId(), CString(L"Objects have different subList status."));
          // The stream message, reused for this case: intended.
          m_Differences.emplace_back(a.GetId(), b.GetId(), CString(L"Stream lists not same size."));
          end(false);
          continue;
        }
        if (!a.HasSubLists()) {
          end(true);
          continue;
        }
      } else {
        const auto answerB = walk.Answer(b);  // a copy: the next lookup may reuse its slot
        if (!answerB.inMask) {
          end(true);
          continue;
        }
        if (!walk.Answer(a).isList || !answerB.isList) {
          end(false);
          continue;
        }
        f.ia = static_cast<const DbIOFList&>(a).GetHead();
        f.ib = static_cast<const DbIOFList&>(b).GetHead();
      }
    }
    Quarp::DbId id1;
    Quarp::DbId id2;
    if (f.kind == Kind::SubLists) {
      const int i = f.index;
      if (i >= std::min(a.GetSubLists().GetSize(), b.GetSubLists().GetSize()) || !ContinueCompare()) {
        end(true);
        continue;
      }
      ++f.index;
      id1 = a.GetSubLists()[i];
      id2 = b.GetSubLists()[i];
    } else {
      if (!f.ib || !f.ia) {
        if (f.ib || f.ia) {
          LogTwice(a.GetId(), b.GetId(), L"IOFLists not same size.");
          end(false);
        } else {
          end(true);
        }
        continue;
      }
      if (!ContinueCompare()) {
        end(true);
        continue;
      }
      id1 = f.ia->GetId();
      id2 = f.ib->GetId();
      f.ia = f.ia->GetNext();
      f.ib = f.ib->GetNext();
    }
    const DbIOFBase* record1 = walk.Resolve(m_DbMgr1, id1);
    const DbIOFBase* record2 = walk.Resolve(m_DbMgr2, id2);
    if (record1 && record2) {
      Visit(walk, *record1, *record2);  // may grow the stack: `f` is not used after it
    } else {
      LogTwice(a.GetId(), b.GetId(), L"Failed to get object from IOFList.");
    }
  }
  return result;
}

// --- recording ------------------------------------------------------------------------

void UtIofCompareMgr::LogDifference(Quarp::DbPtr<DbIOFBase> a, Quarp::DbPtr<DbIOFBase> b, CString text) {
  m_Differences.emplace_back(a.GetId(), b.GetId(), std::move(text));
}

void UtIofCompareMgr::LogDifference(Quarp::DbId id1, Quarp::DbId id2, CString text) {
  m_Differences.emplace_back(id1, id2, std::move(text));
}

void UtIofCompareMgr::LogTwice(Quarp::DbId id1, Quarp::DbId id2, const wchar_t* text) {
  // Once through LogDifference and once appended directly: the doubling is intended and
  // counts in DifferencesFound.
  LogDifference(id1, id2, CString(text));
  m_Differences.emplace_back(id1, id2, CString(text));
}

void UtIofCompareMgr::DumpDiffInfo() const {
  for (int i = 0; i < DifferencesFound(); ++i) {
    const UtIofDiffItem& item = m_Differences[static_cast<std::size_t>(i)];
    CString text;
    // The labels, the doubled parentheses and the "\nn" are kept as they have always been.
    text.Format(L"%d.\tLeftId(%ld)), IRightId(%ld)), %s\nn", i, item.GetId1(), item.GetId2(), item.GetText());
    OnDiffInfoText(text);
    text.Format(L"%d.\tID1(%ld)), ID1(%ld)), %s", i, item.GetId1(), item.GetId2(), item.GetText());
    OnDiffInfoText(text);
  }
}

void UtIofCompareMgr::OnDiffInfoText(const CString& /*text*/) const {}

}  // namespace IOF

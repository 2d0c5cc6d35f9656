// UtIofCompareMgr: compares two IOF documents and collects their structural differences.
//
//   IOF::UtIofCompareMgr cmp;
//   if (cmp.SetDocs(CString(L"a.iof"), CString(L"b.iof"))) {
//     cmp.Compare();                                   // always 0
//     for (const IOF::UtIofDiffItem& d : cmp.GetDifferences()) show(d.ToString(CString()));
//   }
//
// The two documents come from two files that the manager loads into managers of its own
// (SetDocs(path, path); released by PurgeDbMgrPtrs and the destructor), or from two
// documents already in memory (SetDocs(doc, doc)). Compare() walks both databases in
// step: the document records, the job setups, the machine information, then each pair of
// streams, and from every pair of records, depth first, their sub-lists in order (each
// fully) and then, for list records, their items in order. Each pair is compared with the
// record's own Compare, whose verdict and report are computed and deliberately not kept:
// the difference list holds structural differences only (missing records, type
// mismatches, list-size mismatches, a record with sub-lists against one without).
//
// The texts, in the order the walk meets them:
//   "Objects are of different types."        a pair of different type codes; recorded
//                                            twice, and the pair is not walked further
//   "Objects have different subList status." one record has sub-lists, the other none;
//                                            followed by a second item "Stream lists not
//                                            same size." (the stream message reused for
//                                            this case: intended)
//   "Failed to get object from IOFList."     a sub-list or item id that does not resolve
//                                            to an IOF record on either side; twice
//   "IOFLists not same size."                two lists of different lengths; twice, with
//                                            the ids of the two lists
//   "Stream lists not same size."            documents with different stream counts
//   "Failed to get stream object from IOFList.\n", "Failed to get job setup object from
//   DbIOFDocument.\n", "Failed to get machine information object from DbIOFDocument.\n"
//                                            a stream, the job setup or the machine
//                                            information that does not resolve
//   "Failed to set documents up."            Compare(doc, doc) could not use the documents
// The doubled items are intended: DifferencesFound() counts both. Differing sub-list
// counts are not reported (only the common sub-lists are compared).
//
// Stops. Compare() stops at the first of its steps that fails: documents of different
// types, a job setup or a machine information that does not resolve (also when neither
// document names one), and then compares no streams. The stream walk stops after the
// first pair of streams of different types. A stream id that does not resolve is
// recorded and then reaches the host's null-pointer handler (DbRootPtr::NullAccess,
// which throws DbNullAccess out of Compare()); so does Compare() before any SetDocs.
// The difference limit (no limit, -1, in a new manager: there is no setter) is tested
// before each sub-list, each list item and each part of a pair's walk; once the count
// exceeds it the walk stops descending.
//
// Cycles and shared lists. A hostile or broken file can make a list contain itself,
// directly or through its items and sub-lists, or make one list an item of many lists.
// The walk never descends into a record (its sub-lists or its items) that it is already
// walking on the current path, on either side; and it descends into a given pair of
// records at most once per Compare(). Such a pair is compared as records (their Compare,
// shown to the observer) but not walked into again, and nothing extra is recorded for
// it. Files that producers write never share or nest lists that way, so for them the
// difference list is exactly as described above. The walk keeps its own stack on the
// heap: a file nesting lists a million levels deep does not overflow the call stack.
//
// Not part of the classic interface, added for callers: GetDifferences() (the items in
// the order found), SetPairObserver() (each compared pair with its Compare verdict and
// report, the way a file comparison tool shows which field differs), the accessors
// GetDoc1/GetDoc2, and OnDiffInfoText() (where DumpDiffInfo's texts go). The steps are
// virtual so that a tool can adapt one of them.
#pragma once

#include <afx/CString.h>
#include <iof/DbIOFBase.h>
#include <iof/DbIOFDocument.h>
#include <iof/UtIofDiffItem.h>
#include <quarp/DbId.h>
#include <quarp/DbMgr.h>
#include <quarp/DbPtr.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace IOF {

class UtIofCompareMgr {
 public:
  // How deep to compare: stored only, no step reads it.
  enum CompareLevel : std::int32_t { kCompareAll = 0 };

  // Receives each pair of records the walk compares (left, right), the verdict of the
  // left record's Compare and the report it wrote. Not part of the classic interface.
  using PairObserver =
      std::function<void(const DbIOFBase& left, const DbIOFBase& right, bool equal, const CString& report)>;

  UtIofCompareMgr();
  // Copies share the managers that SetDocs(path, path) opened: they stay open until
  // the last copy releases them.
  UtIofCompareMgr(const UtIofCompareMgr& other);
  UtIofCompareMgr& operator=(const UtIofCompareMgr& other);
  virtual ~UtIofCompareMgr();

  // Loads two files into managers of the comparison's own (read-only) and takes the
  // first document of each. A file that does not load or holds no document goes to the
  // host's assertion handler (source "UtIofCompareMgr", lines 73, 82 and 93) and gives
  // false. A record newer than this library makes the load throw UtArchiveException
  // (cause 2), which is passed on.
  bool SetDocs(const CString& path1, const CString& path2);
  // Uses two documents already loaded, in their own managers. A null document goes to
  // the assertion handler (line 109 for the first, 113 for the second); false for a
  // null document or a record that is no document.
  bool SetDocs(Quarp::DbPtr<DbIOFDocument> doc1, Quarp::DbPtr<DbIOFDocument> doc2);

  // Clears the differences and sets the documents up (one item "Failed to set documents
  // up." when that fails), then Compare(). Always 0.
  int Compare(Quarp::DbPtr<DbIOFDocument> doc1, Quarp::DbPtr<DbIOFDocument> doc2);
  // Clears the differences, then: the documents, the job setups, the machine
  // information, the streams, stopping at the first step that fails. Always 0: the
  // result is read through DifferencesFound.
  int Compare();
  int DifferencesFound() const noexcept { return static_cast<int>(m_Differences.size()); }
  // The differences in the order found.
  const std::vector<UtIofDiffItem>& GetDifferences() const noexcept { return m_Differences; }

  CompareLevel GetCompareLevel() const noexcept { return m_CompareLevel; }
  void SetCompareLevel(CompareLevel level) noexcept { m_CompareLevel = level; }

  void SetPairObserver(PairObserver observer) { m_Observer = std::move(observer); }
  const Quarp::DbPtr<DbIOFDocument>& GetDoc1() const noexcept { return m_Doc1; }
  const Quarp::DbPtr<DbIOFDocument>& GetDoc2() const noexcept { return m_Doc2; }

  // CompareObjects of the two documents.
  virtual bool CompareDocObjs();
  // An alternative stream walk that Compare() does not use: "Stream lists not same
  // size." (the document ids) and false for different stream counts; otherwise each
  // pair of streams while the previous pair compared true ("Failed to get object from
  // IOFList." with the two stream ids when either does not resolve); the last result,
  // true for no streams.
  virtual bool CompareDocsDeeper();
  // CompareObjects of the two job setups (DbIOFJobSetup, by the documents' job-setup
  // ids); when either does not resolve, one item with the ids of those that do and
  // false.
  virtual bool CompareJobSetup();

  // Builds, for each item i, the text "%d.\tLeftId(%ld)), IRightId(%ld)), %s\nn" and
  // then "%d.\tID1(%ld)), ID1(%ld)), %s" (i, the two ids, the text); the labels and the
  // "\nn" are kept as they have always been. The texts go to OnDiffInfoText only, a
  // place for a debugger to look.
  void DumpDiffInfo() const;

 protected:
  // The same for the machine information (DbIOFMachineInfo); its failure item names
  // the two documents.
  virtual bool CompareMachineInfo();
  // Stream counts ("Stream lists not same size.", the documents' ids), then each pair of
  // streams by position, while the previous pair compared true and the limit allows.
  virtual bool CompareStreams();
  // Type codes (an empty pointer reaches NullAccess), the records' Compare (verdict
  // discarded), then the pair's sub-lists and items. False only for different types.
  bool CompareObjects(Quarp::DbPtr<DbIOFBase> a, Quarp::DbPtr<DbIOFBase> b);
  // The common sub-lists of the pair, each compared and walked; false when one record
  // has sub-lists and the other none.
  bool CompareObjSubLists(Quarp::DbPtr<DbIOFBase> a, Quarp::DbPtr<DbIOFBase> b);
  // The items of two lists in step. True when b is no list; false, recording nothing,
  // when a is none; false for lists of different lengths.
  bool CompareIOFLists(Quarp::DbPtr<DbIOFBase> a, Quarp::DbPtr<DbIOFBase> b);
  // True while there is no limit or the number of items does not exceed it.
  bool ContinueCompare() const noexcept {
    return m_DiffLimit < 0 || static_cast<int>(m_Differences.size()) <= m_DiffLimit;
  }
  void LogDifference(Quarp::DbPtr<DbIOFBase> a, Quarp::DbPtr<DbIOFBase> b, CString text);
  void LogDifference(Quarp::DbId id1, Quarp::DbId id2, CString text);
  // Only when SetDocs(path, path) opened the managers: detaches the documents, releases
  // both managers and clears the flag.
  void PurgeDbMgrPtrs();
  // Receives each text DumpDiffInfo builds; does nothing here.
  virtual void OnDiffInfoText(const CString& text) const;

  Quarp::DbPtr<DbIOFDocument> m_Doc1;
  Quarp::DbPtr<DbIOFDocument> m_Doc2;
  Quarp::DbMgr* m_DbMgr1 = nullptr;  // the databases the documents live in
  Quarp::DbMgr* m_DbMgr2 = nullptr;
  CompareLevel m_CompareLevel = kCompareAll;
  std::vector<UtIofDiffItem> m_Differences;
  bool m_OwnsDbMgrs = false;  // SetDocs(path, path) opened the managers
  int m_DiffLimit = -1;       // negative: no limit

 private:
  struct Walk;
  // The state of one walk, present while Compare() or a step runs; not copied.
  class WalkRef {
   public:
    WalkRef() = default;
    WalkRef(const WalkRef&) noexcept {}
    WalkRef& operator=(const WalkRef&) noexcept { return *this; }
    Walk* walk = nullptr;
  };
  class WalkScope;

  // The managers SetDocs(path, path) opened, shared with copies.
  std::shared_ptr<Quarp::DbMgr> m_OwnedMgr1;
  std::shared_ptr<Quarp::DbMgr> m_OwnedMgr2;
  PairObserver m_Observer;
  WalkRef m_Walk;

  void LogTwice(Quarp::DbId id1, Quarp::DbId id2, const wchar_t* text);
  // Compares a pair and, unless it stands on the walk's path or was walked before,
  // schedules its sub-lists and items. False for different types.
  bool Visit(Walk& walk, const DbIOFBase& a, const DbIOFBase& b);
  // CompareIOFLists (items) or CompareObjSubLists on their own.
  bool WalkPart(bool items, const DbIOFBase& a, const DbIOFBase& b);
  // Runs the scheduled parts until the walk is back at `base` frames; the result of
  // the last part that ended at that level.
  bool Run(Walk& walk, std::size_t base);
};

}  // namespace IOF

// A small job for the comparison and validation tests: a document with a job setup, a
// machine information and stream 1, and the records a test adds.
#pragma once

#include "TestSupport.h"

#include <iof/DbIOFDocument.h>
#include <iof/DbIOFJobSetup.h>
#include <iof/DbIOFList.h>
#include <iof/DbIOFMachineInfo.h>
#include <iof/DbIOFMotionBlock.h>
#include <iof/DbIOFNciLinear.h>
#include <quarp/DbMgr.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace TestSupport {

// A document with a job setup, a machine information and stream 1 (ids 1 to 4), and
// the records added after them. The base job adds moves 5 and 6 in operation list 11,
// which carries retract list 10 (move 9); move 6 carries motion sub-list 8 (block 7).
struct Job {
  using DbId = Quarp::DbId;
  std::unique_ptr<Quarp::DbMgr> mgr = std::make_unique<Quarp::DbMgr>();
  Quarp::DbPtr<IOF::DbIOFDocument> doc = IOF::DbIOFDocument::Create();
  DbId stream;

  explicit Job(bool base = false) {
    mgr->Add(doc);
    doc->SetJobSetupID(Add(IOF::DbIOFJobSetup::Create()));
    doc->SetMachineInfoID(Add(IOF::DbIOFMachineInfo::Create()));
    stream = doc->AddStreamToList(1);
    if (!base) return;
    const DbId m1 = Move(), m2 = Move(), block = Add(IOF::DbIOFMotionBlock::Create());
    Sub(m2, List(IOF::DbIOFList::kMotionSubList, {block}));
    const DbId retract = List(IOF::DbIOFList::kRetractBlock, {Move()});
    Sub(List(IOF::DbIOFList::kOperation, {m1, m2}), retract);
    Push(stream, {DbId(11)});
  }
  DbId Add(Quarp::DbRootPtr p) { return mgr->Add(p); }
  DbId Move(double feed = 100) {
    auto line = IOF::DbIOFNciLinear::Create();
    line->SetFeedRate(feed);
    return Add(line);
  }
  template <class T = IOF::DbIOFList>
  Quarp::DbPtr<T> Get(DbId id) {
    Quarp::DbPtr<T> p;
    EXPECT_TRUE(mgr->Get(p, id, 0)) << id;
    return p;
  }
  DbId List(int kind, const std::vector<DbId>& items) { return Push(Add(IOF::DbIOFList::Create(kind)), items); }
  DbId Push(DbId list, const std::vector<DbId>& items) {
    for (const DbId id : items) Get(list)->PushBack(id);
    return list;
  }
  void Sub(DbId owner, DbId list) { EXPECT_TRUE(Get<IOF::DbIOFBase>(owner)->AddSubList(list)); }
  // Writes the job to a fresh file and returns its path.
  std::string Write(const std::string& name) {
    const std::string path = TempPath(name);
    EXPECT_EQ(mgr->Write(Quarp::UtString(path.c_str())), Quarp::DbErr::Ok);
    return path;
  }
};

}  // namespace TestSupport

// OperationIterator over a stream of real operations (DbIOFNciOperation and its
// transformed sub-program subclass) among the other records of a stream.
#include "CompareJob.h"

#include <iof/DbIOFNciOperation.h>
#include <iof/DbIOFNciSubOp.h>
#include <iof/DbIOFNciTransSubProgOp.h>
#include <iof/OperationIterator.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

using Quarp::DbId;

TEST(OperationIterator, YieldsExactlyTheOperationsInOrder) {
  TestSupport::Job job;
  const DbId op1 = job.Add(IOF::DbIOFNciOperation::Create());
  const DbId sub = job.Add(IOF::DbIOFNciSubOp::Create());
  job.Push(sub, {job.Move()});
  job.Push(op1, {job.Move(), sub});
  const DbId op2 = job.Add(IOF::DbIOFNciTransSubProgOp::Create());
  const DbId op3 = job.Add(IOF::DbIOFNciOperation::Create());
  job.Push(job.stream, {job.Move(), op1, job.Move(), op2, job.List(IOF::DbIOFList::kOperation, {}), op3, job.Move()});

  Quarp::DbCPtr<IOF::DbIOFList> stream;
  ASSERT_TRUE(job.mgr->Get(stream, job.stream, 0));
  IOF::OperationIterator it(stream);
  std::vector<DbId> forwards, backwards;
  for (DbId id = it.GetFirst(); !id.IsNull(); id = ++it) forwards.push_back(id);
  for (DbId id = it.GetLast(); !id.IsNull(); id = --it) backwards.push_back(id);
  EXPECT_EQ(forwards, (std::vector<DbId>{op1, op2, op3}));
  EXPECT_EQ(backwards, (std::vector<DbId>{op3, op2, op1}));
}

}  // namespace

// OperationIterator: the operations of a stream (DbIOFNciOperation and its subclasses).
//
//   IOF::OperationIterator ops(stream);
//   for (Quarp::DbId id = ops.GetFirst(); !id.IsNull(); id = ++ops) ...
//
// The base walk admits the operation type only (DbIOFTypeMgr::GetIOFNCIOPERATIONMask)
// with sub-list mask 2: an operation, itself a list, is yielded when the walk arrives at
// it; the next move descends into its items and, finding no operations there, climbs
// out to the next operation. A record is yielded when it can be fetched as a
// DbIOFNciOperation (the host's typed fetch fails for any other class). Not positioned
// by its constructor: call GetFirst or GetLast.
#pragma once

#include <iof/StreamIteratorBase.h>

namespace IOF {

class OperationIterator : public StreamIteratorBase {
 public:
  explicit OperationIterator(Quarp::DbCPtr<DbIOFList> list);

  Quarp::DbId GetFirst() override;
  Quarp::DbId GetLast() override;
  Quarp::DbId GetNext() override;
  Quarp::DbId GetPrev() override;

 private:
  bool CurrentItemPassesFilter() const;
  // GetNext / GetPrev: Iterate until an operation stands or the walk ends.
  Quarp::DbId Step(bool backward);
};

}  // namespace IOF

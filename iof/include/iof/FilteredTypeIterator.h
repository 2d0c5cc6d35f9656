// FilteredTypeIterator: a stream iterator that yields only the records of the types in
// a filter mask.
//
//   IOF::FilteredTypeIterator moves(stream, IOF::DbIOFTypeMgr::GetIOFNCIBASEMOVEMask());
//   for (Quarp::DbId id = moves.GetFirst(); !id.IsNull(); id = ++moves) ...
//
// The base walk admits every IOF type with sub-list mask 15, so it enters the eligible
// sub-lists of every record; the filter then picks, from the leaves and the list items
// the walk reaches, the records whose ContainsType(filterMask, true) is true. (Setting
// the base type mask instead, with SetIOFTypeMask, would also stop the descent at the
// records that do not match.) Not positioned by its constructor: call GetFirst or
// GetLast.
#pragma once

#include <iof/StreamIteratorBase.h>

namespace IOF {

class FilteredTypeIterator : public StreamIteratorBase {
 public:
  FilteredTypeIterator(Quarp::DbCPtr<DbIOFList> list, Quarp::UtMask filterMask);

  Quarp::DbId GetFirst() override;
  Quarp::DbId GetLast() override;
  Quarp::DbId GetNext() override;
  Quarp::DbId GetPrev() override;

 private:
  // The current record resolves and ContainsType(m_FilterMask, true).
  bool CurrentItemPassesFilter() const;
  // GetNext / GetPrev: the base move until a record passes or the walk ends.
  Quarp::DbId Step(bool backward);

  Quarp::UtMask m_FilterMask;
  Detail::ClassAnswers m_FilterAnswers;  // for m_FilterMask
};

}  // namespace IOF

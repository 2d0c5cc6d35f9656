// MotionBlockIterator: the motion blocks of a stream (DbIOFMotionBlock and its
// subclasses), found in motion sub-lists and basic approach blocks.
//
//   IOF::MotionBlockIterator blocks(stream);           // already on the first block
//   for (Quarp::DbId id = blocks; !id.IsNull(); id = ++blocks) ...
//
// A FilteredTypeIterator with the filter DbIOFTypeMgr::GetIOFMOTIONBLOCKMask() and
// sub-list mask 48 (list kinds 0x10 "MotionSubList" and 0x20 "Basic Approach Block"),
// positioned by its constructor with GetFirst.
#pragma once

#include <iof/FilteredTypeIterator.h>

namespace IOF {

class MotionBlockIterator : public FilteredTypeIterator {
 public:
  explicit MotionBlockIterator(Quarp::DbCPtr<DbIOFList> list);
};

}  // namespace IOF

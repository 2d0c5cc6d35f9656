// DbIOFEventBase: the common base of the events a stream holds between moves and
// operations (sync, dwell, cutter compensation change, feed-unit change, clamp). Type
// IOFEVENTBASE (0x5130), an abstract level that adds no fields.
//
// Archive (version 0), after the record base: nothing of its own.
//
// It has no comparison of its own: DbIOFBase::Compare (the name only, with no type
// check) serves it and every event that does not add one.
#pragma once

#include <iof/DbIOFBase.h>

namespace IOF {

class DbIOFEventBase : public DbIOFBase {
  IOF_ABSTRACT_RECORD(DbIOFEventBase, DbIOFBase)

 public:
  static constexpr unsigned kVersion = 0;

 protected:
  DbIOFEventBase() = default;
};

}  // namespace IOF

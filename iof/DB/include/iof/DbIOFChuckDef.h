// DbIOFChuckDef: the chuck definition of a part spindle (type IOFCHUCKDEF, 0x5174). It
// has no fields of its own yet: it names the chuck (its IOF name) and gives the spindle
// a record to refer to. DbIOFPartSpindle::Initialize creates one.
//
// Archive (version 0): the record base only. Loading does not check the stored version
// (kept for compatibility with files written by older versions, which never checked it).
//
// Comparison: the record base (the name) only, with no type check of its own: intended.
// Dump: "DbIOFChuckDef Name: %s" with the IOF name.
#pragma once

#include <iof/DbIOFBase.h>

namespace IOF {

class DbIOFChuckDef : public DbIOFBase {
  IOF_RECORD(DbIOFChuckDef, DbIOFBase)

 public:
  static constexpr unsigned kVersion = 0;
  static constexpr bool kChecksVersion = false;  // intended: see the top of this file

  CString ToIOFString() const override;

 protected:
  DbIOFChuckDef() = default;
};

}  // namespace IOF

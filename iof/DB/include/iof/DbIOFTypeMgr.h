// DbIOFTypeMgr: the IOF type registry.
//
// One static instance, constructed while libiof loads, registers every IOF type code and
// name with the host's type manager (Quarp::GetDbTypeMgr()) in table order and keeps
// each type's index and single-type mask. Iterators and filters select records by these
// masks with ContainsType(mask, true), which also accepts derived types.
//
//   int idx = IOF::DbIOFTypeMgr::GetIOFNCILINEARIdx();
//   const Quarp::UtMask& moves = IOF::DbIOFTypeMgr::GetIOFNCIBASEMOVEMask();
//
// Indices are assigned by the host and are valid only within the process; they are
// never written to files (files carry class names).
#pragma once

#include <iof/IofTypes.h>
#include <quarp/UtMask.h>

namespace IOF {

class DbIOFTypeMgr {
 public:
  // Registers every type the first time; later constructions change nothing.
  DbIOFTypeMgr();

#define IOF_X_ACCESSORS(NAME)                                    \
  static int Get##NAME##Idx() noexcept { return m_##NAME##Idx; } \
  static const Quarp::UtMask& Get##NAME##Mask() noexcept { return m_##NAME##Mask; }
#define IOF_X_ACCESSORS_REGISTERED(NAME, Class, code) IOF_X_ACCESSORS(NAME)
  IOF_REGISTERED_TYPES(IOF_X_ACCESSORS_REGISTERED)
  IOF_NEVER_REGISTERED_NAMES(IOF_X_ACCESSORS)
#undef IOF_X_ACCESSORS_REGISTERED
#undef IOF_X_ACCESSORS

 private:
#define IOF_X_STATE(NAME)   \
  static int m_##NAME##Idx; \
  static Quarp::UtMask m_##NAME##Mask;
#define IOF_X_STATE_REGISTERED(NAME, Class, code) IOF_X_STATE(NAME)
  IOF_REGISTERED_TYPES(IOF_X_STATE_REGISTERED)
  IOF_NEVER_REGISTERED_NAMES(IOF_X_STATE)
#undef IOF_X_STATE_REGISTERED
#undef IOF_X_STATE

  static bool s_Init;  // run-once guard
};

}  // namespace IOF

#include <iof/DbIOFTypeMgr.h>

#include <quarp/UtTypeMgr.h>

namespace IOF {

// The state comes before the instance below, so it is initialised first.
#define IOF_X_DEFINE(NAME)              \
  int DbIOFTypeMgr::m_##NAME##Idx = -1; \
  Quarp::UtMask DbIOFTypeMgr::m_##NAME##Mask;
#define IOF_X_DEFINE_REGISTERED(NAME, Class, code) IOF_X_DEFINE(NAME)
IOF_REGISTERED_TYPES(IOF_X_DEFINE_REGISTERED)
IOF_NEVER_REGISTERED_NAMES(IOF_X_DEFINE)
#undef IOF_X_DEFINE_REGISTERED
#undef IOF_X_DEFINE

bool DbIOFTypeMgr::s_Init = true;

DbIOFTypeMgr::DbIOFTypeMgr() {
  if (!s_Init) return;
  s_Init = false;
  Quarp::DbTypeMgr& host = Quarp::GetDbTypeMgr();
#define IOF_X_REGISTER(NAME, Class, code)                     \
  m_##NAME##Idx = host.AddType(code, Quarp::UtString(#NAME)); \
  m_##NAME##Mask.Copy(host.GetMaskEx(code, 0));
  IOF_REGISTERED_TYPES(IOF_X_REGISTER)
#undef IOF_X_REGISTER
}

namespace {
// Registers the types while the library loads.
const DbIOFTypeMgr s_TypeMgr;
}  // namespace

}  // namespace IOF

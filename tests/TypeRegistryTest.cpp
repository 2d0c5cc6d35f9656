// The IOF type registry: every type registered once, in table order, with a single-type
// mask; the never-registered names stay -1 and empty.
#include <iof/DbIOFTypeMgr.h>
#include <quarp/UtTypeMgr.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct Registered {
  const char* name;
  std::uint64_t code;
  int index;
  const Quarp::UtMask* mask;
};

std::vector<Registered> Table() {
  std::vector<Registered> rows;
#define ROW(NAME, Class, code) \
  rows.push_back({#NAME, code, IOF::DbIOFTypeMgr::Get##NAME##Idx(), &IOF::DbIOFTypeMgr::Get##NAME##Mask()});
  IOF_REGISTERED_TYPES(ROW)
#undef ROW
  return rows;
}

TEST(TypeRegistry, RegistersEveryTypeInTableOrderWithItsOwnBit) {
  const std::vector<Registered> rows = Table();
  ASSERT_EQ(rows.size(), 54u);
  const Quarp::DbTypeMgr& host = Quarp::GetDbTypeMgr();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const Registered& r = rows[i];
    SCOPED_TRACE(r.name);
    ASSERT_GE(r.index, 0);
    if (i > 0) {
      EXPECT_EQ(r.index, rows[i - 1].index + 1);
    }
    EXPECT_EQ(host.GetIndex(r.code), r.index);
    ASSERT_NE(host.GetName(r.code), nullptr);
    EXPECT_EQ(host.GetName(r.code)->ToUtf8(), r.name);
    EXPECT_EQ(r.mask->Count(), 1);
    EXPECT_TRUE(r.mask->IsSet(r.index));
  }
  EXPECT_EQ(IOF::DbIOFTypeMgr::GetIOFNCILINEARIdx(), IOF::DbIOFTypeMgr::GetIOFBASEIdx() + 4);
}

TEST(TypeRegistry, NeverRegisteredNamesAndUnregisteredCodes) {
  EXPECT_EQ(IOF::DbIOFTypeMgr::GetIOFCOOLANTIdx(), -1);
  EXPECT_TRUE(IOF::DbIOFTypeMgr::GetIOFCOOLANTMask().IsEmpty());
#define CHECK_NEVER(NAME)                                      \
  EXPECT_EQ(IOF::DbIOFTypeMgr::Get##NAME##Idx(), -1) << #NAME; \
  EXPECT_TRUE(IOF::DbIOFTypeMgr::Get##NAME##Mask().IsEmpty()) << #NAME;
  IOF_NEVER_REGISTERED_NAMES(CHECK_NEVER)
#undef CHECK_NEVER
  // The five classes with a code but no registered name are unknown to the host.
#define CHECK_UNREGISTERED(Class, code) EXPECT_EQ(Quarp::GetDbTypeMgr().GetIndex(code), -1) << #Class;
  IOF_UNREGISTERED_TYPES(CHECK_UNREGISTERED)
#undef CHECK_UNREGISTERED
}

TEST(TypeRegistry, ASecondConstructionChangesNothing) {
  const int count = Quarp::GetDbTypeMgr().GetCount();
  const int linear = IOF::DbIOFTypeMgr::GetIOFNCILINEARIdx();
  const Quarp::UtMask mask = IOF::DbIOFTypeMgr::GetIOFNCILINEARMask();
  IOF::DbIOFTypeMgr again;
  (void)again;
  EXPECT_EQ(Quarp::GetDbTypeMgr().GetCount(), count);
  EXPECT_EQ(IOF::DbIOFTypeMgr::GetIOFNCILINEARIdx(), linear);
  EXPECT_EQ(IOF::DbIOFTypeMgr::GetIOFNCILINEARMask(), mask);
}

TEST(TypeRegistry, HostRegistryKeepsTheFirstRegistrationOfACode) {
  Quarp::UtTypeMgr types;
  EXPECT_EQ(types.AddType(0x10, Quarp::UtString(L"A")), 0);
  EXPECT_EQ(types.AddType(0x20, Quarp::UtString(L"B")), 1);
  EXPECT_EQ(types.AddType(0x10, Quarp::UtString(L"C")), 0);
  EXPECT_EQ(*types.GetName(0x10), L"A");
  EXPECT_EQ(types.GetIndex(0x30), -1);
  const Quarp::UtMask both = types.GetMaskEx(0x10, 0x20, 0);
  EXPECT_TRUE(both.IsSet(0));
  EXPECT_TRUE(both.IsSet(1));
  const Quarp::UtMask stop = types.GetMaskEx(0x10, 0, 0x20);
  EXPECT_FALSE(stop.IsSet(1));
  EXPECT_FALSE(stop.IsSet(-1));
}

}  // namespace

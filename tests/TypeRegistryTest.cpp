// The IOF type registry: every type registered once, in table order, with a single-type
// mask; the never-registered names stay -1 and empty. And every class name registered
// for loading loads from a file.
#include "RegisteredClasses.h"

#include <iof/DbIOFTypeMgr.h>
#include <quarp/DbMgr.h>
#include <quarp/DbPtr.h>
#include <quarp/UtArchive.h>
#include <quarp/UtSerialize.h>
#include <quarp/UtTypeMgr.h>

#include <gtest/gtest.h>

#include <algorithm>
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

// Every class name the library registers for loading comes back from a file: each record
// class as a record of a whole database file, each other serialisable class as an object
// of an archive (written with WriteObject and read with ReadObject by its name).
TEST(ClassNames, EveryRegisteredClassLoadsFromAFile) {
  const auto& names = RegisteredClasses::kNames;
  Quarp::DbMgr mgr;
  std::vector<Quarp::DbId> ids;
  Quarp::UtArchive objects(Quarp::UtArchive::Store);
  std::vector<std::string> others;
  for (const char* name : names) {
    const Quarp::UtSerializeClass* cls = Quarp::UtSerializeFind(name);
    ASSERT_NE(cls, nullptr) << name << " is not registered";
    Quarp::UtObject* made = cls->factory();
    ASSERT_NE(made, nullptr) << name;
    EXPECT_STREQ(made->GetObjectClassName(), name);
    if (auto* record = dynamic_cast<Quarp::DbBase*>(made)) {
      Quarp::DbBasePtr ptr;
      ptr.AttachEnt(record);
      ids.push_back(mgr.Add(ptr));
    } else {
      objects.WriteObject(made);
      others.push_back(name);
      delete made;
    }
  }
  std::vector<std::uint8_t> file;
  ASSERT_EQ(mgr.WriteToMemory(file), Quarp::DbErr::Ok) << mgr.GetLastErrorText();
  Quarp::DbMgr back;
  ASSERT_EQ(back.ReadFromMemory(file), Quarp::DbErr::Ok) << back.GetLastErrorText();
  Quarp::DbBaseCPtr any;
  std::size_t i = 0;
  for (const char* name : names) {
    if (std::find(others.begin(), others.end(), name) != others.end()) continue;
    ASSERT_TRUE(back.Get(any, ids.at(i++), 0)) << name;
    EXPECT_STREQ(any->GetObjectClassName(), name);
  }
  Quarp::UtArchive in(Quarp::UtArchive::Load, objects.GetBytes());
  for (const std::string& name : others) {
    Quarp::UtObject* read = nullptr;
    in.ReadObject(read);
    ASSERT_NE(read, nullptr) << name;
    EXPECT_EQ(read->GetObjectClassName(), name);
    delete read;
  }
  EXPECT_EQ(in.GetRemaining(), 0u);
  EXPECT_EQ(ids.size() + others.size(), 66u);
}

}  // namespace

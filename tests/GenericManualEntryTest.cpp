// Generic codes and manual entries: texts, the byte block, archive bytes, the version 0
// manual-entry layout, the comparison chains through the NCI base, and round trips.
#include "RecordingVisitor.h"
#include "TestSupport.h"

#include <iof/DbIOFList.h>
#include <iof/DbIOFNciGeneric.h>
#include <iof/DbIOFNciManualEntry.h>
#include <iof/DbIOFTypeMgr.h>

#include <gtest/gtest.h>

#include <functional>

using namespace IOF;
using TestSupport::Bytes;
using TestSupport::Hex;
using TestSupport::ToHex;

namespace {

// Class, NCI-base and record-base versions (each 0); empty name, attributes, sub-lists.
const std::string kHead = "00 00 00  00 00 00 00  00 00 00 00 00  00";
// The NCI base of a record in no operation with no time: m_OwnerOpId -1, m_Time 0.
const std::string kNoOwnerNoTime = "FF FF FF FF  00 00 00 00 00 00 00 00";

TEST(DbIOFNciManualEntry, Texts) {
  struct Case {
    const wchar_t* comment;
    bool asCode, withMove, readOnly;
    const wchar_t* text;
  };
  const Case cases[] = {
      {L"", false, false, false, L"G1005  - OutAs: Comment, Include With Move: No, Read Only When Posting: No"},
      {L"CHECK PART", true, false, false,
       L"G1005 CHECK PART - OutAs: Code, Include With Move: No, Read Only When Posting: No"},
      {L"M01", false, true, false, L"G1005 M01 - OutAs: Comment, Include With Move: Yes, Read Only When Posting: No"},
      {L"M01", true, true, true, L"G1005 M01 - OutAs: Code, Include With Move: Yes, Read Only When Posting: Yes"},
  };
  for (const Case& c : cases) {
    auto entry = DbIOFNciManualEntry::Create();
    entry->SetComment(c.comment);
    entry->SetOutputCommentAsCode(c.asCode);
    entry->SetIncludeWithMove(c.withMove);
    entry->SetReadOnlyWhenPosting(c.readOnly);
    EXPECT_EQ(entry->ToIOFString(), c.text);
  }
}

TEST(DbIOFNciGeneric, TextAndDefaults) {
  auto generic = DbIOFNciGeneric::Create();
  EXPECT_EQ(generic->ToIOFString(), L"G0 IOF NCI Generic Object");  // the NCI base default G-code
  EXPECT_EQ(generic->GetOperationId(), -1);
  EXPECT_EQ(generic->GetGenericArray().GetGrowBy(), 10);
  generic->SetGCode(1000);
  EXPECT_EQ(generic->ToIOFString(), L"G1000 IOF NCI Generic Object");
  EXPECT_EQ(DbIOFNciManualEntry::Create()->GetGCode(), 1005);
}

TEST(DbIOFNciGeneric, GenericBlock) {
  auto generic = DbIOFNciGeneric::Create();
  unsigned char out[4] = {0xEE, 0xEE, 0xEE, 0xEE};
  EXPECT_EQ(generic->GetGenericBlock(nullptr), 0);
  EXPECT_EQ(generic->GetGenericBlock(out), 0);
  EXPECT_EQ(out[0], 0xEE);  // nothing copied from an empty block

  const unsigned char data[3] = {0x01, 0x80, 0xFF};
  generic->SetGenericBlock(3, data);
  EXPECT_EQ(generic->GetGenericBlock(nullptr), 3);  // the size, nothing copied
  EXPECT_EQ(generic->GetGenericBlock(out), 3);
  EXPECT_EQ(Bytes(out, out + 4), Hex("01 80 FF EE"));

  const unsigned char shorter[1] = {0x42};
  generic->SetGenericBlock(1, shorter);  // replaces, never appends
  EXPECT_EQ(generic->GetGenericBlock(out), 1);
  EXPECT_EQ(out[0], 0x42);

  generic->SetGenericBlock(0, nullptr);  // empties without reading the source
  EXPECT_EQ(generic->GetGenericBlock(nullptr), 0);
  EXPECT_EQ(generic->GetGenericArray().GetGrowBy(), 10);  // the growth step is kept
}

TEST(DbIOFNciGeneric, ArchiveBytes) {
  auto generic = DbIOFNciGeneric::Create();
  generic->SetGCode(7);
  generic->SetTime(0.5);
  const unsigned char data[2] = {0xAB, 0x01};
  generic->SetGenericBlock(2, data);
  const Bytes bytes = TestSupport::Store(*generic);
  EXPECT_EQ(ToHex(bytes), ToHex(Hex(kHead + "07 00 00 00  FF FF FF FF"  // m_GCode, m_OwnerOpId
                                            "00 00 00 00 00 00 E0 3F"   // m_Time
                                            "00"                        // byte array version
                                            "02 00 00 00 00 00 00 00"   // count
                                            "0A 00 00 00 00 00 00 00"   // growth step
                                            "AB 01")));

  // On load the array takes the stored count and growth step.
  Bytes stepFour = bytes;
  stepFour[stepFour.size() - 10] = 4;
  auto back = DbIOFNciGeneric::Create();
  ASSERT_TRUE(TestSupport::LoadAll(*back, stepFour));
  EXPECT_EQ(back->GetGCode(), 7);
  EXPECT_EQ(back->GetTime(), 0.5);
  EXPECT_EQ(back->GetGenericArray().GetGrowBy(), 4);
  unsigned char out[2] = {};
  ASSERT_EQ(back->GetGenericBlock(out), 2);
  EXPECT_EQ(Bytes(out, out + 2), Hex("AB 01"));

  // An empty block is its version, a zero count and the step.
  auto empty = DbIOFNciGeneric::Create();
  EXPECT_EQ(ToHex(TestSupport::Store(*empty)), ToHex(Hex(kHead + "00 00 00 00" + kNoOwnerNoTime +
                                                         "00  00 00 00 00 00 00 00 00  0A 00 00 00 00 00 00 00")));
}

TEST(DbIOFNciManualEntry, ArchiveBytes) {
  auto entry = DbIOFNciManualEntry::Create();
  entry->SetComment(L"AB");
  entry->SetReadOnlyWhenPosting(true);
  entry->SetIncludeWithMove(true);
  const Bytes bytes = TestSupport::Store(*entry);
  EXPECT_EQ(ToHex(bytes), ToHex(Hex("01 00 00  00 00 00 00  00 00 00 00 00  00"  // version 1 first
                                    "ED 03 00 00" +                              // m_GCode 1005
                                    kNoOwnerNoTime +
                                    "01"                        // m_ReadOnlyWhenPosting, the newest, first
                                    "02 00 00 00  41 00 42 00"  // m_Comment
                                    "00"                        // m_OutputCommentAsCode
                                    "01")));                    // m_IncludeWithMove
  auto back = DbIOFNciManualEntry::Create();
  ASSERT_TRUE(TestSupport::LoadAll(*back, bytes));
  CString report;
  EXPECT_TRUE(back->Compare(entry, report)) << report;
  EXPECT_EQ(back->ToIOFString(), L"G1005 AB - OutAs: Comment, Include With Move: Yes, Read Only When Posting: Yes");
}

TEST(DbIOFNciManualEntry, Version0StartsWithTheComment) {
  const Bytes v0 = Hex(kHead + "ED 03 00 00" + kNoOwnerNoTime +
                       "03 00 00 00  4D 00 30 00 31 00"  // m_Comment "M01"
                       "01"                              // m_OutputCommentAsCode
                       "00");                            // m_IncludeWithMove
  auto entry = DbIOFNciManualEntry::Create();
  ASSERT_TRUE(TestSupport::LoadAll(*entry, v0));
  EXPECT_EQ(entry->GetComment(), L"M01");
  EXPECT_TRUE(entry->GetOutputCommentAsCode());
  EXPECT_FALSE(entry->GetIncludeWithMove());
  EXPECT_FALSE(entry->GetReadOnlyWhenPosting());  // not in version 0: the construction default

  // A stored comment length below 1 is the empty string and reads no text.
  const Bytes negative = Hex(kHead + "ED 03 00 00" + kNoOwnerNoTime + "FF FF FF FF  00 01");
  auto empty = DbIOFNciManualEntry::Create();
  ASSERT_TRUE(TestSupport::LoadAll(*empty, negative));
  EXPECT_TRUE(empty->GetComment().IsEmpty());
  EXPECT_TRUE(empty->GetIncludeWithMove());
}

TEST(GenericAndManualEntry, NewerVersionsAreRefused) {
  // Each level checks its version after its base part was read and before its own
  // fields: the record base is 13 bytes here, the NCI base 16 more.
  auto generic = DbIOFNciGeneric::Create();
  auto entry = DbIOFNciManualEntry::Create();
  const Bytes genericBytes = TestSupport::Store(*generic);
  const Bytes entryBytes = TestSupport::Store(*entry);
  struct Case {
    const char* what;
    DbIOFBase* record;
    const Bytes* bytes;
    std::size_t versionAt;
    std::uint8_t version;
    std::size_t stoppedAt;
  };
  const Case cases[] = {
      {"generic v1", generic.operator->(), &genericBytes, 0, 1, 13 + 16},
      {"manual entry v2", entry.operator->(), &entryBytes, 0, 2, 13 + 16},
      {"NCI base v1 under a manual entry", entry.operator->(), &entryBytes, 1, 1, 13},
  };
  for (const Case& c : cases) {
    Bytes bytes = *c.bytes;
    bytes[c.versionAt] = c.version;
    std::size_t stopped = 0;
    EXPECT_EQ(TestSupport::LoadCause(*c.record, bytes, &stopped), 2) << c.what;
    EXPECT_EQ(stopped, c.stoppedAt) << c.what;
  }
}

TEST(DbIOFNciGeneric, ComparesTheNciBaseOnly) {
  auto a = DbIOFNciGeneric::Create();
  auto b = DbIOFNciGeneric::Create();
  const unsigned char one[1] = {1};
  const unsigned char two[2] = {2, 3};
  a->SetGenericBlock(1, one);
  b->SetGenericBlock(2, two);
  CString report;
  EXPECT_TRUE(a->Compare(b, report));  // intended: the bytes are never compared
  EXPECT_TRUE(report.IsEmpty());

  struct Case {
    std::function<void(DbIOFNciGeneric&)> change;
    const wchar_t* line;
  };
  const Case cases[] = {
      {[](DbIOFNciGeneric& g) { g.SetIOFName(L"X"); }, L"Difference Detected: m_Name -  vs X\n"},
      {[](DbIOFNciGeneric& g) { g.SetGCode(5); }, L"Difference Detected: m_GCode - 0 vs 5\n"},
      {[](DbIOFNciGeneric& g) { g.SetOperationId(3); }, L"Difference Detected: m_OwnerOpId - -1 vs 3\n"},
      {[](DbIOFNciGeneric& g) { g.SetTime(2.5); }, L"Difference Detected: m_Time - 0 vs 2.5\n"},
  };
  for (const Case& c : cases) {
    auto other = DbIOFNciGeneric::Create();
    c.change(*other);
    report.Empty();
    EXPECT_FALSE(a->Compare(other, report));
    EXPECT_EQ(report, c.line);
  }

  report.Empty();
  EXPECT_FALSE(a->Compare(DbIOFList::Create(0), report));
  EXPECT_EQ(report, L"Incompatible types.\n");
}

TEST(DbIOFNciManualEntry, ComparisonChain) {
  struct Case {
    std::function<void(DbIOFNciManualEntry&)> change;
    const wchar_t* line;
  };
  const Case cases[] = {
      {[](DbIOFNciManualEntry& e) { e.SetGCode(1006); }, L"Difference Detected: m_GCode - 1005 vs 1006\n"},
      {[](DbIOFNciManualEntry& e) { e.SetTime(1); }, L"Difference Detected: m_Time - 0 vs 1\n"},
      {[](DbIOFNciManualEntry& e) { e.SetComment(L"m01"); }, L"Difference Detected: m_Comment - M01 vs m01\n"},
      {[](DbIOFNciManualEntry& e) { e.SetOutputCommentAsCode(true); },
       L"Difference Detected: m_OutputCommentAsCode - false vs true\n"},
      {[](DbIOFNciManualEntry& e) { e.SetIncludeWithMove(true); },
       L"Difference Detected: m_IncludeWithMove - false vs true\n"},
      {[](DbIOFNciManualEntry& e) { e.SetReadOnlyWhenPosting(true); },
       L"Difference Detected: m_ReadOnlyWhenPosting - false vs true\n"},
      // Two differences: only the one compared first is reported.
      {[](DbIOFNciManualEntry& e) {
         e.SetReadOnlyWhenPosting(true);
         e.SetIncludeWithMove(true);
       },
       L"Difference Detected: m_IncludeWithMove - false vs true\n"},
  };
  auto a = DbIOFNciManualEntry::Create();
  a->SetComment(L"M01");
  for (const Case& c : cases) {
    auto b = DbIOFNciManualEntry::Create();
    b->SetComment(L"M01");
    CString report;
    EXPECT_TRUE(a->Compare(b, report));
    c.change(*b);
    EXPECT_FALSE(a->Compare(b, report));
    EXPECT_EQ(report, c.line);
  }
  CString report;
  EXPECT_FALSE(a->Compare(DbIOFNciGeneric::Create(), report));
  EXPECT_EQ(report, L"Incompatible types.\n");
}

TEST(GenericAndManualEntry, MemoryFileAndCloneRoundTrips) {
  Quarp::DbMgr mgr;
  auto generic = DbIOFNciGeneric::Create();
  generic->SetGCode(81);
  generic->SetOperationId(2);
  const unsigned char data[4] = {0, 1, 2, 255};
  generic->SetGenericBlock(4, data);
  auto entry = DbIOFNciManualEntry::Create();
  entry->SetIOFName(L"note");
  entry->SetComment(L"(Ünïcode ✓)");
  entry->SetOutputCommentAsCode(true);
  entry->SetReadOnlyWhenPosting(true);
  const Quarp::DbId genericId = mgr.Add(generic);
  const Quarp::DbId entryId = mgr.Add(entry);

  const auto checkGeneric = [&](const DbIOFNciGeneric& g, const char* where) {
    EXPECT_EQ(g.GetGCode(), 81) << where;
    EXPECT_EQ(g.GetOperationId(), 2) << where;
    unsigned char out[4] = {};
    ASSERT_EQ(g.GetGenericBlock(out), 4) << where;
    EXPECT_EQ(Bytes(out, out + 4), Hex("00 01 02 FF")) << where;
  };
  const auto checkEntry = [&](const DbIOFNciManualEntry& e, const char* where) {
    CString report;
    EXPECT_TRUE(e.Compare(entry, report)) << where << ": " << report.ToUtf8();
    EXPECT_EQ(e.ToIOFString(), entry->ToIOFString()) << where;
    EXPECT_TRUE(e.GetReadOnlyWhenPosting()) << where;
  };

  // Memory archive.
  auto genericBack = DbIOFNciGeneric::Create();
  ASSERT_TRUE(TestSupport::LoadAll(*genericBack, TestSupport::Store(*generic)));
  checkGeneric(*genericBack, "memory");
  auto entryBack = DbIOFNciManualEntry::Create();
  ASSERT_TRUE(TestSupport::LoadAll(*entryBack, TestSupport::Store(*entry)));
  checkEntry(*entryBack, "memory");

  // Whole file.
  Bytes file;
  ASSERT_EQ(mgr.WriteToMemory(file), Quarp::DbErr::Ok);
  Quarp::DbMgr back;
  ASSERT_EQ(back.ReadFromMemory(file), Quarp::DbErr::Ok);
  Quarp::DbCPtr<DbIOFNciGeneric> g;
  ASSERT_TRUE(back.Get(g, genericId, 0));
  checkGeneric(*g, "file");
  Quarp::DbCPtr<DbIOFNciManualEntry> e;
  ASSERT_TRUE(back.Get(e, entryId, 0));
  checkEntry(*e, "file");

  // Clone into another manager: Copy takes every field of the list.
  Quarp::DbMgr other;
  Quarp::DbErr err{};
  auto* genericClone = dynamic_cast<DbIOFNciGeneric*>(generic->Clone(Quarp::DbCloneMode::Normal, &other, nullptr, err));
  ASSERT_NE(genericClone, nullptr);
  checkGeneric(*genericClone, "clone");
  auto* entryClone = dynamic_cast<DbIOFNciManualEntry*>(entry->Clone(Quarp::DbCloneMode::Normal, &other, nullptr, err));
  ASSERT_NE(entryClone, nullptr);
  checkEntry(*entryClone, "clone");
}

TEST(GenericAndManualEntry, TypeAnswers) {
  auto generic = DbIOFNciGeneric::Create();
  auto entry = DbIOFNciManualEntry::Create();
  EXPECT_TRUE(generic->ContainsType(DbIOFTypeMgr::GetIOFNCIBASEMask(), true));
  EXPECT_FALSE(generic->ContainsType(DbIOFTypeMgr::GetIOFNCIBASEMOVEMask(), true));
  EXPECT_TRUE(generic->ContainsType(DbIOFTypeMgr::GetIOFNCIGENERICMask(), false));
  EXPECT_TRUE(entry->ContainsType(DbIOFTypeMgr::GetIOFNCIMANUALENTRYMask(), false));
  EXPECT_TRUE(entry->ContainsType(0x5101));
  EXPECT_FALSE(entry->ContainsType(0x5102));
  EXPECT_EQ(generic->GetType(), 0x5102u);
  EXPECT_EQ(entry->GetType(), 0x5117u);
  EXPECT_EQ(generic->GetClass(), L"DbIOFNciGeneric");
  EXPECT_EQ(entry->GetClass(), L"DbIOFNciManualEntry");
  EXPECT_STREQ(entry->GetObjectClassName(), "DbIOFNciManualEntry");
  EXPECT_EQ(generic->GetSubclassLevel(0), 4);
  EXPECT_EQ(entry->GetObjectClassId(), Quarp::UtSerializeFind("DbIOFNciManualEntry")->id);
}

TEST(DbIOFNciManualEntry, VisitsFieldsInArchiveOrder) {
  auto entry = DbIOFNciManualEntry::Create();
  entry->SetComment(L"AB");
  entry->SetIncludeWithMove(true);
  TestSupport::RecordingVisitor v;
  entry->VisitFields(v);
  EXPECT_EQ(v.fields,
            (std::vector<std::string>{"m_Name=\"\"", "m_Attributes=0 attributes", "m_SubLists=[]", "m_GCode=1005",
                                      "m_OwnerOpId=-1", "m_Time=0", "m_ReadOnlyWhenPosting=false", "m_Comment=\"AB\"",
                                      "m_OutputCommentAsCode=false", "m_IncludeWithMove=true"}));
}

}  // namespace

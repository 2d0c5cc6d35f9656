// Generic codes and manual entries: texts, the byte block, archive bytes, the version 0
// manual-entry layout, the comparison chains through the NCI base, and round trips.
#include "CompareOrderSupport.h"
#include "RecordingVisitor.h"
#include "TestSupport.h"

#include <iof/DbIOFNciGeneric.h>
#include <iof/DbIOFNciManualEntry.h>

#include <gtest/gtest.h>

using namespace IOF;
using namespace TestSupport;

namespace {

// Class and NCI-base versions (each 0), then the record base.
const std::string kHead = "00 00" + kRecordBase;
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

TEST(DbIOFNciGeneric, Texts) {
  auto generic = DbIOFNciGeneric::Create();
  EXPECT_EQ(generic->ToIOFString(), L"G0 IOF NCI Generic Object");  // the NCI base default G-code
  generic->SetGCode(1000);
  EXPECT_EQ(generic->ToIOFString(), L"G1000 IOF NCI Generic Object");
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

TEST(DbIOFNciGeneric, ArchiveAndVersion) {
  // An empty block is its version, a zero count and the growth step.
  auto generic = DbIOFNciGeneric::Create();
  ExpectStores(*generic,
               kHead + "00 00 00 00" + kNoOwnerNoTime + "00  00 00 00 00 00 00 00 00  0A 00 00 00 00 00 00 00");
  generic->SetGCode(7);
  generic->SetTime(0.5);
  generic->SetOperationId(2);
  const unsigned char data[2] = {0xAB, 0x01};
  generic->SetGenericBlock(2, data);
  ExpectArchive(*generic, kHead +
                              "07 00 00 00  02 00 00 00"  // m_GCode, m_OwnerOpId
                              "00 00 00 00 00 00 E0 3F"   // m_Time
                              "00"                        // byte array version
                              "02 00 00 00 00 00 00 00"   // count
                              "0A 00 00 00 00 00 00 00"   // growth step
                              "AB 01");
  ExpectNewerVersionRefused(*generic, 0, 2 + kRecordBaseSize + kNciBaseSize);
  ExpectNewerVersionRefused(*generic, 1, 2 + kRecordBaseSize);

  // On load the array takes the stored count and growth step.
  Bytes stepFour = Store(*generic);
  stepFour[stepFour.size() - 10] = 4;
  auto back = DbIOFNciGeneric::Create();
  ASSERT_TRUE(LoadAll(*back, stepFour));
  EXPECT_EQ(back->GetGenericArray().GetGrowBy(), 4);
  ExpectFields(*back, {kRecordBaseFields, {"m_GCode=7", "m_OwnerOpId=2", "m_Time=0.5", "m_GenericBlock={AB 01}"}});
}

TEST(DbIOFNciManualEntry, ArchiveAndVersion) {
  auto entry = DbIOFNciManualEntry::Create();
  entry->SetComment(L"AB");
  entry->SetReadOnlyWhenPosting(true);
  entry->SetIncludeWithMove(true);
  ExpectArchive(*entry, "01 00" + kRecordBase +  // version 1 first
                            "ED 03 00 00" +      // m_GCode 1005
                            kNoOwnerNoTime +
                            "01"                        // m_ReadOnlyWhenPosting, the newest, first
                            "02 00 00 00  41 00 42 00"  // m_Comment
                            "00"                        // m_OutputCommentAsCode
                            "01");                      // m_IncludeWithMove
  EXPECT_EQ(entry->ToIOFString(), L"G1005 AB - OutAs: Comment, Include With Move: Yes, Read Only When Posting: Yes");
  ExpectFields(*entry, {kRecordBaseFields,
                        {"m_GCode=1005", "m_OwnerOpId=-1", "m_Time=0", "m_ReadOnlyWhenPosting=true", "m_Comment=\"AB\"",
                         "m_OutputCommentAsCode=false", "m_IncludeWithMove=true"}});
  // Each level checks its version after its base part and before its own fields.
  ExpectNewerVersionRefused(*entry, 0, 2 + kRecordBaseSize + kNciBaseSize);
  ExpectNewerVersionRefused(*entry, 1, 2 + kRecordBaseSize);
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

TEST(GenericAndManualEntry, ComparisonOrders) {
  // The generic code has no comparison of its own: the NCI base's. Intended: the bytes
  // are never compared.
  using G = DbIOFNciGeneric;
  ExpectReportOrder<G>({
      {[](G& g, bool) {
         const unsigned char two[2] = {2, 3};
         g.SetGenericBlock(2, two);
       },
       nullptr},
      {[](G& g, bool on) { g.SetIOFName(on ? L"X" : L""); }, L"Difference Detected: m_Name -  vs X\n"},
      {[](G& g, bool on) { g.SetGCode(on ? 5 : 0); }, L"Difference Detected: m_GCode - 0 vs 5\n"},
      {[](G& g, bool on) { g.SetOperationId(on ? 3 : -1); }, L"Difference Detected: m_OwnerOpId - -1 vs 3\n"},
      {[](G& g, bool on) { g.SetTime(on ? 2.5 : 0); }, L"Difference Detected: m_Time - 0 vs 2.5\n"},
  });
  using M = DbIOFNciManualEntry;
  ExpectReportOrder<M>({
      {[](M& e, bool on) { e.SetGCode(on ? 1006 : 1005); }, L"Difference Detected: m_GCode - 1005 vs 1006\n"},
      {[](M& e, bool on) { e.SetTime(on ? 1 : 0); }, L"Difference Detected: m_Time - 0 vs 1\n"},
      {[](M& e, bool on) { e.SetComment(on ? L"m01" : L""); }, L"Difference Detected: m_Comment -  vs m01\n"},
      {[](M& e, bool on) { e.SetOutputCommentAsCode(on); },
       L"Difference Detected: m_OutputCommentAsCode - false vs true\n"},
      {[](M& e, bool on) { e.SetIncludeWithMove(on); }, L"Difference Detected: m_IncludeWithMove - false vs true\n"},
      {[](M& e, bool on) { e.SetReadOnlyWhenPosting(on); },
       L"Difference Detected: m_ReadOnlyWhenPosting - false vs true\n"},
  });
}

}  // namespace

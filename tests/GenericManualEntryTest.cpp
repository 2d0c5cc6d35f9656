// Generic codes and manual entries: texts, the byte block, archive bytes, the version 0
// manual-entry layout, the comparison chains through the NCI base, and round trips.
#include "CompareOrderSupport.h"
#include "LayoutTable.h"

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

TEST(DbIOFNciGeneric, GenericBlockAndText) {
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
  generic->SetGCode(1000);
  EXPECT_EQ(generic->ToIOFString(), L"G1000 IOF NCI Generic Object");
}

// The generic block is its version, count and growth step (8 bytes each), then the
// bytes; intended: never compared. The manual entry's version 1 put the read-only flag,
// the newest field, first; its comparison puts it last.
TEST(GenericAndManualEntry, Layouts) {
  const std::string block = "00 02 00 00 00 00 00 00 00  0A 00 00 00 00 00 00 00  AB 01 ";
  ExpectLayout<DbIOFNciGeneric>({kHead + kFreshNciBase,
                                 L"G0 IOF NCI Generic Object",
                                 {R(block, "00  00 00 00 00 00 00 00 00  0A 00 00 00 00 00 00 00 ", nullptr)}});
  ExpectLayout<DbIOFNciManualEntry>(
      {"01 00" + kRecordBase + "ED 03 00 00" + kNoOwnerNoTime,
       L"G1005 AB - OutAs: Code, Include With Move: Yes, Read Only When Posting: Yes",
       {R(kTrue, kFalse, L"m_ReadOnlyWhenPosting - false vs true", 1), R(Str(u"AB"), I0, L"m_Comment -  vs AB"),
        Flag(L"m_OutputCommentAsCode - false vs true"), Flag(L"m_IncludeWithMove - false vs true")},
       {1, 2, 3, 0},
       "m_ReadOnlyWhenPosting=true m_Comment=\"AB\" m_OutputCommentAsCode=true m_IncludeWithMove=true"});
  // The NCI base's version is checked after the record base.
  ExpectNewerVersionRefused(*DbIOFNciGeneric::Create(), 1, 2 + kRecordBaseSize);
  ExpectNewerVersionRefused(*DbIOFNciManualEntry::Create(), 1, 2 + kRecordBaseSize);

  // On load the array takes the stored count and growth step.
  Bytes stepFour = Hex(kHead + "07 00 00 00  02 00 00 00" + Le(0.5) + block);
  stepFour[stepFour.size() - 10] = 4;
  auto back = DbIOFNciGeneric::Create();
  ASSERT_TRUE(LoadAll(*back, stepFour));
  EXPECT_EQ(back->GetGenericArray().GetGrowBy(), 4);
  ExpectFields(*back, {kRecordBaseFields, {"m_GCode=7", "m_OwnerOpId=2", "m_Time=0.5", "m_GenericBlock={AB 01}"}});
}

// What the layout tables cannot show: the generic code compares the NCI base only (the
// time within 1e-6); the manual entry its G-code and time before its own fields.
TEST(GenericAndManualEntry, ComparisonAroundTheTables) {
  using G = DbIOFNciGeneric;
  ExpectReportOrder<G>(
      {
          {[](G& g, bool on) { g.SetIOFName(on ? L"X" : L""); }, L"Difference Detected: m_Name -  vs X\n"},
          {[](G& g, bool on) { g.SetGCode(on ? 5 : 0); }, L"Difference Detected: m_GCode - 0 vs 5\n"},
          {[](G& g, bool on) { g.SetOperationId(on ? 3 : -1); }, L"Difference Detected: m_OwnerOpId - -1 vs 3\n"},
          {[](G& g, bool on) { g.SetTime(on ? 2.5005 : 2.5); }, L"Difference Detected: m_Time - 2.5 vs 2.5005\n"},
      },
      [] {
        auto g = G::Create();
        g->SetTime(2.5);  // times below 0.001 are stored as 0: the tolerance shows above
        return g;
      });
  using M = DbIOFNciManualEntry;
  ExpectReportOrder<M>({
      {[](M& e, bool on) { e.SetGCode(on ? 1006 : 1005); }, L"Difference Detected: m_GCode - 1005 vs 1006\n"},
      {[](M& e, bool on) { e.SetTime(on ? 1 : 0); }, L"Difference Detected: m_Time - 0 vs 1\n"},
      {[](M& e, bool on) { e.SetComment(on ? L"m01" : L""); }, L"Difference Detected: m_Comment -  vs m01\n"},
  });
}

}  // namespace

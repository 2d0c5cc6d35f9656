// The attribute map, its items, the data items and the synchronisation-manager tokens.
#include "TestSupport.h"

#include <iof/UtAttribute.h>

#include <gtest/gtest.h>

#include <memory>

using namespace IOF;
using TestSupport::Bytes;
using TestSupport::Hex;
using TestSupport::ToHex;

namespace {

TEST(UtIOFAttribMap, TypedAddGetAndSet) {
  UtIOFAttribMap map;
  EXPECT_TRUE(map.AddAttribute(CString(L"Depth"), 2.5));
  EXPECT_FALSE(map.AddAttribute(CString(L"Depth"), 7));  // another type: refused
  double d = 0;
  EXPECT_EQ(map.GetDblAttribVal(CString(L"Depth"), d), AttribGetStatus::Done);
  EXPECT_EQ(d, 2.5);
  EXPECT_TRUE(map.AddAttribute(CString(L"Depth"), 3.5));  // same type: overwritten
  map.GetDblAttribVal(CString(L"Depth"), d);
  EXPECT_EQ(d, 3.5);

  int i = 42;
  EXPECT_EQ(map.GetIntAttribVal(CString(L"Depth"), i), AttribGetStatus::WrongType);
  EXPECT_EQ(i, 42);
  EXPECT_EQ(map.GetIntAttribVal(CString(L"Missing"), i), AttribGetStatus::NotFound);
  EXPECT_EQ(map.SetIntAttribVal(CString(L"Missing"), 1), AttribGetStatus::NotFound);
  EXPECT_EQ(map.GetCount(), 1u);  // Set never creates

  EXPECT_TRUE(map.AddAttribute(CString(L"On"), true));
  EXPECT_TRUE(map.AddAttribute(CString(L"Count"), 5));
  EXPECT_TRUE(map.AddAttribute(CString(L"Big"), std::uint64_t{1} << 40));
  EXPECT_TRUE(map.AddAttribute(CString(L"Name"), L"roughing"));
  EXPECT_EQ(map.SetCStringAttribVal(CString(L"Name"), CString(L"finishing")), AttribGetStatus::Done);
  CString name;
  EXPECT_EQ(map.GetCStringAttribVal(CString(L"Name"), name), AttribGetStatus::Done);
  EXPECT_EQ(name, L"finishing");
  std::uint64_t big = 0;
  EXPECT_EQ(map.GetUInt64AttribVal(CString(L"Big"), big), AttribGetStatus::Done);
  EXPECT_EQ(big, std::uint64_t{1} << 40);
  bool on = false;
  EXPECT_EQ(map.SetBoolAttribVal(CString(L"On"), false), AttribGetStatus::Done);
  EXPECT_EQ(map.GetBoolAttribVal(CString(L"On"), on), AttribGetStatus::Done);
  EXPECT_FALSE(on);

  IOFAttrbType type = IOFAttrbType::Bool;
  EXPECT_TRUE(map.DoesExist(CString(L"Big"), type));
  EXPECT_EQ(type, IOFAttrbType::UInt64);
  EXPECT_FALSE(map.DoesExist(CString(L"big"), type));  // keys are case-sensitive
  EXPECT_EQ(type, IOFAttrbType::None);

  EXPECT_EQ(map.RemoveAttribute(CString(L"Count")), AttribGetStatus::Done);
  EXPECT_EQ(map.RemoveAttribute(CString(L"Count")), AttribGetStatus::NotFound);
  EXPECT_EQ(map.FindAttrib(CString(L"Count")), nullptr);
  // Ordinal key order, in the map and in its trace lines (the 64-bit value prints its low 32 bits).
  std::vector<std::string> keys;
  for (const auto& entry : map) keys.push_back(entry.first.ToUtf8());
  EXPECT_EQ(keys, (std::vector<std::string>{"Big", "Depth", "Name", "On"}));
  EXPECT_EQ(map.TraceLines(L"Op 5"), (std::vector<CString>{L"Op 5\tBig = 0", L"Op 5\tDepth = 3.5",
                                                           L"Op 5\tName = finishing", L"Op 5\tOn = false"}));
}

TEST(UtIOFAttribMap, AddingAnItemTakesItOverUnlessTheKeyExists) {
  UtIOFAttribMap map;
  EXPECT_FALSE(map.AddAttribute(static_cast<UtIOFAttribItem*>(nullptr)));
  EXPECT_TRUE(map.AddAttribute(new UtIOFAttribItemInt(CString(L"k"), 1)));
  auto duplicate = std::make_unique<UtIOFAttribItemInt>(CString(L"k"), 2);
  EXPECT_FALSE(map.AddAttribute(duplicate.get()));  // the caller still owns it
  int v = 0;
  map.GetIntAttribVal(CString(L"k"), v);
  EXPECT_EQ(v, 1);
}

TEST(UtIOFAttribMap, ClearReleasesItemsWithoutDestroyingThem) {
  UtIOFAttribMap map;
  map.AddAttribute(CString(L"a"), 1);
  map.AddAttribute(CString(L"b"), 2.0);
  UtIOFAttribItem* a = map.FindAttrib(CString(L"a"));
  UtIOFAttribItem* b = map.FindAttrib(CString(L"b"));
  map.Clear();
  EXPECT_TRUE(map.IsEmpty());
  // The items are still alive; whoever holds them takes them over.
  EXPECT_EQ(a->ToString(), L"a = 1");
  UtIOFAttribMap other;
  EXPECT_TRUE(other.AddAttribute(b));
  delete a;
}

TEST(UtIOFAttribMap, CopyingCopiesKeysFlagsAndValues) {
  UtIOFAttribMap map;
  map.AddAttribute(CString(L"b"), true);
  map.AddAttribute(CString(L"i"), -3);
  map.AddAttribute(CString(L"d"), 0.25);
  map.AddAttribute(CString(L"s"), L"text");
  map.FindAttrib(CString(L"i"))->SetFlags(0x80000001u);
  const UtIOFAttribMap copy(map);
  ASSERT_EQ(copy.GetCount(), 4u);
  EXPECT_NE(copy.FindAttrib(CString(L"i")), map.FindAttrib(CString(L"i")));
  EXPECT_EQ(copy.FindAttrib(CString(L"i"))->GetFlags(), 0x80000001u);
  EXPECT_TRUE(copy.FindAttrib(CString(L"i"))->IsSyncMgrTokenAttrib());
  CString s;
  copy.GetCStringAttribVal(CString(L"s"), s);
  EXPECT_EQ(s, L"text");
  UtIOFAttribMap assigned;
  assigned = map;
  const UtIOFAttribMap& self = assigned;
  assigned = self;  // self-assignment changes nothing
  EXPECT_EQ(assigned.GetCount(), 4u);
}

TEST(UtIOFAttribMap, MapsWithA64BitAttributeCannotBeCopied) {
  UtIOFAttribMap map;
  map.AddAttribute(CString(L"a"), 1);
  map.AddAttribute(CString(L"Big"), std::uint64_t{7});
  UtIOFAttribMap target;
  try {
    target = map;
    FAIL() << "expected a thrown CString";
  } catch (const CString& text) {
    EXPECT_EQ(text, L"UtIOFAttribMap::operator= Failed to copy attribute \"Big\"");
  }
  EXPECT_THROW(UtIOFAttribMap copy(map), CString);
}

TEST(UtIOFAttribItem, TextsAndTypes) {
  EXPECT_EQ(UtIOFAttribItem(CString(L"key")).ToString(), L"key");
  EXPECT_EQ(UtIOFAttribItemBool(CString(L"k"), true).ToString(), L"k = true");
  EXPECT_EQ(UtIOFAttribItemBool(CString(L"k"), false).ToString(), L"k = false");
  EXPECT_EQ(UtIOFAttribItemInt(CString(L"k"), -5).ToString(), L"k = -5");
  EXPECT_EQ(UtIOFAttribItemUInt64(CString(L"k"), 0x1FFFFFFFFull).ToString(), L"k = -1");  // low 32 bits
  EXPECT_EQ(UtIOFAttribItemDbl(CString(L"k"), 0.5).ToString(), L"k = 0.5");
  EXPECT_EQ(UtIOFAttribItemCString(CString(L"k"), CString(L"v")).ToString(), L"k = v");

  UtIOFAttribItemUInt64 big(CString(L"k"), 1);
  const UtIOFAttribItemUInt64& constBig = big;
  const UtIOFAttribItem& asBase = big;
  EXPECT_EQ(big.GetDataType(), IOFAttrbType::Double);  // the non-const overload: intended
  EXPECT_EQ(constBig.GetDataType(), IOFAttrbType::UInt64);
  EXPECT_EQ(asBase.GetDataType(), IOFAttrbType::UInt64);
  UtIOFAttribItemDbl dbl(CString(L"k"), 1);
  EXPECT_EQ(dbl.GetDataType(), IOFAttrbType::Double);
  UtIOFAttribItemInt integer(CString(L"k"), 1);
  EXPECT_EQ(integer.GetDataType(), IOFAttrbType::Int);

  UtIOFAttribItem flags(CString(L"f"));
  flags.SetFlags(0x6);
  flags.SetIsSyncMgrTokenAttrib(true);
  EXPECT_EQ(flags.GetFlags(), 0x7u);
  flags.SetIsSyncMgrTokenAttrib(false);
  EXPECT_EQ(flags.GetFlags(), 0x6u);
  EXPECT_FALSE(flags.IsSyncMgrTokenAttrib());
}

TEST(UtIOFAttribMap, ArchiveForm) {
  UtIOFAttribMap empty;
  // The map's version, then its 32-bit count.
  TestSupport::ExpectStores(empty, "00 00 00 00 00");
  UtIOFAttribMap one;
  one.AddAttribute(CString(L"A"), 5);
  TestSupport::ExpectStores(
      one,
      "00"                                                           // map version
      "01 00 00 00"                                                  // one entry
      "01 12 55 74 49 4F 46 41 74 74 72 69 62 49 74 65 6D 49 6E 74"  // new class "UtIOFAttribItemInt"
      "00"                                                           // item version
      "00"                                                           // base item version
      "01 00 00 00 41 00"                                            // key "A"
      "00 00 00 00"                                                  // flags
      "05 00 00 00");                                                // value
  TestSupport::ExpectNewerVersionRefused(one, 0, 1);

  // Every item type, with its class, flags and value, reads back.
  UtIOFAttribMap map;
  map.AddAttribute(CString(L"b"), true);
  map.AddAttribute(CString(L"i"), 7);
  map.AddAttribute(CString(L"u"), ~std::uint64_t{0});
  map.AddAttribute(CString(L"d"), -0.125);
  map.AddAttribute(CString(L"s"), L"\u00E9t\u00E9");
  map.AddAttribute(new UtIOFAttribItem(CString(L"plain")));
  map.FindAttrib(CString(L"d"))->SetFlags(0xF0);
  UtIOFAttribMap back;
  ASSERT_TRUE(TestSupport::LoadAll(back, TestSupport::Store(map)));
  EXPECT_EQ(back.GetCount(), 6u);
  EXPECT_EQ(back.TraceLines(L""), map.TraceLines(L""));
  EXPECT_EQ(ToHex(TestSupport::Store(back)), ToHex(TestSupport::Store(map)));
}

TEST(UtIOFAttribMap, ADuplicateKeyOnLoadIsReportedAndDropped) {
  UtIOFAttribMap one;
  one.AddAttribute(CString(L"A"), 5);
  Bytes bytes = TestSupport::Store(one);
  bytes[1] = 2;  // two entries
  // The second object refers back to the class by tag and carries the value 6.
  const Bytes second = Hex("02 00 00 01 00 00 00 41 00 00 00 00 00 06 00 00 00");
  bytes.insert(bytes.end(), second.begin(), second.end());

  TestSupport::AssertRecorder recorder;
  UtIOFAttribMap back;
  ASSERT_TRUE(TestSupport::LoadAll(back, bytes));
  EXPECT_EQ(recorder.Places(), std::vector<std::string>{"DB/src/UtAttribute:406 IOF::UtIOFAttribMap::Serialize"});
  EXPECT_EQ(recorder.Calls().at(0).message, "IOF::UtIOFAttribMap::Serialize");  // the full function name
  int v = 0;
  back.GetIntAttribVal(CString(L"A"), v);
  EXPECT_EQ(v, 5);
}

TEST(UtSyncMgrToken, DataItemsAndTokenTexts) {
  EXPECT_EQ(UtIOFDataItemBool(true).ToString(), L"BOOL: true");
  EXPECT_EQ(UtIOFDataItemInt(-2).ToString(), L"INT: -2");
  EXPECT_EQ(UtIOFDataItemDbl(0.5).ToString(), L"DBL: 0.5");
  EXPECT_EQ(UtIOFDataItemString(CString(L"x")).ToString(), L"STRING: x");

  UtSyncMgrTokenBase token(CString(L"Feed"), new UtIOFDataItemInt(5));
  EXPECT_EQ(token.GetConfigMask(), 0u);
  token.SetConfigMask(0x1F);
  token.SetOpTypeMask(0xA);
  token.SetMachineTypeMask(3);
  token.SetMillTypeMask(4);
  token.SetSubFunction(9);
  EXPECT_EQ(token.ToString(), L"Token (Feed) Data: INT: 5;  Config 1f; OpTypes a");
  EXPECT_EQ(token.GetType(), IOFAttrbType::Int);

  const UtSyncMgrTokenBase copy(token);
  EXPECT_NE(copy.GetConstData(), token.GetConstData());
  EXPECT_EQ(copy.ToString(), token.ToString());
  EXPECT_EQ(copy.GetMillTypeMask(), 4u);
  EXPECT_EQ(copy.GetSubFunction(), 9);
  UtSyncMgrTokenBase assigned(CString(L"x"), nullptr);
  EXPECT_EQ(assigned.ToString(), L"Token (x) Data: ;  Config 0; OpTypes 0");
  assigned = token;
  static_cast<UtIOFDataItemInt*>(assigned.GetData())->SetValue(6);
  EXPECT_EQ(token.ToString(), L"Token (Feed) Data: INT: 5;  Config 1f; OpTypes a");
  EXPECT_EQ(assigned.GetMachineTypeMask(), 3u);
}

}  // namespace

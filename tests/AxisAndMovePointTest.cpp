// The axis motion map and the six-axis move point.
#include "TestSupport.h"

#include <iof/UtAxisMotionMap.h>
#include <iof/UtIofMovePoint.h>

#include <gtest/gtest.h>

using namespace IOF;
using TestSupport::Bytes;
using TestSupport::Hex;
using TestSupport::ToHex;

namespace {

TEST(UtAxisMotionMap, EntriesAreKeptOncePerAxisInAxisOrder) {
  UtAxisMotionMap map;
  EXPECT_EQ(map.ToString(), L"UtAxisMotionMap(0): ");
  map.AddMotion(X, Coordinate, 2.5);
  map.AddMotion(X, OffsetFromHomePosition, 3.0);
  EXPECT_EQ(map.GetSize(), 1);
  AxisMotionType type{};
  double value = 0;
  ASSERT_TRUE(map.GetMotion(X, type, value));
  EXPECT_EQ(type, OffsetFromHomePosition);
  EXPECT_EQ(value, 3.0);
  EXPECT_FALSE(map.GetMotion(Y, type, value));

  map.AddMotion(Z, AxisNotDefined, 0.0);
  map.AddMotion(C, Disabled, -1.5);
  AxisType axis{};
  ASSERT_TRUE(map.GetMotion(1, axis, type, value));
  EXPECT_EQ(axis, Z);
  EXPECT_FALSE(map.GetMotion(3, axis, type, value));
  EXPECT_FALSE(map.GetMotion(-1, axis, type, value));
  EXPECT_EQ(map.ToString(),
            L"UtAxisMotionMap(3): [X] (OffsetFromHomePosition, 3), [Z] (AxisNotDefined, 0), [C] (Disabled, -1.5), ");
  map.Reset();
  EXPECT_EQ(map.GetSize(), 0);
}

TEST(UtAxisMotionMap, TextsWithoutATableEntryCarryOverFromThePreviousEntry) {
  UtAxisMotionMap map;
  map.AddMotion(static_cast<AxisType>(9), static_cast<AxisMotionType>(7), 1.0);
  // First entry: nothing to carry, so both texts are empty.
  EXPECT_EQ(map.ToString(), L"UtAxisMotionMap(1): [] (, 1), ");
  map.AddMotion(Y, OffsetFromMaxLimit, 2.0);
  map.AddMotion(static_cast<AxisType>(7), static_cast<AxisMotionType>(6), 4.0);
  EXPECT_EQ(map.ToString(),
            L"UtAxisMotionMap(3): [Y] (OffsetFromMaxLimit, 2), [Y] (OffsetFromMaxLimit, 4), "
            L"[Y] (OffsetFromMaxLimit, 1), ");
}

TEST(UtAxisMotionMap, EqualityAndCopy) {
  UtAxisMotionMap a;
  a.AddMotion(X, Coordinate, 1.0);
  UtAxisMotionMap b;
  EXPECT_FALSE(a == b);
  b.Copy(a);
  EXPECT_TRUE(a == b);
  b.AddMotion(X, Coordinate, 1.0000001);
  EXPECT_FALSE(a == b);
  b.AddMotion(X, OffsetFromMinLimit, 1.0);
  EXPECT_FALSE(a == b);
}

TEST(UtAxisMotionMap, ArchiveForm) {
  UtAxisMotionMap empty;
  EXPECT_EQ(ToHex(TestSupport::Store(empty)), "00 00 00 00 00");
  UtAxisMotionMap map;
  map.AddMotion(Z, Coordinate, 1.0);
  map.AddMotion(X, Disabled, 0.0);
  EXPECT_EQ(ToHex(TestSupport::Store(map)),
            ToHex(Hex("00 02 00 00 00"
                      "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00"      // X first
                      "02 00 00 00 01 00 00 00 00 00 00 00 00 00 F0 3F")));  // then Z

  // Loading adds to what the map holds; a later triple for an axis overwrites.
  UtAxisMotionMap back;
  back.AddMotion(B, Coordinate, 9.0);
  ASSERT_TRUE(TestSupport::LoadAll(back, TestSupport::Store(map)));
  EXPECT_EQ(back.ToString(), L"UtAxisMotionMap(3): [X] (Disabled, 0), [Z] (Coordinate, 1), [B] (Coordinate, 9), ");
  UtAxisMotionMap over;
  ASSERT_TRUE(TestSupport::LoadAll(over, Hex("00 02 00 00 00 00 00 00 00 01 00 00 00 00 00 00 00 00 00 F0 3F"
                                             "00 00 00 00 02 00 00 00 00 00 00 00 00 00 00 40")));
  EXPECT_EQ(over.ToString(), L"UtAxisMotionMap(1): [X] (OffsetFromHomePosition, 2), ");

  // A count of 0 or below reads nothing further.
  for (const char* hex : {"00 00 00 00 00 AA", "00 FF FF FF FF AA"}) {
    const Bytes bytes = Hex(hex);
    Quarp::UtArchive in(Quarp::UtArchive::Load, bytes);
    UtAxisMotionMap m;
    m.Serialize(in);
    EXPECT_EQ(in.GetRemaining(), 1u) << hex;
  }
  // That it travels as an object by its registered name: ClassNames.EveryRegisteredClassLoadsFromAFile.
}

TEST(UtIofMovePoint, SetAndGetByIndex) {
  TestSupport::AssertRecorder recorder;
  UtIofMovePoint p;
  EXPECT_EQ(p.ToString(), L"()");
  EXPECT_TRUE(p.SetValByIndex(0, 1.5));
  EXPECT_EQ(p.ToString(), L"( X1.50000000000000,)");
  EXPECT_FALSE(p.SetValByIndex(6, 1.0));
  EXPECT_FALSE(p.SetValByIndex(-1, 1.0));
  EXPECT_EQ(p.ToString(), L"( X1.50000000000000,)");
  double v = 7;
  bool set = true;
  EXPECT_TRUE(p.GetValByIndex(1, v, set));
  EXPECT_EQ(v, 0.0);
  EXPECT_FALSE(set);
  v = 7;
  EXPECT_FALSE(p.GetValByIndex(6, v, set));
  EXPECT_EQ(v, 7);
  EXPECT_EQ(recorder.Places(),
            (std::vector<std::string>{"DB/src/UtIofMovePoint:52 IOF::UtIofMovePoint::SetValByIndex",
                                      "DB/src/UtIofMovePoint:52 IOF::UtIofMovePoint::SetValByIndex",
                                      "DB/src/UtIofMovePoint:65 IOF::UtIofMovePoint::GetValByIndex"}));
  for (const auto& call : recorder.Calls()) EXPECT_EQ(call.message, call.function);  // the full function name
}

TEST(UtIofMovePoint, GetAbcTestsTheXyzFlags) {
  UtIofMovePoint onlyAbc;
  onlyAbc.SetABC(GmPoint3D(10, 20, 30));
  GmPoint3D abc;
  EXPECT_FALSE(onlyAbc.GetABC(abc));  // intended: the X, Y, Z flags decide
  EXPECT_EQ(abc, GmPoint3D(10, 20, 30));
  UtIofMovePoint onlyXyz;
  onlyXyz.SetXYZ(GmPoint3D(1, 2, 3));
  EXPECT_TRUE(onlyXyz.GetABC(abc));
  GmPoint3D xyz;
  EXPECT_TRUE(onlyXyz.GetXYZ(xyz));
  EXPECT_EQ(xyz, GmPoint3D(1, 2, 3));
  EXPECT_FALSE(onlyAbc.GetXYZ(xyz));
  EXPECT_EQ(onlyXyz.ToString(), L"( X1.00000000000000, Y2.00000000000000, Z3.00000000000000,)");
  std::vector<double> values;
  std::vector<bool> flags;
  onlyAbc.GetAllVals(values, flags);
  EXPECT_EQ(values, (std::vector<double>{0, 0, 0, 10, 20, 30}));
  EXPECT_EQ(flags, (std::vector<bool>{false, false, false, true, true, true}));
  onlyAbc.Reset();
  onlyAbc.GetAllVals(values, flags);
  EXPECT_EQ(values, (std::vector<double>{0, 0, 0, 10, 20, 30}));  // values stay
  EXPECT_EQ(flags, std::vector<bool>(6, false));
}

TEST(UtIofMovePoint, EqualityLooksAtCOnly) {
  UtIofMovePoint a, b;
  a.SetValByIndex(0, 1.0);
  b.SetValByIndex(0, 2.0);
  EXPECT_TRUE(a == b);  // X differs; only C is compared
  a.SetValByIndex(5, 1.0);
  EXPECT_FALSE(a == b);  // C flag differs
  b.SetValByIndex(5, 1.00000005);
  EXPECT_TRUE(a == b);
  b.SetValByIndex(5, 1.0000002);
  EXPECT_FALSE(a == b);
}

// The six-axis bytes are pinned by the record layout tables (motion blocks, planes).
// Loading takes the stored lengths.
TEST(UtIofMovePoint, ArchiveForm) {
  UtIofMovePoint two;
  ASSERT_TRUE(TestSupport::LoadAll(two, Hex("00 02 00 00 00 00 00 00 00 00 00 F8 3F 00 00 00 00 00 00 00 00"
                                            "01 00 00 00 01")));
  std::vector<double> values;
  std::vector<bool> flags;
  two.GetAllVals(values, flags);
  EXPECT_EQ(values.size(), 2u);
  EXPECT_EQ(flags, std::vector<bool>{true});
  EXPECT_EQ(two.ToString(), L"( X1.50000000000000,)");
  two.Reset();
  two.GetAllVals(values, flags);
  EXPECT_EQ(values.size(), 6u);
  // Lengths beyond the data are refused before allocating.
  UtIofMovePoint hostile;
  Bytes bad = Hex("00 FF FF FF 7F 00");
  Quarp::UtArchive in(Quarp::UtArchive::Load, bad);
  EXPECT_THROW(hostile.Serialize(in), Quarp::UtArchiveException);
}

}  // namespace

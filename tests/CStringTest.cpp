// CString: UTF-16 storage, conversions, editing, and the printf-style Format with the
// reference platform's semantics.
#include <afx/CString.h>
#include <quarp/DbId.h>
#include <quarp/UtString.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

TEST(CString, HoldsUtf16CodeUnits) {
  const CString s(L"A\U0001F600B");  // one character outside the BMP: a surrogate pair
  EXPECT_EQ(s.GetLength(), 4);
  EXPECT_EQ(s[1], 0xD83D);
  EXPECT_EQ(s[2], 0xDE00);
  EXPECT_EQ(s, L"A\U0001F600B");
  EXPECT_EQ(s.ToUtf8(),
            "A\xF0\x9F\x98\x80"
            "B");
  EXPECT_EQ(CString::FromUtf8(s.ToUtf8()), s);
  // The host string takes wide and narrow text.
  Quarp::UtString host("IOFNCILINEAR");
  EXPECT_EQ(host, L"IOFNCILINEAR");
  host = "narrow";
  EXPECT_EQ(host, L"narrow");
}

TEST(CString, EmptyStringsAreEqualAndAllocateNothing) {
  CString a;
  const CString b(L"");
  EXPECT_TRUE(a.IsEmpty());
  EXPECT_EQ(a, b);
  EXPECT_EQ(a, L"");
  EXPECT_EQ(a.GetString()[0], 0);
  EXPECT_EQ(sizeof(CString), sizeof(void*));
}

TEST(CString, Utf8ConversionReplacesWhatCannotBeConverted) {
  // Invalid UTF-8 (a lone continuation byte, an overlong form) becomes U+FFFD.
  EXPECT_EQ(CString::FromUtf8("a\x80z"), CString(u"a\xFFFDz"));
  EXPECT_EQ(CString::FromUtf8("\xC0\xAF"), CString(u"\xFFFD"));
  // An unpaired surrogate stays in the string but is written as U+FFFD in UTF-8.
  const char16_t lone[] = {u'x', 0xD800, u'y', 0};
  EXPECT_EQ(CString(lone).GetLength(), 3);
  EXPECT_EQ(CString(lone).ToUtf8(), "x\xEF\xBF\xBDy");
  EXPECT_EQ(CString::FromUtf8("Stra\xC3\x9F"
                              "e")
                .GetLength(),
            6);
}

TEST(CString, SearchAndEdit) {
  CString s(L"IOF::DbIOFBase::GetClass");
  EXPECT_EQ(s.Find(u':'), 3);
  EXPECT_EQ(s.Find(CString(L"Base")), 10);
  EXPECT_EQ(s.Find(CString(L"none")), -1);
  EXPECT_EQ(s.ReverseFind(u':'), 15);
  EXPECT_EQ(s.Mid(5, 9), L"DbIOFBase");
  EXPECT_EQ(s.Mid(20), L"lass");
  EXPECT_EQ(s.Mid(-3, 3), L"IOF");
  EXPECT_EQ(s.Mid(100), L"");
  EXPECT_EQ(s.Left(3), L"IOF");
  EXPECT_EQ(s.Right(5), L"Class");
  EXPECT_EQ(s.Delete(14, 100), 14);
  EXPECT_EQ(s, L"IOF::DbIOFBase");
  EXPECT_EQ(s.Delete(0, 5), 9);
  EXPECT_EQ(s, L"DbIOFBase");
  EXPECT_EQ(s.Delete(50, 1), 9);
  s += L"!";
  s += s;
  EXPECT_EQ(s, L"DbIOFBase!DbIOFBase!");
}

TEST(CString, OrdersByCodeUnit) {
  EXPECT_LT(CString(L"B"), CString(L"a"));
  EXPECT_LT(CString(L"a"), CString(L"ab"));
  EXPECT_EQ(CString(L"abc").Compare(CString(L"abc")), 0);
  EXPECT_NE(CString(L"abc"), CString(L"ABC"));
}

struct FormatCase {
  const char* what;
  CString actual;
  std::u16string expected;
};

TEST(CStringFormat, ConversionsTheSystemUses) {
  const Quarp::DbId bigId(0x1FFFFFFFFull);  // low 32 bits all set
  const std::int64_t big = 0x100000005ll;
  const std::vector<FormatCase> cases = {
      {"%d", CString::Formatted(L"%d", 42), u"42"},
      {"%d negative", CString::Formatted(L"%d", -1), u"-1"},
      {"%d of a 64-bit value", CString::Formatted(L"%d", big), u"5"},
      {"%d of a bool", CString::Formatted(L"%d", true), u"1"},
      {"%ld of a 64-bit id: low 32 bits, signed", CString::Formatted(L"%ld", bigId), u"-1"},
      {"%ld of a small id", CString::Formatted(L"%ld", Quarp::DbId(7)), u"7"},
      {"%ld of 2^32 + 7", CString::Formatted(L"%ld", Quarp::DbId(0x100000007ull)), u"7"},
      {"%lld keeps 64 bits", CString::Formatted(L"%lld", big), u"4294967301"},
      {"%I64d keeps 64 bits", CString::Formatted(L"%I64d", big), u"4294967301"},
      {"%u", CString::Formatted(L"%u", -1), u"4294967295"},
      {"%x", CString::Formatted(L"%x", 255), u"ff"},
      {"%x of -1", CString::Formatted(L"%x", -1), u"ffffffff"},
      {"%X", CString::Formatted(L"%X", 0xABCu), u"ABC"},
      {"%g zero", CString::Formatted(L"%g", 0.0), u"0"},
      {"%g small", CString::Formatted(L"%g", 1e-7), u"1e-07"},
      {"%g half", CString::Formatted(L"%g", 0.5), u"0.5"},
      {"%g of an int", CString::Formatted(L"%g", 3), u"3"},
      {"%f", CString::Formatted(L"%f", 0.0), u"0.000000"},
      {"%lf", CString::Formatted(L"%lf", 1.5), u"1.500000"},
      {"%lf negative zero", CString::Formatted(L"%lf", -0.0), u"-0.000000"},
      {"%.12g", CString::Formatted(L"%.12g", 1.000001), u"1.000001"},
      {"%.12g of 1.0000005", CString::Formatted(L"%.12g", 1.0000005), u"1.0000005"},
      {"%.7g", CString::Formatted(L"%.7g", 1.23456789), u"1.234568"},
      {"%14.14f", CString::Formatted(L"%14.14f", 1.5), u"1.50000000000000"},
      {"%7.3g", CString::Formatted(L"%7.3g,", 1.5), u"    1.5,"},
      {"%14.10g", CString::Formatted(L"%14.10g ", 2.0), u"             2 "},
      {"%d of a double truncates", CString::Formatted(L"%d", 2.9), u"2"},
      {"%s CString", CString::Formatted(L"%s", CString(L"AB")), u"AB"},
      {"%s wide", CString::Formatted(L"%s", L"wide"), u"wide"},
      {"%s UTF-8",
       CString::Formatted(L"%s",
                          "Stra\xC3\x9F"
                          "e"),
       u"Stra\u00DFe"},
      {"%s of an empty CString", CString::Formatted(L"[%s]", CString()), u"[]"},
      {"%s null", CString::Formatted(L"%s", static_cast<const wchar_t*>(nullptr)), u"(null)"},
      {"%s keeps surrogates", CString::Formatted(L"<%s>", CString(L"\U0001F600")), u"<\U0001F600>"},
      {"width and justification", CString::Formatted(L"%5s|%-5s|", L"ab", L"cd"), u"   ab|cd   |"},
      {"precision cuts text", CString::Formatted(L"%.2s", L"abc"), u"ab"},
      {"%%", CString::Formatted(L"100%%"), u"100%"},
      {"%c", CString::Formatted(L"%c", u'A'), u"A"},
      {"* width", CString::Formatted(L"[%*d]", 4, 7), u"[   7]"},
      {"a missing argument prints nothing", CString::Formatted(L"%d-%s.", 1), u"1-."},
      {"extra arguments are ignored", CString::Formatted(L"%d", 1, 2, 3), u"1"},
      {"mixed", CString::Formatted(L"G%d %s t=%gs", 1, CString(L"Before"), 0.25), u"G1 Before t=0.25s"},
  };
  for (const FormatCase& c : cases) {
    EXPECT_EQ(c.actual.View(), c.expected) << c.what << ": got " << c.actual;
  }
}

TEST(CStringFormat, AppendFormatAndReformat) {
  CString s(L"x=");
  s.AppendFormat(L"%d;", 3);
  EXPECT_EQ(s, L"x=3;");
  s.Format(L"%s", s);  // the argument is read before the string is replaced
  EXPECT_EQ(s, L"x=3;");
  s.Format(L"%s", L"");
  EXPECT_TRUE(s.IsEmpty());
}

}  // namespace

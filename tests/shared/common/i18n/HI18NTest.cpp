// HI18NTest.cpp: UTF-8 <-> UTF-16, well-formed text both ways and each kind of malformed input.
#include "i18n/HI18N.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(HI18NTest, WellFormedTextRoundTrips) {
  // One character of each UTF-8 length, the edges of the planes, and a NUL.
  std::string const utf8 = u8"a\u00e9\u07ff\u0800\uffff\U00010000\U0001F600\U0010FFFF" + std::string(1, '\0');
  std::u16string const utf16 =
      u"a\u00e9\u07ff\u0800\uffff\U00010000\U0001F600\U0010FFFF" + std::u16string(1, 0);
  EXPECT_EQ(HI18N::convert(utf8), utf16);
  EXPECT_EQ(HI18N::convert(utf16), utf8);
  EXPECT_EQ(HI18N::convert(std::string()), u"");
}

TEST(HI18NTest, MalformedUtf8BecomesOneReplacementPerBrokenSequence) {
  struct Case {
    std::string in;
    std::u16string out;
  };
  Case const cases[] = {
      {"\x80x", u"\ufffdx"},                              // stray continuation byte
      {"\xC0\xAF", u"\ufffd\ufffd"},                      // overlong lead that can start nothing
      {"\xE0\x80\xAF", u"\ufffd\ufffd\ufffd"},            // overlong three-byte form
      {"\xED\xA0\x80", u"\ufffd\ufffd\ufffd"},            // an encoded surrogate
      {"\xF4\x90\x80\x80", u"\ufffd\ufffd\ufffd\ufffd"},  // past U+10FFFF
      {"\xE2\x82", u"\ufffd"},                            // truncated at the end
      {"\xE2\x82x", u"\ufffdx"},                          // broken off: the next character survives
      {"\xF0\x9F\x98\xC3\xA9", u"\ufffd\u00e9"},
      {"\xFF", u"\ufffd"},
  };
  for (Case const& c : cases) {
    EXPECT_EQ(HI18N::convert(c.in), c.out) << testing::PrintToString(c.in);
  }
}

TEST(HI18NTest, UnpairedSurrogatesBecomeReplacements) {
  EXPECT_EQ(HI18N::convert(std::u16string(u"\xD800x")), u8"\ufffdx");
  EXPECT_EQ(HI18N::convert(std::u16string(u"x\xDC00")), u8"x\ufffd");
  EXPECT_EQ(HI18N::convert(std::u16string(u"\xDC00\xD800")), u8"\ufffd\ufffd");
}

}  // namespace

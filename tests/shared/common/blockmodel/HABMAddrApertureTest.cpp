// HABMAddrApertureTest.cpp: reading and printing apertures, their addresses and relations.
#include "blockmodel/HABMAddrAperture.h"

#include <gtest/gtest.h>

#include <bitset>
#include <random>
#include <regex>
#include <string>
#include <vector>

namespace {

using V = HABMAddrValue;
using A = HABMAddrAperture;

A ap(std::uint64_t base, std::uint64_t range) {
  return A(V(0, base), V(0, range));
}

// The reader as one regular expression: "base[range]", "base range" (backtracking splits a lone field
// before its last character) or "base:high", blanks allowed around every part.
A referenceRead(std::string const& text) {
  static std::regex const form("^\\s*(\\w+)\\s*(?:\\[\\s*(\\w+)\\s*\\]|(\\w+)|:\\s*(\\w+))\\s*$");
  std::smatch m;
  if (!std::regex_match(text, m, form)) {
    return A();
  }
  V const base(m[1].str()), high(m[4].str());
  if (!m[4].matched) {
    return A(base, V(m[m[2].matched ? 2 : 3].str()));
  }
  return A(base, high < base ? V() : high - base + V(1U));  // below the base the range stays 0
}

TEST(HABMAddrAperture, ReadsRandomTextsAsTheRegularExpressionDoesAndPrintsFormsThatReadBack) {
  std::mt19937_64 rng(4242);
  std::vector<std::string> const parts[] = {
      {"", " ", "\t\n", "\v"},
      {"", "0x1000", "4K", "zz", "7", "0X1F", "b101", "#1", "-1", "1 2"},
      {"", "[", "]", ":", ",", "]x", "\xE9"}};
  for (int i = 0; i < 20000; ++i) {
    std::string text;
    for (int kind : {0, 1, 0, 2, 0, 1, 0, 2, 0}) {  // blanks, a field, blanks, a mark, ...
      text += parts[kind][rng() % parts[kind].size()];
    }
    A const got(text), want = referenceRead(text);
    ASSERT_EQ(got, want) << '"' << text << '"';
    ASSERT_EQ(got.getBaseAddress().isValid(), want.getBaseAddress().isValid()) << '"' << text << '"';
    ASSERT_EQ(got.getRange().isValid(), want.getRange().isValid()) << '"' << text << '"';
  }
  // The printed forms read back.
  EXPECT_EQ(ap(0x1000, 0x1000).getBaseAbrvString(32), "0x0000_1000[4K]");
  EXPECT_EQ(ap(0x1000, 0x1000).getTclListString(), "{0x1000 4K}");
  EXPECT_EQ(ap(0x1000, 0x1000).getTclDictString(), "{base 0x1000 range 4K}");
  for (int i = 0; i < 20000; ++i) {
    A const x(V(rng(), rng()), V(0, rng() % 4096 + 1) << static_cast<int>(rng() % 64));
    unsigned const bits = static_cast<unsigned>(rng() % 3) * 32;
    ASSERT_EQ(A(x.getBaseAbrvString(bits)), x) << x;
    if (!(x.getHighAddress() < x.getBaseAddress())) {  // not wrapped past 2^128
      ASSERT_EQ(A(x.getBaseHighString(bits)), x) << x;
    }
  }
}

TEST(HABMAddrAperture,
     RelationsAndAlignmentMatchTheAddressSetsOfRandomAperturesAndTheNextAddressStaysAboveTheBase) {
  // The addresses of an aperture from its base and range alone; an empty one stands for its base.
  auto const cover = [](A const& x) {
    auto const base = x.getBaseAddress().getUInt64Value(), range = x.getRange().getUInt64Value();
    return ~(~std::bitset<128>() << (range == 0 ? 1 : range)) << base;
  };
  std::mt19937 rng(3);
  for (int i = 0; i < 20000; ++i) {
    A const a = ap(rng() % 64, rng() % 24), b = ap(rng() % 64, rng() % 24);
    auto const ca = cover(a), cb = cover(b);
    SCOPED_TRACE(::testing::Message() << a << ' ' << b);
    ASSERT_EQ(a.overlaps(b), (ca & cb).any());
    ASSERT_EQ(a.subset(b), (ca & ~cb).none());
    ASSERT_EQ(a.superset(b), (cb & ~ca).none());
    ASSERT_EQ(a.contigous(b), (ca & cb).none() && (((ca << 1) | (ca >> 1)) & cb).any());
    // The base a multiple of the range rounded up to a power of two, which is 2 for a range of 0.
    ASSERT_EQ(a.aligned(), a.getBaseAddress() % a.getRange().roundUpPow2() == V());
  }
  // The next address cannot be set at or below the base.
  A a = ap(0x1000, 0x1000);
  EXPECT_TRUE(a.setNextAddress(V(0x3000U)));
  EXPECT_FALSE(a.setNextAddress(V(0x1000U)));
  EXPECT_EQ(a, ap(0x1000, 0x2000));  // the refused one changed nothing
}

}  // namespace

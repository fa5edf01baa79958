// HABMAddrApertureTest.cpp: reading, printing, order and relations of apertures.
#include "blockmodel/HABMAddrAperture.h"

#include <gtest/gtest.h>

#include <random>
#include <regex>
#include <string>

namespace {

using V = HABMAddrValue;
using A = HABMAddrAperture;

A ap(std::uint64_t base, std::uint64_t range) {
  return A(V(0, base), V(0, range));
}

// The reader written out with real regular expressions, tried in order on the trimmed text.
A referenceRead(std::string const& text) {
  std::string const t = std::regex_replace(text, std::regex("^\\s+|\\s+$"), "");
  if (t.empty()) {
    return A();
  }
  static std::regex const forms[] = {std::regex("^\\s*(\\w+)\\s*\\[\\s*(\\w+)\\s*\\]\\s*$"),
                                     std::regex("^\\s*(\\w+)\\s*(\\w+)\\s*$"),
                                     std::regex("^\\s*(\\w+)\\s*:\\s*(\\w+)\\s*$")};
  std::smatch m;
  for (int form = 0; form < 3; ++form) {
    if (std::regex_match(t, m, forms[form])) {
      A out(V(m[1].str()), form < 2 ? V(m[2].str()) : V());
      if (form == 2) {
        out.setHighAddress(V(m[2].str()));
      }
      return out;
    }
  }
  return A();
}

void expectSame(A const& got, A const& want, std::string const& text) {
  ASSERT_EQ(got, want) << '"' << text << '"';
  ASSERT_EQ(got.getBaseAddress().isValid(), want.getBaseAddress().isValid()) << '"' << text << '"';
  ASSERT_EQ(got.getRange().isValid(), want.getRange().isValid()) << '"' << text << '"';
}

TEST(HABMAddrApertureRead, TextsGiveTheirBaseAndRange) {
  struct {
    char const* text;
    std::uint64_t base, range;
  } const cases[] = {
      {"0x1000[4K]", 0x1000, 0x1000},
      {"0x1000 [ 0x1000 ]", 0x1000, 0x1000},
      {" \t0x1_0000[64K]\n", 0x10000, 0x10000},
      {"0x1000 4K", 0x1000, 0x1000},
      {"4096", 409, 6},
      {"0x1000", 0x100, 0},
      {"0x1000:0x1FFF", 0x1000, 0x1000},
      {"0x1000 : 0x1000", 0x1000, 1},
      {"0x2000:0x1000", 0x2000, 0},
      {"", 0, 0},
      {"   ", 0, 0},
      {"7", 0, 0},
      {"#1000[4K]", 0, 0},
      {"-1[4K]", 0, 0},
      {"1 2 3", 0, 0},
      {"0x1000[4K", 0, 0},
      {"zz[4K]", 0, 0x1000},
      {"0x10[4K]x", 0, 0},
  };
  for (auto const& c : cases) {
    EXPECT_EQ(A(std::string(c.text)), ap(c.base, c.range)) << '"' << c.text << '"';
  }
  EXPECT_FALSE(A(std::string("zz[4K]")).getBaseAddress().isValid());
  EXPECT_TRUE(A(std::string("zz[4K]")).isValid());
  EXPECT_EQ(A(), A::ILLEGAL());
  EXPECT_EQ(A::DEFAULT(), ap(0, 0x10000));
}

TEST(HABMAddrApertureRead, AgreesWithTheRegularExpressionsOnRandomTexts) {
  std::mt19937 rng(4242);
  std::string const pieces[] = {"0x1000", "4K", "zz", "_", "7", "0X1F", "b101", " ",  "  ", "\t", "\n",
                                "[",      "]",  ":",  ",", "#", "-",    "\xE9", "\v", "q",  "1",  "0"};
  for (int i = 0; i < 12000; ++i) {
    std::string text;
    for (auto n = rng() % 8; n > 0; --n) {
      text += pieces[rng() % std::size(pieces)];
    }
    expectSame(A(text), referenceRead(text), text);
  }
}

TEST(HABMAddrAperturePrint, FormsOfOneAperture) {
  A const a = ap(0x1000, 0x1000);
  EXPECT_EQ(a.getBaseAbrvString(), "0x1000[4K]");
  EXPECT_EQ(a.getBaseHighString(), "0x1000:0x1FFF");
  EXPECT_EQ(a.getTclListString(), "{0x1000 4K}");
  EXPECT_EQ(a.getTclDictString(), "{base 0x1000 range 4K}");
  EXPECT_EQ(a.getBaseAbrvString(32), "0x0000_1000[4K]");
  EXPECT_EQ(a.getBaseHighString(32), "0x0000_1000:0x0000_1FFF");
}

TEST(HABMAddrAperturePrint, ReadableFormsReadBack) {
  std::mt19937_64 rng(7);
  for (int i = 0; i < 20000; ++i) {
    unsigned const shift = static_cast<unsigned>(rng() % 120);
    A const a(V(rng(), rng()), V(0, rng() % 4096 + 1) << static_cast<int>(shift % 64));
    unsigned const bits = static_cast<unsigned>(rng() % 3) * 32;
    ASSERT_EQ(A(a.getBaseAbrvString(bits)), a) << a;
    if (!(a.getHighAddress() < a.getBaseAddress())) {
      ASSERT_EQ(A(a.getBaseHighString(bits)), a) << a;
    }
  }
}

TEST(HABMAddrApertureOrder, ByBaseThenRange) {
  EXPECT_LT(ap(0x1000, 0x1000), ap(0x1000, 0x2000));
  EXPECT_LT(ap(0x1000, 0x2000), ap(0x2000, 1));
  EXPECT_FALSE(ap(0x2000, 1) < ap(0x1000, 0x2000));
  EXPECT_NE(ap(0x1000, 1), ap(0x1000, 2));
}

TEST(HABMAddrApertureAddress, HighAndNextAddress) {
  A const top(V::CONST_MAX(), V::CONST_1());
  EXPECT_EQ(top.getHighAddress(), V::CONST_MAX());
  EXPECT_EQ(top.getNextAddress(), V::CONST_0());
  EXPECT_EQ(ap(0x1000, 0).getHighAddress(), V(0x1000U));

  A a = ap(0x1000, 0x1000);
  EXPECT_TRUE(a.setHighAddress(V(0x1000U)));
  EXPECT_EQ(a.getRange(), V(1U));
  EXPECT_FALSE(a.setNextAddress(V(0x1000U)));
  EXPECT_FALSE(a.setHighAddress(V(0xFFFU)));
  EXPECT_EQ(a.getRange(), V(1U));
  EXPECT_TRUE(a.setNextAddress(V(0x3000U)));
  EXPECT_EQ(a.getRange(), V(0x2000U));
  a.setBaseAddress(V(0x8000U));
  EXPECT_EQ(a.getRange(), V(0x2000U));
  EXPECT_EQ(a.getHighAddress(), V(0x9FFFU));
}

TEST(HABMAddrApertureRelation, OverlapContainmentAndAdjacency) {
  A const low = ap(0, 0x1000);
  A const next = ap(0x1000, 0x1000);
  EXPECT_FALSE(low.overlaps(next));
  EXPECT_TRUE(low.contigous(next));
  EXPECT_TRUE(next.contigous(low));
  EXPECT_EQ(low.unification(next), ap(0, 0x2000));
  EXPECT_EQ(low.intersection(next), A::ILLEGAL());
  EXPECT_EQ(ap(0, 0x1000).unification(ap(0x1001, 1)), A::ILLEGAL());

  A const shared = ap(0xFFF, 0x10);
  EXPECT_TRUE(low.overlaps(shared));
  EXPECT_EQ(low.intersection(shared), ap(0xFFF, 1));

  EXPECT_TRUE(low.subset(low));
  EXPECT_TRUE(low.superset(low));
  EXPECT_TRUE(ap(0x100, 0x10).subset(low));
  EXPECT_FALSE(low.subset(ap(0x100, 0x10)));
  EXPECT_TRUE(A::ILLEGAL().overlaps(low));
  EXPECT_FALSE(A::ILLEGAL().isValid());
}

TEST(HABMAddrApertureRelation, Alignment) {
  struct {
    std::uint64_t base, range;
    bool aligned;
  } const cases[] = {
      {0x1000, 0x1000, true}, {0x1000, 0x1800, false}, {0, 0x1800, true},  {0, 0, true},
      {0x2000, 0x1800, true}, {0x1000, 0, true},       {0x1001, 0, false}, {0x1001, 1, true},
  };
  for (auto const& c : cases) {
    EXPECT_EQ(ap(c.base, c.range).aligned(), c.aligned) << ap(c.base, c.range);
  }
}

}  // namespace

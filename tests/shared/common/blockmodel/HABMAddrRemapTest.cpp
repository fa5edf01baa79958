// HABMAddrRemapTest.cpp: reading, printing and order of address remaps.
#include "blockmodel/HABMAddrRemap.h"

#include <gtest/gtest.h>

#include <random>
#include <regex>
#include <string>

namespace {

using V = HABMAddrValue;
using R = HABMAddrRemap;

R rm(std::uint64_t source, std::uint64_t target, std::uint64_t range) {
  return R(V(0, source), V(0, target), V(0, range));
}

// The reader written out with real regular expressions, stage after stage.
R referenceRead(std::string const& text) {
  std::string const t = std::regex_replace(text, std::regex("^\\s+|\\s+$"), "");
  if (t.empty()) {
    return R();
  }
  static std::regex const fields[] = {std::regex("^\\s*(\\w+)\\s+(\\w+)\\s+(\\w+)\\s*$"),
                                      std::regex("^\\s*(\\w+)\\s*,\\s*(\\w+)\\s*\\[\\s*(\\w+)\\s*\\]\\s*$")};
  static std::regex const pair("^([^,]+),([^,]+)$");
  std::smatch m;
  for (auto const& re : fields) {
    if (std::regex_match(t, m, re)) {
      V const s(m[1].str()), d(m[2].str()), r(m[3].str());
      return s.isValid() && d.isValid() && r.isValid() ? R(s, d, r) : R();
    }
  }
  if (std::regex_match(t, m, pair)) {
    HABMAddrAperture const s(m[1].str()), d(m[2].str());
    return s.isValid() && d.isValid() ? R(s.getBaseAddress(), d.getBaseAddress(), s.getRange()) : R();
  }
  HABMAddrAperture const a(t);
  return a.isValid() ? R(a.getBaseAddress(), a.getBaseAddress(), a.getRange()) : R();
}

TEST(HABMAddrRemapRead, TextsGiveTheirFields) {
  struct {
    char const* text;
    std::uint64_t source, target, range;
  } const cases[] = {
      {"0x1000 0x8000 4K", 0x1000, 0x8000, 0x1000},
      {"0x1000,0x8000[4K]", 0x1000, 0x8000, 0x1000},
      {"0x1000 , 0x8000 [ 4K ]", 0x1000, 0x8000, 0x1000},
      {"0x1000[4K],0x8000[1]", 0x1000, 0x8000, 0x1000},
      {"0x1000:0x1FFF,0x8000:0x8FFF", 0x1000, 0x8000, 0x1000},
      {"0x1000[4K]", 0x1000, 0x1000, 0x1000},
      {"0x1000 0x8000", 0x1000, 0x1000, 0x8000},
      {"zz 0x8000 4K", 0, 0, 0},
      {"0x1000[0],0x8000[4K]", 0, 0, 0},
      {"0x1000[4K],0x8000[4K],0x0[1]", 0, 0, 0},
      {"", 0, 0, 0},
      {"  ", 0, 0, 0},
      {"0x1000,0x8000[zz]", 0, 0, 0},
  };
  for (auto const& c : cases) {
    EXPECT_EQ(R(std::string(c.text)), rm(c.source, c.target, c.range)) << '"' << c.text << '"';
  }
  EXPECT_EQ(R(std::string("")), R());
  EXPECT_FALSE(R().isValid());
}

TEST(HABMAddrRemapRead, AgreesWithTheRegularExpressionsOnRandomTexts) {
  std::mt19937 rng(99);
  std::string const pieces[] = {"0x1000", "4K", "zz", "_", "7", "b1",   " ", "  ", "\t", "[",
                                "]",      ":",  ",",  ",", "#", "\xE9", "q", "1",  "0",  "0x8000[4K]"};
  for (int i = 0; i < 12000; ++i) {
    std::string text;
    for (auto n = rng() % 9; n > 0; --n) {
      text += pieces[rng() % std::size(pieces)];
    }
    R const got(text);
    R const want = referenceRead(text);
    ASSERT_EQ(got, want) << '"' << text << '"';
  }
}

TEST(HABMAddrRemapPrint, FormsAndReadBack) {
  R const r = rm(0x1000, 0x8000, 0x1000);
  EXPECT_EQ(r.getBaseAbrvString(), "0x1000,0x8000[4K]");
  EXPECT_EQ(r.getTclListString(), "{0x1000 0x8000 4K}");
  EXPECT_EQ(r.getTclDictString(), "{source 0x1000 target 0x8000 range 4K}");
  EXPECT_EQ(r.getSourceAperture().getRange(), r.getTargetAperture().getRange());
  std::mt19937_64 rng(5);
  for (int i = 0; i < 20000; ++i) {
    R const x(V(rng(), rng()), V(rng(), rng()), V(0, rng() % 4096) << static_cast<int>(rng() % 64));
    ASSERT_EQ(R(x.getBaseAbrvString(static_cast<unsigned>(rng() % 3) * 32)), x) << x;
  }
}

TEST(HABMAddrRemapOrder, BySourceThenTargetThenRange) {
  EXPECT_LT(rm(1, 9, 9), rm(2, 0, 0));
  EXPECT_LT(rm(1, 1, 9), rm(1, 2, 0));
  EXPECT_LT(rm(1, 2, 3), rm(1, 2, 4));
  EXPECT_FALSE(rm(1, 2, 4) < rm(1, 2, 3));
}

}  // namespace

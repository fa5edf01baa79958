// HABMAddrRemapTest.cpp: reading, printing and order of address remaps.
#include "blockmodel/HABMAddrRemap.h"

#include <gtest/gtest.h>

#include <random>
#include <regex>
#include <string>

namespace {

using V = HABMAddrValue;
using R = HABMAddrRemap;

// The reader written out with regular expressions, stage after stage: three fields ("s t r" or "s,t[r]"),
// else two apertures around one comma, else one aperture as an identity.
R referenceRead(std::string const& text) {
  static std::regex const fields(R"(^\s*(\w+)(?:\s+(\w+)\s+(\w+)|\s*,\s*(\w+)\s*\[\s*(\w+)\s*\])\s*$)");
  static std::regex const pair("^([^,]+),([^,]+)$");
  std::smatch m;
  if (std::regex_match(text, m, fields)) {
    V const s(m[1].str()), t(m[m[2].matched ? 2 : 4].str()), r(m[m[2].matched ? 3 : 5].str());
    return s.isValid() && t.isValid() && r.isValid() ? R(s, t, r) : R();
  }
  bool const two = std::regex_match(text, m, pair);
  HABMAddrAperture const s(two ? m[1].str() : text), t(two ? m[2].str() : text);
  return s.isValid() && t.isValid() ? R(s.getBaseAddress(), t.getBaseAddress(), s.getRange()) : R();
}

TEST(HABMAddrRemap, ReadsRandomTextsAsTheRegularExpressionsDoPrintsFormsThatReadBackAndOrdersBySource) {
  std::mt19937_64 rng(99);
  std::string const fields[] = {"", "0x1000", "4K", "zz", "0x8000[4K]", "0:1", "b1"};
  std::string const marks[] = {" ", "\t", ",", " , ", "[", " [", "]", "\xE9"};
  for (int i = 0; i < 100000; ++i) {
    std::string text(rng() % 2, ' ');
    for (int field = 0; field < 3; ++field) {
      text += fields[rng() % std::size(fields)] + marks[rng() % std::size(marks)];
    }
    ASSERT_EQ(R(text), referenceRead(text)) << '"' << text << '"';
  }
  // The printed forms read back.
  R const r(V(0x1000U), V(0x8000U), V(0x1000U));
  EXPECT_EQ(r.getBaseAbrvString(), "0x1000,0x8000[4K]");
  EXPECT_EQ(r.getTclListString(), "{0x1000 0x8000 4K}");
  EXPECT_EQ(r.getTclDictString(), "{source 0x1000 target 0x8000 range 4K}");
  for (int i = 0; i < 20000; ++i) {
    R const x(V(rng(), rng()), V(rng(), rng()), V(0, rng() % 4096) << static_cast<int>(rng() % 64));
    ASSERT_EQ(R(x.getBaseAbrvString(static_cast<unsigned>(rng() % 3) * 32)), x) << x;
  }
  // Remaps order by source, then target, then range.
  EXPECT_LT(R(V(1U), V(9U), V(9U)), R(V(2U), V(0U), V(0U)));
  EXPECT_LT(R(V(1U), V(1U), V(9U)), R(V(1U), V(2U), V(0U)));
  EXPECT_LT(R(V(1U), V(2U), V(3U)), R(V(1U), V(2U), V(4U)));
  EXPECT_FALSE(R(V(1U), V(2U), V(3U)) < R(V(1U), V(2U), V(3U)));
}

}  // namespace

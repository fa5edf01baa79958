// HABMAddrValueTest.cpp: reading, printing and arithmetic of 128-bit address values.
#include "blockmodel/HABMAddrValue.h"

#include <boost/algorithm/string/trim.hpp>
#include <boost/multiprecision/cpp_int.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <random>
#include <regex>
#include <string>
#include <vector>

namespace {

using boost::multiprecision::cpp_int_backend;
using boost::multiprecision::number;
using Wide = number<cpp_int_backend<128, 128, boost::multiprecision::unsigned_magnitude,
                                    boost::multiprecision::unchecked, void>>;

HABMAddrValue fromWide(Wide const& w) {
  return HABMAddrValue(static_cast<std::uint64_t>(w >> 64),
                       static_cast<std::uint64_t>(w & ~std::uint64_t{0}));
}

// The reading rules written out literally over Boost's own string assignment, the trim of the global
// locale and a real regular expression: the fast reader must agree with it on every text.
HABMAddrValue referenceRead(std::string const& text) {
  if (text.empty()) {
    return HABMAddrValue(text);
  }
  std::string t = text;
  t.erase(std::remove(t.begin(), t.end(), '_'), t.end());
  boost::algorithm::trim(t);
  if (!t.empty() && t[0] == '#') {
    t.replace(0, 1, "0x");
  }
  auto numberReader = [](std::string const& s, Wide& out) {
    try {
      cpp_int_backend<128, 128, boost::multiprecision::unsigned_magnitude, boost::multiprecision::unchecked,
                      void>
          b;
      b = s.c_str();
      out = Wide(b);
      return true;
    } catch (...) {
      return false;
    }
  };
  Wide w = 0;
  bool ok = true;
  if (t.size() >= 2 && t[0] == '0' && (t[1] == 'x' || t[1] == 'X')) {
    ok = numberReader(t, w);
  } else if (!t.empty() && (t[0] == 'b' || t[0] == 'B')) {
    std::string const bits = t.substr(1);
    for (std::size_t i = 0; i < bits.size() && i < 128; ++i) {
      if (bits[bits.size() - 1 - i] == '1') {
        boost::multiprecision::bit_set(w, static_cast<unsigned>(i));
      }
    }
  } else {
    std::string upper = t;
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](char c) { return static_cast<char>(std::toupper(static_cast<unsigned char>(c))); });
    static std::regex const sizeForm("^([0-9]+)([KMGTPEZY])B?$");
    std::smatch m;
    if (std::regex_match(upper, m, sizeForm)) {
      ok = numberReader(m[1].str(), w);
      w <<= 10 * (1 + static_cast<unsigned>(std::string("KMGTPEZY").find(m[2].str()[0])));
    } else {
      ok = numberReader(t, w);
    }
  }
  if (!ok) {
    return HABMAddrValue(std::string());
  }
  return fromWide(w);
}

struct ReadCase {
  char const* text;
  std::uint64_t high;
  std::uint64_t low;
  bool valid;
};

TEST(HABMAddrValueRead, TextsGiveTheirNumberAndValidity) {
  constexpr std::uint64_t kAll = ~std::uint64_t{0};
  ReadCase const cases[] = {
      {"", 0, 0, false},
      {"_", 0, 0, true},
      {"   ", 0, 0, true},
      {"-", 0, 0, true},
      {"-0x10", kAll, kAll - 15, true},
      {"-1", kAll, kAll, true},
      {"0xFFFF_FFFF_FFFF_FFFF_FFFF_FFFF_FFFF_FFFF_F", kAll, kAll, true},
      {"256Y", 1ULL << 24, 0, true},
      {"1099511627776Y", 1ULL << 56, 0, true},
      {"281474976710656Y", 0, 0, true},
      {"12abc", 0, 0, false},
      {"0xG", 0, 0, false},
      {"09", 0, 0, false},
      {"1.5K", 0, 0, false},
      {"b2", 0, 0, true},
      {"bad", 0, 0, true},
      {"B-12", 0, 2, true},
      {"b", 0, 0, true},
      {"b102", 0, 4, true},
      {"1E", 0, 1ULL << 60, true},
      {"0x1E", 0, 30, true},
      {"zzz", 0, 0, false},
      {"#", 0, 0, true},
      {"0x", 0, 0, true},
      {"010", 0, 8, true},
      {"010K", 0, 8 << 10, true},
      {"08K", 0, 0, false},
      {"64B", 0, 0, false},
      {"64 K", 0, 0, false},
      {"64KiB", 0, 0, false},
      {"+1", 0, 0, false},
      {"--1", 0, 0, false},
      {" \t0x_1_0 \n", 0, 16, true},
      {"340282366920938463463374607431768211457", 0, 1, true},
  };
  for (auto const& c : cases) {
    HABMAddrValue const v{std::string(c.text)};
    EXPECT_EQ(v, HABMAddrValue(c.high, c.low)) << '"' << c.text << '"';
    EXPECT_EQ(v.isValid(), c.valid) << '"' << c.text << '"';
  }
}

TEST(HABMAddrValueRead, EveryFormOfTheSameNumberAgrees) {
  for (char const* text : {"0x1_0000", "0X10000", "#10000", "65536", "64K", "64kb", "0200000",
                           "b10000000000000000", "64_K", "0x0001_0000"}) {
    HABMAddrValue const v{std::string(text)};
    EXPECT_EQ(v, HABMAddrValue::CONST_64K()) << text;
    EXPECT_TRUE(v.isValid()) << text;
  }
}

TEST(HABMAddrValueRead, TextEndsAtAnEmbeddedNulForTheNumberReader) {
  EXPECT_EQ(HABMAddrValue(std::string("12\0ab", 5)), HABMAddrValue(12U));
  // The binary form is not a number-reader text: the NUL is just a skipped character.
  EXPECT_EQ(HABMAddrValue(std::string("b1\0"
                                      "1",
                                      4)),
            HABMAddrValue(5U));
}

TEST(HABMAddrValueRead, AgreesWithTheLiteralRulesOnRandomTexts) {
  std::mt19937 rng(20261121);
  std::string const alphabet = "0123456789abcdefABCDEFxXbBkKmMgGtTpPeEzZyY_ #-+.\t\n\0";
  std::vector<std::string> const prefixes = {"", "0x", "0X", "#", "b", "B", "-", "0", " ", "-0x", "_"};
  for (int i = 0; i < 20000; ++i) {
    std::string text = prefixes[rng() % prefixes.size()];
    auto const len = rng() % 40;
    for (unsigned j = 0; j < len; ++j) {
      text += alphabet[rng() % alphabet.size()];
    }
    HABMAddrValue const got(text);
    HABMAddrValue const want = referenceRead(text);
    ASSERT_EQ(got, want) << '"' << text << '"';
    ASSERT_EQ(got.isValid(), want.isValid()) << '"' << text << '"';
  }
}

TEST(HABMAddrValueRead, NamedConstantsHaveTheirPowersOfTwo) {
  struct {
    HABMAddrValue const& value;
    int power;
  } const cases[] = {
      {HABMAddrValue::CONST_1(), 0},     {HABMAddrValue::CONST_1K(), 10}, {HABMAddrValue::CONST_4K(), 12},
      {HABMAddrValue::CONST_64K(), 16},  {HABMAddrValue::CONST_1M(), 20}, {HABMAddrValue::CONST_1G(), 30},
      {HABMAddrValue::CONST_4G(), 32},   {HABMAddrValue::CONST_1T(), 40}, {HABMAddrValue::CONST_16T(), 44},
      {HABMAddrValue::CONST_256T(), 48}, {HABMAddrValue::CONST_1P(), 50}, {HABMAddrValue::CONST_1E(), 60},
      {HABMAddrValue::CONST_16E(), 64},  {HABMAddrValue::CONST_1Z(), 70}, {HABMAddrValue::CONST_1Y(), 80},
  };
  for (auto const& c : cases) {
    EXPECT_EQ(c.value, HABMAddrValue::CONST_1() << c.power) << c.power;
    EXPECT_TRUE(c.value.isValid());
  }
  EXPECT_EQ(HABMAddrValue::CONST_0(), HABMAddrValue());
  EXPECT_EQ(HABMAddrValue::CONST_MAX(), HABMAddrValue(~std::uint64_t{0}, ~std::uint64_t{0}));
  EXPECT_EQ(HABMAddrValue::MAX_BITS(), 128U);
  EXPECT_EQ(HABMAddrValue(std::string("zzz")), HABMAddrValue::CONST_0());
}

struct PrintCase {
  HABMAddrValue value;
  unsigned bits;
  char const* hex;
  char const* pretty;
  char const* bin;
};

TEST(HABMAddrValuePrint, HexPrettyAndBinaryForms) {
  PrintCase const cases[] = {
      {HABMAddrValue(0x1000U), 0, "0x1000", "0x1000", "b1000000000000"},
      {HABMAddrValue(0x1000U), 32, "0x00001000", "0x0000_1000", "b00000000000000000001000000000000"},
      {HABMAddrValue(0x1000U), 30, "0x00001000", "0x0000_1000", "b000000000000000001000000000000"},
      {HABMAddrValue::CONST_64K(), 0, "0x10000", "0x1_0000", "b10000000000000000"},
      {HABMAddrValue(0U), 0, "0x0", "0x0", "b0"},
      {HABMAddrValue(5U), 8, "0x05", "0x05", "b00000101"},
      {HABMAddrValue(0xABCDEFU), 4, "0xABCDEF", "0xAB_CDEF", "b101010111100110111101111"},
      {HABMAddrValue::CONST_MAX(), 0, "0xFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF",
       "0xFFFF_FFFF_FFFF_FFFF_FFFF_FFFF_FFFF_FFFF", nullptr},
  };
  for (auto const& c : cases) {
    EXPECT_EQ(c.value.getHexStringValue(c.bits), c.hex);
    EXPECT_EQ(c.value.getPrettyHexStringValue(c.bits), c.pretty);
    if (c.bin != nullptr) {
      EXPECT_EQ(c.value.getBinStringValue(c.bits), c.bin);
    }
  }
  EXPECT_EQ(HABMAddrValue::CONST_MAX().getBinStringValue(), "b" + std::string(128, '1'));
}

TEST(HABMAddrValuePrint, IntegerAndSizeFormsKeepOnlyTheLow64BitsOfTheirNumber) {
  struct {
    HABMAddrValue value;
    char const* integer;
    char const* size;
  } const cases[] = {
      {HABMAddrValue(0U), "0", "0"},
      {HABMAddrValue(1U), "1", "1"},
      {HABMAddrValue(1000U), "1000", "1000"},
      {HABMAddrValue(0x400U), "1024", "1K"},
      {HABMAddrValue::CONST_64K(), "65536", "64K"},
      {HABMAddrValue(0x180000U), "1572864", "1536K"},
      {HABMAddrValue::CONST_4G(), "4294967296", "4G"},
      {HABMAddrValue::CONST_16E(), "0", "16E"},
      {HABMAddrValue::CONST_1Y(), "0", "1Y"},
      {HABMAddrValue::CONST_1Y() << 1, "0", "2Y"},
      {HABMAddrValue::CONST_1Y() << 40, "0", "1099511627776Y"},
      {HABMAddrValue::CONST_MAX(), "18446744073709551615", "18446744073709551615"},
  };
  for (auto const& c : cases) {
    EXPECT_EQ(c.value.getIntStringValue(), c.integer) << c.value;
    EXPECT_EQ(c.value.getAbrvStringValue(), c.size) << c.value;
  }
}

TEST(HABMAddrValuePrint, PrintedFormsReadBackToTheSameValue) {
  std::mt19937_64 rng(7);
  for (int i = 0; i < 5000; ++i) {
    // Mix full-width values with small and sparse ones, where padding and units matter.
    std::uint64_t hi = rng();
    std::uint64_t lo = rng();
    switch (i % 4) {
      case 0:
        hi = 0;
        lo >>= rng() % 64;
        break;
      case 1:
        hi >>= rng() % 64;
        break;
      case 2:
        lo = 0;
        hi &= 0xFF;
        break;
      default:
        break;
    }
    HABMAddrValue const v(hi, lo);
    unsigned const bits = static_cast<unsigned>(rng() % 140);
    std::vector<std::string> texts = {v.getHexStringValue(bits), v.getPrettyHexStringValue(bits),
                                      v.getBinStringValue(bits)};
    // The size form prints a 64-bit quotient: lossless below 2^64 and for small multiples of 2^64.
    if (hi == 0 || (lo == 0 && hi <= 0xFF)) {
      texts.push_back(v.getAbrvStringValue());
    }
    if (hi == 0) {
      texts.push_back(v.getIntStringValue());
    }
    for (auto const& text : texts) {
      HABMAddrValue const back(text);
      ASSERT_EQ(back, v) << text;
      ASSERT_TRUE(back.isValid()) << text;
    }
  }
}

TEST(HABMAddrValueArith, WrapsModulo2To128AndSwallowsDivisionByZero) {
  HABMAddrValue const max = HABMAddrValue::CONST_MAX();
  HABMAddrValue const one = HABMAddrValue::CONST_1();
  EXPECT_EQ(max + one, HABMAddrValue::CONST_0());
  EXPECT_EQ(HABMAddrValue::CONST_0() - one, max);
  EXPECT_EQ(HABMAddrValue(3U) - HABMAddrValue(5U), max - one);
  EXPECT_EQ(HABMAddrValue::CONST_1Y() * HABMAddrValue::CONST_1Y(), HABMAddrValue::CONST_0());
  EXPECT_EQ(HABMAddrValue::CONST_16E() * HABMAddrValue(3U), HABMAddrValue(3U, 0));
  EXPECT_EQ(HABMAddrValue(7U) / HABMAddrValue::CONST_0(), HABMAddrValue::CONST_0());
  EXPECT_EQ(HABMAddrValue(7U) % HABMAddrValue::CONST_0(), HABMAddrValue(7U));
  EXPECT_EQ(HABMAddrValue(7U) / HABMAddrValue(2U), HABMAddrValue(3U));
  EXPECT_EQ(HABMAddrValue(7U) % HABMAddrValue(4U), HABMAddrValue(3U));
  EXPECT_EQ((HABMAddrValue(0xF0U) & HABMAddrValue(0x3CU)), HABMAddrValue(0x30U));
  EXPECT_EQ((HABMAddrValue(0xF0U) | HABMAddrValue(0x0FU)), HABMAddrValue(0xFFU));
  EXPECT_EQ((HABMAddrValue(0xFFU) ^ HABMAddrValue(0x0FU)), HABMAddrValue(0xF0U));

  HABMAddrValue x = max;
  EXPECT_EQ(x++, max);
  EXPECT_EQ(x, HABMAddrValue::CONST_0());
  EXPECT_EQ(--x, max);
  EXPECT_EQ(x--, max);
  EXPECT_EQ(x, max - one);
}

TEST(HABMAddrValueArith, ShiftsAreLogicalAndIgnoreNegativeCounts) {
  HABMAddrValue const v(0x8000000000000000ULL, 1);
  EXPECT_EQ(v << 1, HABMAddrValue(0, 2));
  EXPECT_EQ(v >> 127, HABMAddrValue(1U));
  EXPECT_EQ(v << 64, HABMAddrValue(1, 0));
  EXPECT_EQ(v << 128, HABMAddrValue::CONST_0());
  EXPECT_EQ(v >> 500, HABMAddrValue::CONST_0());
  EXPECT_EQ(v << -1, v);
  EXPECT_EQ(v >> -3, v);
}

TEST(HABMAddrValueArith, ValidityFollowsTheLeftOperandAndComparisonsIgnoreIt) {
  HABMAddrValue const bad{std::string("zzz")};
  HABMAddrValue const good(5U);
  EXPECT_FALSE((bad + good).isValid());
  EXPECT_TRUE((good + bad).isValid());
  EXPECT_FALSE((bad << 3).isValid());
  EXPECT_TRUE(bad == HABMAddrValue::CONST_0());
  EXPECT_TRUE(bad < good);
  HABMAddrValue copy = bad;
  EXPECT_FALSE(copy.isValid());
  copy = good;
  EXPECT_TRUE(copy.isValid());
}

TEST(HABMAddrValueArith, ComplementWorksInPlace) {
  HABMAddrValue x(0U);
  HABMAddrValue& same = ~x;
  EXPECT_EQ(&same, &x);
  EXPECT_EQ(x, HABMAddrValue::CONST_MAX());
  ~x;
  EXPECT_EQ(x, HABMAddrValue::CONST_0());
}

TEST(HABMAddrValueArith, ComparisonsOrderAcrossTheWordBoundary) {
  HABMAddrValue const low(0, ~std::uint64_t{0});
  HABMAddrValue const high(1, 0);
  EXPECT_LT(low, high);
  EXPECT_LE(low, high);
  EXPECT_GT(high, low);
  EXPECT_GE(high, high);
  EXPECT_NE(low, high);
}

TEST(HABMAddrValuePow2, QueriesAtTheEdges) {
  struct {
    HABMAddrValue value;
    bool pow2;
    unsigned log2;
    unsigned required;
    unsigned addressable;
    HABMAddrValue next, prev, up, down;
  } const cases[] = {
      {HABMAddrValue(0U), false, 0, 1, 127, HABMAddrValue(2U), HABMAddrValue(1U), HABMAddrValue(2U),
       HABMAddrValue(1U)},
      {HABMAddrValue(1U), true, 0, 1, 0, HABMAddrValue(2U), HABMAddrValue(0U), HABMAddrValue(1U),
       HABMAddrValue(1U)},
      {HABMAddrValue(0xFFU), false, 7, 8, 0, HABMAddrValue(0x100U), HABMAddrValue(0x80U),
       HABMAddrValue(0x100U), HABMAddrValue(0x80U)},
      {HABMAddrValue(0x100U), true, 8, 9, 8, HABMAddrValue(0x200U), HABMAddrValue(0x80U),
       HABMAddrValue(0x100U), HABMAddrValue(0x100U)},
      {HABMAddrValue(0x8000000000000000ULL, 0), true, 127, 128, 127, HABMAddrValue(0U),
       HABMAddrValue(0x4000000000000000ULL, 0), HABMAddrValue(0x8000000000000000ULL, 0),
       HABMAddrValue(0x8000000000000000ULL, 0)},
      {HABMAddrValue::CONST_MAX(), false, 127, 128, 0, HABMAddrValue(0U),
       HABMAddrValue(0x8000000000000000ULL, 0), HABMAddrValue(0U), HABMAddrValue(0x8000000000000000ULL, 0)},
      {HABMAddrValue(1, 0), true, 64, 65, 64, HABMAddrValue(2, 0), HABMAddrValue(0, 0x8000000000000000ULL),
       HABMAddrValue(1, 0), HABMAddrValue(1, 0)},
  };
  for (auto const& c : cases) {
    SCOPED_TRACE(c.value.getPrettyHexStringValue());
    EXPECT_EQ(c.value.isPow2(), c.pow2);
    EXPECT_EQ(c.value.log2(), c.log2);
    EXPECT_EQ(c.value.getRequiredBits(), c.required);
    EXPECT_EQ(c.value.getAddressableBits(), c.addressable);
    EXPECT_EQ(c.value.nextPow2(), c.next);
    EXPECT_EQ(c.value.prevPow2(), c.prev);
    EXPECT_EQ(c.value.roundUpPow2(), c.up);
    EXPECT_EQ(c.value.roundDownPow2(), c.down);
  }
}

TEST(HABMAddrValuePow2, ResultsFromTheConstantOneAreValidCopiesKeepTheFlag) {
  HABMAddrValue bad{std::string("zzz")};
  bad.bit_set(4);  // 16, still not valid
  EXPECT_FALSE(bad.isValid());
  EXPECT_FALSE(bad.nextPow2().isValid());  // a power of two: shifted copy
  EXPECT_FALSE(bad.roundUpPow2().isValid());
  bad.bit_set(0);  // 17: results are built from 1
  EXPECT_TRUE(bad.nextPow2().isValid());
  EXPECT_TRUE(bad.roundDownPow2().isValid());
}

TEST(HABMAddrValueBits, IndicesBeyond127AreIgnored) {
  HABMAddrValue v;
  v.bit_set(127);
  v.bit_set(128);
  v.bit_set(4000000000U);
  EXPECT_EQ(v, HABMAddrValue(0x8000000000000000ULL, 0));
  EXPECT_TRUE(v.bit_test(127));
  EXPECT_FALSE(v.bit_test(128));
  v.bit_unset(3);
  v.bit_unset(127);
  v.bit_unset(200);
  EXPECT_EQ(v, HABMAddrValue::CONST_0());
}

}  // namespace

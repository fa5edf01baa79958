// HABMAddrValueTest.cpp: reading, printing and arithmetic of 128-bit address values, against Boost's
// unsigned 128-bit integer and its string reader.
#include "blockmodel/HABMAddrValue.h"

#include <boost/algorithm/string/trim.hpp>
#include <boost/multiprecision/cpp_int.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <optional>
#include <random>
#include <regex>
#include <string>
#include <vector>

namespace {

using namespace std::string_literals;
namespace mp = boost::multiprecision;
using V = HABMAddrValue;
using Wide = mp::number<mp::cpp_int_backend<128, 128, mp::unsigned_magnitude, mp::unchecked, void>>;

V fromWide(Wide const& w) {
  return V(static_cast<std::uint64_t>(w >> 64), static_cast<std::uint64_t>(w & ~std::uint64_t{0}));
}

// The reading rules written out over Boost's reader of C texts ("0x" hex, a leading "0" octal, "-" negates,
// digits beyond 128 bits wrap), the trim of the global locale and real regular expressions.
std::optional<Wide> referenceRead(std::string t) {
  if (t.empty()) {
    return std::nullopt;
  }
  t.erase(std::remove(t.begin(), t.end(), '_'), t.end());
  boost::algorithm::trim(t);
  static std::regex const binary("^[bB]([\\s\\S]*)$"), size("^([0-9]+)([KMGTPEZY])B?$", std::regex::icase);
  std::smatch m;
  if (std::regex_match(t, m, binary)) {  // only "1" sets a bit; the leftmost bits shift out past 128
    return std::accumulate(m[1].first, m[1].second, Wide(0),
                           [](Wide w, char c) { return w << 1 | (c == '1'); });
  }
  try {
    if (std::regex_match(t, m, size)) {  // the digits times 2^10 for K, 2^20 for M, ... 2^80 for Y
      return Wide(m[1].str().c_str()) << (10 * (1 + "KMGTPEZYkmgtpezy"s.find(m[2].str()[0]) % 8));
    }
    return Wide((!t.empty() && t[0] == '#' ? "0x" + t.substr(1) : t).c_str());
  } catch (std::exception const&) {
    return std::nullopt;
  }
}

TEST(HABMAddrValue, ReadsEdgeAndRandomTextsAsTheRulesOverBoostsReaderDo) {
  // The edges: wraps past 2^128, units that are hex digits too, octal sizes, blanks, NUL characters.
  std::vector<std::string> texts = {"",     "-0x10", "281474976710656Y", " \t#1_0\n", "010K", "08K", "1e",
                                    "0x1E", "b102",  "12\0ab"s};
  // Random ones over a few alphabets, so that long numbers of every base and size forms come up as well.
  std::mt19937 rng(20261121);
  std::string const alphabets[] = {"0123456789", "0123456789abcdefABCDEF_",
                                   "0123456789abcdefABCDEFxXbBkKmMgGtTpPeEzZyY_ #-+.\t\n\0"s};
  std::string const prefixes[] = {"", "0x", "0X", "#", "b", "B", "-", "0", " ", "-0x", "_"};
  std::string const suffixes[] = {"", "", "K", "kB", "y", "E", "Mb", "KiB", " ", "\0"s};
  while (texts.size() < 20000) {
    std::string const& alphabet = alphabets[rng() % std::size(alphabets)];
    std::string text = prefixes[rng() % std::size(prefixes)];
    for (auto len = rng() % 42; len > 0; --len) {
      text += alphabet[rng() % alphabet.size()];
    }
    texts.push_back(text + suffixes[rng() % std::size(suffixes)]);
  }
  for (auto const& text : texts) {
    auto const want = referenceRead(text);
    V const got(text);
    ASSERT_EQ(got, fromWide(want.value_or(0))) << '"' << text << '"';
    ASSERT_EQ(got.isValid(), want.has_value()) << '"' << text << '"';
  }
}

// Values where the edges are: every width, powers of two and their neighbours, all ones, zero.
Wide randomWide(std::mt19937_64& rng) {
  unsigned const k = static_cast<unsigned>(rng() % 128);
  Wide const w = (Wide(rng()) << 64 | rng()) >> k, p = Wide(1) << k;
  Wide const choices[] = {w, ~w, p, p - 1, p + 1, w >> k << k, 0};
  return choices[rng() % std::size(choices)];
}

TEST(HABMAddrValue, PrintsEachFormPaddedButNeverCutAndEveryFormReadsBackToTheSameValue) {
  // Padded to whole digits, never cut; the size form divides by the largest unit that divides the number,
  // of which only 64 bits print; the named constants are their sizes.
  std::string names;
  for (V const* c : {&V::CONST_1K(), &V::CONST_4K(), &V::CONST_64K(), &V::CONST_1M(), &V::CONST_1G(),
                     &V::CONST_4G(), &V::CONST_1T(), &V::CONST_16T(), &V::CONST_256T(), &V::CONST_1P(),
                     &V::CONST_1E(), &V::CONST_16E(), &V::CONST_1Z(), &V::CONST_1Y()}) {
    names += c->getAbrvStringValue() + ' ';
  }
  EXPECT_EQ(V(0U).getBinStringValue() + ' ' + V(0x1000U).getPrettyHexStringValue(30) + ' ' +
                V(0xABCDEFU).getHexStringValue(4) + ' ' + V(5U).getBinStringValue(4) + ' ' +
                V::CONST_MAX().getIntStringValue() + ' ' + V(1000U).getAbrvStringValue() + ' ' +
                V(0x180000U).getAbrvStringValue() + ' ' + (V::CONST_1Y() << 40).getAbrvStringValue() + ' ' +
                names,
            "b0 0x0000_1000 0xABCDEF b0101 18446744073709551615 1000 1536K 1099511627776Y "
            "1K 4K 64K 1M 1G 4G 1T 16T 256T 1P 1E 16E 1Z 1Y ");
  // Every printed form reads back to the same value.
  std::mt19937_64 rng(7);
  for (int i = 0; i < 5000; ++i) {
    V const v = fromWide(randomWide(rng));
    unsigned const bits = static_cast<unsigned>(rng() % 140);
    std::vector<std::string> texts = {v.getHexStringValue(bits), v.getPrettyHexStringValue(bits),
                                      v.getBinStringValue(bits)};
    if (v.getHigh64Value() == 0) {
      texts.push_back(v.getIntStringValue());
    }
    if (v.getHigh64Value() == 0 || v % V::CONST_1Y() == V()) {  // the size form's quotient fits 64 bits
      texts.push_back(v.getAbrvStringValue());
    }
    for (auto const& text : texts) {
      ASSERT_EQ(V(text), v) << text;
      ASSERT_TRUE(V(text).isValid()) << text;
    }
  }
}

TEST(HABMAddrValue, ArithmeticAndPowerOfTwoQueriesMatchBoostsInteger) {
  std::mt19937_64 rng(11);
  for (int i = 0; i < 20000; ++i) {
    Wide const a = randomWide(rng), b = randomWide(rng);
    V const x = fromWide(a), y = fromWide(b);
    int const n = static_cast<int>(rng() % 140) - 6;
    SCOPED_TRACE(::testing::Message() << x << ", " << y << ", " << n);
    ASSERT_EQ(x + y, fromWide(a + b));
    ASSERT_EQ(x - y, fromWide(a - b));
    ASSERT_EQ(x * y, fromWide(a * b));
    ASSERT_EQ(x / y, b == 0 ? V() : fromWide(a / b));  // division by zero gives 0
    ASSERT_EQ(x % y, b == 0 ? x : fromWide(a % b));    // and its remainder is the number itself
    ASSERT_EQ(x << n, n < 0 ? x : n >= 128 ? V() : fromWide(a << n));  // a negative count does nothing
    ASSERT_EQ(x >> n, n < 0 ? x : n >= 128 ? V() : fromWide(a >> n));
    ASSERT_EQ(x < y, a < b);
    ASSERT_EQ(x == y, a == b);
    // 0 has no bits: its highest counts as 0 and its lowest as 127.
    unsigned const high = a == 0 ? 0 : mp::msb(a), low = a == 0 ? 127 : mp::lsb(a);
    bool const pow2 = a != 0 && high == low;
    Wide const down = Wide(1) << high;
    ASSERT_EQ(x.isPow2(), pow2);
    ASSERT_EQ(x.log2(), high);
    ASSERT_EQ(x.getAddressableBits(), low);
    ASSERT_EQ(x.nextPow2(), fromWide(down << 1));
    ASSERT_EQ(x.prevPow2(), fromWide(pow2 ? down >> 1 : down));
    ASSERT_EQ(x.roundUpPow2(), fromWide(pow2 ? down : down << 1));
    ASSERT_EQ(x.roundDownPow2(), fromWide(down));
  }
}

TEST(HABMAddrValue, StepsWrapStrayBitIndicesActOnTheValueItselfAndResultsKeepTheLeftOperandsValidity) {
  V x = V::CONST_MAX();
  EXPECT_EQ(x++, V::CONST_MAX());
  EXPECT_EQ(--x, V::CONST_MAX());
  EXPECT_EQ(&~x, &x);
  EXPECT_EQ(x, V());
  for (unsigned bit : {127U, 128U, 4000000000U}) {
    x.bit_set(bit);  // indices beyond 127 do nothing
  }
  EXPECT_EQ(x, V(0x8000000000000000ULL, 0));
  EXPECT_FALSE(x.bit_test(128));
  x.bit_unset(200);
  x.bit_unset(127);
  EXPECT_EQ(x, V());
  // Results keep the left operand's validity, which comparisons ignore.
  V const bad{"zzz"s}, good(0U);
  EXPECT_FALSE((bad + good).isValid());
  EXPECT_TRUE((good + bad).isValid());
  EXPECT_EQ(bad, good);
}

}  // namespace

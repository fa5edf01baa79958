// HABMUtilsTest.cpp: VLNV splitting, the wildcard matcher against the literal recursion, and the comment
// headers of generated files.
#include "blockmodel/HABMUtils.h"

#include <gtest/gtest.h>

#include <ctime>
#include <random>
#include <regex>
#include <string>

namespace {

// The matcher's definition, written as directly as it reads: exponential, fine for short inputs. A "*"
// with more pattern behind it tries every rest of the text but the empty one.
bool literalMatch(std::string const& pattern, std::string const& text) {
  if (pattern.empty()) {
    return text.empty();
  }
  if (pattern[0] != '*') {
    return !text.empty() && (pattern[0] == '?' || pattern[0] == text[0]) &&
           literalMatch(pattern.substr(1), text.substr(1));
  }
  for (std::size_t start = 0; start < text.size(); ++start) {
    if (literalMatch(pattern.substr(1), text.substr(start))) {
      return true;
    }
  }
  return pattern.size() == 1;
}

TEST(HABMUtils, WildcardMatchesAsTheLiteralRecursionDefinesEvenWhereItWouldTakeForever) {
  std::mt19937 rng(7);
  for (int i = 0; i < 20000; ++i) {
    std::string pattern, text;
    for (auto n = rng() % 8; n > 0; --n) {
      pattern += "ab*?"[rng() % 4];
    }
    for (auto n = rng() % 9; n > 0; --n) {
      text += "ab"[rng() % 2];
    }
    ASSERT_EQ(HABMUtils::wildcard_match(pattern, text), literalMatch(pattern, text))
        << pattern << ' ' << text;
  }
  EXPECT_FALSE(HABMUtils::wildcard_match("/U?/*", "/u0/clk"));  // case counts
  std::string const pattern = std::regex_replace(std::string(30, 'a'), std::regex("a"), "*a");
  EXPECT_TRUE(HABMUtils::wildcard_match(pattern, std::string(10000, 'a')));
  EXPECT_FALSE(HABMUtils::wildcard_match(pattern + "b", std::string(10000, 'a')));
}

TEST(HABMUtils, SplitsVlnvIntoExactlyFourPiecesOrClearsTheOutputs) {
  std::string v = "x", l = "x", n = "x", r = "x";
  EXPECT_TRUE(HABMUtils::splitVLNV("  acme::ip:fifo:1.0 ", v, l, n, r));  // a run of ":" is one separator
  EXPECT_EQ(v + "|" + l + "|" + n + "|" + r, "acme|ip|fifo|1.0");
  for (char const* bad : {"   ", "acme:ip:fifo", "a:b:c:d:e"}) {
    EXPECT_FALSE(HABMUtils::splitVLNV(bad, v, l, n, r)) << bad;
    EXPECT_EQ(v + l + n + r, "") << bad;
  }
}

TEST(HABMUtils, HeadersPrefixEveryLineAndTheCopyrightRunsToThisYear) {
  std::time_t const now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  std::string const header = HABMUtils::get_copyright_header("#");
  EXPECT_TRUE(std::regex_match(header, std::regex("(# Copyright [^\n]*\n){2}# -{79}\n"))) << header;
  EXPECT_NE(header.find("-" + std::to_string(local.tm_year + 1900) + " "), std::string::npos) << header;
  std::regex const disclaimer("(//( [^\n]*)?\n){43}// DO NOT MODIFY THIS FILE\\.\n");
  EXPECT_TRUE(std::regex_match(HABMUtils::get_disclaimer("//"), disclaimer));
}

}  // namespace

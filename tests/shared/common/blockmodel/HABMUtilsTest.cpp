// HABMUtilsTest.cpp: VLNV splitting and the wildcard matcher, the latter against the literal recursion.
#include "blockmodel/HABMUtils.h"

#include <gtest/gtest.h>

#include <ctime>
#include <random>
#include <string>
#include <vector>

namespace {

// The matcher's definition, written as directly as it reads: exponential, fine for short inputs.
bool literalMatch(std::string pattern, std::string text) {
  if (pattern.empty()) {
    return text.empty();
  }
  char const c = pattern[0];
  pattern.erase(0, 1);
  if (c == '*') {
    if (pattern.empty()) {
      return true;
    }
    for (std::size_t start = 0; start < text.size(); ++start) {
      if (literalMatch(pattern, text.substr(start))) {
        return true;
      }
    }
    return false;
  }
  if (text.empty() || (c != '?' && c != text[0])) {
    return false;
  }
  return literalMatch(pattern, text.substr(1));
}

TEST(HABMUtilsWildcard, KnownCasesIncludingTheStarBeforeTheEndQuirk) {
  struct Case {
    char const* pattern;
    char const* text;
    bool match;
  };
  for (auto const& c :
       {Case{"/u?/*", "/u0/clk", true}, Case{"/U0/*", "/u0/clk", false}, Case{"", "", true},
        Case{"?", "", false}, Case{"*", "", true}, Case{"**", "", false}, Case{"a*", "a", true},
        Case{"a**", "a", false}, Case{"*clk", "/u0/clk", true}, Case{"clk", "/u0/clk", false},
        Case{"*a", "a", true}, Case{"*a", "ba", true}, Case{"", "a", false}}) {
    EXPECT_EQ(HABMUtils::wildcard_match(c.pattern, c.text), c.match) << c.pattern << " ~ " << c.text;
  }
}

TEST(HABMUtilsWildcard, AgreesWithTheLiteralRecursionOnRandomInputs) {
  std::mt19937 rng(7);
  auto randomText = [&rng](char const* alphabet, std::size_t alphabetSize, std::size_t maxLen) {
    std::string out(rng() % (maxLen + 1), ' ');
    for (char& ch : out) {
      ch = alphabet[rng() % alphabetSize];
    }
    return out;
  };
  for (int i = 0; i < 20000; ++i) {
    std::string const pattern = randomText("ab*?", 4, 7);
    std::string const text = randomText("ab", 2, 8);
    ASSERT_EQ(HABMUtils::wildcard_match(pattern, text), literalMatch(pattern, text))
        << "pattern '" << pattern << "' text '" << text << "'";
  }
}

TEST(HABMUtilsWildcard, ManyStarsAgainstALongTextGiveTheRecursionsAnswer) {
  // The recursion would take exponential time here; the answer is still the one it defines.
  std::string const text(10000, 'a');
  std::string pattern;
  for (int i = 0; i < 30; ++i) {
    pattern += "*a";
  }
  EXPECT_TRUE(HABMUtils::wildcard_match(pattern, text));
  EXPECT_FALSE(HABMUtils::wildcard_match(pattern + "b", text));
  // A star with more pattern behind it needs one more character, even when the rest could match nothing.
  EXPECT_TRUE(HABMUtils::wildcard_match(pattern + "*", std::string(30, 'a')));
  EXPECT_FALSE(HABMUtils::wildcard_match(pattern + "**", std::string(30, 'a')));
}

TEST(HABMUtilsVlnv, FourPiecesFillTheOutputsAndAnythingElseClearsThem) {
  std::string v = "x", l = "x", n = "x", r = "x";
  EXPECT_TRUE(HABMUtils::splitVLNV("  acme:ip:fifo:1.0 ", v, l, n, r));
  EXPECT_EQ(v + "|" + l + "|" + n + "|" + r, "acme|ip|fifo|1.0");
  EXPECT_TRUE(HABMUtils::splitVLNV("acme::ip:fifo:1.0", v, l, n, r));  // a run of ":" is one separator
  EXPECT_EQ(l, "ip");
  for (char const* bad : {"", "   ", "acme:ip:fifo", "a:b:c:d:e"}) {
    EXPECT_FALSE(HABMUtils::splitVLNV(bad, v, l, n, r)) << bad;
    EXPECT_TRUE(v.empty() && l.empty() && n.empty() && r.empty()) << bad;
  }
}

}  // namespace

namespace {

std::vector<std::string> linesOf(std::string const& text) {
  std::vector<std::string> lines;
  std::size_t start = 0;
  for (std::size_t nl = text.find('\n'); nl != std::string::npos; nl = text.find('\n', start)) {
    lines.push_back(text.substr(start, nl - start));
    start = nl + 1;
  }
  EXPECT_EQ(start, text.size()) << "every line ends in a newline";
  return lines;
}

TEST(HABMUtilsHeaders, CopyrightHeaderEndsInThisYearAndOnlyThePrefixVaries) {
  std::time_t const now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  std::string const year = std::to_string(local.tm_year + 1900);
  auto const slashes = linesOf(HABMUtils::get_copyright_header("//"));
  auto const hashes = linesOf(HABMUtils::get_copyright_header("#"));
  auto const bare = linesOf(HABMUtils::get_copyright_header(""));
  ASSERT_EQ(slashes.size(), 3U);
  ASSERT_EQ(hashes.size(), 3U);
  ASSERT_EQ(bare.size(), 3U);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(slashes[i].substr(0, 3), "// ");
    EXPECT_EQ(slashes[i].substr(2), hashes[i].substr(1));
    EXPECT_EQ(bare[i].front(), ' ');
  }
  EXPECT_NE(slashes[1].find("-" + year + " "), std::string::npos) << slashes[1];
  EXPECT_EQ(slashes[2], "// " + std::string(79, '-'));
}

TEST(HABMUtilsHeaders, DisclaimerHasFiveParagraphsOf44LinesWithThePrefixGlued) {
  auto const lines = linesOf(HABMUtils::get_disclaimer("//"));
  ASSERT_EQ(lines.size(), 44U);
  std::vector<std::size_t> paragraphs = {0};
  for (auto const& line : lines) {
    ASSERT_EQ(line.substr(0, 2), "//");
    if (line == "//") {
      paragraphs.push_back(0);
    } else {
      ++paragraphs.back();
    }
  }
  EXPECT_EQ(paragraphs, (std::vector<std::size_t>{3, 21, 13, 2, 1}));
  EXPECT_EQ(lines.back(), "// DO NOT MODIFY THIS FILE.");
  EXPECT_EQ(linesOf(HABMUtils::get_disclaimer("")).front().front(), ' ');
}

}  // namespace

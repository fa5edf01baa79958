// HABMPathTest.cpp: path grammar, relative and absolute paths from a block.
#include "blockmodel/HABMPath.h"

#include "blockmodel/HABMBlock.h"

#include <gtest/gtest.h>

namespace {

TEST(HABMPath, SplitsHeadAndTailAtTheLastSeparatorAndTerminatesOnlyWhenNeeded) {
  struct {
    char const *path, *head, *tail, *terminated;
  } const cases[] = {{"", "", "", "/"},
                     {"clk", "", "clk", "clk/"},
                     {"/clk", "", "clk", "/clk/"},
                     {"a/", "a", "", "a/"},
                     {"/u0/u1/clk", "/u0/u1", "clk", "/u0/u1/clk/"}};
  for (auto const& c : cases) {
    EXPECT_EQ(HABMPath::get_path_head(c.path), c.head) << c.path;
    EXPECT_EQ(HABMPath::get_path_tail(c.path), c.tail) << c.path;
    EXPECT_EQ(HABMPath::terminate(c.path), c.terminated) << c.path;
  }
  for (auto const predicate : {&HABMPath::is_valid, &HABMPath::is_absolute, &HABMPath::is_relative,
                               &HABMPath::is_terminated, &HABMPath::has_separator}) {
    EXPECT_FALSE(predicate(""));  // the empty path is no kind of path
  }
}

TEST(HABMPath, SplitDropsOuterSeparatorsAndMergesInnerRunsAndJoinPutsOneInFront) {
  EXPECT_EQ(HABMPath::split_path("/a//b/"), (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(HABMPath::split_path("///"), std::vector<std::string>{""});
  EXPECT_EQ(HABMPath::join_path(HABMPath::split_path("x//y")), "/x/y");
  EXPECT_EQ(HABMPath::join_path({}), "/");
}

TEST(HABMPath, PathsUnderABlockTurnRelativeAndBackAndOthersHaveNoRelativeForm) {
  auto const top = HABMBlock::createTopBlock("top");
  HABMBlock const& a = *top->createSubBlock("a", "m", false);
  EXPECT_EQ(HABMPath::get_relative_path(a, "/a/b/c"), "b/c");
  EXPECT_EQ(HABMPath::get_absolute_path(a, "b/c"), "/a/b/c");
  EXPECT_EQ(HABMPath::get_relative_path(*top, "//u0/clk"), "u0/clk");  // no empty first level
  EXPECT_EQ(HABMPath::get_absolute_path(*top, "clk"), "/clk");
  for (char const* outside : {"/b", "/a", "/ab/c", "/a//", ""}) {
    EXPECT_EQ(HABMPath::get_relative_path(a, outside), "") << outside;
  }
  EXPECT_EQ(HABMPath::get_relative_path(a, "b"), "b");  // relative and absolute paths pass through
  EXPECT_EQ(HABMPath::get_absolute_path(a, "/x"), "/x");
  EXPECT_EQ(HABMPath::get_absolute_path(a, ""), "");
}

}  // namespace

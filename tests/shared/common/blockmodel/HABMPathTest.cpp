// HABMPathTest.cpp: path grammar, relative and absolute paths from a block.
#include "blockmodel/HABMPath.h"

#include "blockmodel/HABMBlock.h"

#include <gtest/gtest.h>

namespace {

using Levels = std::vector<std::string>;

TEST(HABMPathTest, HeadAndTailSplitAtTheLastSeparator) {
  struct Case {
    char const* path;
    char const* head;
    char const* tail;
  };
  for (auto const& c : {Case{"clk", "", "clk"}, Case{"/clk", "", "clk"}, Case{"a/", "a", ""},
                        Case{"/u0/u1/clk", "/u0/u1", "clk"}, Case{"", "", ""}}) {
    EXPECT_EQ(HABMPath::get_path_head(c.path), c.head) << c.path;
    EXPECT_EQ(HABMPath::get_path_tail(c.path), c.tail) << c.path;
  }
}

TEST(HABMPathTest, PredicatesAnswerFalseForTheEmptyPath) {
  EXPECT_FALSE(HABMPath::is_valid(""));
  EXPECT_FALSE(HABMPath::is_relative(""));
  EXPECT_FALSE(HABMPath::is_absolute(""));
  EXPECT_FALSE(HABMPath::is_terminated(""));
  EXPECT_FALSE(HABMPath::has_separator(""));
  EXPECT_TRUE(HABMPath::is_absolute("/a"));
  EXPECT_TRUE(HABMPath::is_relative("a/b"));
  EXPECT_TRUE(HABMPath::is_terminated("a/"));
  EXPECT_TRUE(HABMPath::has_separator("a/b"));
}

TEST(HABMPathTest, TerminateAppendsOneSeparatorOnlyWhenMissing) {
  EXPECT_EQ(HABMPath::terminate(""), "/");
  EXPECT_EQ(HABMPath::terminate("/"), "/");
  EXPECT_EQ(HABMPath::terminate("/a"), "/a/");
  EXPECT_EQ(HABMPath::terminate("a//"), "a//");
}

TEST(HABMPathTest, SplitDropsOuterSeparatorsAndMergesInnerRuns) {
  EXPECT_EQ(HABMPath::split_path("/a//b/"), (Levels{"a", "b"}));
  EXPECT_EQ(HABMPath::split_path(""), (Levels{""}));
  EXPECT_EQ(HABMPath::split_path("/"), (Levels{""}));
  EXPECT_EQ(HABMPath::split_path("///"), (Levels{""}));
  EXPECT_EQ(HABMPath::split_path("a"), (Levels{"a"}));
}

TEST(HABMPathTest, JoinPutsOneSeparatorInFront) {
  EXPECT_EQ(HABMPath::join_path({"a", "b"}), "/a/b");
  EXPECT_EQ(HABMPath::join_path({}), "/");
  EXPECT_EQ(HABMPath::join_path(HABMPath::split_path("/x//y")), "/x/y");
}

class HABMPathFromBlock : public ::testing::Test {
 protected:
  void SetUp() override {
    top_ = HABMBlock::createTopBlock("top");
    a_ = top_->createSubBlock("a", "m", false);
  }
  std::unique_ptr<HABMBlock> top_;
  HABMBlock* a_ = nullptr;
};

TEST_F(HABMPathFromBlock, RelativePathIsWhatFollowsTheBlockPrefix) {
  EXPECT_EQ(HABMPath::get_relative_path(*a_, "/a/b"), "b");
  EXPECT_EQ(HABMPath::get_relative_path(*a_, "/b"), "");
  EXPECT_EQ(HABMPath::get_relative_path(*a_, "/a"), "");
  EXPECT_EQ(HABMPath::get_relative_path(*a_, "/ab/c"), "");
  EXPECT_EQ(HABMPath::get_relative_path(*a_, "b"), "b");
  EXPECT_EQ(HABMPath::get_relative_path(*a_, ""), "");
  EXPECT_EQ(HABMPath::get_relative_path(*top_, "/u0/clk"), "u0/clk");
  EXPECT_EQ(HABMPath::get_relative_path(*top_, "//u0/clk"), "u0/clk");
  EXPECT_EQ(HABMPath::get_relative_path(*a_, "/a//"), "");
}

TEST_F(HABMPathFromBlock, AbsolutePathPutsRelativePathsUnderTheBlock) {
  EXPECT_EQ(HABMPath::get_absolute_path(*a_, "b"), "/a/b");
  EXPECT_EQ(HABMPath::get_absolute_path(*a_, "/x"), "/x");
  EXPECT_EQ(HABMPath::get_absolute_path(*a_, ""), "");
  EXPECT_EQ(HABMPath::get_absolute_path(*top_, "clk"), "/clk");
}

}  // namespace

// HABMAddrAssignTest.cpp: address assignments: stored paths, resolution through the top block after
// removals and moves, the two filters, and a whole copy of an address design.
#include "blockmodel/HABMAddrAssign.h"

// The address design brings the block and every address class.
#include "HABMAddrTestUtil.h"

#include <gtest/gtest.h>

namespace {

// The design of makeAddrDesign: "/u0" holds space "s" (segments "code", "data") and map "m" (blocks
// "regs", "mem"); "/u0" has assignment "local" (m/regs -> s/data), the top "assignment_0" (/u0/m/mem ->
// /u0/s).
class HABMAddrAssignTree : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(local_ != nullptr && global_ != nullptr); }
  void TearDown() override { EXPECT_EQ(top_->check(), std::vector<std::string>()); }
  HABMAddrSpace* space() const { return u0_->getAddrSpace("s"); }
  HABMMemoryMap* map() const { return u0_->getMemoryMap("m"); }
  std::unique_ptr<HABMBlock> top_ = habm_test::makeAddrDesign();
  HABMBlock* u0_ = top_->getSubBlock("u0");
  HABMAddrAssign* local_ = u0_->getAddrAssign("local");
  HABMAddrAssign* global_ = top_->getAddrAssign("assignment_0");
};

TEST_F(HABMAddrAssignTree, PathsAreStoredRelativeAndResolveByKindToTheEndOrThroughAChild) {
  EXPECT_EQ(local_->getSourceAddrBlock(), map()->getAddrBlock("regs"));
  EXPECT_EQ(local_->getTargetAddrSegment(), space()->getAddrSegment("data"));
  EXPECT_EQ(local_->getTargetAddrBlock(), nullptr);
  EXPECT_EQ(local_->getTargetAddrSpace(), space());
  EXPECT_EQ(global_->getTargetAddrSpace(), space());
  local_->setTargetPath("m/mem");
  EXPECT_EQ(local_->getTargetMemoryMap(), map());
  local_->setTargetPath("m");
  EXPECT_EQ(local_->getTargetMemoryMap(), map());
  EXPECT_EQ(local_->getTargetAddrSpace(), nullptr);
  // Paths are stored relative to the block, and ones outside it are refused (the rules are HABMPath's).
  EXPECT_TRUE(local_->setSourcePath("/u0/m/regs"));
  EXPECT_EQ(local_->getSourcePath(false), "m/regs");
  EXPECT_FALSE(local_->setTargetPath("/elsewhere/s"));
}

// Nothing is cached: every call resolves the stored paths through the top block as it stands.
TEST_F(HABMAddrAssignTree, EndsFollowRemovalsAndMovesAndReinsertions) {
  ASSERT_TRUE(space()->removeAddrSegment("data"));
  EXPECT_EQ(local_->getTargetAddrSegment(), nullptr);
  EXPECT_EQ(local_->getTargetAddrSpace(), nullptr);
  EXPECT_EQ(local_->getTargetPath(false), "s/data");
  HABMAddrSegment* again = space()->createAddrSegment("data");
  EXPECT_EQ(local_->getTargetAddrSegment(), again);
  // A moved block keeps its own relative paths and breaks the paths that named it.
  HABMAddrBlock* regs = map()->getAddrBlock("regs");
  HABMBlock* host = top_->createSubBlock("host", "h", false);
  std::unique_ptr<HABMBlock> moved = top_->removeSubBlock("u0");
  ASSERT_NE(moved, nullptr);
  EXPECT_EQ(local_->getSourceAddrBlock(), regs);  // detached, "/u0" resolves from its own top
  ASSERT_EQ(host->insertSubBlock("v", moved, false), u0_);
  EXPECT_EQ(local_->getSourcePath(true), "/host/v/m/regs");
  EXPECT_EQ(local_->getSourceAddrBlock(), regs);
  EXPECT_EQ(global_->getSourceAddrBlock(), nullptr);
  // The outer path means something again once a block of the old name is back.
  std::unique_ptr<HABMBlock> back = host->removeSubBlock("v");
  top_->insertSubBlock("u0", back, false);
  EXPECT_EQ(global_->getSourceAddrBlock(), map()->getAddrBlock("mem"));
}

TEST_F(HABMAddrAssignTree, FiltersReadTheAbsolutePathsInListOrder) {
  top_->createAddrAssign("again")->setSourcePath("u0/m/regs");
  std::vector<HABMAddrAssign*> const all = top_->findAddrAssigns("", true);
  EXPECT_EQ(HABMAddrAssign::filterByAddrBlock(all, map()->getAddrBlock("regs")),
            (std::vector<HABMAddrAssign*>{top_->getAddrAssign("again"), local_}));
  EXPECT_TRUE(HABMAddrAssign::filterByAddrBlock(all, nullptr).empty());
  // "local" targets a segment of the space: the look-up finds the space, the filter does not.
  EXPECT_EQ(HABMAddrAssign::filterByAddrSpace(all, space()), (std::vector<HABMAddrAssign*>{global_}));
  EXPECT_TRUE(HABMAddrAssign::filterByAddrSpace(all, nullptr).empty());
}

TEST_F(HABMAddrAssignTree, AWholeCopyIsEqualAndItsAssignmentsResolveInsideIt) {
  auto const copy = HABMBlock::cloneTopBlock(*top_);
  habm_test::expectSameTree(*copy, *top_);
  HABMBlock* u0 = copy->getSubBlock("u0");
  ASSERT_NE(u0, nullptr);
  EXPECT_EQ(u0->getAddrAssign("local")->getSourceAddrBlock(), u0->getMemoryMap("m")->getAddrBlock("regs"));
  EXPECT_EQ(copy->getAddrAssign("assignment_0")->getTargetAddrSpace(), u0->getAddrSpace("s"));
  EXPECT_EQ(copy->check(), std::vector<std::string>());
}

}  // namespace

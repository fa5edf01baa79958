// HABMAddrAssignTest.cpp: address assignments: names, stored paths, resolution through the top block after
// removals and moves, the two filters, copies and traces; and the address-map inference members.
#include "blockmodel/HABMAddrAssign.h"

#include "blockmodel/HABMAddrBlock.h"
#include "blockmodel/HABMAddrSegment.h"
#include "blockmodel/HABMAddrSpace.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMMemoryMap.h"
#include "msg/ComMsgMgr.h"

#include "HABMAddrTestUtil.h"

#include <gtest/gtest.h>

namespace {

constexpr unsigned int kChildMask = 0x1000002U;

// The design of makeAddrDesign: "/u0" holds space "s" (segments "code", "data") and map "m" (blocks
// "regs", "mem"); "/u0" has assignment "local" (m/regs -> s/data), the top "assignment_0" (/u0/m/mem ->
// /u0/s).
class HABMAddrAssignTree : public ::testing::Test {
 protected:
  void SetUp() override {
    top_ = habm_test::makeAddrDesign();
    u0_ = top_->getSubBlock("u0");
    local_ = u0_->getAddrAssign("local");
    global_ = top_->getAddrAssign("assignment_0");
    ASSERT_NE(local_, nullptr);
    ASSERT_NE(global_, nullptr);
  }
  void TearDown() override { EXPECT_EQ(top_->check(), std::vector<std::string>()); }
  HABMAddrSpace* space() const { return u0_->getAddrSpace("s"); }
  HABMMemoryMap* map() const { return u0_->getMemoryMap("m"); }
  std::unique_ptr<HABMBlock> top_;
  HABMBlock* u0_ = nullptr;
  HABMAddrAssign* local_ = nullptr;
  HABMAddrAssign* global_ = nullptr;
};

TEST(HABMAddrAssignNew, ANewAssignmentHasTheDefaultsAndResolvesNothing) {
  auto top = HABMBlock::createTopBlock("top");
  HABMAddrAssign* a = top->createAddrAssign("a");
  EXPECT_EQ(a->getAssignType(), HABMAddrAssign::TYPE_ASSIGNMENT);
  EXPECT_EQ(a->getSourcePath(false), "");
  EXPECT_EQ(a->getTargetPath(true), "");
  EXPECT_EQ(a->getOffset(), HABMAddrValue::CONST_0());
  EXPECT_EQ(a->getRange(), HABMAddrValue::CONST_0());
  EXPECT_EQ(a->getAperture(), HABMAddrAperture::ILLEGAL());
  EXPECT_EQ(a->getSourceAddrBlock(), nullptr);
  EXPECT_EQ(a->getSourceAddrSegment(), nullptr);
  EXPECT_EQ(a->getTargetAddrBlock(), nullptr);
  EXPECT_EQ(a->getTargetAddrSegment(), nullptr);
  EXPECT_EQ(a->getTargetAddrSpace(), nullptr);
  EXPECT_EQ(a->getTargetMemoryMap(), nullptr);
  EXPECT_EQ(a->getPath(), "/a");
}

TEST(HABMAddrAssignNew, EmptyNamesTakeTheFirstFreeNumberFromTheCount) {
  auto top = HABMBlock::createTopBlock("top");
  EXPECT_EQ(top->createAddrAssign("")->getName(), "assignment_0");
  EXPECT_EQ(top->createAddrAssign("assignment_2")->getName(), "assignment_2");
  EXPECT_EQ(top->createAddrAssign("")->getName(), "assignment_3");
  ASSERT_TRUE(top->removeAddrAssign("assignment_0"));
  EXPECT_EQ(top->createAddrAssign("")->getName(), "assignment_4");
  EXPECT_EQ(top->createAddrAssign("assignment_4"), nullptr);
  EXPECT_EQ(top->createAddrAssign("a/b"), nullptr);
  EXPECT_EQ(top->getAddrAssigns().size(), 3U);
}

TEST(HABMAddrAssignNew, AssignTypesReadInAnyCase) {
  EXPECT_EQ(HABMAddrAssign::encodeAssignType("EXCLUSION"), HABMAddrAssign::TYPE_EXCLUSION);
  EXPECT_EQ(HABMAddrAssign::encodeAssignType("Internal"), HABMAddrAssign::TYPE_INTERNAL);
  EXPECT_EQ(HABMAddrAssign::encodeAssignType("assignment"), HABMAddrAssign::TYPE_ASSIGNMENT);
  EXPECT_EQ(HABMAddrAssign::encodeAssignType("assign"), HABMAddrAssign::TYPE_UNKNOWN);
  EXPECT_EQ(HABMAddrAssign::decodeAssignType(HABMAddrAssign::TYPE_EXCLUSION), "exclusion");
  EXPECT_EQ(HABMAddrAssign::decodeAssignType(HABMAddrAssign::TYPE_UNKNOWN), "");
}

TEST_F(HABMAddrAssignTree, PathsAreStoredRelativeToTheBlock) {
  EXPECT_TRUE(local_->setSourcePath("/u0/m/regs"));
  EXPECT_EQ(local_->getSourcePath(false), "m/regs");
  EXPECT_EQ(local_->getSourcePath(true), "/u0/m/regs");
  EXPECT_EQ(global_->getSourcePath(false), "u0/m/mem");
  EXPECT_TRUE(local_->setTargetPath("s/code"));
  EXPECT_EQ(local_->getTargetPath(true), "/u0/s/code");
}

TEST_F(HABMAddrAssignTree, APathOutsideTheBlockIsRefusedButStillStored) {
  EXPECT_FALSE(local_->setTargetPath("/elsewhere/s"));
  EXPECT_EQ(local_->getTargetPath(false), "");
  EXPECT_FALSE(local_->setSourcePath("/u0"));
  EXPECT_FALSE(local_->setSourcePath(""));
  EXPECT_EQ(local_->getSourceAddrBlock(), nullptr);
}

TEST_F(HABMAddrAssignTree, EndsResolveByKindThroughTheTopBlock) {
  HABMAddrBlock* regs = map()->getAddrBlock("regs");
  HABMAddrSegment* data = space()->getAddrSegment("data");
  EXPECT_EQ(local_->getSourceAddrBlock(), regs);
  EXPECT_EQ(local_->getSourceAddrSegment(), nullptr);
  EXPECT_EQ(local_->getTargetAddrSegment(), data);
  EXPECT_EQ(local_->getTargetAddrBlock(), nullptr);
  EXPECT_EQ(global_->getSourceAddrBlock(), map()->getAddrBlock("mem"));
  EXPECT_EQ(global_->getTargetAddrSegment(), nullptr);
}

TEST_F(HABMAddrAssignTree, TheTargetSpaceOrMapMayBeNamedItselfOrThroughAChild) {
  EXPECT_EQ(local_->getTargetAddrSpace(), space());
  EXPECT_EQ(global_->getTargetAddrSpace(), space());
  EXPECT_EQ(local_->getTargetMemoryMap(), nullptr);
  local_->setTargetPath("m/mem");
  EXPECT_EQ(local_->getTargetMemoryMap(), map());
  EXPECT_EQ(local_->getTargetAddrBlock(), map()->getAddrBlock("mem"));
  local_->setTargetPath("m");
  EXPECT_EQ(local_->getTargetMemoryMap(), map());
  EXPECT_EQ(local_->getTargetAddrSpace(), nullptr);
}

TEST_F(HABMAddrAssignTree, RemovedEndsStopResolvingAndThePathsStay) {
  ASSERT_TRUE(space()->removeAddrSegment("data"));
  EXPECT_EQ(local_->getTargetAddrSegment(), nullptr);
  EXPECT_EQ(local_->getTargetAddrSpace(), nullptr);
  EXPECT_EQ(local_->getTargetPath(false), "s/data");
  // A new object at the old path is found again: nothing was cached.
  space()->createAddrSegment("data");
  EXPECT_EQ(local_->getTargetAddrSegment(), space()->getAddrSegment("data"));
  ASSERT_TRUE(u0_->removeMemoryMap("m"));
  EXPECT_EQ(local_->getSourceAddrBlock(), nullptr);
  EXPECT_EQ(global_->getSourceAddrBlock(), nullptr);
  EXPECT_EQ(global_->getSourcePath(true), "/u0/m/mem");
}

TEST_F(HABMAddrAssignTree, MovingABlockKeepsItsOwnRelativePathsAndBreaksPathsThatNamedIt) {
  HABMAddrBlock* regs = map()->getAddrBlock("regs");
  HABMBlock* host = top_->createSubBlock("host", "h", false);
  std::unique_ptr<HABMBlock> moved = top_->removeSubBlock("u0");
  ASSERT_NE(moved, nullptr);
  // Detached, "/u0" resolves from its own top: the inner assignment still means the same.
  EXPECT_EQ(local_->getSourceAddrBlock(), regs);
  EXPECT_EQ(local_->getTargetAddrSpace(), moved->getAddrSpace("s"));
  EXPECT_EQ(global_->getSourceAddrBlock(), nullptr);
  ASSERT_EQ(host->insertSubBlock("v", moved, false), u0_);
  EXPECT_EQ(local_->getSourcePath(true), "/host/v/m/regs");
  EXPECT_EQ(local_->getSourceAddrBlock(), regs);
  EXPECT_EQ(global_->getSourceAddrBlock(), nullptr);
  EXPECT_EQ(global_->getTargetAddrSpace(), nullptr);
  // The outer path means something again once a block of the old name is back.
  std::unique_ptr<HABMBlock> back = host->removeSubBlock("v");
  top_->insertSubBlock("u0", back, false);
  EXPECT_EQ(global_->getSourceAddrBlock(), map()->getAddrBlock("mem"));
}

TEST_F(HABMAddrAssignTree, FilterByAddrBlockReadsTheSourceInListOrder) {
  HABMAddrAssign* again = top_->createAddrAssign("again");
  again->setSourcePath("u0/m/regs");
  HABMAddrAssign* viaSegment = top_->createAddrAssign("seg");
  viaSegment->setSourcePath("u0/s/data");
  std::vector<HABMAddrAssign*> const all = top_->findAddrAssigns("", true);
  ASSERT_EQ(all, (std::vector<HABMAddrAssign*>{global_, again, viaSegment, local_}));
  HABMAddrBlock const* regs = map()->getAddrBlock("regs");
  EXPECT_EQ(HABMAddrAssign::filterByAddrBlock(all, regs), (std::vector<HABMAddrAssign*>{again, local_}));
  EXPECT_TRUE(HABMAddrAssign::filterByAddrBlock(all, nullptr).empty());
  EXPECT_TRUE(HABMAddrAssign::filterByAddrBlock({}, regs).empty());
}

TEST_F(HABMAddrAssignTree, FilterByAddrSpaceReadsTheTargetAndOnlyTheSpaceItself) {
  std::vector<HABMAddrAssign*> const all = {local_, global_};
  // "local" targets a segment of the space: the look-up finds the space, the filter does not.
  EXPECT_EQ(local_->getTargetAddrSpace(), space());
  EXPECT_EQ(HABMAddrAssign::filterByAddrSpace(all, space()), (std::vector<HABMAddrAssign*>{global_}));
  EXPECT_TRUE(HABMAddrAssign::filterByAddrSpace(all, nullptr).empty());
}

TEST_F(HABMAddrAssignTree, FindsNameAssignmentsByTheirBlock) {
  EXPECT_EQ(top_->findAddrAssign("u0/local", false), local_);
  EXPECT_EQ(top_->findAddrAssign("assignment_0", false), global_);
  EXPECT_EQ(top_->findAddrAssigns("/u0/*", true), (std::vector<HABMAddrAssign*>{local_}));
  EXPECT_EQ(top_->findAddrAssigns("", false), (std::vector<HABMAddrAssign*>{global_}));
}

TEST_F(HABMAddrAssignTree, InferenceLeavesSpacesAndMapsAsTheyWere) {
  u0_->inferAddrSpaces();
  u0_->inferMemoryMaps();
  top_->inferAddrSpaces();
  top_->inferMemoryMaps();
  EXPECT_FALSE(top_->hasAddrSpaces());
  EXPECT_FALSE(top_->hasMemoryMaps());
  auto const reference = habm_test::makeAddrDesign();
  habm_test::expectSameTree(*top_, *reference);
}

TEST(HABMAddrAssignTrace, AssignmentsTraceLifeButNotRefusals) {
  auto top = HABMBlock::createTopBlock("top");
  HABMBlock* u0 = top->createSubBlock("u0", "m", false);
  ComMsgCapture capture;
  ComMsgScopeGuard on("HABM");
  HABMAddrAssign* a = u0->createAddrAssign("");
  u0->createAddrAssign("assignment_0");
  a->setSourcePath("/nowhere");
  a->getSourceAddrBlock();
  u0->removeAddrAssign("assignment_0");
  u0->removeAddrAssign("assignment_0");
  u0->clearAddrAssigns();
  EXPECT_EQ(habm_test::tracesOf(capture),
            (habm_test::Traces{
                {"Created address assignment 'assignment_0' on block '/u0'.\n", kChildMask},
                {"Removed address assignment 'assignment_0' from block '/u0'.\n", kChildMask},
            }));
}

}  // namespace

// HABMBlockTest.cpp: the block tree (paths, visibility, locks, kinds), moving sub-blocks, finds and the
// traces that are not the life of a child.
#include "blockmodel/HABMBlock.h"

#include "blockmodel/HABMAttribute.h"
#include "blockmodel/detail/HABMTrace.h"
#include "msg/ComMsgMgr.h"
#include "param/HPAParamMgr.h"

#include <gtest/gtest.h>

namespace {

constexpr unsigned int kBlockMask = 0x1000000U;

// top with "/a", "/a/x", "/a/x/deep", "/b", "/b/y".
class HABMBlockTree : public ::testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(top_->check(), std::vector<std::string>()); }
  std::unique_ptr<HABMBlock> top_ = HABMBlock::createTopBlock("top");
  HABMBlock* a_ = top_->createSubBlock("a", "ma", false);
  HABMBlock* x_ = a_->createSubBlock("x", "mx", false);
  HABMBlock* deep_ = x_->createSubBlock("deep", "mdeep", false);
  HABMBlock* b_ = top_->createSubBlock("b", "mb", false);
  HABMBlock* y_ = b_->createSubBlock("y", "mx", false);
};

// The tree.

TEST_F(HABMBlockTree, PathsAndDepthsFollowTheTreeAndARemovedSubBlockBecomesATopBlock) {
  EXPECT_EQ(deep_->getInstancePath(), "/a/x/deep");
  EXPECT_EQ(deep_->getInstanceDepth(), 3);
  auto removed = top_->removeSubBlock("a");
  ASSERT_EQ(removed.get(), a_);
  EXPECT_EQ(removed->getInstancePath(), "/");
  EXPECT_EQ(deep_->getInstancePath(), "/x/deep");
  EXPECT_EQ(deep_->getInstanceDepth(), 2);
  EXPECT_EQ(deep_->getTop(), a_);
  EXPECT_EQ(top_->getSubBlocks(), (std::vector<HABMBlock*>{b_}));
}

TEST_F(HABMBlockTree, VisibilityNeedsEveryAncestorTransparentButNotTheBlockItself) {
  x_->setTransparent(false);
  EXPECT_TRUE(x_->isVisible());
  EXPECT_FALSE(deep_->isVisible());
  top_->setTransparent(false);
  EXPECT_FALSE(a_->isVisible());
  EXPECT_TRUE(top_->isVisible());
}

TEST_F(HABMBlockTree, RswAncestorIsTheNearestStrictAncestorWithTheFlag) {
  deep_->setBlockRsw(true);
  EXPECT_EQ(deep_->getRswAncestor(), nullptr);
  a_->setBlockRsw(true);
  EXPECT_EQ(deep_->getRswAncestor(), a_);
  x_->setAttribute(HABMAttribute::BLOCK_RSW(), "TRUE", true);
  EXPECT_EQ(deep_->getRswAncestor(), x_);
}

TEST_F(HABMBlockTree, NearestDefiniteLockStateDecidesUnlessTheHostIgnoresLocks) {
  EXPECT_FALSE(deep_->isLocked());
  top_->setLocked(HABMBlock::LOCKED);
  a_->setLocked(HABMBlock::UNLOCKED);
  EXPECT_FALSE(deep_->isLocked());
  EXPECT_TRUE(y_->isLocked());
  HPAParamOverride ignore("project.ignoreModularNocLocks", "true");
  EXPECT_FALSE(y_->isLocked());
}

// Kinds.

TEST(HABMBlockKind, VlnvLibraryDecidesIgnoringCaseAndNeedsFourParts) {
  auto const b = HABMBlock::createTopBlock("m");
  auto const kind = [&b](char const* vlnv) {
    b->setModuleVlnv(vlnv);
    return std::string(b->isIP() ? "ip" : "") + (b->isBlockDesign() ? "bd" : "") +
           (b->isBlockDesignRef() ? "bdref" : "") + (b->isModuleRef() ? "moduleref" : "");
  };
  EXPECT_EQ(kind("v:IP:n:1"), "ip");
  EXPECT_EQ(kind("v:ip:n"), "");
  EXPECT_EQ(kind("v:BlockDiagram:n:1"), "bd");
  EXPECT_EQ(kind("v:blockdesign:n:1"), "bd");
  EXPECT_EQ(kind("v:BlockDesign_Ref:n:1"), "bdref");
  EXPECT_EQ(kind("v:module_ref:n:1"), "moduleref");
}

TEST_F(HABMBlockTree, ExistenceKindsIgnoreTheValueFlagKindsWantTrueAndNocModulesAreFoundBelow) {
  deep_->createAttribute(HABMAttribute::PRIMITIVE(), "false");
  deep_->createAttribute(HABMAttribute::BLACK_BOX(), "TRUE");
  deep_->createAttribute(HABMAttribute::BLOCK_STUB(), "1");
  EXPECT_TRUE(deep_->isPrimitive());
  EXPECT_TRUE(deep_->isBlackBox());
  EXPECT_FALSE(deep_->isBlockStub());
  deep_->createAttribute(HABMAttribute::OPM_NOC(), "");
  EXPECT_TRUE(top_->hasOpmNocModule());
  EXPECT_FALSE(b_->hasOpmNocModule());
}

// Moving blocks in and out.

TEST_F(HABMBlockTree, InsertAdoptsATopBlockUnderTheNewName) {
  auto other = HABMBlock::createTopBlock("mo");
  HABMBlock* in = other->createSubBlock("in", "mi", false);
  EXPECT_EQ(b_->insertSubBlock("y", other, false), nullptr);
  EXPECT_EQ(deep_->insertSubBlock("loop", top_, false), nullptr);  // the tree that holds the target
  ASSERT_TRUE(top_ && other);
  ASSERT_NE(b_->insertSubBlock("y", other, true), nullptr);
  EXPECT_EQ(other, nullptr);
  EXPECT_EQ(in->getInstancePath(), "/b/y/in");
  EXPECT_EQ(b_->getSubBlock("y"), y_);
  EXPECT_EQ(top_->findSubBlock("/b/y/in", true), nullptr);  // the path goes through the first "y"
}

TEST_F(HABMBlockTree, RenamingASubBlockMovesItsLookup) {
  y_->setInstanceName("x");
  EXPECT_EQ(b_->getSubBlock("y"), nullptr);
  EXPECT_EQ(b_->getSubBlock("x"), y_);
  a_->setInstanceName("b");  // now two sub-blocks "b"; the first in order wins
  EXPECT_EQ(top_->getSubBlock("b"), a_);
  EXPECT_EQ(top_->getSubBlock("a"), nullptr);
}

// Finds.

TEST_F(HABMBlockTree, FindSubBlockWalksOneLevelUnlessRecursive) {
  EXPECT_EQ(top_->findSubBlock("a", false), a_);
  EXPECT_EQ(top_->findSubBlock("/a/x", false), nullptr);
  EXPECT_EQ(top_->findSubBlock("/a/x", true), x_);
  EXPECT_EQ(top_->findSubBlock("a/x/deep", true), deep_);
  EXPECT_EQ(top_->findSubBlock("/", true), nullptr);
  EXPECT_EQ(a_->findSubBlock("/a/x", false), x_);
  EXPECT_EQ(a_->findSubBlock("/b", true), nullptr);
  EXPECT_TRUE(top_->hasSubBlock(deep_, true));
  EXPECT_FALSE(top_->hasSubBlock(deep_, false));
}

TEST_F(HABMBlockTree, FindSubBlocksPutsDepthFirstAndDirectChildrenLastAndMatchesWholePaths) {
  using B = std::vector<HABMBlock*>;
  EXPECT_EQ(top_->findSubBlocks("", true), (B{deep_, x_, y_, a_, b_}));
  EXPECT_EQ(top_->findSubBlocks("", false), (B{a_, b_}));
  EXPECT_EQ(top_->findSubBlocks("/?", true), (B{a_, b_}));
  EXPECT_EQ(top_->findSubBlocks("a", true), (B{}));
  EXPECT_EQ(top_->findSubBlocks("*x*", true), (B{deep_, x_}));
  EXPECT_EQ(top_->findSubBlocksByModule("mx", true), (B{x_, y_}));
  EXPECT_EQ(top_->findSubBlocksByModule("", true), (B{}));
  y_->setModuleVlnv("acme:ip:fifo:1.0");
  EXPECT_EQ(top_->findSubBlocksByVlnv("*:ip:*", true), (B{y_}));
}

// Traces other than the life of a child.

TEST_F(HABMBlockTree, TopBlocksAndInsertionsAreTracedWithTheBlockMask) {
  ComMsgCapture capture;
  ComMsgScopeGuard on("HABM");
  auto other = HABMBlock::createTopBlock("o");
  b_->insertSubBlock("in", other, false);
  b_->insertSubBlock("bad/name", other, false);
  EXPECT_EQ(capture.texts(),
            (std::vector<std::string>{"Created new top-block module 'o'.\n",
                                      "Inserted sub-block '/b/in' into block '/b'.\n",
                                      "Failed to insert sub-block 'bad/name' in block '/b'.\n"}));
  for (auto const& r : capture.records()) {
    EXPECT_EQ(r.mask, kBlockMask) << r.text;
  }
}

TEST(HABMBlockTrace, ArgumentsAreNotEvaluatedWithTheScopeOff) {
  ComMsgCapture capture;
  int evaluated = 0;
  auto const argument = [&evaluated](char const* text) {
    ++evaluated;
    return text;
  };
  HABM_TRACE(kBlockMask, "Traced '%s'.\n", argument("off"));
  ComMsgScopeGuard on("HABM");
  HABM_TRACE(kBlockMask, "Traced '%s'.\n", argument("on"));
  EXPECT_EQ(evaluated, 1);
  EXPECT_EQ(capture.texts(), std::vector<std::string>{"Traced 'on'.\n"});
}

}  // namespace

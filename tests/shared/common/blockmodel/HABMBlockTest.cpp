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

// Visibility needs every ancestor transparent, but not the block itself.
TEST_F(HABMBlockTree, AncestorsDecideVisibilityTheRswAncestorAndLocks) {
  x_->setTransparent(false);
  EXPECT_TRUE(x_->isVisible());
  EXPECT_FALSE(deep_->isVisible());
  top_->setTransparent(false);
  EXPECT_FALSE(a_->isVisible());
  EXPECT_TRUE(top_->isVisible());
  // The RSW ancestor is the nearest strict ancestor with the flag.
  deep_->setBlockRsw(true);
  EXPECT_EQ(deep_->getRswAncestor(), nullptr);
  a_->setBlockRsw(true);
  EXPECT_EQ(deep_->getRswAncestor(), a_);
  x_->setAttribute(HABMAttribute::BLOCK_RSW(), "TRUE", true);
  EXPECT_EQ(deep_->getRswAncestor(), x_);
  // The nearest definite lock state decides, unless the host ignores locks.
  EXPECT_FALSE(deep_->isLocked());
  top_->setLocked(HABMBlock::LOCKED);
  a_->setLocked(HABMBlock::UNLOCKED);
  EXPECT_FALSE(deep_->isLocked());
  EXPECT_TRUE(y_->isLocked());
  HPAParamOverride ignore("project.ignoreModularNocLocks", "true");
  EXPECT_FALSE(y_->isLocked());
}

// Kinds.

TEST_F(HABMBlockTree, ExistenceKindsIgnoreTheValueFlagKindsWantTrueAndVlnvKindsGoByTheLibrary) {
  deep_->createAttribute(HABMAttribute::PRIMITIVE(), "false");
  deep_->createAttribute(HABMAttribute::BLACK_BOX(), "TRUE");
  deep_->createAttribute(HABMAttribute::BLOCK_STUB(), "1");
  EXPECT_TRUE(deep_->isPrimitive());
  EXPECT_TRUE(deep_->isBlackBox());
  EXPECT_FALSE(deep_->isBlockStub());
  deep_->createAttribute(HABMAttribute::OPM_NOC(), "");
  EXPECT_TRUE(top_->hasOpmNocModule());
  EXPECT_FALSE(b_->hasOpmNocModule());
  // Each VLNV, then the kinds it makes a block: the library decides, ignoring case, and needs four parts.
  for (std::string const row : {"v:IP:n:1 ip", "v:ip:n ", "v:BlockDiagram:n:1 bd", "v:blockdesign:n:1 bd",
                                "v:BlockDesign_Ref:n:1 bdref", "v:module_ref:n:1 moduleref"}) {
    x_->setModuleVlnv(row.substr(0, row.find(' ')));
    EXPECT_EQ(std::string(x_->isIP() ? "ip" : "") + (x_->isBlockDesign() ? "bd" : "") +
                  (x_->isBlockDesignRef() ? "bdref" : "") + (x_->isModuleRef() ? "moduleref" : ""),
              row.substr(row.find(' ') + 1));
  }
}

// Moving blocks in and out.

TEST_F(HABMBlockTree, InsertAdoptsATopBlockUnderTheNewNameAndRenamingMovesTheLookup) {
  auto other = HABMBlock::createTopBlock("mo");
  HABMBlock* in = other->createSubBlock("in", "mi", false);
  EXPECT_EQ(b_->insertSubBlock("y", other, false), nullptr);
  EXPECT_EQ(deep_->insertSubBlock("loop", top_, false), nullptr);  // the tree that holds the target
  ASSERT_TRUE(top_ && other);
  HABMBlock* const twin = b_->insertSubBlock("y", other, true);
  ASSERT_NE(twin, nullptr);
  EXPECT_EQ(other, nullptr);
  EXPECT_EQ(in->getInstancePath(), "/b/y/in");
  EXPECT_EQ(b_->getSubBlock("y"), y_);
  EXPECT_EQ(top_->findSubBlock("/b/y/in", true), nullptr);  // the path goes through the first "y"
  // Renaming a sub-block moves its look-up: the twin is found under "y" now.
  y_->setInstanceName("x");
  EXPECT_EQ(b_->getSubBlock("y"), twin);
  EXPECT_EQ(b_->getSubBlock("x"), y_);
  a_->setInstanceName("b");  // now two sub-blocks "b"; the first in order wins
  EXPECT_EQ(top_->getSubBlock("b"), a_);
  EXPECT_EQ(top_->getSubBlock("a"), nullptr);
}

// Finds.

TEST_F(HABMBlockTree, FindsWalkOneLevelUnlessRecursiveAndPluralOnesGoDepthFirst) {
  EXPECT_EQ(top_->findSubBlock("a", false), a_);
  EXPECT_EQ(top_->findSubBlock("/a/x", false), nullptr);
  EXPECT_EQ(top_->findSubBlock("/a/x", true), x_);
  EXPECT_EQ(top_->findSubBlock("a/x/deep", true), deep_);
  EXPECT_EQ(top_->findSubBlock("/", true), nullptr);
  EXPECT_EQ(a_->findSubBlock("/a/x", false), x_);
  EXPECT_EQ(a_->findSubBlock("/b", true), nullptr);
  EXPECT_TRUE(top_->hasSubBlock(deep_, true));
  EXPECT_FALSE(top_->hasSubBlock(deep_, false));
  // The plural finds put depth first and direct children last, and match whole paths.
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

// Traces other than the life of a child; the arguments of one are evaluated only when it is sent.

TEST_F(HABMBlockTree, TraceArgumentsAreNotEvaluatedWithTheScopeOffAndTopBlocksAndInsertionsAreTraced) {
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
  auto other = HABMBlock::createTopBlock("o");
  b_->insertSubBlock("in", other, false);
  b_->insertSubBlock("bad/name", other, false);
  EXPECT_EQ(capture.texts(),
            (std::vector<std::string>{"Traced 'on'.\n", "Created new top-block module 'o'.\n",
                                      "Inserted sub-block '/b/in' into block '/b'.\n",
                                      "Failed to insert sub-block 'bad/name' in block '/b'.\n"}));
  for (auto const& r : capture.records()) {
    EXPECT_EQ(r.mask, kBlockMask) << r.text;
  }
}

}  // namespace

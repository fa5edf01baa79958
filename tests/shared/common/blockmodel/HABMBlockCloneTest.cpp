// HABMBlockCloneTest.cpp: copies of whole blocks and of one group of children, and the grouped clears:
// what travels, what stays, and that a copy writes the same bytes as its original.
#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMPortConnection.h"
#include "blockmodel/detail/HABMKinds.h"
#include "msg/ComMsgMgr.h"
#include "util/HUTFile.h"

#include "HABMDesignGenerator.h"
#include "HABMTestFiles.h"

#include <gtest/gtest.h>

namespace {

using Findings = std::vector<std::string>;

// top holds "u0" (ports "a" and "b", joined inside) holding "leaf".
class HABMBlockCopies : public ::testing::Test {
 protected:
  void SetUp() override {
    u0_->setModuleVlnv("acme:ip:core:1.0");
    u0_->setValidated(true);
    u0_->setLocked(HABMBlock::LOCKED);
    u0_->setTransparent(false);
    u0_->createAttribute("KEEP", "1");
    u0_->createPort("a", false);
    u0_->createPort("b", false);
    u0_->createPortConnection("a", {"leaf/x"}, true);
    leaf_->createPort("x", false);
  }
  void TearDown() override { EXPECT_EQ(top_->check(), Findings()); }

  std::unique_ptr<HABMBlock> top_ = HABMBlock::createTopBlock("top");
  HABMBlock* u0_ = top_->createSubBlock("u0", "core", false);
  HABMBlock* leaf_ = u0_->createSubBlock("leaf", "leafm", false);
};

TEST_F(HABMBlockCopies, ACloneOfASubBlockIsATopBlockWithTheScalarsAndTheWholeSubtree) {
  ComMsgScopeGuard on("HABM");
  ComMsgCapture capture;
  auto const copy = HABMBlock::cloneTopBlock(*u0_);
  EXPECT_EQ(capture.texts().front(), "Created new top-block module 'core'.\n");
  EXPECT_EQ(capture.texts().back(), "Cloned top-block module 'core' into new top-block module 'core'.\n");
  EXPECT_EQ(copy->getParent(), nullptr);
  EXPECT_EQ(copy->getInstanceName(), "");
  EXPECT_EQ(copy->getInstancePath(), "/");
  EXPECT_EQ(copy->getModuleName(), "core");
  EXPECT_EQ(copy->getModuleVlnv(), "acme:ip:core:1.0");
  EXPECT_TRUE(copy->getValidated());
  EXPECT_EQ(copy->getLocked(), HABMBlock::LOCKED);
  EXPECT_FALSE(copy->getTransparent());
  ASSERT_NE(copy->getSubBlock("leaf"), nullptr);
  EXPECT_TRUE(copy->getPortConnections().at(0)->isValid());
  EXPECT_EQ(copy->check(), Findings());
}

// The group copies and clears leave the scalars and the other groups alone.
TEST_F(HABMBlockCopies, GroupCopiesAndClearsTouchTheirGroupOnly) {
  auto const other = HABMBlock::createTopBlock("other");
  other->createAttribute("OTHER", "1");
  other->createPort("z", false);
  HABMBlock* target = top_->createSubBlock("t", "tm", false);
  target->createPort("old", false);
  target->createAttribute("MINE", "1");
  target->createSubBlock("inner", "im", false);
  target->createPortConnection("old", {"inner/p"}, true);

  auto const empty = HABMBlock::createTopBlock("empty");
  target->cloneBoundary(*empty);
  EXPECT_FALSE(target->hasPorts());
  EXPECT_NE(target->getAttribute("MINE"), nullptr);
  EXPECT_TRUE(target->hasSubBlocks());
  EXPECT_TRUE(target->hasPortConnections());

  target->cloneBoundary(*u0_);
  target->cloneConfiguration(*other);
  EXPECT_EQ(target->getPorts().size(), 2U);
  EXPECT_EQ(target->getAttribute("MINE"), nullptr);
  EXPECT_NE(target->getAttribute("OTHER"), nullptr);
  target->cloneContents(*u0_);
  EXPECT_NE(target->getSubBlock("leaf"), nullptr);
  EXPECT_EQ(target->getSubBlock("inner"), nullptr);
  EXPECT_FALSE(target->getValidated());
  EXPECT_EQ(target->getLocked(), HABMBlock::UNKNOWN);
  EXPECT_TRUE(target->getTransparent());
  EXPECT_EQ(target->getModuleName(), "tm");

  u0_->clearContents();
  EXPECT_TRUE(u0_->hasPorts());
  EXPECT_TRUE(u0_->hasAttributes());
  EXPECT_FALSE(u0_->hasSubBlocks());
  HABMPortConnection const* link = target->getPortConnections().at(0);
  EXPECT_TRUE(link->isValid());
  target->clearBoundary();
  EXPECT_EQ(target->getPortConnections().size(), 1U);
  EXPECT_FALSE(link->isValid());
  target->clearConfiguration();
  EXPECT_FALSE(target->hasAttributes());
  EXPECT_TRUE(target->hasSubBlocks());
}

// An assignment keeps the target where it is, under the source's instance name, even when one of the two
// holds the other: the copy is of the source as it was.
TEST_F(HABMBlockCopies, AssignmentKeepsTheParentAndCopiesWhatTheSourceWas) {
  HABMBlock* t = top_->createSubBlock("t", "tm", false);
  HABMBlock::assignTopBlock(*u0_, *t);
  EXPECT_EQ(t->getParent(), top_.get());
  EXPECT_EQ(t->getInstanceName(), "u0");
  EXPECT_EQ(top_->getSubBlocks().back(), t);
  EXPECT_TRUE(t->getValidated());
  EXPECT_NE(t->findSubBlock("leaf", false), nullptr);

  HABMBlock::assignTopBlock(*u0_, *leaf_);  // onto its own child
  EXPECT_EQ(leaf_->getModuleName(), "core");
  EXPECT_NE(u0_->findSubBlock("u0/leaf", true), nullptr);
  EXPECT_EQ(u0_->findSubBlock("u0/u0", true), nullptr);

  HABMBlock* inner = leaf_->getSubBlock("leaf");
  ASSERT_NE(inner, nullptr);
  HABMBlock::assignTopBlock(*leaf_, *leaf_);  // onto itself: nothing to do
  EXPECT_EQ(leaf_->getSubBlock("leaf"), inner);
  HABMBlock::assignTopBlock(*inner, *u0_);  // onto its own ancestor
  EXPECT_EQ(u0_->getModuleName(), "leafm");
  EXPECT_EQ(u0_->getInstanceName(), "leaf");
  EXPECT_EQ(top_->getSubBlock("leaf"), u0_);
}

using HABMCloneBytes = habm_test::MemoryDirTest;

// A clone of a generated design, and of each block in it, writes what the original writes; so does a block
// that was assigned the design.
TEST_F(HABMCloneBytes, ACloneWritesTheBytesOfItsOriginal) {
  for (std::uint32_t seed = 100; seed < 120; ++seed) {
    SCOPED_TRACE(seed);
    auto const design = habm_test::DesignGenerator(seed).make(5 + seed % 30);
    std::string const original = written(*design);
    EXPECT_EQ(written(*HABMBlock::cloneTopBlock(*design)), original);
    auto const assigned = HABMBlock::createTopBlock("assigned");
    assigned->createPort("stale", false);
    HABMBlock::assignTopBlock(*design, *assigned);
    EXPECT_EQ(written(*assigned), original);
    habm_detail::forEachBlock(*design, [&](HABMBlock const& block) {
      EXPECT_EQ(written(*HABMBlock::cloneTopBlock(block)), written(block)) << block.getInstancePath();
    });
  }
}

}  // namespace

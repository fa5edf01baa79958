// HABMBlockCloneTest.cpp: what the copies of whole blocks and of one group of children carry, and what the
// grouped clears leave. That a copy writes its original's bytes is checked over generated designs in
// HABMModularRoundTripTest.
#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMPortConnection.h"
#include "msg/ComMsgMgr.h"

#include <gtest/gtest.h>

namespace {

// top holds "u0" (port "a", joined to "leaf/x" inside) holding "leaf".
class HABMBlockCopies : public ::testing::Test {
 protected:
  void SetUp() override {
    u0_->setModuleVlnv("acme:ip:core:1.0");
    u0_->setValidated(true);
    u0_->setLocked(HABMBlock::LOCKED);
    u0_->setTransparent(false);
    u0_->createAttribute("KEEP", "1");
    u0_->createPort("a", false);
    u0_->createPortConnection("a", {"leaf/x"}, true);
    leaf_->createPort("x", false);
  }
  void TearDown() override { EXPECT_EQ(top_->check(), std::vector<std::string>()); }

  std::unique_ptr<HABMBlock> top_ = HABMBlock::createTopBlock("top");
  HABMBlock* u0_ = top_->createSubBlock("u0", "core", false);
  HABMBlock* leaf_ = u0_->createSubBlock("leaf", "leafm", false);
};

TEST_F(HABMBlockCopies, WholeCopiesCarryTheScalarsAndGroupCopiesOnlyTheirGroup) {
  ComMsgScopeGuard on("HABM");
  ComMsgCapture capture;
  auto const copy = HABMBlock::cloneTopBlock(*u0_);
  EXPECT_EQ(capture.texts().back(), "Cloned top-block module 'core' into new top-block module 'core'.\n");
  EXPECT_EQ(copy->getInstancePath() + copy->getInstanceName() + copy->getModuleVlnv(), "/acme:ip:core:1.0");
  EXPECT_TRUE(copy->getPortConnections().at(0)->isValid());

  HABMBlock* t = top_->createSubBlock("t", "tm", false);
  t->createPort("old", false);
  t->createAttribute("MINE", "1");
  t->createSubBlock("inner", "im", false);
  t->cloneBoundary(*leaf_);  // replaces the ports only
  EXPECT_EQ(t->getPort("old"), nullptr);
  EXPECT_NE(t->getAttribute("MINE"), nullptr);
  EXPECT_NE(t->getSubBlock("inner"), nullptr);
  t->cloneBoundary(*u0_);
  t->cloneContents(*u0_);
  EXPECT_EQ(t->getSubBlock("inner"), nullptr);
  EXPECT_TRUE(t->getPortConnections().at(0)->isValid());
  EXPECT_FALSE(t->getValidated() || t->getLocked() != HABMBlock::UNKNOWN || !t->getTransparent());

  t->clearContents();
  EXPECT_TRUE(t->hasPorts() && t->hasAttributes() && !t->hasSubBlocks());
  t->cloneContents(*u0_);
  t->clearBoundary();
  EXPECT_FALSE(t->getPortConnections().at(0)->isValid());
  t->clearConfiguration();
  EXPECT_FALSE(t->hasAttributes());
}

// An assignment keeps the target where it is, under the source's instance name, even when one of the two
// holds the other: the copy is of the source as it was.
TEST_F(HABMBlockCopies, AssignmentKeepsTheParentAndCopiesWhatTheSourceWas) {
  HABMBlock::assignTopBlock(*u0_, *leaf_);  // onto its own child
  EXPECT_EQ(leaf_->getParent(), u0_);
  EXPECT_EQ(leaf_->getModuleName(), "core");
  EXPECT_NE(u0_->findSubBlock("u0/leaf", true), nullptr);
  EXPECT_EQ(u0_->findSubBlock("u0/u0", true), nullptr);
  HABMBlock* inner = leaf_->getSubBlock("leaf");
  HABMBlock::assignTopBlock(*leaf_, *leaf_);  // onto itself
  EXPECT_EQ(leaf_->getSubBlock("leaf"), inner);
  HABMBlock::assignTopBlock(*inner, *u0_);  // onto its own ancestor
  EXPECT_EQ(u0_->getModuleName(), "leafm");
  EXPECT_EQ(top_->getSubBlock("leaf"), u0_);
}

}  // namespace

// HABMPortMapTest.cpp: port map bounds and the abstraction definition's shared ports and look-ups.
#include "blockmodel/HABMPortMap.h"

#include "blockmodel/HABMAbstractionDefinition.h"
#include "blockmodel/HABMAbstractionDefinitionPort.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMInterface.h"

#include <gtest/gtest.h>

namespace {

TEST(HABMPortMap, BoundsKeepTheHdlOrder) {
  auto top = HABMBlock::createTopBlock("top");
  HABMInterface* iface = top->createInterface("S", false);
  HABMPortMap* down = iface->createPortMap("WDATA", "d");
  EXPECT_EQ(down->getLogLeft(), -1);
  EXPECT_EQ(down->getLogRight(), -1);
  EXPECT_EQ(down->getPhyLeft(), -1);
  EXPECT_EQ(down->getPhyRight(), -1);
  down->setPhyLeft(7);
  down->setPhyRight(0);
  HABMPortMap* up = iface->createPortMap("RDATA", "r");
  up->setLogLeft(0);
  up->setLogRight(7);
  up->setPhyName("q");
  EXPECT_EQ(down->getPhyLeft(), 7);
  EXPECT_EQ(down->getPhyRight(), 0);
  EXPECT_EQ(up->getLogLeft(), 0);
  EXPECT_EQ(up->getLogRight(), 7);
  EXPECT_EQ(up->getPhyName(), "q");
  EXPECT_EQ(iface->getPortMap("RDATA"), up);
}

class HABMAbstraction : public ::testing::Test {
 protected:
  void SetUp() override {
    def_.addAbstractionDefinitionPort("WDATA", "required", "required", true, true, -1, 32, "in", "out");
    def_.addAbstractionDefinitionPort("WVALID", "optional", "required", true, true, 1, 1, "in", "out");
    def_.addAbstractionDefinitionPort("WDATA", "optional", "optional", false, true, 8, 8, "", "out");
  }
  HABMAbstractionDefinition def_;
};

TEST_F(HABMAbstraction, PortsKeepEveryFieldSlaveSideFirst) {
  auto const p = def_.findPortByLogicalName("WVALID");
  ASSERT_NE(p, nullptr);
  EXPECT_EQ(p->getSlavePresence(), "optional");
  EXPECT_EQ(p->getMasterPresence(), "required");
  EXPECT_TRUE(p->getOnSlave());
  EXPECT_TRUE(p->getOnMaster());
  EXPECT_EQ(p->getSlaveDirection(), "in");
  EXPECT_EQ(p->getMasterDirection(), "out");
  EXPECT_EQ(p->getSlaveWidth(), 1);
  EXPECT_EQ(p->getMasterWidth(), 1);
}

TEST_F(HABMAbstraction, LookUpIsExactAndFindsTheFirst) {
  EXPECT_EQ(def_.findPortByLogicalName("wdata"), nullptr);
  EXPECT_EQ(def_.findPortByLogicalName("WDATA"), def_.getAbstractionDefinitionPorts()[0]);
  EXPECT_EQ(def_.findPortByLogicalName("WDATA")->getSlaveWidth(), -1);
}

TEST_F(HABMAbstraction, VariableSizeOnEitherSide) {
  EXPECT_TRUE(def_.isPortHavingVariableSize("WDATA"));
  EXPECT_FALSE(def_.isPortHavingVariableSize("WVALID"));
  EXPECT_FALSE(def_.isPortHavingVariableSize("NONE"));
}

TEST_F(HABMAbstraction, CopiesShareThePorts) {
  HABMAbstractionDefinition copy = def_;
  auto const held = def_.findPortByLogicalName("WVALID");
  def_.addAbstractionDefinitionPort("X", "", "", false, false, 0, 0, "", "");
  EXPECT_EQ(copy.getAbstractionDefinitionPorts().size(), 3U);
  EXPECT_EQ(copy.findPortByLogicalName("WVALID"), held);
  EXPECT_EQ(held->getLogicalName(), "WVALID");
}

}  // namespace

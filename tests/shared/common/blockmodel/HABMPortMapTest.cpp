// HABMPortMapTest.cpp: port map bounds and the abstraction definition's shared ports and look-ups.
#include "blockmodel/HABMPortMap.h"

#include "blockmodel/HABMAbstractionDefinition.h"
#include "blockmodel/HABMAbstractionDefinitionPort.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMInterface.h"

#include <gtest/gtest.h>

namespace {

TEST(HABMPortMap, BoundsStartUnsetAndKeepTheHdlOrder) {
  auto top = HABMBlock::createTopBlock("top");
  HABMInterface* iface = top->createInterface("S", false);
  HABMPortMap* down = iface->createPortMap("WDATA", "d");
  auto const bounds = [](HABMPortMap const* m) {
    return std::vector<int>{m->getLogLeft(), m->getLogRight(), m->getPhyLeft(), m->getPhyRight()};
  };
  EXPECT_EQ(bounds(down), (std::vector<int>{-1, -1, -1, -1}));
  down->setPhyLeft(7);
  down->setPhyRight(0);
  HABMPortMap* up = iface->createPortMap("RDATA", "r");
  up->setLogLeft(0);
  up->setLogRight(7);
  up->setPhyName("q");
  EXPECT_EQ(bounds(down), (std::vector<int>{-1, -1, 7, 0}));
  EXPECT_EQ(bounds(up), (std::vector<int>{0, 7, -1, -1}));
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
  EXPECT_EQ(p->getSlavePresence() + " " + p->getMasterPresence() + " " + p->getSlaveDirection() + " " +
                p->getMasterDirection(),
            "optional required in out");
  EXPECT_TRUE(p->getOnSlave() && p->getOnMaster());
  EXPECT_EQ(p->getSlaveWidth(), 1);
  EXPECT_EQ(p->getMasterWidth(), 1);
  auto const odd = def_.getAbstractionDefinitionPorts()[2];
  EXPECT_FALSE(odd->getOnSlave());
  EXPECT_EQ(odd->getSlaveDirection(), "");
}

TEST_F(HABMAbstraction, LookUpIsExactAndFindsTheFirstAndVariableSizeIsOnEitherSide) {
  EXPECT_EQ(def_.findPortByLogicalName("wdata"), nullptr);
  EXPECT_EQ(def_.findPortByLogicalName("WDATA"), def_.getAbstractionDefinitionPorts()[0]);
  EXPECT_EQ(def_.findPortByLogicalName("WDATA")->getSlaveWidth(), -1);

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

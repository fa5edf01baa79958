// HABMInterfaceConnectionTest.cpp: interface connections and bridges: paths and the type they give, the
// connect and bridge rules, and the traces of the creators that take both ends.
#include "blockmodel/HABMInterfaceConnection.h"

#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMBridge.h"
#include "blockmodel/HABMInterface.h"
#include "msg/ComMsgMgr.h"

#include "HABMAddrTestUtil.h"

#include <gtest/gtest.h>

#include <tuple>

namespace {

using namespace std::string_literals;
using I = HABMInterface;

// Top with "/u0" (S_AXI slave aximm, M_AXI master aximm, S_AXIS slave axis, MON monitor aximm, SYS system
// aximm), "/u1" (M_AXI master aximm) and "/u0/core" (M master aximm).
class HABMBusTree : public ::testing::Test {
 protected:
  void SetUp() override {
    top_ = HABMBlock::createTopBlock("top");
    u0_ = top_->createSubBlock("u0", "m0", false);
    using Bus = std::tuple<HABMBlock*, char const*, char const*, char const*>;
    for (auto const& [block, name, type, mode] :
         {Bus{u0_, "S_AXI", "aximm", "slave"}, Bus{u0_, "M_AXI", "aximm", "master"},
          Bus{u0_, "S_AXIS", "axis", "slave"}, Bus{u0_, "MON", "aximm", "monitor_slave"},
          Bus{u0_, "SYS", "aximm", "system"},
          Bus{top_->createSubBlock("u1", "m1", false), "M_AXI", "aximm", "master"},
          Bus{u0_->createSubBlock("core", "c", false), "M", "aximm", "master"}}) {
      HABMInterface* iface = block->createInterface(name, false);
      iface->setInterfaceVlnv(I::decodeInterfaceVlnv(I::encodeInterfaceType(type)));
      iface->setInterfaceMode(I::encodeInterfaceMode(mode));
    }
  }
  void TearDown() override { EXPECT_EQ(top_->check(), std::vector<std::string>()); }

  std::unique_ptr<HABMBlock> top_;
  HABMBlock* u0_ = nullptr;
};

TEST_F(HABMBusTree, PathsAreStoredRelativeToTheBlockAndTheSourceGivesTheType) {
  auto* c = top_->createInterfaceConnection("c", false);
  EXPECT_TRUE(c->setTargetPath("u0/S_AXIS"));
  EXPECT_EQ(c->getInterfaceType(), I::TYPE_AXIS);  // the target's while there is no source
  EXPECT_FALSE(c->isAddressable());
  EXPECT_TRUE(c->setSourcePath("/u0/core/M"));
  EXPECT_EQ(c->getInterfaceType(), I::TYPE_AXIMM);
  EXPECT_TRUE(c->isAddressable());
  EXPECT_EQ(c->getSourcePath(false), "u0/core/M");
  EXPECT_FALSE(u0_->createInterfaceConnection("i", false)->setSourcePath("/u1/M_AXI"));  // outside "/u0"
}

// A source path, a target path, and whether the rule lets the first be linked to the second.
using Ends = std::tuple<char const*, char const*, bool>;

TEST_F(HABMBusTree, CanConnectWantsTwoDistinctInterfacesOfOneTypeAndCanBridgeATargetThenASourceOfTheBlock) {
  // Modes do not count: two masters may be linked.
  for (auto const& [from, to, expected] :
       {Ends{"u0/S_AXI", "u0/S_AXI", false}, Ends{"u0/M_AXI", "u0/S_AXIS", false},
        Ends{"u1/M_AXI", "u0/M_AXI", true}, Ends{"/u1/M_AXI", "/u0/S_AXI", true},
        Ends{"u0/core/M", "u0/S_AXI", false}, Ends{"u1/M_AXI", "u0/none", false}}) {
    EXPECT_EQ(HABMInterfaceConnection::canConnect(*top_, from, to), expected) << from << " " << to;
  }
  // A bridge enters at a target and leaves at a source of the block itself.
  // A monitor is a target interface; a system is neither.
  for (auto const& [from, to, expected] :
       {Ends{"S_AXI", "M_AXI", true}, Ends{"M_AXI", "S_AXI", false}, Ends{"MON", "M_AXI", true},
        Ends{"SYS", "M_AXI", false}, Ends{"S_AXI", "SYS", false}, Ends{"S_AXIS", "M_AXI", false},
        Ends{"S_AXI", "S_AXI", false}, Ends{"S_AXI", "core/M", false}, Ends{"S_AXI", "", false}}) {
    EXPECT_EQ(HABMBridge::canBridge(*u0_, from, to), expected) << from << " " << to;
  }
}

TEST_F(HABMBusTree, ByEndsCreatorsTraceTheLinkOrTheRefusalAndForceSkipsTheCheck) {
  EXPECT_NE(top_->createInterfaceConnection("u0/core/M", "u0/S_AXI", true), nullptr);
  ComMsgCapture capture;
  ComMsgScopeGuard on("HABM");
  EXPECT_NE(top_->createInterfaceConnection("u1/M_AXI", "u0/S_AXI", false), nullptr);
  EXPECT_EQ(top_->createInterfaceConnection("u0/M_AXI", "u0/S_AXIS", false), nullptr);
  EXPECT_NE(u0_->createBridge("S_AXI", "M_AXI"), nullptr);
  EXPECT_EQ(u0_->createBridge("M_AXI", "S_AXI"), nullptr);
  // The creations are traced as every child's are; the connections and refusals name both ends.
  unsigned int const child = 0x1000002U, block = 0x1000000U;
  habm_test::Traces const traces = habm_test::tracesOf(capture);
  ASSERT_EQ(traces.size(), 6U);
  EXPECT_EQ(traces[1],
            std::pair("Connected interface connection '/interface_connection_1' from source interface "
                      "'/u1/M_AXI' to target interface '/u0/S_AXI'.\n"s,
                      child));
  EXPECT_EQ(traces[2], std::pair("Failed to create interface connection from source interface 'u0/M_AXI' to "
                                 "target interface 'u0/S_AXIS' on block '/'.\n"s,
                                 block));
  EXPECT_EQ(traces[4],
            std::pair("Connected bridge '/u0/bridge_0' from source interface '/u0/S_AXI' to target "
                      "interface '/u0/M_AXI'.\n"s,
                      block));
  EXPECT_EQ(traces[5].first.substr(0, 23), "Failed to create bridge");
}

}  // namespace

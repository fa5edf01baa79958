// HABMInterfaceConnectionTest.cpp: interface connections and bridges: paths, resolution, the connect and
// bridge checks, and the block's creators with their traces.
#include "blockmodel/HABMInterfaceConnection.h"

#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMBridge.h"
#include "blockmodel/HABMInterface.h"
#include "msg/ComMsgMgr.h"

#include "HABMAddrTestUtil.h"

#include <gtest/gtest.h>

namespace {

using I = HABMInterface;
using C = HABMInterfaceConnection;
constexpr unsigned int kBlockMask = 0x1000000U;
constexpr unsigned int kChildMask = 0x1000002U;

using habm_test::Traces;
using habm_test::tracesOf;

// Top with "/u0" (S_AXI slave aximm, M_AXI master aximm, S_AXIS slave axis, MON monitor aximm, SYS system
// aximm) and "/u1" (M_AXI master aximm), and "/u0/core" (M master aximm).
class HABMBusTree : public ::testing::Test {
 protected:
  void SetUp() override {
    top_ = HABMBlock::createTopBlock("top");
    u0_ = top_->createSubBlock("u0", "m0", false);
    u1_ = top_->createSubBlock("u1", "m1", false);
    s_ = add(u0_, "S_AXI", "aximm", I::MODE_SLAVE);
    m_ = add(u0_, "M_AXI", "aximm", I::MODE_MASTER);
    axis_ = add(u0_, "S_AXIS", "axis", I::MODE_SLAVE);
    mon_ = add(u0_, "MON", "aximm", I::MODE_MONITOR_SLAVE);
    sys_ = add(u0_, "SYS", "aximm", I::MODE_SYSTEM);
    u1m_ = add(u1_, "M_AXI", "aximm", I::MODE_MASTER);
    deep_ = add(u0_->createSubBlock("core", "c", false), "M", "aximm", I::MODE_MASTER);
  }
  void TearDown() override { EXPECT_EQ(top_->check(), std::vector<std::string>()); }

  static HABMInterface* add(HABMBlock* block, char const* name, char const* type, I::InterfaceMode mode) {
    HABMInterface* iface = block->createInterface(name, false);
    iface->setInterfaceVlnv(I::decodeInterfaceVlnv(I::encodeInterfaceType(type)));
    iface->setInterfaceMode(mode);
    return iface;
  }

  std::unique_ptr<HABMBlock> top_;
  HABMBlock* u0_ = nullptr;
  HABMBlock* u1_ = nullptr;
  HABMInterface* s_ = nullptr;
  HABMInterface* m_ = nullptr;
  HABMInterface* axis_ = nullptr;
  HABMInterface* mon_ = nullptr;
  HABMInterface* sys_ = nullptr;
  HABMInterface* u1m_ = nullptr;
  HABMInterface* deep_ = nullptr;
};

// Interface connections.

TEST_F(HABMBusTree, PathsAreStoredRelativeResolvedAtAnyDepthAndGiveTheType) {
  C* c = top_->createInterfaceConnection("c", false);
  EXPECT_EQ(c->getConnectionType(), HABMPortConnection::SOFT);
  EXPECT_EQ(c->getPath(), "/c");
  EXPECT_FALSE(c->isValid());
  EXPECT_EQ(c->getInterfaceType(), I::TYPE_UNKNOWN);
  EXPECT_FALSE(c->isAddressable());
  EXPECT_TRUE(c->setTargetPath("u0/S_AXIS"));
  EXPECT_EQ(c->getInterfaceType(), I::TYPE_AXIS);  // the target's type while there is no source
  EXPECT_FALSE(c->isAddressable());
  EXPECT_TRUE(c->setSourcePath("/u0/core/M"));
  EXPECT_EQ(c->getInterfaceType(), I::TYPE_AXIMM);
  EXPECT_TRUE(c->isAddressable());
  EXPECT_TRUE(c->setTargetPath("u1/M_AXI"));
  EXPECT_EQ(c->getSourcePath(false), "u0/core/M");
  EXPECT_EQ(c->getTargetPath(true), "/u1/M_AXI");
  EXPECT_EQ(c->getSourceInterface(), deep_);
  EXPECT_EQ(c->getTargetInterface(), u1m_);
  EXPECT_TRUE(c->isValid());
  C* inner = u0_->createInterfaceConnection("i", false);
  EXPECT_FALSE(inner->setSourcePath("/u1/M_AXI"));  // outside "/u0": stored empty
  EXPECT_EQ(inner->getSourcePath(false), "");
}

TEST_F(HABMBusTree, VisibilityIsTheParentBlocksOwn) {
  C* c = u0_->createInterfaceConnection("c", false);
  EXPECT_TRUE(c->isVisible());
  u0_->setTransparent(false);
  EXPECT_FALSE(c->isVisible());
  u0_->setTransparent(true);
  top_->setTransparent(false);
  EXPECT_FALSE(c->isVisible());
}

TEST(HABMInterfaceConnectionType, TextsAndNumbersAreSharedWithPortConnections) {
  EXPECT_EQ(C::encodeConnectionType("HARD"), HABMPortConnection::HARD);
  EXPECT_EQ(HABMPortConnection::HARD, 1);
  EXPECT_EQ(HABMPortConnection::UNKNOWN, 2);
  EXPECT_EQ(C::encodeConnectionType("firm"), HABMPortConnection::UNKNOWN);
  EXPECT_EQ(C::decodeConnectionType(HABMPortConnection::UNKNOWN), "");
  EXPECT_EQ(C::decodeConnectionType(HABMPortConnection::SOFT), "soft");
}

struct ConnectCase {
  char const* source;
  char const* target;
  bool expected;
};

TEST_F(HABMBusTree, CanConnectWantsTwoDistinctInterfacesOfOneTypeOneLevelDown) {
  ConnectCase const cases[] = {
      {"u0/S_AXI", "u0/S_AXI", false},                                     // the same interface twice
      {"u0/M_AXI", "u0/S_AXIS", false},                                    // aximm with axis
      {"u1/M_AXI", "u0/M_AXI", true},                                      // two masters of one type
      {"/u1/M_AXI", "/u0/S_AXI", true}, {"u0/core/M", "u0/S_AXI", false},  // two levels down
      {"u1/M_AXI", "u0/none", false},
  };
  for (auto const& c : cases) {
    EXPECT_EQ(C::canConnect(*top_, c.source, c.target), c.expected) << c.source << " " << c.target;
  }
}

TEST_F(HABMBusTree, ByEndsCreatorTracesAndForceSkipsTheCheck) {
  ComMsgCapture capture;
  ComMsgScopeGuard on("HABM");
  C* made = top_->createInterfaceConnection("u1/M_AXI", "u0/S_AXI", false);
  EXPECT_EQ(top_->createInterfaceConnection("u0/M_AXI", "u0/S_AXIS", false), nullptr);
  C* forced = top_->createInterfaceConnection("u0/core/M", "u0/S_AXI", true);
  ASSERT_TRUE(made && forced);
  EXPECT_EQ(forced->getSourceInterface(), deep_);
  EXPECT_EQ(tracesOf(capture),
            (Traces{
                {"Created interface connection 'interface_connection_0' on block '/'.\n", kChildMask},
                {"Connected interface connection '/interface_connection_0' from source interface '/u1/M_AXI' "
                 "to target interface '/u0/S_AXI'.\n",
                 kChildMask},
                {"Failed to create interface connection from source interface 'u0/M_AXI' to target interface "
                 "'u0/S_AXIS' on block '/'.\n",
                 kBlockMask},
                {"Created interface connection 'interface_connection_1' on block '/'.\n", kChildMask},
                {"Connected interface connection '/interface_connection_1' from source interface "
                 "'/u0/core/M' to target interface '/u0/S_AXI'.\n",
                 kChildMask},
            }));
}

TEST_F(HABMBusTree, ConnectionFindsAndRemoval) {
  C* a = top_->createInterfaceConnection("a", false);
  C* b = u0_->createInterfaceConnection("b", false);
  EXPECT_EQ(top_->findInterfaceConnection("u0/b", false), b);
  EXPECT_EQ(top_->findInterfaceConnections("", true), (std::vector<C*>{a, b}));
  EXPECT_EQ(top_->findInterfaceConnections("/u0/*", true), (std::vector<C*>{b}));
  EXPECT_TRUE(top_->removeInterfaceConnection("a"));
  EXPECT_FALSE(top_->removeInterfaceConnection("a"));
  EXPECT_FALSE(top_->hasInterfaceConnections());
}

// Bridges.

TEST_F(HABMBusTree, NewBridgeHasNoRemapsAndNoEnds) {
  HABMBridge* b = u0_->createBridge("");
  ASSERT_NE(b, nullptr);
  EXPECT_EQ(b->getName(), "bridge_0");
  EXPECT_EQ(b->getPath(), "/u0/bridge_0");
  EXPECT_FALSE(b->hasRemaps());
  EXPECT_EQ(b->getSourceInterface(), nullptr);
  b->setSourceName("unknown");
  EXPECT_EQ(b->getSourceName(), "unknown");
  EXPECT_EQ(b->getSourceInterface(), nullptr);
  b->setTargetName("M_AXI");
  EXPECT_EQ(b->getTargetInterface(), m_);
  EXPECT_EQ(b->getTargetPath(true), "/u0/M_AXI");
  EXPECT_EQ(b->getTargetPath(false), "M_AXI");
  EXPECT_EQ(u0_->createBridge("bridge_0"), nullptr);
  EXPECT_EQ(u0_->createBridge("a/b"), nullptr);
}

TEST_F(HABMBusTree, CanBridgeEntersAtATargetAndLeavesAtASource) {
  ConnectCase const cases[] = {
      {"S_AXI", "M_AXI", true},  {"M_AXI", "S_AXI", false},   // swapped: the modes no longer fit
      {"MON", "M_AXI", true},                                 // a monitor is a target interface
      {"SYS", "M_AXI", false},                                // a system fits neither end
      {"S_AXI", "SYS", false},   {"S_AXIS", "M_AXI", false},  // types differ
      {"S_AXI", "S_AXI", false}, {"S_AXI", "core/M", false},  // only the block's own interfaces
      {"S_AXI", "", false},
  };
  for (auto const& c : cases) {
    EXPECT_EQ(HABMBridge::canBridge(*u0_, c.source, c.target), c.expected) << c.source << " " << c.target;
  }
}

TEST_F(HABMBusTree, ByEndsBridgeTracesWithTheBlockMask) {
  ComMsgCapture capture;
  ComMsgScopeGuard on("HABM");
  HABMBridge* b = u0_->createBridge("S_AXI", "M_AXI");
  ASSERT_NE(b, nullptr);
  EXPECT_EQ(b->getSourceInterface(), s_);
  EXPECT_EQ(b->getTargetInterface(), m_);
  EXPECT_EQ(u0_->createBridge("M_AXI", "S_AXI"), nullptr);
  EXPECT_TRUE(u0_->removeBridge("bridge_0"));
  EXPECT_EQ(tracesOf(capture),
            (Traces{
                {"Created bridge 'bridge_0' on block '/u0'.\n", kChildMask},
                {"Connected bridge '/u0/bridge_0' from source interface '/u0/S_AXI' to target interface "
                 "'/u0/M_AXI'.\n",
                 kBlockMask},
                {"Failed to create bridge from source interface 'M_AXI' to target interface 'S_AXI' on block "
                 "'/u0'.\n",
                 kBlockMask},
                {"Removed bridge 'bridge_0' from block '/u0'.\n", kChildMask},
            }));
}

}  // namespace

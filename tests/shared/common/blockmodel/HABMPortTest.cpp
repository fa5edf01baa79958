// HABMPortTest.cpp: port bounds and directions, the finds, and the walks from a port to its connections and
// interfaces.
#include "blockmodel/HABMPort.h"

#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMPortConnection.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

using Ports = std::vector<HABMPort*>;

// top with ports "clk", "rst"; "/u0" with "clk", "q"; "/u0/u1" with "clk"; "/u2" with "d".
class HABMPortTree : public ::testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(top_->check(), std::vector<std::string>()); }

  std::unique_ptr<HABMBlock> top_ = HABMBlock::createTopBlock("top");
  HABMPort* clk_ = top_->createPort("clk", false);
  HABMPort* rst_ = top_->createPort("rst", false);
  HABMBlock* u0_ = top_->createSubBlock("u0", "m0", false);
  HABMPort* u0clk_ = u0_->createPort("clk", false);
  HABMPort* u0q_ = u0_->createPort("q", false);
  HABMBlock* u1_ = u0_->createSubBlock("u1", "m1", false);
  HABMPort* u1clk_ = u1_->createPort("clk", false);
  HABMPort* u2d_ = top_->createSubBlock("u2", "m2", false)->createPort("d", false);
};

// Values.

TEST_F(HABMPortTree, BoundsGiveWidthRangeAndEndiannessAndTheWireTypeResetsThem) {
  struct Case {
    std::uint32_t left, right;
    std::uint64_t width;
    char const* range;
    bool bigEndian;
  };
  for (Case const& c : {Case{7, 0, 8, "7:0", false}, Case{0, 7, 8, "0:7", true}, Case{3, 3, 1, "3:3", false},
                        Case{0, 0xFFFFFFFFU, 4294967296ULL, "0:4294967295", true}}) {
    clk_->setPortLeft(c.left);
    clk_->setPortRight(c.right);
    EXPECT_EQ(clk_->getPortWidth(), c.width) << c.range;
    EXPECT_EQ(clk_->getPortRange(), c.range);
    EXPECT_EQ(clk_->isPortBigEndian(), c.bigEndian) << c.range;
  }
  // The wire type resets the bounds, the vector type keeps them.
  clk_->setPortLeft(7);
  clk_->setPortType(HABMPort::TYPE_VECTOR);
  EXPECT_EQ(clk_->getPortLeft(), 7U);
  clk_->setPortType(HABMPort::TYPE_WIRE);
  EXPECT_EQ(clk_->getPortRange(), "0:0");
  clk_->setPortLeft(3);  // a wire takes any bounds when they come after the type
  EXPECT_EQ(clk_->getPortWidth(), 4U);
}

TEST_F(HABMPortTree, EveryDirectionButOutIsATargetAndAnInput) {
  Ports added;
  for (auto const direction :
       {HABMPort::DIR_OUT, HABMPort::DIR_INOUT, HABMPort::DIR_PHANTOM, HABMPort::DIR_UNKNOWN}) {
    added.push_back(top_->createPort("p" + std::to_string(direction), false));
    added.back()->setPortDirection(direction);
    EXPECT_EQ(added.back()->isSourcePort(), direction == HABMPort::DIR_OUT) << direction;
    EXPECT_NE(added.back()->isTargetPort(), added.back()->isSourcePort()) << direction;
  }
  EXPECT_EQ(top_->getInputPorts(), (Ports{clk_, rst_, added[1], added[2], added[3]}));
  EXPECT_EQ(top_->getOutputPorts(), (Ports{added[0]}));
}

// Finds.

TEST_F(HABMPortTree, FindsWalkAtMostOneLevelUnlessRecursiveAndMatchWholePaths) {
  struct Case {
    char const* path;
    bool recursive;
    HABMPort* expected;
  };
  for (Case const& c :
       {Case{"clk", false, clk_}, Case{"/clk", false, clk_}, Case{"u0/clk", false, u0clk_},
        Case{"/u0/q", false, u0q_}, Case{"u0/u1/clk", true, u1clk_}, Case{"u0/u1/clk", false, nullptr},
        Case{"", false, nullptr}, Case{"u9/clk", true, nullptr}, Case{"u0/", false, nullptr},
        Case{"/u0", false, nullptr}}) {
    EXPECT_EQ(top_->findPort(c.path, c.recursive), c.expected) << c.path;
  }
  EXPECT_EQ(u0_->findPort("/u0/u1/clk", false), u1clk_);
  EXPECT_EQ(u0_->findPort("/u2/d", true), nullptr);
  // The plural find matches whole paths, in table order.
  EXPECT_EQ(top_->findPorts("", false), (Ports{clk_, rst_}));
  EXPECT_EQ(top_->findPorts("clk", true), (Ports{}));
  EXPECT_EQ(top_->findPorts("*clk", true), (Ports{clk_, u0clk_, u1clk_}));
  EXPECT_EQ(top_->findPorts("/u?/*", true), (Ports{u0clk_, u0q_, u1clk_, u2d_}));
}

// Walks.

TEST_F(HABMPortTree, ConnectionsAreSeenInTheOwnBlockAndTheParentOnlyAndParentInterfacesOnce) {
  // "u0/clk" ends in the name "clk" but names another port than "/clk".
  top_->createPortConnection("u0/clk", {"u2/d"}, true);
  EXPECT_FALSE(clk_->hasConnections());
  // On top: "clk" drives "/u0/clk" and "/u2/d"; "/u0/q" drives "rst".
  HABMPortConnection* fan = top_->createPortConnection("clk", {"u0/clk", "u2/d"}, false);
  HABMPortConnection* back = top_->createPortConnection("u0/q", {"rst"}, false);
  // Inside "/u0": its own "clk" drives "u1/clk".
  HABMPortConnection* inner = u0_->createPortConnection("clk", {"u1/clk"}, false);
  ASSERT_TRUE(fan && back && inner);
  EXPECT_EQ(clk_->getTargetConnections(), (std::vector<HABMPortConnection*>{fan}));
  EXPECT_EQ(u0clk_->getSourceConnection(), fan);
  EXPECT_EQ(u0clk_->getTargetConnection(), inner);
  EXPECT_EQ(u0q_->getTargetConnection(), back);
  EXPECT_EQ(rst_->getSourceConnection(), back);
  EXPECT_EQ(u1clk_->getSourceConnection(), inner);
  // A net in the grandparent is not looked at, even when it names the port.
  top_->createPortConnection("u0/u1/clk", {"rst"}, true);
  EXPECT_EQ(u1clk_->getTargetConnection(), nullptr);
  // Parent interfaces list each mapping interface once.
  HABMInterface* a = top_->createInterface("a", false);
  HABMInterface* b = top_->createInterface("b", false);
  HABMInterface* c = top_->createInterface("c", false);
  a->createPortMap("CLK", "clk");
  a->createPortMap("ACLK", "clk");  // two maps on one port count once
  b->createPortMap("RST", "rst");
  c->createPortMap("CLK", "clk");
  u0_->createInterface("a", false)->createPortMap("CLK", "clk");  // another block's port of that name
  EXPECT_EQ(clk_->getParentInterfaces(), (std::vector<HABMInterface*>{a, c}));
  EXPECT_EQ(rst_->getParentInterfaces(), (std::vector<HABMInterface*>{b}));
  EXPECT_FALSE(u2d_->hasParentInterface());
}

}  // namespace

// HABMPortTest.cpp: port values and texts, the port table of a block, port attributes and the walks.
#include "blockmodel/HABMPort.h"

#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMPortConnection.h"
#include "msg/ComMsgMgr.h"

#include "HABMAddrTestUtil.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace {

constexpr unsigned int kBlockMask = 0x1000000U;
constexpr unsigned int kChildMask = 0x1000002U;

std::vector<std::string> namesOf(std::vector<HABMPort*> const& ports) {
  std::vector<std::string> out;
  for (HABMPort const* p : ports) {
    out.push_back(p->getPortName());
  }
  return out;
}

std::vector<std::string> pathsOf(std::vector<HABMPort*> const& ports) {
  std::vector<std::string> out;
  for (HABMPort const* p : ports) {
    out.push_back(p->getPortPath());
  }
  return out;
}

// top with ports "clk", "rst"; "/u0" with "clk", "q"; "/u0/u1" with "clk"; "/u2" with "d".
class HABMPortTree : public ::testing::Test {
 protected:
  void SetUp() override {
    top_ = HABMBlock::createTopBlock("top");
    clk_ = top_->createPort("clk", false);
    rst_ = top_->createPort("rst", false);
    u0_ = top_->createSubBlock("u0", "m0", false);
    u0clk_ = u0_->createPort("clk", false);
    u0q_ = u0_->createPort("q", false);
    u1_ = u0_->createSubBlock("u1", "m1", false);
    u1clk_ = u1_->createPort("clk", false);
    u2_ = top_->createSubBlock("u2", "m2", false);
    u2d_ = u2_->createPort("d", false);
  }
  void TearDown() override { EXPECT_EQ(top_->check(), std::vector<std::string>()); }

  std::unique_ptr<HABMBlock> top_;
  HABMBlock* u0_ = nullptr;
  HABMBlock* u1_ = nullptr;
  HABMBlock* u2_ = nullptr;
  HABMPort* clk_ = nullptr;
  HABMPort* rst_ = nullptr;
  HABMPort* u0clk_ = nullptr;
  HABMPort* u0q_ = nullptr;
  HABMPort* u1clk_ = nullptr;
  HABMPort* u2d_ = nullptr;
};

// Values.

TEST_F(HABMPortTree, NewPortIsAnInputVectorOfWidthOne) {
  EXPECT_EQ(clk_->getPortType(), HABMPort::TYPE_VECTOR);
  EXPECT_EQ(clk_->getPortDirection(), HABMPort::DIR_IN);
  EXPECT_EQ(clk_->getPortWidth(), 1U);
  EXPECT_EQ(clk_->getPortRange(), "0:0");
  EXPECT_FALSE(clk_->isPortBigEndian());
  EXPECT_EQ(&clk_->getParent(), top_.get());
  EXPECT_EQ(clk_->getPortPath(), "/clk");
  EXPECT_EQ(u1clk_->getPortPath(), "/u0/u1/clk");
}

TEST_F(HABMPortTree, BoundsGiveWidthRangeAndEndianness) {
  struct Case {
    std::uint32_t left, right;
    std::uint64_t width;
    char const* range;
    bool bigEndian;
  };
  std::uint32_t const top = std::numeric_limits<std::uint32_t>::max();
  for (Case const& c : {Case{7, 0, 8, "7:0", false}, Case{0, 7, 8, "0:7", true}, Case{3, 3, 1, "3:3", false},
                        Case{0, top, 4294967296ULL, "0:4294967295", true}}) {
    clk_->setPortLeft(c.left);
    clk_->setPortRight(c.right);
    EXPECT_EQ(clk_->getPortWidth(), c.width) << c.range;
    EXPECT_EQ(clk_->getPortRange(), c.range);
    EXPECT_EQ(clk_->isPortBigEndian(), c.bigEndian) << c.range;
  }
}

TEST_F(HABMPortTree, WireTypeResetsTheBoundsAndVectorKeepsThem) {
  clk_->setPortLeft(7);
  clk_->setPortType(HABMPort::TYPE_VECTOR);
  EXPECT_EQ(clk_->getPortLeft(), 7U);
  clk_->setPortType(HABMPort::TYPE_WIRE);
  EXPECT_EQ(clk_->getPortLeft(), 0U);
  EXPECT_EQ(clk_->getPortRight(), 0U);
  EXPECT_TRUE(clk_->isWirePort());
  clk_->setPortLeft(3);  // a wire takes any bounds when they come after the type
  EXPECT_EQ(clk_->getPortWidth(), 4U);
}

TEST(HABMPortTexts, DirectionsAndTypesReadLowerCasedWithTheirNumbers) {
  struct Case {
    char const* text;
    HABMPort::PortDirection direction;
  };
  for (Case const& c :
       {Case{"in", HABMPort::DIR_IN}, Case{"I", HABMPort::DIR_IN}, Case{"Out", HABMPort::DIR_OUT},
        Case{"o", HABMPort::DIR_OUT}, Case{"IO", HABMPort::DIR_INOUT}, Case{"inout", HABMPort::DIR_INOUT},
        Case{"PHANTOM", HABMPort::DIR_PHANTOM}, Case{"p", HABMPort::DIR_UNKNOWN},
        Case{"bi", HABMPort::DIR_UNKNOWN}, Case{" in", HABMPort::DIR_UNKNOWN},
        Case{"", HABMPort::DIR_UNKNOWN}}) {
    EXPECT_EQ(HABMPort::encodePortDirection(c.text), c.direction) << c.text;
  }
  EXPECT_EQ(HABMPort::DIR_INOUT, 2);
  EXPECT_EQ(HABMPort::DIR_UNKNOWN, 4);
  EXPECT_EQ(HABMPort::decodePortDirection(HABMPort::DIR_INOUT), "inout");
  EXPECT_EQ(HABMPort::decodePortDirection(HABMPort::DIR_PHANTOM), "phantom");
  EXPECT_EQ(HABMPort::decodePortDirection(HABMPort::DIR_UNKNOWN), "");
  EXPECT_EQ(HABMPort::encodePortType("WIRE"), HABMPort::TYPE_WIRE);
  EXPECT_EQ(HABMPort::encodePortType("Vector"), HABMPort::TYPE_VECTOR);
  EXPECT_EQ(HABMPort::encodePortType("bus"), HABMPort::TYPE_UNKNOWN);
  EXPECT_EQ(HABMPort::decodePortType(HABMPort::TYPE_WIRE), "wire");
  EXPECT_EQ(HABMPort::decodePortType(HABMPort::TYPE_UNKNOWN), "");
}

TEST_F(HABMPortTree, EveryDirectionButOutIsATargetAndAnInput) {
  HABMPort* out = top_->createPort("out", false);
  HABMPort* io = top_->createPort("io", false);
  HABMPort* ph = top_->createPort("ph", false);
  HABMPort* odd = top_->createPort("odd", false);
  out->setPortDirection(HABMPort::DIR_OUT);
  io->setPortDirection(HABMPort::DIR_INOUT);
  ph->setPortDirection(HABMPort::DIR_PHANTOM);
  odd->setPortDirection(HABMPort::DIR_UNKNOWN);
  EXPECT_TRUE(out->isSourcePort() && !out->isTargetPort());
  EXPECT_TRUE(odd->isTargetPort() && !odd->isSourcePort());
  EXPECT_EQ(namesOf(top_->getInputPorts()), (std::vector<std::string>{"clk", "rst", "io", "ph", "odd"}));
  EXPECT_EQ(namesOf(top_->getOutputPorts()), (std::vector<std::string>{"out"}));
}

// The port table.

TEST_F(HABMPortTree, CreationRefusesEmptySeparatorAndTakenNamesAndRemovalFreesTheName) {
  EXPECT_EQ(top_->createPort("", true), nullptr);
  EXPECT_EQ(top_->createPort("a/b", true), nullptr);
  EXPECT_EQ(top_->createPort("clk", false), nullptr);
  top_->createPort("z", false);
  EXPECT_TRUE(top_->removePort("rst"));
  EXPECT_FALSE(top_->removePort("rst"));
  EXPECT_EQ(namesOf(top_->getPorts()), (std::vector<std::string>{"clk", "z"}));
  HABMPort* again = top_->createPort("rst", false);
  ASSERT_NE(again, nullptr);
  EXPECT_EQ(top_->getPort("rst"), again);
  EXPECT_EQ(namesOf(top_->getPorts()), (std::vector<std::string>{"clk", "z", "rst"}));
  top_->clearPorts();
  EXPECT_FALSE(top_->hasPorts());
}

TEST_F(HABMPortTree, ForcedDuplicateLeavesTheTableAndBelongsToNoTable) {
  HABMPort* orphan = top_->createPort("clk", true);
  ASSERT_NE(orphan, nullptr);
  EXPECT_NE(orphan, clk_);
  EXPECT_EQ(top_->getPort("clk"), clk_);
  EXPECT_EQ(top_->findPort("/clk", true), clk_);
  EXPECT_EQ(top_->getPorts(), (std::vector<HABMPort*>{clk_, rst_}));
  // Still a usable object until the block goes; the sanitizer build sees that it does not leak.
  orphan->setPortDirection(HABMPort::DIR_OUT);
  EXPECT_EQ(orphan->getPortPath(), "/clk");
  EXPECT_TRUE(top_->removePort("clk"));
  EXPECT_EQ(top_->getPort("clk"), nullptr);
  EXPECT_FALSE(top_->removePort("clk"));
}

TEST_F(HABMPortTree, RenamedPortIsListedButFoundByNeitherName) {
  rst_->setPortName("reset");
  EXPECT_EQ(top_->getPort("rst"), nullptr);
  EXPECT_EQ(top_->getPort("reset"), nullptr);
  EXPECT_EQ(top_->findPort("/reset", true), nullptr);
  EXPECT_EQ(namesOf(top_->getPorts()), (std::vector<std::string>{"clk", "reset"}));
  EXPECT_FALSE(top_->removePort("rst"));
  // The old name is free again and takes a port of its own.
  HABMPort* fresh = top_->createPort("rst", false);
  ASSERT_NE(fresh, nullptr);
  EXPECT_EQ(top_->getPort("rst"), fresh);
  EXPECT_EQ(top_->getPorts().size(), 3U);
}

// Finds.

TEST_F(HABMPortTree, FindPortWalksAtMostOneLevelUnlessRecursive) {
  struct Case {
    char const* path;
    bool recursive;
    HABMPort* expected;
  };
  for (Case const& c : {Case{"clk", false, clk_}, Case{"/clk", false, clk_}, Case{"u0/clk", false, u0clk_},
                        Case{"/u0/q", false, u0q_}, Case{"u0/u1/clk", true, u1clk_}}) {
    EXPECT_EQ(top_->findPort(c.path, c.recursive), c.expected) << c.path;
  }
  for (char const* miss : {"", "u0/u1/clk", "nope", "u9/clk", "u0/", "/u0"}) {
    EXPECT_EQ(top_->findPort(miss, false), nullptr) << miss;
  }
  EXPECT_EQ(u0_->findPort("/u0/u1/clk", false), u1clk_);
  EXPECT_EQ(u0_->findPort("/u2/d", true), nullptr);
}

TEST_F(HABMPortTree, FindPortsMatchesWholePathsInTableOrder) {
  EXPECT_EQ(top_->findPorts("", false), (std::vector<HABMPort*>{clk_, rst_}));
  EXPECT_TRUE(top_->findPorts("clk", true).empty());
  EXPECT_EQ(pathsOf(top_->findPorts("*clk", true)),
            (std::vector<std::string>{"/clk", "/u0/clk", "/u0/u1/clk"}));
  EXPECT_EQ(pathsOf(top_->findPorts("/u?/*", true)),
            (std::vector<std::string>{"/u0/clk", "/u0/q", "/u0/u1/clk", "/u2/d"}));
}

// Attributes.

class HABMPortTrace : public HABMPortTree {
 protected:
  ComMsgCapture capture_;
};

TEST_F(HABMPortTrace, AttributesFollowTheChildRulesWithPortTexts) {
  ComMsgScopeGuard on("HABM");
  EXPECT_NE(u0q_->createAttribute("MARK_DEBUG", "true"), nullptr);
  EXPECT_EQ(u0q_->createAttribute("MARK_DEBUG", "false"), nullptr);
  EXPECT_EQ(u0q_->createAttribute("a/b", "x"), nullptr);
  EXPECT_EQ(u0q_->getAttribute("MARK_DEBUG")->getValue(), "true");
  EXPECT_FALSE(u0q_->removeAttribute("nope"));
  EXPECT_EQ(habm_test::tracesOf(capture_),
            (habm_test::Traces{{"Created attribute 'MARK_DEBUG' on port '/u0/q'.\n", kChildMask},
                               {"Failed to create attribute 'MARK_DEBUG' on port '/u0/q'.\n", kBlockMask},
                               {"Failed to create attribute 'a/b' on port '/u0/q'.\n", kBlockMask}}));
}

TEST_F(HABMPortTrace, RemovalTextWithItsMalformedConversionStillReachesTheListeners) {
  u0q_->createAttribute("a", "1");
  u0q_->createAttribute("b", "2");
  ComMsgScopeGuard on("HABM");
  EXPECT_TRUE(u0q_->removeAttribute("a"));
  ASSERT_EQ(capture_.records().size(), 1U);
  auto const& r = capture_.records()[0];
  EXPECT_EQ(r.format, "Removed attribute '%s' from port '%'.\n");
  EXPECT_EQ(r.mask, kChildMask);
  EXPECT_EQ(r.args, (std::vector<std::string>{"a", "/u0/q"}));
  EXPECT_EQ(r.text.rfind("Removed attribute 'a' from port '", 0), 0U) << r.text;
  EXPECT_EQ(u0q_->getAttributes().size(), 1U);
  EXPECT_EQ(u0q_->getAttributes()[0]->getName(), "b");
}

TEST_F(HABMPortTrace, PortLifeTracesCarryTheChildMask) {
  ComMsgScopeGuard on("HABM");
  u0_->createPort("d", false);
  u0_->createPort("d", false);
  u0_->createPort("d", true);
  u0_->removePort("d");
  u0_->removePort("d");
  u0_->clearPorts();
  EXPECT_EQ(habm_test::tracesOf(capture_),
            (habm_test::Traces{{"Created port 'd' on block '/u0'.\n", kChildMask},
                               {"Failed to create port 'd' on block '/u0'.\n", kBlockMask},
                               {"Created port 'd' on block '/u0'.\n", kChildMask},
                               {"Removed port 'd' from block '/u0'.\n", kChildMask}}));
}

// Links.

TEST_F(HABMPortTree, ConnectionsAreSeenInTheOwnBlockAndTheParentOnly) {
  EXPECT_EQ(clk_->getSourceConnection(), nullptr);
  EXPECT_EQ(clk_->getTargetConnection(), nullptr);
  EXPECT_FALSE(clk_->hasConnections());
  // "u0/clk" ends in the name "clk" but names another port than "/clk".
  top_->createPortConnection("u0/clk", {"u2/d"}, true);
  EXPECT_FALSE(clk_->hasConnections());
  top_->clearPortConnections();
  // On top: "clk" drives "/u0/clk" and "/u2/d"; "/u0/q" drives "rst".
  HABMPortConnection* fan = top_->createPortConnection("clk", {"u0/clk", "u2/d"}, false);
  HABMPortConnection* back = top_->createPortConnection("u0/q", {"rst"}, false);
  // Inside "/u0": its own "clk" drives "u1/clk".
  HABMPortConnection* inner = u0_->createPortConnection("clk", {"u1/clk"}, false);
  ASSERT_TRUE(fan && back && inner);
  EXPECT_EQ(clk_->getTargetConnections(), (std::vector<HABMPortConnection*>{fan}));
  EXPECT_EQ(clk_->getSourceConnection(), nullptr);
  EXPECT_EQ(u0clk_->getSourceConnection(), fan);
  EXPECT_EQ(u0clk_->getTargetConnection(), inner);
  EXPECT_EQ(u0q_->getTargetConnection(), back);
  EXPECT_EQ(rst_->getSourceConnection(), back);
  EXPECT_EQ(u1clk_->getSourceConnection(), inner);
  // A net on the grandparent is not looked at, even when it names the port.
  HABMPortConnection* far = top_->createPortConnection("clk", {}, true);
  far->insertTargetPath("u0/u1/clk");
  EXPECT_EQ(u1clk_->getTargetConnections().size(), 0U);
  EXPECT_EQ(u1clk_->getSourceConnection(), inner);
}

TEST_F(HABMPortTree, ParentInterfacesListEachMappingInterfaceOnce) {
  EXPECT_FALSE(clk_->hasParentInterface());
  HABMInterface* a = top_->createInterface("a", false);
  HABMInterface* b = top_->createInterface("b", false);
  HABMInterface* c = top_->createInterface("c", false);
  a->createPortMap("CLK", "clk");
  a->createPortMap("ACLK", "clk");  // two maps on one port count once
  b->createPortMap("RST", "rst");
  c->createPortMap("CLK", "clk");
  u0_->createInterface("a", false)->createPortMap("CLK", "clk");  // another block's port of that name
  EXPECT_EQ(clk_->getParentInterfaces(), (std::vector<HABMInterface*>{a, c}));
  EXPECT_TRUE(clk_->hasParentInterface());
  EXPECT_EQ(rst_->getParentInterfaces(), (std::vector<HABMInterface*>{b}));
  EXPECT_FALSE(u2d_->hasParentInterface());
}

}  // namespace

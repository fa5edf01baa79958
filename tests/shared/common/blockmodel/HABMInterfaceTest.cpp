// HABMInterfaceTest.cpp: the bus vocabularies and their rules, an interface's predicates, references,
// apertures, port maps, mode inference and connection walk.
#include "blockmodel/HABMInterface.h"

#include "blockmodel/HABMAddrSpace.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMInterfaceConnection.h"
#include "blockmodel/HABMMemoryMap.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMPortMap.h"

#include <gtest/gtest.h>

namespace {

using I = HABMInterface;

// Vocabularies: each row is a text and the value it reads as. The texts of a type and of a mode are table
// rows, read in any case; what is written reads back.

TEST(HABMInterfaceVocabulary, VlnvsNameTheBusByLibraryAndNameAndMirroredModesTheOppositeSide) {
  using Row = std::pair<char const*, I::InterfaceType>;
  for (auto const& [text, type] :
       {Row{" ORVANE:Interface:AXIMM_RTL:1.0 ", I::TYPE_AXIMM},  // trimmed, any case, "_rtl"
        Row{"acme:interface:axis:9.9", I::TYPE_AXIS},            // library and name only
        Row{"orvane:interface:aximm", I::TYPE_UNKNOWN},          // three parts
        Row{"orvane:signal:aximm:1.0", I::TYPE_UNKNOWN}}) {      // the library counts
    EXPECT_EQ(I::encodeInterfaceVlnv(text), type) << text;
  }
  EXPECT_EQ(I::encodeInterfaceType("CLK"), I::TYPE_CLOCK);
  for (I::InterfaceType type : I::InterfaceTypes) {
    EXPECT_EQ(I::encodeInterfaceVlnv(I::decodeInterfaceVlnv(type)), type);
    EXPECT_EQ(I::encodeInterfaceType(I::decodeInterfaceType(type)), type);
  }
  using Mode = std::pair<char const*, I::InterfaceMode>;
  for (auto const& [text, mode] :
       {Mode{"MirroredSlave", I::MODE_MASTER}, Mode{"mirroredsystem", I::MODE_SYSTEM},
        Mode{"monitor", I::MODE_MONITOR_MASTER}, Mode{" master", I::MODE_UNKNOWN}}) {
    EXPECT_EQ(I::encodeInterfaceMode(text), mode) << text;
  }
  for (int m = I::MODE_MASTER; m <= I::MODE_UNKNOWN; ++m) {
    auto const mode = static_cast<I::InterfaceMode>(m);
    EXPECT_EQ(I::encodeInterfaceMode(I::decodeInterfaceMode(mode)), mode);
  }
}

// One interface on a block.

class HABMInterfaceOnBlock : public ::testing::Test {
 protected:
  void SetUp() override { s_->setInterfaceVlnv("orvane:interface:aximm:1.0"); }
  void TearDown() override { EXPECT_EQ(top_->check(), std::vector<std::string>()); }

  // A port of "/u0" mapped to a logical name of "S_AXI".
  HABMPort* mapped(char const* logical, char const* name, HABMPort::PortDirection direction) {
    HABMPort* p = u0_->createPort(name, false);
    p->setPortDirection(direction);
    s_->createPortMap(logical, name);
    return p;
  }

  std::unique_ptr<HABMBlock> top_ = HABMBlock::createTopBlock("top");
  HABMBlock* u0_ = top_->createSubBlock("u0", "m", false);
  HABMInterface* s_ = u0_->createInterface("S_AXI", false);
};

// The predicates test ranges of values: a mark per value in value order, the unknown value last, "x"
// where the predicate holds.
TEST_F(HABMInterfaceOnBlock, PredicatesTestRangesOfValues) {
  auto const types = [this](auto const& predicate) {
    std::string marks;
    for (int t = I::TYPE_AXIMM; t <= I::TYPE_UNKNOWN; ++t) {
      s_->setInterfaceVlnv(I::decodeInterfaceVlnv(static_cast<I::InterfaceType>(t)));
      marks += predicate(static_cast<I::InterfaceType>(t)) ? 'x' : '.';
    }
    return marks;
  };
  EXPECT_EQ(types([this](I::InterfaceType t) { return s_->getInterfaceType() == t; }), "xxxxxxxxx");
  EXPECT_EQ(types(&I::isAxiInterfaceType), "xx.......");
  EXPECT_EQ(types(&I::isAxiMMInterfaceType), "x........");
  EXPECT_EQ(types(&I::isAxiSInterfaceType), ".x.......");
  EXPECT_EQ(types(&I::isIniInterfaceType), "..xx.....");
  EXPECT_EQ(types(&I::isSignalType), ".....xxx.");
  EXPECT_EQ(types([this](I::InterfaceType) { return s_->isAddressable(); }), "x.x......");
  auto const modes = [this](bool (I::*predicate)() const) {
    std::string marks;
    for (int m = I::MODE_MASTER; m <= I::MODE_UNKNOWN; ++m) {
      s_->setInterfaceMode(static_cast<I::InterfaceMode>(m));
      marks += (s_->*predicate)() ? 'x' : '.';
    }
    return marks;
  };
  EXPECT_EQ(modes(&I::isSourceInterface), "x......");
  EXPECT_EQ(modes(&I::isTargetInterface), ".x.xxx.");
  EXPECT_EQ(modes(&I::isSystemInterface), "..x....");
  EXPECT_EQ(modes(&I::isMonitorInterface), "...xxx.");
}

TEST_F(HABMInterfaceOnBlock, ReferencesExcludeEachOtherOnlyWhenSetAndAperturesAreStoredRelativeToTheBase) {
  HABMAddrSpace* space = u0_->createAddrSpace("a");
  HABMMemoryMap* map = u0_->createMemoryMap("m");
  s_->setMemoryMapRef("m");
  EXPECT_EQ(s_->getMemoryMap(), map);
  s_->setAddrSpaceRef("a");
  EXPECT_EQ(s_->getAddrSpace(), space);
  EXPECT_EQ(s_->getMemoryMapRef(), "");
  s_->setMemoryMapRef("m");
  EXPECT_EQ(s_->getAddrSpaceRef(), "");
  // An empty reference clears nothing.
  s_->setAddrSpaceRef("");
  EXPECT_EQ(s_->getMemoryMap(), map);
  // Apertures are stored relative to the base.
  using Set = std::set<HABMAddrAperture>;
  auto const aperture = [](char const* text) { return HABMAddrAperture(std::string(text)); };
  s_->setBaseAddress(HABMAddrValue(0x1000U));
  s_->setApertures({aperture("0x800[1K]"), aperture("0x1000[4K]"), aperture("0x3000[4K]")}, true);
  // The one below the base is dropped.
  EXPECT_EQ(s_->getApertures(false), (Set{aperture("0x0[4K]"), aperture("0x2000[4K]")}));
  EXPECT_EQ(s_->getApertures(true), (Set{aperture("0x1000[4K]"), aperture("0x3000[4K]")}));
}

TEST_F(HABMInterfaceOnBlock, PortsAreReachedThroughTheMapsInMapOrderAndPhysicalNamesMayRepeat) {
  HABMPort* clk = mapped("ACLK", "clk", HABMPort::DIR_IN);
  HABMPort* wdata = mapped("WDATA", "s_wdata", HABMPort::DIR_IN);
  s_->createPortMap("GONE", "nowhere");
  HABMPortMap* again = s_->createPortMap("BCLK", "clk");
  EXPECT_EQ(s_->getPortMapsByPhyName("clk"), (std::vector<HABMPortMap*>{s_->getPortMap("ACLK"), again}));
  EXPECT_EQ(s_->getPorts(), (std::vector<HABMPort*>{clk, wdata, clk}));
  EXPECT_EQ(s_->getPort("WDATA"), wdata);
  EXPECT_EQ(s_->getPort("GONE"), nullptr);
  EXPECT_EQ(s_->getPrimaryPort(), wdata);
}

TEST_F(HABMInterfaceOnBlock, InferredModeIsTheDeclaredOneElseThePrimaryPortsElseTheMajoritys) {
  mapped("A", "a", HABMPort::DIR_IN);
  mapped("B", "b", HABMPort::DIR_OUT);
  EXPECT_EQ(s_->inferInterfaceMode(), I::MODE_SLAVE);  // a tie is a slave
  HABMPort* c = mapped("C", "c", HABMPort::DIR_OUT);
  mapped("D", "d", HABMPort::DIR_INOUT);
  mapped("E", "e", HABMPort::DIR_PHANTOM);
  EXPECT_EQ(s_->inferInterfaceMode(), I::MODE_MASTER);
  // The primary port outweighs the others, whatever the majority.
  HABMPort* w = mapped("WDATA", "w", HABMPort::DIR_INOUT);
  EXPECT_EQ(s_->inferInterfaceMode(), I::MODE_SLAVE);
  w->setPortDirection(HABMPort::DIR_OUT);
  c->setPortDirection(HABMPort::DIR_IN);
  EXPECT_EQ(s_->inferInterfaceMode(), I::MODE_MASTER);
  s_->setInterfaceMode(I::MODE_SYSTEM);
  EXPECT_EQ(s_->inferInterfaceMode(), I::MODE_SYSTEM);
}

// The connection walk: the interface's block and the one above it.

TEST_F(HABMInterfaceOnBlock, ConnectionsAreSoughtOnTheBlockAndOneLevelUp) {
  HABMInterface* m = top_->createSubBlock("u1", "m", false)->createInterface("M_AXI", false);
  HABMInterface* inner = u0_->createSubBlock("core", "c", false)->createInterface("M", false);
  HABMInterfaceConnection* dangling = top_->createInterfaceConnection("", false);
  dangling->setTargetPath("u0/S_AXI");
  HABMInterfaceConnection* outer = top_->createInterfaceConnection("u1/M_AXI", "u0/S_AXI", true);
  HABMInterfaceConnection* within = u0_->createInterfaceConnection("S_AXI", "core/M", true);
  // One level above "/u1" and two above "/u0/core": seen from "M_AXI" only.
  top_->createInterfaceConnection("u1/M_AXI", "u0/core/M", true);
  EXPECT_EQ(s_->getSourceConnections(), (std::vector<HABMInterfaceConnection*>{dangling, outer}));
  EXPECT_EQ(s_->getSourceInterface(), nullptr);  // the first connection has no source
  EXPECT_EQ(s_->getSourceInterfaces(), (std::vector<HABMInterface*>{m}));
  EXPECT_EQ(s_->getTargetConnections(), (std::vector<HABMInterfaceConnection*>{within}));
  EXPECT_EQ(s_->getTargetInterface(), inner);
  EXPECT_EQ(m->getTargetInterfaces(), (std::vector<HABMInterface*>{s_, inner}));
  EXPECT_TRUE(m->hasConnections());
  EXPECT_EQ(inner->getSourceConnections(), (std::vector<HABMInterfaceConnection*>{within}));
}

}  // namespace

// HABMInterfaceTest.cpp: the bus vocabularies, an interface's predicates, references, apertures,
// parameters, port maps, ports, mode inference, connection walk and copy.
#include "blockmodel/HABMInterface.h"

#include "blockmodel/HABMAbstractionDefinition.h"
#include "blockmodel/HABMAddrSpace.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMInterfaceConnection.h"
#include "blockmodel/HABMMemoryMap.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMPortMap.h"
#include "msg/ComMsgMgr.h"

#include "HABMAddrTestUtil.h"

#include <gtest/gtest.h>

namespace {

using I = HABMInterface;
constexpr unsigned int kBlockMask = 0x1000000U;
constexpr unsigned int kChildMask = 0x1000002U;

HABMAddrValue addr(char const* text) {
  return HABMAddrValue(std::string(text));
}
HABMAddrAperture aperture(char const* text) {
  return HABMAddrAperture(std::string(text));
}

// Vocabularies.

struct VlnvCase {
  char const* vlnv;
  I::InterfaceType type;
};

TEST(HABMInterfaceVocabulary, VlnvIsReadByLibraryAndNameOnly) {
  VlnvCase const cases[] = {
      {" ORVANE:Interface:AXIMM_RTL:1.0 ", I::TYPE_AXIMM},
      {"acme:interface:axis:9.9", I::TYPE_AXIS},
      {"orvane:interface:inimm:1.0", I::TYPE_INIMM},
      {"orvane:interface:inis_rtl:1.0", I::TYPE_INIS},
      {"orvane:interface:npp:1.0", I::TYPE_NPP},
      {"orvane:signal:clock:1.0", I::TYPE_CLOCK},
      {"orvane:signal:reset:1.0", I::TYPE_RESET},
      {"orvane:signal:interrupt:1.0", I::TYPE_INTERRUPT},
      {"orvane::interface:aximm:1.0", I::TYPE_AXIMM},
      {"orvane:interface:aximm", I::TYPE_UNKNOWN},
      {"a:b:c:d:e", I::TYPE_UNKNOWN},
      {"orvane:signal:aximm:1.0", I::TYPE_UNKNOWN},
      {"orvane:interface:clock:1.0", I::TYPE_UNKNOWN},
      {"", I::TYPE_UNKNOWN},
  };
  for (auto const& c : cases) {
    EXPECT_EQ(I::encodeInterfaceVlnv(c.vlnv), c.type) << c.vlnv;
  }
}

TEST(HABMInterfaceVocabulary, EachTypeHasItsNumberTextsAndPrimaryPort) {
  struct Row {
    I::InterfaceType type;
    char const* name;
    char const* shortName;
    char const* vlnv;
    char const* primary;
  };
  Row const rows[] = {
      {I::TYPE_AXIMM, "aximm", "", "orvane:interface:aximm:1.0", "WDATA"},
      {I::TYPE_AXIS, "axis", "", "orvane:interface:axis:1.0", "TDATA"},
      {I::TYPE_INIMM, "inimm", "", "orvane:interface:inimm:1.0", "INTERNOC"},
      {I::TYPE_INIS, "inis", "", "orvane:interface:inis:1.0", "INTERNOC"},
      {I::TYPE_NPP, "npp", "", "orvane:interface:npp:1.0", "FLIT"},
      {I::TYPE_CLOCK, "clock", "CLK", "orvane:signal:clock:1.0", "CLK"},
      {I::TYPE_RESET, "reset", "rst", "orvane:signal:reset:1.0", "RST"},
      {I::TYPE_INTERRUPT, "interrupt", "Intr", "orvane:signal:interrupt:1.0", "INTERRUPT"},
      {I::TYPE_UNKNOWN, "", "axi", "", ""},
  };
  int number = 0;
  for (Row const& r : rows) {
    EXPECT_EQ(r.type, number++) << r.name;
    EXPECT_EQ(I::decodeInterfaceVlnv(r.type), r.vlnv);
    EXPECT_EQ(I::encodeInterfaceVlnv(r.vlnv), r.type);
    EXPECT_EQ(I::decodeInterfaceType(r.type), r.name);  // short names are read but never written
    EXPECT_EQ(I::encodeInterfaceType(r.name), r.type);
    EXPECT_EQ(I::encodeInterfaceType(r.shortName), *r.shortName == 0 ? I::TYPE_UNKNOWN : r.type)
        << r.shortName;
    EXPECT_EQ(I::getPrimaryPortName(r.type), r.primary);
  }
  EXPECT_EQ(I::encodeInterfaceType("AXIS"), I::TYPE_AXIS);
  EXPECT_EQ(
      (std::vector<std::string>{I::AXIMM_PRIMARY_PORT(), I::AXIS_PRIMARY_PORT(), I::INIMM_PRIMARY_PORT(),
                                I::INIS_PRIMARY_PORT(), I::NPP_PRIMARY_PORT(), I::CLOCK_PRIMARY_PORT(),
                                I::RESET_PRIMARY_PORT(), I::INTERRUPT_PRIMARY_PORT()}),
      (std::vector<std::string>{"WDATA", "TDATA", "INTERNOC", "INTERNOC", "FLIT", "CLK", "RST",
                                "INTERRUPT"}));
  EXPECT_EQ(&I::getPrimaryPortName(I::TYPE_AXIS), &I::AXIS_PRIMARY_PORT());
}

struct ModeCase {
  char const* text;
  I::InterfaceMode mode;
};

TEST(HABMInterfaceVocabulary, MirroredModesFoldOntoTheOppositeSide) {
  ModeCase const cases[] = {
      {"master", I::MODE_MASTER},
      {"MirroredSlave", I::MODE_MASTER},
      {"mastertype", I::MODE_MASTER},
      {"mirroredslavetype", I::MODE_MASTER},
      {"SLAVE", I::MODE_SLAVE},
      {"mirroredmaster", I::MODE_SLAVE},
      {"slavetype", I::MODE_SLAVE},
      {"mirroredmastertype", I::MODE_SLAVE},
      {"system", I::MODE_SYSTEM},
      {"mirroredsystem", I::MODE_SYSTEM},
      {"systemtype", I::MODE_SYSTEM},
      {"mirroredsystemtype", I::MODE_SYSTEM},
      {"monitor", I::MODE_MONITOR_MASTER},
      {"monitor_master", I::MODE_MONITOR_MASTER},
      {"Monitor_Slave", I::MODE_MONITOR_SLAVE},
      {"monitor_system", I::MODE_MONITOR_SYSTEM},
      {"monitor slave", I::MODE_UNKNOWN},
      {" master", I::MODE_UNKNOWN},
      {"", I::MODE_UNKNOWN},
  };
  for (auto const& c : cases) {
    EXPECT_EQ(I::encodeInterfaceMode(c.text), c.mode) << c.text;
  }
  char const* const written[] = {"master",        "slave",          "system", "monitor_master",
                                 "monitor_slave", "monitor_system", ""};
  for (std::size_t m = 0; m < std::size(written); ++m) {
    EXPECT_EQ(I::decodeInterfaceMode(static_cast<I::InterfaceMode>(m)), written[m]);
  }
}

TEST(HABMInterfaceVocabulary, TypePredicatesAreRangesOfTheTypes) {
  using P = bool (*)(I::InterfaceType const&);
  struct Row {
    P predicate;
    std::vector<I::InterfaceType> trueFor;
  };
  Row const rows[] = {
      {&I::isAxiInterfaceType, {I::TYPE_AXIMM, I::TYPE_AXIS}},
      {&I::isAxiMMInterfaceType, {I::TYPE_AXIMM}},
      {&I::isAxiSInterfaceType, {I::TYPE_AXIS}},
      {&I::isIniInterfaceType, {I::TYPE_INIMM, I::TYPE_INIS}},
      {&I::isSignalType, {I::TYPE_CLOCK, I::TYPE_RESET, I::TYPE_INTERRUPT}},
  };
  for (auto const& row : rows) {
    std::vector<I::InterfaceType> seen;
    for (I::InterfaceType type : I::InterfaceTypes) {
      if (row.predicate(type)) {
        seen.push_back(type);
      }
    }
    EXPECT_EQ(seen, row.trueFor);
    EXPECT_FALSE(row.predicate(I::TYPE_UNKNOWN));
  }
}

// One interface on a block.

class HABMInterfaceOnBlock : public ::testing::Test {
 protected:
  void SetUp() override {
    top_ = HABMBlock::createTopBlock("top");
    u0_ = top_->createSubBlock("u0", "m", false);
    s_ = u0_->createInterface("S_AXI", false);
    s_->setInterfaceVlnv("orvane:interface:aximm:1.0");
  }
  void TearDown() override { EXPECT_EQ(top_->check(), std::vector<std::string>()); }

  HABMPort* port(char const* name, HABMPort::PortDirection direction) {
    HABMPort* p = u0_->createPort(name, false);
    p->setPortDirection(direction);
    return p;
  }

  std::unique_ptr<HABMBlock> top_;
  HABMBlock* u0_ = nullptr;
  HABMInterface* s_ = nullptr;
};

TEST_F(HABMInterfaceOnBlock, TypeFollowsTheVlnvAtOnceAndAnEmptyOneHasNone) {
  EXPECT_EQ(s_->getInterfacePath(), "/u0/S_AXI");
  EXPECT_EQ(s_->getInterfaceType(), I::TYPE_AXIMM);
  EXPECT_TRUE(s_->isAddressable());
  s_->setInterfaceVlnv("orvane:interface:axis:1.0");
  EXPECT_EQ(s_->getInterfaceType(), I::TYPE_AXIS);
  EXPECT_FALSE(s_->isAddressable());
  s_->setInterfaceVlnv("orvane:interface:inimm:1.0");
  EXPECT_TRUE(s_->isAddressable());
  HABMInterface* bare = u0_->createInterface("", false);
  EXPECT_EQ(bare->getInterfaceName(), "interface_1");  // the name counts the interfaces there are
  EXPECT_EQ(bare->getInterfaceType(), I::TYPE_UNKNOWN);
  EXPECT_FALSE(bare->isAddressable());
  EXPECT_EQ(bare->getPrimaryPort(), nullptr);
  EXPECT_EQ(bare->getInterfaceMode(), I::MODE_UNKNOWN);
  EXPECT_EQ(bare->getAbstractionDefinition()->getAbstractionDefinitionPorts().size(), 0U);
  EXPECT_NE(bare->getAbstractionDefinition(), s_->getAbstractionDefinition());
}

TEST_F(HABMInterfaceOnBlock, ModePredicates) {
  struct Row {
    I::InterfaceMode mode;
    bool source, target, system, monitor;
  };
  Row const rows[] = {
      {I::MODE_MASTER, true, false, false, false},       {I::MODE_SLAVE, false, true, false, false},
      {I::MODE_SYSTEM, false, false, true, false},       {I::MODE_MONITOR_MASTER, false, true, false, true},
      {I::MODE_MONITOR_SLAVE, false, true, false, true}, {I::MODE_MONITOR_SYSTEM, false, true, false, true},
      {I::MODE_UNKNOWN, false, false, false, false},
  };
  for (auto const& row : rows) {
    s_->setInterfaceMode(row.mode);
    EXPECT_EQ(s_->isSourceInterface(), row.source) << row.mode;
    EXPECT_EQ(s_->isTargetInterface(), row.target) << row.mode;
    EXPECT_EQ(s_->isSystemInterface(), row.system) << row.mode;
    EXPECT_EQ(s_->isMonitorInterface(), row.monitor) << row.mode;
  }
}

TEST_F(HABMInterfaceOnBlock, ReferencesExcludeEachOtherOnlyWhenSet) {
  HABMAddrSpace* space = u0_->createAddrSpace("a");
  HABMMemoryMap* map = u0_->createMemoryMap("m");
  s_->setMemoryMapRef("m");
  EXPECT_EQ(s_->getMemoryMap(), map);
  s_->setAddrSpaceRef("a");
  EXPECT_EQ(s_->getMemoryMapRef(), "");
  EXPECT_EQ(s_->getAddrSpace(), space);
  EXPECT_EQ(s_->getMemoryMap(), nullptr);
  s_->setMemoryMapRef("m");
  s_->setAddrSpaceRef("");
  EXPECT_EQ(s_->getMemoryMapRef(), "m");
  s_->setMemoryMapRef("gone");
  EXPECT_EQ(s_->getMemoryMap(), nullptr);
}

TEST_F(HABMInterfaceOnBlock, AperturesAreStoredRelativeToTheBase) {
  s_->setApertures({aperture("0x800[1K]")}, true);  // a zero base leaves them as they are
  EXPECT_EQ(s_->getApertures(true), (std::set<HABMAddrAperture>{aperture("0x800[1K]")}));
  s_->setBaseAddress(addr("0x1000"));
  s_->setApertures({aperture("0x800[1K]"), aperture("0x1000[4K]"), aperture("0x3000[4K]")}, true);
  EXPECT_EQ(s_->getApertures(false),
            (std::set<HABMAddrAperture>{aperture("0x0[4K]"), aperture("0x2000[4K]")}));
  EXPECT_EQ(s_->getApertures(true),
            (std::set<HABMAddrAperture>{aperture("0x1000[4K]"), aperture("0x3000[4K]")}));
  s_->setApertures({aperture("0x800[1K]")}, false);
  EXPECT_EQ(s_->getApertures(false), (std::set<HABMAddrAperture>{aperture("0x800[1K]")}));
}

TEST_F(HABMInterfaceOnBlock, ParametersFollowTheChildRules) {
  EXPECT_NE(s_->createParameter("FREQ", "100"), nullptr);
  EXPECT_EQ(s_->createParameter("FREQ", "200"), nullptr);
  EXPECT_EQ(s_->createParameter("", "1"), nullptr);
  EXPECT_EQ(s_->createParameter("a/b", "1"), nullptr);
  EXPECT_EQ(s_->setParameter("W", "32", false), nullptr);
  EXPECT_EQ(s_->setParameter("W", "32", true)->getValue(), "32");
  EXPECT_EQ(s_->setParameter("FREQ", "5", false)->getValue(), "5");
  ASSERT_EQ(s_->getParameters().size(), 2U);
  EXPECT_TRUE(s_->removeParameter("FREQ"));
  EXPECT_FALSE(s_->removeParameter("FREQ"));
  EXPECT_EQ(s_->getParameters()[0]->getName(), "W");
  s_->clearParameters();
  EXPECT_TRUE(s_->getParameters().empty());
}

TEST_F(HABMInterfaceOnBlock, LogicalNamesAreUniquePhysicalNamesMayRepeat) {
  HABMPortMap* first = s_->createPortMap("ACLK", "clk");
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(s_->createPortMap("ACLK", "other"), nullptr);
  HABMPortMap* second = s_->createPortMap("BCLK", "clk");
  ASSERT_NE(second, nullptr);
  EXPECT_EQ(s_->createPortMap("", "x"), nullptr);
  EXPECT_EQ(s_->createPortMap("a/b", "x"), nullptr);
  EXPECT_EQ(s_->getPortMapsByPhyName("clk"), (std::vector<HABMPortMap*>{first, second}));
  EXPECT_EQ(s_->getPortMapsByLogName("BCLK"), (std::vector<HABMPortMap*>{second}));
  EXPECT_TRUE(s_->getPortMapsByLogName("clk").empty());
  EXPECT_TRUE(s_->removePortMap("ACLK"));
  EXPECT_FALSE(s_->removePortMap("ACLK"));
  EXPECT_EQ(s_->getPortMaps(), (std::vector<HABMPortMap*>{second}));
  s_->clearPortMaps();
  EXPECT_TRUE(s_->getPortMaps().empty());
}

TEST_F(HABMInterfaceOnBlock, PortMapTracesNameTheMappingAndRemovalKeepsItsLonePercent) {
  ComMsgCapture capture;
  ComMsgScopeGuard on("HABM");
  s_->createPortMap("WDATA", "s_wdata");
  s_->createPortMap("WVALID", "");
  s_->createPortMap("WDATA", "x");
  EXPECT_EQ(
      habm_test::tracesOf(capture),
      (habm_test::Traces{{"Created port map 'WDATA' on interface '/u0/S_AXI'. Mapped logical port 'WDATA' "
                          "to physical port 's_wdata'.\n",
                          kChildMask},
                         {"Created port map 'WVALID' on interface '/u0/S_AXI'.\n", kChildMask},
                         {"Failed to create port map 'WDATA' on interface '/u0/S_AXI'.\n", kBlockMask}}));
  capture.clear();
  EXPECT_TRUE(s_->removePortMap("WDATA"));
  ASSERT_EQ(capture.records().size(), 1U);
  auto const& r = capture.records()[0];
  EXPECT_EQ(r.format, "Removed port map '%s' from interface '%'.\n");
  EXPECT_EQ(r.mask, kChildMask);
  EXPECT_EQ(r.args, (std::vector<std::string>{"WDATA", "/u0/S_AXI"}));
  EXPECT_EQ(r.text.rfind("Removed port map 'WDATA' from interface '", 0), 0U) << r.text;
}

TEST_F(HABMInterfaceOnBlock, PortsAreReachedThroughTheMapsInMapOrder) {
  HABMPort* wdata = port("s_wdata", HABMPort::DIR_IN);
  HABMPort* clk = port("clk", HABMPort::DIR_IN);
  s_->createPortMap("ACLK", "clk");
  s_->createPortMap("WDATA", "s_wdata");
  s_->createPortMap("GONE", "nowhere");
  s_->createPortMap("BCLK", "clk");
  EXPECT_EQ(s_->getPorts(), (std::vector<HABMPort*>{clk, wdata, clk}));
  EXPECT_EQ(s_->getPort("WDATA"), wdata);
  EXPECT_EQ(s_->getPort("GONE"), nullptr);
  EXPECT_EQ(s_->getPort("none"), nullptr);
  EXPECT_EQ(s_->getPrimaryPort(), wdata);
}

TEST_F(HABMInterfaceOnBlock, InferredModeIsTheDeclaredOneElseThePrimaryPortsElseTheMajoritys) {
  EXPECT_EQ(u0_->createInterface("empty", false)->inferInterfaceMode(), I::MODE_SLAVE);
  s_->createPortMap("A", port("a", HABMPort::DIR_IN)->getPortName());
  s_->createPortMap("B", port("b", HABMPort::DIR_OUT)->getPortName());
  EXPECT_EQ(s_->inferInterfaceMode(), I::MODE_SLAVE);  // a tie is a slave
  s_->createPortMap("C", port("c", HABMPort::DIR_OUT)->getPortName());
  s_->createPortMap("D", port("d", HABMPort::DIR_INOUT)->getPortName());
  s_->createPortMap("E", port("e", HABMPort::DIR_PHANTOM)->getPortName());
  EXPECT_EQ(s_->inferInterfaceMode(), I::MODE_MASTER);
  // The primary port outweighs the others.
  s_->createPortMap("WDATA", port("w", HABMPort::DIR_INOUT)->getPortName());
  EXPECT_EQ(s_->inferInterfaceMode(), I::MODE_SLAVE);
  u0_->getPort("w")->setPortDirection(HABMPort::DIR_OUT);
  u0_->getPort("c")->setPortDirection(HABMPort::DIR_IN);
  u0_->getPort("b")->setPortDirection(HABMPort::DIR_IN);
  EXPECT_EQ(s_->inferInterfaceMode(), I::MODE_MASTER);
  s_->setInterfaceMode(I::MODE_SYSTEM);
  EXPECT_EQ(s_->inferInterfaceMode(), I::MODE_SYSTEM);
}

// The connection walk: the interface's block and the one above it.

class HABMInterfaceLinks : public HABMInterfaceOnBlock {
 protected:
  void SetUp() override {
    HABMInterfaceOnBlock::SetUp();
    m_ = top_->createSubBlock("u1", "m", false)->createInterface("M_AXI", false);
    m_->setInterfaceVlnv("orvane:interface:aximm:1.0");
    inner_ = u0_->createSubBlock("core", "c", false)->createInterface("M", false);
    inner_->setInterfaceVlnv("orvane:interface:aximm:1.0");
  }
  HABMInterface* m_ = nullptr;
  HABMInterface* inner_ = nullptr;
};

TEST_F(HABMInterfaceLinks, SourcesDriveAndTargetsAreDriven) {
  HABMInterfaceConnection* outer = top_->createInterfaceConnection("u1/M_AXI", "u0/S_AXI", false);
  HABMInterfaceConnection* within = u0_->createInterfaceConnection("S_AXI", "core/M", true);
  ASSERT_TRUE(outer && within);
  EXPECT_EQ(s_->getSourceConnections(), (std::vector<HABMInterfaceConnection*>{outer}));
  EXPECT_EQ(s_->getTargetConnections(), (std::vector<HABMInterfaceConnection*>{within}));
  EXPECT_EQ(s_->getSourceInterface(), m_);
  EXPECT_EQ(s_->getTargetInterface(), inner_);
  EXPECT_EQ(m_->getTargetInterfaces(), (std::vector<HABMInterface*>{s_}));
  EXPECT_EQ(m_->getSourceConnection(), nullptr);
  EXPECT_TRUE(m_->hasConnections());
  // A connection two levels up is not seen.
  top_->createInterfaceConnection("u1/M_AXI", "u0/core/M", true);
  EXPECT_EQ(inner_->getSourceConnections(), (std::vector<HABMInterfaceConnection*>{within}));
}

TEST_F(HABMInterfaceLinks, FirstSourceConnectionWithoutSourceGivesNull) {
  HABMInterfaceConnection* dangling = top_->createInterfaceConnection("", false);
  dangling->setTargetPath("u0/S_AXI");
  top_->createInterfaceConnection("u1/M_AXI", "u0/S_AXI", false);
  EXPECT_EQ(s_->getSourceConnection(), dangling);
  EXPECT_EQ(s_->getSourceInterface(), nullptr);
  EXPECT_EQ(s_->getSourceInterfaces(), (std::vector<HABMInterface*>{m_}));
  EXPECT_EQ(s_->getTargetInterface(), nullptr);
  EXPECT_EQ(s_->getTargetConnection(), nullptr);
}

// Copy.

TEST_F(HABMInterfaceOnBlock, FindsReadPathsAndPatterns) {
  EXPECT_EQ(u0_->createInterface("S_AXI", false), nullptr);
  HABMInterface* top = top_->createInterface("S_AXI", false);
  EXPECT_EQ(top_->findInterface("u0/S_AXI", false), s_);
  EXPECT_EQ(top_->findInterface("/u0/S_AXI", false), s_);
  EXPECT_EQ(top_->findInterface("S_AXI", false), top);
  EXPECT_EQ(top_->findInterface("u0/none", true), nullptr);
  EXPECT_EQ(top_->findInterfaces("*S_AXI", true), (std::vector<HABMInterface*>{top, s_}));
  EXPECT_EQ(top_->findInterfaces("", false), (std::vector<HABMInterface*>{top}));
}

}  // namespace

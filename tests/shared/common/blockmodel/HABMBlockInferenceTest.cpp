// HABMBlockInferenceTest.cpp: interfaces and interface connections inferred from the attributes an HDL
// front end leaves on ports, compared as whole sets.
#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMInterfaceConnection.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMPortMap.h"
#include "msg/ComMsgMgr.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

using I = HABMInterface;
using Attrs = std::vector<std::pair<std::string, std::string>>;
using Lines = std::vector<std::string>;

constexpr char const* kAximm = "orvane:interface:aximm:1.0";
constexpr char const* kAxis = "orvane:interface:axis:1.0";
constexpr char const* kClock = "orvane:signal:clock:1.0";
constexpr char const* kReset = "orvane:signal:reset:1.0";

std::string info(char const* vlnv, char const* iface, char const* logical) {
  return std::string(vlnv) + " " + iface + " " + logical;
}

HABMPort* addPort(HABMBlock& block, char const* name, HABMPort::PortDirection direction, Attrs const& attrs) {
  HABMPort* port = block.createPort(name, false);
  port->setPortDirection(direction);
  for (auto const& [attr, value] : attrs) {
    port->createAttribute(attr, value);
  }
  return port;
}

// One line per interface, in block order, with every field inference can set.
Lines describe(HABMBlock const& block) {
  Lines out;
  for (HABMInterface const* iface : block.getInterfaces()) {
    std::ostringstream line;
    line << iface->getInterfaceName() << " [" << iface->getInterfaceVlnv() << "] "
         << I::decodeInterfaceMode(iface->getInterfaceMode());
    if (!iface->getAddrSpaceRef().empty()) {
      line << " space=" << iface->getAddrSpaceRef();
    }
    if (!iface->getMemoryMapRef().empty()) {
      line << " map=" << iface->getMemoryMapRef();
    }
    for (HABMParameter const* parameter : iface->getParameters()) {
      line << " " << parameter->getName() << "=" << parameter->getValue();
    }
    for (HABMPortMap const* portMap : iface->getPortMaps()) {
      line << " " << portMap->getLogName() << ":" << portMap->getPhyName();
    }
    out.push_back(line.str());
  }
  return out;
}

// "port: NAME=value, ..." for every port that still has attributes.
Lines leftAttributes(HABMBlock const& block) {
  Lines out;
  for (HABMPort const* port : block.getPorts()) {
    for (HABMAttribute const* attribute : port->getAttributes()) {
      out.push_back(port->getPortName() + ": " + attribute->getName() + "=" + attribute->getValue());
    }
  }
  return out;
}

// An RTL module with an AXI slave and master, a stream monitor, a clock and a reset, as a front end leaves
// it.
std::unique_ptr<HABMBlock> makeRtlBlock() {
  auto block = HABMBlock::createTopBlock("rtl");
  using A = HABMAttribute;
  addPort(*block, "s_axi_awaddr", HABMPort::DIR_IN,
          {{A::OV_INTERFACE_INFO(), info(kAximm, "S_AXI", "AWADDR")},
           {A::OV_INTERFACE_PARAMETER(), "ORV_INTERFACENAME S_AXI, ADDR_WIDTH 32"},
           {A::OV_INTERFACE_ADDRESSING(), "ORV_INTERFACENAME S_AXI, MODE slave, MEMORYMAPREF regs"}});
  addPort(*block, "s_axi_wdata", HABMPort::DIR_IN,
          {{A::OV_INTERFACE_INFO(), info(kAximm, "S_AXI", "WDATA")}, {A::OV_INTERFACE_MODE(), "slave"}});
  addPort(*block, "m_axi_wdata", HABMPort::DIR_OUT,
          {{A::OV_INTERFACE_INFO(), info(kAximm, "M_AXI", "WDATA")},
           {A::OV_INTERFACE_ADDRESSING(), "ORV_INTERFACENAME M_AXI, MODE master, ADDRESSSPACEREF data"}});
  addPort(*block, "m_axi_awaddr", HABMPort::DIR_OUT,
          {{A::OV_INTERFACE_INFO(), info(kAximm, "M_AXI", "AWADDR")},
           {A::OV_INTERFACE_PARAMETER(), "FREQ_HZ=250000000"}});
  addPort(*block, "mon_tdata", HABMPort::DIR_IN,
          {{A::OV_INTERFACE_INFO(), info(kAxis, "MON", "TDATA")},
           {A::OV_INTERFACE_MODE(), "monitor master MON"}});
  // A parameter before the keyword belongs to the port's own interface, one after it to the named one.
  addPort(*block, "aclk", HABMPort::DIR_IN,
          {{A::OV_INTERFACE_INFO(), info(kClock, "ACLK", "CLK")},
           {A::OV_INTERFACE_PARAMETER(), "FREQ_HZ 100000000, ORV_INTERFACENAME S_AXI, CLK_DOMAIN c0"}});
  addPort(*block, "aresetn", HABMPort::DIR_IN,
          {{A::MARK_DEBUG(), "true"}, {A::OV_INTERFACE_INFO(), info(kReset, "ARESETN", "RST")}});
  addPort(*block, "dbg", HABMPort::DIR_OUT,
          {{A::OV_INTERFACE_IGNORE(), "TRUE"}, {A::OV_INTERFACE_INFO(), info(kAximm, "S_AXI", "DBG")}});
  addPort(*block, "plain", HABMPort::DIR_IN, {});
  return block;
}

TEST(HABMBlockInference, RtlBlockGivesItsWholeInterfaceSet) {
  auto block = makeRtlBlock();
  block->inferAbstractions();
  EXPECT_EQ(describe(*block),
            (Lines{
                "ACLK [orvane:signal:clock:1.0] slave FREQ_HZ=100000000 CLK:aclk",
                "ARESETN [orvane:signal:reset:1.0] slave RST:aresetn",
                "MON [orvane:interface:axis:1.0] monitor_master TDATA:mon_tdata",
                "M_AXI [orvane:interface:aximm:1.0] master space=data FREQ_HZ=250000000 AWADDR:m_axi_awaddr "
                "WDATA:m_axi_wdata",
                "S_AXI [orvane:interface:aximm:1.0] slave map=regs ADDR_WIDTH=32 CLK_DOMAIN=c0 "
                "AWADDR:s_axi_awaddr WDATA:s_axi_wdata",
            }));
  // Read attributes are gone; an ignored port keeps all but the ignore mark, other attributes stay.
  EXPECT_EQ(leftAttributes(*block), (Lines{"aresetn: MARK_DEBUG=true",
                                           "dbg: OV_INTERFACE_INFO=orvane:interface:aximm:1.0 S_AXI DBG"}));
  EXPECT_EQ(block->check(), std::vector<std::string>());
}

TEST(HABMBlockInference, ModuleSpecLeavesEverythingAsItIs) {
  auto block = makeRtlBlock();
  block->createAttribute(HABMAttribute::OV_MODULE_SPEC(), "x");
  block->createInterface("kept", false);
  Lines const before = leftAttributes(*block);
  block->inferAbstractions();
  EXPECT_EQ(describe(*block), (Lines{"kept [] "}));
  EXPECT_EQ(leftAttributes(*block), before);
}

TEST(HABMBlockInference, RunsAreRepeatableButConsumeTheAttributes) {
  auto first = makeRtlBlock();
  auto second = makeRtlBlock();
  first->inferInterfaces();
  second->inferInterfaces();
  EXPECT_EQ(describe(*first), describe(*second));
  // The read attributes are gone; only what the ignored port kept is read now.
  first->inferInterfaces();
  EXPECT_EQ(describe(*first), (Lines{"S_AXI [orvane:interface:aximm:1.0] master DBG:dbg"}));
  first->inferInterfaces();
  EXPECT_TRUE(describe(*first).empty());
}

struct PortSpec {
  char const* name;
  HABMPort::PortDirection direction;
  Attrs attrs;
};

struct SmallCase {
  char const* what;
  std::vector<PortSpec> ports;
  Lines expected;
};

TEST(HABMBlockInference, SmallBlocksGiveTheirWholeSetAndKeepNoReadAttribute) {
  using A = HABMAttribute;
  auto const wdata = [](char const* mode) {
    return std::vector<PortSpec>{
        {"wdata",
         HABMPort::DIR_OUT,
         {{A::OV_INTERFACE_INFO(), info(kAximm, "S_AXI", "WDATA")}, {A::OV_INTERFACE_MODE(), mode}}}};
  };
  auto const monitor = [](char const* mode) {
    return Lines{std::string("S_AXI [orvane:interface:aximm:1.0] ") + mode + " WDATA:wdata"};
  };
  SmallCase const cases[] = {
      {"an ignore mark is removed whatever it says",
       {{"a",
         HABMPort::DIR_IN,
         {{A::OV_INTERFACE_IGNORE(), "false"}, {A::OV_INTERFACE_INFO(), info(kClock, "C", "CLK")}}},
        {"b",
         HABMPort::DIR_IN,
         {{A::OV_INTERFACE_IGNORE(), "yes"}, {A::OV_INTERFACE_INFO(), info(kReset, "R", "RST")}}}},
       {"C [orvane:signal:clock:1.0] slave CLK:a", "R [orvane:signal:reset:1.0] slave RST:b"}},
      {"one port in two interfaces: later records go to the last",
       {{"clk",
         HABMPort::DIR_OUT,
         {{"ov_interface_info", info(kClock, "CA", "CLK") + ", " + info(kClock, "CB", "CLK")},
          {"Ov_Interface_Mode", "master"},
          {"OV_INTERFACE_PARAMETER", "FREQ_HZ 5"}}}},
       {"CA [orvane:signal:clock:1.0] master CLK:clk",
        "CB [orvane:signal:clock:1.0] master FREQ_HZ=5 CLK:clk"}},
      {"monitor slave", wdata("monitor slave S_AXI"), monitor("monitor_slave")},
      {"monitor system", wdata("MONITOR system S_AXI"), monitor("monitor_system")},
      {"monitor of an unknown side", wdata("monitor foo S_AXI"), monitor("monitor_master")},
      {"a lone monitor changes nothing: the out port makes a master", wdata("monitor"), monitor("master")},
      {"empty mode", wdata(""), monitor("master")},
      {"mirrored master", wdata("mirroredMaster S_AXI"), monitor("slave")},
      {"an unnamed mode before the info is dropped",
       {{"wdata",
         HABMPort::DIR_OUT,
         {{A::OV_INTERFACE_MODE(), "slave"},
          {A::OV_INTERFACE_PARAMETER(), "LOST 1"},
          {A::OV_INTERFACE_INFO(), info(kAximm, "S_AXI", "WDATA")}}}},
       {"S_AXI [orvane:interface:aximm:1.0] master WDATA:wdata"}},
      {"the final mode decides what the reference names",
       {{"wdata",
         HABMPort::DIR_OUT,
         {{A::OV_INTERFACE_INFO(), info(kAximm, "A", "WDATA")},
          {A::OV_INTERFACE_ADDRESSING(), "ORV_INTERFACENAME A, MODE master, ADDRESSSPACEREF s"},
          {A::OV_INTERFACE_MODE(), "slave"}}},
        {"other",
         HABMPort::DIR_IN,
         {{A::OV_INTERFACE_ADDRESSING(), "ORV_INTERFACENAME B, ADDRESSSPACEREF t"}}}},
       {"A [orvane:interface:aximm:1.0] slave map=s WDATA:wdata"}},
      {"a parameter-only interface is a slave without bus",
       {{"x", HABMPort::DIR_OUT, {{A::OV_INTERFACE_PARAMETER(), "ORV_INTERFACENAME P, WIDTH 8, WIDTH 16"}}}},
       {"P [] slave WIDTH=16"}},
      {"a later record for a logical name replaces the mapping",
       {{"d0", HABMPort::DIR_IN, {{A::OV_INTERFACE_INFO(), info(kAxis, "S", "TDATA")}}},
        {"d1", HABMPort::DIR_IN, {{A::OV_INTERFACE_INFO(), info(kAxis, "S", "TDATA")}}}},
       {"S [orvane:interface:axis:1.0] slave TDATA:d1"}},
  };
  for (SmallCase const& c : cases) {
    auto block = HABMBlock::createTopBlock("m");
    for (PortSpec const& p : c.ports) {
      addPort(*block, p.name, p.direction, p.attrs);
    }
    block->inferInterfaces();
    EXPECT_EQ(describe(*block), c.expected) << c.what;
    EXPECT_TRUE(leftAttributes(*block).empty()) << c.what;
  }
}

TEST(HABMBlockInference, ProgressLinesNameTheBlock) {
  auto block = HABMBlock::createTopBlock("m");
  HABMBlock* u0 = block->createSubBlock("u0", "x", false);
  ComMsgCapture capture;
  ComMsgScopeGuard on("HABM");
  u0->inferAbstractions();
  EXPECT_EQ(capture.texts(), (Lines{"Infer interfaces on block '/u0'...\n",
                                    "Infer interface connections on block '/u0'...\n"}));
}

// Connections from the nets of a top block whose sub-blocks were inferred from their own attributes.

class HABMConnectionInference : public ::testing::Test {
 protected:
  void SetUp() override {
    top_ = HABMBlock::createTopBlock("soc");
    using A = HABMAttribute;
    addPort(*top_, "clk", HABMPort::DIR_IN, {{A::OV_INTERFACE_INFO(), info(kClock, "CLK", "CLK")}});
    addPort(*top_, "unmapped", HABMPort::DIR_IN, {});
    HABMBlock* cpu = top_->createSubBlock("cpu", "cpu", false);
    addPort(*cpu, "m_wdata", HABMPort::DIR_OUT, {{A::OV_INTERFACE_INFO(), info(kAximm, "M_AXI", "WDATA")}});
    addPort(*cpu, "m_wvalid", HABMPort::DIR_OUT, {{A::OV_INTERFACE_INFO(), info(kAximm, "M_AXI", "WVALID")}});
    addPort(*cpu, "aclk", HABMPort::DIR_IN, {{A::OV_INTERFACE_INFO(), info(kClock, "ACLK", "CLK")}});
    HABMBlock* mem = top_->createSubBlock("mem", "mem", false);
    addPort(*mem, "s_wdata", HABMPort::DIR_IN, {{A::OV_INTERFACE_INFO(), info(kAximm, "S_AXI", "WDATA")}});
    addPort(*mem, "s_wvalid", HABMPort::DIR_IN, {{A::OV_INTERFACE_INFO(), info(kAximm, "S_AXI", "WVALID")}});
    addPort(*mem, "aclk", HABMPort::DIR_IN, {{A::OV_INTERFACE_INFO(), info(kClock, "ACLK", "CLK")}});
    addPort(*mem, "spare", HABMPort::DIR_IN, {});
    // Nets in an order unlike the interface paths: the bus first, wire by wire, then the clock.
    top_->createPortConnection("cpu/m_wdata", {"mem/s_wdata"}, false);
    top_->createPortConnection("cpu/m_wvalid", {"mem/s_wvalid", "mem/spare"}, false);
    top_->createPortConnection("clk", {"mem/aclk", "cpu/aclk"}, false);
    top_->createPortConnection("unmapped", {"mem/spare"}, false);
    cpu->inferAbstractions();
    mem->inferAbstractions();
  }

  Lines connections() const {
    Lines out;
    for (HABMInterfaceConnection const* c : top_->getInterfaceConnections()) {
      out.push_back(c->getName() + " " + c->getSourcePath(false) + " -> " + c->getTargetPath(false));
    }
    return out;
  }

  std::unique_ptr<HABMBlock> top_;
};

TEST_F(HABMConnectionInference, OneConnectionPerPairOfInterfacesInPathOrder) {
  top_->createInterfaceConnection("stale", false);
  top_->inferAbstractions();
  EXPECT_EQ(connections(), (Lines{
                               "interface_connection_0 CLK -> cpu/ACLK",
                               "interface_connection_1 CLK -> mem/ACLK",
                               "interface_connection_2 cpu/M_AXI -> mem/S_AXI",
                           }));
  for (HABMInterfaceConnection const* c : top_->getInterfaceConnections()) {
    EXPECT_TRUE(c->isValid()) << c->getName();
  }
  EXPECT_EQ(top_->check(), std::vector<std::string>());
}

TEST_F(HABMConnectionInference, NoTestOfModeOrType) {
  // Two slaves of different buses on one net are connected all the same.
  HABMBlock* mem = top_->getSubBlock("mem");
  HABMInterface* odd = mem->createInterface("ODD", false);
  odd->setInterfaceVlnv(kAxis);
  odd->createPortMap("TDATA", "spare");
  top_->inferInterfaces();
  top_->inferInterfaceConnections();
  EXPECT_EQ(connections(), (Lines{
                               "interface_connection_0 CLK -> cpu/ACLK",
                               "interface_connection_1 CLK -> mem/ACLK",
                               "interface_connection_2 cpu/M_AXI -> mem/ODD",
                               "interface_connection_3 cpu/M_AXI -> mem/S_AXI",
                           }));
}

}  // namespace

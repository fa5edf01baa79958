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

namespace {

using Lines = std::vector<std::string>;

constexpr char const* kAximm = "orvane:interface:aximm:1.0";
constexpr char const* kAxis = "orvane:interface:axis:1.0";
constexpr char const* kClock = "orvane:signal:clock:1.0";

// The attribute "OV_INTERFACE_INFO=vlnv interface logical".
std::string info(char const* vlnv, char const* iface, char const* logical) {
  return std::string("OV_INTERFACE_INFO=") + vlnv + " " + iface + " " + logical;
}

// Adds the port "in NAME" or "out NAME" with its attributes, each "NAME=value".
void addPort(HABMBlock& block, std::string const& port, Lines const& attributes) {
  std::size_t const space = port.find(' ');
  HABMPort* p = block.createPort(port.substr(space + 1), false);
  p->setPortDirection(HABMPort::encodePortDirection(port.substr(0, space)));
  for (std::string const& attribute : attributes) {
    std::size_t const equals = attribute.find('=');
    p->createAttribute(attribute.substr(0, equals), attribute.substr(equals + 1));
  }
}

// One line per interface, in block order, with every field inference can set; then "port: NAME=value" for
// every attribute still on a port.
Lines describe(HABMBlock const& block) {
  Lines out;
  for (HABMInterface const* iface : block.getInterfaces()) {
    std::string line = iface->getInterfaceName() + " [" + iface->getInterfaceVlnv() + "] " +
                       HABMInterface::decodeInterfaceMode(iface->getInterfaceMode()) +
                       (iface->getAddrSpaceRef().empty() ? "" : " space=" + iface->getAddrSpaceRef()) +
                       (iface->getMemoryMapRef().empty() ? "" : " map=" + iface->getMemoryMapRef());
    for (HABMParameter const* parameter : iface->getParameters()) {
      line += " " + parameter->getName() + "=" + parameter->getValue();
    }
    for (HABMPortMap const* portMap : iface->getPortMaps()) {
      line += " " + portMap->getLogName() + ":" + portMap->getPhyName();
    }
    out.push_back(line);
  }
  for (HABMPort const* port : block.getPorts()) {
    for (HABMAttribute const* attribute : port->getAttributes()) {
      out.push_back(port->getPortName() + ": " + attribute->getName() + "=" + attribute->getValue());
    }
  }
  return out;
}

// An RTL module with an AXI slave and master, a stream monitor, clocks, a reset and an interrupt, as a front
// end leaves it.
std::unique_ptr<HABMBlock> makeRtlBlock() {
  auto block = HABMBlock::createTopBlock("rtl");
  block->createInterface("stale", false);  // not made from the attributes
  // The final mode, not the addressing's, decides whether the reference names a space or a map.
  addPort(*block, "in s_axi_awaddr",
          {info(kAximm, "S_AXI", "AWADDR"), "OV_INTERFACE_PARAMETER=ORV_INTERFACENAME S_AXI, ADDR_WIDTH 32",
           "OV_INTERFACE_ADDRESSING=ORV_INTERFACENAME S_AXI, MODE master, ADDRESSSPACEREF regs"});
  // An addressing without a mode is dropped.
  addPort(*block, "in s_axi_wdata",
          {info(kAximm, "S_AXI", "WDATA"), "OV_INTERFACE_MODE=slave",
           "OV_INTERFACE_ADDRESSING=ORV_INTERFACENAME S_AXI, MEMORYMAPREF lost"});
  // A mode or parameter before any info has no interface to go to; of two ports for one logical name, the
  // later one is mapped.
  addPort(*block, "out m_axi_wdata_old",
          {"OV_INTERFACE_MODE=slave", "OV_INTERFACE_PARAMETER=LOST 1", info(kAximm, "M_AXI", "WDATA")});
  addPort(*block, "out m_axi_wdata",
          {info(kAximm, "M_AXI", "WDATA"),
           "OV_INTERFACE_ADDRESSING=ORV_INTERFACENAME M_AXI, MODE master, ADDRESSSPACEREF data"});
  addPort(*block, "out m_axi_awaddr", {info(kAximm, "M_AXI", "AWADDR"), "OV_INTERFACE_PARAMETER=FREQ_HZ=25"});
  addPort(*block, "in mon_tdata", {info(kAxis, "MON", "TDATA"), "OV_INTERFACE_MODE=monitor master MON"});
  // A parameter before the keyword belongs to the port's own interface, one after it to the named one.
  addPort(
      *block, "in aclk",
      {info(kClock, "ACLK", "CLK"), "OV_INTERFACE_PARAMETER=FREQ_HZ 1, ORV_INTERFACENAME S_AXI, PHASE 0"});
  // Names in any case; of two interfaces in one info, the later records go to the last.
  addPort(*block, "out clk_out",
          {"ov_interface_info=" + std::string(kClock) + " CA CLK, " + kClock + " CB CLK",
           "Ov_Interface_Mode=slave", "OV_INTERFACE_PARAMETER=FREQ_HZ 5"});
  // An ignore mark is removed; only "true" keeps the port from being read.
  addPort(*block, "in aresetn",
          {"MARK_DEBUG=true", "OV_INTERFACE_IGNORE=false",
           "OV_INTERFACE_INFO=orvane:signal:reset:1.0 ARESETN RST"});
  addPort(*block, "out dbg", {"OV_INTERFACE_IGNORE=TRUE", info(kAximm, "S_AXI", "DBG")});
  // A parameter alone makes an interface without bus.
  addPort(*block, "out irq", {"OV_INTERFACE_PARAMETER=ORV_INTERFACENAME IRQ, WIDTH 8, WIDTH 16"});
  return block;
}

TEST(HABMBlockInference, RtlBlockGivesItsWholeInterfaceSetAndKeepsOnlyWhatItDidNotRead) {
  auto block = makeRtlBlock();
  block->inferAbstractions();
  EXPECT_EQ(describe(*block),
            (Lines{
                "ACLK [orvane:signal:clock:1.0] slave FREQ_HZ=1 CLK:aclk",
                "ARESETN [orvane:signal:reset:1.0] slave RST:aresetn",
                "CA [orvane:signal:clock:1.0] master CLK:clk_out",
                "CB [orvane:signal:clock:1.0] slave FREQ_HZ=5 CLK:clk_out",
                "IRQ [] slave WIDTH=16",
                "MON [orvane:interface:axis:1.0] monitor_master TDATA:mon_tdata",
                "M_AXI [orvane:interface:aximm:1.0] master space=data FREQ_HZ=25 AWADDR:m_axi_awaddr "
                "WDATA:m_axi_wdata",
                "S_AXI [orvane:interface:aximm:1.0] slave map=regs ADDR_WIDTH=32 PHASE=0 "
                "AWADDR:s_axi_awaddr WDATA:s_axi_wdata",
                // Read attributes are gone; an ignored port keeps all but the mark, other attributes stay.
                "aresetn: MARK_DEBUG=true",
                "dbg: OV_INTERFACE_INFO=orvane:interface:aximm:1.0 S_AXI DBG",
            }));
  EXPECT_EQ(block->check(), std::vector<std::string>());
}

TEST(HABMBlockInference, OvModuleMarkLeavesEverythingAsItIsAndOtherwiseProgressLinesNameTheBlock) {
  auto block = makeRtlBlock();
  block->createAttribute(HABMAttribute::OV_MODULE_SPEC(), "x");
  HABMBlock* u0 = block->createSubBlock("u0", "x", false);
  Lines const before = describe(*block);
  ComMsgCapture capture;
  ComMsgScopeGuard on("HABM");
  block->inferAbstractions();
  EXPECT_EQ(describe(*block), before);
  u0->inferAbstractions();
  EXPECT_EQ(capture.texts(), (Lines{"Infer interfaces on block '/u0'...\n",
                                    "Infer interface connections on block '/u0'...\n"}));
}

TEST(HABMBlockInference, MonitorModesNameTheWatchedSideAndAModeWithoutOneIsNoMode) {
  using Case = std::pair<char const*, char const*>;  // the mode attribute, the interface's mode
  for (auto const& [text, mode] :
       {Case{"monitor slave S", "monitor_slave"}, Case{"MONITOR system S", "monitor_system"},
        Case{"monitor foo S", "monitor_master"}, Case{"monitor", "master"}, Case{"", "master"}}) {
    auto block = HABMBlock::createTopBlock("m");
    addPort(*block, "out w", {info(kAximm, "S", "D"), std::string("OV_INTERFACE_MODE=") + text});
    block->inferInterfaces();
    EXPECT_EQ(describe(*block), Lines{"S [" + std::string(kAximm) + "] " + mode + " D:w"}) << text;
  }
}

// Connections from the nets of a top block whose sub-blocks were inferred from their own attributes.
TEST(HABMBlockInference, OneConnectionPerPairOfInterfacesOnANetInPathOrderWithNoTestOfModeOrType) {
  auto top = HABMBlock::createTopBlock("soc");
  addPort(*top, "in clk", {info(kClock, "CLK", "CLK")});
  HABMBlock* cpu = top->createSubBlock("cpu", "cpu", false);
  addPort(*cpu, "out m_wdata", {info(kAximm, "M_AXI", "WDATA")});
  addPort(*cpu, "out m_wvalid", {info(kAximm, "M_AXI", "WVALID")});
  addPort(*cpu, "in aclk", {info(kClock, "ACLK", "CLK")});
  HABMBlock* mem = top->createSubBlock("mem", "mem", false);
  addPort(*mem, "in s_wdata", {info(kAximm, "S_AXI", "WDATA")});
  addPort(*mem, "in s_wvalid", {info(kAximm, "S_AXI", "WVALID")});
  addPort(*mem, "in aclk", {info(kClock, "ACLK", "CLK")});
  addPort(*mem, "in tdata", {info(kAxis, "ODD", "TDATA")});  // a slave of another bus
  // Nets in an order unlike the interface paths: the bus first, wire by wire, then the clock.
  top->createPortConnection("cpu/m_wdata", {"mem/s_wdata", "mem/tdata"}, false);
  top->createPortConnection("cpu/m_wvalid", {"mem/s_wvalid"}, false);
  top->createPortConnection("clk", {"mem/aclk", "cpu/aclk"}, false);
  cpu->inferAbstractions();
  mem->inferAbstractions();
  top->createInterfaceConnection("stale", false);
  top->inferAbstractions();
  Lines connections;
  for (HABMInterfaceConnection const* c : top->getInterfaceConnections()) {
    connections.push_back(c->getName() + " " + c->getSourcePath(false) + " -> " + c->getTargetPath(false));
  }
  EXPECT_EQ(connections,
            (Lines{"interface_connection_0 CLK -> cpu/ACLK", "interface_connection_1 CLK -> mem/ACLK",
                   "interface_connection_2 cpu/M_AXI -> mem/ODD",
                   "interface_connection_3 cpu/M_AXI -> mem/S_AXI"}));
}

}  // namespace

// HABMHdlTestUtil.h: the designs behind the golden files of the HDL writers, and golden-file comparison
// with the year masked.
#pragma once

#include "blockmodel/HABMAbstractionDefinition.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMPort.h"

#include "HABMTestFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <regex>

namespace habm_hdl_test {

/// A top block with ports declared as in Verilog, separated by commas: "in clk" is a wire, "out [7:0] q" a
/// vector with its bounds; the direction is any text HABMPort takes ("in", "out", "inout", "phantom";
/// others give DIR_UNKNOWN).
inline std::unique_ptr<HABMBlock> design(std::string const& module, std::string const& ports) {
  auto top = HABMBlock::createTopBlock(module);
  std::regex const declaration(R"((\w+) (?:\[(\d+):(\d+)\] )?(\w+))");
  for (std::sregex_iterator it(ports.begin(), ports.end(), declaration), end; it != end; ++it) {
    auto const& m = *it;
    HABMPort* port = top->createPort(m[4], false);
    port->setPortDirection(HABMPort::encodePortDirection(m[1]));
    port->setPortType(m[2].matched ? HABMPort::TYPE_VECTOR : HABMPort::TYPE_WIRE);
    port->setPortLeft(m[2].matched ? static_cast<std::uint32_t>(std::stoul(m[2])) : 0U);
    port->setPortRight(m[3].matched ? static_cast<std::uint32_t>(std::stoul(m[3])) : 0U);
  }
  return top;
}

/// An interface with a port map for each of the space-separated `logicals`: "CLK=aclk" maps CLK onto
/// aclk, a name alone onto `prefix` and the name in lower case.
inline HABMInterface* busInterface(HABMBlock& block, std::string const& name, std::string const& vlnv,
                                   HABMInterface::InterfaceMode mode, std::string const& prefix,
                                   std::string const& logicals) {
  HABMInterface* iface = block.createInterface(name, false);
  iface->setInterfaceVlnv(vlnv);
  iface->setInterfaceMode(mode);
  std::regex const map(R"((\w+)(?:=(\w+))?)");
  for (std::sregex_iterator it(logicals.begin(), logicals.end(), map), end; it != end; ++it) {
    std::string lower = (*it)[1];
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    iface->createPortMap((*it)[1], (*it)[2].matched ? (*it)[2].str() : prefix + lower);
  }
  return iface;
}

// A logical port as the master sees it; -1 widths are set by the bus parameters.
struct Logical {
  char const* name;
  int width;
  bool masterDrives;
};

inline void define(HABMInterface& iface, std::vector<Logical> const& ports) {
  for (Logical const& l : ports) {
    iface.getAbstractionDefinition()->addAbstractionDefinitionPort(
        l.name, "required", "required", true, true, l.width, l.width, l.masterDrives ? "in" : "out",
        l.masterDrives ? "out" : "in");
  }
}

// A write channel and a read-data channel are enough to show tie-offs and widths.
inline std::vector<Logical> const kAxiMMSubset = {
    {"AWID", -1, true},  {"AWADDR", -1, true}, {"AWVALID", 1, true}, {"AWREADY", 1, false},
    {"WDATA", -1, true}, {"WSTRB", -1, true},  {"WVALID", 1, true},  {"WREADY", 1, false},
    {"BID", -1, false},  {"BRESP", 2, false},  {"BVALID", 1, false}, {"BREADY", 1, true},
    {"RDATA", -1, false}};
inline std::vector<Logical> const kAxiSSubset = {
    {"TDATA", -1, true}, {"TUSER", -1, true}, {"TLAST", 1, true}, {"TVALID", 1, true}, {"TREADY", 1, false}};

constexpr char kAxiMM[] = "orvane:interface:aximm:1.0";
constexpr char kAxiS[] = "orvane:interface:axis:1.0";
constexpr char kClock[] = "orvane:signal:clock:1.0";

/// Flat ports of every direction and shape, block attributes, no generics and no interfaces.
inline std::unique_ptr<HABMBlock> makePlainBlock() {
  auto top = design("plain_io", "in clk, in [3:0] d, out [7:0] q, inout [1:0] io, in [0:5] le, out done");
  top->createAttribute("KEEP_HIERARCHY", "yes");
  top->createAttribute("DONT_TOUCH", "true");
  return top;
}

/// Generics and an interface-free boundary.
inline std::unique_ptr<HABMBlock> makeGenericBlock() {
  auto top = design("fifo", "in clk, in [15:0] din, out [15:0] dout, out full");
  top->createGeneric("WIDTH", "16");
  top->createGeneric("DEPTH", "512");
  top->createGeneric("INIT", "8'hA5");
  return top;
}

/// An AXI memory-mapped slave, an AXI stream master, clock and reset interfaces and a flat interrupt.
inline std::unique_ptr<HABMBlock> makeAxiBlock() {
  auto top =
      design("axi_dev",
             "in aclk, in aresetn, in [3:0] s_axi_awid, in [31:0] s_axi_awaddr, in s_axi_awvalid, "
             "out s_axi_awready, in [63:0] s_axi_wdata, in s_axi_wvalid, out s_axi_wready, "
             "out [3:0] s_axi_bid, out [31:0] m_axis_tdata, out m_axis_tvalid, in m_axis_tready, out irq");
  top->createGeneric("C_S_AXI_DATA_WIDTH", "64");
  HABMInterface* s = busInterface(*top, "S_AXI", kAxiMM, HABMInterface::MODE_SLAVE, "s_axi_",
                                  "AWID AWADDR AWVALID AWREADY WDATA WVALID WREADY BID");
  s->createParameter("PROTOCOL", "AXI4");
  s->createParameter("FREQ_HZ", "100000000");
  define(*s, kAxiMMSubset);
  define(*busInterface(*top, "M_AXIS", kAxiS, HABMInterface::MODE_MASTER, "m_axis_", "TDATA TVALID TREADY"),
         kAxiSSubset);
  busInterface(*top, "ACLK", kClock, HABMInterface::MODE_SLAVE, "", "CLK=aclk")
      ->createParameter("ASSOCIATED_BUSIF", "S_AXI:M_AXIS");
  busInterface(*top, "ARESETN", "orvane:signal:reset:1.0", HABMInterface::MODE_SLAVE, "", "RST=aresetn");
  return top;
}

/// Monitors of an AXI stream and an AXI memory-mapped bus, a system interface and one without a mode.
inline std::unique_ptr<HABMBlock> makeMonitorBlock() {
  auto top = design("bus_probe",
                    "in clk, in [127:0] mon_tdata, in [7:0] mon_tuser, in mon_tvalid, in mon_tready, "
                    "in [47:0] spy_awaddr, in spy_awvalid, out [31:0] sys_data, in [15:0] loose_tdata");
  HABMInterface* mon = busInterface(*top, "MON", kAxiS, HABMInterface::MODE_MONITOR_SLAVE, "mon_",
                                    "TDATA TUSER TVALID TREADY");
  mon->createParameter("HAS_TREADY", "1");
  define(*mon, kAxiSSubset);
  define(*busInterface(*top, "SPY", kAxiMM, HABMInterface::MODE_MONITOR_MASTER, "spy_", "AWADDR AWVALID"),
         kAxiMMSubset);
  busInterface(*top, "SYS", "acme:user:status:1.0", HABMInterface::MODE_SYSTEM, "sys_", "DATA");
  define(*busInterface(*top, "LOOSE", kAxiS, HABMInterface::MODE_UNKNOWN, "loose_", "TDATA"), kAxiSSubset);
  return top;
}

/// The designs that have golden files, by the files' base name.
inline std::pair<char const*, std::unique_ptr<HABMBlock> (*)()> const kGoldenCases[] = {
    {"plain_io", makePlainBlock},
    {"generics", makeGenericBlock},
    {"axi", makeAxiBlock},
    {"monitor", makeMonitorBlock},
};

/// Compares generated text, the end year of its copyright header masked as "YYYY" (HABMUtilsTest checks
/// that it is the current one), with a golden file under tests/golden; with MZ_UPDATE_GOLDEN=1 in the
/// environment the golden file is rewritten instead.
inline void expectGolden(std::string const& relative, std::string const& generated) {
  std::string const path = std::string(MZ_GOLDEN_DIR) + "/" + relative;
  std::string const masked = std::regex_replace(generated, std::regex("2023-\\d{4} "), "2023-YYYY ",
                                                std::regex_constants::format_first_only);
  if (char const* update = std::getenv("MZ_UPDATE_GOLDEN"); update != nullptr && std::string(update) == "1") {
    habm_test::put(path, masked);
    return;
  }
  EXPECT_EQ(habm_test::bytes(path), masked)
      << "golden file " << path << " differs; rerun with MZ_UPDATE_GOLDEN=1 to regenerate it";
}

}  // namespace habm_hdl_test

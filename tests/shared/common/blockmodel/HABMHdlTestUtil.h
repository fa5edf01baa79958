// HABMHdlTestUtil.h: the designs behind the golden files of the HDL writers, and golden-file comparison
// with the year masked.
#pragma once

#include "blockmodel/HABMAbstractionDefinition.h"
#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMPortMap.h"

#include "HABMAddrTestUtil.h"
#include "HABMTestFiles.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace habm_hdl_test {

inline HABMPort* port(HABMBlock& block, std::string const& name, HABMPort::PortDirection direction,
                      std::uint32_t left = 0, std::uint32_t right = 0, bool wire = false) {
  HABMPort* p = block.createPort(name, false);
  p->setPortDirection(direction);
  if (wire) {
    p->setPortType(HABMPort::TYPE_WIRE);
  } else {
    p->setPortLeft(left);
    p->setPortRight(right);
  }
  return p;
}

inline HABMPort* wirePort(HABMBlock& block, std::string const& name, HABMPort::PortDirection direction) {
  return port(block, name, direction, 0, 0, true);
}

/// Each logical name mapped onto the physical port `prefix` + its lower-case form.
inline std::vector<std::pair<std::string, std::string>> prefixed(std::string const& prefix,
                                                                 std::vector<std::string> const& logicals) {
  std::vector<std::pair<std::string, std::string>> maps;
  for (std::string const& logical : logicals) {
    std::string physical = prefix;
    for (char c : logical) {
      physical += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    maps.emplace_back(logical, physical);
  }
  return maps;
}

inline HABMInterface* busInterface(HABMBlock& block, std::string const& name, std::string const& vlnv,
                                   HABMInterface::InterfaceMode mode,
                                   std::vector<std::pair<std::string, std::string>> const& maps) {
  HABMInterface* iface = block.createInterface(name, false);
  iface->setInterfaceVlnv(vlnv);
  iface->setInterfaceMode(mode);
  for (auto const& [logical, physical] : maps) {
    iface->createPortMap(logical, physical);
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
inline std::vector<Logical> const& axiMMSubset() {
  static std::vector<Logical> const ports = {
      {"AWID", -1, true},  {"AWADDR", -1, true}, {"AWVALID", 1, true}, {"AWREADY", 1, false},
      {"WDATA", -1, true}, {"WSTRB", -1, true},  {"WVALID", 1, true},  {"WREADY", 1, false},
      {"BID", -1, false},  {"BRESP", 2, false},  {"BVALID", 1, false}, {"BREADY", 1, true},
      {"RDATA", -1, false}};
  return ports;
}

inline std::vector<Logical> const& axiSSubset() {
  static std::vector<Logical> const ports = {{"TDATA", -1, true},
                                             {"TUSER", -1, true},
                                             {"TLAST", 1, true},
                                             {"TVALID", 1, true},
                                             {"TREADY", 1, false}};
  return ports;
}

constexpr char kAxiMM[] = "orvane:interface:aximm:1.0";
constexpr char kAxiS[] = "orvane:interface:axis:1.0";
constexpr char kClock[] = "orvane:signal:clock:1.0";
constexpr char kReset[] = "orvane:signal:reset:1.0";

/// Flat ports of every direction and shape, block attributes, no generics and no interfaces.
inline std::unique_ptr<HABMBlock> makePlainBlock() {
  auto top = HABMBlock::createTopBlock("plain_io");
  top->createAttribute("KEEP_HIERARCHY", "yes");
  top->createAttribute("DONT_TOUCH", "true");
  wirePort(*top, "clk", HABMPort::DIR_IN);
  port(*top, "d", HABMPort::DIR_IN, 3, 0);
  port(*top, "q", HABMPort::DIR_OUT, 7, 0);
  port(*top, "io", HABMPort::DIR_INOUT, 1, 0);
  port(*top, "le", HABMPort::DIR_IN, 0, 5);
  wirePort(*top, "done", HABMPort::DIR_OUT);
  return top;
}

/// Generics and an interface-free boundary.
inline std::unique_ptr<HABMBlock> makeGenericBlock() {
  auto top = HABMBlock::createTopBlock("fifo");
  top->createGeneric("WIDTH", "16");
  top->createGeneric("DEPTH", "512");
  top->createGeneric("INIT", "8'hA5");
  wirePort(*top, "clk", HABMPort::DIR_IN);
  port(*top, "din", HABMPort::DIR_IN, 15, 0);
  port(*top, "dout", HABMPort::DIR_OUT, 15, 0);
  wirePort(*top, "full", HABMPort::DIR_OUT);
  return top;
}

/// An AXI memory-mapped slave, an AXI stream master, clock and reset interfaces and a flat interrupt.
inline std::unique_ptr<HABMBlock> makeAxiBlock() {
  auto top = HABMBlock::createTopBlock("axi_dev");
  top->createGeneric("C_S_AXI_DATA_WIDTH", "64");
  wirePort(*top, "aclk", HABMPort::DIR_IN);
  wirePort(*top, "aresetn", HABMPort::DIR_IN);
  port(*top, "s_axi_awid", HABMPort::DIR_IN, 3, 0);
  port(*top, "s_axi_awaddr", HABMPort::DIR_IN, 31, 0);
  wirePort(*top, "s_axi_awvalid", HABMPort::DIR_IN);
  wirePort(*top, "s_axi_awready", HABMPort::DIR_OUT);
  port(*top, "s_axi_wdata", HABMPort::DIR_IN, 63, 0);
  wirePort(*top, "s_axi_wvalid", HABMPort::DIR_IN);
  wirePort(*top, "s_axi_wready", HABMPort::DIR_OUT);
  port(*top, "s_axi_bid", HABMPort::DIR_OUT, 3, 0);
  port(*top, "m_axis_tdata", HABMPort::DIR_OUT, 31, 0);
  wirePort(*top, "m_axis_tvalid", HABMPort::DIR_OUT);
  wirePort(*top, "m_axis_tready", HABMPort::DIR_IN);
  wirePort(*top, "irq", HABMPort::DIR_OUT);

  HABMInterface* s = busInterface(
      *top, "S_AXI", kAxiMM, HABMInterface::MODE_SLAVE,
      prefixed("s_axi_", {"AWID", "AWADDR", "AWVALID", "AWREADY", "WDATA", "WVALID", "WREADY", "BID"}));
  s->createParameter("PROTOCOL", "AXI4");
  s->createParameter("FREQ_HZ", "100000000");
  define(*s, axiMMSubset());
  HABMInterface* m = busInterface(*top, "M_AXIS", kAxiS, HABMInterface::MODE_MASTER,
                                  prefixed("m_axis_", {"TDATA", "TVALID", "TREADY"}));
  define(*m, axiSSubset());
  busInterface(*top, "ACLK", kClock, HABMInterface::MODE_SLAVE, {{"CLK", "aclk"}})
      ->createParameter("ASSOCIATED_BUSIF", "S_AXI:M_AXIS");
  busInterface(*top, "ARESETN", kReset, HABMInterface::MODE_SLAVE, {{"RST", "aresetn"}});
  return top;
}

/// Monitors of an AXI stream and an AXI memory-mapped bus, a system interface and one without a mode.
inline std::unique_ptr<HABMBlock> makeMonitorBlock() {
  auto top = HABMBlock::createTopBlock("bus_probe");
  wirePort(*top, "clk", HABMPort::DIR_IN);
  port(*top, "mon_tdata", HABMPort::DIR_IN, 127, 0);
  port(*top, "mon_tuser", HABMPort::DIR_IN, 7, 0);
  wirePort(*top, "mon_tvalid", HABMPort::DIR_IN);
  wirePort(*top, "mon_tready", HABMPort::DIR_IN);
  port(*top, "spy_awaddr", HABMPort::DIR_IN, 47, 0);
  wirePort(*top, "spy_awvalid", HABMPort::DIR_IN);
  port(*top, "sys_data", HABMPort::DIR_OUT, 31, 0);
  port(*top, "loose_tdata", HABMPort::DIR_IN, 15, 0);

  HABMInterface* mon = busInterface(*top, "MON", kAxiS, HABMInterface::MODE_MONITOR_SLAVE,
                                    prefixed("mon_", {"TDATA", "TUSER", "TVALID", "TREADY"}));
  mon->createParameter("HAS_TREADY", "1");
  define(*mon, axiSSubset());
  HABMInterface* spy = busInterface(*top, "SPY", kAxiMM, HABMInterface::MODE_MONITOR_MASTER,
                                    prefixed("spy_", {"AWADDR", "AWVALID"}));
  define(*spy, axiMMSubset());
  busInterface(*top, "SYS", "acme:user:status:1.0", HABMInterface::MODE_SYSTEM, {{"DATA", "sys_data"}});
  HABMInterface* loose =
      busInterface(*top, "LOOSE", kAxiS, HABMInterface::MODE_UNKNOWN, {{"TDATA", "loose_tdata"}});
  define(*loose, axiSSubset());
  return top;
}

/// The designs that have golden files, by the files' base name.
struct GoldenCase {
  char const* name;
  std::function<std::unique_ptr<HABMBlock>()> make;
};

inline std::vector<GoldenCase> const& goldenCases() {
  static std::vector<GoldenCase> const cases = {{"plain_io", makePlainBlock},
                                                {"generics", makeGenericBlock},
                                                {"axi", makeAxiBlock},
                                                {"monitor", makeMonitorBlock}};
  return cases;
}

/// The generated text with the current year of the copyright header replaced by "YYYY".
inline std::string maskYear(std::string text) {
  std::time_t const now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  std::string const year = "-" + std::to_string(local.tm_year + 1900) + " ";
  if (auto const at = text.find(year); at != std::string::npos) {
    text.replace(at, year.size(), "-YYYY ");
  }
  return text;
}

/// Compares generated text with a golden file under tests/golden; with MZ_UPDATE_GOLDEN=1 in the
/// environment the golden file is rewritten instead.
inline void expectGolden(std::string const& relative, std::string const& generated) {
  std::string const path = std::string(MZ_GOLDEN_DIR) + "/" + relative;
  std::string const masked = maskYear(generated);
  if (char const* update = std::getenv("MZ_UPDATE_GOLDEN"); update != nullptr && std::string(update) == "1") {
    std::ofstream(path, std::ios::binary) << masked;
    return;
  }
  EXPECT_EQ(habm_test::bytes(path), masked)
      << "golden file " << path << " differs; rerun with MZ_UPDATE_GOLDEN=1 to regenerate it";
}

}  // namespace habm_hdl_test

// BmAxiDefinitions.cpp: the AXI4 and AXI4-Stream abstraction definitions that bmtool hands to the model.
#include "BmAxiDefinitions.h"

#include "blockmodel/HABMAbstractionDefinition.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMInterface.h"

#include <vector>

namespace bmtool {

namespace {

// One logical port, as the master drives it; the slave side mirrors the direction. A width of -1 is set
// by the bus's parameters.
struct LogicalPort {
  char const* name;
  int width;
  bool masterDrives;
};

constexpr int kVariable = -1;

std::vector<LogicalPort> const& axiMMPorts() {
  static std::vector<LogicalPort> const ports = {
      {"AWID", kVariable, true},   {"AWADDR", kVariable, true}, {"AWLEN", 8, true},
      {"AWSIZE", 3, true},         {"AWBURST", 2, true},        {"AWLOCK", 1, true},
      {"AWCACHE", 4, true},        {"AWPROT", 3, true},         {"AWQOS", 4, true},
      {"AWREGION", 4, true},       {"AWUSER", kVariable, true}, {"AWVALID", 1, true},
      {"AWREADY", 1, false},       {"WDATA", kVariable, true},  {"WSTRB", kVariable, true},
      {"WLAST", 1, true},          {"WUSER", kVariable, true},  {"WVALID", 1, true},
      {"WREADY", 1, false},        {"BID", kVariable, false},   {"BRESP", 2, false},
      {"BUSER", kVariable, false}, {"BVALID", 1, false},        {"BREADY", 1, true},
      {"ARID", kVariable, true},   {"ARADDR", kVariable, true}, {"ARLEN", 8, true},
      {"ARSIZE", 3, true},         {"ARBURST", 2, true},        {"ARLOCK", 1, true},
      {"ARCACHE", 4, true},        {"ARPROT", 3, true},         {"ARQOS", 4, true},
      {"ARREGION", 4, true},       {"ARUSER", kVariable, true}, {"ARVALID", 1, true},
      {"ARREADY", 1, false},       {"RID", kVariable, false},   {"RDATA", kVariable, false},
      {"RRESP", 2, false},         {"RLAST", 1, false},         {"RUSER", kVariable, false},
      {"RVALID", 1, false},        {"RREADY", 1, true},
  };
  return ports;
}

std::vector<LogicalPort> const& axiSPorts() {
  static std::vector<LogicalPort> const ports = {
      {"TDATA", kVariable, true}, {"TSTRB", kVariable, true}, {"TKEEP", kVariable, true},
      {"TLAST", 1, true},         {"TID", kVariable, true},   {"TDEST", kVariable, true},
      {"TUSER", kVariable, true}, {"TVALID", 1, true},        {"TREADY", 1, false},
  };
  return ports;
}

void fill(HABMAbstractionDefinition& definition, std::vector<LogicalPort> const& ports) {
  for (LogicalPort const& port : ports) {
    std::string const master = port.masterDrives ? "out" : "in";
    std::string const slave = port.masterDrives ? "in" : "out";
    definition.addAbstractionDefinitionPort(port.name, "optional", "optional", true, true, port.width,
                                            port.width, slave, master);
  }
}

}  // namespace

void fillAxiAbstractionDefinitions(HABMBlock const& block) {
  for (HABMInterface const* iface : block.getInterfaces()) {
    auto const definition = iface->getAbstractionDefinition();
    if (!definition || !definition->getAbstractionDefinitionPorts().empty()) {
      continue;
    }
    HABMInterface::InterfaceType const type = iface->getInterfaceType();
    if (HABMInterface::isAxiMMInterfaceType(type)) {
      fill(*definition, axiMMPorts());
    } else if (HABMInterface::isAxiSInterfaceType(type)) {
      fill(*definition, axiSPorts());
    }
  }
}

}  // namespace bmtool

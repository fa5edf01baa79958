// HABMSVlogWriter.cpp: the SystemVerilog wrapper of a block, its interface instance hints and the width
// parameters of AXI logical ports.
#include "blockmodel/HABMSVlogWriter.h"

#include "blockmodel/HABMAbstractionDefinition.h"
#include "blockmodel/HABMAbstractionDefinitionPort.h"
#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMPortMap.h"
#include "blockmodel/HABMUtils.h"
#include "blockmodel/detail/HABMFileWrite.h"
#include "msg/ComMsgMgr.h"

#include <boost/algorithm/string/join.hpp>
#include <boost/algorithm/string/replace.hpp>

#include <algorithm>
#include <map>
#include <memory>
#include <ostream>
#include <set>
#include <vector>

namespace {

using ParamTable = std::map<std::string, std::string>;

ParamTable const& axiMMParams() {
  static ParamTable const table = {
      {"WDATA", "DATA_WIDTH"},  {"RDATA", "DATA_WIDTH"},    {"AWADDR", "ADDR_WIDTH"},
      {"ARADDR", "ADDR_WIDTH"}, {"AWUSER", "AWUSER_WIDTH"}, {"ARUSER", "ARUSER_WIDTH"},
      {"WUSER", "WUSER_WIDTH"}, {"RUSER", "RUSER_WIDTH"},   {"BUSER", "BUSER_WIDTH"},
      {"AWID", "ID_WIDTH"},     {"ARID", "ID_WIDTH"},       {"WID", "ID_WIDTH"},
      {"RID", "ID_WIDTH"},      {"BID", "ID_WIDTH"},
  };
  return table;
}

ParamTable const& axiSParams() {
  static ParamTable const table = {
      {"TDATA", "TDATA_NUM_BYTES"},
      {"TUSER", "TUSER_WIDTH"},
      {"TID", "TID_WIDTH"},
      {"TDEST", "TDEST_WIDTH"},
  };
  return table;
}

std::string lookUp(ParamTable const& table, std::string const& key) {
  auto const it = table.find(key);
  return it == table.end() ? std::string() : it->second;
}

template <class T>
bool contains(std::vector<T> const& list, T const& item) {
  return std::find(list.begin(), list.end(), item) != list.end();
}

template <class T>
void addUnlessPresent(std::vector<T>& list, T const& item) {
  if (!contains(list, item)) {
    list.push_back(item);
  }
}

// The SystemVerilog type of an interface's bus: "aximm_v1_0" for "...:aximm:1.0".
std::string interfaceTypeName(HABMInterface const& iface) {
  std::string vendor, library, name, version;
  HABMUtils::splitVLNV(iface.getInterfaceVlnv(), vendor, library, name, version);
  return name + "_v" + boost::algorithm::replace_all_copy(version, ".", "_");
}

std::string vlnvNamePart(HABMInterface const& iface) {
  std::string vendor, library, name, version;
  HABMUtils::splitVLNV(iface.getInterfaceVlnv(), vendor, library, name, version);
  return name;
}

// Flat ports keep their direction; a phantom port has none in the wrapper.
std::string directionWord(HABMPort::PortDirection const direction) {
  switch (direction) {
    case HABMPort::DIR_IN:
      return "input";
    case HABMPort::DIR_OUT:
      return "output";
    case HABMPort::DIR_PHANTOM:
      return "";
    case HABMPort::DIR_INOUT:
    case HABMPort::DIR_UNKNOWN:
      break;
  }
  return "inout";
}

// Only AXI buses become SystemVerilog interfaces; clocks and resets stay flat wires.
bool isWrapped(HABMInterface const& iface) {
  if (!HABMInterface::isAxiInterfaceType(iface.getInterfaceType()) || !iface.getAbstractionDefinition()) {
    return false;
  }
  std::string const name = vlnvNamePart(iface);
  return name != "clock" && name != "reset";
}

}  // namespace

std::string const& HABMSVlogWriter::INDENT() {
  static std::string const text = "  ";
  return text;
}

std::string const& HABMSVlogWriter::OV_INTERFACE_INFO() {
  return HABMAttribute::OV_INTERFACE_INFO();
}

std::string const& HABMSVlogWriter::OV_INTERFACE_PARAMETER() {
  return HABMAttribute::OV_INTERFACE_PARAMETER();
}

bool HABMSVlogWriter::writeSVEO(std::string const& path, HABMBlock const& block) {
  bool const result = habm_detail::writeFileAllOrNothing(
      [&] { return std::make_unique<habm_detail::OutStream>(path, std::ios_base::binary); },
      [&](std::ostream& out) {
        HABMSVlogWriter().generateBDWrapperSVEO(block, out);
        return true;
      });
  if (!result) {
    sendMsg::eval(1, __FILE__, __LINE__, "blockmodel", 0x20000000U, "@56-598@%s", path.c_str());
  }
  return result;
}

bool HABMSVlogWriter::marshal(HABMBlock const& block, std::ostream& out) const {
  generateBDWrapperSVEO(block, out);
  return true;
}

void HABMSVlogWriter::generateBDWrapperSVEO(HABMBlock const& block, std::ostream& out) const {
  std::vector<std::string> instanceConnections;
  std::vector<std::string> wrapperPlainPorts;
  std::vector<std::string> wrapperInterfacePorts;
  std::vector<std::string> tieOffs;
  std::vector<std::string> interfaceHints;
  std::vector<std::string> templateConnections;
  // Definitions whose driven ports are already listed. Interfaces that share one definition object are
  // tied off after the first of them only; hosts rely on that.
  std::set<HABMAbstractionDefinition const*> metDefinitions;
  // The helpers are non-const members with no state; a scratch writer serves them.
  HABMSVlogWriter helper;

  std::string const& moduleName = block.getModuleName();
  std::string instance = moduleName + " " + moduleName + "_i (\n";

  for (HABMPort const* port : block.getPorts()) {
    std::string const& portName = port->getPortName();
    std::string connection = INDENT() + "." + portName;
    bool handled = false;
    for (HABMInterface* iface : port->getParentInterfaces()) {
      if (!isWrapped(*iface)) {
        continue;
      }
      std::string const& ifaceName = iface->getInterfaceName();
      std::shared_ptr<HABMAbstractionDefinition> const definition = iface->getAbstractionDefinition();
      if (metDefinitions.count(definition.get()) == 0) {
        for (auto const& logical : definition->getAbstractionDefinitionPorts()) {
          std::string const& direction =
              iface->isSourceInterface() ? logical->getMasterDirection() : logical->getSlaveDirection();
          if (direction == "out" || direction == "inout") {
            addUnlessPresent(tieOffs, ifaceName + "." + logical->getLogicalName());
            metDefinitions.insert(definition.get());
          }
        }
      }
      std::string const signal = ifaceName + "." + helper.getCorrespondingPortLogicalName(portName, iface);
      connection += "(" + signal + ")";
      tieOffs.erase(std::remove(tieOffs.begin(), tieOffs.end(), signal), tieOffs.end());

      std::string const role = iface->isSourceInterface() ? "master" : "slave";
      addUnlessPresent(templateConnections, INDENT() + "." + ifaceName + "(" + ifaceName + "." + role + ")");
      addUnlessPresent(interfaceHints, helper.generateIntfInstHint(iface));
      addUnlessPresent(wrapperInterfacePorts,
                       INDENT() + interfaceTypeName(*iface) + "." + role + " " + ifaceName);
      handled = true;
    }
    if (!handled) {
      connection += "(" + portName + ")";
      std::uint64_t const width = port->getPortWidth();
      std::string const range = width < 2 ? std::string() : "[" + std::to_string(width - 1) + ":0]";
      wrapperPlainPorts.push_back(INDENT() + directionWord(port->getPortDirection()) + INDENT() + range +
                                  portName);
      templateConnections.push_back(INDENT() + "." + portName + "(" + portName + ")");
    }
    instanceConnections.push_back(connection);
  }
  using boost::algorithm::join;
  instance += join(instanceConnections, ",\n") + "\n);";

  std::string const wrapperName = moduleName + "_sv_wrapper";
  std::string text = HABMUtils::get_copyright_header("//") + HABMUtils::get_disclaimer("//");
  text += "\n// -------------- Begin Cut here for INTERFACE Include ------- // INCLUDE_TAG\n";
  text += "`include \"interfaces.svh\" \n";
  text += "// -- INCLUDE_TAG_END ------ End INTERFACE Include ------------\n\n";
  text += "// -------------- Begin Cut here for SV MODULE Definition ------- // MODULE_TAG\n";
  text += "module " + wrapperName + " (\n";
  text += join(wrapperPlainPorts, ",\n");
  if (!wrapperInterfacePorts.empty()) {
    text += (wrapperPlainPorts.empty() ? "" : ",\n") + join(wrapperInterfacePorts, ",\n");
  }
  text += "\n);\n\n";
  for (std::string const& tieOff : tieOffs) {
    text += "assign " + tieOff + " = 0;\n";
  }
  if (!tieOffs.empty()) {
    text += "\n";
  }
  text += instance + "\n\n";
  text += "endmodule";
  text += "\n//-- MODULE_TAG_END ---------- End SV MODULE Definition --------------- \n\n";
  text += "//-------------- Begin Cut here for INTERFACE Template ------- // INTF_TAG \n";
  text += join(interfaceHints, "\n");
  text += "\n//-- INTF_TAG_END -------------- End INTERFACE Template ------------------ \n\n";
  text += "//-------------- Begin Cut here for INSTANTIATION Template ------- // INST_TAG \n";
  text += wrapperName + " inst (\n";
  text += join(templateConnections, ",\n");
  text += "\n);\n";
  text += "//-- INST_TAG_END ------ End INSTANTIATION Template ---------";
  out.write(text.data(), static_cast<std::streamsize>(text.size()));
}

std::string HABMSVlogWriter::generateIntfInstHint(HABMInterface* interface) {
  if (interface == nullptr) {
    return std::string();
  }
  std::vector<std::string> items;
  // One item per parameter: the ID ports, for one, all set ID_WIDTH and the first of them decides.
  std::set<std::string> parameters;
  if (std::shared_ptr<HABMAbstractionDefinition> const definition = interface->getAbstractionDefinition()) {
    for (auto const& logical : definition->getAbstractionDefinitionPorts()) {
      if (logical->getSlaveWidth() != logical->getMasterWidth() || logical->getSlaveWidth() >= 0) {
        continue;
      }
      HABMPort const* port = interface->getPort(logical->getLogicalName());
      if (port == nullptr) {
        continue;
      }
      std::string const parameter = findCorrespondingInterfaceParam(logical->getLogicalName(), interface);
      if (parameter.empty() || !parameters.insert(parameter).second) {
        continue;
      }
      std::uint64_t const width = port->getPortWidth();
      std::uint64_t const value = parameter == "TDATA_NUM_BYTES" ? width / 8 : width;
      items.push_back("." + parameter + "(" + std::to_string(value) + ")");
    }
  }
  return "   " + interfaceTypeName(*interface) + " #(" + boost::algorithm::join(items, ",") + ") " +
         interface->getInterfaceName() + "();";
}

std::string HABMSVlogWriter::findCorrespondingInterfaceParam(std::string logicalName,
                                                             HABMInterface* interface) {
  if (interface == nullptr) {
    return std::string();
  }
  HABMInterface::InterfaceType const type = interface->getInterfaceType();
  if (HABMInterface::isAxiSInterfaceType(type)) {
    return lookUp(axiSParams(), logicalName);
  }
  if (HABMInterface::isAxiMMInterfaceType(type)) {
    return lookUp(axiMMParams(), logicalName);
  }
  return std::string();
}

std::string HABMSVlogWriter::getCorrespondingPortLogicalName(std::string physicalName,
                                                             HABMInterface* interface) {
  if (interface == nullptr) {
    return std::string();
  }
  for (HABMPortMap const* map : interface->getPortMaps()) {
    if (map->getPhyName() == physicalName) {
      return map->getLogName();
    }
  }
  return std::string();
}

// HABMVlogWriter.cpp: the Verilog stub of a block: attributes, parameters, ports and their interface
// attributes.
#include "blockmodel/HABMVlogWriter.h"

#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMGeneric.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMPortMap.h"
#include "blockmodel/HABMUtils.h"
#include "blockmodel/detail/HABMFileWrite.h"
#include "msg/ComMsgMgr.h"

#include <boost/algorithm/string/join.hpp>
#include <boost/format.hpp>

#include <memory>
#include <ostream>
#include <set>
#include <vector>

namespace {

std::string directionWord(HABMPort::PortDirection const direction) {
  switch (direction) {
    case HABMPort::DIR_IN:
      return "input";
    case HABMPort::DIR_OUT:
      return "output";
    case HABMPort::DIR_INOUT:
    case HABMPort::DIR_PHANTOM:
    case HABMPort::DIR_UNKNOWN:
      break;
  }
  return "inout";
}

std::string attributeText(std::string const& name, std::string const& value) {
  return (boost::format("(* %s = \"%s\" *)") % name % value).str();
}

// Monitors are written as "monitor" with the side they watch; every other mode as its own text.
HABMAttribute::InterfaceMode modeRecord(HABMInterface const& iface) {
  HABMAttribute::InterfaceMode record;
  record.interfaceName = iface.getInterfaceName();
  if (iface.isMonitorInterface()) {
    record.mode = "monitor";
    switch (iface.getInterfaceMode()) {
      case HABMInterface::MODE_MONITOR_MASTER:
        record.monitoredMode = "master";
        break;
      case HABMInterface::MODE_MONITOR_SLAVE:
        record.monitoredMode = "slave";
        break;
      case HABMInterface::MODE_MONITOR_SYSTEM:
        record.monitoredMode = "system";
        break;
      case HABMInterface::MODE_MASTER:
      case HABMInterface::MODE_SLAVE:
      case HABMInterface::MODE_SYSTEM:
      case HABMInterface::MODE_UNKNOWN:
        break;
    }
  } else {
    record.mode = HABMInterface::decodeInterfaceMode(iface.getInterfaceMode());
  }
  return record;
}

// The attribute lines of one port. An interface's mode and parameters stand on its first port only, so
// `seen` collects the interfaces already described.
std::string portAttributeLines(HABMPort const& port, std::set<std::string>& seen) {
  std::string const& indent = HABMVlogWriter::INDENT();
  std::vector<HABMInterface*> const interfaces = port.getParentInterfaces();
  if (interfaces.empty()) {
    return indent + attributeText(HABMAttribute::OV_INTERFACE_IGNORE(), "true") + "\n";
  }
  // A port shared by several interfaces is described for the first one.
  HABMInterface const& iface = *interfaces.front();
  std::string lines;
  std::vector<HABMPortMap*> const maps = iface.getPortMapsByPhyName(port.getPortName());
  if (!maps.empty()) {
    lines += indent +
             attributeText(HABMAttribute::OV_INTERFACE_INFO(),
                           (boost::format("%s %s %s") % iface.getInterfaceVlnv() % iface.getInterfaceName() %
                            maps.front()->getLogName())
                               .str()) +
             "\n";
  }
  if (!seen.insert(iface.getInterfaceName()).second) {
    return lines;
  }
  lines += indent +
           attributeText(HABMAttribute::OV_INTERFACE_MODE(),
                         HABMAttribute::decodeInterfaceMode(modeRecord(iface))) +
           "\n";
  std::vector<HABMParameter*> const parameters = iface.getParameters();
  if (!parameters.empty()) {
    std::vector<std::string> items = {"ORV_INTERFACENAME " + iface.getInterfaceName()};
    for (HABMParameter const* parameter : parameters) {
      items.push_back(parameter->getName() + " " + parameter->getValue());
    }
    lines += indent +
             attributeText(HABMAttribute::OV_INTERFACE_PARAMETER(), boost::algorithm::join(items, ", ")) +
             "\n";
  }
  return lines;
}

std::string declaration(HABMPort const& port) {
  std::string const word = directionWord(port.getPortDirection());
  if (port.isWirePort()) {
    return (boost::format("%s%s %s;") % HABMVlogWriter::INDENT() % word % port.getPortName()).str();
  }
  return (boost::format("%s%s [%d:%d]%s;") % HABMVlogWriter::INDENT() % word % port.getPortLeft() %
          port.getPortRight() % port.getPortName())
      .str();
}

}  // namespace

std::string const& HABMVlogWriter::INDENT() {
  static std::string const text = "  ";
  return text;
}

bool HABMVlogWriter::writeStub(HUTFile const& file, HABMBlock const& block, bool const& removeFirst) {
  std::string const path = habm_detail::fullPathOf(file);
  bool const result = habm_detail::writeFileAllOrNothing(
      [&] {
        habm_detail::removeIfAsked(file, removeFirst);
        return std::make_unique<habm_detail::OutStream>(path, std::ios_base::binary);
      },
      [&](std::ostream& out) { return HABMVlogWriter(file).marshal(block, out); });
  if (!result) {
    sendMsg::eval(1, __FILE__, __LINE__, "blockmodel", 0x20000000U, "@90-7@%s", path.c_str());
  }
  return result;
}

bool HABMVlogWriter::marshal(HABMBlock const& block, std::ostream& out) const {
  std::vector<std::string> attributes;
  for (HABMAttribute const* attribute : block.getAttributes()) {
    attributes.push_back(attributeText(attribute->getName(), attribute->getValue()));
  }
  std::vector<std::string> parameters;
  for (HABMGeneric const* generic : block.getGenerics()) {
    parameters.push_back(INDENT() + "parameter " + generic->getName() + " = " + generic->getValue());
  }
  std::vector<std::string> ports;
  std::vector<std::string> declarations;
  std::set<std::string> seen;
  for (HABMPort const* port : block.getPorts()) {
    declarations.push_back(portAttributeLines(*port, seen) + declaration(*port));
    ports.push_back(INDENT() + port->getPortName());
  }

  using boost::algorithm::join;
  out << HABMUtils::get_copyright_header("//") << '\n';
  out << "`timescale 1 ps / 1 ps" << '\n' << '\n';
  out << join(attributes, "\n") << '\n';
  if (parameters.empty()) {
    out << "module " << block.getModuleName() << " (" << '\n';
  } else {
    out << "module " << block.getModuleName() << " #(" << '\n';
    out << join(parameters, ",\n") << '\n';
    out << ") (" << '\n';
  }
  out << join(ports, ",\n") << '\n';
  out << ");" << '\n' << '\n';
  out << join(declarations, "\n") << '\n' << '\n';
  out << INDENT() << "// stub module has no contents" << '\n' << '\n';
  out << "endmodule" << '\n';
  return true;
}

// HABMBlockInference.cpp: a block's bus interfaces and interface connections derived from the
// OV_INTERFACE_... attributes of its ports and from its nets, and the NoC interfaces of an OPM NoC module.
#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMGeneric.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMInterfaceConnection.h"
#include "blockmodel/HABMNocInterface.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMPortConnection.h"
#include "blockmodel/HABMPortMap.h"
#include "blockmodel/detail/HABMTrace.h"

#include <boost/algorithm/string/predicate.hpp>

#include <map>
#include <memory>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

using habm_detail::TRACE_BLOCK;

namespace {

using Mode = HABMInterface::InterfaceMode;

// What the attributes of all ports say about one interface, gathered before anything is created.
struct Gathered {
  std::string name;
  std::string vlnv;
  Mode mode = HABMInterface::MODE_UNKNOWN;
  std::string reference;
  std::map<std::string, std::string> parameters;
  std::map<std::string, std::string> portMaps;  // logical name -> physical port name
};

// Ordered by name, so that the interfaces come out in the same order on every run.
using Table = std::map<std::string, Gathered>;

Gathered& entryOf(Table& table, std::string const& name) {
  Gathered& entry = table[name];
  entry.name = name;
  return entry;
}

bool isMonitorWord(std::string const& mode) {
  return boost::algorithm::iequals(mode, "monitor");
}

// A monitor watches a master unless the watched side says otherwise.
Mode monitorMode(std::string const& monitored) {
  switch (HABMInterface::encodeInterfaceMode(monitored)) {
    case HABMInterface::MODE_SLAVE:
      return HABMInterface::MODE_MONITOR_SLAVE;
    case HABMInterface::MODE_SYSTEM:
      return HABMInterface::MODE_MONITOR_SYSTEM;
    case HABMInterface::MODE_MASTER:
    case HABMInterface::MODE_MONITOR_MASTER:
    case HABMInterface::MODE_MONITOR_SLAVE:
    case HABMInterface::MODE_MONITOR_SYSTEM:
    case HABMInterface::MODE_UNKNOWN:
      break;
  }
  return HABMInterface::MODE_MONITOR_MASTER;
}

// Reads one port's interface attributes into the table; `current` is the interface that the port's last
// info record named, which unnamed modes and parameters attach to.
void gatherAttribute(HABMPort const& port, std::string const& name, std::string const& value, Table& table,
                     std::string& current) {
  if (boost::algorithm::iequals(name, HABMAttribute::OV_INTERFACE_INFO())) {
    for (auto const& info : HABMAttribute::encodeInterfaceInfos(value)) {
      if (info.vlnv.empty() || info.interfaceName.empty() || info.logicalName.empty()) {
        continue;
      }
      current = info.interfaceName;
      Gathered& entry = entryOf(table, current);
      entry.vlnv = info.vlnv;
      entry.portMaps[info.logicalName] = port.getPortName();
    }
  } else if (boost::algorithm::iequals(name, HABMAttribute::OV_INTERFACE_MODE())) {
    auto const mode = HABMAttribute::encodeInterfaceMode(value);
    bool const monitor = isMonitorWord(mode.mode);
    if (mode.mode.empty() || (monitor && mode.monitoredMode.empty())) {
      return;
    }
    std::string const& target = mode.interfaceName.empty() ? current : mode.interfaceName;
    if (target.empty()) {
      return;
    }
    entryOf(table, target).mode =
        monitor ? monitorMode(mode.monitoredMode) : HABMInterface::encodeInterfaceMode(mode.mode);
  } else if (boost::algorithm::iequals(name, HABMAttribute::OV_INTERFACE_ADDRESSING())) {
    auto const addressing = HABMAttribute::encodeInterfaceAddressing(value);
    // Whether the reference is a space or a map follows from the interface's final mode, not from here.
    if (!addressing.interfaceName.empty() && !addressing.mode.empty() && !addressing.reference.empty()) {
      entryOf(table, addressing.interfaceName).reference = addressing.reference;
    }
  } else if (boost::algorithm::iequals(name, HABMAttribute::OV_INTERFACE_PARAMETER())) {
    for (auto const& parameter : HABMAttribute::encodeInterfaceParameters(value)) {
      std::string const& target = parameter.interfaceName.empty() ? current : parameter.interfaceName;
      if (parameter.name.empty() || parameter.value.empty() || target.empty()) {
        continue;
      }
      entryOf(table, target).parameters[parameter.name] = parameter.value;
    }
  }
}

bool isInterfaceAttribute(std::string const& name) {
  return boost::algorithm::iequals(name, HABMAttribute::OV_INTERFACE_INFO()) ||
         boost::algorithm::iequals(name, HABMAttribute::OV_INTERFACE_MODE()) ||
         boost::algorithm::iequals(name, HABMAttribute::OV_INTERFACE_ADDRESSING()) ||
         boost::algorithm::iequals(name, HABMAttribute::OV_INTERFACE_PARAMETER());
}

// The interfaces of each port's block that map it, built once per block so that a wide block with many
// nets costs one pass over its port maps rather than one per net end.
class ParentInterfaces {
 public:
  std::vector<HABMInterface*> const& of(HABMPort const& port) {
    auto& byName = byBlock_[&port.getParent()];
    if (!byName) {
      byName = std::make_unique<ByName>();
      for (HABMInterface* iface : port.getParent().getInterfaces()) {
        for (HABMPortMap const* portMap : iface->getPortMaps()) {
          auto& list = (*byName)[portMap->getPhyName()];
          if (list.empty() || list.back() != iface) {
            list.push_back(iface);
          }
        }
      }
    }
    auto const it = byName->find(port.getPortName());
    return it == byName->end() ? none_ : it->second;
  }

 private:
  using ByName = std::unordered_map<std::string, std::vector<HABMInterface*>>;
  // Only looked up, never walked, so the order of the pointer keys reaches no output.
  std::unordered_map<HABMBlock const*, std::unique_ptr<ByName>> byBlock_;
  std::vector<HABMInterface*> const none_{};
};

}  // namespace

void HABMBlock::inferAbstractions() {
  if (getAttribute(HABMAttribute::OV_MODULE_SPEC()) != nullptr) {
    return;
  }
  inferInterfaces();
  inferInterfaceConnections();
  // NoC interfaces are derived from the bus interfaces, so they come last.
  inferNocInterfaces();
}

// OPM NoC modules.

HABMNocInterface::NocMode HABMBlock::getOpmNocMode() const {
  HABMAttribute const* opm = getAttribute(HABMAttribute::OPM_NOC());
  std::string const value = opm == nullptr ? std::string() : opm->getValue();
  if (boost::algorithm::istarts_with(value, "NMU_")) {
    return HABMNocInterface::MODE_NMU;
  }
  return boost::algorithm::istarts_with(value, "NSU_") ? HABMNocInterface::MODE_NSU
                                                       : HABMNocInterface::MODE_UNKNOWN;
}

HABMNocInterface::NocProtocol HABMBlock::getOpmNocProtocol() const {
  HABMAttribute const* opm = getAttribute(HABMAttribute::OPM_NOC());
  std::string const value = opm == nullptr ? std::string() : opm->getValue();
  if (boost::algorithm::iends_with(value, "_MM")) {
    return HABMNocInterface::PROTOCOL_AXIMM;
  }
  return boost::algorithm::iends_with(value, "_STRM") ? HABMNocInterface::PROTOCOL_AXIS
                                                      : HABMNocInterface::PROTOCOL_UNKNOWN;
}

HABMNocInterface::NocCategory HABMBlock::getOpmNocCategory() const {
  if (!isOpmNocModule()) {
    return HABMNocInterface::CATEGORY_UNKNOWN;
  }
  HABMGeneric const* fabric = getGeneric(HABMNocInterface::NOC_FABRIC());
  std::string const value = fabric == nullptr ? std::string() : fabric->getValue();
  bool const hbm = boost::algorithm::iequals(value, "EDG") || boost::algorithm::iequals(value, "FAB_HBM");
  return hbm ? HABMNocInterface::CATEGORY_FAB_HBM : HABMNocInterface::CATEGORY_PL;
}

void HABMBlock::inferNocInterfaces() {
  clearNocInterfaces();
  HABMNocInterface::NocMode const mode = getOpmNocMode();
  HABMNocInterface::NocProtocol const protocol = getOpmNocProtocol();
  HABMNocInterface::NocCategory const category = getOpmNocCategory();
  if (mode == HABMNocInterface::MODE_UNKNOWN || protocol == HABMNocInterface::PROTOCOL_UNKNOWN ||
      category == HABMNocInterface::CATEGORY_UNKNOWN) {
    return;
  }
  HABM_TRACE(TRACE_BLOCK, "Infer NOC interfaces on block '%s'...\n", getInstancePath().c_str());
  // The module's generics that a NoC interface carries, by name.
  static std::set<std::string> const generics = {
      HABMNocInterface::ADDR_WIDTH(),         HABMNocInterface::DATA_WIDTH(),
      HABMNocInterface::DST_ID_WIDTH(),       HABMNocInterface::NOC_FABRIC(),
      HABMNocInterface::READ_TRAFFIC_CLASS(), HABMNocInterface::SIDEBAND_PINS(),
      HABMNocInterface::WRITE_TRAFFIC_CLASS()};
  for (HABMInterface const* bus : getInterfaces()) {
    // The bus decides whether there is an endpoint; the module's attribute decides what it carries.
    if (!HABMInterface::isAxiInterfaceType(bus->getInterfaceType())) {
      continue;
    }
    std::string error;
    HABMNocInterface* noc =
        createNocInterface(bus->getInterfaceName() + "_" + HABMNocInterface::decodeNocMode(mode), error);
    if (noc == nullptr) {
      continue;
    }
    noc->setNocMode(mode);
    noc->setNocProtocol(protocol);
    noc->setNocCategory(category);
    if (noc->isTarget() && noc->isAddressable()) {
      std::set<HABMAddrAperture> apertures;
      if (category == HABMNocInterface::CATEGORY_PL) {
        apertures.insert(HABMAddrAperture(std::string("0x201_0000_0000[1M]")));
      }
      noc->setApertures(apertures);
    }
    std::map<std::string, std::string> parameters;
    if (noc->isSource()) {
      parameters[HABMNocInterface::READ_TRAFFIC_CLASS()] = "BEST_EFFORT";
      parameters[HABMNocInterface::WRITE_TRAFFIC_CLASS()] = "BEST_EFFORT";
    }
    for (std::string const& name : generics) {
      if (HABMGeneric const* generic = getGeneric(name)) {
        parameters[generic->getName()] = generic->getValue();
      }
    }
    for (auto const& entry : parameters) {
      noc->setParameter(entry.first, entry.second, true);
    }
  }
}

void HABMBlock::inferInterfaces() {
  HABM_TRACE(TRACE_BLOCK, "Infer interfaces on block '%s'...\n", getInstancePath().c_str());
  clearInterfaces();
  Table table;
  for (HABMPort* port : getPorts()) {
    if (HABMAttribute const* ignore = port->getAttribute(HABMAttribute::OV_INTERFACE_IGNORE())) {
      bool const skip = boost::algorithm::iequals(ignore->getValue(), "true");
      port->removeAttribute(HABMAttribute::OV_INTERFACE_IGNORE());
      if (skip) {
        continue;
      }
    }
    std::string current;
    for (HABMAttribute const* attribute : port->getAttributes()) {
      if (!isInterfaceAttribute(attribute->getName())) {
        continue;
      }
      // Copies: removing the attribute destroys it.
      std::string const name = attribute->getName();
      std::string const value = attribute->getValue();
      gatherAttribute(*port, name, value, table, current);
      port->removeAttribute(name);
    }
  }
  for (auto const& [name, entry] : table) {
    HABMInterface* iface = createInterface(name, true);
    if (iface == nullptr) {
      continue;
    }
    iface->setInterfaceVlnv(entry.vlnv);
    for (auto const& [parameter, value] : entry.parameters) {
      iface->createParameter(parameter, value);
    }
    for (auto const& [logical, physical] : entry.portMaps) {
      iface->createPortMap(logical, physical);
    }
    iface->setInterfaceMode(entry.mode == HABMInterface::MODE_UNKNOWN ? iface->inferInterfaceMode()
                                                                      : entry.mode);
    if (!entry.reference.empty()) {
      if (iface->isSourceInterface()) {
        iface->setAddrSpaceRef(entry.reference);
      } else {
        iface->setMemoryMapRef(entry.reference);
      }
    }
  }
}

void HABMBlock::inferInterfaceConnections() {
  HABM_TRACE(TRACE_BLOCK, "Infer interface connections on block '%s'...\n", getInstancePath().c_str());
  clearInterfaceConnections();
  ParentInterfaces parents;
  // By the two interface paths: one bus of many wires gives one pair, and the order is the same each run.
  std::set<std::pair<std::string, std::string>> pairs;
  for (HABMPortConnection const* net : getPortConnections()) {
    HABMPort const* source = net->getSourcePort();
    if (source == nullptr) {
      continue;
    }
    std::vector<HABMInterface*> const& sourceInterfaces = parents.of(*source);
    if (sourceInterfaces.empty()) {
      continue;
    }
    for (HABMPort const* target : net->getTargetPorts()) {
      for (HABMInterface const* to : parents.of(*target)) {
        for (HABMInterface const* from : sourceInterfaces) {
          pairs.emplace(from->getInterfacePath(), to->getInterfacePath());
        }
      }
    }
  }
  for (auto const& [from, to] : pairs) {
    createInterfaceConnection(from, to, true);
  }
}

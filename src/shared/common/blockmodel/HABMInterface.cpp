// HABMInterface.cpp: the bus vocabularies, an interface's references, apertures, parameters, port maps and
// the walk to its connections.
#include "blockmodel/HABMInterface.h"

#include "blockmodel/HABMAbstractionDefinition.h"
#include "blockmodel/HABMAddrSpace.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMInterfaceConnection.h"
#include "blockmodel/HABMMemoryMap.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMPath.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMPortMap.h"
#include "blockmodel/HABMUtils.h"
#include "blockmodel/detail/HABMEnumTable.h"
#include "blockmodel/detail/HABMKinds.h"
#include "blockmodel/detail/HABMTrace.h"

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/algorithm/string/predicate.hpp>

#include <initializer_list>
#include <utility>

using habm_detail::TRACE_CHILD;

std::string const& HABMChildName<HABMInterface>::of(HABMInterface const& iface) {
  return iface.getInterfaceName();
}

std::string const& HABMChildName<HABMPortMap>::of(HABMPortMap const& portMap) {
  return portMap.getLogName();
}

namespace {

using PortMapKind = habm_detail::Kind<habm_detail::ChildKind::PORT_MAP>;

// The library and name parts of a bus definition, which alone decide its type, the definition written
// for a type, and the logical name of its main signal.
struct BusInfo {
  char const* library;
  char const* busName;
  char const* vlnv;
  char const* primaryPort;
};

constexpr habm_detail::EnumTable<HABMInterface::InterfaceType, HABMInterface::TYPE_UNKNOWN, BusInfo> kTypes{
    habm_detail::Fold::LOWER,
    {{{HABMInterface::TYPE_AXIMM, "aximm", {}, {"interface", "aximm", "orvane:interface:aximm:1.0", "WDATA"}},
      {HABMInterface::TYPE_AXIS, "axis", {}, {"interface", "axis", "orvane:interface:axis:1.0", "TDATA"}},
      {HABMInterface::TYPE_INIMM,
       "inimm",
       {},
       {"interface", "inimm", "orvane:interface:inimm:1.0", "INTERNOC"}},
      {HABMInterface::TYPE_INIS, "inis", {}, {"interface", "inis", "orvane:interface:inis:1.0", "INTERNOC"}},
      {HABMInterface::TYPE_NPP, "npp", {}, {"interface", "npp", "orvane:interface:npp:1.0", "FLIT"}},
      {HABMInterface::TYPE_CLOCK, "clock", {"clk"}, {"signal", "clock", "orvane:signal:clock:1.0", "CLK"}},
      {HABMInterface::TYPE_RESET, "reset", {"rst"}, {"signal", "reset", "orvane:signal:reset:1.0", "RST"}},
      {HABMInterface::TYPE_INTERRUPT,
       "interrupt",
       {"intr"},
       {"signal", "interrupt", "orvane:signal:interrupt:1.0", "INTERRUPT"}}}}};
static_assert(kTypes.complete(), "one row per interface type");

// A mirrored form is the opposite side, except that a mirrored system stays a system.
constexpr habm_detail::EnumTable<HABMInterface::InterfaceMode, HABMInterface::MODE_UNKNOWN> kModes{
    habm_detail::Fold::LOWER,
    {{{HABMInterface::MODE_MASTER, "master", {"mirroredslave", "mastertype", "mirroredslavetype"}},
      {HABMInterface::MODE_SLAVE, "slave", {"mirroredmaster", "slavetype", "mirroredmastertype"}},
      {HABMInterface::MODE_SYSTEM, "system", {"mirroredsystem", "systemtype", "mirroredsystemtype"}},
      {HABMInterface::MODE_MONITOR_MASTER, "monitor_master", {"monitor"}},
      {HABMInterface::MODE_MONITOR_SLAVE, "monitor_slave"},
      {HABMInterface::MODE_MONITOR_SYSTEM, "monitor_system"}}}};
static_assert(kModes.complete(), "one row per interface mode");

char const* primaryPortOf(HABMInterface::InterfaceType type) {
  return kTypes.find(type)->extra.primaryPort;
}

}  // namespace

HABMInterface::HABMInterface(HABMBlock* parent, std::string name)
    : parent_(parent),
      name_(std::move(name)),
      baseAddress_(HABMAddrValue::CONST_0()),
      abstractionDefinition_(std::make_shared<HABMAbstractionDefinition>()) {}

HABMInterface::~HABMInterface() = default;

// Vocabularies.

HABMInterface::InterfaceType HABMInterface::encodeInterfaceVlnv(std::string vlnv) {
  std::string vendor;
  std::string library;
  std::string name;
  std::string version;
  if (!HABMUtils::splitVLNV(vlnv, vendor, library, name, version)) {
    return TYPE_UNKNOWN;
  }
  boost::algorithm::to_lower(library);
  boost::algorithm::to_lower(name);
  // The abstraction's name ("aximm_rtl") stands for its bus.
  if (boost::algorithm::ends_with(name, "_rtl")) {
    name.resize(name.size() - 4);
  }
  for (auto const& row : kTypes.rows) {
    if (library == row.extra.library && name == row.extra.busName) {
      return row.value;
    }
  }
  return TYPE_UNKNOWN;
}

std::string HABMInterface::decodeInterfaceVlnv(InterfaceType type) {
  auto const* row = kTypes.find(type);
  return row == nullptr ? std::string() : std::string(row->extra.vlnv);
}

HABMInterface::InterfaceType HABMInterface::encodeInterfaceType(std::string text) {
  return kTypes.encode(text);
}

std::string HABMInterface::decodeInterfaceType(InterfaceType type) {
  return kTypes.decode(type);
}

HABMInterface::InterfaceMode HABMInterface::encodeInterfaceMode(std::string text) {
  return kModes.encode(text);
}

std::string HABMInterface::decodeInterfaceMode(InterfaceMode mode) {
  return kModes.decode(mode);
}

// Each constant is built once, on first use, from its row.
std::string const& HABMInterface::AXIMM_PRIMARY_PORT() {
  static std::string const value = primaryPortOf(TYPE_AXIMM);
  return value;
}
std::string const& HABMInterface::AXIS_PRIMARY_PORT() {
  static std::string const value = primaryPortOf(TYPE_AXIS);
  return value;
}
std::string const& HABMInterface::INIMM_PRIMARY_PORT() {
  static std::string const value = primaryPortOf(TYPE_INIMM);
  return value;
}
std::string const& HABMInterface::INIS_PRIMARY_PORT() {
  static std::string const value = primaryPortOf(TYPE_INIS);
  return value;
}
std::string const& HABMInterface::NPP_PRIMARY_PORT() {
  static std::string const value = primaryPortOf(TYPE_NPP);
  return value;
}
std::string const& HABMInterface::CLOCK_PRIMARY_PORT() {
  static std::string const value = primaryPortOf(TYPE_CLOCK);
  return value;
}
std::string const& HABMInterface::RESET_PRIMARY_PORT() {
  static std::string const value = primaryPortOf(TYPE_RESET);
  return value;
}
std::string const& HABMInterface::INTERRUPT_PRIMARY_PORT() {
  static std::string const value = primaryPortOf(TYPE_INTERRUPT);
  return value;
}

std::string const& HABMInterface::getPrimaryPortName(InterfaceType const& type) {
  switch (type) {
    case TYPE_AXIMM:
      return AXIMM_PRIMARY_PORT();
    case TYPE_AXIS:
      return AXIS_PRIMARY_PORT();
    case TYPE_INIMM:
      return INIMM_PRIMARY_PORT();
    case TYPE_INIS:
      return INIS_PRIMARY_PORT();
    case TYPE_NPP:
      return NPP_PRIMARY_PORT();
    case TYPE_CLOCK:
      return CLOCK_PRIMARY_PORT();
    case TYPE_RESET:
      return RESET_PRIMARY_PORT();
    case TYPE_INTERRUPT:
      return INTERRUPT_PRIMARY_PORT();
    case TYPE_UNKNOWN:
      break;
  }
  static std::string const none;
  return none;
}

bool HABMInterface::isAxiInterfaceType(InterfaceType const& type) {
  return type == TYPE_AXIMM || type == TYPE_AXIS;
}
bool HABMInterface::isAxiMMInterfaceType(InterfaceType const& type) {
  return type == TYPE_AXIMM;
}
bool HABMInterface::isAxiSInterfaceType(InterfaceType const& type) {
  return type == TYPE_AXIS;
}
bool HABMInterface::isIniInterfaceType(InterfaceType const& type) {
  return type == TYPE_INIMM || type == TYPE_INIS;
}
bool HABMInterface::isSignalType(InterfaceType const& type) {
  return type == TYPE_CLOCK || type == TYPE_RESET || type == TYPE_INTERRUPT;
}

// Identity and predicates.

std::string HABMInterface::getInterfacePath() const {
  return HABMPath::terminate(parent_->getInstancePath()) + name_;
}

HABMInterface::InterfaceType HABMInterface::getInterfaceType() const {
  return encodeInterfaceVlnv(vlnv_);
}

bool HABMInterface::isAddressable() const {
  InterfaceType const type = getInterfaceType();
  return type == TYPE_AXIMM || type == TYPE_INIMM;
}

bool HABMInterface::isSourceInterface() const {
  return mode_ == MODE_MASTER;
}

bool HABMInterface::isTargetInterface() const {
  switch (mode_) {
    case MODE_SLAVE:
    case MODE_MONITOR_MASTER:
    case MODE_MONITOR_SLAVE:
    case MODE_MONITOR_SYSTEM:
      return true;
    case MODE_MASTER:
    case MODE_SYSTEM:
    case MODE_UNKNOWN:
      return false;
  }
  return false;
}

bool HABMInterface::isSystemInterface() const {
  return mode_ == MODE_SYSTEM;
}

bool HABMInterface::isMonitorInterface() const {
  return mode_ == MODE_MONITOR_MASTER || mode_ == MODE_MONITOR_SLAVE || mode_ == MODE_MONITOR_SYSTEM;
}

bool HABMInterface::isVisible() const {
  return parent_->isVisible();
}

// Address references and apertures.

void HABMInterface::setAddrSpaceRef(std::string const& name) {
  addrSpaceRef_ = name;
  if (!addrSpaceRef_.empty()) {
    memoryMapRef_.clear();
  }
}

void HABMInterface::setMemoryMapRef(std::string const& name) {
  memoryMapRef_ = name;
  if (!memoryMapRef_.empty()) {
    addrSpaceRef_.clear();
  }
}

HABMAddrSpace* HABMInterface::getAddrSpace() const {
  return parent_->findAddrSpace(addrSpaceRef_, true);
}

HABMMemoryMap* HABMInterface::getMemoryMap() const {
  return parent_->findMemoryMap(memoryMapRef_, true);
}

std::set<HABMAddrAperture> HABMInterface::getApertures(bool const& relative) const {
  if (!relative || baseAddress_ == HABMAddrValue::CONST_0()) {
    return apertures_;
  }
  std::set<HABMAddrAperture> out;
  for (HABMAddrAperture const& aperture : apertures_) {
    out.insert(HABMAddrAperture(aperture.getBaseAddress() + baseAddress_, aperture.getRange()));
  }
  return out;
}

void HABMInterface::setApertures(std::set<HABMAddrAperture> const& apertures, bool const& relative) {
  if (!relative || baseAddress_ == HABMAddrValue::CONST_0()) {
    apertures_ = apertures;
    return;
  }
  std::set<HABMAddrAperture> stored;
  for (HABMAddrAperture const& aperture : apertures) {
    // An absolute aperture below the base has no relative form.
    if (aperture.getBaseAddress() >= baseAddress_) {
      stored.insert(HABMAddrAperture(aperture.getBaseAddress() - baseAddress_, aperture.getRange()));
    }
  }
  apertures_ = std::move(stored);
}

// Port maps.

HABMPortMap* HABMInterface::createPortMap(std::string const& logicalName, std::string const& physicalName) {
  HABMPortMap* portMap = habm_detail::createChild<PortMapKind>(*this, logicalName, false, physicalName).child;
  if (portMap != nullptr) {
    HABM_TRACE(TRACE_CHILD, "Created port map '%s' on interface '%s'.%s\n", logicalName.c_str(),
               getInterfacePath().c_str(),
               physicalName.empty()
                   ? ""
                   : (" Mapped logical port '" + logicalName + "' to physical port '" + physicalName + "'.")
                         .c_str());
  }
  return portMap;
}
HABMPortMap* HABMInterface::getPortMap(std::string const& logicalName) const {
  return portMaps_.get(logicalName);
}
std::vector<HABMPortMap*> HABMInterface::getPortMaps() const {
  return portMaps_.list();
}
std::vector<HABMPortMap*> HABMInterface::getPortMapsByLogName(std::string const& name) const {
  std::vector<HABMPortMap*> out;
  if (HABMPortMap* portMap = portMaps_.get(name)) {
    out.push_back(portMap);
  }
  return out;
}
std::vector<HABMPortMap*> HABMInterface::getPortMapsByPhyName(std::string const& name) const {
  std::vector<HABMPortMap*> out;
  for (HABMPortMap* portMap : portMaps_) {
    if (portMap->getPhyName() == name) {
      out.push_back(portMap);
    }
  }
  return out;
}
bool HABMInterface::removePortMap(std::string const& logicalName) {
  return habm_detail::removeChild<PortMapKind>(*this, logicalName);
}
void HABMInterface::clearPortMaps() {
  portMaps_.clear();
}

// Ports through the port maps.

HABMPort* HABMInterface::getPort(std::string const& logicalName) const {
  HABMPortMap const* portMap = portMaps_.get(logicalName);
  return portMap == nullptr ? nullptr : parent_->getPort(portMap->getPhyName());
}

std::vector<HABMPort*> HABMInterface::getPorts() const {
  std::vector<HABMPort*> out;
  for (HABMPortMap* portMap : portMaps_) {
    if (HABMPort* port = parent_->getPort(portMap->getPhyName())) {
      out.push_back(port);
    }
  }
  return out;
}

HABMPort* HABMInterface::getPrimaryPort() const {
  return getPort(getPrimaryPortName(getInterfaceType()));
}

HABMInterface::InterfaceMode HABMInterface::inferInterfaceMode() const {
  if (mode_ != MODE_UNKNOWN) {
    return mode_;
  }
  if (HABMPort const* primary = getPrimaryPort()) {
    return primary->getPortDirection() == HABMPort::DIR_OUT ? MODE_MASTER : MODE_SLAVE;
  }
  std::size_t ins = 0;
  std::size_t outs = 0;
  for (HABMPort const* port : getPorts()) {
    switch (port->getPortDirection()) {
      case HABMPort::DIR_IN:
        ++ins;
        break;
      case HABMPort::DIR_OUT:
        ++outs;
        break;
      case HABMPort::DIR_INOUT:
      case HABMPort::DIR_PHANTOM:
      case HABMPort::DIR_UNKNOWN:
        break;
    }
  }
  // A tie, and an interface without ports, is a slave.
  return outs > ins ? MODE_MASTER : MODE_SLAVE;
}

// Connections.

void HABMInterface::getConnections(std::vector<HABMInterfaceConnection*>& sources,
                                   std::vector<HABMInterfaceConnection*>& targets) const {
  sources.clear();
  targets.clear();
  // A bus on an interface is drawn inside its block or in the block above; no other block can hold one.
  for (HABMBlock const* block : std::initializer_list<HABMBlock const*>{parent_, parent_->getParent()}) {
    if (block == nullptr) {
      continue;
    }
    for (HABMInterfaceConnection* connection : block->getInterfaceConnections()) {
      if (connection->getSourceInterface() == this) {
        targets.push_back(connection);
      }
      if (connection->getTargetInterface() == this) {
        sources.push_back(connection);
      }
    }
  }
}

HABMInterfaceConnection* HABMInterface::getSourceConnection() const {
  auto const sources = getSourceConnections();
  return sources.empty() ? nullptr : sources.front();
}

std::vector<HABMInterfaceConnection*> HABMInterface::getSourceConnections() const {
  std::vector<HABMInterfaceConnection*> sources;
  std::vector<HABMInterfaceConnection*> targets;
  getConnections(sources, targets);
  return sources;
}

HABMInterfaceConnection* HABMInterface::getTargetConnection() const {
  auto const targets = getTargetConnections();
  return targets.empty() ? nullptr : targets.front();
}

std::vector<HABMInterfaceConnection*> HABMInterface::getTargetConnections() const {
  std::vector<HABMInterfaceConnection*> sources;
  std::vector<HABMInterfaceConnection*> targets;
  getConnections(sources, targets);
  return targets;
}

HABMInterface* HABMInterface::getSourceInterface() const {
  HABMInterfaceConnection const* first = getSourceConnection();
  return first == nullptr ? nullptr : first->getSourceInterface();
}

std::vector<HABMInterface*> HABMInterface::getSourceInterfaces() const {
  std::vector<HABMInterface*> out;
  for (HABMInterfaceConnection const* connection : getSourceConnections()) {
    if (HABMInterface* far = connection->getSourceInterface()) {
      out.push_back(far);
    }
  }
  return out;
}

HABMInterface* HABMInterface::getTargetInterface() const {
  auto const targets = getTargetInterfaces();
  return targets.empty() ? nullptr : targets.front();
}

std::vector<HABMInterface*> HABMInterface::getTargetInterfaces() const {
  std::vector<HABMInterface*> out;
  for (HABMInterfaceConnection const* connection : getTargetConnections()) {
    if (HABMInterface* far = connection->getTargetInterface()) {
      out.push_back(far);
    }
  }
  return out;
}

bool HABMInterface::hasConnections() const {
  std::vector<HABMInterfaceConnection*> sources;
  std::vector<HABMInterfaceConnection*> targets;
  getConnections(sources, targets);
  return !sources.empty() || !targets.empty();
}

// Cloning.

void HABMInterface::clone(HABMInterface const& source) {
  if (&source == this) {
    return;
  }
  name_ = source.name_;
  vlnv_ = source.vlnv_;
  mode_ = source.mode_;
  enablement_ = source.enablement_;
  addrSpaceRef_ = source.addrSpaceRef_;
  memoryMapRef_ = source.memoryMapRef_;
  baseAddress_ = source.baseAddress_;
  apertures_ = source.apertures_;
  cloneParameters(source);
  clearPortMaps();
  for (HABMPortMap const* portMap : source.getPortMaps()) {
    if (HABMPortMap* copy = createPortMap(portMap->getLogName(), std::string())) {
      copy->clone(*portMap);
    }
  }
}

// HABMPort.cpp: port values and their texts, port attributes, and the walks to connections and interfaces.
#include "blockmodel/HABMPort.h"

#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMPath.h"
#include "blockmodel/HABMPortConnection.h"
#include "blockmodel/detail/HABMEnumTable.h"
#include "blockmodel/detail/HABMKinds.h"

#include <initializer_list>
#include <utility>

using PortAttributeKind = habm_detail::Kind<habm_detail::ChildKind::PORT_ATTRIBUTE>;

std::string const& HABMChildName<HABMPort>::of(HABMPort const& port) {
  return port.getPortName();
}

namespace {

constexpr habm_detail::EnumTable<HABMPort::PortDirection, HABMPort::DIR_UNKNOWN> kDirections{
    habm_detail::Fold::LOWER,
    {{{HABMPort::DIR_IN, "in", {"i"}},
      {HABMPort::DIR_OUT, "out", {"o"}},
      {HABMPort::DIR_INOUT, "inout", {"io"}},
      {HABMPort::DIR_PHANTOM, "phantom"}}}};
static_assert(kDirections.complete(), "one text per port direction");

constexpr habm_detail::EnumTable<HABMPort::PortType, HABMPort::TYPE_UNKNOWN> kTypes{
    habm_detail::Fold::LOWER, {{{HABMPort::TYPE_WIRE, "wire"}, {HABMPort::TYPE_VECTOR, "vector"}}}};
static_assert(kTypes.complete(), "one text per port type");

}  // namespace

HABMPort::HABMPort(HABMBlock* parent, std::string name) : parent_(parent), name_(std::move(name)) {}

HABMPort::~HABMPort() = default;

void HABMPort::setPortType(PortType const& portType) {
  portType_ = portType;
  if (portType_ == TYPE_WIRE) {
    portLeft_ = 0;
    portRight_ = 0;
  }
}

std::string HABMPort::getPortPath() const {
  return HABMPath::terminate(parent_->getInstancePath()) + name_;
}

std::string HABMPort::getPortRange() const {
  return std::to_string(portLeft_) + ":" + std::to_string(portRight_);
}

std::uint64_t HABMPort::getPortWidth() const {
  // 64 bits, so that the full 32-bit range (0:4294967295) has its true width.
  std::uint64_t const high = portLeft_ > portRight_ ? portLeft_ : portRight_;
  std::uint64_t const low = portLeft_ > portRight_ ? portRight_ : portLeft_;
  return high - low + 1;
}

HABMPort::PortDirection HABMPort::encodePortDirection(std::string text) {
  return kDirections.encode(text);
}

std::string HABMPort::decodePortDirection(PortDirection const& direction) {
  return kDirections.decode(direction);
}

HABMPort::PortType HABMPort::encodePortType(std::string text) {
  return kTypes.encode(text);
}

std::string HABMPort::decodePortType(PortType const& type) {
  return kTypes.decode(type);
}

// Attributes.

HABMAttribute* HABMPort::createAttribute(std::string const& name, std::string const& value) {
  return habm_detail::createChild<PortAttributeKind>(*this, name, false, value).child;
}
HABMAttribute* HABMPort::getAttribute(std::string const& name) const {
  return attributes_.get(name);
}
std::vector<HABMAttribute*> HABMPort::getAttributes() const {
  return attributes_.list();
}
bool HABMPort::hasAttributes() const {
  return !attributes_.empty();
}
bool HABMPort::removeAttribute(std::string const& name) {
  return habm_detail::removeChild<PortAttributeKind>(*this, name);
}
void HABMPort::clearAttributes() {
  attributes_.clear();
}

void HABMPort::clone(HABMPort const& source) {
  if (&source == this) {
    return;
  }
  name_ = source.name_;
  portType_ = source.portType_;
  portDirection_ = source.portDirection_;
  portLeft_ = source.portLeft_;
  portRight_ = source.portRight_;
  clearAttributes();
  for (HABMAttribute const* attribute : source.getAttributes()) {
    createAttribute(attribute->getName(), attribute->getValue());
  }
}

// Connections.

void HABMPort::getConnections(std::vector<HABMPortConnection*>& sources,
                              std::vector<HABMPortConnection*>& targets) const {
  sources.clear();
  targets.clear();
  // A net on a port is drawn inside its block or in the block above; no other block can hold one.
  for (HABMBlock const* block : std::initializer_list<HABMBlock const*>{parent_, parent_->getParent()}) {
    if (block == nullptr) {
      continue;
    }
    for (HABMPortConnection* connection : block->getPortConnections()) {
      if (connection->sourceIs(*this)) {
        targets.push_back(connection);
      }
      for (std::size_t n = connection->targetCount(*this); n > 0; --n) {
        sources.push_back(connection);
      }
    }
  }
}

HABMPortConnection* HABMPort::getSourceConnection() const {
  std::vector<HABMPortConnection*> sources;
  std::vector<HABMPortConnection*> targets;
  getConnections(sources, targets);
  return sources.empty() ? nullptr : sources.front();
}

HABMPortConnection* HABMPort::getTargetConnection() const {
  auto const targets = getTargetConnections();
  return targets.empty() ? nullptr : targets.front();
}

std::vector<HABMPortConnection*> HABMPort::getTargetConnections() const {
  std::vector<HABMPortConnection*> sources;
  std::vector<HABMPortConnection*> targets;
  getConnections(sources, targets);
  return targets;
}

bool HABMPort::hasConnections() const {
  std::vector<HABMPortConnection*> sources;
  std::vector<HABMPortConnection*> targets;
  getConnections(sources, targets);
  return !sources.empty() || !targets.empty();
}

// Interfaces.

std::vector<HABMInterface*> HABMPort::getParentInterfaces() const {
  std::vector<HABMInterface*> out;
  for (HABMInterface* iface : parent_->getInterfaces()) {
    if (!iface->getPortMapsByPhyName(name_).empty()) {
      out.push_back(iface);
    }
  }
  return out;
}

bool HABMPort::hasParentInterface() const {
  for (HABMInterface const* iface : parent_->getInterfaces()) {
    if (!iface->getPortMapsByPhyName(name_).empty()) {
      return true;
    }
  }
  return false;
}

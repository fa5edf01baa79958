// HABMBlockChildren.cpp: the named members of each kind of child of a block (create, get, list, remove,
// clear, find), each a forward to the one child discipline and the kind's record.
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMPath.h"
#include "blockmodel/HABMUtils.h"
#include "blockmodel/detail/HABMKinds.h"
#include "blockmodel/detail/HABMTrace.h"

#include <boost/algorithm/string/join.hpp>

#include <algorithm>

using habm_detail::ChildKind;
using habm_detail::createChild;
using habm_detail::Kind;
using habm_detail::removeChild;
using habm_detail::setChildValue;
using habm_detail::TRACE_BLOCK;
using habm_detail::TRACE_CHILD;

using AttributeKind = Kind<ChildKind::ATTRIBUTE>;
using GenericKind = Kind<ChildKind::GENERIC>;
using ParameterKind = Kind<ChildKind::PARAMETER>;
using PortKind = Kind<ChildKind::PORT>;
using InterfaceKind = Kind<ChildKind::INTERFACE>;
using AddrSpaceKind = Kind<ChildKind::ADDR_SPACE>;
using MemoryMapKind = Kind<ChildKind::MEMORY_MAP>;
using BridgeKind = Kind<ChildKind::BRIDGE>;
using SubBlockKind = Kind<ChildKind::SUB_BLOCK>;
using PortConnectionKind = Kind<ChildKind::PORT_CONNECTION>;
using InterfaceConnectionKind = Kind<ChildKind::INTERFACE_CONNECTION>;
using AddrAssignKind = Kind<ChildKind::ADDR_ASSIGN>;
using NocInterfaceKind = Kind<ChildKind::NOC_INTERFACE>;
using NocConnectionKind = Kind<ChildKind::NOC_CONNECTION>;

namespace {

// One child of a kind that lives directly on a block: the path's head names the holding block (at most
// one level unless `recursive`), its tail the child.
template <class K>
typename K::Child* findOne(HABMBlock const& block, std::string const& path, bool recursive) {
  std::string const rel = HABMPath::get_relative_path(block, path);
  std::string const head = HABMPath::get_path_head(rel);
  HABMBlock const* holder = head.empty() ? &block : block.findSubBlock(head, recursive);
  return holder == nullptr ? nullptr : K::list(*holder).get(HABMPath::get_path_tail(rel));
}

// Appends the children that `childrenOf(block)` gives, whose full path matches, for this block and, with
// `recursive`, every block below it, parents first.
template <class T, class ChildrenOf>
std::vector<T*> findMatching(HABMBlock const& block, std::string const& pattern, bool recursive,
                             ChildrenOf const& childrenOf) {
  std::vector<T*> out;
  auto const collect = [&](HABMBlock const& holder) {
    childrenOf(holder, [&](T* child, std::string const& path) {
      if (pattern.empty() || HABMUtils::wildcard_match(pattern, path)) {
        out.push_back(child);
      }
    });
  };
  if (recursive) {
    habm_detail::forEachBlock(block, collect);
  } else {
    collect(block);
  }
  return out;
}

// The children of a kind of one block, with their full paths: the block's path is built once.
template <class K>
std::vector<typename K::Child*> findAll(HABMBlock const& block, std::string const& pattern, bool recursive) {
  using T = typename K::Child;
  return findMatching<T>(block, pattern, recursive, [&](HABMBlock const& holder, auto const& take) {
    // Without a pattern no path is looked at, and a deep block's path is long.
    std::string const prefix =
        pattern.empty() ? std::string() : HABMPath::terminate(holder.getInstancePath());
    for (T* child : K::list(holder)) {
      take(child, pattern.empty() ? std::string() : prefix + HABMChildName<T>::of(*child));
    }
  });
}

// The NoC objects of a kind of one block, without those of the category ini when asked.
template <class K>
std::vector<typename K::Child*> nocObjects(HABMBlock const& block, bool excludeIni) {
  std::vector<typename K::Child*> out;
  for (auto* child : K::list(block)) {
    if (!excludeIni || !child->isIniCategory()) {
      out.push_back(child);
    }
  }
  return out;
}

template <class K>
std::vector<typename K::Child*> findNocObjects(HABMBlock const& block, std::string const& pattern,
                                               bool recursive, bool excludeIni) {
  using T = typename K::Child;
  return findMatching<T>(block, pattern, recursive, [&](HABMBlock const& holder, auto const& take) {
    std::string const prefix =
        pattern.empty() ? std::string() : HABMPath::terminate(holder.getInstancePath());
    for (T* child : K::list(holder)) {
      if (!excludeIni || !child->isIniCategory()) {
        take(child, pattern.empty() ? std::string() : prefix + child->getName());
      }
    }
  });
}

// Sub-blocks put each sub-block's finds before the direct sub-blocks.
void findSubBlocksInto(HABMBlock const& block, std::string const& pattern, bool recursive,
                       std::vector<HABMBlock*>& out) {
  std::vector<HABMBlock*> const direct = block.getSubBlocks();
  if (recursive) {
    for (HABMBlock const* sub : direct) {
      findSubBlocksInto(*sub, pattern, recursive, out);
    }
  }
  for (HABMBlock* sub : direct) {
    if (pattern.empty() || HABMUtils::wildcard_match(pattern, sub->getInstancePath())) {
      out.push_back(sub);
    }
  }
}

std::vector<HABMBlock*> subBlocksMatching(HABMBlock const& block, std::string const& pattern, bool recursive,
                                          std::string const& (HABMBlock::*field)() const) {
  std::vector<HABMBlock*> out;
  if (!pattern.empty()) {
    for (HABMBlock* sub : block.findSubBlocks(std::string(), recursive)) {
      if (HABMUtils::wildcard_match(pattern, (sub->*field)())) {
        out.push_back(sub);
      }
    }
  }
  return out;
}

// A port connection is a net from one port to others: a join of its ends for the traces.
std::string joinTargets(std::set<std::string> const& targets) {
  return boost::algorithm::join(targets, ", ");
}

}  // namespace

// Attributes, generics, parameters.

HABMAttribute* HABMBlock::createAttribute(std::string const& name, std::string const& value) {
  return createChild<AttributeKind>(*this, name, false, value).child;
}
HABMAttribute* HABMBlock::getAttribute(std::string const& name) const {
  return attributes_.get(name);
}
std::vector<HABMAttribute*> HABMBlock::getAttributes() const {
  return attributes_.list();
}
bool HABMBlock::hasAttributes() const {
  return !attributes_.empty();
}
bool HABMBlock::removeAttribute(std::string const& name) {
  return removeChild<AttributeKind>(*this, name);
}
void HABMBlock::clearAttributes() {
  attributes_.clear();
}
HABMAttribute* HABMBlock::setAttribute(std::string const& name, std::string const& value,
                                       bool const& create) {
  return setChildValue<AttributeKind>(*this, name, value, create);
}
HABMAttribute* HABMBlock::findAttribute(std::string const& path, bool const& recursive) const {
  return findOne<AttributeKind>(*this, path, recursive);
}

HABMGeneric* HABMBlock::createGeneric(std::string const& name, std::string const& value) {
  return createChild<GenericKind>(*this, name, false, value).child;
}
HABMGeneric* HABMBlock::getGeneric(std::string const& name) const {
  return generics_.get(name);
}
std::vector<HABMGeneric*> HABMBlock::getGenerics() const {
  return generics_.list();
}
bool HABMBlock::hasGenerics() const {
  return !generics_.empty();
}
bool HABMBlock::removeGeneric(std::string const& name) {
  return removeChild<GenericKind>(*this, name);
}
void HABMBlock::clearGenerics() {
  generics_.clear();
}
HABMGeneric* HABMBlock::setGeneric(std::string const& name, std::string const& value, bool const& create) {
  return setChildValue<GenericKind>(*this, name, value, create);
}
HABMGeneric* HABMBlock::findGeneric(std::string const& path, bool const& recursive) const {
  return findOne<GenericKind>(*this, path, recursive);
}

HABMParameter* HABMBlock::createParameter(std::string const& name, std::string const& value) {
  return createChild<ParameterKind>(*this, name, false, value).child;
}
HABMParameter* HABMBlock::getParameter(std::string const& name) const {
  return parameters_.get(name);
}
std::vector<HABMParameter*> HABMBlock::getParameters() const {
  return parameters_.list();
}
bool HABMBlock::hasParameters() const {
  return !parameters_.empty();
}
bool HABMBlock::removeParameter(std::string const& name) {
  return removeChild<ParameterKind>(*this, name);
}
void HABMBlock::clearParameters() {
  parameters_.clear();
}
HABMParameter* HABMBlock::setParameter(std::string const& name, std::string const& value,
                                       bool const& create) {
  return setChildValue<ParameterKind>(*this, name, value, create);
}
HABMParameter* HABMBlock::findParameter(std::string const& path, bool const& recursive) const {
  return findOne<ParameterKind>(*this, path, recursive);
}

// Ports.

HABMPort* HABMBlock::createPort(std::string const& name, bool const& force) {
  return createChild<PortKind>(*this, name, force).child;
}
HABMPort* HABMBlock::getPort(std::string const& name) const {
  return ports_.get(name);
}
std::vector<HABMPort*> HABMBlock::getPorts() const {
  return ports_.list();
}
bool HABMBlock::hasPorts() const {
  return !ports_.empty();
}
bool HABMBlock::removePort(std::string const& name) {
  return removeChild<PortKind>(*this, name);
}
void HABMBlock::clearPorts() {
  ports_.clear();
}
HABMPort* HABMBlock::findPort(std::string const& path, bool const& recursive) const {
  return findOne<PortKind>(*this, path, recursive);
}
std::vector<HABMPort*> HABMBlock::findPorts(std::string const& pattern, bool const& recursive) const {
  return findAll<PortKind>(*this, pattern, recursive);
}
std::vector<HABMPort*> HABMBlock::getInputPorts() const {
  std::vector<HABMPort*> out;
  std::copy_if(ports_.begin(), ports_.end(), std::back_inserter(out),
               [](HABMPort const* port) { return port->isTargetPort(); });
  return out;
}
std::vector<HABMPort*> HABMBlock::getOutputPorts() const {
  std::vector<HABMPort*> out;
  std::copy_if(ports_.begin(), ports_.end(), std::back_inserter(out),
               [](HABMPort const* port) { return port->isSourcePort(); });
  return out;
}

// Sub-blocks; creating, adopting and detaching them is the tree's business (HABMBlock.cpp).

HABMBlock* HABMBlock::getSubBlock(std::string const& instanceName) const {
  return subBlocks_.get(instanceName);
}
std::vector<HABMBlock*> HABMBlock::getSubBlocks() const {
  return subBlocks_.list();
}
bool HABMBlock::hasSubBlocks() const {
  return !subBlocks_.empty();
}
void HABMBlock::clearSubBlocks() {
  // The deepest blocks go first, each once it holds no sub-blocks: no destructor then goes down a subtree,
  // and a deep hierarchy cannot exhaust the stack.
  std::vector<std::unique_ptr<HABMBlock>> pending;
  auto const takeAll = [&pending](HABMChildList<HABMBlock>& subBlocks) {
    for (HABMBlock const* sub : subBlocks.list()) {
      // The first of the name goes, which is this one or a namesake still to come: all go in the end.
      pending.push_back(subBlocks.take(sub->instanceName_));
    }
  };
  takeAll(subBlocks_);
  while (!pending.empty()) {
    if (pending.back()->subBlocks_.empty()) {
      pending.pop_back();
    } else {
      takeAll(pending.back()->subBlocks_);
    }
  }
}

HABMBlock* HABMBlock::findSubBlock(std::string const& path, bool const& recursive) const {
  std::string rel = HABMPath::get_relative_path(*this, path);
  HABMBlock const* holder = this;
  while (!rel.empty()) {
    auto const cut = rel.find(HABMPath::SEPARATOR());
    if (cut == std::string::npos) {
      return holder->getSubBlock(rel);
    }
    if (!recursive) {
      return nullptr;
    }
    holder = holder->getSubBlock(rel.substr(0, cut));
    if (holder == nullptr) {
      return nullptr;
    }
    rel.erase(0, cut + 1);
  }
  return nullptr;
}
std::vector<HABMBlock*> HABMBlock::findSubBlocks(std::string const& pattern, bool const& recursive) const {
  std::vector<HABMBlock*> out;
  findSubBlocksInto(*this, pattern, recursive, out);
  return out;
}
std::vector<HABMBlock*> HABMBlock::findSubBlocksByModule(std::string const& pattern,
                                                         bool const& recursive) const {
  return subBlocksMatching(*this, pattern, recursive, &HABMBlock::getModuleName);
}
std::vector<HABMBlock*> HABMBlock::findSubBlocksByVlnv(std::string const& pattern,
                                                       bool const& recursive) const {
  return subBlocksMatching(*this, pattern, recursive, &HABMBlock::getModuleVlnv);
}
bool HABMBlock::hasSubBlock(HABMBlock const* block, bool const& recursive) const {
  if (block == nullptr) {
    return false;
  }
  auto const all = findSubBlocks(std::string(), recursive);
  return std::find(all.begin(), all.end(), block) != all.end();
}

// Port connections.

HABMPortConnection* HABMBlock::createPortConnection(std::string const& name, bool const& force) {
  return createChild<PortConnectionKind>(*this, name, force).child;
}
HABMPortConnection* HABMBlock::createPortConnection(std::string const& source,
                                                    std::set<std::string> const& targets, bool const& force) {
  HABMPortConnection* connection = nullptr;
  if (force || HABMPortConnection::canConnect(*this, source, targets)) {
    connection = createPortConnection(std::string(), force);
  }
  if (connection == nullptr) {
    HABM_TRACE(TRACE_BLOCK,
               "Failed to create port connection from source port '%s' to target ports '%s' on block '%s'.\n",
               source.c_str(), joinTargets(targets).c_str(), getInstancePath().c_str());
    return nullptr;
  }
  connection->setSourcePath(source);
  connection->setTargetPaths(targets);
  HABM_TRACE(TRACE_CHILD, "Connected port connection '%s' from source port '%s' to target ports '%s'.\n",
             connection->getPath().c_str(), connection->getSourcePath(true).c_str(),
             joinTargets(connection->getTargetPaths(true)).c_str());
  return connection;
}
HABMPortConnection* HABMBlock::getPortConnection(std::string const& name) const {
  return portConnections_.get(name);
}
std::vector<HABMPortConnection*> HABMBlock::getPortConnections() const {
  return portConnections_.list();
}
bool HABMBlock::hasPortConnections() const {
  return !portConnections_.empty();
}
bool HABMBlock::removePortConnection(std::string const& name) {
  return removeChild<PortConnectionKind>(*this, name);
}
void HABMBlock::clearPortConnections() {
  portConnections_.clear();
}
HABMPortConnection* HABMBlock::findPortConnection(std::string const& path, bool const& recursive) const {
  return findOne<PortConnectionKind>(*this, path, recursive);
}
std::vector<HABMPortConnection*> HABMBlock::findPortConnections(std::string const& pattern,
                                                                bool const& recursive) const {
  return findAll<PortConnectionKind>(*this, pattern, recursive);
}

// Address spaces, memory maps and address assignments.

HABMAddrSpace* HABMBlock::createAddrSpace(std::string const& name) {
  return createChild<AddrSpaceKind>(*this, name, false).child;
}
HABMAddrSpace* HABMBlock::getAddrSpace(std::string const& name) const {
  return addrSpaces_.get(name);
}
std::vector<HABMAddrSpace*> HABMBlock::getAddrSpaces() const {
  return addrSpaces_.list();
}
bool HABMBlock::hasAddrSpaces() const {
  return !addrSpaces_.empty();
}
bool HABMBlock::removeAddrSpace(std::string const& name) {
  return removeChild<AddrSpaceKind>(*this, name);
}
void HABMBlock::clearAddrSpaces() {
  addrSpaces_.clear();
}
HABMAddrSpace* HABMBlock::findAddrSpace(std::string const& path, bool const& recursive) const {
  return findOne<AddrSpaceKind>(*this, path, recursive);
}
std::vector<HABMAddrSpace*> HABMBlock::findAddrSpaces(std::string const& pattern,
                                                      bool const& recursive) const {
  return findAll<AddrSpaceKind>(*this, pattern, recursive);
}
// Nested kinds take the head of the path to their holder, which makes it relative.
HABMAddrSegment* HABMBlock::findAddrSegment(std::string const& path, bool const& recursive) const {
  HABMAddrSpace const* space = findAddrSpace(HABMPath::get_path_head(path), recursive);
  return space == nullptr ? nullptr : space->getAddrSegment(HABMPath::get_path_tail(path));
}

HABMMemoryMap* HABMBlock::createMemoryMap(std::string const& name) {
  return createChild<MemoryMapKind>(*this, name, false).child;
}
HABMMemoryMap* HABMBlock::getMemoryMap(std::string const& name) const {
  return memoryMaps_.get(name);
}
std::vector<HABMMemoryMap*> HABMBlock::getMemoryMaps() const {
  return memoryMaps_.list();
}
bool HABMBlock::hasMemoryMaps() const {
  return !memoryMaps_.empty();
}
bool HABMBlock::removeMemoryMap(std::string const& name) {
  return removeChild<MemoryMapKind>(*this, name);
}
void HABMBlock::clearMemoryMaps() {
  memoryMaps_.clear();
}
HABMMemoryMap* HABMBlock::findMemoryMap(std::string const& path, bool const& recursive) const {
  return findOne<MemoryMapKind>(*this, path, recursive);
}
std::vector<HABMMemoryMap*> HABMBlock::findMemoryMaps(std::string const& pattern,
                                                      bool const& recursive) const {
  return findAll<MemoryMapKind>(*this, pattern, recursive);
}
HABMAddrBlock* HABMBlock::findAddrBlock(std::string const& path, bool const& recursive) const {
  HABMMemoryMap const* map = findMemoryMap(HABMPath::get_path_head(path), recursive);
  return map == nullptr ? nullptr : map->getAddrBlock(HABMPath::get_path_tail(path));
}
std::vector<HABMAddrBlock*> HABMBlock::findAddrBlocks(std::string const& pattern,
                                                      bool const& recursive) const {
  return findMatching<HABMAddrBlock>(
      *this, pattern, recursive, [](HABMBlock const& holder, auto const& take) {
        for (HABMMemoryMap const* map : holder.memoryMaps_) {
          for (HABMAddrBlock* block : Kind<ChildKind::ADDR_BLOCK>::list(*map)) {
            take(block, block->getPath());
          }
        }
      });
}
HABMRegister* HABMBlock::findRegister(std::string const& path, bool const& recursive) const {
  HABMAddrBlock const* block = findAddrBlock(HABMPath::get_path_head(path), recursive);
  return block == nullptr ? nullptr : block->getRegister(HABMPath::get_path_tail(path));
}
std::vector<HABMRegister*> HABMBlock::findRegisters(std::string const& pattern, bool const& recursive) const {
  return findMatching<HABMRegister>(*this, pattern, recursive, [](HABMBlock const& holder, auto const& take) {
    for (HABMMemoryMap const* map : holder.memoryMaps_) {
      for (HABMAddrBlock const* block : Kind<ChildKind::ADDR_BLOCK>::list(*map)) {
        for (HABMRegister* reg : Kind<ChildKind::REGISTER>::list(*block)) {
          take(reg, reg->getPath());
        }
      }
    }
  });
}

HABMAddrAssign* HABMBlock::createAddrAssign(std::string const& name) {
  return createChild<AddrAssignKind>(*this, name, false).child;
}
HABMAddrAssign* HABMBlock::getAddrAssign(std::string const& name) const {
  return addrAssigns_.get(name);
}
std::vector<HABMAddrAssign*> HABMBlock::getAddrAssigns() const {
  return addrAssigns_.list();
}
bool HABMBlock::hasAddrAssigns() const {
  return !addrAssigns_.empty();
}
bool HABMBlock::removeAddrAssign(std::string const& name) {
  return removeChild<AddrAssignKind>(*this, name);
}
void HABMBlock::clearAddrAssigns() {
  addrAssigns_.clear();
}
HABMAddrAssign* HABMBlock::findAddrAssign(std::string const& path, bool const& recursive) const {
  return findOne<AddrAssignKind>(*this, path, recursive);
}
std::vector<HABMAddrAssign*> HABMBlock::findAddrAssigns(std::string const& pattern,
                                                        bool const& recursive) const {
  return findAll<AddrAssignKind>(*this, pattern, recursive);
}

// Spaces and maps are declared, never derived from what the block already holds.
void HABMBlock::inferAddrSpaces() {}
void HABMBlock::inferMemoryMaps() {}

// Interfaces, bridges and interface connections.

HABMInterface* HABMBlock::createInterface(std::string const& name, bool const& force) {
  return createChild<InterfaceKind>(*this, name, force).child;
}
HABMInterface* HABMBlock::getInterface(std::string const& name) const {
  return interfaces_.get(name);
}
std::vector<HABMInterface*> HABMBlock::getInterfaces() const {
  return interfaces_.list();
}
bool HABMBlock::hasInterfaces() const {
  return !interfaces_.empty();
}
bool HABMBlock::removeInterface(std::string const& name) {
  return removeChild<InterfaceKind>(*this, name);
}
void HABMBlock::clearInterfaces() {
  interfaces_.clear();
}
HABMInterface* HABMBlock::findInterface(std::string const& path, bool const& recursive) const {
  return findOne<InterfaceKind>(*this, path, recursive);
}
std::vector<HABMInterface*> HABMBlock::findInterfaces(std::string const& pattern,
                                                      bool const& recursive) const {
  return findAll<InterfaceKind>(*this, pattern, recursive);
}

HABMBridge* HABMBlock::createBridge(std::string const& name) {
  return createChild<BridgeKind>(*this, name, false).child;
}
HABMBridge* HABMBlock::createBridge(std::string const& source, std::string const& target) {
  HABMBridge* bridge = HABMBridge::canBridge(*this, source, target) ? createBridge(std::string()) : nullptr;
  if (bridge == nullptr) {
    HABM_TRACE(TRACE_BLOCK,
               "Failed to create bridge from source interface '%s' to target interface '%s' on block '%s'.\n",
               source.c_str(), target.c_str(), getInstancePath().c_str());
    return nullptr;
  }
  bridge->setSourceName(source);
  bridge->setTargetName(target);
  HABM_TRACE(TRACE_BLOCK, "Connected bridge '%s' from source interface '%s' to target interface '%s'.\n",
             bridge->getPath().c_str(), bridge->getSourcePath(true).c_str(),
             bridge->getTargetPath(true).c_str());
  return bridge;
}
HABMBridge* HABMBlock::getBridge(std::string const& name) const {
  return bridges_.get(name);
}
std::vector<HABMBridge*> HABMBlock::getBridges() const {
  return bridges_.list();
}
bool HABMBlock::hasBridges() const {
  return !bridges_.empty();
}
bool HABMBlock::removeBridge(std::string const& name) {
  return removeChild<BridgeKind>(*this, name);
}
void HABMBlock::clearBridges() {
  bridges_.clear();
}

HABMInterfaceConnection* HABMBlock::createInterfaceConnection(std::string const& name, bool const& force) {
  return createChild<InterfaceConnectionKind>(*this, name, force).child;
}
HABMInterfaceConnection* HABMBlock::createInterfaceConnection(std::string const& source,
                                                              std::string const& target, bool const& force) {
  HABMInterfaceConnection* connection = nullptr;
  if (force || HABMInterfaceConnection::canConnect(*this, source, target)) {
    connection = createInterfaceConnection(std::string(), force);
  }
  if (connection == nullptr) {
    HABM_TRACE(TRACE_BLOCK,
               "Failed to create interface connection from source interface '%s' to target interface '%s' on "
               "block '%s'.\n",
               source.c_str(), target.c_str(), getInstancePath().c_str());
    return nullptr;
  }
  connection->setSourcePath(source);
  connection->setTargetPath(target);
  HABM_TRACE(TRACE_CHILD,
             "Connected interface connection '%s' from source interface '%s' to target interface '%s'.\n",
             connection->getPath().c_str(), connection->getSourcePath(true).c_str(),
             connection->getTargetPath(true).c_str());
  return connection;
}
HABMInterfaceConnection* HABMBlock::getInterfaceConnection(std::string const& name) const {
  return interfaceConnections_.get(name);
}
std::vector<HABMInterfaceConnection*> HABMBlock::getInterfaceConnections() const {
  return interfaceConnections_.list();
}
bool HABMBlock::hasInterfaceConnections() const {
  return !interfaceConnections_.empty();
}
bool HABMBlock::removeInterfaceConnection(std::string const& name) {
  return removeChild<InterfaceConnectionKind>(*this, name);
}
void HABMBlock::clearInterfaceConnections() {
  interfaceConnections_.clear();
}
HABMInterfaceConnection* HABMBlock::findInterfaceConnection(std::string const& path,
                                                            bool const& recursive) const {
  return findOne<InterfaceConnectionKind>(*this, path, recursive);
}
std::vector<HABMInterfaceConnection*> HABMBlock::findInterfaceConnections(std::string const& pattern,
                                                                          bool const& recursive) const {
  return findAll<InterfaceConnectionKind>(*this, pattern, recursive);
}

// NoC interfaces.

HABMNocInterface* HABMBlock::createNocInterface() {
  std::string const name = nocInterfaces_.autoName("noc_interface_%d", false);
  return createNocInterface(name);
}
HABMNocInterface* HABMBlock::createNocInterface(std::string const& name) {
  std::string error;
  return createNocInterface(name, error);
}
HABMNocInterface* HABMBlock::createNocInterface(std::string const& name, std::string& error) {
  error.clear();
  auto const created = createChild<NocInterfaceKind>(*this, name, false);
  switch (created.why) {
    case habm_detail::Refusal::NONE:
      break;
    case habm_detail::Refusal::BAD_NAME:
    case habm_detail::Refusal::INVALID:
    case habm_detail::Refusal::NOT_FOUND:
      error = "NOC interface name '" + name + "' is invalid.";
      break;
    case habm_detail::Refusal::TAKEN:
      error = "A NOC interface named '" + name + "' already exists.";
      break;
  }
  return created.child;
}
HABMNocInterface* HABMBlock::getNocInterface(std::string const& name) const {
  return nocInterfaces_.get(name);
}
std::vector<HABMNocInterface*> HABMBlock::getNocInterfaces(bool const& excludeIni) const {
  return nocObjects<NocInterfaceKind>(*this, excludeIni);
}
bool HABMBlock::hasNocInterfaces(bool const& excludeIni) const {
  return std::any_of(nocInterfaces_.begin(), nocInterfaces_.end(),
                     [&](HABMNocInterface const* iface) { return !excludeIni || !iface->isIniCategory(); });
}
bool HABMBlock::hasNocInterface(HABMNocInterface const* iface, bool const& recursive) const {
  if (iface == nullptr) {
    return false;
  }
  // Pointers are compared, never followed: the one asked about may be long gone.
  auto const all = findNocInterfaces(std::string(), recursive, false);
  return std::find(all.begin(), all.end(), iface) != all.end();
}
bool HABMBlock::removeNocInterface(std::string const& name) {
  return removeChild<NocInterfaceKind>(*this, name);
}
void HABMBlock::clearNocInterfaces() {
  nocInterfaces_.clear();
}
HABMNocInterface* HABMBlock::findNocInterface(std::string const& path, bool const& recursive) const {
  return findOne<NocInterfaceKind>(*this, path, recursive);
}
std::vector<HABMNocInterface*> HABMBlock::findNocInterfaces(std::string const& pattern, bool const& recursive,
                                                            bool const& excludeIni) const {
  return findNocObjects<NocInterfaceKind>(*this, pattern, recursive, excludeIni);
}
bool HABMBlock::hasEditableNocInterfaces() const {
  auto const all = findNocInterfaces(std::string(), true, false);
  return std::any_of(all.begin(), all.end(),
                     [](HABMNocInterface const* iface) { return iface->getEditable(); });
}

// NoC connections.

HABMNocConnection* HABMBlock::createNocConnection(std::string const& source, std::string const& target,
                                                  std::string& error, bool const& force) {
  error.clear();
  HABMNocConnection* connection = nullptr;
  if (force || HABMNocConnection::canConnect(*this, source, target, error)) {
    connection = createNocConnection(std::string(), force);
  }
  if (connection == nullptr) {
    HABM_TRACE(TRACE_BLOCK, "Failed to create noc connection from '%s' to '%s' on block '%s'.%s\n",
               source.c_str(), target.c_str(), getInstancePath().c_str(),
               (error.empty() ? error : " " + error).c_str());
    return nullptr;
  }
  connection->setSourcePath(source);
  connection->setTargetPath(target);
  HABM_TRACE(TRACE_CHILD,
             "Connected noc connection '%s' from source interface '%s' to target interface '%s'.\n",
             connection->getPath().c_str(), connection->getSourcePath(true).c_str(),
             connection->getTargetPath(true).c_str());
  for (auto const& entry : HABMNocConnection::getDefaultParameterValues(*connection)) {
    connection->setParameter(entry.first, entry.second, true);
  }
  return connection;
}
HABMNocConnection* HABMBlock::createNocConnection(std::string const& source, std::string const& target,
                                                  bool const& force) {
  std::string error;
  return createNocConnection(source, target, error, force);
}
HABMNocConnection* HABMBlock::createNocConnection(std::string const& name, bool const& force) {
  return createChild<NocConnectionKind>(*this, name, force).child;
}
HABMNocConnection* HABMBlock::getNocConnection(std::string const& name) const {
  return nocConnections_.get(name);
}
std::vector<HABMNocConnection*> HABMBlock::getNocConnections(bool const& excludeIni) const {
  return nocObjects<NocConnectionKind>(*this, excludeIni);
}
bool HABMBlock::hasNocConnections(bool const& excludeIni) const {
  return std::any_of(
      nocConnections_.begin(), nocConnections_.end(),
      [&](HABMNocConnection const* connection) { return !excludeIni || !connection->isIniCategory(); });
}
bool HABMBlock::renameNocConnection(std::string const& oldName, std::string const& newName) {
  return habm_detail::renameChild<NocConnectionKind>(*this, oldName, newName) == habm_detail::Refusal::NONE;
}
bool HABMBlock::removeNocConnection(std::string const& name) {
  return removeChild<NocConnectionKind>(*this, name);
}
void HABMBlock::clearNocConnections() {
  nocConnections_.clear();
}
HABMNocConnection* HABMBlock::findNocConnection(std::string const& path, bool const& recursive) const {
  return findOne<NocConnectionKind>(*this, path, recursive);
}
std::vector<HABMNocConnection*> HABMBlock::findNocConnections(std::string const& pattern,
                                                              bool const& recursive,
                                                              bool const& excludeIni) const {
  return findNocObjects<NocConnectionKind>(*this, pattern, recursive, excludeIni);
}
bool HABMBlock::hasEditableNocConnections() const {
  auto const all = findNocConnections(std::string(), true, false);
  return std::any_of(all.begin(), all.end(),
                     [](HABMNocConnection const* connection) { return connection->getEditable(); });
}

// HABMKinds.h: one record per kind of child (its container, traces, automatic name, file key, group and
// the way it is made), the lists of kinds each owner holds, the orders of the reader, the writer and the
// grouped clears, and the walkers over them; internal to the model sources, the tests and the tools.
#pragma once

#include "blockmodel/HABMAddrAssign.h"
#include "blockmodel/HABMAddrBlock.h"
#include "blockmodel/HABMAddrSegment.h"
#include "blockmodel/HABMAddrSpace.h"
#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMBridge.h"
#include "blockmodel/HABMGeneric.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMInterfaceConnection.h"
#include "blockmodel/HABMJsonUtils.h"
#include "blockmodel/HABMMemoryMap.h"
#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/HABMNocInterface.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMPortConnection.h"
#include "blockmodel/HABMPortMap.h"
#include "blockmodel/HABMRegister.h"
#include "blockmodel/HABMRegisterField.h"
#include "blockmodel/detail/HABMChildRules.h"

#include <boost/algorithm/string/predicate.hpp>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace habm_detail {

enum class ChildKind : unsigned char {
  // On a block.
  ATTRIBUTE,
  GENERIC,
  PARAMETER,
  PORT,
  INTERFACE,
  NOC_INTERFACE,
  ADDR_SPACE,
  MEMORY_MAP,
  BRIDGE,
  SUB_BLOCK,
  PORT_CONNECTION,
  INTERFACE_CONNECTION,
  NOC_CONNECTION,
  ADDR_ASSIGN,
  // On the children of a block.
  PORT_ATTRIBUTE,
  INTERFACE_PARAMETER,
  PORT_MAP,
  ADDR_SEGMENT,
  ADDR_BLOCK,
  REGISTER,
  REGISTER_FIELD,
  REGISTER_PARAMETER,
  NOC_INTERFACE_PARAMETER,
  NOC_CONNECTION_PARAMETER
};

/// The group of a block that a kind belongs to; NONE for the kinds below a block's children.
enum class Group { CONFIGURATION, BOUNDARY, CONTENTS, NONE };

/// A list of kinds, in an order that matters to whoever walks it.
template <ChildKind... Ids>
struct KindList {};

/// The id of a kind's record.
template <ChildKind Id>
constexpr ChildKind kindId(Kind<Id>) {
  return Id;
}

/// Calls `f(Kind<id>{})` for each kind of the list, in order.
template <ChildKind... Ids, class F>
void forEachKind(KindList<Ids...>, F&& f) {
  (f(Kind<Ids>{}), ...);
}

/// As forEachKind, stopping at the first kind for which `f` answers false; false then.
template <ChildKind... Ids, class F>
bool forEachKindWhile(KindList<Ids...>, F&& f) {
  return (f(Kind<Ids>{}) && ...);
}

// What the kinds of one owner share: the owner and its path in the traces.

struct OnBlock {
  using Owner = HABMBlock;
  static std::string ownerPath(HABMBlock const& owner) { return owner.getInstancePath(); }
};
struct OnPort {
  using Owner = HABMPort;
  static constexpr Group GROUP = Group::NONE;
  static std::string ownerPath(HABMPort const& owner) { return owner.getPortPath(); }
};
struct OnInterface {
  using Owner = HABMInterface;
  static constexpr Group GROUP = Group::NONE;
  static std::string ownerPath(HABMInterface const& owner) { return owner.getInterfacePath(); }
};
/// Objects whose traces name them by getPath (address objects, NoC objects).
template <class T>
struct OnAddrObject {
  using Owner = T;
  static constexpr Group GROUP = Group::NONE;
  static std::string ownerPath(T const& owner) { return owner.getPath(); }
};

/// The children of a kind that stands on its own (name, value) have no parent to point back to.
struct Parentless {
  template <class T>
  static void const* parentOf(T const&) {
    return nullptr;
  }
};

/// What the kinds of (name, value) children share: made from a name and a value; read from a file with an
/// empty value and copied through the owner's creator, whose rules and traces they keep.
template <class Self, class OnOwner, class T>
struct NamedValueKind : OnOwner, Parentless {
  using Child = T;
  using Owner = typename OnOwner::Owner;
  static constexpr char const* LABEL = nullptr;
  static std::unique_ptr<T> make(Owner&, std::string const& name, std::string const& value) {
    return std::make_unique<T>(name, value);
  }
  static T* createFromFile(Owner& owner, std::string const& name) {
    return createChild<Self>(owner, name, false, std::string()).child;
  }
  static void cloneInto(Owner& owner, T const& source) {
    createChild<Self>(owner, source.getName(), false, source.getValue());
  }
};

// The records, one per kind.

template <>
struct Kind<ChildKind::ATTRIBUTE> : NamedValueKind<Kind<ChildKind::ATTRIBUTE>, OnBlock, HABMAttribute> {
  static constexpr ChildTexts TEXTS{"Created attribute '%s' on block '%s'.\n", TRACE_CHILD,
                                    "Failed to create attribute '%s' on block '%s'.\n",
                                    "Removed attribute '%s' from block '%s'.\n", TRACE_CHILD};
  static constexpr Group GROUP = Group::CONFIGURATION;
  static constexpr char const* LABEL = "attributes";
  static std::string const& key() { return HABMJsonUtils::STR_ATTRIBUTES(); }
  template <class O>
  static auto& list(O& owner) {
    return owner.attributes_;
  }
};

template <>
struct Kind<ChildKind::GENERIC> : NamedValueKind<Kind<ChildKind::GENERIC>, OnBlock, HABMGeneric> {
  static constexpr ChildTexts TEXTS{"Created generic '%s' on block '%s'.\n", TRACE_CHILD,
                                    "Failed to create generic '%s' on block '%s'.\n",
                                    "Removed generic '%s' from block '%s'.\n", TRACE_CHILD};
  static constexpr Group GROUP = Group::CONFIGURATION;
  static constexpr char const* LABEL = "generics";
  static std::string const& key() { return HABMJsonUtils::STR_GENERICS(); }
  template <class O>
  static auto& list(O& owner) {
    return owner.generics_;
  }
};

template <>
struct Kind<ChildKind::PARAMETER> : NamedValueKind<Kind<ChildKind::PARAMETER>, OnBlock, HABMParameter> {
  static constexpr ChildTexts TEXTS{"Created parameter '%s' on block '%s'.\n", TRACE_CHILD,
                                    "Failed to create parameter '%s' on block '%s'.\n",
                                    "Removed parameter '%s' from block '%s'.\n", TRACE_CHILD};
  static constexpr Group GROUP = Group::CONFIGURATION;
  static constexpr char const* LABEL = "parameters";
  static std::string const& key() { return HABMJsonUtils::STR_PARAMETERS(); }
  template <class O>
  static auto& list(O& owner) {
    return owner.parameters_;
  }
};

template <>
struct Kind<ChildKind::PORT> : OnBlock {
  using Child = HABMPort;
  static constexpr ChildTexts TEXTS{"Created port '%s' on block '%s'.\n", TRACE_CHILD,
                                    "Failed to create port '%s' on block '%s'.\n",
                                    "Removed port '%s' from block '%s'.\n", TRACE_CHILD};
  static constexpr Group GROUP = Group::BOUNDARY;
  static constexpr char const* LABEL = "ports";
  static std::string const& key() { return HABMJsonUtils::STR_PORTS(); }
  template <class O>
  static auto& list(O& owner) {
    return owner.ports_;
  }
  static std::unique_ptr<Child> make(HABMBlock& owner, std::string const& name) {
    return std::unique_ptr<Child>(new Child(&owner, name));
  }
  static Child* createFromFile(HABMBlock& owner, std::string const& name) {
    return owner.createPort(name, false);
  }
  static HABMBlock const* parentOf(Child const& child) { return &child.getParent(); }
  static void cloneInto(HABMBlock& owner, Child const& source) {
    owner.createPort(source.getPortName(), true)->clone(source);
  }
};

template <>
struct Kind<ChildKind::INTERFACE> : OnBlock {
  using Child = HABMInterface;
  static constexpr ChildTexts TEXTS{"Created interface '%s' on block '%s'.\n",
                                    TRACE_CHILD,
                                    "Failed to create interface '%s' on block '%s'.\n",
                                    "Removed interface '%s' from block '%s'.\n",
                                    TRACE_CHILD,
                                    "interface_%d"};
  static constexpr Group GROUP = Group::BOUNDARY;
  static constexpr char const* LABEL = "interfaces";
  static std::string const& key() { return HABMJsonUtils::STR_INTERFACES(); }
  template <class O>
  static auto& list(O& owner) {
    return owner.interfaces_;
  }
  static std::unique_ptr<Child> make(HABMBlock& owner, std::string const& name) {
    return std::unique_ptr<Child>(new Child(&owner, name));
  }
  static Child* createFromFile(HABMBlock& owner, std::string const& name) {
    return owner.createInterface(name, false);
  }
  static HABMBlock const* parentOf(Child const& child) { return &child.getParent(); }
  static void cloneInto(HABMBlock& owner, Child const& source) {
    owner.createInterface(source.getInterfaceName(), true)->clone(source);
  }
};

template <>
struct Kind<ChildKind::NOC_INTERFACE> : OnBlock {
  using Child = HABMNocInterface;
  // An empty name is refused: createNocInterface() finds its automatic name before it calls the creator.
  static constexpr ChildTexts TEXTS{"Created noc interface '%s' on block '%s'.\n", TRACE_CHILD,
                                    "Failed to create noc interface '%s' on block '%s'.\n",
                                    "Removed noc interface '%s' from block '%s'.\n", TRACE_CHILD};
  static constexpr Group GROUP = Group::BOUNDARY;
  static constexpr char const* LABEL = "noc interfaces";
  static std::string const& key() { return HABMJsonUtils::STR_NOC_INTERFACES(); }
  template <class O>
  static auto& list(O& owner) {
    return owner.nocInterfaces_;
  }
  static std::unique_ptr<Child> make(HABMBlock& owner, std::string const& name) {
    return std::unique_ptr<Child>(new Child(&owner, name));
  }
  static Child* createFromFile(HABMBlock& owner, std::string const& name) {
    return owner.createNocInterface(name);
  }
  static HABMBlock const* parentOf(Child const& child) { return child.getParent(); }
  static void cloneInto(HABMBlock& owner, Child const& source) {
    std::string error;
    if (Child* copy = owner.createNocInterface(source.getName(), error)) {
      copy->clone(source);
    }
  }
};

template <>
struct Kind<ChildKind::ADDR_SPACE> : OnBlock {
  using Child = HABMAddrSpace;
  static constexpr ChildTexts TEXTS{"Created address space '%s' on block '%s'.\n", TRACE_CHILD,
                                    "Failed to create address space '%s' on block '%s'.\n",
                                    "Removed address space '%s' from block '%s'.\n", TRACE_CHILD};
  static constexpr Group GROUP = Group::BOUNDARY;
  static constexpr char const* LABEL = "address spaces";
  static std::string const& key() { return HABMJsonUtils::STR_ADDRESS_SPACES(); }
  template <class O>
  static auto& list(O& owner) {
    return owner.addrSpaces_;
  }
  static std::unique_ptr<Child> make(HABMBlock& owner, std::string const& name) {
    return std::unique_ptr<Child>(new Child(&owner, name));
  }
  static Child* createFromFile(HABMBlock& owner, std::string const& name) {
    return owner.createAddrSpace(name);
  }
  static HABMBlock const* parentOf(Child const& child) { return child.getParent(); }
  static void cloneInto(HABMBlock& owner, Child const& source) {
    if (Child* copy = owner.createAddrSpace(source.getName())) {
      copy->clone(source);
    }
  }
};

template <>
struct Kind<ChildKind::MEMORY_MAP> : OnBlock {
  using Child = HABMMemoryMap;
  static constexpr ChildTexts TEXTS{"Created memory map '%s' on block '%s'.\n", TRACE_CHILD,
                                    "Failed to create memory map '%s' on block '%s'.\n",
                                    "Removed memory map '%s' from block '%s'.\n", TRACE_CHILD};
  static constexpr Group GROUP = Group::BOUNDARY;
  static constexpr char const* LABEL = "memory maps";
  static std::string const& key() { return HABMJsonUtils::STR_MEMORY_MAPS(); }
  template <class O>
  static auto& list(O& owner) {
    return owner.memoryMaps_;
  }
  static std::unique_ptr<Child> make(HABMBlock& owner, std::string const& name) {
    return std::unique_ptr<Child>(new Child(&owner, name));
  }
  static Child* createFromFile(HABMBlock& owner, std::string const& name) {
    return owner.createMemoryMap(name);
  }
  static HABMBlock const* parentOf(Child const& child) { return child.getParent(); }
  static void cloneInto(HABMBlock& owner, Child const& source) {
    if (Child* copy = owner.createMemoryMap(source.getName())) {
      copy->clone(source);
    }
  }
};

template <>
struct Kind<ChildKind::BRIDGE> : OnBlock {
  using Child = HABMBridge;
  static constexpr ChildTexts TEXTS{
      "Created bridge '%s' on block '%s'.\n",   TRACE_CHILD, "Failed to create bridge '%s' on block '%s'.\n",
      "Removed bridge '%s' from block '%s'.\n", TRACE_CHILD, "bridge_%d"};
  static constexpr Group GROUP = Group::BOUNDARY;
  static constexpr char const* LABEL = "bridges";
  static std::string const& key() { return HABMJsonUtils::STR_BRIDGES(); }
  template <class O>
  static auto& list(O& owner) {
    return owner.bridges_;
  }
  static std::unique_ptr<Child> make(HABMBlock& owner, std::string const& name) {
    return std::unique_ptr<Child>(new Child(&owner, name));
  }
  static Child* createFromFile(HABMBlock& owner, std::string const& name) { return owner.createBridge(name); }
  static HABMBlock const* parentOf(Child const& child) { return child.getParent(); }
  static void cloneInto(HABMBlock& owner, Child const& source) {
    if (Child* copy = owner.createBridge(source.getName())) {
      copy->clone(source);
    }
  }
};

template <>
struct Kind<ChildKind::SUB_BLOCK> : OnBlock {
  using Child = HABMBlock;
  // Sub-blocks are the life of blocks, hence the block mask.
  static constexpr ChildTexts TEXTS{"Created sub-block '%s' in block '%s'.\n", TRACE_BLOCK,
                                    "Failed to create sub-block '%s' in block '%s'.\n",
                                    "Removed sub-block '%s' from block '%s'.\n", TRACE_BLOCK};
  static constexpr Group GROUP = Group::CONTENTS;
  static constexpr char const* LABEL = nullptr;  // counted as blocks, the top block included
  static std::string const& key() { return HABMJsonUtils::STR_SUB_BLOCKS(); }
  template <class O>
  static auto& list(O& owner) {
    return owner.subBlocks_;
  }
  static std::unique_ptr<Child> make(HABMBlock& owner, std::string const& name,
                                     std::string const& moduleName) {
    return std::unique_ptr<Child>(new Child(&owner, name, moduleName));
  }
  static Child* createFromFile(HABMBlock& owner, std::string const& name) {
    return owner.createSubBlock(name, std::string(), false);
  }
  static HABMBlock const* parentOf(Child const& child) { return child.getParent(); }
};

template <>
struct Kind<ChildKind::PORT_CONNECTION> : OnBlock {
  using Child = HABMPortConnection;
  static constexpr ChildTexts TEXTS{"Created port connection '%s' on block '%s'.\n",
                                    TRACE_CHILD,
                                    "Failed to create port connection '%s' on block '%s'.\n",
                                    "Removed port connection '%s' from block '%s'.\n",
                                    TRACE_CHILD,
                                    "port_connection_%d"};
  static constexpr Group GROUP = Group::CONTENTS;
  static constexpr char const* LABEL = "port connections";
  static std::string const& key() { return HABMJsonUtils::STR_PORT_CONNECTIONS(); }
  template <class O>
  static auto& list(O& owner) {
    return owner.portConnections_;
  }
  static std::unique_ptr<Child> make(HABMBlock& owner, std::string const& name) {
    return std::unique_ptr<Child>(new Child(&owner, name, HABMPortConnection::SOFT));
  }
  static Child* createFromFile(HABMBlock& owner, std::string const& name) {
    return owner.createPortConnection(name, false);
  }
  static HABMBlock const* parentOf(Child const& child) { return &child.getParent(); }
  static void cloneInto(HABMBlock& owner, Child const& source) {
    owner.createPortConnection(source.getName(), true)->clone(source);
  }
};

template <>
struct Kind<ChildKind::INTERFACE_CONNECTION> : OnBlock {
  using Child = HABMInterfaceConnection;
  static constexpr ChildTexts TEXTS{"Created interface connection '%s' on block '%s'.\n",
                                    TRACE_CHILD,
                                    "Failed to create interface connection '%s' on block '%s'.\n",
                                    "Removed interface connection '%s' from block '%s'.\n",
                                    TRACE_CHILD,
                                    "interface_connection_%d"};
  static constexpr Group GROUP = Group::CONTENTS;
  static constexpr char const* LABEL = "interface connections";
  static std::string const& key() { return HABMJsonUtils::STR_INTERFACE_CONNECTIONS(); }
  template <class O>
  static auto& list(O& owner) {
    return owner.interfaceConnections_;
  }
  static std::unique_ptr<Child> make(HABMBlock& owner, std::string const& name) {
    return std::unique_ptr<Child>(new Child(&owner, name, HABMPortConnection::SOFT));
  }
  static Child* createFromFile(HABMBlock& owner, std::string const& name) {
    return owner.createInterfaceConnection(name, false);
  }
  static HABMBlock const* parentOf(Child const& child) { return child.getParent(); }
  static void cloneInto(HABMBlock& owner, Child const& source) {
    owner.createInterfaceConnection(source.getName(), true)->clone(source);
  }
};

template <>
struct Kind<ChildKind::NOC_CONNECTION> : OnBlock {
  using Child = HABMNocConnection;
  static constexpr ChildTexts TEXTS{"Created noc connection '%s' on block '%s'.\n",
                                    TRACE_CHILD,
                                    "Failed to create noc connection '%s' on block '%s'.\n",
                                    "Removed noc connection '%s' from block '%s'.\n",
                                    TRACE_CHILD,
                                    "noc_connection_%d"};
  static constexpr char const* RENAMED = "Renamed noc connection from '%s' to '%s' on block '%s'.\n";
  static constexpr char const* RENAME_FAILED =
      "Failed to rename noc connection from '%s' to '%s' on block '%s'.\n";
  static constexpr Group GROUP = Group::CONTENTS;
  static constexpr char const* LABEL = "noc connections";
  static std::string const& key() { return HABMJsonUtils::STR_NOC_CONNECTIONS(); }
  template <class O>
  static auto& list(O& owner) {
    return owner.nocConnections_;
  }
  static std::unique_ptr<Child> make(HABMBlock& owner, std::string const& name) {
    return std::unique_ptr<Child>(new Child(&owner, name));
  }
  static Child* createFromFile(HABMBlock& owner, std::string const& name) {
    return owner.createNocConnection(name, false);
  }
  static HABMBlock const* parentOf(Child const& child) { return child.getParent(); }
  static void cloneInto(HABMBlock& owner, Child const& source) {
    owner.createNocConnection(source.getName(), true)->clone(source);
  }
  static void rename(Child& child, std::string const& name) { child.setName(name); }
};

template <>
struct Kind<ChildKind::ADDR_ASSIGN> : OnBlock {
  using Child = HABMAddrAssign;
  // A refused assignment is silent.
  static constexpr ChildTexts TEXTS{
      "Created address assignment '%s' on block '%s'.\n",   TRACE_CHILD, nullptr,
      "Removed address assignment '%s' from block '%s'.\n", TRACE_CHILD, "assignment_%d"};
  static constexpr Group GROUP = Group::CONTENTS;
  static constexpr char const* LABEL = "address assignments";
  static std::string const& key() { return HABMJsonUtils::STR_ADDRESS_ASSIGNMENTS(); }
  template <class O>
  static auto& list(O& owner) {
    return owner.addrAssigns_;
  }
  static std::unique_ptr<Child> make(HABMBlock& owner, std::string const& name) {
    return std::unique_ptr<Child>(new Child(&owner, name));
  }
  static Child* createFromFile(HABMBlock& owner, std::string const& name) {
    return owner.createAddrAssign(name);
  }
  static HABMBlock const* parentOf(Child const& child) { return child.getParent(); }
  static void cloneInto(HABMBlock& owner, Child const& source) {
    if (Child* copy = owner.createAddrAssign(source.getName())) {
      copy->clone(source);
    }
  }
};

template <>
struct Kind<ChildKind::PORT_ATTRIBUTE>
    : NamedValueKind<Kind<ChildKind::PORT_ATTRIBUTE>, OnPort, HABMAttribute> {
  // The second conversion of the remove text is malformed; the message manager prints what it can.
  static constexpr ChildTexts TEXTS{"Created attribute '%s' on port '%s'.\n", TRACE_CHILD,
                                    "Failed to create attribute '%s' on port '%s'.\n",
                                    "Removed attribute '%s' from port '%'.\n", TRACE_CHILD};
  static std::string const& key() { return HABMJsonUtils::STR_ATTRIBUTES(); }
  template <class O>
  static auto& list(O& owner) {
    return owner.attributes_;
  }
};

template <>
struct Kind<ChildKind::INTERFACE_PARAMETER>
    : NamedValueKind<Kind<ChildKind::INTERFACE_PARAMETER>, OnInterface, HABMParameter> {
  static constexpr ChildTexts TEXTS{"Created parameter '%s' on interface '%s'.\n", TRACE_CHILD,
                                    "Failed to create parameter '%s' on interface '%s'.\n",
                                    "Removed parameter '%s' from interface '%s'.\n", TRACE_CHILD};
  static std::string const& key() { return HABMJsonUtils::STR_PARAMETERS(); }
  template <class O>
  static auto& list(O& owner) {
    return owner.parameters_;
  }
};

template <>
struct Kind<ChildKind::PORT_MAP> : OnInterface, Parentless {
  using Child = HABMPortMap;
  // The interface traces a new port map itself, with the physical port it maps to. The second conversion
  // of the remove text is malformed; the message manager prints what it can.
  static constexpr ChildTexts TEXTS{nullptr, TRACE_CHILD,
                                    "Failed to create port map '%s' on interface '%s'.\n",
                                    "Removed port map '%s' from interface '%'.\n", TRACE_CHILD};
  static constexpr char const* LABEL = nullptr;
  static std::string const& key() { return HABMJsonUtils::STR_PORT_MAPS(); }
  template <class O>
  static auto& list(O& owner) {
    return owner.portMaps_;
  }
  static std::unique_ptr<Child> make(HABMInterface&, std::string const& name,
                                     std::string const& physicalName) {
    return std::unique_ptr<Child>(new Child(name, physicalName));
  }
  static Child* createFromFile(HABMInterface& owner, std::string const& name) {
    return owner.createPortMap(name, std::string());
  }
};

template <>
struct Kind<ChildKind::ADDR_SEGMENT> : OnAddrObject<HABMAddrSpace> {
  using Child = HABMAddrSegment;
  // A generated name is the count as it stands and is not tested against the siblings, so a removal can
  // lead to a second segment of a generated name. Refusals are silent.
  static constexpr ChildTexts TEXTS{"Created address segment '%s' on address space '%s'.\n",
                                    TRACE_CHILD,
                                    nullptr,
                                    "Removed address segment '%s' from address space '%s'.\n",
                                    TRACE_CHILD,
                                    "segment_%d",
                                    true};
  static constexpr char const* LABEL = nullptr;
  static std::string const& key() { return HABMJsonUtils::STR_ADDRESS_SEGMENTS(); }
  template <class O>
  static auto& list(O& owner) {
    return owner.addrSegments_;
  }
  static std::unique_ptr<Child> make(HABMAddrSpace& owner, std::string const& name) {
    return std::unique_ptr<Child>(new Child(&owner, name));
  }
  static Child* createFromFile(HABMAddrSpace& owner, std::string const& name) {
    return owner.createAddrSegment(name);
  }
  static HABMAddrSpace const* parentOf(Child const& child) { return child.getParent(); }
};

// Address blocks, registers and fields are traced by their own path; their refusals are silent.

template <>
struct Kind<ChildKind::ADDR_BLOCK> : OnAddrObject<HABMMemoryMap> {
  using Child = HABMAddrBlock;
  static constexpr ChildTexts TEXTS{"Created address block '%s'.\n",
                                    TRACE_CHILD,
                                    nullptr,
                                    "Removed address block '%s'.\n",
                                    TRACE_CHILD,
                                    nullptr,
                                    false,
                                    true};
  static constexpr char const* LABEL = "address blocks";
  static std::string const& key() { return HABMJsonUtils::STR_ADDRESS_BLOCKS(); }
  template <class O>
  static auto& list(O& owner) {
    return owner.addrBlocks_;
  }
  static std::unique_ptr<Child> make(HABMMemoryMap& owner, std::string const& name) {
    return std::unique_ptr<Child>(new Child(&owner, name));
  }
  static Child* createFromFile(HABMMemoryMap& owner, std::string const& name) {
    return owner.createAddrBlock(name);
  }
  static HABMMemoryMap const* parentOf(Child const& child) { return child.getParent(); }
};

template <>
struct Kind<ChildKind::REGISTER> : OnAddrObject<HABMAddrBlock> {
  using Child = HABMRegister;
  static constexpr ChildTexts TEXTS{"Created register '%s'.\n",
                                    TRACE_CHILD,
                                    nullptr,
                                    "Removed register '%s'.\n",
                                    TRACE_CHILD,
                                    nullptr,
                                    false,
                                    true};
  static constexpr char const* LABEL = "registers";
  static std::string const& key() { return HABMJsonUtils::STR_REGISTERS(); }
  template <class O>
  static auto& list(O& owner) {
    return owner.registers_;
  }
  static std::unique_ptr<Child> make(HABMAddrBlock& owner, std::string const& name) {
    return std::unique_ptr<Child>(new Child(&owner, name));
  }
  static Child* createFromFile(HABMAddrBlock& owner, std::string const& name) {
    return owner.createRegister(name);
  }
  static HABMAddrBlock const* parentOf(Child const& child) { return child.getParent(); }
};

template <>
struct Kind<ChildKind::REGISTER_FIELD> : OnAddrObject<HABMRegister> {
  using Child = HABMRegisterField;
  static constexpr ChildTexts TEXTS{"Created register field '%s'.\n",
                                    TRACE_CHILD,
                                    nullptr,
                                    "Removed register field '%s'.\n",
                                    TRACE_CHILD,
                                    nullptr,
                                    false,
                                    true};
  static constexpr char const* LABEL = nullptr;
  static std::string const& key() { return HABMJsonUtils::STR_FIELDS(); }
  template <class O>
  static auto& list(O& owner) {
    return owner.fields_;
  }
  static std::unique_ptr<Child> make(HABMRegister& owner, std::string const& name) {
    return std::unique_ptr<Child>(new Child(&owner, name));
  }
  static Child* createFromFile(HABMRegister& owner, std::string const& name) {
    return owner.createField(name);
  }
  static HABMRegister const* parentOf(Child const& child) { return child.getParent(); }
};

template <>
struct Kind<ChildKind::REGISTER_PARAMETER>
    : NamedValueKind<Kind<ChildKind::REGISTER_PARAMETER>, OnAddrObject<HABMRegister>, HABMParameter> {
  // A register's parameters trace their removal with the block mask.
  static constexpr ChildTexts TEXTS{"Created parameter '%s' on register '%s'.\n", TRACE_CHILD,
                                    "Failed to create parameter '%s' on register '%s'.\n",
                                    "Removed parameter '%s' from register '%s'.\n", TRACE_BLOCK};
  static std::string const& key() { return HABMJsonUtils::STR_PARAMETERS(); }
  template <class O>
  static auto& list(O& owner) {
    return owner.parameters_;
  }
};

template <>
struct Kind<ChildKind::NOC_INTERFACE_PARAMETER>
    : NamedValueKind<Kind<ChildKind::NOC_INTERFACE_PARAMETER>, OnAddrObject<HABMNocInterface>,
                     HABMParameter> {
  static constexpr ChildTexts TEXTS{"Created parameter '%s' on interface '%s'.\n", TRACE_CHILD,
                                    "Failed to create parameter '%s' on interface '%s'.\n",
                                    "Removed parameter '%s' from interface '%s'.\n", TRACE_CHILD};
  static std::string const& key() { return HABMJsonUtils::STR_PARAMETERS(); }
  template <class O>
  static auto& list(O& owner) {
    return owner.parameters_;
  }
};

template <>
struct Kind<ChildKind::NOC_CONNECTION_PARAMETER>
    : NamedValueKind<Kind<ChildKind::NOC_CONNECTION_PARAMETER>, OnAddrObject<HABMNocConnection>,
                     HABMParameter> {
  static constexpr ChildTexts TEXTS{"Created parameter '%s' on noc connection '%s'.\n", TRACE_CHILD,
                                    "Failed to create parameter '%s' on noc connection '%s'.\n",
                                    "Removed parameter '%s' from noc connection '%s'.\n", TRACE_CHILD};
  static std::string const& key() { return HABMJsonUtils::STR_PARAMETERS(); }
  template <class O>
  static auto& list(O& owner) {
    return owner.parameters_;
  }
  /// A link takes only the parameters of a primary link, in any spelling of the name.
  static bool accepts(HABMNocConnection const& owner, std::string const& name) {
    return HABMNocConnection::isValidParameterName(owner, name);
  }
  /// Files of an older form name INITIAL_BOOT "SOC_BOOT".
  static Child* createFromFile(HABMNocConnection& owner, std::string const& name) {
    return createChild<Kind>(owner, currentName(name), false, std::string()).child;
  }
  /// The rule of `accepts` with the link's ends resolved once, for a whole collection of names.
  static auto nameRule(HABMNocConnection const& owner) {
    return HABMNocConnection::validParameterNameTest(owner);
  }
  /// What `createFromFile` does for each member of a file's collection, under one `nameRule`.
  static auto collectionCreator(HABMNocConnection& owner) {
    return [&owner, rule = nameRule(owner)](std::string const& name) {
      return createChildUnder<Kind>(rule, owner, currentName(name), false, std::string()).child;
    };
  }

 private:
  static std::string const& currentName(std::string const& name) {
    return boost::algorithm::iequals(name, "SOC_BOOT") ? HABMNocConnection::INITIAL_BOOT() : name;
  }
};

/// How a file's collection of kind `K` makes its children: through the kind's `collectionCreator` where
/// it has one, else one `createFromFile` per member.
template <class K>
auto collectionCreator(typename K::Owner& owner, int) -> decltype(K::collectionCreator(owner)) {
  return K::collectionCreator(owner);
}
template <class K>
auto collectionCreator(typename K::Owner& owner, long) {
  return [&owner](std::string const& name) { return K::createFromFile(owner, name); };
}

// The kinds each owner holds, in the order of its declaration.

template <class Owner>
struct KindsOf {
  using type = KindList<>;
};
template <>
struct KindsOf<HABMBlock> {
  using type =
      KindList<ChildKind::ATTRIBUTE, ChildKind::GENERIC, ChildKind::PARAMETER, ChildKind::PORT,
               ChildKind::INTERFACE, ChildKind::NOC_INTERFACE, ChildKind::ADDR_SPACE, ChildKind::MEMORY_MAP,
               ChildKind::BRIDGE, ChildKind::SUB_BLOCK, ChildKind::PORT_CONNECTION,
               ChildKind::INTERFACE_CONNECTION, ChildKind::NOC_CONNECTION, ChildKind::ADDR_ASSIGN>;
};
template <>
struct KindsOf<HABMPort> {
  using type = KindList<ChildKind::PORT_ATTRIBUTE>;
};
template <>
struct KindsOf<HABMInterface> {
  using type = KindList<ChildKind::INTERFACE_PARAMETER, ChildKind::PORT_MAP>;
};
template <>
struct KindsOf<HABMAddrSpace> {
  using type = KindList<ChildKind::ADDR_SEGMENT>;
};
template <>
struct KindsOf<HABMMemoryMap> {
  using type = KindList<ChildKind::ADDR_BLOCK>;
};
template <>
struct KindsOf<HABMAddrBlock> {
  using type = KindList<ChildKind::REGISTER>;
};
template <>
struct KindsOf<HABMRegister> {
  using type = KindList<ChildKind::REGISTER_FIELD, ChildKind::REGISTER_PARAMETER>;
};
template <>
struct KindsOf<HABMNocInterface> {
  using type = KindList<ChildKind::NOC_INTERFACE_PARAMETER>;
};
template <>
struct KindsOf<HABMNocConnection> {
  using type = KindList<ChildKind::NOC_CONNECTION_PARAMETER>;
};

// The orders that the formats and the grouped operations fix.

/// The collections of a block's file object, group by group, as the writer emits them.
using WriteConfiguration = KindList<ChildKind::PARAMETER, ChildKind::GENERIC, ChildKind::ATTRIBUTE>;
using WriteBoundary = KindList<ChildKind::PORT, ChildKind::INTERFACE, ChildKind::NOC_INTERFACE,
                               ChildKind::MEMORY_MAP, ChildKind::ADDR_SPACE, ChildKind::BRIDGE>;
/// The contents open with the sub-blocks, each a whole block object; these collections follow them.
using WriteContentsAfterSubBlocks = KindList<ChildKind::PORT_CONNECTION, ChildKind::INTERFACE_CONNECTION,
                                             ChildKind::NOC_CONNECTION, ChildKind::ADDR_ASSIGN>;
/// The collections of a block's file object as the reader fills them, around the sub-blocks, each read whole
/// in turn: references may come before what they name, since nothing is resolved while reading, except
/// that the NoC interfaces (below too) stand before the NoC connections, whose parameters depend on what
/// their ends are.
using ReadBeforeSubBlocks = KindList<ChildKind::ATTRIBUTE, ChildKind::GENERIC, ChildKind::PARAMETER,
                                     ChildKind::PORT, ChildKind::MEMORY_MAP, ChildKind::ADDR_SPACE,
                                     ChildKind::INTERFACE, ChildKind::BRIDGE, ChildKind::NOC_INTERFACE>;
using ReadAfterSubBlocks = KindList<ChildKind::PORT_CONNECTION, ChildKind::INTERFACE_CONNECTION,
                                    ChildKind::NOC_CONNECTION, ChildKind::ADDR_ASSIGN>;
/// The grouped clears: each thing goes before what it refers to, ports and sub-blocks last.
using ClearConfiguration = KindList<ChildKind::ATTRIBUTE, ChildKind::GENERIC, ChildKind::PARAMETER>;
using ClearBoundary = KindList<ChildKind::BRIDGE, ChildKind::NOC_INTERFACE, ChildKind::INTERFACE,
                               ChildKind::ADDR_SPACE, ChildKind::MEMORY_MAP, ChildKind::PORT>;
using ClearContents =
    KindList<ChildKind::ADDR_ASSIGN, ChildKind::PORT_CONNECTION, ChildKind::INTERFACE_CONNECTION,
             ChildKind::NOC_CONNECTION, ChildKind::SUB_BLOCK>;
/// The grouped copies: what refers to something is made after it. Sub-blocks are copied whole, and before
/// the connections drawn between them.
using CloneConfiguration = KindList<ChildKind::ATTRIBUTE, ChildKind::GENERIC, ChildKind::PARAMETER>;
using CloneBoundary = KindList<ChildKind::PORT, ChildKind::ADDR_SPACE, ChildKind::MEMORY_MAP,
                               ChildKind::INTERFACE, ChildKind::NOC_INTERFACE, ChildKind::BRIDGE>;
using CloneContentsAfterSubBlocks = KindList<ChildKind::PORT_CONNECTION, ChildKind::INTERFACE_CONNECTION,
                                             ChildKind::NOC_CONNECTION, ChildKind::ADDR_ASSIGN>;

// Walkers.

/// Calls `visit(Kind<id>{}, owner, child)` for every child below `owner` in declaration order, depth
/// first, each child before its own children; sub-blocks are visited but not entered, so that callers walk
/// the blocks of a tree without recursion.
template <class Owner, class Visit>
void walkBelow(Owner const& owner, Visit&& visit) {
  forEachKind(typename KindsOf<Owner>::type{}, [&](auto kind) {
    using K = decltype(kind);
    for (auto const* child : K::list(owner)) {
      visit(kind, owner, *child);
      if constexpr (!std::is_same_v<typename K::Child, HABMBlock>) {
        walkBelow(*child, visit);
      }
    }
  });
}

/// Calls `f(block)` for `top` and every block below it, parents before children, without recursion.
template <class F>
void forEachBlock(HABMBlock const& top, F&& f) {
  std::vector<HABMBlock const*> stack = {&top};
  while (!stack.empty()) {
    HABMBlock const* block = stack.back();
    stack.pop_back();
    f(*block);
    auto const& subBlocks = Kind<ChildKind::SUB_BLOCK>::list(*block);
    std::size_t const first = stack.size();
    for (HABMBlock const* sub : subBlocks) {
      stack.push_back(sub);
    }
    std::reverse(stack.begin() + static_cast<std::ptrdiff_t>(first), stack.end());
  }
}

/// As forEachBlock, calling `f(block, path)` with each block's instance path, built from its parent's as
/// the walk goes instead of from the top each time.
template <class F>
void forEachBlockWithPath(HABMBlock const& top, F&& f) {
  std::vector<std::pair<HABMBlock const*, std::string>> stack = {{&top, top.getInstancePath()}};
  while (!stack.empty()) {
    auto [block, path] = std::move(stack.back());
    stack.pop_back();
    f(*block, path);
    std::string const prefix = HABMPath::terminate(path);
    std::size_t const first = stack.size();
    for (HABMBlock const* sub : Kind<ChildKind::SUB_BLOCK>::list(*block)) {
      stack.emplace_back(sub, prefix + sub->getInstanceName());
    }
    std::reverse(stack.begin() + static_cast<std::ptrdiff_t>(first), stack.end());
  }
}

}  // namespace habm_detail

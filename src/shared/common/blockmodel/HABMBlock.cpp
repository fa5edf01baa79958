// HABMBlock.cpp: the block tree, its queries and the one child discipline every kind of child shares.
#include "blockmodel/HABMBlock.h"

#include "blockmodel/HABMAddrAssign.h"
#include "blockmodel/HABMAddrBlock.h"
#include "blockmodel/HABMAddrSegment.h"
#include "blockmodel/HABMAddrSpace.h"
#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMBridge.h"
#include "blockmodel/HABMChildRules.h"
#include "blockmodel/HABMGeneric.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMInterfaceConnection.h"
#include "blockmodel/HABMJsonReader.h"
#include "blockmodel/HABMJsonWriter.h"
#include "blockmodel/HABMMemoryMap.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMPath.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMPortConnection.h"
#include "blockmodel/HABMRegister.h"
#include "blockmodel/HABMTrace.h"
#include "blockmodel/HABMUtils.h"
#include "param/HPAParamMgr.h"
#include "util/HUTFile.h"

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/algorithm/string/join.hpp>
#include <boost/algorithm/string/predicate.hpp>

#include <algorithm>
#include <initializer_list>
#include <utility>

using habm_detail::ChildTexts;
using habm_detail::createChild;
using habm_detail::isRefusedName;
using habm_detail::removeChild;
using habm_detail::TRACE_BLOCK;
using habm_detail::TRACE_CHILD;

std::string const& HABMChildName<HABMBlock>::of(HABMBlock const& block) {
  return block.getInstanceName();
}

std::string habm_detail::childOwnerPath(HABMBlock const& block) {
  return block.getInstancePath();
}

namespace {

constexpr ChildTexts kAttributeTexts{"Created attribute '%s' on block '%s'.\n",
                                     TRACE_CHILD,
                                     "Failed to create attribute '%s' on block '%s'.\n",
                                     "Removed attribute '%s' from block '%s'.\n",
                                     TRACE_CHILD,
                                     nullptr};
constexpr ChildTexts kGenericTexts{
    "Created generic '%s' on block '%s'.\n",   TRACE_CHILD, "Failed to create generic '%s' on block '%s'.\n",
    "Removed generic '%s' from block '%s'.\n", TRACE_CHILD, nullptr};
constexpr ChildTexts kParameterTexts{"Created parameter '%s' on block '%s'.\n",
                                     TRACE_CHILD,
                                     "Failed to create parameter '%s' on block '%s'.\n",
                                     "Removed parameter '%s' from block '%s'.\n",
                                     TRACE_CHILD,
                                     nullptr};
// Sub-blocks are the life of blocks, hence the block mask.
constexpr ChildTexts kSubBlockTexts{"Created sub-block '%s' in block '%s'.\n",
                                    TRACE_BLOCK,
                                    "Failed to create sub-block '%s' in block '%s'.\n",
                                    "Removed sub-block '%s' from block '%s'.\n",
                                    TRACE_BLOCK,
                                    nullptr};
constexpr ChildTexts kPortTexts{
    "Created port '%s' on block '%s'.\n",   TRACE_CHILD, "Failed to create port '%s' on block '%s'.\n",
    "Removed port '%s' from block '%s'.\n", TRACE_CHILD, nullptr};
constexpr ChildTexts kPortConnectionTexts{"Created port connection '%s' on block '%s'.\n",
                                          TRACE_CHILD,
                                          "Failed to create port connection '%s' on block '%s'.\n",
                                          "Removed port connection '%s' from block '%s'.\n",
                                          TRACE_CHILD,
                                          "port_connection_%d"};
constexpr ChildTexts kAddrSpaceTexts{"Created address space '%s' on block '%s'.\n",
                                     TRACE_CHILD,
                                     "Failed to create address space '%s' on block '%s'.\n",
                                     "Removed address space '%s' from block '%s'.\n",
                                     TRACE_CHILD,
                                     nullptr};
constexpr ChildTexts kMemoryMapTexts{"Created memory map '%s' on block '%s'.\n",
                                     TRACE_CHILD,
                                     "Failed to create memory map '%s' on block '%s'.\n",
                                     "Removed memory map '%s' from block '%s'.\n",
                                     TRACE_CHILD,
                                     nullptr};
constexpr ChildTexts kInterfaceTexts{"Created interface '%s' on block '%s'.\n",
                                     TRACE_CHILD,
                                     "Failed to create interface '%s' on block '%s'.\n",
                                     "Removed interface '%s' from block '%s'.\n",
                                     TRACE_CHILD,
                                     "interface_%d"};
constexpr ChildTexts kBridgeTexts{
    "Created bridge '%s' on block '%s'.\n",   TRACE_CHILD, "Failed to create bridge '%s' on block '%s'.\n",
    "Removed bridge '%s' from block '%s'.\n", TRACE_CHILD, "bridge_%d"};
constexpr ChildTexts kInterfaceConnectionTexts{"Created interface connection '%s' on block '%s'.\n",
                                               TRACE_CHILD,
                                               "Failed to create interface connection '%s' on block '%s'.\n",
                                               "Removed interface connection '%s' from block '%s'.\n",
                                               TRACE_CHILD,
                                               "interface_connection_%d"};
constexpr ChildTexts kAddrAssignTexts{
    "Created address assignment '%s' on block '%s'.\n",   TRACE_CHILD, nullptr,
    "Removed address assignment '%s' from block '%s'.\n", TRACE_CHILD, "assignment_%d"};

// Replaces the value of an existing child, or creates it first when asked to.
template <class T, class Create>
T* setChildValue(HABMChildList<T> const& list, std::string const& name, std::string const& value, bool create,
                 Create&& createEmpty) {
  T* child = list.get(name);
  if (child == nullptr) {
    if (!create) {
      return nullptr;
    }
    child = createEmpty();
    if (child == nullptr) {
      return nullptr;
    }
  }
  child->setValue(value);
  return child;
}

// Finds one child of a kind that lives directly on a block: the path's head names the holding block (at
// most one level unless `recursive`), its tail the child.
template <class T>
T* findChild(HABMBlock const& block, std::string const& path, bool recursive,
             T* (HABMBlock::*get)(std::string const&) const) {
  std::string const rel = HABMPath::get_relative_path(block, path);
  std::string const head = HABMPath::get_path_head(rel);
  HABMBlock const* holder = head.empty() ? &block : block.findSubBlock(head, recursive);
  return holder == nullptr ? nullptr : (holder->*get)(HABMPath::get_path_tail(rel));
}

// Finds the children of a kind whose full path matches: this block's in container order, then, with
// `recursive`, each sub-block's. `children(block)` lists a block's own, `pathOf(child)` gives its path.
template <class T, class Children, class PathOf>
void findChildren(HABMBlock const& block, std::string const& pattern, bool recursive,
                  Children const& children, PathOf const& pathOf, std::vector<T*>& out) {
  for (T* child : children(block)) {
    if (pattern.empty() || HABMUtils::wildcard_match(pattern, pathOf(*child))) {
      out.push_back(child);
    }
  }
  if (recursive) {
    for (HABMBlock const* sub : block.getSubBlocks()) {
      findChildren(*sub, pattern, recursive, children, pathOf, out);
    }
  }
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

bool vlnvLibraryIs(std::string const& vlnv, std::initializer_list<char const*> libraries) {
  std::string vendor;
  std::string library;
  std::string name;
  std::string version;
  if (!HABMUtils::splitVLNV(vlnv, vendor, library, name, version)) {
    return false;
  }
  return std::any_of(libraries.begin(), libraries.end(),
                     [&](char const* wanted) { return boost::algorithm::iequals(library, wanted); });
}

bool attributeIsTrue(HABMBlock const& block, std::string const& name) {
  HABMAttribute const* attribute = block.getAttribute(name);
  return attribute != nullptr && boost::algorithm::iequals(attribute->getValue(), "true");
}

struct LockStateText {
  HABMBlock::LockState state;
  char const* text;
};

// UNKNOWN has no text: it is what every other text reads as.
constexpr LockStateText kLockStateTexts[] = {{HABMBlock::LOCKED, "locked"},
                                             {HABMBlock::UNLOCKED, "unlocked"}};

template <class T, template <class> class List>
bool namesAreValid(List<T> const& list) {
  auto const all = list.list();
  return std::none_of(all.begin(), all.end(),
                      [](T const* item) { return isRefusedName(HABMChildName<T>::of(*item)); });
}

// A port connection is a net from one port to others: a join of its ends for the traces.
std::string joinTargets(std::set<std::string> const& targets) {
  return boost::algorithm::join(targets, ", ");
}

}  // namespace

// Construction and factories.

HABMBlock::HABMBlock(std::string const& moduleName)
    : moduleName_(moduleName), baseAddress_(HABMAddrValue::CONST_0()) {}

HABMBlock::HABMBlock(HABMBlock const* parent, std::string const& instanceName, std::string const& moduleName)
    : parent_(parent),
      moduleName_(moduleName),
      baseAddress_(HABMAddrValue::CONST_0()),
      instanceName_(instanceName) {}

HABMBlock::~HABMBlock() = default;

std::unique_ptr<HABMBlock> HABMBlock::createTopBlock(std::string const& moduleName) {
  std::unique_ptr<HABMBlock> block(new HABMBlock(moduleName));
  HABM_TRACE(TRACE_BLOCK, "Created new top-block module '%s'.\n", moduleName.c_str());
  return block;
}

std::unique_ptr<HABMBlock> HABMBlock::readTopBlock(HUTFile const& file) {
  std::string baseName;
  file.getBaseName(baseName);
  std::unique_ptr<HABMBlock> block = createTopBlock(baseName);
  if (!HABMJsonReader::readBlock(file, *block, HABMJsonReader::MODE_REPLACE)) {
    block.reset();
  }
  return block;
}

bool HABMBlock::writeTopBlock(HUTFile const& file, HABMBlock const& block, bool const& removeFirst) {
  return HABMJsonWriter::writeBlock(file, block, removeFirst);
}

// Identity and tree.

void HABMBlock::setInstanceName(std::string const& instanceName) {
  std::string const oldName = instanceName_;
  instanceName_ = instanceName;
  if (parent_ != nullptr) {
    parent_->subBlocks_.renamed(*this, oldName);
  }
}

HABMBlock const* HABMBlock::getTop() const {
  HABMBlock const* block = this;
  while (block->parent_ != nullptr) {
    block = block->parent_;
  }
  return block;
}

HABMBlock* HABMBlock::getTop() {
  return const_cast<HABMBlock*>(static_cast<HABMBlock const*>(this)->getTop());
}

std::string HABMBlock::getInstancePath() const {
  if (parent_ == nullptr) {
    return std::string(1, HABMPath::SEPARATOR());
  }
  return HABMPath::terminate(parent_->getInstancePath()) + instanceName_;
}

int HABMBlock::getInstanceDepth() const {
  std::string const path = HABMPath::terminate(getInstancePath());
  return static_cast<int>(std::count(path.begin(), path.end(), HABMPath::SEPARATOR())) - 1;
}

HABMBlock const* HABMBlock::getRswAncestor() const {
  for (HABMBlock const* block = parent_; block != nullptr; block = block->parent_) {
    if (block->isBlockRsw()) {
      return block;
    }
  }
  return nullptr;
}

bool HABMBlock::isVisible() const {
  for (HABMBlock const* block = parent_; block != nullptr; block = block->parent_) {
    if (!block->transparent_) {
      return false;
    }
  }
  return true;
}

// Flags.

bool HABMBlock::isLocked() const {
  if (HPAParamMgr::getParamMgr().getValueIfExistAsBool("project.ignoreModularNocLocks", false)) {
    return false;
  }
  for (HABMBlock const* block = this; block != nullptr; block = block->parent_) {
    switch (block->lockState_) {
      case LOCKED:
        return true;
      case UNLOCKED:
        return false;
      case UNKNOWN:
        break;
    }
  }
  return false;
}

HABMBlock::LockState HABMBlock::encodeLockState(std::string text) {
  boost::algorithm::to_lower(text);
  for (auto const& entry : kLockStateTexts) {
    if (text == entry.text) {
      return entry.state;
    }
  }
  return UNKNOWN;
}

std::string HABMBlock::decodeLockState(LockState const& state) {
  for (auto const& entry : kLockStateTexts) {
    if (entry.state == state) {
      return entry.text;
    }
  }
  return std::string();
}

// Kinds.

bool HABMBlock::isIP() const {
  return vlnvLibraryIs(moduleVlnv_, {"ip"});
}
bool HABMBlock::isBlockDesign() const {
  return vlnvLibraryIs(moduleVlnv_, {"blockdesign", "blockdiagram"});
}
bool HABMBlock::isBlockDesignRef() const {
  return vlnvLibraryIs(moduleVlnv_, {"blockdesign_ref"});
}
bool HABMBlock::isModuleRef() const {
  return vlnvLibraryIs(moduleVlnv_, {"module_ref"});
}
bool HABMBlock::isPrimitive() const {
  return getAttribute(HABMAttribute::PRIMITIVE()) != nullptr;
}
bool HABMBlock::isOpmModule() const {
  return getAttribute(HABMAttribute::OPM_MODULE()) != nullptr;
}
bool HABMBlock::isOpmNocModule() const {
  return getAttribute(HABMAttribute::OPM_NOC()) != nullptr;
}
bool HABMBlock::isBlackBox() const {
  return attributeIsTrue(*this, HABMAttribute::BLACK_BOX());
}
bool HABMBlock::isBlockStub() const {
  return attributeIsTrue(*this, HABMAttribute::BLOCK_STUB());
}
bool HABMBlock::isBlockRsw() const {
  return attributeIsTrue(*this, HABMAttribute::BLOCK_RSW());
}

bool HABMBlock::hasOpmNocModule() const {
  if (isOpmNocModule()) {
    return true;
  }
  auto const below = findSubBlocks(std::string(), true);
  return std::any_of(below.begin(), below.end(),
                     [](HABMBlock const* block) { return block->isOpmNocModule(); });
}

void HABMBlock::setFlagAttribute(std::string const& name, bool on) {
  if (on) {
    setAttribute(name, "true", true);
  } else {
    removeAttribute(name);
  }
}

void HABMBlock::setBlackBox(bool const& on) {
  setFlagAttribute(HABMAttribute::BLACK_BOX(), on);
}
void HABMBlock::setBlockStub(bool const& on) {
  setFlagAttribute(HABMAttribute::BLOCK_STUB(), on);
}
void HABMBlock::setBlockRsw(bool const& on) {
  setFlagAttribute(HABMAttribute::BLOCK_RSW(), on);
}

// Attributes, generics, parameters: each kind is its table row and one-line forwards.

HABMAttribute* HABMBlock::createAttribute(std::string const& name, std::string const& value) {
  return createChild(*this, attributes_, kAttributeTexts, name, false,
                     [&](std::string const& n) { return std::make_unique<HABMAttribute>(n, value); });
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
  return removeChild(*this, attributes_, kAttributeTexts, name);
}
void HABMBlock::clearAttributes() {
  attributes_.clear();
}
HABMAttribute* HABMBlock::setAttribute(std::string const& name, std::string const& value,
                                       bool const& create) {
  return setChildValue(attributes_, name, value, create,
                       [&] { return createAttribute(name, std::string()); });
}
HABMAttribute* HABMBlock::findAttribute(std::string const& path, bool const& recursive) const {
  return findChild(*this, path, recursive, &HABMBlock::getAttribute);
}

HABMGeneric* HABMBlock::createGeneric(std::string const& name, std::string const& value) {
  return createChild(*this, generics_, kGenericTexts, name, false,
                     [&](std::string const& n) { return std::make_unique<HABMGeneric>(n, value); });
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
  return removeChild(*this, generics_, kGenericTexts, name);
}
void HABMBlock::clearGenerics() {
  generics_.clear();
}
HABMGeneric* HABMBlock::setGeneric(std::string const& name, std::string const& value, bool const& create) {
  return setChildValue(generics_, name, value, create, [&] { return createGeneric(name, std::string()); });
}
HABMGeneric* HABMBlock::findGeneric(std::string const& path, bool const& recursive) const {
  return findChild(*this, path, recursive, &HABMBlock::getGeneric);
}

HABMParameter* HABMBlock::createParameter(std::string const& name, std::string const& value) {
  return createChild(*this, parameters_, kParameterTexts, name, false,
                     [&](std::string const& n) { return std::make_unique<HABMParameter>(n, value); });
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
  return removeChild(*this, parameters_, kParameterTexts, name);
}
void HABMBlock::clearParameters() {
  parameters_.clear();
}
HABMParameter* HABMBlock::setParameter(std::string const& name, std::string const& value,
                                       bool const& create) {
  return setChildValue(parameters_, name, value, create,
                       [&] { return createParameter(name, std::string()); });
}
HABMParameter* HABMBlock::findParameter(std::string const& path, bool const& recursive) const {
  return findChild(*this, path, recursive, &HABMBlock::getParameter);
}

// Sub-blocks.

HABMBlock* HABMBlock::createSubBlock(std::string const& instanceName, std::string const& moduleName,
                                     bool const& force) {
  return createChild(*this, subBlocks_, kSubBlockTexts, instanceName, force, [&](std::string const& n) {
    return std::unique_ptr<HABMBlock>(new HABMBlock(this, n, moduleName));
  });
}

HABMBlock* HABMBlock::insertSubBlock(std::string const& instanceName, std::unique_ptr<HABMBlock>& block,
                                     bool const& force) {
  // Adopting a block that holds this one (or this one itself) would make the tree own itself.
  bool const holdsThis = block != nullptr && getTop() == block.get();
  if (block == nullptr || holdsThis || block->parent_ != nullptr || isRefusedName(instanceName) ||
      (!force && subBlocks_.has(instanceName))) {
    HABM_TRACE(TRACE_BLOCK, "Failed to insert sub-block '%s' in block '%s'.\n", instanceName.c_str(),
               getInstancePath().c_str());
    return nullptr;
  }
  block->setParent(this);
  block->instanceName_ = instanceName;
  HABMBlock* inserted = subBlocks_.append(std::move(block));
  HABM_TRACE(TRACE_BLOCK, "Inserted sub-block '%s' into block '%s'.\n", inserted->getInstancePath().c_str(),
             getInstancePath().c_str());
  return inserted;
}

std::unique_ptr<HABMBlock> HABMBlock::removeSubBlock(std::string const& instanceName) {
  std::string const name = instanceName;  // the request may be the child's own name, about to be cleared
  std::unique_ptr<HABMBlock> block = subBlocks_.take(name);
  if (block == nullptr) {
    return nullptr;
  }
  block->setParent(nullptr);
  block->instanceName_.clear();
  HABM_TRACE(kSubBlockTexts.removedMask, kSubBlockTexts.removed, name.c_str(), getInstancePath().c_str());
  return block;
}

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
  subBlocks_.clear();
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
  std::vector<HABMBlock*> out;
  if (!pattern.empty()) {
    for (HABMBlock* block : findSubBlocks(std::string(), recursive)) {
      if (HABMUtils::wildcard_match(pattern, block->moduleName_)) {
        out.push_back(block);
      }
    }
  }
  return out;
}

std::vector<HABMBlock*> HABMBlock::findSubBlocksByVlnv(std::string const& pattern,
                                                       bool const& recursive) const {
  std::vector<HABMBlock*> out;
  if (!pattern.empty()) {
    for (HABMBlock* block : findSubBlocks(std::string(), recursive)) {
      if (HABMUtils::wildcard_match(pattern, block->moduleVlnv_)) {
        out.push_back(block);
      }
    }
  }
  return out;
}

bool HABMBlock::hasSubBlock(HABMBlock const* block, bool const& recursive) const {
  if (block == nullptr) {
    return false;
  }
  auto const all = findSubBlocks(std::string(), recursive);
  return std::find(all.begin(), all.end(), block) != all.end();
}

// Address spaces, memory maps and address assignments.

HABMAddrSpace* HABMBlock::createAddrSpace(std::string const& name) {
  return createChild(*this, addrSpaces_, kAddrSpaceTexts, name, false, [&](std::string const& n) {
    return std::unique_ptr<HABMAddrSpace>(new HABMAddrSpace(this, n));
  });
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
  return removeChild(*this, addrSpaces_, kAddrSpaceTexts, name);
}
void HABMBlock::clearAddrSpaces() {
  addrSpaces_.clear();
}
HABMAddrSpace* HABMBlock::findAddrSpace(std::string const& path, bool const& recursive) const {
  return findChild(*this, path, recursive, &HABMBlock::getAddrSpace);
}
std::vector<HABMAddrSpace*> HABMBlock::findAddrSpaces(std::string const& pattern,
                                                      bool const& recursive) const {
  std::vector<HABMAddrSpace*> out;
  findChildren(
      *this, pattern, recursive, [](HABMBlock const& b) { return b.getAddrSpaces(); },
      [](HABMAddrSpace const& space) { return space.getPath(); }, out);
  return out;
}
// Nested kinds take the head of the path to their holder, which makes it relative.
HABMAddrSegment* HABMBlock::findAddrSegment(std::string const& path, bool const& recursive) const {
  HABMAddrSpace const* space = findAddrSpace(HABMPath::get_path_head(path), recursive);
  return space == nullptr ? nullptr : space->getAddrSegment(HABMPath::get_path_tail(path));
}

HABMMemoryMap* HABMBlock::createMemoryMap(std::string const& name) {
  return createChild(*this, memoryMaps_, kMemoryMapTexts, name, false, [&](std::string const& n) {
    return std::unique_ptr<HABMMemoryMap>(new HABMMemoryMap(this, n));
  });
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
  return removeChild(*this, memoryMaps_, kMemoryMapTexts, name);
}
void HABMBlock::clearMemoryMaps() {
  memoryMaps_.clear();
}
HABMMemoryMap* HABMBlock::findMemoryMap(std::string const& path, bool const& recursive) const {
  return findChild(*this, path, recursive, &HABMBlock::getMemoryMap);
}
std::vector<HABMMemoryMap*> HABMBlock::findMemoryMaps(std::string const& pattern,
                                                      bool const& recursive) const {
  std::vector<HABMMemoryMap*> out;
  findChildren(
      *this, pattern, recursive, [](HABMBlock const& b) { return b.getMemoryMaps(); },
      [](HABMMemoryMap const& map) { return map.getPath(); }, out);
  return out;
}
HABMAddrBlock* HABMBlock::findAddrBlock(std::string const& path, bool const& recursive) const {
  HABMMemoryMap const* map = findMemoryMap(HABMPath::get_path_head(path), recursive);
  return map == nullptr ? nullptr : map->getAddrBlock(HABMPath::get_path_tail(path));
}
std::vector<HABMAddrBlock*> HABMBlock::findAddrBlocks(std::string const& pattern,
                                                      bool const& recursive) const {
  auto const blocksOf = [](HABMBlock const& b) {
    std::vector<HABMAddrBlock*> all;
    for (HABMMemoryMap const* map : b.getMemoryMaps()) {
      std::vector<HABMAddrBlock*> const blocks = map->getAddrBlocks();
      all.insert(all.end(), blocks.begin(), blocks.end());
    }
    return all;
  };
  std::vector<HABMAddrBlock*> out;
  findChildren(
      *this, pattern, recursive, blocksOf, [](HABMAddrBlock const& block) { return block.getPath(); }, out);
  return out;
}
HABMRegister* HABMBlock::findRegister(std::string const& path, bool const& recursive) const {
  HABMAddrBlock const* block = findAddrBlock(HABMPath::get_path_head(path), recursive);
  return block == nullptr ? nullptr : block->getRegister(HABMPath::get_path_tail(path));
}
std::vector<HABMRegister*> HABMBlock::findRegisters(std::string const& pattern, bool const& recursive) const {
  auto const registersOf = [](HABMBlock const& b) {
    std::vector<HABMRegister*> all;
    for (HABMMemoryMap const* map : b.getMemoryMaps()) {
      for (HABMAddrBlock const* block : map->getAddrBlocks()) {
        std::vector<HABMRegister*> const registers = block->getRegisters();
        all.insert(all.end(), registers.begin(), registers.end());
      }
    }
    return all;
  };
  std::vector<HABMRegister*> out;
  findChildren(
      *this, pattern, recursive, registersOf, [](HABMRegister const& reg) { return reg.getPath(); }, out);
  return out;
}

HABMAddrAssign* HABMBlock::createAddrAssign(std::string const& name) {
  return createChild(*this, addrAssigns_, kAddrAssignTexts, name, false, [&](std::string const& n) {
    return std::unique_ptr<HABMAddrAssign>(new HABMAddrAssign(this, n));
  });
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
  return removeChild(*this, addrAssigns_, kAddrAssignTexts, name);
}
void HABMBlock::clearAddrAssigns() {
  addrAssigns_.clear();
}
HABMAddrAssign* HABMBlock::findAddrAssign(std::string const& path, bool const& recursive) const {
  return findChild(*this, path, recursive, &HABMBlock::getAddrAssign);
}
std::vector<HABMAddrAssign*> HABMBlock::findAddrAssigns(std::string const& pattern,
                                                        bool const& recursive) const {
  std::vector<HABMAddrAssign*> out;
  findChildren(
      *this, pattern, recursive, [](HABMBlock const& b) { return b.getAddrAssigns(); },
      [](HABMAddrAssign const& assign) { return assign.getPath(); }, out);
  return out;
}

// Spaces and maps are declared, never derived from what the block already holds.
void HABMBlock::inferAddrSpaces() {}
void HABMBlock::inferMemoryMaps() {}

bool HABMBlock::checkAddrMaps() const {
  bool ok = addrSpaces_.checkIndex() && memoryMaps_.checkIndex() && addrAssigns_.checkIndex() &&
            namesAreValid(addrSpaces_) && namesAreValid(memoryMaps_) && namesAreValid(addrAssigns_);
  for (auto const& space : addrSpaces_.items()) {
    ok = ok && space->getParent() == this && space->check();
  }
  for (auto const& map : memoryMaps_.items()) {
    ok = ok && map->getParent() == this && map->check();
  }
  for (auto const& assign : addrAssigns_.items()) {
    ok = ok && assign->getParent() == this;
  }
  return ok;
}

bool HABMBlock::check() const {
  bool ok = attributes_.checkIndex() && generics_.checkIndex() && parameters_.checkIndex() &&
            ports_.checkIndex() && subBlocks_.checkIndex() && portConnections_.checkIndex() &&
            namesAreValid(attributes_) && namesAreValid(generics_) && namesAreValid(parameters_) &&
            namesAreValid(ports_) && namesAreValid(subBlocks_) && namesAreValid(portConnections_);
  for (auto const* port : ports_.list()) {
    ok = ok && &port->getParent() == this;
  }
  for (auto const* connection : portConnections_.list()) {
    ok = ok && &connection->getParent() == this;
  }
  ok = ok && checkAddrMaps() && checkInterfaces();
  for (auto const& sub : subBlocks_.items()) {
    ok = ok && sub->parent_ == this && sub->check();
  }
  return ok;
}

// Ports.

HABMPort* HABMBlock::createPort(std::string const& name, bool const& force) {
  return createChild(*this, ports_, kPortTexts, name, force,
                     [&](std::string const& n) { return std::unique_ptr<HABMPort>(new HABMPort(*this, n)); });
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
  return removeChild(*this, ports_, kPortTexts, name);
}
void HABMBlock::clearPorts() {
  ports_.clear();
}
HABMPort* HABMBlock::findPort(std::string const& path, bool const& recursive) const {
  return findChild(*this, path, recursive, &HABMBlock::getPort);
}
std::vector<HABMPort*> HABMBlock::findPorts(std::string const& pattern, bool const& recursive) const {
  std::vector<HABMPort*> out;
  findChildren(
      *this, pattern, recursive, [](HABMBlock const& b) { return b.getPorts(); },
      [](HABMPort const& p) { return p.getPortPath(); }, out);
  return out;
}
std::vector<HABMPort*> HABMBlock::getInputPorts() const {
  std::vector<HABMPort*> out;
  for (HABMPort* port : ports_.list()) {
    if (port->isTargetPort()) {
      out.push_back(port);
    }
  }
  return out;
}
std::vector<HABMPort*> HABMBlock::getOutputPorts() const {
  std::vector<HABMPort*> out;
  for (HABMPort* port : ports_.list()) {
    if (port->isSourcePort()) {
      out.push_back(port);
    }
  }
  return out;
}

// Port connections.

HABMPortConnection* HABMBlock::createPortConnection(std::string const& name, bool const& force) {
  return createChild(*this, portConnections_, kPortConnectionTexts, name, force, [&](std::string const& n) {
    return std::unique_ptr<HABMPortConnection>(new HABMPortConnection(*this, n, HABMPortConnection::SOFT));
  });
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
  return removeChild(*this, portConnections_, kPortConnectionTexts, name);
}
void HABMBlock::clearPortConnections() {
  portConnections_.clear();
}
HABMPortConnection* HABMBlock::findPortConnection(std::string const& path, bool const& recursive) const {
  return findChild(*this, path, recursive, &HABMBlock::getPortConnection);
}
std::vector<HABMPortConnection*> HABMBlock::findPortConnections(std::string const& pattern,
                                                                bool const& recursive) const {
  std::vector<HABMPortConnection*> out;
  findChildren(
      *this, pattern, recursive, [](HABMBlock const& b) { return b.getPortConnections(); },
      [](HABMPortConnection const& c) { return c.getPath(); }, out);
  return out;
}

// Bus interfaces, bridges and interface connections.

std::string const& HABMChildName<HABMInterface>::of(HABMInterface const& iface) {
  return iface.getInterfaceName();
}

HABMInterface* HABMBlock::createInterface(std::string const& name, bool const& force) {
  return createChild(*this, interfaces_, kInterfaceTexts, name, force, [&](std::string const& n) {
    return std::unique_ptr<HABMInterface>(new HABMInterface(*this, n));
  });
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
  return removeChild(*this, interfaces_, kInterfaceTexts, name);
}
void HABMBlock::clearInterfaces() {
  interfaces_.clear();
}
HABMInterface* HABMBlock::findInterface(std::string const& path, bool const& recursive) const {
  return findChild(*this, path, recursive, &HABMBlock::getInterface);
}
std::vector<HABMInterface*> HABMBlock::findInterfaces(std::string const& pattern,
                                                      bool const& recursive) const {
  std::vector<HABMInterface*> out;
  findChildren(
      *this, pattern, recursive, [](HABMBlock const& b) { return b.getInterfaces(); },
      [](HABMInterface const& i) { return i.getInterfacePath(); }, out);
  return out;
}

HABMBridge* HABMBlock::createBridge(std::string const& name) {
  return createChild(*this, bridges_, kBridgeTexts, name, false, [&](std::string const& n) {
    return std::unique_ptr<HABMBridge>(new HABMBridge(this, n));
  });
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
  return removeChild(*this, bridges_, kBridgeTexts, name);
}
void HABMBlock::clearBridges() {
  bridges_.clear();
}

HABMInterfaceConnection* HABMBlock::createInterfaceConnection(std::string const& name, bool const& force) {
  return createChild(*this, interfaceConnections_, kInterfaceConnectionTexts, name, force,
                     [&](std::string const& n) {
                       return std::unique_ptr<HABMInterfaceConnection>(
                           new HABMInterfaceConnection(this, n, HABMPortConnection::SOFT));
                     });
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
  return removeChild(*this, interfaceConnections_, kInterfaceConnectionTexts, name);
}
void HABMBlock::clearInterfaceConnections() {
  interfaceConnections_.clear();
}
HABMInterfaceConnection* HABMBlock::findInterfaceConnection(std::string const& path,
                                                            bool const& recursive) const {
  return findChild(*this, path, recursive, &HABMBlock::getInterfaceConnection);
}
std::vector<HABMInterfaceConnection*> HABMBlock::findInterfaceConnections(std::string const& pattern,
                                                                          bool const& recursive) const {
  std::vector<HABMInterfaceConnection*> out;
  findChildren(
      *this, pattern, recursive, [](HABMBlock const& b) { return b.getInterfaceConnections(); },
      [](HABMInterfaceConnection const& c) { return c.getPath(); }, out);
  return out;
}

bool HABMBlock::checkInterfaces() const {
  bool ok = interfaces_.checkIndex() && bridges_.checkIndex() && interfaceConnections_.checkIndex() &&
            namesAreValid(interfaces_) && namesAreValid(bridges_) && namesAreValid(interfaceConnections_);
  for (auto const& iface : interfaces_.items()) {
    ok = ok && &iface->getParent() == this && iface->check();
  }
  for (auto const& bridge : bridges_.items()) {
    ok = ok && bridge->getParent() == this;
  }
  for (auto const& connection : interfaceConnections_.items()) {
    ok = ok && connection->getParent() == this;
  }
  return ok;
}

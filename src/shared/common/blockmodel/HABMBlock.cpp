// HABMBlock.cpp: a block's identity, its place in the tree, its flags and kinds, and the moves of whole
// sub-blocks.
#include "blockmodel/HABMBlock.h"

#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMJsonReader.h"
#include "blockmodel/HABMJsonWriter.h"
#include "blockmodel/HABMPath.h"
#include "blockmodel/HABMUtils.h"
#include "blockmodel/detail/HABMEnumTable.h"
#include "blockmodel/detail/HABMKinds.h"
#include "blockmodel/detail/HABMTrace.h"
#include "param/HPAParamMgr.h"
#include "util/HUTFile.h"

#include <boost/algorithm/string/predicate.hpp>

#include <algorithm>
#include <initializer_list>
#include <utility>

using habm_detail::ChildKind;
using habm_detail::isRefusedName;
using habm_detail::TRACE_BLOCK;
using SubBlockKind = habm_detail::Kind<ChildKind::SUB_BLOCK>;

std::string const& HABMChildName<HABMBlock>::of(HABMBlock const& block) {
  return block.getInstanceName();
}

namespace {

constexpr habm_detail::EnumTable<HABMBlock::LockState, HABMBlock::UNKNOWN> kLockStates{
    habm_detail::Fold::LOWER, {{{HABMBlock::LOCKED, "locked"}, {HABMBlock::UNLOCKED, "unlocked"}}}};
static_assert(kLockStates.complete(), "one text per lock state");

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

// Clears the containers of a list of kinds, in the list's order.
template <class Kinds>
void clearKinds(HABMBlock& block, Kinds kinds) {
  habm_detail::forEachKind(kinds, [&](auto kind) { decltype(kind)::list(block).clear(); });
}

}  // namespace

// Construction and factories.

HABMBlock::HABMBlock(std::string const& moduleName) : HABMBlock(nullptr, std::string(), moduleName) {}

HABMBlock::HABMBlock(HABMBlock* parent, std::string const& instanceName, std::string const& moduleName)
    : parent_(parent),
      moduleName_(moduleName),
      baseAddress_(HABMAddrValue::CONST_0()),
      instanceName_(instanceName),
      ports_(HABMChildList<HABMPort>::Keys::UNIQUE) {}

HABMBlock::~HABMBlock() {
  leaveObjectCaches();
  ports_.clear();
  // The containers declared after the sub-blocks go first, as member destruction would have it; then the
  // subtree, on a stack of our own, so that a deep hierarchy does not exhaust the thread's: each block is
  // destroyed once its sub-blocks are gone, and its destructor then has nothing below it to recurse into.
  addrAssigns_.clear();
  nocConnections_.clear();
  interfaceConnections_.clear();
  portConnections_.clear();
  // Without memory for the stack the blocks left are destroyed the plain way, as members.
  try {
    tearDownSubBlocks();
  } catch (...) {
  }
}

void HABMBlock::tearDownSubBlocks() {
  struct Frame {
    std::unique_ptr<HABMBlock> self;
    std::vector<std::unique_ptr<HABMBlock>> subBlocks;
    std::size_t next = 0;
  };
  std::vector<Frame> stack;
  stack.push_back({nullptr, subBlocks_.takeAll()});
  while (!stack.empty()) {
    Frame& frame = stack.back();
    if (frame.next < frame.subBlocks.size()) {
      std::unique_ptr<HABMBlock> sub = std::move(frame.subBlocks[frame.next++]);
      sub->leaveObjectCaches();
      sub->ports_.clear();
      sub->addrAssigns_.clear();
      sub->nocConnections_.clear();
      sub->interfaceConnections_.clear();
      sub->portConnections_.clear();
      std::vector<std::unique_ptr<HABMBlock>> below = sub->subBlocks_.takeAll();
      stack.push_back({std::move(sub), std::move(below)});
    } else {
      std::unique_ptr<HABMBlock> const done = std::move(frame.self);
      stack.pop_back();
    }
  }
}

std::unique_ptr<HABMBlock> HABMBlock::createTopBlock(std::string const& moduleName) {
  std::unique_ptr<HABMBlock> block(new HABMBlock(moduleName));
  HABM_TRACE(TRACE_BLOCK, "Created new top-block module '%s'.\n", moduleName.c_str());
  return block;
}

std::unique_ptr<HABMBlock> HABMBlock::readTopBlock(HUTFile const& file) {
  try {
    std::string baseName;
    file.getBaseName(baseName);
    return HABMJsonReader::readTopBlock(file, baseName);
  } catch (...) {
    // Out of memory before the read began: a failed read like any other.
    HABMJsonReader::reportFailedRead(file.getPath());
    return nullptr;
  }
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
  HABMBlock* block = this;
  while (block->parent_ != nullptr) {
    block = block->parent_;
  }
  return block;
}

std::string HABMBlock::getInstancePath() const {
  // Each level terminates the path above it and appends its name, top down; built in one buffer, so that
  // it is linear in the depth and needs no recursion.
  std::vector<HABMBlock const*> chain;
  std::size_t length = 1;
  for (HABMBlock const* block = this; block->parent_ != nullptr; block = block->parent_) {
    chain.push_back(block);
    length += block->instanceName_.size() + 1;
  }
  std::string path(1, HABMPath::SEPARATOR());
  path.reserve(length);
  for (auto it = chain.rbegin(); it != chain.rend(); ++it) {
    if (path.back() != HABMPath::SEPARATOR()) {
      path += HABMPath::SEPARATOR();
    }
    path += (*it)->instanceName_;
  }
  return path;
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
  return kLockStates.encode(text);
}

std::string HABMBlock::decodeLockState(LockState const& state) {
  return kLockStates.decode(state);
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

// Whole sub-blocks: created, adopted and detached.

HABMBlock* HABMBlock::createSubBlock(std::string const& instanceName, std::string const& moduleName,
                                     bool const& force) {
  return habm_detail::createChild<SubBlockKind>(*this, instanceName, force, moduleName).child;
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
  HABM_TRACE(SubBlockKind::TEXTS.removedMask, SubBlockKind::TEXTS.removed, name.c_str(),
             getInstancePath().c_str());
  return block;
}

// Grouped clears.

void HABMBlock::clearConfiguration() {
  clearKinds(*this, habm_detail::ClearConfiguration{});
}
void HABMBlock::clearBoundary() {
  clearKinds(*this, habm_detail::ClearBoundary{});
}
void HABMBlock::clearContents() {
  clearKinds(*this, habm_detail::ClearContents{});
}

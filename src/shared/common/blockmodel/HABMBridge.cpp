// HABMBridge.cpp: resolution of a bridge's ends and its bridge check.
#include "blockmodel/HABMBridge.h"

#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMPath.h"

#include <utility>

HABMBridge::HABMBridge(HABMBlock* parent, std::string name) : parent_(parent), name_(std::move(name)) {}

std::string HABMBridge::getPath() const {
  return HABMPath::terminate(parent_->getInstancePath()) + name_;
}

std::string HABMBridge::getSourcePath(bool const& absolute) const {
  return absolute ? HABMPath::get_absolute_path(*parent_, sourceName_) : sourceName_;
}

std::string HABMBridge::getTargetPath(bool const& absolute) const {
  return absolute ? HABMPath::get_absolute_path(*parent_, targetName_) : targetName_;
}

HABMInterface* HABMBridge::getSourceInterface() const {
  return parent_->getInterface(sourceName_);
}

HABMInterface* HABMBridge::getTargetInterface() const {
  return parent_->getInterface(targetName_);
}

bool HABMBridge::canBridge(HABMBlock const& block, std::string const& source, std::string const& target) {
  HABMInterface const* from = block.getInterface(source);
  HABMInterface const* to = block.getInterface(target);
  if (from == nullptr || to == nullptr || from == to) {
    return false;
  }
  // Seen from inside the block: a bridge is entered where the block is a slave and left where it masters.
  if (!from->isTargetInterface() || !to->isSourceInterface()) {
    return false;
  }
  return from->getInterfaceType() == to->getInterfaceType();
}

void HABMBridge::clone(HABMBridge const& source) {
  if (&source == this) {
    return;
  }
  name_ = source.name_;
  sourceName_ = source.sourceName_;
  targetName_ = source.targetName_;
  remaps_ = source.remaps_;
}

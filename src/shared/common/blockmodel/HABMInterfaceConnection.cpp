// HABMInterfaceConnection.cpp: path storage and resolution of a bus link, and its connect check.
#include "blockmodel/HABMInterfaceConnection.h"

#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMPath.h"

#include <utility>

HABMInterfaceConnection::HABMInterfaceConnection(HABMBlock* parent, std::string name,
                                                 ConnectionType const& connectionType)
    : parent_(parent), name_(std::move(name)), connectionType_(connectionType) {}

std::string HABMInterfaceConnection::getPath() const {
  return HABMPath::terminate(parent_->getInstancePath()) + name_;
}

HABMInterfaceConnection::ConnectionType HABMInterfaceConnection::encodeConnectionType(std::string text) {
  return HABMPortConnection::encodeConnectionType(std::move(text));
}

std::string HABMInterfaceConnection::decodeConnectionType(ConnectionType type) {
  return HABMPortConnection::decodeConnectionType(type);
}

bool HABMInterfaceConnection::setSourcePath(std::string const& path) {
  sourcePath_ = HABMPath::get_relative_path(*parent_, path);
  return HABMPath::is_valid(sourcePath_);
}

bool HABMInterfaceConnection::setTargetPath(std::string const& path) {
  targetPath_ = HABMPath::get_relative_path(*parent_, path);
  return HABMPath::is_valid(targetPath_);
}

std::string HABMInterfaceConnection::getSourcePath(bool const& absolute) const {
  return absolute ? HABMPath::get_absolute_path(*parent_, sourcePath_) : sourcePath_;
}

std::string HABMInterfaceConnection::getTargetPath(bool const& absolute) const {
  return absolute ? HABMPath::get_absolute_path(*parent_, targetPath_) : targetPath_;
}

HABMInterface* HABMInterfaceConnection::getSourceInterface() const {
  return parent_->findInterface(sourcePath_, true);
}

HABMInterface* HABMInterfaceConnection::getTargetInterface() const {
  return parent_->findInterface(targetPath_, true);
}

HABMInterface::InterfaceType HABMInterfaceConnection::getInterfaceType() const {
  if (HABMInterface const* source = getSourceInterface()) {
    return source->getInterfaceType();
  }
  if (HABMInterface const* target = getTargetInterface()) {
    return target->getInterfaceType();
  }
  return HABMInterface::TYPE_UNKNOWN;
}

bool HABMInterfaceConnection::isValid() const {
  return getSourceInterface() != nullptr && getTargetInterface() != nullptr;
}

bool HABMInterfaceConnection::isAddressable() const {
  HABMInterface::InterfaceType const type = getInterfaceType();
  return type == HABMInterface::TYPE_AXIMM || type == HABMInterface::TYPE_INIMM;
}

bool HABMInterfaceConnection::isVisible() const {
  return parent_->getTransparent() && parent_->isVisible();
}

bool HABMInterfaceConnection::canConnect(HABMBlock const& block, std::string const& source,
                                         std::string const& target) {
  // The check looks one level down only; a forced connection may reach deeper.
  HABMInterface const* from = block.findInterface(HABMPath::get_relative_path(block, source), false);
  HABMInterface const* to = block.findInterface(HABMPath::get_relative_path(block, target), false);
  if (from == nullptr || to == nullptr || from == to) {
    return false;
  }
  return from->getInterfaceType() == to->getInterfaceType();
}

void HABMInterfaceConnection::clone(HABMInterfaceConnection const& source) {
  if (&source == this) {
    return;
  }
  name_ = source.name_;
  connectionType_ = source.connectionType_;
  sourcePath_ = source.sourcePath_;
  targetPath_ = source.targetPath_;
}

// HABMNocTestUtil.h: a NoC interface made in one call for tests.
#pragma once

#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMNocInterface.h"

#include <string>

namespace habm_test {

/// A new NoC interface on `block` with the given mode, protocol and category.
inline HABMNocInterface* makeNocInterface(
    HABMBlock& block, std::string const& name, HABMNocInterface::NocMode mode,
    HABMNocInterface::NocProtocol protocol = HABMNocInterface::PROTOCOL_AXIMM,
    HABMNocInterface::NocCategory category = HABMNocInterface::CATEGORY_PL) {
  HABMNocInterface* iface = block.createNocInterface(name);
  iface->setNocMode(mode);
  iface->setNocProtocol(protocol);
  iface->setNocCategory(category);
  return iface;
}

}  // namespace habm_test

// HABMAbstractionDefinition.cpp: the list of logical ports of a bus abstraction and its look-ups.
#include "blockmodel/HABMAbstractionDefinition.h"

#include "blockmodel/HABMAbstractionDefinitionPort.h"

#include <utility>

void HABMAbstractionDefinition::addAbstractionDefinitionPort(std::string logicalName,
                                                             std::string slavePresence,
                                                             std::string masterPresence, bool onSlave,
                                                             bool onMaster, int slaveWidth, int masterWidth,
                                                             std::string const& slaveDirection,
                                                             std::string const& masterDirection) {
  ports_.push_back(std::make_shared<HABMAbstractionDefinitionPort>(
      std::move(logicalName), std::move(slavePresence), std::move(masterPresence), onSlave, onMaster,
      slaveWidth, masterWidth, slaveDirection, masterDirection));
}

std::shared_ptr<HABMAbstractionDefinitionPort> HABMAbstractionDefinition::findPortByLogicalName(
    std::string const& logicalName) const {
  for (auto const& port : ports_) {
    if (port->getLogicalName() == logicalName) {
      return port;
    }
  }
  return nullptr;
}

bool HABMAbstractionDefinition::isPortHavingVariableSize(std::string const& logicalName) const {
  auto const port = findPortByLogicalName(logicalName);
  return port != nullptr && (port->getMasterWidth() == -1 || port->getSlaveWidth() == -1);
}

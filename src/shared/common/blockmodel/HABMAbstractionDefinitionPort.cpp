// HABMAbstractionDefinitionPort.cpp: construction of one logical port of a bus abstraction.
#include "blockmodel/HABMAbstractionDefinitionPort.h"

#include <utility>

HABMAbstractionDefinitionPort::HABMAbstractionDefinitionPort(std::string logicalName,
                                                             std::string slavePresence,
                                                             std::string masterPresence, bool onSlave,
                                                             bool onMaster, int slaveWidth, int masterWidth,
                                                             std::string const& slaveDirection,
                                                             std::string const& masterDirection)
    : logicalName_(std::move(logicalName)),
      slavePresence_(std::move(slavePresence)),
      masterPresence_(std::move(masterPresence)),
      onSlave_(onSlave),
      onMaster_(onMaster),
      slaveDirection_(slaveDirection),
      masterDirection_(masterDirection),
      slaveWidth_(slaveWidth),
      masterWidth_(masterWidth) {}

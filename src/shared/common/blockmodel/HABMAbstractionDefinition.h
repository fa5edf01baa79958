// HABMAbstractionDefinition.h: the logical ports a bus has, shared between interfaces and the host.
#pragma once

#include <memory>
#include <string>
#include <vector>

class HABMAbstractionDefinitionPort;

/// The logical ports of a bus abstraction in order of addition. Copies share the port objects, so a port
/// handed out stays valid while anyone holds it. Filled only by the host.
class HABMAbstractionDefinition {
 public:
  /// The shared ports of a definition.
  using Ports = std::vector<std::shared_ptr<HABMAbstractionDefinitionPort>>;

  /// Appends a port built from the arguments, in the order of HABMAbstractionDefinitionPort's constructor;
  /// a duplicate logical name is not refused.
  void addAbstractionDefinitionPort(std::string logicalName, std::string slavePresence,
                                    std::string masterPresence, bool onSlave, bool onMaster, int slaveWidth,
                                    int masterWidth, std::string const& slaveDirection,
                                    std::string const& masterDirection);
  /// A copy of the list; the elements are the shared ports.
  Ports getAbstractionDefinitionPorts() const { return ports_; }
  /// The first port whose logical name matches exactly, case included; empty when there is none.
  std::shared_ptr<HABMAbstractionDefinitionPort> findPortByLogicalName(std::string const& logicalName) const;
  /// True when the port exists and either side's width is -1; false for an unknown name.
  bool isPortHavingVariableSize(std::string const& logicalName) const;

 private:
  Ports ports_;
};

// HABMAbstractionDefinitionPort.h: one logical port of a bus abstraction, with its two sides.
#pragma once

#include <string>

/// One logical port of a bus abstraction: its presence, direction and width on the slave and on the
/// master side (every pair slave first). Fixed at construction; a width of -1 means variable.
class HABMAbstractionDefinitionPort {
 public:
  /// Takes every field; the strings by value are moved in.
  HABMAbstractionDefinitionPort(std::string logicalName, std::string slavePresence,
                                std::string masterPresence, bool onSlave, bool onMaster, int slaveWidth,
                                int masterWidth, std::string const& slaveDirection,
                                std::string const& masterDirection);

  /// The logical port name.
  std::string const& getLogicalName() const { return logicalName_; }
  /// Presence on the slave side, as the definition words it.
  std::string const& getSlavePresence() const { return slavePresence_; }
  /// Presence on the master side, as the definition words it.
  std::string const& getMasterPresence() const { return masterPresence_; }
  /// True when the port exists on the slave side.
  bool getOnSlave() const { return onSlave_; }
  /// True when the port exists on the master side.
  bool getOnMaster() const { return onMaster_; }
  /// Direction on the slave side.
  std::string const& getSlaveDirection() const { return slaveDirection_; }
  /// Direction on the master side.
  std::string const& getMasterDirection() const { return masterDirection_; }
  /// Width on the slave side; -1 when variable.
  int getSlaveWidth() const { return slaveWidth_; }
  /// Width on the master side; -1 when variable.
  int getMasterWidth() const { return masterWidth_; }

 private:
  std::string logicalName_;
  std::string slavePresence_;
  std::string masterPresence_;
  bool onSlave_;
  bool onMaster_;
  std::string slaveDirection_;
  std::string masterDirection_;
  int slaveWidth_;
  int masterWidth_;
};

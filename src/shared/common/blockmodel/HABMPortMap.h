// HABMPortMap.h: which physical port of a block, and which bits of it, carry one logical port of an
// interface.
#pragma once

#include "blockmodel/HABMChildList.h"

#include <string>

class HABMInterface;

/// One logical port of a bus interface mapped onto a physical port of the interface's block, each side
/// with an optional bit range (-1 for none). The logical name keys the map within its interface and has
/// no setter. Made only by HABMInterface::createPortMap.
class HABMPortMap {
 public:
  HABMPortMap(HABMPortMap const&) = default;
  HABMPortMap(HABMPortMap&&) = default;
  HABMPortMap& operator=(HABMPortMap const&) = default;
  HABMPortMap& operator=(HABMPortMap&&) = default;
  ~HABMPortMap() = default;

  /// The logical port name of the bus definition.
  std::string const& getLogName() const { return logName_; }
  /// The physical port name on the interface's block; may be empty.
  std::string const& getPhyName() const { return phyName_; }
  /// Left bound of the logical range; -1 when there is none.
  int getLogLeft() const { return logLeft_; }
  /// Right bound of the logical range; -1 when there is none.
  int getLogRight() const { return logRight_; }
  /// Left bound of the physical range; -1 when there is none.
  int getPhyLeft() const { return phyLeft_; }
  /// Right bound of the physical range; -1 when there is none.
  int getPhyRight() const { return phyRight_; }

  /// Replaces the physical port name, unchecked.
  void setPhyName(std::string const& phyName) { phyName_ = phyName; }
  /// Sets the logical left bound, in the HDL's own order.
  void setLogLeft(int const& left) { logLeft_ = left; }
  /// Sets the logical right bound, in the HDL's own order.
  void setLogRight(int const& right) { logRight_ = right; }
  /// Sets the physical left bound, in the HDL's own order.
  void setPhyLeft(int const& left) { phyLeft_ = left; }
  /// Sets the physical right bound, in the HDL's own order.
  void setPhyRight(int const& right) { phyRight_ = right; }

 protected:
  friend class HABMInterface;
  template <habm_detail::ChildKind>
  friend struct habm_detail::Kind;

  HABMPortMap(std::string logName, std::string phyName);
  /// Copies all six fields, both names included.
  void clone(HABMPortMap const& source);

 private:
  std::string logName_;
  int logLeft_ = -1;
  int logRight_ = -1;
  std::string phyName_;
  int phyLeft_ = -1;
  int phyRight_ = -1;
};

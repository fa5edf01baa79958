// HABMBridge.h: a path through a block from one of its interfaces to another, with address remaps.
#pragma once

#include "blockmodel/HABMAddrRemap.h"
#include "blockmodel/HABMChildList.h"

#include <set>
#include <string>

class HABMBlock;
class HABMInterface;

/// Says that transactions entering a block at one interface leave it at another, optionally remapped.
/// The two ends are plain names of the block's own interfaces, resolved on each use. Made only by
/// HABMBlock::createBridge; not copyable.
class HABMBridge {
 public:
  HABMBridge(HABMBridge const&) = delete;
  HABMBridge& operator=(HABMBridge const&) = delete;

  /// The owning block; never null.
  HABMBlock const* getParent() const { return parent_; }
  /// The name, unique among the block's bridges.
  std::string const& getName() const { return name_; }
  /// The block's instance path, terminated, and the name.
  std::string getPath() const;

  /// The name of the interface where transactions enter; empty by default.
  std::string const& getSourceName() const { return sourceName_; }
  /// Stores the name unchecked, also when the block has no such interface.
  void setSourceName(std::string const& name) { sourceName_ = name; }
  /// The name of the interface where transactions leave; empty by default.
  std::string const& getTargetName() const { return targetName_; }
  /// Stores the name unchecked, also when the block has no such interface.
  void setTargetName(std::string const& name) { targetName_ = name; }
  /// The source name, or with `absolute` its path under the block's instance path.
  std::string getSourcePath(bool const& absolute) const;
  /// The target name, or with `absolute` its path under the block's instance path.
  std::string getTargetPath(bool const& absolute) const;
  /// The block's own interface of the source name, or null.
  HABMInterface* getSourceInterface() const;
  /// The block's own interface of the target name, or null.
  HABMInterface* getTargetInterface() const;

  /// The address translations across the bridge, in order.
  std::set<HABMAddrRemap> const& getRemaps() const { return remaps_; }
  /// Replaces the remaps.
  void setRemaps(std::set<HABMAddrRemap> const& remaps) { remaps_ = remaps; }
  /// True when there is a remap.
  bool hasRemaps() const { return !remaps_.empty(); }

  /// True when `source` and `target` name two distinct interfaces of `block` itself of one type, the
  /// source a target interface (a slave or monitor, where transactions enter) and the target a source
  /// interface (a master). Sends nothing.
  static bool canBridge(HABMBlock const& block, std::string const& source, std::string const& target);

 private:
  friend class HABMBlock;
  template <habm_detail::ChildKind>
  friend struct habm_detail::Kind;

  HABMBridge(HABMBlock* parent, std::string name);
  /// Copies the name, both interface names and the remaps.
  void clone(HABMBridge const& source);

  HABMBlock* parent_;
  std::string name_;
  std::string sourceName_;
  std::string targetName_;
  std::set<HABMAddrRemap> remaps_;
};

// HABMNocPath.h: a chain of NoC connections from an interface with nothing in front of it to one with
// nothing behind it, computed from a block's links on demand.
#pragma once

#include "blockmodel/HABMNocInterface.h"

#include <set>
#include <string>
#include <vector>

class HABMBlock;
class HABMNocConnection;

/// One route through the network as seen from a block: the chain of links, the interfaces it meets, the
/// real NMU and NSU at its ends and the primary link that holds its traffic parameters. A value that holds
/// plain pointers into the tree: valid only until the tree changes. Paths order and compare by name.
class HABMNocPath {
 public:
  /// A path from a chain of links, in order from the source; links with an end that does not resolve
  /// stay in the chain but add no interface.
  explicit HABMNocPath(std::vector<HABMNocConnection*> const& chain);

  /// Every path of the block, ordered by name: from each interface of its subtree that nothing inside
  /// the block feeds, along the links to each end; cycles end, dead ends that have links give nothing.
  /// Empty for a null block.
  static std::set<HABMNocPath> createNocPaths(HABMBlock const* block);

  /// The interface paths joined by "->".
  std::string const& getName() const { return name_; }
  /// The chain, from the source.
  std::vector<HABMNocConnection*> const& getNocConnections() const { return nocConnections_; }
  /// Every interface of the chain, once each, in order of first meeting.
  std::vector<HABMNocInterface*> const& getNocInterfaces() const { return nocInterfaces_; }
  /// The virtual interfaces, in order.
  std::vector<HABMNocInterface*> const& getVNocInterfaces() const { return vNocInterfaces_; }
  /// The first non-virtual source interface, or null.
  HABMNocInterface* getNmuInterface() const { return nmuInterface_; }
  /// The first non-virtual target interface that is not the NMU, or null.
  HABMNocInterface* getNsuInterface() const { return nsuInterface_; }
  /// The first primary link of the chain, or null.
  HABMNocConnection* getPrimaryConnection() const { return primaryConnection_; }
  /// The first interface, or null for an empty path.
  HABMNocInterface* getSourceInterface() const;
  /// The last interface, or null for an empty path.
  HABMNocInterface* getTargetInterface() const;
  /// The first known protocol among the interfaces; PROTOCOL_UNKNOWN when there is none.
  HABMNocInterface::NocProtocol getNocProtocol() const;
  /// True when that protocol is addressable.
  bool isAddressable() const;
  /// True when the path has an NMU, an NSU and a primary link.
  bool isCompletePath() const;
  /// True when an interface of the path sits on a run-time swapped block.
  bool hasRswInterface() const;
  /// The run-time swapped block of the first interface (its own block, or its nearest such ancestor);
  /// null when there is none or the path is empty.
  HABMBlock const* getSourceRswBlock() const;
  /// As getSourceRswBlock, for the last interface.
  HABMBlock const* getTargetRswBlock() const;
  /// True when the primary link lies outside every run-time swapped region.
  bool isOwnedByStatic() const;

  bool operator==(HABMNocPath const& other) const { return name_ == other.name_; }
  bool operator!=(HABMNocPath const& other) const { return name_ != other.name_; }
  bool operator<(HABMNocPath const& other) const { return name_ < other.name_; }

 private:
  std::string name_;
  std::vector<HABMNocConnection*> nocConnections_;
  std::vector<HABMNocInterface*> nocInterfaces_;
  HABMNocInterface* nmuInterface_ = nullptr;
  std::vector<HABMNocInterface*> vNocInterfaces_;
  HABMNocInterface* nsuInterface_ = nullptr;
  HABMNocConnection* primaryConnection_ = nullptr;
};

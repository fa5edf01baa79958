// HABMNocLinks.h: the NoC links around a block resolved once, for the path search and for the checks that
// need the paths of several blocks or the far ends of many interfaces; internal to the model sources.
#pragma once

#include "blockmodel/HABMNocPath.h"

#include <set>
#include <unordered_map>
#include <vector>

class HABMBlock;
class HABMNocConnection;
class HABMNocInterface;

namespace habm_detail {

/// Every NoC link that can touch an interface of a block's subtree (the links of the subtree and of every
/// block above it), each resolved once. Holds plain pointers into the tree: valid until the tree changes.
class NocLinks {
 public:
  /// A link and its resolved target (null when the target path names nothing).
  struct Link {
    HABMNocConnection* connection;
    HABMNocInterface* target;
  };

  explicit NocLinks(HABMBlock const& block);

  /// The links whose source resolves to `iface`, in the order the interface finds them: its own block's
  /// links first, then each ancestor's, each in container order. Empty when none.
  std::vector<Link> const& drivenBy(HABMNocInterface const* iface) const;
  /// The resolved sources of the links whose target resolves to `iface`, one per link; empty when none.
  std::vector<HABMNocInterface*> const& driversOf(HABMNocInterface const* iface) const;
  /// What HABMNocPath::createNocPaths gives for `block`, which must be the indexed block or lie below it.
  std::set<HABMNocPath> paths(HABMBlock const& block) const;

 private:
  std::unordered_map<HABMNocInterface const*, std::vector<Link>> driven_;
  std::unordered_map<HABMNocInterface const*, std::vector<HABMNocInterface*>> drivers_;
};

}  // namespace habm_detail

// HABMNocPath.cpp: a path from a chain of links, and the walk that finds every path of a block.
#include "blockmodel/HABMNocPath.h"

#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/HABMPath.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace {

// The links that each interface drives, in the order an interface finds them (its own block's links
// first, then each ancestor's, each in container order), with their resolved targets; every link is
// resolved once, so that finding all paths costs one pass over the links.
class DrivenLinks {
 public:
  struct Link {
    HABMNocConnection* connection;
    HABMNocInterface* target;
  };

  explicit DrivenLinks(HABMBlock const& block) {
    // A link resolves only below the block that holds it: the block's subtree and its ancestors hold every
    // link that can touch an interface of the subtree.
    std::vector<std::pair<HABMBlock const*, int>> holders;
    int depth = block.getInstanceDepth();
    for (HABMBlock const* above = block.getParent(); above != nullptr; above = above->getParent()) {
      holders.emplace_back(above, --depth);
    }
    std::vector<std::pair<HABMBlock const*, int>> stack = {{&block, block.getInstanceDepth()}};
    while (!stack.empty()) {
      auto const [holder, level] = stack.back();
      stack.pop_back();
      holders.emplace_back(holder, level);
      for (HABMBlock const* sub : holder->getSubBlocks()) {
        stack.emplace_back(sub, level + 1);
      }
    }
    for (auto const& [holder, level] : holders) {
      for (HABMNocConnection* connection : holder->getNocConnections(false)) {
        if (HABMNocInterface const* source = connection->getSourceNocInterface()) {
          driven_[source].push_back({level, {connection, connection->getTargetNocInterface()}});
        }
      }
    }
    // The nearest holder first; within one holder, container order (each holder's links were added in it).
    for (auto& entry : driven_) {
      std::stable_sort(entry.second.begin(), entry.second.end(),
                       [](auto const& a, auto const& b) { return a.first > b.first; });
    }
  }

  /// Calls `f(source, link)` for every link that resolves its source.
  template <class F>
  void forEach(F&& f) const {
    for (auto const& entry : driven_) {
      for (auto const& link : entry.second) {
        f(*entry.first, link.second);
      }
    }
  }

  /// The links `iface` drives; empty when none.
  std::vector<std::pair<int, Link>> const& of(HABMNocInterface const* iface) const {
    static std::vector<std::pair<int, Link>> const none;
    auto const it = driven_.find(iface);
    return it == driven_.end() ? none : it->second;
  }

 private:
  std::unordered_map<HABMNocInterface const*, std::vector<std::pair<int, Link>>> driven_;
};

}  // namespace

HABMNocPath::HABMNocPath(std::vector<HABMNocConnection*> const& chain) : nocConnections_(chain) {
  auto const meet = [&](HABMNocInterface* iface) {
    if (std::find(nocInterfaces_.begin(), nocInterfaces_.end(), iface) == nocInterfaces_.end()) {
      nocInterfaces_.push_back(iface);
    }
  };
  for (HABMNocConnection* connection : chain) {
    HABMNocInterface* source = connection->getSourceNocInterface();
    HABMNocInterface* target = connection->getTargetNocInterface();
    if (source == nullptr || target == nullptr) {
      continue;
    }
    meet(source);
    meet(target);
    if (primaryConnection_ == nullptr && connection->isPrimary()) {
      primaryConnection_ = connection;
    }
  }
  for (HABMNocInterface* iface : nocInterfaces_) {
    if (iface->isVirtual()) {
      vNocInterfaces_.push_back(iface);
    } else if (nmuInterface_ == nullptr && iface->isSource()) {
      nmuInterface_ = iface;
    } else if (nsuInterface_ == nullptr && iface->isTarget()) {
      nsuInterface_ = iface;
    }
    name_ += (name_.empty() ? "" : "->") + iface->getPath();
  }
}

std::set<HABMNocPath> HABMNocPath::createNocPaths(HABMBlock const* block) {
  std::set<HABMNocPath> paths;
  if (block == nullptr) {
    return paths;
  }
  std::vector<HABMNocInterface*> const all = block->findNocInterfaces(std::string(), true, false);
  std::unordered_set<HABMNocInterface const*> const held(all.begin(), all.end());
  DrivenLinks const driven(*block);
  // An interface that nothing inside the block feeds starts paths.
  std::unordered_set<HABMNocInterface const*> fedFromInside;
  driven.forEach([&](HABMNocInterface const& source, DrivenLinks::Link const& link) {
    if (link.target != nullptr && HABMPath::is_valid(HABMPath::get_relative_path(*block, source.getPath()))) {
      fedFromInside.insert(link.target);
    }
  });
  // Depth first from each head, on a stack of our own: each frame is an interface and the next of its
  // links to follow; every frame but the first entered through the chain's last link.
  struct Frame {
    HABMNocInterface const* iface;
    std::size_t next;
  };
  std::vector<HABMNocConnection*> chain;
  std::unordered_set<HABMNocConnection const*> inChain;
  for (HABMNocInterface const* head : all) {
    if (fedFromInside.count(head) != 0) {
      continue;
    }
    std::vector<Frame> stack = {{head, 0}};
    while (!stack.empty()) {
      Frame& frame = stack.back();
      auto const& links = driven.of(frame.iface);
      if (frame.next == links.size()) {
        stack.pop_back();
        if (!stack.empty()) {
          inChain.erase(chain.back());
          chain.pop_back();
        }
        continue;
      }
      auto const& link = links[frame.next++].second;
      if (inChain.count(link.connection) != 0 || link.target == nullptr || held.count(link.target) == 0) {
        continue;  // a cycle, or a link that leads out of the block
      }
      chain.push_back(link.connection);
      inChain.insert(link.connection);
      if (driven.of(link.target).empty()) {
        paths.insert(HABMNocPath(chain));
        inChain.erase(chain.back());
        chain.pop_back();
      } else {
        stack.push_back({link.target, 0});
      }
    }
  }
  return paths;
}

HABMNocInterface* HABMNocPath::getSourceInterface() const {
  return nocInterfaces_.empty() ? nullptr : nocInterfaces_.front();
}

HABMNocInterface* HABMNocPath::getTargetInterface() const {
  return nocInterfaces_.empty() ? nullptr : nocInterfaces_.back();
}

HABMNocInterface::NocProtocol HABMNocPath::getNocProtocol() const {
  for (HABMNocInterface const* iface : nocInterfaces_) {
    if (iface->getNocProtocol() != HABMNocInterface::PROTOCOL_UNKNOWN) {
      return iface->getNocProtocol();
    }
  }
  return HABMNocInterface::PROTOCOL_UNKNOWN;
}

bool HABMNocPath::isAddressable() const {
  return HABMNocInterface::isAddressable(getNocProtocol());
}

bool HABMNocPath::isCompletePath() const {
  return nmuInterface_ != nullptr && nsuInterface_ != nullptr && primaryConnection_ != nullptr;
}

bool HABMNocPath::hasRswInterface() const {
  return std::any_of(nocInterfaces_.begin(), nocInterfaces_.end(),
                     [](HABMNocInterface const* iface) { return iface->isRswInterface(); });
}

namespace {
HABMBlock const* rswBlockOf(HABMNocInterface const* iface) {
  if (iface == nullptr) {
    return nullptr;
  }
  return iface->isRswInterface() ? iface->getParent() : iface->getRswAncestor();
}
}  // namespace

HABMBlock const* HABMNocPath::getSourceRswBlock() const {
  return rswBlockOf(getSourceInterface());
}

HABMBlock const* HABMNocPath::getTargetRswBlock() const {
  return rswBlockOf(getTargetInterface());
}

bool HABMNocPath::isOwnedByStatic() const {
  return primaryConnection_ != nullptr && !primaryConnection_->hasRswAncestor();
}

// HABMNocPath.cpp: a path from a chain of links, and the walk that finds every path of a block.
#include "blockmodel/HABMNocPath.h"

#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/detail/HABMNocLinks.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

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
  return block == nullptr ? std::set<HABMNocPath>() : habm_detail::NocLinks(*block).paths(*block);
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

namespace habm_detail {

NocLinks::NocLinks(HABMBlock const& block) {
  // A link resolves only below the block that holds it: the block's subtree and its ancestors hold every
  // link that can touch an interface of the subtree. Each holder comes with its depth.
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
  std::unordered_map<HABMNocInterface const*, std::vector<std::pair<int, Link>>> byLevel;
  for (auto const& [holder, level] : holders) {
    for (HABMNocConnection* connection : holder->getNocConnections(false)) {
      if (HABMNocInterface* source = connection->getSourceNocInterface()) {
        HABMNocInterface* target = connection->getTargetNocInterface();
        byLevel[source].push_back({level, {connection, target}});
        if (target != nullptr) {
          drivers_[target].push_back(source);
        }
      }
    }
  }
  // The nearest holder first; one holder per level lies above an interface, and its links were added in
  // container order.
  for (auto& [source, links] : byLevel) {
    std::stable_sort(links.begin(), links.end(),
                     [](auto const& a, auto const& b) { return a.first > b.first; });
    auto& out = driven_[source];
    out.reserve(links.size());
    for (auto const& link : links) {
      out.push_back(link.second);
    }
  }
}

std::vector<NocLinks::Link> const& NocLinks::drivenBy(HABMNocInterface const* iface) const {
  static std::vector<Link> const none;
  auto const it = driven_.find(iface);
  return it == driven_.end() ? none : it->second;
}

std::vector<HABMNocInterface*> const& NocLinks::driversOf(HABMNocInterface const* iface) const {
  static std::vector<HABMNocInterface*> const none;
  auto const it = drivers_.find(iface);
  return it == drivers_.end() ? none : it->second;
}

std::set<HABMNocPath> NocLinks::paths(HABMBlock const& block) const {
  std::set<HABMNocPath> paths;
  std::vector<HABMNocInterface*> const all = block.findNocInterfaces(std::string(), true, false);
  std::unordered_set<HABMNocInterface const*> const held(all.begin(), all.end());
  // An interface that nothing inside the block feeds starts paths. Only the subtree's own interfaces are
  // asked, so the cost follows the block, not the whole index.
  std::unordered_set<HABMNocInterface const*> fedFromInside;
  for (HABMNocInterface const* source : all) {
    for (Link const& link : drivenBy(source)) {
      if (link.target != nullptr) {
        fedFromInside.insert(link.target);
      }
    }
  }
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
      auto const& links = drivenBy(frame.iface);
      if (frame.next == links.size()) {
        stack.pop_back();
        if (!stack.empty()) {
          inChain.erase(chain.back());
          chain.pop_back();
        }
        continue;
      }
      Link const& link = links[frame.next++];
      if (inChain.count(link.connection) != 0 || link.target == nullptr || held.count(link.target) == 0) {
        continue;  // a cycle, or a link that leads out of the block
      }
      chain.push_back(link.connection);
      inChain.insert(link.connection);
      if (drivenBy(link.target).empty()) {
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

}  // namespace habm_detail

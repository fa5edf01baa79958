// HABMPortConnection.cpp: path storage and resolution of a net, its connect check and its validity.
#include "blockmodel/HABMPortConnection.h"

#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMPath.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/detail/HABMEnumTable.h"

#include <iterator>
#include <utility>

namespace {

constexpr habm_detail::EnumTable<HABMPortConnection::ConnectionType, HABMPortConnection::UNKNOWN>
    kConnectionTypes{habm_detail::Fold::LOWER,
                     {{{HABMPortConnection::SOFT, "soft"}, {HABMPortConnection::HARD, "hard"}}}};
static_assert(kConnectionTypes.complete(), "one text per connection type");

// A path resolves to a port only through its last level, which the block looks up by the exact name; a
// cheap test of that level spares the resolution for every connection that cannot name the port.
bool lastLevelIs(std::string const& path, std::string const& name) {
  if (path.size() < name.size() || path.compare(path.size() - name.size(), name.size(), name) != 0) {
    return false;
  }
  return path.size() == name.size() || path[path.size() - name.size() - 1] == HABMPath::SEPARATOR();
}

}  // namespace

HABMPortConnection::HABMPortConnection(HABMBlock* parent, std::string name,
                                       ConnectionType const& connectionType)
    : parent_(parent), name_(std::move(name)), connectionType_(connectionType) {}

std::string HABMPortConnection::getPath() const {
  return HABMPath::terminate(parent_->getInstancePath()) + name_;
}

HABMPortConnection::ConnectionType HABMPortConnection::encodeConnectionType(std::string text) {
  return kConnectionTypes.encode(text);
}

std::string HABMPortConnection::decodeConnectionType(ConnectionType const& type) {
  return kConnectionTypes.decode(type);
}

bool HABMPortConnection::canConnect(HABMBlock const& block, std::string const& source,
                                    std::set<std::string> const& targets) {
  // Deliberately one level deep: a net is drawn between the block's own ports and its direct children's.
  HABMPort const* sourcePort = block.findPort(HABMPath::get_relative_path(block, source), false);
  if (sourcePort == nullptr) {
    return false;
  }
  for (std::string const& target : targets) {
    HABMPort const* targetPort = block.findPort(HABMPath::get_relative_path(block, target), false);
    if (targetPort == nullptr || targetPort == sourcePort) {
      return false;
    }
  }
  return true;
}

bool HABMPortConnection::setSourcePath(std::string const& path) {
  sourcePath_ = HABMPath::get_relative_path(*parent_, path);
  return HABMPath::is_valid(sourcePath_);
}

std::string HABMPortConnection::getSourcePath(bool const& absolute) const {
  return absolute ? HABMPath::get_absolute_path(*parent_, sourcePath_) : sourcePath_;
}

HABMPort* HABMPortConnection::getSourcePort() const {
  return parent_->findPort(sourcePath_, true);
}

bool HABMPortConnection::setTargetPaths(std::set<std::string> const& paths) {
  targetPaths_.clear();
  bool all = true;
  for (std::string const& path : paths) {
    all = insertTargetPath(path) && all;
  }
  return all;
}

std::set<std::string> HABMPortConnection::getTargetPaths(bool const& absolute) const {
  if (!absolute) {
    return targetPaths_;
  }
  std::set<std::string> out;
  for (std::string const& path : targetPaths_) {
    out.insert(HABMPath::get_absolute_path(*parent_, path));
  }
  return out;
}

bool HABMPortConnection::insertTargetPath(std::string const& path) {
  std::string relative = HABMPath::get_relative_path(*parent_, path);
  if (!HABMPath::is_valid(relative)) {
    return false;
  }
  targetPaths_.insert(std::move(relative));
  return true;
}

void HABMPortConnection::removeTargetPath(std::string const& path) {
  targetPaths_.erase(HABMPath::get_relative_path(*parent_, path));
}

void HABMPortConnection::clearTargetPaths() {
  targetPaths_.clear();
}

void HABMPortConnection::pruneTargetPaths() {
  for (auto it = targetPaths_.begin(); it != targetPaths_.end();) {
    it = parent_->findPort(*it, true) == nullptr ? targetPaths_.erase(it) : std::next(it);
  }
}

std::vector<HABMPort*> HABMPortConnection::getTargetPorts() const {
  std::vector<HABMPort*> out;
  for (std::string const& path : targetPaths_) {
    if (HABMPort* port = parent_->findPort(path, true)) {
      out.push_back(port);
    }
  }
  return out;
}

bool HABMPortConnection::isValid() const {
  if (getSourcePort() == nullptr) {
    return false;
  }
  for (std::string const& path : targetPaths_) {
    if (parent_->findPort(path, true) != nullptr) {
      return true;
    }
  }
  return false;
}

bool HABMPortConnection::isValid(bool const& prune) {
  if (prune) {
    pruneTargetPaths();
  }
  return isValid();
}

void HABMPortConnection::clone(HABMPortConnection const& source) {
  if (&source == this) {
    return;
  }
  name_ = source.name_;
  connectionType_ = source.connectionType_;
  sourcePath_ = source.sourcePath_;
  targetPaths_ = source.targetPaths_;
}

bool HABMPortConnection::sourceIs(HABMPort const& port) const {
  return lastLevelIs(sourcePath_, port.getPortName()) && getSourcePort() == &port;
}

std::size_t HABMPortConnection::targetCount(HABMPort const& port) const {
  std::size_t count = 0;
  for (std::string const& path : targetPaths_) {
    if (lastLevelIs(path, port.getPortName()) && parent_->findPort(path, true) == &port) {
      ++count;
    }
  }
  return count;
}

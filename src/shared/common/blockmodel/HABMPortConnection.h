// HABMPortConnection.h: one net in a block, from a source port to target ports, held as relative paths.
#pragma once

#include "blockmodel/HABMChildList.h"

#include <cstddef>
#include <set>
#include <string>
#include <vector>

class HABMBlock;
class HABMPort;

/// One net drawn in a block: a source port and a set of target ports, stored as paths relative to that
/// block and resolved on each use, so a removed port leaves a path that stops resolving, never a dangling
/// pointer. Made only by HABMBlock::createPortConnection; not copyable.
class HABMPortConnection {
 public:
  /// How the net was made; stored and persisted, with no behaviour of its own.
  enum ConnectionType { SOFT, HARD, UNKNOWN };

  HABMPortConnection(HABMPortConnection const&) = delete;
  HABMPortConnection& operator=(HABMPortConnection const&) = delete;

  /// The name, unique on the block unless created with `force`.
  std::string const& getName() const { return name_; }
  /// The block that holds the connection.
  HABMBlock const& getParent() const { return *parent_; }
  /// The block's instance path, terminated, and the name.
  std::string getPath() const;
  /// SOFT for a connection the block made.
  ConnectionType getConnectionType() const { return connectionType_; }
  /// Sets the type.
  void setConnectionType(ConnectionType const& connectionType) { connectionType_ = connectionType; }
  /// "soft" and "hard", in any case; every other text gives UNKNOWN.
  static ConnectionType encodeConnectionType(std::string text);
  /// "soft" or "hard"; the empty string for UNKNOWN.
  static std::string decodeConnectionType(ConnectionType const& type);

  /// True when `source` and every target resolve on `block` to a port of the block or of a direct
  /// sub-block, and no target is the source port; true for an empty target set. Directions, widths and
  /// existing drivers are not looked at. Sends nothing.
  static bool canConnect(HABMBlock const& block, std::string const& source,
                         std::set<std::string> const& targets);

  /// Stores the path made relative to the block, even when that gives the empty path (a path outside the
  /// block); false exactly then.
  bool setSourcePath(std::string const& path);
  /// The stored source path, or with `absolute` that path under the block's instance path; empty when unset.
  std::string getSourcePath(bool const& absolute) const;
  /// The port the source path names, at any depth below the block, or null.
  HABMPort* getSourcePort() const;

  /// Replaces the targets by the given paths made relative; false when any of them lies outside the block
  /// (that one is skipped, the others are stored). True for an empty set.
  bool setTargetPaths(std::set<std::string> const& paths);
  /// The stored target paths in byte order, or with `absolute` each under the block's instance path.
  std::set<std::string> getTargetPaths(bool const& absolute) const;
  /// Adds the path made relative; false, storing nothing, when it lies outside the block; true when it
  /// was already there.
  bool insertTargetPath(std::string const& path);
  /// Removes the path made relative; a miss is silent.
  void removeTargetPath(std::string const& path);
  /// Removes every target path.
  void clearTargetPaths();
  /// Removes every target path that does not resolve to a port.
  void pruneTargetPaths();
  /// The ports the target paths name, in path order, leaving out those that do not resolve.
  std::vector<HABMPort*> getTargetPorts() const;

  /// True when the source and at least one target resolve.
  bool isValid() const;
  /// With `prune`, drops the dangling targets first; then as isValid().
  bool isValid(bool const& prune);

 private:
  friend class HABMBlock;
  friend class HABMPort;
  template <habm_detail::ChildKind>
  friend struct habm_detail::Kind;

  HABMPortConnection(HABMBlock* parent, std::string name, ConnectionType const& connectionType);
  /// Copies name, type and paths; the paths, being relative, then name this connection's block's ports.
  void clone(HABMPortConnection const& source);

  /// Whether the source path resolves to `port`.
  bool sourceIs(HABMPort const& port) const;
  /// How many target paths resolve to `port`.
  std::size_t targetCount(HABMPort const& port) const;

  HABMBlock* parent_;
  std::string name_;
  ConnectionType connectionType_;
  std::string sourcePath_;
  std::set<std::string> targetPaths_;
};

// HABMInterfaceConnection.h: a bus-level link between two interfaces below a block, held as relative paths.
#pragma once

#include "blockmodel/HABMChildList.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMPortConnection.h"

#include <string>

class HABMBlock;

/// Joins a source interface to a target interface anywhere below its block. The ends are paths relative
/// to the block, resolved on each use, so a removed interface leaves a path that stops resolving. Made
/// only by HABMBlock::createInterfaceConnection; not copyable.
class HABMInterfaceConnection {
 public:
  /// How the link was made: the one vocabulary shared with port connections.
  using ConnectionType = HABMPortConnection::ConnectionType;

  HABMInterfaceConnection(HABMInterfaceConnection const&) = delete;
  HABMInterfaceConnection& operator=(HABMInterfaceConnection const&) = delete;

  /// The block that holds the connection; never null.
  HABMBlock const* getParent() const { return parent_; }
  /// The name, unique on the block unless created with `force`.
  std::string const& getName() const { return name_; }
  /// The block's instance path, terminated, and the name.
  std::string getPath() const;
  /// SOFT for a connection the block made; stored and persisted, with no behaviour of its own.
  ConnectionType getConnectionType() const { return connectionType_; }
  /// Sets the type.
  void setConnectionType(ConnectionType const& connectionType) { connectionType_ = connectionType; }
  /// "soft" and "hard", in any case; every other text gives UNKNOWN.
  static ConnectionType encodeConnectionType(std::string text);
  /// "soft" or "hard"; the empty string for UNKNOWN.
  static std::string decodeConnectionType(ConnectionType type);

  /// Stores the path made relative to the block, even when that empties it (a path outside the block);
  /// false exactly then.
  bool setSourcePath(std::string const& path);
  /// Stores the path made relative to the block, even when that empties it; false exactly then.
  bool setTargetPath(std::string const& path);
  /// The stored source path, or with `absolute` that path under the block's instance path.
  std::string getSourcePath(bool const& absolute) const;
  /// The stored target path, or with `absolute` that path under the block's instance path.
  std::string getTargetPath(bool const& absolute) const;
  /// The interface the source path names at any depth below the block, or null.
  HABMInterface* getSourceInterface() const;
  /// The interface the target path names at any depth below the block, or null.
  HABMInterface* getTargetInterface() const;
  /// The source's type, else the target's, else TYPE_UNKNOWN.
  HABMInterface::InterfaceType getInterfaceType() const;

  /// True when both ends resolve.
  bool isValid() const;
  /// True when the end that decides the type (source first) is aximm or inimm.
  bool isAddressable() const;
  /// True when the block is transparent and visible; the ends do not count.
  bool isVisible() const;

  /// True when both paths name distinct interfaces of the block or of a direct sub-block, of the same
  /// type; modes are not looked at. Sends nothing.
  static bool canConnect(HABMBlock const& block, std::string const& source, std::string const& target);

 protected:
  friend class HABMBlock;
  template <habm_detail::ChildKind>
  friend struct habm_detail::Kind;

  HABMInterfaceConnection(HABMBlock* parent, std::string name, ConnectionType const& connectionType);
  /// Copies name, type and both stored paths.
  void clone(HABMInterfaceConnection const& source);
  /// Renames the link; its owner re-files it.
  void setName(std::string const& name) { name_ = name; }

 private:
  HABMBlock* parent_;
  std::string name_;
  ConnectionType connectionType_;
  std::string sourcePath_;
  std::string targetPath_;
};

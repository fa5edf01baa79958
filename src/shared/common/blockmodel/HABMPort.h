// HABMPort.h: one HDL port of a block: name, direction, type, bounds and its own attributes.
#pragma once

#include "blockmodel/HABMChildList.h"

#include <cstdint>
#include <string>
#include <vector>

class HABMAttribute;
class HABMBlock;
class HABMInterface;
class HABMPortConnection;

/// One HDL port in the port table of a block. A port holds no link to its nets: the connections live on
/// blocks as paths, and the port finds them by walking its own block and the one above. Made only by
/// HABMBlock::createPort; not copyable.
class HABMPort {
 public:
  /// The direction seen from inside the block; DIR_UNKNOWN is what every unknown text reads as.
  enum PortDirection { DIR_IN, DIR_OUT, DIR_INOUT, DIR_PHANTOM, DIR_UNKNOWN };
  /// A single wire or a vector with bounds; TYPE_UNKNOWN is what every unknown text reads as.
  enum PortType { TYPE_WIRE, TYPE_VECTOR, TYPE_UNKNOWN };

  ~HABMPort();
  HABMPort(HABMPort const&) = delete;
  HABMPort& operator=(HABMPort const&) = delete;

  /// The port's name.
  std::string const& getPortName() const { return name_; }
  /// Renames the port without telling the block's name index: afterwards getPort and findPort find it
  /// by neither name, while getPorts still lists it.
  void setPortName(std::string const& name) { name_ = name; }
  /// TYPE_VECTOR by default.
  PortType getPortType() const { return portType_; }
  /// Sets the type; TYPE_WIRE also resets both bounds to 0, other types keep them.
  void setPortType(PortType const& portType);
  /// DIR_IN by default.
  PortDirection getPortDirection() const { return portDirection_; }
  /// Sets the direction, any value accepted.
  void setPortDirection(PortDirection const& portDirection) { portDirection_ = portDirection; }
  /// The left bound; 0 by default.
  std::uint32_t getPortLeft() const { return portLeft_; }
  /// Sets the left bound, whatever the type.
  void setPortLeft(std::uint32_t const& left) { portLeft_ = left; }
  /// The right bound; 0 by default.
  std::uint32_t getPortRight() const { return portRight_; }
  /// Sets the right bound, whatever the type.
  void setPortRight(std::uint32_t const& right) { portRight_ = right; }
  /// The block whose port table made the port.
  HABMBlock const& getParent() const { return *parent_; }

  /// The block's instance path, terminated, and the name ("/u0/clk").
  std::string getPortPath() const;
  /// The bounds as "left:right" in decimal ("7:0").
  std::string getPortRange() const;
  /// The number of bits between the bounds, both included; at least 1.
  std::uint64_t getPortWidth() const;
  /// True when left is less than right.
  bool isPortBigEndian() const { return portLeft_ < portRight_; }
  /// True for TYPE_WIRE.
  bool isWirePort() const { return portType_ == TYPE_WIRE; }
  /// True for DIR_OUT: the port drives a net inside its block.
  bool isSourcePort() const { return portDirection_ == DIR_OUT; }
  /// True for every direction but DIR_OUT, so a port is always exactly one of source and target.
  bool isTargetPort() const { return !isSourcePort(); }

  /// "in"/"i", "out"/"o", "inout"/"io" and "phantom", in any case; every other text gives DIR_UNKNOWN.
  static PortDirection encodePortDirection(std::string text);
  /// "in", "out", "inout" or "phantom"; the empty string for DIR_UNKNOWN.
  static std::string decodePortDirection(PortDirection const& direction);
  /// "wire" and "vector", in any case; every other text gives TYPE_UNKNOWN.
  static PortType encodePortType(std::string text);
  /// "wire" or "vector"; the empty string for TYPE_UNKNOWN.
  static std::string decodePortType(PortType const& type);

  // Attributes: the name must be non-empty, hold no "/" and be free.

  /// Appends an attribute; null when the name is refused. The port owns the result.
  HABMAttribute* createAttribute(std::string const& name, std::string const& value);
  /// The first attribute of that exact name, or null.
  HABMAttribute* getAttribute(std::string const& name) const;
  /// The attributes in creation order; the port keeps ownership.
  std::vector<HABMAttribute*> getAttributes() const;
  /// True when the port has an attribute.
  bool hasAttributes() const;
  /// Destroys the first attribute of that name; false, silently, when there is none.
  bool removeAttribute(std::string const& name);
  /// Destroys every attribute, silently.
  void clearAttributes();

  // Connections, found on the port's own block and on its parent block, in their container order.

  /// The first connection that drives this port, or null.
  HABMPortConnection* getSourceConnection() const;
  /// The first connection this port drives, or null.
  HABMPortConnection* getTargetConnection() const;
  /// Every connection this port drives; empty when none.
  std::vector<HABMPortConnection*> getTargetConnections() const;
  /// True when some connection drives or is driven by this port.
  bool hasConnections() const;

  /// The interfaces of the block that map this port by its name, each once, in interface order; empty
  /// while the block has none.
  std::vector<HABMInterface*> getParentInterfaces() const;
  /// True when getParentInterfaces would not be empty.
  bool hasParentInterface() const;

 protected:
  /// Fills `sources` with the connections that drive this port and `targets` with those it drives,
  /// clearing both first.
  void getConnections(std::vector<HABMPortConnection*>& sources,
                      std::vector<HABMPortConnection*>& targets) const;

 private:
  friend class HABMBlock;
  template <habm_detail::ChildKind>
  friend struct habm_detail::Kind;

  HABMPort(HABMBlock* parent, std::string name);
  /// Copies name, type, direction, bounds (as they stand, not through setPortType) and attributes.
  void clone(HABMPort const& source);

  HABMBlock* parent_;
  std::string name_;
  PortType portType_ = TYPE_VECTOR;
  PortDirection portDirection_ = DIR_IN;
  std::uint32_t portLeft_ = 0;
  std::uint32_t portRight_ = 0;
  HABMChildList<HABMAttribute> attributes_;
};

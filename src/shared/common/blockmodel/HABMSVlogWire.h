// HABMSVlogWire.h: one signal of a SystemVerilog interface definition.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

class HABMPort;

/// A signal of a SystemVerilog interface: its name, width, driving port and driven ports. The ports are
/// not owned. A plain value record for the library's users.
class HABMSVlogWire {
 public:
  /// A wire of that name and width with no source, no destinations and a fixed size.
  HABMSVlogWire(std::string name, unsigned int width) : name_(std::move(name)), width_(width) {}
  HABMSVlogWire(HABMSVlogWire const&) = default;
  HABMSVlogWire(HABMSVlogWire&&) = default;
  HABMSVlogWire& operator=(HABMSVlogWire const&) = default;
  HABMSVlogWire& operator=(HABMSVlogWire&&) = default;
  ~HABMSVlogWire();

  /// The wire's name.
  std::string const& getName() const { return name_; }
  /// Renames the wire.
  void setName(std::string name) { name_ = std::move(name); }
  /// The width in bits.
  unsigned int getWidth() const { return width_; }
  /// Sets the width in bits.
  void setWidth(unsigned int width) { width_ = width; }
  /// The driving port; null until set. Not owned.
  HABMPort* getSource() const { return source_; }
  /// Sets the driving port; null clears it. Not owned.
  void setSource(HABMPort* source) { source_ = source; }
  /// The driven ports in order of addition; a copy. Not owned.
  std::vector<HABMPort*> getDestinations() const { return destinations_; }
  /// Appends a driven port; a port added twice stands twice.
  void addDestination(HABMPort* destination) { destinations_.push_back(destination); }
  /// True once the width has been marked as set by a parameter.
  bool isSizeParametrized() const { return sizeParametrized_; }
  /// Marks the width as set by a parameter; nothing clears the mark.
  void setSizeParametrized() { sizeParametrized_ = true; }

 private:
  std::string name_;
  std::uint32_t width_;
  HABMPort* source_ = nullptr;
  std::vector<HABMPort*> destinations_;
  bool sizeParametrized_ = false;
};

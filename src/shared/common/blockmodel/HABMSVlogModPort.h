// HABMSVlogModPort.h: one modport of a SystemVerilog interface definition.
#pragma once

#include <memory>
#include <string>
#include <vector>

class HABMPort;

/// A modport of a SystemVerilog interface: its name and the ports it gathers, shared with the caller. A
/// plain value record for the library's users.
class HABMSVlogModPort {
 public:
  /// A modport of that name with no ports.
  explicit HABMSVlogModPort(std::string identifier) : identifier_(std::move(identifier)) {}
  HABMSVlogModPort(HABMSVlogModPort const&) = default;
  HABMSVlogModPort(HABMSVlogModPort&&) = default;
  HABMSVlogModPort& operator=(HABMSVlogModPort const&) = default;
  HABMSVlogModPort& operator=(HABMSVlogModPort&&) = default;
  ~HABMSVlogModPort();

  /// The modport's name.
  std::string const& getIdentifier() const { return identifier_; }
  /// Renames the modport.
  void setIdentifier(std::string identifier) { identifier_ = std::move(identifier); }
  /// The ports in order of addition; a copy of the list sharing the ports.
  std::vector<std::shared_ptr<HABMPort>> getPorts() const { return ports_; }
  /// Appends a port; a port added twice stands twice.
  void addPort(std::shared_ptr<HABMPort> port) { ports_.push_back(std::move(port)); }

 private:
  std::string identifier_;
  std::vector<std::shared_ptr<HABMPort>> ports_;
};

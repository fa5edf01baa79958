// HABMSVlogInterface.h: a SystemVerilog interface definition: wires, modports and parameters.
#pragma once

#include <memory>
#include <string>
#include <vector>

class HABMSVlogModPort;
class HABMSVlogWire;

/// A SystemVerilog interface definition as a plain value record for the library's users: its name, its
/// wires and modports (shared with the caller), the parameters of its definition, and whether an
/// instance of it has been made.
class HABMSVlogInterface {
 public:
  /// An interface of that name with nothing in it, not instantiated.
  explicit HABMSVlogInterface(std::string name);
  HABMSVlogInterface(HABMSVlogInterface const&);
  HABMSVlogInterface(HABMSVlogInterface&&) noexcept;
  HABMSVlogInterface& operator=(HABMSVlogInterface const&);
  HABMSVlogInterface& operator=(HABMSVlogInterface&&) noexcept;
  ~HABMSVlogInterface();

  /// The interface's name.
  std::string const& getName() const { return name_; }
  /// Renames the interface.
  void setName(std::string name) { name_ = std::move(name); }
  /// The wires in order of addition; a copy of the list sharing the wires.
  std::vector<std::shared_ptr<HABMSVlogWire>> getWires() const { return wires_; }
  /// Appends a wire; a wire added twice stands twice.
  void addWire(std::shared_ptr<HABMSVlogWire> wire) { wires_.push_back(std::move(wire)); }
  /// The modports in order of addition; a copy of the list sharing the modports.
  std::vector<std::shared_ptr<HABMSVlogModPort>> getModPorts() const { return modPorts_; }
  /// Appends a modport; a modport added twice stands twice.
  void addModPort(std::shared_ptr<HABMSVlogModPort> modPort) { modPorts_.push_back(std::move(modPort)); }
  /// The parameters of the definition in order of addition; a copy.
  std::vector<std::string> getDefinitionParams() const { return definitionParams_; }
  /// Appends a parameter of the definition; no duplicate check.
  void addDefinitionParam(std::string param) { definitionParams_.push_back(std::move(param)); }
  /// True once markInstantiated was called.
  bool isInstantiated() const { return instantiated_; }
  /// Records that an instance has been made; nothing clears the mark.
  void markInstantiated() { instantiated_ = true; }

 private:
  std::string name_;
  std::vector<std::shared_ptr<HABMSVlogWire>> wires_;
  std::vector<std::shared_ptr<HABMSVlogModPort>> modPorts_;
  std::vector<std::string> definitionParams_;
  bool instantiated_ = false;
};

// HPAParamMgr.h: the process-wide manager of named host parameters.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Named parameters that switch behaviour. A library registers the ones it owns with a default; a host
/// (or a tool's command line) sets values by name, registered or not.
class HPAParamMgr {
 public:
  /// What is known of one parameter.
  struct Info {
    std::string name;
    std::string description;
    bool registered = false;
    bool hidden = false;
    std::string defaultValue;
    /// The value a host set, if any; otherwise the default is in force.
    std::optional<std::string> value;
  };

  /// The one manager of the process.
  static HPAParamMgr& getParamMgr();

  /// Registers a boolean parameter. False, and nothing changes, when `name` is registered already.
  bool registerBoolParam(std::string const& name, std::string const& description, bool const& defaultValue);
  /// Hides a parameter from listings; false for an unregistered name.
  bool setHidden(std::string const& name, bool const& hidden);

  /// The parameter's value as a bool, or `fallback` when the parameter is neither registered nor set,
  /// or its value is no boolean text.
  bool getValueIfExistAsBool(std::string_view name, bool const& fallback) const;
  /// Sets a value by name. A registered boolean accepts only boolean texts ("true", "false", "1", "0",
  /// "yes", "no", "on", "off", in any case); `error` then says why it refused.
  bool setValue(std::string const& name, std::string const& value, std::string* error = nullptr);
  /// Sets a value from "NAME=VALUE", as a command line gives it.
  bool setFromAssignment(std::string const& assignment, std::string* error = nullptr);
  /// Forgets a set value, so that the default is in force again.
  void resetValue(std::string_view name);
  /// Whether the parameter is registered or has a value.
  bool exists(std::string_view name) const;
  /// Everything known of a parameter, or nothing.
  std::optional<Info> getInfo(std::string_view name) const;
  /// All parameters in name order; hidden ones only on request.
  std::vector<Info> listParams(bool includeHidden) const;

  /// Reads a boolean text; nothing for any other text.
  static std::optional<bool> parseBool(std::string_view text);

 private:
  HPAParamMgr() = default;

  std::map<std::string, Info, std::less<>> params_;
};

/// Sets a parameter for its own lifetime and restores what was there before; for tests and tools.
class HPAParamOverride {
 public:
  HPAParamOverride(std::string name, std::string const& value);
  ~HPAParamOverride();
  HPAParamOverride(HPAParamOverride const&) = delete;
  HPAParamOverride& operator=(HPAParamOverride const&) = delete;

  /// Whether the manager accepted the value.
  bool accepted() const { return accepted_; }

 private:
  std::string name_;
  std::optional<std::string> previous_;
  bool accepted_;
};

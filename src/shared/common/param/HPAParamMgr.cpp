// HPAParamMgr.cpp: parameter registry and boolean values.
#include "param/HPAParamMgr.h"

#include <boost/algorithm/string/predicate.hpp>

#include <array>

HPAParamMgr& HPAParamMgr::getParamMgr() {
  static HPAParamMgr mgr;
  return mgr;
}

std::optional<bool> HPAParamMgr::parseBool(std::string_view text) {
  static constexpr std::array<std::string_view, 4> kTrue = {"true", "1", "yes", "on"};
  static constexpr std::array<std::string_view, 4> kFalse = {"false", "0", "no", "off"};
  for (auto t : kTrue) {
    if (boost::algorithm::iequals(text, t)) {
      return true;
    }
  }
  for (auto f : kFalse) {
    if (boost::algorithm::iequals(text, f)) {
      return false;
    }
  }
  return std::nullopt;
}

bool HPAParamMgr::registerBoolParam(std::string const& name, std::string const& description,
                                    bool const& defaultValue) {
  auto& info = params_[name];
  if (info.registered) {
    return false;
  }
  info.name = name;
  info.description = description;
  info.registered = true;
  info.defaultValue = defaultValue ? "true" : "false";
  // A value set before registration stays only if it is a valid boolean.
  if (info.value && !parseBool(*info.value)) {
    info.value.reset();
  }
  return true;
}

bool HPAParamMgr::setHidden(std::string const& name, bool const& hidden) {
  auto it = params_.find(name);
  if (it == params_.end() || !it->second.registered) {
    return false;
  }
  it->second.hidden = hidden;
  return true;
}

bool HPAParamMgr::getValueIfExistAsBool(std::string_view name, bool const& fallback) const {
  auto it = params_.find(name);
  if (it == params_.end()) {
    return fallback;
  }
  auto const& info = it->second;
  auto const parsed = parseBool(info.value ? *info.value : info.defaultValue);
  return parsed ? *parsed : fallback;
}

bool HPAParamMgr::setValue(std::string const& name, std::string const& value, std::string* error) {
  if (name.empty()) {
    if (error != nullptr) {
      *error = "a parameter needs a name";
    }
    return false;
  }
  auto it = params_.find(name);
  if (it != params_.end() && it->second.registered && !parseBool(value)) {
    if (error != nullptr) {
      *error = "parameter '" + name + "' takes a boolean value (true or false), not '" + value + "'";
    }
    return false;
  }
  auto& info = params_[name];
  info.name = name;
  info.value = value;
  return true;
}

bool HPAParamMgr::setFromAssignment(std::string const& assignment, std::string* error) {
  auto const eq = assignment.find('=');
  if (eq == std::string::npos) {
    if (error != nullptr) {
      *error = "expected NAME=VALUE, got '" + assignment + "'";
    }
    return false;
  }
  return setValue(assignment.substr(0, eq), assignment.substr(eq + 1), error);
}

void HPAParamMgr::resetValue(std::string_view name) {
  auto it = params_.find(name);
  if (it == params_.end()) {
    return;
  }
  if (it->second.registered) {
    it->second.value.reset();
  } else {
    params_.erase(it);
  }
}

bool HPAParamMgr::exists(std::string_view name) const {
  return params_.find(name) != params_.end();
}

std::optional<HPAParamMgr::Info> HPAParamMgr::getInfo(std::string_view name) const {
  auto it = params_.find(name);
  if (it == params_.end()) {
    return std::nullopt;
  }
  return it->second;
}

std::vector<HPAParamMgr::Info> HPAParamMgr::listParams(bool includeHidden) const {
  std::vector<Info> out;
  for (auto const& entry : params_) {
    if (includeHidden || !entry.second.hidden) {
      out.push_back(entry.second);
    }
  }
  return out;
}

HPAParamOverride::HPAParamOverride(std::string name, std::string const& value) : name_(std::move(name)) {
  auto& mgr = HPAParamMgr::getParamMgr();
  auto const info = mgr.getInfo(name_);
  if (info) {
    previous_ = info->value;
  }
  accepted_ = mgr.setValue(name_, value);
}

HPAParamOverride::~HPAParamOverride() {
  auto& mgr = HPAParamMgr::getParamMgr();
  if (previous_) {
    mgr.setValue(name_, *previous_);
  } else {
    mgr.resetValue(name_);
  }
}

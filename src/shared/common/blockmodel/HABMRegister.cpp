// HABMRegister.cpp: registers, the life of their fields and parameters, and their access vocabulary.
#include "blockmodel/HABMRegister.h"

#include "blockmodel/HABMAddrBlock.h"
#include "blockmodel/HABMEnumText.h"
#include "blockmodel/HABMNestedChild.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMPath.h"
#include "blockmodel/HABMRegisterField.h"
#include "blockmodel/HABMTrace.h"

#include <utility>

using habm_detail::TRACE_BLOCK;
using habm_detail::TRACE_CHILD;

namespace {

// In value order; ACCESS_UNKNOWN has no text.
constexpr char const* kRegisterAccessTexts[] = {"read_write", "read_only", "write_only", "writeonce",
                                                "read_writeonce"};
static_assert(sizeof(kRegisterAccessTexts) / sizeof(kRegisterAccessTexts[0]) == HABMRegister::ACCESS_UNKNOWN,
              "one text per register access");

}  // namespace

HABMRegister::HABMRegister(HABMAddrBlock const* parent, std::string const& name)
    : parent_(parent), name_(name) {}

HABMRegister::~HABMRegister() = default;

std::string HABMRegister::getPath() const {
  return HABMPath::terminate(parent_->getPath()) + name_;
}

HABMRegisterField* HABMRegister::createField(std::string const& name) {
  return habm_detail::createNestedChild(fields_, name, "Created register field '%s'.\n",
                                        [&] { return new HABMRegisterField(this, name); });
}

HABMRegisterField* HABMRegister::getField(std::string const& name) const {
  return fields_.get(name);
}

std::vector<HABMRegisterField*> HABMRegister::getFields() const {
  return fields_.list();
}

bool HABMRegister::removeField(std::string const& name) {
  return habm_detail::removeNestedChild(fields_, name, "Removed register field '%s'.\n");
}

void HABMRegister::clearFields() {
  fields_.clear();
}

// Parameters are traced by name on the register, failures included, as on a block.
HABMParameter* HABMRegister::createParameter(std::string const& name, std::string const& value) {
  if (name.empty() || HABMPath::has_separator(name) || parameters_.has(name)) {
    HABM_TRACE(TRACE_BLOCK, "Failed to create parameter '%s' on register '%s'.\n", name.c_str(),
               getPath().c_str());
    return nullptr;
  }
  HABMParameter* parameter = parameters_.append(std::make_unique<HABMParameter>(name, value));
  HABM_TRACE(TRACE_CHILD, "Created parameter '%s' on register '%s'.\n", name.c_str(), getPath().c_str());
  return parameter;
}

HABMParameter* HABMRegister::getParameter(std::string const& name) const {
  return parameters_.get(name);
}

std::vector<HABMParameter*> HABMRegister::getParameters() const {
  return parameters_.list();
}

bool HABMRegister::removeParameter(std::string const& name) {
  std::string const removed = name;  // the request may be the parameter's own name, about to go
  if (parameters_.take(removed) == nullptr) {
    return false;
  }
  HABM_TRACE(TRACE_BLOCK, "Removed parameter '%s' from register '%s'.\n", removed.c_str(), getPath().c_str());
  return true;
}

void HABMRegister::clearParameters() {
  parameters_.clear();
}

HABMParameter* HABMRegister::setParameter(std::string const& name, std::string const& value,
                                          bool const& create) {
  HABMParameter* parameter = parameters_.get(name);
  if (parameter == nullptr) {
    if (!create) {
      return nullptr;
    }
    parameter = createParameter(name, std::string());
    if (parameter == nullptr) {
      return nullptr;
    }
  }
  parameter->setValue(value);
  return parameter;
}

void HABMRegister::clone(HABMRegister const& source) {
  description_ = source.description_;
  access_ = source.access_;
  offset_ = source.offset_;
  width_ = source.width_;
  value_ = source.value_;
  reset_ = source.reset_;
  clearFields();
  for (auto const& from : source.fields_.items()) {
    if (HABMRegisterField* to = createField(from->getName())) {
      to->clone(*from);
    }
  }
  clearParameters();
  for (auto const& from : source.parameters_.items()) {
    createParameter(from->getName(), from->getValue());
  }
}

HABMRegister::RegisterAccess HABMRegister::encodeRegisterAccess(std::string text) {
  return habm_detail::encodeEnumText<RegisterAccess>(kRegisterAccessTexts,
                                                     habm_detail::normaliseAccessText(std::move(text)));
}

std::string HABMRegister::decodeRegisterAccess(RegisterAccess const& access) {
  return habm_detail::decodeEnumText(kRegisterAccessTexts, access);
}

bool HABMRegister::check() const {
  bool ok = habm_detail::checkNestedChildren(fields_, this) && parameters_.checkIndex();
  for (auto const& parameter : parameters_.items()) {
    ok = ok && !parameter->getName().empty() && !HABMPath::has_separator(parameter->getName());
  }
  return ok;
}

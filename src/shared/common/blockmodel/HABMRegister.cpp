// HABMRegister.cpp: registers, the life of their fields and parameters, and their access vocabulary.
#include "blockmodel/HABMRegister.h"

#include "blockmodel/HABMAddrBlock.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMPath.h"
#include "blockmodel/HABMRegisterField.h"
#include "blockmodel/detail/HABMEnumTable.h"
#include "blockmodel/detail/HABMKinds.h"

#include <utility>

using FieldKind = habm_detail::Kind<habm_detail::ChildKind::REGISTER_FIELD>;

namespace {

constexpr auto kAccesses = habm_detail::accessTable<HABMRegister, HABMRegister::RegisterAccess>();
static_assert(kAccesses.complete(), "one text per value");

}  // namespace

HABMRegister::HABMRegister(HABMAddrBlock* parent, std::string const& name) : parent_(parent), name_(name) {}

HABMRegister::~HABMRegister() = default;

std::string HABMRegister::getPath() const {
  return HABMPath::terminate(parent_->getPath()) + name_;
}

HABMRegisterField* HABMRegister::createField(std::string const& name) {
  return habm_detail::createChild<FieldKind>(*this, name, false).child;
}

HABMRegisterField* HABMRegister::getField(std::string const& name) const {
  return fields_.get(name);
}

std::vector<HABMRegisterField*> HABMRegister::getFields() const {
  return fields_.list();
}

bool HABMRegister::removeField(std::string const& name) {
  return habm_detail::removeChild<FieldKind>(*this, name);
}

void HABMRegister::clearFields() {
  fields_.clear();
}

void HABMRegister::clone(HABMRegister const& source) {
  description_ = source.description_;
  access_ = source.access_;
  offset_ = source.offset_;
  width_ = source.width_;
  value_ = source.value_;
  reset_ = source.reset_;
  clearFields();
  for (HABMRegisterField const* from : source.fields_) {
    if (HABMRegisterField* to = createField(from->getName())) {
      to->clone(*from);
    }
  }
  cloneParameters(source);
}

HABMRegister::RegisterAccess HABMRegister::encodeRegisterAccess(std::string text) {
  return kAccesses.encode(text);
}

std::string HABMRegister::decodeRegisterAccess(RegisterAccess const& access) {
  return kAccesses.decode(access);
}

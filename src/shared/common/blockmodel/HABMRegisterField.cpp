// HABMRegisterField.cpp: register fields and their access vocabulary.
#include "blockmodel/HABMRegisterField.h"

#include "blockmodel/HABMPath.h"
#include "blockmodel/HABMRegister.h"
#include "blockmodel/detail/HABMEnumTable.h"

#include <utility>

namespace {

constexpr auto kAccesses = habm_detail::accessTable<HABMRegisterField, HABMRegisterField::FieldAccess>();
static_assert(kAccesses.complete(), "one text per value");

}  // namespace

HABMRegisterField::HABMRegisterField(HABMRegister* parent, std::string const& name)
    : parent_(parent), name_(name) {}

std::string HABMRegisterField::getPath() const {
  return HABMPath::terminate(parent_->getPath()) + name_;
}

void HABMRegisterField::clone(HABMRegisterField const& source) {
  access_ = source.access_;
  offset_ = source.offset_;
  width_ = source.width_;
  reset_ = source.reset_;
}

HABMRegisterField::FieldAccess HABMRegisterField::encodeFieldAccess(std::string text) {
  return kAccesses.encode(text);
}

std::string HABMRegisterField::decodeFieldAccess(FieldAccess const& access) {
  return kAccesses.decode(access);
}

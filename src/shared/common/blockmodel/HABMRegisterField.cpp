// HABMRegisterField.cpp: register fields and their access vocabulary.
#include "blockmodel/HABMRegisterField.h"

#include "blockmodel/HABMEnumText.h"
#include "blockmodel/HABMPath.h"
#include "blockmodel/HABMRegister.h"

#include <utility>

namespace {

// In value order; ACCESS_UNKNOWN has no text.
constexpr char const* kFieldAccessTexts[] = {"read_write", "read_only", "write_only", "writeonce",
                                             "read_writeonce"};
static_assert(sizeof(kFieldAccessTexts) / sizeof(kFieldAccessTexts[0]) == HABMRegisterField::ACCESS_UNKNOWN,
              "one text per field access");

}  // namespace

HABMRegisterField::HABMRegisterField(HABMRegister const* parent, std::string const& name)
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
  return habm_detail::encodeEnumText<FieldAccess>(kFieldAccessTexts,
                                                  habm_detail::normaliseAccessText(std::move(text)));
}

std::string HABMRegisterField::decodeFieldAccess(FieldAccess const& access) {
  return habm_detail::decodeEnumText(kFieldAccessTexts, access);
}

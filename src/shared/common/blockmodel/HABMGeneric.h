// HABMGeneric.h: an HDL generic of a block: a name and a text value.
#pragma once

#include "blockmodel/HABMNamedValue.h"

/// An HDL generic of a block.
class HABMGeneric : public HABMNamedValue {
 public:
  /// A generic with the given name and value.
  HABMGeneric(std::string name, std::string value) : HABMNamedValue(std::move(name), std::move(value)) {}
};

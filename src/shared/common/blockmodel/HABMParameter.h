// HABMParameter.h: a named setting of a block, an interface or a NoC object: a name and a text value.
#pragma once

#include "blockmodel/HABMNamedValue.h"

/// A named setting of a block, an interface, a register or a NoC object.
class HABMParameter : public HABMNamedValue {
 public:
  /// A parameter with the given name and value.
  HABMParameter(std::string name, std::string value) : HABMNamedValue(std::move(name), std::move(value)) {}
};

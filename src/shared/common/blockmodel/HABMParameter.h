// HABMParameter.h: a named setting of a block, an interface or a NoC object: a name and a text value.
#pragma once

#include <string>

/// A name that never changes and a text value; a named setting of a block, an interface or a NoC object.
class HABMParameter {
 public:
  /// A parameter with the given name and value; nothing is checked here (the owner's creator checks names).
  HABMParameter(std::string name, std::string value);

  /// The name, fixed at construction.
  std::string const& getName() const { return name_; }
  /// The value; may be empty.
  std::string const& getValue() const { return value_; }
  /// Replaces the value with any text, the empty text included; sends no message.
  void setValue(std::string const& value) { value_ = value; }

 private:
  std::string name_;
  std::string value_;
};

// HABMNamedValue.h: the shape shared by attributes, generics and parameters: a fixed name and a text value.
#pragma once

#include <string>

/// A name that never changes and a text value. Attributes, generics and parameters have this shape and
/// stay distinct types, since they are stored, written and compared separately.
class HABMNamedValue {
 public:
  /// The name, fixed at construction.
  std::string const& getName() const { return name_; }
  /// The value; may be empty.
  std::string const& getValue() const { return value_; }
  /// Replaces the value with any text, the empty text included; sends no message.
  void setValue(std::string const& value) { value_ = value; }

 protected:
  /// Nothing is checked here: the owner's creator checks names.
  HABMNamedValue(std::string name, std::string value);

 private:
  std::string name_;
  std::string value_;
};

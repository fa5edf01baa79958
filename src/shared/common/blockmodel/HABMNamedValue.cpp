// HABMNamedValue.cpp: a fixed name and a text value.
#include "blockmodel/HABMNamedValue.h"

#include <utility>

HABMNamedValue::HABMNamedValue(std::string name, std::string value)
    : name_(std::move(name)), value_(std::move(value)) {}

// HABMParameter.cpp: a named setting of a block, an interface or a NoC object.
#include "blockmodel/HABMParameter.h"

#include <utility>

HABMParameter::HABMParameter(std::string name, std::string value)
    : name_(std::move(name)), value_(std::move(value)) {}

// HABMGeneric.cpp: an HDL generic of a block.
#include "blockmodel/HABMGeneric.h"

#include <utility>

HABMGeneric::HABMGeneric(std::string name, std::string value)
    : name_(std::move(name)), value_(std::move(value)) {}

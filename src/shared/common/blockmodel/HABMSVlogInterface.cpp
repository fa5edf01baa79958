// HABMSVlogInterface.cpp: a SystemVerilog interface definition: wires, modports and parameters.
#include "blockmodel/HABMSVlogInterface.h"

#include "blockmodel/HABMSVlogModPort.h"
#include "blockmodel/HABMSVlogWire.h"

// The special members live here, where the element types are complete.
HABMSVlogInterface::HABMSVlogInterface(std::string name) : name_(std::move(name)) {}
HABMSVlogInterface::HABMSVlogInterface(HABMSVlogInterface const&) = default;
HABMSVlogInterface::HABMSVlogInterface(HABMSVlogInterface&&) noexcept = default;
HABMSVlogInterface& HABMSVlogInterface::operator=(HABMSVlogInterface const&) = default;
HABMSVlogInterface& HABMSVlogInterface::operator=(HABMSVlogInterface&&) noexcept = default;
HABMSVlogInterface::~HABMSVlogInterface() = default;

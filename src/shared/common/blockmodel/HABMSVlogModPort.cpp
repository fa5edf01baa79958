// HABMSVlogModPort.cpp: one modport of a SystemVerilog interface definition.
#include "blockmodel/HABMSVlogModPort.h"

HABMSVlogModPort::~HABMSVlogModPort() = default;

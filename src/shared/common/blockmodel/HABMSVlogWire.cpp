// HABMSVlogWire.cpp: one signal of a SystemVerilog interface definition.
#include "blockmodel/HABMSVlogWire.h"

HABMSVlogWire::~HABMSVlogWire() = default;

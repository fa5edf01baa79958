// HABMAddrTestUtil.h: a design that sets every field of every address class away from its default.
#pragma once

#include "msg/ComMsgMgr.h"

// The tree comparison brings the header of every kind of child, the address classes among them, and
// with them <string> and <vector>.
#include "HABMTreeCompare.h"

#include <memory>

namespace habm_test {

/// Top "top" with sub-block "/u0" (module "slave") holding space "s" (segments "code", "data") and map "m"
/// (address blocks "regs" with register "ctrl" and fields "en", "mode"; and "mem"), and assignments on the
/// top and on "/u0". Every field of every address class differs from its default somewhere.
inline std::unique_ptr<HABMBlock> makeAddrDesign() {
  auto top = HABMBlock::createTopBlock("top");
  HABMBlock* u0 = top->createSubBlock("u0", "slave", false);

  HABMAddrSpace* space = u0->createAddrSpace("s");
  space->setRange(HABMAddrValue::CONST_1G());
  HABMAddrSegment* code = space->createAddrSegment("code");
  code->setMemoryType(HABMAddrSegment::TYPE_INSTRUCTION);
  code->setAperture(HABMAddrAperture(HABMAddrValue(0x1000U), HABMAddrValue::CONST_4K()));
  HABMAddrSegment* data = space->createAddrSegment("data");
  data->setMemoryType(HABMAddrSegment::TYPE_DATA);
  data->setOffset(HABMAddrValue(0x8000U));

  HABMMemoryMap* map = u0->createMemoryMap("m");
  map->setRange(HABMAddrValue::CONST_1M());
  HABMAddrBlock* regs = map->createAddrBlock("regs");
  regs->setMemoryAccess(HABMAddrBlock::ACCESS_READ_WRITEONCE);
  regs->setAperture(HABMAddrAperture(HABMAddrValue(0x100U), HABMAddrValue::CONST_1K()));
  HABMAddrBlock* mem = map->createAddrBlock("mem");
  mem->setMemoryType(HABMAddrBlock::TYPE_FLASH);
  mem->setOffset(HABMAddrValue(0x10000U));

  HABMRegister* ctrl = regs->createRegister("ctrl");
  ctrl->setDescription("control word");
  ctrl->setAccess(HABMRegister::ACCESS_WRITE_ONLY);
  ctrl->setOffset(HABMAddrValue(4U));
  ctrl->setWidth(16);
  ctrl->setValue(HABMAddrValue(0xABU));
  ctrl->setReset(HABMAddrValue(0x5U));
  ctrl->createParameter("VOLATILE", "true");
  HABMRegisterField* en = ctrl->createField("en");
  en->setAccess(HABMRegisterField::ACCESS_READ_ONLY);
  en->setOffset(3);
  en->setWidth(2);
  en->setReset(HABMAddrValue(1U));
  ctrl->createField("mode")->setAccess(HABMRegisterField::ACCESS_WRITEONCE);

  HABMAddrAssign* local = u0->createAddrAssign("local");
  local->setAssignType(HABMAddrAssign::TYPE_INTERNAL);
  local->setSourcePath("m/regs");
  local->setTargetPath("s/data");
  local->setAperture(HABMAddrAperture(HABMAddrValue(0x4000U), HABMAddrValue::CONST_4K()));
  HABMAddrAssign* global = top->createAddrAssign("");
  global->setAssignType(HABMAddrAssign::TYPE_EXCLUSION);
  global->setSourcePath("/u0/m/mem");
  global->setTargetPath("/u0/s");
  global->setAperture(HABMAddrAperture(HABMAddrValue(0x2000U), HABMAddrValue::CONST_64K()));
  return top;
}

/// Captured traces as text and mask.
using Traces = std::vector<std::pair<std::string, unsigned int>>;

/// The texts and masks of the captured traces.
inline Traces tracesOf(ComMsgCapture const& capture) {
  Traces out;
  for (auto const& r : capture.records()) {
    out.emplace_back(r.text, r.mask);
  }
  return out;
}

}  // namespace habm_test

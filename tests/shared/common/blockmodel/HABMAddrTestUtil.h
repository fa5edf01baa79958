// HABMAddrTestUtil.h: test access to the private copy steps of the address objects, a design that sets
// every field of every address class away from its default, and an object-by-object comparison.
#pragma once

#include "blockmodel/HABMAddrAssign.h"
#include "blockmodel/HABMAddrBlock.h"
#include "blockmodel/HABMAddrSegment.h"
#include "blockmodel/HABMAddrSpace.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMMemoryMap.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMRegister.h"
#include "blockmodel/HABMRegisterField.h"
#include "msg/ComMsgMgr.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

/// The owners' copy steps are private; tests reach them here.
struct HABMTestPeer {
  static void clone(HABMAddrSpace& to, HABMAddrSpace const& from) { to.clone(from); }
  static void clone(HABMMemoryMap& to, HABMMemoryMap const& from) { to.clone(from); }
  static void clone(HABMAddrAssign& to, HABMAddrAssign const& from) { to.clone(from); }
};

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
  global->setOffset(HABMAddrValue(0x2000U));
  global->setRange(HABMAddrValue::CONST_64K());
  return top;
}

inline void expectSameSegment(HABMAddrSegment const& a, HABMAddrSegment const& b) {
  SCOPED_TRACE(a.getPath());
  EXPECT_EQ(a.getName(), b.getName());
  EXPECT_EQ(a.getMemoryType(), b.getMemoryType());
  EXPECT_EQ(a.getAperture(), b.getAperture());
}

inline void expectSameSpace(HABMAddrSpace const& a, HABMAddrSpace const& b) {
  SCOPED_TRACE(a.getPath());
  EXPECT_EQ(a.getName(), b.getName());
  EXPECT_EQ(a.getRange(), b.getRange());
  auto const as = a.getAddrSegments();
  auto const bs = b.getAddrSegments();
  ASSERT_EQ(as.size(), bs.size());
  for (std::size_t i = 0; i < as.size(); ++i) {
    expectSameSegment(*as[i], *bs[i]);
  }
}

inline void expectSameField(HABMRegisterField const& a, HABMRegisterField const& b) {
  SCOPED_TRACE(a.getPath());
  EXPECT_EQ(a.getName(), b.getName());
  EXPECT_EQ(a.getAccess(), b.getAccess());
  EXPECT_EQ(a.getOffset(), b.getOffset());
  EXPECT_EQ(a.getWidth(), b.getWidth());
  EXPECT_EQ(a.getReset(), b.getReset());
}

inline void expectSameRegister(HABMRegister const& a, HABMRegister const& b) {
  SCOPED_TRACE(a.getPath());
  EXPECT_EQ(a.getName(), b.getName());
  EXPECT_EQ(a.getDescription(), b.getDescription());
  EXPECT_EQ(a.getAccess(), b.getAccess());
  EXPECT_EQ(a.getOffset(), b.getOffset());
  EXPECT_EQ(a.getWidth(), b.getWidth());
  EXPECT_EQ(a.getValue(), b.getValue());
  EXPECT_EQ(a.getReset(), b.getReset());
  auto const af = a.getFields();
  auto const bf = b.getFields();
  ASSERT_EQ(af.size(), bf.size());
  for (std::size_t i = 0; i < af.size(); ++i) {
    expectSameField(*af[i], *bf[i]);
  }
  auto const ap = a.getParameters();
  auto const bp = b.getParameters();
  ASSERT_EQ(ap.size(), bp.size());
  for (std::size_t i = 0; i < ap.size(); ++i) {
    EXPECT_EQ(ap[i]->getName(), bp[i]->getName());
    EXPECT_EQ(ap[i]->getValue(), bp[i]->getValue());
  }
}

inline void expectSameAddrBlock(HABMAddrBlock const& a, HABMAddrBlock const& b) {
  SCOPED_TRACE(a.getPath());
  EXPECT_EQ(a.getName(), b.getName());
  EXPECT_EQ(a.getMemoryType(), b.getMemoryType());
  EXPECT_EQ(a.getMemoryAccess(), b.getMemoryAccess());
  EXPECT_EQ(a.getAperture(), b.getAperture());
  auto const ar = a.getRegisters();
  auto const br = b.getRegisters();
  ASSERT_EQ(ar.size(), br.size());
  for (std::size_t i = 0; i < ar.size(); ++i) {
    expectSameRegister(*ar[i], *br[i]);
  }
}

inline void expectSameMap(HABMMemoryMap const& a, HABMMemoryMap const& b) {
  SCOPED_TRACE(a.getPath());
  EXPECT_EQ(a.getName(), b.getName());
  EXPECT_EQ(a.getRange(), b.getRange());
  auto const ab = a.getAddrBlocks();
  auto const bb = b.getAddrBlocks();
  ASSERT_EQ(ab.size(), bb.size());
  for (std::size_t i = 0; i < ab.size(); ++i) {
    expectSameAddrBlock(*ab[i], *bb[i]);
  }
}

inline void expectSameAssign(HABMAddrAssign const& a, HABMAddrAssign const& b) {
  SCOPED_TRACE(a.getPath());
  EXPECT_EQ(a.getName(), b.getName());
  EXPECT_EQ(a.getAssignType(), b.getAssignType());
  EXPECT_EQ(a.getSourcePath(false), b.getSourcePath(false));
  EXPECT_EQ(a.getTargetPath(false), b.getTargetPath(false));
  EXPECT_EQ(a.getAperture(), b.getAperture());
}

/// Compares the address objects of two blocks and of their sub-blocks, matched by position.
inline void expectSameAddrObjects(HABMBlock const& a, HABMBlock const& b) {
  SCOPED_TRACE(a.getInstancePath());
  auto const as = a.getAddrSpaces();
  auto const bs = b.getAddrSpaces();
  ASSERT_EQ(as.size(), bs.size());
  for (std::size_t i = 0; i < as.size(); ++i) {
    expectSameSpace(*as[i], *bs[i]);
  }
  auto const am = a.getMemoryMaps();
  auto const bm = b.getMemoryMaps();
  ASSERT_EQ(am.size(), bm.size());
  for (std::size_t i = 0; i < am.size(); ++i) {
    expectSameMap(*am[i], *bm[i]);
  }
  auto const aa = a.getAddrAssigns();
  auto const ba = b.getAddrAssigns();
  ASSERT_EQ(aa.size(), ba.size());
  for (std::size_t i = 0; i < aa.size(); ++i) {
    expectSameAssign(*aa[i], *ba[i]);
  }
  auto const asub = a.getSubBlocks();
  auto const bsub = b.getSubBlocks();
  ASSERT_EQ(asub.size(), bsub.size());
  for (std::size_t i = 0; i < asub.size(); ++i) {
    expectSameAddrObjects(*asub[i], *bsub[i]);
  }
}

/// The texts and masks of the captured traces.
inline std::vector<std::pair<std::string, unsigned int>> tracesOf(ComMsgCapture const& capture) {
  std::vector<std::pair<std::string, unsigned int>> out;
  for (auto const& r : capture.records()) {
    out.emplace_back(r.text, r.mask);
  }
  return out;
}

}  // namespace habm_test

// HABMMemoryMapTest.cpp: memory maps, address blocks, registers and fields: the access and memory-type
// vocabularies and the nested finds.
#include "blockmodel/HABMMemoryMap.h"

#include "blockmodel/HABMAddrBlock.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMRegister.h"
#include "blockmodel/HABMRegisterField.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

// The address block's access, the register's and the field's are three types over one table of words,
// read in any case with dashes for underscores; the address block's memory types are words of their own.
TEST(HABMAddrVocabulary, AccessWordsAndMemoryTypesReadBackAndFoldCaseAndDashes) {
  for (auto const& [text, value] :
       {std::pair{"Read-Write", 0}, {"READ_ONLY", 1}, {"read-writeonce", 4}, {"write-once", 5}, {"rw", 5}}) {
    EXPECT_EQ(static_cast<int>(HABMAddrBlock::encodeMemoryAccess(text)), value) << text;
    EXPECT_EQ(static_cast<int>(HABMRegister::encodeRegisterAccess(text)), value) << text;
    EXPECT_EQ(static_cast<int>(HABMRegisterField::encodeFieldAccess(text)), value) << text;
  }
  for (int v = HABMAddrBlock::ACCESS_READ_WRITE; v <= HABMAddrBlock::ACCESS_UNKNOWN; ++v) {
    auto const text = HABMAddrBlock::decodeMemoryAccess(static_cast<HABMAddrBlock::MemoryAccess>(v));
    EXPECT_EQ(HABMRegister::decodeRegisterAccess(static_cast<HABMRegister::RegisterAccess>(v)), text);
    EXPECT_EQ(HABMRegisterField::decodeFieldAccess(static_cast<HABMRegisterField::FieldAccess>(v)), text);
    EXPECT_EQ(static_cast<int>(HABMAddrBlock::encodeMemoryAccess(text)), v) << text;
  }
  for (int t = HABMAddrBlock::TYPE_APERTURE; t <= HABMAddrBlock::TYPE_UNKNOWN; ++t) {
    auto const type = static_cast<HABMAddrBlock::MemoryType>(t);
    EXPECT_EQ(HABMAddrBlock::encodeMemoryType(HABMAddrBlock::decodeMemoryType(type)), type);
  }
  EXPECT_EQ(HABMAddrBlock::encodeMemoryType("both"), HABMAddrBlock::TYPE_UNKNOWN);  // a segment's word
}

// Top with "/u1", "/u1/u2"; map "m" on "/u1" with address blocks "regs" (registers "ctrl", "status") and
// "mem"; map "m2" on "/u1" with block "rom" (register "id"); map "d" on "/u1/u2" with block "regs"
// (register "r").
TEST(HABMMemoryMapTree, NestedFindsTakeTheirHolderFromTheHeadAndPluralOnesWalkInOrder) {
  auto top = HABMBlock::createTopBlock("top");
  HABMBlock* u1 = top->createSubBlock("u1", "m1", false);
  HABMMemoryMap* map = u1->createMemoryMap("m");
  HABMAddrBlock* regs = map->createAddrBlock("regs");
  HABMRegister* ctrl = regs->createRegister("ctrl");
  HABMRegister* status = regs->createRegister("status");
  HABMAddrBlock* mem = map->createAddrBlock("mem");
  HABMAddrBlock* rom = u1->createMemoryMap("m2")->createAddrBlock("rom");
  HABMRegister* id = rom->createRegister("id");
  HABMAddrBlock* deep = u1->createSubBlock("u2", "m2", false)->createMemoryMap("d")->createAddrBlock("regs");
  HABMRegister* deepReg = deep->createRegister("r");
  EXPECT_EQ(top->findAddrBlock("/u1/m/regs", false), regs);
  EXPECT_EQ(top->findRegister("/u1/m/regs/ctrl", false), ctrl);
  EXPECT_EQ(top->findRegister("u1/u2/d/regs/r", false), nullptr);
  EXPECT_EQ(top->findRegister("u1/u2/d/regs/r", true), deepReg);
  EXPECT_EQ(top->findRegister("u1/m/regs", true), nullptr);  // the holder's path rules are findAddrSegment's
  // The plural finds walk maps, blocks and registers in order.
  EXPECT_EQ(u1->findAddrBlocks("", false), (std::vector<HABMAddrBlock*>{regs, mem, rom}));
  EXPECT_EQ(top->findAddrBlocks("*/regs", true), (std::vector<HABMAddrBlock*>{regs, deep}));
  EXPECT_EQ(top->findRegisters("", true), (std::vector<HABMRegister*>{ctrl, status, id, deepReg}));
  EXPECT_TRUE(top->findRegisters("", false).empty());
  EXPECT_EQ(top->findRegisters("/u1/m*/*/?d", true), (std::vector<HABMRegister*>{id}));
  EXPECT_EQ(top->check(), std::vector<std::string>());
}

}  // namespace

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

// The address block's access, the register's and the field's are three types over one set of words.
TEST(HABMAddrVocabulary, AccessWordsReadInAnyCaseWithDashesForUnderscores) {
  using Row = std::pair<char const*, int>;
  for (auto const& [text, value] :
       {Row{"read_write", 0}, Row{"Read-Write", 0}, Row{"READ_ONLY", 1}, Row{"read-only", 1},
        Row{"write-only", 2}, Row{"writeonce", 3}, Row{"write-once", 5}, Row{"write_once", 5},
        Row{"read-writeonce", 4}, Row{"read_writeonce", 4}, Row{"rw", 5}, Row{"", 5}}) {
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
}

// The address block's memory types are not the segment's words.
TEST(HABMAddrVocabulary, AddressBlockMemoryTypesReadInAnyCase) {
  using Row = std::pair<char const*, HABMAddrBlock::MemoryType>;
  for (auto const& [text, type] :
       {Row{"aperture", HABMAddrBlock::TYPE_APERTURE}, Row{"Register", HABMAddrBlock::TYPE_REGISTER},
        Row{"memory", HABMAddrBlock::TYPE_MEMORY}, Row{"Flash", HABMAddrBlock::TYPE_FLASH},
        Row{"RESERVED", HABMAddrBlock::TYPE_RESERVED}, Row{"both", HABMAddrBlock::TYPE_UNKNOWN},
        Row{"read-only", HABMAddrBlock::TYPE_UNKNOWN}, Row{"", HABMAddrBlock::TYPE_UNKNOWN}}) {
    EXPECT_EQ(HABMAddrBlock::encodeMemoryType(text), type) << text;
  }
  for (int t = HABMAddrBlock::TYPE_APERTURE; t <= HABMAddrBlock::TYPE_UNKNOWN; ++t) {
    auto const type = static_cast<HABMAddrBlock::MemoryType>(t);
    EXPECT_EQ(HABMAddrBlock::encodeMemoryType(HABMAddrBlock::decodeMemoryType(type)), type);
  }
}

// Top with "/u1", "/u1/u2"; map "m" on "/u1" with address blocks "regs" (registers "ctrl", "status") and
// "mem"; map "m2" on "/u1" with block "rom" (register "id"); map "d" on "/u1/u2" with block "regs"
// (register "r").
class HABMMemoryMapTree : public ::testing::Test {
 protected:
  void SetUp() override {
    top_ = HABMBlock::createTopBlock("top");
    u1_ = top_->createSubBlock("u1", "m1", false);
    HABMMemoryMap* map = u1_->createMemoryMap("m");
    regs_ = map->createAddrBlock("regs");
    ctrl_ = regs_->createRegister("ctrl");
    status_ = regs_->createRegister("status");
    mem_ = map->createAddrBlock("mem");
    rom_ = u1_->createMemoryMap("m2")->createAddrBlock("rom");
    id_ = rom_->createRegister("id");
    deep_ = u1_->createSubBlock("u2", "m2", false)->createMemoryMap("d")->createAddrBlock("regs");
    deepReg_ = deep_->createRegister("r");
  }
  void TearDown() override { EXPECT_EQ(top_->check(), std::vector<std::string>()); }

  std::unique_ptr<HABMBlock> top_;
  HABMBlock* u1_ = nullptr;
  HABMAddrBlock *regs_ = nullptr, *mem_ = nullptr, *rom_ = nullptr, *deep_ = nullptr;
  HABMRegister *ctrl_ = nullptr, *status_ = nullptr, *id_ = nullptr, *deepReg_ = nullptr;
};

TEST_F(HABMMemoryMapTree, NestedFindsTakeTheirHolderFromTheHead) {
  EXPECT_EQ(top_->findAddrBlock("/u1/m/regs", false), regs_);
  EXPECT_EQ(top_->findRegister("/u1/m/regs/ctrl", false), ctrl_);
  EXPECT_EQ(u1_->findRegister("m/regs/ctrl", false), ctrl_);
  EXPECT_EQ(top_->findRegister("u1/u2/d/regs/r", false), nullptr);
  EXPECT_EQ(top_->findRegister("u1/u2/d/regs/r", true), deepReg_);
  EXPECT_EQ(top_->findAddrBlock("regs", true), nullptr);
  EXPECT_EQ(top_->findRegister("u1/m/regs", true), nullptr);
}

TEST_F(HABMMemoryMapTree, PluralFindsWalkMapsBlocksAndRegistersInOrder) {
  EXPECT_EQ(u1_->findAddrBlocks("", false), (std::vector<HABMAddrBlock*>{regs_, mem_, rom_}));
  EXPECT_EQ(top_->findAddrBlocks("*/regs", true), (std::vector<HABMAddrBlock*>{regs_, deep_}));
  EXPECT_EQ(top_->findRegisters("", true), (std::vector<HABMRegister*>{ctrl_, status_, id_, deepReg_}));
  EXPECT_TRUE(top_->findRegisters("", false).empty());
  EXPECT_EQ(top_->findRegisters("/u1/m*/*/?d", true), (std::vector<HABMRegister*>{id_}));
}

}  // namespace

// HABMMemoryMapTest.cpp: memory maps, address blocks, registers and fields: creators, vocabularies, finds,
// copies and traces.
#include "blockmodel/HABMMemoryMap.h"

#include "blockmodel/HABMAddrBlock.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMRegister.h"
#include "blockmodel/HABMRegisterField.h"
#include "msg/ComMsgMgr.h"

#include "HABMAddrTestUtil.h"

#include <gtest/gtest.h>

namespace {

constexpr unsigned int kBlockMask = 0x1000000U;
constexpr unsigned int kChildMask = 0x1000002U;

// Top with "/u1", "/u1/u2"; map "m" on "/u1" with address block "regs" holding register "ctrl".
class HABMMemoryMapTree : public ::testing::Test {
 protected:
  void SetUp() override {
    top_ = HABMBlock::createTopBlock("top");
    u1_ = top_->createSubBlock("u1", "m1", false);
    u2_ = u1_->createSubBlock("u2", "m2", false);
    map_ = u1_->createMemoryMap("m");
    regs_ = map_->createAddrBlock("regs");
    ctrl_ = regs_->createRegister("ctrl");
  }
  void TearDown() override { EXPECT_EQ(top_->check(), std::vector<std::string>()); }
  std::unique_ptr<HABMBlock> top_;
  HABMBlock* u1_ = nullptr;
  HABMBlock* u2_ = nullptr;
  HABMMemoryMap* map_ = nullptr;
  HABMAddrBlock* regs_ = nullptr;
  HABMRegister* ctrl_ = nullptr;
};

TEST_F(HABMMemoryMapTree, NewObjectsHaveTheDefaults) {
  HABMMemoryMap* fresh = u2_->createMemoryMap("fresh");
  EXPECT_EQ(fresh->getRange(), HABMAddrValue::CONST_4G());
  EXPECT_TRUE(fresh->getAddrBlocks().empty());
  EXPECT_EQ(regs_->getMemoryType(), HABMAddrBlock::TYPE_REGISTER);
  EXPECT_EQ(regs_->getMemoryAccess(), HABMAddrBlock::ACCESS_READ_WRITE);
  EXPECT_EQ(regs_->getAperture(), HABMAddrAperture::DEFAULT());
  EXPECT_EQ(ctrl_->getWidth(), 32U);
  EXPECT_EQ(ctrl_->getOffset(), HABMAddrValue::CONST_0());
  EXPECT_EQ(ctrl_->getAccess(), HABMRegister::ACCESS_READ_WRITE);
  EXPECT_EQ(ctrl_->getReset(), HABMAddrValue::CONST_0());
  EXPECT_EQ(ctrl_->getValue(), HABMAddrValue::CONST_0());
  EXPECT_TRUE(ctrl_->getDescription().empty());
  HABMRegisterField* field = ctrl_->createField("en");
  EXPECT_EQ(field->getOffset(), 0U);
  EXPECT_EQ(field->getWidth(), 1U);
  EXPECT_EQ(field->getReset(), HABMAddrValue::CONST_0());
}

TEST_F(HABMMemoryMapTree, PathsNestEveryLevel) {
  EXPECT_EQ(map_->getPath(), "/u1/m");
  EXPECT_EQ(regs_->getPath(), "/u1/m/regs");
  EXPECT_EQ(ctrl_->getPath(), "/u1/m/regs/ctrl");
  EXPECT_EQ(ctrl_->createField("en")->getPath(), "/u1/m/regs/ctrl/en");
  EXPECT_EQ(top_->createMemoryMap("m")->getPath(), "/m");
}

TEST_F(HABMMemoryMapTree, NestedCreatorsRefuseEmptySeparatedAndTakenNames) {
  for (char const* bad : {"", "a/b", "regs"}) {
    EXPECT_EQ(map_->createAddrBlock(bad), nullptr) << bad;
  }
  for (char const* bad : {"", "a/b", "ctrl"}) {
    EXPECT_EQ(regs_->createRegister(bad), nullptr) << bad;
  }
  ctrl_->createField("en");
  for (char const* bad : {"", "a/b", "en"}) {
    EXPECT_EQ(ctrl_->createField(bad), nullptr) << bad;
  }
  EXPECT_EQ(map_->getAddrBlocks().size(), 1U);
  EXPECT_EQ(regs_->getRegisters().size(), 1U);
  EXPECT_EQ(ctrl_->getFields().size(), 1U);
}

TEST_F(HABMMemoryMapTree, NothingIsCheckedAgainstTheEnclosingObject) {
  regs_->setAperture(HABMAddrAperture(HABMAddrValue::CONST_4G(), HABMAddrValue::CONST_1G()));
  map_->setRange(HABMAddrValue::CONST_4K());
  HABMAddrBlock* overlapping = map_->createAddrBlock("other");
  EXPECT_NE(overlapping, nullptr);
  HABMRegisterField* field = ctrl_->createField("wide");
  field->setOffset(30);
  field->setWidth(8);
  EXPECT_EQ(field->getOffset() + field->getWidth(), 38U);
  regs_->setOffset(HABMAddrValue(0x10U));
  EXPECT_EQ(regs_->getRange(), HABMAddrValue::CONST_1G());
}

TEST_F(HABMMemoryMapTree, RemovalsKeepTheOrderOfTheRest) {
  regs_->createRegister("b");
  regs_->createRegister("c");
  EXPECT_FALSE(regs_->removeRegister("zz"));
  EXPECT_TRUE(regs_->removeRegister("b"));
  auto const left = regs_->getRegisters();
  ASSERT_EQ(left.size(), 2U);
  EXPECT_EQ(left[0], ctrl_);
  EXPECT_EQ(left[1]->getName(), "c");
  EXPECT_TRUE(map_->removeAddrBlock("regs"));
  EXPECT_FALSE(map_->removeAddrBlock("regs"));
  EXPECT_TRUE(u1_->removeMemoryMap("m"));
  EXPECT_FALSE(u1_->hasMemoryMaps());
}

TEST_F(HABMMemoryMapTree, RegisterParametersFollowTheBlockRules) {
  EXPECT_EQ(ctrl_->createParameter("", "x"), nullptr);
  EXPECT_EQ(ctrl_->setParameter("p", "x", false), nullptr);
  EXPECT_TRUE(ctrl_->getParameters().empty());
  HABMParameter* p = ctrl_->setParameter("p", "x", true);
  ASSERT_NE(p, nullptr);
  EXPECT_EQ(p->getValue(), "x");
  EXPECT_EQ(ctrl_->setParameter("p", "y", false), p);
  EXPECT_EQ(p->getValue(), "y");
  EXPECT_EQ(ctrl_->createParameter("p", "z"), nullptr);
  EXPECT_EQ(ctrl_->setParameter("a/b", "x", true), nullptr);
  EXPECT_TRUE(ctrl_->removeParameter("p"));
  EXPECT_FALSE(ctrl_->removeParameter("p"));
}

// The address block's access, the register's and the field's are three types over one set of words;
// the two memory types are different sets.
TEST(HABMAddrVocabulary, AccessWordsReadInAnyCaseWithDashesForUnderscores) {
  struct Row {
    char const* text;
    int value;
  };
  for (Row const& row :
       {Row{"read_write", 0}, Row{"Read-Write", 0}, Row{"READ_ONLY", 1}, Row{"read-only", 1},
        Row{"write-only", 2}, Row{"writeonce", 3}, Row{"write-once", 5}, Row{"write_once", 5},
        Row{"read-writeonce", 4}, Row{"read_writeonce", 4}, Row{"rw", 5}, Row{"", 5}}) {
    EXPECT_EQ(static_cast<int>(HABMAddrBlock::encodeMemoryAccess(row.text)), row.value) << row.text;
    EXPECT_EQ(static_cast<int>(HABMRegister::encodeRegisterAccess(row.text)), row.value) << row.text;
    EXPECT_EQ(static_cast<int>(HABMRegisterField::encodeFieldAccess(row.text)), row.value) << row.text;
  }
  EXPECT_EQ(HABMAddrBlock::decodeMemoryAccess(HABMAddrBlock::ACCESS_WRITEONCE), "writeonce");
  EXPECT_EQ(HABMRegister::decodeRegisterAccess(HABMRegister::ACCESS_READ_ONLY), "read_only");
  EXPECT_EQ(HABMRegisterField::decodeFieldAccess(HABMRegisterField::ACCESS_READ_WRITEONCE), "read_writeonce");
  EXPECT_EQ(HABMAddrBlock::decodeMemoryAccess(HABMAddrBlock::ACCESS_UNKNOWN), "");
  EXPECT_EQ(HABMRegister::decodeRegisterAccess(HABMRegister::ACCESS_UNKNOWN), "");
  EXPECT_EQ(HABMRegisterField::decodeFieldAccess(HABMRegisterField::ACCESS_UNKNOWN), "");
}

TEST(HABMAddrVocabulary, AddressBlockMemoryTypesAreNotTheSegmentWords) {
  struct Row {
    char const* text;
    HABMAddrBlock::MemoryType type;
  };
  for (Row const& row :
       {Row{"aperture", HABMAddrBlock::TYPE_APERTURE}, Row{"Register", HABMAddrBlock::TYPE_REGISTER},
        Row{"memory", HABMAddrBlock::TYPE_MEMORY}, Row{"Flash", HABMAddrBlock::TYPE_FLASH},
        Row{"RESERVED", HABMAddrBlock::TYPE_RESERVED}, Row{"both", HABMAddrBlock::TYPE_UNKNOWN},
        Row{"read-only", HABMAddrBlock::TYPE_UNKNOWN}}) {
    EXPECT_EQ(HABMAddrBlock::encodeMemoryType(row.text), row.type) << row.text;
  }
  EXPECT_EQ(HABMAddrBlock::decodeMemoryType(HABMAddrBlock::TYPE_FLASH), "flash");
  EXPECT_EQ(HABMAddrBlock::decodeMemoryType(HABMAddrBlock::TYPE_UNKNOWN), "");
}

TEST_F(HABMMemoryMapTree, NestedFindsTakeTheirHolderFromTheHead) {
  HABMMemoryMap* deep = u2_->createMemoryMap("d");
  HABMRegister* deepReg = deep->createAddrBlock("b")->createRegister("r");
  EXPECT_EQ(top_->findMemoryMap("u1/m", false), map_);
  EXPECT_EQ(top_->findAddrBlock("/u1/m/regs", false), regs_);
  EXPECT_EQ(top_->findRegister("/u1/m/regs/ctrl", false), ctrl_);
  EXPECT_EQ(u1_->findRegister("m/regs/ctrl", false), ctrl_);
  EXPECT_EQ(top_->findRegister("u1/u2/d/b/r", false), nullptr);
  EXPECT_EQ(top_->findRegister("u1/u2/d/b/r", true), deepReg);
  EXPECT_EQ(top_->findAddrBlock("regs", true), nullptr);
  EXPECT_EQ(u2_->findAddrBlock("/u1/m/regs", true), nullptr);
}

TEST_F(HABMMemoryMapTree, PluralFindsWalkMapsBlocksAndRegistersInOrder) {
  HABMAddrBlock* mem = map_->createAddrBlock("mem");
  HABMRegister* status = regs_->createRegister("status");
  HABMMemoryMap* second = u1_->createMemoryMap("m2");
  HABMAddrBlock* rom = second->createAddrBlock("rom");
  HABMRegister* id = rom->createRegister("id");
  HABMAddrBlock* deep = u2_->createMemoryMap("d")->createAddrBlock("regs");
  EXPECT_EQ(u1_->findAddrBlocks("", false), (std::vector<HABMAddrBlock*>{regs_, mem, rom}));
  EXPECT_EQ(top_->findAddrBlocks("*/regs", true), (std::vector<HABMAddrBlock*>{regs_, deep}));
  EXPECT_EQ(top_->findRegisters("", true), (std::vector<HABMRegister*>{ctrl_, status, id}));
  EXPECT_TRUE(top_->findRegisters("", false).empty());
  EXPECT_EQ(top_->findMemoryMaps("/u1/m?", true), (std::vector<HABMMemoryMap*>{second}));
}

TEST(HABMMemoryMapTrace, NestedChildrenAreTracedByTheirPath) {
  auto top = HABMBlock::createTopBlock("top");
  HABMBlock* u1 = top->createSubBlock("u1", "m", false);
  ComMsgCapture capture;
  ComMsgScopeGuard on("HABM");
  HABMMemoryMap* map = u1->createMemoryMap("m");
  u1->createMemoryMap("");
  HABMAddrBlock* regs = map->createAddrBlock("regs");
  map->createAddrBlock("regs");
  HABMRegister* ctrl = regs->createRegister("ctrl");
  ctrl->createField("en");
  ctrl->createField("en");
  ctrl->createParameter("p", "1");
  ctrl->createParameter("p", "1");
  ctrl->removeParameter("p");
  ctrl->removeField("en");
  ctrl->clearFields();
  regs->removeRegister("ctrl");
  map->removeAddrBlock("regs");
  u1->removeMemoryMap("m");
  EXPECT_EQ(habm_test::tracesOf(capture),
            (habm_test::Traces{
                {"Created memory map 'm' on block '/u1'.\n", kChildMask},
                {"Failed to create memory map '' on block '/u1'.\n", kBlockMask},
                {"Created address block '/u1/m/regs'.\n", kChildMask},
                {"Created register '/u1/m/regs/ctrl'.\n", kChildMask},
                {"Created register field '/u1/m/regs/ctrl/en'.\n", kChildMask},
                {"Created parameter 'p' on register '/u1/m/regs/ctrl'.\n", kChildMask},
                {"Failed to create parameter 'p' on register '/u1/m/regs/ctrl'.\n", kBlockMask},
                {"Removed parameter 'p' from register '/u1/m/regs/ctrl'.\n", kBlockMask},
                {"Removed register field '/u1/m/regs/ctrl/en'.\n", kChildMask},
                {"Removed register '/u1/m/regs/ctrl'.\n", kChildMask},
                {"Removed address block '/u1/m/regs'.\n", kChildMask},
                {"Removed memory map 'm' from block '/u1'.\n", kChildMask},
            }));
}

}  // namespace

// HABMJsonAddrTest.cpp: the address objects in block model files: round trip, members and their order,
// defaults left out, and what the reader does with missing or odd fields.
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMJsonReader.h"
#include "msg/ComMsgMgr.h"
#include "util/HUTFile.h"

#include "HABMAddrTestUtil.h"
#include "HABMTestFiles.h"

#include <gtest/gtest.h>

namespace {

using HABMJsonAddr = habm_test::TempDirTest;

TEST_F(HABMJsonAddr, EveryFieldOfEveryAddressClassRoundTrips) {
  auto const back = roundTrip(*habm_test::makeAddrDesign(), "a.bm");
  ASSERT_NE(back, nullptr);
  // The paths came back relative and still resolve.
  HABMAddrAssign const* local = back->getSubBlock("u0")->getAddrAssign("local");
  EXPECT_EQ(local->getSourceAddrBlock(), back->findAddrBlock("/u0/m/regs", true));
}

TEST_F(HABMJsonAddr, MembersStandInTheirOrderAndDefaultsAreLeftOut) {
  auto top = HABMBlock::createTopBlock("t");
  top->createAddrSpace("s")->createAddrSegment("seg");
  HABMAddrBlock* mem = top->createMemoryMap("m")->createAddrBlock("mem");
  mem->setMemoryType(HABMAddrBlock::TYPE_MEMORY);
  mem->createRegister("r")->createField("f");
  top->createAddrAssign("");
  EXPECT_EQ(written(*top),
            R"({"schema":"tessel:schema:block_model:1.0","top_block":{"module_name":"t","boundary":{)"
            R"("memory_maps":{"m":{"range":"0x1_0000_0000","address_blocks":{"mem":{"type":"memory",)"
            R"("offset":"0x0","range":"0x1_0000","registers":{"r":{"offset":"0x0","width":32,)"
            R"("fields":{"f":{"offset":0,"width":1}}}}}}}},)"
            R"("address_spaces":{"s":{"range":"0x1_0000_0000","address_segments":{"seg":{)"
            R"("offset":"0x0","range":"0x1_0000"}}}}},)"
            R"("contents":{"address_assignments":{"assignment_0":{"type":"assignment","source":"",)"
            R"("target":"","offset":"0x0","range":"0x0"}}}}})");
}

TEST_F(HABMJsonAddr, OptionalFieldsReadAsTheirDefaultsAndCountsMayBeText) {
  auto const top = read(
      R"({"module_name":"t","boundary":{"memory_maps":{"m":{"range":"4K","address_blocks":{"b":{)"
      R"("type":"Flash","access":"read-only","offset":"0x10","range":"1K","registers":{"r":{)"
      R"("offset":"4","width":"16","fields":{"f":{"offset":3,"width":2}}}}}}}},)"
      R"("address_spaces":{"s":{"range":"1M","address_segments":{"g":{"offset":"0","range":"64K"}}}}}})");
  ASSERT_NE(top, nullptr);
  HABMAddrBlock const* b = top->findAddrBlock("m/b", false);
  ASSERT_NE(b, nullptr);
  EXPECT_EQ(b->getMemoryType(), HABMAddrBlock::TYPE_FLASH);
  EXPECT_EQ(b->getMemoryAccess(), HABMAddrBlock::ACCESS_READ_ONLY);
  HABMRegister const* r = b->getRegister("r");
  EXPECT_EQ(r->getWidth(), 16U);
  EXPECT_EQ(r->getAccess(), HABMRegister::ACCESS_READ_WRITE);
  EXPECT_EQ(r->getField("f")->getAccess(), HABMRegisterField::ACCESS_READ_WRITE);
  EXPECT_EQ(r->getField("f")->getOffset(), 3U);
  EXPECT_EQ(top->findAddrSegment("s/g", false)->getMemoryType(), HABMAddrSegment::TYPE_BOTH);
  EXPECT_EQ(top->getAddrSpace("s")->getRange(), HABMAddrValue::CONST_1M());
}

TEST_F(HABMJsonAddr, AMissingRequiredFieldFailsTheFile) {
  struct Case {
    char const* what;
    char const* topBlock;
  };
  for (Case const& c : {
           Case{"register width", R"({"module_name":"t","boundary":{"memory_maps":{"m":{"range":"4K",)"
                                  R"("address_blocks":{"b":{"type":"memory","offset":"0","range":"1K",)"
                                  R"("registers":{"r":{"offset":"0"}}}}}}}})"},
           Case{"address block type", R"({"module_name":"t","boundary":{"memory_maps":{"m":{"range":"4K",)"
                                      R"("address_blocks":{"b":{"offset":"0","range":"1K"}}}}}})"},
           Case{"segment range", R"({"module_name":"t","boundary":{"address_spaces":{"s":{"range":"4K",)"
                                 R"("address_segments":{"g":{"offset":"0"}}}}}})"},
           Case{"assignment target", R"({"module_name":"t","contents":{"address_assignments":{"a":{)"
                                     R"("type":"internal","source":"m/b","offset":"0","range":"1K"}}}})"},
           Case{"a name taken twice",
                R"({"module_name":"t","boundary":{"address_spaces":{"s":{"range":"1K"},)"
                R"("s":{"range":"2K"}}}})"},
       }) {
    ComMsgCapture capture;
    EXPECT_EQ(read(c.topBlock), nullptr) << c.what;
    EXPECT_EQ(capture.formats().back(), "@90-4@%s") << c.what;
  }
}

TEST_F(HABMJsonAddr, ReplaceEmptiesTheAddressCollectionsOfAPresentGroup) {
  habm_test::put(path("r.bm"),
                 R"({"top_block":{"module_name":"t","boundary":{"address_spaces":{"s":{"range":"1K"}}}}})");
  auto target = HABMBlock::createTopBlock("t");
  target->createMemoryMap("old");
  target->createAddrSpace("old");
  target->createAddrAssign("kept");
  ASSERT_TRUE(HABMJsonReader::readBlock(HUTFile(path("r.bm")), *target, HABMJsonReader::MODE_REPLACE));
  EXPECT_FALSE(target->hasMemoryMaps());
  ASSERT_EQ(target->getAddrSpaces().size(), 1U);
  EXPECT_EQ(target->getAddrSpace("s")->getRange(), HABMAddrValue::CONST_1K());
  EXPECT_TRUE(target->hasAddrAssigns());  // no contents group: assignments stay
}

TEST(HABMJsonAddrExample, TheExampleDesignsAssignmentsResolve) {
  auto const soc = HABMBlock::readTopBlock(HUTFile(std::string(MZ_EXAMPLES_DIR) + "/soc.bm"));
  ASSERT_NE(soc, nullptr);
  EXPECT_EQ(soc->check(), std::vector<std::string>());
  std::vector<HABMAddrAssign*> const assigns = soc->findAddrAssigns("", true);
  ASSERT_EQ(assigns.size(), 3U);
  for (HABMAddrAssign const* assign : assigns) {
    EXPECT_NE(assign->getSourceAddrBlock(), nullptr) << assign->getName();
    EXPECT_NE(assign->getTargetAddrSegment(), nullptr) << assign->getName();
  }
  HABMAddrBlock const* ddr = soc->findAddrBlock("/ddr/s_axi/mem", true);
  EXPECT_EQ(HABMAddrAssign::filterByAddrBlock(assigns, ddr).size(), 2U);
  EXPECT_EQ(soc->findRegisters("/periph/*", true).size(), 2U);
}

}  // namespace

// HABMJsonAddrTest.cpp: the address objects in block model files: round trip, members and their order,
// defaults left out, and what the reader does with missing or odd fields.
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMJsonReader.h"
#include "msg/ComMsgMgr.h"
#include "util/HUTFile.h"

#include "HABMAddrTestUtil.h"
#include "HABMTreeCompare.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

namespace fs = std::filesystem;

class HABMJsonAddr : public ::testing::Test {
 protected:
  void SetUp() override {
    dir_ = fs::temp_directory_path() /
           ("mz_bm_addr_" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
    fs::remove_all(dir_);
    fs::create_directories(dir_);
  }
  void TearDown() override { fs::remove_all(dir_); }

  std::string path(std::string const& name) const { return (dir_ / name).string(); }
  static std::string bytes(std::string const& p) {
    std::ifstream in(p, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  }
  // Reads `topBlock`, the text of a "top_block" object, into a new block; null when the read fails.
  std::unique_ptr<HABMBlock> read(std::string const& topBlock) const {
    std::ofstream(path("in.bm"), std::ios::binary) << R"({"top_block":)" << topBlock << "}";
    return HABMBlock::readTopBlock(HUTFile(path("in.bm")));
  }

  fs::path dir_;
};

TEST_F(HABMJsonAddr, EveryFieldOfEveryAddressClassRoundTrips) {
  auto const tree = habm_test::makeAddrDesign();
  ASSERT_TRUE(HABMBlock::writeTopBlock(HUTFile(path("a.bm")), *tree, false));
  auto const back = HABMBlock::readTopBlock(HUTFile(path("a.bm")));
  ASSERT_NE(back, nullptr);
  EXPECT_TRUE(back->check());
  habm_test::expectSameTree(*tree, *back);
  ASSERT_TRUE(HABMBlock::writeTopBlock(HUTFile(path("b.bm")), *back, false));
  EXPECT_EQ(bytes(path("a.bm")), bytes(path("b.bm")));
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
  ASSERT_TRUE(HABMBlock::writeTopBlock(HUTFile(path("d.bm")), *top, false));
  EXPECT_EQ(bytes(path("d.bm")),
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
  std::ofstream(path("r.bm"), std::ios::binary)
      << R"({"top_block":{"module_name":"t","boundary":{"address_spaces":{"s":{"range":"1K"}}}}})";
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
  EXPECT_TRUE(soc->check());
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

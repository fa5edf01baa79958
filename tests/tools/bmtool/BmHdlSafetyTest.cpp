// BmHdlSafetyTest.cpp: the HDL hazard findings of `bmtool check --hdl`: which names count, and for one
// design of each hazard, that the real tools do with the stub and the wrapper what the finding says.
#include "BmHdlSafety.h"

#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMGeneric.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMSVlogWriter.h"
#include "blockmodel/HABMVlogWriter.h"
#include "util/HUTFile.h"

#include "../../shared/common/blockmodel/HABMHdlTestUtil.h"
#include "BmAxiDefinitions.h"
#include "BmHdlHarness.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>

namespace {

using habm_hdl_test::busInterface;
using habm_hdl_test::design;

struct Finding {
  int hazard;
  std::string module;
  std::string text;
};

std::vector<Finding> hazardsOf(HABMBlock const& block) {
  std::vector<ComMsgMgrInstance> found;
  bmtool::findHdlHazards(block, found);
  std::vector<Finding> out;
  for (ComMsgMgrInstance const& f : found) {
    ComMsgRecord const& r = f.getRecord();
    EXPECT_EQ(r.mask, 0x10000000U);
    EXPECT_EQ(r.catalogueId(), "HDL-" + std::to_string(r.line));
    out.push_back({r.line, r.args.front(), r.args.back()});
  }
  return out;
}

HABMPort* port(HABMBlock& block, std::string const& name, HABMPort::PortDirection direction,
               std::uint32_t left) {
  HABMPort* p = block.createPort(name, false);
  p->setPortDirection(direction);
  p->setPortType(left == 0 ? HABMPort::TYPE_WIRE : HABMPort::TYPE_VECTOR);
  p->setPortLeft(left);
  return p;
}

TEST(BmHdlSafety, NamesAreJudgedAsVerilogIdentifiers) {
  // Hazard 0 is none.
  std::pair<std::string, int> const cases[] = {
      {"ok_1", 0},    {"a$b", 0},    {"input", 1}, {"logic", 1},     {"interface", 1},
      {"x-y", 2},     {"3abc", 2},   {"a.b", 2},   {"a b", 2},       {"d[]", 2},
      {"data[3]", 3}, {"d[7:0]", 3}, {"a\nb", 10}, {{"a\0b", 3}, 10}};
  for (auto const& [name, hazard] : cases) {
    SCOPED_TRACE(bmtool::escapeControls(name));
    auto top = HABMBlock::createTopBlock("m");
    port(*top, name, HABMPort::DIR_IN, 7);
    std::vector<Finding> const found = hazardsOf(*top);
    ASSERT_EQ(found.size(), hazard == 0 ? 0U : 1U);
    for (Finding const& f : found) {
      EXPECT_EQ(f.hazard, hazard);
      // The path is printable whatever the name holds.
      EXPECT_EQ(f.text.find_first_of(std::string("\n\r\0", 3)), std::string::npos);
    }
  }
}

TEST(BmHdlSafety, EveryBlockBelowIsJudgedAndCleanDesignsGiveNothing) {
  auto top = design("top", "in clk, out [7:0] q");
  HABMBlock* sub = top->createSubBlock("u0", "leaf", false);
  port(*sub, "wire", HABMPort::DIR_IN, 0);
  sub->createGeneric("WIDTH", "8");
  busInterface(*top, "S_AXI", "orvane:interface:aximm:1.0", HABMInterface::MODE_SLAVE, "", "WDATA=q");
  std::vector<Finding> const found = hazardsOf(*top);
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found.front().module, "leaf");
  EXPECT_EQ(found.front().text,
            " Port '/u0/wire' is named by the reserved word 'wire': Verilator and Icarus Verilog "
            "reject the stub and the wrapper.");
  EXPECT_EQ(hazardsOf(*design("top", "in clk, out [7:0] q, phantom [3:0] p")).size(), 1U);
}

// One design for each hazard, and what each tool does with the files: the finding's word, proven. Each
// design is module "m" with an input [7:0] a, and what the case adds. The verdicts of Verilator and Icarus
// Verilog on the stub, then on the wrapper: A accepts, R rejects, - either.
class BmHdlHazards : public bm_hdl_test::BmHdlTool {};

HABMInterface* axi(HABMBlock& b, std::string const& name, std::string const& vlnv = "aximm") {
  return busInterface(b, name, "orvane:interface:" + vlnv + ":1.0", HABMInterface::MODE_SLAVE, "",
                      vlnv == "aximm" ? "AWADDR=a" : "TDATA=a TVALID=v");
}

TEST_F(BmHdlHazards, EachFindingSaysWhatTheToolsDo) {
  using B = HABMBlock&;
  constexpr auto IN = HABMPort::DIR_IN;
  struct Case {
    std::function<void(HABMBlock&)> build;
    int hazard;
    char const* verdicts;
    char const* claim;  // a part of the finding's text
  } const cases[] = {
      {[](B b) { port(b, "input", IN, 7); }, 1, "RRRR", "Port '/input' is named by the reserved word"},
      {[](B b) { port(b, "x-y", IN, 7); }, 2, "RRRR", "reject the stub and the wrapper"},
      {[](B b) { port(b, "data[3]", IN, 7); }, 3, "A-RR", "stub's port for an array 'data' without a"},
      {[](B b) { b.setModuleName("module"); }, 1, "RRRR", "Module of block '/' is named by the reserved"},
      {[](B b) { b.createGeneric("logic", "1"); }, 1, "RR--", "Generic '/logic'"},
      {[](B b) { b.createGeneric("p[3]", "1"); }, 3, "AR--", "takes the stub's parameter for an array 'p'"},
      {[](B b) { b.createAttribute("a-b", "1"); }, 2, "AR--", "rejects the stub, and Verilator ignores"},
      {[](B b) { axi(b, "interface"); }, 1, "AAR-", "word 'interface': Verilator rejects the wrapper."},
      {[](B b) {
         axi(b, "S0");
         axi(b, "S1");
       },
       4, "AAR-", "'S0', 'S1': the wrapper connects it as '.a(S0.AWADDR)(S1.AWADDR)'"},
      {[](B b) {
         b.getPort("a")->setPortDirection(HABMPort::DIR_OUT);  // which the phantom port then takes over
         port(b, "p", HABMPort::DIR_PHANTOM, 7);
       },
       5, "AAAR", "Icarus Verilog rejects the wrapper, and Verilator gives the port the direction"},
      {[](B b) { port(b, "w", IN, 0)->setPortLeft(7); }, 6, "AARA",
       "declares it 1 bit wide and the wrapper 8"},
      {[](B b) {
         axi(b, "S_AXIS", "axis");
         port(b, "v", IN, 0);
         b.getPort("a")->setPortLeft(11);
       },
       7, "AAR-", "no multiple of 8: the wrapper declares the interface with TDATA_NUM_BYTES(1), 8 bits"},
      {[](B b) { b.createAttribute("NOTE", "say \"hi\""); }, 8, "-R--", "'/NOTE' has a double quote"},
      {[](B b) { axi(b, "S")->createParameter("NOTE", "a\"b"); }, 8, "-R--", "Interface parameter '/S/NOTE'"},
      {[](B b) { b.createGeneric("W", ""); }, 9, "RR--", "writes 'parameter W = ' with nothing after it"},
      {[](B b) { port(b, "a\nb", IN, 7); }, 10, "-R--", "Port '/a\\nb' has a newline or NUL in its name"},
      {[](B b) { port(b, std::string("a\0b", 3), IN, 7); }, 10, "-R--", "Port '/a\\0b'"},
  };
  int index = 0;
  for (Case const& c : cases) {
    std::string const base = path("case" + std::to_string(index++));
    SCOPED_TRACE(base);
    auto top = HABMBlock::createTopBlock("m");
    port(*top, "a", IN, 7);
    c.build(*top);
    std::vector<Finding> const found = hazardsOf(*top);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found.front().hazard, c.hazard);
    EXPECT_NE(found.front().text.find(c.claim), std::string::npos) << found.front().text;

    ASSERT_TRUE(HABMVlogWriter::writeStub(HUTFile(base + ".v"), *top, false));
    bmtool::fillAxiAbstractionDefinitions(*top);
    ASSERT_TRUE(HABMSVlogWriter::writeSVEO(base + ".sv", *top));
    bm_hdl_test::ToolCommands const stub = stubCommands(base + ".v");
    bm_hdl_test::ToolCommands const wrapper = wrapperCommands(base + ".sv", base + ".v");
    // The last Icarus Verilog run reads SystemVerilog; none reads a wrapper with interface ports.
    std::string const commands[] = {stub.front(), stub.back(), wrapper.front(),
                                    wrapper.size() > 1 ? wrapper.back() : ""};
    for (int i = 0; i < 4; ++i) {
      if (c.verdicts[i] != '-') {
        ASSERT_FALSE(commands[i].empty()) << "no tool reads this file";
        EXPECT_EQ(accepts(commands[i]), c.verdicts[i] == 'A') << commands[i] << "\n" << log();
      }
    }
  }
}

}  // namespace

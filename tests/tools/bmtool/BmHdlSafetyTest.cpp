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

namespace {

using bmtool::HdlHazard;
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
  struct Case {
    std::string name;
    int hazard;  // 0: none
  } const cases[] = {
      {"ok_1", 0},      {"a$b", 0},
      {"_x", 0},        {"input", 1},
      {"module", 1},    {"logic", 1},
      {"interface", 1}, {"x-y", 2},
      {"3abc", 2},      {"a.b", 2},
      {"a b", 2},       {"$x", 2},
      {"d[]", 2},       {"[3]", 2},
      {"data[3]", 3},   {"d[7:0]", 3},
      {"m[1][2]", 3},   {std::string("a\nb"), 10},
      {"a\rb", 10},     {std::string("a\0b", 3), 10},
  };
  for (Case const& c : cases) {
    auto top = HABMBlock::createTopBlock("m");
    port(*top, c.name, HABMPort::DIR_IN, 7);
    std::vector<Finding> const found = hazardsOf(*top);
    if (c.hazard == 0) {
      EXPECT_TRUE(found.empty()) << c.name;
    } else {
      ASSERT_EQ(found.size(), 1U) << bmtool::escapeControls(c.name);
      EXPECT_EQ(found.front().hazard, c.hazard) << bmtool::escapeControls(c.name);
      // The path is printable whatever the name holds.
      EXPECT_EQ(found.front().text.find_first_of(std::string("\n\r\0", 3)), std::string::npos);
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

// One design for each hazard, and what each tool does with the files: the finding's word, proven.
class BmHdlHazards : public bm_hdl_test::BmHdlTool {};

enum Verdict { ANY, ACCEPTS, REJECTS };

TEST_F(BmHdlHazards, EachFindingSaysWhatTheToolsDo) {
  using Build = std::function<void(HABMBlock&)>;
  auto const axi = [](HABMBlock& b, std::string const& name, std::string const& maps) {
    busInterface(b, name, "orvane:interface:aximm:1.0", HABMInterface::MODE_SLAVE, "", maps);
  };
  struct Case {
    char const* name;
    char const* module;
    Build build;
    int hazard;
    char const* claim;  // a part of the finding's text
    Verdict stubVerilator, stubIcarus, wrapperVerilator, wrapperIcarus;
  };
  Case const cases[] = {
      {"keyword port", "m", [](HABMBlock& b) { port(b, "input", HABMPort::DIR_IN, 7); },
       HdlHazard::HDL_KEYWORD, "Port '/input' is named by the reserved word 'input'", REJECTS, REJECTS,
       REJECTS, REJECTS},
      {"illegal port", "m", [](HABMBlock& b) { port(b, "x-y", HABMPort::DIR_IN, 7); },
       HdlHazard::HDL_ILLEGAL_NAME, "reject the stub and the wrapper", REJECTS, REJECTS, REJECTS, REJECTS},
      {"array port", "m", [](HABMBlock& b) { port(b, "data[3]", HABMPort::DIR_IN, 7); },
       HdlHazard::HDL_ARRAY_NAME, "Verilator takes the stub's port for an array 'data' without a word",
       ACCEPTS, ANY, REJECTS, REJECTS},
      {"keyword module", "module", [](HABMBlock& b) { port(b, "a", HABMPort::DIR_IN, 7); },
       HdlHazard::HDL_KEYWORD, "Module of block '/' is named by the reserved word 'module'", REJECTS, REJECTS,
       REJECTS, REJECTS},
      {"keyword generic", "m",
       [](HABMBlock& b) {
         port(b, "a", HABMPort::DIR_IN, 7);
         b.createGeneric("logic", "1");
       },
       HdlHazard::HDL_KEYWORD, "Generic '/logic'", REJECTS, REJECTS, ANY, ANY},
      {"array generic", "m",
       [](HABMBlock& b) {
         port(b, "a", HABMPort::DIR_IN, 7);
         b.createGeneric("p[3]", "1");
       },
       HdlHazard::HDL_ARRAY_NAME, "Verilator takes the stub's parameter for an array 'p'", ACCEPTS, REJECTS,
       ANY, ANY},
      {"illegal attribute", "m",
       [](HABMBlock& b) {
         port(b, "a", HABMPort::DIR_IN, 7);
         b.createAttribute("a-b", "1");
       },
       HdlHazard::HDL_ILLEGAL_NAME, "Icarus Verilog rejects the stub, and Verilator ignores the attribute",
       ACCEPTS, REJECTS, ANY, ANY},
      {"keyword interface", "m",
       [&](HABMBlock& b) {
         port(b, "a", HABMPort::DIR_IN, 31);
         axi(b, "interface", "AWADDR=a");
       },
       HdlHazard::HDL_KEYWORD,
       "Interface '/interface' is named by the reserved word 'interface': Verilator rejects "
       "the wrapper.",
       ACCEPTS, ACCEPTS, REJECTS, ANY},
      {"port of two buses", "m",
       [&](HABMBlock& b) {
         port(b, "a", HABMPort::DIR_IN, 31);
         axi(b, "S0", "AWADDR=a");
         axi(b, "S1", "AWADDR=a");
       },
       HdlHazard::HDL_SHARED_PORT, "'S0', 'S1': the wrapper connects it as '.a(S0.AWADDR)(S1.AWADDR)'",
       ACCEPTS, ACCEPTS, REJECTS, ANY},
      {"phantom port", "m",
       [](HABMBlock& b) {
         port(b, "a", HABMPort::DIR_OUT, 7);
         port(b, "p", HABMPort::DIR_PHANTOM, 7);
       },
       HdlHazard::HDL_PHANTOM_PORT,
       "Icarus Verilog rejects the wrapper, and Verilator gives the port the direction", ACCEPTS, ACCEPTS,
       ACCEPTS, REJECTS},
      {"wire with bounds", "m", [](HABMBlock& b) { port(b, "w", HABMPort::DIR_IN, 0)->setPortLeft(7); },
       HdlHazard::HDL_WIRE_BOUNDS,
       "wire with the bounds [7:0]: the stub declares it 1 bit wide and the wrapper 8", ACCEPTS, ACCEPTS,
       REJECTS, ACCEPTS},
      {"TDATA of 12 bits", "m",
       [](HABMBlock& b) {
         port(b, "td", HABMPort::DIR_IN, 11);
         port(b, "tv", HABMPort::DIR_IN, 0);
         busInterface(b, "S_AXIS", "orvane:interface:axis:1.0", HABMInterface::MODE_SLAVE, "",
                      "TDATA=td TVALID=tv");
       },
       HdlHazard::HDL_TDATA_WIDTH,
       "port 'td' of 12 bits, no multiple of 8: the wrapper declares the interface with "
       "TDATA_NUM_BYTES(1), 8 bits",
       ACCEPTS, ACCEPTS, REJECTS, ANY},
      {"quote in an attribute value", "m",
       [](HABMBlock& b) {
         port(b, "a", HABMPort::DIR_IN, 7);
         b.createAttribute("NOTE", "say \"hi\"");
       },
       HdlHazard::HDL_QUOTED_TEXT, "Attribute '/NOTE' has a double quote", ANY, REJECTS, ANY, ANY},
      {"quote in an interface parameter", "m",
       [&](HABMBlock& b) {
         port(b, "a", HABMPort::DIR_IN, 31);
         axi(b, "S", "AWADDR=a");
         b.getInterface("S")->createParameter("NOTE", "a\"b");
       },
       HdlHazard::HDL_QUOTED_TEXT, "Interface parameter '/S/NOTE'", ANY, REJECTS, ANY, ANY},
      {"empty generic", "m",
       [](HABMBlock& b) {
         port(b, "a", HABMPort::DIR_IN, 7);
         b.createGeneric("W", "");
       },
       HdlHazard::HDL_EMPTY_GENERIC, "writes 'parameter W = ' with nothing after it", REJECTS, REJECTS, ANY,
       ANY},
      {"newline in a port name", "m", [](HABMBlock& b) { port(b, "a\nb", HABMPort::DIR_IN, 7); },
       HdlHazard::HDL_CONTROL_NAME, "Port '/a\\nb' has a newline or NUL in its name", ANY, REJECTS, ANY, ANY},
      {"NUL in a port name", "m", [](HABMBlock& b) { port(b, std::string("a\0b", 3), HABMPort::DIR_IN, 7); },
       HdlHazard::HDL_CONTROL_NAME, "Port '/a\\0b'", ANY, REJECTS, ANY, ANY},
  };
  int index = 0;
  for (Case const& c : cases) {
    SCOPED_TRACE(c.name);
    auto top = HABMBlock::createTopBlock(c.module);
    c.build(*top);
    std::vector<Finding> const found = hazardsOf(*top);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found.front().hazard, c.hazard);
    EXPECT_NE(found.front().text.find(c.claim), std::string::npos) << found.front().text;

    std::string const base = path("case" + std::to_string(index++));
    ASSERT_TRUE(HABMVlogWriter::writeStub(HUTFile(base + ".v"), *top, false));
    bmtool::fillAxiAbstractionDefinitions(*top);
    ASSERT_TRUE(HABMSVlogWriter::writeSVEO(base + ".sv", *top));
    auto const judge = [&](Verdict verdict, std::string const& command, char const* what) {
      if (verdict == ANY) {
        return;
      }
      ASSERT_FALSE(command.empty()) << what << ": the tool cannot read this file";
      EXPECT_EQ(accepts(command), verdict == ACCEPTS) << what << ": " << command << "\n" << log();
    };
    bm_hdl_test::ToolCommands const stub = stubCommands(base + ".v");
    judge(c.stubVerilator, stub.verilator, "Verilator on the stub");
    judge(c.stubIcarus, stub.icarus.back(), "Icarus Verilog on the stub");
    bm_hdl_test::ToolCommands const wrapper = wrapperCommands(base + ".sv", base + ".v");
    judge(c.wrapperVerilator, wrapper.verilator, "Verilator on the wrapper");
    judge(c.wrapperIcarus, wrapper.icarus.empty() ? std::string() : wrapper.icarus.back(),
          "Icarus Verilog on the wrapper");
  }
}

}  // namespace

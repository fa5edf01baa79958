// HABMVlogWriterTest.cpp: the HDL writers: the Verilog stub and the SystemVerilog wrapper against golden
// files, the cases the golden designs don't show, the wrapper's instance hints and width parameters, and
// the writers' files and failure messages.
#include "blockmodel/HABMVlogWriter.h"

#include "blockmodel/HABMSVlogWriter.h"
#include "msg/ComMsgMgr.h"

#include "HABMHdlTestUtil.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using namespace habm_hdl_test;
using habm_test::bytes;
using I = HABMInterface;

class HABMHdlWriter : public habm_test::TempDirTest {
 protected:
  std::string stub(HABMBlock const& block) const {
    EXPECT_TRUE(HABMVlogWriter::writeStub(HUTFile(path("stub.v")), block, true));
    return bytes(path("stub.v"));
  }

  static std::string wrapper(HABMBlock const& block) {
    std::ostringstream out;
    EXPECT_TRUE(HABMSVlogWriter().marshal(block, out));
    return out.str();
  }
};

// The text from the end of `from` to the start of the next `to`.
std::string between(std::string const& text, std::string const& from, std::string const& to) {
  std::size_t const begin = text.find(from) + from.size();
  return text.substr(begin, text.find(to, begin) - begin);
}

TEST_F(HABMHdlWriter, MatchesGoldenFiles) {
  for (auto const& [name, make] : kGoldenCases) {
    SCOPED_TRACE(name);
    expectGolden(std::string("stub/") + name + ".v", stub(*make()));
    expectGolden(std::string("wrapper/") + name + ".sv", wrapper(*make()));
  }
  auto const soc = HABMBlock::readTopBlock(HUTFile(std::string(MZ_EXAMPLES_DIR) + "/soc.bm"));
  ASSERT_TRUE(soc);
  HABMBlock* dma = soc->findSubBlock("periph/dma0", true);
  ASSERT_NE(dma, nullptr);
  dma->inferAbstractions();
  expectGolden("stub/soc.v", stub(*soc));
  expectGolden("stub/soc_cpu0.v", stub(*soc->findSubBlock("cpu0", true)));
  expectGolden("stub/soc_periph_dma0.v", stub(*dma));
}

TEST_F(HABMHdlWriter, StubTakesInoutForOddDirectionsWritesTextAsItStandsAndDescribesASharedPortOnce) {
  auto top = design("m", "phantom [7:0] p, unknown u");
  top->createAttribute("NOTE", "say \"hi\"");
  EXPECT_EQ(between(stub(*top), "1 ps\n\n", "\n\n  // stub"),
            "(* NOTE = \"say \"hi\"\" *)\nmodule m (\n  p,\n  u\n);\n\n"
            "  (* OV_INTERFACE_IGNORE = \"true\" *)\n  inout [7:0]p;\n"
            "  (* OV_INTERFACE_IGNORE = \"true\" *)\n  inout u;");
  // A shared port is described for its first interface only: "clk" speaks for A alone; B's mode line then
  // stands on its next port, "v".
  auto shared = design("m", "in clk, in v");
  busInterface(*shared, "A", kAxiS, I::MODE_SLAVE, "", "TVALID=clk");
  busInterface(*shared, "B", kClock, I::MODE_SLAVE, "", "CLK=clk EXTRA=v");
  EXPECT_EQ(between(stub(*shared), "1 ps\n\n", "\n\n  // stub"),
            "\nmodule m (\n  clk,\n  v\n);\n\n"
            "  (* OV_INTERFACE_INFO = \"orvane:interface:axis:1.0 A TVALID\" *)\n"
            "  (* OV_INTERFACE_MODE = \"slave A\" *)\n"
            "  input clk;\n"
            "  (* OV_INTERFACE_INFO = \"orvane:signal:clock:1.0 B EXTRA\" *)\n"
            "  (* OV_INTERFACE_MODE = \"slave B\" *)\n"
            "  input v;");
}

// The first map onto a port names it in the wrapper.
TEST_F(HABMHdlWriter, WrapperHeadOfInterfacePortsAloneAndPhantomPortsWithoutDirection) {
  auto top = design("m", "in [7:0] tdata");
  define(*busInterface(*top, "S", kAxiS, I::MODE_SLAVE, "", "TDATA TLAST=tdata"), {});
  EXPECT_EQ(between(wrapper(*top), "MODULE_TAG\n", "endmodule"),
            "module m_sv_wrapper (\n  axis_v1_0.slave S\n);\n\nm m_i (\n  .tdata(S.TDATA)\n);\n\n");
  EXPECT_EQ(between(wrapper(*design("m", "in a, phantom [1:0] p")), "MODULE_TAG\n", "endmodule"),
            "module m_sv_wrapper (\n  input  a,\n    [1:0]p\n);\n\nm m_i (\n  .a(a),\n  .p(p)\n);\n\n");
}

// A variable-size port gives its bus parameter: widths in bits, the stream's data width in bytes.
TEST_F(HABMHdlWriter, WrapperHintTakesWidthsOfVariableSizePortsOnly) {
  auto top = design("m",
                    "in [5:0] awid, out [2:0] bid, in [0:255] wdata, in [7:0] awlen, out [9:0] buser, "
                    "in [63:0] tdata, in [3:0] tdest");
  HABMInterface* mm = busInterface(*top, "S_AXI", "x:interface:aximm_rtl:2.0.1", I::MODE_SLAVE, "",
                                   "AWID BID WDATA AWLEN BUSER");
  define(*mm, {{"AWID", -1, true},
               {"BID", -1, false},
               {"AWLEN", 8, true},
               {"ARADDR", -1, true},
               {"BUSER", -1, false}});
  mm->getAbstractionDefinition()->addAbstractionDefinitionPort("WDATA", "", "", true, true, -1, 64, "in",
                                                               "out");
  HABMInterface* s = busInterface(*top, "S_AXIS", kAxiS, I::MODE_SLAVE, "", "TDATA TDEST");
  define(*s, {{"TDATA", -1, true}, {"TDEST", -1, true}});
  HABMSVlogWriter writer;
  // One ID_WIDTH, the first ID port's; WDATA is variable on one side only, AWLEN fixed, ARADDR unmapped.
  EXPECT_EQ(writer.generateIntfInstHint(mm), "   aximm_rtl_v2_0_1 #(.ID_WIDTH(6),.BUSER_WIDTH(10)) S_AXI();");
  EXPECT_EQ(writer.generateIntfInstHint(s), "   axis_v1_0 #(.TDATA_NUM_BYTES(8),.TDEST_WIDTH(4)) S_AXIS();");
  EXPECT_EQ(writer.generateIntfInstHint(nullptr), "");
}

TEST_F(HABMHdlWriter, WritersReplaceTheFileOrFailSayingWhere) {
  auto const top = makeAxiBlock();
  habm_test::put(path("x.v"), "old");
  ASSERT_TRUE(HABMVlogWriter::writeStub(HUTFile(path("x.v")), *top, false));
  EXPECT_EQ(bytes(path("x.v")), stub(*top));
  ASSERT_TRUE(HABMSVlogWriter::writeSVEO(path("w.sv"), *top));
  EXPECT_EQ(bytes(path("w.sv")), wrapper(*top));
  for (bool verilog : {true, false}) {
    std::string const where = path("no/such/dir/x");
    ComMsgCapture capture;
    EXPECT_FALSE(verilog ? HABMVlogWriter::writeStub(HUTFile(where), *top, false)
                         : HABMSVlogWriter::writeSVEO(where, *top));
    EXPECT_EQ(capture.formats(), std::vector<std::string>{verilog ? "@90-7@%s" : "@56-598@%s"});
    ASSERT_EQ(capture.texts().size(), 1U);
    EXPECT_NE(capture.texts()[0].find(where), std::string::npos);
  }
}

}  // namespace

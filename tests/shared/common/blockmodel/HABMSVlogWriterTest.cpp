// HABMSVlogWriterTest.cpp: the SystemVerilog wrapper against golden files, its instance hints and width
// parameters, and its failure message.
#include "blockmodel/HABMSVlogWriter.h"

#include "msg/ComMsgMgr.h"

#include "HABMHdlTestUtil.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using namespace habm_hdl_test;

std::string wrapper(HABMBlock const& block) {
  std::ostringstream out;
  EXPECT_TRUE(HABMSVlogWriter().marshal(block, out));
  return out.str();
}

// The wrapper module's text, from its head to "endmodule".
std::string moduleStretch(HABMBlock const& block) {
  std::string const text = wrapper(block);
  std::size_t const from = text.find("module ");
  return text.substr(from, text.find("endmodule") - from);
}

TEST(HABMSVlogWriterTest, MatchesGoldenFiles) {
  for (GoldenCase const& c : goldenCases()) {
    SCOPED_TRACE(c.name);
    expectGolden(std::string("wrapper/") + c.name + ".sv", wrapper(*c.make()));
  }
}

using HABMSVlogWriterFile = habm_test::TempDirTest;

TEST_F(HABMSVlogWriterFile, WritesTheFileAndReportsFailureWithThePath) {
  auto const top = makeAxiBlock();
  ASSERT_TRUE(HABMSVlogWriter::writeSVEO(path("w.sv"), *top));
  EXPECT_EQ(habm_test::bytes(path("w.sv")), wrapper(*top));
  ComMsgCapture capture;
  EXPECT_FALSE(HABMSVlogWriter::writeSVEO(path("missing/w.sv"), *top));
  EXPECT_EQ(capture.formats(), std::vector<std::string>{"@56-598@%s"});
  ASSERT_EQ(capture.texts().size(), 1U);
  EXPECT_NE(capture.texts()[0].find(path("missing/w.sv")), std::string::npos);
}

TEST(HABMSVlogWriterTest, InterfacePortsFollowTheHeadWhenNoPortStaysFlat) {
  auto top = HABMBlock::createTopBlock("m");
  port(*top, "tdata", HABMPort::DIR_IN, 7, 0);
  define(*busInterface(*top, "S", kAxiS, HABMInterface::MODE_SLAVE, {{"TDATA", "tdata"}}), {});
  EXPECT_EQ(moduleStretch(*top),
            "module m_sv_wrapper (\n  axis_v1_0.slave S\n);\n\nm m_i (\n  .tdata(S.TDATA)\n);\n\n");
}

TEST(HABMSVlogWriterTest, PhantomPortHasNoDirection) {
  auto top = HABMBlock::createTopBlock("m");
  wirePort(*top, "a", HABMPort::DIR_IN);
  port(*top, "p", HABMPort::DIR_PHANTOM, 1, 0);
  EXPECT_EQ(moduleStretch(*top),
            "module m_sv_wrapper (\n  input  a,\n    [1:0]p\n);\n\nm m_i (\n  .a(a),\n  .p(p)\n);\n\n");
}

TEST(HABMSVlogWriterTest, InterfaceParameterByBusAndLogicalName) {
  auto top = HABMBlock::createTopBlock("m");
  HABMInterface* mm = busInterface(*top, "MM", kAxiMM, HABMInterface::MODE_SLAVE, {});
  HABMInterface* s = busInterface(*top, "S", kAxiS, HABMInterface::MODE_SLAVE, {});
  HABMInterface* clk = busInterface(*top, "C", kClock, HABMInterface::MODE_SLAVE, {});
  struct {
    HABMInterface* iface;
    char const* logical;
    char const* parameter;
  } const cases[] = {
      {mm, "WDATA", "DATA_WIDTH"},
      {mm, "RDATA", "DATA_WIDTH"},
      {mm, "ARADDR", "ADDR_WIDTH"},
      {mm, "BUSER", "BUSER_WIDTH"},
      {mm, "WID", "ID_WIDTH"},
      {mm, "TDATA", ""},
      {mm, "wdata", ""},
      {s, "TDATA", "TDATA_NUM_BYTES"},
      {s, "TDEST", "TDEST_WIDTH"},
      {s, "WDATA", ""},
      {clk, "WDATA", ""},
      {nullptr, "WDATA", ""},
  };
  HABMSVlogWriter writer;
  for (auto const& c : cases) {
    EXPECT_EQ(writer.findCorrespondingInterfaceParam(c.logical, c.iface), c.parameter) << c.logical;
  }
}

TEST(HABMSVlogWriterTest, HintTakesWidthsOfVariableSizePortsOnly) {
  auto top = HABMBlock::createTopBlock("m");
  port(*top, "awid", HABMPort::DIR_IN, 5, 0);
  port(*top, "bid", HABMPort::DIR_OUT, 2, 0);
  port(*top, "wdata", HABMPort::DIR_IN, 0, 255);
  port(*top, "awlen", HABMPort::DIR_IN, 7, 0);
  HABMInterface* mm =
      busInterface(*top, "S_AXI", "x:interface:aximm_rtl:2.0.1", HABMInterface::MODE_SLAVE,
                   {{"AWID", "awid"}, {"BID", "bid"}, {"WDATA", "wdata"}, {"AWLEN", "awlen"}});
  auto const definition = mm->getAbstractionDefinition();
  definition->addAbstractionDefinitionPort("AWID", "", "", true, true, -1, -1, "in", "out");
  definition->addAbstractionDefinitionPort("BID", "", "", true, true, -1, -1, "out", "in");
  definition->addAbstractionDefinitionPort("AWLEN", "", "", true, true, 8, 8, "in", "out");
  definition->addAbstractionDefinitionPort("WDATA", "", "", true, true, -1, 64, "in", "out");
  definition->addAbstractionDefinitionPort("ARADDR", "", "", true, true, -1, -1, "in", "out");
  HABMSVlogWriter writer;
  // One ID_WIDTH, the first ID port's; WDATA is variable on one side only, AWLEN fixed, ARADDR unmapped.
  EXPECT_EQ(writer.generateIntfInstHint(mm), "   aximm_rtl_v2_0_1 #(.ID_WIDTH(6)) S_AXI();");
  EXPECT_EQ(writer.generateIntfInstHint(nullptr), "");
}

TEST(HABMSVlogWriterTest, StreamDataWidthIsGivenInBytes) {
  auto top = HABMBlock::createTopBlock("m");
  port(*top, "tdata", HABMPort::DIR_IN, 63, 0);
  HABMInterface* s = busInterface(*top, "S_AXIS", kAxiS, HABMInterface::MODE_SLAVE, {{"TDATA", "tdata"}});
  define(*s, axiSSubset());
  EXPECT_EQ(HABMSVlogWriter().generateIntfInstHint(s), "   axis_v1_0 #(.TDATA_NUM_BYTES(8)) S_AXIS();");
}

TEST(HABMSVlogWriterTest, LogicalNameOfTheFirstMapOntoAPort) {
  auto top = HABMBlock::createTopBlock("m");
  wirePort(*top, "v", HABMPort::DIR_IN);
  HABMInterface* s =
      busInterface(*top, "S", kAxiS, HABMInterface::MODE_SLAVE, {{"TVALID", "v"}, {"TLAST", "v"}});
  HABMSVlogWriter writer;
  EXPECT_EQ(writer.getCorrespondingPortLogicalName("v", s), "TVALID");
  EXPECT_EQ(writer.getCorrespondingPortLogicalName("w", s), "");
  EXPECT_EQ(writer.getCorrespondingPortLogicalName("v", nullptr), "");
}

}  // namespace

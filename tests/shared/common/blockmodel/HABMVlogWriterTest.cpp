// HABMVlogWriterTest.cpp: the Verilog stub against golden files, and the cases the golden designs don't
// show.
#include "blockmodel/HABMVlogWriter.h"

#include "msg/ComMsgMgr.h"

#include "HABMHdlTestUtil.h"

#include <gtest/gtest.h>

namespace {

using namespace habm_hdl_test;
using habm_test::bytes;

class HABMVlogWriterTest : public habm_test::TempDirTest {
 protected:
  std::string stub(HABMBlock const& block) const {
    EXPECT_TRUE(HABMVlogWriter::writeStub(HUTFile(path("stub.v")), block, true));
    return bytes(path("stub.v"));
  }

  // The declaration section: everything between the port list's end and the stub comment.
  std::string declarations(HABMBlock const& block) const {
    std::string const text = stub(block);
    std::size_t const from = text.find(");\n\n") + 4;
    return text.substr(from, text.find("\n\n  // stub") - from);
  }
};

TEST_F(HABMVlogWriterTest, MatchesGoldenFiles) {
  for (GoldenCase const& c : goldenCases()) {
    SCOPED_TRACE(c.name);
    expectGolden(std::string("stub/") + c.name + ".v", stub(*c.make()));
  }
}

TEST_F(HABMVlogWriterTest, ExampleBlocksMatchGoldenFiles) {
  auto const soc = HABMBlock::readTopBlock(HUTFile(std::string(MZ_EXAMPLES_DIR) + "/soc.bm"));
  ASSERT_TRUE(soc);
  HABMBlock* dma = soc->findSubBlock("periph/dma0", true);
  ASSERT_NE(dma, nullptr);
  dma->inferAbstractions();
  expectGolden("stub/soc.v", stub(*soc));
  expectGolden("stub/soc_cpu0.v", stub(*soc->findSubBlock("cpu0", true)));
  expectGolden("stub/soc_periph_dma0.v", stub(*dma));
}

TEST_F(HABMVlogWriterTest, EveryDirectionButInAndOutIsInout) {
  struct {
    HABMPort::PortDirection direction;
    char const* declaration;
  } const cases[] = {{HABMPort::DIR_IN, "  input [7:0]d;"},
                     {HABMPort::DIR_OUT, "  output [7:0]d;"},
                     {HABMPort::DIR_INOUT, "  inout [7:0]d;"},
                     {HABMPort::DIR_PHANTOM, "  inout [7:0]d;"},
                     {HABMPort::DIR_UNKNOWN, "  inout [7:0]d;"}};
  for (auto const& c : cases) {
    auto top = HABMBlock::createTopBlock("m");
    port(*top, "d", c.direction, 7, 0);
    EXPECT_EQ(declarations(*top), std::string("  (* OV_INTERFACE_IGNORE = \"true\" *)\n") + c.declaration);
  }
}

TEST_F(HABMVlogWriterTest, TextIsWrittenAsItStands) {
  auto top = HABMBlock::createTopBlock("m");
  top->createAttribute("NOTE", "say \"hi\"");
  std::string const text = stub(*top);
  EXPECT_NE(
      text.find("\n(* NOTE = \"say \"hi\"\" *)\nmodule m (\n\n);\n\n\n\n  // stub module has no contents\n"),
      std::string::npos)
      << text;
}

TEST_F(HABMVlogWriterTest, SharedPortIsDescribedForItsFirstInterfaceOnly) {
  auto top = HABMBlock::createTopBlock("m");
  wirePort(*top, "clk", HABMPort::DIR_IN);
  wirePort(*top, "v", HABMPort::DIR_IN);
  busInterface(*top, "A", kAxiS, HABMInterface::MODE_SLAVE, {{"TVALID", "clk"}});
  busInterface(*top, "B", kClock, HABMInterface::MODE_SLAVE, {{"CLK", "clk"}, {"EXTRA", "v"}});
  // "clk" speaks for A alone; B's mode line then stands on its next port, "v".
  EXPECT_EQ(declarations(*top),
            "  (* OV_INTERFACE_INFO = \"orvane:interface:axis:1.0 A TVALID\" *)\n"
            "  (* OV_INTERFACE_MODE = \"slave A\" *)\n"
            "  input clk;\n"
            "  (* OV_INTERFACE_INFO = \"orvane:signal:clock:1.0 B EXTRA\" *)\n"
            "  (* OV_INTERFACE_MODE = \"slave B\" *)\n"
            "  input v;");
}

TEST_F(HABMVlogWriterTest, FailureLeavesTheFileAndSaysWhere) {
  auto const top = makePlainBlock();
  ComMsgCapture capture;
  EXPECT_FALSE(HABMVlogWriter::writeStub(HUTFile(path("no/such/dir/x.v")), *top, false));
  EXPECT_EQ(capture.formats(), std::vector<std::string>{"@90-7@%s"});
  ASSERT_EQ(capture.texts().size(), 1U);
  EXPECT_NE(capture.texts()[0].find(path("no/such/dir/x.v")), std::string::npos);
}

TEST_F(HABMVlogWriterTest, RemoveFirstReplacesAnExistingFile) {
  habm_test::put(path("stub.v"), "old");
  auto const top = makePlainBlock();
  ASSERT_TRUE(HABMVlogWriter::writeStub(HUTFile(path("stub.v")), *top, true));
  EXPECT_EQ(bytes(path("stub.v")).rfind("// Copyright", 0), 0U);
  ASSERT_TRUE(HABMVlogWriter::writeStub(HUTFile(path("stub.v")), *top, false));
  EXPECT_EQ(bytes(path("stub.v")).rfind("// Copyright", 0), 0U);
}

}  // namespace

// BmCliTest.cpp: bmtool: exit codes, messages and the outputs users rely on; and the stubs and wrappers of
// every block of the examples, and the golden files of the HDL writers, through real HDL tools (Verilator,
// Icarus Verilog): a file a tool rejects fails.
#include "BmCli.h"

#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMNocInterface.h"
#include "param/HPAParamMgr.h"
#include "util/HUTFile.h"

#include "../../shared/common/blockmodel/HABMTestFiles.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <regex>
#include <set>
#include <sstream>
#include <tuple>

namespace {

namespace fs = std::filesystem;
using habm_test::bytes;
using BmCli = habm_test::TempDirTest;

struct CliRun {
  int code;
  std::string out;
  std::string err;
};

CliRun run(std::vector<std::string> const& args) {
  std::ostringstream out;
  std::ostringstream err;
  int const code = bmtool::runCli(args, out, err);
  return {code, out.str(), err.str()};
}

TEST_F(BmCli, ExitCodesSeparateUsageErrorsFromFailures) {
  std::string const soc = std::string(MZ_EXAMPLES_DIR) + "/soc.bm";
  std::string const missing = "/none.bm";
  std::string const out = path("out");
  struct {
    std::vector<std::string> args;
    int code;
    char const* err = "";  // a part of what goes to the error stream
  } const cases[] = {
      {{}, bmtool::EXIT_USAGE},
      {{"frobnicate"}, bmtool::EXIT_USAGE, "unknown command 'frobnicate'"},
      {{"--help"}, bmtool::EXIT_OK},
      {{"addr", "--help"}, bmtool::EXIT_OK},
      {{"addr", "zz"}, bmtool::EXIT_OK},
      {{"addr"}, bmtool::EXIT_USAGE, "wrong number of arguments"},
      {{"info", "a", "b"}, bmtool::EXIT_USAGE},
      {{"addr", "--bogus", "1"}, bmtool::EXIT_USAGE, "unknown option '--bogus'"},
      {{"addr", "--param"}, bmtool::EXIT_USAGE},
      {{"addr", "--param", "novalue", "1"}, bmtool::EXIT_USAGE},
      {{"generate", out, "--depth", "x"}, bmtool::EXIT_USAGE},
      {{"generate", out, "--depth=40", "--fanout=10"}, bmtool::EXIT_USAGE},
      {{"wrapper", soc, out, "--instance"}, bmtool::EXIT_USAGE},
      {{"info", missing}, bmtool::EXIT_FAILED, "[90-4] Could not read the block model file '/none.bm'."},
      {{"infer", missing, out}, bmtool::EXIT_FAILED, "could not read"},
      {{"stub", soc, out}, bmtool::EXIT_OK},
      {{"wrapper", soc, out, "--instance", "/periph/dma0"}, bmtool::EXIT_OK},
      {{"infer", soc, out, "--instance", "/nowhere"}, bmtool::EXIT_FAILED, "no block at '/nowhere'"},
      {{"stub", soc, "/no/such/dir/x.v"}, bmtool::EXIT_FAILED},
      {{"wrapper", soc, "/no/such/dir/x.sv"}, bmtool::EXIT_FAILED},
  };
  for (auto const& c : cases) {
    CliRun const r = run(c.args);
    EXPECT_EQ(r.code, c.code) << ::testing::PrintToString(c.args) << "\n" << r.err;
    EXPECT_NE(r.err.find(c.err), std::string::npos) << r.err;
  }
}

TEST_F(BmCli, AddrPrintsEveryFormAndTakesNegativeNumbersAsTexts) {
  CliRun const r = run({"addr", "0x1_0000", "-1", "--", "-v", "zz"});
  ASSERT_EQ(r.code, bmtool::EXIT_OK) << r.err;
  // After "--" even "-v" is a text.
  for (char const* row :
       {"^text +valid +hex +pretty hex +binary +size\n", "\n0x1_0000 +yes +0x10000 +0x1_0000 +b10{16} +64K\n",
        "\n-1 +yes +0xF{32} +0x(FFFF_){7}FFFF ", "\n-v +no +- ", "\nzz +no +- "}) {
    EXPECT_TRUE(std::regex_search(r.out, std::regex(row))) << row << " in\n" << r.out;
  }
}

TEST_F(BmCli, ParamOptionReachesTheParameterManager) {
  CliRun const r = run({"addr", "--param", "project.cli.test=true", "--param=project.cli.other=0", "1"});
  ASSERT_EQ(r.code, bmtool::EXIT_OK) << r.err;
  EXPECT_TRUE(HPAParamMgr::getParamMgr().getValueIfExistAsBool("project.cli.test", false));
  EXPECT_FALSE(HPAParamMgr::getParamMgr().getValueIfExistAsBool("project.cli.other", true));
}

TEST_F(BmCli, GenerateConvertAndInfoAgreeOnTheDesign) {
  CliRun const gen = run({"generate", path("g.bm"), "--depth", "2", "--fanout=3", "--attrs", "1"});
  ASSERT_EQ(gen.code, bmtool::EXIT_OK) << gen.err;
  EXPECT_NE(gen.out.find("wrote 13 blocks"), std::string::npos) << gen.out;
  ASSERT_EQ(run({"convert", path("g.bm"), path("g.bm.gz"), "--pretty"}).code, bmtool::EXIT_OK);
  std::string const info = run({"info", path("g.bm.gz")}).out;
  for (char const* line :
       {"\n/u2/u1  +cell_l2_1", "\nblocks +13\n", "\nattributes +13\n", "\nparameters +13\n"}) {
    EXPECT_TRUE(std::regex_search(info, std::regex(line))) << line << " in\n" << info;
  }
}

// The example's "/periph/dma0" brings six interfaces as port attributes.
TEST_F(BmCli, InferRebuildsTheNamedBlockOnly) {
  for (auto const& [instance, interfaces] : {std::pair{"/", "15"}, {"/periph/dma0", "21"}}) {
    CliRun const infer = run({"infer", MZ_EXAMPLES_DIR "/soc.bm", path("out.bm"), "--instance", instance});
    ASSERT_EQ(infer.code, bmtool::EXIT_OK) << infer.err;
    std::string const info = run({"info", path("out.bm")}).out;
    EXPECT_TRUE(std::regex_search(info, std::regex(std::string("\ninterfaces +") + interfaces + "\n")))
        << info;
  }
}

// Every block of the examples goes out and comes back through the three commands; the design comes back
// but for what a merge does on purpose: the top is no longer validated, the block's lock defers upwards
// again unless it is run-time swapped, and BLOCK_STUB is gone.
TEST_F(BmCli, SplitCanMergeAndMergeGiveEveryExampleBlockBack) {
  for (char const* example : {MZ_EXAMPLES_DIR "/noc.bm", MZ_EXAMPLES_DIR "/soc.bm"}) {
    auto const design = HABMBlock::readTopBlock(HUTFile(example));
    ASSERT_NE(design, nullptr);
    std::vector<std::string> paths;
    for (HABMBlock const* block : design->findSubBlocks("", true)) {
      paths.push_back(block->getInstancePath());
    }
    for (std::string const& instance : paths) {
      SCOPED_TRACE(std::string(example) + " " + instance);
      CliRun const split = run({"split", example, "--instance", instance, path("sub.bm"), path("rest.bm")});
      ASSERT_EQ(split.code, bmtool::EXIT_OK) << split.err;
      CliRun const check = run({"canmerge", path("rest.bm"), "--instance", instance, path("sub.bm")});
      EXPECT_EQ(check.code, bmtool::EXIT_OK) << check.out;
      EXPECT_EQ(check.out, "compatible\n");
      CliRun const merge = run(
          {"merge", path("rest.bm"), "--instance", instance, path("sub.bm"), path("back.bm"), "--boundary"});
      ASSERT_EQ(merge.code, bmtool::EXIT_OK) << merge.err;

      auto const expected = HABMBlock::readTopBlock(HUTFile(example));
      HABMBlock* block = expected->findSubBlock(instance, true);
      expected->setValidated(false);
      if (!block->isBlockRsw()) {
        block->setLocked(HABMBlock::UNKNOWN);
      }
      block->setBlockStub(false);
      ASSERT_TRUE(HABMBlock::writeTopBlock(HUTFile(path("expected.bm")), *expected, false));
      EXPECT_EQ(bytes(path("back.bm")), bytes(path("expected.bm")));
    }
  }
  // A UART does not fit a CPU's place; each difference is a line.
  std::string const soc = MZ_EXAMPLES_DIR "/soc.bm";
  ASSERT_EQ(run({"split", soc, "--instance", "/periph/uart0", path("sub.bm"), path("rest.bm")}).code, 0);
  CliRun const differ = run({"canmerge", soc, "--instance", "/cpu0", path("sub.bm")});
  EXPECT_EQ(differ.code, bmtool::EXIT_FAILED);
  EXPECT_TRUE(std::regex_search(differ.out, std::regex("^(.* source module 'uart16550' .*'/cpu0'.*\n){3,}$")))
      << differ.out;
}

// "a" holds "b"; a link enters "b" from "x" beside "a", another leaves it.
TEST_F(BmCli, ACrossingLinkBarsASplitUnlessVirtualInterfacesCutIt) {
  auto const design = HABMBlock::createTopBlock("crossing");
  HABMBlock* b = design->createSubBlock("a", "ma", false)->createSubBlock("b", "mb", false);
  HABMBlock* x = design->createSubBlock("x", "mx", false);
  for (auto const& [block, name, mode] : {std::tuple{b, "nmu", HABMNocInterface::MODE_NMU},
                                          {b, "nsu", HABMNocInterface::MODE_NSU},
                                          {x, "nmu", HABMNocInterface::MODE_NMU},
                                          {x, "nsu", HABMNocInterface::MODE_NSU}}) {
    block->createNocInterface(name)->setNocMode(mode);
  }
  design->createNocConnection("x/nmu", "a/b/nsu", true);
  design->createNocConnection("a/b/nmu", "x/nsu", true);
  ASSERT_TRUE(HABMBlock::writeTopBlock(HUTFile(path("in.bm")), *design, false));

  CliRun const refused = run({"split", path("in.bm"), "--instance", "/a", path("sub.bm"), path("rest.bm")});
  EXPECT_EQ(refused.code, bmtool::EXIT_FAILED);
  EXPECT_NE(
      refused.err.find("  Sub-block instance '/a' has an exported NOC connection from source NOC interface "
                       "'/a/b/nmu' to target NOC interface '/x/nsu'."),
      std::string::npos)
      << refused.err;
  EXPECT_NE(refused.err.find("  Sub-block instance '/a' has an imported NOC connection"), std::string::npos);
  EXPECT_FALSE(fs::exists(path("sub.bm")) || fs::exists(path("rest.bm")));

  CliRun const cut =
      run({"split", path("in.bm"), "--instance", "/a", path("sub.bm"), path("rest.bm"), "--virtual"});
  ASSERT_EQ(cut.code, bmtool::EXIT_OK) << cut.err;
  EXPECT_TRUE(std::regex_search(run({"info", path("sub.bm")}).out, std::regex("\nnoc interfaces +4\n")));
  EXPECT_TRUE(std::regex_search(run({"info", path("rest.bm")}).out, std::regex("/a +ma\n")));
  ASSERT_EQ(run({"merge", path("rest.bm"), "--instance", "/a", path("sub.bm"), path("back.bm")}).code,
            bmtool::EXIT_OK);
  EXPECT_TRUE(std::regex_search(run({"info", path("back.bm")}).out, std::regex("\nnoc connections +4\n")));
}

// Bad input says what is wrong, and no output file is written or changed.
TEST_F(BmCli, ModularCommandsRefuseBadInputAndLeaveTheOutputsAlone) {
  std::string const noc = MZ_EXAMPLES_DIR "/noc.bm";
  habm_test::put(path("old.bm"), "untouched");
  habm_test::put(path("broken.bm"), "{ not json");
  std::string const fresh = path("fresh.bm");
  std::string const old = path("old.bm");
  struct {
    std::vector<std::string> args;
    int code;
    char const* err;
  } const cases[] = {
      {{"split", noc, "--instance", "/nope", fresh, old}, bmtool::EXIT_FAILED, "no block at '/nope'"},
      {{"split", noc, "--instance", "/", fresh, old}, bmtool::EXIT_FAILED, "'/' is the top block itself"},
      {{"split", noc, fresh, old}, bmtool::EXIT_USAGE, "--instance PATH is required"},
      {{"split", noc, "--instance", "/cpu", old, old}, bmtool::EXIT_USAGE, "must be different files"},
      {{"split", noc, "--instance", "/cpu", fresh, "/no/such/dir/rest.bm"},
       bmtool::EXIT_FAILED,
       "could not write '/no/such/dir/rest.bm'"},
      {{"split", path("broken.bm"), "--instance", "/cpu", fresh, old}, bmtool::EXIT_FAILED, "could not read"},
      {{"canmerge", noc, "--instance", "/cpu", path("broken.bm")}, bmtool::EXIT_FAILED, "could not read"},
      {{"canmerge", noc, "--instance", "//", noc}, bmtool::EXIT_FAILED, "is the top block itself"},
      {{"merge", noc, "--instance", "/cpu", path("none.bm"), old}, bmtool::EXIT_FAILED, "could not read"},
      {{"merge", noc, "--instance", "/cpu/x", noc, old}, bmtool::EXIT_FAILED, "no block at '/cpu/x'"},
      {{"merge", noc, "--instance", "/cpu", noc, old}, bmtool::EXIT_FAILED, "[90-3] Cannot merge module"},
  };
  for (auto const& c : cases) {
    CliRun const r = run(c.args);
    EXPECT_EQ(r.code, c.code) << ::testing::PrintToString(c.args) << "\n" << r.err;
    EXPECT_NE(r.err.find(c.err), std::string::npos) << r.err;
    EXPECT_FALSE(fs::exists(fresh)) << ::testing::PrintToString(c.args);
    EXPECT_EQ(bytes(old), "untouched") << ::testing::PrintToString(c.args);
  }
  std::vector<std::string> leftovers;
  for (auto const& entry : fs::directory_iterator(dir_)) {
    leftovers.push_back(entry.path().filename().string());
  }
  EXPECT_EQ(leftovers.size(), 2U) << ::testing::PrintToString(leftovers);
}

// A stub has no contents by design, so its inputs and parameters are unused and its outputs undriven;
// the harness around a wrapper only connects. A port numbered upwards ([0:5]) is the design's choice,
// which the stub keeps bound for bound. The file names are the test's own. Everything else that -Wall
// reports fails the check.
constexpr char kVerilator[] =
    "verilator --lint-only -Wall -Wno-DECLFILENAME -Wno-UNUSEDSIGNAL -Wno-UNUSEDPARAM -Wno-UNDRIVEN "
    "-Wno-LITENDIAN";

// The lines strictly between the line holding `startTag` and the line holding `endTag`.
std::string stretch(std::string const& text, std::string const& startTag, std::string const& endTag) {
  std::size_t const start = text.find(startTag);
  std::size_t const end = text.find(endTag);
  EXPECT_TRUE(start != std::string::npos && end != std::string::npos) << startTag << " or " << endTag;
  std::size_t const from = text.find('\n', start) + 1;
  std::size_t const to = text.rfind('\n', end);
  return to > from ? text.substr(from, to - from) + "\n" : std::string();
}

class BmHdlTool : public habm_test::TempDirTest {
 protected:
  void SetUp() override {
    TempDirTest::SetUp();
    if (std::system("verilator --version >/dev/null 2>&1 && iverilog -V >/dev/null 2>&1") != 0) {
      GTEST_SKIP() << "Verilator or Icarus Verilog is not installed";
    }
  }

  void expectAccepted(std::string const& command) const {
    int const status = std::system((command + " >" + path("tool.log") + " 2>&1").c_str());
    EXPECT_EQ(status, 0) << command << "\n" << bytes(path("tool.log"));
  }

  void checkStub(std::string const& stub) const {
    SCOPED_TRACE(stub);
    expectAccepted(std::string(kVerilator) + " " + stub);
    expectAccepted("iverilog -g2005 -o /dev/null " + stub);
    expectAccepted("iverilog -g2012 -o /dev/null " + stub);
  }

  // A wrapper file is made to be cut apart: its template stretches are pasted by the user into a module of
  // their own, so they stand at file scope in the file itself and no tool reads the file whole. The check
  // pastes them as a user would: the include and module stretches in one file, the templates inside a top
  // module that declares a wire for each flat port, named by the last word of its line ("[3:0]d").
  void checkWrapper(std::string const& wrapper, std::string const& stub) const {
    SCOPED_TRACE(wrapper);
    std::string const text = bytes(wrapper);
    std::string const module = stretch(text, "// INCLUDE_TAG", "// -- INCLUDE_TAG_END") +
                               stretch(text, "// MODULE_TAG", "//-- MODULE_TAG_END");
    std::size_t const headFrom = module.find("(\n") + 2;
    std::istringstream head(module.substr(headFrom, module.find("\n);") - headFrom));
    std::string wires;
    bool interfacePorts = false;
    for (std::string line; std::getline(head, line);) {
      std::string const last = line.substr(line.find_last_of(' ') + 1);
      interfacePorts = interfacePorts || line.find('.') != std::string::npos;
      if (line.find('.') == std::string::npos && !last.empty()) {
        wires += "  wire " + last.substr(0, last.find(',')) + ";\n";
      }
    }
    std::string const base = path(fs::path(wrapper).stem().string());
    habm_test::put(base + "_module.sv", module);
    habm_test::put(base + "_top.sv", "module mz_check_top;\n" + wires +
                                         stretch(text, "// INTF_TAG", "//-- INTF_TAG_END") +
                                         stretch(text, "// INST_TAG", "//-- INST_TAG_END") + "endmodule\n");
    std::string const files = " -I" MZ_HDL_DIR " " + stub + " " + base + "_module.sv " + base + "_top.sv";
    expectAccepted(std::string(kVerilator) + " --top-module mz_check_top" + files);
    // Icarus Verilog has no interface ports; it reads the wrappers that keep every port flat.
    if (!interfacePorts) {
      expectAccepted("iverilog -g2012 -s mz_check_top -o /dev/null" + files);
    }
  }
};

TEST_F(BmHdlTool, GoldenFilesAndTheExamplesStubsAndWrappersPassTheTools) {
  for (auto const& entry : fs::directory_iterator(MZ_GOLDEN_DIR "/stub")) {
    checkStub(entry.path().string());
    fs::path const wrapper = fs::path(MZ_GOLDEN_DIR) / "wrapper" / (entry.path().stem().string() + ".sv");
    if (fs::exists(wrapper)) {
      checkWrapper(wrapper.string(), entry.path().string());
    }
  }
  std::string const design = MZ_EXAMPLES_DIR "/soc.bm";
  auto const top = HABMBlock::readTopBlock(HUTFile(design));
  ASSERT_TRUE(top);
  std::vector<HABMBlock*> blocks = top->findSubBlocks("", true);
  blocks.insert(blocks.begin(), top.get());
  std::set<std::string> modules;
  for (HABMBlock const* block : blocks) {
    // Two instances of one module give one module text in a design; the first stands for both.
    if (!modules.insert(block->getModuleName()).second) {
      continue;
    }
    // A block that brings its interfaces as port attributes only gets them from `bmtool infer`.
    std::string const instance = block == top.get() ? "/" : block->getInstancePath();
    std::string source = design;
    if (!block->hasInterfaces()) {
      source = path("inferred.bm");
      ASSERT_EQ(run({"infer", design, source, "--instance", instance}).code, bmtool::EXIT_OK);
    }
    std::string const base = path("soc_" + block->getModuleName());
    ASSERT_EQ(run({"stub", source, base + ".v", "--instance", instance}).code, bmtool::EXIT_OK);
    ASSERT_EQ(run({"wrapper", source, base + ".sv", "--instance", instance}).code, bmtool::EXIT_OK);
    checkStub(base + ".v");
    checkWrapper(base + ".sv", base + ".v");
  }
}

}  // namespace

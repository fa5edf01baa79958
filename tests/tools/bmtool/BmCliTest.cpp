// BmCliTest.cpp: bmtool: exit codes, messages and the outputs users rely on; and the stubs and wrappers of
// every block of the examples, and the golden files of the HDL writers, through real HDL tools (Verilator,
// Icarus Verilog): a file a tool rejects fails.
#include "BmCli.h"

#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMNocInterface.h"
#include "param/HPAParamMgr.h"
#include "util/HUTFile.h"

#include "../../shared/common/blockmodel/HABMTestFiles.h"
#include "BmHdlHarness.h"
#include "BmProgress.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <thread>
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

// Exit codes separate usage errors from failures; bad input says what is wrong, and no other output file
// is written or changed.
TEST_F(BmCli, ExitCodesSeparateUsageErrorsFromFailuresAndRefusalsLeaveTheOutputsAlone) {
  std::string const soc = std::string(MZ_EXAMPLES_DIR) + "/soc.bm";
  std::string const noc = std::string(MZ_EXAMPLES_DIR) + "/noc.bm";
  std::string const missing = "/none.bm";
  std::string const out = path("out");
  habm_test::put(path("old.bm"), "untouched");
  habm_test::put(path("broken.bm"), "{ not json");
  std::string const fresh = path("fresh.bm");
  std::string const old = path("old.bm");
  struct {
    std::vector<std::string> args;
    int code;
    char const* err = "";  // a part of what goes to the error stream
  } const cases[] = {
      {{}, bmtool::EXIT_USAGE},
      {{"frobnicate"}, bmtool::EXIT_USAGE, "unknown command 'frobnicate'"},
      {{"--help"}, bmtool::EXIT_OK},
      {{"addr", "--help"}, bmtool::EXIT_OK},
      {{"addr", "zz"}, bmtool::EXIT_FAILED},
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
      {{"stub", soc, "/no/such/dir/x.v"},
       bmtool::EXIT_FAILED,
       "could not write '/no/such/dir/x.v': No such file"},
      {{"convert", soc, "/no/such/dir/x.bm"}, bmtool::EXIT_FAILED, "'/no/such/dir/x.bm': No such file"},
      {{"wrapper", soc, "/no/such/dir/x.sv"}, bmtool::EXIT_FAILED},
      {{"constraints", noc, out, "--skip", "hbm", "--skip=accel", "--instance", "/"}, bmtool::EXIT_OK},
      {{"constraints", noc, out, "--skip"}, bmtool::EXIT_USAGE, "--skip needs a value"},
      {{"constraints", noc, "/no/such/dir/x.tcl"},
       bmtool::EXIT_FAILED,
       "[90-7] Could not write the file '/no/such/dir/x.tcl'."},
      {{"check"}, bmtool::EXIT_USAGE},
      {{"check", soc, "--format", "xml"}, bmtool::EXIT_USAGE, "--format takes 'text' or 'json'"},
      {{"check", missing}, bmtool::EXIT_FAILED, "[90-4]"},
      {{"check", soc, "--instance", "/nowhere"}, bmtool::EXIT_FAILED, "no block at '/nowhere'"},
      {{"check", soc, "--hdl", "--format=json"}, bmtool::EXIT_OK},
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
    SCOPED_TRACE(::testing::PrintToString(c.args));
    CliRun const r = run(c.args);
    EXPECT_EQ(r.code, c.code) << r.err;
    EXPECT_NE(r.err.find(c.err), std::string::npos) << r.err;
    EXPECT_FALSE(fs::exists(fresh));
    EXPECT_EQ(bytes(old), "untouched");
  }
  std::set<std::string> leftovers;
  for (auto const& entry : fs::directory_iterator(dir_)) {
    leftovers.insert(entry.path().filename().string());
  }
  EXPECT_EQ(leftovers, (std::set<std::string>{"broken.bm", "old.bm", "out"}));
}

TEST_F(BmCli, AddrPrintsEveryFormAndTakesNegativeNumbersAsTexts) {
  CliRun const r =
      run({"addr", "0x1_0000", "-1", "0x1_0000_0000_0000_0000_0000_0000_0000_0001", "--", "-v", "zz"});
  ASSERT_EQ(r.code, bmtool::EXIT_FAILED) << r.err;
  // After "--" even "-v" is a text.
  for (char const* row :
       {"^text +valid +hex +pretty hex +binary +size\n", "\n0x1_0000 +yes +0x10000 +0x1_0000 +b10{16} +64K\n",
        "\n-1 +yes +0xF{32} +0x(FFFF_){7}FFFF ", "\n0x1(_0000){7}_0001 +wrapped +0x1 ", "\n-v +no +- ",
        "\nzz +no +- "}) {
    EXPECT_TRUE(std::regex_search(r.out, std::regex(row))) << row << " in\n" << r.out;
  }
}

TEST_F(BmCli, ParamOptionReachesTheParameterManagerAndWarnsOfNamesNothingReads) {
  CliRun const r =
      run({"addr", "--param", "project.cli.test=true", "--param=project.enableNocPhases=0", "1"});
  ASSERT_EQ(r.code, bmtool::EXIT_OK) << r.err;
  EXPECT_TRUE(HPAParamMgr::getParamMgr().getValueIfExistAsBool("project.cli.test", false));
  EXPECT_FALSE(HPAParamMgr::getParamMgr().getValueIfExistAsBool("project.enableNocPhases", true));
  EXPECT_EQ(r.err, "bmtool: warning: --param project.cli.test: no part of bmtool reads this parameter\n");
}

// --quiet leaves errors and what was asked for; help COMMAND is COMMAND --help; --version.
TEST_F(BmCli, QuietKeepsOnlyErrorsAndHelpNamesEachCommand) {
  CliRun const warned = run({"addr", "-q", "--param", "project.cli.quiet=1", "1"});
  EXPECT_EQ(warned.code, bmtool::EXIT_OK);
  EXPECT_EQ(warned.err, "");
  EXPECT_NE(warned.out, "");
  EXPECT_EQ(run({"generate", path("g.bm"), "--depth", "1", "--quiet"}).out, "");

  for (bmtool::Command const& c : bmtool::commands()) {
    CliRun const help = run({"help", c.name});
    EXPECT_EQ(help.code, bmtool::EXIT_OK);
    EXPECT_EQ(help.out, run({c.name, "--help"}).out) << c.name;
  }
  EXPECT_EQ(run({"help", "nope"}).code, bmtool::EXIT_USAGE);
  EXPECT_TRUE(std::regex_match(run({"--version"}).out, std::regex("bmtool \\d+\\.\\d+\\.\\d+\n")));
}

// A progress line shows only once its step has taken the delay, and is erased when the step ends.
TEST(BmProgress, DrawsOnlyAfterTheDelayAndErasesItself) {
  std::ostringstream drawn;
  {
    bmtool::ProgressLine const quick(
        &drawn, [] { return std::string("busy"); }, std::chrono::seconds(60));
  }
  EXPECT_EQ(drawn.str(), "");
  {
    std::atomic<bool> measured{false};
    bmtool::ProgressLine const slow(
        &drawn,
        [&measured] {
          measured = true;
          return std::string("busy");
        },
        std::chrono::milliseconds(0));
    for (int waited = 0; !measured && waited < 1000; ++waited) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
  }
  EXPECT_TRUE(std::regex_match(drawn.str(), std::regex("(\\rbusy\x1b\\[K)+\\r\x1b\\[K"))) << drawn.str();
  std::string const file = testing::TempDir() + "/progress_offset";
  std::ofstream out(file);
  out << std::string(5000, 'x') << std::flush;
  EXPECT_EQ(bmtool::openFileOffset(file), std::optional<std::uint64_t>(5000));
  out.close();
  EXPECT_EQ(bmtool::openFileOffset(file), std::nullopt);
}

// A value the reader could not take is lost: without --lenient nothing is written and the run fails (and
// --quiet keeps the errors).
TEST_F(BmCli, AReadWithErrorsWritesNothingUnlessLenient) {
  habm_test::put(path("in.bm"), R"({"top_block":{"module_name":"x","vlnv":{}}})");
  CliRun const strict = run({"convert", path("in.bm"), path("out.bm"), "--quiet"});
  EXPECT_EQ(strict.code, bmtool::EXIT_FAILED);
  EXPECT_FALSE(fs::exists(path("out.bm")));
  EXPECT_TRUE(
      std::regex_search(strict.err, std::regex("^ERROR: (.|\n)*gave 1 error; nothing was written[^\n]*\n$")))
      << strict.err;
  CliRun const lenient = run({"convert", path("in.bm"), path("out.bm"), "--lenient"});
  EXPECT_EQ(lenient.code, bmtool::EXIT_OK) << lenient.err;
  EXPECT_EQ(bytes(path("out.bm")),
            R"({"schema":"tessel:schema:block_model:1.0","top_block":{"module_name":"x"}})");
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

// The NoC example breaks one rule and earns one notice; a variant without the error, with its region left
// to run time, earns a lowered notice instead and passes.
TEST_F(BmCli, CheckPrintsEachFindingAndFailsOnErrorsOnly) {
  CliRun const example = run({"check", MZ_EXAMPLES_DIR "/noc.bm"});
  EXPECT_EQ(example.code, bmtool::EXIT_FAILED);
  EXPECT_EQ(
      example.out,
      "ERROR: [90-6] Design rule violation on module 'noc_soc': NOC interface '/cpu/M_AXI_nmu' parameter ' "
      "WRITE_TRAFFIC_CLASSs invalid value 'low_latency'. Valid values are: 'best_effort', 'isochronous'.\n"
      "WARNING: [90-10] Design rule notice on module 'noc_soc': Addressable NOC interface 'vnmu0' on RP "
      "instance '/accel' must specify one or more address apertures for RSW verification.\n"
      "Findings: ERROR 1, WARNING 1, INFO 0\n");
  EXPECT_EQ(example.err, "");  // findings are the output, not also messages

  auto top = HABMBlock::readTopBlock(HUTFile(MZ_EXAMPLES_DIR "/noc.bm"));
  ASSERT_TRUE(top);
  top->findNocInterface("cpu/M_AXI_nmu", true)->setWriteTrafficClass(HABMNocInterface::TRAFFIC_BEST_EFFORT);
  top->getSubBlock("accel")->setBlockStub(true);
  ASSERT_TRUE(HABMBlock::writeTopBlock(HUTFile(path("variant.bm")), *top, false));
  CliRun const variant = run({"check", path("variant.bm"), "--format", "json"});
  EXPECT_EQ(variant.code, bmtool::EXIT_OK);
  EXPECT_TRUE(std::regex_match(
      variant.out,
      std::regex(R"(\{"severity":"INFO","id":"90-10","module":"noc_soc","text":"[^"]*unresolved RSW region )"
                 R"('accel_rp'[^"]*","rule":82\}\n\{"severity":"WARNING","id":"90-10",[^\n]*"rule":553\}\n)"
                 R"(\{"counts":\{"ERROR":0,"WARNING":1,"INFO":1\}\}\n)")))
      << variant.out;
  // The checks run on the named block alone, which does not see the link drawn above it.
  CliRun const ddr = run({"check", MZ_EXAMPLES_DIR "/noc.bm", "--instance", "/ddr"});
  EXPECT_EQ(ddr.code, bmtool::EXIT_OK);
  EXPECT_TRUE(
      std::regex_match(ddr.out, std::regex("WARNING: [^\n]*'/ddr/S_AXI_nsu' is currently unconnected[^\n]*\n"
                                           "Findings: ERROR 0, WARNING 1, INFO 0\n")))
      << ddr.out;
}

// Names come from files and may hold anything; a finding stays one line of text, or one valid JSON object.
TEST_F(BmCli, CheckOutputStaysOneLinePerFindingWhateverANameHolds) {
  auto top = HABMBlock::createTopBlock("q\"\t\xc3\xa9\xff");
  top->setBlockStub(true);
  ASSERT_TRUE(HABMBlock::writeTopBlock(HUTFile(path("odd.bm")), *top, false));
  CliRun const text = run({"check", path("odd.bm")});
  EXPECT_TRUE(std::regex_match(
      text.out,
      std::regex("WARNING: [^\n]*unresolved module 'q\"\\\\x09\xc3\xa9\xff'\\.\nFindings: [^\n]*\n")))
      << text.out;
  CliRun const json = run({"check", path("odd.bm"), "--format", "json"});
  std::string const name = R"(q\"\u0009)"
                           "\xc3\xa9"
                           R"(\u00ff)";
  EXPECT_EQ(json.out.substr(0, json.out.find(",\"text\"")),
            R"({"severity":"WARNING","id":"90-10","module":")" + name + "\"");
  EXPECT_NE(json.out.find("unresolved module '" + name + "'.\",\"rule\":101}\n{\"counts\""),
            std::string::npos)
      << json.out;
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

using bm_hdl_test::BmHdlTool;

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

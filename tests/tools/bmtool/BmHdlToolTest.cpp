// BmHdlToolTest.cpp: the stubs and wrappers of every block of the example designs, and the golden files
// of the HDL writers, go through real HDL tools (Verilator, Icarus Verilog); a file a tool rejects fails.
#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMPort.h"
#include "util/HUTFile.h"

#include "../../shared/common/blockmodel/HABMTestFiles.h"
#include "BmCli.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

namespace {

namespace fs = std::filesystem;

// A stub has no contents by design, so its inputs and parameters are unused and its outputs undriven;
// the harness around a wrapper only connects. A port numbered upwards ([0:5]) is the design's choice,
// which the stub keeps bound for bound. The file names are the test's own. Everything else that -Wall
// reports fails the check.
constexpr char kVerilator[] =
    "verilator --lint-only -Wall -Wno-DECLFILENAME -Wno-UNUSEDSIGNAL -Wno-UNUSEDPARAM -Wno-UNDRIVEN "
    "-Wno-LITENDIAN";

struct ToolRun {
  int status;
  std::string output;
};

ToolRun runTool(std::string const& command) {
  std::string output;
  FILE* pipe = popen((command + " 2>&1").c_str(), "r");
  char buffer[4096];
  while (std::size_t const n = pipe == nullptr ? 0 : std::fread(buffer, 1, sizeof buffer, pipe)) {
    output.append(buffer, n);
  }
  return {pipe == nullptr ? -1 : pclose(pipe), output};
}

// The lines strictly between the line holding `startTag` and the line holding `endTag`.
std::string stretch(std::string const& text, std::string const& startTag, std::string const& endTag) {
  std::size_t const start = text.find(startTag);
  std::size_t const end = text.find(endTag);
  if (start == std::string::npos || end == std::string::npos) {
    ADD_FAILURE() << "missing " << startTag << " or " << endTag;
    return std::string();
  }
  std::size_t const from = text.find('\n', start) + 1;
  std::size_t const to = text.rfind('\n', end);
  return to > from ? text.substr(from, to - from) + "\n" : std::string();
}

// A wrapper file is made to be cut apart: its template stretches are pasted by the user into a module of
// their own, so they stand at file scope in the file itself and no tool reads the file whole. The check
// pastes them as a user would: the include and module stretches in one file, the templates inside a top
// module that declares a wire for each flat port.
struct CutWrapper {
  std::string module;
  std::string top;
  bool hasInterfacePorts = false;
};

CutWrapper cutWrapper(std::string const& text) {
  CutWrapper cut;
  cut.module = stretch(text, "// INCLUDE_TAG", "// -- INCLUDE_TAG_END") +
               stretch(text, "// MODULE_TAG", "//-- MODULE_TAG_END");
  std::size_t const headFrom = cut.module.find("(\n") + 2;
  std::istringstream head(cut.module.substr(headFrom, cut.module.find("\n);") - headFrom));
  std::string wires;
  for (std::string line; std::getline(head, line);) {
    if (line.find('.') != std::string::npos) {
      cut.hasInterfacePorts = true;
      continue;
    }
    // The last word, "[3:0]d" with its range, names the wire.
    std::string last = line.substr(line.find_last_of(' ') + 1);
    if (!last.empty() && last.back() == ',') {
      last.pop_back();
    }
    if (!last.empty()) {
      wires += "  wire " + last + ";\n";
    }
  }
  cut.top = "module mz_check_top;\n" + wires + stretch(text, "// INTF_TAG", "//-- INTF_TAG_END") +
            stretch(text, "// INST_TAG", "//-- INST_TAG_END") + "endmodule\n";
  return cut;
}

class BmHdlToolTest : public habm_test::TempDirTest {
 protected:
  void requireTools() {
    for (char const* probe : {"verilator --version", "iverilog -V"}) {
      if (runTool(probe).status != 0) {
        GTEST_SKIP() << "not installed: " << probe;
      }
    }
  }

  void expectAccepted(std::string const& command) {
    ToolRun const run = runTool(command);
    EXPECT_EQ(run.status, 0) << command << "\n" << run.output;
  }

  void checkStub(fs::path const& stub) {
    SCOPED_TRACE(stub.string());
    expectAccepted(std::string(kVerilator) + " " + stub.string());
    expectAccepted("iverilog -g2005 -o /dev/null " + stub.string());
    expectAccepted("iverilog -g2012 -o /dev/null " + stub.string());
  }

  void checkWrapper(fs::path const& wrapper, fs::path const& stub) {
    SCOPED_TRACE(wrapper.string());
    CutWrapper const cut = cutWrapper(habm_test::bytes(wrapper.string()));
    fs::path const module = dir_ / (wrapper.stem().string() + "_module.sv");
    fs::path const top = dir_ / (wrapper.stem().string() + "_top.sv");
    std::ofstream(module, std::ios::binary) << cut.module;
    std::ofstream(top, std::ios::binary) << cut.top;
    std::string const files = stub.string() + " " + module.string() + " " + top.string();
    std::string const include = " -I" + std::string(MZ_HDL_DIR);
    expectAccepted(std::string(kVerilator) + include + " --top-module mz_check_top " + files);
    // Icarus Verilog has no interface ports; it reads the wrappers that keep every port flat.
    if (!cut.hasInterfacePorts) {
      expectAccepted("iverilog -g2012" + include + " -s mz_check_top -o /dev/null " + files);
    }
  }
};

// Every block in depth-first order.
void collect(HABMBlock const& block, std::vector<HABMBlock const*>& out) {
  out.push_back(&block);
  for (HABMBlock const* sub : block.getSubBlocks()) {
    collect(*sub, out);
  }
}

// A block that brings its interfaces as port attributes only gets them from `bmtool infer` first.
bool needsInference(HABMBlock const& block) {
  if (!block.getInterfaces().empty()) {
    return false;
  }
  for (HABMPort const* port : block.getPorts()) {
    if (port->getAttribute(HABMAttribute::OV_INTERFACE_INFO()) != nullptr) {
      return true;
    }
  }
  return false;
}

int cli(std::vector<std::string> const& args) {
  std::ostringstream out;
  std::ostringstream err;
  int const code = bmtool::runCli(args, out, err);
  EXPECT_EQ(code, bmtool::EXIT_OK) << err.str();
  return code;
}

TEST_F(BmHdlToolTest, ExampleStubsAndWrappersPassTheTools) {
  requireTools();
  std::size_t checked = 0;
  for (auto const& entry : fs::directory_iterator(MZ_EXAMPLES_DIR)) {
    if (entry.path().extension() != ".bm") {
      continue;
    }
    std::string const design = entry.path().string();
    auto const top = HABMBlock::readTopBlock(HUTFile(design));
    ASSERT_TRUE(top) << design;
    std::vector<HABMBlock const*> blocks;
    collect(*top, blocks);
    std::set<std::string> modules;
    for (HABMBlock const* block : blocks) {
      std::string const path = block == top.get() ? "/" : block->getInstancePath();
      std::string source = design;
      if (needsInference(*block)) {
        source = (dir_ / "inferred.bm").string();
        cli({"infer", design, source, "--instance", path});
      }
      // Two instances of one module give one module text in a design; the first stands for both.
      if (!modules.insert(block->getModuleName()).second) {
        continue;
      }
      std::string const base = entry.path().stem().string() + "_" + block->getModuleName();
      fs::path const stub = dir_ / (base + ".v");
      fs::path const wrapper = dir_ / (base + ".sv");
      ASSERT_EQ(cli({"stub", source, stub.string(), "--instance", path}), bmtool::EXIT_OK);
      ASSERT_EQ(cli({"wrapper", source, wrapper.string(), "--instance", path}), bmtool::EXIT_OK);
      checkStub(stub);
      checkWrapper(wrapper, stub);
      ++checked;
    }
  }
  EXPECT_GT(checked, 0U);
}

TEST_F(BmHdlToolTest, GoldenFilesPassTheTools) {
  requireTools();
  std::size_t checked = 0;
  for (auto const& entry : fs::directory_iterator(std::string(MZ_GOLDEN_DIR) + "/stub")) {
    checkStub(entry.path());
    fs::path const wrapper = fs::path(MZ_GOLDEN_DIR) / "wrapper" / (entry.path().stem().string() + ".sv");
    if (fs::exists(wrapper)) {
      checkWrapper(wrapper, entry.path());
    }
    ++checked;
  }
  EXPECT_GT(checked, 0U);
}

TEST(BmHdlCommandTest, ExitCodes) {
  std::string const soc = std::string(MZ_EXAMPLES_DIR) + "/soc.bm";
  std::string const out = (fs::temp_directory_path() / "bm_hdl_command_exit_codes.v").string();
  struct {
    std::vector<std::string> args;
    int code;
  } const cases[] = {
      {{"stub", soc, out}, bmtool::EXIT_OK},
      {{"wrapper", soc, out, "--instance", "/periph/dma0"}, bmtool::EXIT_OK},
      {{"stub", soc, out, "--instance", "/nowhere"}, bmtool::EXIT_FAILED},
      {{"wrapper", soc, out, "--instance", "/nowhere"}, bmtool::EXIT_FAILED},
      {{"stub", soc + ".missing", out}, bmtool::EXIT_FAILED},
      {{"stub", soc, "/no/such/dir/x.v"}, bmtool::EXIT_FAILED},
      {{"wrapper", soc, "/no/such/dir/x.sv"}, bmtool::EXIT_FAILED},
      {{"stub", soc}, bmtool::EXIT_USAGE},
      {{"wrapper", soc, out, "extra"}, bmtool::EXIT_USAGE},
      {{"wrapper", soc, out, "--instance"}, bmtool::EXIT_USAGE},
  };
  for (auto const& c : cases) {
    std::ostringstream o;
    std::ostringstream e;
    EXPECT_EQ(bmtool::runCli(c.args, o, e), c.code) << c.args[0] << " " << c.args.back() << "\n" << e.str();
  }
  fs::remove(out);
}

}  // namespace

// BmHdlHarness.h: generated HDL judged by real tools (Verilator, Icarus Verilog): the commands that read a
// stub, and a wrapper cut apart and pasted as a user would.
#pragma once

#include "../../shared/common/blockmodel/HABMTestFiles.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

namespace bm_hdl_test {

// A stub has no contents by design, so its inputs and parameters are unused and its outputs undriven;
// the harness around a wrapper only connects. A port numbered upwards ([0:5]) is the design's choice,
// which the stub keeps bound for bound. The file names are the test's own. Everything else that -Wall
// reports fails the check.
constexpr char kVerilator[] =
    "verilator --lint-only -Wall -Wno-DECLFILENAME -Wno-UNUSEDSIGNAL -Wno-UNUSEDPARAM -Wno-UNDRIVEN "
    "-Wno-LITENDIAN";

// The lines strictly between the line holding `startTag` and the line holding `endTag`.
inline std::string stretch(std::string const& text, std::string const& startTag, std::string const& endTag) {
  std::size_t const start = text.find(startTag);
  std::size_t const end = text.find(endTag);
  EXPECT_TRUE(start != std::string::npos && end != std::string::npos) << startTag << " or " << endTag;
  std::size_t const from = text.find('\n', start) + 1;
  std::size_t const to = text.rfind('\n', end);
  return to > from ? text.substr(from, to - from) + "\n" : std::string();
}

/// The commands that read a stub or a wrapper: Verilator's, then Icarus Verilog's. Icarus Verilog is left
/// out of a wrapper with interface ports, which it cannot read.
using ToolCommands = std::vector<std::string>;

class BmHdlTool : public habm_test::TempDirTest {
 protected:
  void SetUp() override {
    TempDirTest::SetUp();
    if (std::system("verilator --version >/dev/null 2>&1 && iverilog -V >/dev/null 2>&1") != 0) {
      GTEST_SKIP() << "Verilator or Icarus Verilog is not installed";
    }
  }

  /// Runs a command; true when it exits with 0. Its output is in `log()` afterwards.
  bool accepts(std::string const& command) const {
    return std::system((command + " >" + path("tool.log") + " 2>&1").c_str()) == 0;
  }
  std::string log() const { return habm_test::bytes(path("tool.log")); }

  static ToolCommands stubCommands(std::string const& stub) {
    return {std::string(kVerilator) + " " + stub, "iverilog -g2005 -o /dev/null " + stub,
            "iverilog -g2012 -o /dev/null " + stub};
  }

  // A wrapper file is made to be cut apart: its template stretches are pasted by the user into a module of
  // their own, so they stand at file scope in the file itself and no tool reads the file whole. The cut
  // pastes them as a user would: the include and module stretches in one file, the templates inside a top
  // module that declares a wire for each flat port, named by the last word of its line ("[3:0]d").
  ToolCommands wrapperCommands(std::string const& wrapper, std::string const& stub) const {
    std::string const text = habm_test::bytes(wrapper);
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
    std::string const base = path(std::filesystem::path(wrapper).stem().string());
    habm_test::put(base + "_module.sv", module);
    habm_test::put(base + "_top.sv", "module mz_check_top;\n" + wires +
                                         stretch(text, "// INTF_TAG", "//-- INTF_TAG_END") +
                                         stretch(text, "// INST_TAG", "//-- INST_TAG_END") + "endmodule\n");
    std::string const files = " -I" MZ_HDL_DIR " " + stub + " " + base + "_module.sv " + base + "_top.sv";
    ToolCommands commands = {std::string(kVerilator) + " --top-module mz_check_top" + files};
    if (!interfacePorts) {
      commands.push_back("iverilog -g2012 -s mz_check_top -o /dev/null" + files);
    }
    return commands;
  }

  void checkStub(std::string const& stub) const { expectAccepted(stub, stubCommands(stub)); }
  void checkWrapper(std::string const& wrapper, std::string const& stub) const {
    expectAccepted(wrapper, wrapperCommands(wrapper, stub));
  }

 private:
  void expectAccepted(std::string const& file, ToolCommands const& commands) const {
    SCOPED_TRACE(file);
    for (std::string const& command : commands) {
      EXPECT_TRUE(accepts(command)) << command << "\n" << log();
    }
  }
};

}  // namespace bm_hdl_test

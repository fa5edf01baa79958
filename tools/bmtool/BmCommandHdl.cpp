// BmCommandHdl.cpp: "bmtool stub", "wrapper" and "constraints": the Verilog stub, the SystemVerilog wrapper
// and the NoC constraint script of one block of a block model file.
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMSVlogWriter.h"
#include "blockmodel/HABMVlogWriter.h"
#include "blockmodel/HABMXdcWriter.h"
#include "util/HUTFile.h"

#include "BmAxiDefinitions.h"
#include "BmCli.h"

#include <functional>
#include <ostream>

namespace bmtool {

namespace {

using Writer = std::function<bool(std::string const& out, HABMBlock const& block)>;

// Reads the file, finds the block named by --instance (the top block by default) and writes it.
int runHdl(Invocation const& inv, std::string const& command, Writer const& write) {
  auto const top = readDesign(inv, inv.positional[0]);
  HABMBlock const* block = top ? selectedBlock(inv, *top) : nullptr;
  if (block == nullptr) {
    return EXIT_FAILED;
  }
  if (!write(inv.positional[1], *block)) {
    sayWriteFailure(inv, command, inv.positional[1]);
    return EXIT_FAILED;
  }
  return EXIT_OK;
}

int runStub(Invocation const& inv) {
  return runHdl(inv, "stub", [](std::string const& out, HABMBlock const& block) {
    return HABMVlogWriter::writeStub(HUTFile(out), block, false);
  });
}

int runWrapper(Invocation const& inv) {
  return runHdl(inv, "wrapper", [](std::string const& out, HABMBlock const& block) {
    fillAxiAbstractionDefinitions(block);
    return HABMSVlogWriter::writeSVEO(out, block);
  });
}

int runConstraints(Invocation const& inv) {
  auto const skip = inv.lists.find("--skip");
  std::vector<std::string> const skipPaths =
      skip == inv.lists.end() ? std::vector<std::string>() : skip->second;
  return runHdl(inv, "constraints", [&skipPaths](std::string const& out, HABMBlock const& block) {
    return HABMXdcWriter::writeXdc(block, HUTFile(out), false, skipPaths);
  });
}

}  // namespace

Command makeStubCommand() {
  Command c;
  c.name = "stub";
  c.summary = "write the Verilog stub of one block";
  c.usage = "bmtool stub FILE OUT [--instance PATH]";
  c.help =
      "Reads FILE and writes to OUT a Verilog module with the boundary of the block at PATH (the top\n"
      "block by default): its attributes, generics and ports, each port with its interface attributes,\n"
      "and no contents. OUT is replaced only when the whole file was written.\n";
  c.options = {"--instance"};
  c.minArgs = 2;
  c.maxArgs = 2;
  c.run = runStub;
  return c;
}

Command makeWrapperCommand() {
  Command c;
  c.name = "wrapper";
  c.summary = "write the SystemVerilog wrapper of one block";
  c.usage = "bmtool wrapper FILE OUT [--instance PATH]";
  c.help =
      "Reads FILE and writes to OUT a SystemVerilog wrapper of the block at PATH (the top block by\n"
      "default) whose AXI buses are SystemVerilog interfaces (types such as aximm_v1_0 from\n"
      "\"interfaces.svh\"), with templates for the interface instances and the wrapper instance.\n"
      "The AXI4 and AXI4-Stream signal sets decide which unimplemented outputs are tied to 0.\n"
      "OUT is replaced only when the whole file was written.\n";
  c.options = {"--instance"};
  c.minArgs = 2;
  c.maxArgs = 2;
  c.run = runWrapper;
  return c;
}

Command makeConstraintsCommand() {
  Command c;
  c.name = "constraints";
  c.summary = "write the NoC constraint script of one block";
  c.usage = "bmtool constraints FILE OUT [--instance PATH] [--skip PATH]...";
  c.help =
      "Reads FILE and writes to OUT the Tcl script that recreates the NoC objects below the block at\n"
      "PATH (the top block by default): editable NoC interfaces and connections are created, those of\n"
      "OPM NoC modules looked up, and their properties set. Paths in the script are relative to the\n"
      "block. --skip leaves out the objects of every block whose path relative to the block starts\n"
      "with the given text (repeatable). OUT is replaced only when the whole file was written.\n";
  c.options = {"--instance"};
  c.lists = {"--skip"};
  c.minArgs = 2;
  c.maxArgs = 2;
  c.run = runConstraints;
  return c;
}

}  // namespace bmtool

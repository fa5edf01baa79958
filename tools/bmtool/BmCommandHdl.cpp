// BmCommandHdl.cpp: "bmtool stub" and "wrapper": the Verilog stub and the SystemVerilog wrapper of one
// block of a block model file.
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMSVlogWriter.h"
#include "blockmodel/HABMVlogWriter.h"
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

}  // namespace bmtool

// BmCommandModular.cpp: "bmtool split", "canmerge" and "merge": cutting a sub-block out of a design as a
// design of its own, and putting it back.
#include "blockmodel/HABMBlock.h"
#include "isl/iostreams/filtering_stream.h"

#include "BmCli.h"

#include <filesystem>
#include <ostream>
#include <utility>

namespace bmtool {

namespace {

namespace fs = std::filesystem;

// The sub-block that the required "--instance PATH" names; null, after a line on the error stream, when
// the option is missing, names nothing, or names the top block itself, which has no place to cut.
HABMBlock* cutPoint(Invocation const& inv, std::string const& command, HABMBlock& top, int& code) {
  code = EXIT_FAILED;
  auto const instance = inv.options.find("--instance");
  if (instance == inv.options.end()) {
    *inv.err << "bmtool " << command << ": --instance PATH is required\n";
    code = EXIT_USAGE;
    return nullptr;
  }
  std::string const& path = instance->second;
  if (!path.empty() && path.find_first_not_of('/') == std::string::npos) {
    *inv.err << "bmtool " << command << ": '" << path << "' is the top block itself; name a sub-block\n";
    return nullptr;
  }
  HABMBlock* block = top.findSubBlock(path, true);
  if (block == nullptr) {
    *inv.err << "bmtool " << command << ": no block at '" << path << "'\n";
  }
  return block;
}

bool samePath(std::string const& a, std::string const& b) {
  return fs::absolute(a).lexically_normal() == fs::absolute(b).lexically_normal();
}

int runSplit(Invocation const& inv) {
  std::string const& subOut = inv.positional[1];
  std::string const& restOut = inv.positional[2];
  if (samePath(subOut, restOut)) {
    *inv.err << "bmtool split: SUB_OUT and REST_OUT must be different files\n";
    return EXIT_USAGE;
  }
  auto const top = readDesign(inv, inv.positional[0]);
  if (!top) {
    return EXIT_FAILED;
  }
  int code = EXIT_OK;
  HABMBlock const* sub = cutPoint(inv, "split", *top, code);
  if (sub == nullptr) {
    return code;
  }
  std::string const path = sub->getInstancePath();
  bool const insertVirtual = inv.hasFlag("--virtual");
  if (!insertVirtual) {
    std::vector<std::string> reasons;
    if (!HABMBlock::canSplitBlock(*sub, reasons)) {
      *inv.err << "bmtool split: cannot split '" << path
               << "' (--virtual cuts these at new virtual interfaces):\n";
      for (std::string const& reason : reasons) {
        *inv.err << "  " << reason << '\n';
      }
      return EXIT_FAILED;
    }
  }
  auto const part = HABMBlock::splitTopBlock(*top, path, insertVirtual);
  if (!part) {
    *inv.err << "bmtool split: cannot split '" << path << "'\n";
    return EXIT_FAILED;
  }
  // Both files change, or neither does.
  isl::iostreams::ReplaceTogether together;
  if (!writeDesign(inv, subOut, *part) || !writeDesign(inv, restOut, *top)) {
    return EXIT_FAILED;
  }
  if (!together.commit()) {
    sayWriteFailure(inv, "split", together.failedTarget());
    return EXIT_FAILED;
  }
  *inv.out << "split '" << path << "' (module " << part->getModuleName() << ") into " << subOut
           << "; the stub stays in " << restOut << '\n';
  return EXIT_OK;
}

// What canmerge and merge read: the design, the block at PATH in it, and the top block to put there.
struct MergeInputs {
  std::unique_ptr<HABMBlock> top;
  HABMBlock* sub = nullptr;
  std::unique_ptr<HABMBlock> source;
};

// EXIT_OK when all three are there; otherwise the helpers have said what is missing.
int readMergeInputs(Invocation const& inv, std::string const& command, MergeInputs& in) {
  in.top = readDesign(inv, inv.positional[0]);
  if (!in.top) {
    return EXIT_FAILED;
  }
  int code = EXIT_OK;
  in.sub = cutPoint(inv, command, *in.top, code);
  if (in.sub == nullptr) {
    return code;
  }
  in.source = readDesign(inv, inv.positional[1]);
  return in.source ? EXIT_OK : EXIT_FAILED;
}

int runCanMerge(Invocation const& inv) {
  MergeInputs in;
  if (int const code = readMergeInputs(inv, "canmerge", in); code != EXIT_OK) {
    return code;
  }
  // As merge decides: a run-time swapped block keeps its boundary.
  bool const boundary = inv.hasFlag("--boundary") && !in.sub->isBlockRsw();
  std::vector<std::string> reasons;
  if (HABMBlock::canMergeBlock(*in.source, *in.sub, reasons, boundary)) {
    *inv.out << "compatible\n";
    return EXIT_OK;
  }
  for (std::string const& reason : reasons) {
    *inv.out << reason << '\n';
  }
  return EXIT_FAILED;
}

int runMerge(Invocation const& inv) {
  MergeInputs in;
  if (int const code = readMergeInputs(inv, "merge", in); code != EXIT_OK) {
    return code;
  }
  std::string const path = in.sub->getInstancePath();
  if (!HABMBlock::mergeTopBlock(*in.top, path, *in.source, inv.hasFlag("--boundary"))) {
    *inv.err << "bmtool merge: cannot merge into '" << path << "'\n";
    return EXIT_FAILED;
  }
  return writeDesign(inv, inv.positional[2], *in.top) ? EXIT_OK : EXIT_FAILED;
}

}  // namespace

Command makeSplitCommand() {
  Command c;
  c.name = "split";
  c.summary = "cut a sub-block out of a design as a design of its own";
  c.usage = "bmtool split FILE --instance PATH SUB_OUT REST_OUT [--virtual]";
  c.help =
      "Reads FILE, writes the block at PATH with its whole contents as a top block to SUB_OUT, and the\n"
      "design with a stub in its place (BLOCK_STUB; boundary and configuration kept, contents gone) to\n"
      "REST_OUT. A NoC connection that crosses the block's boundary to or from a block inside it bars the\n"
      "split (each one is listed); --virtual cuts each such connection in two at a new VNMU or VNSU\n"
      "interface of the block instead. Nothing is written unless both files can be.\n";
  c.flags = {"--virtual"};
  c.options = {"--instance"};
  c.minArgs = 3;
  c.maxArgs = 3;
  c.run = runSplit;
  return c;
}

Command makeCanMergeCommand() {
  Command c;
  c.name = "canmerge";
  c.summary = "say whether a top block fits the block it is to replace";
  c.usage = "bmtool canmerge FILE --instance PATH SUB_FILE [--boundary]";
  c.help =
      "Compares the top block of SUB_FILE with the block at PATH in FILE (generics, ports, interfaces,\n"
      "memory maps, address spaces, NoC interfaces) and prints every difference, one a line, or\n"
      "\"compatible\". With --boundary the boundary of SUB_FILE is to replace the block's, so what only\n"
      "SUB_FILE has is no difference. Exit status 1 when they differ.\n";
  c.flags = {"--boundary"};
  c.options = {"--instance"};
  c.minArgs = 2;
  c.maxArgs = 2;
  c.run = runCanMerge;
  return c;
}

Command makeMergeCommand() {
  Command c;
  c.name = "merge";
  c.summary = "put a top block back in place of a block of a design";
  c.usage = "bmtool merge FILE --instance PATH SUB_FILE OUT [--boundary]";
  c.help =
      "Reads FILE and SUB_FILE, replaces the contents of the block at PATH by those of SUB_FILE's top\n"
      "block (with --boundary its VLNV and boundary too, except on a BLOCK_RSW block), drops BLOCK_STUB,\n"
      "and writes the design to OUT. The block's own attributes, generics, parameters and module name\n"
      "stay. Refused, with every difference listed, when the boundaries do not agree.\n";
  c.flags = {"--boundary"};
  c.options = {"--instance"};
  c.minArgs = 3;
  c.maxArgs = 3;
  c.run = runMerge;
  return c;
}

}  // namespace bmtool

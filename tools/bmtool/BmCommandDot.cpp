// BmCommandDot.cpp: "bmtool dot": a picture of one block of a block model file, as Graphviz text or, through
// Graphviz's dot, as SVG or PNG.
#include "blockmodel/HABMBlock.h"
#include "blockmodel/detail/HABMFileWrite.h"

#include "BmCli.h"
#include "BmDot.h"
#include "BmProcess.h"

#include <memory>
#include <ostream>
#include <sstream>

namespace bmtool {

namespace {

bool endsWith(std::string const& text, std::string const& tail) {
  return text.size() >= tail.size() && text.compare(text.size() - tail.size(), tail.size(), tail) == 0;
}

int runDot(Invocation const& inv) {
  std::string const& outPath = inv.positional[1];
  // The Graphviz output format, or empty for the text itself.
  std::string format;
  if (endsWith(outPath, ".svg")) {
    format = "svg";
  } else if (endsWith(outPath, ".png")) {
    format = "png";
  } else if (!endsWith(outPath, ".dot") && !endsWith(outPath, ".gv")) {
    *inv.err << "bmtool dot: OUT must end in .dot or .gv (Graphviz text), .svg or .png\n";
    return EXIT_USAGE;
  }
  DotOptions options;
  options.noc = inv.hasFlag("--noc");
  if (inv.options.count("--depth") != 0) {
    options.depth = inv.count("--depth", 0);
    if (!options.depth) {
      *inv.err << "bmtool dot: --depth takes a whole number\n";
      return EXIT_USAGE;
    }
  }
  // Said before the design is read: the text alone is no use to someone who asked for a picture.
  std::string const dot = format.empty() ? std::string() : findProgram("dot");
  if (!format.empty() && dot.empty()) {
    *inv.err
        << "bmtool dot: ." << format
        << " needs the program 'dot' of Graphviz (Debian package graphviz), which is not on PATH; a .dot "
           "file needs nothing\n";
    return EXIT_FAILED;
  }

  auto const top = readDesign(inv, inv.positional[0]);
  HABMBlock const* block = top ? selectedBlock(inv, *top) : nullptr;
  if (block == nullptr) {
    return EXIT_FAILED;
  }
  std::ostringstream text;
  writeDot(text, *block, options);
  std::string errors;
  bool const written = habm_detail::writeFileAllOrNothing(
      [&] { return std::make_unique<habm_detail::OutStream>(outPath, std::ios_base::binary); },
      [&](std::ostream& out) {
        if (format.empty()) {
          out << text.str();
          return out.good();
        }
        return runFilter(dot, {"dot", "-T" + format}, text.str(), out, errors);
      });
  if (written) {
    return EXIT_OK;
  }
  if (!errors.empty()) {
    *inv.err << "bmtool dot: dot could not draw the picture; nothing was written. It said:\n" << errors;
    if (errors.back() != '\n') {
      *inv.err << '\n';
    }
  } else {
    sayWriteFailure(inv, "dot", outPath);
  }
  return EXIT_FAILED;
}

}  // namespace

Command makeDotCommand() {
  Command c;
  c.name = "dot";
  c.summary = "draw the hierarchy of one block with Graphviz";
  c.usage = "bmtool dot FILE OUT [--instance PATH] [--depth N] [--noc]";
  c.help =
      "Reads FILE and draws the block at PATH (the top block by default) and everything below it: each\n"
      "block a box holding its ports and bus interfaces and its sub-blocks, each port connection and\n"
      "interface connection an arrow. An end that names nothing is a red loose end. Every object's\n"
      "tooltip is its instance path.\n"
      "  --depth N  draw N levels of sub-blocks; the last level shows no contents\n"
      "  --noc      also draw NoC interfaces and links, each NoC path of the block in a colour of its own,\n"
      "             with a legend; links of incomplete paths are dashed, links on no path grey and dotted\n"
      "OUT ending in .dot (or .gv) gets the Graphviz text; .svg and .png are drawn by Graphviz's 'dot'\n"
      "program (Debian package graphviz). OUT is replaced only when the whole file was written.\n";
  c.flags = {"--noc"};
  c.options = {"--instance", "--depth"};
  c.minArgs = 2;
  c.maxArgs = 2;
  c.run = runDot;
  return c;
}

}  // namespace bmtool

// BmCli.cpp: common options, subcommand dispatch and help texts of bmtool.
#include "BmCli.h"

#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMJsonReader.h"
#include "blockmodel/HABMLibrary.h"
#include "isl/iostreams/filtering_stream.h"
#include "msg/ComMsgMgr.h"
#include "param/HPAParamMgr.h"
#include "util/HUTFile.h"

#include "BmProgress.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iostream>
#include <ostream>
#include <unistd.h>

namespace bmtool {

namespace {

constexpr char const* kCommonOptions =
    "Common options:\n"
    "  --param NAME=VALUE  set a host parameter (repeatable)\n"
    "  --lenient           use a design whose file read with errors (values that could not be read are "
    "lost)\n"
    "  -v, --verbose       print the block model's trace messages\n"
    "  -q, --quiet         print no warnings, notes or progress lines: only errors\n"
    "  -h, --help          show help\n";

// "-1" and "-0x10" are address texts, not options.
bool looksLikeOption(std::string const& arg) {
  return arg.size() >= 2 && arg[0] == '-' &&
         (arg[1] == '-' || std::isalpha(static_cast<unsigned char>(arg[1])));
}

// The option of `cmd` that takes a value and that `arg` gives ("--depth" or "--depth=3"), or null.
std::string const* findValueOption(Command const& cmd, std::string const& arg) {
  for (auto const* names : {&cmd.options, &cmd.lists}) {
    for (std::string const& name : *names) {
      if (arg == name || arg.rfind(name + "=", 0) == 0) {
        return &name;
      }
    }
  }
  return nullptr;
}

void printMainHelp(std::ostream& out) {
  out << "Usage: bmtool COMMAND [OPTIONS] [ARGS]\n\nCommands:\n";
  for (auto const& c : commands()) {
    out << "  " << c.name << std::string(c.name.size() < 12 ? 12 - c.name.size() : 1, ' ') << c.summary
        << '\n';
  }
  out << '\n'
      << kCommonOptions << "  --version           print bmtool's version\n"
      << "\nRun 'bmtool help COMMAND' or 'bmtool COMMAND --help' for a command's own help.\n";
}

void printCommandHelp(std::ostream& out, Command const& c) {
  out << "Usage: " << c.usage << "\n\n" << c.help << '\n' << kCommonOptions;
}

}  // namespace

bool Invocation::hasFlag(std::string const& flag) const {
  return std::find(flags.begin(), flags.end(), flag) != flags.end();
}

std::optional<unsigned> Invocation::count(std::string const& option, unsigned fallback) const {
  auto const it = options.find(option);
  if (it == options.end()) {
    return fallback;
  }
  std::string const& text = it->second;
  if (text.empty() || text.size() > 9 ||
      !std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; })) {
    return std::nullopt;
  }
  return static_cast<unsigned>(std::stoul(text));
}

std::unique_ptr<HABMBlock> readDesign(Invocation const& inv, std::string const& path) {
  std::size_t errors = 0;
  std::unique_ptr<HABMBlock> block;
  {
    ComMsgListenerGuard counter([&errors](ComMsgRecord const& r) {
      errors += r.shape != ComMsgShape::SCOPED_TRACE && (r.mask & COM_MSG_ERROR) != 0 ? 1 : 0;
    });
    std::error_code ignored;
    auto const size = std::filesystem::file_size(path, ignored);
    ProgressLine const progress(inv.progress, [&path, size = ignored ? 0 : size] {
      std::optional<std::uint64_t> const done = openFileOffset(path);
      std::string line = "bmtool: reading '" + path + "': ";
      if (done && size > 0 && *done < size) {
        return line + byteCount(*done) + " of " + byteCount(size) + " (" +
               std::to_string(*done * 100 / size) + "%)";
      }
      return line + byteCount(size) + " read, building the blocks";
    });
    block = HABMBlock::readTopBlock(HUTFile(path));
  }
  if (!block) {
    *inv.err << "bmtool: could not read '" << path << "'\n";
    return block;
  }
  if (errors > 0) {
    inv.readErrors += errors;
    inv.readPath = path;
    if (!inv.lenient) {
      block.reset();
    }
  }
  return block;
}

namespace {

// How many levels of sub-blocks lie below `top`, walked without recursion.
std::size_t depthBelow(HABMBlock const& top) {
  std::size_t deepest = 0;
  std::vector<std::pair<HABMBlock const*, std::size_t>> stack = {{&top, 0}};
  while (!stack.empty()) {
    auto const [block, depth] = stack.back();
    stack.pop_back();
    deepest = std::max(deepest, depth);
    for (HABMBlock const* sub : block->getSubBlocks()) {
      stack.emplace_back(sub, depth + 1);
    }
  }
  return deepest;
}

}  // namespace

void sayWriteFailure(Invocation const& inv, std::string const& command, std::string const& path) {
  std::string const& why = isl::iostreams::lastWriteError();
  *inv.err << "bmtool " << command << ": could not write '" << path << "'" << (why.empty() ? "" : ": " + why)
           << '\n';
}

bool writeDesign(Invocation const& inv, std::string const& path, HABMBlock const& block) {
  {
    ProgressLine const progress(inv.progress, [&path] {
      return "bmtool: writing '" + path + "': " + byteCount(openFileOffset(path).value_or(0)) + " written";
    });
    if (HABMBlock::writeTopBlock(HUTFile(path), block, false)) {
      return true;
    }
  }
  std::size_t const depth = depthBelow(block);
  if (depth > HABMJsonReader::MAX_BLOCK_DEPTH) {
    *inv.err << "bmtool: could not write '" << path << "': the design is " << depth
             << " levels of sub-blocks deep, and a block model file holds " << HABMJsonReader::MAX_BLOCK_DEPTH
             << '\n';
  } else {
    std::string const& why = isl::iostreams::lastWriteError();
    *inv.err << "bmtool: could not write '" << path << "'"
             << (why.empty() ? ": a value in it has no form in a block model file (see the message above)"
                             : ": " + why)
             << '\n';
  }
  return false;
}

HABMBlock* selectedBlock(Invocation const& inv, HABMBlock& top) {
  auto const instance = inv.options.find("--instance");
  std::string const path = instance == inv.options.end() ? "/" : instance->second;
  // "/" names the top block itself, which no sub-block search finds.
  HABMBlock* block = path == "/" ? &top : top.findSubBlock(path, true);
  if (block == nullptr) {
    *inv.err << "bmtool: no block at '" << path << "'\n";
  }
  return block;
}

void printRow(std::ostream& out, std::vector<std::string> const& row,
              std::vector<std::size_t> const& widths) {
  std::size_t used = row.size();
  while (used > 0 && row[used - 1].empty()) {
    --used;
  }
  std::string line;
  for (std::size_t c = 0; c < used; ++c) {
    line += row[c];
    if (c + 1 < used) {
      line.append(widths[c] - row[c].size() + 2, ' ');
    }
  }
  out << line << '\n';
}

void printTable(std::ostream& out, std::vector<std::vector<std::string>> const& rows) {
  std::vector<std::size_t> widths;
  for (auto const& row : rows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t c = 0; c < row.size(); ++c) {
      widths[c] = std::max(widths[c], row[c].size());
    }
  }
  for (auto const& row : rows) {
    printRow(out, row, widths);
  }
}

std::vector<Command> const& commands() {
  static std::vector<Command> const all = {
      makeInfoCommand(),  makeConvertCommand(),  makeGenerateCommand(), makeInferCommand(),
      makeCheckCommand(), makeStubCommand(),     makeWrapperCommand(),  makeConstraintsCommand(),
      makeSplitCommand(), makeCanMergeCommand(), makeMergeCommand(),    makeAddrCommand(),
      makeDotCommand()};
  return all;
}

std::size_t utf8SequenceAt(std::string_view text, std::size_t at) {
  auto const byte = static_cast<unsigned char>(text[at]);
  std::size_t const length = byte < 0x80                   ? 1
                             : byte >= 0xC2 && byte < 0xE0 ? 2
                             : byte >= 0xE0 && byte < 0xF0 ? 3
                             : byte >= 0xF0 && byte < 0xF5 ? 4
                                                           : 0;
  for (std::size_t k = 1; k < length; ++k) {
    if (at + k >= text.size() || (static_cast<unsigned char>(text[at + k]) & 0xC0U) != 0x80U) {
      return 0;
    }
  }
  return length;
}

int runCli(std::vector<std::string> const& args, std::ostream& out, std::ostream& err) {
  if (args.empty()) {
    printMainHelp(err);
    return EXIT_USAGE;
  }
  auto const& all = commands();
  if (args[0] == "--version") {
    out << "bmtool " << MZ_BLOCKMODEL_VERSION << '\n';
    return EXIT_OK;
  }
  if (args[0] == "help" && args.size() == 2) {
    auto const named =
        std::find_if(all.begin(), all.end(), [&](Command const& c) { return c.name == args[1]; });
    if (named == all.end()) {
      err << "bmtool: unknown command '" << args[1] << "'\n\n";
      printMainHelp(err);
      return EXIT_USAGE;
    }
    printCommandHelp(out, *named);
    return EXIT_OK;
  }
  if (args[0] == "-h" || args[0] == "--help" || args[0] == "help") {
    printMainHelp(out);
    return EXIT_OK;
  }
  auto const cmd = std::find_if(all.begin(), all.end(), [&](Command const& c) { return c.name == args[0]; });
  if (cmd == all.end()) {
    err << "bmtool: unknown command '" << args[0] << "'\n\n";
    printMainHelp(err);
    return EXIT_USAGE;
  }

  Invocation inv;
  inv.out = &out;
  inv.err = &err;
  bool verbose = false;
  bool quiet = false;
  std::vector<std::string> params;
  bool onlyPositional = false;
  for (std::size_t i = 1; i < args.size(); ++i) {
    std::string const& a = args[i];
    if (onlyPositional || !looksLikeOption(a)) {
      inv.positional.push_back(a);
    } else if (a == "--") {
      onlyPositional = true;
    } else if (a == "-h" || a == "--help") {
      printCommandHelp(out, *cmd);
      return EXIT_OK;
    } else if (a == "-v" || a == "--verbose") {
      verbose = true;
    } else if (a == "-q" || a == "--quiet") {
      quiet = true;
      inv.quiet = true;
    } else if (a == "--lenient") {
      inv.lenient = true;
    } else if (a == "--param" || a.rfind("--param=", 0) == 0) {
      if (a == "--param") {
        if (i + 1 == args.size()) {
          err << "bmtool: --param needs NAME=VALUE\n";
          return EXIT_USAGE;
        }
        params.push_back(args[++i]);
      } else {
        params.push_back(a.substr(8));
      }
    } else if (std::find(cmd->flags.begin(), cmd->flags.end(), a) != cmd->flags.end()) {
      inv.flags.push_back(a);
    } else if (std::string const* opt = findValueOption(*cmd, a)) {
      std::string value;
      if (a == *opt) {
        if (i + 1 == args.size()) {
          err << "bmtool " << cmd->name << ": " << a << " needs a value\n";
          return EXIT_USAGE;
        }
        value = args[++i];
      } else {
        value = a.substr(opt->size() + 1);
      }
      if (std::find(cmd->lists.begin(), cmd->lists.end(), *opt) != cmd->lists.end()) {
        inv.lists[*opt].push_back(value);
      } else {
        inv.options[*opt] = value;
      }
    } else {
      err << "bmtool " << cmd->name << ": unknown option '" << a << "'\nUsage: " << cmd->usage << '\n';
      return EXIT_USAGE;
    }
  }
  auto const count = static_cast<int>(inv.positional.size());
  if (count < cmd->minArgs || (cmd->maxArgs >= 0 && count > cmd->maxArgs)) {
    err << "bmtool " << cmd->name << ": wrong number of arguments\nUsage: " << cmd->usage << '\n';
    return EXIT_USAGE;
  }
  auto& parameters = HPAParamMgr::getParamMgr();
  for (auto const& p : params) {
    std::string why;
    if (!parameters.setFromAssignment(p, &why)) {
      err << "bmtool: --param: " << why << '\n';
      return EXIT_USAGE;
    }
    // A misspelt name would be set and silently never read.
    std::string const name = p.substr(0, p.find('='));
    auto const& read = HABMLibrary::readParameters();
    auto const info = parameters.getInfo(name);
    bool const registered = info.has_value() && info->registered;
    if (!quiet && !registered && std::find(read.begin(), read.end(), name) == read.end()) {
      err << "bmtool: warning: --param " << name << ": no part of bmtool reads this parameter\n";
    }
  }

  // Only a terminal shows a line redrawn in place; a pipe or a CI log would keep every version of it.
  if (!quiet && &err == &std::cerr && ::isatty(STDERR_FILENO) == 1) {
    inv.progress = &err;
  }
  ComMsgListenerGuard printer([&err, &cmd, quiet](ComMsgRecord const& r) {
    if ((!cmd->reportsFindings || r.shape != ComMsgShape::DEFERRED) &&
        (!quiet || (r.mask & COM_MSG_ERROR) != 0)) {
      ComMsgMgr::print(err, r);
    }
  });
  ComMsgScopeGuard traces("HABM", verbose);
  int const code = cmd->run(inv);
  if (inv.readErrors > 0) {
    err << "bmtool: reading '" << inv.readPath << "' gave " << inv.readErrors << " error"
        << (inv.readErrors == 1 ? "" : "s")
        << (inv.lenient ? "; --lenient used what could be read\n"
                        : "; nothing was written (--lenient uses what could be read)\n");
    return inv.lenient ? code : EXIT_FAILED;
  }
  return code;
}

}  // namespace bmtool

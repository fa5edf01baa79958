// BmCli.h: subcommands, option parsing and exit codes of bmtool.
#pragma once

#include <functional>
#include <iosfwd>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class HABMBlock;

namespace bmtool {

/// Exit codes: success, a failed operation, bad usage.
enum ExitCode : int { EXIT_OK = 0, EXIT_FAILED = 1, EXIT_USAGE = 2 };

/// What a subcommand receives after the common options have been taken out.
struct Invocation {
  std::vector<std::string> positional;
  std::vector<std::string> flags;  ///< the subcommand's own flags that were given, e.g. "--pretty"
  std::map<std::string, std::string> options;             ///< the subcommand's own options with their values
  std::map<std::string, std::vector<std::string>> lists;  ///< the values of repeatable options, in order
  std::ostream* out = nullptr;
  std::ostream* err = nullptr;
  /// With --lenient a design whose read sent errors is still used; without it the command stops.
  bool lenient = false;
  /// The errors that the reads of design files sent, and the file of the last such read.
  mutable std::size_t readErrors = 0;
  mutable std::string readPath;
  /// Where progress lines of long steps go: stderr when it is a terminal and --quiet was not given, else
  /// null.
  std::ostream* progress = nullptr;
  /// --quiet: only errors are said; what a command was asked to print still is.
  bool quiet = false;

  bool hasFlag(std::string const& flag) const;
  /// The value of an option as a count; `fallback` when absent, nothing when not a whole number.
  std::optional<unsigned> count(std::string const& option, unsigned fallback) const;
};

/// One subcommand: its name, a one-line summary, its usage line, the flags it accepts, the number of
/// positional arguments it takes (max -1 for no limit) and what it runs.
struct Command {
  std::string name;
  std::string summary;
  std::string usage;
  std::string help;
  std::vector<std::string> flags;
  std::vector<std::string> options;  ///< options that take a value: "--depth 3" or "--depth=3"
  std::vector<std::string> lists;    ///< options that take a value and may be given again: "--skip a"
  int minArgs = 0;
  int maxArgs = -1;
  /// The command prints the deferred findings it asks for itself; the stderr printer leaves them out.
  bool reportsFindings = false;
  std::function<int(Invocation const&)> run;
};

/// Every subcommand, in the order `--help` lists them.
std::vector<Command> const& commands();

/// Reads the block model file at `path`; null, after a line on the invocation's error stream, when it
/// cannot be read, or (without --lenient) when the read sent error messages, since what the file held
/// was then not all read.
std::unique_ptr<HABMBlock> readDesign(Invocation const& inv, std::string const& path);
/// Writes `block` as a block model file; false, after a line saying why on the error stream, when it
/// could not be written (nothing is then written).
bool writeDesign(Invocation const& inv, std::string const& path, HABMBlock const& block);
/// The line that says why the file at `path` could not be written, as far as it is known.
void sayWriteFailure(Invocation const& inv, std::string const& command, std::string const& path);
/// The block that "--instance PATH" names in `top` (the top block itself without the option, or for "/");
/// null, after a line on the error stream, when there is none.
HABMBlock* selectedBlock(Invocation const& inv, HABMBlock& top);

/// Prints rows as columns separated by two blanks; trailing empty cells leave no blanks behind.
void printTable(std::ostream& out, std::vector<std::vector<std::string>> const& rows);
/// One row of such a table whose columns are `widths` wide.
void printRow(std::ostream& out, std::vector<std::string> const& row, std::vector<std::size_t> const& widths);

/// The length of the UTF-8 sequence that starts at `at` in `text`: 1 for an ASCII byte, 2 to 4 for a
/// lead byte followed by all its continuation bytes, 0 for a byte that starts no sequence.
std::size_t utf8SequenceAt(std::string_view text, std::size_t at);

/// Runs bmtool with its arguments (without the program name); returns the exit code.
int runCli(std::vector<std::string> const& args, std::ostream& out, std::ostream& err);

/// The subcommands.
Command makeAddrCommand();
Command makeCheckCommand();
Command makeInfoCommand();
Command makeConstraintsCommand();
Command makeConvertCommand();
Command makeDotCommand();
Command makeGenerateCommand();
Command makeInferCommand();
Command makeStubCommand();
Command makeWrapperCommand();
Command makeSplitCommand();
Command makeCanMergeCommand();
Command makeMergeCommand();

}  // namespace bmtool

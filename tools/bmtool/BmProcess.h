// BmProcess.h: running another program as a filter, for the outputs bmtool leaves to other tools.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace bmtool {

/// The full path of `program` along PATH (the name itself when it holds a "/"), or empty when there is no
/// such executable file.
std::string findProgram(std::string const& program);

/// Runs the program at `path` with `args` (the first is its name), writes `input` to its standard input
/// and copies its standard output to `output` as it comes; what it writes to standard error is kept in
/// `errors`. True when it ran and exited with status 0; otherwise `errors` says why when the program did
/// not.
bool runFilter(std::string const& path, std::vector<std::string> const& args, std::string const& input,
               std::ostream& output, std::string& errors);

}  // namespace bmtool

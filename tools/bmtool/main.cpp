// main.cpp: entry point of bmtool.
#include "isl/iostreams/filtering_stream.h"

#include "BmCli.h"

#include <csignal>
#include <iostream>

namespace {

// A stopped write leaves no temporary file behind; the signal then does what it would have done.
extern "C" void removeTemporaryFilesAndStop(int signal) {
  isl::iostreams::removePendingFiles();
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

}  // namespace

int main(int argc, char** argv) {
  for (int signal : {SIGINT, SIGTERM, SIGHUP}) {
    std::signal(signal, removeTemporaryFilesAndStop);
  }
  std::vector<std::string> const args(argv + 1, argv + argc);
  return bmtool::runCli(args, std::cout, std::cerr);
}

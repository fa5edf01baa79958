// main.cpp: entry point of bmtool.
#include "BmCli.h"

#include <iostream>

int main(int argc, char** argv) {
  std::vector<std::string> const args(argv + 1, argv + argc);
  return bmtool::runCli(args, std::cout, std::cerr);
}

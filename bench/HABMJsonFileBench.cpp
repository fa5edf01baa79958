// HABMJsonFileBench.cpp: writing and reading block model files of synthetic designs, beside RapidJSON
// parsing and writing the same text with nothing around it.
#include "blockmodel/HABMBlock.h"
#include "util/HUTFile.h"

#include "BmSynthetic.h"

#include <benchmark/benchmark.h>
#include <rapidjson/document.h>
#include <rapidjson/filewritestream.h>
#include <rapidjson/writer.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <malloc.h>
#include <map>
#include <string>

namespace {

// depth 4 and 5 at fan-out 10: 11,111 and 111,111 blocks.
bmtool::SyntheticShape shapeFor(benchmark::State const& state) {
  return {static_cast<unsigned>(state.range(0)), 10, 2};
}

std::string fileFor(benchmark::State const& state) {
  static std::map<long, std::string> files;
  auto& path = files[state.range(0)];
  if (path.empty()) {
    path = (std::filesystem::temp_directory_path() / ("mz_bench_" + std::to_string(state.range(0)) + ".bm"))
               .string();
    auto const design = bmtool::makeSyntheticDesign(shapeFor(state));
    HABMBlock::writeTopBlock(HUTFile(path), *design, true);
  }
  return path;
}

std::string slurp(std::string const& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void setBlocks(benchmark::State& state) {
  auto const blocks = static_cast<double>(bmtool::syntheticBlockCount(shapeFor(state)));
  state.counters["blocks"] = blocks;
  state.counters["blocks_per_s"] = benchmark::Counter(blocks, benchmark::Counter::kIsIterationInvariantRate);
}

void Write_Model(benchmark::State& state) {
  auto const design = bmtool::makeSyntheticDesign(shapeFor(state));
  std::string const out = fileFor(state) + ".out";
  for (auto _ : state) {
    benchmark::DoNotOptimize(HABMBlock::writeTopBlock(HUTFile(out), *design, false));
  }
  setBlocks(state);
  std::remove(out.c_str());
}

void Write_RawRapidJson(benchmark::State& state) {
  rapidjson::Document doc;
  doc.Parse(slurp(fileFor(state)).c_str());
  std::string const out = fileFor(state) + ".raw";
  char buffer[1 << 16];
  for (auto _ : state) {
    std::FILE* f = std::fopen(out.c_str(), "wb");
    rapidjson::FileWriteStream stream(f, buffer, sizeof buffer);
    rapidjson::Writer<rapidjson::FileWriteStream> writer(stream);
    benchmark::DoNotOptimize(doc.Accept(writer));
    stream.Flush();
    std::fclose(f);
  }
  setBlocks(state);
  std::remove(out.c_str());
}

void Read_Model(benchmark::State& state) {
  std::string const path = fileFor(state);
  for (auto _ : state) {
    auto const before = mallinfo2().uordblks;
    auto block = HABMBlock::readTopBlock(HUTFile(path));
    auto const after = mallinfo2().uordblks;
    state.counters["model_bytes_per_block"] =
        static_cast<double>(after - before) /
        static_cast<double>(bmtool::syntheticBlockCount(shapeFor(state)));
    benchmark::DoNotOptimize(block.get());
  }
  setBlocks(state);
}

void Read_RawParse(benchmark::State& state) {
  std::string const path = fileFor(state);
  for (auto _ : state) {
    rapidjson::Document doc;
    doc.Parse(slurp(path).c_str());
    benchmark::DoNotOptimize(doc.IsObject());
  }
  setBlocks(state);
}

}  // namespace

BENCHMARK(Write_Model)->Arg(4)->Arg(5)->Unit(benchmark::kMillisecond);
BENCHMARK(Write_RawRapidJson)->Arg(4)->Arg(5)->Unit(benchmark::kMillisecond);
BENCHMARK(Read_Model)->Arg(4)->Arg(5)->Unit(benchmark::kMillisecond);
BENCHMARK(Read_RawParse)->Arg(4)->Arg(5)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();

// HABMTestFiles.h: a fresh folder for each test, file helpers, and the round trip of a block tree through
// a block model file.
#pragma once

#include "blockmodel/HABMBlock.h"
#include "util/HUTFile.h"

#include "HABMTreeCompare.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <unistd.h>

namespace habm_test {

inline std::string bytes(std::string const& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

inline void put(std::string const& path, std::string const& text) {
  std::ofstream(path, std::ios::binary) << text;
}

/// Each test gets a folder named after its suite, itself and its process, since CTest runs tests side by
/// side and several builds may share a machine; the folder of a failed test is kept for a look.
class TempDirTest : public ::testing::Test {
 protected:
  void SetUp() override {
    auto const* test = ::testing::UnitTest::GetInstance()->current_test_info();
    dir_ = std::filesystem::temp_directory_path() / ("mz_" + std::string(test->test_suite_name()) + "_" +
                                                     test->name() + "_" + std::to_string(::getpid()));
    std::filesystem::remove_all(dir_);
    std::filesystem::create_directories(dir_);
  }
  void TearDown() override {
    if (!HasFailure()) {
      std::filesystem::remove_all(dir_);
    }
  }

  std::string path(std::string const& name) const { return (dir_ / name).string(); }

  /// The bytes a one-line write of `top` gives.
  std::string written(HABMBlock const& top) const {
    EXPECT_TRUE(HABMBlock::writeTopBlock(HUTFile(path("out.bm")), top, false));
    keep("out.bm");
    return bytes(path("out.bm"));
  }

  /// Writes `tree` to `name`, reads it back into an equal tree, and checks that a second write gives the
  /// same bytes.
  void roundTrip(HABMBlock const& tree, std::string const& name) const {
    ASSERT_TRUE(HABMBlock::writeTopBlock(HUTFile(path(name)), tree, false)) << name;
    keep(name);
    auto const back = HABMBlock::readTopBlock(HUTFile(path(name)));
    ASSERT_NE(back, nullptr) << "could not read back " << name;
    EXPECT_EQ(back->check(), std::vector<std::string>());
    EXPECT_EQ(back->getInstanceName(), "");
    expectSameTree(tree, *back);
    ASSERT_TRUE(HABMBlock::writeTopBlock(HUTFile(path("again_" + name)), *back, false));
    EXPECT_EQ(bytes(path(name)), bytes(path("again_" + name))) << name;
  }

  /// With MZ_KEEP_WRITTEN_FILES naming a folder, a copy of each file the writer gave goes there, where
  /// the schema test validates them all.
  void keep(std::string const& name) const {
    char const* folder = std::getenv("MZ_KEEP_WRITTEN_FILES");
    if (folder == nullptr) {
      return;
    }
    static unsigned serial = 0;
    auto const* test = ::testing::UnitTest::GetInstance()->current_test_info();
    std::string const copy = std::string(test->test_suite_name()) + "." + test->name() + "." +
                             std::to_string(serial++) + "." + name;
    std::filesystem::copy_file(path(name), std::filesystem::path(folder) / copy,
                               std::filesystem::copy_options::overwrite_existing);
  }

  std::filesystem::path dir_;
};

/// As TempDirTest, in a memory-backed folder where the system has one: for tests that write hundreds of
/// files, each of which the writer syncs to disk.
class MemoryDirTest : public TempDirTest {
 protected:
  void SetUp() override {
    TempDirTest::SetUp();
    std::filesystem::path const memory = "/dev/shm";
    std::error_code error;
    if (std::filesystem::is_directory(memory, error)) {
      std::filesystem::remove_all(dir_, error);
      dir_ = memory / dir_.filename();
      std::filesystem::remove_all(dir_, error);
      std::filesystem::create_directories(dir_, error);
    }
  }
};

}  // namespace habm_test

// FilteringStreamTest.cpp: stored forms, autodetection and the all-or-nothing output file.
#include "isl/iostreams/filtering_stream.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

namespace {

namespace fs = std::filesystem;
using isl::iostreams::filtering_stream;

class FilteringStreamTest : public ::testing::Test {
 protected:
  void SetUp() override {
    dir_ = fs::temp_directory_path() /
           ("mz_fs_" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) + "_" +
            ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::remove_all(dir_);
    fs::create_directories(dir_);
  }
  void TearDown() override { fs::remove_all(dir_); }

  std::string path(char const* name) const { return (dir_ / name).string(); }

  static std::string rawBytes(std::string const& p) {
    std::ifstream in(p, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  }
  static void writeRaw(std::string const& p, std::string const& bytes) {
    std::ofstream(p, std::ios::binary) << bytes;
  }
  static std::string readBack(std::string const& p, bool* good = nullptr) {
    filtering_stream<isl::iostreams::input> in(p, std::ios_base::binary);
    if (good != nullptr) {
      *good = in.good();
    }
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
  }
  // Only the files the test made itself: no temporary file may be left behind.
  std::size_t fileCount() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(dir_), {}));
  }

  fs::path dir_;
};

TEST_F(FilteringStreamTest, PlainAndGzipFormsReadBackWhateverTheName) {
  std::string const text = "{\"schema\":\"x\",\"top_block\":{\"module_name\":\"m\"}}";
  for (char const* name : {"a.bm", "a.bm.gz"}) {
    {
      filtering_stream<isl::iostreams::output> out(
          path(name), isl::iostreams::xp_latest(std::ios_base::binary), std::ios_base::failbit);
      out << text;
      EXPECT_TRUE(out.close());
    }
    EXPECT_EQ(readBack(path(name)), text) << name;
  }
  EXPECT_EQ(rawBytes(path("a.bm")), text);
  std::string const gz = rawBytes(path("a.bm.gz"));
  ASSERT_GE(gz.size(), 2U);
  EXPECT_EQ(static_cast<unsigned char>(gz[0]), 0x1FU);
  EXPECT_EQ(static_cast<unsigned char>(gz[1]), 0x8BU);
  // Compressed content under a plain name is still recognised by its first bytes.
  writeRaw(path("renamed.bm"), gz);
  EXPECT_EQ(readBack(path("renamed.bm")), text);
  EXPECT_EQ(fileCount(), 3U);
}

TEST_F(FilteringStreamTest, AFailedOrDiscardedWriteLeavesTheTargetAsItWas) {
  writeRaw(path("keep.bm"), "old content");
  {
    filtering_stream<isl::iostreams::output> out(path("keep.bm"), std::ios_base::binary);
    out << "half of a new";
    out.setstate(std::ios_base::badbit);  // as after a failed write
  }
  EXPECT_EQ(rawBytes(path("keep.bm")), "old content");
  {
    filtering_stream<isl::iostreams::output> out(path("keep.bm"), std::ios_base::binary);
    out << "new content that the writer gave up on";
    out.discard();
    EXPECT_FALSE(out.close());
  }
  EXPECT_EQ(rawBytes(path("keep.bm")), "old content");
  {
    filtering_stream<isl::iostreams::output> out(path("keep.bm"), std::ios_base::binary);
    out << "new content";
  }  // closed by its destructor in a good state: replaces the target
  EXPECT_EQ(rawBytes(path("keep.bm")), "new content");
  EXPECT_EQ(fileCount(), 1U);
}

TEST_F(FilteringStreamTest, FilesThatCannotBeOpenedFailOrThrowAsTheMaskSays) {
  std::string const missingDir = path("no/such/dir/x.bm");
  filtering_stream<isl::iostreams::output> quiet(missingDir, std::ios_base::binary);
  EXPECT_FALSE(quiet.good());
  EXPECT_THROW(filtering_stream<isl::iostreams::output>(
                   missingDir, isl::iostreams::xp_latest(std::ios_base::binary), std::ios_base::failbit),
               std::ios_base::failure);
  bool good = true;
  readBack(path("missing.bm"), &good);
  EXPECT_FALSE(good);
  readBack(dir_.string(), &good);  // a folder is not a file
  EXPECT_FALSE(good);
  EXPECT_EQ(fileCount(), 0U);
}

TEST_F(FilteringStreamTest, CorruptCompressedDataEndsTheReadWithoutACrash) {
  {
    filtering_stream<isl::iostreams::output> out(path("c.bm.gz"), std::ios_base::binary);
    for (int i = 0; i < 1000; ++i) {
      out << "{\"module_name\":\"block" << i << "\"}";
    }
  }
  std::string bytes = rawBytes(path("c.bm.gz"));
  for (std::size_t i = 20; i < bytes.size(); i += 7) {
    bytes[i] = static_cast<char>(bytes[i] ^ 0x5A);
  }
  writeRaw(path("c.bm.gz"), bytes.substr(0, bytes.size() / 2));
  filtering_stream<isl::iostreams::input> in(path("c.bm.gz"), std::ios_base::binary);
  std::ostringstream text;
  text << in.rdbuf();
  EXPECT_LT(text.str().size(), 1000U * 20U);
}

}  // namespace

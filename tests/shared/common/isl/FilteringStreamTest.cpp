// FilteringStreamTest.cpp: stored forms, autodetection and the all-or-nothing output file.
#include "isl/iostreams/filtering_stream.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using In = isl::iostreams::filtering_stream<isl::iostreams::input>;
using Out = isl::iostreams::filtering_stream<isl::iostreams::output>;

class FilteringStreamTest : public ::testing::Test {
 protected:
  void SetUp() override { fs::create_directories(dir_); }
  void TearDown() override { fs::remove_all(dir_); }

  std::string path(char const* name) const { return (dir_ / name).string(); }
  static std::string rawBytes(std::string const& p) {
    return {std::istreambuf_iterator<char>(std::ifstream(p, std::ios::binary).rdbuf()), {}};
  }
  static std::string readBack(std::string const& p) {
    std::ostringstream text;
    text << In(p, std::ios_base::binary).rdbuf();
    return text.str();
  }
  // Only the files the test made itself: no temporary file may be left behind.
  auto fileCount() const { return std::distance(fs::directory_iterator(dir_), {}); }

  fs::path const dir_ = ::testing::TempDir() + "mz_fs_" + std::to_string(::getpid()) + "_" +
                        ::testing::UnitTest::GetInstance()->current_test_info()->name();
};

TEST_F(FilteringStreamTest, PlainAndGzipFormsReadBackWhateverTheNameAndCorruptDataEndsTheRead) {
  std::string const text = "{\"schema\":\"x\",\"top_block\":{\"module_name\":\"m\"}}";
  for (char const* name : {"a.bm", "a.bm.gz"}) {
    Out out(path(name), isl::iostreams::xp_latest(std::ios_base::binary), std::ios_base::failbit);
    out << text;
    EXPECT_TRUE(out.close());
    EXPECT_EQ(readBack(path(name)), text) << name;
  }
  EXPECT_EQ(rawBytes(path("a.bm")), text);
  std::string gz = rawBytes(path("a.bm.gz"));
  EXPECT_EQ(gz.substr(0, 2), "\x1F\x8B");
  std::ofstream(path("renamed.bm"), std::ios::binary) << gz;  // gzip under a plain name: known by its bytes
  EXPECT_EQ(readBack(path("renamed.bm")), text);
  for (std::size_t i = 12; i < gz.size(); i += 5) {
    gz[i] = static_cast<char>(gz[i] ^ 0x5A);
  }
  std::ofstream(path("corrupt.bm"), std::ios::binary) << gz.substr(0, gz.size() / 2);
  EXPECT_NE(readBack(path("corrupt.bm")), text);
  EXPECT_EQ(fileCount(), 4);
}

TEST_F(FilteringStreamTest, AFailedDiscardedOrRemovedPendingWriteLeavesTheTargetAsItWas) {
  std::ofstream(path("keep.bm"), std::ios::binary) << "old content";
  (Out(path("keep.bm"), std::ios_base::binary) << "half").setstate(std::ios_base::badbit);  // a failed write
  EXPECT_EQ(rawBytes(path("keep.bm")), "old content");
  Out gaveUp(path("keep.bm"), std::ios_base::binary);
  gaveUp << "new content that the writer gave up on";
  gaveUp.discard();
  EXPECT_FALSE(gaveUp.close());
  EXPECT_EQ(rawBytes(path("keep.bm")), "old content");
  Out(path("keep.bm"), std::ios_base::binary) << "new content";  // closed in a good state by its destructor
  EXPECT_EQ(rawBytes(path("keep.bm")), "new content");
  EXPECT_EQ(fileCount(), 1);
  // What a signal handler calls: the temporary file of a write under way goes, the target stays untouched.
  Out out(path("keep.bm"), std::ios_base::binary);
  out << "half";
  EXPECT_EQ(fileCount(), 2);
  isl::iostreams::removePendingFiles();
  EXPECT_EQ(fileCount(), 1);
  out.discard();
  EXPECT_EQ(rawBytes(path("keep.bm")), "new content");
}

// A target that is no regular file is written in place, not replaced by a file; a link stays a link.
TEST_F(FilteringStreamTest, PipesAreWrittenInPlaceAndLinksKeepPointingAtTheirFile) {
  ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
  int const reader = ::open(path("pipe").c_str(), O_RDONLY | O_NONBLOCK);
  ASSERT_GE(reader, 0);
  EXPECT_TRUE(Out(path("pipe"), std::ios_base::binary).write("through", 7).good());
  char got[16] = {};
  EXPECT_EQ(::read(reader, got, sizeof got), 7);
  ::close(reader);
  EXPECT_TRUE(fs::is_fifo(path("pipe")));
  std::ofstream(path("file.bm"), std::ios::binary) << "old";
  fs::create_symlink(path("file.bm"), path("link.bm"));
  Out(path("link.bm"), std::ios_base::binary) << "new";
  EXPECT_TRUE(fs::is_symlink(path("link.bm")));
  EXPECT_EQ(rawBytes(path("file.bm")), "new");
  EXPECT_EQ(fileCount(), 3);
}

// Files closed inside a group replace their targets only when the group commits; held files are pending
// files all the same, so that a signal still removes them.
TEST_F(FilteringStreamTest, AGroupReplacesItsTargetsTogetherOrNotAtAll) {
  std::ofstream(path("a.bm"), std::ios::binary) << "old a";
  std::ofstream(path("b.bm"), std::ios::binary) << "old b";
  {
    isl::iostreams::ReplaceTogether group;
    EXPECT_TRUE(Out(path("a.bm"), std::ios_base::binary).write("new a", 5).good());
    EXPECT_EQ(rawBytes(path("a.bm")), "old a");
    EXPECT_EQ(fileCount(), 3);
  }
  EXPECT_EQ(rawBytes(path("a.bm")), "old a");
  EXPECT_EQ(fileCount(), 2);
  {
    isl::iostreams::ReplaceTogether group;
    Out(path("a.bm"), std::ios_base::binary) << "new a";
    Out(path("b.bm"), std::ios_base::binary) << "new b";
    isl::iostreams::removePendingFiles();
    EXPECT_FALSE(group.commit());
    EXPECT_EQ(group.failedTarget(), fs::canonical(path("a.bm")).string());
  }
  EXPECT_EQ(rawBytes(path("a.bm")) + rawBytes(path("b.bm")), "old aold b");
  isl::iostreams::ReplaceTogether group;
  Out(path("a.bm"), std::ios_base::binary) << "new a";
  Out(path("b.bm"), std::ios_base::binary) << "new b";
  EXPECT_TRUE(group.commit());
  EXPECT_EQ(rawBytes(path("a.bm")) + rawBytes(path("b.bm")), "new anew b");
  EXPECT_EQ(fileCount(), 2);
}

TEST_F(FilteringStreamTest, FilesThatCannotBeOpenedFailOrThrowAsTheMaskSays) {
  EXPECT_FALSE(Out(path("no/such/dir/x.bm"), std::ios_base::binary).good());
  EXPECT_EQ(isl::iostreams::lastWriteError(), "No such file or directory");
  EXPECT_THROW(
      Out(path("no/such/dir/x.bm"), isl::iostreams::xp_latest(std::ios_base::binary), std::ios_base::failbit),
      std::ios_base::failure);
  EXPECT_FALSE(In(path("missing.bm"), std::ios_base::binary).good());
  EXPECT_FALSE(In(dir_.string(), std::ios_base::binary).good());  // a folder is not a file
}

}  // namespace

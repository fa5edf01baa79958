// BmProgress.cpp: a drawing thread that only reads what the working thread publishes, and the offsets of
// open files from /proc/self (the library reads and writes its files itself, with no hook to count by).
#include "BmProgress.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <system_error>

namespace bmtool {

namespace fs = std::filesystem;

ProgressLine::ProgressLine(std::ostream* out, std::function<std::string()> measure,
                           std::chrono::milliseconds delay)
    : out_(out), measure_(std::move(measure)) {
  if (out_ != nullptr) {
    thread_ = std::thread([this, delay] { run(delay); });
  }
}

ProgressLine::~ProgressLine() {
  if (!thread_.joinable()) {
    return;
  }
  {
    std::lock_guard<std::mutex> lock(mutex_);
    done_ = true;
  }
  wake_.notify_one();
  thread_.join();
}

void ProgressLine::run(std::chrono::milliseconds delay) {
  std::unique_lock<std::mutex> lock(mutex_);
  if (wake_.wait_for(lock, delay, [this] { return done_; })) {
    return;
  }
  // "\x1b[K" clears what a longer line before left on the right.
  do {
    *out_ << '\r' << measure_() << "\x1b[K" << std::flush;
  } while (!wake_.wait_for(lock, std::chrono::milliseconds(250), [this] { return done_; }));
  *out_ << "\r\x1b[K" << std::flush;
}

std::optional<std::uint64_t> openFileOffset(std::string const& path) {
  std::error_code error;
  fs::path const full = fs::weakly_canonical(fs::absolute(path, error), error);
  if (error) {
    return std::nullopt;
  }
  std::string const wanted = full.string();
  std::optional<std::uint64_t> offset;
  for (fs::directory_iterator it("/proc/self/fd", error), end; !error && it != end; it.increment(error)) {
    std::error_code ignored;
    std::string const target = fs::read_symlink(it->path(), ignored).string();
    if (ignored || target.compare(0, wanted.size(), wanted) != 0) {
      continue;
    }
    std::ifstream info("/proc/self/fdinfo/" + it->path().filename().string());
    std::string key;
    std::uint64_t pos = 0;
    if (info >> key >> pos && key == "pos:") {
      offset = std::max(offset.value_or(0), pos);
    }
  }
  return offset;
}

std::string byteCount(std::uint64_t bytes) {
  char buffer[32];
  if (bytes >= 1000000) {
    std::snprintf(buffer, sizeof buffer, "%.1f MB", static_cast<double>(bytes) / 1e6);
  } else if (bytes >= 1000) {
    std::snprintf(buffer, sizeof buffer, "%.0f KB", static_cast<double>(bytes) / 1e3);
  } else {
    std::snprintf(buffer, sizeof buffer, "%u bytes", static_cast<unsigned>(bytes));
  }
  return buffer;
}

}  // namespace bmtool

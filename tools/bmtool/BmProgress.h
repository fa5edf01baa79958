// BmProgress.h: the line on a terminal that says how far a long read, write or check has come.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace bmtool {

/// Draws `measure()` on `out` a few times a second, once the step it watches has taken `delay`, and
/// erases it when the step ends (when the object goes). Nothing is drawn with a null `out`: bmtool passes
/// one only when stderr is a terminal and --quiet was not given.
class ProgressLine {
 public:
  ProgressLine(std::ostream* out, std::function<std::string()> measure,
               std::chrono::milliseconds delay = std::chrono::seconds(1));
  ~ProgressLine();
  ProgressLine(ProgressLine const&) = delete;
  ProgressLine& operator=(ProgressLine const&) = delete;

 private:
  void run(std::chrono::milliseconds delay);

  std::ostream* out_;
  std::function<std::string()> measure_;
  std::mutex mutex_;
  std::condition_variable wake_;
  bool done_ = false;
  std::thread thread_;
};

/// How far this process has read or written the file at `path`: the largest offset of its open
/// descriptors on that file or on a temporary file beside it whose name begins with the file's; nothing
/// when none is open. Seen through /proc, so nothing on a system without it.
std::optional<std::uint64_t> openFileOffset(std::string const& path);

/// "12.3 MB", "512 KB", "100 bytes".
std::string byteCount(std::uint64_t bytes);

}  // namespace bmtool

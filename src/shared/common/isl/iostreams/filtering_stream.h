// filtering_stream.h: file streams over a chain of filters, opened by a policy that decides the stored
// form. Output reaches its file only when it was written completely.
#pragma once

#include <boost/iostreams/filtering_stream.hpp>

#include <ios>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace isl::iostreams {

using input = boost::iostreams::input;
using output = boost::iostreams::output;

template <class Mode>
class filtering_stream;

namespace detail {
class PendingFile;
}

/// Opens any file this library wrote: gzip-compressed data is recognised by its first bytes, whatever the
/// file's name. For output it writes the plain text, or gzip when the name ends in ".gz".
class xp_autodetect {
 public:
  explicit xp_autodetect(std::ios_base::openmode mode = std::ios_base::binary) : mode_(mode) {}
  /// The mode the policy was made with; files are always opened as bytes.
  std::ios_base::openmode openMode() const { return mode_; }
  void operator()(std::string const& path, filtering_stream<input>& stream) const;
  void operator()(std::string const& path, filtering_stream<output>& stream) const;

 private:
  std::ios_base::openmode mode_;
};

/// The writing policy of the stored form introduced in version 18: plain text, or gzip for ".gz".
class xp_version18 {
 public:
  void operator()(std::string const& path, filtering_stream<output>& stream) const;
};

/// The newest stored form for writing.
class xp_latest : public xp_version18 {
 public:
  explicit xp_latest(int openMode) : openMode_(openMode) {}
  /// The mode the policy was made with; files are always opened as bytes.
  int openMode() const { return openMode_; }

 private:
  int openMode_;
};

/// A filtering stream on a file. The constructor runs the policy, which opens the file and builds the
/// chain; a file that cannot be opened leaves the stream failed (or throws, if the exception mask says
/// so). Output goes to a temporary file beside the target, which replaces the target only when the
/// stream is closed in a good state; otherwise the target is left as it was.
template <class Mode>
class filtering_stream : public boost::iostreams::filtering_stream<Mode> {
 public:
  template <class Policy, std::enable_if_t<!std::is_convertible_v<Policy, std::ios_base::openmode>, int> = 0>
  filtering_stream(std::string const& path, Policy const& policy,
                   std::ios_base::iostate exceptions = std::ios_base::goodbit) {
    this->exceptions(exceptions);
    policy(path, *this);
  }
  filtering_stream(std::string const& path, std::ios_base::openmode openMode,
                   std::ios_base::iostate exceptions = std::ios_base::goodbit)
      : filtering_stream(path, xp_autodetect(openMode), exceptions) {}
  /// Closes the stream as `close()` does; never throws.
  ~filtering_stream() override;
  filtering_stream(filtering_stream const&) = delete;
  filtering_stream& operator=(filtering_stream const&) = delete;

  /// Flushes and closes the chain. For output, the written file then replaces the target if nothing
  /// failed. True when the stream ends in a good state (and, for output, the target was replaced).
  bool close();
  /// Output: drops everything written so far; the target stays as it was.
  void discard();

  /// For policies: makes `file` the pending output of this stream.
  void adoptPending(std::shared_ptr<detail::PendingFile> file) { pending_ = std::move(file); }

 private:
  std::shared_ptr<detail::PendingFile> pending_;
  bool closed_ = false;
  bool closedOk_ = false;
};

extern template class filtering_stream<input>;
extern template class filtering_stream<output>;

/// Why the last output file of this thread failed to open, write or replace its target, in the operating
/// system's words ("No space left on device"); empty when it did not fail.
std::string const& lastWriteError();

/// Holds back, while it lives, the replacement of every output file that this thread closes complete:
/// `commit()` then replaces their targets one after the other, and without it (a later write failed, an
/// exception) none of them is replaced. So that several files change together or not at all. Outputs
/// written in place (devices, pipes) cannot be held back and are written at once. Groups do not nest.
class ReplaceTogether {
 public:
  ReplaceTogether();
  ~ReplaceTogether();
  ReplaceTogether(ReplaceTogether const&) = delete;
  ReplaceTogether& operator=(ReplaceTogether const&) = delete;

  /// Replaces the held targets in the order their files were closed; false at the first that fails (see
  /// lastWriteError() and failedTarget()), whose file and the rest are then removed.
  bool commit();
  /// The target whose replacement failed; empty while none did.
  std::string const& failedTarget() const { return failedTarget_; }

 private:
  friend class detail::PendingFile;
  std::vector<std::shared_ptr<detail::PendingFile>> held_;
  std::string failedTarget_;
};

/// Removes the temporary files of every output still being written. Safe to call from a signal handler,
/// so that a process stopped by SIGINT or SIGTERM leaves none behind.
void removePendingFiles() noexcept;

}  // namespace isl::iostreams

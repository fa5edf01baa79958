// filtering_stream.cpp: opening policies and the all-or-nothing output file.
#include "isl/iostreams/filtering_stream.h"

#include <boost/iostreams/device/file_descriptor.hpp>
#include <boost/iostreams/filter/gzip.hpp>

#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <random>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace isl::iostreams {

namespace {

std::string& lastError() {
  thread_local std::string text;
  return text;
}

void failWith(int error) {
  lastError() = std::strerror(error);
}

// The temporary files being written, for removePendingFiles: a fixed table of plain pointers, since a
// signal handler may neither allocate nor lock. A process with more outputs open at once than slots
// leaves the rest unregistered.
std::array<std::atomic<char const*>, 64>& pendingTable() {
  static std::array<std::atomic<char const*>, 64> table{};
  return table;
}

void registerPending(char const* temp) {
  for (auto& slot : pendingTable()) {
    char const* expected = nullptr;
    if (slot.compare_exchange_strong(expected, temp)) {
      return;
    }
  }
}

void unregisterPending(char const* temp) {
  for (auto& slot : pendingTable()) {
    char const* expected = temp;
    if (slot.compare_exchange_strong(expected, nullptr)) {
      return;
    }
  }
}

// The group of the thread that holds back replacements, if one lives.
ReplaceTogether*& activeGroup() {
  thread_local ReplaceTogether* group = nullptr;
  return group;
}

}  // namespace

std::string const& lastWriteError() {
  return lastError();
}

void removePendingFiles() noexcept {
  for (auto& slot : pendingTable()) {
    if (char const* temp = slot.load()) {
      ::unlink(temp);
    }
  }
}

namespace detail {

// The temporary file that becomes the target on commit. Whatever happens to the stream, the temporary
// file never outlives this object unless it was committed.
class PendingFile : public std::enable_shared_from_this<PendingFile> {
 public:
  /// A temporary file beside the target, or, with an empty `temp`, the target itself written in place.
  PendingFile(std::string target, std::string temp, int fd)
      : target_(std::move(target)), temp_(std::move(temp)), fd_(fd) {
    if (!temp_.empty()) {
      registerPending(temp_.c_str());
    }
  }
  ~PendingFile() { abandon(); }
  PendingFile(PendingFile const&) = delete;
  PendingFile& operator=(PendingFile const&) = delete;

  int fd() const { return fd_; }
  void markFailed(int error) {
    failWith(error);
    failed_ = true;
  }
  bool failed() const { return failed_; }

  // Makes the data durable, then moves it over the target in one step. Written in place, closing is all.
  bool commit() {
    if (fd_ < 0) {
      return false;
    }
    if (temp_.empty()) {
      bool const ok = ::close(fd_) == 0 && !failed_;
      if (!ok && !failed_) {
        failWith(errno);
      }
      fd_ = -1;
      return ok;
    }
    bool ok = !failed_ && fsyncOrSay(fd_);
    if (::close(fd_) != 0 && ok) {
      failWith(errno);
      ok = false;
    }
    fd_ = -1;
    if (ok && activeGroup() != nullptr) {
      activeGroup()->held_.push_back(shared_from_this());
      return true;
    }
    return ok && replaceTarget();
  }

  // Moves the complete temporary file over the target; the temporary file is gone either way.
  bool replaceTarget() {
    bool ok = !temp_.empty();
    if (ok && std::rename(temp_.c_str(), target_.c_str()) != 0) {
      failWith(errno);
      ok = false;
    }
    if (!ok) {
      ::unlink(temp_.c_str());
    }
    forgetTemp();
    return ok;
  }

  std::string const& target() const { return target_; }

  void abandon() {
    if (fd_ >= 0) {
      ::close(fd_);
      fd_ = -1;
    }
    if (!temp_.empty()) {
      ::unlink(temp_.c_str());
      forgetTemp();
    }
  }

 private:
  static bool fsyncOrSay(int fd) {
    if (::fsync(fd) == 0) {
      return true;
    }
    failWith(errno);
    return false;
  }
  void forgetTemp() {
    unregisterPending(temp_.c_str());
    temp_.clear();
  }

  std::string target_;
  std::string temp_;
  int fd_;
  bool failed_ = false;
};

namespace {

// A sink on the pending file's descriptor. Write errors are remembered on the file as well as thrown,
// so that a failure inside a compressor's final flush still stops the commit.
class PendingSink {
 public:
  using char_type = char;
  using category = boost::iostreams::sink_tag;

  explicit PendingSink(std::shared_ptr<PendingFile> file) : file_(std::move(file)) {}

  std::streamsize write(char const* s, std::streamsize n) {
    std::streamsize done = 0;
    while (done < n) {
      ssize_t const w = ::write(file_->fd(), s + done, static_cast<std::size_t>(n - done));
      if (w < 0 && errno == EINTR) {
        continue;
      }
      if (w <= 0) {
        file_->markFailed(w < 0 ? errno : ENOSPC);
        throw std::ios_base::failure("write failed");
      }
      done += w;
    }
    return done;
  }

 private:
  std::shared_ptr<PendingFile> file_;
};

// Large buffers: block model files run to tens of megabytes, and every buffer boundary is a virtual call.
constexpr std::streamsize kBufferSize = 1 << 16;

bool endsWith(std::string_view text, std::string_view tail) {
  return text.size() >= tail.size() && text.substr(text.size() - tail.size()) == tail;
}

// Opens a fresh temporary file beside the target, with the target's permissions if it exists. A target
// that exists and is no regular file (a device, a pipe) is written in place: replacing it would turn it into
// a file. A symbolic link stays a link: the file it names is replaced.
std::shared_ptr<PendingFile> openPending(std::string const& path) {
  lastError().clear();
  struct stat st {};
  bool const exists = ::stat(path.c_str(), &st) == 0;
  if (exists && !S_ISREG(st.st_mode)) {
    int const fd = ::open(path.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
    if (fd < 0) {
      failWith(errno);
      return nullptr;
    }
    return std::make_shared<PendingFile>(path, std::string(), fd);
  }
  std::string target = path;
  char resolved[PATH_MAX];
  if (exists && ::realpath(path.c_str(), resolved) != nullptr) {
    target = resolved;
  }
  std::random_device rd;
  for (int attempt = 0; attempt < 16; ++attempt) {
    std::string const temp = target + ".tmp" + std::to_string(::getpid()) + "_" + std::to_string(rd());
    int const fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd >= 0) {
      if (exists) {
        ::fchmod(fd, st.st_mode & 07777);
      }
      return std::make_shared<PendingFile>(target, temp, fd);
    }
    if (errno != EEXIST) {
      failWith(errno);
      return nullptr;
    }
  }
  failWith(EEXIST);
  return nullptr;
}

void openForWriting(std::string const& path, filtering_stream<output>& stream) {
  auto pending = openPending(path);
  if (!pending) {
    stream.setstate(std::ios_base::failbit);
    return;
  }
  if (endsWith(path, ".gz")) {
    stream.push(boost::iostreams::gzip_compressor(), kBufferSize);
  }
  stream.push(PendingSink(pending), kBufferSize);
  stream.adoptPending(std::move(pending));
}

void openForReading(std::string const& path, filtering_stream<input>& stream) {
  int const fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  struct stat st {};
  if (fd < 0 || ::fstat(fd, &st) != 0 || S_ISDIR(st.st_mode)) {
    if (fd >= 0) {
      ::close(fd);
    }
    stream.setstate(std::ios_base::failbit);
    return;
  }
  unsigned char magic[2] = {0, 0};
  if (::pread(fd, magic, sizeof magic, 0) == 2 && magic[0] == 0x1F && magic[1] == 0x8B) {
    stream.push(boost::iostreams::gzip_decompressor(), kBufferSize);
  }
  stream.push(boost::iostreams::file_descriptor_source(fd, boost::iostreams::close_handle), kBufferSize);
}

}  // namespace
}  // namespace detail

void xp_autodetect::operator()(std::string const& path, filtering_stream<input>& stream) const {
  detail::openForReading(path, stream);
}

void xp_autodetect::operator()(std::string const& path, filtering_stream<output>& stream) const {
  detail::openForWriting(path, stream);
}

void xp_version18::operator()(std::string const& path, filtering_stream<output>& stream) const {
  detail::openForWriting(path, stream);
}

ReplaceTogether::ReplaceTogether() {
  activeGroup() = this;
}

ReplaceTogether::~ReplaceTogether() {
  activeGroup() = nullptr;
  // Without a commit the held files never replace anything; their destructors remove them.
  held_.clear();
}

bool ReplaceTogether::commit() {
  activeGroup() = nullptr;
  lastError().clear();
  for (auto& file : held_) {
    if (!file->replaceTarget()) {
      failedTarget_ = file->target();
      held_.clear();
      return false;
    }
  }
  held_.clear();
  return true;
}

template <class Mode>
filtering_stream<Mode>::~filtering_stream() {
  try {
    close();
  } catch (...) {
    // A destructor must not throw; the pending file, if any, is removed by its own destructor.
  }
}

template <class Mode>
bool filtering_stream<Mode>::close() {
  if (closed_) {
    return closedOk_;
  }
  closed_ = true;
  // Closing may write (a compressor's trailer): keep the exception mask from turning that into a throw
  // half-way through, and judge the outcome afterwards.
  auto const mask = this->exceptions();
  this->exceptions(std::ios_base::goodbit);
  bool ok = this->good();
  if constexpr (std::is_same_v<Mode, output>) {
    if (ok && this->is_complete()) {
      this->flush();
      ok = this->good();
    }
  }
  try {
    this->reset();
  } catch (...) {
    ok = false;
  }
  if (pending_) {
    ok = ok && !pending_->failed() && pending_->commit();
    pending_.reset();
  }
  closedOk_ = ok;
  if (!ok) {
    this->setstate(std::ios_base::badbit);
  }
  try {
    this->exceptions(mask);
  } catch (...) {
    // Re-arming the mask on a failed stream would throw from here; the caller sees the result instead.
  }
  return ok;
}

template <class Mode>
void filtering_stream<Mode>::discard() {
  closed_ = true;
  closedOk_ = false;
  this->exceptions(std::ios_base::goodbit);
  this->setstate(std::ios_base::badbit);
  try {
    this->reset();
  } catch (...) {
    // What the chain still held goes to the temporary file, which is removed next.
  }
  if (pending_) {
    pending_->abandon();
    pending_.reset();
  }
}

template class filtering_stream<input>;
template class filtering_stream<output>;

}  // namespace isl::iostreams

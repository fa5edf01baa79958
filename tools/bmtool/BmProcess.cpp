// BmProcess.cpp: a child process fed and drained through one poll loop, so that neither side can block the
// other whatever the sizes.
#include "BmProcess.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <ostream>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace bmtool {

namespace {

// Closes its descriptor when it goes.
class Fd {
 public:
  Fd() = default;
  ~Fd() { reset(); }
  Fd(Fd const&) = delete;
  Fd& operator=(Fd const&) = delete;
  int get() const { return fd_; }
  int* put() {
    reset();
    return &fd_;
  }
  void reset() {
    if (fd_ >= 0) {
      ::close(fd_);
      fd_ = -1;
    }
  }

 private:
  int fd_ = -1;
};

bool isExecutableFile(std::string const& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

// Errors kept beyond this are cut: a program that prints without end must not fill the memory.
constexpr std::size_t kMaxErrors = 1 << 16;

}  // namespace

std::string findProgram(std::string const& program) {
  if (program.find('/') != std::string::npos) {
    return isExecutableFile(program) ? program : std::string();
  }
  char const* path = std::getenv("PATH");
  std::string const dirs = path == nullptr ? "/usr/bin:/bin" : path;
  for (std::size_t begin = 0; begin <= dirs.size();) {
    std::size_t end = dirs.find(':', begin);
    if (end == std::string::npos) {
      end = dirs.size();
    }
    std::string const dir = end == begin ? "." : dirs.substr(begin, end - begin);
    std::string const candidate = dir + "/" + program;
    if (isExecutableFile(candidate)) {
      return candidate;
    }
    begin = end + 1;
  }
  return {};
}

bool runFilter(std::string const& path, std::vector<std::string> const& args, std::string const& input,
               std::ostream& output, std::string& errors) {
  errors.clear();
  // The input goes through a socket, whose writes can refuse a reader that went away without SIGPIPE.
  int inPair[2];
  int outPipe[2];
  int errPipe[2];
  Fd inParent, inChild, outParent, outChild, errParent, errChild;
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, inPair) != 0) {
    errors = std::strerror(errno);
    return false;
  }
  *inParent.put() = inPair[0];
  *inChild.put() = inPair[1];
  if (::pipe2(outPipe, O_CLOEXEC) != 0) {
    errors = std::strerror(errno);
    return false;
  }
  *outParent.put() = outPipe[0];
  *outChild.put() = outPipe[1];
  if (::pipe2(errPipe, O_CLOEXEC) != 0) {
    errors = std::strerror(errno);
    return false;
  }
  *errParent.put() = errPipe[0];
  *errChild.put() = errPipe[1];

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, inChild.get(), 0);
  posix_spawn_file_actions_adddup2(&actions, outChild.get(), 1);
  posix_spawn_file_actions_adddup2(&actions, errChild.get(), 2);
  std::vector<char*> argv;
  for (std::string const& arg : args) {
    argv.push_back(const_cast<char*>(arg.c_str()));
  }
  argv.push_back(nullptr);
  pid_t child = 0;
  int const spawned = ::posix_spawn(&child, path.c_str(), &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (spawned != 0) {
    errors = path + ": " + std::strerror(spawned);
    return false;
  }
  inChild.reset();
  outChild.reset();
  errChild.reset();
  for (int fd : {inParent.get(), outParent.get(), errParent.get()}) {
    ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) | O_NONBLOCK);
  }

  std::size_t sent = 0;
  if (input.empty()) {
    inParent.reset();
  }
  char buffer[1 << 16];
  while (inParent.get() >= 0 || outParent.get() >= 0 || errParent.get() >= 0) {
    pollfd fds[3] = {
        {inParent.get(), POLLOUT, 0}, {outParent.get(), POLLIN, 0}, {errParent.get(), POLLIN, 0}};
    if (::poll(fds, 3, -1) < 0) {
      if (errno == EINTR) {
        continue;
      }
      break;
    }
    if (fds[0].revents != 0) {
      ssize_t const n = ::send(inParent.get(), input.data() + sent,
                               std::min(input.size() - sent, sizeof buffer), MSG_NOSIGNAL);
      if (n > 0) {
        sent += static_cast<std::size_t>(n);
      }
      // A program that stops reading early has its say through its exit status.
      if (sent == input.size() || (n < 0 && errno != EAGAIN && errno != EINTR)) {
        inParent.reset();
      }
    }
    for (int k : {1, 2}) {
      if (fds[k].revents == 0) {
        continue;
      }
      Fd& fd = k == 1 ? outParent : errParent;
      ssize_t const n = ::read(fd.get(), buffer, sizeof buffer);
      if (n > 0) {
        if (k == 1) {
          output.write(buffer, n);
        } else if (errors.size() < kMaxErrors) {
          errors.append(buffer, static_cast<std::size_t>(n));
        }
      } else if (n == 0 || (errno != EAGAIN && errno != EINTR)) {
        fd.reset();
      }
    }
  }
  // Whatever broke the loop, the child sees its ends closed and cannot block on them.
  inParent.reset();
  outParent.reset();
  errParent.reset();
  int status = 0;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  if (WIFSIGNALED(status)) {
    errors += std::string(errors.empty() || errors.back() == '\n' ? "" : "\n") + args.front() +
              " was stopped by signal " + std::to_string(WTERMSIG(status)) + "\n";
  }
  return WIFEXITED(status) && WEXITSTATUS(status) == 0 && output.good();
}

}  // namespace bmtool

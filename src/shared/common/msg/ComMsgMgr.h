// ComMsgMgr.h: the message manager: trace scopes, catalogue messages, deferred delivery and listeners.
#pragma once

#include "msg/ComMsgMgrInstance.h"
#include "msg/ComMsgRecord.h"

#include <cassert>
#include <cstddef>
#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

/// Process-wide message manager. Messages go to the installed listeners; with none installed they are
/// dropped. Trace scopes are off until a host switches them on by name.
class ComMsgMgr {
 public:
  using Listener = std::function<void(ComMsgRecord const&)>;
  using ListenerId = std::size_t;

  /// Non-zero when traces of `scope` are switched on. Cheap: callers ask before formatting anything.
  static int hasScope(char const* scope);
  /// Switches traces of `scope` on or off.
  static void setScope(std::string const& scope, bool on);

  /// Delivers a deferred message to the listeners.
  static void sendMessage(ComMsgMgrInstance const& message);
  /// Delivers a record to the listeners, in the order they were added.
  static void deliver(ComMsgRecord const& record);

  /// Adds a listener; the id removes it again.
  static ListenerId addListener(Listener listener);
  /// Removes a listener; an unknown id is ignored.
  static void removeListener(ListenerId id);

  /// The severity word of a mask: "ERROR", "WARNING", "INFO", "TRACE" or "MESSAGE".
  static char const* severityWord(unsigned int mask);
  /// Writes a record as one or more lines: the severity word, the catalogue id if any, the text.
  static void print(std::ostream& out, ComMsgRecord const& record);
  /// A listener that prints every record to stderr, for command-line tools.
  static Listener stderrPrinter();
};

/// Sends a trace when its scope is on; formats nothing otherwise. `n` counts the arguments.
struct sendScopedMsg {
  template <class... Args>
  static void eval(int n, char const* file, int line, char const* domain, char const* scope,
                   unsigned int mask, char const* format, Args const&... args) {
    assert(n == static_cast<int>(sizeof...(Args)) && "argument count does not match the arguments");
    (void)n;
    if (ComMsgMgr::hasScope(scope) == 0) {
      return;
    }
    ComMsgMgr::deliver(comMsgMakeRecord(ComMsgShape::SCOPED_TRACE, file, line, domain, scope, mask, format,
                                        std::vector<ComMsgArg>{ComMsgArg(args)...}));
  }
};

/// Sends a catalogue message ("@90-7@%s" and its arguments) at once.
struct sendMsg {
  template <class... Args>
  static void eval(int n, char const* file, int line, char const* domain, unsigned int mask,
                   char const* format, Args const&... args) {
    assert(n == static_cast<int>(sizeof...(Args)) && "argument count does not match the arguments");
    (void)n;
    ComMsgMgr::deliver(comMsgMakeRecord(ComMsgShape::CATALOGUE, file, line, domain, nullptr, mask, format,
                                        std::vector<ComMsgArg>{ComMsgArg(args)...}));
  }
};

/// Keeps a listener installed for its own lifetime.
class ComMsgListenerGuard {
 public:
  explicit ComMsgListenerGuard(ComMsgMgr::Listener listener)
      : id_(ComMsgMgr::addListener(std::move(listener))) {}
  ~ComMsgListenerGuard() { ComMsgMgr::removeListener(id_); }
  ComMsgListenerGuard(ComMsgListenerGuard const&) = delete;
  ComMsgListenerGuard& operator=(ComMsgListenerGuard const&) = delete;

 private:
  ComMsgMgr::ListenerId id_;
};

/// Switches a trace scope on (or off) for its own lifetime and restores the earlier state after.
class ComMsgScopeGuard {
 public:
  explicit ComMsgScopeGuard(std::string scope, bool on = true);
  ~ComMsgScopeGuard();
  ComMsgScopeGuard(ComMsgScopeGuard const&) = delete;
  ComMsgScopeGuard& operator=(ComMsgScopeGuard const&) = delete;

 private:
  std::string scope_;
  bool wasOn_;
};

/// Holds back every message sent during its lifetime: `release()` hands them on in order (to an enclosing
/// hold, or to the listeners); a hold destroyed unreleased drops them. Lets a reader that may have to start
/// over report only what its final attempt said. Holds nest; they must end in the reverse order of their
/// start.
class ComMsgHold {
 public:
  ComMsgHold();
  ~ComMsgHold();
  ComMsgHold(ComMsgHold const&) = delete;
  ComMsgHold& operator=(ComMsgHold const&) = delete;

  void release();

 private:
  friend class ComMsgMgr;
  std::vector<ComMsgRecord> records_;
  ComMsgHold* outer_;
  bool active_ = true;
};

/// Collects every message sent during its lifetime; for tests and for tools that report at the end.
class ComMsgCapture {
 public:
  ComMsgCapture();
  ComMsgCapture(ComMsgCapture const&) = delete;
  ComMsgCapture& operator=(ComMsgCapture const&) = delete;

  std::vector<ComMsgRecord> const& records() const { return records_; }
  /// The final texts, in order of sending.
  std::vector<std::string> texts() const;
  /// The formats, in order of sending.
  std::vector<std::string> formats() const;
  void clear() { records_.clear(); }

 private:
  std::vector<ComMsgRecord> records_;
  ComMsgListenerGuard guard_;
};

// ComMsgMgr.cpp: scope switches, listener list and the stderr printer.
#include "msg/ComMsgMgr.h"

#include "msg/ComMsgCatalogue.h"

#include <algorithm>
#include <cstring>
#include <iostream>
#include <utility>

namespace {

struct MsgState {
  std::vector<std::string> scopes;
  std::vector<std::pair<ComMsgMgr::ListenerId, ComMsgMgr::Listener>> listeners;
  ComMsgMgr::ListenerId nextId = 1;
  ComMsgHold* hold = nullptr;  // the innermost
};

MsgState& state() {
  static MsgState s;
  return s;
}

}  // namespace

int ComMsgMgr::hasScope(char const* scope) {
  auto const& scopes = state().scopes;
  if (scopes.empty() || scope == nullptr) {
    return 0;
  }
  return std::any_of(scopes.begin(), scopes.end(), [scope](std::string const& s) { return s == scope; }) ? 1
                                                                                                         : 0;
}

void ComMsgMgr::setScope(std::string const& scope, bool on) {
  auto& scopes = state().scopes;
  auto it = std::find(scopes.begin(), scopes.end(), scope);
  if (on && it == scopes.end()) {
    scopes.push_back(scope);
  } else if (!on && it != scopes.end()) {
    scopes.erase(it);
  }
}

void ComMsgMgr::sendMessage(ComMsgMgrInstance const& message) {
  deliver(message.getRecord());
}

void ComMsgMgr::deliver(ComMsgRecord const& record) {
  if (ComMsgHold* hold = state().hold) {
    hold->records_.push_back(record);
    return;
  }
  // A snapshot, so that a listener may add or remove listeners while it is being called.
  auto const listeners = state().listeners;
  for (auto const& entry : listeners) {
    entry.second(record);
  }
}

ComMsgMgr::ListenerId ComMsgMgr::addListener(Listener listener) {
  auto& s = state();
  s.listeners.emplace_back(s.nextId, std::move(listener));
  return s.nextId++;
}

void ComMsgMgr::removeListener(ListenerId id) {
  auto& listeners = state().listeners;
  listeners.erase(std::remove_if(listeners.begin(), listeners.end(),
                                 [id](auto const& entry) { return entry.first == id; }),
                  listeners.end());
}

char const* ComMsgMgr::severityWord(unsigned int mask) {
  if ((mask & COM_MSG_ERROR) != 0U) {
    return "ERROR";
  }
  if ((mask & COM_MSG_WARNING) != 0U) {
    return "WARNING";
  }
  if ((mask & COM_MSG_INFO) != 0U) {
    return "INFO";
  }
  if ((mask & COM_MSG_TRACE) != 0U) {
    return "TRACE";
  }
  return "MESSAGE";
}

void ComMsgMgr::print(std::ostream& out, ComMsgRecord const& record) {
  std::string prefix = severityWord(record.mask);
  auto const id = ComMsgCatalogue::idOf(record.format);
  if (!id.empty()) {
    prefix += ": [";
    prefix += id;
    prefix += "]";
  } else {
    prefix += ":";
  }
  // Traces carry their own line ends; print each line of the text with the prefix.
  std::string_view text = record.text;
  while (!text.empty() && text.back() == '\n') {
    text.remove_suffix(1);
  }
  do {
    auto const eol = text.find('\n');
    out << prefix << ' ' << text.substr(0, eol) << '\n';
    text = eol == std::string_view::npos ? std::string_view{} : text.substr(eol + 1);
  } while (!text.empty());
}

ComMsgMgr::Listener ComMsgMgr::stderrPrinter() {
  return [](ComMsgRecord const& record) { print(std::cerr, record); };
}

ComMsgScopeGuard::ComMsgScopeGuard(std::string scope, bool on)
    : scope_(std::move(scope)), wasOn_(ComMsgMgr::hasScope(scope_.c_str()) != 0) {
  ComMsgMgr::setScope(scope_, on);
}

ComMsgScopeGuard::~ComMsgScopeGuard() {
  ComMsgMgr::setScope(scope_, wasOn_);
}

ComMsgHold::ComMsgHold() : outer_(state().hold) {
  state().hold = this;
}

ComMsgHold::~ComMsgHold() {
  if (active_) {
    state().hold = outer_;
  }
}

void ComMsgHold::release() {
  if (!active_) {
    return;
  }
  active_ = false;
  state().hold = outer_;
  std::vector<ComMsgRecord> const records = std::move(records_);
  for (ComMsgRecord const& record : records) {
    ComMsgMgr::deliver(record);
  }
}

ComMsgCapture::ComMsgCapture() : guard_([this](ComMsgRecord const& record) { records_.push_back(record); }) {}

std::vector<std::string> ComMsgCapture::texts() const {
  std::vector<std::string> out;
  out.reserve(records_.size());
  for (auto const& r : records_) {
    out.push_back(r.text);
  }
  return out;
}

std::vector<std::string> ComMsgCapture::formats() const {
  std::vector<std::string> out;
  out.reserve(records_.size());
  for (auto const& r : records_) {
    out.push_back(r.format);
  }
  return out;
}

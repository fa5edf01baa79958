// HEXAll.h: the host's exception type, which may carry a message of the message manager.
#pragma once

#include "msg/ComMsgMgrInstance.h"

#include <exception>
#include <optional>
#include <string>

/// The host's exception. It carries an optional message; its text is the message's text.
class HEXAll : public std::exception {
 public:
  HEXAll() = default;
  explicit HEXAll(ComMsgMgrInstance message);

  /// The carried message, or null when the exception holds none.
  ComMsgMgrInstance const* getMessage() const { return message_ ? &*message_ : nullptr; }
  /// The message's text, or an empty string when there is none.
  char const* what() const noexcept override;

 private:
  std::optional<ComMsgMgrInstance> message_;
};

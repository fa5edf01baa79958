// HEXAll.cpp: the host's exception type.
#include "exception/HEXAll.h"

HEXAll::HEXAll(ComMsgMgrInstance message) : message_(std::move(message)) {}

char const* HEXAll::what() const noexcept {
  return message_ ? message_->getMessage().c_str() : "";
}

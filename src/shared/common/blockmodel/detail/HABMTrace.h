// HABMTrace.h: the library's trace macro; internal to the model sources, not part of the public interface.
#pragma once

#include "msg/ComMsgMgr.h"

namespace habm_detail {

/// Trace masks: the life of blocks and failed operations, the life of children, and boundary-check notes.
constexpr unsigned int TRACE_BLOCK = 0x1000000U;
constexpr unsigned int TRACE_CHILD = 0x1000002U;
constexpr unsigned int TRACE_MNOC = 0x1000001U;

/// Sends one scoped trace in the library's domain and scope; the argument count is taken from the pack.
template <class... Args>
void sendTrace(char const* file, int line, unsigned int mask, char const* format, Args const&... args) {
  sendScopedMsg::eval(static_cast<int>(sizeof...(Args)), file, line, "blockmodel", "HABM", mask, format,
                      args...);
}

}  // namespace habm_detail

// The scope test comes first so that, with tracing off, no argument expression (paths, c_str calls) is
// evaluated at all: a trace costs one call to hasScope.
#define HABM_TRACE(mask, ...)                                            \
  do {                                                                   \
    if (ComMsgMgr::hasScope("HABM") != 0) {                              \
      ::habm_detail::sendTrace(__FILE__, __LINE__, (mask), __VA_ARGS__); \
    }                                                                    \
  } while (false)

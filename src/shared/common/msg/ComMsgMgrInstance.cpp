// ComMsgMgrInstance.cpp: deferred messages.
#include "msg/ComMsgMgrInstance.h"

namespace {
constexpr unsigned int SEVERITY_BITS = COM_MSG_TRACE | COM_MSG_INFO | COM_MSG_WARNING | COM_MSG_ERROR;
}

void ComMsgMgrInstance::setType(unsigned int type, bool const& on) {
  if (on) {
    record_.mask = (record_.mask & ~SEVERITY_BITS) | type;
  } else {
    record_.mask &= ~type;
  }
}

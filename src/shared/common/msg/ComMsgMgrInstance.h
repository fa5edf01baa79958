// ComMsgMgrInstance.h: a message built now and sent later through ComMsgMgr::sendMessage.
#pragma once

#include "msg/ComMsgRecord.h"

#include <cassert>
#include <string>
#include <vector>

/// A deferred message: formatted when it is created, delivered when ComMsgMgr::sendMessage is called.
class ComMsgMgrInstance {
 public:
  /// Builds a deferred message: `n` is the number of arguments that follow the format.
  struct createInstance {
    template <class... Args>
    static ComMsgMgrInstance eval(int n, char const* file, int line, char const* domain, unsigned int mask,
                                  char const* format, Args const&... args) {
      assert(n == static_cast<int>(sizeof...(Args)) && "argument count does not match the arguments");
      (void)n;
      return ComMsgMgrInstance(comMsgMakeRecord(ComMsgShape::DEFERRED, file, line, domain, nullptr, mask,
                                                format, std::vector<ComMsgArg>{ComMsgArg(args)...}));
    }
  };

  /// The filled text of the message (its catalogue sentence for a catalogue id).
  std::string const& getMessage() const { return record_.text; }
  /// Changes the message's type: with `on` the severity bits of the mask become `type`; without, the
  /// bits of `type` are taken out of the mask.
  void setType(unsigned int type, bool const& on);
  unsigned int getMask() const { return record_.mask; }
  /// Everything the message was built from.
  ComMsgRecord const& getRecord() const { return record_; }

 private:
  explicit ComMsgMgrInstance(ComMsgRecord record) : record_(std::move(record)) {}

  ComMsgRecord record_;
};

// ComMsgRecord.h: one message as listeners see it, and the typed arguments that build it.
#pragma once

#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

/// The three ways a message leaves a library: a scoped trace, a catalogue message sent at once, or a
/// deferred message built now and sent later.
enum class ComMsgShape { SCOPED_TRACE, CATALOGUE, DEFERRED };

/// The severity bits of a message mask. A mask may carry other bits; these decide how it is printed.
enum ComMsgMask : unsigned int {
  COM_MSG_TRACE = 0x1000000U,
  COM_MSG_INFO = 0x8000000U,
  COM_MSG_WARNING = 0x10000000U,
  COM_MSG_ERROR = 0x20000000U,
};

/// One printf-style argument, kept with its type so that "%d" and "%x" format numbers as numbers.
class ComMsgArg {
 public:
  enum class Kind { TEXT, SIGNED, UNSIGNED, REAL };

  ComMsgArg(char const* text) : kind_(Kind::TEXT), text_(text != nullptr ? text : "(null)") {}
  ComMsgArg(std::string text) : kind_(Kind::TEXT), text_(std::move(text)) {}
  ComMsgArg(std::string_view text) : kind_(Kind::TEXT), text_(text) {}
  ComMsgArg(char c) : kind_(Kind::TEXT), text_(1, c) {}
  ComMsgArg(bool b) : kind_(Kind::TEXT), text_(b ? "true" : "false") {}
  ComMsgArg(double d) : kind_(Kind::REAL), real_(d) {}
  template <class T, std::enable_if_t<std::is_integral_v<T> && std::is_signed_v<T>, int> = 0>
  ComMsgArg(T v) : kind_(Kind::SIGNED), signed_(static_cast<long long>(v)) {}
  template <class T, std::enable_if_t<std::is_integral_v<T> && std::is_unsigned_v<T>, int> = 0>
  ComMsgArg(T v) : kind_(Kind::UNSIGNED), unsigned_(static_cast<unsigned long long>(v)) {}

  Kind kind() const { return kind_; }
  /// The text of a TEXT argument; empty for the numeric kinds.
  std::string const& text() const { return text_; }
  long long asSigned() const { return signed_; }
  unsigned long long asUnsigned() const { return unsigned_; }
  double asReal() const { return real_; }
  /// The argument as plain text, whatever its kind ("42", "0.5", the string itself).
  std::string toString() const;

 private:
  Kind kind_;
  std::string text_;
  long long signed_ = 0;
  unsigned long long unsigned_ = 0;
  double real_ = 0.0;
};

/// A message as delivered to listeners: how it was sent, what it was built from and its final text.
struct ComMsgRecord {
  ComMsgShape shape = ComMsgShape::SCOPED_TRACE;
  std::string domain;
  /// The trace scope; empty for catalogue and deferred messages.
  std::string scope;
  unsigned int mask = 0;
  std::string format;
  std::vector<std::string> args;
  /// The readable text: the filled format for a trace, the filled catalogue sentence for a catalogue id.
  std::string text;
  std::string file;
  int line = 0;

  /// The catalogue id of the format ("90-7" for "@90-7@%s"), or empty when the format holds none.
  std::string catalogueId() const;
};

/// Builds a record and fills its final text; used by the senders and by deferred messages.
ComMsgRecord comMsgMakeRecord(ComMsgShape shape, char const* file, int line, char const* domain,
                              char const* scope, unsigned int mask, char const* format,
                              std::vector<ComMsgArg> const& args);

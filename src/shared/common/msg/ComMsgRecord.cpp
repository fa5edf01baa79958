// ComMsgRecord.cpp: argument texts and the final text of a message.
#include "msg/ComMsgRecord.h"

#include "msg/ComMsgCatalogue.h"

#include <boost/format.hpp>

#include <exception>

namespace {

// printf-style formatting through Boost.Format that never throws on a malformed format or a wrong
// argument count: a message must not take its sender down.
std::string formatPrintf(char const* format, std::vector<ComMsgArg> const& args) {
  try {
    boost::format f;
    f.exceptions(boost::io::no_error_bits);
    f.parse(format);
    for (auto const& a : args) {
      switch (a.kind()) {
        case ComMsgArg::Kind::TEXT:
          f % a.text();
          break;
        case ComMsgArg::Kind::SIGNED:
          f % a.asSigned();
          break;
        case ComMsgArg::Kind::UNSIGNED:
          f % a.asUnsigned();
          break;
        case ComMsgArg::Kind::REAL:
          f % a.asReal();
          break;
      }
    }
    return f.str();
  } catch (std::exception const&) {
    // Formats that Boost.Format rejects even with its error bits cleared: keep everything readable.
    std::string text = format;
    for (auto const& a : args) {
      text += ' ';
      text += a.toString();
    }
    return text;
  }
}

}  // namespace

std::string ComMsgArg::toString() const {
  switch (kind_) {
    case Kind::TEXT:
      return text_;
    case Kind::SIGNED:
      return std::to_string(signed_);
    case Kind::UNSIGNED:
      return std::to_string(unsigned_);
    case Kind::REAL:
      return (boost::format("%g") % real_).str();
  }
  return {};
}

std::string ComMsgRecord::catalogueId() const {
  return std::string(ComMsgCatalogue::idOf(format));
}

ComMsgRecord comMsgMakeRecord(ComMsgShape shape, char const* file, int line, char const* domain,
                              char const* scope, unsigned int mask, char const* format,
                              std::vector<ComMsgArg> const& args) {
  ComMsgRecord r;
  r.shape = shape;
  r.domain = domain != nullptr ? domain : "";
  r.scope = scope != nullptr ? scope : "";
  r.mask = mask;
  r.format = format != nullptr ? format : "";
  r.file = file != nullptr ? file : "";
  r.line = line;
  r.args.reserve(args.size());
  for (auto const& a : args) {
    r.args.push_back(a.toString());
  }
  auto const id = ComMsgCatalogue::idOf(r.format);
  if (id.empty() || !ComMsgCatalogue::render(id, r.args, r.text)) {
    r.text = formatPrintf(r.format.c_str(), args);
  }
  return r;
}

// ComMsgCatalogue.h: the readable sentences behind the catalogue ids that the libraries send.
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The message catalogue: each id ("90-7") maps to one sentence with Boost.Format positional
/// placeholders ("%1%", "%2%", ...) that the message's arguments fill.
class ComMsgCatalogue {
 public:
  struct Entry {
    std::string_view id;
    unsigned int argCount;
    std::string_view sentence;
  };

  /// Every entry, in id order.
  static std::vector<Entry> const& entries();
  /// The entry for `id` ("90-7"), or null when the catalogue has none.
  static Entry const* find(std::string_view id);
  /// The id that a format starts with ("90-7" for "@90-7@%s"), or empty when it starts with none.
  static std::string_view idOf(std::string_view format);
  /// The sentence of `id` filled with `args`; null result flag when the id is unknown.
  static bool render(std::string_view id, std::vector<std::string> const& args, std::string& text);
};

// HABMEnumTable.h: one table type for every enumeration of the model and its texts; internal to the
// model sources.
#pragma once

#include <array>
#include <cstddef>
#include <string>

namespace habm_detail {

/// How a text is folded before it is compared with a table's texts.
enum class Fold {
  /// Letter case does not count.
  LOWER,
  /// Letter case does not count and "-" reads as "_" ("Read-Only" is "read_only").
  ACCESS
};

/// Nothing beyond the texts.
struct NoExtra {};

/// One value of an enumeration: the text written for it, texts also read as it, and what else the
/// owner keeps per value.
template <class E, class Extra = NoExtra>
struct EnumRow {
  E value;
  char const* text;
  std::array<char const*, 3> aliases = {};
  Extra extra = {};
};

/// The value <-> text table of an enumeration whose last value, `Unknown`, is what every other text
/// reads as and writes as the empty string. Rows stand in value order, one per value below `Unknown`;
/// declare a table `constexpr` and `static_assert(table.complete())` so that a missing row is a
/// compile error.
template <class E, E Unknown, class Extra = NoExtra>
struct EnumTable {
  static constexpr std::size_t SIZE = static_cast<std::size_t>(Unknown);
  using Row = EnumRow<E, Extra>;

  Fold fold;
  std::array<Row, SIZE> rows;

  /// True when every value below `Unknown` has its row, in value order, with a text.
  constexpr bool complete() const {
    for (std::size_t i = 0; i < SIZE; ++i) {
      if (static_cast<std::size_t>(rows[i].value) != i || rows[i].text == nullptr) {
        return false;
      }
    }
    return true;
  }

  /// The value whose text or alias equals the folded text exactly; `Unknown` when none does.
  E encode(std::string const& text) const {
    for (Row const& row : rows) {
      if (foldsTo(text, row.text)) {
        return row.value;
      }
      for (char const* alias : row.aliases) {
        if (alias != nullptr && foldsTo(text, alias)) {
          return row.value;
        }
      }
    }
    return Unknown;
  }

  /// The text of a value; the empty string for `Unknown` and anything outside the table.
  std::string decode(E value) const {
    Row const* row = find(value);
    return row == nullptr ? std::string() : std::string(row->text);
  }

  /// The row of a value, or null for `Unknown` and anything outside the table.
  Row const* find(E value) const {
    auto const index = static_cast<std::size_t>(value);
    return index < SIZE ? &rows[index] : nullptr;
  }

 private:
  // Whether `text`, folded, equals `folded`; compared in place, since files read a text per port.
  bool foldsTo(std::string const& text, char const* folded) const {
    std::size_t i = 0;
    for (; i < text.size(); ++i) {
      char c = text[i];
      if (c >= 'A' && c <= 'Z') {
        c = static_cast<char>(c - 'A' + 'a');
      } else if (fold == Fold::ACCESS && c == '-') {
        c = '_';
      }
      if (folded[i] == '\0' || folded[i] != c) {
        return false;
      }
    }
    return folded[i] == '\0';
  }
};

/// The access vocabulary that address blocks, registers and register fields share, each over an enumeration
/// of its own with the same value names.
template <class C, class E>
constexpr EnumTable<E, C::ACCESS_UNKNOWN> accessTable() {
  return {Fold::ACCESS,
          {{{C::ACCESS_READ_WRITE, "read_write"},
            {C::ACCESS_READ_ONLY, "read_only"},
            {C::ACCESS_WRITE_ONLY, "write_only"},
            {C::ACCESS_WRITEONCE, "writeonce"},
            {C::ACCESS_READ_WRITEONCE, "read_writeonce"}}}};
}

}  // namespace habm_detail

// ComMsgCatalogue.cpp: the catalogue data and its rendering.
#include "msg/ComMsgCatalogue.h"

#include <boost/format.hpp>

#include <algorithm>

namespace {

// The one place where catalogue sentences live. Keep the ids sorted as strings: find() relies on it.
std::vector<ComMsgCatalogue::Entry> const& catalogue() {
  static std::vector<ComMsgCatalogue::Entry> const table = {
      {"56-598", 1, "Could not write the SystemVerilog wrapper file '%1%'."},
      {"90-10", 2, "Design rule notice on module '%1%':%2%"},
      {"90-2", 1, "The block model file is not valid JSON: %1%"},
      {"90-3", 3, "Cannot merge module '%1%' into instance '%2%':%3%"},
      {"90-4", 1, "Could not read the block model file '%1%'."},
      {"90-5", 3, "Cannot split instance '%1%' of module '%2%' into a top block of its own:%3%"},
      {"90-6", 2, "Design rule violation on module '%1%':%2%"},
      {"90-7", 1, "Could not write the file '%1%'."},
      {"90-8", 2, "The block model file has a value of type %1% for '%2%', which cannot be converted."},
      {"90-9", 1, "The block model file lacks the required member '%1%'."},
      {"HDL-1", 2, "HDL hazard in module '%1%':%2%"},
      {"HDL-10", 2, "HDL hazard in module '%1%':%2%"},
      {"HDL-2", 2, "HDL hazard in module '%1%':%2%"},
      {"HDL-3", 2, "HDL hazard in module '%1%':%2%"},
      {"HDL-4", 2, "HDL hazard in module '%1%':%2%"},
      {"HDL-5", 2, "HDL hazard in module '%1%':%2%"},
      {"HDL-6", 2, "HDL hazard in module '%1%':%2%"},
      {"HDL-7", 2, "HDL hazard in module '%1%':%2%"},
      {"HDL-8", 2, "HDL hazard in module '%1%':%2%"},
      {"HDL-9", 2, "HDL hazard in module '%1%':%2%"},
  };
  return table;
}

}  // namespace

std::vector<ComMsgCatalogue::Entry> const& ComMsgCatalogue::entries() {
  return catalogue();
}

ComMsgCatalogue::Entry const* ComMsgCatalogue::find(std::string_view id) {
  auto const& table = catalogue();
  auto it = std::lower_bound(table.begin(), table.end(), id,
                             [](Entry const& e, std::string_view key) { return e.id < key; });
  return it != table.end() && it->id == id ? &*it : nullptr;
}

std::string_view ComMsgCatalogue::idOf(std::string_view format) {
  if (format.size() < 3 || format.front() != '@') {
    return {};
  }
  auto const end = format.find('@', 1);
  return end == std::string_view::npos ? std::string_view{} : format.substr(1, end - 1);
}

bool ComMsgCatalogue::render(std::string_view id, std::vector<std::string> const& args, std::string& text) {
  Entry const* entry = find(id);
  if (entry == nullptr) {
    return false;
  }
  // A sender with too few or too many arguments still gets its sentence: missing ones print empty.
  boost::format f;
  f.exceptions(boost::io::no_error_bits);
  f.parse(std::string(entry->sentence));
  for (auto const& a : args) {
    f % a;
  }
  text = f.str();
  return true;
}

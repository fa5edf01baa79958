// BmHdlSafety.cpp: the names and values of a block that its Verilog stub and SystemVerilog wrapper would
// carry into HDL that Verilator or Icarus Verilog reject or read otherwise. The writers copy names and
// values as they stand; this pass says beforehand where that goes wrong.
#include "BmHdlSafety.h"

#include "blockmodel/HABMAbstractionDefinition.h"
#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMGeneric.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMPortMap.h"
#include "blockmodel/HABMUtils.h"
#include "blockmodel/detail/HABMKinds.h"

#include "BmAxiDefinitions.h"

#include <boost/format.hpp>

#include <algorithm>
#include <array>
#include <cstdio>
#include <set>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace bmtool {

namespace {

constexpr char kFile[] = "BmHdlSafety";
constexpr char kDomain[] = "bmtool";
constexpr unsigned int kWarningMask = 0x10000000U;

char const* formatOf(HdlHazard hazard) {
  switch (hazard) {
    case HDL_KEYWORD:
      return "@HDL-1@%s%s";
    case HDL_ILLEGAL_NAME:
      return "@HDL-2@%s%s";
    case HDL_ARRAY_NAME:
      return "@HDL-3@%s%s";
    case HDL_SHARED_PORT:
      return "@HDL-4@%s%s";
    case HDL_PHANTOM_PORT:
      return "@HDL-5@%s%s";
    case HDL_WIRE_BOUNDS:
      return "@HDL-6@%s%s";
    case HDL_TDATA_WIDTH:
      return "@HDL-7@%s%s";
    case HDL_QUOTED_TEXT:
      return "@HDL-8@%s%s";
    case HDL_EMPTY_GENERIC:
      return "@HDL-9@%s%s";
    case HDL_CONTROL_NAME:
      return "@HDL-10@%s%s";
  }
  return "@HDL-2@%s%s";
}

// The reserved words of IEEE 1800-2017, which hold every Verilog-2005 keyword; sorted for the search.
constexpr std::array<std::string_view, 248> kKeywords = {
    "accept_on",
    "alias",
    "always",
    "always_comb",
    "always_ff",
    "always_latch",
    "and",
    "assert",
    "assign",
    "assume",
    "automatic",
    "before",
    "begin",
    "bind",
    "bins",
    "binsof",
    "bit",
    "break",
    "buf",
    "bufif0",
    "bufif1",
    "byte",
    "case",
    "casex",
    "casez",
    "cell",
    "chandle",
    "checker",
    "class",
    "clocking",
    "cmos",
    "config",
    "const",
    "constraint",
    "context",
    "continue",
    "cover",
    "covergroup",
    "coverpoint",
    "cross",
    "deassign",
    "default",
    "defparam",
    "design",
    "disable",
    "dist",
    "do",
    "edge",
    "else",
    "end",
    "endcase",
    "endchecker",
    "endclass",
    "endclocking",
    "endconfig",
    "endfunction",
    "endgenerate",
    "endgroup",
    "endinterface",
    "endmodule",
    "endpackage",
    "endprimitive",
    "endprogram",
    "endproperty",
    "endsequence",
    "endspecify",
    "endtable",
    "endtask",
    "enum",
    "event",
    "eventually",
    "expect",
    "export",
    "extends",
    "extern",
    "final",
    "first_match",
    "for",
    "force",
    "foreach",
    "forever",
    "fork",
    "forkjoin",
    "function",
    "generate",
    "genvar",
    "global",
    "highz0",
    "highz1",
    "if",
    "iff",
    "ifnone",
    "ignore_bins",
    "illegal_bins",
    "implements",
    "implies",
    "import",
    "incdir",
    "include",
    "initial",
    "inout",
    "input",
    "inside",
    "instance",
    "int",
    "integer",
    "interconnect",
    "interface",
    "intersect",
    "join",
    "join_any",
    "join_none",
    "large",
    "let",
    "liblist",
    "library",
    "local",
    "localparam",
    "logic",
    "longint",
    "macromodule",
    "matches",
    "medium",
    "modport",
    "module",
    "nand",
    "negedge",
    "nettype",
    "new",
    "nexttime",
    "nmos",
    "nor",
    "noshowcancelled",
    "not",
    "notif0",
    "notif1",
    "null",
    "or",
    "output",
    "package",
    "packed",
    "parameter",
    "pmos",
    "posedge",
    "primitive",
    "priority",
    "program",
    "property",
    "protected",
    "pull0",
    "pull1",
    "pulldown",
    "pullup",
    "pulsestyle_ondetect",
    "pulsestyle_onevent",
    "pure",
    "rand",
    "randc",
    "randcase",
    "randsequence",
    "rcmos",
    "real",
    "realtime",
    "ref",
    "reg",
    "reject_on",
    "release",
    "repeat",
    "restrict",
    "return",
    "rnmos",
    "rpmos",
    "rtran",
    "rtranif0",
    "rtranif1",
    "s_always",
    "s_eventually",
    "s_nexttime",
    "s_until",
    "s_until_with",
    "scalared",
    "sequence",
    "shortint",
    "shortreal",
    "showcancelled",
    "signed",
    "small",
    "soft",
    "solve",
    "specify",
    "specparam",
    "static",
    "string",
    "strong",
    "strong0",
    "strong1",
    "struct",
    "super",
    "supply0",
    "supply1",
    "sync_accept_on",
    "sync_reject_on",
    "table",
    "tagged",
    "task",
    "this",
    "throughout",
    "time",
    "timeprecision",
    "timeunit",
    "tran",
    "tranif0",
    "tranif1",
    "tri",
    "tri0",
    "tri1",
    "triand",
    "trior",
    "trireg",
    "type",
    "typedef",
    "union",
    "unique",
    "unique0",
    "unsigned",
    "until",
    "until_with",
    "untyped",
    "use",
    "uwire",
    "var",
    "vectored",
    "virtual",
    "void",
    "wait",
    "wait_order",
    "wand",
    "weak",
    "weak0",
    "weak1",
    "while",
    "wildcard",
    "wire",
    "with",
    "within",
    "wor",
    "xnor",
    "xor",
};

bool isKeyword(std::string_view name) {
  return std::binary_search(kKeywords.begin(), kKeywords.end(), name);
}

bool isIdentifierStart(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool isIdentifierPart(char c) {
  return isIdentifierStart(c) || (c >= '0' && c <= '9') || c == '$';
}

// A simple identifier: a letter or "_", then letters, digits, "_" and "$".
bool isIdentifier(std::string_view name) {
  return !name.empty() && isIdentifierStart(name.front()) &&
         std::all_of(name.begin() + 1, name.end(), isIdentifierPart);
}

bool hasControlInName(std::string_view name) {
  return name.find_first_of(std::string_view("\n\r\0", 3)) != std::string_view::npos;
}

// Text that ends or breaks a string literal of the stub.
bool breaksString(std::string_view text) {
  return text.find_first_of(std::string_view("\"\n\r\0", 4)) != std::string_view::npos;
}

enum class NameKind { FINE, CONTROL, KEYWORD, ARRAY, ILLEGAL };

// An identifier followed by one or more non-empty "[...]": a declaration reads it as an array. `base`
// gets the identifier.
bool isArrayLike(std::string_view name, std::string& base) {
  std::size_t const open = name.find('[');
  if (open == std::string_view::npos || !isIdentifier(name.substr(0, open)) || name.back() != ']') {
    return false;
  }
  for (std::size_t i = open; i < name.size();) {
    std::size_t const close = name.find(']', i);
    if (name[i] != '[' || close == std::string_view::npos || close == i + 1 ||
        name.substr(i + 1, close - i - 1).find('[') != std::string_view::npos) {
      return false;
    }
    i = close + 1;
  }
  base = std::string(name.substr(0, open));
  return true;
}

NameKind classify(std::string_view name, std::string& arrayBase) {
  if (hasControlInName(name)) {
    return NameKind::CONTROL;
  }
  if (isIdentifier(name)) {
    return isKeyword(name) ? NameKind::KEYWORD : NameKind::FINE;
  }
  return isArrayLike(name, arrayBase) ? NameKind::ARRAY : NameKind::ILLEGAL;
}

// Where a name stands in the generated text and what the tools make of a bad one there, as Verilator and
// Icarus Verilog were seen to do; `asArray` is null where an array-like name is merely illegal.
struct Site {
  char const* what;
  char const* rejected;
  char const* asArray;
};

constexpr Site kModuleSite = {"Module of block",
                              "Verilator and Icarus Verilog reject the stub and the wrapper.", nullptr};
constexpr Site kPortSite = {
    "Port", "Verilator and Icarus Verilog reject the stub and the wrapper.",
    "Verilator takes the stub's port for an array '%s' without a word, and the wrapper "
    "does not compile."};
constexpr Site kGenericSite = {
    "Generic", "Verilator and Icarus Verilog reject the stub.",
    "Verilator takes the stub's parameter for an array '%s' without a word, and Icarus "
    "Verilog rejects the stub."};
constexpr Site kAttributeSite = {
    "Attribute", "Icarus Verilog rejects the stub, and Verilator ignores the attribute.", nullptr};
constexpr Site kInterfaceSite = {"Interface", "Verilator rejects the wrapper.", nullptr};

template <class... Args>
std::string text(char const* format, Args const&... args) {
  boost::format f;
  f.exceptions(boost::io::no_error_bits);
  f.parse(format);
  (void)(f % ... % args);
  return f.str();
}

// The findings of one block, all naming its module.
class Sink {
 public:
  Sink(HABMBlock const& block, std::vector<ComMsgMgrInstance>& findings)
      : module_(escapeControls(block.getModuleName())), findings_(findings) {}

  void add(HdlHazard hazard, std::string const& message) {
    findings_.push_back(ComMsgMgrInstance::createInstance::eval(2, kFile, static_cast<int>(hazard), kDomain,
                                                                kWarningMask, formatOf(hazard),
                                                                module_.c_str(), message.c_str()));
  }

  // A name that the writers put where an identifier must stand.
  void identifier(Site const& site, std::string const& path, std::string const& name) {
    std::string base;
    std::string const where = escapeControls(path);
    switch (classify(name, base)) {
      case NameKind::FINE:
        return;
      case NameKind::CONTROL:
        add(HDL_CONTROL_NAME,
            text(" %s '%s' has a newline or NUL in its name: Icarus Verilog rejects the stub.", site.what,
                 where));
        return;
      case NameKind::KEYWORD:
        add(HDL_KEYWORD,
            text(" %s '%s' is named by the reserved word '%s': %s", site.what, where, name, site.rejected));
        return;
      case NameKind::ARRAY:
        if (site.asArray != nullptr) {
          add(HDL_ARRAY_NAME, text(" %s '%s' is named like an array element: %s", site.what, where,
                                   text(site.asArray, base)));
          return;
        }
        break;
      case NameKind::ILLEGAL:
        break;
    }
    add(HDL_ILLEGAL_NAME, text(" %s '%s' has the name '%s', which is no Verilog identifier: %s", site.what,
                               where, escapeControls(name), site.rejected));
  }

  // A name that the stub writes inside a quoted attribute value.
  void quotedName(char const* what, std::string const& path, std::string const& name) {
    if (hasControlInName(name)) {
      add(HDL_CONTROL_NAME,
          text(" %s '%s' has a newline or NUL in its name: Icarus Verilog rejects the stub.", what,
               escapeControls(path)));
    } else if (breaksString(name)) {
      quoted(what, path, "name");
    }
  }

  // A value that the stub writes inside a quoted attribute value.
  void quotedValue(char const* what, std::string const& path, std::string const& value) {
    if (breaksString(value)) {
      quoted(what, path, "value");
    }
  }

 private:
  void quoted(char const* what, std::string const& path, char const* field) {
    add(HDL_QUOTED_TEXT,
        text(" %s '%s' has a double quote, a newline or a NUL in its %s: the stub writes it into "
             "a quoted string as it stands, and Icarus Verilog rejects the stub.",
             what, escapeControls(path), field));
  }

  std::string module_;
  std::vector<ComMsgMgrInstance>& findings_;
};

// The wrapper presents an interface as a SystemVerilog interface under the same conditions as here: an
// AXI bus with an abstraction definition that is no clock or reset.
bool isWrapped(HABMInterface const& iface) {
  if (!HABMInterface::isAxiInterfaceType(iface.getInterfaceType()) || !iface.getAbstractionDefinition()) {
    return false;
  }
  std::string vendor, library, name, version;
  HABMUtils::splitVLNV(iface.getInterfaceVlnv(), vendor, library, name, version);
  return name != "clock" && name != "reset";
}

// An interface that maps a port, with the logical name of its first map of that port.
struct Mapping {
  HABMInterface const* iface;
  std::string logical;
};

void checkBlock(HABMBlock const& block, std::vector<ComMsgMgrInstance>& findings) {
  fillAxiAbstractionDefinitions(block);
  Sink sink(block, findings);
  std::string const prefix = block.getInstancePath() == "/" ? "/" : block.getInstancePath() + "/";

  sink.identifier(kModuleSite, block.getInstancePath(), block.getModuleName());
  for (HABMAttribute const* attribute : block.getAttributes()) {
    sink.identifier(kAttributeSite, prefix + attribute->getName(), attribute->getName());
    sink.quotedValue("Attribute", prefix + attribute->getName(), attribute->getValue());
  }
  for (HABMGeneric const* generic : block.getGenerics()) {
    sink.identifier(kGenericSite, prefix + generic->getName(), generic->getName());
    if (generic->getValue().empty()) {
      sink.add(
          HDL_EMPTY_GENERIC,
          text(" Generic '%s' has an empty value: the stub writes 'parameter %s = ' with nothing after it, "
               "which Verilator and Icarus Verilog reject.",
               escapeControls(prefix + generic->getName()), escapeControls(generic->getName())));
    }
  }

  // Which interfaces map each port, in interface order, each once: the ports' parent interfaces in one
  // pass over the maps.
  std::unordered_map<std::string, std::vector<Mapping>> mappings;
  for (HABMInterface const* iface : block.getInterfaces()) {
    for (HABMPortMap const* map : iface->getPortMaps()) {
      auto& list = mappings[map->getPhyName()];
      if (list.empty() || list.back().iface != iface) {
        list.push_back({iface, map->getLogName()});
      }
    }
  }
  std::set<HABMInterface const*> described;  // by the stub: the first interface of some port
  std::set<HABMInterface const*> wrapped;    // by the wrapper: an AXI interface of some port
  for (HABMPort const* port : block.getPorts()) {
    std::string const& name = port->getPortName();
    std::string const path = port->getPortPath();
    sink.identifier(kPortSite, path, name);
    auto const found = mappings.find(name);
    std::vector<Mapping> buses;
    if (found != mappings.end()) {
      described.insert(found->second.front().iface);
      for (Mapping const& mapping : found->second) {
        if (isWrapped(*mapping.iface)) {
          buses.push_back(mapping);
          wrapped.insert(mapping.iface);
        }
      }
    }
    if (buses.size() >= 2) {
      std::string names;
      std::string connection = "." + name;
      for (Mapping const& bus : buses) {
        names += (names.empty() ? "'" : ", '") + bus.iface->getInterfaceName() + "'";
        connection += "(" + bus.iface->getInterfaceName() + "." + bus.logical + ")";
      }
      sink.add(HDL_SHARED_PORT,
               text(" Port '%s' is mapped by the AXI interfaces %s: the wrapper connects it as "
                    "'%s', which Verilator rejects.",
                    escapeControls(path), escapeControls(names), escapeControls(connection)));
    }
    if (buses.empty() && port->getPortDirection() == HABMPort::DIR_PHANTOM) {
      sink.add(HDL_PHANTOM_PORT,
               text(" Port '%s' is a phantom port, which the wrapper declares with no direction: "
                    "Icarus Verilog rejects the wrapper, and Verilator gives the port the "
                    "direction of the port before it, or rejects the wrapper when there is none.",
                    escapeControls(path)));
    }
    std::uint64_t const width = port->getPortWidth();
    if (port->isWirePort() && width >= 2) {
      sink.add(HDL_WIRE_BOUNDS,
               text(" Port '%s' is a wire with the bounds [%s]: the stub declares it 1 bit wide "
                    "and the wrapper %d bits, a width mismatch that Verilator rejects and Icarus "
                    "Verilog truncates.",
                    escapeControls(path), port->getPortRange(), width));
    }
  }

  for (HABMInterface const* iface : block.getInterfaces()) {
    std::string const path = iface->getInterfacePath();
    bool const inStub = described.count(iface) != 0;
    if (wrapped.count(iface) != 0) {
      sink.identifier(kInterfaceSite, path, iface->getInterfaceName());
      HABMPort const* tdata = iface->getPort(HABMInterface::AXIS_PRIMARY_PORT());
      if (HABMInterface::isAxiSInterfaceType(iface->getInterfaceType()) && tdata != nullptr &&
          tdata->getPortWidth() % 8 != 0) {
        std::uint64_t const bytes = tdata->getPortWidth() / 8;
        sink.add(
            HDL_TDATA_WIDTH,
            text(" AXI4-Stream interface '%s' carries TDATA on port '%s' of %d bits, no multiple of 8: the "
                 "wrapper declares the interface with TDATA_NUM_BYTES(%d), %d bits, a width mismatch that "
                 "Verilator rejects.",
                 escapeControls(path), escapeControls(tdata->getPortName()), tdata->getPortWidth(), bytes,
                 bytes * 8));
      }
    } else if (inStub) {
      sink.quotedName("Interface", path, iface->getInterfaceName());
    }
    if (!inStub) {
      continue;
    }
    for (HABMParameter const* parameter : iface->getParameters()) {
      std::string const parameterPath = path + "/" + parameter->getName();
      sink.quotedName("Interface parameter", parameterPath, parameter->getName());
      sink.quotedValue("Interface parameter", parameterPath, parameter->getValue());
    }
  }
}

}  // namespace

std::string escapeControls(std::string const& text) {
  std::string out;
  out.reserve(text.size());
  for (char const c : text) {
    auto const byte = static_cast<unsigned char>(c);
    if (c == '\n') {
      out += "\\n";
    } else if (c == '\r') {
      out += "\\r";
    } else if (c == '\0') {
      out += "\\0";
    } else if (byte < 0x20 || byte == 0x7F) {
      char hex[8];
      std::snprintf(hex, sizeof hex, "\\x%02x", byte);
      out += hex;
    } else {
      out += c;
    }
  }
  return out;
}

void findHdlHazards(HABMBlock const& block, std::vector<ComMsgMgrInstance>& findings) {
  habm_detail::forEachBlock(block, [&](HABMBlock const& each) { checkBlock(each, findings); });
}

}  // namespace bmtool

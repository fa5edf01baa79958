// HABMAttribute.cpp: attribute names, their block/port classification and the interface grammars.
#include "blockmodel/HABMAttribute.h"

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/join.hpp>
#include <boost/algorithm/string/predicate.hpp>
#include <boost/algorithm/string/split.hpp>
#include <boost/algorithm/string/trim.hpp>
#include <boost/format.hpp>

#include <utility>

#define HABM_ATTRIBUTE_NAME(function, text)      \
  std::string const& HABMAttribute::function() { \
    static std::string const name(text);         \
    return name;                                 \
  }
HABM_ATTRIBUTE_NAME(BLACK_BOX, "BLACK_BOX")
HABM_ATTRIBUTE_NAME(BLACK_BOX_PAD_PIN, "BLACK_BOX_PAD_PIN")
HABM_ATTRIBUTE_NAME(BLOCK_RSW, "BLOCK_RSW")
HABM_ATTRIBUTE_NAME(BLOCK_STUB, "BLOCK_STUB")
HABM_ATTRIBUTE_NAME(BOX_TYPE, "BOX_TYPE")
HABM_ATTRIBUTE_NAME(CORE_GENERATION_INFO, "CORE_GENERATION_INFO")
HABM_ATTRIBUTE_NAME(DEBUG_CORE_INFO, "DEBUG_CORE_INFO")
HABM_ATTRIBUTE_NAME(DONT_TOUCH, "DONT_TOUCH")
HABM_ATTRIBUTE_NAME(DOWNGRADE_IP_WARNINGS, "DowngradeIPIdentifiedWarnings")
HABM_ATTRIBUTE_NAME(HW_HANDOFF, "HW_HANDOFF")
HABM_ATTRIBUTE_NAME(IP_DEFINITION_SOURCE, "IP_DEFINITION_SOURCE")
HABM_ATTRIBUTE_NAME(KEEP_HIERARCHY, "KEEP_HIERARCHY")
HABM_ATTRIBUTE_NAME(MARK_DEBUG, "MARK_DEBUG")
HABM_ATTRIBUTE_NAME(PRIMITIVE, "PRIMITIVE")
HABM_ATTRIBUTE_NAME(QDK_KERNAL, "QDK_KERNAL")
HABM_ATTRIBUTE_NAME(QDK_KERNAL_TYPE, "QDK_KERNAL_TYPE")
HABM_ATTRIBUTE_NAME(QDK_KERNEL_SIM_INST, "QDK_KERNEL_SIM_INST")
HABM_ATTRIBUTE_NAME(QDK_KERNEL_SYNTH_INST, "QDK_KERNEL_SYNTH_INST")
HABM_ATTRIBUTE_NAME(STRUCTURAL_NETLIST, "STRUCTURAL_NETLIST")
HABM_ATTRIBUTE_NAME(SYN_BLACK_BOX, "SYN_BLACK_BOX")
HABM_ATTRIBUTE_NAME(SYN_FORCE_SEQ_PRIM, "SYN_FORCE_SEQ_PRIM")
HABM_ATTRIBUTE_NAME(USER_COMMENTS, "USER_COMMENTS")
HABM_ATTRIBUTE_NAME(OPM_MODULE, "OPM_MODULE")
HABM_ATTRIBUTE_NAME(OPM_NOC, "OPM_NOC")
HABM_ATTRIBUTE_NAME(OV_CORE_INFO, "OV_CORE_INFO")
HABM_ATTRIBUTE_NAME(OV_MODULE_SPEC, "OV_MODULE_SPEC")
HABM_ATTRIBUTE_NAME(OV_INTERFACE_ADDRESSING, "OV_INTERFACE_ADDRESSING")
HABM_ATTRIBUTE_NAME(OV_INTERFACE_IGNORE, "OV_INTERFACE_IGNORE")
HABM_ATTRIBUTE_NAME(OV_INTERFACE_INFO, "OV_INTERFACE_INFO")
HABM_ATTRIBUTE_NAME(OV_INTERFACE_MODE, "OV_INTERFACE_MODE")
HABM_ATTRIBUTE_NAME(OV_INTERFACE_PARAMETER, "OV_INTERFACE_PARAMETER")
#undef HABM_ATTRIBUTE_NAME

namespace {

enum AttributeUse { BLOCK, PORT };

struct KnownAttribute {
  std::string const& (*name)();
  AttributeUse use;
};

// The one table of known names and where they belong.
KnownAttribute const kKnownAttributes[] = {
    {&HABMAttribute::BLACK_BOX, BLOCK},
    {&HABMAttribute::BLACK_BOX_PAD_PIN, BLOCK},
    {&HABMAttribute::BLOCK_RSW, BLOCK},
    {&HABMAttribute::BLOCK_STUB, BLOCK},
    {&HABMAttribute::BOX_TYPE, BLOCK},
    {&HABMAttribute::CORE_GENERATION_INFO, BLOCK},
    {&HABMAttribute::DEBUG_CORE_INFO, BLOCK},
    {&HABMAttribute::DONT_TOUCH, BLOCK},
    {&HABMAttribute::DOWNGRADE_IP_WARNINGS, BLOCK},
    {&HABMAttribute::HW_HANDOFF, BLOCK},
    {&HABMAttribute::IP_DEFINITION_SOURCE, BLOCK},
    {&HABMAttribute::KEEP_HIERARCHY, BLOCK},
    {&HABMAttribute::MARK_DEBUG, PORT},
    {&HABMAttribute::PRIMITIVE, BLOCK},
    {&HABMAttribute::QDK_KERNAL, BLOCK},
    {&HABMAttribute::QDK_KERNAL_TYPE, BLOCK},
    {&HABMAttribute::QDK_KERNEL_SIM_INST, BLOCK},
    {&HABMAttribute::QDK_KERNEL_SYNTH_INST, BLOCK},
    {&HABMAttribute::STRUCTURAL_NETLIST, BLOCK},
    {&HABMAttribute::SYN_BLACK_BOX, BLOCK},
    {&HABMAttribute::SYN_FORCE_SEQ_PRIM, BLOCK},
    {&HABMAttribute::USER_COMMENTS, BLOCK},
    {&HABMAttribute::OPM_MODULE, BLOCK},
    {&HABMAttribute::OPM_NOC, BLOCK},
    {&HABMAttribute::OV_CORE_INFO, BLOCK},
    {&HABMAttribute::OV_MODULE_SPEC, BLOCK},
    {&HABMAttribute::OV_INTERFACE_ADDRESSING, PORT},
    {&HABMAttribute::OV_INTERFACE_IGNORE, PORT},
    {&HABMAttribute::OV_INTERFACE_INFO, PORT},
    {&HABMAttribute::OV_INTERFACE_MODE, PORT},
    {&HABMAttribute::OV_INTERFACE_PARAMETER, PORT},
};

bool isKnown(std::string const& name, AttributeUse use) {
  if (name.empty()) {
    return false;
  }
  for (auto const& known : kKnownAttributes) {
    if (known.use == use && boost::algorithm::iequals(known.name(), name)) {
      return true;
    }
  }
  return false;
}

// Trims, then splits at any of `separators` with runs counted as one: an empty text is one empty piece,
// and a separator at an end leaves an empty piece there.
std::vector<std::string> splitTrimmed(std::string const& text, char const* separators) {
  std::vector<std::string> pieces;
  boost::algorithm::split(pieces, boost::algorithm::trim_copy(text), boost::algorithm::is_any_of(separators),
                          boost::algorithm::token_compress_on);
  return pieces;
}

std::string const& interfaceNameKeyword() {
  static std::string const keyword("ORV_INTERFACENAME");
  return keyword;
}

}  // namespace

bool HABMAttribute::isBlockAttribute(std::string const& name) {
  return isKnown(name, BLOCK);
}

bool HABMAttribute::isPortAttribute(std::string const& name) {
  return isKnown(name, PORT);
}

HABMAttribute::InterfaceInfo HABMAttribute::encodeInterfaceInfo(std::string text) {
  InterfaceInfo info;
  auto const words = splitTrimmed(text, " ");
  if (words.size() >= 3) {
    info.vlnv = words[0];
    info.interfaceName = words[1];
    info.logicalName = words[2];
  }
  if (words.size() >= 5) {
    info.extra0 = words[3];
    info.extra1 = words[4];
  }
  return info;
}

std::string HABMAttribute::decodeInterfaceInfo(InterfaceInfo const& info) {
  if (info.vlnv.empty() || info.interfaceName.empty() || info.logicalName.empty()) {
    return std::string();
  }
  std::string out = info.vlnv + ' ' + info.interfaceName + ' ' + info.logicalName;
  if (!info.extra0.empty() && !info.extra1.empty()) {
    out += ' ' + info.extra0 + ' ' + info.extra1;
  }
  return out;
}

std::vector<HABMAttribute::InterfaceInfo> HABMAttribute::encodeInterfaceInfos(std::string text) {
  std::vector<InterfaceInfo> infos;
  for (auto const& piece : splitTrimmed(text, ",")) {
    InterfaceInfo info = encodeInterfaceInfo(piece);
    if (!info.vlnv.empty() && !info.interfaceName.empty() && !info.logicalName.empty()) {
      infos.push_back(std::move(info));
    }
  }
  return infos;
}

std::string HABMAttribute::decodeInterfaceInfos(std::vector<InterfaceInfo> const& infos) {
  std::vector<std::string> pieces;
  for (auto const& info : infos) {
    std::string piece = decodeInterfaceInfo(info);
    if (!piece.empty()) {
      pieces.push_back(std::move(piece));
    }
  }
  return boost::algorithm::join(pieces, ", ");
}

HABMAttribute::InterfaceParameter HABMAttribute::encodeInterfaceParameter(std::string text) {
  InterfaceParameter parameter;
  auto const pieces = splitTrimmed(text, " =");
  if (pieces.size() < 2) {
    return parameter;
  }
  parameter.name = pieces[0];
  parameter.value = boost::algorithm::join(std::vector<std::string>(pieces.begin() + 1, pieces.end()), " ");
  return parameter;
}

std::string HABMAttribute::decodeInterfaceParameter(InterfaceParameter const& parameter) {
  if (parameter.name.empty() || parameter.value.empty()) {
    return std::string();
  }
  return parameter.name + ' ' + parameter.value;
}

std::vector<HABMAttribute::InterfaceParameter> HABMAttribute::encodeInterfaceParameters(std::string text) {
  std::vector<InterfaceParameter> parameters;
  std::string current;
  for (auto const& piece : splitTrimmed(text, ",")) {
    InterfaceParameter parameter = encodeInterfaceParameter(piece);
    if (parameter.name.empty() || parameter.value.empty()) {
      continue;
    }
    if (boost::algorithm::iequals(parameter.name, interfaceNameKeyword())) {
      current = parameter.value;
      continue;
    }
    parameter.interfaceName = current;
    parameters.push_back(std::move(parameter));
  }
  return parameters;
}

std::string HABMAttribute::decodeInterfaceParameters(std::vector<InterfaceParameter> const& parameters) {
  std::vector<std::string> pieces;
  std::string current;
  for (auto const& parameter : parameters) {
    std::string piece = decodeInterfaceParameter(parameter);
    if (piece.empty()) {
      continue;
    }
    if (!parameter.interfaceName.empty() && parameter.interfaceName != current) {
      current = parameter.interfaceName;
      pieces.push_back(interfaceNameKeyword() + ' ' + current);
    }
    pieces.push_back(std::move(piece));
  }
  return boost::algorithm::join(pieces, ", ");
}

HABMAttribute::InterfaceMode HABMAttribute::encodeInterfaceMode(std::string text) {
  InterfaceMode mode;
  auto const words = splitTrimmed(text, " ");
  mode.mode = words[0];
  if (words.size() >= 2) {
    if (boost::algorithm::iequals(mode.mode, "monitor")) {
      mode.monitoredMode = words[1];
    } else {
      mode.interfaceName = words[1];
    }
  }
  if (words.size() >= 3) {
    mode.interfaceName = words[2];
  }
  return mode;
}

std::string HABMAttribute::decodeInterfaceMode(InterfaceMode const& mode) {
  if (mode.mode.empty() || (boost::algorithm::iequals(mode.mode, "monitor") && mode.monitoredMode.empty())) {
    return std::string();
  }
  std::string out = mode.mode;
  for (std::string const* word : {&mode.monitoredMode, &mode.interfaceName}) {
    if (!word->empty()) {
      out += ' ' + *word;
    }
  }
  return out;
}

HABMAttribute::InterfaceAddressing HABMAttribute::encodeInterfaceAddressing(std::string text) {
  InterfaceAddressing addressing;
  for (auto const& parameter : encodeInterfaceParameters(std::move(text))) {
    if (addressing.interfaceName.empty()) {
      addressing.interfaceName = parameter.interfaceName;
    }
    if (boost::algorithm::iequals(parameter.name, "MODE")) {
      addressing.mode = parameter.value;
    } else if (boost::algorithm::iequals(parameter.name, "ADDRESSSPACEREF") ||
               boost::algorithm::iequals(parameter.name, "MEMORYMAPREF")) {
      addressing.reference = parameter.value;
    } else {
      break;
    }
  }
  return addressing;
}

std::string HABMAttribute::decodeInterfaceAddressing(InterfaceAddressing const& addressing) {
  if (addressing.interfaceName.empty() || addressing.mode.empty() || addressing.reference.empty()) {
    return std::string();
  }
  char const* const format = boost::algorithm::iequals(addressing.mode, "master")
                                 ? "ORV_INTERFACENAME %s, MODE %s, ADDRESSSPACEREF %s"
                                 : "ORV_INTERFACENAME %s, MODE %s, MEMORYMAPREF %s";
  return (boost::format(format) % addressing.interfaceName % addressing.mode % addressing.reference).str();
}

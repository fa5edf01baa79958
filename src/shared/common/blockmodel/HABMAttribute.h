// HABMAttribute.h: an attribute of a block or port (name and text value), the attribute names the tool
// knows, and the text grammars of the bus-interface attributes.
#pragma once

#include "blockmodel/HABMNamedValue.h"

#include <string>
#include <vector>

/// A name that never changes and a text value, set by an HDL source or a tool on a block or a port.
class HABMAttribute : public HABMNamedValue {
 public:
  /// One entry of OV_INTERFACE_INFO: "vlnv interface logical [extra0 extra1]".
  struct InterfaceInfo {
    std::string vlnv;
    std::string interfaceName;
    std::string logicalName;
    std::string extra0;
    std::string extra1;
  };
  /// One entry of OV_INTERFACE_PARAMETER: "NAME VALUE", scoped by an interface name.
  struct InterfaceParameter {
    std::string name;
    std::string value;
    std::string interfaceName;
  };
  /// The value of OV_INTERFACE_MODE: "mode [interface]" or "monitor monitored [interface]".
  struct InterfaceMode {
    std::string mode;
    std::string monitoredMode;
    std::string interfaceName;
  };
  /// The value of OV_INTERFACE_ADDRESSING: an interface, its mode and an address space or memory map.
  struct InterfaceAddressing {
    std::string interfaceName;
    std::string mode;
    std::string reference;
  };

  /// An attribute with the given name and value.
  HABMAttribute(std::string name, std::string value) : HABMNamedValue(std::move(name), std::move(value)) {}

  // Known attribute names; each returns a constant that lives for the whole process.
  static std::string const& BLACK_BOX();
  static std::string const& BLACK_BOX_PAD_PIN();
  static std::string const& BLOCK_RSW();
  static std::string const& BLOCK_STUB();
  static std::string const& BOX_TYPE();
  static std::string const& CORE_GENERATION_INFO();
  static std::string const& DEBUG_CORE_INFO();
  static std::string const& DONT_TOUCH();
  static std::string const& DOWNGRADE_IP_WARNINGS();
  static std::string const& HW_HANDOFF();
  static std::string const& IP_DEFINITION_SOURCE();
  static std::string const& KEEP_HIERARCHY();
  static std::string const& MARK_DEBUG();
  static std::string const& PRIMITIVE();
  static std::string const& QDK_KERNAL();
  static std::string const& QDK_KERNAL_TYPE();
  static std::string const& QDK_KERNEL_SIM_INST();
  static std::string const& QDK_KERNEL_SYNTH_INST();
  static std::string const& STRUCTURAL_NETLIST();
  static std::string const& SYN_BLACK_BOX();
  static std::string const& SYN_FORCE_SEQ_PRIM();
  static std::string const& USER_COMMENTS();
  static std::string const& OPM_MODULE();
  static std::string const& OPM_NOC();
  static std::string const& OV_CORE_INFO();
  static std::string const& OV_MODULE_SPEC();
  static std::string const& OV_INTERFACE_ADDRESSING();
  static std::string const& OV_INTERFACE_IGNORE();
  static std::string const& OV_INTERFACE_INFO();
  static std::string const& OV_INTERFACE_MODE();
  static std::string const& OV_INTERFACE_PARAMETER();

  /// True when the name, ignoring case, is a known block attribute; false for the empty name.
  static bool isBlockAttribute(std::string const& name);
  /// True when the name, ignoring case, is a known port attribute; false for the empty name.
  static bool isPortAttribute(std::string const& name);

  /// Reads one entry; fewer than three words give an empty record.
  static InterfaceInfo encodeInterfaceInfo(std::string text);
  /// Writes one entry; empty unless vlnv, interface and logical name are all set.
  static std::string decodeInterfaceInfo(InterfaceInfo const& info);
  /// Reads a ","-separated list, skipping malformed entries.
  static std::vector<InterfaceInfo> encodeInterfaceInfos(std::string text);
  /// Writes a list joined with ", ", skipping records that write as empty.
  static std::string decodeInterfaceInfos(std::vector<InterfaceInfo> const& infos);
  /// Reads "NAME VALUE" or "NAME=VALUE"; fewer than two pieces give an empty record.
  static InterfaceParameter encodeInterfaceParameter(std::string text);
  /// Writes "NAME VALUE"; empty unless both are set.
  static std::string decodeInterfaceParameter(InterfaceParameter const& parameter);
  /// Reads a ","-separated list in which "ORV_INTERFACENAME x" scopes the entries after it.
  static std::vector<InterfaceParameter> encodeInterfaceParameters(std::string text);
  /// Writes a list, naming each interface once before its first entry.
  static std::string decodeInterfaceParameters(std::vector<InterfaceParameter> const& parameters);
  /// Reads "mode [interface]" or "monitor monitored [interface]".
  static InterfaceMode encodeInterfaceMode(std::string text);
  /// Writes a mode; empty without a mode, or for "monitor" without the monitored mode.
  static std::string decodeInterfaceMode(InterfaceMode const& mode);
  /// Reads interface, MODE and the reference; the first unknown parameter ends the scan.
  static InterfaceAddressing encodeInterfaceAddressing(std::string text);
  /// Writes the addressing; empty unless all three fields are set.
  static std::string decodeInterfaceAddressing(InterfaceAddressing const& addressing);
};

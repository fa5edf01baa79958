// HABMSVlogWriter.h: writes a SystemVerilog wrapper that presents a block's AXI buses as interfaces.
#pragma once

#include <iosfwd>
#include <string>

class HABMBlock;
class HABMInterface;

/// Produces, for one block, a SystemVerilog file in tagged stretches that a host cuts apart: the include
/// line, a wrapper module that connects SystemVerilog interfaces to the block's flat AXI ports, a
/// template declaring the interface instances and a template instantiating the wrapper.
class HABMSVlogWriter {
 public:
  /// Writes the wrapper of `block` to `path`. False, with "@56-598@" and the path, on any failure; the
  /// file is then not replaced.
  static bool writeSVEO(std::string const& path, HABMBlock const& block);

  /// Two blanks: the indent of ports and connections.
  static std::string const& INDENT();
  /// The name of the interface-info port attribute.
  static std::string const& OV_INTERFACE_INFO();
  /// The name of the interface-parameter port attribute.
  static std::string const& OV_INTERFACE_PARAMETER();

  /// Writes the wrapper text of `block` to `out`; always true.
  bool marshal(HABMBlock const& block, std::ostream& out) const;
  /// Builds the whole wrapper text in memory and sends it to `out` in one piece.
  void generateBDWrapperSVEO(HABMBlock const& block, std::ostream& out) const;
  /// The declaration of a SystemVerilog instance of `interface`'s type, with width parameters taken from
  /// the ports that implement its variable-size logical ports; empty for null.
  std::string generateIntfInstHint(HABMInterface* interface);
  /// The interface parameter that sets the width of an AXI logical port; empty for a logical port without
  /// one, a type other than AXI, or null.
  std::string findCorrespondingInterfaceParam(std::string logicalName, HABMInterface* interface);
  /// The logical name of the interface's first port map onto `physicalName`; empty when there is none or
  /// for null.
  std::string getCorrespondingPortLogicalName(std::string physicalName, HABMInterface* interface);
};

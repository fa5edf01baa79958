// HABMInterface.h: a bus interface on a block: its bus type and mode, address reference, apertures,
// parameters and port maps, and its vocabularies.
#pragma once

#include "blockmodel/HABMAddrAperture.h"
#include "blockmodel/HABMAddrValue.h"
#include "blockmodel/HABMChildList.h"
#include "blockmodel/HABMParameterList.h"

#include <memory>
#include <set>
#include <string>
#include <vector>

class HABMAbstractionDefinition;
class HABMAddrSpace;
class HABMBlock;
class HABMInterfaceConnection;
class HABMMemoryMap;
class HABMParameter;
class HABMPort;
class HABMPortMap;

/// Port maps are named by their logical name.
template <>
struct HABMChildName<HABMPortMap> {
  static std::string const& of(HABMPortMap const& portMap);
};

/// A named bundle of a block's ports that follows a bus definition. The type is never stored: it is read
/// from the VLNV on every call. The interface owns its parameters and port maps and names an address
/// space or a memory map of its block by text. Made only by HABMBlock::createInterface; not copyable.
class HABMInterface : public HABMParameterList<HABMInterface> {
 public:
  /// Bus types; the numbers matter, the predicates test ranges of them. TYPE_UNKNOWN is every other bus.
  enum InterfaceType {
    TYPE_AXIMM,
    TYPE_AXIS,
    TYPE_INIMM,
    TYPE_INIS,
    TYPE_NPP,
    TYPE_CLOCK,
    TYPE_RESET,
    TYPE_INTERRUPT,
    TYPE_UNKNOWN
  };
  /// Modes; MODE_UNKNOWN means that none was declared.
  enum InterfaceMode {
    MODE_MASTER,
    MODE_SLAVE,
    MODE_SYSTEM,
    MODE_MONITOR_MASTER,
    MODE_MONITOR_SLAVE,
    MODE_MONITOR_SYSTEM,
    MODE_UNKNOWN
  };
  /// Every known type, in value order, for walks over all of them.
  static constexpr InterfaceType InterfaceTypes[8] = {TYPE_AXIMM, TYPE_AXIS,  TYPE_INIMM, TYPE_INIS,
                                                      TYPE_NPP,   TYPE_CLOCK, TYPE_RESET, TYPE_INTERRUPT};

  ~HABMInterface();
  HABMInterface(HABMInterface const&) = delete;
  HABMInterface& operator=(HABMInterface const&) = delete;

  // Vocabularies.

  /// The type of a bus definition, read from its library and name only ("x:interface:aximm_rtl:9" is
  /// aximm); TYPE_UNKNOWN for anything but four parts of a known bus.
  static InterfaceType encodeInterfaceVlnv(std::string vlnv);
  /// The bus definition of a type ("orvane:interface:aximm:1.0"); empty for TYPE_UNKNOWN.
  static std::string decodeInterfaceVlnv(InterfaceType type);
  /// The type of a name, in any case, with the short forms "clk", "rst" and "intr"; else TYPE_UNKNOWN.
  static InterfaceType encodeInterfaceType(std::string text);
  /// The name of a type ("aximm"); empty for TYPE_UNKNOWN.
  static std::string decodeInterfaceType(InterfaceType type);
  /// The mode of a text, in any case; mirrored forms fold onto the opposite side, "monitor" is a monitor
  /// of a master; else MODE_UNKNOWN.
  static InterfaceMode encodeInterfaceMode(std::string text);
  /// The text of a mode ("monitor_slave"); empty for MODE_UNKNOWN.
  static std::string decodeInterfaceMode(InterfaceMode mode);
  /// The logical name of the port that carries a type's main signal ("WDATA"); empty for TYPE_UNKNOWN.
  static std::string const& getPrimaryPortName(InterfaceType const& type);

  /// "WDATA".
  static std::string const& AXIMM_PRIMARY_PORT();
  /// "TDATA".
  static std::string const& AXIS_PRIMARY_PORT();
  /// "INTERNOC", shared by both INI forms.
  static std::string const& INIMM_PRIMARY_PORT();
  /// "INTERNOC", shared by both INI forms.
  static std::string const& INIS_PRIMARY_PORT();
  /// "FLIT".
  static std::string const& NPP_PRIMARY_PORT();
  /// "CLK".
  static std::string const& CLOCK_PRIMARY_PORT();
  /// "RST".
  static std::string const& RESET_PRIMARY_PORT();
  /// "INTERRUPT".
  static std::string const& INTERRUPT_PRIMARY_PORT();

  /// True for aximm and axis.
  static bool isAxiInterfaceType(InterfaceType const& type);
  /// True for aximm.
  static bool isAxiMMInterfaceType(InterfaceType const& type);
  /// True for axis.
  static bool isAxiSInterfaceType(InterfaceType const& type);
  /// True for the two INI forms.
  static bool isIniInterfaceType(InterfaceType const& type);
  /// True for clock, reset and interrupt.
  static bool isSignalType(InterfaceType const& type);

  // Identity and predicates.

  /// The owning block.
  HABMBlock const& getParent() const { return *parent_; }
  /// The name within the block.
  std::string const& getInterfaceName() const { return name_; }
  /// The block's instance path, terminated, and the name ("/u0/S_AXI").
  std::string getInterfacePath() const;
  /// The bus definition; empty by default.
  std::string const& getInterfaceVlnv() const { return vlnv_; }
  /// Sets the bus definition, which changes the type at once.
  void setInterfaceVlnv(std::string const& vlnv) { vlnv_ = vlnv; }
  /// The type read from the VLNV now.
  InterfaceType getInterfaceType() const;
  /// The declared mode; MODE_UNKNOWN by default.
  InterfaceMode getInterfaceMode() const { return mode_; }
  /// Sets the declared mode.
  void setInterfaceMode(InterfaceMode const& mode) { mode_ = mode; }
  /// Free text kept and written back; empty by default.
  std::string const& getEnablement() const { return enablement_; }
  /// Sets the enablement text.
  void setEnablement(std::string const& enablement) { enablement_ = enablement; }

  /// True for aximm and inimm.
  bool isAddressable() const;
  /// True for a master only; systems and monitors are not sources.
  bool isSourceInterface() const;
  /// True for a slave and for every monitor.
  bool isTargetInterface() const;
  /// True for a system.
  bool isSystemInterface() const;
  /// True for the three monitors.
  bool isMonitorInterface() const;
  /// The block's visibility.
  bool isVisible() const;

  // Address references and apertures.

  /// The name of an address space on the block; empty by default.
  std::string const& getAddrSpaceRef() const { return addrSpaceRef_; }
  /// Stores the name; a non-empty one clears the memory map reference.
  void setAddrSpaceRef(std::string const& name);
  /// The name of a memory map on the block; empty by default.
  std::string const& getMemoryMapRef() const { return memoryMapRef_; }
  /// Stores the name; a non-empty one clears the address space reference.
  void setMemoryMapRef(std::string const& name);
  /// The referenced address space of the block, or null when the name does not resolve.
  HABMAddrSpace* getAddrSpace() const;
  /// The referenced memory map of the block, or null when the name does not resolve.
  HABMMemoryMap* getMemoryMap() const;
  /// The base against which the stored apertures are relative; zero by default.
  HABMAddrValue const& getBaseAddress() const { return baseAddress_; }
  /// Sets the base; the stored apertures stay as they are.
  void setBaseAddress(HABMAddrValue const& baseAddress) { baseAddress_ = baseAddress; }
  /// The apertures as stored, or with `relative` raised by the base address (absolute values).
  std::set<HABMAddrAperture> getApertures(bool const& relative) const;
  /// Replaces the apertures; with `relative` the given ones are absolute: those below the base address
  /// are dropped silently, the others are stored less the base.
  void setApertures(std::set<HABMAddrAperture> const& apertures, bool const& relative);

  // Port maps: the logical name must be non-empty, hold no "/" and be free; physical names may repeat.

  /// Appends a port map; null when the logical name is refused. The interface owns the result.
  HABMPortMap* createPortMap(std::string const& logicalName, std::string const& physicalName);
  /// The port map of that logical name, or null.
  HABMPortMap* getPortMap(std::string const& logicalName) const;
  /// The port maps in creation order; the interface keeps ownership.
  std::vector<HABMPortMap*> getPortMaps() const;
  /// The port map of that logical name as a list of at most one.
  std::vector<HABMPortMap*> getPortMapsByLogName(std::string const& name) const;
  /// Every port map onto that physical port, in creation order.
  std::vector<HABMPortMap*> getPortMapsByPhyName(std::string const& name) const;
  /// Destroys the port map of that logical name; false, silently, when there is none.
  bool removePortMap(std::string const& logicalName);
  /// Destroys every port map, silently.
  void clearPortMaps();

  // Ports through the port maps.

  /// The block's port mapped to that logical name, or null.
  HABMPort* getPort(std::string const& logicalName) const;
  /// The block's ports of every port map in order, dropping names the block lacks; a port mapped twice
  /// is listed twice.
  std::vector<HABMPort*> getPorts() const;
  /// The port of the type's primary logical name, or null.
  HABMPort* getPrimaryPort() const;
  /// The declared mode, or when there is none: master when the primary port is an output, slave for
  /// another primary port; without one, master only when outputs outnumber inputs.
  InterfaceMode inferInterfaceMode() const;

  /// The shared abstraction definition; empty until the host fills it.
  std::shared_ptr<HABMAbstractionDefinition> getAbstractionDefinition() const {
    return abstractionDefinition_;
  }

  // Connections on the block and the block above it; "source" drives this interface, "target" is driven.

  /// The first connection that drives this interface, or null.
  HABMInterfaceConnection* getSourceConnection() const;
  /// Every connection that drives this interface.
  std::vector<HABMInterfaceConnection*> getSourceConnections() const;
  /// The first connection this interface drives, or null.
  HABMInterfaceConnection* getTargetConnection() const;
  /// Every connection this interface drives.
  std::vector<HABMInterfaceConnection*> getTargetConnections() const;
  /// The source interface of the first driving connection; null when that one has none.
  HABMInterface* getSourceInterface() const;
  /// The resolved source interfaces of the driving connections.
  std::vector<HABMInterface*> getSourceInterfaces() const;
  /// The first resolved interface this one drives, or null.
  HABMInterface* getTargetInterface() const;
  /// The resolved target interfaces of the driven connections.
  std::vector<HABMInterface*> getTargetInterfaces() const;
  /// True when some connection drives or is driven by this interface.
  bool hasConnections() const;

 private:
  friend class HABMBlock;
  template <habm_detail::ChildKind>
  friend struct habm_detail::Kind;

  HABMInterface(HABMBlock* parent, std::string name);
  /// Copies the fields and the stored apertures as they stand, re-creates the parameters and port maps;
  /// the abstraction definition stays this interface's own.
  void clone(HABMInterface const& source);
  void getConnections(std::vector<HABMInterfaceConnection*>& sources,
                      std::vector<HABMInterfaceConnection*>& targets) const;

  HABMBlock* parent_;
  std::string name_;
  std::string vlnv_;
  InterfaceMode mode_ = MODE_UNKNOWN;
  std::string enablement_;
  std::string addrSpaceRef_;
  std::string memoryMapRef_;
  HABMAddrValue baseAddress_;
  std::set<HABMAddrAperture> apertures_;
  HABMChildList<HABMPortMap> portMaps_;
  std::shared_ptr<HABMAbstractionDefinition> abstractionDefinition_;
};

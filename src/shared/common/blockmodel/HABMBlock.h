// HABMBlock.h: the node of the block tree: a module and one instance of it, with its children.
#pragma once

#include "base/HATAttrObj.h"
#include "blockmodel/HABMAddrValue.h"
#include "blockmodel/HABMCachedObject.h"
#include "blockmodel/HABMChildList.h"
#include "blockmodel/HABMNocInterface.h"

#include <memory>
#include <set>
#include <string>
#include <vector>

class HABMAddrAssign;
class HABMAddrBlock;
class HABMAddrSegment;
class HABMAddrSpace;
class HABMMemoryMap;
class HABMRegister;

class HABMAttribute;
class HABMBlock;
class HABMBridge;
class HABMGeneric;
class HABMInterface;
class HABMInterfaceConnection;
class HABMNocConnection;
class HABMParameter;
class HABMPort;
class HABMPortConnection;
class HUTFile;

/// Sub-blocks are named by their instance name.
template <>
struct HABMChildName<HABMBlock> {
  static std::string const& of(HABMBlock const& block);
};

/// Ports are named by their port name.
template <>
struct HABMChildName<HABMPort> {
  static std::string const& of(HABMPort const& port);
};

/// Interfaces are named by their interface name.
template <>
struct HABMChildName<HABMInterface> {
  static std::string const& of(HABMInterface const& iface);
};

/// A block is at once a module (module name, VLNV, boundary) and one instance of it (instance name, place
/// under a parent). A block owns its children; accessors hand out plain pointers valid until the owner
/// changes. Blocks come only from the factories and are not copyable.
class HABMBlock : public HATAttrObj, private HABMCachedObject<HABMBlock> {
 public:
  /// The lock state of one block; UNKNOWN defers to the parent.
  enum LockState { LOCKED, UNLOCKED, UNKNOWN };

  ~HABMBlock() override;
  HABMBlock(HABMBlock const&) = delete;
  HABMBlock& operator=(HABMBlock const&) = delete;

  // Factories.

  /// A new top block of that module, owned by the caller; never null.
  static std::unique_ptr<HABMBlock> createTopBlock(std::string const& moduleName);
  /// A new top block read from a block model file, owned by the caller; null when the file could not be
  /// read (the messages say why).
  static std::unique_ptr<HABMBlock> readTopBlock(HUTFile const& file);
  /// Writes `block` (any block, written as the file's top block) to a block model file; false on
  /// failure, with a message. `removeFirst` deletes an existing file before writing.
  static bool writeTopBlock(HUTFile const& file, HABMBlock const& block, bool const& removeFirst);
  /// A new top block that copies `source` (any block) whole, with an empty instance name; owned by the
  /// caller; never null.
  static std::unique_ptr<HABMBlock> cloneTopBlock(HABMBlock const& source);
  /// Makes `target` a whole copy of `source`, instance name included; the target's parent stays, its old
  /// children are destroyed.
  static void assignTopBlock(HABMBlock const& source, HABMBlock& target);

  // The modular flow: a sub-block cut out of its tree as a top block of its own, and put back later.

  /// Compares `source`, a top block about to take the place of `target`, with `target` kind by kind
  /// (generics, ports, interfaces, memory maps, address spaces, NoC interfaces) and puts one sentence per
  /// difference into `reasons`, which is cleared first. With `mergeBoundary` the source's boundary is to
  /// replace the target's, so what only the source has is no difference. True when `reasons` stays empty.
  static bool canMergeBlock(HABMBlock const& source, HABMBlock const& target,
                            std::vector<std::string>& reasons, bool const& mergeBoundary);
  /// Whether `block` can be cut out of its tree: false, with one sentence per NoC connection that enters or
  /// leaves a block below it across its boundary, in `reasons` (cleared first).
  static bool canSplitBlock(HABMBlock const& block, std::vector<std::string>& reasons);
  /// Cuts the sub-block at `instancePath` (from `top`) out as a new top block that holds its whole
  /// contents, owned by the caller, and leaves a stub in its place (BLOCK_STUB, the boundary and the
  /// configuration kept, the contents cleared); `top` is no longer validated. NoC connections drawn above
  /// the block between two of its insides move into it first. With `insertVirtual`, each NoC connection
  /// that crosses the boundary is cut in two at a new VNMU or VNSU interface of the block. Empty when the
  /// path names no sub-block, or when a connection still crosses (a catalogue message lists them; what
  /// was moved or cut stays so).
  static std::unique_ptr<HABMBlock> splitTopBlock(HABMBlock& top, std::string const& instancePath,
                                                  bool const& insertVirtual);
  /// Puts the contents of `source` in place of those of the sub-block at `instancePath` (from `top`), and
  /// with `mergeBoundary` its VLNV and boundary too (never on a BLOCK_RSW block); the block's
  /// configuration and module name stay, BLOCK_STUB goes, and the lock state is the source's on a BLOCK_RSW
  /// block and UNKNOWN elsewhere; `top` is no longer validated. False, with nothing changed, when the path
  /// names no sub-block or canMergeBlock refuses (a catalogue message lists why).
  static bool mergeTopBlock(HABMBlock& top, std::string const& instancePath, HABMBlock const& source,
                            bool const& mergeBoundary);

  // Identity: plain reads and writes, no checks and no messages.

  /// The module this block instantiates.
  std::string const& getModuleName() const { return moduleName_; }
  /// Sets the module name; nothing else changes.
  void setModuleName(std::string const& moduleName) { moduleName_ = moduleName; }
  /// The module's "vendor:library:name:version"; empty by default.
  std::string const& getModuleVlnv() const { return moduleVlnv_; }
  /// Sets the VLNV text as given; it is not checked.
  void setModuleVlnv(std::string const& vlnv) { moduleVlnv_ = vlnv; }
  /// The name under the parent; empty on a top block.
  std::string const& getInstanceName() const { return instanceName_; }
  /// Renames the block; siblings are not consulted, so two sub-blocks may end up sharing a name, and
  /// stored paths are not rewritten.
  void setInstanceName(std::string const& instanceName);
  /// Free text that the block only carries; empty by default.
  std::string const& getEnablement() const { return enablement_; }
  /// Sets the enablement text.
  void setEnablement(std::string const& enablement) { enablement_ = enablement; }
  /// The block's base address; zero by default.
  HABMAddrValue const& getBaseAddress() const { return baseAddress_; }
  /// Sets the base address.
  void setBaseAddress(HABMAddrValue const& baseAddress) { baseAddress_ = baseAddress; }

  // Tree.

  /// The parent block, or null for a top block; not owning.
  HABMBlock const* getParent() const { return parent_; }
  /// The parent block, or null for a top block; not owning.
  HABMBlock* getParent() { return parent_; }
  /// The root of this block's tree; the block itself when it has no parent.
  HABMBlock const* getTop() const;
  /// The root of this block's tree; the block itself when it has no parent.
  HABMBlock* getTop();
  /// "/" for a top block, else the parent's path and the instance name ("/u0/u1").
  std::string getInstancePath() const;
  /// 0 for a top block, one more per level below it.
  int getInstanceDepth() const;
  /// The nearest strict ancestor whose BLOCK_RSW attribute is "true", or null.
  HABMBlock const* getRswAncestor() const;
  /// True when every ancestor is transparent (the block's own flag does not count); true for a top block.
  bool isVisible() const;

  // Flags.

  /// The host's memo that the tree passed its checks; false by default.
  bool getValidated() const { return validated_; }
  /// Sets the validated memo.
  void setValidated(bool const& validated) { validated_ = validated; }
  /// Whether the contents may be seen from above; true by default.
  bool getTransparent() const { return transparent_; }
  /// Sets the transparency flag.
  void setTransparent(bool const& transparent) { transparent_ = transparent; }
  /// This block's own lock state; UNKNOWN by default.
  LockState getLocked() const { return lockState_; }
  /// Sets this block's own lock state.
  void setLocked(LockState const& lockState) { lockState_ = lockState; }
  /// The inherited lock: the nearest definite state from here upwards, false when there is none or when
  /// the host parameter "project.ignoreModularNocLocks" is true.
  bool isLocked() const;
  /// "locked" and "unlocked", in any case, give their state; every other text gives UNKNOWN.
  static LockState encodeLockState(std::string text);
  /// "locked" or "unlocked"; the empty string for UNKNOWN.
  static std::string decodeLockState(LockState const& state);

  // Kinds, read from the VLNV library part or from attributes.

  /// True when the VLNV splits and its library is "ip", ignoring case.
  bool isIP() const;
  /// True when the VLNV splits and its library is "blockdesign" or "blockdiagram", ignoring case.
  bool isBlockDesign() const;
  /// True when the VLNV splits and its library is "blockdesign_ref", ignoring case.
  bool isBlockDesignRef() const;
  /// True when the VLNV splits and its library is "module_ref", ignoring case.
  bool isModuleRef() const;
  /// True when a PRIMITIVE attribute exists, whatever its value.
  bool isPrimitive() const;
  /// True when an OPM_MODULE attribute exists, whatever its value.
  bool isOpmModule() const;
  /// True when an OPM_NOC attribute exists, whatever its value.
  bool isOpmNocModule() const;
  /// True when this block or any block below it has an OPM_NOC attribute.
  bool hasOpmNocModule() const;
  /// The NoC mode an OPM NoC module's OPM_NOC value names: "NMU_..." an NMU, "NSU_..." an NSU (in any
  /// case); MODE_UNKNOWN otherwise.
  HABMNocInterface::NocMode getOpmNocMode() const;
  /// The NoC protocol OPM_NOC names: "..._MM" aximm, "..._STRM" axis (in any case); PROTOCOL_UNKNOWN
  /// otherwise.
  HABMNocInterface::NocProtocol getOpmNocProtocol() const;
  /// The NoC category of an OPM NoC module: fab_hbm when its NOC_FABRIC generic is "EDG" or "FAB_HBM"
  /// (in any case), pl otherwise; CATEGORY_UNKNOWN without OPM_NOC.
  HABMNocInterface::NocCategory getOpmNocCategory() const;
  /// True when the BLACK_BOX attribute is "true", ignoring case.
  bool isBlackBox() const;
  /// True when the BLOCK_STUB attribute is "true", ignoring case.
  bool isBlockStub() const;
  /// True when the BLOCK_RSW attribute is "true", ignoring case.
  bool isBlockRsw() const;
  /// True sets BLACK_BOX to "true" (creating it); false removes it.
  void setBlackBox(bool const& on);
  /// True sets BLOCK_STUB to "true" (creating it); false removes it.
  void setBlockStub(bool const& on);
  /// True sets BLOCK_RSW to "true" (creating it); false removes it.
  void setBlockRsw(bool const& on);

  // Attributes, generics and parameters. Creators refuse an empty name, a name with "/" and a name
  // already present, returning null; removers return false for an unknown name.

  /// Appends an attribute; null when refused. The block owns the result.
  HABMAttribute* createAttribute(std::string const& name, std::string const& value);
  /// The first attribute of that exact name, or null.
  HABMAttribute* getAttribute(std::string const& name) const;
  /// The attributes in creation order; the block keeps ownership.
  std::vector<HABMAttribute*> getAttributes() const;
  /// True when the block has an attribute.
  bool hasAttributes() const;
  /// Destroys the first attribute of that name; false when there is none.
  bool removeAttribute(std::string const& name);
  /// Destroys every attribute, silently.
  void clearAttributes();
  /// Sets the value of an existing attribute, or creates it when `create` is set; null when missing and
  /// not created, or when the name is refused.
  HABMAttribute* setAttribute(std::string const& name, std::string const& value, bool const& create);
  /// The attribute at "name" or "sub/path/name" from this block, or null.
  HABMAttribute* findAttribute(std::string const& path, bool const& recursive) const;

  /// Appends a generic; null when refused. The block owns the result.
  HABMGeneric* createGeneric(std::string const& name, std::string const& value);
  /// The first generic of that exact name, or null.
  HABMGeneric* getGeneric(std::string const& name) const;
  /// The generics in creation order; the block keeps ownership.
  std::vector<HABMGeneric*> getGenerics() const;
  /// True when the block has a generic.
  bool hasGenerics() const;
  /// Destroys the first generic of that name; false when there is none.
  bool removeGeneric(std::string const& name);
  /// Destroys every generic, silently.
  void clearGenerics();
  /// As setAttribute, for generics.
  HABMGeneric* setGeneric(std::string const& name, std::string const& value, bool const& create);
  /// The generic at "name" or "sub/path/name" from this block, or null.
  HABMGeneric* findGeneric(std::string const& path, bool const& recursive) const;

  /// Appends a parameter; null when refused. The block owns the result.
  HABMParameter* createParameter(std::string const& name, std::string const& value);
  /// The first parameter of that exact name, or null.
  HABMParameter* getParameter(std::string const& name) const;
  /// The parameters in creation order; the block keeps ownership.
  std::vector<HABMParameter*> getParameters() const;
  /// True when the block has a parameter.
  bool hasParameters() const;
  /// Destroys the first parameter of that name; false when there is none.
  bool removeParameter(std::string const& name);
  /// Destroys every parameter, silently.
  void clearParameters();
  /// As setAttribute, for parameters.
  HABMParameter* setParameter(std::string const& name, std::string const& value, bool const& create);
  /// The parameter at "name" or "sub/path/name" from this block, or null.
  HABMParameter* findParameter(std::string const& path, bool const& recursive) const;

  // Ports: a table with unique names, found by name in constant time.

  /// Appends a port; null for an empty name, a name with "/", or (unless `force`) a taken name. A forced
  /// taken name leaves the table as it was and returns a new port that belongs to no table: the block
  /// keeps it alive until clearPorts or its own end, but no get/find/list ever shows it.
  HABMPort* createPort(std::string const& name, bool const& force);
  /// The port of that exact name, or null; also null for a port renamed through setPortName.
  HABMPort* getPort(std::string const& name) const;
  /// The ports in creation order; the block keeps ownership.
  std::vector<HABMPort*> getPorts() const;
  /// True when the block has a port.
  bool hasPorts() const;
  /// Destroys the port of that name; false when there is none.
  bool removePort(std::string const& name);
  /// Destroys every port, forced duplicates included, silently.
  void clearPorts();
  /// The port at "name" or "sub/path/name" from this block, or null.
  HABMPort* findPort(std::string const& path, bool const& recursive) const;
  /// Ports whose full path matches `pattern` (all for ""), this block's first, then with `recursive` each
  /// sub-block's.
  std::vector<HABMPort*> findPorts(std::string const& pattern, bool const& recursive) const;
  /// The ports that are not outputs (in, inout, phantom, unknown), in table order.
  std::vector<HABMPort*> getInputPorts() const;
  /// The output ports, in table order.
  std::vector<HABMPort*> getOutputPorts() const;

  // Sub-blocks.

  /// Appends a new sub-block; null for an empty name, a name with "/", or (unless `force`) a taken name.
  HABMBlock* createSubBlock(std::string const& instanceName, std::string const& moduleName,
                            bool const& force);
  /// Adopts a top block under the given instance name, emptying `block`; null, with `block` untouched, for
  /// an empty pointer, a refused name, or a block that already holds this one.
  HABMBlock* insertSubBlock(std::string const& instanceName, std::unique_ptr<HABMBlock>& block,
                            bool const& force);
  /// Detaches the first sub-block of that name and hands it back as a top block; empty when unknown.
  std::unique_ptr<HABMBlock> removeSubBlock(std::string const& instanceName);
  /// The first sub-block of that exact instance name, or null.
  HABMBlock* getSubBlock(std::string const& instanceName) const;
  /// The direct sub-blocks in creation order; the block keeps ownership.
  std::vector<HABMBlock*> getSubBlocks() const;
  /// True when the block has a sub-block.
  bool hasSubBlocks() const;
  /// Destroys every sub-block, silently.
  void clearSubBlocks();
  /// The sub-block at a relative or absolute path; null for a miss, a path outside this block, or a
  /// path of more than one level when `recursive` is false.
  HABMBlock* findSubBlock(std::string const& path, bool const& recursive) const;
  /// Sub-blocks whose instance path matches `pattern` (all for ""): with `recursive`, each sub-block's
  /// finds come first, then the direct sub-blocks. Never this block itself.
  std::vector<HABMBlock*> findSubBlocks(std::string const& pattern, bool const& recursive) const;
  /// Sub-blocks, in findSubBlocks order, whose module name matches; empty for an empty pattern.
  std::vector<HABMBlock*> findSubBlocksByModule(std::string const& pattern, bool const& recursive) const;
  /// Sub-blocks, in findSubBlocks order, whose VLNV matches; empty for an empty pattern.
  std::vector<HABMBlock*> findSubBlocksByVlnv(std::string const& pattern, bool const& recursive) const;
  /// True when `block` is a sub-block (any depth with `recursive`); pointers are compared; false for null.
  bool hasSubBlock(HABMBlock const* block, bool const& recursive) const;

  // Port connections: nets drawn in this block, holding paths relative to it.

  /// Appends an unconnected port connection, named "port_connection_N" when `name` is empty; null for a
  /// name with "/" or (unless `force`) a taken name.
  HABMPortConnection* createPortConnection(std::string const& name, bool const& force);
  /// Connects `source` to `targets` under an automatic name after HABMPortConnection::canConnect (skipped
  /// with `force`); null when refused.
  HABMPortConnection* createPortConnection(std::string const& source, std::set<std::string> const& targets,
                                           bool const& force);
  /// The first port connection of that exact name, or null.
  HABMPortConnection* getPortConnection(std::string const& name) const;
  /// The port connections in creation order; the block keeps ownership.
  std::vector<HABMPortConnection*> getPortConnections() const;
  /// True when the block has a port connection.
  bool hasPortConnections() const;
  /// Destroys the first port connection of that name; false when there is none.
  bool removePortConnection(std::string const& name);
  /// Destroys every port connection, silently.
  void clearPortConnections();
  /// The port connection at "name" or "sub/path/name" from this block, or null.
  HABMPortConnection* findPortConnection(std::string const& path, bool const& recursive) const;
  /// Port connections whose full path matches `pattern` (all for ""), this block's first, then with
  /// `recursive` each sub-block's.
  std::vector<HABMPortConnection*> findPortConnections(std::string const& pattern,
                                                       bool const& recursive) const;
  // Address spaces, memory maps and address assignments. Spaces and maps refuse an empty name, a name
  // with "/" and a taken name; an assignment takes "assignment_<n>" for an empty name.

  /// Appends an address space; null when refused. The block owns the result.
  HABMAddrSpace* createAddrSpace(std::string const& name);
  /// The first address space of that exact name, or null.
  HABMAddrSpace* getAddrSpace(std::string const& name) const;
  /// The address spaces in creation order; the block keeps ownership.
  std::vector<HABMAddrSpace*> getAddrSpaces() const;
  /// True when the block has an address space.
  bool hasAddrSpaces() const;
  /// Destroys the first address space of that name; false when there is none. Assignments naming it stay.
  bool removeAddrSpace(std::string const& name);
  /// Destroys every address space, silently.
  void clearAddrSpaces();
  /// The address space at "name" or "sub/path/name" from this block, or null.
  HABMAddrSpace* findAddrSpace(std::string const& path, bool const& recursive) const;
  /// Address spaces whose full path matches `pattern` (all for ""), this block's first, then with
  /// `recursive` each sub-block's.
  std::vector<HABMAddrSpace*> findAddrSpaces(std::string const& pattern, bool const& recursive) const;
  /// The segment at "space/segment" (the space found as by findAddrSpace), or null.
  HABMAddrSegment* findAddrSegment(std::string const& path, bool const& recursive) const;

  /// Appends a memory map; null when refused. The block owns the result.
  HABMMemoryMap* createMemoryMap(std::string const& name);
  /// The first memory map of that exact name, or null.
  HABMMemoryMap* getMemoryMap(std::string const& name) const;
  /// The memory maps in creation order; the block keeps ownership.
  std::vector<HABMMemoryMap*> getMemoryMaps() const;
  /// True when the block has a memory map.
  bool hasMemoryMaps() const;
  /// Destroys the first memory map of that name; false when there is none. Assignments naming it stay.
  bool removeMemoryMap(std::string const& name);
  /// Destroys every memory map, silently.
  void clearMemoryMaps();
  /// The memory map at "name" or "sub/path/name" from this block, or null.
  HABMMemoryMap* findMemoryMap(std::string const& path, bool const& recursive) const;
  /// Memory maps whose full path matches `pattern` (all for ""), this block's first, then with
  /// `recursive` each sub-block's.
  std::vector<HABMMemoryMap*> findMemoryMaps(std::string const& pattern, bool const& recursive) const;
  /// The address block at "map/block" (the map found as by findMemoryMap), or null.
  HABMAddrBlock* findAddrBlock(std::string const& path, bool const& recursive) const;
  /// Address blocks of every memory map whose full path matches `pattern` (all for ""), this block's
  /// first, then with `recursive` each sub-block's.
  std::vector<HABMAddrBlock*> findAddrBlocks(std::string const& pattern, bool const& recursive) const;
  /// The register at "map/block/register" (the address block found as by findAddrBlock), or null.
  HABMRegister* findRegister(std::string const& path, bool const& recursive) const;
  /// Registers of every address block whose full path matches `pattern` (all for ""), this block's
  /// first, then with `recursive` each sub-block's.
  std::vector<HABMRegister*> findRegisters(std::string const& pattern, bool const& recursive) const;

  /// Appends an address assignment, named "assignment_<n>" (the first free n from the count) for an empty
  /// name; null, silently, for a name with "/" or a taken name. The block owns the result.
  HABMAddrAssign* createAddrAssign(std::string const& name);
  /// The first address assignment of that exact name, or null.
  HABMAddrAssign* getAddrAssign(std::string const& name) const;
  /// The address assignments in creation order; the block keeps ownership.
  std::vector<HABMAddrAssign*> getAddrAssigns() const;
  /// True when the block has an address assignment.
  bool hasAddrAssigns() const;
  /// Destroys the first address assignment of that name; false when there is none.
  bool removeAddrAssign(std::string const& name);
  /// Destroys every address assignment, silently.
  void clearAddrAssigns();
  /// The address assignment at "name" or "sub/path/name" from this block, or null.
  HABMAddrAssign* findAddrAssign(std::string const& path, bool const& recursive) const;
  /// Address assignments whose full path matches `pattern` (all for ""), this block's first, then with
  /// `recursive` each sub-block's.
  std::vector<HABMAddrAssign*> findAddrAssigns(std::string const& pattern, bool const& recursive) const;

  /// Leaves the block as it is: address spaces come only from createAddrSpace and the file reader.
  void inferAddrSpaces();
  /// Leaves the block as it is: memory maps come only from createMemoryMap and the file reader.
  void inferMemoryMaps();

  // Bus interfaces, bridges and interface connections. Interfaces and bridges sit on the boundary;
  // interface connections are drawn inside and hold paths relative to this block.

  /// Appends an interface, named "interface_N" when `name` is empty; null for a name with "/" or (unless
  /// `force`) a taken name. The block owns the result.
  HABMInterface* createInterface(std::string const& name, bool const& force);
  /// The first interface of that exact name, or null.
  HABMInterface* getInterface(std::string const& name) const;
  /// The interfaces in creation order; the block keeps ownership.
  std::vector<HABMInterface*> getInterfaces() const;
  /// True when the block has an interface.
  bool hasInterfaces() const;
  /// Destroys the first interface of that name; false when there is none. Links naming it stay.
  bool removeInterface(std::string const& name);
  /// Destroys every interface, silently.
  void clearInterfaces();
  /// The interface at "name" or "sub/path/name" from this block, or null.
  HABMInterface* findInterface(std::string const& path, bool const& recursive) const;
  /// Interfaces whose full path matches `pattern` (all for ""), this block's first, then with
  /// `recursive` each sub-block's.
  std::vector<HABMInterface*> findInterfaces(std::string const& pattern, bool const& recursive) const;

  /// Appends a bridge, named "bridge_N" when `name` is empty; null for a name with "/" or a taken name.
  HABMBridge* createBridge(std::string const& name);
  /// Bridges the block's interface `source` to its interface `target` under an automatic name after
  /// HABMBridge::canBridge; null when refused.
  HABMBridge* createBridge(std::string const& source, std::string const& target);
  /// The first bridge of that exact name, or null.
  HABMBridge* getBridge(std::string const& name) const;
  /// The bridges in creation order; the block keeps ownership.
  std::vector<HABMBridge*> getBridges() const;
  /// True when the block has a bridge.
  bool hasBridges() const;
  /// Destroys the first bridge of that name; false when there is none.
  bool removeBridge(std::string const& name);
  /// Destroys every bridge, silently.
  void clearBridges();

  /// Appends an unconnected interface connection, named "interface_connection_N" when `name` is empty;
  /// null for a name with "/" or (unless `force`) a taken name.
  HABMInterfaceConnection* createInterfaceConnection(std::string const& name, bool const& force);
  /// Connects `source` to `target` under an automatic name after HABMInterfaceConnection::canConnect
  /// (skipped with `force`); null when refused.
  HABMInterfaceConnection* createInterfaceConnection(std::string const& source, std::string const& target,
                                                     bool const& force);
  /// The first interface connection of that exact name, or null.
  HABMInterfaceConnection* getInterfaceConnection(std::string const& name) const;
  /// The interface connections in creation order; the block keeps ownership.
  std::vector<HABMInterfaceConnection*> getInterfaceConnections() const;
  /// True when the block has an interface connection.
  bool hasInterfaceConnections() const;
  /// Destroys the first interface connection of that name; false when there is none.
  bool removeInterfaceConnection(std::string const& name);
  /// Destroys every interface connection, silently.
  void clearInterfaceConnections();
  /// The interface connection at "name" or "sub/path/name" from this block, or null.
  HABMInterfaceConnection* findInterfaceConnection(std::string const& path, bool const& recursive) const;
  /// Interface connections whose full path matches `pattern` (all for ""), this block's first, then with
  /// `recursive` each sub-block's.
  std::vector<HABMInterfaceConnection*> findInterfaceConnections(std::string const& pattern,
                                                                 bool const& recursive) const;

  // NoC interfaces (boundary) and NoC connections (contents). With `excludeIni` the objects of the
  // category ini are left out.

  /// Appends a NoC interface named "noc_interface_N", the first N from the count that is free; never null.
  HABMNocInterface* createNocInterface();
  /// Appends a NoC interface; null for an empty name, a name with "/" or a taken name.
  HABMNocInterface* createNocInterface(std::string const& name);
  /// As createNocInterface(name), saying why in `error` (cleared first) when it refuses.
  HABMNocInterface* createNocInterface(std::string const& name, std::string& error);
  /// The first NoC interface of that exact name, or null.
  HABMNocInterface* getNocInterface(std::string const& name) const;
  /// The NoC interfaces in creation order; the block keeps ownership.
  std::vector<HABMNocInterface*> getNocInterfaces(bool const& excludeIni) const;
  /// True when getNocInterfaces would not be empty.
  bool hasNocInterfaces(bool const& excludeIni) const;
  /// True when `iface` is on this block or (with `recursive`) any block below; pointers are compared.
  bool hasNocInterface(HABMNocInterface const* iface, bool const& recursive) const;
  /// Destroys the first NoC interface of that name; false when there is none. Links naming it stay.
  bool removeNocInterface(std::string const& name);
  /// Destroys every NoC interface, silently.
  void clearNocInterfaces();
  /// The NoC interface at "name" or "sub/path/name" from this block, or null.
  HABMNocInterface* findNocInterface(std::string const& path, bool const& recursive) const;
  /// NoC interfaces whose full path matches `pattern` (all for ""), this block's first, then with
  /// `recursive` each sub-block's.
  std::vector<HABMNocInterface*> findNocInterfaces(std::string const& pattern, bool const& recursive,
                                                   bool const& excludeIni) const;
  /// True when some NoC interface in the subtree is editable.
  bool hasEditableNocInterfaces() const;

  /// Links `source` to `target` (paths from this block) under an automatic name after
  /// HABMNocConnection::canConnect (skipped with `force`), with the default parameters of the link; null
  /// when refused, with the reason in `error` (cleared first).
  HABMNocConnection* createNocConnection(std::string const& source, std::string const& target,
                                         std::string& error, bool const& force);
  /// As above, dropping the reason.
  HABMNocConnection* createNocConnection(std::string const& source, std::string const& target,
                                         bool const& force);
  /// Appends an unconnected link, named "noc_connection_N" when `name` is empty; null for a name with "/" or
  /// (unless `force`) a taken name.
  HABMNocConnection* createNocConnection(std::string const& name, bool const& force);
  /// The first NoC connection of that exact name, or null.
  HABMNocConnection* getNocConnection(std::string const& name) const;
  /// The NoC connections in creation order; the block keeps ownership.
  std::vector<HABMNocConnection*> getNocConnections(bool const& excludeIni) const;
  /// True when getNocConnections would not be empty.
  bool hasNocConnections(bool const& excludeIni) const;
  /// Renames a link; false for an unknown old name, a refused or taken new name. Paths stay as they are.
  bool renameNocConnection(std::string const& oldName, std::string const& newName);
  /// Destroys the first NoC connection of that name; false when there is none.
  bool removeNocConnection(std::string const& name);
  /// Destroys every NoC connection, silently.
  void clearNocConnections();
  /// The NoC connection at "name" or "sub/path/name" from this block, or null.
  HABMNocConnection* findNocConnection(std::string const& path, bool const& recursive) const;
  /// NoC connections whose full path matches `pattern` (all for ""), this block's first, then with
  /// `recursive` each sub-block's.
  std::vector<HABMNocConnection*> findNocConnections(std::string const& pattern, bool const& recursive,
                                                     bool const& excludeIni) const;
  /// True when some NoC connection in the subtree is editable.
  bool hasEditableNocConnections() const;

  /// Rebuilds this block's bus view from HDL attributes: interfaces, then interface connections, then
  /// the NoC interfaces derived from them. Does nothing on a block with OV_MODULE_SPEC; sub-blocks are
  /// not visited.
  void inferAbstractions();
  /// Replaces every NoC interface by one per AXI bus interface of an OPM NoC module (OPM_NOC), with the
  /// module's mode, protocol and category and its NoC generics as parameters; leaves none on any other
  /// block. Can be repeated.
  void inferNocInterfaces();
  /// Replaces every interface by those the ports' OV_INTERFACE_... attributes describe, in name order,
  /// and removes the attributes it read from the ports.
  void inferInterfaces();
  /// Replaces every interface connection by one per pair of interfaces that share a net of this block,
  /// ordered by the two interface paths.
  void inferInterfaceConnections();

  // Grouped copies and clears. A copy first clears the group, then re-creates the source's children in
  // an order where what refers to something comes after it; sub-blocks are copied whole.

  /// Replaces the attributes, generics and parameters by copies of the source's.
  void cloneConfiguration(HABMBlock const& source);
  /// Replaces ports, address spaces, memory maps, interfaces, NoC interfaces and bridges by copies of the
  /// source's.
  void cloneBoundary(HABMBlock const& source);
  /// Replaces sub-blocks (whole), port, interface and NoC connections and address assignments by copies
  /// of the source's; their paths are relative, so they resolve inside this block.
  void cloneContents(HABMBlock const& source);

  /// Destroys the attributes, generics and parameters, silently.
  void clearConfiguration();
  /// Destroys bridges, NoC interfaces, interfaces, address spaces, memory maps and ports, in this order,
  /// silently.
  void clearBoundary();
  /// Destroys address assignments, port connections, interface connections, NoC connections and
  /// sub-blocks, in this order, silently.
  void clearContents();

  /// Walks the subtree and lists every broken invariant, one sentence each: parents that do not point
  /// back, refused child names, name indexes that disagree with their containers, stored paths that are
  /// not relative. Empty when all hold. For tests and the fuzzer; never called by the library.
  std::vector<std::string> check() const;

 private:
  template <habm_detail::ChildKind>
  friend struct habm_detail::Kind;

  explicit HABMBlock(std::string const& moduleName);
  HABMBlock(HABMBlock* parent, std::string const& instanceName, std::string const& moduleName);

  void setParent(HABMBlock* parent) { parent_ = parent; }
  /// Copies the scalars (not the parent) and the three groups of `source`, the subtree in full.
  void clone(HABMBlock const& source);
  /// Copies validated, lock state, transparency, the names, VLNV, enablement and base address.
  void copyScalars(HABMBlock const& source);
  /// Destroys the subtree below this block, each block once its own sub-blocks are gone.
  void tearDownSubBlocks();
  void setFlagAttribute(std::string const& name, bool on);
  /// Moves `connection`, drawn in a block above this one between two objects inside this one, into this
  /// block under an automatic name; it stays where it is when an end does not resolve.
  void adoptNocConnection(HABMNocConnection& connection);

  HABMBlock* parent_ = nullptr;
  bool validated_ = false;
  LockState lockState_ = UNKNOWN;
  bool transparent_ = true;
  std::string moduleName_;
  std::string moduleVlnv_;
  std::string enablement_;
  HABMAddrValue baseAddress_;
  std::string instanceName_;
  HABMChildList<HABMAttribute> attributes_;
  HABMChildList<HABMGeneric> generics_;
  HABMChildList<HABMParameter> parameters_;
  HABMChildList<HABMPort> ports_;  // names are keys: a second port of a name is never listed
  HABMChildList<HABMInterface> interfaces_;
  HABMChildList<HABMNocInterface> nocInterfaces_;
  HABMChildList<HABMAddrSpace> addrSpaces_;
  HABMChildList<HABMMemoryMap> memoryMaps_;
  HABMChildList<HABMBridge> bridges_;
  HABMChildList<HABMBlock> subBlocks_;
  HABMChildList<HABMPortConnection> portConnections_;
  HABMChildList<HABMInterfaceConnection> interfaceConnections_;
  HABMChildList<HABMNocConnection> nocConnections_;
  HABMChildList<HABMAddrAssign> addrAssigns_;
};

// HABMNocInterface.h: one attachment point of a block to the network on chip: mode, protocol, category,
// location, destination ids, memory map reference, apertures and parameters, with their vocabularies.
#pragma once

#include "base/HCWWaiverProxyElem.h"
#include "blockmodel/HABMAddrAperture.h"
#include "blockmodel/HABMAddrValue.h"
#include "blockmodel/HABMCachedObject.h"
#include "blockmodel/HABMChildList.h"
#include "blockmodel/HABMParameterList.h"

#include <cstdint>
#include <set>
#include <string>
#include <utility>
#include <vector>

class HABMBlock;
class HABMMemoryMap;
class HABMNocConnection;
class HABMParameter;

/// An entry to (NMU), an exit from (NSU) or a virtual stand-in on a hierarchy boundary for (VNMU, VNSU)
/// the network on chip, kept on a block beside its bus interfaces. Connections name it by path. Made only
/// by HABMBlock::createNocInterface; not copyable.
class HABMNocInterface : public HCWWaiverProxyElem,
                         public HABMParameterList<HABMNocInterface>,
                         private HABMCachedObject<HABMNocInterface> {
 public:
  /// Where traffic enters (NMU) or leaves (NSU) the network; the virtual forms stand for one elsewhere.
  enum NocMode { MODE_NMU, MODE_NSU, MODE_VNMU, MODE_VNSU, MODE_UNKNOWN };
  /// What the traffic is; only memory-mapped traffic is addressable.
  enum NocProtocol { PROTOCOL_AXIMM, PROTOCOL_AXIS, PROTOCOL_UNKNOWN };
  /// Which part of the chip owns the endpoint; CATEGORY_INI marks an inter-network link.
  enum NocCategory {
    CATEGORY_ENG_ARR,
    CATEGORY_CPU_COH,
    CATEGORY_CPU_COH_PHY,
    CATEGORY_PL,
    CATEGORY_DDR,
    CATEGORY_FAB_HBM,
    CATEGORY_CPU_NCO,
    CATEGORY_CPU_NCO_PHY,
    CATEGORY_CPU_PCIE,
    CATEGORY_CPU_MGT,
    CATEGORY_CPU_RT,
    CATEGORY_CPU_ISO,
    CATEGORY_CPU_MM,
    CATEGORY_NET_HW,
    CATEGORY_HSIO5,
    CATEGORY_DAT_PROC,
    CATEGORY_DMA_HUB,
    CATEGORY_IMG_SIG,
    CATEGORY_VID_ENC,
    CATEGORY_VID_POST,
    CATEGORY_INI,
    CATEGORY_UNKNOWN
  };
  /// The quality of service of read or write traffic.
  enum NocTrafficClass { TRAFFIC_BEST_EFFORT, TRAFFIC_ISOCHRONOUS, TRAFFIC_LOW_LATENCY, TRAFFIC_UNKNOWN };
  /// A placement or a range of placements: first and last.
  using LocationRange = std::pair<std::string, std::string>;
  /// A stream destination id or a range of them: first and last.
  using TDestIdRange = std::pair<HABMAddrValue, HABMAddrValue>;

  ~HABMNocInterface() override;
  HABMNocInterface(HABMNocInterface const&) = delete;
  HABMNocInterface& operator=(HABMNocInterface const&) = delete;

  // Names of parameters and properties.
  static std::string const& ADDR_WIDTH();
  static std::string const& APERTURES();
  static std::string const& DATA_WIDTH();
  static std::string const& DST_ID_WIDTH();
  static std::string const& LOCATION();
  static std::string const& NOC_FABRIC();
  static std::string const& READ_TRAFFIC_CLASS();
  static std::string const& SIDEBAND_PINS();
  static std::string const& TDEST_ID();
  static std::string const& WRITE_TRAFFIC_CLASS();
  /// True for the parameters that come from the module and are not the user's to change: ADDR_WIDTH,
  /// DATA_WIDTH, DST_ID_WIDTH, NOC_FABRIC and SIDEBAND_PINS. The setters do not consult it.
  static bool isReadonlyParameter(std::string const& name);

  // Vocabularies: encoders fold the case and give the unknown value for every other text; decoders give
  // the empty string for the unknown value.
  static NocMode encodeNocMode(std::string text);
  static std::string decodeNocMode(NocMode const& mode);
  static NocProtocol encodeNocProtocol(std::string text);
  static std::string decodeNocProtocol(NocProtocol const& protocol);
  static NocCategory encodeNocCategory(std::string text);
  static std::string decodeNocCategory(NocCategory const& category);
  static NocTrafficClass encodeNocTrafficClass(std::string text);
  static std::string decodeNocTrafficClass(NocTrafficClass const& trafficClass);
  /// "A" or "A:B" (adjacent ":" count as one); both ends empty for any other number of parts.
  static LocationRange encodeLocationRange(std::string const& text);
  /// "A" when both ends are equal, "A:B" otherwise; empty when either end is empty.
  static std::string decodeLocationRange(LocationRange const& range);
  /// One number or two, split at any run of ":" and blanks; both ends invalid for any other count.
  static TDestIdRange encodeDestinationIdRange(std::string const& text);
  /// The hex text of one id, or "first:last"; empty unless both are valid and first is not above last.
  static std::string decodeDestinationIdRange(TDestIdRange const& range);
  /// True for memory-mapped traffic.
  static bool isAddressable(NocProtocol const& protocol);

  // Identity.

  /// The owning block.
  HABMBlock const* getParent() const { return parent_; }
  /// The name, unique among the block's NoC interfaces.
  std::string const& getName() const { return name_; }
  /// The block's instance path, terminated, and the name ("/u0/S_AXI_nsu").
  std::string getPath() const;
  /// getPath, the text by which a waiver names the interface.
  std::string getStringForObj() const override { return getPath(); }

  // Values.

  /// MODE_UNKNOWN by default.
  NocMode getNocMode() const { return nocMode_; }
  /// Stores the mode; a change to a virtual mode then tries to clear the location, which the virtual
  /// interface refuses, so the old location stays.
  void setNocMode(NocMode const& mode);
  /// PROTOCOL_UNKNOWN by default.
  NocProtocol getNocProtocol() const { return nocProtocol_; }
  /// Stores the protocol.
  void setNocProtocol(NocProtocol const& protocol) { nocProtocol_ = protocol; }
  /// CATEGORY_UNKNOWN by default.
  NocCategory getNocCategory() const { return nocCategory_; }
  /// Stores the category.
  void setNocCategory(NocCategory const& category) { nocCategory_ = category; }
  /// The name of a memory map on the block; empty by default.
  std::string const& getMemoryMapRef() const { return memoryMapRef_; }
  /// Stores the name.
  void setMemoryMapRef(std::string const& name) { memoryMapRef_ = name; }
  /// The referenced memory map found from the block, or null.
  HABMMemoryMap* getMemoryMap() const;
  /// The address ranges of a target; empty by default.
  std::set<HABMAddrAperture> const& getApertures() const { return apertures_; }
  /// Replaces the apertures.
  void setApertures(std::set<HABMAddrAperture> const& apertures) { apertures_ = apertures; }
  /// The placement, "A" or "A:B"; empty when unset.
  std::string const& getLocation() const { return location_; }
  /// Sets ("" clears) the placement of a non-virtual interface, stored in its decoded form. False with
  /// the reason in `error` for a virtual interface or a malformed text; nothing changes then.
  bool setLocation(std::string const& location, std::string& error);
  /// As setLocation, dropping the reason.
  bool setLocation(std::string const& location);
  /// The assigned destination id; -1 for none.
  std::int32_t getDestId() const { return destId_; }
  /// Stores the id.
  void setDestId(std::int32_t const& destId) { destId_ = destId; }
  /// The stream destination id or id range; empty when unset.
  std::string const& getTdestId() const { return tdestId_; }
  /// Sets ("" clears) the stream destination id of an AXIS NSU, or of an AXIS VNSU of category ini,
  /// checked against the width of DST_ID_WIDTH (4 when missing or unreadable). False with the reason in
  /// `error` when refused, or when DST_ID_WIDTH is missing (the id is then stored all the same).
  bool setTdestId(std::string const& id, std::string& error);
  /// As setTdestId, dropping the reason.
  bool setTdestId(std::string const& id);
  /// The text of the DST_ID_WIDTH parameter; empty when there is none.
  std::string getTdestWidth() const;
  /// Sets DST_ID_WIDTH, creating it if need be; an empty text removes it.
  void setTdestWidth(std::string const& width);
  /// The class read from READ_TRAFFIC_CLASS; TRAFFIC_UNKNOWN when the parameter is missing.
  NocTrafficClass getReadTrafficClass() const;
  /// Sets READ_TRAFFIC_CLASS to the class's text on an NMU; false, changing nothing, on any other mode.
  bool setReadTrafficClass(NocTrafficClass const& trafficClass);
  /// The class read from WRITE_TRAFFIC_CLASS; TRAFFIC_UNKNOWN when the parameter is missing.
  NocTrafficClass getWriteTrafficClass() const;
  /// Sets WRITE_TRAFFIC_CLASS to the class's text on an NMU; false, changing nothing, on any other mode.
  bool setWriteTrafficClass(NocTrafficClass const& trafficClass);
  /// Set by the reader and by a split; false by default.
  bool getEditable() const { return editable_; }
  /// Stores the flag.
  void setEditable(bool const& editable) { editable_ = editable; }

  // Predicates.

  /// NMU or VNMU.
  bool isSource() const;
  /// NSU or VNSU.
  bool isTarget() const;
  /// VNMU or VNSU.
  bool isVirtual() const;
  /// True for memory-mapped traffic.
  bool isAddressable() const { return isAddressable(nocProtocol_); }
  /// True for the category ini.
  bool isIniCategory() const { return nocCategory_ == CATEGORY_INI; }
  /// The block's visibility.
  bool isVisible() const;
  /// True when the block is a run-time swapped block.
  bool isRswInterface() const;
  /// The block's nearest run-time swapped ancestor, or null.
  HABMBlock const* getRswAncestor() const;

  // Connections, found on the block and every block above it; "source" drives this interface.

  /// Fills `sources` with the connections that drive this interface and `targets` with those it drives,
  /// clearing both first; the block's connections first, then each ancestor's, each in container order.
  void getConnections(std::vector<HABMNocConnection*>& sources,
                      std::vector<HABMNocConnection*>& targets) const;
  /// The connections that drive this interface.
  std::vector<HABMNocConnection*> getSourceConnections() const;
  /// The connections this interface drives.
  std::vector<HABMNocConnection*> getTargetConnections() const;
  /// The resolved far ends of the driving connections.
  std::vector<HABMNocInterface*> getSourceInterfaces() const;
  /// The resolved far ends of the driven connections.
  std::vector<HABMNocInterface*> getTargetInterfaces() const;

 private:
  friend class HABMBlock;
  template <habm_detail::ChildKind>
  friend struct habm_detail::Kind;

  HABMNocInterface(HABMBlock* parent, std::string name);
  /// Copies the name, the values and the flags, and re-creates the parameters in order.
  void clone(HABMNocInterface const& source);
  bool setTrafficClass(std::string const& name, NocTrafficClass trafficClass);

  HABMBlock* parent_;
  std::string name_;
  NocMode nocMode_ = MODE_UNKNOWN;
  NocProtocol nocProtocol_ = PROTOCOL_UNKNOWN;
  NocCategory nocCategory_ = CATEGORY_UNKNOWN;
  std::string memoryMapRef_;
  std::set<HABMAddrAperture> apertures_;
  std::string location_;
  std::int32_t destId_ = -1;
  std::string tdestId_;
  bool editable_ = false;
};

// HABMNocConnection.h: one directed link between two NoC interfaces, held as paths, with its remaps, its
// traffic parameters and the rules that say which links are legal.
#pragma once

#include "base/HCWWaiverProxyElem.h"
#include "blockmodel/HABMAddrRemap.h"
#include "blockmodel/HABMCachedObject.h"
#include "blockmodel/HABMChildList.h"
#include "blockmodel/HABMInterfaceConnection.h"
#include "blockmodel/HABMNocInterface.h"
#include "blockmodel/HABMParameterList.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

class HABMBlock;
class HABMParameter;

/// A link from a source NoC interface to a target one, drawn in a block and naming its ends by paths
/// relative to that block (the name, parent and paths are those of the bus link it extends). A link from a
/// source (NMU, VNMU) to a target (NSU, VNSU) is primary: only it holds traffic parameters. Made only by
/// HABMBlock::createNocConnection; not copyable.
class HABMNocConnection : public HCWWaiverProxyElem,
                          public HABMInterfaceConnection,
                          public HABMParameterList<HABMNocConnection>,
                          private HABMCachedObject<HABMNocConnection> {
 public:
  /// How writes are ordered on the link.
  enum WriteOrder { WRITE_ORDER_STRICT, WRITE_ORDER_RELAXED, WRITE_ORDER_DOORBELL, WRITE_ORDER_UNKNOWN };

  ~HABMNocConnection() override;
  HABMNocConnection(HABMNocConnection const&) = delete;
  HABMNocConnection& operator=(HABMNocConnection const&) = delete;

  // Names of the parameters, and of the remap property of the constraint script.
  static std::string const& READ_AVERAGE_BURST();
  static std::string const& READ_BANDWIDTH();
  static std::string const& READ_LATENCY();
  static std::string const& WRITE_AVERAGE_BURST();
  static std::string const& WRITE_BANDWIDTH();
  static std::string const& WRITE_LATENCY();
  static std::string const& EXCLUSIVE_ROUTING_GROUP();
  static std::string const& SEPARATE_ROUTING_GROUP();
  static std::string const& HIGH_PRIORITY_ROUTING();
  static std::string const& INITIAL_BOOT();
  static std::string const& PHASE_SETTINGS();
  static std::string const& WRITE_ORDER_CONTROL();
  static std::string const& REMAPS();

  /// "strict", "relaxed" and "doorbell" in any case; WRITE_ORDER_UNKNOWN for every other text.
  static WriteOrder encodeWriteOrder(std::string text);
  /// The text of an order; empty for WRITE_ORDER_UNKNOWN.
  static std::string decodeWriteOrder(WriteOrder const& order);

  /// True when a link from `source` to `target` (paths on `block`) may be drawn; otherwise false with the
  /// first rule that refused it in `error`. `error` is cleared first.
  static bool canConnect(HABMBlock const& block, std::string const& source, std::string const& target,
                         std::string& error);
  /// Sorts every link of the block's tree by how it meets `block`: inside it, leaving it, entering it,
  /// or elsewhere. The four lists are cleared first; true.
  static bool groupNocConnections(HABMBlock const& block, std::vector<HABMNocConnection*>& others,
                                  std::vector<HABMNocConnection*>& internal,
                                  std::vector<HABMNocConnection*>& outgoing,
                                  std::vector<HABMNocConnection*>& incoming);
  /// True when both interfaces have a parent, the parents differ, and `source`'s lies below `target`'s.
  static bool isExportNocConnection(HABMNocInterface const* source, HABMNocInterface const* target);
  /// True when both interfaces have a parent, the parents differ, and `target`'s lies below `source`'s.
  static bool isImportNocConnection(HABMNocInterface const* source, HABMNocInterface const* target);
  /// The parameters a primary link has, with their defaults, by name; empty for any other link (an end
  /// that does not resolve included). The read values only when an end is addressable.
  static std::map<std::string, std::string> getDefaultParameterValues(HABMNocConnection const& connection);
  /// The names of getDefaultParameterValues.
  static std::set<std::string> getValidParameterNames(HABMNocConnection const& connection);
  /// Whether `name`, in any letter case, is one of getValidParameterNames; without building the set.
  static bool isValidParameterName(HABMNocConnection const& connection, std::string const& name);
  /// isValidParameterName with the link's ends resolved once, as they stand now: for testing many names.
  static std::function<bool(std::string const&)> validParameterNameTest(HABMNocConnection const& connection);
  /// The valid names a user is shown: never HIGH_PRIORITY_ROUTING, and PHASE_SETTINGS only when the host
  /// parameter "project.enableNocPhases" is true.
  static std::set<std::string> getVisibleParameterNames(HABMNocConnection const& connection);

  /// The connection path, the text by which a waiver names the link.
  std::string getStringForObj() const override { return getPath(); }

  // Ends.

  /// The interface the source path names from the block, or null.
  HABMNocInterface* getSourceNocInterface() const;
  /// The interface the target path names from the block, or null.
  HABMNocInterface* getTargetNocInterface() const;
  /// The source's protocol, else the target's, else PROTOCOL_UNKNOWN.
  HABMNocInterface::NocProtocol getNocProtocol() const;
  /// True when an end that resolves is addressable.
  bool isAddressable() const;
  /// True when an end that resolves is of the category ini.
  bool isIniCategory() const;
  /// True when both ends resolve, the source is a source and the target a target.
  bool isPrimary() const;
  /// True when an end that resolves lies below a run-time swapped block.
  bool hasRswAncestor() const;

  // Remaps, flags and parameters.

  /// The address remaps of the link; empty by default.
  std::set<HABMAddrRemap> const& getRemaps() const { return remaps_; }
  /// Replaces the remaps.
  void setRemaps(std::set<HABMAddrRemap> const& remaps) { remaps_ = remaps; }
  /// Set by the reader and by a split; false by default.
  bool getEditable() const { return editable_; }
  /// Stores the flag.
  void setEditable(bool const& editable) { editable_ = editable; }
  /// Copies the remaps and re-creates the source's parameters in order, as far as this link takes them.
  void cloneProperties(HABMNocConnection const& source);
  /// Drops the remaps and the parameters.
  void resetProperties();

 private:
  friend class HABMBlock;
  template <habm_detail::ChildKind>
  friend struct habm_detail::Kind;

  HABMNocConnection(HABMBlock* parent, std::string name);
  /// Copies name, paths, properties and the editable flag.
  void clone(HABMNocConnection const& source);

  std::set<HABMAddrRemap> remaps_;
  bool editable_ = false;
};

// HABMNocConnection.cpp: the rules of a legal NoC link, its default and visible parameters, the grouping
// of links around a block, and a link's remaps and parameters.
#include "blockmodel/HABMNocConnection.h"

#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMPath.h"
#include "blockmodel/detail/HABMEnumTable.h"
#include "blockmodel/detail/HABMKinds.h"
#include "param/HPAParamMgr.h"

#include <algorithm>
#include <string_view>
#include <utility>

using I = HABMNocInterface;

namespace {

constexpr habm_detail::EnumTable<HABMNocConnection::WriteOrder, HABMNocConnection::WRITE_ORDER_UNKNOWN>
    kWriteOrders{habm_detail::Fold::LOWER,
                 {{{HABMNocConnection::WRITE_ORDER_STRICT, "strict"},
                   {HABMNocConnection::WRITE_ORDER_RELAXED, "relaxed"},
                   {HABMNocConnection::WRITE_ORDER_DOORBELL, "doorbell"}}}};
static_assert(kWriteOrders.complete(), "one text per write order");

// Which source mode may feed which target mode; rows are the source, columns the target.
constexpr bool kModesFit[4][4] = {
    // nmu    nsu   vnmu   vnsu
    {false, true, true, true},     // nmu
    {false, false, false, false},  // nsu
    {false, true, true, true},     // vnmu
    {false, true, false, true},    // vnsu
};

bool modesFit(I::NocMode source, I::NocMode target) {
  if (source == I::MODE_UNKNOWN || target == I::MODE_UNKNOWN) {
    return false;
  }
  return kModesFit[static_cast<int>(source)][static_cast<int>(target)];
}

// The nearest strict ancestor of the interface's block that has NoC interfaces other than INI ones.
HABMBlock const* scopeOf(HABMNocInterface const& iface) {
  for (HABMBlock const* block = iface.getParent()->getParent(); block != nullptr;
       block = block->getParent()) {
    if (block->hasNocInterfaces(true)) {
      return block;
    }
  }
  return nullptr;
}

// A link names an interface through its last path level, looked up by exact name: comparing that level
// first spares resolving most links.
bool lastLevelIs(std::string const& path, std::string const& name) {
  std::size_t const cut = path.rfind(HABMPath::SEPARATOR());
  return std::string_view(path).substr(cut == std::string::npos ? 0 : cut + 1) == name;
}

// The first link in `block`'s subtree, in the order of findNocConnections, from `source` to `target`, or
// null. Paths resolve downwards only, so such a link is held by a block that holds both ends: one of those
// between `block` and the nearest block above both ends. Only they are searched, top down, so that the
// check costs the links of a few blocks rather than of the whole subtree.
HABMNocConnection const* duplicateOf(HABMBlock const& block, HABMNocInterface const& source,
                                     HABMNocInterface const& target) {
  auto const depthOf = [](HABMBlock const* b) {
    std::size_t depth = 0;
    for (; b->getParent() != nullptr; b = b->getParent()) {
      ++depth;
    }
    return depth;
  };
  HABMBlock const* low = source.getParent();
  HABMBlock const* high = target.getParent();
  std::size_t lowDepth = depthOf(low);
  std::size_t highDepth = depthOf(high);
  for (; lowDepth > highDepth; --lowDepth) {
    low = low->getParent();
  }
  for (; highDepth > lowDepth; --highDepth) {
    high = high->getParent();
  }
  while (low != high) {
    low = low->getParent();
    high = high->getParent();
  }
  std::vector<HABMBlock const*> holders;
  for (HABMBlock const* holder = low; holder != nullptr; holder = holder->getParent()) {
    holders.push_back(holder);
    if (holder == &block) {
      break;
    }
  }
  for (auto at = holders.rbegin(); at != holders.rend(); ++at) {
    for (HABMNocConnection const* existing : (*at)->getNocConnections(false)) {
      if (lastLevelIs(existing->getSourcePath(false), source.getName()) &&
          lastLevelIs(existing->getTargetPath(false), target.getName()) &&
          existing->getSourceNocInterface() == &source && existing->getTargetNocInterface() == &target) {
        return existing;
      }
    }
  }
  return nullptr;
}

// The first rule that refuses the link, or the empty string.
std::string refusal(HABMBlock const& block, HABMNocInterface const* source, HABMNocInterface const* target) {
  if (source == nullptr) {
    return "Source NOC interface not found.";
  }
  if (target == nullptr) {
    return "Target NOC interface not found.";
  }
  if (source == target) {
    return "Source and Target NOC interfaces are the same NOC interface.";
  }
  if (source->getNocProtocol() != target->getNocProtocol()) {
    return "Source and Target NOC protocols do not match.";
  }
  if (source->isIniCategory() != target->isIniCategory()) {
    return "Source and Target NOC categories do not match.";
  }
  if (!modesFit(source->getNocMode(), target->getNocMode())) {
    return "Source NOC mode '" + I::decodeNocMode(source->getNocMode()) + "' and Target NOC mode '" +
           I::decodeNocMode(target->getNocMode()) + "' are incompatible.";
  }
  if (source->getNocMode() == I::MODE_VNSU && !source->getTargetConnections().empty()) {
    return "Source VNSU interface must connect to a single Target VNSU or NSU interface.";
  }
  if (target->getNocMode() == I::MODE_VNMU && !target->getSourceConnections().empty()) {
    return "Target VNMU interface must connect from a single Source NMU or VNMU interface.";
  }
  HABMBlock const* const sourceScope = scopeOf(*source);
  HABMBlock const* const targetScope = scopeOf(*target);
  if (sourceScope != targetScope && sourceScope != target->getParent() &&
      source->getParent() != targetScope) {
    return "Source and Target NOC interfaces must exist within the same NOC scope.";
  }
  if (HABMNocConnection const* existing = duplicateOf(block, *source, *target)) {
    return "Duplicate NOC connection already exists at '" + existing->getPath() + "'.";
  }
  return std::string();
}

}  // namespace

HABMNocConnection::HABMNocConnection(HABMBlock* parent, std::string name)
    : HCWWaiverProxyElem(0), HABMInterfaceConnection(parent, std::move(name), HABMPortConnection::SOFT) {}

HABMNocConnection::~HABMNocConnection() {
  leaveObjectCaches();
}

#define HABM_NOC_CONNECTION_NAME(NAME)           \
  std::string const& HABMNocConnection::NAME() { \
    static std::string const value = #NAME;      \
    return value;                                \
  }
HABM_NOC_CONNECTION_NAME(READ_AVERAGE_BURST)
HABM_NOC_CONNECTION_NAME(READ_BANDWIDTH)
HABM_NOC_CONNECTION_NAME(READ_LATENCY)
HABM_NOC_CONNECTION_NAME(WRITE_AVERAGE_BURST)
HABM_NOC_CONNECTION_NAME(WRITE_BANDWIDTH)
HABM_NOC_CONNECTION_NAME(WRITE_LATENCY)
HABM_NOC_CONNECTION_NAME(EXCLUSIVE_ROUTING_GROUP)
HABM_NOC_CONNECTION_NAME(SEPARATE_ROUTING_GROUP)
HABM_NOC_CONNECTION_NAME(HIGH_PRIORITY_ROUTING)
HABM_NOC_CONNECTION_NAME(INITIAL_BOOT)
HABM_NOC_CONNECTION_NAME(PHASE_SETTINGS)
HABM_NOC_CONNECTION_NAME(WRITE_ORDER_CONTROL)
HABM_NOC_CONNECTION_NAME(REMAPS)
#undef HABM_NOC_CONNECTION_NAME

HABMNocConnection::WriteOrder HABMNocConnection::encodeWriteOrder(std::string text) {
  return kWriteOrders.encode(text);
}

std::string HABMNocConnection::decodeWriteOrder(WriteOrder const& order) {
  return kWriteOrders.decode(order);
}

bool HABMNocConnection::canConnect(HABMBlock const& block, std::string const& source,
                                   std::string const& target, std::string& error) {
  HABMNocInterface const* from = block.findNocInterface(HABMPath::get_relative_path(block, source), true);
  HABMNocInterface const* to = block.findNocInterface(HABMPath::get_relative_path(block, target), true);
  error = refusal(block, from, to);
  return error.empty();
}

bool HABMNocConnection::groupNocConnections(HABMBlock const& block, std::vector<HABMNocConnection*>& others,
                                            std::vector<HABMNocConnection*>& internal,
                                            std::vector<HABMNocConnection*>& outgoing,
                                            std::vector<HABMNocConnection*>& incoming) {
  others.clear();
  internal.clear();
  outgoing.clear();
  incoming.clear();
  for (HABMNocConnection* connection : block.getTop()->findNocConnections(std::string(), true, false)) {
    std::string const source = HABMPath::get_relative_path(block, connection->getSourcePath(true));
    std::string const target = HABMPath::get_relative_path(block, connection->getTargetPath(true));
    bool const sourceInside = HABMPath::is_valid(source);
    bool const targetInside = HABMPath::is_valid(target);
    if (sourceInside && targetInside) {
      bool const onTheBoundary = !HABMPath::has_separator(source) && !HABMPath::has_separator(target);
      (onTheBoundary && connection->getParent() != &block ? others : internal).push_back(connection);
    } else if (sourceInside) {
      (HABMPath::has_separator(source) ? outgoing : others).push_back(connection);
    } else if (targetInside) {
      (HABMPath::has_separator(target) ? incoming : others).push_back(connection);
    } else {
      others.push_back(connection);
    }
  }
  return true;
}

bool HABMNocConnection::isExportNocConnection(HABMNocInterface const* source,
                                              HABMNocInterface const* target) {
  if (source == nullptr || target == nullptr || source->getParent() == nullptr ||
      target->getParent() == nullptr || source->getParent() == target->getParent()) {
    return false;
  }
  return target->getParent()->hasSubBlock(source->getParent(), true);
}

bool HABMNocConnection::isImportNocConnection(HABMNocInterface const* source,
                                              HABMNocInterface const* target) {
  return isExportNocConnection(target, source);
}

namespace {

// The parameters of a link, with their defaults: the read ones only where an end is addressable.
struct DefaultParameter {
  std::string const& (*name)();
  char const* value;
  bool addressableOnly;
};

DefaultParameter const kDefaultParameters[] = {
    {&HABMNocConnection::READ_AVERAGE_BURST, "4", true},
    {&HABMNocConnection::READ_BANDWIDTH, "500", true},
    {&HABMNocConnection::READ_LATENCY, "300", true},
    {&HABMNocConnection::WRITE_AVERAGE_BURST, "4", false},
    {&HABMNocConnection::WRITE_BANDWIDTH, "500", false},
    {&HABMNocConnection::WRITE_LATENCY, "300", false},
    {&HABMNocConnection::EXCLUSIVE_ROUTING_GROUP, "", false},
    {&HABMNocConnection::SEPARATE_ROUTING_GROUP, "", false},
    {&HABMNocConnection::HIGH_PRIORITY_ROUTING, "false", false},
    {&HABMNocConnection::INITIAL_BOOT, "false", false},
    {&HABMNocConnection::PHASE_SETTINGS, "", false},
    {&HABMNocConnection::WRITE_ORDER_CONTROL, "", false},
};

// Parameter names are ASCII words; compared without the locale, since a file's every link parameter
// passes here.
bool sameLetters(std::string const& upper, std::string const& name) {
  return upper.size() == name.size() &&
         std::equal(upper.begin(), upper.end(), name.begin(), [](char u, char c) {
           return u == (c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c);
         });
}

// Which rows of the table a link takes: none, all but the read ones, or all.
enum class Takes { NONE, WRITE, ALL };

Takes parametersOf(HABMNocConnection const& connection) {
  HABMNocInterface const* source = connection.getSourceNocInterface();
  HABMNocInterface const* target = connection.getTargetNocInterface();
  // Only the primary link of a path carries the traffic requirements.
  if (source == nullptr || target == nullptr || !source->isSource() || !target->isTarget()) {
    return Takes::NONE;
  }
  return source->isAddressable() || target->isAddressable() ? Takes::ALL : Takes::WRITE;
}

}  // namespace

std::map<std::string, std::string> HABMNocConnection::getDefaultParameterValues(
    HABMNocConnection const& connection) {
  std::map<std::string, std::string> defaults;
  Takes const takes = parametersOf(connection);
  for (DefaultParameter const& row : kDefaultParameters) {
    if (takes == Takes::ALL || (takes == Takes::WRITE && !row.addressableOnly)) {
      defaults.emplace(row.name(), row.value);
    }
  }
  return defaults;
}

std::set<std::string> HABMNocConnection::getValidParameterNames(HABMNocConnection const& connection) {
  std::set<std::string> names;
  for (auto const& entry : getDefaultParameterValues(connection)) {
    names.insert(entry.first);
  }
  return names;
}

namespace {

bool takesName(Takes takes, std::string const& name) {
  for (DefaultParameter const& row : kDefaultParameters) {
    if (sameLetters(row.name(), name)) {
      return takes == Takes::ALL || (takes == Takes::WRITE && !row.addressableOnly);
    }
  }
  return false;
}

}  // namespace

bool HABMNocConnection::isValidParameterName(HABMNocConnection const& connection, std::string const& name) {
  return takesName(parametersOf(connection), name);
}

std::function<bool(std::string const&)> HABMNocConnection::validParameterNameTest(
    HABMNocConnection const& connection) {
  return [takes = parametersOf(connection)](std::string const& name) { return takesName(takes, name); };
}

std::set<std::string> HABMNocConnection::getVisibleParameterNames(HABMNocConnection const& connection) {
  std::set<std::string> names = getValidParameterNames(connection);
  names.erase(HIGH_PRIORITY_ROUTING());
  // Phases are an opt-in extension: the setting exists on every primary link, shown only when enabled.
  if (!HPAParamMgr::getParamMgr().getValueIfExistAsBool("project.enableNocPhases", false)) {
    names.erase(PHASE_SETTINGS());
  }
  return names;
}

// Ends.

HABMNocInterface* HABMNocConnection::getSourceNocInterface() const {
  HABMBlock const* parent = getParent();
  return parent == nullptr ? nullptr : parent->findNocInterface(getSourcePath(false), true);
}

HABMNocInterface* HABMNocConnection::getTargetNocInterface() const {
  HABMBlock const* parent = getParent();
  return parent == nullptr ? nullptr : parent->findNocInterface(getTargetPath(false), true);
}

HABMNocInterface::NocProtocol HABMNocConnection::getNocProtocol() const {
  if (HABMNocInterface const* source = getSourceNocInterface()) {
    return source->getNocProtocol();
  }
  if (HABMNocInterface const* target = getTargetNocInterface()) {
    return target->getNocProtocol();
  }
  return HABMNocInterface::PROTOCOL_UNKNOWN;
}

bool HABMNocConnection::isAddressable() const {
  HABMNocInterface const* source = getSourceNocInterface();
  HABMNocInterface const* target = getTargetNocInterface();
  return (source != nullptr && source->isAddressable()) || (target != nullptr && target->isAddressable());
}

bool HABMNocConnection::isIniCategory() const {
  HABMNocInterface const* source = getSourceNocInterface();
  HABMNocInterface const* target = getTargetNocInterface();
  return (source != nullptr && source->isIniCategory()) || (target != nullptr && target->isIniCategory());
}

bool HABMNocConnection::isPrimary() const {
  HABMNocInterface const* source = getSourceNocInterface();
  HABMNocInterface const* target = getTargetNocInterface();
  return source != nullptr && target != nullptr && source->isSource() && target->isTarget();
}

bool HABMNocConnection::hasRswAncestor() const {
  HABMNocInterface const* source = getSourceNocInterface();
  HABMNocInterface const* target = getTargetNocInterface();
  return (source != nullptr && source->getRswAncestor() != nullptr) ||
         (target != nullptr && target->getRswAncestor() != nullptr);
}

// Properties.

void HABMNocConnection::cloneProperties(HABMNocConnection const& source) {
  if (&source == this) {
    return;
  }
  remaps_ = source.remaps_;
  cloneParameters(source);
}

void HABMNocConnection::resetProperties() {
  remaps_.clear();
  clearParameters();
}

void HABMNocConnection::clone(HABMNocConnection const& source) {
  if (&source == this) {
    return;
  }
  // The paths first: which parameters a link takes depends on what its ends resolve to.
  HABMInterfaceConnection::clone(source);
  cloneProperties(source);
  editable_ = source.editable_;
}

// HABMNocInterface.cpp: the NoC vocabularies, an interface's checked setters, its parameters and the walk
// to its connections.
#include "blockmodel/HABMNocInterface.h"

#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMMemoryMap.h"
#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMPath.h"
#include "blockmodel/detail/HABMEnumTable.h"
#include "blockmodel/detail/HABMKinds.h"

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/split.hpp>
#include <boost/lexical_cast.hpp>

#include <string_view>
#include <utility>

using I = HABMNocInterface;

namespace {

constexpr habm_detail::EnumTable<I::NocMode, I::MODE_UNKNOWN> kModes{
    habm_detail::Fold::LOWER,
    {{{I::MODE_NMU, "nmu"}, {I::MODE_NSU, "nsu"}, {I::MODE_VNMU, "vnmu"}, {I::MODE_VNSU, "vnsu"}}}};
static_assert(kModes.complete(), "one text per NoC mode");

constexpr habm_detail::EnumTable<I::NocProtocol, I::PROTOCOL_UNKNOWN> kProtocols{
    habm_detail::Fold::LOWER, {{{I::PROTOCOL_AXIMM, "aximm"}, {I::PROTOCOL_AXIS, "axis"}}}};
static_assert(kProtocols.complete(), "one text per NoC protocol");

constexpr habm_detail::EnumTable<I::NocCategory, I::CATEGORY_UNKNOWN> kCategories{
    habm_detail::Fold::LOWER,
    {{{I::CATEGORY_ENG_ARR, "eng_arr"},
      {I::CATEGORY_CPU_COH, "cpu_coh"},
      {I::CATEGORY_CPU_COH_PHY, "cpu_coh_phy"},
      {I::CATEGORY_PL, "pl"},
      {I::CATEGORY_DDR, "ddr"},
      {I::CATEGORY_FAB_HBM, "fab_hbm"},
      {I::CATEGORY_CPU_NCO, "cpu_nco"},
      {I::CATEGORY_CPU_NCO_PHY, "cpu_nco_phy"},
      {I::CATEGORY_CPU_PCIE, "cpu_pcie"},
      {I::CATEGORY_CPU_MGT, "cpu_mgt"},
      {I::CATEGORY_CPU_RT, "cpu_rt"},
      {I::CATEGORY_CPU_ISO, "cpu_iso"},
      {I::CATEGORY_CPU_MM, "cpu_mm"},
      {I::CATEGORY_NET_HW, "net_hw"},
      {I::CATEGORY_HSIO5, "hsio5"},
      {I::CATEGORY_DAT_PROC, "dat_proc"},
      {I::CATEGORY_DMA_HUB, "dma_hub"},
      {I::CATEGORY_IMG_SIG, "img_sig"},
      {I::CATEGORY_VID_ENC, "vid_enc"},
      {I::CATEGORY_VID_POST, "vid_post"},
      {I::CATEGORY_INI, "ini"}}}};
static_assert(kCategories.complete(), "one text per NoC category");

constexpr habm_detail::EnumTable<I::NocTrafficClass, I::TRAFFIC_UNKNOWN> kTrafficClasses{
    habm_detail::Fold::LOWER,
    {{{I::TRAFFIC_BEST_EFFORT, "best_effort"},
      {I::TRAFFIC_ISOCHRONOUS, "isochronous"},
      {I::TRAFFIC_LOW_LATENCY, "low_latency"}}}};
static_assert(kTrafficClasses.complete(), "one text per NoC traffic class");

// The width assumed for a stream destination id when DST_ID_WIDTH does not say.
constexpr unsigned int kDefaultTdestWidth = 4;

std::vector<std::string> splitTokens(std::string const& text, char const* separators) {
  std::vector<std::string> tokens;
  boost::algorithm::split(tokens, text, boost::algorithm::is_any_of(separators),
                          boost::algorithm::token_compress_on);
  return tokens;
}

// A connection can name this interface only through its last path level, which is looked up by exact
// name: a cheap test of that level spares resolving every connection of the block.
bool lastLevelIs(std::string const& path, std::string const& name) {
  std::size_t const cut = path.rfind(HABMPath::SEPARATOR());
  return std::string_view(path).substr(cut == std::string::npos ? 0 : cut + 1) == name;
}

}  // namespace

HABMNocInterface::HABMNocInterface(HABMBlock* parent, std::string name)
    : HCWWaiverProxyElem(1), parent_(parent), name_(std::move(name)) {}

HABMNocInterface::~HABMNocInterface() {
  leaveObjectCaches();
}

// Names of parameters and properties.

#define HABM_NOC_INTERFACE_NAME(NAME)           \
  std::string const& HABMNocInterface::NAME() { \
    static std::string const value = #NAME;     \
    return value;                               \
  }
HABM_NOC_INTERFACE_NAME(ADDR_WIDTH)
HABM_NOC_INTERFACE_NAME(APERTURES)
HABM_NOC_INTERFACE_NAME(DATA_WIDTH)
HABM_NOC_INTERFACE_NAME(DST_ID_WIDTH)
HABM_NOC_INTERFACE_NAME(LOCATION)
HABM_NOC_INTERFACE_NAME(NOC_FABRIC)
HABM_NOC_INTERFACE_NAME(READ_TRAFFIC_CLASS)
HABM_NOC_INTERFACE_NAME(SIDEBAND_PINS)
HABM_NOC_INTERFACE_NAME(TDEST_ID)
HABM_NOC_INTERFACE_NAME(WRITE_TRAFFIC_CLASS)
#undef HABM_NOC_INTERFACE_NAME

bool HABMNocInterface::isReadonlyParameter(std::string const& name) {
  return name == ADDR_WIDTH() || name == DATA_WIDTH() || name == DST_ID_WIDTH() || name == NOC_FABRIC() ||
         name == SIDEBAND_PINS();
}

// Vocabularies.

HABMNocInterface::NocMode HABMNocInterface::encodeNocMode(std::string text) {
  return kModes.encode(text);
}
std::string HABMNocInterface::decodeNocMode(NocMode const& mode) {
  return kModes.decode(mode);
}
HABMNocInterface::NocProtocol HABMNocInterface::encodeNocProtocol(std::string text) {
  return kProtocols.encode(text);
}
std::string HABMNocInterface::decodeNocProtocol(NocProtocol const& protocol) {
  return kProtocols.decode(protocol);
}
HABMNocInterface::NocCategory HABMNocInterface::encodeNocCategory(std::string text) {
  return kCategories.encode(text);
}
std::string HABMNocInterface::decodeNocCategory(NocCategory const& category) {
  return kCategories.decode(category);
}
HABMNocInterface::NocTrafficClass HABMNocInterface::encodeNocTrafficClass(std::string text) {
  return kTrafficClasses.encode(text);
}
std::string HABMNocInterface::decodeNocTrafficClass(NocTrafficClass const& trafficClass) {
  return kTrafficClasses.decode(trafficClass);
}

HABMNocInterface::LocationRange HABMNocInterface::encodeLocationRange(std::string const& text) {
  std::vector<std::string> const tokens = splitTokens(text, ":");
  if (tokens.size() == 1) {
    return {tokens[0], tokens[0]};
  }
  return tokens.size() == 2 ? LocationRange(tokens[0], tokens[1]) : LocationRange();
}

std::string HABMNocInterface::decodeLocationRange(LocationRange const& range) {
  if (range.first.empty() || range.second.empty()) {
    return std::string();
  }
  return range.first == range.second ? range.first : range.first + ":" + range.second;
}

HABMNocInterface::TDestIdRange HABMNocInterface::encodeDestinationIdRange(std::string const& text) {
  std::vector<std::string> const tokens = splitTokens(text, ": ");
  if (tokens.size() == 1) {
    return {HABMAddrValue(tokens[0]), HABMAddrValue(tokens[0])};
  }
  if (tokens.size() == 2) {
    return {HABMAddrValue(tokens[0]), HABMAddrValue(tokens[1])};
  }
  HABMAddrValue const invalid{std::string()};
  return {invalid, invalid};
}

std::string HABMNocInterface::decodeDestinationIdRange(TDestIdRange const& range) {
  if (!range.first.isValid() || !range.second.isValid() || range.second < range.first) {
    return std::string();
  }
  std::string const first = range.first.getHexStringValue(0);
  return range.first == range.second ? first : first + ":" + range.second.getHexStringValue(0);
}

bool HABMNocInterface::isAddressable(NocProtocol const& protocol) {
  return protocol == PROTOCOL_AXIMM;
}

// Identity and values.

std::string HABMNocInterface::getPath() const {
  return HABMPath::terminate(parent_->getInstancePath()) + name_;
}

void HABMNocInterface::setNocMode(NocMode const& mode) {
  if (mode == nocMode_) {
    return;
  }
  nocMode_ = mode;
  // The mode is stored first, so a virtual interface refuses to clear its location: it keeps the old one.
  if (isVirtual()) {
    setLocation(std::string());
  }
}

HABMMemoryMap* HABMNocInterface::getMemoryMap() const {
  return parent_ == nullptr ? nullptr : parent_->findMemoryMap(memoryMapRef_, true);
}

bool HABMNocInterface::setLocation(std::string const& location, std::string& error) {
  error.clear();
  if (isVirtual()) {
    error = "LOCATION can only be set on NMU or NSU interfaces.";
    return false;
  }
  if (location.empty()) {
    location_.clear();
    return true;
  }
  std::string const decoded = decodeLocationRange(encodeLocationRange(location));
  if (decoded.empty()) {
    error = "LOCATION format is invalid.";
    return false;
  }
  location_ = decoded;
  return true;
}

bool HABMNocInterface::setLocation(std::string const& location) {
  std::string error;
  return setLocation(location, error);
}

bool HABMNocInterface::setTdestId(std::string const& id, std::string& error) {
  error.clear();
  bool const takesId = nocMode_ == MODE_NSU || (nocMode_ == MODE_VNSU && isIniCategory());
  if (!takesId || nocProtocol_ != PROTOCOL_AXIS) {
    error = "TDEST_ID can be set on AXIS NSU (or) VNSU (INI) only.";
    return false;
  }
  if (id.empty()) {
    tdestId_.clear();
    return true;
  }
  TDestIdRange const range = encodeDestinationIdRange(id);
  std::string const decoded = decodeDestinationIdRange(range);
  if (decoded.empty()) {
    error = "TDEST_ID format is invalid.";
    return false;
  }
  unsigned int width = kDefaultTdestWidth;
  std::string const widthText = getTdestWidth();
  if (widthText.empty()) {
    error = "TDEST_WIDTH parameter not found.";
  } else {
    try {
      width = boost::lexical_cast<unsigned int>(widthText);
    } catch (boost::bad_lexical_cast const&) {
      width = kDefaultTdestWidth;  // an unreadable width counts as the default, silently
    }
  }
  if (width < range.second.getRequiredBits()) {
    error = "TDEST_ID exceeds maximum available bits.";
    return false;
  }
  tdestId_ = decoded;
  return error.empty();
}

bool HABMNocInterface::setTdestId(std::string const& id) {
  std::string error;
  return setTdestId(id, error);
}

std::string HABMNocInterface::getTdestWidth() const {
  HABMParameter const* width = getParameter(DST_ID_WIDTH());
  return width == nullptr ? std::string() : width->getValue();
}

void HABMNocInterface::setTdestWidth(std::string const& width) {
  if (width.empty()) {
    removeParameter(DST_ID_WIDTH());
  } else {
    setParameter(DST_ID_WIDTH(), width, true);
  }
}

HABMNocInterface::NocTrafficClass HABMNocInterface::getReadTrafficClass() const {
  HABMParameter const* parameter = getParameter(READ_TRAFFIC_CLASS());
  return parameter == nullptr ? TRAFFIC_UNKNOWN : encodeNocTrafficClass(parameter->getValue());
}

HABMNocInterface::NocTrafficClass HABMNocInterface::getWriteTrafficClass() const {
  HABMParameter const* parameter = getParameter(WRITE_TRAFFIC_CLASS());
  return parameter == nullptr ? TRAFFIC_UNKNOWN : encodeNocTrafficClass(parameter->getValue());
}

bool HABMNocInterface::setReadTrafficClass(NocTrafficClass const& trafficClass) {
  return setTrafficClass(READ_TRAFFIC_CLASS(), trafficClass);
}

bool HABMNocInterface::setWriteTrafficClass(NocTrafficClass const& trafficClass) {
  return setTrafficClass(WRITE_TRAFFIC_CLASS(), trafficClass);
}

// Only an NMU sets the quality of the traffic it sends.
bool HABMNocInterface::setTrafficClass(std::string const& name, NocTrafficClass trafficClass) {
  if (nocMode_ != MODE_NMU) {
    return false;
  }
  setParameter(name, decodeNocTrafficClass(trafficClass), true);
  return true;
}

// Predicates.

bool HABMNocInterface::isSource() const {
  return nocMode_ == MODE_NMU || nocMode_ == MODE_VNMU;
}
bool HABMNocInterface::isTarget() const {
  return nocMode_ == MODE_NSU || nocMode_ == MODE_VNSU;
}
bool HABMNocInterface::isVirtual() const {
  return nocMode_ == MODE_VNMU || nocMode_ == MODE_VNSU;
}
bool HABMNocInterface::isVisible() const {
  return parent_->isVisible();
}
bool HABMNocInterface::isRswInterface() const {
  return parent_ != nullptr && parent_->isBlockRsw();
}
HABMBlock const* HABMNocInterface::getRswAncestor() const {
  return parent_ == nullptr ? nullptr : parent_->getRswAncestor();
}

// Connections.

void HABMNocInterface::getConnections(std::vector<HABMNocConnection*>& sources,
                                      std::vector<HABMNocConnection*>& targets) const {
  sources.clear();
  targets.clear();
  // A NoC link may be drawn in any block above the interface, unlike a bus link.
  for (HABMBlock const* block = parent_; block != nullptr; block = block->getParent()) {
    for (HABMNocConnection* connection : block->getNocConnections(false)) {
      if (lastLevelIs(connection->getSourcePath(false), name_) &&
          connection->getSourceNocInterface() == this) {
        targets.push_back(connection);
      }
      if (lastLevelIs(connection->getTargetPath(false), name_) &&
          connection->getTargetNocInterface() == this) {
        sources.push_back(connection);
      }
    }
  }
}

std::vector<HABMNocConnection*> HABMNocInterface::getSourceConnections() const {
  std::vector<HABMNocConnection*> sources;
  std::vector<HABMNocConnection*> targets;
  getConnections(sources, targets);
  return sources;
}

std::vector<HABMNocConnection*> HABMNocInterface::getTargetConnections() const {
  std::vector<HABMNocConnection*> sources;
  std::vector<HABMNocConnection*> targets;
  getConnections(sources, targets);
  return targets;
}

std::vector<HABMNocInterface*> HABMNocInterface::getSourceInterfaces() const {
  std::vector<HABMNocInterface*> out;
  for (HABMNocConnection const* connection : getSourceConnections()) {
    if (HABMNocInterface* far = connection->getSourceNocInterface()) {
      out.push_back(far);
    }
  }
  return out;
}

std::vector<HABMNocInterface*> HABMNocInterface::getTargetInterfaces() const {
  std::vector<HABMNocInterface*> out;
  for (HABMNocConnection const* connection : getTargetConnections()) {
    if (HABMNocInterface* far = connection->getTargetNocInterface()) {
      out.push_back(far);
    }
  }
  return out;
}

void HABMNocInterface::clone(HABMNocInterface const& source) {
  if (&source == this) {
    return;
  }
  name_ = source.name_;
  nocMode_ = source.nocMode_;
  nocProtocol_ = source.nocProtocol_;
  nocCategory_ = source.nocCategory_;
  memoryMapRef_ = source.memoryMapRef_;
  apertures_ = source.apertures_;
  location_ = source.location_;
  destId_ = source.destId_;
  tdestId_ = source.tdestId_;
  editable_ = source.editable_;
  cloneParameters(source);
}

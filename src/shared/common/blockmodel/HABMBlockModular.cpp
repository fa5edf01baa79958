// HABMBlockModular.cpp: the modular flow: whether a top block fits the stub it is to replace, cutting a
// sub-block out of its tree as a top block of its own, and putting one back.
#include "blockmodel/HABMAddrApertureUtils.h"
#include "blockmodel/HABMAddrBlock.h"
#include "blockmodel/HABMAddrSegment.h"
#include "blockmodel/HABMAddrSpace.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMGeneric.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMInterfaceConnection.h"
#include "blockmodel/HABMMemoryMap.h"
#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/HABMNocInterface.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMUtils.h"
#include "blockmodel/detail/HABMKinds.h"
#include "blockmodel/detail/HABMTrace.h"
#include "msg/ComMsgMgr.h"
#include "param/HPAParamMgr.h"

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/format.hpp>

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

using habm_detail::TRACE_BLOCK;
using habm_detail::TRACE_MNOC;
using Reasons = std::vector<std::string>;
using Links = std::vector<HABMNocConnection*>;
using ApertureSet = std::set<HABMAddrAperture>;
using NocConnectionKind = habm_detail::Kind<habm_detail::ChildKind::NOC_CONNECTION>;

namespace {

constexpr unsigned int kRefused = 0x10000000U;

template <class... Args>
std::string sentence(char const* text, Args const&... args) {
  boost::format f(text);
  (void)(f % ... % args);
  return f.str();
}

bool paramIsTrue(char const* name) {
  return HPAParamMgr::getParamMgr().getValueIfExistAsBool(name, false);
}

// What the catalogue message of a refusal says after its fixed words.
std::string reasonsText(Reasons const& reasons) {
  if (reasons.size() == 1) {
    return " " + reasons.front();
  }
  std::string text = " Reason(s):";
  for (std::string const& reason : reasons) {
    text += "\n  * " + reason;
  }
  return text;
}

// Library cores whose boundaries are known to drift between releases: merging one of them back must not
// trip over its ports and interfaces.
bool isSoftenedCore(HABMBlock const& source) {
  static std::set<std::string> const cores = {"link64_core", "mem4_core",  "eth_pcs_core", "cam_rx_core",
                                              "hs_mac_core", "qsram_core", "eth_mac_core", "pkt_proc_core"};
  std::string vendor;
  std::string library;
  std::string name;
  std::string version;
  if (!HABMUtils::splitVLNV(source.getModuleVlnv(), vendor, library, name, version)) {
    return false;
  }
  boost::algorithm::to_lower(vendor);
  boost::algorithm::to_lower(name);
  return (vendor == "orvane" || vendor == "tessel") && cores.count(name) != 0;
}

// The source's objects of one kind by name, and which of them a target object has claimed: what is left
// unclaimed exists on the source only. The first object of a name is the one found, as by the block's own
// look-up.
template <class T>
class Pairing {
 public:
  template <class Name>
  Pairing(std::vector<T*> objects, Name const& name)
      : objects_(std::move(objects)), claimed_(objects_.size()) {
    byName_.reserve(objects_.size());
    for (std::size_t i = 0; i < objects_.size(); ++i) {
      byName_.emplace(name(*objects_[i]), i);
    }
  }

  /// The source's first object of that name, now claimed; null when there is none.
  T const* claim(std::string const& name) {
    auto const found = byName_.find(name);
    if (found == byName_.end()) {
      return nullptr;
    }
    claimed_[found->second] = true;
    return objects_[found->second];
  }

  /// The objects nobody claimed, in the source's order.
  std::vector<T const*> unclaimed() const {
    std::vector<T const*> out;
    for (std::size_t i = 0; i < objects_.size(); ++i) {
      if (!claimed_[i]) {
        out.push_back(objects_[i]);
      }
    }
    return out;
  }

 private:
  std::vector<T*> objects_;
  std::unordered_map<std::string, std::size_t> byName_;
  std::vector<bool> claimed_;
};

// One comparison of a source module with a target instance; every sentence names both.
class BoundaryCheck {
 public:
  BoundaryCheck(HABMBlock const& source, HABMBlock const& target, bool mergeBoundary, Reasons& reasons)
      : source_(source),
        target_(target),
        sourceName_(source.getModuleName()),
        targetPath_(target.getInstancePath()),
        mergeBoundary_(mergeBoundary),
        reasons_(reasons) {}

  void run() {
    bool const compareGeneral = !paramIsTrue("project.skipBlockModelBoundaryCheck");
    bool comparePortsAndInterfaces = true;
    if (paramIsTrue("blockmodel.softenCanMergeChecks") && source_.isIP() && isSoftenedCore(source_)) {
      comparePortsAndInterfaces = false;
      HABM_TRACE(TRACE_MNOC,
                 "Skipped PORT and INTERFACE checks from source module '%s' into target instance '%s'.\n",
                 sourceName_.c_str(), targetPath_.c_str());
    }
    if (compareGeneral) {
      compareGenerics();
    }
    if (comparePortsAndInterfaces) {
      comparePorts();
      compareInterfaces(compareGeneral);
    }
    if (compareGeneral) {
      compareMemoryMaps();
      compareAddrSpaces();
    }
    compareNocInterfaces();
  }

 private:
  // A sentence whose arguments are a name, the source module and the target instance.
  void add(char const* text, std::string const& name) { add(text, name, sourceName_, targetPath_); }
  // A sentence whose arguments are an owner and a child's name, the source module and the target instance.
  void add(char const* text, std::string const& owner, std::string const& name) {
    add(text, owner, name, sourceName_, targetPath_);
  }
  template <class... Args>
  void add(char const* text, Args const&... args) {
    reasons_.push_back(sentence(text, args...));
  }
  // A "(source)'x' != 'y'(target)" sentence about the named object.
  template <class Value>
  void addMismatch(char const* text, std::string const& name, Value const& source, Value const& target) {
    add(text, name, sourceName_, targetPath_, source, target);
  }

  // Walks the target's objects in order, pairs each with the source's object of its name and compares
  // them, or reports it missing; then, unless the source's boundary is to replace the target's, reports
  // what only the source has.
  template <class T, class Name, class Compare>
  void compareKind(std::vector<T*> sources, std::vector<T*> const& targets, Name const& name,
                   char const* missing, char const* onlySource, Compare const& compare) {
    Pairing<T> pairing(std::move(sources), name);
    for (T const* target : targets) {
      if (T const* source = pairing.claim(name(*target))) {
        compare(*source, *target);
      } else {
        add(missing, name(*target));
      }
    }
    if (!mergeBoundary_) {
      for (T const* source : pairing.unclaimed()) {
        add(onlySource, name(*source));
      }
    }
  }

  void compareGenerics() {
    compareKind(
        source_.getGenerics(), target_.getGenerics(),
        [](HABMGeneric const& g) -> auto const& { return g.getName(); },
        "Generic '%s' missing from source module '%s' but exists on target instance '%s'.",
        "Generic '%s' exists on source module '%s' but missing from target instance '%s'.",
        [&](HABMGeneric const& source, HABMGeneric const& target) {
          if (source.getValue() != target.getValue()) {
            addMismatch(
                "Generic '%s' has VALUE mismatch between source module '%s' and target instance '%s': "
                "(source)'%s' != '%s'(target)",
                target.getName(), source.getValue(), target.getValue());
          }
        });
  }

  void comparePorts() {
    compareKind(
        source_.getPorts(), target_.getPorts(),
        [](HABMPort const& p) -> auto const& { return p.getPortName(); },
        "Port '%s' missing from source module '%s' but exists on target instance '%s'.",
        "Port '%s' exists on source module '%s' but missing from target instance '%s'.",
        [&](HABMPort const& source, HABMPort const& target) {
          std::string const& name = target.getPortName();
          if (source.getPortDirection() != target.getPortDirection()) {
            addMismatch(
                "Port '%s' has DIRECTION mismatch between source module '%s' and target instance '%s': "
                "(source)'%s' != '%s'(target)",
                name, HABMPort::decodePortDirection(source.getPortDirection()),
                HABMPort::decodePortDirection(target.getPortDirection()));
          } else if (source.getPortLeft() != target.getPortLeft()) {
            addMismatch(
                "Port '%s' has LEFT mismatch between source module '%s' and target instance '%s': "
                "(source)'%d' != '%d'(target)",
                name, source.getPortLeft(), target.getPortLeft());
          } else if (source.getPortRight() != target.getPortRight()) {
            addMismatch(
                "Port '%s' has RIGHT mismatch between source module '%s' and target instance '%s': "
                "(source)'%d' != '%d'(target)",
                name, source.getPortRight(), target.getPortRight());
          }
        });
  }

  // The tail of an APERTURES sentence, empty when the apertures agree. When the source's interface takes
  // requests, the target must serve what the source's apertures ask for; otherwise the other way round.
  std::string apertureMismatch(ApertureSet const& source, ApertureSet const& target, bool requests) const {
    ApertureSet offenders;
    if (requests) {
      HABMAddrApertureUtils::checkConeRule(source, target, offenders);
    } else {
      HABMAddrApertureUtils::checkConeRule(target, source, offenders);
    }
    std::string text;
    for (HABMAddrAperture const& aperture : offenders) {
      text += (text.empty() ? "" : " ") + aperture.getBaseAbrvString(0);
    }
    if (text.empty()) {
      return text;
    }
    return requests ? sentence(" Target instance '%s' must service the following aperture requests: '%s'.",
                               targetPath_, text)
                    : sentence(" Source module '%s' must service the following aperture requests: '%s'.",
                               sourceName_, text);
  }

  // Whether a bus interface of the source is the target of a connection drawn in the source or in the
  // block above it, where a bus on an interface can be drawn; found once for all interfaces.
  bool takesRequests(HABMInterface const& iface) {
    if (!requestedInterfaces_) {
      requestedInterfaces_.emplace();
      for (HABMBlock const* holder : {&source_, source_.getParent()}) {
        if (holder == nullptr) {
          continue;
        }
        for (HABMInterfaceConnection const* connection : holder->getInterfaceConnections()) {
          HABMInterface const* end = connection->getTargetInterface();
          if (end != nullptr && &end->getParent() == &source_) {
            requestedInterfaces_->insert(end);
          }
        }
      }
    }
    return requestedInterfaces_->count(&iface) != 0;
  }

  // As takesRequests, for NoC interfaces, whose links may be drawn in any block above.
  bool takesRequests(HABMNocInterface const& iface) {
    if (!requestedNocInterfaces_) {
      requestedNocInterfaces_.emplace();
      for (HABMBlock const* holder = &source_; holder != nullptr; holder = holder->getParent()) {
        for (HABMNocConnection const* connection : holder->getNocConnections(false)) {
          HABMNocInterface const* end = connection->getTargetNocInterface();
          if (end != nullptr && end->getParent() == &source_) {
            requestedNocInterfaces_->insert(end);
          }
        }
      }
    }
    return requestedNocInterfaces_->count(&iface) != 0;
  }

  void compareInterfaces(bool compareGeneral) {
    compareKind(
        source_.getInterfaces(), target_.getInterfaces(),
        [](HABMInterface const& i) -> auto const& { return i.getInterfaceName(); },
        "Interface '%s' missing from source module '%s' but exists on target instance '%s'.",
        "Interface '%s' exists on source module '%s' but missing from target instance '%s'.",
        [&](HABMInterface const& source, HABMInterface const& target) {
          compareInterface(source, target, compareGeneral);
        });
  }

  void compareInterface(HABMInterface const& source, HABMInterface const& target, bool compareGeneral) {
    std::string const& name = target.getInterfaceName();
    if (source.getInterfaceVlnv() != target.getInterfaceVlnv()) {
      addMismatch(
          "Interface '%s' has VLNV mismatch between source module '%s' and target instance '%s': "
          "(source)'%s' != '%s'(target)",
          name, source.getInterfaceVlnv(), target.getInterfaceVlnv());
      return;
    }
    if (source.getInterfaceMode() != target.getInterfaceMode()) {
      addMismatch(
          "Interface '%s' has MODE mismatch between source module '%s' and target instance '%s': "
          "(source)'%s' != '%s'(target)",
          name, HABMInterface::decodeInterfaceMode(source.getInterfaceMode()),
          HABMInterface::decodeInterfaceMode(target.getInterfaceMode()));
      return;
    }
    if (!compareGeneral) {
      return;
    }
    // An empty reference on the target names nothing to agree with.
    if (!target.getMemoryMapRef().empty() && source.getMemoryMapRef() != target.getMemoryMapRef()) {
      addMismatch(
          "Interface '%s' has MEMORY MAP mismatch between source module '%s' and target instance '%s': "
          "(source)'%s' != '%s'(target)",
          name, source.getMemoryMapRef(), target.getMemoryMapRef());
      return;
    }
    if (!target.getAddrSpaceRef().empty() && source.getAddrSpaceRef() != target.getAddrSpaceRef()) {
      addMismatch(
          "Interface '%s' has ADDRESS SPACE mismatch between source module '%s' and target instance '%s': "
          "(source)'%s' != '%s'(target)",
          name, source.getAddrSpaceRef(), target.getAddrSpaceRef());
      return;
    }
    std::string const apertures =
        apertureMismatch(source.getApertures(true), target.getApertures(true), takesRequests(source));
    if (!apertures.empty()) {
      reasons_.push_back(
          sentence(
              "Interface '%s' has APERTURES mismatch between source module '%s' and target instance '%s'.",
              name, sourceName_, targetPath_) +
          apertures);
    }
    for (HABMParameter const* parameter : target.getParameters()) {
      HABMParameter const* other = source.getParameter(parameter->getName());
      if (other == nullptr) {
        add("Interface parameter '%s/%s' missing from source module '%s' but exists on target instance '%s'.",
            name, parameter->getName());
      } else if (other->getValue() != parameter->getValue()) {
        add("Interface parameter '%s/%s' has VALUE mismatch between source module '%s' and target instance "
            "'%s'.",
            name, parameter->getName());
      }
    }
  }

  void compareMemoryMaps() {
    compareKind(
        source_.getMemoryMaps(), target_.getMemoryMaps(),
        [](HABMMemoryMap const& m) -> auto const& { return m.getName(); },
        "Memory map '%s' is missing from source module '%s' but exists on target instance '%s'.",
        "Memory map '%s' exists on source module '%s' but missing from target instance '%s'.",
        [&](HABMMemoryMap const& source, HABMMemoryMap const& target) {
          std::string const& map = target.getName();
          if (source.getRange() != target.getRange()) {
            add("Memory map '%s' has RANGE mismatch between source module '%s' and target instance '%s'.",
                map);
            return;
          }
          for (HABMAddrBlock const* block : target.getAddrBlocks()) {
            HABMAddrBlock const* other = source.getAddrBlock(block->getName());
            if (other == nullptr) {
              add("Address block '%s/%s' is missing from source module '%s' but exists on target instance "
                  "'%s'.",
                  map, block->getName());
            } else if (other->getAperture() != block->getAperture()) {
              add("Address block '%s/%s' has APERTURE mismatch between source module '%s' and target "
                  "instance '%s'.",
                  map, block->getName());
            } else if (other->getMemoryType() != block->getMemoryType()) {
              add("Address block '%s/%s' has MEMORYTYPE mismatch between source module '%s' and target "
                  "instance '%s'.",
                  map, block->getName());
            }
          }
        });
  }

  void compareAddrSpaces() {
    compareKind(
        source_.getAddrSpaces(), target_.getAddrSpaces(),
        [](HABMAddrSpace const& s) -> auto const& { return s.getName(); },
        "Address space '%s' missing from source module '%s' but exists on target instance '%s'.",
        "Address space '%s' exists on source module '%s' but missing from target instance '%s'.",
        [&](HABMAddrSpace const& source, HABMAddrSpace const& target) {
          std::string const& space = target.getName();
          if (source.getRange() != target.getRange()) {
            add("Address space '%s' has RANGE mismatch between source module '%s' and target instance '%s'.",
                space);
            return;
          }
          for (HABMAddrSegment const* segment : target.getAddrSegments()) {
            HABMAddrSegment const* other = source.getAddrSegment(segment->getName());
            if (other == nullptr) {
              add("Address segment '%s/%s' missing from source module '%s' but exists on target instance "
                  "'%s'.",
                  space, segment->getName());
            } else if (other->getAperture() != segment->getAperture()) {
              add("Address segment '%s/%s' has APERTURE mismatch between source module '%s' and target "
                  "instance '%s'.",
                  space, segment->getName());
            }
          }
        });
  }

  void compareNocInterfaces() {
    using I = HABMNocInterface;
    compareKind(
        source_.getNocInterfaces(false), target_.getNocInterfaces(false),
        [](I const& i) -> auto const& { return i.getName(); },
        "NOC interface '%s' missing from source module '%s' but exists on target instance '%s'.",
        "NOC interface '%s' exists on source module '%s' but missing from target instance '%s'.",
        [&](I const& source, I const& target) {
          std::string const& name = target.getName();
          if (source.getNocProtocol() != target.getNocProtocol()) {
            addMismatch(
                "NOC interface '%s' has TYPE mismatch between source module '%s' and target instance '%s': "
                "(source)'%s' != '%s'(target)",
                name, I::decodeNocProtocol(source.getNocProtocol()),
                I::decodeNocProtocol(target.getNocProtocol()));
            return;
          }
          if (source.getNocMode() != target.getNocMode()) {
            addMismatch(
                "NOC interface '%s' has MODE mismatch between source module '%s' and target instance '%s': "
                "(source)'%s' != '%s'(target)",
                name, I::decodeNocMode(source.getNocMode()), I::decodeNocMode(target.getNocMode()));
            return;
          }
          if (source.getNocCategory() != target.getNocCategory()) {
            addMismatch(
                "NOC interface '%s' has CATEGORY mismatch between source module '%s' and target instance "
                "'%s': (source)'%s' != '%s'(target)",
                name, I::decodeNocCategory(source.getNocCategory()),
                I::decodeNocCategory(target.getNocCategory()));
            return;
          }
          std::string const apertures =
              apertureMismatch(source.getApertures(), target.getApertures(), takesRequests(source));
          if (!apertures.empty()) {
            reasons_.push_back(
                sentence("NOC interface '%s' has APERTURES mismatch between source module '%s' and target "
                         "instance '%s'.",
                         name, sourceName_, targetPath_) +
                apertures);
          }
          for (HABMParameter const* parameter : target.getParameters()) {
            HABMParameter const* other = source.getParameter(parameter->getName());
            if (other == nullptr) {
              add("NOC interface parameter '%s/%s' missing from source module '%s' but exists on target "
                  "instance '%s'.",
                  name, parameter->getName());
            } else if (other->getValue() != parameter->getValue()) {
              add("NOC interface parameter '%s/%s' has VALUE mismatch between source module '%s' and target "
                  "instance '%s': (source)'%s' != '%s'(target)",
                  name, parameter->getName(), sourceName_, targetPath_, other->getValue(),
                  parameter->getValue());
            }
          }
        });
  }

  HABMBlock const& source_;
  HABMBlock const& target_;
  std::string const& sourceName_;
  std::string const targetPath_;
  bool const mergeBoundary_;
  Reasons& reasons_;
  std::optional<std::unordered_set<HABMInterface const*>> requestedInterfaces_;
  std::optional<std::unordered_set<HABMNocInterface const*>> requestedNocInterfaces_;
};

// The mode of the virtual interface at which a crossing link is cut: a VNSU when the link starts at an NSU
// or VNSU; otherwise a VNMU, except for an entering link whose end inside is not an NMU or VNMU.
HABMNocInterface::NocMode virtualMode(HABMNocInterface const& source, HABMNocInterface const& target,
                                      bool entering) {
  if (source.isTarget()) {
    return HABMNocInterface::MODE_VNSU;
  }
  if (entering && !target.isSource()) {
    return HABMNocInterface::MODE_VNSU;
  }
  return HABMNocInterface::MODE_VNMU;
}

// Cuts `link`, which crosses the boundary of `block`, in two at a new virtual interface of the block: the
// outer half keeps the link, the inner half is drawn in the block. A half that cannot be drawn leaves the
// link as it was, so that it still counts as crossing.
void terminateVirtually(HABMBlock& block, HABMNocConnection& link, bool entering) {
  HABMNocInterface const* source = link.getSourceNocInterface();
  HABMNocInterface const* target = link.getTargetNocInterface();
  if (source == nullptr || target == nullptr) {
    return;
  }
  HABMNocInterface* end = block.createNocInterface();
  if (end == nullptr) {
    return;
  }
  end->setNocMode(virtualMode(*source, *target, entering));
  end->setNocProtocol(target->getNocProtocol());
  end->setNocCategory(target->getNocCategory());
  end->setApertures(target->getApertures());
  std::string const endPath = end->getPath();
  std::string const oldSource = link.getSourcePath(true);
  std::string const oldTarget = link.getTargetPath(true);
  std::string error;
  HABMNocConnection* inner = nullptr;
  if (entering) {
    // The outer half moves first, so that the old target is free to take a link from the new interface.
    link.setTargetPath(endPath);
    inner = block.createNocConnection(endPath, oldTarget, error, false);
  } else {
    inner = block.createNocConnection(oldSource, endPath, error, false);
    if (inner != nullptr) {
      link.setSourcePath(endPath);
    }
  }
  if (inner == nullptr) {
    if (entering) {
      link.setTargetPath(oldTarget);
    }
    block.removeNocInterface(end->getName());
    return;
  }
  inner->setEditable(link.getEditable());
  if (inner->isPrimary()) {
    inner->cloneProperties(link);
    link.resetProperties();
  }
}

}  // namespace

bool HABMBlock::canMergeBlock(HABMBlock const& source, HABMBlock const& target,
                              std::vector<std::string>& reasons, bool const& mergeBoundary) {
  reasons.clear();
  BoundaryCheck(source, target, mergeBoundary, reasons).run();
  return reasons.empty();
}

bool HABMBlock::canSplitBlock(HABMBlock const& block, std::vector<std::string>& reasons) {
  reasons.clear();
  Links others;
  Links internal;
  Links outgoing;
  Links incoming;
  if (!HABMNocConnection::groupNocConnections(block, others, internal, outgoing, incoming)) {
    return false;
  }
  std::string const path = block.getInstancePath();
  for (HABMNocConnection const* link : outgoing) {
    reasons.push_back(
        sentence("Sub-block instance '%s' has an exported NOC connection from source NOC interface '%s' to "
                 "target NOC interface '%s'. A VNMU or VNSU interface is required to split this NOC "
                 "connection.",
                 path, link->getSourcePath(true), link->getTargetPath(true)));
  }
  for (HABMNocConnection const* link : incoming) {
    reasons.push_back(
        sentence("Sub-block instance '%s' has an imported NOC connection from source NOC interface '%s' to "
                 "target NOC interface '%s'. A VNMU or VNSU interface is required to split this NOC "
                 "connection.",
                 path, link->getSourcePath(true), link->getTargetPath(true)));
  }
  return reasons.empty();
}

std::unique_ptr<HABMBlock> HABMBlock::splitTopBlock(HABMBlock& top, std::string const& instancePath,
                                                    bool const& insertVirtual) {
  // The closing quote of the module is missing in the tool's own trace, and stays so.
  HABM_TRACE(TRACE_BLOCK, "Splitting sub-block instance '%s' from top-block module '%s.\n",
             instancePath.c_str(), top.moduleName_.c_str());
  HABMBlock* sub = top.findSubBlock(instancePath, true);
  if (sub == nullptr) {
    return nullptr;
  }
  Links others;
  Links internal;
  Links outgoing;
  Links incoming;
  if (!HABMNocConnection::groupNocConnections(*sub, others, internal, outgoing, incoming)) {
    return nullptr;
  }
  if (insertVirtual) {
    for (HABMNocConnection* link : incoming) {
      terminateVirtually(*sub, *link, true);
    }
    for (HABMNocConnection* link : outgoing) {
      terminateVirtually(*sub, *link, false);
    }
  }
  for (HABMNocConnection* link : internal) {
    sub->adoptNocConnection(*link);
  }
  Reasons reasons;
  if (!canSplitBlock(*sub, reasons)) {
    sendMsg::eval(3, __FILE__, __LINE__, "blockmodel", kRefused, "@90-5@%s%s%s",
                  sub->getInstancePath().c_str(), sub->moduleName_.c_str(), reasonsText(reasons).c_str());
    return nullptr;
  }
  std::unique_ptr<HABMBlock> result = cloneTopBlock(*sub);
  sub->setBlockStub(true);
  sub->clearContents();
  top.setValidated(false);
  HABM_TRACE(TRACE_BLOCK, "Split sub-block instance '%s' from top-block module '%s'.\n", instancePath.c_str(),
             top.moduleName_.c_str());
  return result;
}

bool HABMBlock::mergeTopBlock(HABMBlock& top, std::string const& instancePath, HABMBlock const& source,
                              bool const& mergeBoundary) {
  HABM_TRACE(TRACE_BLOCK, "Merging top-block module '%s' into sub-block instance '%s'.\n",
             source.moduleName_.c_str(), instancePath.c_str());
  HABMBlock* sub = top.findSubBlock(instancePath, true);
  if (sub == nullptr) {
    return false;
  }
  // A run-time swapped block keeps the boundary its swappable modules share.
  bool const boundary = mergeBoundary && !sub->isBlockRsw();
  Reasons reasons;
  if (!canMergeBlock(source, *sub, reasons, boundary)) {
    sendMsg::eval(3, __FILE__, __LINE__, "blockmodel", kRefused, "@90-3@%s%s%s", source.moduleName_.c_str(),
                  sub->getInstancePath().c_str(), reasonsText(reasons).c_str());
    return false;
  }
  if (boundary) {
    HABM_TRACE(TRACE_BLOCK,
               "Merging boundary information from top-block module '%s' to sub-block instance '%s'.\n",
               source.moduleName_.c_str(), instancePath.c_str());
    sub->moduleVlnv_ = source.moduleVlnv_;
    sub->cloneBoundary(source);
  }
  sub->cloneContents(source);
  sub->setBlockStub(false);
  top.setValidated(false);
  // The lock of a run-time swapped block belongs to the module swapped in; any other block defers to the
  // blocks above it again.
  if (sub->isBlockRsw()) {
    sub->lockState_ = source.lockState_;
    HABM_TRACE(TRACE_MNOC, "MNOC: Copied lock state '%s' for block '%s'.\n",
               decodeLockState(source.lockState_).c_str(), source.moduleName_.c_str());
  } else {
    HABM_TRACE(TRACE_MNOC, "MNOC: Resetting lock state from '%s' to 'unknown' for block '%s'.\n",
               decodeLockState(sub->lockState_).c_str(), sub->moduleName_.c_str());
    sub->lockState_ = UNKNOWN;
  }
  HABM_TRACE(TRACE_BLOCK, "Merged top-block module '%s' into sub-block instance '%s'.\n",
             source.moduleName_.c_str(), instancePath.c_str());
  return true;
}

void HABMBlock::adoptNocConnection(HABMNocConnection& connection) {
  // The link's holder is reached through the link itself: the tree is ours to change.
  HABMBlock* holder = static_cast<HABMInterfaceConnection&>(connection).parent_;
  for (HABMBlock const* block = holder; block != nullptr; block = block->parent_) {
    if (block == this) {
      return;  // drawn in this block or below it: it goes along already
    }
  }
  HABMNocInterface const* source = connection.getSourceNocInterface();
  HABMNocInterface const* target = connection.getTargetNocInterface();
  if (source == nullptr || target == nullptr) {
    return;
  }
  HABMNocConnection* moved = createNocConnection(std::string(), false);
  if (moved == nullptr) {
    return;
  }
  moved->setSourcePath(source->getPath());
  moved->setTargetPath(target->getPath());
  moved->setEditable(connection.getEditable());
  if (connection.isPrimary()) {
    moved->cloneProperties(connection);
  }
  // The removal must take this very link even when a forced duplicate of its name stands before it: it is
  // filed under a free name first.
  std::string const name = connection.getName();
  auto& links = holder->nocConnections_;
  if (links.get(name) != &connection) {
    connection.setName(links.autoName(NocConnectionKind::TEXTS.autoName, false));
    links.renamed(connection, name);
  }
  links.take(connection.getName());
  HABM_TRACE(NocConnectionKind::TEXTS.removedMask, NocConnectionKind::TEXTS.removed, name.c_str(),
             holder->getInstancePath().c_str());
}

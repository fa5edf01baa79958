// HABMBlockChecker.cpp: the rule sets of the design-rule check and the frame that sends their findings.
#include "blockmodel/HABMBlockChecker.h"

#include "blockmodel/HABMAddrAperture.h"
#include "blockmodel/HABMAddrValue.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMGeneric.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMInterfaceConnection.h"
#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/HABMNocInterface.h"
#include "blockmodel/HABMNocPath.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/detail/HABMNocLinks.h"
#include "blockmodel/detail/HABMTrace.h"
#include "msg/ComMsgMgr.h"
#include "param/HPAParamMgr.h"

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/algorithm/string/join.hpp>
#include <boost/format.hpp>

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace {

using N = HABMNocInterface;
using habm_detail::NocLinks;

// A finding names this file and the rule's stable number in place of a source location, so that a waiver
// or a test can refer to a rule across edits of the file.
constexpr char kRuleFile[] = "HABMBlockChecker";
constexpr char kDomain[] = "blockmodel";
constexpr char kViolationFormat[] = "@90-6@%s%s";
constexpr char kNoticeFormat[] = "@90-10@%s%s";
constexpr unsigned int kViolationMask = 0x20000000U;
constexpr unsigned int kNoticeMask = 0x10000000U;
constexpr unsigned int kLoweredType = 0x8000000U;

// A stream NMU reaches at most this many endpoints.
constexpr std::size_t kMaxStreamFanout = 16;
// Destination ids are a few bits wide, but a file can claim any width: past this many overlapping ids of
// one endpoint the rest are not reported one by one, so a bad file cannot stall the check.
constexpr int kMaxOverlapFindings = 4096;

// Fills a rule's own placeholders. Boost.Format with its errors off: a rule text never throws.
template <class... Args>
std::string ruleText(char const* format, Args const&... args) {
  boost::format f;
  f.exceptions(boost::io::no_error_bits);
  f.parse(format);
  (void)(f % ... % args);
  return f.str();
}

std::string joined(std::vector<std::string> const& items) {
  return boost::algorithm::join(items, ", ");
}

std::string joined(std::set<std::string> const& items) {
  return boost::algorithm::join(items, ", ");
}

// The findings of one rule set on one block: every message names the block's module, and any violation
// makes the set fail.
class Findings {
 public:
  Findings(HABMBlock const& block, std::vector<ComMsgMgrInstance>& messages)
      : module_(block.getModuleName()), messages_(messages) {}

  void violation(int rule, std::string const& text) {
    add(rule, kViolationFormat, kViolationMask, text);
    passed_ = false;
  }
  void notice(int rule, std::string const& text) { add(rule, kNoticeFormat, kNoticeMask, text); }
  // A notice whose type is lowered, for conditions a flow resolves by itself later.
  void lowered(int rule, std::string const& text) {
    notice(rule, text);
    messages_.back().setType(kLoweredType, true);
  }
  bool passed() const { return passed_; }

 private:
  void add(int rule, char const* format, unsigned int mask, std::string const& text) {
    messages_.push_back(ComMsgMgrInstance::createInstance::eval(2, kRuleFile, rule, kDomain, mask, format,
                                                                module_.c_str(), text.c_str()));
  }

  std::string module_;
  std::vector<ComMsgMgrInstance>& messages_;
  bool passed_ = true;
};

bool onOpmNocModule(N const* iface) {
  return iface != nullptr && iface->getParent() != nullptr && iface->getParent()->isOpmNocModule();
}

// Both switches of the structural NxM stream flow; the second is asked only when the first is on.
bool structuralNxMFlow() {
  auto const& params = HPAParamMgr::getParamMgr();
  return params.getValueIfExistAsBool("bd.noc.nxm_streaming_structural_rtl_mux", false) &&
         params.getValueIfExistAsBool("project.enableMNocNxMFlow", false);
}

// Block stubs, RSW blocks.

// The block itself, then its sub-blocks in search order.
std::vector<HABMBlock const*> blockAndSubBlocks(HABMBlock const& block) {
  std::vector<HABMBlock const*> out = {&block};
  for (HABMBlock const* sub : block.findSubBlocks(std::string(), true)) {
    out.push_back(sub);
  }
  return out;
}

// NoC interfaces.

// The virtual ends of a fan list, by mode, ordered by path; ini ends and real ends don't count.
struct VirtualEnds {
  std::set<std::string> vnmu;
  std::set<std::string> vnsu;

  explicit VirtualEnds(std::vector<N*> const& ends) {
    for (N const* end : ends) {
      if (end->isIniCategory()) {
        continue;
      }
      if (end->getNocMode() == N::MODE_VNMU) {
        vnmu.insert(end->getPath());
      } else if (end->getNocMode() == N::MODE_VNSU) {
        vnsu.insert(end->getPath());
      }
    }
  }
  bool mixed() const { return !vnmu.empty() && !vnsu.empty(); }
  std::string mixedList() const { return joined(vnmu) + ", " + joined(vnsu); }
};

void checkApertures(N const& iface, Findings& findings) {
  if (iface.getNocMode() != N::MODE_NSU || iface.getNocCategory() != N::CATEGORY_PL) {
    return;
  }
  for (HABMAddrAperture const& aperture : iface.getApertures()) {
    HABMAddrValue const range = aperture.getRange();
    std::string const text = aperture.getBaseHighString();
    std::string const rangeText = range.getPrettyHexStringValue();
    if (!range.isPow2()) {
      findings.violation(237, ruleText(" NOC interface '%s' has invalid aperture '%s'. Range '%s' must be a "
                                       "power-of-two value.",
                                       iface.getPath(), text, rangeText));
    }
    if (range < HABMAddrValue::CONST_64K()) {
      findings.violation(243, ruleText(" NOC interface '%s' has invalid aperture '%s'. Range '%s' must be "
                                       "greater than or equal to 64K.",
                                       iface.getPath(), text, rangeText));
    }
    if (!aperture.aligned()) {
      findings.violation(
          249,
          ruleText(" NOC interface '%s' has invalid aperture '%s'. Base address '%s' must "
                   "be a multiple of the range '%s'.",
                   iface.getPath(), text, aperture.getBaseAddress().getPrettyHexStringValue(), rangeText));
    }
  }
}

void checkParameterValues(N const& iface, Findings& findings) {
  // Ordered by parameter name, the order of the findings. Reads may be low latency, writes may not.
  static std::map<std::string, std::vector<std::string>> const valid = {
      {N::DATA_WIDTH(), {"32", "64", "128", "256", "512"}},
      {N::READ_TRAFFIC_CLASS(), {"best_effort", "isochronous", "low_latency"}},
      {N::SIDEBAND_PINS(), {"addr", "data", "false", "true"}},
      {N::WRITE_TRAFFIC_CLASS(), {"best_effort", "isochronous"}},
  };
  for (auto const& [name, values] : valid) {
    HABMParameter const* parameter = iface.getParameter(name);
    if (parameter == nullptr) {
      continue;
    }
    std::string const value = boost::algorithm::to_lower_copy(parameter->getValue());
    if (std::find(values.begin(), values.end(), value) == values.end()) {
      // The name's placeholder is a bare "%", as hosts have always had it.
      findings.violation(328,
                         ruleText(" NOC interface '%s' parameter '%' has invalid value '%s'. Valid values "
                                  "are: '%s'.",
                                  iface.getPath(), name, value, boost::algorithm::join(values, "', '")));
    }
  }
}

// Who may fan in and out across hierarchy: one virtual interface per side, and never both kinds at once.
void checkFans(N const& iface, std::vector<N*> const& sources, std::vector<N*> const& targets,
               Findings& findings) {
  if (!iface.isVirtual()) {
    if (iface.isSource()) {
      if (targets.size() < 2) {
        return;
      }
      VirtualEnds const ends(targets);
      if (ends.vnmu.size() >= 2) {
        findings.violation(415, ruleText(" NOC interface '%s' exports multiple VNMU interfaces '%s'. Please "
                                         "export single VNMU interface only.",
                                         iface.getPath(), joined(ends.vnmu)));
      } else if (ends.mixed()) {
        findings.violation(422, ruleText(" NOC interface '%s' exports mixed VNMU and VNSU interfaces '%s'. "
                                         "Please export either VNMU or VNSU exclusively.",
                                         iface.getPath(), ends.mixedList()));
      }
      return;
    }
    if (sources.size() < 2) {
      return;
    }
    VirtualEnds const ends(sources);
    if (ends.vnsu.size() >= 2) {
      findings.violation(439, ruleText(" NOC interface '%s' exports multiple VNSU interfaces '%s'. Please "
                                       "export single VNSU interface only.",
                                       iface.getPath(), joined(ends.vnsu)));
    } else if (ends.mixed()) {
      findings.violation(446, ruleText(" NOC interface '%s' exports mixed VNMU and VNSU interfaces '%s'. "
                                       "Please export either VNMU or VNSU exclusively.",
                                       iface.getPath(), ends.mixedList()));
    }
    return;
  }
  if (iface.isSource()) {
    if (sources.size() > 1) {
      findings.violation(344, ruleText(" Virtual NOC interface '%s' has too many source connections. VNMU "
                                       "interfaces do not support fan-in connectivity. Please connect a "
                                       "single source interface only.",
                                       iface.getPath()));
    }
    if (targets.size() >= 2) {
      VirtualEnds const ends(targets);
      if (ends.vnmu.size() >= 2) {
        findings.violation(355, ruleText(" Virtual NOC interface '%s' exports multiple VNMU interfaces '%s'. "
                                         "Please export single VNMU interface only.",
                                         iface.getPath(), joined(ends.vnmu)));
      } else if (ends.mixed()) {
        findings.violation(362, ruleText(" Virtual NOC interface '%s' exports mixed VNMU and VNSU interfaces "
                                         "'%s'. Please export either VNMU or VNSU exclusively.",
                                         iface.getPath(), ends.mixedList()));
      }
    }
    return;
  }
  if (sources.size() >= 2) {
    VirtualEnds const ends(sources);
    if (ends.vnsu.size() >= 2) {
      findings.violation(378, ruleText(" Virtual NOC interface '%s' exports multiple VNSU interfaces '%s'. "
                                       "Please export single VNSU interface only.",
                                       iface.getPath(), joined(ends.vnsu)));
    } else if (ends.mixed()) {
      findings.violation(385, ruleText(" Virtual NOC interface '%s' exports mixed VNMU and VNSU interfaces "
                                       "'%s'. Please export either VNMU or VNSU exclusively.",
                                       iface.getPath(), ends.mixedList()));
    }
  }
  // Only an editable VNSU is the user's to fan out; a fixed one came that way from its module.
  if (targets.size() >= 2 && iface.getEditable()) {
    findings.violation(393,
                       ruleText(" Virtual NOC interface '%s' has too many target connections. VNSU "
                                "interfaces do not support fan-out connectivity. Please connect a single "
                                "target interface only.",
                                iface.getPath()));
  }
}

// NoC paths.

void checkSinglePaths(std::set<HABMNocPath> const& paths, Findings& findings) {
  std::map<std::pair<N const*, N const*>, int> counts;
  for (HABMNocPath const& path : paths) {
    N const* source = path.getSourceInterface();
    N const* target = path.getTargetInterface();
    if (source != nullptr && target != nullptr) {
      ++counts[{source, target}];
    }
  }
  // Reported by the interfaces' paths, so that the order does not depend on where objects were allocated.
  std::vector<std::pair<std::string, std::string>> repeated;
  for (auto const& [pair, count] : counts) {
    if (count >= 2) {
      repeated.emplace_back(pair.first->getPath(), pair.second->getPath());
    }
  }
  std::sort(repeated.begin(), repeated.end());
  for (auto const& [source, target] : repeated) {
    findings.violation(527,
                       ruleText(" Multiple NOC paths exist from NOC interface '%s' to NOC interface '%s'. "
                                "Please ensure a single NOC path exists.",
                                source, target));
  }
}

void checkRpInstances(HABMBlock const& block, NocLinks const& links, Findings& findings) {
  for (HABMBlock const* rp : block.findSubBlocks(std::string(), true)) {
    if (!rp->isBlockRsw()) {
      continue;
    }
    std::string const rpPath = rp->getInstancePath();
    if (rp->hasGenerics()) {
      findings.notice(544,
                      ruleText(" RP instance '%s' exports one or more configurable generics. RP instance "
                               "configurations are static in RSW flows.",
                               rpPath));
    }
    for (N const* iface : rp->getNocInterfaces(false)) {
      if (iface->isAddressable() && iface->getApertures().empty()) {
        findings.notice(553,
                        ruleText(" Addressable NOC interface '%s' on RP instance '%s' must specify one or "
                                 "more address apertures for RSW verification.",
                                 iface->getName(), rpPath));
      }
    }
    if (rp->getRswAncestor() != nullptr) {
      findings.violation(559, ruleText(" Nested RP instance '%s' is unsupported.", rpPath));
      continue;
    }
    for (HABMNocPath const& path : links.paths(*rp)) {
      N const* source = path.getSourceInterface();
      N const* target = path.getTargetInterface();
      if (source != nullptr && target != nullptr && source->getParent() == rp && target->getParent() == rp) {
        findings.violation(575,
                           ruleText(" NOC path through RP instance '%s' has unsupported passthrough from "
                                    "NOC interface '%s' to NOC interface '%s'. Each RP instance must "
                                    "contain a valid NOC endpoint.",
                                    rpPath, source->getPath(), target->getPath()));
      }
    }
  }
}

void checkOwnership(std::set<HABMNocPath> const& paths, Findings& findings) {
  // Static targets reached from a region by a path that the region owns, with those regions.
  std::map<N const*, std::set<HABMBlock const*>> regionsAtStaticTarget;
  for (HABMNocPath const& path : paths) {
    N const* source = path.getSourceInterface();
    N const* target = path.getTargetInterface();
    if (!path.hasRswInterface() || source == nullptr || target == nullptr) {
      continue;
    }
    HABMBlock const* sourceRegion = path.getSourceRswBlock();
    HABMBlock const* targetRegion = path.getTargetRswBlock();
    // The other half of a path into a stub region arrives at run time.
    bool const stubEnd = (sourceRegion != nullptr && sourceRegion->isBlockStub()) ||
                         (targetRegion != nullptr && targetRegion->isBlockStub());
    if (!path.isCompletePath() && !stubEnd) {
      findings.violation(611,
                         ruleText(" RSW path from NOC interface '%s' to NOC interface '%s' is incomplete. A "
                                  "complete RSW path must specify valid begin (NMU) and end (NSU) NOC "
                                  "interfaces.",
                                  source->getPath(), target->getPath()));
    }
    if (sourceRegion == nullptr && targetRegion == nullptr) {
      continue;
    }
    if (sourceRegion == nullptr) {
      if (!path.isOwnedByStatic()) {
        findings.violation(631,
                           ruleText(" RSW path from static NOC interface '%s' to dynamic NOC interface '%s' "
                                    "must be owned by the static region.",
                                    source->getPath(), target->getPath()));
      }
    } else if (targetRegion == nullptr) {
      if (!path.isOwnedByStatic()) {
        regionsAtStaticTarget[target].insert(sourceRegion);
      }
    } else if (sourceRegion != targetRegion && !path.isOwnedByStatic()) {
      findings.violation(621,
                         ruleText(" RSW path from NOC interface '%s' to NOC interface '%s' is owned by a "
                                  "dynamic region. Please ensure RSW paths between RP instances are owned "
                                  "by the static region.",
                                  source->getPath(), target->getPath()));
    }
  }
  std::vector<std::string> shared;
  for (auto const& [target, regions] : regionsAtStaticTarget) {
    if (regions.size() >= 2) {
      shared.push_back(target->getPath());
    }
  }
  std::sort(shared.begin(), shared.end());
  for (std::string const& target : shared) {
    findings.violation(651,
                       ruleText(" RSW paths to static NOC interface '%s' must be owned by static region, or "
                                "must connect from single RP instance only.",
                                target));
  }
}

// Destination ids that earlier endpoints of one NMU took, as disjoint ranges keyed by their first id; a
// range costs one entry however wide it is.
class TakenIds {
 public:
  // Calls `overlap(id)` for each id of first..last that is taken already, in rising order (at most
  // kMaxOverlapFindings times), then takes the whole range.
  template <class F>
  void take(HABMAddrValue const& first, HABMAddrValue const& last, F const& overlap) {
    HABMAddrValue low = first;
    HABMAddrValue high = last;
    auto it = ranges_.upper_bound(first);
    if (it != ranges_.begin() && std::prev(it)->second >= first) {
      --it;
    }
    int reported = 0;
    while (it != ranges_.end() && it->first <= last) {
      HABMAddrValue id = std::max(it->first, first);
      HABMAddrValue const end = std::min(it->second, last);
      for (bool more = true; more && reported < kMaxOverlapFindings; ++reported, ++id) {
        overlap(id);
        more = id != end;
      }
      low = std::min(low, it->first);
      high = std::max(high, it->second);
      it = ranges_.erase(it);
    }
    ranges_.emplace(low, high);
  }

 private:
  std::map<HABMAddrValue, HABMAddrValue> ranges_;
};

// Interfaces ordered by path (then by identity, for two that share a path): a stable order for findings.
using ByPath = std::pair<std::string, N const*>;

void checkStreamFanout(std::set<HABMNocPath> const& paths, Findings& findings) {
  std::map<ByPath, std::set<ByPath>> endpointsOf;
  for (HABMNocPath const& path : paths) {
    N const* nmu = path.getNmuInterface();
    N const* nsu = path.getNsuInterface();
    if (nmu == nullptr || nsu == nullptr || nmu->getNocProtocol() != N::PROTOCOL_AXIS) {
      continue;
    }
    // Outside an OPM module, traffic that leaves through an inter-network link ends at that link.
    N const* endpoint = nsu;
    auto const& virtuals = path.getVNocInterfaces();
    if (!onOpmNocModule(nmu) && !virtuals.empty() && virtuals.front()->isIniCategory()) {
      endpoint = virtuals.front();
    }
    endpointsOf[{nmu->getPath(), nmu}].insert({endpoint->getPath(), endpoint});
  }
  for (auto const& [nmuKey, endpoints] : endpointsOf) {
    if (endpoints.size() < 2) {
      continue;
    }
    std::string const& nmuPath = nmuKey.first;
    N const* nmu = nmuKey.second;
    if (endpoints.size() > kMaxStreamFanout) {
      findings.violation(
          696, ruleText(" NMU interface '%s' exceeds maximum '16' connections for AXIS protocol.", nmuPath));
    }
    bool const inBlockDesign = !nmu->isVirtual() && nmu->getParent() != nullptr && !onOpmNocModule(nmu);
    TakenIds taken;
    int onOpm = 0;
    int others = 0;
    for (ByPath const& entry : endpoints) {
      std::string const& endpointPath = entry.first;
      N const* endpoint = entry.second;
      bool const opm = onOpmNocModule(endpoint);
      ++(opm ? onOpm : others);
      if (inBlockDesign && opm && !structuralNxMFlow()) {
        findings.violation(722,
                           ruleText(" Block Design NMU interface '%s' connected to NSU interface '%s' cannot "
                                    "have multiple fanout that involves OPM NSU interfaces.",
                                    nmuPath, endpointPath));
      }
      std::string const& tdest = endpoint->getTdestId();
      N::TDestIdRange const range = N::encodeDestinationIdRange(tdest);
      if (!range.first.isValid() || !range.second.isValid() || range.second < range.first) {
        findings.violation(746,
                           ruleText(" NSU interface '%s' has invalid TDEST_ID '%s'.", endpointPath, tdest));
        continue;
      }
      taken.take(range.first, range.second, [&](HABMAddrValue const& id) {
        findings.violation(738, ruleText(" NMU interface '%s' connected to NSU interface '%s' has TDEST_ID "
                                         "overlap '%s'.",
                                         nmuPath, endpointPath, id.getHexStringValue()));
      });
    }
    if (inBlockDesign && others < 2 && onOpm >= 1 && structuralNxMFlow()) {
      findings.violation(758,
                         ruleText(" Block Design (BD) NMU interface '%s' which has multiple fanout involving "
                                  "OPM NoC interfaces, needs to have multiple fanout within the BD.",
                                  nmuPath));
    }
  }
}

}  // namespace

bool HABMBlockChecker::validate_all(HABMBlock const& block) {
  std::vector<ComMsgMgrInstance> messages;
  // Every set runs whatever the others found, so that a host sees all findings of one check together.
  bool passed = validate_block_stubs(block, messages);
  passed = validate_rsw_blocks(block, messages) && passed;
  passed = validate_opm_connections(block, messages) && passed;
  passed = validate_noc_interfaces(block, messages) && passed;
  passed = validate_noc_connections(block, messages) && passed;
  passed = validate_noc_paths(block, messages) && passed;
  for (ComMsgMgrInstance const& message : messages) {
    ComMsgMgr::sendMessage(message);
  }
  return passed;
}

bool HABMBlockChecker::validate_block_stubs(HABMBlock const& block,
                                            std::vector<ComMsgMgrInstance>& messages) {
  HABM_TRACE(habm_detail::TRACE_BLOCK, "Validating block stubs for block instance '%s'...\n",
             block.getInstancePath().c_str());
  Findings findings(block, messages);
  // Instance path -> module name; a multimap keeps two instances that share a path.
  using Stubs = std::multimap<std::string, std::string>;
  Stubs rsw;
  Stubs designRef;
  Stubs moduleRef;
  Stubs modules;
  for (HABMBlock const* b : blockAndSubBlocks(block)) {
    if (!b->isBlockStub()) {
      continue;
    }
    Stubs& kind = b->isBlockRsw()         ? rsw
                  : b->isBlockDesignRef() ? designRef
                  : b->isModuleRef()      ? moduleRef
                                          : modules;
    kind.emplace(b->getInstancePath(), b->getModuleName());
  }
  for (auto const& [path, module] : moduleRef) {
    findings.lowered(72,
                     ruleText(" Found instance '%s' with unresolved module reference '%s'. Modular NOC flow "
                              "does not support NOC OPMs inside module reference.",
                              path, module));
  }
  for (auto const& [path, module] : rsw) {
    findings.lowered(82, ruleText(" Found instance '%s' with unresolved RSW region '%s'. RSW region must be "
                                  "provided at runtime.",
                                  path, module));
  }
  for (auto const& [path, module] : designRef) {
    findings.notice(
        92, ruleText(" Found instance '%s' with unresolved block design reference '%s'.", path, module));
  }
  for (auto const& [path, module] : modules) {
    findings.notice(101, ruleText(" Found instance '%s' with unresolved module '%s'.", path, module));
  }
  return true;
}

bool HABMBlockChecker::validate_rsw_blocks(HABMBlock const& block, std::vector<ComMsgMgrInstance>& messages) {
  HABM_TRACE(habm_detail::TRACE_BLOCK, "Validating RSW blocks for block instance '%s'...\n",
             block.getInstancePath().c_str());
  Findings findings(block, messages);
  std::vector<std::string> blockDesigns;
  std::vector<std::string> rtl;
  for (HABMBlock const* sub : block.findSubBlocks(std::string(), true)) {
    if (sub->isBlockRsw()) {
      (sub->isBlockDesignRef() ? blockDesigns : rtl).push_back(sub->getInstancePath());
    }
  }
  if (!blockDesigns.empty() && !rtl.empty()) {
    findings.violation(136,
                       ruleText(" Found unsupported mix of BDI '%s' and RTL '%s' RSW implementations. Please "
                                "refactor to use one RSW implementation only.",
                                joined(blockDesigns), joined(rtl)));
  }
  return findings.passed();
}

bool HABMBlockChecker::validate_opm_connections(HABMBlock const& block,
                                                std::vector<ComMsgMgrInstance>& messages) {
  HABM_TRACE(habm_detail::TRACE_BLOCK, "Validating OPM connections for block instance '%s'...\n",
             block.getInstancePath().c_str());
  Findings findings(block, messages);
  for (HABMInterfaceConnection const* connection : block.findInterfaceConnections(std::string(), true)) {
    HABMInterface const* source = connection->getSourceInterface();
    HABMInterface const* target = connection->getTargetInterface();
    if (source == nullptr || target == nullptr) {
      continue;
    }
    bool const sourceOpm = source->getParent().isOpmNocModule();
    bool const targetOpm = target->getParent().isOpmNocModule();
    if (!sourceOpm && !targetOpm) {
      continue;
    }
    std::string const sourcePath = source->getInterfacePath();
    std::string const targetPath = target->getInterfacePath();
    // An OPM module states its bus shape as generics; a logic interface as interface parameters.
    auto const valueOf = [](HABMInterface const& iface, bool opm, std::string const& name) {
      if (opm) {
        HABMGeneric const* generic = iface.getParent().getGeneric(name);
        return generic == nullptr ? std::string() : generic->getValue();
      }
      HABMParameter const* parameter = iface.getParameter(name);
      return parameter == nullptr ? std::string() : parameter->getValue();
    };
    for (std::string const& name : {N::ADDR_WIDTH(), N::DATA_WIDTH()}) {
      std::string const sourceValue = valueOf(*source, sourceOpm, name);
      std::string const targetValue = valueOf(*target, targetOpm, name);
      if (!sourceValue.empty() && !targetValue.empty() && sourceValue != targetValue) {
        findings.violation(208,
                           ruleText(" Parameter '%s' values differ from source interface '%s' (value=%s) to "
                                    "target interface '%s' (value=%s).",
                                    name, sourcePath, sourceValue, targetPath, targetValue));
      }
    }
  }
  return findings.passed();
}

bool HABMBlockChecker::validate_noc_interfaces(HABMBlock const& block,
                                               std::vector<ComMsgMgrInstance>& messages) {
  HABM_TRACE(habm_detail::TRACE_BLOCK, "Validating NOC interfaces for block instance '%s'...\n",
             block.getInstancePath().c_str());
  Findings findings(block, messages);
  std::vector<N*> const all = block.findNocInterfaces(std::string(), true, false);
  if (all.empty()) {
    return true;
  }
  // The far ends of every interface from one pass over the links, not one pass per interface.
  NocLinks const links(block);
  for (N const* iface : all) {
    checkApertures(*iface, findings);
    checkParameterValues(*iface, findings);
    std::vector<N*> targets;
    for (NocLinks::Link const& link : links.drivenBy(iface)) {
      if (link.target != nullptr) {
        targets.push_back(link.target);
      }
    }
    checkFans(*iface, links.driversOf(iface), targets, findings);
  }
  return findings.passed();
}

bool HABMBlockChecker::validate_noc_connections(HABMBlock const& block,
                                                std::vector<ComMsgMgrInstance>& messages) {
  HABM_TRACE(habm_detail::TRACE_BLOCK, "Validating NOC connections for block instance '%s'...\n",
             block.getInstancePath().c_str());
  Findings findings(block, messages);
  std::vector<N*> const all = block.findNocInterfaces(std::string(), true, false);
  std::unordered_set<N const*> connected;
  for (HABMNocConnection const* connection : block.findNocConnections(std::string(), true, false)) {
    N const* source = connection->getSourceNocInterface();
    N const* target = connection->getTargetNocInterface();
    connected.insert(source);
    connected.insert(target);
    if (connection->getRemaps().empty() || (!onOpmNocModule(source) && !onOpmNocModule(target))) {
      continue;
    }
    // Remaps hold in hardware between logic-side targets and memory only.
    bool const plRemap =
        source != nullptr && target != nullptr && source->getNocCategory() == N::CATEGORY_PL &&
        (target->getNocCategory() == N::CATEGORY_PL || target->getNocCategory() == N::CATEGORY_DDR);
    if (!plRemap) {
      findings.notice(
          483, ruleText(" NOC connection '%s'-->'%s' has non-PL remap(s) which is not fully supported.  "
                        "Beware of remap issues in hardware.",
                        source != nullptr ? source->getPath() : connection->getSourcePath(true),
                        target != nullptr ? target->getPath() : connection->getTargetPath(true)));
    }
  }
  for (N const* iface : all) {
    if (connected.count(iface) == 0) {
      findings.notice(491, ruleText(" NOC interface '%s' is currently unconnected. Please connect all NOC "
                                    "interfaces before implementing design.",
                                    iface->getPath()));
    }
  }
  return true;
}

bool HABMBlockChecker::validate_noc_paths(HABMBlock const& block, std::vector<ComMsgMgrInstance>& messages) {
  HABM_TRACE(habm_detail::TRACE_BLOCK, "Validating RSW rules for block instance '%s'...\n",
             block.getInstancePath().c_str());
  Findings findings(block, messages);
  // One resolution of the links serves the block's paths and those of every region below it.
  NocLinks const links(block);
  std::set<HABMNocPath> const paths = links.paths(block);
  checkSinglePaths(paths, findings);
  if (findings.passed()) {
    checkRpInstances(block, links, findings);
  }
  if (findings.passed()) {
    checkOwnership(paths, findings);
  }
  if (findings.passed()) {
    checkStreamFanout(paths, findings);
  }
  return findings.passed();
}

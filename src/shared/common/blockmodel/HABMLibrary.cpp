// HABMLibrary.cpp: load-time registration of the library's host parameters.
#include "blockmodel/HABMLibrary.h"

#include "param/HPAParamMgr.h"

void HABMLibrary::registerParameters() {
  static bool const done = [] {
    auto& mgr = HPAParamMgr::getParamMgr();
    std::string const name = "blockmodel.softenCanMergeChecks";
    mgr.registerBoolParam(
        name, "Soften boundary checks to skip ports and interfaces for IP with known issues.", true);
    mgr.setHidden(name, true);
    return true;
  }();
  (void)done;
}

std::vector<std::string> const& HABMLibrary::readParameters() {
  static std::vector<std::string> const names = {"bd.noc.nxm_streaming_structural_rtl_mux",
                                                 "blockmodel.softenCanMergeChecks",
                                                 "project.enableMNocNxMFlow",
                                                 "project.enableNocPhases",
                                                 "project.ignoreModularNocLocks",
                                                 "project.prettyBlockModelWriter",
                                                 "project.skipBlockModelBoundaryCheck"};
  return names;
}

namespace {
// Runs when the shared library is loaded, so that a host sees the parameter before any model call.
struct LoadTimeRegistration {
  LoadTimeRegistration() { HABMLibrary::registerParameters(); }
};
LoadTimeRegistration const loadTimeRegistration;
}  // namespace

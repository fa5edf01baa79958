// HABMXdcWriter.cpp: the Tcl constraint script of the NoC objects of a block tree, line by line.
#include "blockmodel/HABMXdcWriter.h"

#include "blockmodel/HABMAddrAperture.h"
#include "blockmodel/HABMAddrRemap.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/HABMNocInterface.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMPath.h"
#include "blockmodel/HABMUtils.h"
#include "blockmodel/detail/HABMFileWrite.h"
#include "msg/ComMsgMgr.h"

#include <boost/algorithm/string/join.hpp>

#include <algorithm>
#include <initializer_list>
#include <map>
#include <memory>
#include <ostream>

namespace {

// A path becomes the name of the Tcl variable that holds its object.
std::string variableName(std::string path) {
  std::replace(path.begin(), path.end(), HABMPath::SEPARATOR(), '_');
  return path;
}

// "set VAR [COMMAND WORDS...]": the command's object kept in the variable named after it.
std::string setVariable(std::string const& var, std::string const& command,
                        std::initializer_list<std::string> words) {
  std::string line = "set ";
  line.append(var).append(" [").append(command);
  for (std::string const& word : words) {
    line.append(" ").append(word);
  }
  line.append("]");
  return line;
}

// "[get_noc_interfaces PATH]": an interface fetched by its path.
std::string fetchInterface(std::string const& path) {
  std::string text = "[";
  text.append(HABMXdcWriter::GET_NOC_INTERFACES()).append(" ").append(path).append("]");
  return text;
}

std::string setPropertyList(std::string const& property, std::vector<std::string> const& items,
                            std::string const& var) {
  return "set_property " + property + " [list " + boost::algorithm::join(items, " ") + "] ${" + var + "}";
}

std::string setPropertyDict(std::vector<std::string> const& items, std::string const& var) {
  return "set_property -dict [list " + boost::algorithm::join(items, " ") + "] ${" + var + "}";
}

std::string dictItem(HABMParameter const& parameter) {
  return parameter.getName() + " {" + parameter.getValue() + "}";
}

}  // namespace

std::string const& HABMXdcWriter::CREATE_NOC_CONNECTION() {
  static std::string const text = "create_noc_connection";
  return text;
}
std::string const& HABMXdcWriter::CREATE_NOC_INTERFACE() {
  static std::string const text = "create_noc_interface";
  return text;
}
std::string const& HABMXdcWriter::DELETE_NOC_CONNECTION() {
  static std::string const text = "delete_noc_connection";
  return text;
}
std::string const& HABMXdcWriter::DELETE_NOC_INTERFACE() {
  static std::string const text = "delete_noc_interface";
  return text;
}
std::string const& HABMXdcWriter::GET_NOC_CONNECTIONS() {
  static std::string const text = "get_noc_connections";
  return text;
}
std::string const& HABMXdcWriter::GET_NOC_INTERFACES() {
  static std::string const text = "get_noc_interfaces";
  return text;
}
std::string const& HABMXdcWriter::INDENT() {
  static std::string const text = "  ";
  return text;
}

bool HABMXdcWriter::writeXdc(HABMBlock const& block, HUTFile const& file, bool const& removeFirst,
                             std::vector<std::string> const& skipPaths) {
  std::string const path = habm_detail::fullPathOf(file);
  bool const result = habm_detail::writeFileAllOrNothing(
      [&] {
        habm_detail::removeIfAsked(file, removeFirst);
        return std::make_unique<habm_detail::OutStream>(path, std::ios_base::binary);
      },
      [&](std::ostream& out) {
        std::vector<std::pair<std::string, HATSrcInfo>> lines;
        if (!getXdcInfo(block, lines, skipPaths)) {
          return false;
        }
        out << HABMUtils::get_copyright_header("#") << '\n';
        for (auto const& line : lines) {
          out << line.first << '\n';
        }
        return true;
      });
  if (!result) {
    sendMsg::eval(1, __FILE__, __LINE__, "blockmodel", 0x20000000U, "@90-7@%s", path.c_str());
  }
  return result;
}

bool HABMXdcWriter::getXdcInfo(HABMBlock const& block,
                               std::vector<std::pair<std::string, HATSrcInfo>>& result,
                               std::vector<std::string> const& skipPaths) {
  result.clear();
  std::vector<std::string> lines;
  bool const marshalled = HABMXdcWriter(block, skipPaths).marshal(block, lines);
  if (marshalled) {
    result.reserve(lines.size());
    // The opening comment has no number; the constraint system counts from the line after it.
    std::int32_t number = -1;
    for (std::string& line : lines) {
      result.emplace_back(std::move(line),
                          HATSrcInfo(HATSrcInfo::NO_FILE, number++, HATSrcInfo::ORIGIN_TOOL, 0));
    }
  }
  return marshalled;
}

bool HABMXdcWriter::isSkipped(HABMBlock const& owner) const {
  std::string const path = HABMPath::get_relative_path(*block_, owner.getInstancePath());
  return std::any_of(skipPaths_.begin(), skipPaths_.end(),
                     [&path](std::string const& skip) { return path.compare(0, skip.size(), skip) == 0; });
}

bool HABMXdcWriter::marshal(HABMBlock const& block, std::vector<std::string>& lines) const {
  lines.emplace_back("# constrain noc interface(s)");
  for (HABMNocInterface const* iface : block.findNocInterfaces(std::string(), true, false)) {
    HABMBlock const& owner = *iface->getParent();
    // What the user did not make is fixed in the design, except the endpoints of an OPM NoC module, which
    // the script looks up to give them their properties.
    if ((!iface->getEditable() && !owner.isOpmNocModule()) || isSkipped(owner)) {
      continue;
    }
    std::string const path = HABMPath::get_relative_path(block, iface->getPath());
    std::string const var = variableName(path);
    std::string const& command = iface->getEditable() ? CREATE_NOC_INTERFACE() : GET_NOC_INTERFACES();
    lines.push_back(setVariable(var, command,
                                {"-mode", HABMNocInterface::decodeNocMode(iface->getNocMode()), "-type",
                                 HABMNocInterface::decodeNocProtocol(iface->getNocProtocol()), path}));
    std::vector<std::string> apertures;
    for (HABMAddrAperture const& aperture : iface->getApertures()) {
      apertures.push_back(aperture.getTclListString(0));
    }
    if (!apertures.empty()) {
      lines.push_back(setPropertyList(HABMNocInterface::APERTURES(), apertures, var));
    }
    if (!iface->getLocation().empty()) {
      lines.push_back("set_property " + HABMNocInterface::LOCATION() + " " + iface->getLocation() + " ${" +
                      var + "}");
    }
    if (!iface->getTdestId().empty()) {
      lines.push_back("set_property " + HABMNocInterface::TDEST_ID() + " " + iface->getTdestId() + " ${" +
                      var + "}");
    }
    std::vector<std::string> parameters;
    for (HABMParameter const* parameter : iface->getParameters()) {
      if (!HABMNocInterface::isReadonlyParameter(parameter->getName())) {
        parameters.push_back(dictItem(*parameter));
      }
    }
    if (!parameters.empty()) {
      lines.push_back(setPropertyDict(parameters, var));
    }
  }

  lines.emplace_back();
  lines.emplace_back("# constrain noc connection(s)");
  for (HABMNocConnection const* connection : block.findNocConnections(std::string(), true, false)) {
    if (!connection->getEditable() || isSkipped(*connection->getParent())) {
      continue;
    }
    std::string const path = HABMPath::get_relative_path(block, connection->getPath());
    std::string const var = variableName(path);
    lines.push_back(setVariable(
        var, CREATE_NOC_CONNECTION(),
        {"-source", fetchInterface(HABMPath::get_relative_path(block, connection->getSourcePath(true))),
         "-target", fetchInterface(HABMPath::get_relative_path(block, connection->getTargetPath(true))),
         path}));
    // Only the primary link of a path carries traffic requirements; the others only cross a boundary.
    if (!connection->isPrimary()) {
      continue;
    }
    std::vector<std::string> remaps;
    for (HABMAddrRemap const& remap : connection->getRemaps()) {
      remaps.push_back(remap.getTclListString(0));
    }
    if (!remaps.empty()) {
      lines.push_back(setPropertyList(HABMNocConnection::REMAPS(), remaps, var));
    }
    std::map<std::string, std::string> const defaults =
        HABMNocConnection::getDefaultParameterValues(*connection);
    std::vector<std::string> parameters;
    for (HABMParameter const* parameter : connection->getParameters()) {
      auto const standard = defaults.find(parameter->getName());
      if (standard == defaults.end() || standard->second != parameter->getValue()) {
        parameters.push_back(dictItem(*parameter));
      }
    }
    if (!parameters.empty()) {
      lines.push_back(setPropertyDict(parameters, var));
    }
  }
  return true;
}
